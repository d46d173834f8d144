// The message box's window: icon, text, buttons.
#include "platform/user/box.h"

#include <algorithm>

#include "platform/user/button.h"
#include "platform/user/dialog.h"

namespace kvp
{

static constexpr int MARGIN = 12, ICON = 32, BUTTON_WIDTH = 75, BUTTON_HEIGHT = 23, GAP = 8;
static constexpr int WIDEST_TEXT = 420, NARROWEST = 120;

static constexpr BoxButton OK{1, "ok", SystemText::Ok}, CANCEL{2, "cancel", SystemText::Cancel},
    ABORT{3, "abort", SystemText::Abort}, RETRY{4, "retry", SystemText::Retry},
    IGNORE{5, "ignore", SystemText::Ignore}, YES{6, "yes", SystemText::Yes},
    NO{7, "no", SystemText::No};

namespace
{
// The boxes by their type's low bits.
struct BoxKind {
    BoxButton buttons[3];
    size_t count;
    int safest;
};
} // namespace

static constexpr BoxKind aKinds[] = {
    {{OK}, 1, OK.id},
    {{OK, CANCEL}, 2, CANCEL.id},
    {{ABORT, RETRY, IGNORE}, 3, ABORT.id},
    {{YES, NO, CANCEL}, 3, CANCEL.id},
    {{YES, NO}, 2, NO.id},
    {{RETRY, CANCEL}, 2, CANCEL.id},
};

static const BoxKind &KindOf(UINT type)
{
    const UINT kind = type & 0xF;
    return aKinds[kind < std::size(aKinds) ? kind : 0];
}

std::span<const BoxButton> BoxButtons(UINT type)
{
    const BoxKind &kind = KindOf(type);
    return {kind.buttons, kind.count};
}

int SafestButton(UINT type)
{
    return KindOf(type).safest;
}

static POINT TextArea(const std::u16string &text)
{
    const POINT plain = TextSize(text, 0);
    return plain.x <= WIDEST_TEXT ? plain : TextSize(text, 0, WIDEST_TEXT);
}

static int ButtonsWidth(UINT type)
{
    const int count = static_cast<int>(BoxButtons(type).size());
    return count * (BUTTON_WIDTH + GAP) - GAP;
}

static RECT PlaceOf(Window *owner, const std::u16string &text, UINT type)
{
    const POINT area = TextArea(text);
    const int beside = type >> 4 & 0xF ? ICON + MARGIN : 0;
    const int width = std::max({beside + static_cast<int>(area.x), ButtonsWidth(type), NARROWEST});
    const int height =
        std::max(static_cast<int>(area.y), beside ? ICON : 0) + MARGIN + BUTTON_HEIGHT;
    return PlaceOver(owner, width + 2 * MARGIN + 2 * FRAME_SIDE,
                     height + 2 * MARGIN + FRAME_TOP + FRAME_SIDE);
}

BoxWindow::BoxWindow(Window *boxOwner, std::u16string boxText, std::u16string caption, UINT boxType)
    : Window(nullptr, 0, 0, PlaceOf(boxOwner, boxText, boxType)), message(std::move(boxText)),
      type(boxType)
{
    framed = true;
    text = std::move(caption);
    const RECT client = Client();
    int left = (client.right - ButtonsWidth(type)) / 2;
    const int top = client.bottom - MARGIN - BUTTON_HEIGHT;
    // Bits 8 and 9 name the default button by its position; it comes first otherwise.
    const size_t standard = std::min<size_t>(type >> 8 & 3, BoxButtons(type).size() - 1);
    for (const BoxButton &button : BoxButtons(type)) {
        const DWORD kind =
            button.id == BoxButtons(type)[standard].id ? BUTTON_DEFAULT : BUTTON_PUSH;
        MakeControl(*this, u"button", WS_VISIBLE | WS_TABSTOP | kind, button.id,
                    {left, top, left + BUTTON_WIDTH, top + BUTTON_HEIGHT}, TextOf(button.text));
        left += BUTTON_WIDTH + GAP;
    }
}

LRESULT BoxWindow::Message(UINT msg, WPARAM wParam, LPARAM lParam)
{
    if (msg != WM_COMMAND)
        return Window::Message(msg, wParam, lParam);
    answer = LOWORD(wParam);
    closed = true;
    return 0;
}

bool BoxWindow::IsStandard(const Window &button) const
{
    return (button.style & BUTTON_KIND) == BUTTON_DEFAULT;
}

void BoxWindow::PressDefault()
{
    for (Window *child : children)
        if (IsStandard(*child))
            child->Press();
}

// Escape, closing, and nobody being there give the answer that does least.
void BoxWindow::PressCancel()
{
    answer = SafestButton(type);
    closed = true;
}

static void Blob(HDC hdc, int cx, int cy, int radius, COLORREF color)
{
    for (int y = -radius; y <= radius; ++y) {
        int x = radius;
        while (x * x + y * y > radius * radius + radius / 2)
            --x;
        Fill(hdc, {cx - x, cy + y, cx + x + 1, cy + y + 1}, color);
    }
}

static void Triangle(HDC hdc, int cx, int top, int height, COLORREF color)
{
    for (int y = 0; y < height; ++y) {
        const int half = y * 9 / 16;
        Fill(hdc, {cx - half, top + y, cx + half + 1, top + y + 1}, color);
    }
}

// Stop 1, question 2, exclamation 3, information 4.
void BoxWindow::PaintIcon(HDC hdc) const
{
    const UINT icon = type >> 4 & 0xF;
    const int cx = MARGIN + ICON / 2, cy = MARGIN + ICON / 2;
    if (icon == 3) {
        Triangle(hdc, cx, MARGIN, 30, DARK);
        Triangle(hdc, cx, MARGIN + 3, 26, RGB(255, 255, 0));
        Fill(hdc, {cx - 1, MARGIN + 11, cx + 2, MARGIN + 21}, DARK);
        Fill(hdc, {cx - 1, MARGIN + 23, cx + 2, MARGIN + 26}, DARK);
        return;
    }
    const COLORREF inside = icon == 1 ? RGB(255, 0, 0) : LIGHT;
    Blob(hdc, cx, cy, 15, DARK);
    Blob(hdc, cx, cy, 14, inside);
    if (icon == 1) {
        for (int i = -7; i <= 7; ++i) {
            Fill(hdc, {cx + i - 1, cy + i, cx + i + 2, cy + i + 1}, LIGHT);
            Fill(hdc, {cx + i - 1, cy - i, cx + i + 2, cy - i + 1}, LIGHT);
        }
    } else if (icon == 2) {
        for (const int dx : {-1, 0})
            DrawTextIn(hdc, {cx + dx - 8, cy - 8, cx + dx + 9, cy + 8}, u"?",
                       TEXT_CENTER | TEXT_MIDDLE | TEXT_BOLD, CAPTION);
    } else {
        Fill(hdc, {cx - 2, cy - 9, cx + 2, cy - 5}, CAPTION);
        Fill(hdc, {cx - 2, cy - 3, cx + 2, cy + 9}, CAPTION);
        Fill(hdc, {cx - 4, cy - 3, cx + 2, cy - 1}, CAPTION);
        Fill(hdc, {cx - 4, cy + 8, cx + 4, cy + 10}, CAPTION);
    }
}

void BoxWindow::Paint(HDC hdc)
{
    const RECT client = Client();
    Fill(hdc, client, FACE);
    const bool hasIcon = type >> 4 & 0xF;
    if (hasIcon)
        PaintIcon(hdc);
    const int left = MARGIN + (hasIcon ? ICON + MARGIN : 0);
    const POINT area = TextArea(message);
    const int beside = hasIcon && area.y < ICON ? (ICON - area.y) / 2 : 0;
    DrawTextIn(hdc, {left, MARGIN + beside, left + area.x, MARGIN + beside + area.y}, message,
               TextSize(message, 0).x > WIDEST_TEXT ? TEXT_WRAP : TEXT_LEFT, DARK);
}

} // namespace kvp
