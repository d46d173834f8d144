// Dialogs: templates, results of procedures, the keyboard, painting and its order.
#include "platform/served.h"
#include "tests/platform/user_fixture.h"

class Dialogs : public UserTest
{
  protected:
    Step Invalid(int id)
    {
        return [=, this] { InvalidateRect(id ? Item(id) : hDlg, nullptr, TRUE); };
    }
};

TEST_F(Dialogs, AreMissingWithoutATemplateOrWithOneOfNoScreen)
{
    EXPECT_EQ(Dialog(999), -1);
    EXPECT_EQ(Dialog(IDD_HUGE), -1) << "its picture would fill the memory";
    EXPECT_THAT(Taken(), IsEmpty());
}

TEST_F(Dialogs, HaveTheirControlsBeforeTheyAreSetUp)
{
    onInit = [this] {
        EXPECT_EQ(TextOf(IDC_AUTO), "&One");
        RECT rc;
        GetClientRect(Item(IDC_MORE), &rc);
        EXPECT_EQ(rc.right, 75) << "50 units of a quarter of 6 pixels";
        EXPECT_EQ(rc.bottom, 23) << "14 units of an eighth of 13 pixels, rounded";
        // The client area begins where the system's measures say, which programs count on.
        POINT pt{0, 0};
        ClientToScreen(hDlg, &pt);
        GetWindowRect(hDlg, &rc);
        EXPECT_EQ(pt.x - rc.left, GetSystemMetrics(SM_CXBORDER) + GetSystemMetrics(SM_CXFRAME));
        EXPECT_EQ(pt.y - rc.top, GetSystemMetrics(SM_CYCAPTION) + GetSystemMetrics(SM_CYDLGFRAME));
        EXPECT_NEAR(rc.top + rc.bottom, 600, 2) << "in the middle of the screen";
    };
    InDialog({});
    EXPECT_EQ(Taken("INITDIALOG|DESTROY"), (Lines{"INITDIALOG 111", "DESTROY 111"}));
}

TEST_F(Dialogs, TheExtendedFormOfTheTemplateIsReadAsWell)
{
    onInit = [this] { EXPECT_EQ(TextOf(IDC_LABEL), "Text"); };
    EXPECT_EQ(Dialog(IDD_EXTENDED, Steps{"key Enter"}), 1);
}

// The procedure's own result says whether it has handled the message; the message's result is the
// window's, cleared before each call. For colours and for the set-up it is the procedure's.
TEST_F(Dialogs, ResultsOfMessagesComeFromTheWindow)
{
    static const struct {
        UINT msg;
        INT_PTR handled;
        LONG_PTR ofWindow, result;
    } aRows[] = {{WM_NOTIFY, TRUE, 7, 7},
                 {WM_NOTIFY, FALSE, 7, 0},
                 {WM_NOTIFY, 5, 0, 0},
                 {WM_CTLCOLOREDIT, 5, 7, 5}};
    InDialog({[this] {
        for (const auto &row : aRows) {
            onMessage = [&](HWND hWnd, UINT uMsg, WPARAM, LPARAM) -> std::optional<INT_PTR> {
                if (uMsg != row.msg)
                    return std::nullopt;
                EXPECT_EQ(SetWindowLongPtrA(hWnd, DWLP_MSGRESULT, row.ofWindow), 0);
                return row.handled;
            };
            NMHDR notice{nullptr, 0, 1};
            EXPECT_EQ(SendMessageA(hDlg, row.msg, 0, reinterpret_cast<LPARAM>(&notice)),
                      row.result);
        }
        onMessage = nullptr;
    }});
}

TEST_F(Dialogs, EndAtOnceWhenSetUpSaysSo)
{
    onInit = [this] { EndDialog(hDlg, 42); };
    EXPECT_EQ(Dialog(IDD_PLAIN, {}), 42);
}

// A dialog with a field, opened by the space bar, whose character is not for the field.
TEST_F(Dialogs, OpenedFromOthersDisableTheirOwnerAndGiveTheFocusBack)
{
    static constexpr DLGPROC inner = [](HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM) -> INT_PTR {
        if (uMsg == WM_INITDIALOG)
            return SetDlgItemTextA(hWnd, IDC_TEXT, "name");
        return uMsg == WM_COMMAND && wParam == IDOK && EndDialog(hWnd, 5);
    };
    onCommand = [this](int id, int) {
        if (id != IDC_MORE)
            return;
        const auto result = DialogBoxParamA(hSample, MAKEINTRESOURCEA(IDD_PLAIN), hDlg, inner, 0);
        log.push_back("result " + std::to_string(result));
        EXPECT_TRUE(IsWindowEnabled(hDlg));
    };
    InDialog({"focus 216", "key Space",
              [&] {
                  char szText[9];
                  GetDlgItemTextA(kvp::TopWindow(), IDC_TEXT, szText, sizeof szText);
                  EXPECT_STREQ(szText, "name");
                  EXPECT_FALSE(IsWindowEnabled(hDlg));
                  EXPECT_NE(kvp::TopWindow(), hDlg);
                  Taken();
              },
              "ok", [this] { EXPECT_EQ(kvp::TopWindow(), hDlg); },
              // The owner is invalid, and the focus where it was.
              Came("result|PAINT", {"result 5", "PAINT 111"}), Focused(IDC_MORE)});
}

TEST_F(Dialogs, TabGoesThroughTheStopsAndRoundAgain)
{
    Steps steps{[this] { CheckRadioButton(hDlg, IDC_COLOR, IDC_BLACK, IDC_BLACK); }};
    // Of a group of radio buttons the checked one is the stop.
    for (const int id : {IDC_TEXT, IDC_AUTO, IDC_BLACK, IDC_MIRROR, IDC_LIST, IDC_NUMBER, IDC_MORE,
                         IDOK, IDCANCEL, IDC_TEXT}) {
        steps.push_back(Focused(id));
        steps.emplace_back("key Tab");
    }
    for (const int id : {IDC_TEXT, IDCANCEL}) {
        steps.emplace_back("key Shift+Tab");
        steps.push_back(Focused(id));
    }
    InDialog(steps);
}

TEST_F(Dialogs, KeysDoWhatTheyDoInDialogs)
{
    static const struct {
        const char *why, *focus, *key;
        int pressed; // first; whatever is still open is cancelled
    } aKeys[] = {
        {"Enter presses the default button", "focus 210", "key Enter", IDOK},
        {"Enter presses the focused push button", "focus 216", "key Enter", IDC_MORE},
        {"Enter on another control", "focus 205", "key Enter", IDOK},
        {"Escape cancels", "focus 210", "key Escape", IDCANCEL},
        {"Space presses", "focus 205", "key Space", IDC_MIRROR},
        {"an arrow moves in a radio group", "focus 201", "key Down", IDC_MANUAL},
        {"and stays in it", "focus 202", "key Down", IDC_AUTO},
        {"Alt and a letter press", "focus 216", "key Alt+h", IDC_COLOR},
        {"the case does not matter", "focus 210", "key Alt+H", IDC_COLOR},
        {"an unknown letter", "focus 210", "key Alt+z", 0},
        {"a letter alone where no text is typed", "focus 205", "key f", IDC_BLACK},
    };
    for (const auto &row : aKeys) {
        std::vector<int> pressed;
        onCommand = [&](int id, int code) {
            if (code == BN_CLICKED)
                pressed.push_back(id);
        };
        const bool closes = row.pressed == IDOK || row.pressed == IDCANCEL;
        Steps steps{row.focus, row.key};
        if (!closes)
            steps.emplace_back("cancel");
        EXPECT_EQ(Dialog(IDD_PLAIN, steps), closes ? row.pressed : IDCANCEL) << row.why;
        EXPECT_EQ(pressed.front(), row.pressed ? row.pressed : IDCANCEL) << row.why;
        EXPECT_EQ(pressed.size(), closes || !row.pressed ? 1u : 2u) << row.why;
    }
}

TEST_F(Dialogs, ALabelsLetterMovesToWhatItLabels)
{
    InDialog({"focus 216", "key Alt+t", // both a label and a radio button have it
              Focused(IDC_TEXT)});
}

TEST_F(Dialogs, HelpIsAskedForTheFocusedControlAndForTheOneClicked)
{
    InDialog({"focus 205", "key F1", "rightclick 202", "rightclick 210",
              Came("HELP|CONTEXTMENU", {"HELP 205", "CONTEXTMENU 202", "CONTEXTMENU 210"})});
}

TEST_F(Dialogs, ParentsArePaintedBeforeTheirChildrenAndAskedForColours)
{
    const Lines all{"PAINT 111",    "COLORDLG",         "COLORSTATIC 65535", "COLOREDIT 210",
                    "COLORBTN 201", "COLORBTN 202",     "COLORBTN 203",      "COLORBTN 204",
                    "COLORBTN 205", "COLORLISTBOX 206", "COLOREDIT 208",     "COLORBTN 216",
                    "COLORBTN 1",   "COLORBTN 2"};
    InDialog({Came("PAINT|COLOR", all), Invalid(IDC_MIRROR), "",
              Came("", {"COLORBTN 205"}), // the parent is left alone
              [this] {
                  EnableWindow(Item(IDC_TEXT), FALSE);
                  EnableWindow(Item(IDC_MORE), TRUE); // no change, no painting
                  Taken();
              },
              "", Came("", {"COLOREDIT 210"}), Invalid(0), "", Came("PAINT|COLOR", all)});
}

TEST_F(Dialogs, PaintingComesBeforeEachInput)
{
    onCommand = [this](int, int code) {
        if (code == EN_CHANGE)
            InvalidateRect(Item(IDC_MIRROR), nullptr, TRUE);
    };
    InDialog(
        {"focus 210", [this] { Taken(); }, "type 210 \"ab\"",
         Came("210|COLORBTN 205", {"210 CHANGE", "COLORBTN 205", "210 CHANGE", "COLORBTN 205"})});
}

TEST_F(Dialogs, TheColoursAskedForAreTheOnesPainted)
{
    HBRUSH red = CreateSolidBrush(RGB(255, 0, 0));
    INT_PTR answer = reinterpret_cast<INT_PTR>(red);
    onMessage = [&](HWND, UINT uMsg, WPARAM, LPARAM) -> std::optional<INT_PTR> {
        return uMsg == WM_CTLCOLORDLG || uMsg == WM_CTLCOLOREDIT ? std::optional(answer)
                                                                 : std::nullopt;
    };
    const auto expect = [this](COLORREF color) -> Step {
        return [this, color] {
            EXPECT_EQ(PixelIn(IDC_TEXT, -2, 3), color) << "the dialog";
            EXPECT_EQ(PixelIn(IDC_TEXT, 60, 3), color) << "the field";
        };
    };
    const COLORREF standard = GetSysColor(COLOR_WINDOW);
    InDialog({"focus 205", expect(RGB(255, 0, 0)), [&] { answer = 0; }, Invalid(0),
              expect(standard), [&] { answer = 1; }, Invalid(0), expect(standard)});
    DeleteObject(red);
}

TEST_F(Dialogs, WhatIsDrawnIntoAControlStaysUntilItIsPainted)
{
    const auto draw = [this] {
        HDC hdc = GetDC(Item(IDC_MIRROR));
        HBRUSH green = CreateSolidBrush(RGB(0, 255, 0));
        const RECT rc{80, 0, 85, 5};
        FrameRect(hdc, &rc, green);
        DeleteObject(green);
        ReleaseDC(Item(IDC_MIRROR), hdc);
    };
    InDialog({draw, "focus 216", [this] { EXPECT_EQ(PixelIn(IDC_MIRROR, 82, 0), RGB(0, 255, 0)); },
              Invalid(IDC_MIRROR), "",
              [this] { EXPECT_NE(PixelIn(IDC_MIRROR, 82, 0), RGB(0, 255, 0)); }});
}
