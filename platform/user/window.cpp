// The tree of windows: making, finding, moving, enabling, showing, and what every window does with
// the messages that all know.
#include <algorithm>
#include <unordered_set>

#include "platform/user/window.h"
#include "platform/win32.h"

namespace kvp
{

static std::unordered_set<void *> &Living()
{
    static std::unordered_set<void *> living;
    return living;
}

Window::Window(Window *windowParent, DWORD windowStyle, int windowId, const RECT &where)
    : parent(windowParent), style(windowStyle), id(windowId), rc(where),
      visible(windowStyle & WS_VISIBLE), enabled(!(windowStyle & STYLE_DISABLED))
{
    Living().insert(this);
    if (parent) {
        parent->children.push_back(this);
    } else {
        surface = std::make_shared<Surface>(Width(rc), Height(rc));
        TopLevels().push_back(this);
    }
    Invalidate();
}

Window::~Window()
{
    while (!children.empty())
        delete children.back();
    Forget(this);
    Living().erase(this);
    if (parent)
        std::erase(parent->children, this);
    else
        std::erase(TopLevels(), this);
}

Window *Window::Of(HWND hwnd)
{
    void *address = hwnd;
    return Living().contains(address) ? static_cast<Window *>(address) : nullptr;
}

static void PaintItself(Window &window)
{
    PAINTSTRUCT ps;
    HDC hdc = BeginPaint(window.Handle(), &ps);
    window.Paint(hdc);
    EndPaint(window.Handle(), &ps);
}

LRESULT Window::Message(UINT msg, WPARAM, LPARAM)
{
    switch (msg) {
    case WM_PAINT: PaintItself(*this); break;
    case WM_GETFONT: return reinterpret_cast<LRESULT>(GetStockObject(SYSTEM_FONT)); // for all
    }
    return 0;
}

Window *Window::Top()
{
    Window *w = this;
    while (w->parent)
        w = w->parent;
    return w;
}

bool Window::IsShown() const
{
    for (const Window *w = this; w; w = w->parent)
        if (!w->visible)
            return false;
    return true;
}

bool Window::IsUsable() const
{
    for (const Window *w = this; w; w = w->parent)
        if (!w->enabled)
            return false;
    return true;
}

Window *Window::Child(int childId) const
{
    for (Window *child : children)
        if (child->id == childId)
            return child;
    return nullptr;
}

RECT Window::Client() const
{
    const int w = Width(rc), h = Height(rc);
    return framed ? RECT{0, 0, w - 2 * FRAME_SIDE, h - FRAME_TOP - FRAME_SIDE} : RECT{0, 0, w, h};
}

POINT Window::ClientOnScreen() const
{
    POINT at{rc.left, rc.top};
    if (framed)
        at = {at.x + FRAME_SIDE, at.y + FRAME_TOP};
    if (parent) {
        const POINT outer = parent->ClientOnScreen();
        at = {at.x + outer.x, at.y + outer.y};
    }
    return at;
}

RECT Window::OnScreen() const
{
    if (!parent)
        return rc;
    const POINT outer = parent->ClientOnScreen();
    return Moved(rc, outer.x, outer.y);
}

bool Window::HasFocus() const
{
    return FocusWindow() == this;
}

void Window::SetText(std::u16string newText)
{
    text = std::move(newText);
    TextChanged();
}

void Window::Enable(bool on)
{
    if (enabled == on)
        return;
    enabled = on;
    if (!on)
        LeaveFocus(this);
    EnabledChanged();
}

// What is shown anew is painted; what is hidden uncovers its parent.
void Window::Show(bool on)
{
    if (visible == on)
        return;
    visible = on;
    if (on) {
        frameInvalid = true;
        Invalidate();
        return;
    }
    LeaveFocus(this);
    if (parent)
        parent->Invalidate(&rc);
}

void Window::Move(const RECT &to)
{
    if (!parent && (Width(to) != Width(rc) || Height(to) != Height(rc))) {
        surface = std::make_shared<Surface>(Width(to), Height(to));
        frameInvalid = true;
    }
    rc = to;
    Invalidate();
}

// Children that lie inside become invalid too; the parent does not.
void Window::Invalidate(const RECT *part, bool erase)
{
    const RECT what = part ? Intersect(*part, Client()) : Client();
    if (IsEmpty(what) || !IsShown())
        return;
    invalid = Union(invalid, what);
    eraseNeeded |= erase;
    for (Window *child : children) {
        const RECT inside = Moved(what, -child->rc.left, -child->rc.top);
        child->Invalidate(&inside, true);
    }
}

LRESULT Window::Notify(WORD code)
{
    if (!parent)
        return 0;
    return parent->Message(WM_COMMAND, static_cast<WPARAM>(MAKELONG(static_cast<WORD>(id), code)),
                           reinterpret_cast<LPARAM>(Handle()));
}

} // namespace kvp
