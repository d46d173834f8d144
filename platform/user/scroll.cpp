// Drawing scroll bars and their arrows, and what a click on one means.
#include "platform/user/scroll.h"

#include <algorithm>

namespace kvp
{

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

static RECT Thumb(const RECT &rc, int first, int shown, int count)
{
    const int track = Height(rc) - 2 * SCROLL_WIDTH;
    const int height = std::max(8, track * shown / std::max(count, 1));
    const int top = rc.top + SCROLL_WIDTH + (track - height) * first / std::max(count - shown, 1);
    return {rc.left, top, rc.right, top + height};
}

void PaintScrollBar(HDC hdc, const RECT &rc, int first, int shown, int count)
{
    Fill(hdc, rc, FACE);
    Outline(hdc, rc, SHADOW);
    PaintArrowButton(hdc, {rc.left, rc.top, rc.right, rc.top + SCROLL_WIDTH}, Arrow::Up, false,
                     true);
    PaintArrowButton(hdc, {rc.left, rc.bottom - SCROLL_WIDTH, rc.right, rc.bottom}, Arrow::Down,
                     false, true);
    if (Height(rc) < 3 * SCROLL_WIDTH)
        return;
    const RECT thumb = Thumb(rc, first, shown, count);
    Outline(hdc, thumb, DARK);
    Bevel(hdc, Shrunk(thumb, 1), LIGHT, SHADOW);
}

int ScrollStep(POINT size, int y, int shown, int first, int count)
{
    if (y < SCROLL_WIDTH)
        return -1;
    if (y >= size.y - SCROLL_WIDTH)
        return 1;
    const RECT thumb = Thumb({0, 0, size.x, size.y}, first, shown, count);
    return y < thumb.top ? -shown : y >= thumb.bottom ? shown : 0;
}

} // namespace kvp
