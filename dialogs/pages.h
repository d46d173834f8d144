// The sheet's pages, as the sheet sees them: each is a dialog procedure, whose WM_INITDIALOG brings
// the sheet's block as the page's application value.
#ifndef KV_DIALOGS_PAGES_H
#define KV_DIALOGS_PAGES_H

#include "platform/win32.h"

INT_PTR CALLBACK BasicUIDlgProc(HWND hDlg, UINT uMsg, WPARAM wParam, LPARAM lParam); // Main
INT_PTR CALLBACK PaperUIDlgProc(HWND hDlg, UINT uMsg, WPARAM wParam, LPARAM lParam);
INT_PTR CALLBACK UtyUIDlgProc(HWND hDlg, UINT uMsg, WPARAM wParam, LPARAM lParam);

#endif
