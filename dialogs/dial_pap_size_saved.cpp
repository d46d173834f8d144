// Sizes that the user has saved under names of his own: the list of them, what a name may be, and
// saving and deleting. Both are in the model's tables and in the user's file at once.
#include "dialogs/dial_pap_size.h"

#include <algorithm>

#include "base/units.h"
#include "datafile/tables.h"
#include "datafile/writer.h"
#include "dialogs/dial_pap.h"
#include "dialogs/helpers.h"
#include "resources/size_ids.h"
#include "resources/text_ids.h"

static constexpr size_t NAME_BYTES = 24;    // of a saved name
static constexpr LPARAM USER_DEFINED = 100; // item data of the list's first entry

// ---- the list ---------------------------------------------------------------------------------

void SelectSize(HWND hDlg, LRESULT nEntry)
{
    SendDlgItemMessageA(hDlg, IDC_SIZE_LIST, LB_SETCURSEL, static_cast<WPARAM>(nEntry), 0);
}

LRESULT SelectedSize(HWND hDlg)
{
    return SendDlgItemMessageA(hDlg, IDC_SIZE_LIST, LB_GETCURSEL, 0, 0);
}

void FillSizes(HWND hDlg, const CBSTRUC *lpcbstruc)
{
    SendDlgItemMessageA(hDlg, IDC_SIZE_LIST, LB_RESETCONTENT, 0, 0);
    AppendListItem(hDlg, IDC_SIZE_LIST, UserDefinedName(lpcbstruc).c_str(), USER_DEFINED);
    LPARAM lSlot = 0;
    for (const UserPaperRecord &slot : UserPapersInUse(lpcbstruc->lpInstance->dat))
        AppendListItem(hDlg, IDC_SIZE_LIST, SlotName(slot).c_str(), lSlot++);
}

// The position of the saved size of exactly this name, or -1.
static int FindSaved(const DatFile &block, const std::string &strName)
{
    const auto slots = UserPapersInUse(block);
    for (size_t i = 0; i < slots.size(); ++i)
        if (SlotName(slots[i]) == strName)
            return static_cast<int>(i);
    return -1;
}

// ---- names ------------------------------------------------------------------------------------

// A name without the dimensions behind it: up to the first space that a digit, another space or
// nothing follows.
static std::string ShortName(const std::string &strName)
{
    for (size_t n = strName.find(' '); n != std::string::npos; n = strName.find(' ', n + 1)) {
        const char cNext = n + 1 < strName.size() ? strName[n + 1] : ' ';
        if (cNext == ' ' || (cNext >= '0' && cNext <= '9'))
            return strName.substr(0, n);
    }
    return strName;
}

// Whether one of the model's papers could be taken for it. A paper that the library has no name
// for is not shown to anybody either.
static bool IsPaperName(HWND hDlg, const std::string &strName)
{
    const auto isTaken = [&](const PaperRecord &paper) {
        const std::string strPaper = PaperName(hDlg, paper);
        const std::string strShort = ShortName(strPaper);
        return !strPaper.empty() &&
               (strName == strPaper || strName == strShort || ShortName(strName) == strShort);
    };
    return std::ranges::any_of(Papers(TablesOf(hDlg)), isTaken);
}

void OnSizeName(HWND hDlg, CBSTRUC *lpcbstruc, WORD, WORD wCode)
{
    UIINSTANCE *lpInstance = lpcbstruc->lpInstance;
    if (wCode != EN_CHANGE || SwallowsChange(lpInstance))
        return;
    SelectSize(hDlg, -1);
    std::string strName = DlgItemText(hDlg, IDC_SIZE_NAME);
    if (CutName(&strName, NAME_BYTES)) {
        lpInstance->dwFilling = TRUE;
        PutCutName(hDlg, IDC_SIZE_NAME, strName);
    }
    if (IsBlank(strName)) {
        EnableSizeButtons(hDlg, false, false);
        return;
    }
    const bool bTaken = IsPaperName(hDlg, strName);
    EnableControl(hDlg, IDC_SIZE_SAVE, !bTaken);
    EnableControl(hDlg, IDOK, false);
    if (!bTaken)
        EnableControl(hDlg, IDC_SIZE_DELETE, FindSaved(lpInstance->dat, strName) >= 0);
}

// ---- saving -----------------------------------------------------------------------------------

static int Ask(HWND hDlg, const CBSTRUC *lpcbstruc, UINT idText, UINT uButtons)
{
    return AskUser(hDlg, lpcbstruc->lpInstance->hResLib, idText, CAPTION_PAPER, uButtons);
}

static size_t Capacity(const DatFile &block)
{
    return std::min<size_t>(block.CfgHeader.wUserPaperSlots, block.lpUserPapers.size());
}

// Where the size of this name goes: over the saved one if the user agrees, else into the first
// free slot. -1 after a message.
static int SlotToSaveIn(HWND hDlg, const CBSTRUC *lpcbstruc, const std::string &strName)
{
    const DatFile &dat = lpcbstruc->lpInstance->dat;
    if (strName == UserDefinedName(lpcbstruc)) {
        Ask(hDlg, lpcbstruc, TEXT_PAPER_RESERVED, MB_OK);
        return -1;
    }
    const int nSaved = FindSaved(dat, strName);
    if (nSaved >= 0)
        return Ask(hDlg, lpcbstruc, TEXT_PAPER_REPLACE, MB_OKCANCEL) == IDOK ? nSaved : -1;
    if (dat.nUserPaperUsed < Capacity(dat))
        return static_cast<int>(dat.nUserPaperUsed);
    Ask(hDlg, lpcbstruc, TEXT_PAPERS_FULL, MB_OK);
    return -1;
}

// The slot keeps its identifier and its limits.
static void StoreSize(HWND hDlg, PaperRecord *lpPaper)
{
    lpPaper->wWidth = static_cast<int16_t>(NumberOfText(hDlg, IDC_SIZE_WIDTH));
    lpPaper->wLength = static_cast<int16_t>(NumberOfText(hDlg, IDC_SIZE_LENGTH));
    lpPaper->wDefault =
        static_cast<int16_t>(IsDlgButtonChecked(hDlg, IDC_SIZE_MM) ? UNIT_MM : UNIT_INCH);
}

static void PutSlotName(UserPaperRecord *lpSlot, const std::string &strName)
{
    std::ranges::fill(lpSlot->szName, '\0');
    strName.copy(lpSlot->szName, sizeof lpSlot->szName - 1);
}

void OnSaveSize(HWND hDlg, CBSTRUC *lpcbstruc, WORD, WORD)
{
    DatFile &dat = lpcbstruc->lpInstance->dat;
    const std::string strName = DlgItemText(hDlg, IDC_SIZE_NAME);
    const int nSlot = SlotToSaveIn(hDlg, lpcbstruc, strName);
    if (nSlot < 0)
        return;
    UserPaperRecord *lpSlot = &dat.lpUserPapers[static_cast<size_t>(nSlot)];
    StoreSize(hDlg, &lpSlot->paper);
    if (static_cast<DWORD>(nSlot) == dat.nUserPaperUsed) {
        PutSlotName(lpSlot, strName);
        lpSlot->wState = STATE_IN_USE;
        lpSlot->wMark = static_cast<WORD>(nSlot);
        AppendListItem(hDlg, IDC_SIZE_LIST, strName.c_str(), nSlot);
        ++dat.nUserPaperUsed;
    }
    SelectSize(hDlg, nSlot + 1);
    // Whether or not the file could be written, the size is there until the sheet closes.
    WriteUcfFile(lpcbstruc->lpDevMode, lpcbstruc->lpInstance);
    EnableSizeButtons(hDlg, false, true);
    EnableControl(hDlg, IDOK, true);
}

// The slots behind it move up, whole: identifiers travel with their sizes, and so do marks.
static void FreeSlot(DatFile *lpBlock, int nSlot)
{
    const auto slots = lpBlock->lpUserPapers.begin();
    const auto end = slots + static_cast<ptrdiff_t>(Capacity(*lpBlock));
    std::rotate(slots + nSlot, slots + nSlot + 1, end);
    UserPaperRecord *lpFreed = &*(end - 1);
    lpFreed->wState = STATE_FREE;
    lpFreed->wMark = MARK_FREE;
    PutSlotName(lpFreed, "");
    --lpBlock->nUserPaperUsed;
}

void OnDeleteSize(HWND hDlg, CBSTRUC *lpcbstruc, WORD, WORD)
{
    DatFile &dat = lpcbstruc->lpInstance->dat;
    const int nSlot = FindSaved(dat, DlgItemText(hDlg, IDC_SIZE_NAME));
    if (nSlot < 0 || Ask(hDlg, lpcbstruc, TEXT_DELETE, MB_OKCANCEL) != IDOK)
        return;
    FreeSlot(&dat, nSlot);
    WriteUcfFile(lpcbstruc->lpDevMode, lpcbstruc->lpInstance);
    FillSizes(hDlg, lpcbstruc);
    ShowUserDefined(hDlg, lpcbstruc);
}
