// Pixels in memory: what windows and bitmaps are made of. 32 bits a pixel, 0x00RRGGBB, on a cairo
// image, so that a surface can be written as a PNG file as it is.
#ifndef KV_PLATFORM_GDI_SURFACE_H
#define KV_PLATFORM_GDI_SURFACE_H

#include <cstdint>
#include <memory>
#include <string>

#include <cairo.h>

#include "platform/win32.h"

namespace kvp
{

struct Surface {
    Surface(int width, int height); // white; at least 1 by 1
    ~Surface();
    Surface(const Surface &) = delete;
    Surface &operator=(const Surface &) = delete;

    uint32_t *Row(int y) { return pixels + static_cast<size_t>(y) * stride; }
    // Tells cairo that the pixels were written past it, before it reads them.
    bool WritePng(const std::string &hostPath);

    cairo_surface_t *image;
    uint32_t *pixels;
    int width, height;
    size_t stride; // in pixels
};

// ---- rectangles -----------------------------------------------------------------------------

constexpr int Width(const RECT &rc)
{
    return rc.right - rc.left;
}
constexpr int Height(const RECT &rc)
{
    return rc.bottom - rc.top;
}
constexpr bool IsEmpty(const RECT &rc)
{
    return rc.right <= rc.left || rc.bottom <= rc.top;
}
RECT Intersect(const RECT &a, const RECT &b); // empty ones are all zero
RECT Union(const RECT &a, const RECT &b);     // of which one may be empty
RECT Moved(const RECT &rc, int dx, int dy);
RECT Shrunk(const RECT &rc, int by);
bool Contains(const RECT &rc, POINT pt);

// ---- drawing on pixels, cut to `clip` and the surface ----------------------------------------

constexpr uint32_t PixelOf(COLORREF color)
{
    return (color & 0xFF) << 16 | (color & 0xFF00) | (color >> 16 & 0xFF);
}
void FillPixels(Surface &to, const RECT &clip, const RECT &rc, COLORREF color);
void InvertPixel(Surface &to, const RECT &clip, int x, int y);
// A copy of `source` of `from` stretched over `target`; the same sizes are a plain copy.
void CopyPixels(Surface &to, const RECT &clip, const RECT &target, Surface &from,
                const RECT &source);

} // namespace kvp

#endif
