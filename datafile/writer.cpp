// Writing a model's user file. The platform puts the new file in the old one's place when it is
// closed, and only when every write succeeded: a save that fails or is cut short loses nothing.
#include "datafile/writer.h"

#include <algorithm>
#include <string>

#include "datafile/files.h"

static void CreateIfMissing(const std::string &strPath)
{
    if (FileExists(strPath))
        return;
    OFSTRUCT of{};
    const HFILE hFile = OpenFile(strPath.c_str(), &of, OF_CREATE);
    if (hFile != HFILE_ERROR)
        _lclose(hFile);
}

// Exactly nSlots records, from the record nFirst of a table on.
template <class Record>
static std::vector<Record> SlotsOf(const std::vector<Record> &table, size_t nFirst, size_t nSlots)
{
    std::vector<Record> aSlots(nSlots);
    const size_t nStart = std::min(nFirst, table.size());
    std::copy_n(table.begin() + static_cast<ptrdiff_t>(nStart),
                std::min(nSlots, table.size() - nStart), aSlots.begin());
    return aSlots;
}

// Never a call for nothing, which would cut the file.
template <class Record>
static void Write(HFILE hFile, const std::vector<Record> &aSlots)
{
    if (!aSlots.empty())
        _lwrite(hFile, aSlots.data(), static_cast<UINT>(aSlots.size() * sizeof(Record)));
}

HFILE WriteUcfFile(const DriverDevMode *lpDM, const UIINSTANCE *lpInstance)
{
    // Everything is at hand before the file is open: memory that runs out leaves none behind.
    const std::string strPath = FilesOfModel(lpDM).strUcf;
    const DatFile &dat = lpInstance->dat;
    const auto aSettings =
        SlotsOf(dat.lpSettings, size_t{dat.nAuto} + dat.nPreset, dat.CfgHeader.wUserSlots);
    const auto aPapers = SlotsOf(dat.lpUserPapers, 0, dat.CfgHeader.wUserPaperSlots);
    CreateIfMissing(strPath);
    OFSTRUCT of{};
    const HFILE hFile = OpenFile(strPath.c_str(), &of, OF_WRITE);
    if (hFile == HFILE_ERROR)
        return HFILE_ERROR;
    _lwrite(hFile, &FILE_VERSION, sizeof FILE_VERSION);
    Write(hFile, aSettings);
    Write(hFile, aPapers);
    // A file that was longer ends here from now on.
    _lwrite(hFile, nullptr, 0);
    return _lclose(hFile);
}
