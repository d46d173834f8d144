// The push button. The one with the focus, or else the dialog's default one, has a black border.
#include "platform/user/button.h"
#include "platform/user/dialog.h"

namespace kvp
{

// The button of its window that Enter presses while no push button has the focus.
static Window *DefaultOf(Window &button)
{
    Window *top = button.Top();
    const auto *dialog = dynamic_cast<Dialog *>(top);
    return dialog ? dialog->DefaultButton() : top->Child(IDOK);
}

bool PushButton::IsDefault()
{
    const Window *focus = FocusWindow();
    if (focus && focus->IsPushButton())
        return focus == this;
    return DefaultOf(*this) == this && ActiveWindow() == Top();
}

void PushButton::FocusChanged(bool)
{
    Invalidate();
    if (Window *other = DefaultOf(*this))
        other->Invalidate();
}

void PushButton::Paint(HDC hdc)
{
    RECT rc = Client();
    Fill(hdc, rc, AskColors(*this, hdc, WM_CTLCOLORBTN));
    Outline(hdc, rc, DARK);
    if (IsDefault()) {
        rc = Shrunk(rc, 1);
        Outline(hdc, rc, DARK);
    }
    rc = Shrunk(rc, 1);
    Fill(hdc, rc, FACE);
    if (held) {
        Bevel(hdc, rc, SHADOW, FACE);
    } else {
        Bevel(hdc, rc, LIGHT, SHADOW);
        Bevel(hdc, Shrunk(rc, 1), FACE, FACE);
        Fill(hdc, {rc.left + 1, rc.bottom - 2, rc.right - 1, rc.bottom - 1}, SHADOW);
        Fill(hdc, {rc.right - 2, rc.top + 1, rc.right - 1, rc.bottom - 1}, SHADOW);
    }
    const int shift = held ? 1 : 0;
    DrawTextIn(hdc, Moved(Shrunk(rc, 2), shift, shift), text,
               TEXT_CENTER | TEXT_MIDDLE | TEXT_PREFIX, enabled ? DARK : SHADOW);
    if (HasFocus())
        FocusFrame(hdc, Moved(Shrunk(rc, 3), shift, shift));
}

} // namespace kvp
