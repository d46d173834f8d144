// Lists that scroll, by the bar at their side, the wheel and the keys; and the arrows of bars.
#include "platform/user/scroll.h"

#include <algorithm>

namespace kvp
{

static constexpr int LINES_PER_NOTCH = 3; // of the mouse's wheel

void PaintArrowButton(HDC hdc, const RECT &rc, Arrow arrow, bool pressed, bool enabled)
{
    Fill(hdc, rc, FACE);
    Outline(hdc, rc, DARK);
    Bevel(hdc, Shrunk(rc, 1), pressed ? SHADOW : LIGHT, pressed ? FACE : SHADOW);
    const int shift = pressed ? 1 : 0;
    const int x = (rc.left + rc.right - 1) / 2 + shift, y = (rc.top + rc.bottom - 1) / 2 + shift;
    const int rows = std::clamp(std::min(Width(rc), Height(rc)) / 2 - 3, 2, 4);
    for (int i = 0; i < rows; ++i) {
        // The arrow's rows from its tip on.
        const int at = i - rows / 2;
        RECT row{};
        switch (arrow) {
        case Arrow::Up: row = {x - i, y + at, x + i + 1, y + at + 1}; break;
        case Arrow::Down: row = {x - i, y - at, x + i + 1, y - at + 1}; break;
        case Arrow::Left: row = {x + at, y - i, x + at + 1, y + i + 1}; break;
        case Arrow::Right: row = {x - at, y - i, x - at + 1, y + i + 1}; break;
        }
        Fill(hdc, row, enabled ? DARK : SHADOW);
    }
}

// ---- lists -------------------------------------------------------------------------------------

int ScrolledList::ItemsShown() const
{
    return std::max(1, (Height(rc) - 2) / ItemHeight());
}

int ScrolledList::ItemsEnd() const
{
    return std::min(first + ItemsShown(), Count());
}

RECT ScrolledList::ItemRect(int index) const
{
    const int top = 1 + (index - first) * ItemHeight();
    return {1, top, Width(rc) - 1 - (HasBar() ? SCROLL_WIDTH : 0), top + ItemHeight()};
}

int ScrolledList::ItemAt(POINT at) const
{
    for (int i = first; i < ItemsEnd(); ++i)
        if (Contains(ItemRect(i), at))
            return i;
    return -1;
}

void ScrolledList::SetFirst(int to)
{
    to = std::clamp(to, 0, std::max(0, Count() - ItemsShown()));
    if (to == first)
        return;
    first = to;
    Invalidate();
}

void ScrolledList::ScrollTo(int index)
{
    if (index >= 0 && index < Count())
        SetFirst(std::clamp(first, index - ItemsShown() + 1, index));
}

void ScrolledList::KeepFilled()
{
    SetFirst(first);
}

// ---- the bar at their side ---------------------------------------------------------------------

RECT ScrolledList::Bar() const
{
    return {Width(rc) - SCROLL_WIDTH - 1, 1, Width(rc) - 1, Height(rc) - 1};
}

RECT ScrolledList::Thumb(int uppermost) const
{
    const RECT bar = Bar();
    const int track = Height(bar) - 2 * SCROLL_WIDTH;
    const int height = std::max(8, track * ItemsShown() / std::max(Count(), 1));
    const int most = std::max(Count() - ItemsShown(), 1);
    const int top =
        bar.top + SCROLL_WIDTH + (track - height) * std::clamp(uppermost, 0, most) / most;
    return {bar.left, top, bar.right, top + height};
}

POINT ScrolledList::ThumbAt(int uppermost) const
{
    const RECT thumb = Thumb(uppermost);
    return {(thumb.left + thumb.right) / 2, (thumb.top + thumb.bottom) / 2};
}

bool ScrolledList::BarPressed(POINT at)
{
    const RECT bar = Bar(), thumb = Thumb(first);
    if (!HasBar() || at.x < bar.left)
        return false;
    if (at.y < bar.top + SCROLL_WIDTH)
        SetFirst(first - 1);
    else if (at.y >= bar.bottom - SCROLL_WIDTH)
        SetFirst(first + 1);
    else if (at.y < thumb.top)
        SetFirst(first - ItemsShown());
    else if (at.y >= thumb.bottom)
        SetFirst(first + ItemsShown());
    else
        grip = at.y - thumb.top;
    return true;
}

// The uppermost item is the one whose thumb would lie nearest.
void ScrolledList::MouseMove(POINT at)
{
    if (!IsDragging())
        return;
    const int most = std::max(Count() - ItemsShown(), 0);
    const int way = std::max<int>(Thumb(most).top - Thumb(0).top, 1);
    const int gone = std::clamp<int>(at.y - grip - Thumb(0).top, 0, way);
    SetFirst((gone * most + way / 2) / way);
}

void ScrolledList::MouseUp(POINT)
{
    LetGo();
}

void ScrolledList::MouseWheel(int notches)
{
    SetFirst(first - notches * LINES_PER_NOTCH);
}

void ScrolledList::PaintBar(HDC hdc) const
{
    if (!HasBar())
        return;
    const RECT bar = Bar();
    Fill(hdc, bar, FACE);
    Outline(hdc, bar, SHADOW);
    PaintArrowButton(hdc, {bar.left, bar.top, bar.right, bar.top + SCROLL_WIDTH}, Arrow::Up, false,
                     true);
    PaintArrowButton(hdc, {bar.left, bar.bottom - SCROLL_WIDTH, bar.right, bar.bottom}, Arrow::Down,
                     false, true);
    if (Height(bar) < 3 * SCROLL_WIDTH)
        return;
    const RECT thumb = Thumb(first);
    Outline(hdc, thumb, DARK);
    Bevel(hdc, Shrunk(thumb, 1), LIGHT, SHADOW);
}

} // namespace kvp
