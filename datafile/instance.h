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

// All zero when a sheet opens. The pages and dialogs of one sheet share it, so what one of them
// leaves here the next one finds.
struct UIINSTANCE {
    // The settings being edited
    int32_t nCurSetting;   // index in the settings table, or KV_CUSTOM_SETTINGS
    int32_t nCurRes;       // resolution index, as Settings.wResolution
    int32_t nIntent;       // colour intent in force in More Settings
    int32_t nAdjust[6];    // colour adjustments; the last three are the record's negated
    uint16_t wAdjState[6]; // their rows: 1 enabled, 2 negative, 4 being written by the program
    uint8_t bInk;          // 1 colour, 0 black
    uint8_t bHT;           // 0 to 3
    uint16_t wFlags;       // as Settings.wFlags
    uint16_t wFlags3;      // as Settings.wFlags3
    uint8_t bButtonDown;   // focus code of the utility button that has the focus, or 0

    // What stood when a dialog was opened
    uint8_t bSavedInk, bSavedHT;        // More Settings
    uint16_t wSavedFlags, wSavedFlags3; // More Settings
    int32_t nSavedListState;            // More Settings
    uint32_t dwSavedUnit;               // user-defined paper size
    int32_t nSavedSetting;              // Save Settings
    int32_t nSavedAdjust[6];            // More Settings

    DatFile dat;

    // What is shown. Numbers of pictures are those of hResLib.
    int32_t idModeBitmap, idInkBitmap;     // Main page
    int32_t idHTBitmap, idDetailInkBitmap; // More Settings
    int32_t idPaperBitmap;                 // Paper page, for IDC_PAPER_PICTURE
    uint32_t bAdvancedVisited; // Advanced has been chosen since the last switch to Automatic
    int32_t nListState;        // 0 a list entry is current, 1000 custom, 2000 found again
    uint32_t dwShownUnit;      // in the user-defined paper size dialog
    HMODULE hResLib;           // the model's UI resource library, that of the block below
    uint32_t dwFilling;        // user-defined paper size: swallows the next change of a field
    uint32_t bListChanged;     // a selection since the settings list was opened
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
