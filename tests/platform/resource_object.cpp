// A shared object for the tests. It starts on version 3 systems only, and says in a message box
// when it starts and stops, with a text of its own resources.
#include "platform/win32.h"
#include "tests/platform/resource_sample.h"

#define EXPORTED extern "C" __attribute__((visibility("default")))

EXPORTED BOOL WINAPI DllInitialize(HINSTANCE hInstance, DWORD dwReason, LPVOID)
{
    char szText[16] = "no text";
    LoadStringA(hInstance, TEXT_LAST, szText, sizeof szText);
    MessageBoxA(nullptr, szText, dwReason ? "start" : "stop", MB_OK);
    OSVERSIONINFOW version{};
    version.dwOSVersionInfoSize = sizeof version;
    return GetVersionExW(&version) && version.dwMajorVersion == 3;
}

EXPORTED int Answer()
{
    return 42;
}
