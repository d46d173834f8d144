// The user-defined paper size dialog: a width and a length in one of two units, within the limits
// of the model's user-defined paper, and a list of the sizes that the user has saved under names of
// his own. The template is the model's. The dialog tells the Paper page either that the record's
// own size is to be taken, which OK has written and Cancel has left alone, or which saved one.
#include "dialogs/dial_pap_size.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string>

#include "base/units.h"
#include "datafile/tables.h"
#include "dialogs/dial_pap.h"
#include "dialogs/helpers.h"
#include "dialogs/pages.h"
#include "resources/size_ids.h"
#include "resources/text_ids.h"

// The two numbers of a size, in the order in which they are checked.
enum { WIDTH, LENGTH, DIMENSIONS };
static constexpr struct {
    WORD idField, idArrows, idSmallest, idLargest;
} aDimensions[DIMENSIONS] = {
    {.idField = IDC_SIZE_WIDTH,
     .idArrows = IDC_SIZE_WIDTH_ARROWS,
     .idSmallest = IDC_SIZE_WIDTH_SMALLEST,
     .idLargest = IDC_SIZE_WIDTH_LARGEST},
    {.idField = IDC_SIZE_LENGTH,
     .idArrows = IDC_SIZE_LENGTH_ARROWS,
     .idSmallest = IDC_SIZE_LENGTH_SMALLEST,
     .idLargest = IDC_SIZE_LENGTH_LARGEST},
};

struct Range {
    int64_t nSmallest, nLargest;
};
using Limits = std::array<Range, DIMENSIONS>;

static constexpr int NUMBER_CHARS = 5; // of a field that is read as text

static HBRUSH hBrush; // of the limits: made once, kept for the next opening

std::string UserDefinedName(const CBSTRUC *lpcbstruc)
{
    return LoadText(lpcbstruc->lpInstance->hResLib, PAPER_USER);
}

// ---- limits and units -------------------------------------------------------------------------

// A paper's limits, which it has in 0.1 mm, in a unit.
static Limits LimitsOf(const PaperRecord &paper, DWORD dwUnit)
{
    const auto inUnit = [=](int16_t sMM) {
        return dwUnit == UNIT_MM ? int64_t{sMM} : FromMMToInch(sMM);
    };
    return {Range{inUnit(paper.wMinWidth), inUnit(paper.wMaxWidth)},
            Range{inUnit(paper.wMinLength), inUnit(paper.wMaxLength)}};
}

// Of the user-defined paper, which every opened dialog has.
static Limits LimitsOfUserPaper(const CBSTRUC *lpcbstruc, DWORD dwUnit)
{
    const PaperRecord *lpPaper = FindPaper(lpcbstruc->lpInstance->dat, KV_PAPER_USER);
    return lpPaper ? LimitsOf(*lpPaper, dwUnit) : Limits{};
}

static Limits LimitsShown(const CBSTRUC *lpcbstruc)
{
    return LimitsOfUserPaper(lpcbstruc, lpcbstruc->lpInstance->dwShownUnit);
}

// The limit that a number violates, or the number.
static int64_t InRange(int64_t n, const Range &range)
{
    if (n < range.nSmallest)
        return range.nSmallest;
    return n > range.nLargest ? range.nLargest : n;
}

// ---- fields -----------------------------------------------------------------------------------

static LONG Number(HWND hDlg, int id)
{
    return static_cast<LONG>(GetDlgItemInt(hDlg, id, nullptr, TRUE));
}

LONG NumberOfText(HWND hDlg, int id)
{
    char szText[NUMBER_CHARS + 1] = "";
    GetDlgItemTextA(hDlg, id, szText, sizeof szText);
    return static_cast<LONG>(std::strtol(szText, nullptr, 10));
}

static void PutNumber(HWND hDlg, int id, int64_t n)
{
    SetDlgItemInt(hDlg, id, static_cast<UINT>(n), TRUE);
}

static void PutLimits(HWND hDlg, const Limits &limits)
{
    for (int i = 0; i < DIMENSIONS; ++i) {
        PutNumber(hDlg, aDimensions[i].idLargest, limits[i].nLargest);
        PutNumber(hDlg, aDimensions[i].idSmallest, limits[i].nSmallest);
    }
}

// Whether it had to be.
static bool CorrectNumber(HWND hDlg, int id, const Range &range)
{
    const LONG lNumber = Number(hDlg, id);
    const int64_t nInRange = InRange(lNumber, range);
    if (nInRange != lNumber)
        PutNumber(hDlg, id, nInRange);
    return nInRange != lNumber;
}

static void ShowUnit(HWND hDlg, CBSTRUC *lpcbstruc, DWORD dwUnit)
{
    lpcbstruc->lpInstance->dwShownUnit = dwUnit;
    CheckRadioButton(hDlg, IDC_SIZE_MM, IDC_SIZE_INCH,
                     dwUnit == UNIT_MM ? IDC_SIZE_MM : IDC_SIZE_INCH);
}

// ---- buttons ----------------------------------------------------------------------------------

void EnableSizeButtons(HWND hDlg, bool bSave, bool bDelete)
{
    EnableControl(hDlg, IDC_SIZE_SAVE, bSave);
    EnableControl(hDlg, IDC_SIZE_DELETE, bDelete);
}

// After the name or the size has changed: what cannot be saved is not offered. The user-defined
// size itself needs no saving and can always be confirmed. Says nothing of other names.
static void CheckSaveName(HWND hDlg, const CBSTRUC *lpcbstruc)
{
    const std::string strName = DlgItemText(hDlg, IDC_SIZE_NAME);
    const bool bUserDefined = strName == UserDefinedName(lpcbstruc);
    if (bUserDefined || IsBlank(strName))
        EnableSizeButtons(hDlg, false, false);
    if (bUserDefined)
        EnableControl(hDlg, IDOK, true);
}

// The size is no longer the one that the list's selection stands for. A name that was refused may
// be saved from now on: only typing a name looks for conflicts.
static void SizeIsNew(HWND hDlg)
{
    EnableControl(hDlg, IDC_SIZE_SAVE, true);
    EnableControl(hDlg, IDOK, false);
    SelectSize(hDlg, -1);
}

void ShowUserDefined(HWND hDlg, const CBSTRUC *lpcbstruc)
{
    SetDlgItemTextA(hDlg, IDC_SIZE_NAME, UserDefinedName(lpcbstruc).c_str());
    EnableSizeButtons(hDlg, false, false);
    EnableControl(hDlg, IDOK, true);
}

// ---- opening ----------------------------------------------------------------------------------

static void PutSizeOfRecord(HWND hDlg, const DriverDevMode *lpDM)
{
    const bool bMM = lpDM->dwUnit == UNIT_MM;
    const int64_t nWidth = lpDM->lPaperWidth, nLength = lpDM->lPaperLength;
    PutNumber(hDlg, IDC_SIZE_WIDTH, bMM ? nWidth : FromMMToInch(nWidth));
    PutNumber(hDlg, IDC_SIZE_LENGTH, bMM ? nLength : FromMMToInch(nLength));
}

static INT_PTR OnInitDialog(HWND hDlg, LPARAM lParam)
{
    SetCB(hDlg, reinterpret_cast<CBSTRUC *>(lParam));
    CBSTRUC *lpcbstruc = GetPaperCB(hDlg);
    const DriverDevMode *lpDM = lpcbstruc->lpDevMode;
    UIINSTANCE *lpInstance = lpcbstruc->lpInstance;
    if (!FindPaper(lpInstance->dat, KV_PAPER_USER)) { // a model whose papers are all fixed
        EndDialog(hDlg, -1);
        return TRUE;
    }
    lpInstance->dwSavedUnit = lpDM->dwUnit;
    ShowUnit(hDlg, lpcbstruc, lpDM->dwUnit == UNIT_MM ? UNIT_MM : UNIT_INCH);
    PutSizeOfRecord(hDlg, lpDM);
    PutLimits(hDlg, LimitsShown(lpcbstruc));
    EnableControl(hDlg, IDC_SIZE_SAVE, false);
    SetDlgItemTextA(hDlg, IDC_SIZE_NAME, UserDefinedName(lpcbstruc).c_str());
    FillSizes(hDlg, lpcbstruc);
    EnableControl(hDlg, IDC_SIZE_DELETE, false);
    CheckSaveName(hDlg, lpcbstruc);
    lpInstance->dwFilling = FALSE;
    return TRUE;
}

// ---- width and length -------------------------------------------------------------------------

bool SwallowsChange(UIINSTANCE *lpInstance)
{
    const bool bFilling = lpInstance->dwFilling != FALSE;
    lpInstance->dwFilling = FALSE;
    return bFilling;
}

static void OnSize(HWND hDlg, CBSTRUC *lpcbstruc, WORD id, WORD wCode)
{
    if (wCode == EN_CHANGE) {
        if (SwallowsChange(lpcbstruc->lpInstance))
            return;
        SizeIsNew(hDlg);
    } else if (wCode == EN_KILLFOCUS) {
        CorrectNumber(hDlg, id, LimitsShown(lpcbstruc)[id == IDC_SIZE_WIDTH ? WIDTH : LENGTH]);
    }
    CheckSaveName(hDlg, lpcbstruc);
}

// A number outside its limits does not move: leaving the field corrects it.
static void Step(HWND hDlg, int id, const Range &range, int nCode)
{
    const LONG lNumber = Number(hDlg, id);
    if (nCode == SB_LINEUP && lNumber >= range.nSmallest && lNumber < range.nLargest)
        PutNumber(hDlg, id, int64_t{lNumber} + 1);
    else if (nCode == SB_LINEDOWN && lNumber > range.nSmallest && lNumber <= range.nLargest)
        PutNumber(hDlg, id, int64_t{lNumber} - 1);
}

static INT_PTR OnArrows(HWND hDlg, WPARAM wParam, LPARAM lParam)
{
    CBSTRUC *lpcbstruc = GetPaperCB(hDlg);
    const int idArrows = GetDlgCtrlID(reinterpret_cast<HWND>(lParam));
    for (int i = 0; i < DIMENSIONS; ++i) {
        if (aDimensions[i].idArrows != idArrows)
            continue;
        lpcbstruc->lpInstance->dwFilling = FALSE;
        Step(hDlg, aDimensions[i].idField, LimitsShown(lpcbstruc)[i], LOWORD(wParam));
    }
    return FALSE;
}

static void OnUnit(HWND hDlg, CBSTRUC *lpcbstruc, WORD id, WORD)
{
    const DWORD dwUnit = id == IDC_SIZE_MM ? UNIT_MM : UNIT_INCH;
    if (dwUnit == lpcbstruc->lpInstance->dwShownUnit)
        return;
    SizeIsNew(hDlg);
    const Limits limits = LimitsOfUserPaper(lpcbstruc, dwUnit);
    int64_t an[DIMENSIONS];
    for (int i = 0; i < DIMENSIONS; ++i) {
        const int64_t n = Number(hDlg, aDimensions[i].idField);
        an[i] = InRange(dwUnit == UNIT_MM ? FromInchToMM(n) : FromMMToInch(n), limits[i]);
    }
    lpcbstruc->lpDevMode->dwUnit = dwUnit;
    ShowUnit(hDlg, lpcbstruc, dwUnit);
    for (int i = 0; i < DIMENSIONS; ++i)
        PutNumber(hDlg, aDimensions[i].idField, an[i]);
    PutLimits(hDlg, limits);
    CheckSaveName(hDlg, lpcbstruc);
}

// ---- choosing from the list -------------------------------------------------------------------

static void SelectAndRedraw(HWND hDlg, LRESULT nEntry)
{
    SelectSize(hDlg, nEntry);
    InvalidateRect(GetDlgItem(hDlg, IDC_SIZE_LIST), nullptr, TRUE);
}

// Each change is announced to the handlers of what the user types.
static void PutSavedSize(HWND hDlg, UIINSTANCE *lpInstance, const UserPaperRecord &slot)
{
    lpInstance->dwFilling = TRUE;
    SetDlgItemTextA(hDlg, IDC_SIZE_NAME, SlotName(slot).c_str());
    lpInstance->dwFilling = TRUE;
    PutNumber(hDlg, IDC_SIZE_WIDTH, slot.paper.wWidth);
    lpInstance->dwFilling = TRUE;
    PutNumber(hDlg, IDC_SIZE_LENGTH, slot.paper.wLength);
}

static void ChooseSaved(HWND hDlg, CBSTRUC *lpcbstruc, LRESULT nEntry)
{
    DatFile &dat = lpcbstruc->lpInstance->dat;
    const LONG lSlot = SelectedListData(hDlg, IDC_SIZE_LIST);
    const UserPaperRecord *lpSlot = RecordAt(dat.lpUserPapers, dat.nUserPaperUsed, lSlot);
    if (!lpSlot)
        return;
    EnableControl(hDlg, IDC_SIZE_DELETE, true);
    PutSavedSize(hDlg, lpcbstruc->lpInstance, *lpSlot);
    EnableControl(hDlg, IDC_SIZE_SAVE, false);
    EnableControl(hDlg, IDOK, true);
    const DWORD dwUnit =
        lpSlot->paper.wDefault == static_cast<int>(UNIT_INCH) ? UNIT_INCH : UNIT_MM;
    lpcbstruc->lpDevMode->dwUnit = dwUnit;
    ShowUnit(hDlg, lpcbstruc, dwUnit);
    PutLimits(hDlg, LimitsOf(lpSlot->paper, dwUnit)); // its own, of the day it was made
    SelectAndRedraw(hDlg, nEntry);
}

static void OnList(HWND hDlg, CBSTRUC *lpcbstruc, WORD, WORD wCode)
{
    const LRESULT nEntry = SelectedSize(hDlg);
    if (wCode != LBN_SELCHANGE || nEntry == LB_ERR)
        return;
    if (nEntry > 0) {
        ChooseSaved(hDlg, lpcbstruc, nEntry);
        return;
    }
    ShowUserDefined(hDlg, lpcbstruc);
    SelectAndRedraw(hDlg, nEntry);
}

// ---- OK and Cancel ----------------------------------------------------------------------------

// Corrects the first number that is outside the user-defined paper's limits: then FALSE.
static BOOL CheckScale(HWND hDlg, const CBSTRUC *lpcbstruc)
{
    const Limits limits = LimitsOfUserPaper(lpcbstruc, lpcbstruc->lpDevMode->dwUnit);
    for (int i = 0; i < DIMENSIONS; ++i)
        if (CorrectNumber(hDlg, aDimensions[i].idField, limits[i]))
            return FALSE;
    return TRUE;
}

static void OnOK(HWND hDlg, CBSTRUC *lpcbstruc, WORD, WORD)
{
    if (!CheckScale(hDlg, lpcbstruc))
        return;
    const LRESULT nEntry = SelectedSize(hDlg);
    if (nEntry > 0) {
        EndDialog(hDlg, nEntry - 1);
        return;
    }
    DriverDevMode *lpDM = lpcbstruc->lpDevMode;
    const auto numberOf = nEntry == 0 ? Number : NumberOfText;
    const int64_t nWidth = numberOf(hDlg, IDC_SIZE_WIDTH);
    const int64_t nLength = numberOf(hDlg, IDC_SIZE_LENGTH);
    const bool bMM = lpDM->dwUnit == UNIT_MM;
    lpDM->lPaperWidth = static_cast<LONG>(bMM ? nWidth : FromInchToMM(nWidth));
    lpDM->lPaperLength = static_cast<LONG>(bMM ? nLength : FromInchToMM(nLength));
    EndDialog(hDlg, -1);
}

// The size that the record had stays; who opened the dialog takes it for the user's own.
static void OnCancel(HWND hDlg, CBSTRUC *lpcbstruc, WORD, WORD)
{
    lpcbstruc->lpDevMode->dwUnit = lpcbstruc->lpInstance->dwSavedUnit;
    EndDialog(hDlg, -1);
}

// ---- drawing ----------------------------------------------------------------------------------

// Sent while the list is created, before the dialog has its state.
static void OnMeasureItem(HWND hDlg, MEASUREITEMSTRUCT *lpItem)
{
    if (lpItem->CtlID != IDC_SIZE_LIST)
        return;
    HWND hList = GetDlgItem(hDlg, IDC_SIZE_LIST);
    const auto hFont = reinterpret_cast<HGDIOBJ>(SendMessageA(hList, WM_GETFONT, 0, 0));
    HDC hdc = GetDC(hList);
    HGDIOBJ hOld = SelectObject(hdc, hFont ? hFont : GetStockObject(SYSTEM_FONT));
    TEXTMETRICA tm{};
    GetTextMetricsA(hdc, &tm);
    SelectObject(hdc, hOld);
    ReleaseDC(hList, hdc);
    lpItem->itemHeight = static_cast<UINT>(tm.tmHeight);
}

// The user-defined entry is set apart from the saved sizes below it.
static void DrawUserPaper(const DRAWITEMSTRUCT &item, const CBSTRUC *lpcbstruc)
{
    if (item.CtlID != IDC_SIZE_LIST)
        return;
    const std::string strText = DrawnText(item);
    DrawListItem(item, strText.c_str(),
                 strText == UserDefinedName(lpcbstruc) ? Apart::Below : Apart::No);
}

static bool IsLimit(int id)
{
    return std::ranges::any_of(aDimensions, [=](const auto &dimension) {
        return dimension.idSmallest == id || dimension.idLargest == id;
    });
}

// ---- dispatch ---------------------------------------------------------------------------------

static constexpr struct {
    WORD id;
    void (*run)(HWND hDlg, CBSTRUC *lpcbstruc, WORD id, WORD wCode);
} aCommands[] = {
    {IDC_SIZE_WIDTH, OnSize},    {IDC_SIZE_LENGTH, OnSize},       {IDC_SIZE_MM, OnUnit},
    {IDC_SIZE_INCH, OnUnit},     {IDC_SIZE_NAME, OnSizeName},     {IDC_SIZE_LIST, OnList},
    {IDC_SIZE_SAVE, OnSaveSize}, {IDC_SIZE_DELETE, OnDeleteSize}, {IDOK, OnOK},
    {IDCANCEL, OnCancel},
};

static void OnCommand(HWND hDlg, WPARAM wParam)
{
    for (const auto &command : aCommands)
        if (command.id == LOWORD(wParam))
            command.run(hDlg, GetPaperCB(hDlg), LOWORD(wParam), HIWORD(wParam));
}

INT_PTR CALLBACK UserDlgProc(HWND hDlg, UINT uMsg, WPARAM wParam, LPARAM lParam)
{
    switch (uMsg) { // these need no state
    case WM_INITDIALOG: return OnInitDialog(hDlg, lParam);
    case WM_MEASUREITEM:
        OnMeasureItem(hDlg, reinterpret_cast<MEASUREITEMSTRUCT *>(lParam));
        return FALSE;
    case WM_CTLCOLOREDIT:
        return IsLimit(GetDlgCtrlID(reinterpret_cast<HWND>(lParam)))
                   ? GrayEditBox(&hBrush, uMsg, wParam, lParam)
                   : FALSE;
    default: break;
    }
    if (!FindCB(hDlg)) // before WM_INITDIALOG
        return FALSE;
    switch (uMsg) {
    case WM_DRAWITEM:
        DrawUserPaper(*reinterpret_cast<const DRAWITEMSTRUCT *>(lParam), GetPaperCB(hDlg));
        return FALSE;
    case WM_VSCROLL: return OnArrows(hDlg, wParam, lParam);
    case WM_COMMAND: OnCommand(hDlg, wParam); return FALSE;
    default: return FALSE;
    }
}
