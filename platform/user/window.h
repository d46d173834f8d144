// Windows from inside: the tree, what every kind of window answers to, and the services that the
// kinds are built on. One screen, one thread.
#ifndef KV_PLATFORM_USER_WINDOW_H
#define KV_PLATFORM_USER_WINDOW_H

#include <memory>
#include <string>
#include <vector>

#include "platform/gdi/gdi.h"
#include "platform/user/input.h"
#include "platform/win32.h"

namespace kvp
{

// ---- colours of the layer's own parts -------------------------------------------------------

constexpr COLORREF FACE = RGB(192, 192, 192), SHADOW = RGB(128, 128, 128),
                   LIGHT = RGB(255, 255, 255), DARK = RGB(0, 0, 0), CAPTION = RGB(0, 0, 128),
                   DESKTOP = RGB(0, 128, 128);

// ---- styles that templates carry --------------------------------------------------------------

constexpr DWORD STYLE_DISABLED = 0x08000000, STYLE_CAPTION = 0x00C00000, STYLE_BORDER = 0x00800000,
                STYLE_GROUP = 0x00020000, STYLE_3D_LOOK = 4; // the last: of a dialog

// The frame round a top-level window, and the caption's part of it.
constexpr int FRAME_SIDE = 5, FRAME_TOP = 24;

class Window
{
  public:
    // A null parent makes a top-level window, whose rectangle lies on the screen; a child's lies
    // in its parent's client area. The parent owns its children.
    Window(Window *parent, DWORD style, int id, const RECT &rc);
    virtual ~Window();
    Window(const Window &) = delete;
    Window &operator=(const Window &) = delete;

    HWND Handle() { return reinterpret_cast<HWND>(this); }
    static Window *Of(HWND hwnd); // null for anything that is no living window

    // ---- what a kind of window answers to
    virtual const char *Kind() const = 0;
    virtual LRESULT Message(UINT msg, WPARAM wParam, LPARAM lParam);
    virtual void Paint(HDC) {}
    virtual void Erase(HDC) {}
    virtual void MouseDown(POINT) {}
    virtual void MouseMove(POINT) {}
    virtual void MouseUp(POINT) {}
    virtual void MouseHeld() {}                         // down for a while
    virtual void MouseWheel(int /*notches*/) {}         // away from the person
    virtual bool KeyDown(const Key &) { return false; } // true: it was for this window
    virtual bool Typed(char32_t) { return false; }
    virtual void FocusChanged(bool /*has*/) {}
    virtual void TextChanged() { Invalidate(); }
    virtual void EnabledChanged() { Invalidate(); }
    virtual bool TakesFocus() const { return false; } // from a click or from Tab
    virtual bool TakesFocusFromClick() const { return TakesFocus(); }
    virtual bool IsHit() const { return true; }         // false: the mouse goes through it
    virtual bool IsPushButton() const { return false; } // Enter presses it
    virtual void Press() {}                             // by Enter, Space or an arrow
    virtual bool HasLetter() const { return false; }    // its text may underline one
    virtual void LetterTyped() { Press(); }
    virtual void TabbedInto() {}
    virtual bool IsRadioButton() const { return false; }
    virtual bool IsChecked() const { return false; }
    virtual void PressDefault() {} // of a top-level window: Enter, Escape
    virtual void PressCancel() {}
    // The colour of a child's background when nobody says otherwise.
    virtual COLORREF DefaultColor(UINT /*ctlColor*/) const { return LIGHT; }

    // ---- tree and geometry
    Window *Top();
    bool IsTopLevel() const { return !parent; }
    bool IsShown() const;  // with all its parents
    bool IsUsable() const; // enabled, with all its parents
    Window *Child(int childId) const;
    RECT Client() const; // from (0, 0)
    POINT ClientOnScreen() const;
    RECT OnScreen() const; // the whole window
    bool HasFocus() const;

    // ---- state
    void SetText(std::u16string newText);
    void Enable(bool on);
    void Show(bool on);
    void Move(const RECT &to);
    void Invalidate(const RECT *part = nullptr, bool erase = true);
    LRESULT Notify(WORD code); // WM_COMMAND to the parent

    Window *parent;
    Window *owner = nullptr; // of a top-level window
    std::vector<Window *> children;
    DWORD style;
    int id;
    RECT rc;
    std::u16string text;
    bool visible, enabled;
    RECT invalid{};
    bool eraseNeeded = false;
    int picture = 0; // the number of the bitmap last drawn here
    // Of a top-level window:
    std::shared_ptr<Surface> surface;
    bool framed = false, frameInvalid = true;
    Window *focusBefore = nullptr; // the child that gets the focus back with the window
    bool closed = false;           // its modal loop is to end
};

// ---- painting (paint.cpp) ---------------------------------------------------------------------

// A device context for the window's client area, cut to `part` of it.
HDC WindowDc(Window &window, const RECT &part);
void PaintInvalid(); // until nothing is invalid
// Asks the parent for the control's colours, sets them in the context and gives the background.
COLORREF AskColors(Window &control, HDC hdc, UINT ctlColor);
// The text with the context's colours, its background filled unless the mode is transparent.
void DrawLabel(HDC hdc, const RECT &rc, const std::u16string &text, unsigned flags);
// WM_DRAWITEM to the control's parent.
void SendDrawItem(Window &control, DRAWITEMSTRUCT item);

// ---- top-level windows, focus, capture (focus.cpp) ---------------------------------------------

std::vector<Window *> &TopLevels(); // the topmost last
void Activate(Window *top);         // null: none
Window *ActiveWindow();
Window *FocusWindow();
void FocusOn(Window *window); // null: nobody has it
void Capture(Window *window); // null: released
Window *CaptureWindow();
// The window goes away: nothing refers to it any longer.
void Forget(Window *window);
// The window is disabled or hidden.
void LeaveFocus(Window *window);

// A list that lies open over everything and takes no focus; null: none. A click elsewhere tells
// it to go away; true from Dismiss means that the click has done its work with that.
class Popup
{
  public:
    virtual bool Dismiss(Window *clicked) = 0;
    virtual Window &PopupWindow() = 0;

  protected:
    ~Popup() = default;
};
void OpenPopup(Popup *popup);
Popup *CurrentPopup();

// ---- groups and tab stops (keys.cpp) ------------------------------------------------------------

// The control and its siblings up to the next group mark on either side.
std::vector<Window *> GroupOf(const Window &control);
// The first tab stop within a window (a page, a dialog); null when there is none.
Window *FirstTabStop(Window &within);
// The tab stop after a control, within its top-level window.
Window *TabStopAfter(Window &control, bool backwards);
// The focus goes there as by the Tab key: a field's whole text is selected.
void TabInto(Window &control);

// What a click there would reach (dispatch.cpp).
Window *WindowAt(POINT onScreen);

// ---- modal loops (loop.cpp) ---------------------------------------------------------------------

// A modal window's owner is disabled while this lives. At its end the owner is enabled, invalid,
// and active again with the focus where it was. Without an owner that is the active window.
class OwnerLock
{
  public:
    OwnerLock(Window &modal, Window *owner);
    ~OwnerLock();
    OwnerLock(const OwnerLock &) = delete;
    OwnerLock &operator=(const OwnerLock &) = delete;

  private:
    Window &modal;
    bool ownerEnabled;
};
// Runs until the window is closed.
void RunModal(Window &window);
// The person closes the program's window: every modal window is cancelled, those below included.
void CloseAll();
// Where a new window of this size comes over its owner, or in the middle, whole on the screen.
RECT PlaceOver(Window *owner, int width, int height);

} // namespace kvp

#endif
