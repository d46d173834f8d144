// The traced copy brackets act with a call whose number means nothing to the system.
#include "tests/support/syscall_count.h"

#include <csignal>
#include <cstddef>

#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

static constexpr long BRACKET = 0x4B56;

[[noreturn]] static void RunTraced(const std::function<void()> &act)
{
    if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0)
        _exit(1);
    raise(SIGSTOP);
    syscall(BRACKET);
    act();
    syscall(BRACKET);
    _exit(0);
}

// The number of the call that the stopped copy is entering, -1 when it stopped elsewhere.
static long EnteredCall(pid_t pid)
{
    __ptrace_syscall_info info{};
    ptrace(PTRACE_GET_SYSCALL_INFO, pid, sizeof(info), &info);
    return info.op == PTRACE_SYSCALL_INFO_ENTRY ? static_cast<long>(info.entry.nr) : -1;
}

std::optional<std::vector<long>> SystemCallsOf(const std::function<void()> &act)
{
    const pid_t pid = fork();
    if (pid == 0)
        RunTraced(act);
    int status = 0;
    if (pid < 0 || waitpid(pid, &status, 0) != pid || !WIFSTOPPED(status))
        return std::nullopt;
    ptrace(PTRACE_SETOPTIONS, pid, nullptr, PTRACE_O_TRACESYSGOOD); // tells calls from signals
    std::vector<long> calls;
    int brackets = 0;
    while (ptrace(PTRACE_SYSCALL, pid, nullptr, nullptr) == 0 && waitpid(pid, &status, 0) == pid &&
           WIFSTOPPED(status)) {
        const long call = EnteredCall(pid);
        if (call == BRACKET)
            ++brackets;
        else if (call >= 0 && brackets == 1)
            calls.push_back(call);
    }
    if (brackets != 2)
        return std::nullopt;
    return calls;
}
