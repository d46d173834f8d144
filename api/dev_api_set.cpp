// Setting an item, with every field of the record that depends on it. A value that the model does
// not allow is refused; the record may be half changed then, and the caller puts it back.
#include "api/dev_api.h"

#include <algorithm>

#include "base/text.h"
#include "base/units.h"
#include "datafile/margins.h"
#include "datafile/mw.h"
#include "datafile/queries.h"
#include "datafile/tables.h"

static_assert(sizeof(KVDDSETPAPER) == 8);

static bool Between(int64_t v, int64_t lLowest, int64_t lHighest)
{
    return lLowest <= v && v <= lHighest;
}

// Margins of the current paper, or of the user-defined one when the model's papers lack it.
static void SetPhysicalMargin(DriverDevMode *lpDM, const DatFile &tables)
{
    const PaperRecord *lpPaper = FindPaper(tables, lpDM->dm.dmPaperSize);
    if (!lpPaper)
        lpPaper = FindPaper(tables, KV_PAPER_USER);
    if (lpPaper)
        SetMargins(lpDM, *lpPaper, lpDM->dm.dmPaperWidth);
}

int32_t SetCopies(DriverDevMode *lpDM, intptr_t lpValue)
{
    const SHORT sCopies = static_cast<SHORT>(lpValue);
    if (!Between(sCopies, 1, KV_MOST_COPIES))
        return KVDD_NOT_ALLOWED;
    lpDM->dm.dmCopies = sCopies;
    return KVDD_OK;
}

int32_t SetOrientation(DriverDevMode *lpDM, intptr_t lpValue)
{
    const SHORT sOrientation = static_cast<SHORT>(lpValue);
    if (!Between(sOrientation, 1, 2))
        return KVDD_NOT_ALLOWED;
    lpDM->dm.dmOrientation = sOrientation;
    return KVDD_OK;
}

// ---- paper -----------------------------------------------------------------------------------

// Copies the paper out of the tables: the limits are asked for later, and release them.
static int32_t ChoosePaper(DriverDevMode *lpDM, SHORT sId, PaperRecord *lpPaper)
{
    const LoadedTables tables = LoadTables(lpDM);
    if (!tables)
        return KVDD_NO_DATA;
    const PaperRecord *lpFound = FindPaper(*tables, sId);
    if (!lpFound)
        return KVDD_NOT_ALLOWED;
    *lpPaper = *lpFound;
    lpDM->dm.dmPaperSize = sId;
    lpDM->nPaper = static_cast<LONG>(lpFound - tables->lpPapers.data());
    return KVDD_OK;
}

// The limits go back to the caller before the size is looked at. Rounded, not truncated: merging
// a record truncates. Callers see both results; do not unify them.
static int32_t TakeUserSize(DriverDevMode *lpDM, KVDDSETPAPER *lpWords)
{
    const bool bApi = lpDM->dwApiFlag == 1;
    const SHORT sWidth = lpWords->wWidth;
    SHORT sLength = lpWords->wLength;
    if (bApi && sLength == 0)
        sLength = API_LENGTH;
    PaperSize largest, smallest;
    if (!Get_MaxPrintable(lpDM, &largest) || !Get_MinPrintable(lpDM, &smallest))
        return KVDD_NO_DATA;
    if (bApi)
        smallest.lLength = 0;
    *lpWords = {.wWidth = static_cast<SHORT>(largest.lWidth),
                .wLength = static_cast<SHORT>(largest.lLength),
                .wPaper = static_cast<SHORT>(smallest.lWidth),
                .wMinLength = static_cast<SHORT>(smallest.lLength)};
    if (!Between(sWidth, smallest.lWidth, largest.lWidth) ||
        !Between(sLength, smallest.lLength, largest.lLength))
        return KVDD_NOT_ALLOWED;
    lpDM->dwUnit = UNIT_MM;
    lpDM->dm.dmPaperLength = sLength;
    lpDM->dm.dmPaperWidth = sWidth;
    lpDM->wPaperLength360 = static_cast<WORD>(FromMMTo360(sLength));
    lpDM->wPaperWidth360 = static_cast<WORD>(FromMMTo360(sWidth));
    return KVDD_OK;
}

int32_t SetPaper(DriverDevMode *lpDM, intptr_t lpValue)
{
    auto *lpWords = reinterpret_cast<KVDDSETPAPER *>(lpValue);
    const SHORT sId = lpWords->wPaper;
    PaperRecord paper;
    int32_t lResult = ChoosePaper(lpDM, sId, &paper);
    if (lResult != KVDD_OK)
        return lResult;
    PutPaperSize(lpDM, paper);
    if (sId == KV_PAPER_USER)
        lResult = TakeUserSize(lpDM, lpWords);
    if (lResult != KVDD_OK)
        return lResult;
    lpDM->lPaperLength = lpDM->dm.dmPaperLength;
    lpDM->lPaperWidth = lpDM->dm.dmPaperWidth;
    SetMargins(lpDM, paper, lpDM->dm.dmPaperWidth);
    return KVDD_OK;
}

// ---- source ----------------------------------------------------------------------------------

// The paper that the source at nBin feeds: the record's own if it can, else the first it can. The
// size is left alone. A user paper slot of the same id goes before a paper, the last one winning.
static void ChangePaper(DriverDevMode *lpDM, const DatFile &tables)
{
    const DWORD dwMask = SourceMask(static_cast<DWORD>(lpDM->nBin));
    const PaperRecord *lpPaper = FindFedPaper(tables, dwMask, lpDM->dm.dmPaperSize);
    if (!lpPaper)
        lpPaper = FindFedPaper(tables, dwMask);
    if (lpPaper) {
        lpDM->nPaper = static_cast<LONG>(lpPaper - tables.lpPapers.data());
        lpDM->dm.dmPaperSize = lpPaper->wId;
    }
    LONG nSlot = static_cast<LONG>(tables.nPapers);
    for (const UserPaperRecord &slot : UserPapersInUse(tables)) {
        if (Supports(slot.paper, dwMask) && slot.paper.wId == lpDM->dm.dmPaperSize)
            lpDM->nPaper = nSlot;
        ++nSlot;
    }
}

// The paper's size stays as it was.
static int32_t ChangeSourceAPI(DriverDevMode *lpDM)
{
    const LoadedTables tables = LoadTables(lpDM);
    if (!tables)
        return KVDD_OK; // the next load says so
    const auto bins = Bins(*tables);
    const auto bin = std::ranges::find_if(
        bins, [lpDM](const BinRecord &b) { return IsSource(b.wId, lpDM->dm.dmDefaultSource); });
    if (bin == bins.end())
        return KVDD_NOT_ALLOWED;
    lpDM->nBin = static_cast<LONG>(bin - bins.begin());
    ChangePaper(lpDM, *tables);
    lpDM->dm.dmCollate = 0;
    ApplyAreaRule(lpDM, tables.get());
    return KVDD_OK;
}

int32_t SetSource(DriverDevMode *lpDM, intptr_t lpValue)
{
    lpDM->dm.dmDefaultSource = static_cast<SHORT>(lpValue);
    const int32_t lResult = ChangeSourceAPI(lpDM);
    if (lResult != KVDD_OK)
        return lResult;
    LoadedTables tables = LoadTables(lpDM);
    if (!tables)
        return KVDD_NO_DATA;
    SetPhysicalMargin(lpDM, *tables);
    tables.reset();
    GetMWData(lpDM);
    return KVDD_OK;
}

// ---- print mode ------------------------------------------------------------------------------

// The Automatic settings for media and ink at this level, else at any; null when there are none.
static const SettingsRecord *FindAutomatic(const DatFile &tables, SHORT sMedia, WORD wInk,
                                           SHORT sLevel)
{
    const auto settings = std::span(tables.lpSettings).first(tables.nAuto);
    const auto fits = [&](const SettingsRecord &s) { return s.wMedia == sMedia && s.wInk == wInk; };
    auto found = std::ranges::find_if(
        settings, [&](const SettingsRecord &s) { return fits(s) && s.wAutoLevel == sLevel; });
    if (found == settings.end())
        found = std::ranges::find_if(settings, fits);
    return found != settings.end() ? &*found : nullptr;
}

static int32_t SetAutomatic(DriverDevMode *lpDM, const KVDDPRINTMODE &wanted, const DatFile &tables)
{
    if (!Between(wanted.wLevel, 1, 2) || !Between(wanted.wColor, 1, 2))
        return KVDD_NOT_ALLOWED;
    lpDM->bAutoMode = 1;
    const auto media = std::span(tables.lpMedia).first(tables.nMedia);
    const SHORT sCode = wanted.wMedia;
    const auto medium = std::ranges::find(media, sCode, &MediaRecord::wCode);
    if (medium == media.end())
        return KVDD_NOT_ALLOWED;
    lpDM->lMediaCode = sCode;
    const WORD wInk = wanted.wColor == 2 ? 1 : 0;
    const SettingsRecord *lpFound = FindAutomatic(tables, medium->wName, wInk, wanted.wLevel);
    if (!lpFound)
        return KVDD_NO_DATA;
    pInstance->nCurSetting = static_cast<int32_t>(lpFound - tables.lpSettings.data());
    lpDM->Settings = *lpFound;
    return KVDD_OK;
}

static int32_t SetMode(DriverDevMode *lpDM, const KVDDPRINTMODE &wanted, const DatFile &tables)
{
    switch (wanted.wMode) {
    case 1: return SetAutomatic(lpDM, wanted, tables);
    case 0:
        lpDM->bAutoMode = 0;
        lpDM->Settings.wIndex = KV_CUSTOM_SETTINGS;
        return KVDD_OK;
    default: return KVDD_NOT_ALLOWED;
    }
}

int32_t SetPrintMode(DriverDevMode *lpDM, intptr_t lpValue)
{
    LoadedTables tables = LoadTables(lpDM);
    if (!tables)
        return KVDD_NO_DATA;
    const int32_t lResult =
        SetMode(lpDM, *reinterpret_cast<const KVDDPRINTMODE *>(lpValue), *tables);
    if (lResult != KVDD_OK)
        return lResult;
    if (const ResolutionRecord *lpRes =
            RecordAt(tables->lpRes, tables->nRes, lpDM->Settings.wResolution))
        PutResolution(lpDM, *lpRes);
    lpDM->dm.dmColor = lpDM->Settings.wInk == 1 ? 2 : 1;
    tables.reset();
    GetMWData(lpDM);
    return KVDD_OK;
}

// ---- printable area, flag --------------------------------------------------------------------

int32_t SetPrintArea(DriverDevMode *lpDM, intptr_t lpValue)
{
    if (!Between(lpDM->nPrintArea, AREA_MAXIMUM, AREA_CENTRED))
        return KVDD_NOT_ALLOWED;
    const LoadedTables tables = LoadTables(lpDM);
    if (!tables)
        return KVDD_NO_DATA;
    const AreaChoices *lpChoices = ChoicesOfSource(lpDM, *tables);
    if (!lpChoices)
        return KVDD_UNKNOWN;
    // Where the choice is free any value but 0 centres; a forced area takes its own value only.
    const SHORT sValue = static_cast<SHORT>(lpValue);
    const bool bForced = lpChoices->nLowest == lpChoices->nHighest;
    if (bForced && sValue != lpChoices->nLowest)
        return KVDD_NOT_ALLOWED;
    lpDM->nPrintArea = sValue ? AREA_CENTRED : AREA_MAXIMUM;
    SetPhysicalMargin(lpDM, *tables);
    return KVDD_OK;
}

int32_t SetApiFlag(DriverDevMode *lpDM, intptr_t lpValue)
{
    const WORD wFlag = static_cast<WORD>(lpValue);
    if (wFlag > 1)
        return KVDD_NOT_ALLOWED;
    lpDM->dwApiFlag = wFlag;
    return KVDD_OK;
}
