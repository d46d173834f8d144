// Whether something that is done very often leaves anything behind.
#ifndef KV_BENCH_HOLDINGS_H
#define KV_BENCH_HOLDINGS_H

#include <functional>

// Does it a few times, then so many times more, and prints what the latter left: allocations,
// handles, drawing objects, resident memory. Whether nothing grew.
bool LeavesNothing(const char *what, int times, const std::function<void()> &act);

#endif
