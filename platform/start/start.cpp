// Linked into a library of the machine played, so that it starts with whoever is linked with it.
// Nothing stops it: what it holds ends with the program.
#include "platform/start/start.h"

[[gnu::constructor]] static void Start()
{
    kvp::StartLinkedLibrary(reinterpret_cast<const void *>(&Start));
}
