#include "tests/platform/user_fixture.h"
#include "platform/served.h"

#include <map>
#include <regex>

#include <fmt/format.h>

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

INT_PTR UserTest::Play(std::optional<Steps> steps, const std::function<INT_PTR()> &run)
{
    if (!steps)
        return run();
    person.Will(std::move(*steps));
    const INT_PTR result = run();
    person.ExpectDone();
    return result;
}

INT_PTR UserTest::Dialog(int id, std::optional<Steps> steps)
{
    return Play(std::move(steps), [=, this] {
        return DialogBoxParamA(hSample, MAKEINTRESOURCEA(id), nullptr, Procedure, 0x1234);
    });
}

INT_PTR UserTest::Sheet(std::optional<Steps> steps)
{
    PROPSHEETPAGEA pages[3]{};
    for (int i = 0; i < 3; ++i) {
        pages[i].dwSize = sizeof pages[i];
        pages[i].dwFlags = PSP_USEICONID | PSP_HASHELP;
        pages[i].hInstance = hSample;
        pages[i].pszTemplate = MAKEINTRESOURCEA(IDD_FIRST + i);
        pages[i].pszIcon = MAKEINTRESOURCEA(IDI_TAB);
        pages[i].pfnDlgProc = Procedure;
        pages[i].lParam = 1000 + i;
    }
    PROPSHEETHEADERA header{};
    header.dwSize = sizeof header;
    header.dwFlags = PSH_PROPSHEETPAGE | PSH_NOAPPLYNOW;
    header.pszCaption = "KORVA 500";
    header.nPages = 3;
    header.ppsp = pages;
    return Play(std::move(steps), [&] { return PropertySheetA(&header); });
}

void UserTest::InDialog(Steps steps)
{
    steps.emplace_back("cancel");
    EXPECT_EQ(Dialog(IDD_PLAIN, std::move(steps)), IDCANCEL);
}

void UserTest::InSheet(Steps steps)
{
    steps.emplace_back("cancel");
    EXPECT_EQ(Sheet(std::move(steps)), 0);
}

INT_PTR CALLBACK UserTest::Procedure(HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM lParam)
{
    return current ? current->Handle(hWnd, uMsg, wParam, lParam) : FALSE;
}

#define NOTICE(prefix, name) std::pair(UINT{prefix##_##name}, #name)
static std::string NoticeName(UINT code)
{
    static const std::map<UINT, const char *> names{
        NOTICE(BN, CLICKED),     NOTICE(EN, CHANGE),        NOTICE(EN, KILLFOCUS),
        NOTICE(CBN, SELCHANGE),  NOTICE(CBN, DROPDOWN),     NOTICE(CBN, CLOSEUP),
        NOTICE(CBN, SELENDOK),   NOTICE(CBN, SELENDCANCEL), NOTICE(PSN, SETACTIVE),
        NOTICE(PSN, KILLACTIVE), NOTICE(PSN, APPLY),        NOTICE(PSN, RESET),
        NOTICE(PSN, HELP)};
    return names.contains(code) ? names.at(code) : "?";
}

static std::string DrawLine(const DRAWITEMSTRUCT &item)
{
    return fmt::format(
        "DRAW {}{}{}{}{}{}{}{}", item.CtlID, item.itemAction & ODA_DRAWENTIRE ? " entire" : "",
        item.itemAction & ODA_SELECT ? " select" : "", item.itemAction & ODA_FOCUS ? " focus" : "",
        item.itemState & ODS_SELECTED ? " +selected" : "",
        item.itemState & ODS_FOCUS ? " +focus" : "",
        item.itemState & ODS_DISABLED ? " +disabled" : "",
        item.itemState & ODS_COMBOBOXEDIT ? " +field" : "");
}

// "206 SELENDOK", "APPLY 100", "HSCROLL 214 5/7", "DRAW 212 entire focus"; nothing for the rest.
static std::string LineOf(HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM lParam)
{
    const int own = GetDlgCtrlID(hWnd), from = GetDlgCtrlID(reinterpret_cast<HWND>(lParam));
    switch (uMsg) {
    case WM_COMMAND: return fmt::format("{} {}", LOWORD(wParam), NoticeName(HIWORD(wParam)));
    case WM_NOTIFY:
        return fmt::format("{} {}", NoticeName(reinterpret_cast<NMHDR *>(lParam)->code), own);
    case WM_HSCROLL: return fmt::format("HSCROLL {} {}/{}", from, LOWORD(wParam), HIWORD(wParam));
    case WM_VSCROLL: return fmt::format("VSCROLL {} {}/{}", from, LOWORD(wParam), HIWORD(wParam));
    case WM_MEASUREITEM: return fmt::format("MEASURE {}", wParam);
    case WM_DRAWITEM: return DrawLine(*reinterpret_cast<DRAWITEMSTRUCT *>(lParam));
    case WM_HELP: return fmt::format("HELP {}", reinterpret_cast<HELPINFO *>(lParam)->iCtrlId);
    case WM_CONTEXTMENU:
        return fmt::format("CONTEXTMENU {}", GetDlgCtrlID(reinterpret_cast<HWND>(wParam)));
    case WM_INITDIALOG: return fmt::format("INITDIALOG {}", own);
    case WM_DESTROY: return fmt::format("DESTROY {}", own);
    case WM_PAINT: return fmt::format("PAINT {}", own);
    case WM_CTLCOLORDLG: return "COLORDLG";
    case WM_CTLCOLORSTATIC: return fmt::format("COLORSTATIC {}", from);
    case WM_CTLCOLOREDIT: return fmt::format("COLOREDIT {}", from);
    case WM_CTLCOLORBTN: return fmt::format("COLORBTN {}", from);
    case WM_CTLCOLORLISTBOX: return fmt::format("COLORLISTBOX {}", from);
    default: return {};
    }
}

INT_PTR UserTest::Handle(HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM lParam)
{
    if (const std::string line = LineOf(hWnd, uMsg, wParam, lParam); !line.empty())
        log.push_back(line);
    if (uMsg == WM_INITDIALOG)
        hDlg = hWnd;
    if (onMessage)
        if (const auto result = onMessage(hWnd, uMsg, wParam, lParam))
            return *result;
    if (uMsg == WM_INITDIALOG && onInit)
        onInit();
    if (uMsg == WM_COMMAND && onCommand)
        onCommand(LOWORD(wParam), HIWORD(wParam));
    if (uMsg == WM_COMMAND && (LOWORD(wParam) == IDOK || LOWORD(wParam) == IDCANCEL))
        return EndDialog(hWnd, LOWORD(wParam));
    return uMsg == WM_INITDIALOG;
}

UserTest::Lines UserTest::Taken(const std::string &beginnings)
{
    Lines taken = std::exchange(log, {});
    const std::regex wanted("(" + beginnings + ").*");
    std::erase_if(taken, [&](const auto &line) { return !std::regex_match(line, wanted); });
    return taken;
}

UserTest::Step UserTest::Came(std::string beginnings, Lines lines)
{
    return [=, this] { EXPECT_EQ(Taken(beginnings), lines); };
}

UserTest::Step UserTest::Focused(int id)
{
    return [id] {
        HWND focus = SetFocus(nullptr);
        SetFocus(focus);
        EXPECT_EQ(GetDlgCtrlID(focus), id);
    };
}

UserTest::Step UserTest::OnTop(int id)
{
    return [id] { EXPECT_EQ(GetDlgCtrlID(kvp::TopWindow()), id); };
}

std::string UserTest::TextOf(int id)
{
    char szText[256];
    GetDlgItemTextA(hDlg, id, szText, sizeof szText);
    return szText;
}

LRESULT UserTest::Send(int id, UINT msg, WPARAM wParam, LPARAM lParam)
{
    return SendDlgItemMessageA(hDlg, id, msg, wParam, lParam);
}

void UserTest::Fill(int id, UINT insert, const std::vector<const char *> &texts)
{
    for (const char *text : texts)
        Send(id, insert, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(text));
}

COLORREF UserTest::PixelIn(int id, int x, int y)
{
    RECT rc;
    GetWindowRect(Item(id), &rc);
    return kvp::ScreenPixel(rc.left + x, rc.top + y);
}
