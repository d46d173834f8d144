// What the sources of the Paper page share. All of it works on the page's window and on the record
// that the sheet edits; tables are reached through the window.
#ifndef KV_DIALOGS_DIAL_PAP_H
#define KV_DIALOGS_DIAL_PAP_H

#include <string>

#include "datafile/instance.h"

// ---- dial_pap.cpp: the page itself ------------------------------------------------------------

CBSTRUC *GetPaperCB(HWND hDlg);
const DatFile &TablesOf(HWND hDlg);
// Applies the rules of the current source to the collate box and the printable-area buttons.
void CheckBin(HWND hDlg, DriverDevMode *lpDM);

// ---- dial_pap_list.cpp: papers and sources ----------------------------------------------------

// What the model calls a paper; empty when its library has no text of this number.
std::string PaperName(HWND hDlg, const PaperRecord &paper);
// Refills the list of papers for the current source and selects the current paper.
void UpdatePaperSize(HWND hDlg, DriverDevMode *lpDM);
// Fills the list of sources; a model with a single one shows neither list nor label.
void FillSources(HWND hDlg, const DriverDevMode *lpDM);
// Commands of the two lists.
INT_PTR OnPaperList(HWND hDlg, DriverDevMode *lpDM, WORD wCode);
INT_PTR OnSourceList(HWND hDlg, DriverDevMode *lpDM, WORD wCode);

// ---- dial_pap_draw.cpp: what the page draws -----------------------------------------------------

// The preview of the current choice into its frame, at once. Also paints the page's background
// where it is invalid. A page that stands on a saved size while none is left falls back on the
// user-defined paper.
void SetPaperBmp(HWND hDlg, DriverDevMode *lpDM);
// After every change of the copies' settings. There is no picture of them to draw.
void SetPaperCopyBmp(HWND hDlg, const DriverDevMode *lpDM);
void DrawPaperSize(HWND hDlg, const DRAWITEMSTRUCT &item, const DriverDevMode *lpDM);
void DrawPaperControl(HWND hDlg, const DRAWITEMSTRUCT &item, const DriverDevMode *lpDM);

#endif
