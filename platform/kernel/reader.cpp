// Reading: as few calls of the host as there can be.
#include "platform/kernel/reader.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <atomic>
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
        n = pread(fd, to, cb, static_cast<off_t>(position));
    while (n < 0 && errno == EINTR);
    return n;
}

// One window's room is kept for the next file: most often one is open at a time, and room that
// was used a moment ago is in the processor's cache.
std::atomic<uint8_t *> g_pSpare{nullptr};

std::unique_ptr<uint8_t[]> TakeWindow()
{
    if (uint8_t *pSpare = g_pSpare.exchange(nullptr))
        return std::unique_ptr<uint8_t[]>(pSpare);
    return std::make_unique_for_overwrite<uint8_t[]>(WINDOW);
}

void GiveWindowBack(std::unique_ptr<uint8_t[]> window)
{
    if (window)
        window.reset(g_pSpare.exchange(window.release()));
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
// be asked for.
int FileReader::OpenHost(const char *hostPath)
{
    // A pipe that somebody put there must not make the call wait.
    Fd fd(open(hostPath, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!fd.IsOpen())
        return errno;
    m_own = TakeWindow();
    const ssize_t n = ReadHost(fd.Get(), m_own.get(), WINDOW, 0);
    if (n < 0)
        return errno;
    m_pWindow = m_own.get();
    m_cbWindow = static_cast<size_t>(n);
    if (m_cbWindow == WINDOW)
        m_fd = std::move(fd);
    return 0;
}

void FileReader::Close()
{
    m_fd.Close();
    m_memory.reset();
    GiveWindowBack(std::move(m_own));
    m_pWindow = nullptr;
    m_nWindowStart = m_cbWindow = 0;
}

bool FileReader::FillWindow(uint64_t position)
{
    const ssize_t n = ReadHost(m_fd.Get(), m_own.get(), WINDOW, position);
    m_nWindowStart = position;
    m_cbWindow = n < 0 ? 0 : static_cast<size_t>(n);
    return n >= 0;
}

bool FileReader::Read(uint64_t position, void *to, size_t cb, size_t *pcbRead)
{
    *pcbRead = 0;
    while (cb != 0) {
        if (position < m_nWindowStart || position - m_nWindowStart >= m_cbWindow) {
            if (!m_fd.IsOpen())
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
    if (!m_fd.IsOpen())
        return true;
    if (fstat(m_fd.Get(), &state) != 0)
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
