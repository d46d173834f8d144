// Whether a model's files are there at all.
#ifndef KV_DATAFILE_INSTALL_H
#define KV_DATAFILE_INSTALL_H

#include "kvui/devmode.h"
#include "platform/win32.h"

// TRUE when the .dat and the .cfg of the record's model exist. Shows nothing.
BOOL InstallCheck(const DriverDevMode *lpDM);

#endif
