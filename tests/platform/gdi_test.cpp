// Drawing: objects and who holds them, pictures of every depth, lines, frames, text.
#include <map>

#include "platform/served.h"
#include "tests/platform/user_fixture.h"

// A white picture of 7 by 4 in a memory context, to draw on before a dialog.
class Gdi : public UserTest
{
  protected:
    Gdi()
    {
        canvas = LoadBitmapA(hSample, MAKEINTRESOURCEA(IDB_256));
        hdc = CreateCompatibleDC(nullptr);
        original = SelectObject(hdc, canvas);
        White();
    }
    ~Gdi() override
    {
        EXPECT_EQ(SelectObject(hdc, original), canvas);
        DeleteDC(hdc);
        DeleteObject(canvas);
    }
    void White()
    {
        const RECT all{0, 0, 7, 4};
        HRGN region = CreateRectRgnIndirect(&all);
        EXPECT_TRUE(FillRgn(hdc, region, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH))));
        DeleteObject(region);
    }
    void InDialog(std::function<void()> look) { UserTest::InDialog({look}); }
    // A row of a picture, a letter for each colour: copied to the screen and read there.
    std::string Row(HDC from, int y, int width)
    {
        HDC to = GetDC(hDlg);
        BitBlt(to, 0, 0, width, 1, from, 0, y, SRCCOPY);
        ReleaseDC(hDlg, to);
        POINT pt{0, 0};
        ClientToScreen(hDlg, &pt);
        static const std::map<COLORREF, char> letters = {{RGB(255, 0, 0), 'R'},
                                                         {RGB(0, 0, 255), 'B'},
                                                         {RGB(0, 255, 0), 'G'},
                                                         {RGB(255, 255, 255), '.'},
                                                         {RGB(0, 0, 0), '#'}};
        std::string row;
        for (int x = 0; x < width; ++x)
            row += letters.at(kvp::ScreenPixel(pt.x + x, pt.y));
        return row;
    }
    std::string Drawn()
    {
        return Row(hdc, 0, 7) + ' ' + Row(hdc, 1, 7) + ' ' + Row(hdc, 2, 7) + ' ' + Row(hdc, 3, 7);
    }

    HBITMAP canvas;
    HDC hdc;
    HGDIOBJ original;
};

TEST_F(Gdi, PicturesOfEveryDepthAreReadAndStretched)
{
    static const struct {
        int id, width, height, bits;
        const char *first, *last, *stretched;
    } aPictures[] = {
        {IDB_MONO, 5, 3, 1, "#.#.#", "#.#.#", ".##...."},
        {IDB_16, 5, 3, 4, "RG.G.", ".G.GB", ".RRGG.."},
        {IDB_256, 7, 4, 8, "RG.G.G.", "G.G.G.B", ".RRGG.."},
        {IDB_TRUE, 6, 5, 24, "RG.G.G", ".G.G.B", ".RRGG.."},
        {IDB_WIDE, 6, 5, 32, "RG.G.G", ".G.G.B", ".RRGG.."},
    };
    InDialog([&] {
        for (const auto &row : aPictures) {
            SCOPED_TRACE(row.bits);
            HBITMAP bitmap = LoadBitmapA(hSample, MAKEINTRESOURCEA(row.id));
            BITMAP info;
            ASSERT_EQ(GetObjectA(bitmap, sizeof info, &info), static_cast<int>(sizeof info));
            EXPECT_EQ(std::tuple(info.bmWidth, info.bmHeight, info.bmBitsPixel),
                      std::tuple(row.width, row.height, row.bits));
            HDC memory = CreateCompatibleDC(nullptr);
            SelectObject(memory, bitmap);
            EXPECT_EQ(Row(memory, 0, row.width), row.first);
            EXPECT_EQ(Row(memory, row.height - 1, row.width), row.last);
            White();
            EXPECT_TRUE(StretchBlt(hdc, 1, 0, 4, 4, memory, 0, 0, 2, 2, SRCCOPY));
            EXPECT_EQ(Row(hdc, 0, 7), row.stretched);
            // Beyond the picture nothing is drawn.
            White();
            EXPECT_TRUE(BitBlt(hdc, 0, 0, 7, 4, memory, row.width - 1, row.height - 1, SRCCOPY));
            EXPECT_EQ(Drawn(),
                      row.last[row.width - 1] + std::string("...... ....... ....... ......."));
            DeleteDC(memory);
            DeleteObject(bitmap);
        }
    });
}

TEST_F(Gdi, LinesLeaveOutTheirLastPoint)
{
    InDialog([&] {
        MoveToEx(hdc, 1, 1, nullptr);
        LineTo(hdc, 5, 1);
        LineTo(hdc, 5, 3);
        EXPECT_EQ(Drawn(), "....... .#####. .....#. .......");
        SelectObject(hdc, GetStockObject(WHITE_PEN));
        MoveToEx(hdc, 3, 1, nullptr);
        LineTo(hdc, 1, 1); // leftwards
        HPEN dots = CreatePen(PS_DOT, 1, RGB(0, 0, 0));
        HGDIOBJ old = SelectObject(hdc, dots);
        MoveToEx(hdc, 0, 0, nullptr);
        LineTo(hdc, 7, 0);
        EXPECT_EQ(Drawn(), "###...# .#..##. .....#. .......");
        EXPECT_FALSE(DeleteObject(dots)) << "it is selected";
        EXPECT_EQ(SelectObject(hdc, old), dots);
        EXPECT_TRUE(DeleteObject(dots));
        EXPECT_FALSE(DeleteObject(dots)) << "it is gone";
    });
}

TEST_F(Gdi, AFocusFrameDrawnTwiceIsGone)
{
    InDialog([&] {
        const RECT rc{0, 0, 5, 4};
        DrawFocusRect(hdc, &rc);
        EXPECT_EQ(Drawn(), "#.#.#.. ....... #...#.. .#.#...");
        DrawFocusRect(hdc, &rc);
        EXPECT_EQ(Drawn(), "....... ....... ....... .......");
        FrameRect(hdc, &rc, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
        EXPECT_EQ(Drawn(), "#####.. #...#.. #...#.. #####..");
    });
}

TEST_F(Gdi, TextFillsItsRectangleAndStaysInIt)
{
    InDialog([&] {
        const RECT rc{1, 0, 6, 2};
        EXPECT_EQ(SetBkColor(hdc, RGB(255, 0, 0)), RGB(255, 255, 255));
        EXPECT_EQ(SetTextColor(hdc, RGB(255, 0, 0)), RGB(0, 0, 0));
        ExtTextOutA(hdc, 1, -3, ETO_CLIPPED, &rc, "MMMM", 4, nullptr);
        EXPECT_EQ(Drawn(), ".RRRRR. .RRRRR. ....... .......");
        SetBkMode(hdc, TRANSPARENT);
        const RECT below{2, 3, 4, 4};
        ExtTextOutA(hdc, 2, 3, ETO_OPAQUE, &below, "", 0, nullptr);
        EXPECT_EQ(Drawn(), ".RRRRR. .RRRRR. ....... ..RR...");
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
}
