// Draws the sample library's pictures: bitmaps of every depth, and a tab's icon. The argument is
// the folder that they go to.
#include <cstdint>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

using Bytes = std::vector<uint8_t>;

template <class T>
static void Add(Bytes &bytes, T value)
{
    const auto *p = reinterpret_cast<const uint8_t *>(&value);
    bytes.insert(bytes.end(), p, p + sizeof value);
}

// Header, palette (0xRRGGBB each) and rows from the bottom up, a pixel's value from the function.
template <class Pixel>
static Bytes Dib(int width, int height, int bits, const std::vector<uint32_t> &palette, Pixel pixel,
                 int headerHeight)
{
    Bytes dib;
    for (const int field : {40, width, headerHeight})
        Add<int32_t>(dib, field);
    Add<uint16_t>(dib, 1);
    Add<uint16_t>(dib, static_cast<uint16_t>(bits));
    for (const uint32_t field : {0u, 0u, 0u, 0u, static_cast<uint32_t>(palette.size()), 0u})
        Add<uint32_t>(dib, field);
    for (const uint32_t color : palette)
        Add<uint32_t>(dib, color);
    for (int y = height - 1; y >= 0; --y) {
        Bytes row(static_cast<size_t>((width * bits + 31) / 32 * 4));
        for (int x = 0; x < width; ++x) {
            const uint32_t value = pixel(x, y);
            const size_t bit = static_cast<size_t>(x) * static_cast<size_t>(bits);
            if (bits >= 8)
                std::memcpy(&row[bit / 8], &value, static_cast<size_t>(bits / 8));
            else
                row[bit / 8] |=
                    static_cast<uint8_t>(value << (8 - static_cast<size_t>(bits) - bit % 8));
        }
        dib.insert(dib.end(), row.begin(), row.end());
    }
    return dib;
}

static void Write(const std::string &file, const Bytes &bytes)
{
    std::ofstream(file, std::ios::binary)
        .write(reinterpret_cast<const char *>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
}

static void WriteBitmap(const std::string &file, const Bytes &dib, size_t colors)
{
    Bytes bytes{'B', 'M'};
    Add<uint32_t>(bytes, static_cast<uint32_t>(14 + dib.size()));
    Add<uint32_t>(bytes, 0);
    Add<uint32_t>(bytes, static_cast<uint32_t>(14 + 40 + 4 * colors));
    bytes.insert(bytes.end(), dib.begin(), dib.end());
    Write(file, bytes);
}

int main(int, char **argv)
{
    const std::string folder = std::string(argv[1]) + "/";
    // A red pixel top left, a blue one bottom right, the rest in two further colours.
    const auto spot = [](int w, int h) {
        return [=](int x, int y) -> uint32_t {
            return x == 0 && y == 0 ? 0 : x == w - 1 && y == h - 1 ? 1 : (x + y) % 2 ? 2 : 3;
        };
    };
    const std::vector<uint32_t> four{0xFF0000, 0x0000FF, 0x00FF00, 0xFFFFFF};
    WriteBitmap(folder + "mono.bmp",
                Dib(
                    5, 3, 1, {0x000000, 0xFFFFFF}, [](int x, int) -> uint32_t { return x % 2; }, 3),
                2);
    WriteBitmap(folder + "colors16.bmp", Dib(5, 3, 4, four, spot(5, 3), 3), 4);
    WriteBitmap(folder + "colors256.bmp", Dib(7, 4, 8, four, spot(7, 4), 4), 4);
    const auto direct = [&](int x, int y) { return four[spot(6, 5)(x, y)]; };
    WriteBitmap(folder + "true.bmp", Dib(6, 5, 24, {}, direct, 5), 0);
    WriteBitmap(folder + "wide.bmp", Dib(6, 5, 32, {}, direct, 5), 0);

    Bytes icon{0, 0, 1, 0, 1, 0, 16, 16, 16, 0, 1, 0, 4, 0};
    Bytes image = Dib(
        16, 16, 4, {0x000000, 0xFFFFFF, 0x0000FF, 0xFFFF00, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0},
        [](int x, int y) -> uint32_t {
            return x == 3 || x == 12 || y == 1 || y == 14 ? 0 : y < 6 ? 2 : 1;
        },
        32);
    // The mask clears what lies beside the sheet of paper.
    for (int y = 15; y >= 0; --y)
        Add<uint32_t>(image, y < 1 || y > 14 ? 0xFFFFFFFF : 0x000007E0);
    Add<uint32_t>(icon, static_cast<uint32_t>(image.size()));
    Add<uint32_t>(icon, 22);
    icon.insert(icon.end(), image.begin(), image.end());
    Write(folder + "tab.ico", icon);
}
