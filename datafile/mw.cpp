// The MW table: the choice of a row, and its refresh in a record.
#include "datafile/mw.h"

#include <algorithm>
#include <cstring>

#include "base/module.h"
#include "datafile/files.h"
#include "datafile/reader.h"

// Rows from here on are never chosen: 99 has always stood for "none found".
static constexpr size_t MW_ROWS = 99;

// A file's source identifier may stand there signed or unsigned.
static bool IsMWSource(LONG lRow, LONG lSource)
{
    const auto wSource = static_cast<WORD>(lSource);
    return lRow == wSource || lRow == static_cast<SHORT>(wSource);
}

// In 64 bits: a doubled resolution of a hostile record fits nothing rather than wrap around.
static bool FitsResolution(const MWRecord &row, const MWKey &key)
{
    const int64_t lResX2 = key.wDotScale == 1 || key.wDotScale == 3 ? 2 * key.lResX : key.lResX;
    const int64_t lResY2 = key.wDotScale == 2 || key.wDotScale == 3 ? 2 * key.lResY : key.lResY;
    return row.lResY == key.lResY && row.lResX == key.lResX && row.lResY2 == lResY2 &&
           row.lResX2 == lResX2;
}

// From the most particular to the most general: each is tried on every row before the next.
static constexpr bool (*aSearches[])(const MWRecord &, const MWKey &) = {
    [](const MWRecord &row, const MWKey &key) {
        return row.lSource == MW_ANY && row.lMedia == key.lMediaCode && row.lInk == key.sInk;
    },
    [](const MWRecord &row, const MWKey &key) {
        return row.lInk == MW_ANY && row.lMedia == MW_ANY && IsMWSource(row.lSource, key.lSource);
    },
    [](const MWRecord &row, const MWKey &key) {
        return row.lInk == MW_ANY && row.lMedia == MW_ANY && row.lSource == MW_ANY &&
               row.adwData[2] == LONG(key.wFlags & KV_FLAG_MW) &&
               row.adwData[3] >= LONG(key.wFlags & KV_FLAG_OPT);
    },
    [](const MWRecord &row, const MWKey &) {
        return row.lInk == MW_ANY && row.lMedia == MW_ANY && row.lSource == MW_ANY;
    },
};

const MWRecord *ChooseMWRow(std::span<const MWRecord> rows, const MWKey &key)
{
    rows = rows.first(std::min(rows.size(), MW_ROWS));
    for (const auto search : aSearches)
        for (const MWRecord &row : rows)
            if (FitsResolution(row, key) && search(row, key))
                return &row;
    return nullptr;
}

void SetMWData(DriverDevMode *lpDM, const MWRecord *lpRow)
{
    static constexpr MWRecord none{};
    std::memcpy(lpDM->adwMWData, (lpRow ? lpRow : &none)->adwData, sizeof lpDM->adwMWData);
}

void RefreshMWData(DriverDevMode *lpDM, std::span<const MWRecord> rows)
{
    const MWKey key = {lpDM->lResX,
                       lpDM->lResY,
                       lpDM->Settings.wDotScale,
                       lpDM->lMediaCode,
                       static_cast<SHORT>(lpDM->Settings.wInk),
                       lpDM->dm.dmDefaultSource,
                       lpDM->Settings.wFlags};
    SetMWData(lpDM, ChooseMWRow(rows, key));
}

BOOL GetMWData(DriverDevMode *lpDM)
{
    const std::string strName = DatNameOf(lpDM);
    DatReader reader;
    const FileState state = OpenDat(strName.c_str(), Versions::Any, &reader);
    if (state == FileState::NotFound)
        NotifyFileNotFound(strName.c_str());
    if (state != FileState::Read)
        return FALSE;
    std::vector<MWRecord> rows;
    ReadTable(&reader, PART_MW, &rows);
    if (CloseDat(&reader) != FileState::Read)
        return FALSE;
    RefreshMWData(lpDM, rows);
    return TRUE;
}
