// Drawing: objects and who holds them, pictures of every depth, lines, frames, text.
#include "platform/served.h"
#include "tests/platform/user_fixture.h"

// A memory context with a picture of 7 by 4 to draw on.
class Gdi : public UserTest
{
  protected:
    Gdi()
    {
        canvas = LoadBitmapA(hSample, MAKEINTRESOURCEA(IDB_256)); // 7 by 4
        hdc = CreateCompatibleDC(nullptr);
        original = SelectObject(hdc, canvas);
    }
    ~Gdi() override
    {
        EXPECT_EQ(SelectObject(hdc, original), canvas);
        DeleteDC(hdc);
        DeleteObject(canvas);
    }
    // A row of a picture, a letter for each colour.
    std::string Row(HDC from, int y, int width)
    {
        std::string row;
        for (int x = 0; x < width; ++x)
            row += Letter(Pixel(from, x, y));
        return row;
    }
    static char Letter(COLORREF color)
    {
        switch (color) {
        case RGB(255, 0, 0): return 'R';
        case RGB(0, 0, 255): return 'B';
        case RGB(0, 255, 0): return 'G';
        case RGB(255, 255, 255): return '.';
        case RGB(0, 0, 0): return '#';
        default: return '?';
        }
    }
    // Copied to the screen and read there.
    COLORREF Pixel(HDC from, int x, int y)
    {
        HDC to = GetDC(hDlg);
        BitBlt(to, 0, 0, 1, 1, from, x, y, SRCCOPY);
        ReleaseDC(hDlg, to);
        POINT pt{0, 0};
        ClientToScreen(hDlg, &pt);
        return kvp::ScreenPixel(pt.x, pt.y);
    }
    void InDialog(std::function<void()> look)
    {
        Person({look, "cancel"});
        EXPECT_EQ(Dialog(IDD_PLAIN), 2);
    }
    void White()
    {
        const RECT all{0, 0, 7, 4};
        HRGN region = CreateRectRgnIndirect(&all);
        EXPECT_TRUE(FillRgn(hdc, region, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH))));
        DeleteObject(region);
    }
    HBITMAP canvas;
    HDC hdc;
    HGDIOBJ original;
};

TEST_F(Gdi, PicturesOfEveryDepthAreRead)
{
    static const struct {
        int id, width, height, bits;
        const char *first, *last;
    } aPictures[] = {
        {IDB_MONO, 5, 3, 1, "#.#.#", "#.#.#"},    {IDB_16, 5, 3, 4, "RG.G.", ".G.GB"},
        {IDB_256, 7, 4, 8, "RG.G.G.", "G.G.G.B"}, {IDB_TRUE, 6, 5, 24, "RG.G.G", ".G.G.B"},
        {IDB_WIDE, 6, 5, 32, "RG.G.G", ".G.G.B"},
    };
    InDialog([&] {
        for (const auto &row : aPictures) {
            SCOPED_TRACE(row.bits);
            HBITMAP bitmap = LoadBitmapA(hSample, MAKEINTRESOURCEA(row.id));
            ASSERT_NE(bitmap, nullptr);
            BITMAP info;
            ASSERT_EQ(GetObjectA(bitmap, sizeof info, &info), static_cast<int>(sizeof info));
            EXPECT_EQ(info.bmWidth, row.width);
            EXPECT_EQ(info.bmHeight, row.height);
            EXPECT_EQ(info.bmBitsPixel, row.bits);
            HDC memory = CreateCompatibleDC(nullptr);
            SelectObject(memory, bitmap);
            EXPECT_EQ(Row(memory, 0, row.width), row.first);
            EXPECT_EQ(Row(memory, row.height - 1, row.width), row.last);
            DeleteDC(memory);
            DeleteObject(bitmap);
        }
    });
}

TEST_F(Gdi, StretchingRepeatsAndDropsPixels)
{
    HBITMAP bitmap = LoadBitmapA(hSample, MAKEINTRESOURCEA(IDB_16));
    HDC source = CreateCompatibleDC(nullptr);
    SelectObject(source, bitmap);
    InDialog([&] {
        White();
        EXPECT_TRUE(StretchBlt(hdc, 1, 0, 4, 4, source, 0, 0, 2, 2, SRCCOPY));
        EXPECT_EQ(Row(hdc, 0, 7), ".RRGG..");
        EXPECT_EQ(Row(hdc, 3, 7), ".GG....");
        // Beyond the picture nothing is drawn.
        EXPECT_TRUE(BitBlt(hdc, 0, 0, 7, 4, source, 3, 0, SRCCOPY));
        EXPECT_EQ(Row(hdc, 0, 7), "G.RGG..");
    });
    DeleteDC(source);
    DeleteObject(bitmap);
}

TEST_F(Gdi, LinesLeaveOutTheirLastPoint)
{
    InDialog([&] {
        White();
        MoveToEx(hdc, 1, 1, nullptr);
        LineTo(hdc, 5, 1);
        EXPECT_EQ(Row(hdc, 1, 7), ".####..");
        LineTo(hdc, 5, 3);
        EXPECT_EQ(Row(hdc, 2, 7), ".....#.");
        EXPECT_EQ(Row(hdc, 3, 7), ".......");
        SelectObject(hdc, GetStockObject(WHITE_PEN));
        MoveToEx(hdc, 3, 1, nullptr);
        LineTo(hdc, 1, 1); // leftwards
        EXPECT_EQ(Row(hdc, 1, 7), ".#..##.");
        HPEN dots = CreatePen(PS_DOT, 1, RGB(0, 0, 0));
        HGDIOBJ old = SelectObject(hdc, dots);
        MoveToEx(hdc, 0, 0, nullptr);
        LineTo(hdc, 7, 0);
        EXPECT_EQ(Row(hdc, 0, 7), "###...#");
        EXPECT_FALSE(DeleteObject(dots)) << "it is selected";
        EXPECT_EQ(SelectObject(hdc, old), dots);
        EXPECT_TRUE(DeleteObject(dots));
        EXPECT_FALSE(DeleteObject(dots)) << "it is gone";
    });
}

TEST_F(Gdi, AFocusFrameDrawnTwiceIsGone)
{
    InDialog([&] {
        White();
        const RECT rc{0, 0, 5, 4};
        DrawFocusRect(hdc, &rc);
        EXPECT_EQ(Row(hdc, 0, 7), "#.#.#..");
        EXPECT_EQ(Row(hdc, 1, 7), ".......");
        EXPECT_EQ(Row(hdc, 2, 7), "#...#..");
        DrawFocusRect(hdc, &rc);
        EXPECT_EQ(Row(hdc, 0, 7), ".......");
        FrameRect(hdc, &rc, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
        EXPECT_EQ(Row(hdc, 0, 7), "#####..");
        EXPECT_EQ(Row(hdc, 1, 7), "#...#..");
    });
}

TEST_F(Gdi, TextFillsItsRectangleAndStaysInIt)
{
    InDialog([&] {
        White();
        const RECT rc{1, 0, 6, 4};
        EXPECT_EQ(SetBkColor(hdc, RGB(255, 0, 0)), RGB(255, 255, 255));
        EXPECT_EQ(SetTextColor(hdc, RGB(255, 0, 0)), RGB(0, 0, 0));
        ExtTextOutA(hdc, 1, -3, ETO_OPAQUE | ETO_CLIPPED, &rc, "MMMM", 4, nullptr);
        EXPECT_EQ(Row(hdc, 1, 7), ".RRRRR.");
        TEXTMETRICA metrics;
        EXPECT_TRUE(GetTextMetricsA(hdc, &metrics));
        EXPECT_EQ(metrics.tmHeight, HIWORD(static_cast<DWORD>(GetDialogBaseUnits())));
    });
}

TEST_F(Gdi, WhatIsNoObjectIsRefused)
{
    HBRUSH brush = CreateSolidBrush(RGB(1, 2, 3));
    EXPECT_TRUE(DeleteObject(brush));
    EXPECT_EQ(SelectObject(hdc, brush), nullptr);
    EXPECT_EQ(SelectObject(hdc, nullptr), nullptr);
    EXPECT_EQ(LoadBitmapA(hSample, MAKEINTRESOURCEA(999)), nullptr);
    EXPECT_FALSE(BitBlt(nullptr, 0, 0, 1, 1, hdc, 0, 0, SRCCOPY));
    EXPECT_TRUE(DeleteObject(GetStockObject(BLACK_BRUSH))) << "a stock object stays";
    EXPECT_NE(GetStockObject(BLACK_BRUSH), nullptr);
    EXPECT_EQ(GetStockObject(99), nullptr);
}
