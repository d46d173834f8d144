// A machine for one test: a fresh root directory (removed afterwards), a known user, files in
// memory, every message box answered and kept.
#ifndef KV_TESTS_SUPPORT_MACHINE_H
#define KV_TESTS_SUPPORT_MACHINE_H

#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/host.h"

class MachineTest : public ::testing::Test
{
  protected:
    MachineTest();
    ~MachineTest() override;
    MachineTest(const MachineTest &) = delete;
    MachineTest &operator=(const MachineTest &) = delete;

    // Changes the machine: machine.wLang = 0x0411; Apply();
    void Apply();
    // The boxes shown since the last call, as "caption: text".
    std::vector<std::string> BoxesShown();

    kvp::Machine machine;
    int nAnswer = 1; // to every message box
    std::vector<kvp::Box> aBoxes;
};

// Runs the action with the n-th call of a kind failing, for n = 0, 1, 2, ... up to the first n that
// no call reaches, or until the test has failed; how many failures there were. The action is told
// n, and may ask what has been reached; the check follows it when nothing fails any more.
int WithEachFailure(
    kvp::Call call, const std::function<void(int n)> &action,
    const std::function<void()> &check = [] {});
bool HasReached(kvp::Call call, int n);

constexpr const char *SYSTEM_DIR = "C:\\winnt35\\system32\\";
constexpr const char *WINDOWS_DIR = "C:\\winnt35\\";
constexpr const char *DRIVER_DIR = "C:\\winnt35\\system32\\spool\\drivers\\w32x86\\1\\";

#endif
