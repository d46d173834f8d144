// Records in files: read whole and of the right length, written beside the old file and renamed.
#include "host/record.h"

#include <cerrno>
#include <cstring>
#include <filesystem>

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include "host/failure.h"

namespace
{
namespace fs = std::filesystem;

[[noreturn]] void CannotWrite(const std::string &path, int error)
{
    throw Failure(EXIT_REFUSED, fmt::format("{} cannot be written ({}): give a file in a folder "
                                            "that can",
                                            path, std::strerror(error)));
}

struct Descriptor {
    explicit Descriptor(int open) : n(open) {}
    ~Descriptor()
    {
        if (n >= 0)
            close(n);
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;
    int n;
};

bool WriteAll(int descriptor, std::span<const uint8_t> bytes)
{
    while (!bytes.empty()) {
        const ssize_t cb = write(descriptor, bytes.data(), bytes.size());
        if (cb < 0 && errno == EINTR)
            continue;
        if (cb <= 0)
            return false;
        bytes = bytes.subspan(static_cast<size_t>(cb));
    }
    return true;
}

std::vector<uint8_t> ReadUpTo(const std::string &path, size_t most)
{
    std::vector<uint8_t> bytes(most);
    size_t cbGot = 0;
    const Descriptor in(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    ssize_t cb = in.n < 0 ? -1 : 1;
    while (cb > 0 && cbGot < most) {
        cb = read(in.n, bytes.data() + cbGot, most - cbGot);
        cbGot += cb > 0 ? static_cast<size_t>(cb) : 0;
    }
    if (cb < 0)
        throw Failure(EXIT_USAGE, fmt::format("{} cannot be read ({}): give a file with a settings "
                                              "record",
                                              path, std::strerror(errno)));
    bytes.resize(cbGot);
    return bytes;
}

// Devices and pipes cannot be replaced, only written to.
void WriteInto(const std::string &path, std::span<const uint8_t> bytes)
{
    const Descriptor out(open(path.c_str(), O_WRONLY | O_CLOEXEC));
    if (out.n < 0 || !WriteAll(out.n, bytes))
        CannotWrite(path, errno);
}

// The mode of the file to be replaced, or what a new file gets.
mode_t ModeFor(const std::string &path)
{
    struct stat old = {};
    if (stat(path.c_str(), &old) == 0)
        return old.st_mode & 07777;
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

void Replace(const std::string &path, std::span<const uint8_t> bytes)
{
    std::string strTemporary = path + ".XXXXXX";
    const Descriptor out(mkostemp(strTemporary.data(), O_CLOEXEC));
    if (out.n < 0)
        CannotWrite(path, errno);
    if (WriteAll(out.n, bytes) && fchmod(out.n, ModeFor(path)) == 0 && fsync(out.n) == 0 &&
        rename(strTemporary.c_str(), path.c_str()) == 0)
        return;
    const int nError = errno;
    unlink(strTemporary.c_str());
    CannotWrite(path, nError);
}
} // namespace

DriverDevMode ReadRecord(const std::string &path)
{
    // One byte more than a record has room, so that a longer file shows.
    const std::vector<uint8_t> bytes = ReadUpTo(path, sizeof(DriverDevMode) + 1);
    if (bytes.size() < sizeof(DriverDevMode))
        throw Failure(EXIT_USAGE, fmt::format("{} is too short, it has {} bytes: a settings record "
                                              "has {}",
                                              path, bytes.size(), sizeof(DriverDevMode)));
    DriverDevMode record;
    std::memcpy(&record, bytes.data(), sizeof record);
    if (bytes.size() > sizeof record)
        throw Failure(EXIT_USAGE,
                      fmt::format("{} is too long, it goes on after {} bytes, where a settings "
                                  "record ends{}",
                                  path, sizeof record,
                                  Strangeness(record).empty() ? ": cut it there" : ""));
    return record;
}

std::optional<DriverDevMode> ReadRecordIfNamed(const std::string &path)
{
    if (path.empty())
        return std::nullopt;
    return ReadRecord(path);
}

void WriteFile(const std::string &path, std::span<const uint8_t> bytes)
{
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (fs::is_directory(status))
        CannotWrite(path, EISDIR);
    if (fs::exists(status) && !fs::is_regular_file(status))
        WriteInto(path, bytes);
    else if (const fs::path target = fs::canonical(path, error); !error)
        Replace(target.string(), bytes); // a link stays one
    else
        Replace(path, bytes);
}

void WriteRecordIfNamed(const std::string &path, const DriverDevMode &record)
{
    if (!path.empty())
        WriteFile(path, BytesOf(record));
}
