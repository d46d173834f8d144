// The two file formats: device-independent bitmaps in a file of their own, and in one of icons.
#include "tools/kvpicture/picture.h"

namespace kvpic
{

static constexpr uint32_t FILE_HEADER = 14, INFO_HEADER = 40, ICON_HEADER = 6, ICON_ENTRY = 16;
static constexpr uint32_t BITS = 24;

namespace
{
struct Writer {
    std::vector<uint8_t> bytes;

    void Byte(uint32_t value) { bytes.push_back(static_cast<uint8_t>(value)); }
    void Word(uint32_t value)
    {
        Byte(value);
        Byte(value >> 8);
    }
    void Dword(uint32_t value)
    {
        Word(value);
        Word(value >> 16);
    }
};
} // namespace

static uint32_t RowBytes(int width, uint32_t bits)
{
    return (static_cast<uint32_t>(width) * bits + 31) / 32 * 4;
}

static uint32_t SizeOf(const Image &image, bool mask)
{
    return static_cast<uint32_t>(image.height) *
           (RowBytes(image.width, BITS) + (mask ? RowBytes(image.width, 1) : 0));
}

// An icon's height counts the picture and the mask.
static void WriteHeader(Writer &out, const Image &image, bool mask)
{
    out.Dword(INFO_HEADER);
    out.Dword(static_cast<uint32_t>(image.width));
    out.Dword(static_cast<uint32_t>(image.height) * (mask ? 2 : 1));
    out.Word(1);
    out.Word(BITS);
    out.Dword(0); // not compressed
    out.Dword(SizeOf(image, mask));
    for (int i = 0; i < 4; ++i)
        out.Dword(0); // resolution, colours used
}

static uint32_t PixelAt(const Image &image, int x, int y)
{
    return image
        .pixels[static_cast<size_t>(y) * static_cast<size_t>(image.width) + static_cast<size_t>(x)];
}

static bool IsThere(uint32_t pixel)
{
    return pixel >> 24 >= 128;
}

// What an icon doesn't show must be black, or it would change what lies behind.
static void WriteRows(Writer &out, const Image &image, bool mask)
{
    for (int y = image.height - 1; y >= 0; --y) {
        for (int x = 0; x < image.width; ++x) {
            const uint32_t pixel = PixelAt(image, x, y);
            const uint32_t shown = !mask || IsThere(pixel) ? pixel : 0;
            out.Word(shown);
            out.Byte(shown >> 16);
        }
        out.bytes.resize(out.bytes.size() + RowBytes(image.width, BITS) -
                         static_cast<uint32_t>(image.width) * BITS / 8);
    }
}

// One bit a pixel, set where the background stays.
static void WriteMask(Writer &out, const Image &image)
{
    for (int y = image.height - 1; y >= 0; --y) {
        const size_t row = out.bytes.size();
        out.bytes.resize(row + RowBytes(image.width, 1));
        for (int x = 0; x < image.width; ++x)
            if (!IsThere(PixelAt(image, x, y)))
                out.bytes[row + static_cast<size_t>(x) / 8] |= static_cast<uint8_t>(0x80 >> x % 8);
    }
}

std::vector<uint8_t> BmpBytes(const Image &image)
{
    Writer out;
    const uint32_t start = FILE_HEADER + INFO_HEADER;
    out.Byte('B');
    out.Byte('M');
    out.Dword(start + SizeOf(image, false));
    out.Dword(0);
    out.Dword(start);
    WriteHeader(out, image, false);
    WriteRows(out, image, false);
    return out.bytes;
}

std::vector<uint8_t> IcoBytes(std::span<const Image> images)
{
    Writer out;
    out.Word(0);
    out.Word(1); // icons
    out.Word(static_cast<uint32_t>(images.size()));
    uint32_t start = ICON_HEADER + ICON_ENTRY * static_cast<uint32_t>(images.size());
    for (const Image &image : images) {
        const uint32_t size = INFO_HEADER + SizeOf(image, true);
        out.Byte(static_cast<uint32_t>(image.width)); // 256 is stored as 0
        out.Byte(static_cast<uint32_t>(image.height));
        out.Word(0);
        out.Word(1);
        out.Word(BITS);
        out.Dword(size);
        out.Dword(start);
        start += size;
    }
    for (const Image &image : images) {
        WriteHeader(out, image, true);
        WriteRows(out, image, true);
        WriteMask(out, image);
    }
    return out.bytes;
}

} // namespace kvpic
