// The caller's block and memory, every item number, the items that need no file, and what is
// refused before a file is touched.
#include <map>
#include <memory>

#include "tests/api/api_test.h"

TEST_F(ApiTest, NineItemsAreKnownAmongAllNumbersAndNotAllOfThemEverywhere)
{
    const std::string untouched = BytesOf(record);
    std::map<uint32_t, int32_t> levels;
    uint16_t words[8] = {};
    for (uint32_t item = 0; item < 65536 + 128; ++item) { // beyond what 16 bits hold, too
        if (const int32_t level = KVDD_GetCmdLevel(nullptr, item); level != -1) {
            levels[item] = level;
            continue;
        }
        ASSERT_EQ(Range(item, words), -1) << item;
        ASSERT_EQ(Get(item, words), -1) << item;
        ASSERT_EQ(Set(item, 1), -1) << item;
    }
    EXPECT_EQ(
        levels,
        (std::map<uint32_t, int32_t>{
            {10, 2}, {20, 1}, {30, 2}, {40, 2}, {50, 2}, {60, 2}, {70, 2}, {80, 3}, {110, 3}}));
    EXPECT_EQ(Range(KVDD_ORIENTATION, words), -1);
    EXPECT_EQ(Set(KVDD_COLOR, 1), -1);
    EXPECT_EQ(Set(KVDD_MEDIA, 10), -1);
    EXPECT_EQ(BytesOf(record), untouched);
}

TEST_F(ApiTest, ANullPointerIsRefusedOnceTheItemIsKnown)
{
    uint16_t words[8] = {};
    EXPECT_EQ(KVDD_GetRange(nullptr, KVDD_COPIES, words), -2);
    EXPECT_EQ(Range(KVDD_PAPER, nullptr), -2);
    EXPECT_EQ(KVDD_GetData(nullptr, KVDD_PAPER, words), -2);
    EXPECT_EQ(Get(KVDD_PAPER, nullptr), -2);
    EXPECT_EQ(KVDD_SetData(nullptr, KVDD_COPIES, 2), -2);
    EXPECT_EQ(Set(KVDD_PAPER, 0), -2);
    EXPECT_EQ(Set(KVDD_PRINTMODE, 0), -2);
    EXPECT_EQ(KVDD_GetData(nullptr, 15, nullptr), -1);
    EXPECT_EQ(KVDD_GetOrgDevMode(nullptr, nullptr), 0);
}

TEST_F(ApiTest, WordsAreTakenWithinTheirBoundsAndReadBack)
{
    const struct {
        uint32_t item;
        Words taken, refused;
        int highest; // of the range
    } aRows[] = {{KVDD_COPIES, {1, 99}, {0, 100, -1}, 99},
                 {KVDD_ORIENTATION, {1, 2}, {0, 3}, 7}, // no range: the word stays
                 {KVDD_COLOR, {}, {}, 2},
                 {KVDD_PRINTMODE, {}, {}, 2},
                 {KVDD_APIFLAG, {1, 0}, {2, -1}, 1}};
    for (const auto &row : aRows) {
        uint16_t word = 7;
        Range(row.item, &word);
        EXPECT_EQ(word, row.highest) << row.item;
        for (const int value : row.taken) {
            EXPECT_EQ(Set(row.item, value), 0) << row.item;
            EXPECT_EQ(Word(row.item), value) << row.item;
        }
        const std::string untouched = BytesOf(record);
        for (const int value : row.refused) {
            EXPECT_EQ(Set(row.item, value), -2) << row.item << ", " << value;
            EXPECT_EQ(BytesOf(record), untouched);
        }
    }
    record.dwApiFlag = 0x12340001;
    EXPECT_EQ(Word(KVDD_APIFLAG), 1) << "its low word is read";
    record.dm.dmCopies = 0;
    EXPECT_EQ(Word(KVDD_COPIES), 1000000 - 2) << "no copies to read";
}

TEST_F(ApiTest, TheRecordLiesWhereTheBlockSays)
{
    for (const int at : {160, 161, -562, -1001, 32767, -32768}) {
        SCOPED_TRACE(at);
        const auto distance = static_cast<int16_t>(at);
        std::vector<uint8_t> area(70000, 0xAB);
        uint8_t *block = area.data() + 33001;
        std::memcpy(block + 122, &distance, sizeof distance);
        std::memcpy(block + distance, &record, sizeof record);
        std::vector<uint8_t> expected = area;
        expected[static_cast<size_t>(33001 + distance + 86)] = 42; // dmCopies
        EXPECT_EQ(KVDD_SetData(block, KVDD_COPIES, 42), 0);
        EXPECT_EQ(area, expected);
        KVDDPAPER paper{};
        EXPECT_EQ(KVDD_GetData(block, KVDD_PAPER, &paper), 0);
        EXPECT_EQ(+paper.wWidth, 2100);
    }
}

TEST_F(ApiTest, DriverInformationIsANumberAndTheName)
{
    const auto shortBlock = std::make_unique<uint8_t[]>(131); // ends with the terminator
    std::memcpy(shortBlock.get() + 128, "K1", 3);
    KVDDDRIVINFO info;
    std::memset(&info, 0xAB, sizeof info);
    EXPECT_EQ(KVDD_GetDrivInfo(shortBlock.get(), &info), 34);
    EXPECT_EQ(+info.wValue, 48);
    EXPECT_STREQ(info.szDriver, "K1");
    std::memset(caller.block.szDriver, 'x', sizeof caller.block.szDriver);
    EXPECT_EQ(KVDD_GetDrivInfo(&caller, &info), 34);
    EXPECT_EQ(info.szDriver, std::string(31, 'x'));
    EXPECT_EQ(KVDD_GetDrivInfo(&caller, nullptr), 34);
    EXPECT_EQ(KVDD_GetDrivInfo(nullptr, &info), 0);
}

// The block's page is entered at the distance, 122 bytes in, and left with the record's last byte:
// reading or writing anything beside them would end the test program.
TEST_F(ApiTest, NothingBesideTheCallersMemoryIsTouched)
{
    static const struct {
        uint32_t item;
        size_t cbRange, cbData;          // what each function may touch of what is handed to it
        std::vector<int16_t> words = {}; // what a value points to; empty: the number itself
    } aItems[] = {
        {KVDD_COPIES, 2, 2},
        {KVDD_ORIENTATION, 2, 2},
        {KVDD_PAPER, 14, 14, {1500, 2500, 256, 0}},
        {KVDD_SOURCE, 8, 2},
        {KVDD_COLOR, 2, 2},
        {KVDD_MEDIA, 8, 2},
        {KVDD_PRINTMODE, 2, 8, {1, 1, 10, 2}},
        {KVDD_PRINTAREA, 2, 2},
        {KVDD_APIFLAG, 2, 2},
    };
    const LonePage blockPage, answerPage;
    for (const bool recordFirst : {false, true}) {
        uint8_t *block = recordFirst ? blockPage.Last(124) : blockPage.First() - 122;
        uint8_t *at = recordFirst ? blockPage.First() : blockPage.Last(sizeof record);
        const auto distance = static_cast<int16_t>(at - block);
        std::memcpy(block + 122, &distance, sizeof distance);
        for (const auto &[item, cbRange, cbData, words] : aItems) {
            SCOPED_TRACE(item);
            std::memcpy(at, &record, sizeof record);
            uint8_t *answer = answerPage.Last(cbRange);
            std::memset(answer, 0, cbRange);
            KVDD_GetRange(block, item, answer);
            EXPECT_EQ(KVDD_GetData(block, item, answerPage.Last(cbData)), KVDD_OK);
            uint8_t *value = answerPage.Last(words.size() * 2);
            std::copy_n(reinterpret_cast<const uint8_t *>(words.data()), words.size() * 2, value);
            KVDD_SetData(block, item, words.empty() ? 1 : reinterpret_cast<intptr_t>(value));
        }
    }
}
