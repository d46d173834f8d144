// Long use by somebody who does anything: nothing breaks, nothing is left behind, Cancel undoes
// all.
#include <cstring>
#include <random>

#include "tests/support/held.h"
#include "tests/support/samples.h"
#include "tests/support/wanderer.h"

namespace
{
constexpr int SHEETS = 25, ACTIONS = 200;
} // namespace

class WanderTest : public SampleTest
{
  protected:
    // The sheet on `in` until the wanderer leaves it. Which random numbers he has tells the seed.
    LONG Wander(uint32_t seed, const char *leaveBy)
    {
        std::mt19937 random(seed);
        Wanderer wanderer([&](uint32_t n) { return static_cast<uint32_t>(random() % n); }, ACTIONS,
                          leaveBy);
        std::string done;
        kvp::SetInputSource([&] {
            const auto line = wanderer.Next();
            done += line.value_or("") + "\n";
            return line;
        });
        const LONG lResult = driver.DrvDocumentProperties(nullptr, queue->hPrinter, nullptr, &out,
                                                          &in, DM_PROMPT | DM_MODIFY | DM_COPY);
        EXPECT_FALSE(kvp::CurrentPlay().bFailed)
            << kvp::CurrentPlay().strWhy << " with seed " << seed << " after\n"
            << done;
        kvp::SetInputSource(nullptr);
        return lResult;
    }
    // Every page and dialog has been open once, so what is made once and kept is there.
    void SeeAll()
    {
        DriverDevMode before = in;
        ASSERT_EQ(Show({"page \"Utility\"", "page \"Paper\"", "choose 5040 \"User Defined\"",
                        "key Escape", "page \"Main\"", "click 5042", "click 2017", "key Escape",
                        "click 2019", "key Escape", "click 2018", "key Escape", "cancel"}),
                  IDCANCEL);
        in = before;
        first = HeldNow();
    }
    decltype(HeldNow()) first{};
};

TEST_F(WanderTest, CancelUndoesWhateverWasDone)
{
    Start();
    // What the driver gives back without the sheet is what it gives back after Cancel.
    DriverDevMode merged{};
    ASSERT_EQ(driver.DrvDocumentProperties(nullptr, queue->hPrinter, nullptr, &merged, &in,
                                           DM_MODIFY | DM_COPY),
              IDOK);
    SeeAll();
    for (uint32_t seed = 1; seed <= SHEETS; ++seed) {
        SCOPED_TRACE(seed);
        ASSERT_EQ(Wander(seed, "cancel"), IDCANCEL);
        EXPECT_EQ(std::memcmp(&out, &merged, sizeof out), 0);
        EXPECT_EQ(HeldNow(), first);
    }
}

TEST_F(WanderTest, WhatIsConfirmedOpensAgain)
{
    Start(SMALL_SAMPLE);
    SeeAll();
    for (uint32_t seed = 1; seed <= SHEETS; ++seed) {
        SCOPED_TRACE(seed);
        ASSERT_EQ(Wander(seed, "ok"), IDOK);
        EXPECT_TRUE(out.dm.dmOrientation == 1 || out.dm.dmOrientation == 2);
        EXPECT_TRUE(out.dm.dmCopies >= 1 && out.dm.dmCopies <= 99);
        for (const int nAdjustment : out.Settings.sAdj)
            EXPECT_LE(std::abs(nAdjustment), 25);
        in = out;
        EXPECT_EQ(HeldNow(), first);
    }
}
