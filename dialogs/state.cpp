// A dialog's way to the state of its sheet: the block's address is the window's own value.
#include <cstdlib>
#include <string>

#include "dialogs/helpers.h"

void SetCB(HWND hDlg, CBSTRUC *lpcbstruc)
{
    SetWindowLongPtrA(hDlg, DWLP_USER, reinterpret_cast<LONG_PTR>(lpcbstruc));
}

CBSTRUC *FindCB(HWND hDlg)
{
    return reinterpret_cast<CBSTRUC *>(GetWindowLongPtrA(hDlg, DWLP_USER));
}

[[noreturn]] static void Stop(LPCSTR lpExpression, LPCSTR lpFile)
{
    // The box paints the windows behind it, which may come here again.
    static bool bStopping;
    if (!bStopping) {
        bStopping = true;
        const std::string strText =
            std::string("Assertion failed: ") + lpExpression + ", file " + lpFile;
        MessageBoxA(nullptr, strText.c_str(), "Dlg DLL Message", MB_OK | MB_ICONEXCLAMATION);
    }
    std::abort();
}

CBSTRUC *RequireCB(HWND hDlg, LPCSTR lpFile)
{
    CBSTRUC *lpcbstruc = FindCB(hDlg);
    if (!lpcbstruc)
        Stop("lpcbstruc", lpFile);
    return lpcbstruc;
}

void RequireOrientation(const DriverDevMode *lpDM, LPCSTR lpFile)
{
    if (lpDM->dm.dmOrientation == 0)
        Stop("lpdi->dmOrientation", lpFile);
}

CBSTRUC *CBOfPage(LPARAM lParam)
{
    return reinterpret_cast<CBSTRUC *>(reinterpret_cast<const PROPSHEETPAGEA *>(lParam)->lParam);
}
