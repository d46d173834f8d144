#include "tests/resources/pages.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <map>

#include "platform/gdi/gdi.h"
#include "platform/host.h"
#include "platform/resource/pe.h"
#include "platform/resource/resource.h"

static LANGID asked;
static const char *from;

static const std::vector<uint8_t> &FileOf(const char *library)
{
    static std::map<std::string, std::vector<uint8_t>> files;
    std::vector<uint8_t> &file = files[library];
    if (file.empty()) {
        std::ifstream stream(library, std::ios::binary);
        file = {std::istreambuf_iterator<char>(stream), {}};
    }
    return file;
}

static kvp::Bytes InFile(const char *library, uint16_t type, uint16_t id, LANGID language)
{
    kvp::PeFile pe;
    return kvp::OpenPe(FileOf(library), pe) ? kvp::FindInPe(pe, type, id, language) : kvp::Bytes{};
}

namespace kvp
{
// What the layer's sources compiled into this test ask of the rest of the layer: resources come
// from the file, in the language that the test looks at; nothing is drawn.
std::span<const uint8_t> FindResource(HMODULE, ResourceType type, uint16_t id)
{
    return InFile(from, type, id, asked);
}
Dc *DcOf(HDC)
{
    return nullptr;
}
} // namespace kvp

const void *PlaceOf(int page, LANGID language)
{
    const auto id = static_cast<uint16_t>(page);
    return InFile(KV_DRIVER_RESOURCES, kvp::RESOURCE_DIALOG, id, language).data();
}

Page PageIn(int page, LANGID language, const char *library)
{
    asked = language;
    from = library;
    const auto found = kvp::LoadTemplate(nullptr, MAKEINTRESOURCEA(page));
    EXPECT_TRUE(found) << "no template";
    return found.value_or(Page{});
}

const Item &ItemOf(const Page &page, int id)
{
    static const Item none{};
    const auto found = std::find_if(page.items.begin(), page.items.end(),
                                    [&](const Item &item) { return item.id == id; });
    EXPECT_NE(found, page.items.end()) << "no control " << id;
    return found == page.items.end() ? none : *found;
}

static bool IsButton(const Item &item, DWORD kind)
{
    return item.className == u"button" && (item.style & 0xF) == kind;
}

bool IsRadio(const Item &item)
{
    return IsButton(item, 9);
}

bool IsGroupBox(const Item &item)
{
    return IsButton(item, 7);
}

char16_t LetterOf(const Item &item)
{
    const size_t mark = item.text.find(u'&');
    if (mark == std::u16string::npos || mark + 1 == item.text.size())
        return 0;
    const char16_t letter = item.text[mark + 1];
    return letter >= u'a' && letter <= u'z' ? static_cast<char16_t>(letter - 32) : letter;
}

std::string Name(const Item &item)
{
    return std::to_string(item.id) + " \"" + kvp::ToUtf8(item.text) + "\"";
}
