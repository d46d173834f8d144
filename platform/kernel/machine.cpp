// Which machine the layer plays: its configuration, its standard directories, its version.
#include "platform/kernel/machine.h"

#include <atomic>
#include <cstdio>
#include <cstring>
#include <mutex>

#include "platform/kernel/disk.h"
#include "platform/kernel/errors.h"
#include "platform/kernel/internal.h"

namespace kvp
{
namespace
{

std::mutex g_lock;
Setup g_setup;
std::atomic<bool> g_bConfigured{false};

void AddSearched(std::vector<Place> &aSearched, std::string_view directory)
{
    Place place;
    if (PlaceOf(directory, place))
        aSearched.push_back(place);
}

Setup SetupFor(const Machine &machine)
{
    Setup setup{.machine = machine, .strRootPrefix = {}, .aSearched = {}};
    if (!machine.strRoot.empty())
        setup.strRootPrefix = machine.strRoot + "/";
    AddSearched(setup.aSearched, "C:\\"); // the current directory
    AddSearched(setup.aSearched, WINDOWS_DIRECTORY);
    AddSearched(setup.aSearched, SYSTEM_DIRECTORY);
    for (const std::string &strDirectory : machine.aSearchPath)
        AddSearched(setup.aSearched, strDirectory);
    return setup;
}

// A program that only links the driver never configures the layer; a wrong variable must not end
// it from inside a call, so it is told once and the defaults hold.
Machine MachineOfProcess()
{
    try {
        return FromEnvironment();
    } catch (const std::invalid_argument &error) {
        std::fprintf(stderr, "%s\n", error.what());
        return {};
    }
}

} // namespace

const Setup &CurrentSetup()
{
    if (!g_bConfigured.load(std::memory_order_acquire)) {
        const std::lock_guard guard(g_lock);
        if (!g_bConfigured) {
            g_setup = SetupFor(MachineOfProcess());
            g_bConfigured.store(true, std::memory_order_release);
        }
    }
    return g_setup;
}

void Configure(const Machine &machine)
{
    const std::lock_guard guard(g_lock);
    g_setup = SetupFor(machine);
    g_bConfigured.store(true, std::memory_order_release);
    ForgetListings();
    ForgetStore();
}

const Machine &CurrentMachine()
{
    return CurrentSetup().machine;
}

} // namespace kvp

UINT WINAPI GetSystemDirectoryA(LPSTR lpBuffer, UINT uSize)
{
    constexpr UINT cbPath = sizeof(kvp::SYSTEM_DIRECTORY);
    if (!lpBuffer || uSize < cbPath)
        return cbPath;
    std::memcpy(lpBuffer, kvp::SYSTEM_DIRECTORY, cbPath);
    kvp::SpoilRest(lpBuffer + cbPath, uSize - cbPath);
    return cbPath - 1;
}

BOOL WINAPI GetVersionExW(OSVERSIONINFOW *lpVersionInformation)
{
    constexpr DWORD PLATFORM_NT = 2, BUILD = 1057;
    if (!lpVersionInformation)
        return kvp::Fail(ERROR_INVALID_PARAMETER, FALSE);
    if (lpVersionInformation->dwOSVersionInfoSize != sizeof(OSVERSIONINFOW))
        return kvp::Fail(ERROR_INSUFFICIENT_BUFFER, FALSE);
    if (kvp::ShouldFail(kvp::Call::SystemVersion))
        return kvp::Fail(kvp::ERROR_NOT_ENOUGH_MEMORY, FALSE);
    const kvp::Machine &machine = kvp::CurrentMachine();
    *lpVersionInformation = {.dwOSVersionInfoSize = sizeof(OSVERSIONINFOW),
                             .dwMajorVersion = machine.dwMajor,
                             .dwMinorVersion = machine.dwMinor,
                             .dwBuildNumber = BUILD,
                             .dwPlatformId = PLATFORM_NT,
                             .szCSDVersion = {}};
    return TRUE;
}
