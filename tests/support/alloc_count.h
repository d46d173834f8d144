// Allocations of the whole process, its shared libraries included. Linking this replaces malloc;
// under the address sanitizer, which does so itself, nothing is counted.
#ifndef KV_TESTS_SUPPORT_ALLOC_COUNT_H
#define KV_TESTS_SUPPORT_ALLOC_COUNT_H

struct Allocations {
    long made, held; // since the start; held: made and not yet freed
};
bool AllocationsAreCounted();
Allocations AllocationsSoFar();

#endif
