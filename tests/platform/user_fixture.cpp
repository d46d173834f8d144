#include "tests/platform/user_fixture.h"
#include "platform/served.h"

#include <algorithm>

static UserTest *current;

UserTest::UserTest()
{
    current = this;
    machine.wLang = 0x0409;
    Apply();
    kvp::SetBoxHandler(nullptr);
    hSample = kvp::LoadHostLibrary(KV_USER_SAMPLE);
}

UserTest::~UserTest()
{
    kvp::SetInputSource(nullptr);
    FreeLibrary(hSample);
    const kvp::GuiHeld held = kvp::CurrentlyHeldGui();
    EXPECT_EQ(held.nContexts, 0u);
    EXPECT_EQ(held.nObjects, 0u);
    current = nullptr;
}

void UserTest::Person(std::vector<Step> steps)
{
    person.Will(std::move(steps));
}

void UserTest::CheckPlay()
{
    if (bPlayFails)
        EXPECT_TRUE(kvp::CurrentPlay().bFailed);
    else
        person.ExpectDone();
}

INT_PTR UserTest::Dialog(int id)
{
    const INT_PTR result =
        DialogBoxParamA(hSample, MAKEINTRESOURCEA(id), nullptr, Procedure, 0x1234);
    CheckPlay();
    return result;
}

INT_PTR UserTest::Sheet()
{
    static constexpr int aTemplates[] = {IDD_FIRST, IDD_SECOND, IDD_THIRD};
    PROPSHEETPAGEA pages[3]{};
    for (int i = 0; i < 3; ++i) {
        pages[i].dwSize = sizeof pages[i];
        pages[i].dwFlags = PSP_USEICONID | PSP_HASHELP;
        pages[i].hInstance = hSample;
        pages[i].pszTemplate = MAKEINTRESOURCEA(aTemplates[i]);
        pages[i].pszIcon = MAKEINTRESOURCEA(IDI_TAB);
        pages[i].pfnDlgProc = Procedure;
        pages[i].lParam = 1000 + i;
    }
    PROPSHEETHEADERA header{};
    header.dwSize = sizeof header;
    header.dwFlags = PSH_PROPSHEETPAGE | PSH_NOAPPLYNOW;
    header.hInstance = hSample;
    header.pszCaption = "KORVA 500";
    header.nPages = 3;
    header.ppsp = pages;
    const INT_PTR result = PropertySheetA(&header);
    CheckPlay();
    return result;
}

INT_PTR CALLBACK UserTest::Procedure(HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM lParam)
{
    return current ? current->Handle(hWnd, uMsg, wParam, lParam) : FALSE;
}

static const char *NameOf(const std::map<int, const char *> &names, int number)
{
    const auto found = names.find(number);
    return found == names.end() ? "?" : found->second;
}

// "206 SELENDOK", "PSN_APPLY 100", "HSCROLL 214 5/7", "DRAW 212 entire focus".
void UserTest::Log(HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM lParam)
{
    static const std::map<int, const char *> combo{
        {CBN_SELCHANGE, "SELCHANGE"},       {CBN_DROPDOWN, "DROPDOWN"},
        {CBN_CLOSEUP, "CLOSEUP"},           {CBN_SELENDOK, "SELENDOK"},
        {CBN_SELENDCANCEL, "SELENDCANCEL"}, {EN_CHANGE, "CHANGE"},
        {EN_KILLFOCUS, "KILLFOCUS"},        {BN_CLICKED, "CLICKED"}};
    static const std::map<int, const char *> notice{
        {static_cast<int>(PSN_SETACTIVE), "SETACTIVE"},
        {static_cast<int>(PSN_KILLACTIVE), "KILLACTIVE"},
        {static_cast<int>(PSN_APPLY), "APPLY"},
        {static_cast<int>(PSN_RESET), "RESET"},
        {static_cast<int>(PSN_HELP), "HELP"}};
    const std::string own = std::to_string(GetDlgCtrlID(hWnd));
    const std::string from = std::to_string(GetDlgCtrlID(reinterpret_cast<HWND>(lParam)));
    switch (uMsg) {
    case WM_COMMAND:
        log.push_back(std::to_string(LOWORD(wParam)) + " " + NameOf(combo, HIWORD(wParam)));
        break;
    case WM_NOTIFY:
        log.push_back(
            std::string(NameOf(notice, static_cast<int>(reinterpret_cast<NMHDR *>(lParam)->code))) +
            " " + own);
        break;
    case WM_HSCROLL:
    case WM_VSCROLL:
        log.push_back((uMsg == WM_HSCROLL ? "HSCROLL " : "VSCROLL ") + from + " " +
                      std::to_string(LOWORD(wParam)) + "/" + std::to_string(HIWORD(wParam)));
        break;
    case WM_INITDIALOG: log.push_back("INITDIALOG " + own); break;
    case WM_DESTROY: log.push_back("DESTROY " + own); break;
    case WM_MEASUREITEM: log.push_back("MEASURE " + std::to_string(wParam)); break;
    case WM_PAINT: log.push_back("PAINT " + own); break;
    case WM_DRAWITEM: {
        const auto *item = reinterpret_cast<DRAWITEMSTRUCT *>(lParam);
        log.push_back("DRAW " + std::to_string(wParam) +
                      (item->itemAction & ODA_DRAWENTIRE ? " entire" : "") +
                      (item->itemAction & ODA_SELECT ? " select" : "") +
                      (item->itemAction & ODA_FOCUS ? " focus" : "") +
                      (item->itemState & ODS_SELECTED ? " +selected" : "") +
                      (item->itemState & ODS_FOCUS ? " +focus" : "") +
                      (item->itemState & ODS_DISABLED ? " +disabled" : "") +
                      (item->itemState & ODS_COMBOBOXEDIT ? " +field" : ""));
        break;
    }
    case WM_HELP:
        log.push_back("HELP " + std::to_string(reinterpret_cast<HELPINFO *>(lParam)->iCtrlId));
        break;
    case WM_CONTEXTMENU:
        log.push_back("CONTEXTMENU " +
                      std::to_string(GetDlgCtrlID(reinterpret_cast<HWND>(wParam))));
        break;
    case WM_CTLCOLORDLG: log.push_back("COLORDLG"); break;
    case WM_CTLCOLORSTATIC: log.push_back("COLORSTATIC " + from); break;
    case WM_CTLCOLOREDIT: log.push_back("COLOREDIT " + from); break;
    case WM_CTLCOLORBTN: log.push_back("COLORBTN " + from); break;
    case WM_CTLCOLORLISTBOX: log.push_back("COLORLISTBOX " + from); break;
    }
}

INT_PTR UserTest::Handle(HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM lParam)
{
    Log(hWnd, uMsg, wParam, lParam);
    if (uMsg == WM_INITDIALOG) {
        hDlg = hWnd;
        page[std::to_string(GetDlgCtrlID(hWnd))] = hWnd;
    }
    if (onMessage)
        if (const auto result = onMessage(hWnd, uMsg, wParam, lParam))
            return *result;
    switch (uMsg) {
    case WM_INITDIALOG:
        if (onInit)
            onInit();
        return TRUE;
    case WM_COMMAND:
        if (LOWORD(wParam) != IDOK && LOWORD(wParam) != IDCANCEL)
            return FALSE;
        EndDialog(hWnd, LOWORD(wParam));
        return TRUE;
    }
    return FALSE;
}

std::vector<std::string> UserTest::Taken()
{
    return std::exchange(log, {});
}

std::vector<std::string> UserTest::Taken(std::vector<std::string> kinds)
{
    std::vector<std::string> taken = Taken();
    std::erase_if(taken, [&](const std::string &line) {
        return std::none_of(kinds.begin(), kinds.end(), [&](const std::string &kind) {
            return line.compare(0, kind.size(), kind) == 0;
        });
    });
    return taken;
}

std::string UserTest::TextOf(int id)
{
    char szText[256];
    GetDlgItemTextA(hDlg, id, szText, sizeof szText);
    return szText;
}

void UserTest::SetText(int id, const char *text)
{
    SetDlgItemTextA(hDlg, id, text);
}

LRESULT UserTest::Send(int id, UINT msg, WPARAM wParam, LPARAM lParam)
{
    return SendDlgItemMessageA(hDlg, id, msg, wParam, lParam);
}

void UserTest::Fill(int id, std::vector<const char *> texts)
{
    for (const char *text : texts)
        Send(id, CB_INSERTSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(text));
}

COLORREF UserTest::PixelIn(int id, int x, int y)
{
    RECT rc;
    GetWindowRect(Item(id), &rc);
    return kvp::ScreenPixel(rc.left + x, rc.top + y);
}
