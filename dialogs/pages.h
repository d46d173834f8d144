// The sheet's pages and the dialogs that they open. Each is a dialog procedure whose WM_INITDIALOG
// brings the sheet's block: a page's as its application value, a dialog's as its parameter.
#ifndef KV_DIALOGS_PAGES_H
#define KV_DIALOGS_PAGES_H

#include "platform/win32.h"

INT_PTR CALLBACK BasicUIDlgProc(HWND hDlg, UINT uMsg, WPARAM wParam, LPARAM lParam); // Main
INT_PTR CALLBACK PaperUIDlgProc(HWND hDlg, UINT uMsg, WPARAM wParam, LPARAM lParam);
INT_PTR CALLBACK UtyUIDlgProc(HWND hDlg, UINT uMsg, WPARAM wParam, LPARAM lParam);

// User-defined paper size. Ends with the position of the saved size that was chosen, or -1.
INT_PTR CALLBACK UserDlgProc(HWND hDlg, UINT uMsg, WPARAM wParam, LPARAM lParam);
// Save Settings. Ends with 1 when a setting was saved or the current one deleted, else with 0.
INT_PTR CALLBACK SaveDlgProc(HWND hDlg, UINT uMsg, WPARAM wParam, LPARAM lParam);
// More Settings. Ends with 1 after OK, 0 after Cancel.
INT_PTR CALLBACK DetailDlgProc(HWND hDlg, UINT uMsg, WPARAM wParam, LPARAM lParam);
// About: its parameter is the record, and it needs none.
INT_PTR CALLBACK AboutDlgProc(HWND hDlg, UINT uMsg, WPARAM wParam, LPARAM lParam);

#endif
