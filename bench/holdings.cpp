// Counts before and after.
#include "bench/holdings.h"

#include <fstream>

#include <fmt/format.h>
#include <unistd.h>

#include "platform/host.h"
#include "tests/support/alloc_count.h"

namespace
{

constexpr int FIRST_TIMES = 3;             // what is made once and kept is there after them
constexpr long MOST_RESIDENT_GROWTH = 512; // KB; what the allocator keeps for itself comes and goes

long ResidentKilobytes()
{
    long total = 0, resident = 0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

struct Holdings {
    long blocks, resident, handles, drawing;
};

Holdings CurrentHoldings()
{
    const kvp::Held held = kvp::CurrentlyHeld();
    const kvp::GuiHeld gui = kvp::CurrentlyHeldGui();
    return {AllocationsSoFar().held, ResidentKilobytes(),
            static_cast<long>(held.nBlocks + held.nFiles + held.nLibraries),
            static_cast<long>(gui.nObjects + gui.nContexts)};
}

} // namespace

bool LeavesNothing(const char *what, int times, const std::function<void()> &act)
{
    for (int i = 0; i < FIRST_TIMES; ++i)
        act();
    const Holdings before = CurrentHoldings();
    for (int i = 0; i < times; ++i)
        act();
    const Holdings after = CurrentHoldings();
    const long blocks = after.blocks - before.blocks, handles = after.handles - before.handles,
               drawing = after.drawing - before.drawing,
               resident = after.resident - before.resident;
    fmt::print("{} {} leave {} allocations, {} handles, {} drawing objects, {} KB\n", times, what,
               blocks, handles, drawing, resident);
    return blocks <= 0 && handles <= 0 && drawing <= 0 && resident <= MOST_RESIDENT_GROWTH;
}
