// Media, print modes and the printable area.
#include <tuple>

#include "tests/api/api_test.h"

static std::tuple<int, int, int, int> Values(const KVDDPRINTMODE &mode)
{
    return {mode.wMode, mode.wLevel, mode.wMedia, mode.wColor};
}

TEST_F(ApiTest, MediaIsThatOfTheResolutionNotTheRecordsOwn)
{
    record.Settings.wResolution = 1;
    record.lMediaCode = 10;
    EXPECT_EQ(Word(KVDD_MEDIA), 20);
    KVDDPRINTMODE mode{};
    EXPECT_EQ(Get(KVDD_PRINTMODE, &mode), 0);
    EXPECT_EQ(+mode.wMedia, 20);
}

TEST_F(ApiTest, AnIndexOutsideItsTableHasNoMedia)
{
    KVDDPRINTMODE mode = {7, 7, 7, 7};
    for (const int16_t resolution : {int16_t{2}, int16_t{-1}, int16_t{32767}}) {
        SCOPED_TRACE(resolution);
        record.Settings.wResolution = resolution;
        EXPECT_EQ(Word(KVDD_MEDIA), 1000000 - 7);
        EXPECT_EQ(Get(KVDD_PRINTMODE, &mode), -7);
    }
    model.resolutions[1].wMedia = 2;
    Install();
    record.Settings.wResolution = 1;
    EXPECT_EQ(Word(KVDD_MEDIA), 1000000 - 7);
    EXPECT_EQ(Values(mode), (std::tuple{7, 7, 7, 7}));
}

static constexpr struct {
    const char *why;
    uint16_t index;
    uint32_t automatic;
    int level, mode;
} aLevels[] = {
    {"its own", 1, 1, 2, 1},
    {"any automatic mark counts", 1, 0x10000, 2, 1},
    {"none", 2, 0, 1, 0},
    {"by hand", 1000, 0, 1, 0},
    {"outside the table", 6, 0, 1, 0},
    {"far outside", 65535, 0, 1, 0},
};

TEST_F(ApiTest, LevelIsThatOfTheSettingsTheyCameFrom)
{
    for (const auto &row : aLevels) {
        SCOPED_TRACE(row.why);
        record.Settings.wIndex = row.index;
        record.bAutoMode = row.automatic;
        KVDDPRINTMODE mode{};
        EXPECT_EQ(Get(KVDD_PRINTMODE, &mode), 0);
        EXPECT_EQ(Values(mode), (std::tuple{row.mode, row.level, 10, 2}));
    }
}

TEST_F(ApiTest, SettingsByHandHaveLevelOneHoweverLongTheTable)
{
    model.presets.resize(1000, model.autoSettings[1]);
    Install();
    record.Settings.wIndex = 1000;
    KVDDPRINTMODE mode{};
    EXPECT_EQ(Get(KVDD_PRINTMODE, &mode), 0);
    EXPECT_EQ(+mode.wLevel, 1);
}

static constexpr struct {
    const char *why;
    KVDDPRINTMODE asked;
    int32_t result;
    int index; // of the settings chosen
} aModes[] = {
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

TEST_F(ApiTest, AutomaticTakesTheSettingsThatFitBest)
{
    SettingsRecord second = model.autoSettings[0];
    second.wIndex = 2;
    second.wAutoLevel = 2;
    model.autoSettings.push_back(second);
    model.presets[0].wIndex = 3;
    for (const auto &row : aModes) {
        SCOPED_TRACE(row.why);
        Install();
        record.bAutoMode = 0;
        UIInstance.nCurSetting = 77;
        const std::string before = BytesOf(record);
        KVDDPRINTMODE asked = row.asked;
        EXPECT_EQ(SetWords(KVDD_PRINTMODE, asked), row.result);
        if (row.result != KVDD_OK) {
            EXPECT_EQ(BytesOf(record), before);
            EXPECT_EQ(UIInstance.nCurSetting, 77);
            continue;
        }
        EXPECT_EQ(+record.bAutoMode, 1u);
        EXPECT_EQ(UIInstance.nCurSetting, row.index);
        EXPECT_EQ(std::memcmp(&record.Settings, &model.autoSettings[static_cast<size_t>(row.index)],
                              sizeof(SettingsRecord)),
                  0);
        EXPECT_EQ(Values(asked), Values(row.asked));
    }
}

TEST_F(ApiTest, APrintModeBringsResolutionColourAndMWRow)
{
    KVDDPRINTMODE asked = {1, 2, 20, 1};
    EXPECT_EQ(+record.adwMWData[0], 1);
    EXPECT_EQ(SetWords(KVDD_PRINTMODE, asked), 0);
    EXPECT_EQ((std::tuple{+record.lResX, +record.lResY}), (std::tuple{720, 720}));
    EXPECT_EQ((std::tuple{+record.dm.dmPrintQuality, +record.dm.dmYResolution}),
              (std::tuple{720, 720}));
    EXPECT_EQ(+record.dm.dmColor, 1);
    EXPECT_EQ(+record.lMediaCode, 20);
    EXPECT_EQ(+record.adwMWData[0], 0); // no row for 720
}

TEST_F(ApiTest, TheMediaCodeIsTheOneAskedForNotTheResolutions)
{
    model.autoSettings[1].wResolution = 0; // of the other media
    Install();
    KVDDPRINTMODE asked = {1, 2, 20, 1};
    EXPECT_EQ(SetWords(KVDD_PRINTMODE, asked), 0);
    EXPECT_EQ(+record.lMediaCode, 20);
    EXPECT_EQ(Word(KVDD_MEDIA), 10);
}

TEST_F(ApiTest, AMediaIsMatchedByItsNumberNotItsPlace)
{
    model.media = {{10, 1}, {20, 0}};
    Install();
    KVDDPRINTMODE asked = {1, 2, 10, 1};
    EXPECT_EQ(SetWords(KVDD_PRINTMODE, asked), 0);
    EXPECT_EQ(+record.Settings.wIndex, 1);
}

TEST_F(ApiTest, AdvancedKeepsTheSettingsAsChosenByHand)
{
    record.Settings.wResolution = 1;
    record.Settings.wInk = 0;
    const SettingsRecord before = record.Settings;
    KVDDPRINTMODE asked = {0, 9, 9, 9}; // only the mode is looked at
    EXPECT_EQ(SetWords(KVDD_PRINTMODE, asked), 0);
    EXPECT_EQ(+record.bAutoMode, 0u);
    EXPECT_EQ(+record.Settings.wIndex, 1000);
    EXPECT_EQ(std::memcmp(&before.wPreset, &record.Settings.wPreset, sizeof(before) - 2), 0);
    EXPECT_EQ((std::tuple{+record.lResX, +record.dm.dmColor}), (std::tuple{720, 1}));
}

TEST_F(ApiTest, AResolutionOutsideItsTableLeavesTheRecordsOwn)
{
    record.Settings.wResolution = 2;
    KVDDPRINTMODE asked = {0, 1, 10, 1};
    EXPECT_EQ(SetWords(KVDD_PRINTMODE, asked), 0);
    EXPECT_EQ((std::tuple{+record.lResX, +record.dm.dmYResolution}), (std::tuple{360, 360}));
}

TEST_F(ApiTest, FilesAreLoadedBeforeThePrintModeIsLookedAt)
{
    Uninstall();
    KVDDPRINTMODE asked = {2, 1, 10, 1};
    EXPECT_EQ(SetWords(KVDD_PRINTMODE, asked), -7);
    EXPECT_EQ(Get(KVDD_PRINTMODE, &asked), -7);
    EXPECT_EQ(Word(KVDD_MEDIA), 1000000 - 7);
}

// ---- printable area --------------------------------------------------------------------------

static constexpr struct {
    const char *why;
    uint16_t rule;
    int range;                // a result when negative
    int maximum, centred;     // as read when the record says so
    int32_t set0, set1, set5; // results
} aRules[] = {
    {"free", 0x000, 1, 0, 1, 0, 0, 0},
    {"collate bits do not count", 0x00F, 1, 0, 1, 0, 0, 0},
    {"first centred", 0x100, 1, 0, 1, 0, 0, 0},
    {"first maximum", 0x200, 1, 0, 1, 0, 0, 0},
    {"always centred", 0x300, 1, 1, 1, -2, 0, -2},
    {"always maximum", 0x400, 0, 0, 0, 0, -2, -2},
    {"unknown", 0x500, -2, 1000000 - 1, 1000000 - 1, -1, -1, -1},
};

TEST_F(ApiTest, TheSourcesRuleDecidesOnThePrintableArea)
{
    for (const auto &row : aRules) {
        SCOPED_TRACE(row.why);
        model.bins[0].wFlags = row.rule;
        Install();
        uint16_t range = 0;
        const int32_t result = Range(KVDD_PRINTAREA, &range);
        EXPECT_EQ(result == KVDD_OK ? range : result, row.range);
        record.nPrintArea = 1;
        EXPECT_EQ(Word(KVDD_PRINTAREA), row.maximum);
        record.nPrintArea = 2;
        EXPECT_EQ(Word(KVDD_PRINTAREA), row.centred);
        const std::string before = BytesOf(record);
        const std::pair<int, int32_t> sets[] = {{0, row.set0}, {1, row.set1}, {5, row.set5}};
        for (const auto &[value, expected] : sets) {
            record.nPrintArea = 2;
            EXPECT_EQ(Set(KVDD_PRINTAREA, value), expected) << value;
            if (expected == KVDD_OK)
                EXPECT_EQ(+record.nPrintArea, value ? 2 : 1);
            else
                EXPECT_EQ(+record.nPrintArea, 2);
        }
    }
}

TEST_F(ApiTest, ThePrintableAreaBringsItsMargins)
{
    EXPECT_EQ(Set(KVDD_PRINTAREA, 1), 0);
    EXPECT_EQ((std::tuple{+record.wMarginLeft, +record.wMarginTop}), (std::tuple{54, 198}));
    EXPECT_EQ(Set(KVDD_PRINTAREA, 0), 0);
    EXPECT_EQ((std::tuple{+record.wMarginLeft, +record.wMarginTop}), (std::tuple{42, 60}));
}

TEST_F(ApiTest, APaperOutsideTheTableTakesTheFreePapersMargins)
{
    model.papers[2].wTop = 77;
    Install();
    record.dm.dmPaperSize = 768;
    EXPECT_EQ(Set(KVDD_PRINTAREA, 0), 0);
    EXPECT_EQ(+record.wMarginTop, 77);
    model.papers.pop_back();
    Install();
    record.dm.dmPaperSize = 768;
    record.wMarginTop = 5;
    EXPECT_EQ(Set(KVDD_PRINTAREA, 1), 0); // nor without one: margins stay
    EXPECT_EQ(+record.wMarginTop, 5);
}

TEST_F(ApiTest, ARecordWithoutAnAreaIsRefusedBeforeAnyFileIsOpened)
{
    Uninstall();
    for (const int area : {0, 3, -1}) {
        record.nPrintArea = area;
        EXPECT_EQ(Set(KVDD_PRINTAREA, 1), -2) << area;
    }
    EXPECT_THAT(BoxesShown(), ::testing::IsEmpty());
    record.nPrintArea = 1;
    uint16_t range = 0;
    EXPECT_EQ(Set(KVDD_PRINTAREA, 1), -7);
    EXPECT_EQ(Range(KVDD_PRINTAREA, &range), -7);
    EXPECT_EQ(Word(KVDD_PRINTAREA), 1000000 - 7);
}

TEST_F(ApiTest, ASourceOutsideItsTableHasNoRule)
{
    for (const int bin : {2, -1, 0x7FFFFFFF}) {
        SCOPED_TRACE(bin);
        record.nBin = bin;
        uint16_t range = 0;
        EXPECT_EQ(Range(KVDD_PRINTAREA, &range), -2);
        EXPECT_EQ(Word(KVDD_PRINTAREA), 1000000 - 1);
        EXPECT_EQ(Set(KVDD_PRINTAREA, 0), -1);
    }
}
