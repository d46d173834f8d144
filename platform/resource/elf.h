// What is read of a shared object's file: one section by its name.
#ifndef KV_PLATFORM_RESOURCE_ELF_H
#define KV_PLATFORM_RESOURCE_ELF_H

#include <string_view>

#include "platform/resource/bytes.h"

namespace kvp
{

bool IsElf(Bytes file);
// The section's bytes; empty when the file has none of this name, or is damaged.
Bytes ElfSection(Bytes file, std::string_view name);

} // namespace kvp

#endif
