// A list that scrolls: where its items lie, and the scroll bar at its side, which is a part of it.
#ifndef KV_PLATFORM_USER_SCROLL_H
#define KV_PLATFORM_USER_SCROLL_H

#include "platform/user/window.h"

namespace kvp
{

constexpr int SCROLL_WIDTH = 16;

class ScrolledList : public Window
{
  public:
    using Window::Window;
    void MouseMove(POINT at) override;
    void MouseUp(POINT at) override;
    void MouseWheel(int notches) override;

    RECT ItemRect(int index) const;
    int ItemAt(POINT at) const; // -1: none
    void ScrollTo(int index);   // so that the item can be seen
    // The middle of the scroll bar's thumb when this item is the uppermost one.
    POINT ThumbAt(int uppermost) const;
    bool HasBar() const { return ItemsShown() < Count(); }
    int Uppermost() const { return first; }

  protected:
    virtual int Count() const = 0;
    virtual int ItemHeight() const = 0;
    int ItemsShown() const;
    int ItemsEnd() const; // behind the last item that can be seen
    // A press on the bar: one item on an arrow, a page beside the thumb; the thumb can be dragged.
    // False: it is not on the bar.
    bool BarPressed(POINT at);
    bool IsDragging() const { return grip >= 0; }
    void PaintBar(HDC hdc) const; // if there is one
    void KeepFilled();            // there may be fewer items now
    void LetGo() { grip = -1; }

  private:
    RECT Bar() const;
    RECT Thumb(int uppermost) const;
    void SetFirst(int to);

    int first = 0;
    int grip = -1; // how far below its top the thumb is held; -1: it is not
};

// A small button with an arrow.
enum class Arrow { Up, Down, Left, Right };
void PaintArrowButton(HDC hdc, const RECT &rc, Arrow arrow, bool pressed, bool enabled);

} // namespace kvp

#endif
