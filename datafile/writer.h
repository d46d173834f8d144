// Writing a model's user file: the slots with what the user saved.
#ifndef KV_DATAFILE_WRITER_H
#define KV_DATAFILE_WRITER_H

#include "datafile/instance.h"

// Rewrites the user file of the record's model whole from the block's tables. The result of closing
// it, or HFILE_ERROR when it cannot be opened; after a failure the old file is as it was, and where
// there was none an empty one may be left, which readers take for none. Shows no message.
// Slots that a table lacks are written as zeros, which no reader takes for slots in use.
HFILE WriteUcfFile(const DriverDevMode *lpDM, const UIINSTANCE *lpInstance);

#endif
