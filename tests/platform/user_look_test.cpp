// How sample dialogs look: painted, in two languages. With KV_LOOK set to a folder the screens are
// written there, for people to look at.
#include <cstdlib>

#include "platform/win32.h"
#include "tests/platform/user_fixture.h"

class UserLook : public UserTest
{
  protected:
    void Save(const std::string &name)
    {
        if (const char *folder = std::getenv("KV_LOOK"))
            kvp::SaveScreen(std::string(folder) + "/" + name + ".png");
    }
    std::function<void()> Saved(std::string name)
    {
        return [this, name] { Save(name); };
    }
    void FillPages()
    {
        const int id = GetDlgCtrlID(hDlg);
        if (id == IDD_FIRST) {
            Fill(IDC_LIST,
                 {"Standard", "Fine", "Photo \x93\xFA\x96\x7B", "Draft", "My own setting"});
            Send(IDC_LIST, CB_SETCURSEL, 1);
            SetDlgItemInt(hDlg, IDC_NUMBER, 1, TRUE);
            CheckRadioButton(hDlg, IDC_AUTO, IDC_MANUAL, IDC_MANUAL);
            CheckRadioButton(hDlg, IDC_COLOR, IDC_BLACK, IDC_COLOR);
            CheckDlgButton(hDlg, IDC_MIRROR, BST_CHECKED);
            HWND bar = CreateWindowExA(
                0, "msctls_trackbar32", "", WS_CHILD | WS_VISIBLE | WS_TABSTOP | TBS_AUTOTICKS, 165,
                160, 150, 30, hDlg, reinterpret_cast<HMENU>(IDC_TRACK), hSample, nullptr);
            SendMessageA(bar, TBM_SETRANGE, TRUE, MAKELONG(1, 10));
            SendMessageA(bar, TBM_SETPOS, TRUE, 4);
        } else if (id == IDD_SECOND) {
            Fill(IDC_PLAINLIST, {"A4", "Letter", "Legal"});
            for (const char *name : {"one", "two", "three", "four", "five"}) {
                Send(IDC_NAMES, LB_INSERTSTRING, static_cast<WPARAM>(-1),
                     reinterpret_cast<LPARAM>(name));
            }
            Send(IDC_NAMES, LB_SETCURSEL, 2);
            SetText(IDC_TEXT, "Typed text");
            SetText(IDC_READONLY, "Read only");
        }
    }
};

static INT_PTR DrawListItem(const DRAWITEMSTRUCT &item)
{
    const bool selected = item.itemState & ODS_SELECTED;
    SetTextColor(item.hDC, GetSysColor(selected ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
    SetBkColor(item.hDC, GetSysColor(selected ? COLOR_HIGHLIGHT : COLOR_WINDOW));
    char szText[64] = "";
    if (item.itemID != static_cast<UINT>(-1))
        SendMessageA(item.hwndItem, CB_GETLBTEXT, item.itemID, reinterpret_cast<LPARAM>(szText));
    ExtTextOutA(item.hDC, 2, (item.rcItem.top + item.rcItem.bottom - 13) / 2,
                ETO_OPAQUE | ETO_CLIPPED, &item.rcItem, szText,
                static_cast<UINT>(std::string(szText).size()), nullptr);
    return TRUE;
}

TEST_F(UserLook, EveryControlInBothLanguages)
{
    HBRUSH grey = CreateSolidBrush(RGB(192, 192, 192));
    onInit = [this] { FillPages(); };
    onMessage = [&](HWND, UINT uMsg, WPARAM wParam, LPARAM lParam) -> std::optional<INT_PTR> {
        switch (uMsg) {
        case WM_CTLCOLORDLG:
        case WM_CTLCOLORSTATIC:
        case WM_CTLCOLORBTN:
            SetBkMode(reinterpret_cast<HDC>(wParam), TRANSPARENT);
            return reinterpret_cast<INT_PTR>(grey);
        case WM_DRAWITEM: {
            const auto &item = *reinterpret_cast<DRAWITEMSTRUCT *>(lParam);
            if (item.CtlType == ODT_COMBOBOX)
                return DrawListItem(item);
            HBITMAP bitmap = LoadBitmapA(hSample, MAKEINTRESOURCEA(IDB_TRUE));
            HDC memory = CreateCompatibleDC(item.hDC);
            SelectObject(memory, bitmap);
            StretchBlt(item.hDC, 0, 0, item.rcItem.right, item.rcItem.bottom, memory, 0, 0, 6, 5,
                       SRCCOPY);
            DeleteDC(memory);
            DeleteObject(bitmap);
            FrameRect(item.hDC, &item.rcItem, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
            return TRUE;
        }
        }
        return std::nullopt;
    };
    machine.uAnsiCodePage = 932;
    for (const auto &[language, name] :
         {std::pair<LANGID, const char *>{0x0409, "en"}, {0x0411, "ja"}}) {
        machine.wLang = language;
        Apply();
        const std::string prefix = name;
        Person({Saved(prefix + "_main"), "drop 206", Saved(prefix + "_drop"), "close 206",
                [this] {
                    MessageBoxA(hDlg,
                                "The setting cannot be saved, because every place is "
                                "taken. Delete one first, then try again.",
                                "Save", MB_OKCANCEL | MB_ICONEXCLAMATION);
                },
                Saved(prefix + "_box"), "box cancel", Saved(prefix + "_after"), "cancel"});
        EXPECT_EQ(Sheet(), 0);
    }
    DeleteObject(grey);
}
