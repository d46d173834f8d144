// Scripts: what the actions cannot do, what the transcript says, message boxes, and what happens
// when nobody is left.
#include <filesystem>
#include <fstream>

#include <nlohmann/json.hpp>

#include "platform/win32.h"
#include "tests/platform/user_fixture.h"

using ::testing::HasSubstr;
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
    // One control of the last dump.
    Json Dumped(int id)
    {
        const Json dump = Events("dump").back();
        for (const Json &control : dump["controls"])
            if (control["id"] == id)
                return control;
        return {};
    }
    // Runs a script's text from a file.
    INT_PTR Play(const std::string &text, int dialog = IDD_PLAIN)
    {
        const std::string file = machine.strRoot + "/script";
        std::ofstream(file) << text;
        kvp::ConfigureScreen({.strDisplay = "headless",
                              .nScale = 1,
                              .strScript = file,
                              .strShots = machine.strRoot});
        return dialog ? Dialog(dialog) : Sheet();
    }
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
        {"disabled", "click 219\n", 1, "219"},
        {"no number", "click one\n", 1, "\"one\" is no number"},
        {"no such action", "press 1\n", 1, "no action \"press\""},
        {"words are missing", "choose 206\n", 1, "choose ID"},
        {"words too many", "click 1 2\n", 1, "click ID"},
        {"no such item", "choose 206 \"x\"\n", 1, "no item \"x\""},
        {"no such item number", "choose 206 #7\n", 1, "#7"},
        {"not open", "close 206\n", 1, "not open"},
        {"open already", "drop 206\ndrop 206\n", 2, "already open"},
        {"not a list", "drop 210\n", 1, "no drop-down list"},
        {"not an edit field", "type 205 \"x\"\n", 1, "no edit field"},
        {"no page", "page \"Paper\"\n", 1, "no pages"},
        {"no box", "box ok\n", 1, "no message box"},
        {"a list that is not open", "scroll 206 down\n", 1, "not open"},
        {"nothing to scroll", "drop 206\nscroll 206 down\n", 2, "all of its items"},
        {"no such key", "key F99\n", 1, "no key"},
        {"an open quote", "type 210 \"x\n", 1, "closing quote"},
        {"a name with a folder", "shot a/b\n", 1, "no name"},
        {"no such button", "help\n", 1, "no such button"},
    };
    bPlayFails = true;
    for (const auto &row : aFailures) {
        SCOPED_TRACE(row.why);
        ::testing::internal::CaptureStderr();
        Play(row.text);
        const std::string said = ::testing::internal::GetCapturedStderr();
        EXPECT_THAT(said, HasSubstr("line " + std::to_string(row.line)));
        EXPECT_THAT(said, HasSubstr(row.said));
        EXPECT_EQ(kvp::CurrentPlay().nLine, row.line);
        EXPECT_TRUE(Events("result").back()["failed"]);
    }
}

TEST_F(Scripts, DisabledAndHiddenControlsCannotBeReached)
{
    bPlayFails = true;
    for (const bool hidden : {false, true}) {
        onInit = [this, hidden] {
            if (hidden)
                ShowWindow(Item(IDC_MORE), SW_HIDE);
            else
                EnableWindow(Item(IDC_MORE), FALSE);
        };
        ::testing::internal::CaptureStderr();
        EXPECT_EQ(Play("click 216\n"), 2) << "the dialog was cancelled";
        EXPECT_THAT(::testing::internal::GetCapturedStderr(),
                    HasSubstr(hidden ? "216 is hidden" : "216 is disabled"));
    }
}

TEST_F(Scripts, AModalWindowIsCancelledWhenNobodyIsLeft)
{
    bPlayFails = true;
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(Play("type 210 \"x\"\n"), 2);
    EXPECT_THAT(::testing::internal::GetCapturedStderr(), HasSubstr("\"Plain\""));
    ASSERT_EQ(Events("result").size(), 1u);
    // One that does not listen to Cancel is taken away all the same.
    onMessage = [](HWND, UINT uMsg, WPARAM, LPARAM) -> std::optional<INT_PTR> {
        return uMsg == WM_COMMAND ? std::optional<INT_PTR>(TRUE) : std::nullopt;
    };
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(Play(""), 0);
    EXPECT_THAT(::testing::internal::GetCapturedStderr(), HasSubstr("cancelled"));
}

TEST_F(Scripts, ActionsThatAreLeftFailThePlay)
{
    EXPECT_EQ(Play("ok\n# nothing\n\n"), 1);
    EXPECT_FALSE(kvp::EndPlay().bFailed);
    EXPECT_EQ(Play("ok\n\nok\n"), 1);
    ::testing::internal::CaptureStderr();
    EXPECT_TRUE(kvp::EndPlay().bFailed);
    EXPECT_EQ(kvp::EndPlay().nLine, 3);
    ::testing::internal::GetCapturedStderr();
}

TEST_F(Scripts, AScriptThatIsNotThereIsRefused)
{
    EXPECT_THROW(kvp::ConfigureScreen({.strDisplay = "headless",
                                       .nScale = 1,
                                       .strScript = machine.strRoot + "/none",
                                       .strShots = ""}),
                 std::runtime_error);
    EXPECT_THROW(
        kvp::ConfigureScreen({.strDisplay = "paper", .nScale = 1, .strScript = "", .strShots = ""}),
        std::runtime_error);
}

TEST_F(Scripts, ADumpSaysWhatAPersonSees)
{
    onInit = [this] {
        Fill(IDC_LIST, {"A4", "\xC4"});
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
    EXPECT_EQ(dump["focus"], IDC_LIST);
    EXPECT_EQ(Dumped(IDC_LIST), Json::parse(R"({"id":206,"kind":"combobox","text":"A4",
        "enabled":true,"visible":true,"items":["A4","Ä"],"data":[0,9],"selection":0,
        "dropped":true})"));
    EXPECT_EQ(Dumped(IDC_TEXT), Json::parse(R"({"id":210,"kind":"edit","text":"say \"A\"",
        "enabled":true,"visible":true,"readonly":false})"));
    EXPECT_EQ(Dumped(IDC_MIRROR)["checked"], true);
    EXPECT_EQ(Dumped(IDC_MORE)["enabled"], false);
    EXPECT_EQ(Dumped(IDC_SPIN)["kind"], "scrollbar");
    EXPECT_EQ(Events("print").back()["control"]["dropped"], false);
    EXPECT_EQ(Events("shot").back()["name"], "page");
    EXPECT_GT(std::filesystem::file_size(machine.strRoot + "/page.png"), 500u);
    EXPECT_EQ(Events("action").front()["text"], "type 210 \"say \"\"A\"\"\" # a comment");
}

TEST_F(Scripts, ADumpNamesThePictureLastDrawn)
{
    int number = IDB_TRUE;
    onMessage = [&](HWND, UINT uMsg, WPARAM, LPARAM lParam) -> std::optional<INT_PTR> {
        const auto *item = reinterpret_cast<DRAWITEMSTRUCT *>(lParam);
        if (uMsg != WM_DRAWITEM || item->CtlType != ODT_BUTTON)
            return std::nullopt;
        HBITMAP bitmap = number ? LoadBitmapA(hSample, MAKEINTRESOURCEA(number)) : nullptr;
        if (!bitmap)
            return TRUE;
        HDC memory = CreateCompatibleDC(item->hDC);
        SelectObject(memory, bitmap);
        BitBlt(item->hDC, 2, 2, 6, 5, memory, 0, 0, SRCCOPY);
        DeleteDC(memory);
        DeleteObject(bitmap);
        return TRUE;
    };
    const auto redraw = [&](int with) {
        return [&, with] {
            number = with;
            InvalidateRect(Item(IDC_PICTURE), nullptr, TRUE);
        };
    };
    Person({"dump", [this] { EXPECT_EQ(Dumped(IDC_PICTURE)["picture"], IDB_TRUE); },
            redraw(IDB_MONO), "dump",
            [this] { EXPECT_EQ(Dumped(IDC_PICTURE)["picture"], IDB_MONO); }, redraw(0), "dump",
            [this] { EXPECT_FALSE(Dumped(IDC_PICTURE).contains("picture")); }, "cancel"});
    EXPECT_EQ(Sheet(), 0);
    std::vector<std::string> windows;
    for (const Json &line : Events("window"))
        windows.push_back(line["what"].get<std::string>() + " " + line["title"].get<std::string>());
    EXPECT_THAT(windows, ElementsAre("opened Main", "activated Main", "closed Main"));
}

// ---- message boxes
// ---------------------------------------------------------------------------------

TEST_F(Scripts, BoxesAreAnsweredByTheirButtons)
{
    std::vector<int> answers;
    onMessage = [&](HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM) -> std::optional<INT_PTR> {
        if (uMsg == WM_COMMAND && LOWORD(wParam) == IDC_MORE)
            answers.push_back(
                MessageBoxA(hWnd, "Really?", "KORVA", MB_OKCANCEL | MB_ICONEXCLAMATION));
        return std::nullopt;
    };
    EXPECT_EQ(Play("click 216\nbox cancel \"Really?\"\nclick 216\nbox ok\nclick 216\nkey Enter\n"
                   "click 216\nkey Escape\nclick 216\nkey Tab\nkey Space\nok\n"),
              1);
    EXPECT_THAT(answers, ElementsAre(2, 1, 1, 2, 2));
    EXPECT_EQ(Events("box").size(), 5u);
    EXPECT_EQ(Events("box")[0], Json::parse(R"({"event":"box","caption":"KORVA","text":"Really?",
        "icon":"exclamation","buttons":["ok","cancel"],"answer":"cancel"})"));
    std::vector<std::string> windows;
    for (const Json &line : Events("window"))
        windows.push_back(line["what"].get<std::string>() + " " + line["title"].get<std::string>());
    windows.resize(4);
    EXPECT_THAT(windows,
                ElementsAre("opened Plain", "opened KORVA", "closed KORVA", "activated Plain"));
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
    std::vector<std::string> windows;
    for (const Json &line : Events("window"))
        windows.push_back(line["what"].get<std::string>() + " " + line["kind"].get<std::string>());
    EXPECT_THAT(windows, ElementsAre("opened page", "activated page", "opened help", "closed help",
                                     "activated page", "closed page"));
}

TEST_F(Scripts, ABoxOnTopKeepsTheRestFromThePerson)
{
    bPlayFails = true;
    static const struct {
        const char *line, *said;
    } aLines[] = {{"click 205", "\"KORVA\" is on top"},
                  {"box yes", "no button \"yes\""},
                  {"box ok \"No\"", "says \"Really?\""}};
    onMessage = [&](HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM) -> std::optional<INT_PTR> {
        if (uMsg == WM_COMMAND && LOWORD(wParam) == IDC_MORE) {
            EXPECT_EQ(MessageBoxA(hWnd, "Really?", "KORVA", MB_OKCANCEL), 2);
        }
        return std::nullopt;
    };
    for (const auto &row : aLines) {
        SCOPED_TRACE(row.line);
        ::testing::internal::CaptureStderr();
        EXPECT_EQ(Play("click 216\n" + std::string(row.line) + "\n"), 2);
        EXPECT_THAT(::testing::internal::GetCapturedStderr(), HasSubstr(row.said));
    }
}

// Without a window below it only a script that goes on with the answer reaches a box.
TEST_F(Scripts, BoxesAtStartUpAreAnsweredByTheScriptOrByNobody)
{
    const auto show = [] { return MessageBoxA(nullptr, "Text", "KORVA", MB_OKCANCEL); };
    Person({"box ok", "ok"});
    EXPECT_EQ(show(), 1);
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(show(), 2) << "the next action is not for it";
    EXPECT_THAT(::testing::internal::GetCapturedStderr(), HasSubstr("Text"));
    EXPECT_EQ(Dialog(IDD_EXTENDED), 1) << "the action is still there";
}
