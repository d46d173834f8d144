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

// The traced copy, stopped before the first bracket; -1 when it cannot be had.
static pid_t StartTraced(const std::function<void()> &act)
{
    const pid_t pid = fork();
    if (pid == 0)
        RunTraced(act);
    int status = 0;
    if (pid < 0 || waitpid(pid, &status, 0) != pid || !WIFSTOPPED(status))
        return -1;
    ptrace(PTRACE_SETOPTIONS, pid, nullptr, PTRACE_O_TRACESYSGOOD); // tells calls from signals
    return pid;
}

// Lets the copy run on and tells of each call between the brackets, until it ends or the answer is
// false. How many brackets it came by.
static int FollowCalls(pid_t pid, const std::function<bool(long)> &onCall)
{
    int brackets = 0, status = 0;
    while (ptrace(PTRACE_SYSCALL, pid, nullptr, nullptr) == 0 && waitpid(pid, &status, 0) == pid &&
           WIFSTOPPED(status)) {
        const long call = EnteredCall(pid);
        if (call == BRACKET)
            ++brackets;
        else if (call >= 0 && brackets == 1 && !onCall(call))
            break;
    }
    return brackets;
}

std::optional<std::vector<long>> SystemCallsOf(const std::function<void()> &act)
{
    const pid_t pid = StartTraced(act);
    std::vector<long> calls;
    const auto keep = [&](long call) {
        calls.push_back(call);
        return true;
    };
    if (pid < 0 || FollowCalls(pid, keep) != 2)
        return std::nullopt;
    return calls;
}

std::optional<bool> KilledAtCall(const std::function<void()> &act, size_t n)
{
    const pid_t pid = StartTraced(act);
    if (pid < 0)
        return std::nullopt;
    const int brackets = FollowCalls(pid, [&](long) { return n-- > 0; });
    if (brackets == 2)
        return false;
    kill(pid, SIGKILL);
    waitpid(pid, nullptr, 0);
    return true;
}
