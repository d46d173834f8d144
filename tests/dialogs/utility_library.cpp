// A maintenance library that says in message boxes when it is loaded, called and freed.
#include <string>

#include "platform/win32.h"

#define ENTRY extern "C" __attribute__((visibility("default")))

static void Say(const std::string &text)
{
    MessageBoxA(nullptr, text.c_str(), "utility", MB_OK);
}

static void Serve(const char *lpszWhat, LPCSTR lpPrinter, LPCSTR lpModel, DWORD dw3, DWORD dw4)
{
    Say(std::string(lpszWhat) + " " + lpPrinter + ", " + lpModel + ", " + std::to_string(dw3) +
        ", " + std::to_string(dw4));
}

ENTRY BOOL WINAPI DllInitialize(HINSTANCE, DWORD dwReason, LPVOID)
{
    Say(dwReason ? "loaded" : "freed");
    return TRUE;
}

ENTRY void WINAPI CheckNozzles(LPCSTR lpPrinter, LPCSTR lpModel, DWORD dw3, DWORD dw4)
{
    Serve("nozzles", lpPrinter, lpModel, dw3, dw4);
}

ENTRY void WINAPI CleanHeads(LPCSTR lpPrinter, LPCSTR lpModel, DWORD dw3, DWORD dw4)
{
    Serve("heads", lpPrinter, lpModel, dw3, dw4);
}

ENTRY void WINAPI AlignHeads(LPCSTR lpPrinter, LPCSTR lpModel, DWORD dw3, DWORD dw4)
{
    Serve("alignment", lpPrinter, lpModel, dw3, dw4);
}
