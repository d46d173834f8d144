// The text calls of device contexts, and the colours of the system.
#include <utility>

#include "platform/gdi/gdi.h"
#include "platform/kernel/internal.h"
#include "platform/served.h"

using namespace kvp;

COLORREF SetTextColor(HDC hdc, COLORREF color)
{
    Dc *dc = DcOf(hdc);
    return dc ? std::exchange(dc->textColor, color & 0xFFFFFF) : 0xFFFFFFFF;
}

COLORREF SetBkColor(HDC hdc, COLORREF color)
{
    Dc *dc = DcOf(hdc);
    return dc ? std::exchange(dc->bkColor, color & 0xFFFFFF) : 0xFFFFFFFF;
}

int SetBkMode(HDC hdc, int mode)
{
    Dc *dc = DcOf(hdc);
    return dc && (mode == OPAQUE || mode == TRANSPARENT) ? std::exchange(dc->bkMode, mode) : 0;
}

BOOL GetTextMetricsA(HDC hdc, TEXTMETRICA *lptm)
{
    if (!DcOf(hdc) || !lptm)
        return FALSE;
    *lptm = {};
    lptm->tmHeight = LINE_HEIGHT;
    lptm->tmAscent = BASE_LINE;
    lptm->tmDescent = LINE_HEIGHT - BASE_LINE;
    lptm->tmAveCharWidth = BASE_UNIT_X;
    lptm->tmMaxCharWidth = 2 * BASE_UNIT_X;
    lptm->tmWeight = 400;
    lptm->tmFirstChar = lptm->tmBreakChar = ' ';
    lptm->tmLastChar = 255;
    lptm->tmDefaultChar = '?';
    return TRUE;
}

BOOL ExtTextOutA(HDC hdc, int x, int y, UINT options, const RECT *lprect, LPCSTR lpString, UINT c,
                 const INT *)
{
    const Dc *dc = DcOf(hdc);
    if (!dc || (c && !lpString))
        return FALSE;
    const std::u16string text = AnsiToWide({lpString ? lpString : "", c});
    const POINT size = TextSize(text, 0);
    if ((options & ETO_OPAQUE) && lprect)
        Fill(hdc, *lprect, dc->bkColor);
    else if (dc->bkMode == OPAQUE)
        Fill(hdc, {x, y, x + size.x, y + LINE_HEIGHT}, dc->bkColor);
    RECT rc{x, y, x + size.x, y + LINE_HEIGHT};
    if (!(options & ETO_CLIPPED) || !lprect) {
        DrawTextIn(hdc, rc, text, 0, dc->textColor);
        return TRUE;
    }
    Dc *writable = DcOf(hdc);
    const RECT old = writable->clip;
    writable->clip = Intersect(old, Moved(*lprect, dc->origin.x, dc->origin.y));
    DrawTextIn(hdc, rc, text, 0, dc->textColor);
    writable->clip = old;
    return TRUE;
}

DWORD GetSysColor(int nIndex)
{
    switch (nIndex) {
    case COLOR_WINDOW: return RGB(255, 255, 255);
    case COLOR_WINDOWTEXT: return RGB(0, 0, 0);
    case COLOR_HIGHLIGHT: return RGB(0, 0, 128);
    case COLOR_HIGHLIGHTTEXT: return RGB(255, 255, 255);
    case COLOR_GRAYTEXT: return RGB(128, 128, 128);
    }
    return 0;
}
