// Scripts: what the actions cannot do, what the transcript says, message boxes, and what happens
// when nobody is left.
#include <filesystem>
#include <fstream>

#include "platform/win32.h"
#include "tests/platform/user_fixture.h"

using ::testing::HasSubstr;
using ::testing::internal::CaptureStderr;
using ::testing::internal::GetCapturedStderr;
using Json = nlohmann::json;

class Scripts : public UserTest
{
  protected:
    Scripts()
    {
        machine.strTranscript = machine.strRoot + "/transcript";
        Apply();
    }
    // The transcript's lines of one event, oldest first.
    std::vector<Json> Events(const std::string &event)
    {
        std::vector<Json> events;
        std::ifstream file(machine.strTranscript);
        for (std::string line; std::getline(file, line);)
            if (Json json = Json::parse(line); json["event"] == event)
                events.push_back(json);
        return events;
    }
    // "opened page Main", ...
    Lines Windows()
    {
        Lines lines;
        for (const Json &line : Events("window"))
            lines.push_back(std::string(line["what"]) + " " + std::string(line["kind"]) + " " +
                            std::string(line["title"]));
        return lines;
    }
    // One control of the last dump.
    Json Dumped(int id)
    {
        const Json dump = Events("dump").back();
        for (const Json &control : dump["controls"])
            if (control["id"] == id)
                return control;
        return {};
    }
    void Open(const std::string &script, const std::string &display = "headless")
    {
        kvp::ConfigureScreen(
            {.strDisplay = display, .nScale = 1, .strScript = script, .strShots = machine.strRoot});
    }
    void OpenText(const std::string &text)
    {
        const std::string file = machine.strRoot + "/script";
        std::ofstream(file) << text;
        Open(file);
    }
    // Runs a dialog with a script's text, or the sheet.
    INT_PTR Play(const std::string &text, int dialog = IDD_PLAIN)
    {
        OpenText(text);
        CaptureStderr();
        const INT_PTR result = dialog ? Dialog(dialog) : Sheet();
        strSaid = GetCapturedStderr();
        return result;
    }
    // The button More shows a box.
    void OnMore(UINT type)
    {
        onCommand = [=, this](int id, int) {
            if (id == IDC_MORE)
                answers.push_back(MessageBoxA(hDlg, "Really?", "KORVA", type));
        };
    }
    std::vector<int> answers;
    std::string strSaid; // on standard error
};

TEST_F(Scripts, ActionsThatCannotBeDoneFailWithTheirLine)
{
    static const struct {
        const char *why, *text;
        int line;
        const char *said;
    } aFailures[] = {
        {"no such control", "click 999\n", 1, "no control 999"},
        {"comments and blanks count as lines", "# first\n\n  click 999 # third\n", 3, "999"},
        {"no number", "click one\n", 1, "\"one\" is no number"},
        {"no such action", "press 1\n", 1, "no action \"press\""},
        {"words are missing", "choose 206\n", 1, "choose ID"},
        {"no such item", "choose 206 \"x\"\n", 1, "no item \"x\""},
        {"not open", "close 206\n", 1, "not open"},
        {"open already", "drop 206\ndrop 206\n", 2, "already open"},
        {"not an edit field", "type 205 \"x\"\n", 1, "no edit field"},
        {"no page", "page \"Paper\"\n", 1, "no pages"},
        {"no box", "box ok\n", 1, "no message box"},
        {"nothing to scroll", "drop 206\nscroll 206 down\n", 2, "all of its items"},
        {"no such key", "key F99\n", 1, "no key"},
        {"an open quote", "type 210 \"x\n", 1, "closing quote"},
        {"a name with a folder", "shot a/b\n", 1, "no name"},
        {"no such button", "help\n", 1, "no such button"},
        {"disabled", "click 205\nclick 216\n", 2, "216 is disabled"},
        {"hidden", "click 208\nclick 205\n", 1, "208 is hidden"},
    };
    onInit = [this] {
        EnableWindow(Item(IDC_MORE), FALSE);
        ShowWindow(Item(IDC_NUMBER), SW_HIDE);
    };
    for (const auto &row : aFailures) {
        SCOPED_TRACE(row.why);
        EXPECT_EQ(Play(row.text), IDCANCEL);
        EXPECT_THAT(strSaid, HasSubstr("line " + std::to_string(row.line)));
        EXPECT_THAT(strSaid, HasSubstr(row.said));
        EXPECT_EQ(kvp::CurrentPlay().nLine, row.line);
        EXPECT_TRUE(Events("result").back()["failed"]);
    }
}

TEST_F(Scripts, AModalWindowIsCancelledWhenNobodyIsLeft)
{
    EXPECT_EQ(Play("type 210 \"x\"\n"), 2);
    EXPECT_THAT(strSaid, HasSubstr("\"Plain\""));
    EXPECT_EQ(Events("result").size(), 1u);
    // One that does not listen to Cancel is taken away all the same.
    onMessage = [](HWND, UINT uMsg, WPARAM, LPARAM) -> std::optional<INT_PTR> {
        return uMsg == WM_COMMAND ? std::optional<INT_PTR>(TRUE) : std::nullopt;
    };
    EXPECT_EQ(Play(""), 0);
    EXPECT_THAT(strSaid, HasSubstr("cancelled"));
}

TEST_F(Scripts, ActionsThatAreLeftFailThePlay)
{
    EXPECT_EQ(Play("ok\n# nothing\n\n"), 1);
    EXPECT_FALSE(kvp::EndPlay().bFailed);
    EXPECT_EQ(Play("ok\n\nok\n"), 1);
    CaptureStderr();
    EXPECT_TRUE(kvp::EndPlay().bFailed);
    EXPECT_EQ(kvp::EndPlay().nLine, 3);
    GetCapturedStderr();
}

TEST_F(Scripts, AScriptOrADisplayThatIsNotThereIsRefused)
{
    EXPECT_THROW(Open(machine.strRoot + "/none"), std::runtime_error);
    EXPECT_THROW(Open("", "paper"), std::runtime_error);
}

TEST_F(Scripts, ADumpSaysWhatAPersonSees)
{
    onInit = [this] {
        Fill(IDC_LIST, CB_INSERTSTRING, {"A4", "\xC4"});
        Send(IDC_LIST, CB_SETITEMDATA, 1, 9);
        Send(IDC_LIST, CB_SETCURSEL, 0);
        CheckDlgButton(hDlg, IDC_MIRROR, BST_CHECKED);
        EnableWindow(Item(IDC_MORE), FALSE);
    };
    EXPECT_EQ(Play("type 210 \"say \"\"A\"\"\" # a comment\ndrop 206\ndump\nclose 206\nprint 206\n"
                   "shot page\nok\n"),
              1);
    const Json dump = Events("dump").back();
    EXPECT_EQ(dump["window"], Json({{"kind", "dialog"}, {"id", 111}, {"title", "Plain"}}));
    EXPECT_EQ(dump.value("focus", 0), IDC_LIST);
    Json list = Json::parse(R"({"id":206,"kind":"combobox","text":"A4","enabled":true,
        "visible":true,"items":["A4","Ä"],"data":[0,9],"selection":0,"dropped":true})");
    EXPECT_EQ(Dumped(IDC_LIST), list);
    list["dropped"] = false;
    EXPECT_EQ(Events("print").back()["control"], list);
    EXPECT_EQ(Dumped(IDC_TEXT), Json::parse(R"({"id":210,"kind":"edit","text":"say \"A\"",
        "enabled":true,"visible":true,"readonly":false})"));
    EXPECT_EQ(Dumped(IDC_MIRROR)["checked"], true);
    EXPECT_EQ(Dumped(IDC_MORE)["enabled"], false);
    EXPECT_EQ(Dumped(IDC_SPIN)["kind"], "scrollbar");
    EXPECT_EQ(Events("shot").back()["name"], "page");
    EXPECT_GT(std::filesystem::file_size(machine.strRoot + "/page.png"), 500u);
    EXPECT_EQ(Events("action").front()["text"], "type 210 \"say \"\"A\"\"\" # a comment");
}

TEST_F(Scripts, BoxesAreAnsweredByTheirButtons)
{
    OnMore(MB_OKCANCEL | MB_ICONEXCLAMATION);
    EXPECT_EQ(Play("click 216\nbox ok \"Really?\"\nclick 216\nbox cancel\nclick 216\nkey Enter\n"
                   "click 216\nkey Escape\nclick 216\nkey Tab\nkey Space\nok\n"),
              1);
    EXPECT_THAT(answers, ElementsAre(1, 2, 1, 2, 2));
    EXPECT_EQ(Events("box").size(), 5u);
    EXPECT_EQ(Events("box")[0], Json::parse(R"({"event":"box","caption":"KORVA","text":"Really?",
        "icon":"exclamation","buttons":["ok","cancel"],"answer":"ok"})"));
    Lines windows = Windows();
    windows.resize(4);
    EXPECT_THAT(windows, ElementsAre("opened dialog Plain", "opened box KORVA", "closed box KORVA",
                                     "activated dialog Plain"));
}

TEST_F(Scripts, TheSheetIsNotedWhenHelpHasLeftIt)
{
    kvp::PutMemoryFile("C:\\winnt35\\help.hlp", std::vector<uint8_t>{'#', ' ', '1', '\n', 'A'});
    onMessage = [](HWND hWnd, UINT uMsg, WPARAM, LPARAM) -> std::optional<INT_PTR> {
        if (uMsg != WM_HELP)
            return std::nullopt;
        return WinHelpA(hWnd, "C:\\winnt35\\help.hlp", HELP_CONTEXT, 1);
    };
    // A list that was open is a window still, and lies above the sheet.
    EXPECT_EQ(Play("drop 206\nclose 206\nkey F1\nkey Escape\ncancel\n", 0), 0);
    EXPECT_EQ(Windows(), (Lines{"opened page Main", "activated page Main", "opened help ",
                                "closed help ", "activated page Main", "closed page Main"}));
}

TEST_F(Scripts, ABoxOnTopKeepsTheRestFromThePerson)
{
    OnMore(MB_OKCANCEL);
    static const struct {
        const char *line, *said;
    } aLines[] = {{"click 205", "\"KORVA\" is on top"},
                  {"box yes", "no button \"yes\""},
                  {"box ok \"No\"", "says \"Really?\""}};
    for (const auto &row : aLines) {
        EXPECT_EQ(Play("click 216\n" + std::string(row.line) + "\n"), 2);
        EXPECT_THAT(strSaid, HasSubstr(row.said));
        EXPECT_EQ(answers.back(), IDCANCEL);
    }
}

// Without a window below it only a script that goes on with the answer reaches a box.
TEST_F(Scripts, BoxesAtStartUpAreAnsweredByTheScriptOrByNobody)
{
    const auto show = [] { return MessageBoxA(nullptr, "Text", "KORVA", MB_OKCANCEL); };
    OpenText("box ok\nok\n");
    EXPECT_EQ(show(), 1);
    CaptureStderr();
    EXPECT_EQ(show(), 2) << "the next action is not for it";
    EXPECT_THAT(GetCapturedStderr(), HasSubstr("Text"));
    EXPECT_EQ(Dialog(IDD_EXTENDED), 1) << "the action is still there";
}
