// What is read of a resource-only PE file: where its resources are and what they hold. The file
// is bytes from outside; a damaged one holds less, or nothing.
#ifndef KV_PLATFORM_RESOURCE_PE_H
#define KV_PLATFORM_RESOURCE_PE_H

#include "platform/resource/bytes.h"
#include "platform/win32.h"

namespace kvp
{

// A PE file whose headers have been found; it borrows the file's bytes.
struct PeFile {
    Bytes file;
    Bytes sections;  // the section headers, whole ones only
    Bytes directory; // from the resource directory's root to the end of its section
};

bool IsPe(Bytes file);
// False when the headers are not those of a PE file. One without resources is fine.
bool OpenPe(Bytes file, PeFile &pe);

// The resource's bytes; empty when there is none. Of several languages the first in this order:
// wLang itself, the neutral one of its primary language, any of its primary language, English
// (United States), the first in the file.
Bytes FindInPe(const PeFile &pe, uint16_t type, uint16_t id, LANGID wLang);

} // namespace kvp

#endif
