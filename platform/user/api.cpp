// The calls about windows and dialog items. A handle that is no living window makes them fail.
#include <algorithm>
#include <utility>

#include "platform/kernel/internal.h"
#include "platform/user/button.h"
#include "platform/user/dialog.h"
#include "platform/win32.h"

using namespace kvp;

static Window *Item(HWND hDlg, int id)
{
    const Window *dialog = Window::Of(hDlg);
    return dialog ? dialog->Child(id) : nullptr;
}

HWND GetDlgItem(HWND hDlg, int nIDDlgItem)
{
    Window *item = Item(hDlg, nIDDlgItem);
    return item ? item->Handle() : nullptr;
}

int GetDlgCtrlID(HWND hWnd)
{
    const Window *window = Window::Of(hWnd);
    return window ? window->id : 0;
}

LRESULT SendMessageA(HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam)
{
    Window *window = Window::Of(hWnd);
    return window ? window->Message(Msg, wParam, lParam) : 0;
}

LRESULT SendDlgItemMessageA(HWND hDlg, int nIDDlgItem, UINT Msg, WPARAM wParam, LPARAM lParam)
{
    return SendMessageA(GetDlgItem(hDlg, nIDDlgItem), Msg, wParam, lParam);
}

BOOL SetDlgItemTextA(HWND hDlg, int nIDDlgItem, LPCSTR lpString)
{
    Window *item = Item(hDlg, nIDDlgItem);
    if (!item)
        return FALSE;
    item->SetText(AnsiToWide(lpString ? lpString : ""));
    return TRUE;
}

// The longest beginning of the text that fits, in whole characters.
static std::string CutToBytes(const std::u16string &text, size_t most)
{
    // No character takes less than a byte, and none more than two units.
    size_t length = std::min(text.size(), 2 * most);
    std::string ansi = WideToAnsi(std::u16string_view(text).substr(0, length));
    while (ansi.size() > most)
        ansi = WideToAnsi(std::u16string_view(text).substr(0, --length));
    return ansi;
}

UINT GetDlgItemTextA(HWND hDlg, int nIDDlgItem, LPSTR lpString, int cchMax)
{
    const Window *item = Item(hDlg, nIDDlgItem);
    if (!lpString || cchMax <= 0)
        return 0;
    const std::string ansi =
        item ? CutToBytes(item->text, static_cast<size_t>(cchMax) - 1) : std::string();
    std::copy_n(ansi.c_str(), ansi.size() + 1, lpString);
    SpoilRest(lpString + ansi.size() + 1, static_cast<size_t>(cchMax) - ansi.size() - 1);
    return static_cast<UINT>(ansi.size());
}

BOOL SetDlgItemInt(HWND hDlg, int nIDDlgItem, UINT uValue, BOOL bSigned)
{
    const std::string digits =
        bSigned ? std::to_string(static_cast<INT>(uValue)) : std::to_string(uValue);
    return SetDlgItemTextA(hDlg, nIDDlgItem, digits.c_str());
}

// Blanks, a sign where one is allowed, digits; the rest is not looked at.
static bool ReadNumber(const std::u16string &text, bool isSigned, int64_t &value)
{
    size_t at = 0;
    while (at < text.size() && (text[at] == u' ' || text[at] == u'\t'))
        ++at;
    const bool minus = isSigned && at < text.size() && text[at] == u'-';
    if (isSigned && at < text.size() && (text[at] == u'-' || text[at] == u'+'))
        ++at;
    const int64_t most = !isSigned ? INT64_C(0xFFFFFFFF) : minus ? INT64_C(0x80000000) : INT32_MAX;
    const size_t first = at;
    value = 0;
    for (; at < text.size() && text[at] >= u'0' && text[at] <= u'9'; ++at) {
        value = value * 10 + (text[at] - u'0');
        if (value > most)
            return false;
    }
    value = minus ? -value : value;
    return at > first;
}

UINT GetDlgItemInt(HWND hDlg, int nIDDlgItem, BOOL *lpTranslated, BOOL bSigned)
{
    const Window *item = Item(hDlg, nIDDlgItem);
    int64_t value = 0;
    const bool read = item && ReadNumber(item->text, bSigned != FALSE, value);
    if (lpTranslated)
        *lpTranslated = read;
    return read ? static_cast<UINT>(value) : 0;
}

BOOL CheckDlgButton(HWND hDlg, int nIDButton, UINT uCheck)
{
    auto *button = dynamic_cast<MarkButton *>(Item(hDlg, nIDButton));
    if (!button)
        return FALSE;
    button->SetCheck(uCheck != BST_UNCHECKED);
    return TRUE;
}

UINT IsDlgButtonChecked(HWND hDlg, int nIDButton)
{
    const Window *button = Item(hDlg, nIDButton);
    return button && button->IsChecked() ? BST_CHECKED : BST_UNCHECKED;
}

// The numbers name a range of ids, whatever stands between the controls.
BOOL CheckRadioButton(HWND hDlg, int nIDFirstButton, int nIDLastButton, int nIDCheckButton)
{
    const Window *dialog = Window::Of(hDlg);
    if (!dialog)
        return FALSE;
    for (Window *child : dialog->children)
        if (auto *radio = dynamic_cast<RadioButton *>(child);
            radio && radio->id >= nIDFirstButton && radio->id <= nIDLastButton)
            radio->SetCheck(radio->id == nIDCheckButton);
    return TRUE;
}

LONG GetDialogBaseUnits()
{
    return MAKELONG(BASE_UNIT_X, BASE_UNIT_Y);
}

static LONG_PTR *DialogValue(HWND hWnd, int nIndex)
{
    static_assert(sizeof(LRESULT) == sizeof(LONG_PTR));
    auto *dialog = dynamic_cast<Dialog *>(Window::Of(hWnd));
    if (!dialog)
        return nullptr;
    switch (nIndex) {
    case DWLP_MSGRESULT: return &dialog->messageResult;
    case DWLP_USER: return &dialog->userValue;
    default: return nullptr;
    }
}

LONG_PTR GetWindowLongPtrA(HWND hWnd, int nIndex)
{
    const LONG_PTR *value = DialogValue(hWnd, nIndex);
    return value ? *value : 0;
}

LONG_PTR SetWindowLongPtrA(HWND hWnd, int nIndex, LONG_PTR dwNewLong)
{
    LONG_PTR *value = DialogValue(hWnd, nIndex);
    return value ? std::exchange(*value, dwNewLong) : 0;
}

// TRUE when the window was disabled before.
BOOL EnableWindow(HWND hWnd, BOOL bEnable)
{
    Window *window = Window::Of(hWnd);
    if (!window)
        return FALSE;
    const bool wasDisabled = !window->enabled;
    window->Enable(bEnable != FALSE);
    return wasDisabled;
}

BOOL IsWindowEnabled(HWND hWnd)
{
    const Window *window = Window::Of(hWnd);
    return window && window->enabled;
}

// TRUE when the window was shown before.
BOOL ShowWindow(HWND hWnd, int nCmdShow)
{
    Window *window = Window::Of(hWnd);
    if (!window)
        return FALSE;
    const bool wasVisible = window->visible;
    window->Show(nCmdShow != SW_HIDE);
    return wasVisible;
}

BOOL GetClientRect(HWND hWnd, RECT *lpRect)
{
    const Window *window = Window::Of(hWnd);
    if (!window || !lpRect)
        return FALSE;
    *lpRect = window->Client();
    return TRUE;
}

BOOL GetWindowRect(HWND hWnd, RECT *lpRect)
{
    const Window *window = Window::Of(hWnd);
    if (!window || !lpRect)
        return FALSE;
    *lpRect = window->OnScreen();
    return TRUE;
}

BOOL ClientToScreen(HWND hWnd, POINT *lpPoint)
{
    const Window *window = Window::Of(hWnd);
    if (!window || !lpPoint)
        return FALSE;
    const POINT origin = window->ClientOnScreen();
    *lpPoint = {lpPoint->x + origin.x, lpPoint->y + origin.y};
    return TRUE;
}

int GetSystemMetrics(int nIndex)
{
    // A dialog's client area begins SM_CXBORDER + SM_CXFRAME from the left and SM_CYCAPTION +
    // SM_CYDLGFRAME from the top.
    switch (nIndex) {
    case SM_CXBORDER: return 1;
    case SM_CXFRAME:
    case SM_CYDLGFRAME: return FRAME_SIDE - 1;
    case SM_CYCAPTION: return FRAME_TOP - FRAME_SIDE + 1;
    default: return 0;
    }
}
