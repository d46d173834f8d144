// Surfaces, rectangles, and the few operations on pixels that everything drawn comes down to.
#include "platform/gdi/surface.h"

#include <algorithm>
#include <cstring>
#include <vector>

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

// For each pixel of a part of the target's extent the nearest one of the source's, -1 outside of
// what there is.
static std::vector<int> NearestOf(LONG first, LONG end, LONG target, int targetSize, LONG source,
                                  int sourceSize, int there)
{
    std::vector<int> nearest;
    nearest.reserve(static_cast<size_t>(std::max<LONG>(end - first, 0)));
    for (LONG at = first; at < end; ++at) {
        const int64_t from = source + static_cast<int64_t>(at - target) * sourceSize / targetSize;
        nearest.push_back(from >= 0 && from < there ? static_cast<int>(from) : -1);
    }
    return nearest;
}

static void StretchPixels(Surface &to, const RECT &part, const RECT &target, Surface &from,
                          const RECT &source)
{
    const std::vector<int> columns = NearestOf(part.left, part.right, target.left, Width(target),
                                               source.left, Width(source), from.width);
    const std::vector<int> rows = NearestOf(part.top, part.bottom, target.top, Height(target),
                                            source.top, Height(source), from.height);
    for (size_t y = 0; y < rows.size(); ++y) {
        if (rows[y] < 0)
            continue;
        const uint32_t *row = from.Row(rows[y]);
        uint32_t *pixel = to.Row(part.top + static_cast<int>(y)) + part.left;
        for (size_t x = 0; x < columns.size(); ++x)
            if (columns[x] >= 0)
                pixel[x] = row[columns[x]];
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
