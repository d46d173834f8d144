// The list box: one selection, a scroll bar where it is needed.
#ifndef KV_PLATFORM_USER_LISTBOX_H
#define KV_PLATFORM_USER_LISTBOX_H

#include "platform/user/items.h"
#include "platform/user/scroll.h"

namespace kvp
{

class ListBox final : public ScrolledList
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

    Items items;
    int selection = -1;

  private:
    bool IsOwnerDrawn() const;
    int Count() const override { return items.Count(); }
    int ItemHeight() const override { return itemHeight; }
    void SelectByHand(int index);
    void DrawItem(HDC hdc, int index, UINT action);
    void DrawNow(int index, UINT action);

    int itemHeight = LINE_HEIGHT;
};

} // namespace kvp

#endif
