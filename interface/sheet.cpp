// The property sheet: three pages on one record, with the model's UI resource library loaded for
// as long as it is open.
#include "interface/sheet.h"

#include <array>
#include <string>

#include "base/module.h"
#include "base/printer.h"
#include "base/text.h"
#include "base/uilibrary.h"
#include "datafile/mw.h"
#include "dialogs/helpers.h"
#include "dialogs/pages.h"
#include "interface/opening.h"
#include "resources/main_ids.h"
#include "resources/paper_ids.h"
#include "resources/utility_ids.h"

static constexpr struct {
    WORD idTemplate, idIcon;
    DLGPROC proc;
} aPages[] = {
    {IDD_MAIN, IDI_MAIN, BasicUIDlgProc},
    {IDD_PAPER, IDI_PAPER, PaperUIDlgProc},
    {IDD_UTILITY, IDI_UTILITY, UtyUIDlgProc},
};

// One block each for the module, as UIInstance: they serve one sheet. A message box of the first
// one, or a maintenance function, can let a second call in.
static PROPSHEETHEADERA psh;
static std::array<PROPSHEETPAGEA, std::size(aPages)> psp;
static bool bSheetOpen;

// However a sheet ends, the next one may open, and nobody keeps the handle of its library.
struct OpenSheet {
    explicit OpenSheet(CBSTRUC *lpBlock) : lpcbstruc(lpBlock) { bSheetOpen = true; }
    ~OpenSheet()
    {
        lpcbstruc->hResLib = UIInstance.hResLib = nullptr;
        bSheetOpen = false;
    }
    OpenSheet(const OpenSheet &) = delete;
    OpenSheet &operator=(const OpenSheet &) = delete;
    CBSTRUC *lpcbstruc;
};

static void FillPages(HINSTANCE hInstance, CBSTRUC *lpcbstruc)
{
    for (size_t i = 0; i < psp.size(); ++i) {
        psp[i] = {};
        psp[i].dwSize = sizeof psp[i];
        psp[i].dwFlags = PSP_USEICONID | PSP_HASHELP;
        psp[i].hInstance = hInstance;
        psp[i].pszTemplate = MAKEINTRESOURCEA(aPages[i].idTemplate);
        psp[i].pszIcon = MAKEINTRESOURCEA(aPages[i].idIcon);
        psp[i].pfnDlgProc = aPages[i].proc;
        psp[i].lParam = reinterpret_cast<LPARAM>(lpcbstruc);
    }
}

static void FillHeader(HINSTANCE hInstance, HWND hWnd, LPCSTR lpCaption)
{
    psh = {};
    psh.dwSize = sizeof psh;
    psh.dwFlags = PSH_PROPSHEETPAGE | PSH_NOAPPLYNOW;
    psh.hwndParent = hWnd;
    psh.hInstance = hInstance;
    psh.pszCaption = lpCaption;
    psh.nPages = static_cast<UINT>(psp.size());
    psh.ppsp = psp.data();
}

// As the spooler calls the printer; where it doesn't say, as the record does.
static std::string Caption(const CBSTRUC &cbstruc)
{
    const auto info = PrinterInfo(cbstruc.hPrinter);
    return info && info->pPrinterName ? info->pPrinterName : AnsiDeviceName(cbstruc.lpDevMode);
}

static LONG ShowSheet(DriverDevMode *lpDM, HINSTANCE hInstance, HWND hWnd, CBSTRUC *lpcbstruc)
{
    UIInstance = {};
    lpcbstruc->lpDevMode = lpDM;
    lpcbstruc->lpInstance = &UIInstance;
    InitCommonControls();
    const LibraryPtr library = LoadUILibrary(AnsiModelName(lpDM).c_str(), lpcbstruc->hPrinter);
    if (!library || !HasSettings(*lpDM))
        return -1;
    lpcbstruc->hResLib = UIInstance.hResLib = library.get();
    FillPages(hInstance, lpcbstruc);
    const std::string strCaption = Caption(*lpcbstruc);
    FillHeader(hInstance, hWnd, strCaption.c_str());
    Enable3dCtl();
    const auto lResult = static_cast<LONG>(PropertySheetA(&psh));
    Disable3dCtl();
    return lResult == 0 ? IDCANCEL : lResult;
}

LONG UIEnterDevMode(DriverDevMode *lpDM, HINSTANCE hInstance, HWND hWnd, LONG, CBSTRUC *lpcbstruc)
{
    if (bSheetOpen)
        return -1;
    const OpenSheet open(lpcbstruc);
    return ShowSheet(lpDM, hInstance, hWnd, lpcbstruc);
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
