// Records built from a model's .dat and handed out as new blocks.
#include "datafile/records.h"

#include <cstring>

#include "base/module.h"
#include "base/units.h"
#include "datafile/files.h"
#include "datafile/reader.h"

// FALSE after a message when there is no .dat, and without one when it is too short. The version
// is not looked at.
static BOOL OpenModelDat(const DriverDevMode *lpDM, DatReader *lpReader)
{
    const std::string strName = DatNameOf(lpDM);
    const FileState state = OpenDat(strName.c_str(), Versions::Any, lpReader);
    if (state == FileState::NotFound)
        NotifyFileNotFound(strName.c_str());
    return state == FileState::Read;
}

// A new block with a copy, or null when there is nothing to copy or no memory.
static HGLOBAL NewBlock(const void *lpFrom, size_t cb)
{
    HGLOBAL hBlock = cb > 0 ? GlobalAlloc(GMEM_FIXED | GMEM_ZEROINIT, cb) : nullptr;
    if (hBlock)
        std::memcpy(hBlock, lpFrom, cb);
    return hBlock;
}

// ---- printer record ---------------------------------------------------------------------------

DWORD SizeofLogPrinter(const DriverDevMode *lpDM)
{
    DatReader reader;
    if (!OpenModelDat(lpDM, &reader))
        return 0;
    CloseDat(&reader);
    return static_cast<DWORD>(PartSize(reader.header, PART_PRINTER));
}

BOOL BuildLogPrinter(const DriverDevMode *lpDM, LPVOID lpBuffer, DWORD cb)
{
    DatReader reader;
    if (!OpenModelDat(lpDM, &reader))
        return FALSE;
    const auto aBytes = ReadPartBytes(&reader, PART_PRINTER, cb);
    if (CloseDat(&reader) != FileState::Read)
        return FALSE;
    if (cb > 0)
        std::memcpy(lpBuffer, aBytes.data(), cb);
    return TRUE;
}

static HGLOBAL NewLogPrinter(const DriverDevMode *lpDM)
{
    DatReader reader;
    if (!OpenModelDat(lpDM, &reader))
        return nullptr;
    const auto cb = static_cast<size_t>(PartSize(reader.header, PART_PRINTER));
    const auto aBytes = ReadPartBytes(&reader, PART_PRINTER, cb);
    return CloseDat(&reader) == FileState::Read ? NewBlock(aBytes.data(), cb) : nullptr;
}

// ---- papers and their sizes -------------------------------------------------------------------

DWORD SizeofMMPS(const DriverDevMode *lpDM)
{
    DatReader reader;
    if (!OpenModelDat(lpDM, &reader))
        return 0;
    CloseDat(&reader);
    return reader.header.wPaperCount * static_cast<DWORD>(sizeof(MMPSEntry));
}

static BOOL ReadMMPS(const DriverDevMode *lpDM, std::vector<MMPSEntry> *lpEntries)
{
    DatReader reader;
    if (!OpenModelDat(lpDM, &reader))
        return FALSE;
    std::vector<PaperRecord> papers;
    ReadTable(&reader, PART_PAPERS, &papers);
    if (CloseDat(&reader) != FileState::Read)
        return FALSE;
    for (const PaperRecord &paper : papers)
        lpEntries->push_back({paper.wId, static_cast<int16_t>(From360ToMM(paper.wWidth)),
                              static_cast<int16_t>(From360ToMM(paper.wLength))});
    return TRUE;
}

// The buffer holds what SizeofMMPS says.
BOOL BuildMMPS(const DriverDevMode *lpDM, LPVOID lpBuffer, DWORD)
{
    std::vector<MMPSEntry> entries;
    if (!ReadMMPS(lpDM, &entries))
        return FALSE;
    if (!entries.empty())
        std::memcpy(lpBuffer, entries.data(), entries.size() * sizeof(MMPSEntry));
    return TRUE;
}

static HGLOBAL NewMMPS(const DriverDevMode *lpDM)
{
    std::vector<MMPSEntry> entries;
    if (!ReadMMPS(lpDM, &entries))
        return nullptr;
    return NewBlock(entries.data(), entries.size() * sizeof(MMPSEntry));
}

// ---- handing out ------------------------------------------------------------------------------

HGLOBAL KVGetResource(WORD wResource, WORD wSelector, const DriverDevMode *lpDM)
{
    return KVGetResource2(wResource, wSelector, lpDM);
}

// Size and content come from one opening of the file, so that they belong together.
HGLOBAL KVGetResource2(WORD, WORD wSelector, const DriverDevMode *lpDM)
{
    switch (wSelector) {
    case RESOURCE_PRINTER: return NewLogPrinter(lpDM);
    case RESOURCE_MMPS: return NewMMPS(lpDM);
    default: return nullptr;
    }
}

int KVGetPrinterID(LPCSTR, const DriverDevMode *lpDM)
{
    HGLOBAL hRecord = KVGetResource(100, RESOURCE_PRINTER, lpDM);
    if (!hRecord)
        return -1;
    const int nId = static_cast<const PrinterRecordHead *>(hRecord)->sModelId;
    GlobalFree(hRecord);
    return nId;
}

int KVGetPrinterNameToRes(LPCSTR lpName, HGLOBAL *lpRecord, int *lpId, const DriverDevMode *lpDM)
{
    *lpId = KVGetPrinterID(lpName, lpDM);
    *lpRecord = KVGetResource(static_cast<WORD>(*lpId), RESOURCE_PRINTER, lpDM);
    return *lpId;
}
