// Names that a user types for what he saves.
#include "dialogs/helpers.h"

std::string DlgItemText(HWND hDlg, int id)
{
    char szText[256] = "";
    GetDlgItemTextA(hDlg, id, szText, sizeof szText);
    return szText;
}

bool IsBlank(const std::string &strText)
{
    return strText.find_first_not_of(" \t") == std::string::npos;
}

static bool IsLeadByte(char c)
{
    const auto b = static_cast<BYTE>(c);
    return (b >= 0x81 && b <= 0x9F) || (b >= 0xE0 && b <= 0xFC);
}

bool CutName(std::string *lpName, size_t cbMost)
{
    if (lpName->size() <= cbMost)
        return false;
    size_t cb = 0;
    while (cb < cbMost) {
        const size_t cbNext = cb + (IsLeadByte((*lpName)[cb]) ? 2 : 1);
        if (cbNext > cbMost)
            break;
        cb = cbNext;
    }
    lpName->resize(cb);
    return true;
}

void PutCutName(HWND hDlg, int id, const std::string &strName)
{
    SetDlgItemTextA(hDlg, id, strName.c_str());
    const auto nEnd = static_cast<LPARAM>(strName.size());
    SendDlgItemMessageA(hDlg, id, EM_SETSEL, strName.size(), nEnd);
}
