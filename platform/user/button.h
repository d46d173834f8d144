// Buttons of every kind. Their kind is in the low bits of the style.
#ifndef KV_PLATFORM_USER_BUTTON_H
#define KV_PLATFORM_USER_BUTTON_H

#include "platform/user/window.h"
#include "platform/win32.h"

namespace kvp
{

constexpr DWORD BUTTON_KIND = 0xF, BUTTON_PUSH = 0, BUTTON_DEFAULT = 1, BUTTON_CHECK = 2,
                BUTTON_AUTO_CHECK = 3, BUTTON_RADIO = 4, BUTTON_GROUP = 7, BUTTON_AUTO_RADIO = 9,
                BUTTON_OWNER_DRAWN = 11;

// What all buttons that can be pressed share: the mouse and the space bar hold them down, letting
// go inside presses them.
class Button : public Window
{
  public:
    Button(Window *buttonParent, DWORD buttonStyle, int buttonId, const RECT &where);
    void MouseDown(POINT at) override;
    void MouseMove(POINT at) override;
    void MouseUp(POINT at) override;
    bool KeyDown(const Key &key) override;
    bool TakesFocus() const override { return true; }
    bool HasLetter() const override { return true; }
    void LetterTyped() override;
    void Press() override { Notify(BN_CLICKED); }

  protected:
    // The look of a button that is held down, or no longer.
    virtual void HeldChanged() { Invalidate(); }
    bool held = false;

  private:
    void Hold(bool down);
};

class PushButton final : public Button
{
  public:
    using Button::Button;
    const char *Kind() const override { return "button"; }
    void Paint(HDC hdc) override;
    void FocusChanged(bool has) override;
    bool IsPushButton() const override { return true; }

  private:
    bool IsDefault();
};

// Check boxes and radio buttons: a mark and a text.
class MarkButton : public Button
{
  public:
    using Button::Button;
    void Paint(HDC hdc) override;
    void FocusChanged(bool) override { Invalidate(); }
    bool IsChecked() const override { return checked; }
    void SetCheck(bool on);

  protected:
    virtual void PaintMark(HDC hdc, const RECT &rc) = 0;

  private:
    bool checked = false;
};

class CheckBox final : public MarkButton
{
  public:
    using MarkButton::MarkButton;
    const char *Kind() const override { return "checkbox"; }
    void Press() override;

  private:
    void PaintMark(HDC hdc, const RECT &rc) override;
};

class RadioButton final : public MarkButton
{
  public:
    using MarkButton::MarkButton;
    const char *Kind() const override { return "radio"; }
    void Press() override;
    bool IsRadioButton() const override { return true; }

  private:
    void PaintMark(HDC hdc, const RECT &rc) override;
};

class OwnerButton final : public Button
{
  public:
    using Button::Button;
    const char *Kind() const override { return "ownerdraw"; }
    void Paint(HDC hdc) override;
    void FocusChanged(bool) override { DrawNow(ODA_FOCUS); }

  private:
    void HeldChanged() override { DrawNow(ODA_SELECT); }
    void Draw(HDC hdc, UINT action);
    void DrawNow(UINT action);
};

} // namespace kvp

#endif
