// Questions about a model's papers, sources, sizes, margins and limits.
#include "datafile/queries.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "base/text.h"
#include "base/uilibrary.h"
#include "base/units.h"
#include "datafile/loader.h"
#include "datafile/margins.h"
#include "datafile/tables.h"

static constexpr UINT FIRST_BINNAME = 1500; // string of source kind 0

// Load, answer, release; or what a failed load answers.
template <class Result, class Answer>
static Result WithTables(const DriverDevMode *lpDM, Result failed, Answer answer)
{
    if (!Get_DATFile(lpDM))
        return failed;
    const AtEnd release([lpDM] { Free_DATFile(lpDM); });
    return answer(pInstance->dat);
}

// An entry of a caller's array, which may lie at any address.
template <class Entry>
static void PutEntry(Entry *lpArray, DWORD n, const Entry &entry)
{
    std::memcpy(static_cast<void *>(lpArray + n), &entry, sizeof entry);
}

// ---- which papers -----------------------------------------------------------------------------

// The record of a paper identifier: a paper, else a user's in use, else the user-defined paper.
static const PaperRecord *RecordOfPaper(const DatFile &block, int nId)
{
    if (const PaperRecord *lpPaper = FindPaper(block, nId))
        return lpPaper;
    if (const UserPaperRecord *lpSlot = FindUserPaper(block, nId))
        return &lpSlot->paper;
    return FindPaper(block, KV_PAPER_USER);
}

// Of the record's source; a source that the model lacks is of kind 0.
static DWORD CurrentMask(const DriverDevMode *lpDM, const DatFile &block)
{
    const int16_t sSource = lpDM->dm.dmDefaultSource;
    for (const BinRecord &bin : Bins(block))
        if (IsSource(bin.wId, sSource))
            return SourceMask(bin.wKind);
    return SourceMask(0);
}

// Calls visit(paper, slot) for every supported entry among the first n of papers and then user
// slots in list order, slot being null for the model's own papers; how many there were.
template <class Visit>
static DWORD EachSupported(const DatFile &block, DWORD n, DWORD dwMask, Visit visit)
{
    DWORD nFound = 0;
    const auto papers = Papers(block);
    for (const PaperRecord &paper : papers.first(std::min<size_t>(n, papers.size())))
        if (Supports(paper, dwMask))
            visit(nFound++, paper, nullptr);
    const size_t nSlots = n > block.nPapers ? n - block.nPapers : 0;
    const std::span slots(block.lpUserPapers);
    for (const UserPaperRecord &slot : slots.first(std::min<size_t>(nSlots, slots.size())))
        if (Supports(slot.paper, dwMask))
            visit(nFound++, slot.paper, &slot);
    return nFound;
}

DWORD CountSupportPaperNum(DWORD n, DWORD dwMask, const DatFile *lpBlock)
{
    return EachSupported(*lpBlock, n, dwMask,
                         [](DWORD, const PaperRecord &, const UserPaperRecord *) {});
}

// The papers that the record's source supports: counted without an array, else visited.
template <class Visit>
static DWORD ListPapers(const DriverDevMode *lpDM, const DatFile &block, bool bFill, Visit visit)
{
    const DWORD n = block.nPapers + block.nUserPaperUsed;
    const DWORD dwMask = CurrentMask(lpDM, block);
    return bFill ? EachSupported(block, n, dwMask, visit) : CountSupportPaperNum(n, dwMask, &block);
}

DWORD Get_PaperIndexs(const DriverDevMode *lpDM, WORD *lpIds)
{
    const auto store = [lpIds](DWORD i, const PaperRecord &paper, const UserPaperRecord *) {
        PutEntry(lpIds, i, static_cast<WORD>(paper.wId));
    };
    return WithTables(lpDM, DWORD{0}, [&](const DatFile &block) {
        return ListPapers(lpDM, block, lpIds != nullptr, store);
    });
}

DWORD Get_BinIndexs(const DriverDevMode *lpDM, WORD *lpIds)
{
    return WithTables(lpDM, DWORD{0}, [lpIds](const DatFile &block) {
        for (DWORD i = 0; lpIds && i < block.nBins; ++i)
            PutEntry(lpIds, i, WORD{block.lpBins[i].wId});
        return block.nBins;
    });
}

// ---- sizes ------------------------------------------------------------------------------------

template <class Convert>
static PaperSize Converted(Convert convert, int64_t lWidth, int64_t lLength)
{
    return {static_cast<int32_t>(convert(lWidth)), static_cast<int32_t>(convert(lLength))};
}

// What a record says of its own paper, for a paper that nobody knows.
static PaperSize OwnSize(const DriverDevMode *lpDM)
{
    return Converted(FromMMTo360, lpDM->dm.dmPaperWidth, lpDM->dm.dmPaperLength);
}

static PaperSize SlotSizeIn360(const PaperRecord &paper)
{
    return Converted(paper.wDefault == UNIT_MM ? FromMMTo360 : FromInchTo360, paper.wWidth,
                     paper.wLength);
}

PaperSize UserPaperSizeInMM(const PaperRecord &paper)
{
    if (paper.wDefault == UNIT_MM)
        return {paper.wWidth, paper.wLength};
    return Converted(FromInchToMM, paper.wWidth, paper.wLength);
}

BOOL Get_CurPaperSizeSub(const DriverDevMode *lpDM, int nPaperId, PaperSize *lpSize)
{
    const DatFile &block = pInstance->dat;
    const PaperRecord *lpPaper = FindPaper(block, nPaperId);
    const UserPaperRecord *lpSlot = lpPaper ? nullptr : FindUserPaper(block, nPaperId);
    if (nPaperId == KV_PAPER_USER)
        *lpSize = Converted(FromMMTo360, lpDM->lPaperWidth, lpDM->lPaperLength);
    else if (lpPaper)
        *lpSize = {lpPaper->wWidth, lpPaper->wLength};
    else
        *lpSize = lpSlot ? SlotSizeIn360(lpSlot->paper) : OwnSize(lpDM);
    return TRUE;
}

BOOL Get_CurPaperSize(const DriverDevMode *lpDM, int, PaperSize *lpSize)
{
    *lpSize = WithTables(lpDM, OwnSize(lpDM), [lpDM](const DatFile &) {
        PaperSize size;
        Get_CurPaperSizeSub(lpDM, lpDM->dm.dmPaperSize, &size);
        return size;
    });
    return TRUE;
}

DWORD Get_PaperSize(const DriverDevMode *lpDM, PaperSize *lpSizes)
{
    const auto store = [=](DWORD i, const PaperRecord &paper, const UserPaperRecord *lpSlot) {
        if (lpSlot)
            PutEntry(lpSizes, i, UserPaperSizeInMM(paper));
        else if (paper.wId == KV_PAPER_USER)
            PutEntry(lpSizes, i, PaperSize{lpDM->lPaperWidth, lpDM->lPaperLength});
        else
            PutEntry(lpSizes, i, Converted(From360ToMM, paper.wWidth, paper.wLength));
    };
    return WithTables(lpDM, DWORD{0}, [&](const DatFile &block) {
        return ListPapers(lpDM, block, lpSizes != nullptr, store);
    });
}

// ---- margins and limits -----------------------------------------------------------------------

BOOL Get_CurPaperMargin(const DriverDevMode *lpDM, PaperMargin *lpMargin)
{
    static constexpr PaperMargin unknown = {42, 42, 42, 198};
    *lpMargin = WithTables(lpDM, unknown, [lpDM](const DatFile &block) {
        const PaperRecord *lpPaper = RecordOfPaper(block, lpDM->dm.dmPaperSize);
        PaperMargin margin = unknown;
        if (lpPaper)
            margin = {lpPaper->wLeft, lpPaper->wTop, lpPaper->wRight, lpPaper->wBottom};
        if (lpDM->nPrintArea == AREA_CENTRED)
            CentreMargins(&margin);
        return margin;
    });
    return TRUE;
}

// A limit of the current paper, named by its two fields. FALSE and lpSize as it was when there is
// none.
static BOOL GetLimit(const DriverDevMode *lpDM, int16_t PaperRecord::*pWidth,
                     int16_t PaperRecord::*pLength, PaperSize *lpSize)
{
    return WithTables(lpDM, FALSE, [=](const DatFile &block) {
        const PaperRecord *lpPaper = RecordOfPaper(block, lpDM->dm.dmPaperSize);
        if (lpPaper)
            *lpSize = {lpPaper->*pWidth, lpPaper->*pLength};
        return BOOL{lpPaper != nullptr};
    });
}

BOOL Get_MaxPrintable(const DriverDevMode *lpDM, PaperSize *lpSize)
{
    *lpSize = {2413, 11176};
    return GetLimit(lpDM, &PaperRecord::wMaxWidth, &PaperRecord::wMaxLength, lpSize);
}

BOOL Get_MinPrintable(const DriverDevMode *lpDM, PaperSize *lpSize)
{
    *lpSize = {1000, 1000};
    return GetLimit(lpDM, &PaperRecord::wMinWidth, &PaperRecord::wMinLength, lpSize);
}

// ---- names ------------------------------------------------------------------------------------

int Get_ResHandle(const DriverDevMode *lpDM, HANDLE hPrinter)
{
    LibraryPtr library = LoadUILibrary(AnsiModelName(lpDM).c_str(), hPrinter);
    if (!library)
        return -1;
    pInstance->hResLib = library.release();
    return 1;
}

// The bracket around a query for names: the UI resource library outside, the tables inside.
template <class Answer>
static DWORD WithNames(const DriverDevMode *lpDM, HANDLE hPrinter, Answer answer)
{
    if (Get_ResHandle(lpDM, hPrinter) != 1)
        return 0;
    const AtEnd release([] {
        FreeLibrary(pInstance->hResLib);
        pInstance->hResLib = nullptr;
    });
    return WithTables(lpDM, DWORD{0}, answer);
}

// "" for a text that the library lacks.
static std::u16string ResourceText(UINT uId)
{
    WCHAR awch[256];
    const int cch = LoadStringW(pInstance->hResLib, uId, awch, std::size(awch));
    return std::u16string(awch, static_cast<size_t>(std::max(cch, 0)));
}

static std::u16string WideSlotName(const UserPaperRecord &slot)
{
    LPWSTR lpWide = PreShiftJISToUnicode(SlotName(slot).c_str());
    std::u16string wstrName(lpWide ? lpWide : u"");
    PostShiftJISToUnicode(lpWide);
    return wstrName;
}

// Slot i of an array of names, each cchSlot characters with its terminator. A cut does not split
// a surrogate pair.
static void PutName(LPWSTR lpNames, DWORD i, size_t cchSlot, std::u16string wstrName)
{
    if (wstrName.size() >= cchSlot)
        wstrName.resize(cchSlot - 1 - ((wstrName[cchSlot - 2] & 0xFC00) == 0xD800));
    std::memcpy(static_cast<void *>(lpNames + i * cchSlot), wstrName.c_str(),
                (wstrName.size() + 1) * sizeof(WCHAR));
}

DWORD Get_PaperNames(const DriverDevMode *lpDM, LPWSTR lpNames, HANDLE hPrinter)
{
    const auto store = [=](DWORD i, const PaperRecord &paper, const UserPaperRecord *lpSlot) {
        const int nStringId = paper.wId;
        PutName(lpNames, i, PAPERNAME_CHARS,
                lpSlot ? WideSlotName(*lpSlot) : ResourceText(static_cast<UINT>(nStringId)));
    };
    return WithNames(lpDM, hPrinter, [&](const DatFile &block) {
        return ListPapers(lpDM, block, lpNames != nullptr, store);
    });
}

DWORD Get_BinNames(const DriverDevMode *lpDM, LPWSTR lpNames, HANDLE hPrinter)
{
    return WithNames(lpDM, hPrinter, [=](const DatFile &block) {
        for (DWORD i = 0; lpNames && i < block.nBins; ++i)
            PutName(lpNames, i, BINNAME_CHARS, ResourceText(FIRST_BINNAME + block.lpBins[i].wKind));
        return block.nBins;
    });
}
