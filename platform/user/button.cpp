// What all buttons share: being held down by the mouse or pressed by the keyboard.
#include "platform/user/button.h"

namespace kvp
{

Button::Button(Window *buttonParent, DWORD buttonStyle, int buttonId, const RECT &where)
    : Window(buttonParent, buttonStyle, buttonId, where)
{
}

void Button::Hold(bool down)
{
    if (held == down)
        return;
    held = down;
    HeldChanged();
}

void Button::MouseDown(POINT)
{
    Hold(true);
}

void Button::MouseMove(POINT at)
{
    Hold(Contains(Client(), at));
}

void Button::MouseUp(POINT at)
{
    const bool pressed = held && Contains(Client(), at) && IsUsable();
    Hold(false);
    if (pressed)
        Press();
}

bool Button::KeyDown(const Key &key)
{
    if (key.code != KeyCode::Space)
        return false;
    Press();
    return true;
}

void Button::LetterTyped()
{
    FocusOn(this);
    if (HasFocus() && IsUsable())
        Press();
}

} // namespace kvp
