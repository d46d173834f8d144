// The names of a model's three files.
#include "datafile/files.h"

#include "base/modeltable.h"
#include "base/text.h"
#include "platform/win32.h"

static constexpr UINT SYSTEM_DIRECTORY_BYTES = 144;

static std::string BaseNameOf(const DriverDevMode *lpDM)
{
    return Get_DATName(AnsiModelName(lpDM).c_str());
}

// "" when the directory's name is longer than its buffer.
static std::string SystemDirectory()
{
    char szDirectory[SYSTEM_DIRECTORY_BYTES] = "";
    const UINT cch = GetSystemDirectoryA(szDirectory, sizeof szDirectory);
    return cch < sizeof szDirectory ? std::string(szDirectory, cch) : std::string();
}

static std::string UserFilePath(const std::string &strBase)
{
    std::string strPath = SystemDirectory();
    if (strPath.empty())
        return strPath;
    if (strPath.back() != '\\')
        strPath += '\\';
    return strPath + strBase + ".ucf";
}

ModelFiles FilesOfModel(const DriverDevMode *lpDM)
{
    const std::string strBase = BaseNameOf(lpDM);
    return {strBase + ".dat", strBase + ".cfg", UserFilePath(strBase)};
}

std::string DatNameOf(const DriverDevMode *lpDM)
{
    return BaseNameOf(lpDM) + ".dat";
}

bool FileExists(const std::string &strName)
{
    OFSTRUCT of{};
    return OpenFile(strName.c_str(), &of, OF_EXIST) != HFILE_ERROR;
}
