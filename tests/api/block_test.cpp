// The caller's block, the items that need no file, and what is refused before a file is touched.
#include <memory>
#include <vector>

#include "tests/api/api_test.h"

TEST_F(ApiTest, LevelsAreThoseOfTheItems)
{
    EXPECT_EQ(KVDD_GetCmdLevel(nullptr, KVDD_ORIENTATION), 1);
    EXPECT_EQ(KVDD_GetCmdLevel(nullptr, KVDD_COPIES), 2);
    EXPECT_EQ(KVDD_GetCmdLevel(nullptr, KVDD_PRINTAREA), 3);
    EXPECT_EQ(KVDD_GetCmdLevel(nullptr, KVDD_APIFLAG), 3);
}

TEST_F(ApiTest, SomeItemsHaveNoRangeOrCannotBeSet)
{
    uint16_t words[8] = {};
    EXPECT_EQ(Range(KVDD_ORIENTATION, words), -1);
    EXPECT_EQ(Set(KVDD_COLOR, 1), -1);
    EXPECT_EQ(Set(KVDD_MEDIA, 10), -1);
}

TEST_F(ApiTest, ANullPointerIsRefusedOnceTheItemIsKnown)
{
    uint16_t words[8] = {};
    EXPECT_EQ(KVDD_GetRange(nullptr, KVDD_COPIES, words), -2);
    EXPECT_EQ(KVDD_GetRange(&caller, KVDD_PAPER, nullptr), -2);
    EXPECT_EQ(KVDD_GetData(nullptr, KVDD_PAPER, words), -2);
    EXPECT_EQ(KVDD_GetData(&caller, KVDD_PAPER, nullptr), -2);
    EXPECT_EQ(KVDD_SetData(nullptr, KVDD_COPIES, 2), -2);
    EXPECT_EQ(Set(KVDD_PAPER, 0), -2);
    EXPECT_EQ(Set(KVDD_PRINTMODE, 0), -2);
    EXPECT_EQ(KVDD_GetData(nullptr, 15, nullptr), -1);
    EXPECT_EQ(KVDD_GetOrgDevMode(nullptr, nullptr), 0);
}

static constexpr struct {
    const char *why;
    uint32_t item;
    int32_t result;
    intptr_t value;
} aWordRows[] = {
    {"no copies", KVDD_COPIES, -2, 0},
    {"one copy", KVDD_COPIES, 0, 1},
    {"the most copies", KVDD_COPIES, 0, 99},
    {"too many copies", KVDD_COPIES, -2, 100},
    {"copies below zero", KVDD_COPIES, -2, -1},
    {"no orientation", KVDD_ORIENTATION, -2, 0},
    {"portrait", KVDD_ORIENTATION, 0, 1},
    {"landscape", KVDD_ORIENTATION, 0, 2},
    {"a third orientation", KVDD_ORIENTATION, -2, 3},
    {"flag on", KVDD_APIFLAG, 0, 1},
    {"flag off", KVDD_APIFLAG, 0, 0},
    {"another flag", KVDD_APIFLAG, -2, 2},
    {"a flag below zero", KVDD_APIFLAG, -2, -1},
};

TEST_F(ApiTest, WordsAreTakenWithinTheirBoundsAndReadBack)
{
    for (const auto &row : aWordRows) {
        SCOPED_TRACE(row.why);
        const std::string before = BytesOf(record);
        EXPECT_EQ(Set(row.item, row.value), row.result);
        if (row.result == KVDD_OK)
            EXPECT_EQ(Word(row.item), row.value);
        else
            EXPECT_EQ(BytesOf(record), before);
    }
}

TEST_F(ApiTest, OneWordRangesAreTheHighestValues)
{
    const std::pair<uint32_t, int> rows[] = {
        {KVDD_COPIES, 99}, {KVDD_COLOR, 2}, {KVDD_PRINTMODE, 2}, {KVDD_APIFLAG, 1}};
    for (const auto &[item, highest] : rows) {
        SCOPED_TRACE(item);
        uint16_t words[2] = {0, 0xABAB};
        EXPECT_EQ(Range(item, words), 0);
        EXPECT_EQ(words[0], highest);
        EXPECT_EQ(words[1], 0xABAB);
    }
}

TEST_F(ApiTest, ARecordWithoutCopiesHasNoCopiesToRead)
{
    record.dm.dmCopies = 0;
    EXPECT_EQ(Word(KVDD_COPIES), 1000000 - 2);
}

TEST_F(ApiTest, TheFlagIsReadByItsLowWord)
{
    record.dwApiFlag = 0x12340001;
    EXPECT_EQ(Word(KVDD_APIFLAG), 1);
}

static constexpr struct {
    const char *why;
    int16_t distance;
} aDistances[] = {
    {"right behind the block", 160}, {"odd", 161},        {"before the block", -562},
    {"odd and before", -1001},       {"furthest", 32767}, {"furthest before", -32768},
};

TEST_F(ApiTest, TheRecordLiesWhereTheBlockSays)
{
    for (const auto &row : aDistances) {
        SCOPED_TRACE(row.why);
        std::vector<uint8_t> area(70000, 0xAB);
        uint8_t *block = area.data() + 33001;
        std::memcpy(block + 122, &row.distance, sizeof(row.distance));
        std::memcpy(block + row.distance, &record, sizeof(record));
        std::vector<uint8_t> expected = area;
        expected[static_cast<size_t>(33001 + row.distance + 86)] = 42; // dmCopies
        EXPECT_EQ(KVDD_SetData(block, KVDD_COPIES, 42), 0);
        EXPECT_EQ(area, expected);
        KVDDPAPER paper{};
        EXPECT_EQ(KVDD_GetData(block, KVDD_PAPER, &paper), 0);
        EXPECT_EQ(+paper.wWidth, 2100);
    }
}

TEST_F(ApiTest, DriverInformationIsANumberAndTheName)
{
    std::strcpy(caller.block.szDriver, "KORVA One");
    KVDDDRIVINFO info;
    std::memset(&info, 0xAB, sizeof(info));
    EXPECT_EQ(KVDD_GetDrivInfo(&caller, &info), 34);
    EXPECT_EQ(+info.wValue, 48);
    EXPECT_STREQ(info.szDriver, "KORVA One");
    EXPECT_EQ(KVDD_GetDrivInfo(&caller, nullptr), 34);
    EXPECT_EQ(KVDD_GetDrivInfo(nullptr, &info), 0);
    EXPECT_EQ(KVDD_GetDrivInfo(nullptr, nullptr), 0);
}

TEST_F(ApiTest, DriverNameIsReadToItsTerminatorAndNoFurtherThanItsField)
{
    const auto shortBlock = std::make_unique<uint8_t[]>(131); // ends with the terminator
    std::memcpy(shortBlock.get() + 128, "K1", 3);
    KVDDDRIVINFO info;
    EXPECT_EQ(KVDD_GetDrivInfo(shortBlock.get(), &info), 34);
    EXPECT_STREQ(info.szDriver, "K1");
    std::memset(caller.block.szDriver, 'x', sizeof(caller.block.szDriver));
    EXPECT_EQ(KVDD_GetDrivInfo(&caller, &info), 34);
    EXPECT_EQ(info.szDriver, std::string(31, 'x'));
}

TEST_F(ApiTest, DefaultsOfAModelWithoutFilesAreRefused)
{
    Uninstall();
    DriverDevMode fresh{};
    std::memcpy(fresh.wszModelName, u"KORVA One", 20);
    const std::string before = BytesOf(fresh);
    EXPECT_EQ(KVDD_GetOrgDevMode(nullptr, &fresh), 0);
    EXPECT_EQ(BytesOf(fresh), before);
    EXPECT_THAT(BoxesShown(), ::testing::ElementsAre("Dlg DLL Message: File not found : KV1.dat"));
}
