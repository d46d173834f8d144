// The message box as a window.
#ifndef KV_PLATFORM_USER_BOX_H
#define KV_PLATFORM_USER_BOX_H

#include <span>

#include "platform/user/systext.h"
#include "platform/user/window.h"

namespace kvp
{

struct BoxButton {
    int id;
    const char *name; // in scripts and transcripts
    SystemText text;
};
std::span<const BoxButton> BoxButtons(UINT type);
// The button that does least.
int SafestButton(UINT type);

class BoxWindow final : public Window
{
  public:
    BoxWindow(Window *boxOwner, std::u16string boxText, std::u16string caption, UINT type);
    const char *Kind() const override { return "box"; }
    LRESULT Message(UINT msg, WPARAM wParam, LPARAM lParam) override;
    void Paint(HDC hdc) override;
    void PressDefault() override;
    void PressCancel() override;
    COLORREF DefaultColor(UINT) const override { return FACE; }

    bool IsStandard(const Window &button) const; // it has the focus at first

    std::u16string message;
    UINT type;
    int answer = 0;

  private:
    void PaintIcon(HDC hdc) const;
};

} // namespace kvp

#endif
