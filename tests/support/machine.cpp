// The machine of a test: made, configured anew, and removed.
#include "tests/support/machine.h"

#include <cstdlib>
#include <filesystem>

MachineTest::MachineTest()
{
    std::string strPattern = (std::filesystem::temp_directory_path() / "kvtest.XXXXXX").string();
    if (!mkdtemp(strPattern.data()))
        std::abort();
    machine.strRoot = strPattern;
    Apply();
    kvp::SetHostile(true);
    // Whatever display the tests are run from.
    kvp::ConfigureScreen({.strDisplay = "headless", .nScale = 1, .strScript = "", .strShots = ""});
    kvp::SetBoxHandler([this](const kvp::Box &box) {
        aBoxes.push_back(box);
        return nAnswer;
    });
}

MachineTest::~MachineTest()
{
    kvp::SetBoxHandler(nullptr);
    kvp::ClearMemoryFiles();
    for (int i = 0; i < static_cast<int>(kvp::Call::Count); ++i)
        kvp::FailCall(static_cast<kvp::Call>(i), -1);
    kvp::SetHostile(false);
    std::error_code ignored;
    std::filesystem::remove_all(machine.strRoot, ignored);
}

void MachineTest::Apply()
{
    kvp::Configure(machine);
}

std::vector<std::string> MachineTest::BoxesShown()
{
    std::vector<std::string> texts;
    for (const kvp::Box &box : aBoxes)
        texts.push_back(box.strCaption + ": " + box.strText);
    aBoxes.clear();
    return texts;
}

bool HasReached(kvp::Call call, int n)
{
    return kvp::CallsSeen(call) > n;
}

int WithEachFailure(kvp::Call call, const std::function<void(int n)> &action,
                    const std::function<void()> &check)
{
    for (int n = 0;; ++n) {
        SCOPED_TRACE(testing::Message() << "call " << static_cast<int>(call) << ", failure " << n);
        kvp::FailCall(call, n);
        action(n);
        const bool bReached = HasReached(call, n);
        kvp::FailCall(call, -1);
        check();
        if (!bReached || testing::Test::HasFailure())
            return n;
    }
}
