// Check boxes and radio buttons: the mark at the left, the text beside it.
#include "platform/user/button.h"
#include "platform/win32.h"

namespace kvp
{

static constexpr int MARK = 13, DISC = 12, GAP = 4;

// By program or by hand; who sets it by program hears nothing of it.
void MarkButton::SetCheck(bool on)
{
    if (checked == on)
        return;
    checked = on;
    Invalidate();
}

void MarkButton::Paint(HDC hdc)
{
    const RECT whole = Client();
    Fill(hdc, whole, AskColors(*this, hdc, WM_CTLCOLORBTN));
    const int top = (Height(whole) - MARK) / 2;
    PaintMark(hdc, {0, top, MARK, top + MARK});
    const RECT label{MARK + GAP, 0, whole.right, whole.bottom};
    DrawLabel(hdc, label, text, TEXT_MIDDLE | TEXT_PREFIX);
    if (HasFocus() && !text.empty()) {
        const POINT size = TextSize(text, TEXT_PREFIX);
        const int y = (Height(whole) - size.y) / 2;
        FocusFrame(hdc, Intersect(whole, {label.left - 2, y - 1, label.left + size.x + 2,
                                          y + size.y + 1}));
    }
}

void CheckBox::Press()
{
    if ((style & BUTTON_KIND) == BUTTON_AUTO_CHECK)
        SetCheck(!IsChecked());
    Notify(BN_CLICKED);
}

void CheckBox::PaintMark(HDC hdc, const RECT &mark)
{
    Fill(hdc, mark, held ? FACE : LIGHT);
    Bevel(hdc, mark, SHADOW, LIGHT);
    Bevel(hdc, Shrunk(mark, 1), DARK, FACE);
    if (!IsChecked())
        return;
    // A tick, three pixels thick, falling then rising.
    static constexpr int aRise[] = {5, 6, 7, 6, 5, 4, 3};
    for (int i = 0; i < static_cast<int>(std::size(aRise)); ++i)
        Fill(hdc,
             {mark.left + 3 + i, mark.top + aRise[i], mark.left + 4 + i, mark.top + aRise[i] + 3},
             enabled ? DARK : SHADOW);
}

// It checks itself and clears the others of its group before anybody hears of it.
void RadioButton::Press()
{
    if ((style & BUTTON_KIND) == BUTTON_AUTO_RADIO) {
        for (Window *other : GroupOf(*this))
            if (auto *radio = dynamic_cast<RadioButton *>(other);
                radio && radio != this && (radio->style & BUTTON_KIND) == BUTTON_AUTO_RADIO)
                radio->SetCheck(false);
        SetCheck(true);
    }
    Notify(BN_CLICKED);
}

// Spans of a circle's rows, drawn as rings from outside to inside.
static void Disc(HDC hdc, const RECT &rc, int inset, COLORREF upper, COLORREF lower)
{
    const int size = DISC - 2 * inset;
    for (int y = 0; y < size; ++y)
        for (int x = 0; x < size; ++x) {
            const int dx = 2 * x + 1 - size, dy = 2 * y + 1 - size;
            if (dx * dx + dy * dy <= size * size - 6) {
                const int px = rc.left + inset + x, py = rc.top + inset + y;
                Fill(hdc, {px, py, px + 1, py + 1}, x + y < size ? upper : lower);
            }
        }
}

void RadioButton::PaintMark(HDC hdc, const RECT &mark)
{
    const COLORREF inside = held ? FACE : LIGHT;
    Disc(hdc, mark, 0, SHADOW, LIGHT);
    Disc(hdc, mark, 1, DARK, FACE);
    Disc(hdc, mark, 2, inside, inside);
    if (IsChecked())
        Disc(hdc, mark, 4, enabled ? DARK : SHADOW, enabled ? DARK : SHADOW);
}

} // namespace kvp
