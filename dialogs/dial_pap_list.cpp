// The two lists of the Paper page: which papers the current source feeds, and what choosing a
// paper or a source does to the record.
//
// One number names a paper: below nPapers its position among the model's, from there on nPapers
// plus the position of a saved size. The record's nPaper and the item data of the list of papers
// are this number; the item data of the list of sources is the source's position.
#include <string>

#include "base/units.h"
#include "datafile/queries.h"
#include "datafile/tables.h"
#include "dialogs/dial_pap.h"
#include "dialogs/helpers.h"
#include "dialogs/pages.h"
#include "resources/paper_ids.h"
#include "resources/size_ids.h"
#include "resources/text_ids.h"

// A slot by its position, in use or not; null outside the table.
static const UserPaperRecord *SlotAt(const DatFile &dat, int64_t nSlot)
{
    return RecordAt(dat.lpUserPapers, dat.CfgHeader.wUserPaperSlots, nSlot);
}

std::string PaperName(HWND hDlg, const PaperRecord &paper)
{
    return LoadText(GetPaperCB(hDlg)->lpInstance->hResLib, static_cast<WORD>(paper.wId));
}

static std::string NameOfIndex(HWND hDlg, int64_t nIndex)
{
    const DatFile &dat = TablesOf(hDlg);
    if (const PaperRecord *lpPaper = RecordAt(dat.lpPapers, dat.nPapers, nIndex))
        return PaperName(hDlg, *lpPaper);
    const UserPaperRecord *lpSlot = SlotAt(dat, nIndex - dat.nPapers);
    return lpSlot ? SlotName(*lpSlot) : "";
}

// ---- filling --------------------------------------------------------------------------------

// Appends the model's papers that a source of the mask feeds; one with the record's identifier
// becomes the current paper.
struct Listed {
    int nPapers;   // how many there are
    bool bCurrent; // the current one is among them
};
static Listed ListPapers(HWND hDlg, DriverDevMode *lpDM, DWORD dwMask)
{
    Listed listed{};
    int32_t nIndex = 0;
    for (const PaperRecord &paper : Papers(TablesOf(hDlg))) {
        if (Supports(paper, dwMask)) {
            if (paper.wId == lpDM->dm.dmPaperSize) {
                lpDM->nPaper = nIndex;
                listed.bCurrent = true;
            }
            AppendItem(hDlg, IDC_PAPER_SIZE, PaperName(hDlg, paper).c_str(), nIndex);
            ++listed.nPapers;
        }
        ++nIndex;
    }
    return listed;
}

// Likewise the saved sizes.
static void ListSlots(HWND hDlg, DriverDevMode *lpDM, DWORD dwMask)
{
    const DatFile &dat = TablesOf(hDlg);
    auto nIndex = static_cast<int32_t>(dat.nPapers);
    for (const UserPaperRecord &slot : UserPapersInUse(dat)) {
        if (Supports(slot.paper, dwMask)) {
            if (slot.paper.wId == lpDM->dm.dmPaperSize)
                lpDM->nPaper = nIndex;
            AppendItem(hDlg, IDC_PAPER_SIZE, SlotName(slot).c_str(), nIndex);
        }
        ++nIndex;
    }
}

// Of the record's source: the last of its identifier, where queries take the first. One that the
// model lacks is of kind 0.
static DWORD MaskOfSource(const DatFile &dat, int16_t sSource)
{
    DWORD dwKind = 0;
    for (const BinRecord &bin : Bins(dat))
        if (IsSource(bin.wId, sSource))
            dwKind = bin.wKind;
    return SourceMask(dwKind);
}

// By its text. That of a saved size is looked for behind the papers and the saved sizes before it,
// so that one that is called like a paper is found.
static void SelectCurrent(HWND hDlg, const DriverDevMode *lpDM, int nListedPapers)
{
    const DatFile &dat = TablesOf(hDlg);
    const int64_t nSlot = int64_t{lpDM->nPaper} - dat.nPapers;
    if (nSlot >= int64_t{dat.nUserPaperUsed}) // a free slot, which is not listed
        return;
    SelectText(hDlg, IDC_PAPER_SIZE, NameOfIndex(hDlg, lpDM->nPaper).c_str(),
               nSlot < 0 ? -1 : nListedPapers + nSlot - 1);
}

void UpdatePaperSize(HWND hDlg, DriverDevMode *lpDM)
{
    const DatFile &dat = TablesOf(hDlg);
    EmptyList(hDlg, IDC_PAPER_SIZE);
    const DWORD dwMask = MaskOfSource(dat, lpDM->dm.dmDefaultSource);
    // A saved size, and none is left. Where the source does not feed the user-defined paper
    // either, the index goes on naming nothing, and nothing is selected.
    if (lpDM->nPaper >= int64_t{dat.nPapers} && dat.nUserPaperUsed == 0)
        lpDM->nPaper = lpDM->dm.dmPaperSize = KV_PAPER_USER;
    const Listed listed = ListPapers(hDlg, lpDM, dwMask);
    ListSlots(hDlg, lpDM, dwMask);
    SelectCurrent(hDlg, lpDM, listed.nPapers);
}

void FillSources(HWND hDlg, const DriverDevMode *lpDM)
{
    const UIINSTANCE *lpInstance = GetPaperCB(hDlg)->lpInstance;
    if (lpInstance->dat.nBins == 1) {
        for (const int id : {IDC_PAPER_SOURCE, IDC_PAPER_SOURCE_LABEL})
            ShowWindow(GetDlgItem(hDlg, id), SW_HIDE);
        return;
    }
    EmptyList(hDlg, IDC_PAPER_SOURCE);
    LPARAM nPosition = 0;
    for (const BinRecord &bin : Bins(lpInstance->dat))
        AppendItem(hDlg, IDC_PAPER_SOURCE,
                   LoadText(lpInstance->hResLib, SOURCE_NAME + UINT{bin.wKind}).c_str(),
                   nPosition++);
    SendDlgItemMessageA(hDlg, IDC_PAPER_SOURCE, CB_SETCURSEL, static_cast<WPARAM>(lpDM->nBin), 0);
    SetStaticText(lpInstance->hResLib, hDlg, IDC_PAPER_SOURCE_LABEL, LABEL_SOURCE);
}

// ---- choosing a paper -------------------------------------------------------------------------

static void SetSize360(DriverDevMode *lpDM, const PaperRecord &paper)
{
    lpDM->wPaperWidth360 = static_cast<WORD>(paper.wWidth);
    lpDM->wPaperLength360 = static_cast<WORD>(paper.wLength);
}

static void TakePaper(DriverDevMode *lpDM, const PaperRecord &paper)
{
    lpDM->dm.dmPaperSize = paper.wId;
    PutPaperSize(lpDM, paper);
}

// The sizes in 1/360 inch stay those of the paper before.
static void TakeSlot(DriverDevMode *lpDM, const PaperRecord &paper)
{
    const PaperSize size = UserPaperSizeInMM(paper);
    lpDM->dm.dmPaperSize = paper.wId;
    lpDM->dm.dmPaperLength = static_cast<int16_t>(size.lLength);
    lpDM->dm.dmPaperWidth = static_cast<int16_t>(size.lWidth);
}

// The size that the dialog left in the record becomes the user-defined paper's own.
static void TakeOwnSize(DriverDevMode *lpDM, PaperRecord *lpPaper)
{
    lpPaper->wWidth = static_cast<int16_t>(FromMMTo360(lpDM->lPaperWidth));
    lpPaper->wLength = static_cast<int16_t>(FromMMTo360(lpDM->lPaperLength));
    lpDM->dm.dmPaperSize = KV_PAPER_USER;
    lpDM->dm.dmPaperLength = static_cast<int16_t>(lpDM->lPaperLength);
    lpDM->dm.dmPaperWidth = static_cast<int16_t>(lpDM->lPaperWidth);
}

// The user-defined paper, at nIndex: its dialog tells the size. Cancelled, or without a dialog, the
// size that the record holds is taken as well.
static void AskForSize(HWND hDlg, DriverDevMode *lpDM, LONG nIndex)
{
    CBSTRUC *lpcbstruc = GetPaperCB(hDlg);
    DatFile &dat = lpcbstruc->lpInstance->dat;
    const INT_PTR nSlot =
        DialogBoxParamA(lpcbstruc->lpInstance->hResLib, MAKEINTRESOURCEA(IDD_SIZE), hDlg,
                        UserDlgProc, reinterpret_cast<LPARAM>(lpcbstruc));
    PaperRecord *lpOwn = nSlot == -1 ? RecordAt(dat.lpPapers, dat.nPapers, nIndex) : nullptr;
    if (lpOwn) {
        TakeOwnSize(lpDM, lpOwn);
        lpDM->nPaper = nIndex;
    } else if (const UserPaperRecord *lpSlot = SlotAt(dat, nSlot)) {
        TakeSlot(lpDM, lpSlot->paper);
        // This names the slot because the user-defined paper is the last of a model's papers.
        lpDM->nPaper = static_cast<int32_t>(nIndex + 1 + nSlot);
    }
    // Sizes may have been saved and deleted meanwhile.
    UpdatePaperSize(hDlg, lpDM);
    if (lpOwn)
        SetSize360(lpDM, *lpOwn);
}

// By its index. Whether there is such a paper.
static bool ChoosePaper(HWND hDlg, DriverDevMode *lpDM, LONG nIndex)
{
    const DatFile &dat = TablesOf(hDlg);
    if (const PaperRecord *lpPaper = RecordAt(dat.lpPapers, dat.nPapers, nIndex)) {
        if (lpPaper->wId == KV_PAPER_USER) {
            AskForSize(hDlg, lpDM, nIndex);
            return true;
        }
        TakePaper(lpDM, *lpPaper);
    } else if (const UserPaperRecord *lpSlot = SlotAt(dat, int64_t{nIndex} - dat.nPapers)) {
        TakeSlot(lpDM, lpSlot->paper);
        lpDM->dwUnit = lpSlot->paper.wDefault == UNIT_MM ? UNIT_MM : UNIT_INCH;
    } else {
        return false;
    }
    lpDM->nPaper = nIndex;
    return true;
}

INT_PTR OnPaperList(HWND hDlg, DriverDevMode *lpDM, WORD wCode)
{
    if (wCode != CBN_SELCHANGE || !ChoosePaper(hDlg, lpDM, SelectedData(hDlg, IDC_PAPER_SIZE)))
        return TRUE;
    lpDM->lPaperWidth = lpDM->dm.dmPaperWidth;
    lpDM->lPaperLength = lpDM->dm.dmPaperLength;
    SetPaperBmp(hDlg, lpDM);
    return TRUE;
}

// ---- choosing a source ------------------------------------------------------------------------

// A saved size of the record's identifier among those up to the current one.
static bool FindSlot(const DatFile &dat, DriverDevMode *lpDM, DWORD dwMask)
{
    const int64_t nLast = int64_t{lpDM->nPaper} - dat.nPapers;
    for (int64_t nSlot = 0; nSlot <= nLast; ++nSlot) {
        const UserPaperRecord *lpSlot = SlotAt(dat, nSlot);
        if (!lpSlot)
            return false;
        if (Supports(lpSlot->paper, dwMask) && lpSlot->paper.wId == lpDM->dm.dmPaperSize) {
            lpDM->nPaper = static_cast<int32_t>(dat.nPapers + nSlot);
            return true;
        }
    }
    return false;
}

static bool TakeFirstPaper(const DatFile &dat, DriverDevMode *lpDM, DWORD dwMask)
{
    int32_t nIndex = 0;
    for (const PaperRecord &paper : Papers(dat)) {
        if (Supports(paper, dwMask)) {
            TakePaper(lpDM, paper);
            lpDM->nPaper = nIndex;
            return true;
        }
        ++nIndex;
    }
    return false;
}

// Refills the list of papers for a source that was chosen. The current paper stays if the source
// feeds it, otherwise its first one becomes current; a source that feeds nothing changes nothing.
// The held size, lPaperWidth and lPaperLength, stays either way.
static void FollowSource(HWND hDlg, DriverDevMode *lpDM, DWORD dwMask)
{
    const DatFile &dat = TablesOf(hDlg);
    EmptyList(hDlg, IDC_PAPER_SIZE);
    const bool bFed = ListPapers(hDlg, lpDM, dwMask).bCurrent || FindSlot(dat, lpDM, dwMask) ||
                      TakeFirstPaper(dat, lpDM, dwMask);
    const std::string strName = bFed ? NameOfIndex(hDlg, lpDM->nPaper) : "";
    ListSlots(hDlg, lpDM, dwMask);
    if (bFed)
        SelectText(hDlg, IDC_PAPER_SIZE, strName.c_str());
}

INT_PTR OnSourceList(HWND hDlg, DriverDevMode *lpDM, WORD wCode)
{
    if (wCode == CBN_SELCHANGE) {
        const LONG nBin = SelectedData(hDlg, IDC_PAPER_SOURCE);
        const DatFile &dat = TablesOf(hDlg);
        const BinRecord *lpBin = RecordAt(dat.lpBins, dat.nBins, nBin);
        if (!lpBin)
            return TRUE;
        lpDM->nBin = nBin;
        lpDM->dm.dmDefaultSource = static_cast<int16_t>(lpBin->wId);
        FollowSource(hDlg, lpDM, SourceMask(static_cast<DWORD>(nBin)));
        CheckBin(hDlg, lpDM);
    }
    SetPaperBmp(hDlg, lpDM);
    return TRUE;
}
