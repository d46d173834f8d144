// The counters behind CurrentlyHeld that the kernel folder keeps itself.
#ifndef KV_PLATFORM_KERNEL_COUNTS_H
#define KV_PLATFORM_KERNEL_COUNTS_H

#include <atomic>
#include <cstddef>

namespace kvp
{

extern std::atomic<size_t> g_nBlocks; // given out by GlobalAlloc and LocalAlloc
extern std::atomic<size_t> g_nFiles;  // open handles

} // namespace kvp

#endif
