// Bitmaps and icons out of resources: device-independent bitmaps whose every offset and size is
// checked, because a resource library is bytes from outside.
#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>

#include "platform/gdi/gdi.h"
#include "platform/resource/resource.h"

namespace kvp
{

static constexpr int MOST_PIXELS_ACROSS = 4096;

namespace
{
#pragma pack(push, 1)
struct InfoHeader {
    DWORD biSize;
    LONG biWidth, biHeight; // a negative height: the top row comes first
    WORD biPlanes, biBitCount;
    DWORD biCompression, biSizeImage;
    LONG biXPelsPerMeter, biYPelsPerMeter;
    DWORD biClrUsed, biClrImportant;
};
struct GroupEntry {
    BYTE bWidth, bHeight, bColorCount, bReserved;
    WORD wPlanes, wBitCount;
    DWORD dwBytesInRes;
    WORD nId;
};
#pragma pack(pop)
static_assert(sizeof(InfoHeader) == 40 && sizeof(GroupEntry) == 14);

// Where the parts of a bitmap lie, all within its bytes.
struct Parts {
    int width, height, bits;
    bool topDown;
    std::array<uint32_t, 256> palette; // as pixels; black where the bitmap has no colour
    std::span<const uint8_t> rows, mask;
    size_t rowBytes, maskBytes;
};
} // namespace

static size_t RowBytes(int width, int bits)
{
    return (static_cast<size_t>(width) * static_cast<size_t>(bits) + 31) / 32 * 4;
}

static bool IsReadable(const InfoHeader &header, size_t bytes, bool icon)
{
    const int64_t height = std::llabs(static_cast<int64_t>(header.biHeight));
    const bool depth = header.biBitCount == 1 || header.biBitCount == 4 || header.biBitCount == 8 ||
                       header.biBitCount == 24 || header.biBitCount == 32;
    return header.biSize >= sizeof header && header.biSize <= bytes && depth &&
           header.biCompression == 0 && header.biPlanes == 1 && header.biWidth > 0 &&
           header.biWidth <= MOST_PIXELS_ACROSS && height > 0 && height <= MOST_PIXELS_ACROSS &&
           (!icon || (header.biHeight > 0 && height % 2 == 0));
}

static uint32_t PixelFrom(const uint8_t *blueGreenRed)
{
    return static_cast<uint32_t>(blueGreenRed[2]) << 16 |
           static_cast<uint32_t>(blueGreenRed[1]) << 8 | blueGreenRed[0];
}

static bool FindParts(std::span<const uint8_t> dib, bool icon, Parts &parts)
{
    InfoHeader header;
    if (dib.size() < sizeof header)
        return false;
    std::memcpy(&header, dib.data(), sizeof header);
    if (!IsReadable(header, dib.size(), icon))
        return false;
    parts.width = header.biWidth;
    parts.height = std::abs(header.biHeight) / (icon ? 2 : 1);
    parts.bits = header.biBitCount;
    parts.topDown = header.biHeight < 0;
    const size_t most = parts.bits <= 8 ? size_t{1} << parts.bits : 0;
    const size_t colors = header.biClrUsed && header.biClrUsed < most ? header.biClrUsed : most;
    // A palette that a bitmap of many colours may carry is only skipped.
    const uint64_t skipped = parts.bits > 8 ? header.biClrUsed : colors;
    const uint64_t start = header.biSize + 4 * skipped;
    parts.rowBytes = RowBytes(parts.width, parts.bits);
    parts.maskBytes = icon ? RowBytes(parts.width, 1) : 0;
    const size_t rows = parts.rowBytes * static_cast<size_t>(parts.height);
    const size_t mask = parts.maskBytes * static_cast<size_t>(parts.height);
    if (start + rows + mask > dib.size())
        return false;
    parts.palette = {};
    for (size_t i = 0; i < colors; ++i)
        parts.palette[i] = PixelFrom(&dib[header.biSize + 4 * i]);
    parts.rows = dib.subspan(start, rows);
    parts.mask = dib.subspan(start + rows, mask);
    return true;
}

static uint32_t PixelAt(const Parts &parts, const uint8_t *row, size_t x)
{
    switch (parts.bits) {
    case 1: return parts.palette[row[x / 8] >> (7 - x % 8) & 1];
    case 4: return parts.palette[row[x / 2] >> (x % 2 ? 0 : 4) & 0xF];
    case 8: return parts.palette[row[x]];
    default: return PixelFrom(row + x * static_cast<size_t>(parts.bits) / 8);
    }
}

static void DecodeRow(const Parts &parts, size_t stored, uint32_t *to)
{
    const uint8_t *row = parts.rows.data() + stored * parts.rowBytes;
    const uint8_t *mask =
        parts.mask.empty() ? nullptr : parts.mask.data() + stored * parts.maskBytes;
    for (size_t x = 0; x < static_cast<size_t>(parts.width); ++x)
        if (!mask || !(mask[x / 8] >> (7 - x % 8) & 1))
            to[x] = PixelAt(parts, row, x);
}

std::shared_ptr<Surface> DecodeDib(std::span<const uint8_t> dib, bool icon, COLORREF background,
                                   int *bitsPerPixel)
{
    Parts parts;
    if (!FindParts(dib, icon, parts))
        return nullptr;
    auto surface = std::make_shared<Surface>(parts.width, parts.height);
    if (!surface->pixels)
        return nullptr;
    const RECT whole{0, 0, parts.width, parts.height};
    if (icon)
        FillPixels(*surface, whole, whole, background);
    for (int y = 0; y < parts.height; ++y)
        DecodeRow(parts, static_cast<size_t>(parts.topDown ? y : parts.height - 1 - y),
                  surface->Row(y));
    if (bitsPerPixel)
        *bitsPerPixel = parts.bits;
    return surface;
}

// How far an icon is from 16 by 16; of the same size, more colours are better.
static int Distance(const GroupEntry &entry)
{
    const int width = entry.bWidth ? entry.bWidth : 256;
    return std::abs(width - 16) * 64 + (32 - std::min<int>(entry.wBitCount, 32));
}

std::shared_ptr<Surface> LoadIconSurface(HINSTANCE module, WORD id, COLORREF background)
{
    const std::span<const uint8_t> group = FindResource(module, RESOURCE_GROUP_ICON, id);
    int best = -1, distance = 0;
    for (size_t at = 6; at + sizeof(GroupEntry) <= group.size(); at += sizeof(GroupEntry)) {
        GroupEntry entry;
        std::memcpy(&entry, group.data() + at, sizeof entry);
        if (best < 0 || Distance(entry) < distance) {
            best = entry.nId;
            distance = Distance(entry);
        }
    }
    if (best < 0)
        return nullptr;
    return DecodeDib(FindResource(module, RESOURCE_ICON, static_cast<WORD>(best)), true,
                     background);
}

} // namespace kvp

using namespace kvp;

HBITMAP LoadBitmapA(HINSTANCE hInstance, LPCSTR lpBitmapName)
{
    const ULONG_PTR id = reinterpret_cast<ULONG_PTR>(lpBitmapName);
    if (id > 0xFFFF)
        return nullptr;
    int bits = 0;
    auto surface = DecodeDib(FindResource(hInstance, RESOURCE_BITMAP, static_cast<uint16_t>(id)),
                             false, 0, &bits);
    return surface ? NewBitmap(std::move(surface), static_cast<int>(id), bits) : nullptr;
}
