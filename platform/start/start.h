// Starting a library that a program was linked with, rather than loaded.
#ifndef KV_PLATFORM_START_START_H
#define KV_PLATFORM_START_START_H

#include "platform/host.h"

namespace kvp
{

// Called while a shared object is being mapped, with an address inside it. Loads it once more, by
// its own path, so that its DllInitialize is called and it has a module's handle; nothing when
// LoadLibraryA or LoadHostLibrary is what maps it. A library that refuses ends the program, after
// a line on standard error, as the loader of the machine played would.
KV_API void StartLinkedLibrary(const void *inside);

} // namespace kvp

#endif
