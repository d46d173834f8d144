// A model's UI resource library: its texts and pictures, beside the driver.
#ifndef KV_BASE_UILIBRARY_H
#define KV_BASE_UILIBRARY_H

#include "base/handles.h"

// The library of this model (ANSI) in the printer's driver directory. Null after a message that
// names the file.
LibraryPtr LoadUILibrary(LPCSTR lpModel, HANDLE hPrinter);

#endif
