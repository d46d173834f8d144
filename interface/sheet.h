// The property sheet, as the entry points see it.
#ifndef KV_INTERFACE_SHEET_H
#define KV_INTERFACE_SHEET_H

#include "datafile/instance.h"

// What DrvAdvancedDocumentProperties hands on.
struct AdvancedDialogBlock {
    DriverDevMode *lpDevMode; // edited in place
    HGLOBAL lpPrinterRecord;
    LPCWSTR lpDeviceName; // as the caller passed it
    HANDLE hPrinter;
};

// All of these: 1 after OK, 2 after Cancel, -1 when no sheet could be shown.

// The sheet on a record, which it edits in place. Fills the block's lpDevMode, lpInstance and
// hResLib; the last is valid while the sheet runs. Tells the user when the model's UI resource
// library is missing. One sheet at a time: a second one is refused.
LONG UIEnterDevMode(DriverDevMode *lpDM, HINSTANCE hInstance, HWND hWnd, LONG lReserved,
                    CBSTRUC *lpcbstruc);
// The sheet, then the record's MW data for what it holds now, whatever the result.
LONG RunSheet(DriverDevMode *lpDM, HWND hWnd, HANDLE hPrinter);
// The same for a block; -1 without one.
LONG KVDoAdvancedDialog(HWND hWnd, const AdvancedDialogBlock *lpBlock);

#endif
