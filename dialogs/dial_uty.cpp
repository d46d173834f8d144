// The Utility page: three buttons that start the printer's maintenance functions. Those live in a
// library of the model, which is loaded for one call at a time; without it the page is disabled.
// The page changes nothing in the settings.
#include <string>

#include "base/modeltable.h"
#include "base/text.h"
#include "datafile/files.h"
#include "dialogs/helpers.h"
#include "dialogs/pages.h"
#include "resources/pictures.h"
#include "resources/text_ids.h"
#include "resources/utility_ids.h"

// A maintenance function: the printer's and the model's name, then two zeros. It returns when the
// printer has been served; what it returns says nothing.
using UtilityProc = void(WINAPI *)(LPCSTR lpPrinter, LPCSTR lpModel, DWORD, DWORD);

struct Utility {
    WORD idButton, idTitle, idText;
    WORD idEntry; // a text: the function's name
    WORD idPicture;
    BYTE bFocus; // bButtonDown while the button has the focus
};
static constexpr Utility aUtilities[] = {
    {.idButton = IDC_UTILITY_CLEANING,
     .idTitle = IDC_UTILITY_CLEANING_TITLE,
     .idText = IDC_UTILITY_CLEANING_TEXT,
     .idEntry = ENTRY_CLEANING,
     .idPicture = PICTURE_CLEANING,
     .bFocus = 2},
    {.idButton = IDC_UTILITY_ALIGNMENT,
     .idTitle = IDC_UTILITY_ALIGNMENT_TITLE,
     .idText = IDC_UTILITY_ALIGNMENT_TEXT,
     .idEntry = ENTRY_ALIGNMENT,
     .idPicture = PICTURE_ALIGNMENT,
     .bFocus = 4},
    {.idButton = IDC_UTILITY_NOZZLE,
     .idTitle = IDC_UTILITY_NOZZLE_TITLE,
     .idText = IDC_UTILITY_NOZZLE_TEXT,
     .idEntry = ENTRY_NOZZLE,
     .idPicture = PICTURE_NOZZLE,
     .bFocus = 8},
};

static constexpr COLORREF TITLE_COLOR = RGB(0, 0, 255);

static HBRUSH hBrush;       // of the page
static HBRUSH hStaticBrush; // of its texts, from WM_INITDIALOG to WM_DESTROY

static CBSTRUC *GetCB(HWND hDlg)
{
    return RequireCB(hDlg, "dial_uty");
}

static const Utility *UtilityOf(UINT idButton)
{
    for (const Utility &utility : aUtilities)
        if (utility.idButton == idButton)
            return &utility;
    return nullptr;
}

// ---- opening --------------------------------------------------------------------------------

static std::string LibraryOf(const std::string &strModel)
{
    return std::string(Get_UtilName(strModel.c_str())) + ".dll";
}

static INT_PTR OnInitDialog(HWND hDlg, LPARAM lParam)
{
    SetCB(hDlg, CBOfPage(lParam));
    hStaticBrush = CreateSolidBrush(LIGHT_GREY);
    const std::string strModel = AnsiModelName(GetCB(hDlg)->lpDevMode);
    // Only a template that offers the status program has these two.
    if (!FileExists(std::string(Get_STMName(strModel.c_str())) + ".exe"))
        for (const int id : {IDC_UTILITY_STATUS_TITLE, IDC_UTILITY_STATUS})
            EnableControl(hDlg, id, false);
    const bool bThere = FileExists(LibraryOf(strModel));
    for (const Utility &utility : aUtilities)
        for (const int id : {utility.idButton, utility.idTitle, utility.idText})
            EnableControl(hDlg, id, bThere);
    return TRUE;
}

// ---- starting a utility ---------------------------------------------------------------------

// Nothing happens, and nothing is said, when the library or the function is not there.
static void StartUtility(HWND hDlg, const Utility &utility)
{
    const CBSTRUC *lpcbstruc = GetCB(hDlg);
    const std::string strPrinter = AnsiDeviceName(lpcbstruc->lpDevMode);
    const std::string strModel = AnsiModelName(lpcbstruc->lpDevMode);
    const LibraryPtr library(LoadLibraryA(LibraryOf(strModel).c_str()));
    if (!library)
        return;
    char szEntry[256] = "";
    LoadStringA(lpcbstruc->lpInstance->hResLib, utility.idEntry, szEntry, sizeof szEntry);
    const auto proc = reinterpret_cast<UtilityProc>(GetProcAddress(library.get(), szEntry));
    if (proc)
        proc(strPrinter.c_str(), strModel.c_str(), 0, 0);
}

static INT_PTR OnCommand(HWND hDlg, WPARAM wParam)
{
    const Utility *lpUtility = UtilityOf(LOWORD(wParam));
    if (!lpUtility)
        return FALSE;
    StartUtility(hDlg, *lpUtility);
    return TRUE;
}

// ---- the sheet's notices --------------------------------------------------------------------

// The sheet is applied while a utility's button has the focus: by the Enter key, which means the
// button, so the sheet stays.
static INT_PTR OnApply(HWND hDlg)
{
    const BYTE bButtonDown = GetCB(hDlg)->lpInstance->bButtonDown;
    for (const Utility &utility : aUtilities) {
        if (!(bButtonDown & utility.bFocus))
            continue;
        SendMessageA(hDlg, WM_COMMAND, utility.idButton, 0);
        SetWindowLongPtrA(hDlg, DWLP_MSGRESULT, PSNRET_INVALID_NOCHANGEPAGE);
        return TRUE;
    }
    return FALSE;
}

static INT_PTR OnNotify(HWND hDlg, LPARAM lParam)
{
    switch (reinterpret_cast<const NMHDR *>(lParam)->code) {
    case PSN_HELP: ShowHelp(hDlg, GetCB(hDlg), UtyDlgHelpIDs, WM_NOTIFY, lParam); return FALSE;
    case PSN_SETACTIVE: GetCB(hDlg)->lpInstance->bButtonDown = 0; return FALSE;
    case PSN_APPLY: return OnApply(hDlg);
    default: return FALSE;
    }
}

// ---- colours --------------------------------------------------------------------------------

static bool IsTitle(int id)
{
    if (id == IDC_UTILITY_STATUS_TITLE)
        return true;
    for (const Utility &utility : aUtilities)
        if (utility.idTitle == id)
            return true;
    return false;
}

// Also with the 3-D library, which leaves the colours of texts to the page.
static INT_PTR OnColorStatic(WPARAM wParam, LPARAM lParam)
{
    const auto hdc = reinterpret_cast<HDC>(wParam);
    SetBkColor(hdc, LIGHT_GREY);
    if (IsTitle(GetDlgCtrlID(reinterpret_cast<HWND>(lParam))))
        SetTextColor(hdc, TITLE_COLOR);
    return reinterpret_cast<INT_PTR>(hStaticBrush);
}

static INT_PTR OnDestroy(WPARAM wParam, LPARAM lParam)
{
    DeleteObject(hStaticBrush);
    hStaticBrush = nullptr;
    return ChangeBackColor(&hBrush, WM_DESTROY, wParam, lParam);
}

// ---- buttons --------------------------------------------------------------------------------

static void DrawLine(HDC hdc, int x1, int y1, int x2, int y2)
{
    MoveToEx(hdc, x1, y1, nullptr);
    LineTo(hdc, x2, y2);
}

// The light falls from above: raised is white at the left and top, sunken at the right and bottom.
static void DrawEdges(HDC hdc, const RECT &rc, int nRightPen, int nLeftPen)
{
    HGDIOBJ hOld = SelectObject(hdc, GetStockObject(nRightPen));
    for (const LONG x : {rc.right - 1, rc.right - 2})
        DrawLine(hdc, x, rc.top, x, rc.bottom);
    for (const LONG y : {rc.bottom - 1, rc.bottom - 2})
        DrawLine(hdc, rc.left, y, rc.right, y);
    SelectObject(hdc, GetStockObject(nLeftPen));
    DrawLine(hdc, rc.left + 1, rc.top - 1, rc.left + 1, rc.bottom - 3);
    DrawLine(hdc, rc.left + 1, rc.top + 1, rc.right - 3, rc.top + 1);
    SelectObject(hdc, hOld);
}

static void DrawFocus(const DRAWITEMSTRUCT &item)
{
    RECT rc = item.rcItem;
    InflateRect(&rc, -4, -4);
    DrawFocusRect(item.hDC, &rc);
}

// The picture and, where the button has the focus, the rectangle that shows it; a button whose
// picture is missing gets neither.
static void DrawPicture(UIINSTANCE *lpInstance, const DRAWITEMSTRUCT &item, WORD idPicture,
                        BYTE bFocus)
{
    const BitmapPtr picture = LoadPicture(lpInstance->hResLib, idPicture);
    if (!picture || !DrawsPicture(item))
        return;
    CenterPicture(item.hDC, item.rcItem, picture.get());
    if (bFocus && (item.itemState & ODS_FOCUS)) {
        DrawFocus(item);
        lpInstance->bButtonDown = bFocus;
    }
}

static void DrawUtility(UIINSTANCE *lpInstance, const DRAWITEMSTRUCT &item, const Utility &utility)
{
    FrameRect(item.hDC, &item.rcItem, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
    DrawEdges(item.hDC, item.rcItem, BLACK_PEN, WHITE_PEN);
    if (item.itemState & ODS_SELECTED)
        DrawEdges(item.hDC, item.rcItem, WHITE_PEN, BLACK_PEN);
    DrawPicture(lpInstance, item, utility.idPicture, utility.bFocus);
    // Gained or lost: the rectangle is toggled, and Enter learns whose it is.
    if (item.itemAction & ODA_FOCUS) {
        DrawFocus(item);
        lpInstance->bButtonDown = item.itemState & ODS_FOCUS ? utility.bFocus : 0;
    }
}

static void DrawControl(HWND hDlg, const DRAWITEMSTRUCT &item)
{
    UIINSTANCE *lpInstance = GetCB(hDlg)->lpInstance;
    if (item.CtlType != ODT_BUTTON)
        return;
    if (DrawsPicture(item))
        DrawFace(item.hDC, item.rcItem, lpInstance->hResLib);
    if (const Utility *lpUtility = UtilityOf(item.CtlID))
        DrawUtility(lpInstance, item, *lpUtility);
    else if (item.CtlID == IDC_UTILITY_MAKER)
        DrawPicture(lpInstance, item, PICTURE_MAKER, 0);
}

// ---- dispatch -------------------------------------------------------------------------------

INT_PTR CALLBACK UtyUIDlgProc(HWND hDlg, UINT uMsg, WPARAM wParam, LPARAM lParam)
{
    switch (uMsg) { // these need no state
    case WM_INITDIALOG: return OnInitDialog(hDlg, lParam);
    case WM_PAINT: return PaintNothing(hDlg);
    case WM_DESTROY: return OnDestroy(wParam, lParam);
    case WM_CTLCOLORSTATIC: return OnColorStatic(wParam, lParam);
    default: break;
    }
    if (const auto answer = AnswerColors(&hBrush, uMsg, wParam, lParam))
        return *answer;
    if (!FindCB(hDlg)) // before WM_INITDIALOG
        return FALSE;
    switch (uMsg) {
    case WM_DRAWITEM:
        DrawControl(hDlg, *reinterpret_cast<const DRAWITEMSTRUCT *>(lParam));
        return TRUE;
    case WM_HELP:
    case WM_CONTEXTMENU: ShowHelp(hDlg, GetCB(hDlg), UtyDlgHelpIDs, uMsg, lParam); return TRUE;
    case WM_NOTIFY: return OnNotify(hDlg, lParam);
    case WM_COMMAND: return OnCommand(hDlg, wParam);
    default: return FALSE;
    }
}
