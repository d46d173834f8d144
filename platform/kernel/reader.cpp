// Reading: as few calls of the host as there can be.
#include "platform/kernel/reader.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include "platform/kernel/disk.h"
#include "platform/kernel/errors.h"
#include "platform/kernel/internal.h"

namespace kvp
{
namespace
{

constexpr size_t WINDOW = 65536;

ssize_t ReadHost(int fd, void *to, size_t cb, uint64_t position)
{
    ssize_t n = 0;
    do
        n = position == 0 ? read(fd, to, cb) : pread(fd, to, cb, static_cast<off_t>(position));
    while (n < 0 && errno == EINTR);
    return n;
}

} // namespace

FileReader &FileReader::operator=(FileReader &&other) noexcept
{
    std::swap(m_fd, other.m_fd);
    std::swap(m_memory, other.m_memory);
    std::swap(m_own, other.m_own);
    std::swap(m_pWindow, other.m_pWindow);
    std::swap(m_nWindowStart, other.m_nWindowStart);
    std::swap(m_cbWindow, other.m_cbWindow);
    return *this;
}

DWORD FileReader::Open(const Place &place)
{
    const MemoryAnswer memory = LookInMemory(place);
    if (!memory.bKnown)
        return Reach(place, [this](const char *path) { return OpenHost(path); });
    if (!memory.bytes)
        return ERROR_FILE_NOT_FOUND;
    m_memory = memory.bytes;
    m_pWindow = m_memory->data();
    m_cbWindow = m_memory->size();
    return ERROR_SUCCESS;
}

// A first read that comes back short has reached the end of the file, so that its size need not
// be asked for. It goes to the stack first, where no block of the largest size has to be made.
int FileReader::OpenHost(const char *hostPath)
{
    // A pipe that somebody put there must not make the call wait.
    const int fd = open(hostPath, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (fd < 0)
        return errno;
    uint8_t abFirst[WINDOW];
    const ssize_t n = ReadHost(fd, abFirst, sizeof abFirst, 0);
    if (n < 0) {
        const int error = errno;
        close(fd);
        return error;
    }
    m_cbWindow = static_cast<size_t>(n);
    m_own = std::make_unique_for_overwrite<uint8_t[]>(m_cbWindow);
    std::memcpy(m_own.get(), abFirst, m_cbWindow);
    m_pWindow = m_own.get();
    if (m_cbWindow < WINDOW)
        close(fd);
    else
        m_fd = fd;
    return 0;
}

void FileReader::Close()
{
    if (m_fd >= 0)
        close(m_fd);
    m_fd = -1;
    m_memory.reset();
    m_own.reset();
    m_pWindow = nullptr;
    m_nWindowStart = m_cbWindow = 0;
}

bool FileReader::FillWindow(uint64_t position)
{
    const ssize_t n = ReadHost(m_fd, m_own.get(), WINDOW, position);
    m_nWindowStart = position;
    m_cbWindow = n < 0 ? 0 : static_cast<size_t>(n);
    return n >= 0;
}

bool FileReader::Read(uint64_t position, void *to, size_t cb, size_t *pcbRead)
{
    *pcbRead = 0;
    while (cb != 0) {
        if (position < m_nWindowStart || position - m_nWindowStart >= m_cbWindow) {
            if (m_fd < 0)
                return true;
            if (!FillWindow(position))
                return false;
            if (m_cbWindow == 0)
                return true;
        }
        const size_t iStart = static_cast<size_t>(position - m_nWindowStart);
        const size_t cbPart = std::min(cb, m_cbWindow - iStart);
        std::memcpy(static_cast<uint8_t *>(to) + *pcbRead, m_pWindow + iStart, cbPart);
        *pcbRead += cbPart;
        position += cbPart;
        cb -= cbPart;
    }
    return true;
}

bool FileReader::Size(uint64_t *pcb) const
{
    struct stat state {
    };
    *pcb = m_cbWindow;
    if (m_fd < 0)
        return true;
    if (fstat(m_fd, &state) != 0)
        return false;
    *pcb = static_cast<uint64_t>(state.st_size);
    return true;
}

// Asked size first, so that a large file is not copied step by step.
std::optional<std::vector<uint8_t>> ReadWhole(const FoundFile &file)
{
    constexpr uint64_t LARGEST = 0x7FFFFFFF;
    if (file.memory)
        return *file.memory;
    FileReader reader;
    uint64_t cbFile = 0;
    if (reader.OpenHost(file.strHostPath.c_str()) != 0 || !reader.Size(&cbFile) || cbFile > LARGEST)
        return std::nullopt;
    std::vector<uint8_t> bytes(static_cast<size_t>(cbFile));
    size_t cbRead = 0;
    if (!reader.Read(0, bytes.data(), bytes.size(), &cbRead))
        return std::nullopt;
    bytes.resize(cbRead);
    return bytes;
}

} // namespace kvp
