// Painting: what is invalid, in which order it is painted, the contexts to paint into, and the
// questions that go to parents first.
#include <utility>

#include "platform/host.h"
#include "platform/served.h"
#include "platform/user/window.h"

namespace kvp
{

static size_t nPaints;

size_t PaintsSoFar()
{
    return nPaints;
}

// What WM_PAINT handlers invalidate anew is painted in further rounds; one that never ends is
// given up until the next input.
static constexpr int MOST_ROUNDS = 8;

HDC WindowDc(Window &window, const RECT &part)
{
    Window *top = window.Top();
    const POINT at = window.ClientOnScreen();
    const POINT origin{at.x - top->rc.left, at.y - top->rc.top};
    RECT clip{};
    if (window.IsShown()) {
        clip = Moved(Intersect(part, window.Client()), origin.x, origin.y);
        for (const Window *w = window.parent; w; w = w->parent) {
            const POINT outer = w->ClientOnScreen();
            clip =
                Intersect(clip, Moved(w->Client(), outer.x - top->rc.left, outer.y - top->rc.top));
        }
    }
    return NewDc(top->surface, origin, clip, window.Handle());
}

COLORREF AskColors(Window &control, HDC hdc, UINT ctlColor)
{
    Window &asked = control.parent ? *control.parent : control;
    const COLORREF standard = asked.DefaultColor(ctlColor);
    SetTextColor(hdc, DARK);
    SetBkColor(hdc, standard);
    const LRESULT answer = asked.Message(ctlColor, reinterpret_cast<WPARAM>(hdc),
                                         reinterpret_cast<LPARAM>(control.Handle()));
    if (!control.enabled) // whatever colour the parent has set
        SetTextColor(hdc, SHADOW);
    const Object *brush = ObjectOf(reinterpret_cast<HGDIOBJ>(answer));
    return brush && brush->kind == ObjectKind::Brush ? brush->color : standard;
}

void DrawLabel(HDC hdc, const RECT &rc, const std::u16string &text, unsigned flags)
{
    const Dc *dc = DcOf(hdc);
    if (!dc || text.empty())
        return;
    if (dc->bkMode == OPAQUE) {
        const POINT size = TextSize(text, flags, flags & TEXT_WRAP ? Width(rc) : 0);
        RECT cell{rc.left, rc.top, rc.left + size.x, rc.top + size.y};
        if (flags & TEXT_CENTER)
            cell = Moved(cell, (Width(rc) - size.x) / 2, 0);
        if (flags & TEXT_RIGHT)
            cell = Moved(cell, Width(rc) - size.x, 0);
        if (flags & TEXT_MIDDLE)
            cell = Moved(cell, 0, (Height(rc) - size.y) / 2);
        Fill(hdc, Intersect(cell, rc), dc->bkColor);
    }
    DrawTextIn(hdc, rc, text, flags, dc->textColor);
}

void SendDrawItem(Window &control, DRAWITEMSTRUCT item)
{
    if (item.itemAction & ODA_DRAWENTIRE)
        control.picture = 0;
    item.CtlID = static_cast<UINT>(control.id);
    item.hwndItem = control.Handle();
    control.parent->Message(WM_DRAWITEM, static_cast<WPARAM>(control.id),
                            reinterpret_cast<LPARAM>(&item));
}

static void PaintFrame(Window &top)
{
    top.frameInvalid = false;
    if (!top.framed)
        return;
    const int w = Width(top.rc), h = Height(top.rc);
    HDC hdc = NewDc(top.surface, {}, {0, 0, w, h}, nullptr);
    const bool active = ActiveWindow() == &top;
    for (const RECT &side : {RECT{0, 0, w, FRAME_TOP}, RECT{0, h - FRAME_SIDE, w, h},
                             RECT{0, 0, FRAME_SIDE, h}, RECT{w - FRAME_SIDE, 0, w, h}})
        Fill(hdc, side, FACE);
    Outline(hdc, {0, 0, w, h}, DARK);
    Bevel(hdc, {1, 1, w - 1, h - 1}, LIGHT, SHADOW);
    const RECT caption{FRAME_SIDE - 1, FRAME_SIDE - 1, w - FRAME_SIDE + 1, FRAME_TOP - 1};
    Fill(hdc, caption, active ? CAPTION : SHADOW);
    DrawTextIn(hdc, {caption.left + 6, caption.top, caption.right - 20, caption.bottom}, top.text,
               TEXT_MIDDLE | TEXT_BOLD, active ? LIGHT : FACE);
    const RECT close{caption.right - 16, caption.top + 2, caption.right - 2, caption.bottom - 2};
    Fill(hdc, close, FACE);
    Bevel(hdc, close, LIGHT, SHADOW);
    DrawTextIn(hdc, close, u"\u00D7", TEXT_CENTER | TEXT_MIDDLE | TEXT_BOLD, DARK);
    FreeDc(hdc);
}

// A dialog's procedure paints through WM_PAINT; what it leaves invalid counts as painted.
static void PaintOne(Window &window)
{
    ++nPaints;
    window.Message(WM_PAINT, 0, 0);
    window.invalid = {};
    window.eraseNeeded = false;
}

static bool PaintTree(Window &window)
{
    if (!window.visible)
        return false;
    bool painted = false;
    if (!IsEmpty(window.invalid)) {
        // A child that has painted itself before its parent's turn will be painted over: once more.
        const RECT part = window.invalid;
        window.Invalidate(&part, window.eraseNeeded);
        PaintOne(window);
        painted = true;
    }
    // Whoever paints may make children or take some away.
    size_t i = 0;
    while (i < window.children.size())
        painted |= PaintTree(*window.children[i++]);
    return painted;
}

void PaintInvalid()
{
    for (int round = 0; round < MOST_ROUNDS; ++round) {
        bool painted = false;
        const std::vector<Window *> tops = TopLevels();
        for (Window *top : tops) {
            if (!Window::Of(top->Handle()) || !top->visible)
                continue;
            if (top->frameInvalid)
                PaintFrame(*top);
            painted |= PaintTree(*top);
        }
        if (!painted)
            return;
    }
}

// A page's drawing into another window's context counts for that window.
[[maybe_unused]] static const bool bWatched = [] {
    onPicture = [](HWND window, int id) {
        if (Window *w = Window::Of(window))
            w->picture = id;
    };
    return true;
}();

} // namespace kvp

using namespace kvp;

HDC BeginPaint(HWND hWnd, PAINTSTRUCT *lpPaint)
{
    Window *window = Window::Of(hWnd);
    if (!window || !lpPaint)
        return nullptr;
    const RECT part = std::exchange(window->invalid, RECT{});
    const bool erase = std::exchange(window->eraseNeeded, false);
    *lpPaint = {};
    lpPaint->hdc = WindowDc(*window, part);
    lpPaint->rcPaint = part;
    if (erase && !IsEmpty(part))
        window->Erase(lpPaint->hdc);
    return lpPaint->hdc;
}

BOOL EndPaint(HWND hWnd, const PAINTSTRUCT *lpPaint)
{
    if (!Window::Of(hWnd) || !lpPaint)
        return FALSE;
    FreeDc(lpPaint->hdc);
    return TRUE;
}

HDC GetDC(HWND hWnd)
{
    Window *window = Window::Of(hWnd);
    return window ? WindowDc(*window, window->Client()) : nullptr;
}

int ReleaseDC(HWND hWnd, HDC hDC)
{
    const Dc *dc = DcOf(hDC);
    if (!dc || dc->memory || dc->window != hWnd)
        return 0;
    FreeDc(hDC);
    return 1;
}

BOOL InvalidateRect(HWND hWnd, const RECT *lpRect, BOOL bErase)
{
    Window *window = Window::Of(hWnd);
    if (!window)
        return FALSE;
    window->Invalidate(lpRect, bErase != FALSE);
    return TRUE;
}
