// The scroll bar control.
#include "platform/user/scrollbar.h"

#include <algorithm>

#include "platform/served.h"
#include "platform/user/scroll.h"

namespace kvp
{

// A long bar has square arrows at its ends, a short one is all arrows.
RECT ScrollBar::ArrowRect(bool second) const
{
    const RECT whole = Client();
    if (IsVertical()) {
        const int size = std::min(static_cast<int>(whole.bottom) / 2, SCROLL_WIDTH);
        const int length = whole.bottom > 3 * SCROLL_WIDTH ? size : whole.bottom / 2;
        return second ? RECT{0, whole.bottom - length, whole.right, whole.bottom}
                      : RECT{0, 0, whole.right, length};
    }
    const int length = whole.right > 3 * SCROLL_WIDTH ? SCROLL_WIDTH : whole.right / 2;
    return second ? RECT{whole.right - length, 0, whole.right, whole.bottom}
                  : RECT{0, 0, length, whole.bottom};
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

void ScrollBar::MouseHeld()
{
    if (pressed >= 0)
        Send(pressed ? SB_LINEDOWN : SB_LINEUP);
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
