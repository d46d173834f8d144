// Getting a complete, valid record: the model's defaults under the printer's name, the spooler's
// record, and the merging of a record from outside into a valid one.
#ifndef KV_SETTINGS_MERGE_H
#define KV_SETTINGS_MERGE_H

#include "datafile/instance.h"

// The model's defaults with the printer's name and the pairs of the printer record (a block from
// KVGetResource, or null: no pairs). Always TRUE.
BOOL KVGetDefDevmode(DriverDevMode *lpDM, HGLOBAL lpPrinterRecord, HANDLE hPrinter);
// The spooler's record of the queue, merged into the defaults; without a printer record taken
// whole. FALSE: the spooler has none, or nothing could be made of it.
BOOL KVGetRegDevmode(HANDLE hPrinter, DriverDevMode *lpOut, HGLOBAL lpPrinterRecord);
BOOL KVMergeOldDevmode(DriverDevMode *lpOut, const DriverDevMode *lpIn, HANDLE hPrinter); // FALSE
// Takes from lpIn what can be trusted. FALSE when either record is null. lpIn may be shorter than
// a whole record: nothing past dmSize + dmDriverExtra bytes of it is read.
BOOL KVMergeDevMode(DriverDevMode *lpDM, const DriverDevMode *lpIn, HGLOBAL lpPrinterRecord,
                    HANDLE hPrinter);

// The steps of a merge. The first two load the model's tables; when they cannot be loaded, paper,
// resolution and source stay as they were.
BOOL MergePaperAndResolution(DriverDevMode *lpDM, const DriverDevMode *lpIn); // always TRUE
void MergeSource(DriverDevMode *lpDM, const DriverDevMode *lpIn);
// After a change of source, of this kind: keeps the paper when the source feeds it, else takes the
// first that it feeds; none: the paper stays.
void ModifySource(DriverDevMode *lpDM, DWORD dwKind, const DatFile *lpBlock);
void ModifyCheckBin(DriverDevMode *lpDM, const DatFile *lpBlock); // nPrintArea by the rule of nBin
// Size, index and margins of the paper of an identifier; for the user-defined paper with the held
// size. A paper that is not found, or a held width of 0: nothing changes.
void Get_NewPaperMMSize(DriverDevMode *lpDM, int nPaperId, const DatFile *lpBlock);

#endif
