// What the sheet costs on any machine: windows painted, what openings leave behind, memory.
#include "tests/support/alloc_count.h"
#include "tests/support/peak_memory.h"
#include "tests/support/samples.h"

#include <filesystem>
#include <fstream>

namespace
{

constexpr long MOST_KILOBYTES = 32 * 1024;

const std::vector<Person::Step> EVERY_PAGE = {"page \"Paper\"", "page \"Utility\"", "page \"Main\"",
                                              "cancel"};

class SheetCost : public SampleTest
{
  protected:
    // How many windows a repaint of the page on top has to paint.
    static size_t VisibleWindows()
    {
        size_t nVisible = 1;
        const auto page = nlohmann::json::parse(kvp::DescribeTopWindow());
        for (const auto &control : page.at("controls"))
            nVisible += control.at("visible") == true;
        return nVisible;
    }
    void Remember() { nPaints = kvp::PaintsSoFar(); }
    size_t PaintsSince() const { return kvp::PaintsSoFar() - nPaints; }

    size_t nPaints = 0;
};

TEST_F(SheetCost, EveryWindowIsPaintedOnceAndOnlyWhenItIsInvalid)
{
    Start();
    std::vector<Person::Step> steps;
    for (const char *page : {"Main", "Paper", "Utility"}) {
        const auto at = [page](const char *what) { return std::string(page) + ": " + what; };
        steps.emplace_back(std::string("page \"") + page + "\"");
        steps.emplace_back([this] { Remember(); });
        steps.emplace_back([this, at] {
            EXPECT_EQ(PaintsSince(), 0u) << at("nothing was done");
            InvalidateRect(kvp::TopWindow(), nullptr, TRUE);
        });
        steps.emplace_back([this, at] {
            EXPECT_EQ(PaintsSince(), VisibleWindows()) << at("the whole page");
            Remember();
        });
    }
    steps.emplace_back("cancel");
    EXPECT_EQ(Show(steps), IDCANCEL);
}

TEST_F(SheetCost, OpeningsLeaveNothing)
{
    Start();
    const auto look = [this] { EXPECT_EQ(Show(EVERY_PAGE), IDCANCEL); };
    for (int i = 0; i < 3; ++i) // what is kept from now on is kept
        look();
    const long nAllocated = AllocationsSoFar().held;
    const kvp::Held held = kvp::CurrentlyHeld();
    const kvp::GuiHeld gui = kvp::CurrentlyHeldGui();
    for (int i = 0; i < 10; ++i)
        look();
    EXPECT_EQ(AllocationsSoFar().held, nAllocated);
    EXPECT_EQ(kvp::CurrentlyHeld().nBlocks, held.nBlocks);
    EXPECT_EQ(kvp::CurrentlyHeld().nFiles, held.nFiles);
    EXPECT_EQ(kvp::CurrentlyHeld().nLibraries, held.nLibraries);
    EXPECT_EQ(kvp::CurrentlyHeldGui().nObjects, gui.nObjects);
    EXPECT_EQ(kvp::CurrentlyHeldGui().nContexts, gui.nContexts);
}

TEST_F(SheetCost, AProcessThatShowsTheSheetStaysSmall)
{
    if (!AllocationsAreCounted())
        GTEST_SKIP() << "the sanitizers need memory of their own";
    Start();
    const std::string script = machine.strRoot + "/pages.txt";
    std::ofstream(script) << "page \"Paper\"\npage \"Utility\"\ncancel\n";
    const auto peak = PeakOf({KV_HOST_PATH, "settings", "-p", "Studio", "--root", machine.strRoot,
                              "--display", "headless", "--script", script});
    if (!peak)
        GTEST_SKIP() << "the memory of a process cannot be seen here";
    EXPECT_EQ(peak->nStatus, 3) << "cancelled";
    EXPECT_GT(peak->kilobytes, 1024) << "seen at all";
    EXPECT_LE(peak->kilobytes, MOST_KILOBYTES);
}

} // namespace
