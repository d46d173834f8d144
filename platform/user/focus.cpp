// Which window is on top, which one has the keyboard, and which one holds the mouse.
#include <algorithm>
#include <utility>

#include "platform/host.h"
#include "platform/served.h"
#include "platform/user/dialog.h"
#include "platform/user/window.h"

namespace kvp
{

static Window *active, *focus, *capture;
static Popup *openPopup;

void OpenPopup(Popup *popup)
{
    openPopup = popup;
}

Popup *CurrentPopup()
{
    return openPopup;
}

std::vector<Window *> &TopLevels()
{
    static std::vector<Window *> tops;
    return tops;
}

Window *ActiveWindow()
{
    return active;
}

Window *FocusWindow()
{
    return focus;
}

Window *CaptureWindow()
{
    return capture;
}

void Capture(Window *window)
{
    capture = window;
}

// The one that loses the focus hears of it first, and may move it elsewhere itself.
void FocusOn(Window *window)
{
    if (window == focus)
        return;
    Window *old = std::exchange(focus, window);
    if (old)
        old->FocusChanged(false);
    if (focus == window && window)
        window->FocusChanged(true);
}

static void ToFront(Window *top)
{
    std::erase(TopLevels(), top);
    TopLevels().push_back(top);
}

void Activate(Window *top)
{
    if (active == top)
        return;
    Window *old = active;
    if (old) {
        old->focusBefore = focus;
        old->frameInvalid = true;
    }
    active = top;
    FocusOn(nullptr);
    if (!top || active != top)
        return;
    ToFront(top);
    top->frameInvalid = true;
    if (top->focusBefore && top->focusBefore->IsShown() && top->focusBefore->IsUsable())
        FocusOn(top->focusBefore);
}

void Forget(Window *window)
{
    if (focus == window)
        focus = nullptr;
    if (active == window)
        active = nullptr;
    if (capture == window)
        capture = nullptr;
    for (Window *top : TopLevels()) {
        if (top->focusBefore == window)
            top->focusBefore = nullptr;
        if (top->owner == window)
            top->owner = nullptr;
    }
}

void LeaveFocus(Window *window)
{
    for (Window *w = focus; w; w = w->parent)
        if (w == window) {
            // Tab goes on from here.
            window->Top()->focusBefore = focus;
            FocusOn(nullptr);
            break;
        }
    for (Window *w = capture; w; w = w->parent)
        if (w == window) {
            capture = nullptr;
            break;
        }
}

} // namespace kvp

using namespace kvp;

HWND kvp::TopWindow()
{
    Window *top = ActiveWindow();
    Dialog *shown = top ? ShownDialog(*top) : nullptr;
    return shown ? shown->Handle() : top ? top->Handle() : nullptr;
}

HWND SetFocus(HWND hWnd)
{
    Window *old = FocusWindow();
    Window *window = Window::Of(hWnd);
    if (window && window->IsShown() && window->IsUsable())
        FocusOn(window);
    return old ? old->Handle() : nullptr;
}
