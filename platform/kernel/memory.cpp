// Blocks, and memory below 4 GiB. A handle is the block's address also where the block may move:
// none ever does, but locks are counted as if it could.
#include <sys/mman.h>

#include <cstddef>
#include <cstdlib>
#include <new>

#include "platform/kernel/counts.h"
#include "platform/kernel/errors.h"
#include "platform/kernel/internal.h"

namespace
{

// A process of the machine played has 2 GiB of its own: no block is larger.
constexpr size_t LARGEST_BLOCK = 0x7FFF0000;
constexpr uintptr_t FOUR_GIB = 0x100000000;

// What stands before a block's own bytes, as wide as memory is aligned.
struct alignas(std::max_align_t) Head {
    size_t cb;
    bool bMovable;
    BYTE bLocks;
};
constexpr BYTE MOST_LOCKS = 255;

Head *HeadOf(void *pBlock)
{
    return static_cast<Head *>(pBlock) - 1;
}

void *AllocBlock(UINT uFlags, size_t cb, bool bMovable = false)
{
    const bool bZero = (uFlags & GMEM_ZEROINIT) != 0;
    if (kvp::ShouldFail(kvp::Call::Alloc) || cb > LARGEST_BLOCK)
        return kvp::Fail<void *>(kvp::ERROR_NOT_ENOUGH_MEMORY, nullptr);
    if (uFlags & ~GMEM_ZEROINIT)
        return kvp::Fail<void *>(ERROR_INVALID_PARAMETER, nullptr);
    void *pMemory = bZero ? std::calloc(1, sizeof(Head) + cb) : std::malloc(sizeof(Head) + cb);
    if (!pMemory)
        return kvp::Fail<void *>(kvp::ERROR_NOT_ENOUGH_MEMORY, nullptr);
    void *pBlock = new (pMemory) Head{cb, bMovable, 0} + 1;
    if (!bZero)
        kvp::SpoilRest(pBlock, cb);
    kvp::g_nBlocks.fetch_add(1, std::memory_order_relaxed);
    return pBlock;
}

void *FreeBlock(void *pBlock)
{
    if (!pBlock)
        return nullptr;
    kvp::g_nBlocks.fetch_sub(1, std::memory_order_relaxed);
    std::free(HeadOf(pBlock));
    return nullptr;
}

} // namespace

HGLOBAL WINAPI GlobalAlloc(UINT uFlags, size_t dwBytes)
{
    return AllocBlock(uFlags & ~GMEM_MOVEABLE, dwBytes, (uFlags & GMEM_MOVEABLE) != 0);
}

LPVOID WINAPI GlobalLock(HGLOBAL hMem)
{
    if (!hMem)
        return kvp::Fail<LPVOID>(kvp::ERROR_INVALID_HANDLE, nullptr);
    Head *pHead = HeadOf(hMem);
    if (pHead->bMovable && pHead->bLocks < MOST_LOCKS)
        ++pHead->bLocks;
    return hMem;
}

BOOL WINAPI GlobalUnlock(HGLOBAL hMem)
{
    if (!hMem)
        return kvp::Fail<BOOL>(kvp::ERROR_INVALID_HANDLE, FALSE);
    Head *pHead = HeadOf(hMem);
    if (!pHead->bMovable)
        return TRUE;
    if (pHead->bLocks == 0)
        return kvp::Fail<BOOL>(kvp::ERROR_NOT_LOCKED, FALSE);
    if (--pHead->bLocks > 0)
        return TRUE;
    return kvp::Fail<BOOL>(ERROR_SUCCESS, FALSE);
}

HGLOBAL WINAPI GlobalHandle(LPCVOID pMem)
{
    return const_cast<void *>(pMem);
}

HGLOBAL WINAPI GlobalFree(HGLOBAL hMem)
{
    return FreeBlock(hMem);
}

size_t WINAPI GlobalSize(HGLOBAL hMem)
{
    return hMem ? HeadOf(hMem)->cb : 0;
}

HLOCAL WINAPI LocalAlloc(UINT uFlags, size_t uBytes)
{
    static_assert(GMEM_ZEROINIT == LMEM_ZEROINIT && GMEM_FIXED == LMEM_FIXED);
    return AllocBlock(uFlags, uBytes);
}

HLOCAL WINAPI LocalFree(HLOCAL hMem)
{
    return FreeBlock(hMem);
}

// An address given to mmap is a wish: it is granted where the range is free, so the low range is
// walked in steps until a wish is.
void *kvp::AllocLow(size_t bytes)
{
    constexpr uintptr_t FIRST = 0x10000000, STEP = 0x1000000;
    if (bytes == 0 || bytes > FOUR_GIB - FIRST)
        return nullptr;
    for (uintptr_t uWish = FIRST; uWish + bytes <= FOUR_GIB; uWish += STEP) {
        void *pBlock = mmap(reinterpret_cast<void *>(uWish), bytes, PROT_READ | PROT_WRITE,
                            MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (pBlock == MAP_FAILED)
            return nullptr;
        if (reinterpret_cast<uintptr_t>(pBlock) + bytes <= FOUR_GIB) {
            SpoilRest(pBlock, bytes);
            return pBlock;
        }
        munmap(pBlock, bytes);
    }
    return nullptr;
}

void kvp::FreeLow(void *block, size_t bytes)
{
    if (block)
        munmap(block, bytes);
}
