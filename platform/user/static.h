// Controls that only show something: texts, black frames, group boxes.
#ifndef KV_PLATFORM_USER_STATIC_H
#define KV_PLATFORM_USER_STATIC_H

#include "platform/user/window.h"

namespace kvp
{

constexpr DWORD STATIC_KIND = 0x1F, STATIC_CENTER = 1, STATIC_RIGHT = 2, STATIC_BLACK_FRAME = 7,
                STATIC_NO_WRAP = 12, STATIC_BITMAP = 14, STATIC_NO_PREFIX = 0x80;

// What only shows something: the mouse goes through it, its letter is for the control behind it.
class Label : public Window
{
  public:
    using Window::Window;
    bool IsHit() const override { return false; }
    void LetterTyped() override;
};

class StaticText final : public Label
{
  public:
    using Label::Label;
    const char *Kind() const override { return "static"; }
    void Paint(HDC hdc) override;
    bool HasLetter() const override { return !(style & STATIC_NO_PREFIX); }
};

// One black pixel all round; what lies inside is left as it is.
class BlackFrame final : public Label
{
  public:
    using Label::Label;
    const char *Kind() const override { return "frame"; }
    void Paint(HDC hdc) override;
};

// A bitmap of the library that the dialog comes from, in its own size. Without one, nothing.
class StaticPicture final : public Label
{
  public:
    using Label::Label;
    const char *Kind() const override { return "static"; }
    void Load(HINSTANCE module, WORD number);
    void Paint(HDC hdc) override;

  private:
    std::shared_ptr<Surface> bitmap;
    int bitmapNumber = 0;
};

class GroupBox final : public Label
{
  public:
    using Label::Label;
    const char *Kind() const override { return "group"; }
    void Paint(HDC hdc) override;
    bool HasLetter() const override { return true; }
};

} // namespace kvp

#endif
