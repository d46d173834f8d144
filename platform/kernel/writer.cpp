// Writing a file so that no failure and no interruption loses the old one. Each step that puts
// something on disk counts as a write, so that each can be ordered to fail.
#include "platform/kernel/writer.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstring>

#include "platform/kernel/disk.h"
#include "platform/kernel/errors.h"
#include "platform/kernel/fd.h"
#include "platform/kernel/internal.h"
#include "platform/kernel/machine.h"
#include "platform/kernel/memfiles.h"

namespace kvp
{
namespace
{

constexpr uint64_t LARGEST_WRITTEN = 64u << 20; // held in memory until the close

// 0 or errno, like every step below.
template <class Step>
int Try(Step step)
{
    if (ShouldFail(Call::Write))
        return ENOSPC;
    return step() == 0 ? 0 : errno;
}

int WriteAll(int fd, const std::vector<uint8_t> &bytes)
{
    size_t cbDone = 0;
    while (cbDone < bytes.size()) {
        const ssize_t n = write(fd, bytes.data() + cbDone, bytes.size() - cbDone);
        if (n < 0 && errno != EINTR)
            return -1;
        cbDone += n < 0 ? 0 : static_cast<size_t>(n);
    }
    return 0;
}

// A new file beside this one that no other process or thread is writing.
Fd MakeBeside(const std::string &path, std::string &besidePath)
{
    static std::atomic<unsigned> s_nLast{0};
    int fd = -1;
    do {
        besidePath = path + ".new" + std::to_string(getpid()) + "-" + std::to_string(++s_nLast);
        fd = open(besidePath.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    } while (fd < 0 && errno == EEXIST);
    return Fd(fd);
}

// Bytes and permissions, on disk when it returns.
int FillBeside(int fd, const std::string &path, const std::vector<uint8_t> &bytes)
{
    struct stat old {
    };
    if (stat(path.c_str(), &old) == 0 && fchmod(fd, old.st_mode & 07777) != 0)
        return errno;
    const int error = Try([&] { return WriteAll(fd, bytes); });
    return error ? error : Try([&] { return fsync(fd); });
}

std::string DirectoryOf(const std::string &path)
{
    return path.substr(0, path.rfind('/'));
}

int SyncDirectoryOf(const std::string &path)
{
    const Fd fd(open(DirectoryOf(path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!fd.IsOpen())
        return errno;
    return Try([&] { return fsync(fd.Get()); });
}

} // namespace

DWORD FileWriter::OpenOnDisk(bool create)
{
    if (m_place.Directory().empty())
        return ERROR_ACCESS_DENIED; // a drive is no file
    m_strHostPath = HostPathOf(m_place);
    const std::string strDirectory = DirectoryOf(m_strHostPath);
    if (access(strDirectory.c_str(), F_OK) != 0)
        return ERROR_PATH_NOT_FOUND;
    const int error = IsHostFile(m_strHostPath.c_str());
    if (error == ENOENT && create)
        return access(strDirectory.c_str(), W_OK) == 0 ? ERROR_SUCCESS : ErrorFromErrno(errno);
    if (error != 0)
        return ErrorFromErrno(error);
    if (access(m_strHostPath.c_str(), W_OK) != 0 || access(strDirectory.c_str(), W_OK) != 0)
        return ErrorFromErrno(errno);
    if (create)
        return ERROR_SUCCESS;
    auto bytes = ReadWhole({.strDosPath = {}, .strHostPath = m_strHostPath, .memory = nullptr});
    if (!bytes)
        return ERROR_READ_FAULT;
    m_bytes = std::move(*bytes);
    return ERROR_SUCCESS;
}

DWORD FileWriter::Open(const Place &place, bool create)
{
    m_place = place;
    m_bChanged = create;
    const MemoryAnswer memory = LookInMemory(place);
    if (!memory.bKnown && !CurrentSetup().strRootPrefix.empty())
        return OpenOnDisk(create);
    if (!memory.bytes && !create)
        return ERROR_FILE_NOT_FOUND;
    if (!create)
        m_bytes = *memory.bytes;
    return ERROR_SUCCESS;
}

DWORD FileWriter::Write(uint64_t position, const void *from, size_t cb)
{
    m_bChanged = true;
    if (ShouldFail(Call::Write) || position + cb > LARGEST_WRITTEN) {
        m_dwFailure = ERROR_DISK_FULL;
        return m_dwFailure;
    }
    const auto iStart = static_cast<size_t>(position);
    if (cb == 0 || iStart + cb > m_bytes.size())
        m_bytes.resize(iStart + cb);
    if (cb != 0)
        std::memcpy(m_bytes.data() + iStart, from, cb);
    return ERROR_SUCCESS;
}

DWORD FileWriter::CommitToDisk() const
{
    std::string strBeside;
    Fd fd = MakeBeside(m_strHostPath, strBeside);
    if (!fd.IsOpen())
        return ErrorFromErrno(errno);
    int error = FillBeside(fd.Get(), m_strHostPath, m_bytes);
    if (fd.Close() != 0 && error == 0)
        error = errno;
    if (error == 0)
        error = Try([&] { return rename(strBeside.c_str(), m_strHostPath.c_str()); });
    if (error != 0) {
        unlink(strBeside.c_str());
        return ErrorFromErrno(error);
    }
    error = SyncDirectoryOf(m_strHostPath);
    return error == 0 ? ERROR_SUCCESS : ErrorFromErrno(error);
}

DWORD FileWriter::Commit()
{
    if (m_dwFailure != ERROR_SUCCESS || !m_bChanged)
        return m_dwFailure;
    if (!m_strHostPath.empty())
        return CommitToDisk();
    StoreInMemory(m_place, std::move(m_bytes));
    return ERROR_SUCCESS;
}

} // namespace kvp
