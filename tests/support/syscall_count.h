// Which system calls a piece of code makes, seen from outside, and what is left when it is killed
// at one of them.
#ifndef KV_TESTS_SUPPORT_SYSCALL_COUNT_H
#define KV_TESTS_SUPPORT_SYSCALL_COUNT_H

#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

// Runs act in a traced copy of this process and gives the numbers of its system calls in order;
// nothing when the system forbids tracing. What act changes in memory is lost with the copy.
std::optional<std::vector<long>> SystemCallsOf(const std::function<void()> &act);
// Runs act in a traced copy of this process, which is killed when it enters its n-th system call.
// Whether it got so far; nothing when the system forbids tracing.
std::optional<bool> KilledAtCall(const std::function<void()> &act, size_t n);

#endif
