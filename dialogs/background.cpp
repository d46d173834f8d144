// Light-grey backgrounds for dialogs and edit fields, by the messages that ask for colours.
#include "dialogs/helpers.h"

static void DropBrush(HBRUSH *lphBrush)
{
    if (*lphBrush)
        DeleteObject(*lphBrush);
    *lphBrush = nullptr;
}

// What both do with messages that paint nothing.
static INT_PTR KeepBrush(HBRUSH *lphBrush, UINT uMsg)
{
    switch (uMsg) {
    case WM_DESTROY: DropBrush(lphBrush); return 0;
    case WM_SYSCOLORCHANGE:
        DropBrush(lphBrush);
        *lphBrush = CreateSolidBrush(LIGHT_GREY);
        return 0;
    default: return TRUE;
    }
}

static INT_PTR BrushResult(HBRUSH hBrush)
{
    return reinterpret_cast<INT_PTR>(hBrush);
}

static INT_PTR GreyBackground(HBRUSH *lphBrush, HDC hdc, HWND hWnd)
{
    if (!*lphBrush)
        *lphBrush = CreateSolidBrush(LIGHT_GREY);
    SetBkColor(hdc, LIGHT_GREY);
    SetBkMode(hdc, TRANSPARENT);
    // One origin for all windows on the screen, so that a pattern runs on from one to the next.
    UnrealizeObject(*lphBrush);
    POINT origin{};
    ClientToScreen(hWnd, &origin);
    SetBrushOrgEx(hdc, origin.x, origin.y, nullptr);
    return BrushResult(*lphBrush);
}

INT_PTR ChangeBackColor(HBRUSH *lphBrush, UINT uMsg, WPARAM wParam, LPARAM lParam)
{
    if (Is3dOn())
        return TRUE;
    const auto hdc = reinterpret_cast<HDC>(wParam);
    switch (uMsg) {
    case WM_CTLCOLORDLG: return GreyBackground(lphBrush, hdc, reinterpret_cast<HWND>(lParam));
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLORSTATIC:
        SetBkMode(hdc, TRANSPARENT);
        return BrushResult(*lphBrush); // null until the dialog's own background was asked for
    default: return KeepBrush(lphBrush, uMsg);
    }
}

INT_PTR GrayEditBox(HBRUSH *lphBrush, UINT uMsg, WPARAM wParam, LPARAM lParam)
{
    if (uMsg == WM_CTLCOLOREDIT)
        return GreyBackground(lphBrush, reinterpret_cast<HDC>(wParam),
                              reinterpret_cast<HWND>(lParam));
    return KeepBrush(lphBrush, uMsg);
}
