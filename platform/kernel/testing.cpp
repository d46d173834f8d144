// Ordered failures, hostile memory and the count of what is held: what makes the layer a machine
// for tests. With nothing ordered each costs one relaxed load or add.
#include <array>
#include <atomic>
#include <cstring>

#include "platform/kernel/counts.h"
#include "platform/kernel/internal.h"

namespace kvp
{
namespace
{

struct Order {
    std::atomic<int> nUntilFailure{-1};
    std::atomic<int> nSeen{0};
};
std::array<Order, static_cast<size_t>(Call::Count)> g_aOrders;
std::atomic<bool> g_bHostile{false};
std::atomic<size_t> g_nLibraries{0};

Order &OrderFor(Call call)
{
    return g_aOrders.at(static_cast<size_t>(call));
}

} // namespace

std::atomic<size_t> g_nBlocks{0};
std::atomic<size_t> g_nFiles{0};

void FailCall(Call call, int n)
{
    OrderFor(call).nSeen = 0;
    OrderFor(call).nUntilFailure = n < 0 ? -1 : n;
}

int CallsSeen(Call call)
{
    return OrderFor(call).nSeen;
}

bool ShouldFail(Call call)
{
    Order &order = OrderFor(call);
    order.nSeen.fetch_add(1, std::memory_order_relaxed);
    if (order.nUntilFailure.load(std::memory_order_relaxed) < 0)
        return false;
    return order.nUntilFailure.fetch_sub(1) == 0;
}

void SetHostile(bool hostile)
{
    g_bHostile = hostile;
}

void SpoilRest(void *rest, size_t bytes)
{
    if (bytes && g_bHostile.load(std::memory_order_relaxed))
        std::memset(rest, 0xAB, bytes);
}

void CountLibrary(int by)
{
    g_nLibraries += static_cast<size_t>(by);
}

Held CurrentlyHeld()
{
    return {.nBlocks = g_nBlocks, .nFiles = g_nFiles, .nLibraries = g_nLibraries};
}

} // namespace kvp
