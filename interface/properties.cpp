// The settings of a document and the properties of a printer. A caller's records may lie at any
// address, and its input record may be shorter than ours.
#include <algorithm>

#include "base/module.h"
#include "base/printer.h"
#include "base/text.h"
#include "base/uilibrary.h"
#include "interface/entry.h"
#include "interface/opening.h"
#include "interface/sheet.h"
#include "settings/merge.h"

// A model's message, in its UI resource library.
static constexpr UINT IDS_PROPERTIES_FIRST = 6900, IDS_PROPERTIES_LAST = 6905;

// The sheet works on a copy: what is not confirmed leaves the settings as they were.
static LONG Prompt(DriverDevMode *lpDM, HWND hWnd, HANDLE hPrinter)
{
    DriverDevMode edit = *lpDM;
    const LONG lResult = RunSheet(&edit, hWnd, hPrinter);
    if (lResult == IDOK)
        *lpDM = edit;
    return lResult;
}

static LONG DocumentProperties(HWND hWnd, HANDLE hPrinter, DriverDevMode *lpOut,
                               const DriverDevMode *lpIn, DWORD dwFlags)
{
    if (dwFlags == 0)
        return KV_DEVMODESIZE;
    if ((dwFlags & DM_COPY) && !lpOut) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return -1;
    }
    OpenedPrinter printer;
    const Opening opened = OpenSettings(hPrinter, &printer);
    if (opened != Opening::Done)
        return opened == Opening::NoModel ? 0 : -1;
    // An input record is merged whatever the flags say: callers leave DM_MODIFY out.
    if (lpIn)
        KVMergeDevMode(&printer.dm, lpIn, printer.printerRecord.get(), hPrinter);
    const LONG lResult = dwFlags & DM_PROMPT ? Prompt(&printer.dm, hWnd, hPrinter) : IDOK;
    // After Cancel too, and without DM_COPY: whoever gives a record gets the settings.
    if (lResult >= 0 && lpOut)
        KVMemcpy(lpOut, &printer.dm, KV_DEVMODESIZE);
    return lResult;
}

LONG WINAPI DrvDocumentProperties(HWND hWnd, HANDLE hPrinter, LPWSTR, DriverDevMode *lpOut,
                                  DriverDevMode *lpIn, DWORD dwFlags)
{
    return Guarded(LONG{-1},
                   [=] { return DocumentProperties(hWnd, hPrinter, lpOut, lpIn, dwFlags); });
}

// The caller gets its own settings back, as many of its bytes as it has and a record holds.
static void ReturnInput(DriverDevMode *lpOut, const DriverDevMode *lpIn)
{
    const int cbIn = lpIn->dm.dmSize + lpIn->dm.dmDriverExtra;
    KVMemcpy(lpOut, lpIn, static_cast<size_t>(std::min(cbIn, KV_DEVMODESIZE)));
}

static LONG AdvancedProperties(HWND hWnd, HANDLE hPrinter, LPCWSTR lpDeviceName,
                               DriverDevMode *lpOut, const DriverDevMode *lpIn)
{
    if (!lpOut) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    OpenedPrinter printer;
    const Opening opened = OpenSettings(hPrinter, &printer);
    // Without settings the sheet starts from what the defaults left.
    if (opened != Opening::Done && opened != Opening::NoSettings)
        return -1;
    KVMergeDevMode(&printer.dm, lpIn, printer.printerRecord.get(), hPrinter);
    const AdvancedDialogBlock block = {&printer.dm, printer.printerRecord.get(), lpDeviceName,
                                       hPrinter};
    const LONG lResult = KVDoAdvancedDialog(hWnd, &block);
    if (lResult == IDOK)
        KVMemcpy(lpOut, &printer.dm, KV_DEVMODESIZE);
    else if (lpIn)
        ReturnInput(lpOut, lpIn);
    return lResult;
}

LONG WINAPI DrvAdvancedDocumentProperties(HWND hWnd, HANDLE hPrinter, LPWSTR lpDeviceName,
                                          DriverDevMode *lpOut, DriverDevMode *lpIn)
{
    return Guarded(LONG{-1},
                   [=] { return AdvancedProperties(hWnd, hPrinter, lpDeviceName, lpOut, lpIn); });
}

// Whatever record is stored, the printer's own model is the one that speaks: a stored one may
// carry the name of another.
static void ShowModelMessage(LPCSTR lpModel, HANDLE hPrinter)
{
    LibraryPtr library = LoadUILibrary(lpModel, hPrinter);
    if (!library)
        return;
    const std::string strText =
        JoinStrings(library.get(), IDS_PROPERTIES_FIRST, IDS_PROPERTIES_LAST);
    library.reset();
    MessageBoxA(nullptr, strText.c_str(), lpModel, MB_OK | MB_ICONEXCLAMATION);
}

static BOOL Properties(HANDLE hPrinter)
{
    OpenedPrinter printer;
    if (OpenModel(hPrinter, &printer) != Opening::Done)
        return FALSE;
    DriverDevMode stored;
    if (!KVGetPrinterData(hPrinter, &stored)) {
        KVGetDefDevmode(&printer.dm, printer.printerRecord.get(), hPrinter);
        if (HasSettings(printer.dm))
            KVSetPrinterData(hPrinter, &printer.dm);
    }
    ShowModelMessage(printer.ansiModel.get(), hPrinter);
    return FALSE;
}

BOOL WINAPI PrinterProperties(HWND, HANDLE hPrinter)
{
    return Guarded(FALSE, [=] { return Properties(hPrinter); });
}
