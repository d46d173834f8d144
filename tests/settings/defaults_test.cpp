// A model's default settings.
#include "tests/datafile/model_test.h"

#include <algorithm>

#include "settings/defaults.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace
{

class DefaultsTest : public ModelTest
{
  public:
    void SetUp() override
    {
        ModelTest::SetUp();
        Install();
    }
    BOOL Defaults()
    {
        dm = NamedRecord(u"KORVA One");
        return InitPrinterDevMode(&dm, nullptr, nullptr);
    }
    std::vector<int32_t> MWData() const
    {
        std::vector<int32_t> data(8);
        std::memcpy(data.data(), dm.adwMWData, sizeof dm.adwMWData);
        return data;
    }
};

// Every field that a template gives, each with a value of its own.
DriverDevMode FullTemplate()
{
    DriverDevMode tmpl{};
    tmpl.dm.dmSpecVersion = 801;
    tmpl.dm.dmDriverVersion = 802;
    tmpl.dm.dmSize = 803;
    tmpl.dm.dmDriverExtra = 804;
    tmpl.dm.dmFields = 0x12345678;
    tmpl.dm.dmOrientation = 2;
    tmpl.dm.dmScale = 805;
    tmpl.dm.dmCopies = 806;
    tmpl.dm.dmDefaultSource = -807;
    tmpl.dm.dmDuplex = 808;
    tmpl.dm.dmCollate = 809;
    tmpl.dm.dmBitsPerPel = 810;
    tmpl.dm.dmPelsWidth = 811;
    tmpl.dm.dmPelsHeight = 812;
    tmpl.dm.dmDisplayFlags = 813;
    tmpl.dm.dmDisplayFrequency = 814;
    tmpl.dwModelTag = 815;
    tmpl.wTmpl1 = 816;
    tmpl.wTmpl2 = 817;
    tmpl.wTmpl3 = 818;
    for (uint32_t i = 0; i < 7; ++i)
        tmpl.adwTmpl[i] = 900 + i;
    tmpl.dwApiFlag = 1;
    tmpl.nBin = 819;
    tmpl.nPrintArea = 2;
    tmpl.bAutoMode = 1;
    tmpl.lMaxPrintWidth = 820;
    std::strcpy(tmpl.szTmplName, "NAME");
    return tmpl;
}

} // namespace

TEST_F(DefaultsTest, EveryFieldComesFromItsPlace)
{
    model.tmpl = FullTemplate();
    model.tmpl.Settings.wIndex = 2;
    model.tmpl.Settings.wMedia = 77;  // of the template's settings only the index counts
    model.tmpl.dm.dmPaperSize = 77;   // nor its paper,
    model.tmpl.dm.dmPrintQuality = 7; // resolution
    model.tmpl.adwMWData[0] = 7;      // or MW data
    model.tmpl.lMediaCode = 77;
    model.resolutions[1].wResX = 1440;
    model.papers[0].wIndex = -1; // taken as it stands
    model.presets[0].wInk = 1;
    model.mw = {{720, 1440, 720, 1440, 99, 20, 1, {8, 7, 6, 5, 4, 3, 2, 1}}};
    Install();

    DriverDevMode expected = FullTemplate();
    std::memcpy(expected.wszModelName, dm.wszModelName, sizeof dm.wszModelName);
    expected.dm.dmPaperSize = 9;
    expected.dm.dmPaperWidth = 2100;
    expected.dm.dmPaperLength = 2970;
    expected.lPaperWidth = 2100;
    expected.lPaperLength = 2970;
    expected.wPaperWidth360 = 2976;
    expected.wPaperLength360 = 4209;
    expected.nPaper = -1;
    expected.dwUnit = 1;
    expected.wMarginLeft = 42; // neither centred nor limited
    expected.wMarginTop = 60;
    expected.wMarginRight = 42;
    expected.wMarginBottom = 198;
    expected.Settings = model.presets[0];
    expected.dm.dmPrintQuality = 1440;
    expected.dm.dmYResolution = 720;
    expected.lResX = 1440;
    expected.lResY = 720;
    expected.lMediaCode = 20;
    expected.dm.dmColor = 2;
    std::memcpy(expected.adwMWData, model.mw[0].adwData, 32);
    EXPECT_TRUE(Defaults());
    EXPECT_EQ(BytesOf(dm), BytesOf(expected));
    EXPECT_THAT(BoxesShown(), IsEmpty());
    EXPECT_TRUE(NothingHeld());
}

TEST_F(DefaultsTest, WhatIsNotADefaultKeepsWhatItHeld)
{
    model.tmpl = FullTemplate();
    std::memset(model.tmpl.szTmplName + 5, 0x77, 27);
    Install();
    std::vector<uint8_t> room(1 + sizeof(DriverDevMode), 0x5A);
    auto *odd = reinterpret_cast<DriverDevMode *>(room.data() + 1);
    const DriverDevMode named = NamedRecord(u"KORVA One");
    std::memcpy(odd->wszModelName, named.wszModelName, sizeof named.wszModelName);
    const DriverDevMode held = *odd;
    ASSERT_TRUE(InitPrinterDevMode(odd, nullptr, nullptr));
    const auto kept = [&](size_t offset, size_t n) {
        return std::memcmp(&room[1 + offset], reinterpret_cast<const char *>(&held) + offset, n) ==
               0;
    };
    EXPECT_TRUE(kept(0, 64)) << "device name";
    EXPECT_TRUE(kept(98, 2) && kept(102, 66)) << "dmTTOption; form name and pixels";
    EXPECT_TRUE(kept(204, 148)) << "pairs and model name";
    EXPECT_STREQ(odd->szTmplName, "NAME");
    EXPECT_TRUE(kept(535, 27)) << "behind the template's name";
}

TEST_F(DefaultsTest, TheLocaleChoosesPaperAndUnit)
{
    static const struct {
        const char *why;
        int nMeasure;
        int16_t sPaper, sWidth;
        uint32_t dwUnit;
    } aRows[] = {
        {"metric", 0, 9, 2100, 1},
        {"inch", 1, 1, 2159, 2},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        machine.nMeasure = row.nMeasure;
        Apply();
        EXPECT_TRUE(Defaults());
        EXPECT_EQ(dm.dm.dmPaperSize, row.sPaper);
        EXPECT_EQ(dm.dm.dmPaperWidth, row.sWidth);
        EXPECT_EQ(dm.dwUnit, row.dwUnit);
    }
}

TEST_F(DefaultsTest, TheFirstPaperFlaggedForTheLocaleIsTaken)
{
    model.papers[2].wDefault = 1;
    std::swap(model.papers[0], model.papers[1]);
    Install();
    EXPECT_TRUE(Defaults());
    EXPECT_EQ(dm.dm.dmPaperSize, 9);
    EXPECT_EQ(dm.nPaper, 0) << "the record's own index, not where it stands";
}

TEST_F(DefaultsTest, ATemplateWithoutOrientationIsPortrait)
{
    model.tmpl.dm.dmOrientation = 0;
    Install();
    EXPECT_TRUE(Defaults());
    EXPECT_EQ(dm.dm.dmOrientation, 1);
}

TEST_F(DefaultsTest, ATemplateNameWithoutTerminatorEndsWithItsField)
{
    std::memset(model.tmpl.szTmplName, 'T', 32);
    Install();
    EXPECT_TRUE(Defaults());
    EXPECT_EQ(BytesOf(dm).substr(530), std::string(32, 'T'));
}

TEST_F(DefaultsTest, ColourFollowsTheInk)
{
    for (const auto &[wInk, sColor] :
         {std::pair<uint16_t, int16_t>{0, 1}, {1, 2}, {2, 1}, {0x101, 1}}) {
        model.autoSettings[0].wInk = wInk;
        Install();
        EXPECT_TRUE(Defaults());
        EXPECT_EQ(dm.dm.dmColor, sColor) << wInk;
    }
}

TEST_F(DefaultsTest, TheMWRowIsChosenByTheDefaultsThemselves)
{
    static const struct {
        const char *why;
        uint16_t wDotScale;
        int32_t lResY2, lResX2;
        bool bFits;
    } aRows[] = {
        {"unscaled", 0, 360, 360, true},
        {"both doubled", 3, 720, 720, true},
        {"doubled, but the row is not", 3, 360, 360, false},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        model.autoSettings[0].wDotScale = row.wDotScale;
        model.mw[0].lResY2 = row.lResY2;
        model.mw[0].lResX2 = row.lResX2;
        model.mw[0].lSource = 7;
        Install();
        EXPECT_TRUE(Defaults());
        EXPECT_EQ(MWData()[7], row.bFits ? 8 : 0);
    }
}

TEST_F(DefaultsTest, AnIndexThatLeadsNowhereLeavesItsFieldsCleared)
{
    static const struct {
        const char *why;
        uint16_t wSetting; // in the template
        int16_t sResolution, sMedia;
        bool bSettings, bResolution;
        int32_t lMediaCode;
    } aRows[] = {
        {"the last slot of the settings table", 5, 0, 0, true, true, 10},
        {"behind it", 6, 0, 0, false, false, 55},
        {"negative", 0xFFFF, 0, 0, false, false, 55},
        {"a resolution behind its table", 0, 2, 0, true, false, 55},
        {"a negative resolution", 0, -1, 0, true, false, 55},
        {"a media behind its table", 0, 0, 2, true, true, 55},
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
        Install();
        EXPECT_TRUE(Defaults());
        EXPECT_EQ(dm.Settings.bHT, row.bSettings ? 3 : 0);
        EXPECT_EQ(+dm.lResX, row.bResolution ? 360 : 0);
        EXPECT_EQ(dm.dm.dmYResolution, row.bResolution ? 360 : 0);
        EXPECT_EQ(MWData()[0], row.bResolution ? 1 : 0);
        EXPECT_EQ(+dm.lMediaCode, row.lMediaCode);
    }
}

TEST_F(DefaultsTest, AUserSlotAsDefaultDependsOnTheUsersFile)
{
    SettingsRecord slot{};
    slot.wState = 2;
    slot.bHT = 3;
    SettingsRecord freeSlot{};
    freeSlot.wIndex = 4;
    freeSlot.wAutoLabel = -1;
    freeSlot.wState = 3;
    model.tmpl.Settings.wIndex = 4;
    model.userSettings = {SettingsRecord{}, slot};
    model.bUcf = true;
    Install();
    EXPECT_TRUE(Defaults());
    EXPECT_EQ(BytesOf(dm.Settings), BytesOf(slot));
    EXPECT_THAT(BoxesShown(), IsEmpty());

    const Bytes ucf = model.Ucf();
    for (size_t n = 1; n < ucf.size(); ++n) {
        PutUcf(FirstBytes(ucf, n));
        EXPECT_TRUE(Defaults());
        EXPECT_EQ(BytesOf(dm.Settings), BytesOf(SettingsRecord{})) << n;
        EXPECT_THAT(BoxesShown(), ElementsAre(UCF_VERSION_ERROR)) << n;
    }
    for (const bool bEmpty : {true, false}) {
        bEmpty ? PutUcf({}) : kvp::PutAbsentFile(UcfPath());
        EXPECT_TRUE(Defaults());
        EXPECT_EQ(BytesOf(dm.Settings), BytesOf(freeSlot)) << bEmpty;
        EXPECT_THAT(BoxesShown(), IsEmpty()) << bEmpty;
    }
}

TEST_F(DefaultsTest, NothingIsWrittenUnlessBothFilesAreWhole)
{
    const DriverDevMode named = NamedRecord(u"KORVA One");
    const auto refused = [&] { return !Defaults() && BytesOf(dm) == BytesOf(named); };
    kvp::PutAbsentFile(CfgPath());
    EXPECT_TRUE(refused());
    EXPECT_THAT(BoxesShown(), ElementsAre(CFG_NOT_FOUND));
    const Bytes cfg = model.Cfg();
    for (size_t n = 0; n < cfg.size(); ++n) {
        PutCfg(FirstBytes(cfg, n));
        EXPECT_TRUE(refused()) << n;
    }
    PutCfg(cfg);
    const Bytes dat = model.Dat();
    for (size_t n = 0; n < dat.size(); ++n) {
        PutDat(FirstBytes(dat, n));
        EXPECT_TRUE(refused()) << n;
    }
    EXPECT_THAT(BoxesShown(), IsEmpty()) << "their versions are not looked at";
    kvp::PutAbsentFile(DatPath());
    EXPECT_TRUE(refused());
    EXPECT_THAT(BoxesShown(), ElementsAre(DAT_NOT_FOUND));

    model.header.wVersion = 1;
    model.wCfgVersion = 1;
    Install();
    EXPECT_TRUE(Defaults());
}

TEST_F(DefaultsTest, AFailingCallLeavesTheRecordOrFillsItWhole)
{
    model.bUcf = true;
    Install();
    ASSERT_TRUE(Defaults());
    const std::string whole = BytesOf(dm);
    for (const auto call : {kvp::Call::Read, kvp::Call::OpenFile}) {
        int nRefused = 0;
        WithEachFailure(call, [&](int) {
            if (Defaults()) {
                EXPECT_EQ(BytesOf(dm), whole);
            } else {
                ++nRefused;
                EXPECT_EQ(BytesOf(dm), BytesOf(NamedRecord(u"KORVA One")));
            }
        });
        EXPECT_GT(nRefused, 1);
    }
}
