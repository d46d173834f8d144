// The choice of a row of the MW table, and its refresh in a record.
#include "tests/datafile/model_test.h"

#include <climits>

#include "datafile/mw.h"

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace
{

constexpr int32_t ANY = 99;

// A row for 360 x 360 dpi without scaling; its keys in the data are 5 and 5 unless given.
MWRecord Row(int32_t source, int32_t media, int32_t ink, int32_t data2 = 5, int32_t data3 = 5)
{
    return {360, 360, 360, 360, source, media, ink, {0, 0, data2, data3}};
}

MWRecord Scaled(int32_t y, int32_t x, int32_t y2, int32_t x2)
{
    return {y, x, y2, x2, ANY, ANY, ANY, {}};
}

MWKey Key(WORD flags = 0, LONG source = 7, SHORT ink = 1)
{
    return {360, 360, 0, 10, ink, source, flags};
}

int Chosen(const std::vector<MWRecord> &rows, const MWKey &key)
{
    const MWRecord *row = ChooseMWRow(rows, key);
    return row ? static_cast<int>(row - rows.data()) : -1;
}

const MWRecord PARTICULAR = Row(ANY, 10, 1);
const MWRecord BY_SOURCE = Row(7, ANY, ANY);
const MWRecord BY_FLAGS = Row(ANY, ANY, ANY, 0, 0);
const MWRecord FOR_ALL = Row(ANY, ANY, ANY, 5, 5);

class MWTest : public ModelTest
{
  public:
    void SetUp() override
    {
        ModelTest::SetUp();
        Install();
        dm.lResX = dm.lResY = 360;
        std::memset(dm.adwMWData, 0xFF, sizeof dm.adwMWData);
    }
    std::vector<int32_t> Data() const
    {
        std::vector<int32_t> data(std::extent_v<decltype(dm.adwMWData)>);
        std::memcpy(data.data(), dm.adwMWData, sizeof dm.adwMWData); // nothing is aligned there
        return data;
    }
};

} // namespace

TEST(MWRow, TheMostParticularSearchThatFindsOneDecides)
{
    // One for anything, and one that is chosen before it when these values answer the flags.
    const auto byFlags = [](int32_t data2, int32_t data3) {
        return std::vector<MWRecord>{Row(ANY, ANY, ANY, 77, 77), Row(ANY, ANY, ANY, data2, data3)};
    };
    const struct {
        const char *why;
        std::vector<MWRecord> rows;
        MWKey key;
        int nRow;
    } aRows[] = {
        {"media and ink, although last", {FOR_ALL, BY_FLAGS, BY_SOURCE, PARTICULAR}, Key(), 3},
        {"then the source", {FOR_ALL, BY_FLAGS, BY_SOURCE}, Key(), 2},
        {"then the flags", {FOR_ALL, BY_FLAGS}, Key(), 1},
        {"then anything", {Row(8, ANY, ANY), FOR_ALL}, Key(), 1},
        {"media and ink for one source is no row for all", {Row(7, 10, 1)}, Key(), -1},
        {"another ink", {Row(ANY, 10, 0)}, Key(), -1},
        {"a source row must be for any ink", {Row(7, ANY, 1)}, Key(), -1},
        {"an ink of 16 bits has a sign", {Row(ANY, 10, -1)}, Key(0, 7, -1), 0},
        {"sources are 16 bits: unsigned in the file", {Row(0x8001, ANY, ANY)}, Key(0, -32767), 0},
        {"signed in the file", {Row(-32767, ANY, ANY)}, Key(0, 0x8001), 0},
        {"more than 16 bits in the file", {Row(0x10007, ANY, ANY)}, Key(), -1},
        {"the second option's value may exceed", byFlags(0, 7), Key(0), 1},
        {"but not be negative", byFlags(0, -1), Key(0), 0},
        {"or below an option that is on", byFlags(0, 1), Key(2), 0},
        {"MW on, row off", byFlags(0, 2), Key(1), 0},
        {"MW off, row on", byFlags(1, 0), Key(0), 0},
        {"both on", byFlags(1, 2), Key(3), 1},
        {"other options are nothing here", byFlags(0, 0), Key(0xFFFC), 1},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        EXPECT_EQ(Chosen(row.rows, row.key), row.nRow);
    }
}

TEST(MWRow, DotScaleDoublesTheSecondResolutions)
{
    const std::vector<MWRecord> rows = {Scaled(720, 360, 720, 360), Scaled(720, 360, 720, 720),
                                        Scaled(720, 360, 1440, 360), Scaled(720, 360, 1440, 720)};
    for (const auto &[wScale, nRow] : {std::pair<WORD, int>{0, 0}, {1, 1}, {2, 2}, {3, 3}, {4, 0}})
        EXPECT_EQ(Chosen(rows, {360, 720, wScale, 10, 1, 7, 0}), nRow) << wScale;
    EXPECT_EQ(Chosen(rows, {720, 360, 0, 10, 1, 7, 0}), -1) << "x and y are not the same";
    EXPECT_EQ(Chosen({Scaled(1, INT_MAX, 1, -2)}, {INT_MAX, 1, 1, 10, 1, 7, 0}), -1);
}

TEST(MWRow, ASearchThatFirstFitsAtPosition99HasFoundNothing)
{
    static const struct {
        const char *why;
        std::vector<std::pair<size_t, MWRecord>> fitting; // among rows that fit nothing
        int nRow;
    } aRows[] = {
        {"there first", {{99, PARTICULAR}, {100, PARTICULAR}}, -1},
        {"the next search goes on", {{99, PARTICULAR}, {110, BY_SOURCE}}, 110},
        {"behind it", {{100, PARTICULAR}, {50, FOR_ALL}}, 100},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        std::vector<MWRecord> rows(120, Row(8, 8, 8));
        for (const auto &[nAt, fitting] : row.fitting)
            rows[nAt] = fitting;
        EXPECT_EQ(Chosen(rows, Key()), row.nRow);
    }
}

TEST_F(MWTest, TheRecordsOwnValuesAreTheKey)
{
    const auto row = [](int32_t source, int32_t media, int32_t ink, int32_t nRow, int32_t data2,
                        int32_t data3) {
        return MWRecord{180, 360, 360, 720, source, media, ink, {nRow, 0, data2, data3}};
    };
    model.mw = {row(ANY, 30, 1, 1, 1, 1), row(4, ANY, ANY, 2, 2, 2), row(ANY, ANY, ANY, 3, 1, 2),
                row(ANY, ANY, ANY, 4, 0, 0)};
    model.header.wVersion = 257; // nobody asks here
    Install();
    dm.lResY = 180;
    dm.Settings.wDotScale = 3;
    dm.Settings.wInk = 1;
    dm.Settings.wFlags = 0xF;
    dm.lMediaCode = 30;
    dm.dm.dmDefaultSource = 4;
    dm.nBin = 9; // the position is no source
    const auto chosen = [this] {
        DriverDevMode expected = dm;
        EXPECT_TRUE(GetMWData(&dm));
        std::memcpy(expected.adwMWData, dm.adwMWData, sizeof dm.adwMWData);
        EXPECT_EQ(BytesOf(dm), BytesOf(expected)) << "something else changed";
        return Data();
    };
    EXPECT_THAT(chosen(), ElementsAre(1, 0, 1, 1, 0, 0, 0, 0));
    dm.lMediaCode = 31;
    EXPECT_EQ(chosen()[0], 2);
    dm.dm.dmDefaultSource = 5;
    EXPECT_EQ(chosen()[0], 3);
    dm.Settings.wFlags = 0xC;
    EXPECT_EQ(chosen()[0], 4);
    dm.Settings.wDotScale = 1;
    EXPECT_THAT(chosen(), Each(0));
    EXPECT_THAT(BoxesShown(), IsEmpty());
}

TEST_F(MWTest, WithoutTheTableTheOldDataStays)
{
    kvp::PutAbsentFile(DatPath());
    EXPECT_FALSE(GetMWData(&dm));
    EXPECT_THAT(BoxesShown(), ElementsAre(DAT_NOT_FOUND));
    const Bytes dat = model.Dat();
    for (size_t n = 0; n < dat.size(); ++n) {
        PutDat(FirstBytes(dat, n));
        EXPECT_FALSE(GetMWData(&dm)) << n;
    }
    EXPECT_THAT(Data(), Each(-1));
    EXPECT_THAT(BoxesShown(), IsEmpty());
    PutDat(dat);
    const int nFailures = WithEachFailure(kvp::Call::Read, [&](int) {
        std::memset(dm.adwMWData, 0xFF, sizeof dm.adwMWData);
        if (GetMWData(&dm))
            EXPECT_THAT(Data(), ElementsAre(1, 2, 3, 4, 5, 6, 7, 8));
        else
            EXPECT_THAT(Data(), Each(-1));
    });
    EXPECT_GT(nFailures, 0);
}
