// The property sheet. This build has no windows: a sheet gets its blocks and its library and is
// then refused with -1, as any sheet that cannot be shown.
#include "interface/sheet.h"

#include "base/module.h"
#include "base/text.h"
#include "base/uilibrary.h"
#include "datafile/mw.h"

// UIInstance serves one sheet; a message box of the first one lets a second call in.
static bool bSheetOpen;

static LONG ShowSheet(DriverDevMode *lpDM, CBSTRUC *lpcbstruc)
{
    UIInstance = {};
    lpcbstruc->lpDevMode = lpDM;
    lpcbstruc->lpInstance = &UIInstance;
    const LibraryPtr library = LoadUILibrary(AnsiModelName(lpDM).c_str(), lpcbstruc->hPrinter);
    lpcbstruc->hResLib = UIInstance.hResLib = library.get();
    return -1;
}

LONG UIEnterDevMode(DriverDevMode *lpDM, HINSTANCE, HWND, LONG, CBSTRUC *lpcbstruc)
{
    if (bSheetOpen)
        return -1;
    bSheetOpen = true;
    const LONG lResult = ShowSheet(lpDM, lpcbstruc);
    bSheetOpen = false;
    return lResult;
}

LONG RunSheet(DriverDevMode *lpDM, HWND hWnd, HANDLE hPrinter)
{
    CBSTRUC cbstruc{};
    cbstruc.lpDevMode = lpDM;
    cbstruc.hPrinter = hPrinter;
    const LONG lResult = UIEnterDevMode(lpDM, hModule, hWnd, 0, &cbstruc);
    GetMWData(lpDM);
    return lResult;
}

LONG KVDoAdvancedDialog(HWND hWnd, const AdvancedDialogBlock *lpBlock)
{
    return lpBlock ? RunSheet(lpBlock->lpDevMode, hWnd, lpBlock->hPrinter) : -1;
}
