// Drop-down lists: the order of notices, what is selected at each, and the searches.
#include "platform/served.h"
#include "tests/platform/user_fixture.h"

class Combo : public UserTest
{
  protected:
    Combo()
    {
        onInit = [this] {
            Fill(IDC_LIST, {"Plain", "Glossy", "Glossy film", "Canvas"});
            Send(IDC_LIST, CB_SETCURSEL, 1);
            Taken();
        };
        // Every notice with the selection that stands at that moment, and whether the list is open.
        onMessage = [this](HWND, UINT uMsg, WPARAM wParam, LPARAM) -> std::optional<INT_PTR> {
            if (uMsg == WM_COMMAND && LOWORD(wParam) == IDC_LIST) {
                log.back() += " " + std::to_string(Send(IDC_LIST, CB_GETCURSEL)) +
                              (Send(IDC_LIST, CB_GETDROPPEDSTATE) ? " open" : "");
                if (onNotice)
                    onNotice(HIWORD(wParam));
            }
            return std::nullopt;
        };
    }
    std::string ItemText(int index)
    {
        char szText[64] = "";
        Send(IDC_LIST, CB_GETLBTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(szText));
        return szText;
    }
    LRESULT Find(UINT msg, int after, const char *text)
    {
        return Send(IDC_LIST, msg, static_cast<WPARAM>(after), reinterpret_cast<LPARAM>(text));
    }
    void Expect(std::vector<std::string> notices) { EXPECT_EQ(Taken({"206"}), notices); }
    std::function<void(int)> onNotice;
};

TEST_F(Combo, AChoiceInTheOpenListIsCurrentFromTheFirstNoticeOn)
{
    Person(
        {"choose 206 \"Canvas\"",
         [this] {
             Expect({"206 DROPDOWN 1", "206 SELENDOK 3 open", "206 CLOSEUP 3", "206 SELCHANGE 3"});
         },
         "choose 206 #3",
         [this] {
             Expect({"206 DROPDOWN 3", "206 SELENDOK 3 open", "206 CLOSEUP 3", "206 SELCHANGE 3"});
         },
         "drop 206", "key Up", "key Up", "key Enter",
         [this] {
             Expect({"206 DROPDOWN 3", "206 SELENDOK 1 open", "206 CLOSEUP 1", "206 SELCHANGE 1"});
         },
         "cancel"});
    EXPECT_EQ(Dialog(IDD_PLAIN), 2);
}

TEST_F(Combo, ClosingWithoutAChoiceRestoresWhatStoodAfterTheOpening)
{
    onNotice = [this](int code) {
        if (code == CBN_DROPDOWN)
            Send(IDC_LIST, CB_SETCURSEL, 2);
    };
    static const struct {
        const char *why, *close;
    } aWays[] = {{"Escape", "key Escape"}, {"Alt and an arrow", "key Alt+Up"},
                 {"F4", "key F4"},         {"a click elsewhere", "click 205"},
                 {"Tab", "key Tab"},       {"the field itself", "close 206"}};
    std::vector<Step> steps;
    for (const auto &row : aWays) {
        steps.push_back("drop 206");
        steps.push_back("key Down");
        steps.push_back(row.close);
        steps.push_back([this, &row] {
            SCOPED_TRACE(row.why);
            Expect({"206 DROPDOWN 1", "206 SELENDCANCEL 2 open", "206 CLOSEUP 2"});
            Send(IDC_LIST, CB_SETCURSEL, 1);
        });
    }
    steps.push_back([this] { EXPECT_TRUE(IsDlgButtonChecked(hDlg, IDC_MIRROR)) << "both done"; });
    steps.push_back("cancel");
    Person(steps);
    EXPECT_EQ(Dialog(IDD_PLAIN), 2);
}

TEST_F(Combo, SteppingWhileClosedTellsOfSelectionsOnly)
{
    Person({"focus 206", "key Down",
            [this] {
                Expect({"206 SELENDOK 2", "206 SELCHANGE 2"});
            },
            "key End",
            [this] {
                Expect({"206 SELENDOK 3", "206 SELCHANGE 3"});
            },
            "key Down", [this] { Expect({}); }, "key p",
            [this] {
                Expect({"206 SELENDOK 0", "206 SELCHANGE 0"});
            },
            "cancel"});
    EXPECT_EQ(Dialog(IDD_PLAIN), 2);
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
            Fill(IDC_LIST, {"X", "Y"});
            Send(IDC_LIST, CB_SETCURSEL, 0);
        };
        Person({"drop 206", [this] { EXPECT_EQ(Send(IDC_LIST, CB_GETDROPPEDSTATE), TRUE); },
                "choose 206 #1",
                [this, when] {
                    EXPECT_EQ(Send(IDC_LIST, CB_GETCOUNT), 2);
                    EXPECT_EQ(Send(IDC_LIST, CB_GETCURSEL), when == CBN_DROPDOWN ? 1 : 0);
                    EXPECT_THAT(Taken({"206"}).size(), 4u);
                },
                "cancel"});
        EXPECT_EQ(Dialog(IDD_PLAIN), 2);
    }
}

TEST_F(Combo, ProgramsSelectAndInsertInSilence)
{
    Person({[this] {
                Send(IDC_LIST, CB_SETCURSEL, 0);
                Fill(IDC_LIST, {"Another"}); // the style is a sorted one
                EXPECT_EQ(ItemText(4), "Another");
                EXPECT_EQ(Send(IDC_LIST, CB_INSERTSTRING, 0, reinterpret_cast<LPARAM>("First")), 0);
                EXPECT_EQ(Send(IDC_LIST, CB_GETCURSEL), 1) << "the same item stays selected";
                EXPECT_EQ(Send(IDC_LIST, CB_INSERTSTRING, 9, reinterpret_cast<LPARAM>("Far")),
                          CB_ERR);
                Send(IDC_LIST, CB_SETITEMDATA, 0, 1234);
                EXPECT_EQ(Send(IDC_LIST, CB_GETITEMDATA, 0), 1234);
                EXPECT_EQ(Send(IDC_LIST, CB_GETITEMDATA, 1), 0);
                EXPECT_EQ(Send(IDC_LIST, CB_GETITEMDATA, static_cast<WPARAM>(-1)), CB_ERR);
                EXPECT_EQ(Send(IDC_LIST, CB_SETCURSEL, 6), CB_ERR);
                EXPECT_EQ(Send(IDC_LIST, CB_GETCURSEL), CB_ERR);
                Expect({});
            },
            "cancel"});
    EXPECT_EQ(Dialog(IDD_PLAIN), 2);
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
        {"wraps to the given item itself", CB_FINDSTRING, 2, "glossy f", 2},
        {"wraps past the end", CB_FINDSTRING, 2, "plain", 0},
        {"a start past the end counts as none", CB_FINDSTRING, 99, "glossy", 1},
        {"none", CB_FINDSTRING, -1, "x", -1},
        {"the whole text", CB_FINDSTRINGEXACT, -1, "GLOSSY FILM", 2},
        {"not a beginning", CB_FINDSTRINGEXACT, -1, "glossy f", -1},
        {"selects what begins so", CB_SELECTSTRING, -1, "canv", 3},
        {"selects behind the item", CB_SELECTSTRING, 1, "glossy", 2},
    };
    Person({[this] {
                for (const auto &row : aSearches) {
                    SCOPED_TRACE(row.why);
                    EXPECT_EQ(Find(row.msg, row.after, row.text), row.found);
                    if (row.msg == CB_SELECTSTRING) {
                        EXPECT_EQ(Send(IDC_LIST, CB_GETCURSEL), row.found);
                    }
                }
                EXPECT_EQ(Find(CB_SELECTSTRING, -1, "none"), CB_ERR);
                EXPECT_EQ(Send(IDC_LIST, CB_GETCURSEL), 2) << "nothing found, nothing changed";
                Expect({});
            },
            "cancel"});
    EXPECT_EQ(Dialog(IDD_PLAIN), 2);
}

// The page's list is owner-drawn.
TEST_F(Combo, OwnerDrawnItemsKnowFieldAndList)
{
    onInit = [this] {
        if (GetDlgCtrlID(hDlg) == IDD_FIRST) {
            Fill(IDC_LIST, {"one", "two"});
            Send(IDC_LIST, CB_SETCURSEL, 1);
        }
    };
    Person({[this] {
                const std::vector<std::string> seen = Taken({"MEASURE", "INITDIALOG", "DRAW 206"});
                EXPECT_THAT(seen,
                            ElementsAre("MEASURE 206", "INITDIALOG 100", "DRAW 206 entire +field"));
            },
            "focus 206",
            [this] {
                EXPECT_THAT(Taken({"DRAW 206"}),
                            ElementsAre("DRAW 206 entire +selected +focus +field"));
            },
            "drop 206",
            [this] {
                EXPECT_THAT(Taken({"DRAW 206"}),
                            ElementsAre("DRAW 206 entire +field", "DRAW 206 entire",
                                        "DRAW 206 entire +selected"));
            },
            "close 206", [this] { EnableWindow(Item(IDC_LIST), FALSE); }, "",
            [this] { EXPECT_THAT(Taken({"DRAW 206"}).back(), "DRAW 206 entire +disabled +field"); },
            "cancel"});
    EXPECT_EQ(Sheet(), 0);
}

TEST_F(Combo, AnOpenListIsScrolledByTheWheelAndByItsThumb)
{
    onInit = [this] {
        if (GetDlgCtrlID(hDlg) == IDD_FIRST)
            Fill(IDC_LIST, std::vector<const char *>(20, "name"));
    };
    std::vector<int> drawn; // items of the open list
    onMessage = [&](HWND, UINT uMsg, WPARAM, LPARAM lParam) -> std::optional<INT_PTR> {
        const auto *item = reinterpret_cast<DRAWITEMSTRUCT *>(lParam);
        if (uMsg == WM_DRAWITEM && item->CtlID == IDC_LIST && !(item->itemState & ODS_COMBOBOXEDIT))
            drawn.push_back(static_cast<int>(item->itemID));
        return std::nullopt;
    };
    const auto uppermost = [&] {
        const int first = drawn.empty() ? -1 : drawn.front();
        drawn.clear();
        return first;
    };
    Person({"drop 206", [&] { EXPECT_EQ(uppermost(), 0); }, "scroll 206 down",
            [&] { EXPECT_EQ(uppermost(), 3); }, "scroll 206 #9", [&] { EXPECT_EQ(uppermost(), 9); },
            "scroll 206 up", [&] { EXPECT_EQ(uppermost(), 6); }, [this] { Taken(); }, "close 206",
            [this] {
                EXPECT_THAT(Taken({"206"}), ElementsAre("206 SELENDCANCEL", "206 CLOSEUP"))
                    << "it was still open, with nothing chosen";
            },
            "cancel"});
    EXPECT_EQ(Sheet(), 0);
}
