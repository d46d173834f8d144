// What the layer's own windows use of the drawing part: device contexts from inside, the helpers
// that draw text, bevels and pictures, and bitmaps out of resources.
#ifndef KV_PLATFORM_GDI_GDI_H
#define KV_PLATFORM_GDI_GDI_H

#include <memory>
#include <span>
#include <string_view>

#include "platform/gdi/surface.h"
#include "platform/served.h"

namespace kvp
{

// ---- objects --------------------------------------------------------------------------------

enum class ObjectKind { Pen, Brush, Bitmap, Font, Region };

struct Object {
    ObjectKind kind;
    bool stock = false;                 // never deleted
    COLORREF color = 0;                 // pens and brushes
    int style = PS_SOLID;               // pens
    RECT region{};                      // regions
    std::shared_ptr<Surface> surface{}; // bitmaps
    int id = 0;                         // bitmaps: their number in the resource library
    int bitsPerPixel = 0;               // bitmaps: as stored
};

// Null for anything that is no living object.
Object *ObjectOf(HGDIOBJ handle);
HBITMAP NewBitmap(std::shared_ptr<Surface> surface, int id, int bitsPerPixel);

// ---- device contexts ------------------------------------------------------------------------

struct Dc {
    std::shared_ptr<Surface> target; // null: drawing has no effect
    POINT origin{};                  // of its coordinates, in the surface
    RECT clip{};                     // in the surface
    HWND window = nullptr;
    bool memory = false;
    Object *pen, *brush, *font, *bitmap = nullptr;
    COLORREF textColor = RGB(0, 0, 0), bkColor = RGB(255, 255, 255);
    int bkMode = OPAQUE;
    POINT position{}, brushOrigin{};
};

Dc *DcOf(HDC hdc); // null for anything that is none
HDC NewDc(std::shared_ptr<Surface> target, POINT origin, const RECT &clip, HWND window);
void FreeDc(HDC hdc);
// Called with the picture's number when a bitmap of a resource library is drawn into a window.
extern void (*onPicture)(HWND window, int id);

// ---- drawing for controls -------------------------------------------------------------------

// The text's lines stand this far apart, and the first one's base line this far down.
constexpr int LINE_HEIGHT = 13, BASE_LINE = 10;
constexpr int BASE_UNIT_X = 6, BASE_UNIT_Y = 13;

enum TextFlags : unsigned {
    TEXT_LEFT = 0,
    TEXT_CENTER = 1,
    TEXT_RIGHT = 2,
    TEXT_MIDDLE = 4,  // centred down
    TEXT_WRAP = 8,    // broken at the rectangle's width
    TEXT_PREFIX = 16, // & underlines the next character, && is an &
    TEXT_BOLD = 32,
};

void Fill(HDC hdc, const RECT &rc, COLORREF color);
void FillWith(HDC hdc, const RECT &rc, HBRUSH brush);
void Outline(HDC hdc, const RECT &rc, COLORREF color); // one pixel wide, inside
// One pixel of each colour: left and top, right and bottom.
void Bevel(HDC hdc, const RECT &rc, COLORREF light, COLORREF dark);
void FocusFrame(HDC hdc, const RECT &rc);
// Only the letters are drawn, cut to the rectangle.
void DrawTextIn(HDC hdc, const RECT &rc, std::u16string_view text, unsigned flags, COLORREF color);
// Width of the widest line, and the height of all, when broken at `wrapAt` (0: not broken).
POINT TextSize(std::u16string_view text, unsigned flags, int wrapAt = 0);
// Pixels from the start of a line to the given character.
int TextOffset(std::u16string_view text, size_t index);
// The character whose left half begins nearest to x.
size_t TextIndexAt(std::u16string_view text, int x);

// ---- pictures from resources ----------------------------------------------------------------

// A device-independent bitmap, checked byte by byte: 1, 4, 8, 24 or 32 bits, not compressed.
// Null when damaged. With `icon` the height counts picture and mask, and what the mask clears
// is left as `background`.
std::shared_ptr<Surface> DecodeDib(std::span<const uint8_t> dib, bool icon = false,
                                   COLORREF background = 0, int *bitsPerPixel = nullptr);
// The icon of 16 by 16 pixels, or the one nearest to it, of a group; null when there is none.
std::shared_ptr<Surface> LoadIconSurface(HINSTANCE module, WORD id, COLORREF background);
void DrawSurface(HDC hdc, int x, int y, Surface &picture);

} // namespace kvp

#endif
