// A file open for writing. What is written is held until the file is closed, then written beside
// the old file, synced, and put in its place: whoever looks finds the old file or the new one,
// whole. The calls and styles by which a driver writes stand here as well.
#ifndef KV_PLATFORM_KERNEL_WRITER_H
#define KV_PLATFORM_KERNEL_WRITER_H

#include <cstdint>
#include <string>
#include <vector>

#include "platform/kernel/names.h"
#include "platform/win32.h"

constexpr int FILE_CURRENT = 1; // an origin of _llseek, as FILE_BEGIN is
constexpr UINT OF_WRITE = 1;
constexpr UINT OF_CREATE = 0x1000; // makes the file, or makes it empty

// Bytes written, or HFILE_ERROR. Writing nothing cuts the file at the position.
KV_IMPORT UINT WINAPI _lwrite(HFILE hFile, LPCVOID lpBuffer, UINT uBytes);

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
