// The names of a model's three files, formed from a record's model name.
#ifndef KV_DATAFILE_FILES_H
#define KV_DATAFILE_FILES_H

#include <string>

#include "kvui/devmode.h"

// ANSI. The .dat and the .cfg are bare names, found by the platform's file search; the user's file
// is a full path in the system directory, or empty when that directory cannot be had.
struct ModelFiles {
    std::string strDat, strCfg, strUcf;
};
ModelFiles FilesOfModel(const DriverDevMode *lpDM);
// The .dat alone, for those who need no other.
std::string DatNameOf(const DriverDevMode *lpDM);

// Whether the file is there, a bare name looked for in the platform's search order.
bool FileExists(const std::string &strName);

#endif
