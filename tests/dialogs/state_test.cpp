// The sheet's state: where it comes from, who sees it, and what happens without it.
#include "base/module.h"
#include "base/text.h"
#include "dialogs/helpers.h"
#include "dialogs/pages.h"
#include "platform/win32.h"
#include "tests/dialogs/sheet_fixture.h"

namespace
{

using ::testing::HasSubstr;

constexpr DLGPROC aProcs[] = {BasicUIDlgProc, PaperUIDlgProc, UtyUIDlgProc};

class State : public SheetTest
{
  protected:
    State() { InstallLibrary(KV_TEST_UTILITY, UTILITY); }
};

TEST_F(State, EverySheetStartsFromNothingAndItsPagesShareTheBlock)
{
    const auto look = [this] {
        EXPECT_EQ(FindCB(kvp::TopWindow()), &block);
        EXPECT_EQ(block.lpDevMode, &dm);
        EXPECT_EQ(block.lpInstance, &UIInstance);
        EXPECT_NE(block.hResLib, nullptr);
        EXPECT_EQ(UIInstance.hResLib, block.hResLib);
    };
    const auto fresh = [] {
        EXPECT_EQ(UIInstance.nListState, 0);
        EXPECT_EQ(UIInstance.wAdjState[5], 0);
    };
    for (int i = 0; i < 2; ++i) {
        UIInstance.nListState = 2000;
        UIInstance.wAdjState[5] = 7;
        EXPECT_EQ(Enter({look, fresh, "page \"Paper\"", look, "page \"Utility\"", look, "ok"}), 1);
        person.ExpectDone();
    }
}

TEST_F(State, TheUtilityButtonWithTheFocusIsKnownUntilAPageIsShown)
{
    std::vector<Person::Step> steps;
    const auto leadsTo = [&](const char *action, BYTE bCode) {
        steps.insert(steps.end(), {action, [=] { EXPECT_EQ(UIInstance.bButtonDown, bCode); }});
    };
    leadsTo("page \"Utility\"", 0);
    leadsTo("focus 2018", 2);
    leadsTo("focus 2020", 8);
    leadsTo("focus 2019", 4);
    leadsTo("key Tab", 0);
    for (const char *page : {"page \"Main\"", "page \"Paper\"", "page \"Utility\""}) {
        steps.emplace_back([] { UIInstance.bButtonDown = 2; });
        leadsTo(page, 0);
    }
    steps.emplace_back("ok");
    EXPECT_EQ(Enter(steps), 1);
    person.ExpectDone();
}

TEST_F(State, PagesAnswerTheSheetsNotices)
{
    const struct {
        UINT code;
        INT_PTR answers[3];
    } aRows[] = {
        {PSN_SETACTIVE, {TRUE, TRUE, FALSE}}, {PSN_KILLACTIVE, {FALSE, FALSE, FALSE}},
        {PSN_APPLY, {TRUE, TRUE, FALSE}},     {PSN_RESET, {FALSE, FALSE, FALSE}},
        {UINT(-299), {TRUE, TRUE, FALSE}},
    };
    const auto look = [&] {
        for (const auto &row : aRows)
            for (size_t i = 0; i < 3; ++i) {
                NMHDR notice{nullptr, 0, row.code};
                EXPECT_EQ(
                    aProcs[i](kvp::TopWindow(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&notice)),
                    row.answers[i])
                    << static_cast<int>(row.code) << ' ' << i;
            }
    };
    EXPECT_EQ(Enter({look, "ok"}), 1);
}

// Lists measure their items while they are made; others may ask for colours, or be destroyed.
TEST_F(State, BeforeItsOpeningAPageTouchesNothing)
{
    for (const DLGPROC proc : aProcs)
        for (const UINT uMsg :
             {WM_DRAWITEM, WM_NOTIFY, WM_COMMAND, WM_HELP, WM_CONTEXTMENU, WM_HSCROLL, WM_VSCROLL})
            EXPECT_EQ(proc(nullptr, uMsg, 0, 0), FALSE) << uMsg;
    for (const DLGPROC proc : {BasicUIDlgProc, PaperUIDlgProc}) {
        MEASUREITEMSTRUCT item{ODT_COMBOBOX, 1, 0, 0, 99, 0};
        EXPECT_EQ(proc(nullptr, WM_MEASUREITEM, 1, reinterpret_cast<LPARAM>(&item)), TRUE);
        EXPECT_EQ(item.itemHeight, 99u) << "not one of the page's";
    }
}

TEST_F(State, WithoutABlockOrAnOrientationTheProgramStopsAndSaysWhere)
{
    kvp::SetBoxHandler(nullptr);
    EXPECT_DEATH(RequireCB(nullptr, "dial_uty"), "lpcbstruc.*dial_uty");
    RequireOrientation(&dm, "dial_bas");
    dm.dm.dmOrientation = 0;
    EXPECT_DEATH(RequireOrientation(&dm, "dial_bas"), "lpdi->dmOrientation.*dial_bas");
}

TEST_F(State, APrinterThatSaysNothingIsCalledAsTheRecordSays)
{
    WCHAR wszDevice[32] = u"Desk";
    KVMemcpy(dm.dm.dmDeviceName, wszDevice, sizeof wszDevice);
    InstallLibrary(KV_TEST_UI_LIBRARY, "C:\\winnt35\\KVUI.DLL"); // no directory: found by its name
    block.hPrinter = nullptr;
    EXPECT_EQ(Enter({}), 2);
    EXPECT_THAT(kvp::CurrentPlay().strWhy, HasSubstr("\"Desk\""));
}

TEST_F(State, WithoutItsPagesASheetFailsAndLeavesNothing)
{
    FreeLibrary(hModule);
    hModule = kvp::LoadHostLibrary(KV_TEST_UI_LIBRARY); // pictures, but no pages
    InstallLibrary(KV_TEST_CTL3D, CTL3D);
    const size_t nLibraries = kvp::CurrentlyHeld().nLibraries;
    EXPECT_EQ(Enter({}), -1);
    EXPECT_EQ(aBoxes.back().strText, "freed");
    EXPECT_EQ(kvp::CurrentlyHeld().nLibraries, nLibraries);
}

} // namespace
