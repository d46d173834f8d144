// Whatever step of a call fails, the result is a documented one and the record is whole.
#include <array>
#include <functional>

#include "tests/api/api_test.h"

namespace
{

struct Change {
    const char *why;
    uint32_t item;
    std::array<int16_t, 4> words; // the first is the value of items of one word
    bool pointer;
};

constexpr Change aChanges[] = {
    {"paper", KVDD_PAPER, {0, 0, 1, 0}, true},
    {"free size", KVDD_PAPER, {1000, 1500, 256, 0}, true},
    {"source", KVDD_SOURCE, {4}, false},
    {"automatic", KVDD_PRINTMODE, {1, 2, 20, 1}, true},
    {"advanced", KVDD_PRINTMODE, {0, 0, 0, 0}, true},
    {"area", KVDD_PRINTAREA, {1}, false},
};

} // namespace

// Fails the n-th call of a kind, for n = 0, 1, 2, ... until the action asks for fewer.
static void FailEach(kvp::Call call, const std::function<void()> &act)
{
    for (int n = 0; n < 100; ++n) {
        SCOPED_TRACE(n);
        kvp::FailCall(call, n);
        act();
        const bool spared = kvp::CallsSeen(call) <= n;
        kvp::FailCall(call, -1);
        if (spared)
            return;
    }
    ADD_FAILURE() << "never done";
}

TEST_F(ApiTest, AFailingFileLeavesTheRecordAsItWasOrTheChangeComplete)
{
    model.AddUserPaper("Card", 1000, 1500, 1, 3);
    for (const Change &change : aChanges) {
        for (const kvp::Call call : {kvp::Call::OpenFile, kvp::Call::Read, kvp::Call::Alloc}) {
            SCOPED_TRACE(testing::Message() << change.why << ", call " << static_cast<int>(call));
            int successes = 0;
            Install();
            const DriverDevMode fresh = record;
            const std::string before = BytesOf(record);
            FailEach(call, [&] {
                record = fresh;
                std::array<int16_t, 4> words = change.words;
                const int32_t result =
                    Set(change.item,
                        change.pointer ? reinterpret_cast<intptr_t>(words.data()) : words[0]);
                successes += result == KVDD_OK;
                EXPECT_THAT(result, ::testing::AnyOf(0, -7));
                EXPECT_EQ(BytesOf(record) == before, result != KVDD_OK);
            });
            EXPECT_GT(successes, 0);
        }
    }
}

TEST_F(ApiTest, AFailingFileLeavesThePaperOfARangeAsItWas)
{
    void *ids = kvp::AllocLow(64);
    ASSERT_NE(ids, nullptr);
    const std::string before = BytesOf(record);
    FailEach(kvp::Call::OpenFile, [&] {
        KVDDPAPERRANGE range{};
        range.dwIds = static_cast<uint32_t>(reinterpret_cast<uintptr_t>(ids));
        EXPECT_THAT(Range(KVDD_PAPER, &range), ::testing::AnyOf(0, -7));
        EXPECT_EQ(BytesOf(record), before);
    });
    kvp::FreeLow(ids, 64);
}

TEST_F(ApiTest, AFileCutShortIsNoData)
{
    Bytes dat = model.Dat();
    dat.resize(100);
    kvp::PutMemoryFile(std::string(WINDOWS_DIR) + "KV1.dat", dat);
    const std::string before = BytesOf(record);
    EXPECT_EQ(Set(KVDD_SOURCE, 4), -7);
    EXPECT_EQ(BytesOf(record), before);
    EXPECT_THAT(BoxesShown(), ::testing::Each("Dlg DLL Message: Version Error of dat file. "
                                              "Please Install again."));
}
