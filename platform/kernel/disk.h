// Places on the host's disk, in whatever case they stand there.
#ifndef KV_PLATFORM_KERNEL_DISK_H
#define KV_PLATFORM_KERNEL_DISK_H

#include <functional>
#include <string>

#include "platform/kernel/names.h"
#include "platform/win32.h"

namespace kvp
{

// Does something with a file by its host path; 0, or the errno of its failure.
using HostAction = std::function<int(const char *hostPath)>;

// Runs the action on a place: first on the name as asked for, unless a listing says that it is
// not there, then on the name as it stands on disk. ERROR_SUCCESS or the error.
DWORD Reach(const Place &place, const HostAction &action);

// The action that succeeds when a file stands there, not a directory and not a pipe.
int IsHostFile(const char *hostPath);

// The host path of a place, in the case on disk as far as it exists; empty when the machine has
// no drives on disk.
std::string HostPathOf(const Place &place);

// Listings of directories are kept from one look to the next; this drops them.
void ForgetListings();

} // namespace kvp

#endif
