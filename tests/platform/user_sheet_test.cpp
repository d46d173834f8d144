// The property sheet: when pages are made and what they are told.
#include "platform/served.h"
#include "tests/platform/user_fixture.h"

class SheetTest : public UserTest
{
  protected:
    // What the pages are told, and nothing else.
    Lines Told() { return Taken("INITDIALOG|SETACTIVE|KILLACTIVE|APPLY|RESET|HELP|DESTROY"); }
    Step PagesAreTold(Lines lines)
    {
        return [=, this] { EXPECT_EQ(Told(), lines); };
    }
    // A page's answer to a notice.
    void Answer(int pageId, UINT code, LONG_PTR result)
    {
        onMessage = [=](HWND hWnd, UINT uMsg, WPARAM, LPARAM lParam) -> std::optional<INT_PTR> {
            if (uMsg != WM_NOTIFY || GetDlgCtrlID(hWnd) != pageId ||
                reinterpret_cast<NMHDR *>(lParam)->code != code)
                return std::nullopt;
            SetWindowLongPtrA(hWnd, DWLP_MSGRESULT, result);
            return TRUE;
        };
    }
};

TEST_F(SheetTest, PagesAreMadeWhenTheyAreFirstShownAndToldWhatIsDone)
{
    onMessage = [](HWND hWnd, UINT uMsg, WPARAM, LPARAM lParam) -> std::optional<INT_PTR> {
        if (uMsg == WM_INITDIALOG) {
            EXPECT_EQ(reinterpret_cast<const PROPSHEETPAGEA *>(lParam)->lParam,
                      GetDlgCtrlID(hWnd) - IDD_FIRST + 1000);
        }
        return std::nullopt;
    };
    EXPECT_EQ(Sheet(Steps{PagesAreTold({"INITDIALOG 100", "SETACTIVE 100"}), "page \"Utility\"",
                          PagesAreTold({"KILLACTIVE 100", "INITDIALOG 102", "SETACTIVE 102"}),
                          "help", PagesAreTold({"HELP 102"}), "page \"Main\"",
                          PagesAreTold({"KILLACTIVE 102", "SETACTIVE 100"}), "page \"Main\"",
                          PagesAreTold({}), "ok"}),
              1);
    // Every page made so far, in page order.
    EXPECT_EQ(Taken("KILLACTIVE|APPLY|RESET|INITDIALOG"),
              (Lines{"KILLACTIVE 100", "APPLY 100", "APPLY 102"}));
}

TEST_F(SheetTest, CancelAndClosingReset)
{
    for (const char *way : {"cancel", "key Escape"}) {
        EXPECT_EQ(Sheet(Steps{"page \"Paper\"", way}), 0);
        EXPECT_EQ(Taken("APPLY|RESET|DESTROY"),
                  (Lines{"RESET 100", "RESET 101", "DESTROY 100", "DESTROY 101"}))
            << way;
    }
}

TEST_F(SheetTest, APageThatRefusesKeepsTheSheetOpen)
{
    const Lines all{"KILLACTIVE 101", "APPLY 100", "SETACTIVE 100"};
    static const struct {
        const char *why;
        int page;
        UINT code;
        LONG_PTR answer;
        int shown; // afterwards
        LONG told; // so many of all
    } aRefusals[] = {
        {"to be left", 101, PSN_KILLACTIVE, TRUE, 101, 1},
        {"to apply where it is", 100, PSN_APPLY, PSNRET_INVALID_NOCHANGEPAGE, 101, 2},
        {"to apply, and comes to the front", 100, PSN_APPLY, PSNRET_INVALID, 100, 3},
    };
    for (const auto &row : aRefusals) {
        SCOPED_TRACE(row.why);
        onMessage = nullptr;
        InSheet({"page \"Paper\"",
                 [&] {
                     Told();
                     Answer(row.page, row.code, row.answer);
                 },
                 "ok", OnTop(row.shown), PagesAreTold({all.begin(), all.begin() + row.told})});
    }
}

TEST_F(SheetTest, APageMayRefuseToBeLeftForAnother)
{
    Answer(IDD_FIRST, PSN_KILLACTIVE, TRUE);
    InSheet({"page \"Paper\"", OnTop(IDD_FIRST),
             PagesAreTold({"INITDIALOG 100", "SETACTIVE 100", "KILLACTIVE 100"})});
}

TEST_F(SheetTest, TheFocusStartsInThePageAndStaysWithTheTabs)
{
    constexpr int TABS = 0;
    InSheet({Focused(IDC_PICTURE), "page \"Utility\"", Focused(TABS), "key Tab",
             Focused(IDC_PICTURE), "key Ctrl+Tab", OnTop(IDD_FIRST), Focused(TABS), "key Right",
             OnTop(IDD_SECOND),
             // From the last stop of the page on: OK, Cancel, Help, the tabs.
             "focus 220", "key Tab", Focused(IDOK), "key Shift+Tab", Focused(IDC_OWNERNAMES)});
}

// An owner-drawn button is no push button: Enter is for the sheet then.
TEST_F(SheetTest, EnterOnAnOwnerDrawnButtonPressesOk)
{
    EXPECT_EQ(Sheet(Steps{"page \"Utility\"", "focus 212", "key Enter"}), 1);
    EXPECT_EQ(Taken("212|APPLY"), (Lines{"APPLY 100", "APPLY 102"}));
}

TEST_F(SheetTest, IsRefusedWithoutItsTemplates)
{
    PROPSHEETPAGEA lost{};
    lost.pszTemplate = MAKEINTRESOURCEA(999);
    PROPSHEETHEADERA header{};
    header.dwFlags = PSH_PROPSHEETPAGE;
    header.nPages = 1;
    header.ppsp = &lost;
    EXPECT_EQ(PropertySheetA(&header), -1);
    header.nPages = 0;
    EXPECT_EQ(PropertySheetA(&header), -1);
    EXPECT_EQ(PropertySheetA(nullptr), -1);
}
