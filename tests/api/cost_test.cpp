// What a call costs on any machine: system calls and allocations.
#include <chrono>
#include <functional>
#include <thread>

#include "datafile/loader.h"
#include "tests/api/api_test.h"
#include "tests/support/alloc_count.h"
#include "tests/support/large_model.h"
#include "tests/support/syscall_count.h"

namespace
{

constexpr size_t LOAD_LIMIT = 14; // system calls to load and free a model's three files

// The large model, on disk.
class CostTest : public ApiTest
{
  protected:
    void SetUp() override
    {
        kvp::SetHostile(false);
        model = LargeModel();
        ApiTest::SetUp();
        kvp::ClearMemoryFiles();
        InstallOnDisk(model, "KV1", SYSTEM_DIR);
    }
    // The layer believes a listing of a directory only when nothing has changed there for a while,
    // as on any machine but one that was installed this second.
    static void LetDirectoriesRest() { std::this_thread::sleep_for(std::chrono::seconds(3)); }
    static long AllocationsOf(const std::function<void()> &act)
    {
        const long before = AllocationsSoFar().made;
        act();
        return AllocationsSoFar().made - before;
    }
};

} // namespace

TEST_F(CostTest, ItemsThatNeedNoFileCostNeitherSystemCallsNorMemory)
{
    int16_t word = 0;
    int32_t results = 0;
    const std::function<void()> act = [&] {
        for (const uint32_t item : {KVDD_COPIES, KVDD_ORIENTATION, KVDD_APIFLAG}) {
            results |= Get(item, &word);
            results |= Set(item, 1);
            Set(item, 100); // refused
        }
    };
    act();
    EXPECT_EQ(results, 0);
    const auto calls = SystemCallsOf(act);
    if (calls) {
        EXPECT_THAT(*calls, ::testing::IsEmpty());
    }
    if (AllocationsAreCounted()) {
        EXPECT_EQ(AllocationsOf(act), 0);
    }
    if (!calls || !AllocationsAreCounted())
        GTEST_SKIP() << "not all can be counted here";
}

TEST_F(CostTest, LoadingAModelCostsFewSystemCallsAndLeavesNothing)
{
    BOOL loaded = FALSE;
    const std::function<void()> act = [&] {
        loaded = Get_DATFile(&record);
        Free_DATFile(&record);
    };
    LetDirectoriesRest();
    act();
    EXPECT_TRUE(loaded);
    const auto calls = SystemCallsOf(act);
    const long held = AllocationsSoFar().held;
    act();
    EXPECT_EQ(AllocationsSoFar().held, held);
    if (!calls || !AllocationsAreCounted())
        GTEST_SKIP() << "not all can be counted here";
    EXPECT_LE(calls->size(), LOAD_LIMIT) << ::testing::PrintToString(*calls);
}

TEST_F(CostTest, ChangesThatLoadFilesLeaveNothing)
{
    const std::function<void()> act = [&] {
        KVDDSETPAPER paper = {1000, 1500, 256, 0};
        KVDDPRINTMODE mode = {1, 2, 20, 1};
        EXPECT_EQ(SetWords(KVDD_PAPER, paper), 0);
        EXPECT_EQ(Set(KVDD_SOURCE, 4), 0);
        EXPECT_EQ(SetWords(KVDD_PRINTMODE, mode), 0);
        EXPECT_EQ(Set(KVDD_PRINTAREA, 0), 0);
        KVDDPAPER size;
        EXPECT_EQ(Get(KVDD_PAPER, &size), 0);
    };
    act();
    const long held = AllocationsSoFar().held;
    act();
    EXPECT_EQ(AllocationsSoFar().held, held);
}
