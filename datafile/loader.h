// Loading a model's .dat, .cfg and .ucf into memory, and releasing them.
#ifndef KV_DATAFILE_LOADER_H
#define KV_DATAFILE_LOADER_H

#include "datafile/instance.h"

// Loads the files of the record's model into the static block. FALSE after a message: a file that
// is not found, of another version or shorter than its counts. What was loaded before a failure
// stays until the next Free_DATFile; buffers already there are reused.
BOOL Get_DATFile(const DriverDevMode *lpDM);
BOOL Free_DATFile(const DriverDevMode *lpDM); // always TRUE

// The same for a block of the caller's, which must be fresh or released.
BOOL Get_DatFileLib(const DriverDevMode *lpDM, DatFile *lpBlock);
BOOL Free_DatFileLib(const DriverDevMode *lpDM, DatFile *lpBlock); // always TRUE

#endif
