// A DatFile filled from a model's files, and looked up in.
#include "datafile/tables.h"

#include <algorithm>
#include <cstring>

#include "base/units.h"

FileState ReadDatTables(LPCSTR lpName, DatFile *lpBlock)
{
    DatReader reader;
    const FileState state = OpenDat(lpName, Versions::Checked, &reader);
    if (state != FileState::Read)
        return state;
    if (!lpBlock->lpDatHeader)
        lpBlock->lpDatHeader = std::make_unique<DatHeader>();
    *lpBlock->lpDatHeader = reader.header;
    lpBlock->nPapers = ReadTable(&reader, PART_PAPERS, &lpBlock->lpPapers);
    lpBlock->nBins = ReadTable(&reader, PART_BINS, &lpBlock->lpBins);
    lpBlock->nResNames = ReadTable(&reader, PART_RESNAMES, &lpBlock->lpResNames);
    lpBlock->nMedia = ReadTable(&reader, PART_MEDIA, &lpBlock->lpMedia);
    lpBlock->nAux = ReadTable(&reader, PART_AUX, &lpBlock->lpAux);
    lpBlock->nRes = ReadTable(&reader, PART_RES, &lpBlock->lpRes);
    lpBlock->nMedRes = ReadTable(&reader, PART_MEDRES, &lpBlock->lpMedRes);
    return CloseDat(&reader);
}

FileState ReadCfgTables(LPCSTR lpName, DatFile *lpBlock)
{
    CfgHeader header;
    const FileState state = ReadCfg(lpName, Versions::Checked, &header, &lpBlock->lpSettings);
    if (state != FileState::Read)
        return state;
    // The header last: its capacities may never exceed the tables.
    MakeRoom(&lpBlock->lpUserPapers, header.wUserPaperSlots);
    lpBlock->CfgHeader = header;
    lpBlock->nAuto = header.wAutoCount;
    lpBlock->nPreset = header.wPresetCount;
    lpBlock->nSettings = AllSettings(header);
    return state;
}

// ---- user slots -------------------------------------------------------------------------------

static std::span<SettingsRecord> SettingsSlots(DatFile *lpBlock)
{
    return std::span(lpBlock->lpSettings)
        .subspan(FixedSettings(lpBlock->CfgHeader), lpBlock->CfgHeader.wUserSlots);
}

static std::span<UserPaperRecord> PaperSlots(DatFile *lpBlock)
{
    return std::span(lpBlock->lpUserPapers).first(lpBlock->CfgHeader.wUserPaperSlots);
}

// What free paper slots are made of: the user-defined paper, or in a model without one the first.
static PaperRecord FreeSlotPaper(const DatFile &block)
{
    if (const PaperRecord *lpPaper = FindPaper(block, KV_PAPER_USER))
        return *lpPaper;
    return block.nPapers > 0 ? block.lpPapers[0] : PaperRecord{};
}

UserFileState ReadUserTables(LPCSTR lpName, DatFile *lpBlock)
{
    const auto settings = SettingsSlots(lpBlock);
    const auto papers = PaperSlots(lpBlock);
    const UserFileState state = ReadUcf(lpName, lpBlock->CfgHeader, settings, papers);
    if (state == UserFileState::Missing || state == UserFileState::OtherVersion)
        FreeSettingsSlots(settings, FixedSettings(lpBlock->CfgHeader));
    if (state == UserFileState::Missing)
        FreePaperSlots(papers, FreeSlotPaper(*lpBlock));
    if (state == UserFileState::OtherVersion)
        MarkPaperSlotsFree(papers, FreeSlotPaper(*lpBlock));
    return state;
}

template <class Slot>
static DWORD InUse(std::span<Slot> slots)
{
    return static_cast<DWORD>(std::count_if(
        slots.begin(), slots.end(), [](const Slot &slot) { return slot.wState == STATE_IN_USE; }));
}

void CountSlotsInUse(DatFile *lpBlock)
{
    lpBlock->nUserUsed = InUse(SettingsSlots(lpBlock));
    lpBlock->nUserPaperUsed = InUse(PaperSlots(lpBlock));
}

// ---- looking up -------------------------------------------------------------------------------

template <class Record>
static std::span<const Record> FirstOf(const std::vector<Record> &table, DWORD n)
{
    return std::span(table).first(std::min<size_t>(n, table.size()));
}

std::span<const PaperRecord> Papers(const DatFile &block)
{
    return FirstOf(block.lpPapers, block.nPapers);
}

std::span<const BinRecord> Bins(const DatFile &block)
{
    return FirstOf(block.lpBins, block.nBins);
}

std::span<const UserPaperRecord> UserPapersInUse(const DatFile &block)
{
    return FirstOf(block.lpUserPapers, block.nUserPaperUsed);
}

std::string SlotName(const UserPaperRecord &slot)
{
    return std::string(slot.szName, strnlen(slot.szName, sizeof slot.szName));
}

int FindPaperIndex(const DatFile &block, int nId)
{
    const auto papers = Papers(block);
    const auto it = std::find_if(papers.begin(), papers.end(),
                                 [nId](const PaperRecord &paper) { return paper.wId == nId; });
    return it == papers.end() ? -1 : static_cast<int>(it - papers.begin());
}

int FindUserPaperIndex(const DatFile &block, int nId)
{
    const auto slots = UserPapersInUse(block);
    const auto it = std::find_if(slots.begin(), slots.end(), [nId](const UserPaperRecord &slot) {
        return slot.paper.wId == nId;
    });
    return it == slots.end() ? -1 : static_cast<int>(it - slots.begin());
}

const PaperRecord *FindPaper(const DatFile &block, int nId)
{
    return RecordAt(block.lpPapers, block.nPapers, FindPaperIndex(block, nId));
}

const UserPaperRecord *FindUserPaper(const DatFile &block, int nId)
{
    return RecordAt(block.lpUserPapers, block.nUserPaperUsed, FindUserPaperIndex(block, nId));
}

const PaperRecord *FindFedPaper(const DatFile &block, DWORD dwMask, std::optional<int> nId)
{
    for (const PaperRecord &paper : Papers(block))
        if (Supports(paper, dwMask) && (!nId || paper.wId == *nId))
            return &paper;
    return nullptr;
}

// ---- written into a record --------------------------------------------------------------------

void PutResolution(DriverDevMode *lpDM, const ResolutionRecord &resolution)
{
    lpDM->dm.dmPrintQuality = resolution.wResX;
    lpDM->dm.dmYResolution = resolution.wResY;
    lpDM->lResX = resolution.wResX;
    lpDM->lResY = resolution.wResY;
}

void PutPaperSize(DriverDevMode *lpDM, const PaperRecord &paper)
{
    lpDM->dm.dmPaperLength = static_cast<int16_t>(From360ToMM(paper.wLength));
    lpDM->dm.dmPaperWidth = static_cast<int16_t>(From360ToMM(paper.wWidth));
    lpDM->wPaperWidth360 = static_cast<WORD>(paper.wWidth);
    lpDM->wPaperLength360 = static_cast<WORD>(paper.wLength);
}
