// The two blocks that every page, dialog and query reaches: the loaded tables of one model with
// the working state of the settings being edited (UIInstance, one static block of the module),
// and the small block of one open sheet (CBSTRUC).
#ifndef KV_DATAFILE_INSTANCE_H
#define KV_DATAFILE_INSTANCE_H

#include <cstdint>
#include <memory>
#include <vector>

#include "datafile/formats.h"
#include "platform/win32.h"

// The loaded tables of one model. The counts are those of the files' headers; a table never holds
// fewer records than its count, but may hold more, left from another model.
struct DatFile {
    uint32_t nPapers, nBins, nResNames, nMedia, nAux, nRes, nMedRes;
    uint32_t nAuto, nPreset;
    uint32_t nUserUsed;      // user settings slots in use: the first so many
    uint32_t nSettings;      // nAuto + nPreset + CfgHeader.wUserSlots
    uint32_t nUserPaperUsed; // user paper slots in use: the first so many
    struct CfgHeader CfgHeader;
    std::vector<SettingsRecord> lpSettings;
    std::unique_ptr<DatHeader> lpDatHeader;
    std::vector<PaperRecord> lpPapers;
    std::vector<BinRecord> lpBins;
    std::vector<int16_t> lpResNames;
    std::vector<MediaRecord> lpMedia;
    std::vector<AuxRecord> lpAux;
    std::vector<ResolutionRecord> lpRes;
    std::vector<MedResRule> lpMedRes;
    std::vector<UserPaperRecord> lpUserPapers; // CfgHeader.wUserPaperSlots records
};

struct UIINSTANCE {
    int32_t nCurSetting; // index in the settings table, or KV_CUSTOM_SETTINGS
    DatFile dat;
    HMODULE hResLib; // the model's UI resource library
};

struct CBSTRUC {
    DriverDevMode *lpDevMode; // the record being edited
    UIINSTANCE *lpInstance;   // always &UIInstance
    HMODULE hResLib;          // for the life of the sheet
    HANDLE hPrinter;
    DriverDevMode *lpSaveDevMode; // More Settings' copy of the record, for Cancel
};

extern UIINSTANCE UIInstance;
extern UIINSTANCE *const pInstance; // the same block, for code that has no dialog

// The record at an index that comes from a file or a settings record, or null when it leads
// outside the first nCount records of the table.
template <class Record>
Record *RecordAt(std::vector<Record> &table, uint32_t nCount, int64_t nIndex)
{
    const bool bInside = nIndex >= 0 && nIndex < static_cast<int64_t>(nCount) &&
                         static_cast<size_t>(nIndex) < table.size();
    return bInside ? &table[static_cast<size_t>(nIndex)] : nullptr;
}
template <class Record>
const Record *RecordAt(const std::vector<Record> &table, uint32_t nCount, int64_t nIndex)
{
    return RecordAt(const_cast<std::vector<Record> &>(table), nCount, nIndex);
}

#endif
