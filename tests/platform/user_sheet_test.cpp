// The property sheet: when pages are made and what they are told.
#include "platform/served.h"
#include "tests/platform/user_fixture.h"

class SheetTest : public UserTest
{
  protected:
    // What the pages are told, and nothing else.
    std::vector<std::string> Told()
    {
        return Taken(
            {"INITDIALOG", "SETACTIVE", "KILLACTIVE", "APPLY", "RESET", "HELP", "DESTROY"});
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
    int FocusId()
    {
        HWND focus = SetFocus(nullptr);
        SetFocus(focus);
        return focus ? GetDlgCtrlID(focus) : -1;
    }
};

TEST_F(SheetTest, PagesAreMadeWhenTheyAreFirstShown)
{
    onMessage = [](HWND hWnd, UINT uMsg, WPARAM, LPARAM lParam) -> std::optional<INT_PTR> {
        if (uMsg == WM_INITDIALOG) {
            const auto *description = reinterpret_cast<const PROPSHEETPAGEA *>(lParam);
            EXPECT_EQ(description->lParam, GetDlgCtrlID(hWnd) - IDD_FIRST + 1000);
        }
        return std::nullopt;
    };
    Person({[this] { EXPECT_THAT(Told(), ElementsAre("INITDIALOG 100", "SETACTIVE 100")); },
            "page \"Utility\"",
            [this] {
                EXPECT_THAT(Told(),
                            ElementsAre("KILLACTIVE 100", "INITDIALOG 102", "SETACTIVE 102"));
            },
            "page \"Main\"",
            [this] { EXPECT_THAT(Told(), ElementsAre("KILLACTIVE 102", "SETACTIVE 100")); },
            "page \"Main\"", [this] { EXPECT_THAT(Told(), IsEmpty()) << "it is shown already"; },
            "ok"});
    EXPECT_EQ(Sheet(), 1);
    const auto told = Told();
    ASSERT_EQ(told.size(), 5u);
    EXPECT_THAT(std::vector(told.begin(), told.begin() + 3),
                ElementsAre("KILLACTIVE 100", "APPLY 100", "APPLY 102"))
        << "every page made so far, in page order";
    EXPECT_THAT(std::vector(told.begin() + 3, told.end()),
                ::testing::UnorderedElementsAre("DESTROY 100", "DESTROY 102"));
}

TEST_F(SheetTest, CancelAndClosingReset)
{
    for (const char *way : {"cancel", "key Escape"}) {
        SCOPED_TRACE(way);
        Person({"page \"Paper\"", [this] { Told(); }, way});
        EXPECT_EQ(Sheet(), 0);
        const auto told = Told();
        ASSERT_GE(told.size(), 2u);
        EXPECT_EQ(told[0], "RESET 100");
        EXPECT_EQ(told[1], "RESET 101");
    }
}

TEST_F(SheetTest, APageThatRefusesKeepsTheSheetOpen)
{
    static const struct {
        const char *why;
        int page;
        UINT code;
        LONG_PTR answer;
        int shown; // afterwards
        std::vector<std::string> told;
    } aRefusals[] = {
        {"to be left", IDD_SECOND, PSN_KILLACTIVE, TRUE, IDD_SECOND, {"KILLACTIVE 101"}},
        {"to apply, and comes to the front",
         IDD_FIRST,
         PSN_APPLY,
         PSNRET_INVALID,
         IDD_FIRST,
         {"KILLACTIVE 101", "APPLY 100", "SETACTIVE 100"}},
        {"to apply where it is",
         IDD_FIRST,
         PSN_APPLY,
         PSNRET_INVALID_NOCHANGEPAGE,
         IDD_SECOND,
         {"KILLACTIVE 101", "APPLY 100"}},
        {"last of all",
         IDD_SECOND,
         PSN_APPLY,
         PSNRET_INVALID_NOCHANGEPAGE,
         IDD_SECOND,
         {"KILLACTIVE 101", "APPLY 100", "APPLY 101"}},
    };
    for (const auto &row : aRefusals) {
        SCOPED_TRACE(row.why);
        onMessage = nullptr;
        Person({"page \"Paper\"",
                [&] {
                    Told();
                    Answer(row.page, row.code, row.answer);
                },
                "ok",
                [&] {
                    EXPECT_EQ(GetDlgCtrlID(kvp::TopWindow()), row.shown);
                    EXPECT_EQ(Told(), row.told);
                },
                "cancel"});
        EXPECT_EQ(Sheet(), 0);
    }
}

TEST_F(SheetTest, APageMayRefuseToBeLeftForAnother)
{
    Answer(IDD_FIRST, PSN_KILLACTIVE, TRUE);
    Person({"page \"Paper\"",
            [this] {
                EXPECT_EQ(GetDlgCtrlID(kvp::TopWindow()), IDD_FIRST);
                EXPECT_EQ(page.count("101"), 0u) << "not even made";
            },
            "cancel"});
    EXPECT_EQ(Sheet(), 0);
}

TEST_F(SheetTest, HelpGoesToThePageShown)
{
    Person({"page \"Paper\"", [this] { Told(); }, "help",
            [this] { EXPECT_THAT(Told(), ElementsAre("HELP 101")); }, "cancel"});
    EXPECT_EQ(Sheet(), 0);
}

TEST_F(SheetTest, TheFocusStartsInThePageAndStaysWithTheTabs)
{
    Person({[this] { EXPECT_EQ(FocusId(), IDC_PICTURE); }, "page \"Utility\"",
            [this] { EXPECT_EQ(FocusId(), 0) << "the tabs"; }, "key Tab",
            [this] { EXPECT_EQ(FocusId(), IDC_PICTURE); }, "key Ctrl+Tab",
            [this] {
                EXPECT_EQ(GetDlgCtrlID(kvp::TopWindow()), IDD_FIRST);
                EXPECT_EQ(FocusId(), 0);
            },
            "key Right", [] { EXPECT_EQ(GetDlgCtrlID(kvp::TopWindow()), IDD_SECOND); },
            // From the last stop of the page on: OK, Cancel, Help, the tabs.
            "focus 220", "key Tab", [this] { EXPECT_EQ(FocusId(), IDOK); }, "key Shift+Tab",
            [this] { EXPECT_EQ(FocusId(), IDC_OWNERNAMES); }, "cancel"});
    EXPECT_EQ(Sheet(), 0);
}

// An owner-drawn button is no push button: Enter is for the sheet then.
TEST_F(SheetTest, EnterOnAnOwnerDrawnButtonPressesOk)
{
    Person({"page \"Utility\"", "focus 212", [this] { Taken(); }, "key Enter"});
    EXPECT_EQ(Sheet(), 1);
    const auto told = Taken({"212", "APPLY"});
    EXPECT_THAT(told, ElementsAre("APPLY 100", "APPLY 102"));
}

TEST_F(SheetTest, IsRefusedWithoutItsTemplates)
{
    PROPSHEETPAGEA lost{};
    lost.dwSize = sizeof lost;
    lost.hInstance = hSample;
    lost.pszTemplate = MAKEINTRESOURCEA(999);
    PROPSHEETHEADERA header{};
    header.dwSize = sizeof header;
    header.dwFlags = PSH_PROPSHEETPAGE;
    header.nPages = 1;
    header.ppsp = &lost;
    EXPECT_EQ(PropertySheetA(&header), -1);
    header.nPages = 0;
    EXPECT_EQ(PropertySheetA(&header), -1);
    EXPECT_EQ(PropertySheetA(nullptr), -1);
}
