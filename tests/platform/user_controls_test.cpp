// Single controls: what they tell their dialog, in which order, by hand and by program.
#include "platform/served.h"
#include "tests/platform/user_fixture.h"

using Controls = UserTest;

// ---- edit fields --------------------------------------------------------------------------------

TEST_F(Controls, SettingATextByProgramTellsOfItEachTimeAndPutsTheCaretAtTheStart)
{
    Person({[this] {
                Taken();
                SetText(IDC_TEXT, "12");
                SetText(IDC_TEXT, "12");
                SetDlgItemInt(hDlg, IDC_TEXT, static_cast<UINT>(-5), TRUE);
                EXPECT_EQ(TextOf(IDC_TEXT), "-5");
                EXPECT_THAT(Taken({"210"}), ElementsAre("210 CHANGE", "210 CHANGE", "210 CHANGE"));
                SetFocus(Item(IDC_TEXT));
            },
            "key 7", [this] { EXPECT_EQ(TextOf(IDC_TEXT), "7-5"); }, "cancel"});
    EXPECT_EQ(Dialog(IDD_PLAIN), 2);
}

TEST_F(Controls, TypingTellsOfEachCharacterAndTheFocusOfItsLoss)
{
    Person({"type 210 \"ab\"",
            [this] {
                EXPECT_THAT(Taken({"210"}), ElementsAre("210 CHANGE", "210 CHANGE"));
                EXPECT_EQ(TextOf(IDC_TEXT), "ab");
            },
            "type 210 \"\"", [this] { EXPECT_THAT(Taken({"210"}), ElementsAre("210 CHANGE")); },
            "key Tab", [this] { EXPECT_THAT(Taken({"210"}), ElementsAre("210 KILLFOCUS")); },
            "cancel"});
    EXPECT_EQ(Dialog(IDD_PLAIN), 2);
}

TEST_F(Controls, SelectingBytesPutsTheCaretBehindTheWholeCharacters)
{
    machine.uAnsiCodePage = 932;
    Apply();
    Person({[this] {
                SetText(IDC_TEXT, "\x93\xFA\x96\x7B"); // two characters of two bytes
                Send(IDC_TEXT, EM_SETSEL, 2, 2);
                SetFocus(Item(IDC_TEXT));
            },
            "key x", [this] { EXPECT_EQ(TextOf(IDC_TEXT), "\x93\xFAx\x96\x7B"); },
            [this] { Send(IDC_TEXT, EM_SETSEL, 0, static_cast<LPARAM>(-1)); }, "key y",
            [this] { EXPECT_EQ(TextOf(IDC_TEXT), "y"); }, "cancel"});
    EXPECT_EQ(Dialog(IDD_PLAIN), 2);
}

TEST_F(Controls, KeysMoveTheCaretAndDelete)
{
    static const struct {
        const char *why;
        std::vector<Step> keys;
        const char *left;
    } aKeys[] = {
        {"backspace before the caret", {"key End", "key Backspace"}, "abc"},
        {"delete behind the caret", {"key Home", "key Delete"}, "bcd"},
        {"a selection goes as a whole",
         {"key Home", "key Shift+Right", "key Shift+Right", "key Delete"},
         "cd"},
        {"typing replaces the selection", {"key End", "key Shift+Home", "key x"}, "x"},
        {"cut and pasted",
         {"key Home", "key Shift+Right", "key Ctrl+x", "key End", "key Ctrl+v"},
         "bcda"},
        {"nothing before the start", {"key Home", "key Backspace"}, "abcd"},
    };
    for (const auto &row : aKeys) {
        SCOPED_TRACE(row.why);
        std::vector<Step> steps{"type 210 \"abcd\""};
        steps.insert(steps.end(), row.keys.begin(), row.keys.end());
        steps.push_back([&] { EXPECT_EQ(TextOf(IDC_TEXT), row.left); });
        steps.push_back("cancel");
        Person(steps);
        EXPECT_EQ(Dialog(IDD_PLAIN), 2);
    }
}

TEST_F(Controls, NumbersAreReadUpToTheFirstOtherCharacter)
{
    static const struct {
        const char *why, *text;
        BOOL isSigned;
        UINT value;
        BOOL read;
    } aNumbers[] = {
        {"blanks are skipped", " \t12", TRUE, 12, TRUE},
        {"a minus", "-12", TRUE, static_cast<UINT>(-12), TRUE},
        {"a plus", "+12", TRUE, 12, TRUE},
        {"stops at anything else", "12x3", TRUE, 12, TRUE},
        {"no digits", "x12", TRUE, 0, FALSE},
        {"empty", "", TRUE, 0, FALSE},
        {"only a sign", "-", TRUE, 0, FALSE},
        {"the largest", "2147483647", TRUE, 0x7FFFFFFF, TRUE},
        {"the smallest", "-2147483648", TRUE, 0x80000000, TRUE},
        {"too many digits", "2147483648", TRUE, 0, FALSE},
        {"far too many digits", "99999999999999999999999", TRUE, 0, FALSE},
        {"no sign without one allowed", "-1", FALSE, 0, FALSE},
        {"the largest without sign", "4294967295", FALSE, 0xFFFFFFFF, TRUE},
    };
    Person({[&] {
                for (const auto &row : aNumbers) {
                    SCOPED_TRACE(row.why);
                    SetText(IDC_TEXT, row.text);
                    BOOL read = 2;
                    EXPECT_EQ(GetDlgItemInt(hDlg, IDC_TEXT, &read, row.isSigned), row.value);
                    EXPECT_EQ(read, row.read);
                }
            },
            "cancel"});
    EXPECT_EQ(Dialog(IDD_PLAIN), 2);
}

TEST_F(Controls, ATextIsCutAtACharactersBorder)
{
    machine.uAnsiCodePage = 932;
    Apply();
    Person({[this] {
                SetText(IDC_TEXT, "a\x93\xFA\x96\x7B");
                char szText[5];
                EXPECT_EQ(GetDlgItemTextA(hDlg, IDC_TEXT, szText, 5), 3u);
                EXPECT_STREQ(szText, "a\x93\xFA");
                EXPECT_EQ(GetDlgItemTextA(hDlg, IDC_TEXT, szText, 1), 0u);
                EXPECT_STREQ(szText, "");
            },
            "cancel"});
    EXPECT_EQ(Dialog(IDD_PLAIN), 2);
}

// ---- radio buttons and check boxes --------------------------------------------------------------

TEST_F(Controls, ARadioButtonChecksItselfAndClearsItsGroupBeforeItTells)
{
    std::string seen;
    onMessage = [&](HWND, UINT uMsg, WPARAM wParam, LPARAM) -> std::optional<INT_PTR> {
        if (uMsg == WM_COMMAND && LOWORD(wParam) == IDC_MANUAL)
            for (const int id : {IDC_AUTO, IDC_MANUAL, IDC_COLOR, IDC_BLACK})
                seen += IsDlgButtonChecked(hDlg, id) ? '1' : '0';
        return std::nullopt;
    };
    Person({[this] {
                CheckRadioButton(hDlg, IDC_AUTO, IDC_MANUAL, IDC_AUTO);
                CheckRadioButton(hDlg, IDC_COLOR, IDC_BLACK, IDC_COLOR);
                EXPECT_THAT(Taken({"20"}), IsEmpty()) << "setting by program tells nobody";
            },
            "click 202",
            [&] {
                EXPECT_EQ(seen, "0110") << "the other group is left alone";
                EXPECT_THAT(Taken({"20"}), ElementsAre("202 CLICKED"));
            },
            "click 205", [this] { EXPECT_TRUE(IsDlgButtonChecked(hDlg, IDC_MIRROR)); }, "click 205",
            [this] { EXPECT_FALSE(IsDlgButtonChecked(hDlg, IDC_MIRROR)); }, "cancel"});
    EXPECT_EQ(Dialog(IDD_PLAIN), 2);
}

// ---- scroll bars and trackbars
// --------------------------------------------------------------------

TEST_F(Controls, AScrollBarSendsALineAndAnEndAndTakesNoFocus)
{
    Person({"focus 208", [this] { Taken(); }, "scroll 209 up", "scroll 209 down",
            [this] {
                EXPECT_THAT(Taken({"VSCROLL", "208"}),
                            ElementsAre("VSCROLL 209 0/0", "VSCROLL 209 8/0", "VSCROLL 209 1/0",
                                        "VSCROLL 209 8/0"));
            },
            "cancel"});
    EXPECT_EQ(Dialog(IDD_PLAIN), 2);
}

TEST_F(Controls, ATrackbarHoldsItsPositionAndTellsOfEachMove)
{
    HWND bar = nullptr;
    onInit = [&] {
        bar =
            CreateWindowExA(0, "msctls_trackbar32", "", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 150, 90,
                            100, 28, hDlg, reinterpret_cast<HMENU>(IDC_TRACK), hSample, nullptr);
        SendMessageA(bar, TBM_SETRANGE, TRUE, MAKELONG(0, 50));
        SendMessageA(bar, TBM_SETPAGESIZE, 0, 1);
        SendMessageA(bar, TBM_SETPOS, TRUE, 25);
    };
    const auto position = [&] { return SendMessageA(bar, TBM_GETPOS, 0, 0); };
    Person({[&] {
                EXPECT_EQ(position(), 25);
                EXPECT_THAT(Taken({"HSCROLL"}), IsEmpty());
                SendMessageA(bar, TBM_SETPOS, TRUE, 99);
                EXPECT_EQ(position(), 50);
            },
            "slide 214 18",
            [&] {
                EXPECT_EQ(position(), 18);
                EXPECT_THAT(Taken({"HSCROLL"}),
                            ElementsAre("HSCROLL 214 5/18", "HSCROLL 214 4/18", "HSCROLL 214 8/0"));
            },
            "key Right",
            [&] {
                EXPECT_EQ(position(), 19) << "a click gives it the keyboard";
                EXPECT_THAT(Taken({"HSCROLL"}), ElementsAre("HSCROLL 214 1/0", "HSCROLL 214 8/0"));
            },
            [&] { SendMessageA(bar, TBM_SETRANGE, TRUE, MAKELONG(0, 1000)); }, "slide 214 777",
            [&] { EXPECT_EQ(position(), 777) << "of positions that share a pixel, the very one"; },
            "slide 214 2", [&] { EXPECT_EQ(position(), 2); }, "cancel"});
    EXPECT_EQ(Dialog(IDD_PLAIN), 2);
}

// ---- list boxes
// -------------------------------------------------------------------------------------

TEST_F(Controls, AListBoxTellsOnlyOfSelectionsByHand)
{
    onInit = [this] {
        if (GetDlgCtrlID(hDlg) != IDD_SECOND)
            return;
        for (const char *name : {"b", "a", "c", "d", "e", "f"})
            Send(IDC_NAMES, LB_INSERTSTRING, static_cast<WPARAM>(-1),
                 reinterpret_cast<LPARAM>(name));
        Send(IDC_NAMES, LB_SETITEMDATA, 5, 77);
        Send(IDC_NAMES, LB_SETCURSEL, 2);
    };
    Person({"page \"Paper\"", [this] { EXPECT_THAT(Taken({"213"}), IsEmpty()); },
            "choose 213 \"f\"",
            [this] {
                EXPECT_EQ(Send(IDC_NAMES, LB_GETCURSEL), 5) << "scrolled to, then clicked";
                EXPECT_EQ(Send(IDC_NAMES, LB_GETITEMDATA, 5), 77);
                EXPECT_THAT(Taken({"213"}), ElementsAre("213 SELCHANGE"));
            },
            "choose 213 #5", [this] { EXPECT_THAT(Taken({"213"}), ElementsAre("213 SELCHANGE")); },
            "key Up",
            [this] {
                EXPECT_THAT(Taken({"213"}), ElementsAre("213 SELCHANGE"));
                EXPECT_EQ(Send(IDC_NAMES, LB_GETCURSEL), 4);
                EXPECT_EQ(Send(IDC_NAMES, LB_SETCURSEL, static_cast<WPARAM>(-1)), LB_ERR);
                EXPECT_EQ(Send(IDC_NAMES, LB_GETCURSEL), LB_ERR);
                EXPECT_EQ(Send(IDC_NAMES, LB_GETITEMDATA, 6), LB_ERR);
            },
            "cancel"});
    EXPECT_EQ(Sheet(), 0);
}

TEST_F(Controls, AListBoxIsScrolledByTheWheelAndByItsThumb)
{
    onInit = [this] {
        if (GetDlgCtrlID(hDlg) == IDD_SECOND)
            for (int i = 0; i < 12; ++i)
                Send(IDC_NAMES, LB_INSERTSTRING, static_cast<WPARAM>(-1),
                     reinterpret_cast<LPARAM>("name"));
    };
    LRESULT middle = 0;
    const auto chosen = [&] { return Send(IDC_NAMES, LB_GETCURSEL) - middle; };
    Person({"page \"Paper\"", "click 213", [&] { middle = chosen(); }, "scroll 213 down",
            [&] {
                EXPECT_EQ(chosen(), 0) << "scrolling chooses nothing";
                EXPECT_THAT(Taken({"213"}), ElementsAre("213 SELCHANGE"));
            },
            "click 213", [&] { EXPECT_EQ(chosen(), 3); }, "scroll 213 #7", "click 213",
            [&] { EXPECT_EQ(chosen(), 7); }, "scroll 213 up", "click 213",
            [&] { EXPECT_EQ(chosen(), 4); }, "cancel"});
    EXPECT_EQ(Sheet(), 0);
}

// ---- clicks and the focus
// ---------------------------------------------------------------------------

TEST_F(Controls, APressIsLostWhenLosingTheFocusDisablesTheButton)
{
    bool disable = true;
    onMessage = [&](HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM) -> std::optional<INT_PTR> {
        if (uMsg == WM_COMMAND && HIWORD(wParam) == EN_KILLFOCUS && disable)
            EnableWindow(GetDlgItem(hWnd, IDC_MORE), FALSE);
        return std::nullopt;
    };
    Person({"focus 210", [this] { Taken(); }, "click 216",
            [&] {
                EXPECT_THAT(Taken({"2"}), ElementsAre("210 KILLFOCUS"));
                EnableWindow(Item(IDC_MORE), TRUE);
                disable = false;
            },
            "focus 210", "click 216",
            [this] { EXPECT_THAT(Taken({"2"}), ElementsAre("210 KILLFOCUS", "216 CLICKED")); },
            "cancel"});
    EXPECT_EQ(Dialog(IDD_PLAIN), 2);
}

TEST_F(Controls, AnOwnerDrawnButtonIsDrawnForPressAndFocus)
{
    Person(
        {"page \"Utility\"", [this] { Taken(); }, "focus 212",
         [this] { EXPECT_THAT(Taken({"DRAW"}), ElementsAre("DRAW 212 focus +focus")); }, "key Tab",
         [this] {
             EXPECT_THAT(Taken({"DRAW"}), ElementsAre("DRAW 212 focus", "DRAW 216 focus +focus"));
         },
         "click 216",
         [this] {
             EXPECT_THAT(Taken({"DRAW", "216"}),
                         ElementsAre("DRAW 216 select +selected +focus", "DRAW 216 select +focus",
                                     "216 CLICKED"));
             EnableWindow(Item(IDC_PICTURE), FALSE);
         },
         "", [this] { EXPECT_THAT(Taken({"DRAW"}), ElementsAre("DRAW 212 entire +disabled")); },
         "cancel"});
    EXPECT_EQ(Sheet(), 0);
}

TEST_F(Controls, MessagesToNoWindowFail)
{
    EXPECT_EQ(GetDlgItem(nullptr, 1), nullptr);
    EXPECT_EQ(SendMessageA(reinterpret_cast<HWND>(&machine), WM_GETFONT, 0, 0), 0);
    EXPECT_FALSE(EnableWindow(nullptr, TRUE));
    EXPECT_FALSE(SetDlgItemTextA(nullptr, 1, "x"));
    EXPECT_EQ(GetDlgItemInt(nullptr, 1, nullptr, TRUE), 0u);
    EXPECT_EQ(
        CreateWindowExA(0, "button", "", WS_CHILD, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr),
        nullptr);
}
