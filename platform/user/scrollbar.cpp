// The scroll bar control.
#include "platform/user/scrollbar.h"

#include <algorithm>

#include "platform/user/scroll.h"

namespace kvp
{

// A long bar has square arrows at its ends, a short one is all arrows.
RECT ScrollBar::ArrowRect(bool second) const
{
    const RECT rc = Client();
    if (IsVertical()) {
        const int size = std::min(static_cast<int>(rc.bottom) / 2, SCROLL_WIDTH);
        const int length = rc.bottom > 3 * SCROLL_WIDTH ? size : rc.bottom / 2;
        return second ? RECT{0, rc.bottom - length, rc.right, rc.bottom}
                      : RECT{0, 0, rc.right, length};
    }
    const int length = rc.right > 3 * SCROLL_WIDTH ? SCROLL_WIDTH : rc.right / 2;
    return second ? RECT{rc.right - length, 0, rc.right, rc.bottom} : RECT{0, 0, length, rc.bottom};
}

void ScrollBar::Send(int code)
{
    parent->Message(IsVertical() ? WM_VSCROLL : WM_HSCROLL, static_cast<WPARAM>(code),
                    reinterpret_cast<LPARAM>(Handle()));
}

void ScrollBar::MouseDown(POINT at)
{
    for (const bool second : {false, true})
        if (Contains(ArrowRect(second), at)) {
            pressed = second;
            Invalidate();
            Send(second ? SB_LINEDOWN : SB_LINEUP);
            return;
        }
}

void ScrollBar::MouseUp(POINT)
{
    if (pressed < 0)
        return;
    pressed = -1;
    Invalidate();
    Send(SB_ENDSCROLL);
}

void ScrollBar::Step(bool second)
{
    Send(second ? SB_LINEDOWN : SB_LINEUP);
    Send(SB_ENDSCROLL);
}

bool ScrollBar::KeyDown(const Key &key)
{
    switch (key.code) {
    case KeyCode::Up:
    case KeyCode::Left: Step(false); return true;
    case KeyCode::Down:
    case KeyCode::Right: Step(true); return true;
    default: return false;
    }
}

void ScrollBar::Paint(HDC hdc)
{
    Fill(hdc, Client(), FACE);
    Outline(hdc, Client(), DARK);
    PaintArrowButton(hdc, ArrowRect(false), IsVertical() ? Arrow::Up : Arrow::Left, pressed == 0,
                     enabled);
    PaintArrowButton(hdc, ArrowRect(true), IsVertical() ? Arrow::Down : Arrow::Right, pressed == 1,
                     enabled);
}

} // namespace kvp
