// Whether a model's files are there at all.
#include "datafile/install.h"

#include "datafile/files.h"

BOOL InstallCheck(const DriverDevMode *lpDM)
{
    const ModelFiles files = FilesOfModel(lpDM);
    return FileExists(files.strDat) && FileExists(files.strCfg);
}
