// A 3-D controls library that draws nothing and says in message boxes what it is called for, with
// the module as a number. LACKS_ and a name leave one entry point out.
#include <string>

#include "platform/win32.h"

#define ENTRY extern "C" __attribute__((visibility("default")))

static BOOL Say(const std::string &text)
{
    MessageBoxA(nullptr, text.c_str(), "3-D", MB_OK);
    return TRUE;
}

static BOOL SayOf(const char *lpszCall, HINSTANCE hInstance)
{
    return Say(lpszCall + (" " + std::to_string(reinterpret_cast<uintptr_t>(hInstance))));
}

ENTRY BOOL WINAPI DllInitialize(HINSTANCE, DWORD dwReason, LPVOID)
{
    return Say(dwReason ? "loaded" : "freed");
}

ENTRY BOOL WINAPI Ctl3dRegister(HINSTANCE hInstance)
{
    return SayOf("register", hInstance);
}

#ifndef LACKS_AUTOSUBCLASS
ENTRY BOOL WINAPI Ctl3dAutoSubclass(HINSTANCE hInstance)
{
    return SayOf("subclass", hInstance);
}
#endif

ENTRY BOOL WINAPI Ctl3dUnregister(HINSTANCE hInstance)
{
    return SayOf("unregister", hInstance);
}

#ifndef LACKS_COLORCHANGE
ENTRY BOOL WINAPI Ctl3dColorChange()
{
    return Say("colors");
}
#endif
