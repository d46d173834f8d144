// The bytes of a file open for reading, on disk or in memory.
#ifndef KV_PLATFORM_KERNEL_READER_H
#define KV_PLATFORM_KERNEL_READER_H

#include "platform/kernel/fd.h"
#include "platform/kernel/memfiles.h"
#include "platform/win32.h"

namespace kvp
{

// A small file is read whole when it is opened and the host's file closed at once. Of a larger
// one a window of the bytes last used is held, and the host's file stays open.
class FileReader
{
  public:
    FileReader() = default;
    FileReader(FileReader &&other) noexcept { *this = std::move(other); }
    FileReader &operator=(FileReader &&other) noexcept;
    ~FileReader() { Close(); }

    DWORD Open(const Place &place);
    int OpenHost(const char *hostPath); // 0 or errno
    void Close();
    // False when the host cannot read; fewer bytes than asked at the file's end only.
    bool Read(uint64_t position, void *to, size_t cb, size_t *pcbRead);
    bool Size(uint64_t *pcb) const;

  private:
    bool FillWindow(uint64_t position);

    Fd m_fd; // closed: all there is is in the window
    SharedBytes m_memory;
    std::unique_ptr<uint8_t[]> m_own;   // of the window's largest size
    const uint8_t *m_pWindow = nullptr; // in m_memory or m_own
    uint64_t m_nWindowStart = 0;
    size_t m_cbWindow = 0;
};

} // namespace kvp

#endif
