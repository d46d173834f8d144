// Media, print modes and the printable area.
#include "tests/api/api_test.h"

#include <cstring>

TEST_F(ApiTest, MediaIsThatOfTheResolutionNotTheRecordsOwn)
{
    KVDDPRINTMODE mode = {7, 7, 7, 7};
    for (const int resolution : {2, -1, 32767}) { // outside the table there is none
        record.Settings.wResolution = static_cast<int16_t>(resolution);
        EXPECT_EQ(Word(KVDD_MEDIA), 1000000 - 7) << resolution;
        EXPECT_EQ(Get(KVDD_PRINTMODE, &mode), -7) << resolution;
    }
    EXPECT_EQ(WordsOf(mode), (Words{7, 7, 7, 7}));
    record.Settings.wResolution = 1;
    record.lMediaCode = 10;
    EXPECT_EQ(Word(KVDD_MEDIA), 20);
    EXPECT_EQ(Get(KVDD_PRINTMODE, &mode), 0);
    EXPECT_EQ(+mode.wMedia, 20);
    model.resolutions[0].wMedia = 2;
    Install();
    EXPECT_EQ(Word(KVDD_MEDIA), 1000000 - 7);
}

TEST_F(ApiTest, LevelIsThatOfTheSettingsTheyCameFrom)
{
    static const struct {
        const char *why;
        uint16_t index;
        uint32_t automatic;
        int level, mode;
    } aRows[] = {
        {"its own", 1, 1, 2, 1},
        {"any automatic mark counts", 1, 0x10000, 2, 1},
        {"none", 2, 0, 1, 0},
        {"by hand, however long the table", 1000, 0, 1, 0},
        {"outside the table", 1005, 0, 1, 0},
    };
    model.presets.resize(1000, model.autoSettings[1]);
    Install();
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        record.Settings.wIndex = row.index;
        record.bAutoMode = row.automatic;
        KVDDPRINTMODE mode{};
        EXPECT_EQ(Get(KVDD_PRINTMODE, &mode), 0);
        EXPECT_EQ(WordsOf(mode), (Words{row.mode, row.level, 10, 2}));
    }
}

TEST_F(ApiTest, AutomaticTakesTheSettingsThatFitBest)
{
    static const struct {
        const char *why;
        KVDDPRINTMODE asked;
        int32_t result;
        size_t index; // of the settings chosen
    } aRows[] = {
        {"media, ink and level", {1, 2, 20, 1}, 0, 1},
        {"the level that there is", {1, 1, 20, 1}, 0, 1},
        {"the first of two levels", {1, 2, 10, 2}, 0, 2},
        {"only automatic settings", {1, 1, 20, 2}, -7, 0},
        {"no such media", {1, 1, 30, 1}, -2, 0},
        {"level too low", {1, 0, 10, 2}, -2, 0},
        {"level too high", {1, 3, 10, 2}, -2, 0},
        {"no colour", {1, 1, 10, 0}, -2, 0},
        {"another colour", {1, 1, 10, 3}, -2, 0},
        {"another mode", {2, 1, 10, 2}, -2, 0},
        {"a mode below zero", {-1, 1, 10, 2}, -2, 0},
    };
    SettingsRecord second = model.autoSettings[0];
    second.wIndex = 2;
    second.wAutoLevel = 2;
    model.autoSettings.push_back(second);
    model.presets[0].wIndex = 3;
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        Install();
        record.bAutoMode = 0;
        UIInstance.nCurSetting = 77;
        const std::string untouched = BytesOf(record);
        EXPECT_EQ(SetMode(row.asked), row.result);
        if (row.result != KVDD_OK) {
            EXPECT_EQ(BytesOf(record), untouched);
            EXPECT_EQ(UIInstance.nCurSetting, 77);
            continue;
        }
        EXPECT_EQ(+record.bAutoMode, 1u);
        EXPECT_EQ(UIInstance.nCurSetting, int(row.index));
        EXPECT_EQ(BytesOf(record.Settings), BytesOf(model.autoSettings[row.index]));
    }
}

TEST_F(ApiTest, APrintModeBringsResolutionColourAndMWRow)
{
    DriverDevMode expected = record;
    expected.Settings = model.autoSettings[1];
    expected.lResX = expected.lResY = expected.dm.dmPrintQuality = expected.dm.dmYResolution = 720;
    expected.dm.dmColor = 1;
    expected.lMediaCode = 20;
    std::memset(expected.adwMWData, 0, sizeof expected.adwMWData); // no row for 720
    EXPECT_EQ(SetMode({1, 2, 20, 1}), 0);
    EXPECT_EQ(BytesOf(record), BytesOf(expected));
}

TEST_F(ApiTest, TheMediaCodeIsTheOneAskedForNotTheResolutions)
{
    model.autoSettings[1].wResolution = 0;     // of the other media
    std::swap(model.media[0], model.media[1]); // matched by number, not by place
    Install();
    EXPECT_EQ(SetMode({1, 2, 20, 1}), 0);
    EXPECT_EQ(+record.lMediaCode, 20);
    EXPECT_EQ(+record.Settings.wIndex, 1);
}

TEST_F(ApiTest, AdvancedKeepsTheSettingsAsChosenByHand)
{
    record.Settings.wResolution = 1;
    record.Settings.wInk = 0;
    DriverDevMode expected = record;
    expected.bAutoMode = 0;
    expected.Settings.wIndex = 1000;
    expected.lResX = expected.lResY = expected.dm.dmPrintQuality = expected.dm.dmYResolution = 720;
    expected.dm.dmColor = 1;
    std::memset(expected.adwMWData, 0, sizeof expected.adwMWData);
    EXPECT_EQ(SetMode({0, 9, 9, 9}), 0); // only the mode is looked at
    EXPECT_EQ(BytesOf(record), BytesOf(expected));
    record.Settings.wResolution = expected.Settings.wResolution = 2;
    EXPECT_EQ(SetMode({0, 9, 9, 9}), 0);
    EXPECT_EQ(BytesOf(record), BytesOf(expected)) << "outside the table: the record's own stays";
}

// ---- printable area --------------------------------------------------------------------------

TEST_F(ApiTest, TheSourcesRuleDecidesOnThePrintableArea)
{
    static const struct {
        const char *why;
        uint16_t rule;
        int32_t nBin;
        int range;                // a result when negative
        int maximum, centred;     // as read when the record says so
        int32_t set0, set1, set5; // results
    } aRows[] = {
        {"free", 0x000, 0, 1, 0, 1, 0, 0, 0},
        {"collate bits do not count", 0x00F, 0, 1, 0, 1, 0, 0, 0},
        {"first centred", 0x100, 0, 1, 0, 1, 0, 0, 0},
        {"first maximum", 0x200, 0, 1, 0, 1, 0, 0, 0},
        {"always centred", 0x300, 0, 1, 1, 1, -2, 0, -2},
        {"always maximum", 0x400, 0, 0, 0, 0, 0, -2, -2},
        {"unknown", 0x500, 0, -2, 1000000 - 1, 1000000 - 1, -1, -1, -1},
        {"behind the sources", 0, 2, -2, 1000000 - 1, 1000000 - 1, -1, -1, -1},
        {"before the sources", 0, -1, -2, 1000000 - 1, 1000000 - 1, -1, -1, -1},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        model.bins[0].wFlags = row.rule;
        Install();
        record.nBin = row.nBin;
        uint16_t range = 0;
        const int32_t result = Range(KVDD_PRINTAREA, &range);
        EXPECT_EQ(result == KVDD_OK ? range : result, row.range);
        record.nPrintArea = 1;
        EXPECT_EQ(Word(KVDD_PRINTAREA), row.maximum);
        record.nPrintArea = 2;
        EXPECT_EQ(Word(KVDD_PRINTAREA), row.centred);
        for (const auto &[value, expected] :
             {std::pair{0, row.set0}, {1, row.set1}, {5, row.set5}}) {
            record.nPrintArea = 2;
            EXPECT_EQ(Set(KVDD_PRINTAREA, value), expected) << value;
            EXPECT_EQ(+record.nPrintArea, expected != KVDD_OK || value ? 2 : 1) << value;
        }
    }
}

TEST_F(ApiTest, ThePrintableAreaBringsItsMargins)
{
    EXPECT_EQ(Set(KVDD_PRINTAREA, 1), 0);
    EXPECT_EQ(MarginsOf(record), (Words{54, 198, 54, 198}));
    EXPECT_EQ(Set(KVDD_PRINTAREA, 0), 0);
    EXPECT_EQ(MarginsOf(record), (Words{42, 60, 54, 198}));

    model.papers[2].wTop = 77; // of the free paper, for one outside the table
    Install();
    record.dm.dmPaperSize = 768;
    EXPECT_EQ(Set(KVDD_PRINTAREA, 0), 0);
    EXPECT_EQ(+record.wMarginTop, 77);
    model.papers.pop_back(); // nor is there one: margins stay
    Install();
    record.dm.dmPaperSize = 768;
    record.wMarginTop = 5;
    EXPECT_EQ(Set(KVDD_PRINTAREA, 1), 0);
    EXPECT_EQ(+record.wMarginTop, 5);
}
