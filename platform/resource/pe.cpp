// The resource directory of a PE file: three levels (type, number, language), each a table of
// (name, offset) pairs, and below them the data entries with the addresses of the resources.
#include "platform/resource/pe.h"

#include <algorithm>
#include <optional>

namespace kvp
{

namespace
{

constexpr uint64_t PE_OFFSET_AT = 0x3C;
constexpr uint32_t PE_SIGNATURE = 0x00004550; // "PE", 0, 0
constexpr uint64_t COFF_SIZE = 24;            // signature included
constexpr uint64_t SECTION_SIZE = 40;
constexpr uint16_t MAGIC_32 = 0x10B;
constexpr uint16_t MAGIC_64 = 0x20B;
constexpr uint32_t RESOURCE_DIRECTORY = 2; // among the data directories

constexpr uint64_t DIRECTORY_SIZE = 16;
constexpr uint64_t ENTRY_SIZE = 8;
constexpr uint32_t HIGH_BIT = 0x80000000; // of a name: a text; of an offset: a directory

constexpr LANGID ENGLISH = 0x0409;

LANGID Primary(LANGID wLang)
{
    return wLang & 0x3FF;
}

// From an address in the loaded image to the bytes that the file holds from there on.
Bytes AtAddress(Bytes file, Bytes sections, uint32_t address)
{
    for (uint64_t at = 0; at < sections.size(); at += SECTION_SIZE) {
        const auto first = ValueAt<uint32_t>(sections, at + 12);
        const auto rawSize = ValueAt<uint32_t>(sections, at + 16);
        const auto rawOffset = ValueAt<uint32_t>(sections, at + 20);
        if (address >= first && address - first < rawSize) {
            const Bytes raw = From(file, rawOffset);
            return From(raw.first(std::min<uint64_t>(raw.size(), rawSize)), address - first);
        }
    }
    return {};
}

// The address of the resource directory by the optional header; 0 when there is none.
uint32_t DirectoryAddress(Bytes optional)
{
    const bool wide = ValueAt<uint16_t>(optional, 0) == MAGIC_64;
    const uint64_t countAt = wide ? 108 : 92;
    if (ValueAt<uint32_t>(optional, countAt) <= RESOURCE_DIRECTORY)
        return 0;
    return ValueAt<uint32_t>(optional, countAt + 4 + RESOURCE_DIRECTORY * 8);
}

// Calls visit(name, offset) for each entry of the directory at `offset` until it returns true. A
// directory that runs past the end stops there.
template <class Visit>
void ForEachEntry(Bytes root, uint64_t offset, Visit visit)
{
    const uint64_t named = ValueAt<uint16_t>(root, offset + 12);
    const uint64_t count = named + ValueAt<uint16_t>(root, offset + 14);
    const Bytes entries = From(root, offset + DIRECTORY_SIZE);
    const uint64_t last = std::min<uint64_t>(count, entries.size() / ENTRY_SIZE);
    for (uint64_t i = 0; i < last; ++i) {
        const auto name = ValueAt<uint32_t>(entries, i * ENTRY_SIZE);
        if (visit(name, ValueAt<uint32_t>(entries, i * ENTRY_SIZE + 4)))
            return;
    }
}

// The offset of the directory that stands for `id` in the directory at `offset`.
std::optional<uint32_t> Subdirectory(Bytes root, uint32_t offset, uint16_t id)
{
    std::optional<uint32_t> found;
    ForEachEntry(root, offset, [&](uint32_t name, uint32_t target) {
        if (name != id || !(target & HIGH_BIT))
            return false;
        found = target & ~HIGH_BIT;
        return true;
    });
    return found;
}

int LanguageRank(LANGID wEntry, LANGID wWanted)
{
    if (wEntry == wWanted)
        return 0;
    if (wEntry == Primary(wWanted))
        return 1;
    if (Primary(wEntry) == Primary(wWanted))
        return 2;
    return wEntry == ENGLISH ? 3 : 4;
}

// The offset of the data entry whose language comes first for the user.
std::optional<uint32_t> BestLanguage(Bytes root, uint32_t offset, LANGID wLang)
{
    std::optional<uint32_t> best;
    int bestRank = 0;
    ForEachEntry(root, offset, [&](uint32_t name, uint32_t target) {
        if (name > 0xFFFF || (target & HIGH_BIT))
            return false;
        const int rank = LanguageRank(static_cast<LANGID>(name), wLang);
        if (!best || rank < bestRank) {
            best = target;
            bestRank = rank;
        }
        return rank == 0;
    });
    return best;
}

} // namespace

bool IsPe(Bytes file)
{
    return file.size() >= 2 && file[0] == 'M' && file[1] == 'Z';
}

bool OpenPe(Bytes file, PeFile &pe)
{
    const uint64_t header = ValueAt<uint32_t>(file, PE_OFFSET_AT);
    if (!IsPe(file) || ValueAt<uint32_t>(file, header) != PE_SIGNATURE)
        return false;
    const uint64_t optionalSize = ValueAt<uint16_t>(file, header + 20);
    const Bytes optional = Slice(file, header + COFF_SIZE, optionalSize);
    const auto magic = ValueAt<uint16_t>(optional, 0);
    if (magic != MAGIC_32 && magic != MAGIC_64)
        return false;
    const uint64_t sectionsSize = ValueAt<uint16_t>(file, header + 6) * SECTION_SIZE;
    pe.file = file;
    pe.sections = Slice(file, header + COFF_SIZE + optionalSize, sectionsSize);
    const uint32_t address = DirectoryAddress(optional);
    pe.directory = address ? AtAddress(file, pe.sections, address) : Bytes{};
    return true;
}

Bytes FindInPe(const PeFile &pe, uint16_t type, uint16_t id, LANGID wLang)
{
    const auto ofType = Subdirectory(pe.directory, 0, type);
    const auto ofId = ofType ? Subdirectory(pe.directory, *ofType, id) : std::nullopt;
    const auto entry = ofId ? BestLanguage(pe.directory, *ofId, wLang) : std::nullopt;
    if (!entry)
        return {};
    const auto address = ValueAt<uint32_t>(pe.directory, *entry);
    const auto size = ValueAt<uint32_t>(pe.directory, uint64_t{*entry} + 4);
    return Slice(AtAddress(pe.file, pe.sections, address), 0, size);
}

} // namespace kvp
