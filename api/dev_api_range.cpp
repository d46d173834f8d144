// What an item can be set to.
#include "api/dev_api.h"

#include "datafile/queries.h"

static constexpr WORD LIST_WORD = 2; // beside the count of every list

static_assert(sizeof(KVDDPAPERRANGE) == 14 && offsetof(KVDDPAPERRANGE, dwIds) == 10);
static_assert(sizeof(KVDDLISTRANGE) == 8 && offsetof(KVDDLISTRANGE, dwValues) == 4);

// The caller's array, which may lie at an odd address; null when there is none.
static WORD *LowArray(uint32_t dwAddress)
{
    return reinterpret_cast<WORD *>(static_cast<uintptr_t>(dwAddress));
}

int32_t RangeOfCopies(const DriverDevMode *, void *lpRange)
{
    return AnswerWord(lpRange, KV_MOST_COPIES);
}

// The limits are those of the user-defined paper, asked of a copy of the record, so that no path
// can leave the caller's with another paper.
static int32_t UserPaperLimits(const DriverDevMode *lpDM, KVDDPAPERRANGE *lpRange)
{
    DriverDevMode asked = *lpDM;
    asked.dm.dmPaperSize = KV_PAPER_USER;
    PaperSize largest, smallest;
    if (!Get_MaxPrintable(&asked, &largest) || !Get_MinPrintable(&asked, &smallest))
        return KVDD_NO_DATA;
    lpRange->wMaxWidth = static_cast<WORD>(largest.lWidth);
    lpRange->wMaxLength = static_cast<WORD>(largest.lLength);
    lpRange->wMinWidth = static_cast<WORD>(smallest.lWidth);
    lpRange->wMinLength = static_cast<WORD>(lpDM->dwApiFlag == 1 ? API_LENGTH : smallest.lLength);
    return KVDD_OK;
}

int32_t RangeOfPaper(const DriverDevMode *lpDM, void *lpRange)
{
    auto *lpPapers = static_cast<KVDDPAPERRANGE *>(lpRange);
    lpPapers->wPapers = static_cast<WORD>(Get_PaperIndexs(lpDM, LowArray(lpPapers->dwIds)));
    if (lpPapers->wPapers == 0)
        return KVDD_NO_DATA;
    return lpPapers->dwIds ? UserPaperLimits(lpDM, lpPapers) : KVDD_OK;
}

int32_t RangeOfSource(const DriverDevMode *lpDM, void *lpRange)
{
    auto *lpSources = static_cast<KVDDLISTRANGE *>(lpRange);
    lpSources->wCount = static_cast<WORD>(Get_BinIndexs(lpDM, LowArray(lpSources->dwValues)));
    lpSources->wTwo = LIST_WORD;
    return lpSources->wCount ? KVDD_OK : KVDD_NO_DATA;
}

int32_t RangeOfColor(const DriverDevMode *, void *lpRange)
{
    return AnswerWord(lpRange, 2);
}

int32_t RangeOfMedia(const DriverDevMode *lpDM, void *lpRange)
{
    const LoadedTables tables = LoadTables(lpDM);
    if (!tables)
        return KVDD_NO_DATA;
    auto *lpMedia = static_cast<KVDDLISTRANGE *>(lpRange);
    if (WORD *lpCodes = LowArray(lpMedia->dwValues))
        for (uint32_t i = 0; i < tables->nMedia; ++i)
            AnswerWord(lpCodes + i, tables->lpMedia[i].wCode);
    lpMedia->wCount = static_cast<WORD>(tables->nMedia);
    lpMedia->wTwo = LIST_WORD;
    return KVDD_OK;
}

int32_t RangeOfPrintMode(const DriverDevMode *, void *lpRange)
{
    return AnswerWord(lpRange, 2);
}

int32_t RangeOfPrintArea(const DriverDevMode *lpDM, void *lpRange)
{
    const LoadedTables tables = LoadTables(lpDM);
    if (!tables)
        return KVDD_NO_DATA;
    const AreaChoices *lpChoices = ChoicesOfSource(lpDM, *tables);
    return lpChoices ? AnswerWord(lpRange, lpChoices->nHighest) : KVDD_NOT_ALLOWED;
}

int32_t RangeOfApiFlag(const DriverDevMode *, void *lpRange)
{
    return AnswerWord(lpRange, 1);
}
