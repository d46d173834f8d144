// Controls that step: the scroll bar's two arrows, and the trackbar's thumb.
#ifndef KV_PLATFORM_USER_SCROLLBAR_H
#define KV_PLATFORM_USER_SCROLLBAR_H

#include "platform/user/window.h"

namespace kvp
{

// Two arrows. It takes no focus from a click.
class ScrollBar final : public Window
{
  public:
    using Window::Window;
    const char *Kind() const override { return "scrollbar"; }
    void Paint(HDC hdc) override;
    void MouseDown(POINT at) override;
    void MouseUp(POINT at) override;
    void MouseHeld() override;
    bool KeyDown(const Key &key) override;
    bool TakesFocus() const override { return style & WS_TABSTOP; }
    bool TakesFocusFromClick() const override { return false; }

    bool IsVertical() const { return style & 1; }
    RECT ArrowRect(bool second) const;

  private:
    void Send(int code);
    void Step(bool second);
    int pressed = -1; // 0 the first arrow, 1 the second
};

// It holds its position itself.
class Trackbar final : public Window
{
  public:
    using Window::Window;
    const char *Kind() const override { return "trackbar"; }
    LRESULT Message(UINT msg, WPARAM wParam, LPARAM lParam) override;
    void Paint(HDC hdc) override;
    void MouseDown(POINT at) override;
    void MouseMove(POINT at) override;
    void MouseUp(POINT at) override;
    bool KeyDown(const Key &key) override;
    void FocusChanged(bool) override { Invalidate(); }
    bool TakesFocus() const override { return true; }

    POINT ThumbAt(int position) const; // its middle
    int position = 0, least = 0, most = 100;

  private:
    int PositionAt(int x) const;
    void Set(int to);
    void Send(int code, bool withPosition);
    RECT Thumb() const;
    void PaintTicks(HDC hdc) const;

    int pageSize = 20;
    std::vector<int> ticks;
    bool dragging = false, paging = false;
};

} // namespace kvp

#endif
