// The transcript: what was shown and done, one JSON object a line.
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include <fmt/format.h>

#include "platform/host.h"

namespace kvp
{

namespace
{

// One write for the whole line, at the file's end: processes may share a transcript.
bool AppendLine(const std::string &file, const std::string &line)
{
    const int fd = open(file.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0666);
    if (fd < 0)
        return false;
    const bool whole = write(fd, line.data(), line.size()) == static_cast<ssize_t>(line.size());
    return close(fd) == 0 && whole;
}

} // namespace

void WriteTranscript(const std::string &jsonObject)
{
    const std::string &file = CurrentMachine().strTranscript;
    if (!file.empty() && !AppendLine(file, jsonObject + "\n"))
        fmt::print(stderr, "cannot write the transcript {}: {}\n", file, std::strerror(errno));
}

} // namespace kvp
