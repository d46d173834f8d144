// The usage that the system reports of a child counts what it had before it became another program,
// a copy of this one. So the child is looked at while it is ending.
#include "tests/support/peak_memory.h"

#include <csignal>
#include <fstream>

#include <fcntl.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

[[noreturn]] static void Become(const std::vector<char *> &arguments)
{
    const int nowhere = open("/dev/null", O_RDWR);
    for (const int fd : {0, 1, 2})
        dup2(nowhere, fd);
    if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0)
        _exit(127);
    execv(arguments[0], arguments.data());
    _exit(127);
}

static long PeakNow(pid_t pid)
{
    std::ifstream status("/proc/" + std::to_string(pid) + "/status");
    for (std::string word; status >> word;)
        if (word == "VmHWM:") {
            long kilobytes = 0;
            status >> kilobytes;
            return kilobytes;
        }
    return 0;
}

// Lets the child run, hands its signals on and looks when it is about to end.
static Peak Follow(pid_t pid)
{
    Peak peak{-1, 0};
    int status = 0, signal = 0;
    while (ptrace(PTRACE_CONT, pid, nullptr, signal) == 0 && waitpid(pid, &status, 0) == pid &&
           WIFSTOPPED(status)) {
        const bool ending = status >> 8 == (SIGTRAP | PTRACE_EVENT_EXIT << 8);
        signal = ending ? 0 : WSTOPSIG(status);
        if (ending)
            peak.kilobytes = PeakNow(pid);
    }
    if (WIFEXITED(status))
        peak.nStatus = WEXITSTATUS(status);
    return peak;
}

std::optional<Peak> PeakOf(std::vector<std::string> command)
{
    std::vector<char *> arguments;
    for (std::string &argument : command)
        arguments.push_back(argument.data());
    arguments.push_back(nullptr);
    const pid_t pid = fork();
    if (pid == 0)
        Become(arguments);
    int status = 0;
    if (pid < 0 || waitpid(pid, &status, 0) != pid || !WIFSTOPPED(status))
        return std::nullopt;
    ptrace(PTRACE_SETOPTIONS, pid, nullptr, PTRACE_O_TRACEEXIT);
    return Follow(pid);
}
