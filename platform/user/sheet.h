// The property sheet: tabs, one page shown at a time, OK, Cancel and Help.
#ifndef KV_PLATFORM_USER_SHEET_H
#define KV_PLATFORM_USER_SHEET_H

#include <memory>
#include <vector>

#include "platform/user/dialog.h"

namespace kvp
{

class Sheet;

// The row of tabs.
class Tabs final : public Window
{
  public:
    Tabs(Sheet &tabsSheet, const RECT &where);
    const char *Kind() const override { return "tabs"; }
    void Paint(HDC hdc) override;
    void MouseDown(POINT at) override;
    bool KeyDown(const Key &key) override;
    void FocusChanged(bool) override { Invalidate(); }
    bool TakesFocus() const override { return true; }
    RECT TabRect(size_t index) const;

  private:
    void PaintTab(HDC hdc, size_t index);
    Sheet &sheet;
};

struct SheetPage {
    PROPSHEETPAGEA description; // what WM_INITDIALOG gets
    DialogTemplate shape;
    std::u16string title;
    std::shared_ptr<Surface> icon; // may be null
    Dialog *dialog = nullptr;      // from its first showing on
};

class Sheet final : public Window
{
  public:
    Sheet(Window *sheetOwner, std::u16string caption, std::vector<SheetPage> sheetPages);
    ~Sheet() override;
    const char *Kind() const override { return "sheet"; }
    LRESULT Message(UINT msg, WPARAM wParam, LPARAM lParam) override;
    void Paint(HDC hdc) override;
    bool KeyDown(const Key &key) override;
    void PressDefault() override;
    void PressCancel() override;
    COLORREF DefaultColor(UINT ctlColor) const override;

    // False when the page shown refuses to be left.
    bool ShowPage(size_t index);

    std::vector<SheetPage> pages;
    size_t current = SIZE_MAX; // none yet
    int result = 0;
    Tabs *tabs;

  private:
    void OnOk();
    void OnCancel();
    LRESULT Tell(Dialog *page, UINT code);
    void BringUp(size_t index);
    RECT PageRect() const;
};

} // namespace kvp

#endif
