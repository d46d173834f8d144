// About: the model's own dialog, which only wants to be closed.
#include "dialogs/pages.h"
#include "resources/about_ids.h"

INT_PTR CALLBACK AboutDlgProc(HWND hDlg, UINT uMsg, WPARAM wParam, LPARAM)
{
    if (uMsg == WM_INITDIALOG)
        return TRUE;
    const WORD id = LOWORD(wParam);
    if (uMsg != WM_COMMAND || (id != IDCANCEL && id != IDC_ABOUT_CLOSE))
        return FALSE;
    EndDialog(hDlg, TRUE);
    return TRUE;
}
