// A file open for writing. What is written is held until the file is closed, then written beside
// the old file, synced, and put in its place: whoever looks finds the old file or the new one,
// whole.
#ifndef KV_PLATFORM_KERNEL_WRITER_H
#define KV_PLATFORM_KERNEL_WRITER_H

#include <cstdint>
#include <string>
#include <vector>

#include "platform/kernel/names.h"
#include "platform/win32.h"

constexpr int FILE_CURRENT = 1; // an origin of _llseek, as FILE_BEGIN is

namespace kvp
{

class FileWriter
{
  public:
    // An existing file keeps its bytes unless it is created anew.
    DWORD Open(const Place &place, bool create);
    DWORD Write(uint64_t position, const void *from, size_t cb);
    uint64_t Size() const { return m_bytes.size(); }
    // The close: the file takes its place. After a failed write it fails and the old file stays.
    DWORD Commit();

  private:
    DWORD OpenOnDisk(bool create);
    DWORD CommitToDisk() const;

    Place m_place;
    std::string m_strHostPath; // empty: in memory
    std::vector<uint8_t> m_bytes;
    bool m_bChanged = false;
    DWORD m_dwFailure = 0; // of the first write that failed
};

} // namespace kvp

#endif
