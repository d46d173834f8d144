// One input of the person carried out: which window it is for, and what happens to the focus, the
// mouse and an open list before that window gets it.
#include <algorithm>
#include <utility>

#include "platform/user/button.h"
#include "platform/user/dialog.h"
#include "platform/user/help.h"
#include "platform/user/window.h"

namespace kvp
{

static POINT dragFrom;
static Window *dragged;

static Window *TopAt(POINT at)
{
    const std::vector<Window *> &tops = TopLevels();
    const auto top = std::find_if(tops.rbegin(), tops.rend(), [at](const Window *window) {
        return window->visible && Contains(window->rc, at);
    });
    return top == tops.rend() ? nullptr : *top;
}

// The deepest window that the mouse meets. A disabled one lets it through to its parent.
static Window *HitTest(Window &window, POINT at)
{
    for (Window *child : window.children)
        if (child->visible && child->enabled && child->IsHit() && Contains(child->OnScreen(), at))
            return HitTest(*child, at);
    return &window;
}

// For help, labels and frames count too, but what lies in a frame comes before the frame.
static Window *HelpTarget(Window &window, POINT at)
{
    Window *found = &window;
    for (Window *child : window.children) {
        if (!child->visible || !Contains(child->OnScreen(), at))
            continue;
        if (child->IsHit())
            return HelpTarget(*child, at);
        if (found == &window)
            found = child;
    }
    return found;
}

Window *WindowAt(POINT at)
{
    Window *top = TopAt(at);
    return top ? HitTest(*top, at) : nullptr;
}

static POINT InClient(const Window &window, POINT at)
{
    const POINT origin = window.ClientOnScreen();
    return {at.x - origin.x, at.y - origin.y};
}

// Clicks on the frame: the caption moves the window, its box at the right end closes it.
static bool FrameClicked(Window &top, POINT at)
{
    if (!top.framed || Contains(top.Client(), InClient(top, at)))
        return false;
    if (at.y < top.rc.top + FRAME_TOP && at.x >= top.rc.right - FRAME_SIDE - 16) {
        top.PressCancel();
    } else if (at.y < top.rc.top + FRAME_TOP) {
        dragged = &top;
        dragFrom = at;
    }
    return true;
}

// The focus moves first. The control that loses it may disable or hide the one pressed, or put
// another window on top; then the press is lost.
static bool FocusForClick(Window &hit)
{
    if (hit.TakesFocusFromClick())
        FocusOn(&hit);
    return Window::Of(hit.Handle()) && hit.IsShown() && hit.IsUsable() &&
           ActiveWindow() == hit.Top();
}

static void OnMouseDown(POINT at)
{
    Window *top = TopAt(at);
    Popup *popup = CurrentPopup();
    if (popup && top == &popup->PopupWindow()) {
        Capture(top); // its thumb may be dragged beyond its edge
        top->MouseDown(InClient(*top, at));
        return;
    }
    Window *hit = WindowAt(at);
    if (popup && popup->Dismiss(hit))
        return;
    if (!hit || !Window::Of(hit->Handle()) || !top->enabled)
        return;
    Activate(top);
    if (FrameClicked(*top, at) || !FocusForClick(*hit))
        return;
    Capture(hit);
    hit->MouseDown(InClient(*hit, at));
}

static void OnMouseUp(POINT at)
{
    dragged = nullptr;
    Popup *popup = CurrentPopup();
    Window *window = CaptureWindow();
    Capture(nullptr);
    if (popup && TopAt(at) == &popup->PopupWindow())
        popup->PopupWindow().MouseUp(InClient(popup->PopupWindow(), at));
    else if (window)
        window->MouseUp(InClient(*window, at));
}

static void OnMouseMove(POINT at)
{
    Popup *popup = CurrentPopup();
    if (dragged && Window::Of(dragged->Handle())) {
        dragged->rc = Moved(dragged->rc, at.x - dragFrom.x, at.y - dragFrom.y);
        dragFrom = at;
    } else if (popup && TopAt(at) == &popup->PopupWindow()) {
        popup->PopupWindow().MouseMove(InClient(popup->PopupWindow(), at));
    } else if (Window *window = CaptureWindow()) {
        window->MouseMove(InClient(*window, at));
    }
}

static void OnRightClick(POINT at)
{
    Popup *popup = CurrentPopup();
    Window *top = TopAt(at);
    if (popup && top != &popup->PopupWindow())
        popup->Dismiss(nullptr);
    if (!top || !top->enabled || !Window::Of(top->Handle()) || !top->framed)
        return;
    Activate(top);
    Window *target = HelpTarget(*top, at);
    SetHelpTarget(target);
    if (Dialog *dialog = DialogOf(target))
        dialog->Message(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(target->Handle()),
                        MAKELONG(static_cast<WORD>(at.x), static_cast<WORD>(at.y)));
}

// While a list is open, the wheel is for that alone.
static void OnWheel(POINT at, int notches)
{
    Window *top = TopAt(at);
    Popup *popup = CurrentPopup();
    if (popup && top == &popup->PopupWindow())
        top->MouseWheel(notches);
    else if (!popup && top && top->enabled)
        WindowAt(at)->MouseWheel(notches);
}

// Space has pressed a button: the character that comes with the key is not for the window that this
// may have opened.
static bool spaceDone;

static void OnKey(const Key &key)
{
    Window *window = FocusWindow();
    spaceDone = key.code == KeyCode::Space && dynamic_cast<Button *>(window);
    if (window && window->KeyDown(key))
        return;
    if (Window *top = ActiveWindow(); top && !top->KeyDown(key))
        DialogKey(key);
}

static void OnCharacter(char32_t character)
{
    if (std::exchange(spaceDone, false) && character == U' ')
        return;
    Window *window = FocusWindow();
    if (!window || !window->Typed(character))
        DialogLetter(character);
}

static void OnHeld()
{
    if (Window *window = CaptureWindow(); window && window->IsUsable())
        window->MouseHeld();
}

void Dispatch(const Input &input)
{
    switch (input.kind) {
    case Input::Nothing: break;
    case Input::KeyPress: OnKey(input.key); break;
    case Input::Character: OnCharacter(input.character); break;
    case Input::MouseDown: OnMouseDown(input.at); break;
    case Input::MouseUp: OnMouseUp(input.at); break;
    case Input::MouseMove: OnMouseMove(input.at); break;
    case Input::RightClick: OnRightClick(input.at); break;
    case Input::Wheel: OnWheel(input.at, input.notches); break;
    case Input::Held: OnHeld(); break;
    case Input::Quit: CloseAll(); break;
    }
}

} // namespace kvp
