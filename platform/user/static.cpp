// Texts and frames.
#include "platform/user/static.h"

#include "platform/resource/resource.h"

namespace kvp
{

void Label::LetterTyped()
{
    if (Window *next = TabStopAfter(*this, false))
        TabInto(*next);
}

static unsigned FlagsOf(DWORD style)
{
    const DWORD kind = style & STATIC_KIND;
    return (kind == STATIC_NO_WRAP ? 0u : TEXT_WRAP) | (kind == STATIC_CENTER ? TEXT_CENTER : 0u) |
           (kind == STATIC_RIGHT ? TEXT_RIGHT : 0u) | (style & STATIC_NO_PREFIX ? 0u : TEXT_PREFIX);
}

void StaticText::Paint(HDC hdc)
{
    Fill(hdc, Client(), AskColors(*this, hdc, WM_CTLCOLORSTATIC));
    DrawLabel(hdc, Client(), text, FlagsOf(style));
}

void BlackFrame::Paint(HDC hdc)
{
    AskColors(*this, hdc, WM_CTLCOLORSTATIC);
    Outline(hdc, Client(), DARK);
}

void StaticPicture::Load(HINSTANCE module, WORD number)
{
    bitmap = DecodeDib(FindResource(module, RESOURCE_BITMAP, number));
    bitmapNumber = number;
}

void StaticPicture::Paint(HDC hdc)
{
    Fill(hdc, Client(), AskColors(*this, hdc, WM_CTLCOLORSTATIC));
    if (!bitmap)
        return;
    DrawSurface(hdc, 0, 0, *bitmap);
    picture = bitmapNumber;
}

} // namespace kvp
