// The bytes of a UI resource library: loaded, and every kind of text read from it.
#include <array>

#include "platform/win32.h"
#include "tests/fuzz/fuzz.h"

template <class Char, size_t N>
static void Read(int (*load)(HINSTANCE, UINT, Char *, int), HMODULE module, UINT id)
{
    std::array<Char, N> text;
    const int length = load(module, id, text.data(), N);
    Must(length >= 0 && length < static_cast<int>(N));
    Must(length == 0 || text[static_cast<size_t>(length)] == 0);
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static kvp::Machine machine = StartMachine();
    // A shared object is a library too, but its code is not under test here.
    if (size >= 4 && std::memcmp(data, "\177ELF", 4) == 0)
        return 0;
    kvp::PutMemoryFile(std::string(SYSTEM_DIR) + "FUZZ.DLL", {data, size});
    HMODULE module = LoadLibraryA("FUZZ.DLL");
    for (const LANGID language : {0x0409, 0x0411, 0x0407}) {
        machine.wLang = language;
        kvp::Configure(machine);
        for (const UINT id : {0u, 1u, 9u, 256u, 300u, 1100u, 1107u, 1200u, 1215u, 1500u, 1503u,
                              1600u, 1610u, 6910u, 65535u}) {
            Read<char, 8>(LoadStringA, module, id);
            Read<char, 256>(LoadStringA, module, id);
            Read<char16_t, 2>(LoadStringW, module, id);
            Read<char16_t, 256>(LoadStringW, module, id);
        }
    }
    if (module)
        FreeLibrary(module);
    Must(kvp::CurrentlyHeld().nLibraries == 0);
    return 0;
}
