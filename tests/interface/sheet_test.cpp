// The sheet as the entry points show it to a person: what they give back and write for each way
// out of it, its pages, and what stays behind.
#include <cstring>

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
using ::testing::IsEmpty;

class Sheet : public InterfaceTest
{
  protected:
    LONG Document(DriverDevMode *lpOut, DriverDevMode *lpIn, DWORD dwFlags)
    {
        return driver.DrvDocumentProperties(nullptr, hPrinter, nullptr, lpOut, lpIn, dwFlags);
    }
    LONG Advanced(DriverDevMode *lpOut, DriverDevMode *lpIn)
    {
        return driver.DrvAdvancedDocumentProperties(nullptr, hPrinter, nullptr, lpOut, lpIn);
    }
    std::function<void()> SeesPage(int id)
    {
        return [id] { EXPECT_EQ(GetDlgCtrlID(kvp::TopWindow()), id); };
    }

    Person person;
};

TEST_F(Sheet, TheWayOutDecidesWhatTheCallerGets)
{
    Start();
    // What the output record holds: nothing was written, the settings, or the caller's own bytes.
    enum Output { UNTOUCHED, SETTINGS, INPUT };
    const struct {
        const char *why;
        bool advanced;
        DWORD dwFlags;
        bool in, out;
        const char *way;
        LONG lResult;
        Output output;
    } aRows[] = {
        {"OK", false, DM_PROMPT | DM_COPY, true, true, "ok", 1, SETTINGS},
        {"Cancel gives what was merged", false, DM_PROMPT | DM_COPY, true, true, "cancel", 2,
         SETTINGS},
        {"OK without being asked to copy", false, DM_PROMPT, true, true, "ok", 1, SETTINGS},
        {"Cancel without being asked to copy", false, DM_PROMPT, true, true, "cancel", 2, SETTINGS},
        {"the default button", false, DM_PROMPT | DM_COPY, true, true, "key Enter", 1, SETTINGS},
        {"the Escape key", false, DM_PROMPT | DM_COPY, true, true, "key Escape", 2, SETTINGS},
        {"nowhere to write", false, DM_PROMPT, true, false, "ok", 1, UNTOUCHED},
        {"advanced, OK", true, 0, true, true, "ok", 1, SETTINGS},
        {"advanced, Cancel gives the input back", true, 0, true, true, "cancel", 2, INPUT},
        {"advanced, nothing to give back", true, 0, false, true, "cancel", 2, UNTOUCHED},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        DriverDevMode given = SevenCopies();
        given.dm.dmPaperSize = 77; // not merged: its field is not meant
        PlacedRecord in, out;
        in.Put(given);
        DriverDevMode *lpIn = row.in ? in.Get() : nullptr, *lpOut = row.out ? out.Get() : nullptr;
        person.Will({row.way});
        EXPECT_EQ(row.advanced ? Advanced(lpOut, lpIn) : Document(lpOut, lpIn, row.dwFlags),
                  row.lResult);
        person.ExpectDone();
        EXPECT_EQ(out.Untouched(), row.output == UNTOUCHED);
        EXPECT_TRUE(out.GuardsHold());
        if (row.output == INPUT) {
            EXPECT_EQ(out.Content(), in.Content());
        }
        if (row.output == SETTINGS) {
            const DriverDevMode got = *out.Get();
            EXPECT_EQ(got.dm.dmCopies, 7);
            EXPECT_EQ(got.dm.dmPaperSize, 9);
        }
        EXPECT_THAT(BoxesShown(), IsEmpty());
    }
}

TEST_F(Sheet, ASheetThatNobodyChangesGivesTheSettingsAsTheyWere)
{
    Start();
    const DriverDevMode before = Settings();
    DriverDevMode after{};
    person.Will({"page \"Paper\"", "page \"Utility\"", "page \"Main\"", "cancel"});
    EXPECT_EQ(Document(&after, nullptr, DM_COPY | DM_PROMPT), 2);
    EXPECT_EQ(std::memcmp(&before, &after, sizeof before), 0);
    person.ExpectDone();
}

TEST_F(Sheet, OpensOnTheMainPageAndTurnsToTheOthers)
{
    Start();
    DriverDevMode out;
    person.Will({SeesPage(IDD_MAIN), "page \"Utility\"", SeesPage(IDD_UTILITY), "page \"Paper\"",
                 SeesPage(IDD_PAPER), "page \"Main\"", SeesPage(IDD_MAIN), "ok"});
    EXPECT_EQ(Document(&out, nullptr, DM_COPY | DM_PROMPT), 1);
    person.ExpectDone();
}

TEST_F(Sheet, BearsThePrintersName)
{
    Start();
    DriverDevMode out;
    person.Will({});
    EXPECT_EQ(Document(&out, nullptr, DM_COPY | DM_PROMPT), 2) << "left alone, it is cancelled";
    EXPECT_THAT(kvp::CurrentPlay().strWhy, HasSubstr("\"Office\""));
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

TEST_F(Sheet, LeavesNothingBehind)
{
    Start();
    DriverDevMode out;
    for (int i = 0; i < 10; ++i) {
        person.Will({"page \"Paper\"", "page \"Utility\"", i % 2 ? "ok" : "cancel"});
        EXPECT_GT(Document(&out, nullptr, DM_COPY | DM_PROMPT), 0);
        EXPECT_EQ(kvp::CurrentlyHeld().nLibraries, 1u) << "the driver itself";
        EXPECT_EQ(kvp::CurrentlyHeld().nBlocks, 0u);
        EXPECT_EQ(kvp::CurrentlyHeld().nFiles, 0u);
        EXPECT_EQ(kvp::CurrentlyHeldGui().nObjects, 0u);
        EXPECT_EQ(kvp::CurrentlyHeldGui().nContexts, 0u);
    }
}

} // namespace
