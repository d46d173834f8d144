// The Main page: how print quality is set, and what the settings amount to.
#include "dialogs/helpers.h"
#include "dialogs/pages.h"
#include "resources/main_ids.h"

static HBRUSH hBrush; // of the page

static CBSTRUC *GetCB(HWND hDlg)
{
    return RequireCB(hDlg, "dial_bas");
}

static INT_PTR OnInitDialog(HWND hDlg, LPARAM lParam)
{
    SetCB(hDlg, CBOfPage(lParam));
    return TRUE;
}

static INT_PTR OnNotify(HWND hDlg, LPARAM lParam)
{
    switch (reinterpret_cast<const NMHDR *>(lParam)->code) {
    case PSN_SETACTIVE: GetCB(hDlg)->lpInstance->bButtonDown = 0; return TRUE;
    case PSN_KILLACTIVE:
    case PSN_RESET: return FALSE;
    case PSN_HELP: ShowHelp(hDlg, GetCB(hDlg), BasicDlgHelpIDs, WM_NOTIFY, lParam); return TRUE;
    default: return TRUE;
    }
}

INT_PTR CALLBACK BasicUIDlgProc(HWND hDlg, UINT uMsg, WPARAM wParam, LPARAM lParam)
{
    switch (uMsg) { // these need no state
    case WM_INITDIALOG: return OnInitDialog(hDlg, lParam);
    case WM_PAINT: return PaintNothing(hDlg);
    case WM_MEASUREITEM: return MeasureItem(hDlg, lParam, {IDC_MAIN_SETTINGS, IDC_MAIN_MEDIA});
    case WM_SYSCOLORCHANGE: Change3dColor(); [[fallthrough]];
    case WM_DESTROY:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLORDLG:
    case WM_CTLCOLORSTATIC: return ChangeBackColor(&hBrush, uMsg, wParam, lParam);
    default: break;
    }
    if (!FindCB(hDlg)) // before WM_INITDIALOG
        return FALSE;
    switch (uMsg) {
    case WM_HELP:
    case WM_CONTEXTMENU: ShowHelp(hDlg, GetCB(hDlg), BasicDlgHelpIDs, uMsg, lParam); return TRUE;
    case WM_NOTIFY: return OnNotify(hDlg, lParam);
    default: return FALSE;
    }
}
