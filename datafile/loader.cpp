// Loading a model's files into a block, with the messages that queries and merging show.
#include "datafile/loader.h"

#include "base/module.h"
#include "datafile/files.h"
#include "datafile/tables.h"

// Whether the file was read; if not, the user has been told. A short file is one of another
// version to him too.
static BOOL Accept(FileState state, const std::string &strName, LPCSTR lpVersionError)
{
    if (state == FileState::NotFound)
        NotifyFileNotFound(strName.c_str());
    else if (state != FileState::Read)
        Notify(lpVersionError);
    return state == FileState::Read;
}

static BOOL LoadFiles(const DriverDevMode *lpDM, DatFile *lpBlock)
{
    const ModelFiles files = FilesOfModel(lpDM);
    if (!Accept(ReadDatTables(files.strDat.c_str(), lpBlock), files.strDat,
                "Version Error of dat file. Please Install again."))
        return FALSE;
    if (!Accept(ReadCfgTables(files.strCfg.c_str(), lpBlock), files.strCfg,
                "Version Error of cfg file. Please Install again."))
        return FALSE;
    if (ReadUserTables(files.strUcf.c_str(), lpBlock) == UserFileState::OtherVersion)
        Notify("Version Error of ucf file");
    CountSlotsInUse(lpBlock);
    return TRUE;
}

BOOL Get_DATFile(const DriverDevMode *lpDM)
{
    return LoadFiles(lpDM, &pInstance->dat);
}

BOOL Free_DATFile(const DriverDevMode *lpDM)
{
    return Free_DatFileLib(lpDM, &pInstance->dat);
}

BOOL Get_DatFileLib(const DriverDevMode *lpDM, DatFile *lpBlock)
{
    *lpBlock = DatFile{};
    return LoadFiles(lpDM, lpBlock);
}

// The counts go with the tables, so that a block never claims records that it does not hold.
BOOL Free_DatFileLib(const DriverDevMode *, DatFile *lpBlock)
{
    *lpBlock = DatFile{};
    return TRUE;
}
