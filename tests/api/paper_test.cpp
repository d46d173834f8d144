// Papers, their sizes and limits, and paper sources.
#include <array>
#include <tuple>

#include "tests/api/api_test.h"

namespace
{

// Words below 4 GiB, at an odd address if asked for.
class LowWords
{
  public:
    explicit LowWords(size_t cbOffset = 0) : offset(cbOffset), block(kvp::AllocLow(BYTES))
    {
        if (block)
            std::memset(block, 0xAB, BYTES);
    }
    ~LowWords() { kvp::FreeLow(block, BYTES); }
    LowWords(const LowWords &) = delete;
    LowWords &operator=(const LowWords &) = delete;

    uint32_t Address() const
    {
        return static_cast<uint32_t>(reinterpret_cast<uintptr_t>(block) + offset);
    }
    std::vector<uint16_t> First(size_t n) const
    {
        std::vector<uint16_t> words(n);
        std::memcpy(words.data(), static_cast<const uint8_t *>(block) + offset, 2 * n);
        return words;
    }

  private:
    static constexpr size_t BYTES = 4096;
    size_t offset;
    void *block;
};

std::array<int, 4> Margins(const DriverDevMode &record)
{
    return {record.wMarginLeft, record.wMarginTop, record.wMarginRight, record.wMarginBottom};
}

std::array<int, 7> Values(const KVDDPAPER &paper)
{
    return {paper.wWidth, paper.wLength, paper.wPrintWidth, paper.wPrintLength,
            paper.wLeft,  paper.wTop,    paper.wPaper};
}

std::array<int, 4> Values(const KVDDSETPAPER &words)
{
    return {words.wWidth, words.wLength, words.wPaper, words.wMinLength};
}

using Limits = std::array<int, 4>;
constexpr Limits USER_LIMITS = {2413, 11176, 890, 1270};

} // namespace

TEST_F(ApiTest, PaperIsReadInTenthsOfAMillimetre)
{
    KVDDPAPER paper{};
    EXPECT_EQ(Get(KVDD_PAPER, &paper), 0);
    EXPECT_EQ(Values(paper), (std::array{2100, 2970, 2040, 2788, 30, 42, 9}));
    record.nPrintArea = 2;
    EXPECT_EQ(Get(KVDD_PAPER, &paper), 0);
    EXPECT_EQ(Values(paper), (std::array{2100, 2970, 2040, 2690, 30, 140, 9}));
}

TEST_F(ApiTest, SavedPaperInInchesIsReadByItsOwnSize)
{
    model.AddUserPaper("Card", 850, 1100, 2, 1);
    Install();
    record.dm.dmPaperSize = 768;
    KVDDPAPER paper{};
    EXPECT_EQ(Get(KVDD_PAPER, &paper), 0);
    EXPECT_EQ(+paper.wWidth, 2159);
    EXPECT_EQ(+paper.wLength, 2794);
}

TEST_F(ApiTest, WithoutFilesPaperIsReadFromTheRecordAlone)
{
    Uninstall();
    KVDDPAPER paper{};
    EXPECT_EQ(Get(KVDD_PAPER, &paper), 0);
    EXPECT_EQ(Values(paper), (std::array{2100, 2970, 2040, 2800, 30, 30, 9}));
    EXPECT_THAT(BoxesShown(), ::testing::Each("Dlg DLL Message: File not found : KV1.dat"));
}

TEST_F(ApiTest, PaperRangeWithoutAnArrayIsACountOnly)
{
    KVDDPAPERRANGE range;
    std::memset(&range, 0xAB, sizeof(range));
    range.dwIds = 0;
    EXPECT_EQ(Range(KVDD_PAPER, &range), 0);
    EXPECT_EQ(+range.wPapers, 3);
    EXPECT_EQ(+range.wMaxWidth, 0xABAB);
    EXPECT_EQ(+range.wMinLength, 0xABAB);
}

TEST_F(ApiTest, PaperRangeFillsIdsAndTheLimitsOfFreelySizedPaper)
{
    model.papers[0].wMaxWidth = 2100; // the current paper's own limits are not asked for
    model.AddUserPaper("Card", 1000, 1500, 1, 1);
    Install();
    const std::string before = BytesOf(record);
    for (const size_t offset : {0, 1}) {
        SCOPED_TRACE(offset);
        const LowWords ids(offset);
        KVDDPAPERRANGE range{};
        range.dwIds = ids.Address();
        EXPECT_EQ(Range(KVDD_PAPER, &range), 0);
        EXPECT_THAT(ids.First(5), ::testing::ElementsAre(9, 1, 256, 768, 0xABAB));
        EXPECT_EQ((Limits{range.wMaxWidth, range.wMaxLength, range.wMinWidth, range.wMinLength}),
                  USER_LIMITS);
        EXPECT_EQ(BytesOf(record), before);
    }
}

TEST_F(ApiTest, OnlyAFlagOfOneChangesTheSmallestLength)
{
    const LowWords ids;
    for (const auto &[flag, smallest] : {std::pair{0u, 1270}, {1u, 254}, {2u, 1270}}) {
        SCOPED_TRACE(flag);
        record.dwApiFlag = flag;
        KVDDPAPERRANGE range{};
        range.dwIds = ids.Address();
        EXPECT_EQ(Range(KVDD_PAPER, &range), 0);
        EXPECT_EQ(+range.wMinLength, smallest);
    }
}

TEST_F(ApiTest, NoPaperForTheSourceOrNoFilesIsNoRange)
{
    const LowWords ids;
    KVDDPAPERRANGE range{};
    for (PaperRecord &paper : model.papers)
        paper.wBinMask = 2;
    Install();
    EXPECT_EQ(Range(KVDD_PAPER, &range), -7);
    Uninstall();
    range.dwIds = ids.Address();
    EXPECT_EQ(Range(KVDD_PAPER, &range), -7);
    KVDDLISTRANGE list{};
    EXPECT_EQ(Range(KVDD_SOURCE, &list), -7);
    EXPECT_EQ(Range(KVDD_MEDIA, &list), -7);
}

TEST_F(ApiTest, SourcesAndMediaAreListed)
{
    const std::pair<uint32_t, std::vector<uint16_t>> rows[] = {{KVDD_SOURCE, {7, 4, 0xABAB}},
                                                               {KVDD_MEDIA, {10, 20, 0xABAB}}};
    for (const auto &[item, expected] : rows) {
        for (const size_t offset : {0, 1}) {
            SCOPED_TRACE(testing::Message() << item << " at " << offset);
            const LowWords values(offset);
            KVDDLISTRANGE range{};
            EXPECT_EQ(Range(item, &range), 0);
            EXPECT_EQ(+range.wCount, 2);
            EXPECT_EQ(+range.wTwo, 2);
            range.dwValues = values.Address();
            EXPECT_EQ(Range(item, &range), 0);
            EXPECT_EQ(values.First(3), expected);
        }
    }
}

TEST_F(ApiTest, APaperBringsSizeIndexAndMargins)
{
    KVDDSETPAPER words = {7, 7, 1, 7};
    EXPECT_EQ(SetWords(KVDD_PAPER, words), 0);
    EXPECT_EQ(+record.dm.dmPaperSize, 1);
    EXPECT_EQ(+record.nPaper, 1);
    EXPECT_EQ((std::array{+record.dm.dmPaperWidth, +record.dm.dmPaperLength}),
              (std::array{2159, 2794}));
    EXPECT_EQ((std::array{+record.lPaperWidth, +record.lPaperLength}), (std::array{2159, 2794}));
    EXPECT_EQ((std::array{+record.wPaperWidth360, +record.wPaperLength360}),
              (std::array{3060, 3960}));
    // 3060 wide leaves 2976, and no more than 2880 can be printed.
    EXPECT_EQ(Margins(record), (std::array{42, 60, 138, 198}));
    EXPECT_EQ(Values(words), (std::array{7, 7, 1, 7})); // no limits but for paper 256
}

TEST_F(ApiTest, ACentredAreaCentresTheNewPapersMargins)
{
    record.nPrintArea = 2;
    KVDDSETPAPER words = {0, 0, 1, 0};
    EXPECT_EQ(SetWords(KVDD_PAPER, words), 0);
    EXPECT_EQ(Margins(record), (std::array{138, 198, 138, 198}));
}

TEST_F(ApiTest, OnlyTheModelsPapersCanBeSet)
{
    model.AddUserPaper("Card", 1000, 1500, 1, 1);
    Install();
    const std::string before = BytesOf(record);
    for (const int16_t id : {2, 768, 0, -1}) {
        SCOPED_TRACE(id);
        KVDDSETPAPER words = {1000, 1500, id, 0};
        EXPECT_EQ(SetWords(KVDD_PAPER, words), -2);
        EXPECT_EQ(BytesOf(record), before);
    }
}

static constexpr struct {
    const char *why;
    uint32_t flag;
    int16_t width, length;
    int32_t result;
    int takenLength;
} aUserSizes[] = {
    {"within", 0, 1001, 1502, 0, 1502},
    {"smallest", 0, 890, 1270, 0, 1270},
    {"largest", 0, 2413, 11176, 0, 11176},
    {"too narrow", 0, 889, 1270, -2, 0},
    {"too wide", 0, 2414, 1270, -2, 0},
    {"too short", 0, 890, 1269, -2, 0},
    {"too long", 0, 890, 11177, -2, 0},
    {"no length", 0, 890, 0, -2, 0},
    {"no length, flag", 1, 890, 0, 0, 254},
    {"any short length, flag", 1, 890, 1, 0, 1},
    {"a length below zero, flag", 1, 890, -1, -2, 0},
    {"too long, flag", 1, 890, 11177, -2, 0},
    {"no length, no flag", 2, 890, 0, -2, 0},
};

TEST_F(ApiTest, AFreeSizeIsTakenWithinTheLimitsWhichComeBackEitherWay)
{
    for (const auto &row : aUserSizes) {
        SCOPED_TRACE(row.why);
        Install();
        record.dwUnit = 2;
        record.dwApiFlag = row.flag;
        const std::string before = BytesOf(record);
        KVDDSETPAPER words = {row.width, row.length, 256, 0};
        EXPECT_EQ(SetWords(KVDD_PAPER, words), row.result);
        const int shortest = row.flag == 1 ? 0 : 1270;
        EXPECT_EQ(Values(words), (Limits{2413, 11176, 890, shortest}));
        if (row.result != KVDD_OK) {
            EXPECT_EQ(BytesOf(record), before);
            continue;
        }
        EXPECT_EQ((std::array{+record.dm.dmPaperWidth, +record.dm.dmPaperLength}),
                  (std::array{int{row.width}, row.takenLength}));
        EXPECT_EQ(+record.lPaperLength, row.takenLength);
        EXPECT_EQ(+record.dwUnit, 1u);
        EXPECT_EQ(+record.nPaper, 2);
    }
}

TEST_F(ApiTest, AFreeSizeIsRoundedToThe360thInch)
{
    KVDDSETPAPER words = {1001, 1502, 256, 0};
    EXPECT_EQ(SetWords(KVDD_PAPER, words), 0);
    EXPECT_EQ(+record.wPaperWidth360, 1419);  // 1418.7
    EXPECT_EQ(+record.wPaperLength360, 2129); // 2128.8
    EXPECT_EQ(Margins(record), (std::array{42, 60, 42, 198}));
}

TEST_F(ApiTest, PaperWordsMayLieAtAnOddAddress)
{
    uint8_t bytes[9] = {};
    const int16_t words[4] = {1001, 1502, 256, 0};
    std::memcpy(bytes + 1, words, sizeof(words));
    EXPECT_EQ(Set(KVDD_PAPER, reinterpret_cast<intptr_t>(bytes + 1)), 0);
    EXPECT_EQ(+record.dm.dmPaperWidth, 1001);
}

// ---- sources ---------------------------------------------------------------------------------

TEST_F(ApiTest, ASourceBringsItsAreaMarginsAndMWRow)
{
    model.mw.push_back({360, 360, 360, 360, 4, MW_ANY, MW_ANY, {9, 9, 9, 9, 9, 9, 9, 9}});
    Install();
    record.dm.dmCollate = 1;
    EXPECT_EQ(Set(KVDD_SOURCE, 4), 0);
    EXPECT_EQ(Word(KVDD_SOURCE), 4);
    EXPECT_EQ(+record.nBin, 1);
    EXPECT_EQ(+record.dm.dmCollate, 0);
    EXPECT_EQ(+record.nPrintArea, 2);
    EXPECT_EQ((std::tuple{+record.nPaper, +record.dm.dmPaperSize}), (std::tuple{0, 9}));
    EXPECT_EQ(Margins(record), (std::array{54, 198, 54, 198}));
    EXPECT_EQ(+record.adwMWData[0], 9);
}

TEST_F(ApiTest, AnUnknownSourceIsRefused)
{
    const std::string before = BytesOf(record);
    EXPECT_EQ(Set(KVDD_SOURCE, 5), -2);
    EXPECT_EQ(BytesOf(record), before);
    Uninstall();
    EXPECT_EQ(Set(KVDD_SOURCE, 4), -7);
    EXPECT_EQ(BytesOf(record), before);
}

TEST_F(ApiTest, ASourceIdAbove32767IsFoundByItsBits)
{
    model.bins[1].wId = 0xFF00;
    Install();
    EXPECT_EQ(Set(KVDD_SOURCE, 0xFF00), 0);
    EXPECT_EQ(+record.nBin, 1);
    EXPECT_EQ(Word(KVDD_SOURCE), -256);
}

TEST_F(ApiTest, ASourceThatCannotFeedThePaperTakesItsFirstOneAndKeepsTheSize)
{
    model.papers[0].wBinMask = 1;
    Install();
    EXPECT_EQ(Set(KVDD_SOURCE, 4), 0);
    EXPECT_EQ((std::tuple{+record.nPaper, +record.dm.dmPaperSize}), (std::tuple{1, 1}));
    EXPECT_EQ((std::array{+record.dm.dmPaperWidth, +record.lPaperWidth}), (std::array{2100, 2100}));
}

TEST_F(ApiTest, OfSavedPapersWithThePapersIdTheLastStays)
{
    for (const char *name : {"One", "Two", "Other source"})
        model.AddUserPaper(name, 1000, 1500, 1, name[0] == 'O' && name[1] == 't' ? 1 : 2);
    for (UserPaperRecord &slot : model.userPapers)
        slot.paper.wId = 9;
    Install();
    EXPECT_EQ(Set(KVDD_SOURCE, 4), 0);
    EXPECT_EQ((std::tuple{+record.nPaper, +record.dm.dmPaperSize}), (std::tuple{3 + 1, 9}));
}

TEST_F(ApiTest, ASourcePastTheMasksBitsFeedsNothing)
{
    model.bins.resize(40, {99, 0, 0});
    model.bins[33].wId = 33; // bit 33 of 32 would be bit 1 again
    Install();
    EXPECT_EQ(Set(KVDD_SOURCE, 33), 0);
    EXPECT_EQ((std::tuple{+record.nBin, +record.nPaper}), (std::tuple{33, 0}));
    record.dm.dmPaperSize = 1;
    EXPECT_EQ(Set(KVDD_SOURCE, 33), 0);
    EXPECT_EQ(+record.nPaper, 0); // no paper is fed, so none is looked up
}
