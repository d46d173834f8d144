// The module's instance handle and the messages that belong to no page.
#include "base/module.h"

#include "resources/ids.h"

HINSTANCE hModule;

std::string JoinStrings(HINSTANCE hLibrary, UINT uFirst, UINT uLast)
{
    std::string strText;
    for (UINT uID = uFirst; uID <= uLast; ++uID) {
        char szPart[256];
        const int cch = LoadStringA(hLibrary, uID, szPart, sizeof szPart);
        if (cch > 0)
            strText.append(szPart, static_cast<size_t>(cch));
    }
    return strText;
}

void InstallErrMsg()
{
    const std::string strText = JoinStrings(hModule, IDS_INSTALL_FIRST, IDS_INSTALL_LAST);
    MessageBoxA(nullptr, strText.c_str(), "KORVA", MB_OK | MB_ICONINFORMATION);
}

void Notify(LPCSTR lpText)
{
    MessageBoxA(nullptr, lpText, "Dlg DLL Message", MB_OK);
}

void NotifyFileNotFound(LPCSTR lpName)
{
    Notify((std::string("File not found : ") + lpName).c_str());
}
