// The Paper page: size, source, copies, orientation and printable area, with a preview of them.
// Choices go into the record at once; what is left, copies and margins, when the sheet is applied.
// Its lists are in dial_pap_list.cpp, its drawing is in dial_pap_draw.cpp.
#include "dialogs/dial_pap.h"
#include "base/module.h"
#include "datafile/files.h"
#include "datafile/margins.h"
#include "datafile/tables.h"
#include "dialogs/helpers.h"
#include "dialogs/pages.h"
#include "resources/paper_ids.h"

static constexpr int PORTRAIT = 1, LANDSCAPE = 2; // dmOrientation
static constexpr int LEAST_COPIES = 1;

static HBRUSH hBrush; // of the page

CBSTRUC *GetPaperCB(HWND hDlg)
{
    return RequireCB(hDlg, "dial_pap");
}

const DatFile &TablesOf(HWND hDlg)
{
    return GetPaperCB(hDlg)->lpInstance->dat;
}

// ---- opening --------------------------------------------------------------------------------

static void SetOrient(HWND hDlg, int nOrientation, const DriverDevMode *lpDM)
{
    RequireOrientation(lpDM, "dial_pap");
    CheckRadioButton(hDlg, IDC_PAPER_PORTRAIT, IDC_PAPER_LANDSCAPE,
                     nOrientation == PORTRAIT ? IDC_PAPER_PORTRAIT : IDC_PAPER_LANDSCAPE);
}

static void SetPrnArea(HWND hDlg, int nArea, const DriverDevMode *)
{
    CheckRadioButton(hDlg, IDC_PAPER_MAXIMUM, IDC_PAPER_CENTERED,
                     nArea == AREA_MAXIMUM ? IDC_PAPER_MAXIMUM : IDC_PAPER_CENTERED);
}

// Without a file the tables stay what another page has made of them. FALSE, and the user has been
// told, when one is of another version; a file that is too short counts as such.
static BOOL CanGoOn(FileState state, LPCSTR lpNotFound, LPCSTR lpVersionError)
{
    if (state == FileState::NotFound) {
        if (lpNotFound)
            Notify(lpNotFound);
        return TRUE;
    }
    if (state != FileState::Read)
        Notify(lpVersionError);
    return state == FileState::Read;
}

static BOOL ReadFiles(const DriverDevMode *lpDM, DatFile *lpTables)
{
    const ModelFiles files = FilesOfModel(lpDM);
    if (!CanGoOn(ReadDatTables(files.strDat.c_str(), lpTables), "Open data file error!",
                 "Version Error of dat file. Please Install again."))
        return FALSE;
    if (!CanGoOn(ReadCfgTables(files.strCfg.c_str(), lpTables), nullptr,
                 "Version Error of cfg file. Please Install again."))
        return FALSE;
    if (ReadUserTables(files.strUcf.c_str(), lpTables) == UserFileState::OtherVersion)
        Notify("Version Error of ucf file");
    CountSlotsInUse(lpTables);
    return TRUE;
}

// With a .dat or .cfg of another version the page stays as its template has it.
static void InitPaprUIDlg(HWND hDlg, DriverDevMode *lpDM)
{
    if (!ReadFiles(lpDM, &GetPaperCB(hDlg)->lpInstance->dat))
        return;
    UpdatePaperSize(hDlg, lpDM);
    FillSources(hDlg, lpDM);
    SetOrient(hDlg, lpDM->dm.dmOrientation, lpDM);
    SetPrnArea(hDlg, lpDM->nPrintArea, lpDM);
    SetDlgItemInt(hDlg, IDC_PAPER_COPIES, static_cast<UINT>(lpDM->dm.dmCopies), TRUE);
    CheckDlgButton(hDlg, IDC_PAPER_COLLATE, static_cast<UINT>(lpDM->dm.dmCollate));
    CheckBin(hDlg, lpDM);
    SetPaperCopyBmp(hDlg, lpDM);
}

static INT_PTR OnInitDialog(HWND hDlg, LPARAM lParam)
{
    SetCB(hDlg, CBOfPage(lParam));
    InitPaprUIDlg(hDlg, GetPaperCB(hDlg)->lpDevMode);
    return TRUE;
}

// ---- what the source makes of collating and of the printable area -------------------------------

static constexpr WORD COLLATE_RULE = 0x00F;
static constexpr int USERS_CHOICE = -1;
static constexpr struct {
    int nCollate;
    bool bEnabled;
} aCollateRules[] = {{USERS_CHOICE, true}, {1, true}, {0, true}, {1, false}, {0, false}};

static void SetCollate(HWND hDlg, DriverDevMode *lpDM, bool bCollate)
{
    lpDM->dm.dmCollate = bCollate;
    CheckDlgButton(hDlg, IDC_PAPER_COLLATE, bCollate);
    SetPaperCopyBmp(hDlg, lpDM);
}

static void CheckCollate(HWND hDlg, DriverDevMode *lpDM, const BinRecord &bin)
{
    const size_t nRule = bin.wFlags & COLLATE_RULE;
    if (nRule >= std::size(aCollateRules))
        return;
    if (aCollateRules[nRule].nCollate != USERS_CHOICE)
        SetCollate(hDlg, lpDM, aCollateRules[nRule].nCollate != 0);
    EnableControl(hDlg, IDC_PAPER_COLLATE, aCollateRules[nRule].bEnabled);
}

static void CheckArea(HWND hDlg, DriverDevMode *lpDM, const BinRecord &bin)
{
    const WORD wRule = bin.wFlags & AREA_RULE;
    if (wRule > AREA_FORCE_MAXIMUM)
        return;
    if (wRule != AREA_FREE) {
        ApplyAreaRule(lpDM, &TablesOf(hDlg));
        SetPrnArea(hDlg, lpDM->nPrintArea, lpDM);
        SetPaperBmp(hDlg, lpDM);
    }
    for (const int id : {IDC_PAPER_MAXIMUM, IDC_PAPER_CENTERED})
        EnableControl(hDlg, id, wRule < AREA_FORCE_CENTRED);
}

void CheckBin(HWND hDlg, DriverDevMode *lpDM)
{
    const DatFile &dat = TablesOf(hDlg);
    if (const BinRecord *lpBin = RecordAt(dat.lpBins, dat.nBins, lpDM->nBin)) {
        CheckCollate(hDlg, lpDM, *lpBin);
        CheckArea(hDlg, lpDM, *lpBin);
    }
}

// ---- copies -----------------------------------------------------------------------------------

static int CopiesShown(HWND hDlg)
{
    return static_cast<int>(GetDlgItemInt(hDlg, IDC_PAPER_COPIES, nullptr, TRUE));
}

static void SetCopies(HWND hDlg, DriverDevMode *lpDM, int nCopies)
{
    SetDlgItemInt(hDlg, IDC_PAPER_COPIES, static_cast<UINT>(nCopies), TRUE);
    lpDM->dm.dmCopies = static_cast<int16_t>(nCopies);
}

// A number out of range is corrected at once; any other is taken when the sheet is applied.
static INT_PTR OnCopies(HWND hDlg, DriverDevMode *lpDM, WORD wCode)
{
    if (wCode != EN_CHANGE)
        return TRUE;
    const int nCopies = CopiesShown(hDlg);
    if (nCopies > KV_MOST_COPIES)
        SetCopies(hDlg, lpDM, KV_MOST_COPIES);
    else if (nCopies < LEAST_COPIES)
        SetCopies(hDlg, lpDM, LEAST_COPIES);
    return TRUE;
}

static INT_PTR OnArrows(HWND hDlg, DriverDevMode *lpDM, WORD wCode)
{
    const int nCopies = CopiesShown(hDlg);
    if (wCode == SB_LINEUP && nCopies >= LEAST_COPIES && nCopies < KV_MOST_COPIES)
        SetCopies(hDlg, lpDM, nCopies + 1);
    if (wCode == SB_LINEDOWN && nCopies > LEAST_COPIES && nCopies <= KV_MOST_COPIES)
        SetCopies(hDlg, lpDM, nCopies - 1);
    return TRUE;
}

static INT_PTR OnCollate(HWND hDlg, DriverDevMode *lpDM)
{
    lpDM->dm.dmCollate = IsDlgButtonChecked(hDlg, IDC_PAPER_COLLATE) == BST_CHECKED;
    SetPaperCopyBmp(hDlg, lpDM);
    return TRUE;
}

// ---- orientation and printable area -------------------------------------------------------------

// A notice with this code wants the value stored and nothing shown. Buttons send none such.
static constexpr WORD STORE_ONLY = 9;

static INT_PTR OnOrientation(HWND hDlg, DriverDevMode *lpDM, int nOrientation, WORD wCode)
{
    lpDM->dm.dmOrientation = static_cast<int16_t>(nOrientation);
    if (wCode == STORE_ONLY)
        return TRUE;
    SetOrient(hDlg, nOrientation, lpDM);
    SetPaperBmp(hDlg, lpDM);
    return TRUE;
}

static INT_PTR OnArea(HWND hDlg, DriverDevMode *lpDM, int nArea, WORD wCode)
{
    lpDM->nPrintArea = nArea;
    if (wCode == STORE_ONLY)
        return TRUE;
    SetPrnArea(hDlg, nArea, lpDM);
    SetPaperBmp(hDlg, lpDM);
    return TRUE;
}

// ---- Apply ------------------------------------------------------------------------------------

// The margins of the record's paper, or else of the user-defined one: those of saved sizes too.
static void ApplyMargins(const DatFile &dat, DriverDevMode *lpDM)
{
    const PaperRecord *lpPaper = FindPaper(dat, lpDM->dm.dmPaperSize);
    if (!lpPaper)
        lpPaper = FindPaper(dat, KV_PAPER_USER);
    if (lpPaper)
        SetMargins(lpDM, *lpPaper, lpDM->dm.dmPaperWidth);
}

static INT_PTR OnApply(HWND hDlg, CBSTRUC *lpcbstruc)
{
    DriverDevMode *lpDM = lpcbstruc->lpDevMode;
    // Without the box nothing is collated.
    SetCollate(hDlg, lpDM, IsDlgButtonChecked(hDlg, IDC_PAPER_COLLATE) == BST_CHECKED);
    // The field is empty on a page alone that could not be filled: the record keeps its number.
    if (!DlgItemText(hDlg, IDC_PAPER_COPIES).empty())
        lpDM->dm.dmCopies = static_cast<int16_t>(CopiesShown(hDlg));
    ApplyMargins(TablesOf(hDlg), lpDM);
    return TRUE;
}

// ---- dispatch -------------------------------------------------------------------------------

static INT_PTR OnCommand(HWND hDlg, DriverDevMode *lpDM, WORD id, WORD wCode)
{
    switch (id) {
    case IDC_PAPER_SIZE: return OnPaperList(hDlg, lpDM, wCode);
    case IDC_PAPER_SOURCE: return OnSourceList(hDlg, lpDM, wCode);
    case IDC_PAPER_COPIES: return OnCopies(hDlg, lpDM, wCode);
    case IDC_PAPER_COLLATE: return OnCollate(hDlg, lpDM);
    case IDC_PAPER_COLLATE_PICTURE: SetPaperCopyBmp(hDlg, lpDM); return FALSE;
    case IDC_PAPER_PORTRAIT: return OnOrientation(hDlg, lpDM, PORTRAIT, wCode);
    case IDC_PAPER_LANDSCAPE: return OnOrientation(hDlg, lpDM, LANDSCAPE, wCode);
    case IDC_PAPER_MAXIMUM: return OnArea(hDlg, lpDM, AREA_MAXIMUM, wCode);
    case IDC_PAPER_CENTERED: return OnArea(hDlg, lpDM, AREA_CENTRED, wCode);
    default: return FALSE;
    }
}

static INT_PTR OnPaint(HWND hDlg, DriverDevMode *lpDM)
{
    SetPaperBmp(hDlg, lpDM);
    return PaintNothing(hDlg);
}

static INT_PTR OnDrawItem(HWND hDlg, const DRAWITEMSTRUCT &item, const DriverDevMode *lpDM)
{
    DrawPaperControl(hDlg, item, lpDM);
    DrawPaperSize(hDlg, item, lpDM);
    return TRUE;
}

static INT_PTR OnVScroll(HWND hDlg, DriverDevMode *lpDM, WPARAM wParam, LPARAM lParam)
{
    if (GetDlgCtrlID(reinterpret_cast<HWND>(lParam)) != IDC_PAPER_COPIES_ARROWS)
        return TRUE;
    return OnArrows(hDlg, lpDM, LOWORD(wParam));
}

INT_PTR CALLBACK PaperUIDlgProc(HWND hDlg, UINT uMsg, WPARAM wParam, LPARAM lParam)
{
    if (const auto answer = AnswerColors(&hBrush, uMsg, wParam, lParam))
        return *answer;
    switch (uMsg) { // these need no state
    case WM_INITDIALOG: return OnInitDialog(hDlg, lParam);
    case WM_MEASUREITEM: return MeasureItem(hDlg, lParam, {IDC_PAPER_SIZE, IDC_PAPER_SOURCE});
    default: break;
    }
    CBSTRUC *lpcbstruc = FindCB(hDlg);
    if (!lpcbstruc) // before WM_INITDIALOG
        return FALSE;
    DriverDevMode *lpDM = lpcbstruc->lpDevMode;
    switch (uMsg) {
    case WM_PAINT: return OnPaint(hDlg, lpDM);
    case WM_DRAWITEM:
        return OnDrawItem(hDlg, *reinterpret_cast<const DRAWITEMSTRUCT *>(lParam), lpDM);
    case WM_HELP:
    case WM_CONTEXTMENU: ShowHelp(hDlg, lpcbstruc, aPaperDlgHelpIDs, uMsg, lParam); return TRUE;
    case WM_NOTIFY: return AnswerNotice(hDlg, lpcbstruc, aPaperDlgHelpIDs, lParam, OnApply);
    case WM_COMMAND: return OnCommand(hDlg, lpDM, LOWORD(wParam), HIWORD(wParam));
    case WM_VSCROLL: return OnVScroll(hDlg, lpDM, wParam, lParam);
    default: return FALSE;
    }
}
