// The section headers of a 64-bit shared object.
#include "platform/resource/elf.h"

#include <cstring>

namespace kvp
{

namespace
{

constexpr uint64_t HEADER_SIZE = 64; // of a section's header; files may have longer ones
constexpr uint32_t SECTION_NOBITS = 8;

struct SectionTable {
    Bytes headers;
    uint64_t stride;
};

Bytes Header(const SectionTable &table, uint64_t index)
{
    return Slice(table.headers, index * table.stride, HEADER_SIZE);
}

// What the section holds in the file; a section without bytes there is empty.
Bytes Content(Bytes file, Bytes header)
{
    if (ValueAt<uint32_t>(header, 4) == SECTION_NOBITS)
        return {};
    return Slice(file, ValueAt<uint64_t>(header, 0x18), ValueAt<uint64_t>(header, 0x20));
}

// Whether the text at `offset` is this name, terminator included.
bool NameIs(Bytes names, uint32_t offset, std::string_view name)
{
    const Bytes text = Slice(names, offset, name.size() + 1);
    return !text.empty() && std::memcmp(text.data(), name.data(), name.size()) == 0 &&
           text.back() == 0;
}

} // namespace

bool IsElf(Bytes file)
{
    return file.size() >= 4 && std::memcmp(file.data(),
                                           "\x7F"
                                           "ELF",
                                           4) == 0;
}

Bytes ElfSection(Bytes file, std::string_view name)
{
    constexpr uint8_t CLASS_64 = 2, LITTLE_ENDIAN_DATA = 1;
    if (!IsElf(file) || ValueAt<uint8_t>(file, 4) != CLASS_64 ||
        ValueAt<uint8_t>(file, 5) != LITTLE_ENDIAN_DATA)
        return {};
    SectionTable table{From(file, ValueAt<uint64_t>(file, 0x28)), ValueAt<uint16_t>(file, 0x3A)};
    if (table.stride < HEADER_SIZE)
        return {};
    const uint64_t count = ValueAt<uint16_t>(file, 0x3C);
    const Bytes names = Content(file, Header(table, ValueAt<uint16_t>(file, 0x3E)));
    for (uint64_t i = 0; i < count; ++i) {
        const Bytes header = Header(table, i);
        if (!header.empty() && NameIs(names, ValueAt<uint32_t>(header, 0), name))
            return Content(file, header);
    }
    return {};
}

} // namespace kvp
