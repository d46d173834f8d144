// The edit field. Every change is told to the parent, whether it came by program or by hand.
#include "platform/user/edit.h"

#include <algorithm>

#include "platform/display/display.h"
#include "platform/kernel/internal.h"
#include "platform/win32.h"

namespace kvp
{

static constexpr DWORD EDIT_READ_ONLY = 0x800;
static constexpr int MARGIN = 3;
static constexpr size_t MOST_CHARACTERS = 30000;

bool Edit::IsReadOnly() const
{
    return style & EDIT_READ_ONLY;
}

// Positions of the message are bytes in the ANSI code page.
static size_t IndexOfByte(const std::u16string &text, LPARAM byte)
{
    size_t index = 0;
    LPARAM bytes = 0;
    while (index < text.size() && bytes < byte)
        bytes += static_cast<LPARAM>(WideToAnsi(text.substr(index++, 1)).size());
    return index;
}

LRESULT Edit::Message(UINT msg, WPARAM wParam, LPARAM lParam)
{
    if (msg != EM_SETSEL)
        return Window::Message(msg, wParam, lParam);
    const LPARAM from = static_cast<int>(wParam), to = static_cast<int>(lParam);
    if (from < 0) // nothing selected, the caret where it is
        Select(caret, caret);
    else
        Select(IndexOfByte(text, from), to < 0 ? text.size() : IndexOfByte(text, to));
    return 1;
}

void Edit::Select(size_t from, size_t to)
{
    anchor = std::min(from, text.size());
    caret = std::min(to, text.size());
    ShowCaret();
    Invalidate();
}

void Edit::ShowCaret()
{
    const int width = Width(rc) - 2 * MARGIN - 1;
    const int x = TextOffset(text, caret);
    const int whole = TextOffset(text, text.size());
    if (x - scrolled > width)
        scrolled = x - width;
    if (x < scrolled)
        scrolled = x;
    scrolled = std::clamp(scrolled, 0, std::max(0, whole - width));
}

// Set by program: the caret goes to the start.
void Edit::TextChanged()
{
    anchor = caret = 0;
    scrolled = 0;
    Invalidate();
    Notify(EN_CHANGE);
}

void Edit::Replace(size_t from, size_t to, std::u16string_view with)
{
    if (IsReadOnly() || text.size() - (to - from) + with.size() > MOST_CHARACTERS)
        return;
    text.replace(from, to - from, with);
    Select(from + with.size(), from + with.size());
    Notify(EN_CHANGE);
}

void Edit::ReplaceSelection(std::u16string_view with)
{
    Replace(std::min(anchor, caret), std::max(anchor, caret), with);
}

// A character that the code page lacks becomes what the code page has for it, as programs will
// read it so.
bool Edit::Typed(char32_t character)
{
    if (character < U' ' || character == 0x7F)
        return false;
    const std::u16string wide = ToWide(ToUtf8(
        character < 0x10000 ? std::u16string(1, static_cast<char16_t>(character))
                            : std::u16string{static_cast<char16_t>(0xD7C0 + (character >> 10)),
                                             static_cast<char16_t>(0xDC00 + (character & 0x3FF))}));
    ReplaceSelection(AnsiToWide(WideToAnsi(wide)));
    return true;
}

bool Edit::Shortcut(const Key &key)
{
    const size_t from = std::min(anchor, caret), to = std::max(anchor, caret);
    switch (key.letter) {
    case U'a': Select(0, text.size()); return true;
    case U'c':
    case U'x':
        if (from < to)
            SetClipboard(ToUtf8(text.substr(from, to - from)));
        if (from < to && key.letter == U'x')
            ReplaceSelection({});
        return true;
    case U'v': {
        std::u16string pasted = ToWide(GetClipboard());
        std::erase_if(pasted, [](char16_t c) { return c < u' '; });
        if (!pasted.empty())
            ReplaceSelection(AnsiToWide(WideToAnsi(pasted)));
        return true;
    }
    default: return false;
    }
}

bool Edit::MoveCaret(const Key &key)
{
    size_t to;
    switch (key.code) {
    case KeyCode::Left:
    case KeyCode::Up: to = caret ? caret - 1 : 0; break;
    case KeyCode::Right:
    case KeyCode::Down: to = std::min(caret + 1, text.size()); break;
    case KeyCode::Home: to = 0; break;
    case KeyCode::End: to = text.size(); break;
    default: return false;
    }
    Select(key.shift ? anchor : to, to);
    return true;
}

bool Edit::KeyDown(const Key &key)
{
    if (key.alt)
        return false;
    if (key.ctrl && key.code == KeyCode::Letter)
        return Shortcut(key);
    const bool selected = anchor != caret;
    switch (key.code) {
    case KeyCode::Backspace:
        if (selected)
            ReplaceSelection({});
        else if (caret)
            Replace(caret - 1, caret, {});
        return true;
    case KeyCode::Delete:
        if (selected)
            ReplaceSelection({});
        else if (caret < text.size())
            Replace(caret, caret + 1, {});
        return true;
    default: return MoveCaret(key);
    }
}

size_t Edit::IndexAt(POINT at) const
{
    return TextIndexAt(text, at.x - MARGIN + scrolled);
}

void Edit::MouseDown(POINT at)
{
    const size_t index = IndexAt(at);
    Select(index, index);
}

void Edit::MouseMove(POINT at)
{
    Select(anchor, IndexAt(at));
}

void Edit::FocusChanged(bool has)
{
    Invalidate();
    if (!has)
        Notify(EN_KILLFOCUS);
}

void Edit::Paint(HDC hdc)
{
    const RECT whole = Client();
    const COLORREF back = AskColors(*this, hdc, WM_CTLCOLOREDIT);
    Fill(hdc, whole, back);
    if (style & STYLE_BORDER)
        Outline(hdc, whole, DARK);
    const RECT inside{MARGIN, 1, whole.right - MARGIN + 1, whole.bottom - 1};
    const int top = (whole.bottom - LINE_HEIGHT) / 2;
    Dc *dc = DcOf(hdc);
    const RECT clip = dc->clip;
    dc->clip = Intersect(clip, Moved(inside, dc->origin.x, dc->origin.y));
    const RECT line{MARGIN - scrolled, top, whole.right + (1 << 14), top + LINE_HEIGHT};
    DrawTextIn(hdc, line, text, 0, dc->textColor);
    if (HasFocus() && anchor != caret) {
        const int from = TextOffset(text, std::min(anchor, caret)) + MARGIN - scrolled;
        const int to = TextOffset(text, std::max(anchor, caret)) + MARGIN - scrolled;
        dc->clip = Intersect(dc->clip,
                             Moved({from, top, to, top + LINE_HEIGHT}, dc->origin.x, dc->origin.y));
        Fill(hdc, whole, GetSysColor(COLOR_HIGHLIGHT));
        DrawTextIn(hdc, line, text, 0, GetSysColor(COLOR_HIGHLIGHTTEXT));
    } else if (HasFocus()) {
        const int x = TextOffset(text, caret) + MARGIN - scrolled;
        Fill(hdc, {x, top, x + 1, top + LINE_HEIGHT}, DARK);
    }
    dc->clip = clip;
}

} // namespace kvp
