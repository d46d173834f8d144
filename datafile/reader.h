// Reading a model's files, for everybody who does: the loader, the defaults, the MW data, the
// records and the pages. They differ in their messages and in what they do about a missing file,
// so nothing here shows a message.
//
// A reader carries its error: after the first read that fails or comes short every further one
// yields zeros, and the test at the end decides. A file must be as long as its header says before
// any table of it is allocated; a longer one is as good. Of a header alone only the .cfg's room for
// user slots is allocated, which is 9 MB at most.
#ifndef KV_DATAFILE_READER_H
#define KV_DATAFILE_READER_H

#include <span>
#include <vector>

#include "datafile/formats.h"
#include "platform/win32.h"

enum class FileState { Read, NotFound, OtherVersion, Short };
enum class Versions { Checked, Any }; // whether another version is refused

// Closes its file when it goes, unless that was done before.
struct FileReader {
    FileReader() = default;
    ~FileReader();
    FileReader(const FileReader &) = delete;
    FileReader &operator=(const FileReader &) = delete;

    HFILE hFile = HFILE_ERROR;
    int64_t nLength = 0; // as it was opened
    int64_t nPos = 0;
    bool bShort = false;
};

// The parts of a .dat behind its header, in file order.
enum DatPart {
    PART_PAPERS,
    PART_BINS,
    PART_RESNAMES,
    PART_MEDIA,
    PART_AUX,
    PART_RES,
    PART_MEDRES,
    PART_MW,
    PART_TEMPLATE,
    PART_PRINTER,
    DAT_PARTS
};

struct DatReader {
    FileReader file;
    DatHeader header;
    int64_t anOffsets[DAT_PARTS + 1]; // of the parts; the last one is where they end
};

// Opened only when the result is Read.
FileState OpenDat(LPCSTR lpName, Versions versions, DatReader *lpReader);
// Read or Short: whether everything since OpenDat could be read.
FileState CloseDat(DatReader *lpReader);

DWORD PartCount(const DatHeader &header, DatPart part); // records; 1 for template and printer
int64_t PartSize(const DatHeader &header, DatPart part);
// The first cb bytes of a part; what the file does not hold is zero.
void ReadPart(DatReader *lpReader, DatPart part, void *lpTo, size_t cb);
// Bytes from the start of a part on, which may reach past its end; none when the file ends first.
std::vector<uint8_t> ReadPartBytes(DatReader *lpReader, DatPart part, size_t cb);

// Room for at least n records. A table that has it keeps what it holds, a smaller one is allocated
// anew, all zero.
template <class Record>
void MakeRoom(std::vector<Record> *lpTable, size_t n)
{
    if (lpTable->size() < n)
        *lpTable = std::vector<Record>(n);
}

// A whole table into the start of lpTable; the number of its records.
template <class Record>
DWORD ReadTable(DatReader *lpReader, DatPart part, std::vector<Record> *lpTable)
{
    const DWORD n = PartCount(lpReader->header, part);
    MakeRoom(lpTable, n);
    ReadPart(lpReader, part, lpTable->data(), n * sizeof(Record));
    return n;
}

// Records of the settings table: A + B fixed ones and S user slots.
constexpr DWORD FixedSettings(const CfgHeader &header)
{
    return DWORD{header.wAutoCount} + header.wPresetCount;
}
constexpr DWORD AllSettings(const CfgHeader &header)
{
    return FixedSettings(header) + header.wUserSlots;
}

// The header, and the fixed records into a table with room for the user slots too. The header is
// written only when the result is Read.
FileState ReadCfg(LPCSTR lpName, Versions versions, CfgHeader *lpHeader,
                  std::vector<SettingsRecord> *lpSettings);

// A user's file that is shorter than the capacities say is one of another version. An empty one is
// a missing one: saving creates it before it fills it, so that is what a first save leaves which
// fails or is cut short. Nothing was ever saved there, and nothing is lost.
enum class UserFileState { Missing, NotOpened, OtherVersion, Read };
// Reads the user slots (capacities of the .cfg) into settings and, unless empty, papers. Slots of
// a file that is not read stay as they are, but for one that fails on the way: zeros.
UserFileState ReadUcf(LPCSTR lpName, const CfgHeader &cfg, std::span<SettingsRecord> settings,
                      std::span<UserPaperRecord> papers);

// Free user slots. The first settings slot is the record nFirst of its table.
void FreeSettingsSlots(std::span<SettingsRecord> slots, DWORD nFirst);
// As for a user without a file.
void FreePaperSlots(std::span<UserPaperRecord> slots, const PaperRecord &userDefined);
// As for a file of another version: identifiers stay that of the user-defined paper, marks and
// names are zero, whatever an earlier reading has left.
void MarkPaperSlotsFree(std::span<UserPaperRecord> slots, const PaperRecord &userDefined);

#endif
