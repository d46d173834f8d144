// Surfaces, rectangles, and the few operations on pixels that everything drawn comes down to.
#include "platform/gdi/surface.h"

#include <algorithm>
#include <cstring>

namespace kvp
{

Surface::Surface(int w, int h)
    : image(cairo_image_surface_create(CAIRO_FORMAT_RGB24, std::max(w, 1), std::max(h, 1))),
      pixels(reinterpret_cast<uint32_t *>(cairo_image_surface_get_data(image))),
      width(pixels ? std::max(w, 1) : 0), height(pixels ? std::max(h, 1) : 0),
      stride(pixels ? static_cast<size_t>(cairo_image_surface_get_stride(image)) / 4 : 0)
{
    FillPixels(*this, {0, 0, width, height}, {0, 0, width, height}, RGB(255, 255, 255));
}

Surface::~Surface()
{
    cairo_surface_destroy(image);
}

bool Surface::WritePng(const std::string &hostPath)
{
    cairo_surface_mark_dirty(image);
    return cairo_surface_write_to_png(image, hostPath.c_str()) == CAIRO_STATUS_SUCCESS;
}

RECT Intersect(const RECT &a, const RECT &b)
{
    const RECT rc{std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
                  std::min(a.bottom, b.bottom)};
    return IsEmpty(rc) ? RECT{} : rc;
}

RECT Union(const RECT &a, const RECT &b)
{
    if (IsEmpty(a))
        return b;
    if (IsEmpty(b))
        return a;
    return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
            std::max(a.bottom, b.bottom)};
}

RECT Moved(const RECT &rc, int dx, int dy)
{
    return {rc.left + dx, rc.top + dy, rc.right + dx, rc.bottom + dy};
}

RECT Shrunk(const RECT &rc, int by)
{
    return {rc.left + by, rc.top + by, rc.right - by, rc.bottom - by};
}

bool Contains(const RECT &rc, POINT pt)
{
    return pt.x >= rc.left && pt.x < rc.right && pt.y >= rc.top && pt.y < rc.bottom;
}

void FillPixels(Surface &to, const RECT &clip, const RECT &rc, COLORREF color)
{
    const RECT part = Intersect(Intersect(clip, rc), {0, 0, to.width, to.height});
    for (int y = part.top; y < part.bottom; ++y)
        std::fill_n(to.Row(y) + part.left, Width(part), PixelOf(color));
}

void InvertPixel(Surface &to, const RECT &clip, int x, int y)
{
    if (Contains(Intersect(clip, {0, 0, to.width, to.height}), {x, y}))
        to.Row(y)[x] ^= 0xFFFFFF;
}

// The source's pixel for each target pixel is the nearest one; outside the source nothing is
// drawn.
static void StretchPixels(Surface &to, const RECT &part, const RECT &target, Surface &from,
                          const RECT &source)
{
    for (int y = part.top; y < part.bottom; ++y) {
        const int64_t sy =
            source.top + static_cast<int64_t>(y - target.top) * Height(source) / Height(target);
        if (sy < 0 || sy >= from.height)
            continue;
        const uint32_t *row = from.Row(static_cast<int>(sy));
        for (int x = part.left; x < part.right; ++x) {
            const int64_t sx =
                source.left + static_cast<int64_t>(x - target.left) * Width(source) / Width(target);
            if (sx >= 0 && sx < from.width)
                to.Row(y)[x] = row[sx];
        }
    }
}

void CopyPixels(Surface &to, const RECT &clip, const RECT &target, Surface &from,
                const RECT &source)
{
    if (IsEmpty(source) || IsEmpty(target))
        return;
    const RECT part = Intersect(Intersect(clip, target), {0, 0, to.width, to.height});
    if (Width(target) != Width(source) || Height(target) != Height(source)) {
        StretchPixels(to, part, target, from, source);
        return;
    }
    const int dx = source.left - target.left, dy = source.top - target.top;
    const RECT rc = Intersect(part, Moved({0, 0, from.width, from.height}, -dx, -dy));
    for (int y = rc.top; y < rc.bottom; ++y)
        std::memmove(to.Row(y) + rc.left, from.Row(y + dy) + rc.left + dx,
                     static_cast<size_t>(Width(rc)) * sizeof(uint32_t));
}

} // namespace kvp
