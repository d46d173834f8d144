// The group box: an etched line with the text set into its upper edge. What lies inside is left as
// it is.
#include <algorithm>

#include "platform/user/static.h"

namespace kvp
{

void GroupBox::Paint(HDC hdc)
{
    const COLORREF back = AskColors(*this, hdc, WM_CTLCOLORBTN);
    const RECT whole = Client();
    // A box lower than a text is only a line, at its lower edge.
    const int top = std::max(0, std::min(LINE_HEIGHT / 2, static_cast<int>(whole.bottom) - 2));
    const RECT line{0, top, whole.right, whole.bottom};
    Outline(hdc, {1, top + 1, whole.right, whole.bottom}, LIGHT);
    Outline(hdc, {0, line.top, line.right - 1, line.bottom - 1}, SHADOW);
    if (text.empty())
        return;
    const POINT size = TextSize(text, TEXT_PREFIX);
    const RECT label{8, 0, 8 + size.x, LINE_HEIGHT};
    Fill(hdc, {label.left - 2, 0, label.right + 2, LINE_HEIGHT}, back);
    DrawLabel(hdc, label, text, TEXT_PREFIX);
}

} // namespace kvp
