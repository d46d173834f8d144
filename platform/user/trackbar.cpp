// The trackbar: a thumb in a channel, tick marks below.
#include <algorithm>
#include <utility>

#include "platform/served.h"
#include "platform/user/scrollbar.h"

namespace kvp
{

// Notices in the low word of WM_HSCROLL beyond those of scroll bars.
static constexpr int PAGE_UP = 2, PAGE_DOWN = 3, THUMB_POSITION = 4, THUMB_TRACK = 5, TOP = 6,
                     BOTTOM = 7;
static constexpr int THUMB_WIDTH = 11, THUMB_HEIGHT = 18, EDGE = 6;

POINT Trackbar::ThumbAt(int at) const
{
    const int track = Width(rc) - 2 * EDGE - 1, range = std::max(most - least, 1);
    const int inset = std::clamp(at, least, most) - least;
    return {EDGE + (track * inset + range / 2) / range, 2 + THUMB_HEIGHT / 2};
}

int Trackbar::PositionAt(int x) const
{
    const int track = std::max(Width(rc) - 2 * EDGE - 1, 1), range = most - least;
    const int inset = std::clamp(x - EDGE, 0, track);
    return least + (inset * range + track / 2) / track;
}

RECT Trackbar::Thumb() const
{
    const POINT middle = ThumbAt(position);
    return {middle.x - THUMB_WIDTH / 2, 2, middle.x + THUMB_WIDTH / 2 + 1, 2 + THUMB_HEIGHT};
}

void Trackbar::Set(int to)
{
    to = std::clamp(to, least, most);
    if (to == position)
        return;
    position = to;
    Invalidate();
}

LRESULT Trackbar::Message(UINT msg, WPARAM wParam, LPARAM lParam)
{
    const int value = static_cast<int>(lParam);
    switch (msg) {
    case TBM_GETPOS: return position;
    case TBM_SETPOS: Set(value); return 0;
    case TBM_SETRANGE:
        least = static_cast<SHORT>(LOWORD(static_cast<ULONG_PTR>(lParam)));
        most = std::max<int>(least, static_cast<SHORT>(HIWORD(static_cast<ULONG_PTR>(lParam))));
        Set(position);
        Invalidate();
        return 0;
    case TBM_SETPAGESIZE: return std::exchange(pageSize, value);
    case TBM_SETTIC:
        if (value < least || value > most)
            return FALSE;
        ticks.push_back(value);
        Invalidate();
        return TRUE;
    case TBM_CLEARTICS:
        ticks.clear();
        style &= ~TBS_AUTOTICKS;
        Invalidate();
        return 0;
    }
    return Window::Message(msg, wParam, lParam);
}

void Trackbar::Send(int code, bool withPosition)
{
    const WORD high = withPosition ? static_cast<WORD>(position) : WORD{0};
    parent->Message(WM_HSCROLL, static_cast<DWORD>(MAKELONG(static_cast<WORD>(code), high)),
                    reinterpret_cast<LPARAM>(Handle()));
}

// On the thumb it is dragged, beside it it moves by a page.
void Trackbar::MouseDown(POINT at)
{
    const RECT thumb = Thumb();
    if (at.x >= thumb.left && at.x < thumb.right) {
        dragging = true;
        return;
    }
    paging = true;
    const bool back = at.x < thumb.left;
    Set(position + (back ? -pageSize : pageSize));
    Send(back ? PAGE_UP : PAGE_DOWN, false);
}

void Trackbar::MouseMove(POINT at)
{
    const int to = PositionAt(at.x);
    if (!dragging || to == position)
        return;
    Set(to);
    Send(THUMB_TRACK, true);
}

void Trackbar::MouseUp(POINT)
{
    const bool wasDragging = std::exchange(dragging, false);
    const bool wasPaging = std::exchange(paging, false);
    if (wasDragging)
        Send(THUMB_POSITION, true);
    if (wasDragging || wasPaging)
        Send(SB_ENDSCROLL, false);
}

bool Trackbar::KeyDown(const Key &key)
{
    int to, code;
    switch (key.code) {
    case KeyCode::Left:
    case KeyCode::Up: to = position - 1, code = SB_LINEUP; break;
    case KeyCode::Right:
    case KeyCode::Down: to = position + 1, code = SB_LINEDOWN; break;
    case KeyCode::PageUp: to = position - pageSize, code = PAGE_UP; break;
    case KeyCode::PageDown: to = position + pageSize, code = PAGE_DOWN; break;
    case KeyCode::Home: to = least, code = TOP; break;
    case KeyCode::End: to = most, code = BOTTOM; break;
    default: return false;
    }
    Set(to);
    Send(code, false);
    Send(SB_ENDSCROLL, false);
    return true;
}

// Automatic ticks stand at every position, as long as they do not run together.
void Trackbar::PaintTicks(HDC hdc) const
{
    const auto tick = [&](int at, int length) {
        const int x = ThumbAt(at).x;
        Fill(hdc, {x, 4 + THUMB_HEIGHT, x + 1, 4 + THUMB_HEIGHT + length}, DARK);
    };
    tick(least, 4);
    tick(most, 4);
    if ((style & TBS_AUTOTICKS) && most - least <= Width(rc) / 3)
        for (int at = least + 1; at < most; ++at)
            tick(at, 3);
    for (const int at : ticks)
        tick(at, 3);
}

void Trackbar::Paint(HDC hdc)
{
    const RECT whole = Client();
    Fill(hdc, whole, AskColors(*this, hdc, WM_CTLCOLORSTATIC));
    const RECT channel{EDGE - 2, THUMB_HEIGHT / 2, whole.right - EDGE + 2, THUMB_HEIGHT / 2 + 4};
    Fill(hdc, channel, enabled ? LIGHT : FACE);
    Bevel(hdc, channel, SHADOW, LIGHT);
    PaintTicks(hdc);
    const RECT thumb = Thumb();
    Fill(hdc, thumb, FACE);
    Outline(hdc, thumb, enabled ? DARK : SHADOW);
    Bevel(hdc, Shrunk(thumb, 1), LIGHT, SHADOW);
    if (HasFocus())
        FocusFrame(hdc, whole);
}

} // namespace kvp
