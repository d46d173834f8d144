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
    if (dialog)
        return dialog->DefaultButton();
    return top ? top->Child(IDOK) : nullptr;
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
    RECT face = Client();
    Fill(hdc, face, AskColors(*this, hdc, WM_CTLCOLORBTN));
    Outline(hdc, face, DARK);
    if (IsDefault()) {
        face = Shrunk(face, 1);
        Outline(hdc, face, DARK);
    }
    face = Shrunk(face, 1);
    Fill(hdc, face, FACE);
    if (held) {
        Bevel(hdc, face, SHADOW, FACE);
    } else {
        Bevel(hdc, face, LIGHT, SHADOW);
        Bevel(hdc, Shrunk(face, 1), FACE, FACE);
        Fill(hdc, {face.left + 1, face.bottom - 2, face.right - 1, face.bottom - 1}, SHADOW);
        Fill(hdc, {face.right - 2, face.top + 1, face.right - 1, face.bottom - 1}, SHADOW);
    }
    const int shift = held ? 1 : 0;
    DrawTextIn(hdc, Moved(Shrunk(face, 2), shift, shift), text,
               TEXT_CENTER | TEXT_MIDDLE | TEXT_PREFIX, enabled ? DARK : SHADOW);
    if (HasFocus())
        FocusFrame(hdc, Moved(Shrunk(face, 3), shift, shift));
}

} // namespace kvp
