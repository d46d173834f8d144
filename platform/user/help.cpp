// The help engine. A help file is UTF-8 text; a line "# NUMBER TITLE" begins the topic of that
// context number, and what follows up to the next such line is its text: paragraphs of lines,
// parted by empty lines.
#include "platform/user/help.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <utility>

#include "platform/display/display.h"
#include "platform/host.h"
#include "platform/kernel/internal.h"
#include "platform/user/dialog.h"
#include "platform/user/systext.h"
#include "platform/user/transcript.h"

namespace kvp
{

static constexpr int HELP_WIDTH = 330, HELP_HEIGHT = 260, MARGIN = 10, STEP = LINE_HEIGHT;
static constexpr COLORREF PAPER = RGB(255, 255, 225);

namespace
{
struct Topic {
    std::u16string title, text;
};

class HelpWindow final : public Window
{
  public:
    HelpWindow(Topic shown, int context);
    const char *Kind() const override { return "help"; }
    void Paint(HDC hdc) override;
    bool KeyDown(const Key &key) override;
    void MouseWheel(int notches) override { Scroll(-3 * STEP * notches); }
    void PressCancel() override { closed = true; }
    void Turn(Topic to, int context);

  private:
    void Scroll(int by);
    Topic topic;
    int scrolled = 0;
};
} // namespace

static HelpWindow *window;
static HWND target;

void SetHelpTarget(Window *control)
{
    target = control ? control->Handle() : nullptr;
}

bool IsHelp(const Window *candidate)
{
    return candidate && candidate == window;
}

static bool OthersAreOpen()
{
    return std::any_of(TopLevels().begin(), TopLevels().end(), [](const Window *top) {
        return top != window && top->visible && top->framed;
    });
}

void CloseHelpIfAsked()
{
    if (!window || (!window->closed && OthersAreOpen()))
        return;
    const bool wasActive = ActiveWindow() == window;
    NoteWindow(*window, "closed");
    delete std::exchange(window, nullptr);
    if (!wasActive)
        return;
    // Whatever lies on top now and can be used is the one that the person goes on with.
    const std::vector<Window *> &tops = TopLevels();
    const auto top = std::find_if(tops.rbegin(), tops.rend(), [](const Window *other) {
        return other->visible && other->enabled && other->framed;
    });
    if (top == tops.rend())
        return;
    Window &next = **top; // activating it moves it to the list's end
    Activate(&next);
    NoteReturn(next);
}

// In the screen's corner, where it covers least of the window that asked.
static RECT HelpPlace()
{
    return {SCREEN_WIDTH - HELP_WIDTH - 8, 8, SCREEN_WIDTH - 8, 8 + HELP_HEIGHT};
}

HelpWindow::HelpWindow(Topic shown, int context) : Window(nullptr, 0, context, HelpPlace())
{
    framed = true;
    Turn(std::move(shown), context);
}

void HelpWindow::Turn(Topic to, int context)
{
    topic = std::move(to);
    id = context;
    text = topic.title;
    scrolled = 0;
    frameInvalid = true;
    Invalidate();
}

void HelpWindow::Paint(HDC hdc)
{
    const RECT client = Client();
    Fill(hdc, client, PAPER);
    const int width = client.right - 2 * MARGIN;
    int y = MARGIN - scrolled;
    const POINT title = TextSize(topic.title, TEXT_BOLD, width);
    DrawTextIn(hdc, {MARGIN, y, MARGIN + width, y + title.y}, topic.title, TEXT_WRAP | TEXT_BOLD,
               CAPTION);
    y += title.y + LINE_HEIGHT / 2;
    const POINT body = TextSize(topic.text, 0, width);
    DrawTextIn(hdc, {MARGIN, y, MARGIN + width, y + body.y}, topic.text, TEXT_WRAP, DARK);
}

void HelpWindow::Scroll(int by)
{
    const RECT client = Client();
    const int length = TextSize(topic.text, 0, client.right - 2 * MARGIN).y + 3 * MARGIN;
    const int most = std::max(0, length + LINE_HEIGHT - static_cast<int>(client.bottom));
    scrolled = std::clamp(scrolled + by, 0, most);
    Invalidate();
}

bool HelpWindow::KeyDown(const Key &key)
{
    const int page = Client().bottom;
    switch (key.code) {
    case KeyCode::Up: Scroll(-STEP); return true;
    case KeyCode::Down: Scroll(STEP); return true;
    case KeyCode::PageUp: Scroll(-page); return true;
    case KeyCode::PageDown: Scroll(page); return true;
    case KeyCode::Enter: closed = true; return true;
    default: return false;
    }
}

// ---- topics -------------------------------------------------------------------------------------

// "# 256 Main page": the number, and the title behind it.
static bool IsHeading(std::string_view line, DWORD &number, std::string_view &title)
{
    if (!line.starts_with("# "))
        return false;
    line.remove_prefix(2);
    const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), number);
    if (error != std::errc())
        return false;
    title = line.substr(static_cast<size_t>(end - line.data()));
    while (title.starts_with(' '))
        title.remove_prefix(1);
    return true;
}

static std::string_view TakeLine(std::string_view &text)
{
    const size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (line.ends_with('\r'))
        line.remove_suffix(1);
    return line;
}

// Lines of a paragraph run on; an empty line parts paragraphs.
static void AddLine(std::string &body, std::string_view line)
{
    if (line.empty()) {
        if (!body.empty() && !body.ends_with("\n\n"))
            body += "\n\n";
        return;
    }
    if (!body.empty() && !body.ends_with('\n'))
        body += ' ';
    body += line;
}

static std::optional<Topic> FindTopic(std::string_view file, DWORD context)
{
    std::optional<Topic> topic;
    std::string body;
    if (file.starts_with("\xEF\xBB\xBF"))
        file.remove_prefix(3);
    while (!file.empty()) {
        const std::string_view line = TakeLine(file);
        DWORD number;
        std::string_view title;
        if (!IsHeading(line, number, title)) {
            if (topic)
                AddLine(body, line);
        } else if (topic) {
            break;
        } else if (number == context) {
            topic = Topic{ToWide(title), {}};
        }
    }
    while (body.ends_with('\n'))
        body.pop_back();
    if (topic)
        topic->text = ToWide(body);
    return topic;
}

// The table's pairs end with (0, 0); a table that never ends is not read for ever.
static DWORD ContextOf(const DWORD *table, int id)
{
    for (int i = 0; table && i < 4096 && (table[2 * i] || table[2 * i + 1]); ++i)
        if (table[2 * i] == static_cast<DWORD>(id))
            return table[2 * i + 1];
    return 0;
}

// A control that the table does not name is explained by its page.
static DWORD ContextFor(Window *item, ULONG_PTR table)
{
    const auto *pairs = reinterpret_cast<const DWORD *>(table);
    DWORD context = item ? ContextOf(pairs, item->id) : 0;
    const Dialog *dialog = DialogOf(item);
    if (!context && dialog)
        context = ContextOf(pairs, dialog->id);
    return context;
}

static void Complain(HWND owner, const std::u16string &text)
{
    std::u16string caption = TextOf(SystemText::Help);
    std::erase(caption, u'&');
    MessageBoxA(owner, WideToAnsi(text).c_str(), WideToAnsi(caption).c_str(), MB_ICONEXCLAMATION);
}

static void ShowTopic(Topic topic, int context)
{
    if (window) {
        window->Turn(std::move(topic), context);
    } else {
        window = new HelpWindow(std::move(topic), context);
        window->Show(true);
    }
    NoteWindow(*window, "opened");
    Activate(window);
}

} // namespace kvp

using namespace kvp;

BOOL WinHelpA(HWND hWndMain, LPCSTR lpszHelp, UINT uCommand, ULONG_PTR dwData)
{
    Window *asking = Window::Of(hWndMain);
    DWORD context = 0;
    switch (uCommand) {
    case HELP_CONTEXT: context = static_cast<DWORD>(dwData); break;
    case HELP_WM_HELP: context = ContextFor(asking, dwData); break;
    case HELP_CONTEXTMENU: {
        Window *item = Window::Of(target);
        context = ContextFor(item && asking && DialogOf(item) == asking ? item : asking, dwData);
        break;
    }
    default: return FALSE;
    }
    const auto found = FindFile(lpszHelp ? lpszHelp : "");
    const auto bytes = found ? ReadWhole(*found) : std::nullopt;
    if (!bytes) {
        Complain(hWndMain, TextOf(SystemText::NoHelpFile) + AnsiToWide(lpszHelp ? lpszHelp : ""));
        return FALSE;
    }
    auto topic = FindTopic({reinterpret_cast<const char *>(bytes->data()), bytes->size()}, context);
    if (!topic) {
        Complain(hWndMain, TextOf(SystemText::NoTopic));
        return FALSE;
    }
    ShowTopic(std::move(*topic), static_cast<int>(context));
    return TRUE;
}
