// Whether a model's files are there at all.
#include "datafile/install.h"

#include "datafile/files.h"

static bool Exists(const std::string &strName)
{
    OFSTRUCT of{};
    return OpenFile(strName.c_str(), &of, OF_EXIST) != HFILE_ERROR;
}

BOOL InstallCheck(const DriverDevMode *lpDM)
{
    const ModelFiles files = FilesOfModel(lpDM);
    return Exists(files.strDat) && Exists(files.strCfg);
}
