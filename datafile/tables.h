// A DatFile filled from a model's files one after the other, and looked up in. Shows no message:
// whoever loads decides what each state of a file means to its user.
//
// Buffers already in the block are reused; whatever happens, no count ever exceeds its table.
#ifndef KV_DATAFILE_TABLES_H
#define KV_DATAFILE_TABLES_H

#include <optional>
#include <span>
#include <string>

#include "datafile/instance.h"
#include "datafile/reader.h"

// Header, seven tables and their counts. Other states than Read: the block is as it was, or, when
// the file failed on the way, what could not be read is zero.
FileState ReadDatTables(LPCSTR lpName, DatFile *lpBlock);
// Header, fixed settings, and room for all user slots.
FileState ReadCfgTables(LPCSTR lpName, DatFile *lpBlock);
// The user slots, freed when the file is missing or of another version. Needs the other two files'
// tables.
UserFileState ReadUserTables(LPCSTR lpName, DatFile *lpBlock);
// nUserUsed and nUserPaperUsed: slots whose state says so, wherever they stand.
void CountSlotsInUse(DatFile *lpBlock);

// The first record of a paper identifier among the papers, or the position of one; null and -1
// when there is none.
const PaperRecord *FindPaper(const DatFile &block, int nId);
int FindPaperIndex(const DatFile &block, int nId);
// The same among the user paper slots in use.
const UserPaperRecord *FindUserPaper(const DatFile &block, int nId);
int FindUserPaperIndex(const DatFile &block, int nId);
// The slots in use: the first nUserPaperUsed.
std::span<const UserPaperRecord> UserPapersInUse(const DatFile &block);
// What the user has called a slot. A name that fills its field without a terminator ends with it.
std::string SlotName(const UserPaperRecord &slot);
// The papers, without what may be left behind them from another model.
std::span<const PaperRecord> Papers(const DatFile &block);
std::span<const BinRecord> Bins(const DatFile &block);

// The first paper that a source of the mask feeds, of this identifier unless any will do; null when
// there is none.
const PaperRecord *FindFedPaper(const DatFile &block, DWORD dwMask, std::optional<int> nId = {});

// Written into a record: a resolution in its public and its private part; a paper's size in 0.1 mm
// and in 1/360 inch, while the held size stays.
void PutResolution(DriverDevMode *lpDM, const ResolutionRecord &resolution);
void PutPaperSize(DriverDevMode *lpDM, const PaperRecord &paper);

// Whether a paper can be fed from one of the sources of a mask.
constexpr bool Supports(const PaperRecord &paper, DWORD dwMask)
{
    return (static_cast<uint16_t>(paper.wBinMask) & dwMask) != 0;
}
// A source identifier of a file, unsigned there, against one of a record, where it is signed.
constexpr bool IsSource(WORD wFileId, int16_t sRecordId)
{
    return wFileId == static_cast<WORD>(sRecordId);
}

#endif
