// Dialogs: templates, results of procedures, the keyboard, painting and its order.
#include "platform/served.h"
#include "tests/platform/user_fixture.h"

using Dialogs = UserTest;

TEST_F(Dialogs, AreMissingWithoutATemplateOrWithOneOfNoScreen)
{
    EXPECT_EQ(Dialog(999), -1);
    EXPECT_EQ(Dialog(IDD_HUGE), -1) << "its picture would fill the memory";
    EXPECT_THAT(Taken(), IsEmpty());
}

TEST_F(Dialogs, HaveTheirControlsBeforeTheyAreSetUp)
{
    onInit = [this] {
        EXPECT_NE(Item(IDC_TEXT), nullptr);
        EXPECT_EQ(TextOf(IDC_AUTO), "&One");
        RECT rc;
        GetWindowRect(Item(IDC_MORE), &rc);
        EXPECT_EQ(rc.right - rc.left, 75) << "50 units of a quarter of 6 pixels";
        EXPECT_EQ(rc.bottom - rc.top, 23) << "14 units of an eighth of 13 pixels, rounded";
    };
    Person({"cancel"});
    EXPECT_EQ(Dialog(IDD_PLAIN), 2);
    EXPECT_THAT(Taken({"INITDIALOG", "DESTROY"}), ElementsAre("INITDIALOG 111", "DESTROY 111"));
}

TEST_F(Dialogs, TheExtendedFormOfTheTemplateIsReadAsWell)
{
    onInit = [this] { EXPECT_EQ(TextOf(IDC_LABEL), "Text"); };
    Person({"key Enter"});
    EXPECT_EQ(Dialog(IDD_EXTENDED), 1);
}

// The client area begins where the system's measures say, which programs count on.
TEST_F(Dialogs, TheFrameHasTheMeasuresOfTheSystem)
{
    onInit = [this] {
        RECT rc;
        POINT pt{0, 0};
        GetWindowRect(hDlg, &rc);
        ClientToScreen(hDlg, &pt);
        EXPECT_EQ(pt.x - rc.left, GetSystemMetrics(SM_CXBORDER) + GetSystemMetrics(SM_CXFRAME));
        EXPECT_EQ(pt.y - rc.top, GetSystemMetrics(SM_CYCAPTION) + GetSystemMetrics(SM_CYDLGFRAME));
    };
    Person({"cancel"});
    EXPECT_EQ(Dialog(IDD_PLAIN), 2);
}

TEST_F(Dialogs, KeepAValueForTheirProgram)
{
    onMessage = [](HWND hWnd, UINT uMsg, WPARAM, LPARAM lParam) -> std::optional<INT_PTR> {
        if (uMsg != WM_INITDIALOG) {
            return std::nullopt;
        }
        EXPECT_EQ(GetWindowLongPtrA(hWnd, DWLP_USER), 0);
        EXPECT_EQ(SetWindowLongPtrA(hWnd, DWLP_USER, lParam), 0);
        EXPECT_EQ(GetWindowLongPtrA(hWnd, DWLP_USER), 0x1234);
        EXPECT_EQ(GetWindowLongPtrA(hWnd, 4), 0) << "no such place";
        return TRUE;
    };
    Person({"cancel"});
    EXPECT_EQ(Dialog(IDD_PLAIN), 2);
}

// The procedure's own result says whether it has handled the message; the message's result is the
// window's, cleared before each call. For colours and for the set-up it is the procedure's.
TEST_F(Dialogs, ResultsOfMessagesComeFromTheWindow)
{
    INT_PTR handled = TRUE;
    LONG_PTR result = 7;
    onMessage = [&](HWND hWnd, UINT uMsg, WPARAM, LPARAM) -> std::optional<INT_PTR> {
        if (uMsg != WM_NOTIFY && uMsg != WM_CTLCOLOREDIT)
            return std::nullopt;
        EXPECT_EQ(GetWindowLongPtrA(hWnd, DWLP_MSGRESULT), 0);
        SetWindowLongPtrA(hWnd, DWLP_MSGRESULT, result);
        return handled;
    };
    NMHDR notice{nullptr, 0, 1};
    const auto notify = [&] {
        return SendMessageA(hDlg, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&notice));
    };
    Person({[&] {
                EXPECT_EQ(notify(), 7);
                handled = FALSE;
                EXPECT_EQ(notify(), 0);
                handled = 5;
                result = 0;
                EXPECT_EQ(notify(), 0);
                EXPECT_EQ(SendMessageA(hDlg, WM_CTLCOLOREDIT, 0, 0), 5);
            },
            "cancel"});
    EXPECT_EQ(Dialog(IDD_PLAIN), 2);
}

TEST_F(Dialogs, EndAtOnceWhenSetUpSaysSo)
{
    onInit = [this] { EndDialog(hDlg, 42); };
    EXPECT_EQ(Dialog(IDD_PLAIN), 42);
    EXPECT_FALSE(kvp::CurrentPlay().bFailed);
}

TEST_F(Dialogs, OpenedFromOthersDisableTheirOwnerAndGiveTheFocusBack)
{
    HWND outer = nullptr;
    onInit = [&] { outer = hDlg; };
    onMessage = [&](HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM) -> std::optional<INT_PTR> {
        if (uMsg == WM_COMMAND && wParam == IDC_MORE) {
            const INT_PTR result = DialogBoxParamA(
                hSample, MAKEINTRESOURCEA(IDD_EXTENDED), hWnd,
                [](HWND h, UINT u, WPARAM w, LPARAM) -> INT_PTR {
                    if (u == WM_COMMAND && w == IDOK)
                        EndDialog(h, 5);
                    return u == WM_INITDIALOG;
                },
                0);
            log.push_back("result " + std::to_string(result));
            EXPECT_TRUE(IsWindowEnabled(outer));
        }
        return std::nullopt;
    };
    Person({"click 216",
            [&] {
                EXPECT_FALSE(IsWindowEnabled(outer));
                EXPECT_NE(kvp::TopWindow(), outer);
                Taken();
            },
            "ok",
            [&] {
                EXPECT_EQ(kvp::TopWindow(), outer);
                EXPECT_THAT(Taken({"result", "PAINT"}), ElementsAre("result 5", "PAINT 111"))
                    << "the owner is invalid";
            },
            [&] { EXPECT_EQ(GetDlgCtrlID(SetFocus(nullptr)), IDC_MORE) << "as it was"; },
            "cancel"});
    EXPECT_EQ(Dialog(IDD_PLAIN), 2);
}

// ---- keyboard
// ---------------------------------------------------------------------------------------

TEST_F(Dialogs, TabGoesThroughTheStopsAndRoundAgain)
{
    std::vector<int> order;
    std::vector<Step> steps{[this] { CheckRadioButton(hDlg, IDC_COLOR, IDC_BLACK, IDC_BLACK); }};
    HWND last = nullptr;
    for (int i = 0; i < 9; ++i) {
        steps.push_back([&] {
            last = SetFocus(nullptr);
            order.push_back(GetDlgCtrlID(last));
            SetFocus(last);
        });
        steps.push_back("key Tab");
    }
    steps.push_back("key Shift+Tab");
    steps.push_back("key Shift+Tab");
    steps.push_back([&] { order.push_back(GetDlgCtrlID(SetFocus(nullptr))); });
    steps.push_back("cancel");
    Person(steps);
    EXPECT_EQ(Dialog(IDD_PLAIN), 2);
    EXPECT_THAT(order, ElementsAre(IDC_TEXT, IDC_AUTO, IDC_BLACK, IDC_MIRROR, IDC_LIST, IDC_NUMBER,
                                   IDC_MORE, IDOK, IDCANCEL, IDOK))
        << "of a group of radio buttons the checked one is the stop";
}

TEST_F(Dialogs, KeysDoWhatTheyDoInDialogs)
{
    static const struct {
        const char *why, *focus, *key;
        std::vector<std::string> told;
        INT_PTR result; // 0: still open
    } aKeys[] = {
        {"Enter presses the default button", "focus 210", "key Enter", {"1 CLICKED"}, 1},
        {"Enter presses the focused push button", "focus 216", "key Enter", {"216 CLICKED"}, 0},
        {"Enter on another control", "focus 205", "key Enter", {"1 CLICKED"}, 1},
        {"Escape cancels", "focus 210", "key Escape", {"2 CLICKED"}, 2},
        {"Space presses", "focus 205", "key Space", {"205 CLICKED"}, 0},
        {"an arrow moves in a radio group", "focus 201", "key Down", {"202 CLICKED"}, 0},
        {"and stays in it", "focus 202", "key Down", {"201 CLICKED"}, 0},
        {"Alt and a letter press", "focus 216", "key Alt+h", {"203 CLICKED"}, 0},
        {"the case does not matter", "focus 210", "key Alt+H", {"203 CLICKED"}, 0},
        {"an unknown letter", "focus 210", "key Alt+z", {}, 0},
        {"a letter alone where no text is typed", "focus 205", "key f", {"204 CLICKED"}, 0},
    };
    for (const auto &row : aKeys) {
        SCOPED_TRACE(row.why);
        onInit = [this] { Taken(); };
        std::vector<std::string> told;
        const auto take = [&] {
            told = Taken({"1 ", "2 ", "201", "202", "203", "204", "205", "216"});
        };
        std::vector<Step> steps{row.focus, [this] { Taken(); }, row.key};
        if (!row.result) {
            steps.push_back(take);
            steps.push_back("cancel");
        }
        Person(steps);
        const INT_PTR result = Dialog(IDD_PLAIN);
        if (row.result)
            take();
        EXPECT_EQ(result, row.result ? row.result : 2);
        EXPECT_EQ(told, row.told);
        EXPECT_FALSE(kvp::CurrentPlay().bFailed);
    }
}

TEST_F(Dialogs, ALabelsLetterMovesToWhatItLabels)
{
    Person({"focus 216", "key Alt+t", // both a label and a radio button have it
            [] {
                HWND focus = SetFocus(nullptr);
                EXPECT_EQ(GetDlgCtrlID(focus), IDC_TEXT);
            },
            "cancel"});
    EXPECT_EQ(Dialog(IDD_PLAIN), 2);
}

TEST_F(Dialogs, HelpIsAskedForTheFocusedControlAndForTheOneClicked)
{
    Person({"focus 205", "key F1", "rightclick 202", "rightclick 210",
            [this] {
                EXPECT_THAT(Taken({"HELP", "CONTEXTMENU"}),
                            ElementsAre("HELP 205", "CONTEXTMENU 202", "CONTEXTMENU 210"));
            },
            "cancel"});
    EXPECT_EQ(Dialog(IDD_PLAIN), 2);
}

// ---- painting
// ----------------------------------------------------------------------------------------

TEST_F(Dialogs, ParentsArePaintedBeforeTheirChildrenAndAskedForColours)
{
    onMessage = [](HWND hWnd, UINT uMsg, WPARAM, LPARAM) -> std::optional<INT_PTR> {
        if (uMsg != WM_PAINT)
            return std::nullopt;
        PAINTSTRUCT ps;
        BeginPaint(hWnd, &ps);
        EndPaint(hWnd, &ps);
        return TRUE;
    };
    Person({[this] {
                const auto seen = Taken({"PAINT", "COLOR"});
                ASSERT_GE(seen.size(), 4u);
                EXPECT_EQ(seen[0], "PAINT 111");
                EXPECT_EQ(seen[1], "COLORDLG");
                EXPECT_EQ(seen[2], "COLORSTATIC 65535");
                EXPECT_EQ(seen[3], "COLOREDIT 210");
                EXPECT_EQ(std::count(seen.begin(), seen.end(), "COLORBTN 201"), 1);
                EXPECT_EQ(std::count(seen.begin(), seen.end(), "COLORBTN 216"), 1);
                EXPECT_EQ(std::count(seen.begin(), seen.end(), "COLORLISTBOX 206"), 1);
                InvalidateRect(Item(IDC_MIRROR), nullptr, TRUE);
            },
            "",
            [this] {
                EXPECT_THAT(Taken(), ElementsAre("COLORBTN 205")) << "the parent is left alone";
                SetFocus(Item(IDC_MIRROR));
            },
            "",
            [this] {
                Taken();
                EnableWindow(Item(IDC_TEXT), FALSE);
                EnableWindow(Item(IDC_MORE), TRUE);
            },
            "",
            [this] {
                EXPECT_THAT(Taken(), ElementsAre("COLOREDIT 210"))
                    << "asked as an edit field also when disabled; no change, no painting";
                InvalidateRect(hDlg, nullptr, TRUE);
            },
            "", [this] { EXPECT_GE(Taken({"COLOR"}).size(), 12u) << "children too"; }, "cancel"});
    EXPECT_EQ(Dialog(IDD_PLAIN), 2);
}

TEST_F(Dialogs, PaintingComesBeforeEachInput)
{
    onMessage = [this](HWND, UINT uMsg, WPARAM wParam, LPARAM) -> std::optional<INT_PTR> {
        if (uMsg == WM_COMMAND && LOWORD(wParam) == IDC_TEXT && HIWORD(wParam) == EN_CHANGE)
            InvalidateRect(Item(IDC_MIRROR), nullptr, TRUE);
        return std::nullopt;
    };
    Person({"focus 210", [this] { Taken(); }, "type 210 \"ab\"",
            [this] {
                EXPECT_THAT(
                    Taken({"210", "COLORBTN 205"}),
                    ElementsAre("210 CHANGE", "COLORBTN 205", "210 CHANGE", "COLORBTN 205"));
            },
            "cancel"});
    EXPECT_EQ(Dialog(IDD_PLAIN), 2);
}

TEST_F(Dialogs, TheColoursAskedForAreTheOnesPainted)
{
    HBRUSH red = CreateSolidBrush(RGB(255, 0, 0));
    INT_PTR answer = reinterpret_cast<INT_PTR>(red);
    onMessage = [&](HWND, UINT uMsg, WPARAM, LPARAM) -> std::optional<INT_PTR> {
        return uMsg == WM_CTLCOLORDLG || uMsg == WM_CTLCOLOREDIT ? std::optional(answer)
                                                                 : std::nullopt;
    };
    const auto repaint = [&](INT_PTR with) {
        return [&, with] {
            answer = with;
            InvalidateRect(hDlg, nullptr, TRUE);
        };
    };
    const auto expect = [&](COLORREF color) {
        return [this, color] {
            POINT pt{1, 1};
            ClientToScreen(hDlg, &pt);
            EXPECT_EQ(kvp::ScreenPixel(pt.x, pt.y), color);
            EXPECT_EQ(PixelIn(IDC_TEXT, 60, 3), color);
        };
    };
    Person({"focus 205", expect(RGB(255, 0, 0)), repaint(0), expect(GetSysColor(COLOR_WINDOW)),
            repaint(1), expect(GetSysColor(COLOR_WINDOW)), "cancel"});
    EXPECT_EQ(Dialog(IDD_PLAIN), 2);
    DeleteObject(red);
}

TEST_F(Dialogs, WhatIsDrawnIntoAControlStaysUntilItIsPainted)
{
    const auto draw = [this] {
        HDC hdc = GetDC(Item(IDC_MIRROR));
        HBRUSH green = CreateSolidBrush(RGB(0, 255, 0));
        const RECT rc{80, 0, 85, 5};
        HRGN region = CreateRectRgnIndirect(&rc);
        FillRgn(hdc, region, green);
        DeleteObject(region);
        DeleteObject(green);
        ReleaseDC(Item(IDC_MIRROR), hdc);
    };
    Person({draw, "focus 216",
            [this] {
                EXPECT_EQ(PixelIn(IDC_MIRROR, 82, 2), RGB(0, 255, 0));
                InvalidateRect(Item(IDC_MIRROR), nullptr, TRUE);
            },
            "", [this] { EXPECT_NE(PixelIn(IDC_MIRROR, 82, 2), RGB(0, 255, 0)); }, "cancel"});
    EXPECT_EQ(Dialog(IDD_PLAIN), 2);
}
