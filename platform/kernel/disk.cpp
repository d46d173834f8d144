// Finding names on the host's disk without regard to case. A name that stands there in the case
// asked for costs the action alone. For one that does not, the directory's listing is kept and
// found valid again by one look at the directory, so that a name missing from it costs that look.
#include "platform/kernel/disk.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <ctime>
#include <memory>
#include <mutex>
#include <optional>
#include <tuple>
#include <unordered_map>
#include <vector>

#include "platform/kernel/errors.h"
#include "platform/kernel/fd.h"
#include "platform/kernel/machine.h"

namespace kvp
{
namespace
{

struct Entry {
    std::string strFolded, strActual;
};

struct Listing {
    struct stat state;           // of the directory, taken before its names were read
    Fd directory;                // closed: the directory was not at rest, this serves once
    time_t nPathSeen;            // when the path was last known to lead to this directory
    std::vector<Entry> aEntries; // by folded name, then by actual name
};

struct ViewHash {
    using is_transparent = void;
    size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
};

// By host path, no '/' at its end.
using Listings = std::unordered_map<std::string, Listing, ViewHash, std::equal_to<>>;
constexpr size_t MOST_LISTINGS = 32;

std::mutex g_lock;
Listings g_listings;

bool SameTime(const timespec &a, const timespec &b)
{
    return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
}

bool SameState(const struct stat &a, const struct stat &b)
{
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino && SameTime(a.st_mtim, b.st_mtim) &&
           SameTime(a.st_ctim, b.st_ctim);
}

// Clocks of file systems are coarse: a change in the same tick as the listing would not show in
// the directory's times. The coarsest tick is two seconds.
bool WasAtRest(const struct stat &state)
{
    constexpr time_t COARSEST_TICK = 2;
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    return std::max(state.st_mtim.tv_sec, state.st_ctim.tv_sec) + COARSEST_TICK < now.tv_sec;
}

time_t Now()
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
    return now.tv_sec;
}

bool ReadListing(const char *hostDirectory, Listing &listing)
{
    listing.nPathSeen = Now();
    listing.directory = Fd(open(hostDirectory, O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    const int fd = listing.directory.Get();
    if (!listing.directory.IsOpen() || fstat(fd, &listing.state) != 0)
        return false;
    const bool bAtRest = WasAtRest(listing.state);
    const std::unique_ptr<DIR, int (*)(DIR *)> dir(fdopendir(fcntl(fd, F_DUPFD_CLOEXEC, 0)),
                                                   closedir);
    if (!dir)
        return false;
    while (const dirent *entry = readdir(dir.get())) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..")
            listing.aEntries.push_back({std::string(FoldedName(name).View()), std::string(name)});
    }
    std::sort(listing.aEntries.begin(), listing.aEntries.end(), [](const Entry &a, const Entry &b) {
        return std::tie(a.strFolded, a.strActual) < std::tie(b.strFolded, b.strActual);
    });
    if (!bAtRest)
        listing.directory.Close();
    return true;
}

// A look at the directory by its descriptor costs a third of one by its path and sees every
// change of its names. That the path leads to another directory by now, as one above it was
// moved, it does not see: a look by the path, once a second, does.
bool StillHolds(const std::string &hostDirectory, Listing &listing)
{
    struct stat state {
    };
    if (!listing.directory.IsOpen())
        return false;
    const time_t nNow = Now();
    const int nResult = nNow == listing.nPathSeen ? fstat(listing.directory.Get(), &state)
                                                  : stat(hostDirectory.c_str(), &state);
    listing.nPathSeen = nNow;
    return nResult == 0 && SameState(state, listing.state);
}

// A kept listing where it still holds, else null and it is dropped. Under the lock.
const Listing *IfItHolds(Listings::iterator it)
{
    if (StillHolds(it->first, it->second))
        return &it->second;
    g_listings.erase(it);
    return nullptr;
}

// Null when there is no such directory. Under the lock.
const Listing *ListingOf(std::string_view hostDirectory)
{
    if (const auto it = g_listings.find(hostDirectory); it != g_listings.end())
        if (const Listing *pKept = IfItHolds(it))
            return pKept;
    Listing listing{};
    std::string strDirectory(hostDirectory);
    if (!ReadListing(strDirectory.c_str(), listing))
        return nullptr;
    if (g_listings.size() >= MOST_LISTINGS)
        g_listings.clear();
    return &g_listings.insert_or_assign(std::move(strDirectory), std::move(listing)).first->second;
}

auto EntriesNamed(const Listing &listing, std::string_view leaf)
{
    const FoldedName folded(leaf);
    struct ByFolded {
        bool operator()(const Entry &a, std::string_view b) const { return a.strFolded < b; }
        bool operator()(std::string_view a, const Entry &b) const { return a < b.strFolded; }
    };
    return std::equal_range(listing.aEntries.begin(), listing.aEntries.end(), folded.View(),
                            ByFolded());
}

// The name as it stands in a directory: the exact one when it is there. Null when there is none.
const std::string *ActualName(const Listing &listing, std::string_view leaf)
{
    const auto [first, last] = EntriesNamed(listing, leaf);
    const auto exact =
        std::find_if(first, last, [leaf](const Entry &e) { return e.strActual == leaf; });
    if (exact != last)
        return &exact->strActual;
    return first != last ? &first->strActual : nullptr;
}

// A place's path on the host with exactly the letters asked for.
class HostName
{
  public:
    HostName(std::string_view rootPrefix, std::string_view place)
    {
        if (rootPrefix.size() + place.size() >= m_sz.size())
            return;
        m_cb = rootPrefix.copy(m_sz.data(), rootPrefix.size());
        m_cb += place.copy(m_sz.data() + m_cb, place.size());
        m_sz[m_cb] = '\0';
    }
    bool Fits() const { return m_cb != 0; }
    const char *Path() const { return m_sz.data(); }
    std::string_view Directory() const
    {
        const std::string_view path(m_sz.data(), m_cb);
        return path.substr(0, path.rfind('/'));
    }

  private:
    size_t m_cb = 0;
    std::array<char, PATH_MAX> m_sz;
};

// The directory's path as it stands on disk, found from the root down; empty when there is none.
// Under the lock.
std::string ActualDirectory(std::string_view rootPrefix, std::string_view place)
{
    std::string strPath(rootPrefix.substr(0, rootPrefix.size() - 1));
    while (!place.empty()) {
        const size_t cb = std::min(place.find('/'), place.size());
        const Listing *pListing = ListingOf(strPath);
        const std::string *pName = pListing ? ActualName(*pListing, place.substr(0, cb)) : nullptr;
        if (!pName)
            return {};
        strPath += "/" + *pName;
        place.remove_prefix(std::min(cb + 1, place.size()));
    }
    return strPath;
}

// The path of a place whose exact name has failed or is known to be missing.
DWORD FindInOtherCase(const std::string &rootPrefix, const Place &place,
                      std::string_view exactDirectory, std::string &hostPath)
{
    const std::lock_guard guard(g_lock);
    std::string strDirectory;
    const Listing *pListing = ListingOf(exactDirectory);
    if (!pListing) {
        strDirectory = ActualDirectory(rootPrefix, place.Directory());
        pListing = strDirectory.empty() ? nullptr : ListingOf(strDirectory);
        if (!pListing)
            return ERROR_PATH_NOT_FOUND;
        exactDirectory = strDirectory;
    }
    const std::string *pName = ActualName(*pListing, place.Leaf());
    if (!pName)
        return ERROR_FILE_NOT_FOUND;
    hostPath.append(exactDirectory).append("/").append(*pName);
    return ERROR_SUCCESS;
}

// What a kept listing tells of a name: that the directory holds none like it, or one in other
// case, whose path it gives. Nothing when it tells the exact name, or tells nothing that holds.
std::optional<DWORD> ToldByListing(std::string_view exactDirectory, std::string_view leaf,
                                   std::string &hostPath)
{
    const std::lock_guard guard(g_lock);
    const auto it = g_listings.find(exactDirectory);
    if (it == g_listings.end())
        return std::nullopt;
    const std::string *pName = ActualName(it->second, leaf);
    if (pName && *pName == leaf)
        return std::nullopt; // the action itself will tell whether that still holds
    if (!IfItHolds(it))
        return std::nullopt;
    if (!pName)
        return ERROR_FILE_NOT_FOUND;
    hostPath.append(exactDirectory).append("/").append(*pName);
    return ERROR_SUCCESS;
}

} // namespace

DWORD Reach(const Place &place, const HostAction &action)
{
    const std::string &strRootPrefix = CurrentSetup().strRootPrefix;
    if (strRootPrefix.empty())
        return ERROR_FILE_NOT_FOUND;
    const HostName exact(strRootPrefix, place.View());
    if (!exact.Fits())
        return ERROR_FILENAME_EXCED_RANGE;
    std::string strPath;
    auto told = ToldByListing(exact.Directory(), place.Leaf(), strPath);
    if (!told) {
        const int error = action(exact.Path());
        if (error == 0)
            return ERROR_SUCCESS;
        if (error != ENOENT && error != ENOTDIR)
            return ErrorFromErrno(error);
        told = FindInOtherCase(strRootPrefix, place, exact.Directory(), strPath);
    }
    if (*told != ERROR_SUCCESS)
        return *told;
    const int error = action(strPath.c_str());
    return error == 0 ? ERROR_SUCCESS : ErrorFromErrno(error);
}

int IsHostFile(const char *hostPath)
{
    struct stat state {
    };
    if (stat(hostPath, &state) != 0)
        return errno;
    return S_ISREG(state.st_mode) ? 0 : EISDIR;
}

std::string HostPathOf(const Place &place)
{
    std::string_view rest = place.View();
    std::string strPath = CurrentSetup().strRootPrefix;
    if (strPath.empty())
        return strPath;
    strPath.pop_back();
    const std::lock_guard guard(g_lock);
    while (!rest.empty()) {
        const size_t cb = std::min(rest.find('/'), rest.size());
        const Listing *pListing = ListingOf(strPath);
        const std::string *pName = pListing ? ActualName(*pListing, rest.substr(0, cb)) : nullptr;
        const std::string strName = pName ? *pName : std::string(rest.substr(0, cb));
        strPath += "/" + strName;
        rest.remove_prefix(std::min(cb + 1, rest.size()));
    }
    return strPath;
}

void ForgetListings()
{
    const std::lock_guard guard(g_lock);
    g_listings.clear();
}

} // namespace kvp
