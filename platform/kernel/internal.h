// What the layer's own folders share; nobody outside platform/ includes it.
#ifndef KV_PLATFORM_KERNEL_INTERNAL_H
#define KV_PLATFORM_KERNEL_INTERNAL_H

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/host.h"

namespace kvp
{

// Counts a call of this kind; true when it is the one ordered to fail.
bool ShouldFail(Call call);
// Fills the unused rest of a buffer with 0xAB when the layer is hostile.
void SpoilRest(void *rest, size_t bytes);
void CountLibrary(int by); // +1 loaded, -1 freed

// The spooler's store is opened anew on its next use; for Configure.
void ForgetStore();

// A file found by name: a full DOS path, or a bare name looked for in the search order. Names and
// paths are UTF-8 here; a name that comes from a call in the ANSI code page goes through
// AnsiToUtf8 first.
struct FoundFile {
    std::string strDosPath;  // full
    std::string strHostPath; // empty when it is in memory
    std::shared_ptr<const std::vector<uint8_t>> memory;
};
// Sets the last error when it gives nothing.
std::optional<FoundFile> FindFile(std::string_view name);
// The whole file; nothing when it cannot be read.
std::optional<std::vector<uint8_t>> ReadWhole(const FoundFile &file);

// ANSI code page conversions for texts of known length, for the layer's own use.
std::u16string AnsiToWide(std::string_view ansi);
std::string WideToAnsi(std::u16string_view wide);

} // namespace kvp

#endif
