// What an item is set to in a record.
#include "api/dev_api.h"

#include <algorithm>

#include "base/text.h"
#include "base/units.h"
#include "datafile/margins.h"
#include "datafile/queries.h"

static_assert(sizeof(KVDDPAPER) == 14 && sizeof(KVDDPRINTMODE) == 8);

int32_t GetCopies(const DriverDevMode *lpDM, void *lpData)
{
    return lpDM->dm.dmCopies ? AnswerWord(lpData, lpDM->dm.dmCopies) : KVDD_NOT_ALLOWED;
}

int32_t GetOrientation(const DriverDevMode *lpDM, void *lpData)
{
    return AnswerWord(lpData, lpDM->dm.dmOrientation);
}

// Without the model's files the queries answer by the record alone, and so does this.
int32_t GetPaper(const DriverDevMode *lpDM, void *lpData)
{
    PaperSize size;
    PaperMargin margin;
    Get_CurPaperSize(lpDM, lpDM->dm.dmPaperSize, &size);
    Get_CurPaperMargin(lpDM, &margin);
    const int64_t lPrintWidth = int64_t{size.lWidth} - margin.lRight - margin.lLeft;
    const int64_t lPrintLength = int64_t{size.lLength} - margin.lTop - margin.lBottom;
    *static_cast<KVDDPAPER *>(lpData) = {
        .wWidth = static_cast<SHORT>(From360ToMM(size.lWidth)),
        .wLength = static_cast<SHORT>(From360ToMM(size.lLength)),
        .wPrintWidth = static_cast<SHORT>(From360ToMM(lPrintWidth)),
        .wPrintLength = static_cast<SHORT>(From360ToMM(lPrintLength)),
        .wLeft = static_cast<SHORT>(From360ToMM(margin.lLeft)),
        .wTop = static_cast<SHORT>(From360ToMM(margin.lTop)),
        .wPaper = lpDM->dm.dmPaperSize,
    };
    return KVDD_OK;
}

int32_t GetSource(const DriverDevMode *lpDM, void *lpData)
{
    return AnswerWord(lpData, lpDM->dm.dmDefaultSource);
}

int32_t GetColor(const DriverDevMode *lpDM, void *lpData)
{
    return AnswerWord(lpData, lpDM->dm.dmColor);
}

// The media of the current resolution, which need not be the record's own lMediaCode.
static const MediaRecord *CurrentMedia(const DriverDevMode *lpDM, const DatFile &tables)
{
    const ResolutionRecord *lpRes = RecordAt(tables.lpRes, tables.nRes, lpDM->Settings.wResolution);
    return lpRes ? RecordAt(tables.lpMedia, tables.nMedia, lpRes->wMedia) : nullptr;
}

// Settings chosen by hand, without a trackbar or from outside the table count as level 1.
static SHORT CurrentLevel(const DriverDevMode *lpDM, const DatFile &tables)
{
    const WORD wIndex = lpDM->Settings.wIndex;
    const SettingsRecord *lpSettings = wIndex != KV_CUSTOM_SETTINGS
                                           ? RecordAt(tables.lpSettings, tables.nSettings, wIndex)
                                           : nullptr;
    return lpSettings && lpSettings->wAutoLevel ? lpSettings->wAutoLevel : SHORT{1};
}

int32_t GetMedia(const DriverDevMode *lpDM, void *lpData)
{
    const LoadedTables tables = LoadTables(lpDM);
    const MediaRecord *lpMedia = tables ? CurrentMedia(lpDM, *tables) : nullptr;
    return lpMedia ? AnswerWord(lpData, lpMedia->wCode) : KVDD_NO_DATA;
}

int32_t GetPrintMode(const DriverDevMode *lpDM, void *lpData)
{
    const LoadedTables tables = LoadTables(lpDM);
    const MediaRecord *lpMedia = tables ? CurrentMedia(lpDM, *tables) : nullptr;
    if (!lpMedia)
        return KVDD_NO_DATA;
    *static_cast<KVDDPRINTMODE *>(lpData) = {
        .wMode = SHORT{lpDM->bAutoMode != 0},
        .wLevel = CurrentLevel(lpDM, *tables),
        .wMedia = lpMedia->wCode,
        .wColor = lpDM->dm.dmColor,
    };
    return KVDD_OK;
}

// Where the source forces an area, that one is the answer, whatever the record says.
int32_t GetPrintArea(const DriverDevMode *lpDM, void *lpData)
{
    const LoadedTables tables = LoadTables(lpDM);
    if (!tables)
        return KVDD_NO_DATA;
    const AreaChoices *lpChoices = ChoicesOfSource(lpDM, *tables);
    if (!lpChoices)
        return KVDD_UNKNOWN;
    const int nCentred = lpDM->nPrintArea != AREA_MAXIMUM;
    return AnswerWord(lpData, std::clamp(nCentred, lpChoices->nLowest, lpChoices->nHighest));
}

int32_t GetApiFlag(const DriverDevMode *lpDM, void *lpData)
{
    return AnswerWord(lpData, lpDM->dwApiFlag);
}
