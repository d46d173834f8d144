// The model's tables for the length of one step, and what several items look up in them.
#include "api/dev_api.h"

#include <algorithm>

#include "datafile/loader.h"
#include "datafile/margins.h"

void ReleaseTables::operator()(DatFile *) const
{
    Free_DATFile(nullptr);
}

LoadedTables LoadTables(const DriverDevMode *lpDM)
{
    const BOOL bLoaded = Get_DATFile(lpDM);
    LoadedTables tables(&pInstance->dat);
    if (!bLoaded)
        tables.reset();
    return tables;
}

static constexpr AreaChoices aAreaChoices[] = {
    {.wRule = AREA_FREE, .nLowest = 0, .nHighest = 1},
    {.wRule = AREA_SET_CENTRED, .nLowest = 0, .nHighest = 1},
    {.wRule = AREA_SET_MAXIMUM, .nLowest = 0, .nHighest = 1},
    {.wRule = AREA_FORCE_CENTRED, .nLowest = 1, .nHighest = 1},
    {.wRule = AREA_FORCE_MAXIMUM, .nLowest = 0, .nHighest = 0},
};

const AreaChoices *ChoicesOfSource(const DriverDevMode *lpDM, const DatFile &tables)
{
    const BinRecord *lpBin = RecordAt(tables.lpBins, tables.nBins, lpDM->nBin);
    if (!lpBin)
        return nullptr;
    const WORD wRule = lpBin->wFlags & AREA_RULE;
    const AreaChoices *lpChoices = std::ranges::find(aAreaChoices, wRule, &AreaChoices::wRule);
    return lpChoices != std::end(aAreaChoices) ? lpChoices : nullptr;
}
