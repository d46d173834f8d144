// The MW table: eight values for the rendering half, chosen by resolution, media, ink, source and
// options.
#ifndef KV_DATAFILE_MW_H
#define KV_DATAFILE_MW_H

#include <span>

#include "datafile/formats.h"
#include "platform/win32.h"

// What a row is chosen by.
struct MWKey {
    int64_t lResX, lResY;
    WORD wDotScale; // 1 doubles the second horizontal resolution, 2 the vertical, 3 both
    LONG lMediaCode;
    SHORT sInk;
    LONG lSource; // source id as its 16 bits say, 0 to 65535 and negative alike compare as 16 bits
    WORD wFlags;
};

// The row in force, or null. Rows from position 99 on are never chosen.
const MWRecord *ChooseMWRow(std::span<const MWRecord> rows, const MWKey &key);
// Copies the row's values, or zeros without one.
void SetMWData(DriverDevMode *lpDM, const MWRecord *lpRow);
// Both at once, by the record's present values.
void RefreshMWData(DriverDevMode *lpDM, std::span<const MWRecord> rows);

// Chooses anew by the record's present values. FALSE after a message when the .dat cannot be
// opened, FALSE when it is shorter than its counts; adwMWData is then as it was.
BOOL GetMWData(DriverDevMode *lpDM);

#endif
