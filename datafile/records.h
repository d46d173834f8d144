// Records built from a model's .dat and handed out as new blocks, released with GlobalFree: the
// printer record (selector 514) and the list of papers with their sizes (selector 513).
#ifndef KV_DATAFILE_RECORDS_H
#define KV_DATAFILE_RECORDS_H

#include "datafile/formats.h"
#include "platform/win32.h"

constexpr WORD RESOURCE_MMPS = 513;
constexpr WORD RESOURCE_PRINTER = 514;

#pragma pack(push, 1)
struct MMPSEntry {
    int16_t wId;
    int16_t wWidth, wLength; // 0.1 mm
};
#pragma pack(pop)
static_assert(sizeof(MMPSEntry) == 6);

// Null for another selector, without memory, or when the .dat cannot be read (after a message when
// it cannot be opened).
HGLOBAL KVGetResource(WORD wResource, WORD wSelector, const DriverDevMode *lpDM);
HGLOBAL KVGetResource2(WORD wResource, WORD wSelector, const DriverDevMode *lpDM);
// The model identifier, -1 without a printer record. The name is not used.
int KVGetPrinterID(LPCSTR lpName, const DriverDevMode *lpDM);
// The identifier into *lpId and as the result, a new printer record (or null) into *lpRecord.
int KVGetPrinterNameToRes(LPCSTR lpName, HGLOBAL *lpRecord, int *lpId, const DriverDevMode *lpDM);

// Bytes; 0 when the .dat cannot be read. The printer record's size is at least its head's.
DWORD SizeofLogPrinter(const DriverDevMode *lpDM);
DWORD SizeofMMPS(const DriverDevMode *lpDM);
BOOL BuildLogPrinter(const DriverDevMode *lpDM, LPVOID lpBuffer, DWORD cb);
BOOL BuildMMPS(const DriverDevMode *lpDM, LPVOID lpBuffer, DWORD cb);

#endif
