#include "tests/fuzz/windows.h"

#include <memory>
#include <optional>

// What the font library keeps for itself is none of ours.
extern "C" __attribute__((visibility("default"), used)) const char *
__lsan_default_suppressions() // NOLINT(bugprone-reserved-identifier)
{
    return "leak:libfontconfig\n";
}

namespace
{

constexpr uint32_t HEADER_AT = 0x40, OPTIONAL_SIZE = 120, SECTION_AT = 0x200, ADDRESS = 0x1000;
constexpr uint32_t DIRECTORY = 16, ENTRY = 8, BELOW = 0x80000000;
constexpr uint32_t ONE_ENTRY = DIRECTORY + ENTRY;
constexpr uint32_t PER_RESOURCE = 2 * ONE_ENTRY + 16; // number, language, where the bytes are

struct Image {
    Bytes bytes;

    template <class Value>
    void Put(size_t at, Value value)
    {
        if (bytes.size() < at + sizeof(value))
            bytes.resize(at + sizeof(value));
        std::memcpy(&bytes[at], &value, sizeof(value));
    }
    void PutEntry(size_t at, uint32_t name, uint32_t offset)
    {
        Put(at, name);
        Put(at + 4, offset);
    }
    // A directory with one numbered entry.
    void PutDirectory(size_t at, uint32_t name, uint32_t offset)
    {
        Put<uint16_t>(at + 14, 1);
        PutEntry(at + DIRECTORY, name, offset);
    }
};

void PutHeaders(Image &image, uint32_t size)
{
    image.Put<uint16_t>(0, 0x5A4D);
    image.Put(0x3C, HEADER_AT);
    image.Put<uint32_t>(HEADER_AT, 0x00004550);
    image.Put<uint16_t>(HEADER_AT + 6, 1); // sections
    image.Put<uint16_t>(HEADER_AT + 20, OPTIONAL_SIZE);
    const uint32_t optional = HEADER_AT + 24;
    image.Put<uint16_t>(optional, 0x10B);
    image.Put<uint32_t>(optional + 92, 3); // data directories; the third is that of resources
    image.PutEntry(optional + 96 + 2 * 8, ADDRESS, size);
    const uint32_t section = optional + OPTIONAL_SIZE;
    image.PutEntry(section + 8, size, ADDRESS);
    image.PutEntry(section + 16, size, SECTION_AT);
}

} // namespace

kvp::Machine StartScreen()
{
    kvp::ConfigureScreen({.strDisplay = "headless", .nScale = 1, .strScript = {}, .strShots = {}});
    return StartMachine();
}

Bytes LibraryWith(std::initializer_list<Resource> resources)
{
    Image image;
    const auto count = static_cast<uint32_t>(resources.size());
    uint32_t tables = DIRECTORY + count * ENTRY, data = tables + count * PER_RESOURCE;
    uint32_t entry = DIRECTORY;
    image.Put(SECTION_AT + 14, static_cast<uint16_t>(count));
    for (const Resource &resource : resources) {
        const uint32_t language = tables + ONE_ENTRY, place = language + ONE_ENTRY;
        const auto size = static_cast<uint32_t>(resource.bytes.size());
        image.PutEntry(SECTION_AT + entry, resource.wType, tables | BELOW);
        image.PutDirectory(SECTION_AT + tables, ONE, language | BELOW);
        image.PutDirectory(SECTION_AT + language, 0x0409, place);
        image.PutEntry(SECTION_AT + place, ADDRESS + data, size);
        image.bytes.resize(SECTION_AT + data + size);
        std::copy(resource.bytes.begin(), resource.bytes.end(),
                  image.bytes.begin() + SECTION_AT + data);
        entry += ENTRY;
        tables += PER_RESOURCE;
        data += size;
    }
    PutHeaders(image, data);
    return image.bytes;
}

Library::Library(std::initializer_list<Resource> resources)
{
    const Bytes bytes = LibraryWith(resources);
    kvp::PutMemoryFile(std::string(SYSTEM_DIR) + "FUZZ.DLL", bytes);
    module = LoadLibraryA("FUZZ.DLL");
    Must(module != nullptr);
}

Library::~Library()
{
    FreeLibrary(module);
}

Bytes PlainDialog()
{
    Image shape;
    size_t at = 0;
    const auto words = [&](std::initializer_list<uint16_t> values) {
        for (const uint16_t value : values) {
            shape.Put(at, value);
            at += sizeof(value);
        }
    };
    words({0, 0x80C8, 0, 0, 1, 0, 0, 100, 60, 0, 0, 'D', 0}); // style, items, place, caption
    at = (at + 3) & ~size_t{3};
    words({0, 0x5001, 0, 0, 10, 10, 40, 14, IDOK, 0xFFFF, 0x80, 'O', 'K', 0, 0});
    return shape.bytes;
}

INT_PTR CALLBACK EndOnCommand(HWND hDlg, UINT uMsg, WPARAM wParam, LPARAM)
{
    if (uMsg != WM_COMMAND || (LOWORD(wParam) != IDOK && LOWORD(wParam) != IDCANCEL))
        return FALSE;
    EndDialog(hDlg, LOWORD(wParam));
    return TRUE;
}

void Will(std::vector<std::string> actions)
{
    const auto next = std::make_shared<size_t>(0);
    kvp::SetInputSource([actions = std::move(actions), next]() -> std::optional<std::string> {
        kvp::DescribeTopWindow();
        return *next < actions.size() ? actions[(*next)++] : "key Escape";
    });
}

void MustBeTidy()
{
    kvp::SetInputSource(nullptr);
    const kvp::GuiHeld gui = kvp::CurrentlyHeldGui();
    Must(gui.nObjects == 0 && gui.nContexts == 0);
    Must(kvp::CurrentlyHeld().nLibraries == 0 && kvp::CurrentlyHeld().nFiles == 0);
}
