// The rules that every margin obeys.
#include "datafile/margins.h"

#include <algorithm>

#include "base/units.h"

void CentreMargins(PaperMargin *lpMargin)
{
    lpMargin->lLeft = lpMargin->lRight = std::max(lpMargin->lLeft, lpMargin->lRight);
    lpMargin->lTop = lpMargin->lBottom = std::max(lpMargin->lTop, lpMargin->lBottom);
}

void SetMargins(DriverDevMode *lpDM, const PaperRecord &paper, int64_t lWidthMM)
{
    const int64_t lPrintable = FromMMTo360(lWidthMM) - paper.wRight - paper.wLeft;
    const int64_t lExcess = std::max<int64_t>(lPrintable - lpDM->lMaxPrintWidth, 0);
    // The record keeps 16 bits of it.
    const auto sRight = static_cast<int16_t>(paper.wRight + lExcess);
    PaperMargin margin = {paper.wLeft, paper.wTop, sRight, paper.wBottom};
    if (lpDM->nPrintArea == AREA_CENTRED)
        CentreMargins(&margin);
    lpDM->wMarginLeft = static_cast<WORD>(margin.lLeft);
    lpDM->wMarginTop = static_cast<WORD>(margin.lTop);
    lpDM->wMarginRight = static_cast<WORD>(margin.lRight);
    lpDM->wMarginBottom = static_cast<WORD>(margin.lBottom);
}

void ApplyAreaRule(DriverDevMode *lpDM, const DatFile *lpBlock)
{
    const BinRecord *lpBin = RecordAt(lpBlock->lpBins, lpBlock->nBins, lpDM->nBin);
    switch (lpBin ? lpBin->wFlags & AREA_RULE : AREA_FREE) {
    case AREA_SET_CENTRED:
    case AREA_FORCE_CENTRED: lpDM->nPrintArea = AREA_CENTRED; break;
    case AREA_SET_MAXIMUM:
    case AREA_FORCE_MAXIMUM: lpDM->nPrintArea = AREA_MAXIMUM; break;
    default: break;
    }
}
