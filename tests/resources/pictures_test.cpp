// kvpicture: what becomes of a drawing, and of one that can't be drawn; and the pictures of the
// sample models, which every picture of a control must fit into.
#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>

#include "platform/win32.h"
#include "resources/pictures.h"
#include "tests/resources/pages.h"
#include "tests/support/machine.h"
#include "tools/kvpicture/picture.h"

namespace
{

using kvpic::Image;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

// A drawing on disk for as long as the object lives.
struct Drawing {
    explicit Drawing(const std::string &text)
        : file(std::filesystem::temp_directory_path() /
               ("kvpicture." + std::to_string(reinterpret_cast<uintptr_t>(this)) + ".svg"))
    {
        std::ofstream(file) << text;
    }
    ~Drawing() { std::filesystem::remove(file); }
    Drawing(const Drawing &) = delete;
    Drawing &operator=(const Drawing &) = delete;

    std::filesystem::path file;
};

constexpr uint32_t RED = 0xFFFF0000, BLUE = 0xFF0000FF, CLEAR = 0;

// Left red, right blue, the lower row empty.
constexpr const char *FLAG = "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 2 2'>"
                             "<path d='M0 0 h1 v1 h-1 Z' fill='#f00'/>"
                             "<path d='M1 0 h1 v1 h-1 Z' fill='#00f'/></svg>";

TEST(Picture, ADrawingFillsItsSize)
{
    const Drawing flag(FLAG);
    EXPECT_THAT(kvpic::Render(flag.file, 2, 2).pixels, ElementsAre(RED, BLUE, CLEAR, CLEAR));
    const Image large = kvpic::Render(flag.file, 20, 20);
    EXPECT_EQ(large.pixels[9 * 20 + 9], RED);
    EXPECT_EQ(large.pixels[9 * 20 + 10], BLUE);
}

TEST(Picture, ChangesServeSeveralPicturesFromOneDrawing)
{
    const Drawing flag(FLAG);
    Image image = kvpic::Render(flag.file, 2, 2);
    kvpic::Mirror(image);
    EXPECT_THAT(image.pixels, ElementsAre(BLUE, RED, CLEAR, CLEAR));
    kvpic::MakeGray(image); // blue is darker than red
    EXPECT_THAT(image.pixels, ElementsAre(0xFF1D1D1D, 0xFF4C4C4C, CLEAR, CLEAR));
    image.pixels[1] = 0x80000000;
    kvpic::LayOn(image, 0xC0C0C0);
    EXPECT_THAT(image.pixels, ElementsAre(0xFF1D1D1D, 0xFF606060, 0xFFC0C0C0, 0xFFC0C0C0));
}

TEST(Picture, LayersShowAloneAndInTheOrderGiven)
{
    const Drawing layers("<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 2 1'>"
                         "<path id='left' d='M0 0 h1 v1 h-1 Z' fill='#f00'/>"
                         "<path id='all' d='M0 0 h2 v1 h-2 Z' fill='#00f'/></svg>");
    const std::string left[] = {"left"}, leftOnTop[] = {"all", "left"}, missing[] = {"left", "no"};
    EXPECT_THAT(kvpic::Render(layers.file, 2, 1, left).pixels, ElementsAre(RED, CLEAR));
    EXPECT_THAT(kvpic::Render(layers.file, 2, 1, leftOnTop).pixels, ElementsAre(RED, BLUE));
    EXPECT_THROW(kvpic::Render(layers.file, 2, 1, missing), std::runtime_error);
}

TEST(Picture, WhatCannotBeDrawnIsNamed)
{
    const Drawing text("This is no drawing.");
    for (const std::string &file : {text.file.string(), std::string("/nowhere/missing.svg")})
        try {
            kvpic::Render(file, 2, 2);
            FAIL() << file;
        } catch (const std::runtime_error &error) {
            EXPECT_THAT(error.what(), HasSubstr(file));
        }
}

TEST(Picture, BitmapsAreStoredFromTheLastRowUp)
{
    const Image image{1, 2, {0xFF112233, 0xFF445566}};
    const std::vector<uint8_t> bytes = kvpic::BmpBytes(image);
    ASSERT_EQ(bytes.size(), 54u + 8u);
    EXPECT_EQ(bytes[2], bytes.size());
    const std::vector<uint8_t> rows(bytes.begin() + 54, bytes.end());
    EXPECT_THAT(rows, ElementsAre(0x66, 0x55, 0x44, 0, 0x33, 0x22, 0x11, 0));
}

TEST(Picture, AnIconsMaskLeavesOutWhatIsLessThanHalfThere)
{
    const Image images[] = {{2, 1, {0x80112233, 0x7F445566}}, {1, 1, {BLUE}}};
    const std::vector<uint8_t> bytes = kvpic::IcoBytes(images);
    const size_t first = 6 + 2 * 16 + 40, second = first + 8 + 4 + 40;
    ASSERT_EQ(bytes.size(), second + 4 + 4);
    const std::vector<uint8_t> picture(bytes.begin() + first, bytes.begin() + first + 12);
    EXPECT_THAT(picture, ElementsAre(0x33, 0x22, 0x11, 0, 0, 0, 0, 0, 0x40, 0, 0, 0));
    EXPECT_EQ(bytes[6 + 16 + 12], second - 40) << "where the second one begins";
}

// ---- the samples' pictures -------------------------------------------------------------------

using ModelPictures = MachineTest;

// The controls' sizes are those of the pages; a picture that fits leaves its button's edge free.
constexpr struct {
    int page, control, firstPicture, pictures;
} aPlaces[] = {
    {IDD_MAIN, IDC_MAIN_MAKER, PICTURE_MAKER, 1},
    {IDD_UTILITY, IDC_UTILITY_CLEANING, PICTURE_CLEANING, 3},
    {IDD_MAIN, IDC_MAIN_MODE_PICTURE, PICTURE_PRESET_COLOR, 4},
    {IDD_MAIN, IDC_MAIN_MODE_PICTURE, PICTURE_PRESET_BLACK_MIRROR, 4},
    {IDD_MAIN, IDC_MAIN_MODE_PICTURE, PICTURE_CUSTOM_COLOR, 1},
    {IDD_MAIN, IDC_MAIN_MODE_PICTURE, PICTURE_FINE_BLACK, 1},
    {IDD_MAIN, IDC_MAIN_MODE_PICTURE, PICTURE_DRAFT_COLOR_MIRROR, 6},
    {IDD_MAIN, IDC_MAIN_INK_PICTURE, PICTURE_INK_COLOR, 1},
    {IDD_MAIN, IDC_MAIN_PAPER_PICTURE, PICTURE_LINE_PAPER, 1},
    {IDD_MAIN, IDC_MAIN_HS_PICTURE, PICTURE_LINE_HS, 1},
    {IDD_PAPER, IDC_PAPER_PREVIEW, PICTURE_PREVIEW, 1},
};

TEST_F(ModelPictures, FitTheirControls)
{
    for (const char *library : {KV_SMALL_UI, KV_LARGE_UI}) {
        HMODULE module = kvp::LoadHostLibrary(library);
        for (const auto &place : aPlaces) {
            const Item control = ItemOf(PageIn(place.page, ENGLISH), place.control);
            const RECT room = kvp::PixelsOf(0, 0, control.cx, control.cy);
            for (int id = place.firstPicture; id < place.firstPicture + place.pictures; ++id) {
                HBITMAP bitmap = LoadBitmapA(module, MAKEINTRESOURCEA(id));
                BITMAP size{};
                GetObjectA(bitmap, sizeof size, &size);
                EXPECT_TRUE(size.bmWidth > 0 && size.bmWidth < room.right &&
                            size.bmHeight < room.bottom)
                    << library << ' ' << id;
                DeleteObject(bitmap);
            }
        }
        FreeLibrary(module);
    }
}

} // namespace
