// The optional 3-D look: the machine's library of it, while a sheet is open. Without the library
// the dialogs keep the plain look, on grey.
#include <cstring>

#include "base/module.h"
#include "dialogs/helpers.h"

using Ctl3dModuleProc = BOOL(WINAPI *)(HINSTANCE);
using Ctl3dColorProc = BOOL(WINAPI *)();

static HMODULE hThreeD; // null: no 3-D look

// The library's entry points, null where it lacks one.
static struct {
    Ctl3dModuleProc Register, AutoSubclass, Unregister;
} Procs;
static Ctl3dColorProc WndProc; // its Ctl3dColorChange

bool Is3dOn()
{
    return hThreeD != nullptr;
}

template <class Proc>
static bool Find(LPCSTR lpName, Proc *lpProc)
{
    *lpProc = reinterpret_cast<Proc>(GetProcAddress(hThreeD, lpName));
    return *lpProc != nullptr;
}

// In this order, up to the first that is missing.
static bool FindProcs()
{
    Procs = {};
    WndProc = nullptr;
    return Find("Ctl3dRegister", &Procs.Register) &&
           Find("Ctl3dAutoSubclass", &Procs.AutoSubclass) &&
           Find("Ctl3dUnregister", &Procs.Unregister) && Find("Ctl3dColorChange", &WndProc);
}

static void Unload()
{
    FreeLibrary(hThreeD);
    hThreeD = nullptr;
}

void Enable3dCtl()
{
    hThreeD = LoadLibraryA("CTL3D32.DLL");
    // A library that lacks one stays loaded: the painting is left to it all the same.
    if (!hThreeD || !FindProcs())
        return;
    if (!is32Process()) {
        Unload();
        return;
    }
    Procs.Register(hModule);
    Procs.AutoSubclass(hModule);
}

void Change3dColor()
{
    if (hThreeD && WndProc)
        WndProc();
}

void Disable3dCtl()
{
    if (!hThreeD)
        return;
    if (Procs.Unregister)
        Procs.Unregister(hModule);
    Unload();
}

// ---- the running program --------------------------------------------------------------------

// A program's first bytes tell where its newer header lies, and that one's first bytes tell what
// kind of image it is.
static constexpr size_t OLD_HEADER_BYTES = 64, NEW_HEADER_AT = 60;
static constexpr DWORD SIGNATURE_32BIT = 0x00004550; // "PE", 0, 0

// The 32-bit image's signature, when it could be read whole.
static bool Has32BitSignature(HFILE hFile)
{
    BYTE abOld[OLD_HEADER_BYTES];
    LONG lNewHeader;
    DWORD dwSignature;
    if (_lread(hFile, abOld, sizeof abOld) != sizeof abOld)
        return false;
    std::memcpy(&lNewHeader, abOld + NEW_HEADER_AT, sizeof lNewHeader);
    return lNewHeader >= 0 && _llseek(hFile, lNewHeader, FILE_BEGIN) == lNewHeader &&
           _lread(hFile, &dwSignature, sizeof dwSignature) == sizeof dwSignature &&
           dwSignature == SIGNATURE_32BIT;
}

BOOL is32Process()
{
    char szPath[MAX_PATH] = "";
    GetModuleFileNameA(nullptr, szPath, sizeof szPath);
    OFSTRUCT of{};
    const HFILE hFile = OpenFile(szPath, &of, OF_READ);
    if (hFile == HFILE_ERROR)
        return TRUE;
    const bool b32Bit = Has32BitSignature(hFile);
    _lclose(hFile);
    return b32Bit;
}
