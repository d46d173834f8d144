// Reading a model's files.
#include "datafile/reader.h"

#include <climits>
#include <cstring>

// ---- one file ---------------------------------------------------------------------------------

// Either family of file calls takes the other's handles. -1 when it cannot be told.
static int64_t LengthOf(HFILE hFile)
{
    DWORD dwHigh = 0;
    const DWORD dwLow =
        GetFileSize(reinterpret_cast<HANDLE>(static_cast<intptr_t>(hFile)), &dwHigh);
    if (dwLow == INVALID_FILE_SIZE && GetLastError() != ERROR_SUCCESS)
        return -1;
    return int64_t{dwHigh} << 32 | dwLow;
}

static bool OpenReader(LPCSTR lpName, FileReader *lpFile)
{
    OFSTRUCT of{};
    lpFile->hFile = OpenFile(lpName, &of, OF_READ);
    if (lpFile->hFile == HFILE_ERROR)
        return false;
    lpFile->nLength = LengthOf(lpFile->hFile);
    return true;
}

static bool CloseReader(FileReader *lpFile)
{
    if (lpFile->hFile != HFILE_ERROR)
        _lclose(lpFile->hFile);
    lpFile->hFile = HFILE_ERROR;
    return !lpFile->bShort;
}

FileReader::~FileReader()
{
    CloseReader(this);
}

// From the start of the file; a table that follows the last one read needs no call at all.
static void SeekTo(FileReader *lpFile, int64_t nOffset)
{
    if (lpFile->bShort || lpFile->nPos == nOffset)
        return;
    lpFile->bShort = nOffset > INT_MAX ||
                     _llseek(lpFile->hFile, static_cast<LONG>(nOffset), FILE_BEGIN) != nOffset;
    lpFile->nPos = nOffset;
}

static void ReadAt(FileReader *lpFile, int64_t nOffset, void *lpTo, size_t cb)
{
    if (cb == 0)
        return;
    SeekTo(lpFile, nOffset);
    if (!lpFile->bShort)
        lpFile->bShort = _lread(lpFile->hFile, lpTo, static_cast<UINT>(cb)) != cb;
    lpFile->nPos += static_cast<int64_t>(cb);
    if (lpFile->bShort)
        std::memset(lpTo, 0, cb);
}

// The error of a file that ends before nLength bytes.
static void RequireLength(FileReader *lpFile, int64_t nLength)
{
    lpFile->bShort = lpFile->bShort || lpFile->nLength < nLength;
}

// ---- .dat -------------------------------------------------------------------------------------

// Bytes per record, and where in the header the number of records stands; 0: there is one record.
static constexpr struct {
    DatPart part;
    size_t cbRecord, nCountAt;
} aDatParts[] = {
    {PART_PAPERS, sizeof(PaperRecord), offsetof(DatHeader, wPaperCount)},
    {PART_BINS, sizeof(BinRecord), offsetof(DatHeader, wBinCount)},
    {PART_RESNAMES, sizeof(int16_t), offsetof(DatHeader, wResNameCount)},
    {PART_MEDIA, sizeof(MediaRecord), offsetof(DatHeader, wMediaCount)},
    {PART_AUX, sizeof(AuxRecord), offsetof(DatHeader, wAuxCount)},
    {PART_RES, sizeof(ResolutionRecord), offsetof(DatHeader, wResCount)},
    {PART_MEDRES, sizeof(MedResRule), offsetof(DatHeader, wMedResCount)},
    {PART_MW, sizeof(MWRecord), offsetof(DatHeader, wMWCount)},
    {PART_TEMPLATE, sizeof(DriverDevMode), 0},
    {PART_PRINTER, sizeof(PrinterRecordHead), 0},
};

static constexpr bool EveryPartAtItsPlace()
{
    size_t n = 0;
    for (const auto &row : aDatParts)
        if (row.part != n++)
            return false;
    return n == DAT_PARTS;
}
static_assert(EveryPartAtItsPlace());

DWORD PartCount(const DatHeader &header, DatPart part)
{
    if (aDatParts[part].nCountAt == 0)
        return 1;
    WORD wCount;
    std::memcpy(&wCount, reinterpret_cast<const BYTE *>(&header) + aDatParts[part].nCountAt,
                sizeof wCount);
    return wCount;
}

int64_t PartSize(const DatHeader &header, DatPart part)
{
    const int64_t cb = static_cast<int64_t>(aDatParts[part].cbRecord) * PartCount(header, part);
    if (part != PART_PRINTER)
        return cb;
    return cb + 2 * header.wPaperCount + 4 * (header.wBinCount + header.wResNameCount);
}

// Where each part begins, and behind them where the last one ends.
static void FindParts(DatReader *lpReader)
{
    int64_t nOffset = sizeof(DatHeader);
    for (int i = 0; i < DAT_PARTS; ++i) {
        lpReader->anOffsets[i] = nOffset;
        nOffset += PartSize(lpReader->header, static_cast<DatPart>(i));
    }
    lpReader->anOffsets[DAT_PARTS] = nOffset;
}

FileState OpenDat(LPCSTR lpName, Versions versions, DatReader *lpReader)
{
    if (!OpenReader(lpName, &lpReader->file))
        return FileState::NotFound;
    ReadAt(&lpReader->file, 0, &lpReader->header, sizeof(DatHeader));
    const bool bOther = versions == Versions::Checked && lpReader->header.wVersion != FILE_VERSION;
    FindParts(lpReader);
    RequireLength(&lpReader->file, lpReader->anOffsets[DAT_PARTS]);
    if (!bOther && !lpReader->file.bShort)
        return FileState::Read;
    CloseReader(&lpReader->file);
    return bOther ? FileState::OtherVersion : FileState::Short;
}

FileState CloseDat(DatReader *lpReader)
{
    return CloseReader(&lpReader->file) ? FileState::Read : FileState::Short;
}

void ReadPart(DatReader *lpReader, DatPart part, void *lpTo, size_t cb)
{
    ReadAt(&lpReader->file, lpReader->anOffsets[part], lpTo, cb);
}

std::vector<uint8_t> ReadPartBytes(DatReader *lpReader, DatPart part, size_t cb)
{
    const int64_t nOffset = lpReader->anOffsets[part];
    RequireLength(&lpReader->file, nOffset + static_cast<int64_t>(cb));
    std::vector<uint8_t> aBytes(lpReader->file.bShort ? 0 : cb);
    ReadAt(&lpReader->file, nOffset, aBytes.data(), aBytes.size());
    return aBytes;
}

// ---- .cfg and .ucf ----------------------------------------------------------------------------

static FileState ReadOpenCfg(FileReader *lpFile, Versions versions, CfgHeader *lpHeader,
                             std::vector<SettingsRecord> *lpSettings)
{
    CfgHeader header;
    ReadAt(lpFile, 0, &header, sizeof header);
    if (versions == Versions::Checked && header.wVersion != FILE_VERSION)
        return FileState::OtherVersion;
    const size_t cbFixed = FixedSettings(header) * sizeof(SettingsRecord);
    RequireLength(lpFile, static_cast<int64_t>(sizeof header + cbFixed));
    if (lpFile->bShort)
        return FileState::Short;
    MakeRoom(lpSettings, AllSettings(header));
    ReadAt(lpFile, sizeof header, lpSettings->data(), cbFixed);
    if (lpFile->bShort)
        return FileState::Short;
    *lpHeader = header;
    return FileState::Read;
}

FileState ReadCfg(LPCSTR lpName, Versions versions, CfgHeader *lpHeader,
                  std::vector<SettingsRecord> *lpSettings)
{
    FileReader file;
    if (!OpenReader(lpName, &file))
        return FileState::NotFound;
    return ReadOpenCfg(&file, versions, lpHeader, lpSettings);
}

// The user's file has no counts of its own: whether it is whole, the .cfg's capacities tell.
static bool ReadOpenUcf(FileReader *lpFile, const CfgHeader &cfg,
                        std::span<SettingsRecord> settings, std::span<UserPaperRecord> papers)
{
    WORD wVersion;
    ReadAt(lpFile, 0, &wVersion, sizeof wVersion);
    const auto cbSlots = static_cast<int64_t>(sizeof(SettingsRecord)) * cfg.wUserSlots;
    const auto cbPapers = static_cast<int64_t>(sizeof(UserPaperRecord)) * cfg.wUserPaperSlots;
    const int64_t nPapersAt = int64_t{sizeof wVersion} + cbSlots;
    RequireLength(lpFile, nPapersAt + cbPapers);
    if (lpFile->bShort || wVersion != FILE_VERSION)
        return false;
    ReadAt(lpFile, sizeof wVersion, settings.data(), settings.size_bytes());
    ReadAt(lpFile, nPapersAt, papers.data(), papers.size_bytes());
    return !lpFile->bShort;
}

UserFileState ReadUcf(LPCSTR lpName, const CfgHeader &cfg, std::span<SettingsRecord> settings,
                      std::span<UserPaperRecord> papers)
{
    OFSTRUCT of{};
    if (OpenFile(lpName, &of, OF_EXIST) == HFILE_ERROR)
        return UserFileState::Missing;
    FileReader file;
    if (!OpenReader(lpName, &file))
        return UserFileState::NotOpened;
    if (file.nLength == 0)
        return UserFileState::Missing;
    return ReadOpenUcf(&file, cfg, settings, papers) ? UserFileState::Read
                                                     : UserFileState::OtherVersion;
}

void FreeSettingsSlots(std::span<SettingsRecord> slots, DWORD nFirst)
{
    for (SettingsRecord &slot : slots) {
        slot = {};
        slot.wIndex = static_cast<WORD>(nFirst++);
        slot.wAutoLabel = -1;
        slot.wState = STATE_FREE;
    }
}

void MarkPaperSlotsFree(std::span<UserPaperRecord> slots, const PaperRecord &userDefined)
{
    for (UserPaperRecord &slot : slots) {
        slot = {};
        slot.paper = userDefined;
        slot.wState = STATE_FREE;
    }
}

void FreePaperSlots(std::span<UserPaperRecord> slots, const PaperRecord &userDefined)
{
    MarkPaperSlotsFree(slots, userDefined);
    int nId = KV_FIRST_USERSLOT_ID;
    for (UserPaperRecord &slot : slots) {
        slot.paper.wId = static_cast<int16_t>(nId++);
        slot.wMark = MARK_FREE;
    }
}
