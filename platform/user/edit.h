// The edit field: one line of text.
#ifndef KV_PLATFORM_USER_EDIT_H
#define KV_PLATFORM_USER_EDIT_H

#include "platform/user/window.h"

namespace kvp
{

class Edit final : public Window
{
  public:
    using Window::Window;
    const char *Kind() const override { return "edit"; }
    LRESULT Message(UINT msg, WPARAM wParam, LPARAM lParam) override;
    void Paint(HDC hdc) override;
    void MouseDown(POINT at) override;
    void MouseMove(POINT at) override;
    bool KeyDown(const Key &key) override;
    bool Typed(char32_t character) override;
    void FocusChanged(bool has) override;
    void TextChanged() override;
    void TabbedInto() override { Select(0, text.size()); }
    bool TakesFocus() const override { return true; }

    bool IsReadOnly() const;
    void Select(size_t from, size_t to); // the caret goes to `to`

  private:
    bool Shortcut(const Key &key);
    bool MoveCaret(const Key &key);
    void Replace(size_t from, size_t to, std::u16string_view with);
    void ReplaceSelection(std::u16string_view with);
    void ShowCaret();
    size_t IndexAt(POINT at) const;

    size_t anchor = 0, caret = 0; // the selection lies between them
    int scrolled = 0;             // pixels hidden at the left
};

} // namespace kvp

#endif
