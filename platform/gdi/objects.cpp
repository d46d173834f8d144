// Pens, brushes, bitmaps, fonts and regions. A handle is the object's address, believed only while
// the object is registered.
#include <memory>
#include <unordered_map>
#include <utility>

#include "platform/gdi/gdi.h"
#include "platform/host.h"
#include "platform/served.h"

namespace kvp
{

static std::unordered_map<void *, std::unique_ptr<Object>> &Objects()
{
    static std::unordered_map<void *, std::unique_ptr<Object>> objects;
    return objects;
}

static Object *Register(Object object)
{
    auto owned = std::make_unique<Object>(std::move(object));
    Object *o = owned.get();
    Objects()[o] = std::move(owned);
    return o;
}

static Object *Stock(int i)
{
    static const struct {
        int id;
        ObjectKind kind;
        COLORREF color;
    } aStock[] = {
        {WHITE_BRUSH, ObjectKind::Brush, RGB(255, 255, 255)},
        {BLACK_BRUSH, ObjectKind::Brush, RGB(0, 0, 0)},
        {WHITE_PEN, ObjectKind::Pen, RGB(255, 255, 255)},
        {BLACK_PEN, ObjectKind::Pen, RGB(0, 0, 0)},
        {SYSTEM_FONT, ObjectKind::Font, 0},
    };
    static std::unordered_map<int, Object *> made;
    if (made.empty())
        for (const auto &row : aStock)
            made[row.id] = Register({.kind = row.kind, .stock = true, .color = row.color});
    const auto found = made.find(i);
    return found == made.end() ? nullptr : found->second;
}

Object *ObjectOf(HGDIOBJ handle)
{
    const auto found = Objects().find(handle);
    return found == Objects().end() ? nullptr : found->second.get();
}

HBITMAP NewBitmap(std::shared_ptr<Surface> surface, int id, int bitsPerPixel)
{
    return reinterpret_cast<HBITMAP>(Register({.kind = ObjectKind::Bitmap,
                                               .surface = std::move(surface),
                                               .id = id,
                                               .bitsPerPixel = bitsPerPixel}));
}

// ---- device contexts ------------------------------------------------------------------------

static std::unordered_map<void *, std::unique_ptr<Dc>> &Contexts()
{
    static std::unordered_map<void *, std::unique_ptr<Dc>> contexts;
    return contexts;
}

Dc *DcOf(HDC hdc)
{
    const auto found = Contexts().find(hdc);
    return found == Contexts().end() ? nullptr : found->second.get();
}

HDC NewDc(std::shared_ptr<Surface> target, POINT origin, const RECT &clip, HWND window)
{
    auto dc = std::make_unique<Dc>();
    dc->target = std::move(target);
    dc->origin = origin;
    dc->clip = clip;
    dc->window = window;
    dc->pen = Stock(BLACK_PEN);
    dc->brush = Stock(WHITE_BRUSH);
    dc->font = Stock(SYSTEM_FONT);
    HDC hdc = reinterpret_cast<HDC>(dc.get());
    Contexts()[hdc] = std::move(dc);
    return hdc;
}

void FreeDc(HDC hdc)
{
    Contexts().erase(hdc);
}

GuiHeld CurrentlyHeldGui()
{
    size_t objects = 0;
    for (const auto &[handle, object] : Objects())
        objects += !object->stock;
    return {objects, Contexts().size()};
}

static bool IsSelected(const Object *object)
{
    for (const auto &[handle, dc] : Contexts())
        if (object == dc->pen || object == dc->brush || object == dc->bitmap)
            return true;
    return false;
}

} // namespace kvp

using namespace kvp;

HPEN CreatePen(int iStyle, int, COLORREF color)
{
    return reinterpret_cast<HPEN>(
        Register({.kind = ObjectKind::Pen, .color = color & 0xFFFFFF, .style = iStyle}));
}

HBRUSH CreateSolidBrush(COLORREF color)
{
    return reinterpret_cast<HBRUSH>(
        Register({.kind = ObjectKind::Brush, .color = color & 0xFFFFFF}));
}

HRGN CreateRectRgnIndirect(const RECT *lprect)
{
    if (!lprect)
        return nullptr;
    return reinterpret_cast<HRGN>(Register({.kind = ObjectKind::Region, .region = *lprect}));
}

HGDIOBJ GetStockObject(int i)
{
    return Stock(i);
}

// An object that a context still holds cannot be deleted, as the caller would notice only later.
BOOL DeleteObject(HGDIOBJ ho)
{
    const Object *object = ObjectOf(ho);
    if (!object)
        return FALSE;
    if (object->stock)
        return TRUE;
    if (IsSelected(object))
        return FALSE;
    Objects().erase(ho);
    return TRUE;
}

BOOL UnrealizeObject(HGDIOBJ h)
{
    return ObjectOf(h) != nullptr;
}

int GetObjectA(HGDIOBJ h, int c, LPVOID pv)
{
    const Object *object = ObjectOf(h);
    if (!object || object->kind != ObjectKind::Bitmap || c < static_cast<int>(sizeof(BITMAP)) ||
        !pv)
        return 0;
    const LONG bits = object->bitsPerPixel;
    const LONG w = object->surface->width;
    *static_cast<BITMAP *>(pv) = {
        0,      w, object->surface->height, (w * bits + 15) / 16 * 2, 1, static_cast<WORD>(bits),
        nullptr};
    return sizeof(BITMAP);
}

static HGDIOBJ SelectBitmap(Dc &dc, Object *object)
{
    // What a fresh memory context holds: one pixel that nobody sees.
    static Object *const none = ObjectOf(NewBitmap(std::make_shared<Surface>(1, 1), 0, 1));
    none->stock = true;
    if (!dc.memory)
        return nullptr;
    Object *old = dc.bitmap ? dc.bitmap : none;
    dc.bitmap = object;
    dc.target = object == none ? nullptr : object->surface;
    dc.clip = dc.target ? RECT{0, 0, dc.target->width, dc.target->height} : RECT{};
    return old;
}

HGDIOBJ SelectObject(HDC hdc, HGDIOBJ h)
{
    Dc *dc = DcOf(hdc);
    Object *object = ObjectOf(h);
    if (!dc || !object)
        return nullptr;
    switch (object->kind) {
    case ObjectKind::Pen: return std::exchange(dc->pen, object);
    case ObjectKind::Brush: return std::exchange(dc->brush, object);
    case ObjectKind::Font: return std::exchange(dc->font, object);
    case ObjectKind::Bitmap: return SelectBitmap(*dc, object);
    case ObjectKind::Region: break;
    }
    return nullptr;
}

HDC CreateCompatibleDC(HDC)
{
    HDC hdc = NewDc(nullptr, {}, {}, nullptr);
    DcOf(hdc)->memory = true;
    return hdc;
}

BOOL DeleteDC(HDC hdc)
{
    const Dc *dc = DcOf(hdc);
    if (!dc || !dc->memory)
        return FALSE;
    FreeDc(hdc);
    return TRUE;
}

BOOL SetBrushOrgEx(HDC hdc, int x, int y, POINT *lppt)
{
    Dc *dc = DcOf(hdc);
    if (!dc)
        return FALSE;
    if (lppt)
        *lppt = dc->brushOrigin;
    dc->brushOrigin = {x, y};
    return TRUE;
}
