// Questions about a model's papers, sources, sizes, margins and limits. Every query but
// Get_CurPaperSizeSub loads the model's files into the static block, answers and releases them;
// the record is left unchanged. An array may be null: the result is then the count alone.
#ifndef KV_DATAFILE_QUERIES_H
#define KV_DATAFILE_QUERIES_H

#include "datafile/instance.h"

struct PaperSize {
    int32_t lWidth, lLength;
};
struct PaperMargin {
    int32_t lLeft, lTop, lRight, lBottom; // 1/360 inch
};
constexpr int PAPERNAME_CHARS = 64; // of one name, terminator included
constexpr int BINNAME_CHARS = 24;

// 1/360 inch. The static block must be loaded.
BOOL Get_CurPaperSizeSub(const DriverDevMode *lpDM, int nPaperId, PaperSize *lpSize);
// 1/360 inch, of the record's own paper; the identifier is not used. Always TRUE.
BOOL Get_CurPaperSize(const DriverDevMode *lpDM, int nPaperId, PaperSize *lpSize);
BOOL Get_CurPaperMargin(const DriverDevMode *lpDM, PaperMargin *lpMargin); // always TRUE
// Supported entries among the first n of papers and then user paper slots.
DWORD CountSupportPaperNum(DWORD n, DWORD dwMask, const DatFile *lpBlock);
DWORD Get_PaperIndexs(const DriverDevMode *lpDM, WORD *lpIds);
DWORD Get_PaperSize(const DriverDevMode *lpDM, PaperSize *lpSizes); // 0.1 mm
// A user paper slot's size in 0.1 mm, whatever its unit.
PaperSize UserPaperSizeInMM(const PaperRecord &paper);
DWORD Get_BinIndexs(const DriverDevMode *lpDM, WORD *lpIds);
// 0.1 mm; FALSE with fallback values when the files cannot be loaded.
BOOL Get_MaxPrintable(const DriverDevMode *lpDM, PaperSize *lpSize);
BOOL Get_MinPrintable(const DriverDevMode *lpDM, PaperSize *lpSize);
// One slot of PAPERNAME_CHARS (BINNAME_CHARS) characters per entry; a name that the UI resource
// library lacks is empty. 0 when library or files cannot be loaded.
DWORD Get_PaperNames(const DriverDevMode *lpDM, LPWSTR lpNames, HANDLE hPrinter);
DWORD Get_BinNames(const DriverDevMode *lpDM, LPWSTR lpNames, HANDLE hPrinter);
// Loads the model's UI resource library into the static block's hResLib: 1, or -1 after a
// message.
int Get_ResHandle(const DriverDevMode *lpDM, HANDLE hPrinter);

// The mask of a source kind: bit k; 0 for a kind of 16 or more, which no paper can name.
constexpr DWORD SourceMask(DWORD dwKind)
{
    return dwKind < 16 ? 1u << dwKind : 0;
}

#endif
