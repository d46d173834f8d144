// The machine being played, with what the file calls ask of it on every open worked out once.
#ifndef KV_PLATFORM_KERNEL_MACHINE_H
#define KV_PLATFORM_KERNEL_MACHINE_H

#include <string>
#include <vector>

#include "platform/host.h"
#include "platform/kernel/names.h"

namespace kvp
{

struct Setup {
    Machine machine;
    std::string strRootPrefix;    // the root and a '/'; empty: there are no drives on disk
    std::vector<Place> aSearched; // the directories that a bare name is searched in, in order
};

// The first call configures from the environment when Configure has not been called.
const Setup &CurrentSetup();

constexpr char WINDOWS_DIRECTORY[] = "C:\\winnt35";
constexpr char SYSTEM_DIRECTORY[] = "C:\\winnt35\\system32";
constexpr char PRINTER_DRIVER_DIRECTORY[] = "C:\\winnt35\\system32\\spool\\drivers\\w32x86\\1";

} // namespace kvp

#endif
