// Drop-down lists: the order of notices, what is selected at each, and the searches.
#include "platform/served.h"
#include "tests/platform/user_fixture.h"

class Combo : public UserTest
{
  protected:
    Combo()
    {
        onInit = [this] {
            Fill(IDC_LIST, CB_INSERTSTRING, {"Plain", "Glossy film", "Glossy", "Canvas"});
            Select(2);
        };
        // Every notice with the selection that stands at that moment, and whether the list is open.
        onCommand = [this](int id, int code) {
            if (id != IDC_LIST)
                return;
            log.back() += " " + std::to_string(Send(IDC_LIST, CB_GETCURSEL)) +
                          (Send(IDC_LIST, CB_GETDROPPEDSTATE) ? " open" : "");
            if (onNotice)
                onNotice(code);
        };
    }
    LRESULT Select(int item) { return Send(IDC_LIST, CB_SETCURSEL, static_cast<WPARAM>(item)); }
    Step Told(Lines notices) { return Came("206", std::move(notices)); }
    // A choice of an item made in the list, which had another one before.
    Step ToldOfChoice(int before, int item)
    {
        const std::string now = std::to_string(item);
        return Told({"206 DROPDOWN " + std::to_string(before), "206 SELENDOK " + now + " open",
                     "206 CLOSEUP " + now, "206 SELCHANGE " + now});
    }
    std::function<void(int)> onNotice;
};

TEST_F(Combo, AChoiceInTheOpenListIsCurrentFromTheFirstNoticeOn)
{
    InDialog({"choose 206 \"Canvas\"", ToldOfChoice(2, 3), "choose 206 #3", ToldOfChoice(3, 3),
              "drop 206", "key Up", "key Up", "key Enter", ToldOfChoice(3, 1),
              "choose 206 \"Glossy\"", ToldOfChoice(1, 2)});
}

TEST_F(Combo, AChoiceStaysWhateverItsNoticeDoes)
{
    onNotice = [this](int code) {
        if (code == CBN_SELENDOK)
            EnableWindow(Item(IDC_LIST), FALSE);
    };
    InDialog({"choose 206 #0", ToldOfChoice(2, 0)});
    onNotice = [this](int code) {
        if (code == CBN_SELENDOK)
            MessageBoxA(hDlg, "Text", "KORVA", MB_OK);
    };
    InDialog({"choose 206 #0", "box ok", ToldOfChoice(2, 0)});
}

TEST_F(Combo, ClosingWithoutAChoiceRestoresWhatStoodAfterTheOpening)
{
    onNotice = [this](int code) {
        if (code == CBN_DROPDOWN)
            Select(1);
    };
    Steps steps;
    for (const char *way :
         {"key Escape", "key Alt+Up", "key F4", "key Tab", "click 205", "click 206"}) {
        const Lines told{"206 DROPDOWN 2", "206 SELENDCANCEL 1 open", "206 CLOSEUP 1"};
        steps.insert(steps.end(), {[this] { Select(2); }, "drop 206", [this] { Select(3); },
                                   "key Up", way, Told(told)});
    }
    steps.emplace_back(
        [this] { EXPECT_TRUE(IsDlgButtonChecked(hDlg, IDC_MIRROR)) << "both done"; });
    InDialog(steps);
}

TEST_F(Combo, SteppingWhileClosedTellsOfSelectionsOnly)
{
    InDialog({"focus 206", "key Up", Told({"206 SELENDOK 1", "206 SELCHANGE 1"}), "key End",
              Told({"206 SELENDOK 3", "206 SELCHANGE 3"}), "key Down", Told({}), "key p",
              Told({"206 SELENDOK 0", "206 SELCHANGE 0"})});
}

TEST_F(Combo, TheListMayBeRefilledInsideAnyNotice)
{
    for (const int when : {CBN_DROPDOWN, CBN_SELENDOK, CBN_CLOSEUP, CBN_SELCHANGE}) {
        SCOPED_TRACE(when);
        onNotice = [this, when](int code) {
            if (code != when)
                return;
            Send(IDC_LIST, CB_RESETCONTENT);
            EXPECT_EQ(Send(IDC_LIST, CB_GETCURSEL), CB_ERR);
            Fill(IDC_LIST, CB_INSERTSTRING, {"X", "Y"});
            Select(0);
        };
        InDialog({"drop 206", "choose 206 #1", [this, when] {
                      EXPECT_EQ(Send(IDC_LIST, CB_GETCOUNT), 2);
                      EXPECT_EQ(Send(IDC_LIST, CB_GETCURSEL), when == CBN_DROPDOWN ? 1 : 0);
                      EXPECT_EQ(Taken("206").size(), 4u);
                  }});
    }
}

TEST_F(Combo, ProgramsSelectAndInsertInSilence)
{
    const auto insert = [this](int at, const char *text) {
        return Send(IDC_LIST, CB_INSERTSTRING, static_cast<WPARAM>(at),
                    reinterpret_cast<LPARAM>(text));
    };
    InDialog({[&] {
                  EXPECT_EQ(insert(-1, "Another"), 4) << "at the end, though the style is sorted";
                  EXPECT_EQ(insert(0, "First"), 0);
                  EXPECT_EQ(Send(IDC_LIST, CB_GETCURSEL), 3) << "the same item stays selected";
                  EXPECT_EQ(insert(9, "Far"), CB_ERR);
                  Send(IDC_LIST, CB_SETITEMDATA, 0, 1234);
                  EXPECT_EQ(Send(IDC_LIST, CB_GETITEMDATA, 0), 1234);
                  EXPECT_EQ(Send(IDC_LIST, CB_GETITEMDATA, 1), 0);
                  EXPECT_EQ(Send(IDC_LIST, CB_GETITEMDATA, static_cast<WPARAM>(-1)), CB_ERR);
                  EXPECT_EQ(Select(6), CB_ERR);
                  EXPECT_EQ(Send(IDC_LIST, CB_GETCURSEL), CB_ERR);
              },
              Told({})});
}

TEST_F(Combo, SearchesIgnoreCaseAndWrap)
{
    static const struct {
        const char *why;
        UINT msg;
        int after;
        const char *text;
        int found;
    } aSearches[] = {
        {"the first that begins so", CB_FINDSTRING, -1, "gLOSSY", 1},
        {"behind the given item", CB_FINDSTRING, 1, "glossy", 2},
        {"wraps to the given item itself", CB_FINDSTRING, 1, "glossy f", 1},
        {"wraps past the end", CB_FINDSTRING, 2, "plain", 0},
        {"a start past the end counts as none", CB_FINDSTRING, 99, "glossy", 1},
        {"none", CB_FINDSTRING, -1, "x", -1},
        {"the whole text", CB_FINDSTRINGEXACT, -1, "GLOSSY", 2},
        {"not a beginning", CB_FINDSTRINGEXACT, -1, "glossy f", -1},
        {"selects behind the item", CB_SELECTSTRING, 1, "glossy", 2},
        {"selects nothing else", CB_SELECTSTRING, -1, "none", -1},
    };
    InDialog({[this] {
                  for (const auto &row : aSearches)
                      EXPECT_EQ(Send(IDC_LIST, row.msg, static_cast<WPARAM>(row.after),
                                     reinterpret_cast<LPARAM>(row.text)),
                                row.found)
                          << row.why;
                  EXPECT_EQ(Send(IDC_LIST, CB_GETCURSEL), 2) << "nothing found, nothing changed";
              },
              Told({})});
}

// The page's list is owner-drawn.
TEST_F(Combo, OwnerDrawnItemsKnowFieldAndList)
{
    onInit = [this] {
        Fill(IDC_LIST, CB_INSERTSTRING, {"one", "two"});
        Select(1);
    };
    InSheet({Came("MEASURE|INITDIALOG|DRAW 206",
                  {"MEASURE 206", "INITDIALOG 100", "DRAW 206 entire +field"}),
             "focus 206", Came("DRAW 206", {"DRAW 206 entire +selected +focus +field"}), "drop 206",
             Came("DRAW 206",
                  {"DRAW 206 entire +field", "DRAW 206 entire", "DRAW 206 entire +selected"}),
             "close 206", [this] { EnableWindow(Item(IDC_LIST), FALSE); }, "",
             [this] { EXPECT_EQ(Taken("DRAW 206").back(), "DRAW 206 entire +disabled +field"); }});
}

TEST_F(Combo, AnOpenListIsScrolledByTheWheelAndByItsThumb)
{
    onCommand = nullptr;
    onInit = [this] { Fill(IDC_LIST, CB_INSERTSTRING, std::vector<const char *>(20, "name")); };
    std::vector<UINT> drawn; // items of the open list
    onMessage = [&](HWND, UINT uMsg, WPARAM, LPARAM lParam) -> std::optional<INT_PTR> {
        const auto *item = reinterpret_cast<DRAWITEMSTRUCT *>(lParam);
        if (uMsg == WM_DRAWITEM && item->CtlID == IDC_LIST && !(item->itemState & ODS_COMBOBOXEDIT))
            drawn.push_back(item->itemID);
        return std::nullopt;
    };
    const auto uppermost = [&](UINT item) -> Step {
        return [&drawn, item] { EXPECT_EQ(std::exchange(drawn, {}).at(0), item); };
    };
    InSheet({"drop 206", uppermost(0), "scroll 206 down", uppermost(3), "scroll 206 #9",
             uppermost(9), "scroll 206 up", uppermost(6), [this] { Taken(); }, "close 206",
             // It was still open, with nothing chosen.
             Came("206", {"206 SELENDCANCEL", "206 CLOSEUP"})});
}
