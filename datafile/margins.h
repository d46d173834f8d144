// The rules that every margin obeys, whoever computes it.
#ifndef KV_DATAFILE_MARGINS_H
#define KV_DATAFILE_MARGINS_H

#include "datafile/queries.h"

// The printable-area rule of a source: bits 8 to 11 of its flags.
constexpr WORD AREA_RULE = 0xF00;
constexpr WORD AREA_FREE = 0, AREA_SET_CENTRED = 0x100, AREA_SET_MAXIMUM = 0x200,
               AREA_FORCE_CENTRED = 0x300, AREA_FORCE_MAXIMUM = 0x400;
constexpr int AREA_MAXIMUM = 1, AREA_CENTRED = 2; // nPrintArea

// Left and right both the larger of the two, top and bottom likewise.
void CentreMargins(PaperMargin *lpMargin);
// Writes a paper's margins into the record: the right one grows until the printable width of a
// paper lWidthMM wide (0.1 mm) is at most lMaxPrintWidth, then a centred area centres them.
void SetMargins(DriverDevMode *lpDM, const PaperRecord &paper, int64_t lWidthMM);
// nPrintArea as the rule of the source at nBin sets it; other rules leave it.
void ApplyAreaRule(DriverDevMode *lpDM, const DatFile *lpBlock);

#endif
