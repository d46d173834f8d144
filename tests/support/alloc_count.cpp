// malloc and its relatives, counted on their way to the C library's own.
#include "tests/support/alloc_count.h"

#include <atomic>
#include <cerrno>
#include <cstddef>

#if defined(__SANITIZE_ADDRESS__)
#define KV_COUNT_ALLOCATIONS 0
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define KV_COUNT_ALLOCATIONS 0
#endif
#endif
#ifndef KV_COUNT_ALLOCATIONS
#define KV_COUNT_ALLOCATIONS 1
#endif

static std::atomic<long> nMade, nFreed;

bool AllocationsAreCounted()
{
    return KV_COUNT_ALLOCATIONS;
}

Allocations AllocationsSoFar()
{
    return {nMade, nMade - nFreed};
}

#if KV_COUNT_ALLOCATIONS

extern "C" {

void *__libc_malloc(size_t size);
void *__libc_calloc(size_t count, size_t size);
void *__libc_realloc(void *block, size_t size);
void *__libc_memalign(size_t alignment, size_t size);
void __libc_free(void *block);

#define KV_VISIBLE __attribute__((visibility("default")))

static void *Counted(void *block)
{
    nMade.fetch_add(block != nullptr, std::memory_order_relaxed);
    return block;
}

KV_VISIBLE void *malloc(size_t size)
{
    return Counted(__libc_malloc(size));
}

KV_VISIBLE void *calloc(size_t count, size_t size)
{
    return Counted(__libc_calloc(count, size));
}

KV_VISIBLE void *realloc(void *block, size_t size)
{
    void *moved = __libc_realloc(block, size);
    if (block && (moved || size == 0)) // the old block is gone
        nFreed.fetch_add(1, std::memory_order_relaxed);
    return Counted(moved);
}

KV_VISIBLE void *memalign(size_t alignment, size_t size)
{
    return Counted(__libc_memalign(alignment, size));
}

KV_VISIBLE void *aligned_alloc(size_t alignment, size_t size)
{
    return Counted(__libc_memalign(alignment, size));
}

KV_VISIBLE int posix_memalign(void **block, size_t alignment, size_t size)
{
    *block = Counted(__libc_memalign(alignment, size));
    return *block ? 0 : ENOMEM;
}

KV_VISIBLE void free(void *block)
{
    nFreed.fetch_add(block != nullptr, std::memory_order_relaxed);
    __libc_free(block);
}

} // extern "C"

#endif
