// Files that exist only in memory, and names that do not exist whatever the disk holds.
#include "platform/kernel/memfiles.h"

#include <atomic>
#include <mutex>
#include <stdexcept>
#include <unordered_map>

#include "platform/kernel/internal.h"

namespace kvp
{
namespace
{

std::mutex g_lock;
std::unordered_map<std::string, SharedBytes> g_files; // by folded place; null: absent
std::atomic<bool> g_bAny{false};                      // spares the lock where there are none

void Put(const Place &place, SharedBytes bytes)
{
    const std::lock_guard guard(g_lock);
    g_files[std::string(FoldedName(place.View()).View())] = std::move(bytes);
    g_bAny = true;
}

Place RequirePlace(std::string_view dosPath)
{
    Place place;
    if (!PlaceOf(dosPath, place))
        throw std::invalid_argument("no name on the machine's drives: " + std::string(dosPath));
    return place;
}

} // namespace

MemoryAnswer LookInMemory(const Place &place)
{
    if (!g_bAny.load(std::memory_order_acquire))
        return {};
    const std::string strKey(FoldedName(place.View()).View());
    const std::lock_guard guard(g_lock);
    const auto it = g_files.find(strKey);
    if (it == g_files.end())
        return {};
    return {.bKnown = true, .bytes = it->second};
}

void StoreInMemory(const Place &place, std::vector<uint8_t> bytes)
{
    Put(place, std::make_shared<const std::vector<uint8_t>>(std::move(bytes)));
}

void PutMemoryFile(std::string_view dosPath, std::span<const uint8_t> bytes)
{
    StoreInMemory(RequirePlace(dosPath), {bytes.begin(), bytes.end()});
}

void PutAbsentFile(std::string_view dosPath)
{
    Put(RequirePlace(dosPath), nullptr);
}

std::optional<std::vector<uint8_t>> MemoryFile(std::string_view dosPath)
{
    Place place;
    if (!PlaceOf(dosPath, place))
        return std::nullopt;
    const SharedBytes bytes = LookInMemory(place).bytes;
    return bytes ? std::optional(*bytes) : std::nullopt;
}

void ClearMemoryFiles()
{
    const std::lock_guard guard(g_lock);
    g_files.clear();
    g_bAny = false;
}

} // namespace kvp
