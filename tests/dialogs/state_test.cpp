// The sheet's state: where it comes from, who sees it, and what happens without it.
#include <array>

#include "base/module.h"
#include "base/text.h"
#include "dialogs/helpers.h"
#include "dialogs/pages.h"
#include "platform/win32.h"
#include "resources/main_ids.h"
#include "tests/dialogs/sheet_fixture.h"

namespace
{

using ::testing::ElementsAre;
using ::testing::HasSubstr;

class State : public SheetTest
{
  protected:
    State() { InstallLibrary(KV_TEST_UTILITY, UTILITY); }
    static INT_PTR Notice(DLGPROC proc, UINT code)
    {
        NMHDR notice{nullptr, 0, code};
        return proc(kvp::TopWindow(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&notice));
    }
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
        EXPECT_EQ(UIInstance.nCurSetting, 0);
        EXPECT_EQ(UIInstance.nListState, 0);
        EXPECT_EQ(UIInstance.wAdjState[5], 0);
        EXPECT_EQ(UIInstance.dwFilling, 0u);
    };
    for (int i = 0; i < 2; ++i) {
        UIInstance.nCurSetting = 1000;
        UIInstance.nListState = 2000;
        UIInstance.wAdjState[5] = 7;
        UIInstance.dwFilling = 1;
        EXPECT_EQ(Enter({look, fresh, "page \"Paper\"", look, "page \"Utility\"", look, "ok"}), 1);
        person.ExpectDone();
    }
}

TEST_F(State, TheUtilityButtonWithTheFocusIsKnown)
{
    const auto code = [](BYTE bCode) {
        return [bCode] { EXPECT_EQ(UIInstance.bButtonDown, bCode); };
    };
    const auto stale = [] { UIInstance.bButtonDown = 2; };
    EXPECT_EQ(Enter({"page \"Utility\"",
                     code(0),
                     "focus 2018",
                     code(2),
                     "focus 2020",
                     code(8),
                     "focus 2019",
                     code(4),
                     "key Tab",
                     code(0),
                     stale,
                     "page \"Main\"",
                     code(0),
                     stale,
                     "page \"Paper\"",
                     code(0),
                     stale,
                     "page \"Utility\"",
                     code(0),
                     "ok"}),
              1);
    person.ExpectDone();
}

TEST_F(State, PagesAnswerTheSheetsNotices)
{
    const struct {
        UINT code;
        INT_PTR main, paper, utility;
    } aRows[] = {
        {PSN_SETACTIVE, TRUE, TRUE, FALSE},
        {PSN_KILLACTIVE, FALSE, FALSE, FALSE},
        {PSN_APPLY, TRUE, TRUE, FALSE},
        {PSN_RESET, FALSE, FALSE, FALSE},
        {static_cast<UINT>(-299), TRUE, TRUE, FALSE},
    };
    const auto look = [&] {
        for (const auto &row : aRows) {
            SCOPED_TRACE(static_cast<int>(row.code));
            EXPECT_EQ(Notice(BasicUIDlgProc, row.code), row.main);
            EXPECT_EQ(Notice(PaperUIDlgProc, row.code), row.paper);
            EXPECT_EQ(Notice(UtyUIDlgProc, row.code), row.utility);
        }
    };
    EXPECT_EQ(Enter({look, "ok"}), 1);
}

TEST_F(State, PagesMakeTrackbarsAndTakeTextsFromTheModel)
{
    const auto look = [this] {
        HWND hDlg = kvp::TopWindow();
        constexpr int ID = 99; // none of the page's
        HWND hBar = CreateSlideTrackBar(hDlg, 10, 20, 100, 30, ID);
        EXPECT_EQ(Shown(ID), hBar);
        POINT at{10, 20};
        ClientToScreen(hDlg, &at);
        RECT rc{};
        GetWindowRect(hBar, &rc);
        EXPECT_THAT((std::array{rc.left, rc.top, rc.right, rc.bottom}),
                    ElementsAre(at.x, at.y, at.x + 100, at.y + 30));
        char szText[256];
        EXPECT_TRUE(SetStaticText(block.hResLib, hDlg, IDC_MAIN_LEVEL_LEFT, 6660));
        GetDlgItemTextA(hDlg, IDC_MAIN_LEVEL_LEFT, szText, sizeof szText);
        EXPECT_STREQ(szText, "CleanHeads");
        EXPECT_TRUE(SetStaticText(block.hResLib, hDlg, IDC_MAIN_LEVEL_LEFT, 9999));
        GetDlgItemTextA(hDlg, IDC_MAIN_LEVEL_LEFT, szText, sizeof szText);
        EXPECT_STREQ(szText, "") << "a missing text";
    };
    EXPECT_EQ(Enter({look, "ok"}), 1);
}

// Lists measure their items while they are made; others may ask for colours, or be destroyed.
TEST_F(State, BeforeItsOpeningAPageTouchesNothing)
{
    for (const DLGPROC proc : {BasicUIDlgProc, PaperUIDlgProc, UtyUIDlgProc})
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
