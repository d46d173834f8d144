// The owner-drawn button: its parent draws it, at once when it is pressed or gains or loses the
// focus.
#include "platform/user/button.h"
#include "platform/win32.h"

namespace kvp
{

void OwnerButton::Draw(HDC hdc, UINT action)
{
    AskColors(*this, hdc, WM_CTLCOLORBTN);
    SendDrawItem(*this, {.CtlType = ODT_BUTTON,
                         .CtlID = 0,
                         .itemID = 0,
                         .itemAction = action,
                         .itemState = (held ? ODS_SELECTED : 0) | (enabled ? 0 : ODS_DISABLED) |
                                      (HasFocus() ? ODS_FOCUS : 0),
                         .hwndItem = nullptr,
                         .hDC = hdc,
                         .rcItem = Client(),
                         .itemData = 0});
}

void OwnerButton::Paint(HDC hdc)
{
    Draw(hdc, ODA_DRAWENTIRE);
}

void OwnerButton::DrawNow(UINT action)
{
    if (!IsShown())
        return;
    HDC hdc = GetDC(Handle());
    Draw(hdc, action);
    ReleaseDC(Handle(), hdc);
}

} // namespace kvp
