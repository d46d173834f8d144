// Single controls: what they tell their dialog, in which order, by hand and by program.
#include <cstring>

#include "platform/served.h"
#include "tests/platform/user_fixture.h"

class Controls : public UserTest
{
  protected:
    Step Shows(const char *text)
    {
        return [=, this] { EXPECT_EQ(TextOf(IDC_TEXT), text); };
    }
};

TEST_F(Controls, SettingATextByProgramTellsOfItEachTimeAndPutsTheCaretAtTheStart)
{
    InDialog({[this] {
                  SetText(IDC_TEXT, "12");
                  SetText(IDC_TEXT, "12");
                  SetDlgItemInt(hDlg, IDC_TEXT, static_cast<UINT>(-5), TRUE);
                  SetFocus(Item(IDC_TEXT));
              },
              Came("210", {"210 CHANGE", "210 CHANGE", "210 CHANGE"}), "key 7", Shows("7-5")});
}

TEST_F(Controls, TypingTellsOfEachCharacterAndTheFocusOfItsLoss)
{
    InDialog({"type 210 \"ab\"", Came("210", {"210 CHANGE", "210 CHANGE"}), Shows("ab"),
              "type 210 \"\"", Came("210", {"210 CHANGE"}), "key Tab",
              Came("210", {"210 KILLFOCUS"}), "focus 210"});
    EXPECT_EQ(Taken("210"), Lines{"210 KILLFOCUS"}) << "by the end of the dialog, too";
}

TEST_F(Controls, KeysMoveTheCaretAndDelete)
{
    static const struct {
        Steps keys;
        const char *left;
    } aKeys[] = {
        {{"key End", "key Backspace"}, "abc"},
        {{"key Home", "key Shift+Right", "key Shift+Right", "key Delete"}, "cd"},
        {{"key End", "key Shift+Home", "key x"}, "x"},
        {{"key Home", "key Shift+Right", "key Ctrl+x", "key End", "key Ctrl+v"}, "bcda"},
        {{"key Home", "key Backspace"}, "abcd"},
        {{"key Home", "click 210", "key x"}, "abcdx"},
    };
    for (const auto &row : aKeys) {
        Steps steps{"type 210 \"abcd\""};
        steps.insert(steps.end(), row.keys.begin(), row.keys.end());
        steps.push_back(Shows(row.left));
        InDialog(steps);
    }
}

TEST_F(Controls, AClickPutsTheCaretWhereItIs)
{
    InDialog({[this] { SetText(IDC_TEXT, std::string(100, 'W').c_str()); }, "click 210", "key x",
              [this] {
                  const size_t at = TextOf(IDC_TEXT).find('x');
                  EXPECT_TRUE(at > 3 && at < 15) << at << ": in the middle of what is seen";
              }});
}

TEST_F(Controls, NumbersAreReadUpToTheFirstOtherCharacter)
{
    static const struct {
        const char *why, *text;
        BOOL isSigned;
        UINT value;
        BOOL read;
    } aNumbers[] = {
        {"blanks and a minus", " \t-12", TRUE, static_cast<UINT>(-12), TRUE},
        {"a plus", "+12", TRUE, 12, TRUE},
        {"stops at anything else", "12x3", TRUE, 12, TRUE},
        {"no digits", "x12", TRUE, 0, FALSE},
        {"only a sign", "-", TRUE, 0, FALSE},
        {"the largest", "2147483647", TRUE, 0x7FFFFFFF, TRUE},
        {"the smallest", "-2147483648", TRUE, 0x80000000, TRUE},
        {"too many digits", "2147483648", TRUE, 0, FALSE},
        {"far too many digits", "99999999999999999999999", TRUE, 0, FALSE},
        {"no sign without one allowed", "-1", FALSE, 0, FALSE},
        {"the largest without sign", "4294967295", FALSE, 0xFFFFFFFF, TRUE},
    };
    InDialog({[this] {
        for (const auto &row : aNumbers) {
            SetText(IDC_TEXT, row.text);
            BOOL read = 2;
            EXPECT_EQ(GetDlgItemInt(hDlg, IDC_TEXT, &read, row.isSigned), row.value) << row.why;
            EXPECT_EQ(read, row.read) << row.why;
        }
    }});
}

TEST_F(Controls, ProgramsCountBytesAndGetWholeCharacters)
{
    machine.uAnsiCodePage = 932;
    Apply();
    const auto cut = [this](int size) {
        char szText[] = "         ";
        const UINT length = GetDlgItemTextA(hDlg, IDC_TEXT, szText, size);
        EXPECT_EQ(length, std::strlen(szText));
        return std::string(szText);
    };
    InDialog({[&] {
                  SetText(IDC_TEXT, "a\x93\xFA\x96\x7B");
                  EXPECT_THAT((Lines{cut(5), cut(3), cut(1)}), ElementsAre("a\x93\xFA", "a", ""));
                  Send(IDC_TEXT, EM_SETSEL, 3, 3);
                  SetFocus(Item(IDC_TEXT));
              },
              "key x", Shows("a\x93\xFAx\x96\x7B"),
              [this] { Send(IDC_TEXT, EM_SETSEL, 0, static_cast<LPARAM>(-1)); }, "key y",
              Shows("y")});
}

TEST_F(Controls, ARadioButtonChecksItselfAndClearsItsGroupBeforeItTells)
{
    std::string seen;
    onCommand = [&](int pressed, int) {
        for (const int id : {IDC_AUTO, IDC_MANUAL, IDC_COLOR, IDC_BLACK})
            if (pressed == IDC_MANUAL)
                seen += IsDlgButtonChecked(hDlg, id) ? '1' : '0';
    };
    InDialog({[this] {
                  CheckRadioButton(hDlg, IDC_AUTO, IDC_MANUAL, IDC_AUTO);
                  CheckRadioButton(hDlg, IDC_COLOR, IDC_BLACK, IDC_COLOR);
              },
              Came("20", {}), "click 202", Came("20", {"202 CLICKED"}),
              [&] { EXPECT_EQ(seen, "0110") << "the other group is left alone"; }, "click 205",
              [this] { EXPECT_TRUE(IsDlgButtonChecked(hDlg, IDC_MIRROR)); }, "click 205",
              [this] { EXPECT_FALSE(IsDlgButtonChecked(hDlg, IDC_MIRROR)); }});
}

TEST_F(Controls, AScrollBarSendsALineAndAnEndAndTakesNoFocus)
{
    InDialog({"focus 208", [this] { Taken(); }, "scroll 209 up", "scroll 209 down",
              Came("VSCROLL|208",
                   {"VSCROLL 209 0/0", "VSCROLL 209 8/0", "VSCROLL 209 1/0", "VSCROLL 209 8/0"})});
}

TEST_F(Controls, ATrackbarHoldsItsPositionAndTellsOfEachMove)
{
    onInit = [this] {
        CreateWindowExA(0, "msctls_trackbar32", "", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 150, 90,
                        100, 28, hDlg, reinterpret_cast<HMENU>(IDC_TRACK), hSample, nullptr);
        Send(IDC_TRACK, TBM_SETRANGE, TRUE, MAKELONG(0, 50));
        Send(IDC_TRACK, TBM_SETPOS, TRUE, 99);
    };
    const auto at = [this](int position) -> Step {
        return [=, this] { EXPECT_EQ(Send(IDC_TRACK, TBM_GETPOS), position); };
    };
    const auto range = [this](short from, short to) -> Step {
        return [=, this] { Send(IDC_TRACK, TBM_SETRANGE, TRUE, MAKELONG(from, to)); };
    };
    InDialog({at(50), Came("HSCROLL", {}), "slide 214 18", at(18),
              Came("HSCROLL", {"HSCROLL 214 5/18", "HSCROLL 214 4/18", "HSCROLL 214 8/0"}),
              // The click has given it the keyboard.
              "key Right", at(19), Came("HSCROLL", {"HSCROLL 214 1/0", "HSCROLL 214 8/0"}),
              // Of positions that share a pixel, the very one.
              range(0, 1000), "slide 214 777", at(777), "slide 214 2", at(2),
              // A range without room for anything.
              range(5, 3), at(5), "slide 214 5", at(5)});
}

TEST_F(Controls, AListBoxTellsOnlyOfSelectionsByHand)
{
    onInit = [this] {
        Fill(IDC_NAMES, LB_INSERTSTRING, {"b", "a", "c", "d", "e", "f"});
        Send(IDC_NAMES, LB_SETCURSEL, 2);
        Fill(IDC_OWNERNAMES, LB_INSERTSTRING, {"x", "y"});
        Send(IDC_OWNERNAMES, LB_SETCURSEL, 1);
    };
    const Step told = Came("213", {"213 SELCHANGE"});
    const auto selected = [this](LRESULT item) -> Step {
        return [=, this] { EXPECT_EQ(Send(IDC_NAMES, LB_GETCURSEL), item); };
    };
    InSheet({"page \"Paper\"",
             // Selected while nobody could see it.
             Came("213|DRAW 220", {"DRAW 220 entire", "DRAW 220 entire +selected"}),
             "choose 213 \"f\"", selected(5), told, "choose 213 #5", told, "key Up", selected(4),
             told, "choose 213 #0", "key End", selected(5), "click 213", selected(4),
             "scroll 213 up", selected(4), "click 213", selected(2),
             [this] { EXPECT_EQ(Send(IDC_NAMES, LB_SETCURSEL, static_cast<WPARAM>(-1)), LB_ERR); },
             selected(LB_ERR)});
}

TEST_F(Controls, APressIsLostWhenLosingTheFocusDisablesWhatWasPressed)
{
    bool loses = true;
    const auto enable = [this](BOOL enabled) {
        for (const int id : {IDC_MORE, IDC_LIST})
            EnableWindow(Item(id), enabled);
    };
    onCommand = [&](int, int code) {
        if (code == EN_KILLFOCUS)
            enable(!loses);
    };
    const Step lost = Came("2", {"210 KILLFOCUS"}), again = [&] { enable(TRUE); };
    InDialog({"focus 210", "click 216", lost, again, "focus 210", "click 206", lost, again,
              "focus 210", [&] { loses = false; }, "click 216",
              Came("2", {"210 KILLFOCUS", "216 CLICKED"})});
}

TEST_F(Controls, AnOwnerDrawnButtonIsDrawnForPressAndFocus)
{
    InSheet({"page \"Utility\"", [this] { Taken(); }, "focus 212",
             Came("DRAW", {"DRAW 212 focus +focus"}), "key Tab",
             Came("DRAW", {"DRAW 212 focus", "DRAW 216 focus +focus"}), "click 216",
             Came("DRAW|216",
                  {"DRAW 216 select +selected +focus", "DRAW 216 select +focus", "216 CLICKED"}),
             [this] { EnableWindow(Item(IDC_PICTURE), FALSE); }, "",
             Came("DRAW", {"DRAW 212 entire +disabled"}),
             // Nobody sees that it loses the focus.
             [this] { ShowWindow(Item(IDC_MORE), SW_HIDE); }, "", Came("DRAW", {})});
}

TEST_F(Controls, MessagesToNoWindowFail)
{
    EXPECT_EQ(GetDlgItem(nullptr, 1), nullptr);
    EXPECT_EQ(SendMessageA(reinterpret_cast<HWND>(&machine), WM_GETFONT, 0, 0), 0);
    EXPECT_FALSE(SetDlgItemTextA(nullptr, 1, "x"));
    EXPECT_EQ(GetDlgItemInt(nullptr, 1, nullptr, TRUE), 0u);
}
