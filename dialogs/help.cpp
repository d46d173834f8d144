// Context help: which topic belongs to which control, and how the help engine is asked.
#include <memory>
#include <string>

#include "base/modeltable.h"
#include "base/printer.h"
#include "base/text.h"
#include "dialogs/helpers.h"

void GetHelpPathEx(LPSTR lpPath, LPCWSTR lpModel, HANDLE hPrinter)
{
    const std::unique_ptr<char, ReleaseWith<PostUnicodeToShiftJIS>> model(
        PreUnicodeToShiftJIS(lpModel));
    const LocalPtr<char> directory(GetPrinterDriverPath(hPrinter));
    const std::string strPath = (directory ? directory.get() : std::string()) +
                                Get_HelpName(model ? model.get() : "") + ".HLP";
    lpPath[strPath.copy(lpPath, MAX_PATH - 1)] = '\0';
}

// What the engine is asked for by a message.
static void AskEngine(HWND hDlg, LPCSTR lpPath, const HELPID *lpTable, UINT uMsg, LPARAM lParam)
{
    const auto dwTable = reinterpret_cast<ULONG_PTR>(lpTable);
    switch (uMsg) {
    case WM_HELP: {
        const auto *lpInfo = reinterpret_cast<const HELPINFO *>(lParam);
        WinHelpA(static_cast<HWND>(lpInfo->hItemHandle), lpPath, HELP_WM_HELP, dwTable);
        break;
    }
    case WM_CONTEXTMENU: WinHelpA(hDlg, lpPath, HELP_CONTEXTMENU, dwTable); break;
    default: WinHelpA(hDlg, lpPath, HELP_CONTEXT, lpTable->dwContext);
    }
}

void ShowHelp(HWND hDlg, const CBSTRUC *lpcbstruc, const HELPID *lpTable, UINT uMsg, LPARAM lParam)
{
    // A terminated copy: the record may lie at an odd address and its name may fill its field.
    WCHAR wszModel[std::extent_v<decltype(DriverDevMode::wszModelName)> + 1] = u"";
    KVMemcpy(wszModel, lpcbstruc->lpDevMode->wszModelName, sizeof(DriverDevMode::wszModelName));
    char szPath[MAX_PATH];
    GetHelpPathEx(szPath, wszModel, lpcbstruc->hPrinter);
    AskEngine(hDlg, szPath, lpTable, uMsg, lParam);
}
