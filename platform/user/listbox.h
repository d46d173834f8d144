// The list box: one selection, a scroll bar where it is needed.
#ifndef KV_PLATFORM_USER_LISTBOX_H
#define KV_PLATFORM_USER_LISTBOX_H

#include "platform/user/items.h"

namespace kvp
{

class ListBox final : public Window
{
  public:
    ListBox(Window *listParent, DWORD listStyle, int listId, const RECT &where);
    const char *Kind() const override { return "listbox"; }
    LRESULT Message(UINT msg, WPARAM wParam, LPARAM lParam) override;
    void Paint(HDC hdc) override;
    void MouseDown(POINT at) override;
    bool KeyDown(const Key &key) override;
    bool Typed(char32_t character) override;
    void FocusChanged(bool has) override;
    bool TakesFocus() const override { return true; }

    RECT ItemRect(int index) const;
    void ScrollTo(int index); // so that the item can be seen

    Items items;
    int selection = -1;

  private:
    bool IsOwnerDrawn() const;
    int ItemsShown() const;
    void SelectByHand(int index);
    void DrawItem(HDC hdc, int index, UINT action);
    void DrawNow(int index, UINT action);

    int itemHeight = LINE_HEIGHT, first = 0;
};

} // namespace kvp

#endif
