// Papers, their sizes and limits, paper sources, and lists.
#include "tests/api/api_test.h"

#include <cstring>

constexpr const char *NOT_FOUND = DAT_NOT_FOUND;

TEST_F(ApiTest, PaperIsReadInTenthsOfAMillimetre)
{
    model.AddUserPaper("Card", 850, 1100, 2, 1);
    Install();
    const auto paper = [this] {
        KVDDPAPER answer{};
        EXPECT_EQ(Get(KVDD_PAPER, &answer), 0);
        return WordsOf(answer);
    };
    EXPECT_EQ(paper(), (Words{2100, 2970, 2040, 2788, 30, 42, 9}));
    record.nPrintArea = 2;
    EXPECT_EQ(paper(), (Words{2100, 2970, 2040, 2690, 30, 140, 9}));
    record.nPrintArea = 1;
    record.dm.dmPaperSize = 768; // a saved size in inches
    EXPECT_EQ(paper(), (Words{2159, 2794, 2100, 2612, 30, 42, 768}));
    kvp::PutAbsentFile(DatPath()); // from the record alone
    record.dm.dmPaperSize = 9;
    EXPECT_EQ(paper(), (Words{2100, 2970, 2040, 2800, 30, 30, 9}));
    EXPECT_EQ(BoxesShown(), (Messages{NOT_FOUND, NOT_FOUND})) << "for the size, for the margins";
}

TEST_F(ApiTest, ListsAreCountedAndFillAnArrayWherever)
{
    model.AddUserPaper("Card", 1000, 1500, 1, 1);
    model.papers[0].wMaxWidth = 2100; // the current paper's own limits are not asked for
    Install();
    const struct {
        uint32_t item;
        size_t nAddressAt; // in the range block
        std::vector<uint16_t> entries, counted, listed;
    } aRows[] = {
        {KVDD_PAPER, 5, {9, 1, 256, 768}, {7, 7, 7, 7, 4}, {2413, 11176, 890, 1270, 4}},
        {KVDD_SOURCE, 2, {7, 4}, {2, 2}, {2, 2}},
        {KVDD_MEDIA, 2, {10, 20}, {2, 2}, {2, 2}},
    };
    const LonePage page;
    const std::string untouched = BytesOf(record);
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.item);
        const size_t cb = 2 * row.entries.size();
        std::vector<uint16_t> range(row.nAddressAt, 7), entries(row.entries.size());
        range.resize(row.nAddressAt + 2);
        EXPECT_EQ(Range(row.item, range.data()), 0);
        EXPECT_EQ(std::vector(range.begin(), range.end() - 2), row.counted);
        for (uint8_t *at : {page.Last(cb), page.First() + 1}) {
            const uint32_t address = LowAddress(at);
            std::memcpy(&range[row.nAddressAt], &address, sizeof address);
            EXPECT_EQ(Range(row.item, range.data()), 0);
            EXPECT_EQ(std::vector(range.begin(), range.end() - 2), row.listed);
            std::memcpy(entries.data(), at, cb);
            EXPECT_EQ(entries, row.entries);
        }
        EXPECT_EQ(page.First()[0], 0);
        EXPECT_EQ(BytesOf(record), untouched);
    }
}

TEST_F(ApiTest, OnlyAFlagOfOneChangesTheSmallestLength)
{
    const LonePage ids;
    for (const auto &[flag, smallest] : {std::pair{0u, 1270}, {1u, 254}, {2u, 1270}}) {
        record.dwApiFlag = flag;
        KVDDPAPERRANGE range{};
        range.dwIds = LowAddress(ids.First());
        EXPECT_EQ(Range(KVDD_PAPER, &range), 0);
        EXPECT_EQ(+range.wMinLength, smallest) << flag;
    }
}

TEST_F(ApiTest, WithoutPapersOrFilesThereIsNothingToChooseFrom)
{
    const LonePage ids;
    KVDDPAPERRANGE range{};
    range.dwIds = LowAddress(ids.First());
    for (PaperRecord &paper : model.papers)
        paper.wBinMask = 2;
    Install();
    EXPECT_EQ(Range(KVDD_PAPER, &range), -7);
    kvp::PutAbsentFile(DatPath());
    for (const int area : {0, 3, -1}) {
        record.nPrintArea = area;
        EXPECT_EQ(Set(KVDD_PRINTAREA, 1), -2) << "before any file is opened";
    }
    record.nPrintArea = 1;
    KVDDLISTRANGE list{};
    uint16_t word = 0;
    KVDDPRINTMODE mode = {2, 1, 10, 1}; // files come before the mode is looked at
    const std::string untouched = BytesOf(record);
    EXPECT_EQ(Range(KVDD_SOURCE, &list), -7);
    EXPECT_EQ(Range(KVDD_MEDIA, &list), -7);
    EXPECT_EQ(Range(KVDD_PRINTAREA, &word), -7);
    EXPECT_EQ(Word(KVDD_MEDIA), 1000000 - 7);
    EXPECT_EQ(Word(KVDD_PRINTAREA), 1000000 - 7);
    EXPECT_EQ(Get(KVDD_PRINTMODE, &mode), -7);
    EXPECT_EQ(SetMode(mode), -7);
    EXPECT_EQ(SetPaper({0, 0, 1, 0}), -7);
    EXPECT_EQ(Set(KVDD_PRINTAREA, 1), -7);
    EXPECT_EQ(BoxesShown(), Messages(9, NOT_FOUND));
    EXPECT_EQ(Set(KVDD_SOURCE, 5), -7);
    EXPECT_EQ(BoxesShown(), Messages(2, NOT_FOUND)) << "for the source, for its margins";
    EXPECT_EQ(BytesOf(record), untouched);
}

// ---- setting a paper -------------------------------------------------------------------------

TEST_F(ApiTest, APaperBringsSizeIndexAndMargins)
{
    KVDDSETPAPER words = {7, 7, 1, 7};
    DriverDevMode expected = record;
    expected.dm.dmPaperSize = 1;
    expected.nPaper = 1;
    expected.lPaperWidth = expected.dm.dmPaperWidth = 2159;
    expected.lPaperLength = expected.dm.dmPaperLength = 2794;
    expected.wPaperWidth360 = 3060;
    expected.wPaperLength360 = 3960;
    expected.wMarginRight = 138; // 3060 wide leaves 2976, and no more than 2880 can be printed
    EXPECT_EQ(SetWords(KVDD_PAPER, words), 0);
    EXPECT_EQ(BytesOf(record), BytesOf(expected));
    EXPECT_EQ(WordsOf(words), (Words{7, 7, 1, 7})) << "no limits but for the user-defined paper";
    record.nPrintArea = 2;
    EXPECT_EQ(SetPaper({0, 0, 1, 0}), 0);
    EXPECT_EQ(MarginsOf(record), (Words{138, 198, 138, 198}));
}

TEST_F(ApiTest, OnlyTheModelsPapersCanBeSet)
{
    model.AddUserPaper("Card", 1000, 1500, 1, 1);
    Install();
    const std::string untouched = BytesOf(record);
    for (const int id : {2, 768, 0, -1})
        EXPECT_EQ(SetPaper({1000, 1500, static_cast<int16_t>(id), 0}), -2) << id;
    EXPECT_EQ(BytesOf(record), untouched);
}

TEST_F(ApiTest, AFreeSizeIsTakenWithinTheLimitsWhichComeBackEitherWay)
{
    static const struct {
        const char *why;
        uint32_t flag;
        int16_t width, length;
        int32_t result;
        int16_t takenLength;
    } aRows[] = {
        {"smallest", 0, 890, 1270, 0, 1270},
        {"largest", 0, 2413, 11176, 0, 11176},
        {"too narrow", 0, 889, 1270, -2, 0},
        {"too wide", 0, 2414, 1270, -2, 0},
        {"too short", 0, 890, 1269, -2, 0},
        {"too long, flag", 1, 890, 11177, -2, 0},
        {"no length, flag", 1, 890, 0, 0, 254},
        {"any short length, flag", 1, 890, 1, 0, 1},
        {"a length below zero, flag", 1, 890, -1, -2, 0},
        {"no length, another flag", 2, 890, 0, -2, 0},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        Install();
        record.dwUnit = 2;
        record.dwApiFlag = row.flag;
        const std::string untouched = BytesOf(record);
        KVDDSETPAPER words = {row.width, row.length, 256, 0};
        EXPECT_EQ(SetWords(KVDD_PAPER, words), row.result);
        EXPECT_EQ(WordsOf(words), (Words{2413, 11176, 890, row.flag == 1 ? 0 : 1270}));
        if (row.result != KVDD_OK) {
            EXPECT_EQ(BytesOf(record), untouched);
            continue;
        }
        EXPECT_EQ((Words{record.dm.dmPaperWidth, record.dm.dmPaperLength}),
                  (Words{row.width, row.takenLength}));
        EXPECT_EQ((Words{int(record.dwUnit), record.nPaper}), (Words{1, 2}));
    }
}

TEST_F(ApiTest, AFreeSizeIsRoundedToThe360thInch)
{
    uint8_t bytes[9] = {}; // the words may lie at an odd address
    const int16_t words[4] = {1001, 1502, 256, 0};
    std::memcpy(bytes + 1, words, sizeof words);
    EXPECT_EQ(Set(KVDD_PAPER, reinterpret_cast<intptr_t>(bytes + 1)), 0);
    EXPECT_EQ((Words{record.lPaperWidth, record.lPaperLength}), (Words{1001, 1502}));
    EXPECT_EQ(+record.wPaperWidth360, 1419);  // 1418.7
    EXPECT_EQ(+record.wPaperLength360, 2129); // 2128.8
    EXPECT_EQ(MarginsOf(record), (Words{42, 60, 42, 198}));
}

// ---- sources ---------------------------------------------------------------------------------

TEST_F(ApiTest, ASourceBringsItsAreaMarginsAndMWRow)
{
    model.mw.push_back({360, 360, 360, 360, 4, MW_ANY, MW_ANY, {9, 9, 9, 9, 9, 9, 9, 9}});
    Install();
    record.dm.dmCollate = 1;
    DriverDevMode expected = record;
    expected.dm.dmDefaultSource = 4;
    expected.nBin = 1;
    expected.dm.dmCollate = 0;
    expected.nPrintArea = 2;
    expected.wMarginLeft = expected.wMarginRight = 54;
    expected.wMarginTop = 198;
    constexpr int32_t NINES[8] = {9, 9, 9, 9, 9, 9, 9, 9};
    std::memcpy(expected.adwMWData, NINES, sizeof NINES);
    EXPECT_EQ(Set(KVDD_SOURCE, 4), 0);
    EXPECT_EQ(Word(KVDD_SOURCE), 4);
    EXPECT_EQ(BytesOf(record), BytesOf(expected));
    EXPECT_EQ(Set(KVDD_SOURCE, 5), -2);
    EXPECT_EQ(BytesOf(record), BytesOf(expected)) << "an unknown source changes nothing";
}

TEST_F(ApiTest, ASourceThatCannotFeedThePaperTakesItsFirstOneAndKeepsTheSize)
{
    model.papers[0].wBinMask = 1;
    Install();
    EXPECT_EQ(Set(KVDD_SOURCE, 4), 0);
    EXPECT_EQ((Words{record.nPaper, record.dm.dmPaperSize}), (Words{1, 1}));
    EXPECT_EQ((Words{record.dm.dmPaperWidth, record.lPaperWidth}), (Words{2100, 2100}));
}

TEST_F(ApiTest, OfSavedPapersWithThePapersIdTheLastStays)
{
    for (const bool bFed : {true, true, false}) {
        model.AddUserPaper("Card", 1000, 1500, 1, bFed ? 2 : 1);
        model.userPapers.back().paper.wId = 9;
    }
    Install();
    EXPECT_EQ(Set(KVDD_SOURCE, 4), 0);
    EXPECT_EQ((Words{record.nPaper, record.dm.dmPaperSize}), (Words{3 + 1, 9}));
}
