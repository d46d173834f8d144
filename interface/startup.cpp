// What the loader calls: the system's version and the model table decide at process attach
// whether this module may be used.
#include "base/modeltable.h"
#include "base/module.h"
#include "interface/entry.h"
#include "resources/ids.h"

static constexpr DWORD VERSION_MAJOR = 3, VERSION_MINOR = 51;

static void TellUser(LPCSTR lpText)
{
    MessageBoxA(nullptr, lpText, "KORVA", MB_OK | MB_ICONINFORMATION);
}

static BOOL CheckVersion()
{
    OSVERSIONINFOW version{};
    version.dwOSVersionInfoSize = sizeof version;
    // A version that was not read is not called a wrong one as well.
    if (!GetVersionExW(&version)) {
        TellUser("Can't read OS Version Info");
        return FALSE;
    }
    if (version.dwMajorVersion == VERSION_MAJOR && version.dwMinorVersion == VERSION_MINOR)
        return TRUE;
    TellUser(JoinStrings(hModule, IDS_VERSION_FIRST, IDS_VERSION_LAST).c_str());
    return FALSE;
}

// Both checks run, so that a user whose machine fails both is told of both.
static BOOL Attach(HINSTANCE hInstance)
{
    hModule = hInstance;
    BOOL bUsable = CheckVersion();
    if (LoadDataFile() == 0) {
        bUsable = FALSE;
        InstallErrMsg();
    }
    return bUsable;
}

BOOL WINAPI DllInitialize(HINSTANCE hInstance, DWORD dwReason, LPVOID)
{
    if (dwReason == DLL_PROCESS_ATTACH)
        return Attach(hInstance);
    if (dwReason == DLL_PROCESS_DETACH)
        FreeDataFile();
    return TRUE;
}
