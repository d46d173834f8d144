// Every item number, and callers whose memory ends where the interface says that it may.
#include <set>

#include <sys/mman.h>
#include <unistd.h>

#include "tests/api/api_test.h"

namespace
{
// A page with nothing mapped before and behind it.
class LonePage
{
  public:
    LonePage()
    {
        start = static_cast<uint8_t *>(
            mmap(nullptr, 3 * cbPage, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_32BIT, -1, 0));
        mprotect(First(), cbPage, PROT_READ | PROT_WRITE);
    }
    ~LonePage() { munmap(start, 3 * cbPage); }
    LonePage(const LonePage &) = delete;
    LonePage &operator=(const LonePage &) = delete;

    uint8_t *First() const { return start + cbPage; }
    // The last so many bytes.
    uint8_t *Last(size_t cb) const { return start + 2 * cbPage - cb; }

  private:
    size_t cbPage = static_cast<size_t>(sysconf(_SC_PAGESIZE));
    uint8_t *start;
};

// The bytes that each function may touch of what is handed to it.
constexpr struct {
    uint32_t item;
    size_t cbRange, cbData;
    std::vector<int16_t> (*Value)(); // what a pointer is handed for; null: the number itself
} aItems[] = {
    {KVDD_COPIES, 2, 2, nullptr},
    {KVDD_ORIENTATION, 2, 2, nullptr},
    {KVDD_PAPER, 14, 14,
     [] {
         return std::vector<int16_t>{1500, 2500, 256, 0};
     }},
    {KVDD_SOURCE, 8, 2, nullptr},
    {KVDD_COLOR, 2, 2, nullptr},
    {KVDD_MEDIA, 8, 2, nullptr},
    {KVDD_PRINTMODE, 2, 8,
     [] {
         return std::vector<int16_t>{1, 1, 10, 2};
     }},
    {KVDD_PRINTAREA, 2, 2, nullptr},
    {KVDD_APIFLAG, 2, 2, nullptr},
};
} // namespace

TEST_F(ApiTest, OnlyTheNineItemsAreKnownAmongAllNumbers)
{
    const std::string before = BytesOf(record);
    std::set<uint32_t> known;
    uint16_t words[8] = {};
    for (uint32_t item = 0; item < 65536 + 128; ++item) { // beyond what 16 bits hold, too
        if (KVDD_GetCmdLevel(nullptr, item) != -1) {
            known.insert(item);
            continue;
        }
        ASSERT_EQ(Range(item, words), -1) << item;
        ASSERT_EQ(Get(item, words), -1) << item;
        ASSERT_EQ(Set(item, 1), -1) << item;
    }
    EXPECT_EQ(known, (std::set<uint32_t>{10, 20, 30, 40, 50, 60, 70, 80, 110}));
    EXPECT_EQ(BytesOf(record), before);
}

// The block's page is entered at the distance, 122 bytes in, and left with the record's last byte:
// reading or writing anything beside them would end the test program.
TEST_F(ApiTest, NothingBesideTheCallersMemoryIsTouched)
{
    const LonePage blockPage, answerPage;
    for (const bool recordFirst : {false, true}) {
        uint8_t *block = recordFirst ? blockPage.Last(124) : blockPage.First() - 122;
        uint8_t *at = recordFirst ? blockPage.First() : blockPage.Last(sizeof record);
        const auto distance = static_cast<int16_t>(at - block);
        std::memcpy(block + 122, &distance, sizeof distance);
        for (const auto &item : aItems) {
            SCOPED_TRACE(item.item);
            std::memcpy(at, &record, sizeof record);
            uint8_t *answer = answerPage.Last(item.cbRange);
            std::memset(answer, 0, item.cbRange);
            KVDD_GetRange(block, item.item, answer);
            EXPECT_EQ(KVDD_GetData(block, item.item, answerPage.Last(item.cbData)), KVDD_OK);
            std::vector<int16_t> words = item.Value ? item.Value() : std::vector<int16_t>{};
            uint8_t *value = answerPage.Last(words.size() * 2);
            if (!words.empty())
                std::memcpy(value, words.data(), words.size() * 2);
            KVDD_SetData(block, item.item,
                         item.Value ? reinterpret_cast<intptr_t>(value) : intptr_t{1});
        }
    }
}

TEST_F(ApiTest, AnArrayGetsAsManyEntriesAsWereCountedAndNoMore)
{
    const LonePage listPage;
    for (const auto &[item, nArrayAt] :
         {std::pair{KVDD_PAPER, 10}, {KVDD_SOURCE, 4}, {KVDD_MEDIA, 4}}) {
        SCOPED_TRACE(item);
        uint8_t range[14] = {};
        ASSERT_EQ(Range(static_cast<uint32_t>(item), range), KVDD_OK);
        uint16_t count;
        std::memcpy(&count, range + (item == KVDD_PAPER ? 8 : 0), sizeof count);
        ASSERT_GT(count, 0);
        uint8_t *list = listPage.Last(count * 2u);
        const auto address = static_cast<uint32_t>(reinterpret_cast<uintptr_t>(list));
        std::memcpy(range + nArrayAt, &address, sizeof address);
        std::memset(list, 0xAB, count * 2u);
        EXPECT_EQ(Range(static_cast<uint32_t>(item), range), KVDD_OK);
        EXPECT_FALSE(list[count * 2u - 1] == 0xAB && list[count * 2u - 2] == 0xAB)
            << "the last entry was not written";
    }
}
