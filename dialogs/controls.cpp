// Small things about controls that more than one dialog needs.
#include <algorithm>

#include "base/module.h"
#include "dialogs/helpers.h"

HWND CreateSlideTrackBar(HWND hParent, int x, int y, int nWidth, int nHeight, int id)
{
    return CreateWindowExA(0, "msctls_trackbar32", "",
                           WS_CHILD | WS_VISIBLE | WS_TABSTOP | TBS_AUTOTICKS | TBS_ENABLESELRANGE,
                           x, y, nWidth, nHeight, hParent,
                           reinterpret_cast<HMENU>(static_cast<ULONG_PTR>(id)), hModule, nullptr);
}

void EnableControl(HWND hDlg, int id, bool bEnable)
{
    EnableWindow(GetDlgItem(hDlg, id), bEnable);
}

void CheckBox(HWND hDlg, int id, bool bOn)
{
    CheckDlgButton(hDlg, id, bOn ? BST_CHECKED : BST_UNCHECKED);
}

void RedrawControl(HWND hDlg, int id)
{
    InvalidateRect(GetDlgItem(hDlg, id), nullptr, TRUE);
}

int GetTextHeight(HWND hWnd)
{
    TEXTMETRICA tm{};
    HDC hdc = GetDC(hWnd);
    GetTextMetricsA(hdc, &tm);
    ReleaseDC(hWnd, hdc);
    return tm.tmHeight;
}

BOOL SetStaticText(HINSTANCE hLibrary, HWND hDlg, int idControl, UINT idText)
{
    return SetDlgItemTextA(hDlg, idControl, LoadText(hLibrary, idText).c_str());
}

std::string LoadText(HMODULE hResLib, UINT idText)
{
    return JoinStrings(hResLib, idText, idText);
}

int AskUser(HWND hDlg, HMODULE hResLib, UINT idText, UINT idCaption, UINT uButtons)
{
    return MessageBoxA(hDlg, LoadText(hResLib, idText).c_str(),
                       LoadText(hResLib, idCaption).c_str(), uButtons);
}

std::optional<INT_PTR> AnswerColors(HBRUSH *lphBrush, UINT uMsg, WPARAM wParam, LPARAM lParam)
{
    switch (uMsg) {
    case WM_SYSCOLORCHANGE: Change3dColor(); [[fallthrough]];
    case WM_DESTROY:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLORDLG:
    case WM_CTLCOLORSTATIC: return ChangeBackColor(lphBrush, uMsg, wParam, lParam);
    default: return std::nullopt;
    }
}

INT_PTR AnswerNotice(HWND hDlg, CBSTRUC *lpcbstruc, const HELPID *lpTable, LPARAM lParam,
                     INT_PTR (*Apply)(HWND hDlg, CBSTRUC *lpcbstruc))
{
    switch (reinterpret_cast<const NMHDR *>(lParam)->code) {
    case PSN_SETACTIVE: lpcbstruc->lpInstance->bButtonDown = 0; return TRUE;
    case PSN_KILLACTIVE:
    case PSN_RESET: return FALSE;
    case PSN_APPLY: return Apply(hDlg, lpcbstruc);
    case PSN_HELP: ShowHelp(hDlg, lpcbstruc, lpTable, WM_NOTIFY, lParam); return TRUE;
    default: return TRUE;
    }
}

INT_PTR PaintNothing(HWND hDlg)
{
    PAINTSTRUCT paint;
    BeginPaint(hDlg, &paint);
    EndPaint(hDlg, &paint);
    return TRUE;
}

INT_PTR MeasureItem(HWND hDlg, LPARAM lParam, std::initializer_list<UINT> aLists)
{
    auto *lpItem = reinterpret_cast<MEASUREITEMSTRUCT *>(lParam);
    if (std::ranges::find(aLists, lpItem->CtlID) != aLists.end())
        lpItem->itemHeight = static_cast<UINT>(GetTextHeight(hDlg));
    return TRUE;
}
