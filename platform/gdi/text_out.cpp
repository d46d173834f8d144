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
    Dc *dc = DcOf(hdc);
    if (!dc || (c && !lpString))
        return FALSE;
    const std::u16string text = AnsiToWide({lpString ? lpString : "", c});
    const RECT rc{x, y, x + TextSize(text, 0).x, y + LINE_HEIGHT};
    const RECT clip = dc->clip;
    if ((options & ETO_CLIPPED) && lprect)
        dc->clip = Intersect(clip, Moved(*lprect, dc->origin.x, dc->origin.y));
    if ((options & ETO_OPAQUE) && lprect)
        Fill(hdc, *lprect, dc->bkColor);
    if (dc->bkMode == OPAQUE)
        Fill(hdc, rc, dc->bkColor);
    DrawTextIn(hdc, rc, text, 0, dc->textColor);
    dc->clip = clip;
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
