// The drop-down list: a field that shows the selection, and a list that opens over everything.
#ifndef KV_PLATFORM_USER_COMBO_H
#define KV_PLATFORM_USER_COMBO_H

#include "platform/user/items.h"
#include "platform/user/scroll.h"

namespace kvp
{

class ComboBox;

// The open list. It belongs to the field and is only shown and hidden.
class DropList final : public ScrolledList, public Popup
{
  public:
    explicit DropList(ComboBox &field);
    const char *Kind() const override { return "list"; }
    void Paint(HDC hdc) override;
    void MouseDown(POINT at) override;
    void MouseMove(POINT at) override;
    void MouseUp(POINT at) override;
    bool Dismiss(Window *clicked) override;
    Window &PopupWindow() override { return *this; }

    void Place(); // below the field, or above where there is no room

  private:
    int Count() const override;
    int ItemHeight() const override;
    ComboBox &combo;
};

class ComboBox final : public Window
{
  public:
    ComboBox(Window *comboParent, DWORD comboStyle, int comboId, const RECT &where);
    ~ComboBox() override;
    const char *Kind() const override { return "combobox"; }
    LRESULT Message(UINT msg, WPARAM wParam, LPARAM lParam) override;
    void Paint(HDC hdc) override;
    void MouseDown(POINT at) override;
    bool KeyDown(const Key &key) override;
    bool Typed(char32_t character) override;
    void FocusChanged(bool has) override;
    void EnabledChanged() override;
    bool TakesFocus() const override { return true; }

    void Open();
    void CloseWithout(); // a choice
    void Choose(int index);
    void Highlight(int index);
    bool IsOwnerDrawn() const;

    Items items;
    int selection = -1;
    int highlighted = -1; // in the open list
    bool dropped = false;
    int itemHeight, listHeight;

  private:
    void Close();
    bool OpenKey(const Key &key);
    void StepTo(int index);
    int Target(const Key &key, int from) const;

    std::unique_ptr<DropList> list;
    int selectionAtOpening = -1;
    bool decided = false; // with what the open list closes has been told
};

} // namespace kvp

#endif
