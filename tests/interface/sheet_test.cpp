// The sheet as the entry points show it to a person: what they give back and write for each way
// out of it, its pages, and a second one while it is open.
#include <gmock/gmock.h>

#include "resources/main_ids.h"
#include "resources/paper_ids.h"
#include "resources/utility_ids.h"
#include "tests/interface/fixture.h"
#include "tests/support/person.h"

namespace
{

using ::testing::ElementsAre;
using ::testing::HasSubstr;

class Sheet : public InterfaceTest
{
  protected:
    std::function<void()> SeesPage(int id)
    {
        return [id] { EXPECT_EQ(GetDlgCtrlID(kvp::TopWindow()), id); };
    }

    Person person;
};

// The caller's record has seven copies, and a paper whose field is not meant; the person chooses
// black ink.
TEST_F(Sheet, TheWayOutDecidesWhatTheCallerGets)
{
    Start();
    enum Output { UNTOUCHED, MERGED, EDITED, INPUT };
    const struct {
        const char *why;
        bool advanced;
        DWORD dwFlags;
        bool in, out;
        const char *way;
        LONG lResult;
        Output output;
    } aRows[] = {
        {"OK, not asked to copy", false, DM_PROMPT, true, true, "ok", 1, EDITED},
        {"Cancel gives what was merged", false, DM_PROMPT | DM_COPY, true, true, "cancel", 2,
         MERGED},
        {"nowhere to write", false, DM_PROMPT, true, false, "ok", 1, UNTOUCHED},
        {"advanced, OK", true, 0, true, true, "ok", 1, EDITED},
        {"advanced, Cancel gives the input back", true, 0, true, true, "cancel", 2, INPUT},
        {"advanced, nothing to give back", true, 0, false, true, "cancel", 2, UNTOUCHED},
    };
    DriverDevMode given = SevenCopies();
    given.dm.dmPaperSize = 77;
    const std::string strBlack = "click " + std::to_string(IDC_MAIN_BLACK);
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        PlacedRecord in, out;
        *in.Get() = given;
        DriverDevMode *lpIn = row.in ? in.Get() : nullptr, *lpOut = row.out ? out.Get() : nullptr;
        person.Will({strBlack, row.way});
        EXPECT_EQ(row.advanced ? Advanced(lpOut, lpIn) : Document(lpOut, lpIn, row.dwFlags),
                  row.lResult);
        person.ExpectDone();
        EXPECT_TRUE(out.UntouchedFrom(row.output == UNTOUCHED ? 0 : KV_DEVMODESIZE));
        EXPECT_EQ(in.Content(), BytesOf(given));
        EXPECT_EQ(out.Content() == in.Content(), row.output == INPUT);
        if (row.output == MERGED || row.output == EDITED) {
            const DriverDevMode got = *out.Get();
            EXPECT_THAT(
                (std::array<int, 3>{got.dm.dmCopies, got.dm.dmPaperSize, got.Settings.wInk}),
                ElementsAre(7, 9, row.output == MERGED ? 1 : 0));
        }
        EXPECT_THAT(BoxesShown(), ElementsAre());
    }
}

TEST_F(Sheet, OpensOnTheMainPageAndTurnsToTheOthers)
{
    Start();
    DriverDevMode out;
    person.Will({SeesPage(IDD_MAIN), "page \"Utility\"", SeesPage(IDD_UTILITY), "page \"Paper\"",
                 SeesPage(IDD_PAPER), "page \"Main\"", SeesPage(IDD_MAIN), "ok"});
    EXPECT_EQ(Document(&out, nullptr, DM_COPY | DM_PROMPT), 1);
    person.ExpectDone();
    person.Will({});
    EXPECT_EQ(Document(&out, nullptr, DM_COPY | DM_PROMPT), 2) << "left alone, it is cancelled";
    EXPECT_THAT(kvp::CurrentPlay().strWhy, HasSubstr("\"Office\"")) << "the printer's name on it";
}

TEST_F(Sheet, ASecondOneIsRefusedWhileItIsOpen)
{
    Start();
    PlacedRecord second;
    std::vector<LONG> results;
    person.Will({[&] {
                     results.push_back(Document(second.Get(), nullptr, DM_COPY | DM_PROMPT));
                     results.push_back(Advanced(second.Get(), nullptr));
                 },
                 "page \"Utility\"", SeesPage(IDD_UTILITY), "ok"});
    DriverDevMode out;
    EXPECT_EQ(Document(&out, nullptr, DM_COPY | DM_PROMPT), 1);
    EXPECT_THAT(results, ElementsAre(-1, -1));
    EXPECT_TRUE(second.Untouched());
    person.ExpectDone();
    person.Will({"ok"});
    EXPECT_EQ(Advanced(&out, nullptr), 1) << "the next one is shown";
}

// Queries and the sheet share one block: a query behind its back takes the tables from the pages,
// which stay usable.
TEST_F(Sheet, AQueryWhileItIsOpenDoesNoHarm)
{
    Start();
    std::vector<DWORD> answers;
    person.Will({"page \"Paper\"", "page \"Main\"",
                 [&] {
                     BYTE ab[512];
                     for (const WORD wQuery : {DC_PAPERS, DC_PAPERNAMES})
                         answers.push_back(
                             driver.DrvDeviceCapabilities(hPrinter, nullptr, wQuery, ab, nullptr));
                 },
                 "click " + std::to_string(IDC_MAIN_BLACK), "page \"Paper\"", "page \"Utility\"",
                 "page \"Main\"", "ok"});
    DriverDevMode out;
    EXPECT_EQ(Document(&out, nullptr, DM_COPY | DM_PROMPT), 1);
    EXPECT_THAT(answers, ElementsAre(3, 3));
}

} // namespace
