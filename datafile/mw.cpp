// The MW table: the choice of a row, and its refresh in a record.
#include "datafile/mw.h"

#include <cstring>
#include <iterator>

#include "base/module.h"
#include "datafile/files.h"
#include "datafile/reader.h"

// A search that first fits here has found nothing: the number has always stood for that.
static constexpr ptrdiff_t NOT_FOUND = 99;

// A file's source identifier may stand there signed or unsigned.
static bool IsMWSource(LONG lRow, LONG lSource)
{
    const auto wSource = static_cast<WORD>(lSource);
    return lRow == wSource || lRow == static_cast<SHORT>(wSource);
}

// The resolutions that a row must have. In 64 bits: a doubled one of a hostile record fits nothing
// rather than wrap around.
struct Resolutions {
    int64_t lResX, lResY, lResX2, lResY2;
};

static Resolutions ResolutionsOf(const MWKey &key)
{
    const bool bX = key.wDotScale == 1 || key.wDotScale == 3;
    const bool bY = key.wDotScale == 2 || key.wDotScale == 3;
    return {key.lResX, key.lResY, (bX ? 2 : 1) * key.lResX, (bY ? 2 : 1) * key.lResY};
}

static bool Fits(const MWRecord &row, const Resolutions &wanted)
{
    return row.lResY == wanted.lResY && row.lResX == wanted.lResX && row.lResY2 == wanted.lResY2 &&
           row.lResX2 == wanted.lResX2;
}

// From the most particular to the most general: the first row of the first that finds any.
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
    const Resolutions wanted = ResolutionsOf(key);
    const MWRecord *aFound[std::size(aSearches)] = {};
    for (const MWRecord &row : rows)
        if (Fits(row, wanted))
            for (size_t i = 0; i < std::size(aSearches); ++i)
                if (!aFound[i] && aSearches[i](row, key))
                    aFound[i] = &row;
    for (const MWRecord *lpFound : aFound)
        if (lpFound && lpFound - rows.data() != NOT_FOUND)
            return lpFound;
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
