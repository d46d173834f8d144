// What the sources of the user-defined paper size dialog share.
#ifndef KV_DIALOGS_DIAL_PAP_SIZE_H
#define KV_DIALOGS_DIAL_PAP_SIZE_H

#include <string>

#include "datafile/instance.h"

// ---- dial_pap_size.cpp: the dialog, its size and its unit ---------------------------------------

// What the model calls the user-defined paper; as a name it stands for the size that is shown.
std::string UserDefinedName(const CBSTRUC *lpcbstruc);
// Of a field's text only the first five characters count, where it is read as text: for a saved
// size, and for OK without a selection.
LONG NumberOfText(HWND hDlg, int id);
// Whether this change of a field is the dialog's own, which it has announced.
bool SwallowsChange(UIINSTANCE *lpInstance);
void EnableSizeButtons(HWND hDlg, bool bSave, bool bDelete);
// The dialog goes back to the user-defined size, whose numbers stay.
void ShowUserDefined(HWND hDlg, const CBSTRUC *lpcbstruc);

// ---- dial_pap_size_saved.cpp: the list, names, saving and deleting ------------------------------

// The list's entries: the user-defined size, then the saved ones. -1: none is selected.
void SelectSize(HWND hDlg, LRESULT nEntry);
LRESULT SelectedSize(HWND hDlg);
void FillSizes(HWND hDlg, const CBSTRUC *lpcbstruc);
// Commands.
void OnSizeName(HWND hDlg, CBSTRUC *lpcbstruc, WORD id, WORD wCode);
void OnSaveSize(HWND hDlg, CBSTRUC *lpcbstruc, WORD id, WORD wCode);
void OnDeleteSize(HWND hDlg, CBSTRUC *lpcbstruc, WORD id, WORD wCode);

#endif
