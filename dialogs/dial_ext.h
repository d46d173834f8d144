// What the files of the More Settings dialog share. The dialog edits the sheet's record in place;
// each function finds the sheet's state through the dialog and works on it and on the record that
// it is given.
#ifndef KV_DIALOGS_DIAL_EXT_H
#define KV_DIALOGS_DIAL_EXT_H

#include "datafile/instance.h"

CBSTRUC *GetDetailCB(HWND hDlg);

constexpr WORD FLAG3_KRJNL = 0x1; // Settings.wFlags3

// ---- lists and options (dial_ext_lists.cpp) ---------------------------------------------------

void SetResData(HWND hDlg, DriverDevMode *lpDM);
// The HT choices that the current rule allows; one that it does not gives way to the last of them.
void SetHTData(HWND hDlg, DriverDevMode *lpDM);
void SetHTBmp(HWND hDlg, DriverDevMode *lpDM);
void SetIntent(HWND hDlg, DriverDevMode *lpDM);
void SetColor(HWND hDlg, DriverDevMode *lpDM);
void FillInkOption(HWND hDlg, DriverDevMode *lpDM);
// bInitial: the dialog is being filled, so that codes which switch the option wait for a change.
void CheckHS(HWND hDlg, DriverDevMode *lpDM, bool bInitial);
void CheckFD(HWND hDlg, DriverDevMode *lpDM);
void CheckKRJNL(HWND hDlg, DriverDevMode *lpDM);

// ---- finding a resolution (dial_ext_search.cpp) -----------------------------------------------

// After a change of this list or check box: the resolution that fits it best becomes current, and
// what hangs on it follows.
void ChooseResolution(HWND hDlg, DriverDevMode *lpDM, WORD idChanged);
// After a change of ink: a resolution that has no rule for it gives way to one of the same name
// that has.
void ReselectResolution(HWND hDlg, DriverDevMode *lpDM);

// ---- colour adjustments (dial_ext_color.cpp) --------------------------------------------------

constexpr int ROWS = 6;
struct ColorRow {
    WORD idLabel, idField, idSign, idBar, idPlace;
};
extern const ColorRow aColorRows[ROWS];
// The row with this control; -1 for none.
int RowOf(int id, WORD ColorRow::*control);

constexpr WORD ROW_ENABLED = 1, ROW_NEGATIVE = 2, ROW_WRITING = 4; // UIINSTANCE.wAdjState

void CreateTrackbars(HWND hDlg);
void FillRows(HWND hDlg);

// What can be adjusted: everything, brightness and contrast, or only whether anything can.
constexpr int BALANCE_ALL = 0, BALANCE_BLACK = 2, BALANCE_NONE = 3;
constexpr BYTE INTENT_NONE = 3; // the colour intent that leaves nothing to adjust
void EnableColBalance(HWND hDlg, int nMode, DriverDevMode *lpDM);

void OnFieldChanged(HWND hDlg, int nRow);
void OnFieldLeft(HWND hDlg, int nRow);
void OnSign(HWND hDlg, int nRow);
void OnTrackbar(HWND hDlg, int nRow);
// No row keeps a minus without a number.
void DropMinuses(UIINSTANCE *lpInstance);

// ---- drawing (dial_ext_draw.cpp) --------------------------------------------------------------

void DrawDetailControl(HWND hDlg, const DRAWITEMSTRUCT &item, DriverDevMode *lpDM);

#endif
