// Getting a complete, valid record for a printer, and merging records from outside into it.
//
// Such a record may be of any driver and any length, and is never trusted as a whole. How long it
// is it says itself, and only what it says is read; a field that lies beyond dmSize is not there.
#include "settings/merge.h"

#include <algorithm>
#include <cstring>

#include "base/handles.h"
#include "base/printer.h"
#include "base/text.h"
#include "base/units.h"
#include "datafile/loader.h"
#include "datafile/margins.h"
#include "datafile/queries.h"
#include "datafile/tables.h"
#include "settings/defaults.h"

// ---- the foreign record -----------------------------------------------------------------------

// Which flag of dmFields means which field, and where that ends.
#define FIELD_END(field) (offsetof(PublicDevMode, field) + sizeof(PublicDevMode::field))
static constexpr struct {
    uint32_t dwFlag;
    size_t nEnd;
} aMergedFields[] = {
    {KV_DM_ORIENTATION, FIELD_END(dmOrientation)},
    {KV_DM_PAPERSIZE, FIELD_END(dmPaperSize)},
    {KV_DM_PAPERLENGTH, FIELD_END(dmPaperLength)},
    {KV_DM_PAPERWIDTH, FIELD_END(dmPaperWidth)},
    {KV_DM_COPIES, FIELD_END(dmCopies)},
    {KV_DM_DEFAULTSOURCE, FIELD_END(dmDefaultSource)},
};

// A copy of the public part that has every field; flags stand only for fields that are there.
static PublicDevMode PublicPartOf(const DriverDevMode *lpIn)
{
    PublicDevMode in{};
    const size_t cb = lpIn->dm.dmSize;
    std::memcpy(&in, lpIn, std::clamp(cb, FIELD_END(dmDriverExtra), sizeof in));
    uint32_t dwPresent = 0;
    for (const auto &row : aMergedFields)
        if (cb >= row.nEnd)
            dwPresent |= row.dwFlag;
    in.dmFields &= dwPresent;
    return in;
}

// The four values that mark a record as one of ours; whether it is of the same model, its tag says.
static bool IsOurs(const PublicDevMode &dm)
{
    return dm.dmSpecVersion == KV_SPECVERSION && dm.dmDriverVersion == KV_DRIVERVERSION &&
           dm.dmSize == KV_PUBLICSIZE && dm.dmDriverExtra == KV_PRIVATESIZE;
}

// All or nothing, the model's name too: from here on the files of that model are asked.
static void MergePrivatePart(DriverDevMode *lpDM, const DriverDevMode *lpIn)
{
    if (!IsOurs(lpIn->dm) || lpIn->dwModelTag != lpDM->dwModelTag)
        return;
    KVMemcpy(reinterpret_cast<BYTE *>(lpDM) + KV_PUBLICSIZE,
             reinterpret_cast<const BYTE *>(lpIn) + KV_PUBLICSIZE, KV_PRIVATESIZE);
    lpDM->dm.dmColor = static_cast<int16_t>(lpDM->Settings.wInk + 1);
}

// ---- paper and resolution ---------------------------------------------------------------------

// A paper found by its identifier, with its size in 0.1 mm.
struct ChosenPaper {
    const PaperRecord *lpPaper; // null: not found
    int64_t lWidth, lLength;
    int32_t nIndex;
    uint32_t dwUnit; // 0: stays as it is
};

static ChosenPaper ChooseUserSlot(int nPaperId, const DatFile &block)
{
    const int nSlot = FindUserPaperIndex(block, nPaperId);
    if (nSlot < 0)
        return {};
    const PaperRecord &paper = block.lpUserPapers[static_cast<size_t>(nSlot)].paper;
    const PaperSize size = UserPaperSizeInMM(paper);
    return {&paper, size.lWidth, size.lLength, static_cast<int32_t>(block.nPapers) + nSlot,
            paper.wDefault == UNIT_MM ? UNIT_MM : UNIT_INCH};
}

static ChosenPaper ChoosePaper(const DriverDevMode *lpDM, int nPaperId, const DatFile &block)
{
    const int nIndex = FindPaperIndex(block, nPaperId);
    if (nPaperId == KV_PAPER_USER && (nIndex < 0 || lpDM->lPaperWidth == 0))
        return {};
    if (nIndex < 0)
        return ChooseUserSlot(nPaperId, block);
    const PaperRecord &paper = block.lpPapers[static_cast<size_t>(nIndex)];
    if (nPaperId == KV_PAPER_USER)
        return {&paper, lpDM->lPaperWidth, lpDM->lPaperLength, nIndex, 0};
    return {&paper, From360ToMM(paper.wWidth), From360ToMM(paper.wLength), nIndex, 0};
}

// wPaperWidth360 and wPaperLength360 stay: they follow only where a size is entered.
void Get_NewPaperMMSize(DriverDevMode *lpDM, int nPaperId, const DatFile *lpBlock)
{
    const ChosenPaper chosen = ChoosePaper(lpDM, nPaperId, *lpBlock);
    if (!chosen.lpPaper)
        return;
    if (chosen.dwUnit != 0)
        lpDM->dwUnit = chosen.dwUnit;
    lpDM->lPaperLength = static_cast<int32_t>(chosen.lLength);
    lpDM->dm.dmPaperLength = static_cast<int16_t>(chosen.lLength);
    lpDM->dm.dmPaperWidth = static_cast<int16_t>(chosen.lWidth);
    lpDM->lPaperWidth = static_cast<int32_t>(chosen.lWidth);
    lpDM->nPaper = chosen.nIndex;
    SetMargins(lpDM, *chosen.lpPaper, chosen.lWidth);
}

// Truncated, where the programmatic interface rounds: both are what their callers know.
static WORD MergedTo360(int16_t sMM)
{
    return static_cast<WORD>(int64_t{sMM} * 360 / 254);
}

// Only what differs and is meant; index and margins stay.
static void MergeFreeSize(DriverDevMode *lpDM, const PublicDevMode &in)
{
    if (in.dmPaperLength != lpDM->dm.dmPaperLength && (in.dmFields & KV_DM_PAPERLENGTH)) {
        lpDM->dm.dmPaperLength = in.dmPaperLength;
        lpDM->lPaperLength = in.dmPaperLength;
        lpDM->wPaperLength360 = MergedTo360(in.dmPaperLength);
    }
    if (in.dmPaperWidth != lpDM->dm.dmPaperWidth && (in.dmFields & KV_DM_PAPERWIDTH)) {
        lpDM->dm.dmPaperWidth = in.dmPaperWidth;
        lpDM->lPaperWidth = in.dmPaperWidth;
        lpDM->wPaperWidth360 = MergedTo360(in.dmPaperWidth);
    }
}

// The identifier is taken even when the model has no such paper.
static void MergePaper(DriverDevMode *lpDM, const PublicDevMode &in, const DatFile &block)
{
    if (!(in.dmFields & KV_DM_PAPERSIZE))
        return;
    lpDM->dm.dmPaperSize = in.dmPaperSize;
    if (in.dmPaperSize == KV_PAPER_USER)
        MergeFreeSize(lpDM, in);
    else
        Get_NewPaperMMSize(lpDM, in.dmPaperSize, &block);
}

// The public resolution follows the settings in force; the sender's own is never taken.
static void FollowResolution(DriverDevMode *lpDM, const DatFile &block)
{
    const ResolutionRecord *lpResolution =
        RecordAt(block.lpRes, block.nRes, lpDM->Settings.wResolution);
    if (lpResolution)
        PutResolution(lpDM, *lpResolution);
}

BOOL MergePaperAndResolution(DriverDevMode *lpDM, const DriverDevMode *lpIn)
{
    DatFile block{};
    if (Get_DatFileLib(lpDM, &block)) {
        MergePaper(lpDM, PublicPartOf(lpIn), block);
        FollowResolution(lpDM, block);
    }
    return Free_DatFileLib(lpDM, &block);
}

// ---- source -----------------------------------------------------------------------------------

void ModifyCheckBin(DriverDevMode *lpDM, const DatFile *lpBlock)
{
    ApplyAreaRule(lpDM, lpBlock);
}

// Among the user paper slots in use; -1 when there is none.
static int FirstFedSlot(const DatFile &block, DWORD dwMask, int nPaperId)
{
    const auto slots = UserPapersInUse(block);
    const auto slot = std::ranges::find_if(slots, [=](const UserPaperRecord &candidate) {
        return Supports(candidate.paper, dwMask) && candidate.paper.wId == nPaperId;
    });
    return slot == slots.end() ? -1 : static_cast<int>(slot - slots.begin());
}

void ModifySource(DriverDevMode *lpDM, DWORD dwKind, const DatFile *lpBlock)
{
    const DWORD dwMask = SourceMask(dwKind);
    const int nPaperId = lpDM->dm.dmPaperSize;
    const PaperRecord *lpPapers = lpBlock->lpPapers.data();

    ModifyCheckBin(lpDM, lpBlock);
    if (const PaperRecord *lpOwn = FindFedPaper(*lpBlock, dwMask, nPaperId)) {
        lpDM->nPaper = static_cast<int32_t>(lpOwn - lpPapers);
    } else if (const int nSlot = FirstFedSlot(*lpBlock, dwMask, nPaperId); nSlot >= 0) {
        lpDM->nPaper = static_cast<int32_t>(lpBlock->nPapers) + nSlot;
        Get_NewPaperMMSize(lpDM, nPaperId, lpBlock);
    } else if (const PaperRecord *lpFirst = FindFedPaper(*lpBlock, dwMask)) {
        lpDM->nPaper = static_cast<int32_t>(lpFirst - lpPapers);
        lpDM->dm.dmPaperSize = lpFirst->wId;
        Get_NewPaperMMSize(lpDM, lpFirst->wId, lpBlock);
    }
}

void MergeSource(DriverDevMode *lpDM, const DriverDevMode *lpIn)
{
    const PublicDevMode in = PublicPartOf(lpIn);
    if (!(in.dmFields & KV_DM_DEFAULTSOURCE))
        return;
    DatFile block{};
    if (Get_DatFileLib(lpDM, &block)) {
        for (const BinRecord &bin : Bins(block)) {
            if (!IsSource(bin.wId, in.dmDefaultSource))
                continue;
            lpDM->dm.dmDefaultSource = in.dmDefaultSource;
            lpDM->nBin = bin.wKind;
            ModifySource(lpDM, bin.wKind, &block);
        }
    }
    Free_DatFileLib(lpDM, &block);
}

// ---- whole records ----------------------------------------------------------------------------

BOOL KVMergeDevMode(DriverDevMode *lpDM, const DriverDevMode *lpIn, HGLOBAL, HANDLE)
{
    if (!lpDM || !lpIn)
        return FALSE;
    const PublicDevMode in = PublicPartOf(lpIn);
    MergePrivatePart(lpDM, lpIn);
    MergePaperAndResolution(lpDM, lpIn);
    MergeSource(lpDM, lpIn);
    if ((in.dmFields & KV_DM_COPIES) && in.dmCopies >= 1 && in.dmCopies <= KV_MOST_COPIES)
        lpDM->dm.dmCopies = in.dmCopies;
    if ((in.dmFields & KV_DM_ORIENTATION) && (in.dmOrientation == 1 || in.dmOrientation == 2))
        lpDM->dm.dmOrientation = in.dmOrientation;
    return TRUE;
}

BOOL KVMergeOldDevmode(DriverDevMode *, const DriverDevMode *, HANDLE)
{
    return FALSE; // records of other versions have nothing that converts
}

// The pairs of a printer record; one that would leave the record's block ends them.
static void TakePairs(DriverDevMode *lpDM, HGLOBAL lpPrinterRecord)
{
    const auto *lpRecord = static_cast<const BYTE *>(lpPrinterRecord);
    const size_t cb = GlobalSize(lpPrinterRecord);
    PrinterRecordHead head{};
    if (cb >= sizeof head)
        std::memcpy(&head, lpRecord, sizeof head);
    const DWORD nWanted = static_cast<DWORD>(std::clamp<int>(head.sPairCount, 0, KV_MAXPAIRS));
    int64_t nAt = int64_t{sizeof head} + 2 * head.sPairOffset;
    lpDM->dwPairCount = 0;
    while (lpDM->dwPairCount < nWanted && nAt >= 0 && nAt + sizeof(DevModePair) <= cb) {
        std::memcpy(&lpDM->aPairs[lpDM->dwPairCount++], lpRecord + nAt, sizeof(DevModePair));
        nAt += sizeof(DevModePair);
    }
}

BOOL KVGetDefDevmode(DriverDevMode *lpDM, HGLOBAL lpPrinterRecord, HANDLE hPrinter)
{
    InitPrinterDevMode(lpDM, nullptr, nullptr); // without its files the rest is worth having
    WCHAR awchName[std::extent_v<decltype(PublicDevMode::dmDeviceName)>] = {};
    if (KVGetPrinterName(hPrinter, awchName))
        KVMemcpy(lpDM->dm.dmDeviceName, awchName, sizeof awchName);
    TakePairs(lpDM, lpPrinterRecord);
    return TRUE;
}

// A copy of the default record in the spooler's answer, however long it is: behind the answer's
// end there is nothing, and the record's two sizes are cut to what there is. FALSE when there is
// none.
static BOOL CopyDefaultRecord(const GlobalPtr<PRINTER_INFO_2W> &info, DriverDevMode *lpCopy)
{
    const auto *lpAnswer = reinterpret_cast<const BYTE *>(info.get());
    const BYTE *lpEnd = lpAnswer + GlobalSize(info.get());
    const auto *lpRecord = reinterpret_cast<const BYTE *>(info->pDevMode);
    if (lpRecord < lpAnswer || lpRecord >= lpEnd)
        return FALSE;
    const size_t cbRecord = static_cast<size_t>(lpEnd - lpRecord);
    *lpCopy = DriverDevMode{};
    std::memcpy(lpCopy, lpRecord, std::min(cbRecord, sizeof *lpCopy));
    PublicDevMode &dm = lpCopy->dm;
    if (dm.dmSize > cbRecord)
        dm.dmSize = static_cast<uint16_t>(cbRecord);
    if (dm.dmDriverExtra > cbRecord - dm.dmSize)
        dm.dmDriverExtra = static_cast<uint16_t>(cbRecord - dm.dmSize);
    return TRUE;
}

// Nothing is merged here, so the record must be one of ours and whole.
static BOOL TakeWholeRecord(DriverDevMode *lpOut, const DriverDevMode &stored, HANDLE hPrinter)
{
    if (stored.dm.dmDriverVersion != KV_DRIVERVERSION)
        return KVMergeOldDevmode(lpOut, &stored, hPrinter);
    if (stored.dm.dmSize + stored.dm.dmDriverExtra != KV_DEVMODESIZE)
        return FALSE;
    KVMemcpy(lpOut, &stored, sizeof stored);
    return TRUE;
}

BOOL KVGetRegDevmode(HANDLE hPrinter, DriverDevMode *lpOut, HGLOBAL lpPrinterRecord)
{
    const auto info = ReadSized<PRINTER_INFO_2W>([=](LPBYTE lpBuffer, DWORD cb, DWORD *lpcb) {
        return GetPrinterW(hPrinter, 2, lpBuffer, cb, lpcb);
    });
    DriverDevMode stored;
    if (!info || !CopyDefaultRecord(info, &stored))
        return FALSE;
    if (!lpPrinterRecord)
        return TakeWholeRecord(lpOut, stored, hPrinter);
    return KVGetDefDevmode(lpOut, lpPrinterRecord, hPrinter) &&
           KVMergeDevMode(lpOut, &stored, lpPrinterRecord, hPrinter);
}
