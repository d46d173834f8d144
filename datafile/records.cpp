// Records built from a model's .dat and handed out as new blocks.
#include "datafile/records.h"

#include <algorithm>
#include <cstring>
#include <iterator>

#include "base/handles.h"
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

// As many entries as the buffer has room for: the file may have grown since its size was asked.
BOOL BuildMMPS(const DriverDevMode *lpDM, LPVOID lpBuffer, DWORD cb)
{
    std::vector<MMPSEntry> entries;
    if (!ReadMMPS(lpDM, &entries))
        return FALSE;
    const size_t nRoom = std::min<size_t>(entries.size(), cb / sizeof(MMPSEntry));
    if (nRoom > 0)
        std::memcpy(lpBuffer, entries.data(), nRoom * sizeof(MMPSEntry));
    return TRUE;
}

// ---- handing out ------------------------------------------------------------------------------

HGLOBAL KVGetResource(WORD wResource, WORD wSelector, const DriverDevMode *lpDM)
{
    return KVGetResource2(wResource, wSelector, lpDM);
}

// Which records there are, and the two steps that make one: its size, then its content.
static constexpr struct Selector {
    WORD wSelector;
    DWORD (*size)(const DriverDevMode *);
    BOOL (*build)(const DriverDevMode *, LPVOID, DWORD);
} aSelectors[] = {
    {RESOURCE_MMPS, SizeofMMPS, BuildMMPS},
    {RESOURCE_PRINTER, SizeofLogPrinter, BuildLogPrinter},
};

HGLOBAL KVGetResource2(WORD, WORD wSelector, const DriverDevMode *lpDM)
{
    const auto *row = std::ranges::find(aSelectors, wSelector, &Selector::wSelector);
    const DWORD cb = row != std::end(aSelectors) ? row->size(lpDM) : 0;
    if (cb == 0)
        return nullptr;
    GlobalPtr<void> record = NewGlobal<void>(cb);
    if (!record || !row->build(lpDM, record.get(), cb))
        return nullptr;
    return record.release();
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
