// A caller's block: the record, the item and the words of a value from one input, through all the
// functions for companion programs. The block lies at an odd address when the input says so.
#include <vector>

#include "tests/fuzz/fuzz.h"

namespace
{

constexpr uint32_t ITEMS[] = {10, 20, 30, 40, 50, 60, 70, 80, 110, 15};
constexpr size_t LIST_BYTES = 0x1000;

struct Asked {
    uint8_t item, place;
    uint8_t words[14]; // a value or a range
};

std::vector<uint8_t> ExactCopy(const uint8_t *bytes, size_t size)
{
    return std::vector<uint8_t>(bytes, bytes + size);
}

void AskAll(uint8_t *block, uint8_t *record, const Asked &asked)
{
    static void *list = kvp::AllocLow(LIST_BYTES);
    const uint32_t item = ITEMS[asked.item % std::size(ITEMS)];
    const std::vector<uint8_t> before = ExactCopy(record, sizeof(DriverDevMode));
    std::vector<uint8_t> answer(sizeof(asked.words));
    const auto address = static_cast<uint32_t>(reinterpret_cast<uintptr_t>(list)) + asked.place % 2;
    for (const size_t at : {4, 10}) { // where a range names its array
        answer.assign(answer.size(), 0);
        if (asked.place & 4)
            std::memcpy(answer.data() + at, &address, sizeof(address));
        KVDD_GetRange(block, item, answer.data());
        if (item != KVDD_PAPER)
            break;
    }
    KVDD_GetData(block, item, answer.data());
    Must(std::memcmp(record, before.data(), before.size()) == 0);

    std::vector<uint8_t> words = ExactCopy(asked.words, 8); // a structure, to the byte
    int16_t word;
    std::memcpy(&word, asked.words, sizeof(word));
    const bool pointer = item == KVDD_PAPER || item == KVDD_PRINTMODE;
    if (KVDD_SetData(block, item, pointer ? reinterpret_cast<intptr_t>(words.data()) : word) !=
        KVDD_OK)
        Must(std::memcmp(record, before.data(), before.size()) == 0);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const bool started = (StartMachine(), SmallModel().Install("KV1"), LoadDataFile() > 0);
    Must(started);
    Input input(data, size);
    const auto asked = TakeValue<Asked>(input);
    const bool after = asked.place & 2; // the record behind the block, or before it
    const size_t start = asked.place & 1;
    // The block ends with the distance and the record with the area, so that reading on is seen.
    const size_t cbBlock = after ? 128 : 124;
    std::vector<uint8_t> area(start + cbBlock + sizeof(DriverDevMode));
    uint8_t *block = area.data() + start + (after ? 0 : sizeof(DriverDevMode));
    uint8_t *record = area.data() + start + (after ? cbBlock : 0);
    const auto distance = static_cast<int16_t>(record - block);
    std::memcpy(block + 122, &distance, sizeof(distance));

    DriverDevMode defaults = EmptyRecord();
    Must(KVDD_GetOrgDevMode(nullptr, &defaults) == 1);
    std::memcpy(record, &defaults, sizeof(defaults));
    const Input bytes = Take(input, sizeof(DriverDevMode));
    if (!bytes.empty())
        std::memcpy(record, bytes.data(), bytes.size());
    AskAll(block, record, asked);

    DriverDevMode filled;
    std::memcpy(&filled, record, sizeof(filled));
    KVDD_GetOrgDevMode(nullptr, &filled);
    std::vector<uint8_t> info(34);
    const std::string name(reinterpret_cast<const char *>(asked.words), sizeof(asked.words));
    std::vector<uint8_t> named(128);
    named.insert(named.end(), name.c_str(), name.c_str() + std::strlen(name.c_str()) + 1);
    Must(KVDD_GetDrivInfo(named.data(), info.data()) == 34 && info.back() == 0);
    Must(kvp::CurrentlyHeld().nBlocks == 0 && kvp::CurrentlyHeld().nFiles == 0);
    return 0;
}
