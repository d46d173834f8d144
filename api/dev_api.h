// What the files of the programmatic interface share: the functions of the items, as the item
// table names them, and the model's tables for the length of one step.
//
// An item's function gets a record and the caller's buffer (never null) and gives a KVDD_ result.
// Buffers lie at any address: they are read and written as packed structures or bytes.
#ifndef KV_API_DEV_API_H
#define KV_API_DEV_API_H

#include <cstring>
#include <memory>

#include "datafile/instance.h"
#include "kvui/kvdd.h"

constexpr SHORT API_LENGTH = 254; // 0.1 mm; a length of 0 stands for it while dwApiFlag is 1

// One 16-bit word of an answer.
inline int32_t AnswerWord(void *lpAnswer, int64_t lValue)
{
    const SHORT sValue = static_cast<SHORT>(lValue);
    memcpy(lpAnswer, &sValue, sizeof(sValue));
    return KVDD_OK;
}

// ---- the model's tables (dev_api_tables.cpp) -------------------------------------------------

struct ReleaseTables {
    void operator()(DatFile *) const;
};
using LoadedTables = std::unique_ptr<DatFile, ReleaseTables>;

// The static block, loaded with the record's model and released with the result; null when it
// cannot be loaded, and nothing is left loaded then. The queries load and release the same block,
// so none of them is called while a result is held.
LoadedTables LoadTables(const DriverDevMode *lpDM);

// The values of KVDD_PRINTAREA that the current source leaves: equal when it forces one.
struct AreaChoices {
    WORD wRule; // AREA_ value of the source
    int nLowest, nHighest;
};
// Null when the source's rule is none of the known ones, or the record names no source.
const AreaChoices *ChoicesOfSource(const DriverDevMode *lpDM, const DatFile &tables);

// ---- the items -------------------------------------------------------------------------------

int32_t RangeOfCopies(const DriverDevMode *lpDM, void *lpRange);
int32_t RangeOfPaper(const DriverDevMode *lpDM, void *lpRange);
int32_t RangeOfSource(const DriverDevMode *lpDM, void *lpRange);
int32_t RangeOfColor(const DriverDevMode *lpDM, void *lpRange);
int32_t RangeOfMedia(const DriverDevMode *lpDM, void *lpRange);
int32_t RangeOfPrintMode(const DriverDevMode *lpDM, void *lpRange);
int32_t RangeOfPrintArea(const DriverDevMode *lpDM, void *lpRange);
int32_t RangeOfApiFlag(const DriverDevMode *lpDM, void *lpRange);

int32_t GetCopies(const DriverDevMode *lpDM, void *lpData);
int32_t GetOrientation(const DriverDevMode *lpDM, void *lpData);
int32_t GetPaper(const DriverDevMode *lpDM, void *lpData);
int32_t GetSource(const DriverDevMode *lpDM, void *lpData);
int32_t GetColor(const DriverDevMode *lpDM, void *lpData);
int32_t GetMedia(const DriverDevMode *lpDM, void *lpData);
int32_t GetPrintMode(const DriverDevMode *lpDM, void *lpData);
int32_t GetPrintArea(const DriverDevMode *lpDM, void *lpData);
int32_t GetApiFlag(const DriverDevMode *lpDM, void *lpData);

// These may leave the record half changed when they fail: the caller puts it back.
int32_t SetCopies(DriverDevMode *lpDM, intptr_t lpValue);
int32_t SetOrientation(DriverDevMode *lpDM, intptr_t lpValue);
int32_t SetPaper(DriverDevMode *lpDM, intptr_t lpValue);
int32_t SetSource(DriverDevMode *lpDM, intptr_t lpValue);
int32_t SetPrintMode(DriverDevMode *lpDM, intptr_t lpValue);
int32_t SetPrintArea(DriverDevMode *lpDM, intptr_t lpValue);
int32_t SetApiFlag(DriverDevMode *lpDM, intptr_t lpValue);

#endif
