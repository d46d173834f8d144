// Dialogs: pages of a sheet and modal dialogs, built from templates.
#ifndef KV_PLATFORM_USER_DIALOG_H
#define KV_PLATFORM_USER_DIALOG_H

#include <optional>

#include "platform/user/template.h"
#include "platform/user/window.h"

namespace kvp
{

class Dialog : public Window
{
  public:
    // A null parent makes a modal dialog's window, framed when the template has a caption.
    Dialog(Window *dialogParent, const DialogTemplate &shape, int templateId, const RECT &where,
           DLGPROC procedure);
    ~Dialog() override;

    const char *Kind() const override { return parent ? "page" : "dialog"; }
    LRESULT Message(UINT msg, WPARAM wParam, LPARAM lParam) override;
    void Erase(HDC hdc) override;
    COLORREF DefaultColor(UINT ctlColor) const override;
    void PressDefault() override;
    void PressCancel() override;

    // Makes the template's controls, then sends WM_INITDIALOG.
    void Start(const DialogTemplate &shape, LPARAM parameter);
    // The button that Enter presses while no push button has the focus.
    Window *DefaultButton() const;

    DLGPROC procedure;
    LRESULT messageResult = 0;
    LONG_PTR userValue = 0;
    INT_PTR result = 0; // of EndDialog
};

// The dialog that a window is, or that it is a control of; null otherwise.
Dialog *DialogOf(Window *window);
// What a person sees of a top-level window: the dialog itself, or a sheet's page.
Dialog *ShownDialog(Window &top);

// A control of a template's or program's class; null when the layer has none of this name.
Window *MakeControl(Window &parent, const std::u16string &className, DWORD style, int id,
                    const RECT &rc, const std::u16string &text);

} // namespace kvp

#endif
