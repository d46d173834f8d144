// A model's default settings.
#include "tests/datafile/model_test.h"

#include <algorithm>

#include "settings/defaults.h"

namespace
{

class DefaultsTest : public ModelTest
{
  public:
    BOOL Defaults()
    {
        dm = NamedRecord(u"KORVA One");
        return InitPrinterDevMode(&dm, nullptr, nullptr);
    }
    // Those of the model as it is now.
    void TakeDefaults()
    {
        Install();
        EXPECT_TRUE(Defaults());
    }
};

} // namespace

TEST_F(DefaultsTest, EveryFieldComesFromItsPlaceAndOthersKeepWhatTheyHeld)
{
    auto *tmpl = reinterpret_cast<uint8_t *>(&model.tmpl);
    for (size_t i = 0; i < sizeof model.tmpl; ++i)
        tmpl[i] = static_cast<uint8_t>(37 * i + 11);
    model.tmpl.Settings.wIndex = 2;
    std::strcpy(model.tmpl.szTmplName, "NAME");
    model.resolutions[1].wResX = 1440;
    model.papers[0].wIndex = -1; // taken as it stands
    model.mw = {{720, 1440, 720, 1440, 99, 20, 1, {8, 7, 6, 5, 4, 3, 2, 1}}};
    Install();
    std::vector<uint8_t> room(1 + sizeof dm, 0x5A);
    auto *odd = reinterpret_cast<DriverDevMode *>(room.data() + 1);
    std::memcpy(odd->wszModelName, dm.wszModelName, sizeof dm.wszModelName);

    DriverDevMode expected = *odd;
    constexpr std::pair<size_t, size_t> aFromTemplate[] = {
        {64, 14},  // the four marks, flags, orientation
        {84, 6},   // scale, copies, source
        {94, 2},   // duplex
        {100, 2},  // collate
        {168, 24}, // display, tag
        {416, 4},  // mode
        {424, 14}, // source's index, three words, area
        {454, 4},  // width
        {466, 28}, {526, 4}, {530, 5},
    };
    for (const auto &[offset, cb] : aFromTemplate)
        std::memcpy(reinterpret_cast<uint8_t *>(&expected) + offset, tmpl + offset, cb);
    expected.dm.dmPaperSize = 9;
    expected.lPaperWidth = expected.dm.dmPaperWidth = 2100;
    expected.lPaperLength = expected.dm.dmPaperLength = 2970;
    expected.wPaperWidth360 = 2976;
    expected.wPaperLength360 = 4209;
    expected.nPaper = -1;
    expected.dwUnit = 1;
    expected.wMarginLeft = expected.wMarginRight = 42; // neither centred nor limited
    expected.wMarginTop = 60;
    expected.wMarginBottom = 198;
    expected.Settings = model.presets[0];
    expected.lResX = expected.dm.dmPrintQuality = 1440;
    expected.lResY = expected.dm.dmYResolution = 720;
    expected.lMediaCode = 20;
    expected.dm.dmColor = 2;
    std::memcpy(expected.adwMWData, model.mw[0].adwData, 32);
    EXPECT_TRUE(InitPrinterDevMode(odd, nullptr, nullptr));
    EXPECT_EQ(BytesOf(*odd), BytesOf(expected));
    EXPECT_EQ(BoxesShown(), Messages());
}

TEST_F(DefaultsTest, TheLocaleChoosesTheFirstPaperFlaggedForItAndTheUnit)
{
    model.papers[2].wDefault = 1;
    std::swap(model.papers[0], model.papers[1]);
    for (const auto &[nMeasure, sPaper] : {std::pair{0, 9}, {1, 1}}) {
        machine.nMeasure = nMeasure;
        Apply();
        TakeDefaults();
        EXPECT_EQ(dm.dm.dmPaperSize, sPaper);
        EXPECT_EQ(+dm.dwUnit, 1u + nMeasure);
        EXPECT_EQ(+dm.nPaper, nMeasure) << "the record's own index, not where it stands";
    }
}

TEST_F(DefaultsTest, ATemplateWithoutOrientationIsPortraitAndOneWithoutTerminatorEndsWithItsField)
{
    model.tmpl.dm.dmOrientation = 0;
    std::memset(model.tmpl.szTmplName, 'T', 32);
    TakeDefaults();
    EXPECT_EQ(dm.dm.dmOrientation, 1);
    EXPECT_EQ(BytesOf(dm).substr(530), std::string(32, 'T'));
}

TEST_F(DefaultsTest, ColourFollowsTheInk)
{
    for (const auto &[wInk, sColor] : {std::pair{0, 1}, {1, 2}, {2, 1}, {0x101, 1}}) {
        model.autoSettings[0].wInk = static_cast<uint16_t>(wInk);
        TakeDefaults();
        EXPECT_EQ(dm.dm.dmColor, sColor) << wInk;
    }
}

TEST_F(DefaultsTest, AnIndexThatLeadsNowhereLeavesItsFieldsCleared)
{
    static const struct {
        const char *why;
        uint16_t wSetting; // in the template
        int16_t sResolution, sMedia;
        std::vector<int> outcome; // HT, resolution, MW data, media code
    } aRows[] = {
        {"the last slot of the settings table", 5, 0, 0, {3, 360, 1, 10}},
        {"behind it", 6, 0, 0, {0, 0, 0, 55}},
        {"negative", 0xFFFF, 0, 0, {0, 0, 0, 55}},
        {"a resolution behind its table", 0, 2, 0, {3, 0, 0, 55}},
        {"a negative resolution", 0, -1, 0, {3, 0, 0, 55}},
        {"a media behind its table", 0, 0, 2, {3, 360, 1, 55}},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        model = Model();
        model.bUcf = true;
        model.tmpl.lMediaCode = 55;
        model.tmpl.Settings.wIndex = row.wSetting;
        model.autoSettings[0].wResolution = row.sResolution;
        model.autoSettings[0].bHT = 3;
        model.resolutions[0].wMedia = row.sMedia;
        model.userSettings.assign(3, model.autoSettings[0]);
        TakeDefaults();
        EXPECT_EQ((std::vector<int>{dm.Settings.bHT, dm.lResX, dm.adwMWData[0], dm.lMediaCode}),
                  row.outcome);
    }
}

TEST_F(DefaultsTest, AUserSlotAsDefaultDependsOnTheUsersFile)
{
    SettingsRecord slot{}, freeSlot{};
    slot.wState = 2;
    slot.bHT = 3;
    freeSlot.wIndex = 4;
    freeSlot.wAutoLabel = -1;
    freeSlot.wState = 3;
    model.tmpl.Settings.wIndex = 4;
    model.userSettings = {SettingsRecord{}, slot};
    model.bUcf = true;
    TakeDefaults();
    EXPECT_EQ(BytesOf(dm.Settings), BytesOf(slot));
    EXPECT_EQ(BoxesShown(), Messages());

    const Bytes ucf = model.Ucf();
    for (size_t n = 1; n < ucf.size(); ++n) {
        PutUcf(FirstBytes(ucf, n));
        EXPECT_TRUE(Defaults());
        EXPECT_EQ(BytesOf(dm.Settings), BytesOf(SettingsRecord{})) << n;
        EXPECT_EQ(BoxesShown(), Messages{UCF_VERSION_ERROR}) << n;
    }
    for (const bool bEmpty : {true, false}) {
        bEmpty ? PutUcf({}) : kvp::PutAbsentFile(UcfPath());
        EXPECT_TRUE(Defaults());
        EXPECT_EQ(BytesOf(dm.Settings), BytesOf(freeSlot)) << bEmpty;
    }
    EXPECT_EQ(BoxesShown(), Messages());
}

TEST_F(DefaultsTest, NothingIsWrittenUnlessBothFilesAreWhole)
{
    model.header.wVersion = model.wCfgVersion = 1; // versions are not looked at
    TakeDefaults();
    const std::string named = BytesOf(NamedRecord(u"KORVA One"));
    const auto refused = [&] { return !Defaults() && BytesOf(dm) == named; };
    for (const auto &[path, bytes] :
         {std::pair{CfgPath(), model.Cfg()}, {DatPath(), model.Dat()}}) {
        for (size_t n = 0; n < bytes.size(); ++n) {
            kvp::PutMemoryFile(path, FirstBytes(bytes, n));
            EXPECT_TRUE(refused()) << n;
        }
        EXPECT_EQ(BoxesShown(), Messages());
        kvp::PutAbsentFile(path);
        EXPECT_TRUE(refused());
        EXPECT_EQ(BoxesShown(), Messages{path == CfgPath() ? CFG_NOT_FOUND : DAT_NOT_FOUND});
        kvp::PutMemoryFile(path, bytes);
    }
}
