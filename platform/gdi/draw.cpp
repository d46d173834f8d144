// Lines, frames, fills and copies into device contexts.
#include <algorithm>
#include <cstdlib>

#include "platform/gdi/gdi.h"
#include "platform/served.h"

namespace kvp
{

void (*onPicture)(HWND window, int id);

static RECT InSurface(const Dc &dc, const RECT &rc)
{
    return Moved(rc, dc.origin.x, dc.origin.y);
}

void Fill(HDC hdc, const RECT &rc, COLORREF color)
{
    const Dc *dc = DcOf(hdc);
    if (dc && dc->target)
        FillPixels(*dc->target, dc->clip, InSurface(*dc, rc), color);
}

// Null for anything that is no living brush.
static const Object *BrushOf(HBRUSH handle)
{
    const Object *object = ObjectOf(handle);
    return object && object->kind == ObjectKind::Brush ? object : nullptr;
}

void FillWith(HDC hdc, const RECT &rc, HBRUSH brush)
{
    if (const Object *object = BrushOf(brush))
        Fill(hdc, rc, object->color);
}

void Outline(HDC hdc, const RECT &rc, COLORREF color)
{
    Bevel(hdc, rc, color, color);
}

void Bevel(HDC hdc, const RECT &rc, COLORREF light, COLORREF dark)
{
    Fill(hdc, {rc.left, rc.top, rc.right, rc.top + 1}, light);
    Fill(hdc, {rc.left, rc.top, rc.left + 1, rc.bottom}, light);
    Fill(hdc, {rc.left, rc.bottom - 1, rc.right, rc.bottom}, dark);
    Fill(hdc, {rc.right - 1, rc.top, rc.right, rc.bottom}, dark);
}

static void InvertEvery2nd(const Dc &dc, int x, int y)
{
    if ((x + y) % 2 == 0)
        InvertPixel(*dc.target, dc.clip, x + dc.origin.x, y + dc.origin.y);
}

void FocusFrame(HDC hdc, const RECT &rc)
{
    const Dc *dc = DcOf(hdc);
    if (!dc || !dc->target || IsEmpty(rc))
        return;
    for (int x = rc.left; x < rc.right; ++x) {
        InvertEvery2nd(*dc, x, rc.top);
        if (rc.bottom - 1 > rc.top)
            InvertEvery2nd(*dc, x, rc.bottom - 1);
    }
    for (int y = rc.top + 1; y < rc.bottom - 1; ++y) {
        InvertEvery2nd(*dc, rc.left, y);
        if (rc.right - 1 > rc.left)
            InvertEvery2nd(*dc, rc.right - 1, y);
    }
}

void DrawSurface(HDC hdc, int x, int y, Surface &picture)
{
    const Dc *dc = DcOf(hdc);
    if (dc && dc->target)
        CopyPixels(*dc->target, dc->clip,
                   InSurface(*dc, {x, y, x + picture.width, y + picture.height}), picture,
                   {0, 0, picture.width, picture.height});
}

} // namespace kvp

using namespace kvp;

int FrameRect(HDC hDC, const RECT *lprc, HBRUSH hbr)
{
    const Object *brush = BrushOf(hbr);
    if (!DcOf(hDC) || !lprc || !brush)
        return 0;
    Outline(hDC, *lprc, brush->color);
    return 1;
}

BOOL DrawFocusRect(HDC hDC, const RECT *lprc)
{
    if (!DcOf(hDC) || !lprc)
        return FALSE;
    FocusFrame(hDC, *lprc);
    return TRUE;
}

BOOL FillRgn(HDC hdc, HRGN hrgn, HBRUSH hbr)
{
    const Object *region = ObjectOf(hrgn), *brush = BrushOf(hbr);
    if (!DcOf(hdc) || !region || region->kind != ObjectKind::Region || !brush)
        return FALSE;
    Fill(hdc, region->region, brush->color);
    return TRUE;
}

BOOL InflateRect(RECT *lprc, int dx, int dy)
{
    if (!lprc)
        return FALSE;
    *lprc = {lprc->left - dx, lprc->top - dy, lprc->right + dx, lprc->bottom + dy};
    return TRUE;
}

BOOL MoveToEx(HDC hdc, int x, int y, POINT *lppt)
{
    Dc *dc = DcOf(hdc);
    if (!dc)
        return FALSE;
    if (lppt)
        *lppt = dc->position;
    dc->position = {x, y};
    return TRUE;
}

// A dotted pen draws three pixels and leaves three, in the background colour unless that is
// transparent.
static void DrawStep(HDC hdc, const Dc &dc, POINT at, int step)
{
    const RECT pixel{at.x, at.y, at.x + 1, at.y + 1};
    if (dc.pen->style != PS_DOT || step % 6 < 3)
        Fill(hdc, pixel, dc.pen->color);
    else if (dc.bkMode == OPAQUE)
        Fill(hdc, pixel, dc.bkColor);
}

BOOL LineTo(HDC hdc, int x, int y)
{
    Dc *dc = DcOf(hdc);
    if (!dc)
        return FALSE;
    const int64_t dx = static_cast<int64_t>(x) - dc->position.x;
    const int64_t dy = static_cast<int64_t>(y) - dc->position.y;
    // Longer lines than any surface are cut, so that no coordinate makes this run for long.
    const int64_t steps = std::max(std::llabs(dx), std::llabs(dy));
    for (int64_t i = 0; i < std::min<int64_t>(steps, 1 << 15); ++i)
        DrawStep(hdc, *dc,
                 {static_cast<LONG>(dc->position.x + dx * i / steps),
                  static_cast<LONG>(dc->position.y + dy * i / steps)},
                 static_cast<int>(i));
    dc->position = {x, y};
    return TRUE;
}

BOOL BitBlt(HDC hdc, int x, int y, int cx, int cy, HDC hdcSrc, int x1, int y1, DWORD rop)
{
    return StretchBlt(hdc, x, y, cx, cy, hdcSrc, x1, y1, cx, cy, rop);
}

BOOL StretchBlt(HDC hdcDest, int xDest, int yDest, int wDest, int hDest, HDC hdcSrc, int xSrc,
                int ySrc, int wSrc, int hSrc, DWORD rop)
{
    const Dc *to = DcOf(hdcDest), *from = DcOf(hdcSrc);
    if (!to || !from || rop != SRCCOPY)
        return FALSE;
    if (!to->target || !from->target)
        return TRUE;
    CopyPixels(*to->target, to->clip, InSurface(*to, {xDest, yDest, xDest + wDest, yDest + hDest}),
               *from->target, InSurface(*from, {xSrc, ySrc, xSrc + wSrc, ySrc + hSrc}));
    if (from->bitmap && to->window && onPicture)
        onPicture(to->window, from->bitmap->id);
    return TRUE;
}
