// Loading a model's three files into the static block and into a caller's.
#include "tests/datafile/model_test.h"

#include <algorithm>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace
{

class LoaderTest : public ModelTest
{
  protected:
    // Every count and every table of the static block is that of a model.
    static void ExpectLoaded(const Model &expected)
    {
        const DatFile &dat = UIInstance.dat;
        ExpectTable(dat.nPapers, dat.lpPapers, expected.papers);
        ExpectTable(dat.nBins, dat.lpBins, expected.bins);
        ExpectTable(dat.nResNames, dat.lpResNames, expected.resNames);
        ExpectTable(dat.nMedia, dat.lpMedia, expected.media);
        ExpectTable(dat.nAux, dat.lpAux, expected.aux);
        ExpectTable(dat.nRes, dat.lpRes, expected.resolutions);
        ExpectTable(dat.nMedRes, dat.lpMedRes, expected.rules);
        std::vector<SettingsRecord> fixed = expected.autoSettings;
        fixed.insert(fixed.end(), expected.presets.begin(), expected.presets.end());
        ExpectTable(dat.nAuto + dat.nPreset, dat.lpSettings, fixed);
        EXPECT_EQ(dat.nAuto, expected.autoSettings.size());
        EXPECT_EQ(dat.nPreset, expected.presets.size());
        EXPECT_EQ(dat.nSettings, fixed.size() + expected.wUserSlots);
        EXPECT_EQ(dat.CfgHeader.wUserPaperSlots, expected.wUserPaperSlots);
    }
    template <class Record>
    static void ExpectTable(uint32_t n, const std::vector<Record> &table,
                            const std::vector<Record> &expected)
    {
        EXPECT_EQ(n, expected.size());
        ASSERT_GE(table.size(), expected.size());
        EXPECT_EQ(BytesOf(table, expected.size()), BytesOf(expected, expected.size()));
    }
    // Whatever happened, nobody who goes by the counts can leave a table.
    static void ExpectCountsInsideTables()
    {
        const DatFile &dat = UIInstance.dat;
        EXPECT_LE(dat.nPapers, dat.lpPapers.size());
        EXPECT_LE(dat.nBins, dat.lpBins.size());
        EXPECT_LE(dat.nResNames, dat.lpResNames.size());
        EXPECT_LE(dat.nMedia, dat.lpMedia.size());
        EXPECT_LE(dat.nAux, dat.lpAux.size());
        EXPECT_LE(dat.nRes, dat.lpRes.size());
        EXPECT_LE(dat.nMedRes, dat.lpMedRes.size());
        EXPECT_LE(dat.nSettings, dat.lpSettings.size());
        EXPECT_LE(dat.CfgHeader.wUserPaperSlots, dat.lpUserPapers.size());
        EXPECT_LE(dat.nUserUsed + dat.nAuto + dat.nPreset, dat.nSettings);
        EXPECT_LE(dat.nUserPaperUsed, dat.lpUserPapers.size());
    }
    // Every user slot is free, as for a user without a file or with one of another version.
    static void ExpectFreeSlots(bool bOtherVersion)
    {
        const DatFile &dat = UIInstance.dat;
        for (size_t i = 3; i < 6; ++i) {
            SettingsRecord slot{};
            slot.wIndex = static_cast<uint16_t>(i);
            slot.wAutoLabel = -1;
            slot.wState = 3;
            EXPECT_EQ(BytesOf(dat.lpSettings[i]), BytesOf(slot)) << i;
        }
        for (size_t i = 0; i < 4; ++i) {
            UserPaperRecord slot{};
            slot.paper = dat.lpPapers[2];
            slot.paper.wId = static_cast<int16_t>(bOtherVersion ? 256 : 768 + i);
            slot.wMark = bOtherVersion ? 0 : 0xFFFF;
            slot.wState = 3;
            EXPECT_EQ(BytesOf(dat.lpUserPapers[i]), BytesOf(slot)) << i;
        }
        EXPECT_EQ(dat.nUserUsed, 0u);
        EXPECT_EQ(dat.nUserPaperUsed, 0u);
    }
};

// A model whose every table is longer than the small one's.
Model LargeModel()
{
    Model large;
    for (int i = 0; i < 20; ++i) {
        large.papers.push_back(large.papers[0]);
        large.bins.push_back(large.bins[0]);
        large.resNames.push_back(static_cast<int16_t>(40 + i));
        large.media.push_back({static_cast<int16_t>(500 + i), static_cast<int16_t>(2 + i)});
        large.aux.push_back({{9, 9, 9}});
        large.resolutions.push_back(large.resolutions[1]);
        large.rules.push_back(large.rules[3]);
        large.autoSettings.push_back(large.autoSettings[1]);
    }
    large.wUserSlots = 30;
    large.wUserPaperSlots = 25;
    return large;
}

SettingsRecord UserSetting(uint16_t state)
{
    SettingsRecord setting{};
    setting.wState = state;
    return setting;
}

} // namespace

TEST_F(LoaderTest, EveryTableStandsWithItsCount)
{
    model.AddUserPaper("Card", 850, 550, 2, 1);
    model.userSettings = {UserSetting(2)};
    Install();
    ASSERT_TRUE(Get_DATFile(&dm));
    ExpectLoaded(model);
    EXPECT_EQ(BytesOf(UIInstance.dat.lpSettings[3]), BytesOf(model.userSettings[0]));
    EXPECT_EQ(BytesOf(UIInstance.dat.lpUserPapers[0]), BytesOf(model.userPapers[0]));
    EXPECT_EQ(UIInstance.dat.lpDatHeader->wMWCount, 1);
    EXPECT_THAT(BoxesShown(), IsEmpty());
    EXPECT_TRUE(NothingHeld());
    EXPECT_TRUE(Free_DATFile(&dm));
    EXPECT_TRUE(UIInstance.dat.lpPapers.empty());
    EXPECT_EQ(UIInstance.dat.lpDatHeader, nullptr);
    ExpectCountsInsideTables();
}

TEST_F(LoaderTest, EmptyTablesLeaveTheFollowingOnesInPlace)
{
    model.bins.clear();
    model.aux.clear();
    model.wUserSlots = 0;
    model.wUserPaperSlots = 0;
    model.bUcf = true;
    ASSERT_EQ(model.Ucf().size(), 2u);
    Install();
    ASSERT_TRUE(Get_DATFile(&dm));
    ExpectLoaded(model);
    EXPECT_THAT(BoxesShown(), IsEmpty());
}

TEST_F(LoaderTest, EachFileThatCannotServeIsNamed)
{
    static const struct {
        const char *why;
        void (*spoil)(LoaderTest *);
        BOOL bLoaded;
        Messages messages;
    } aRows[] = {
        {"no .dat", [](LoaderTest *) { kvp::PutAbsentFile(DatPath()); }, FALSE, {DAT_NOT_FOUND}},
        {"no .cfg", [](LoaderTest *) { kvp::PutAbsentFile(CfgPath()); }, FALSE, {CFG_NOT_FOUND}},
        {"no .ucf", [](LoaderTest *) { kvp::PutAbsentFile(UcfPath()); }, TRUE, {}},
        {"another .dat, and no .cfg",
         [](LoaderTest *test) {
             test->model.header.wVersion = 257;
             test->Install();
             kvp::PutAbsentFile(CfgPath());
         },
         FALSE,
         {DAT_VERSION_ERROR}},
        {"another .cfg",
         [](LoaderTest *test) {
             test->model.wCfgVersion = 0x0001;
             test->Install();
         },
         FALSE,
         {CFG_VERSION_ERROR}},
        {"another .ucf",
         [](LoaderTest *test) {
             test->model.wUcfVersion = 255;
             test->Install();
         },
         TRUE,
         {UCF_VERSION_ERROR}},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        model = Model();
        model.bUcf = true;
        Install();
        row.spoil(this);
        EXPECT_EQ(Get_DATFile(&dm), row.bLoaded);
        EXPECT_EQ(BoxesShown(), row.messages);
        EXPECT_TRUE(NothingHeld());
        ExpectCountsInsideTables();
        Free_DATFile(&dm);
    }
}

TEST_F(LoaderTest, AFileShorterThanItsHeaderSaysIsOneOfAnotherVersion)
{
    const Bytes dat = model.Dat();
    const Bytes cfg = model.Cfg();
    Install();
    for (size_t n = 0; n < dat.size(); ++n) {
        SCOPED_TRACE(n);
        PutDat(FirstBytes(dat, n));
        EXPECT_FALSE(Get_DATFile(&dm));
        EXPECT_THAT(BoxesShown(), ElementsAre(DAT_VERSION_ERROR));
    }
    PutDat(dat);
    for (size_t n = 0; n < cfg.size(); ++n) {
        SCOPED_TRACE(n);
        PutCfg(FirstBytes(cfg, n));
        EXPECT_FALSE(Get_DATFile(&dm));
        EXPECT_THAT(BoxesShown(), ElementsAre(CFG_VERSION_ERROR));
        ExpectCountsInsideTables();
    }
}

TEST_F(LoaderTest, AShortUserFileFreesTheSlotsAndTheLoadGoesOn)
{
    model.AddUserPaper("Card", 850, 550, 2, 1);
    model.userSettings = {UserSetting(2)};
    Install();
    const Bytes ucf = model.Ucf();
    for (size_t n = 0; n < ucf.size(); ++n) {
        SCOPED_TRACE(n);
        PutUcf(FirstBytes(ucf, n));
        EXPECT_TRUE(Get_DATFile(&dm));
        // An empty one is as good as none.
        EXPECT_EQ(BoxesShown(), std::vector<std::string>(n > 0 ? 1 : 0, UCF_VERSION_ERROR));
        ExpectFreeSlots(n > 0);
        Free_DATFile(&dm);
    }
}

TEST_F(LoaderTest, LongerFilesAreAsGood)
{
    model.bUcf = true;
    Install();
    const auto longer = [](Bytes bytes) {
        bytes.insert(bytes.end(), 100, 0xEE);
        return bytes;
    };
    PutDat(longer(model.Dat()));
    PutCfg(longer(model.Cfg()));
    PutUcf(longer(model.Ucf()));
    EXPECT_TRUE(Get_DATFile(&dm));
    EXPECT_THAT(BoxesShown(), IsEmpty());
    ExpectLoaded(model);
}

TEST_F(LoaderTest, AHeaderThatClaimsFullTablesAllocatesNone)
{
    Install();
    Bytes bytes(1000, 0xFF);
    const uint16_t wVersion = 256;
    std::memcpy(bytes.data() + 2, &wVersion, 2);
    PutDat(bytes);
    EXPECT_FALSE(Get_DATFile(&dm));
    EXPECT_TRUE(UIInstance.dat.lpPapers.empty());
    ExpectCountsInsideTables();
    PutDat(model.Dat());
    std::memcpy(bytes.data(), &wVersion, 2);
    PutCfg(bytes);
    EXPECT_FALSE(Get_DATFile(&dm));
    EXPECT_TRUE(UIInstance.dat.lpSettings.empty());
    EXPECT_THAT(BoxesShown(), ElementsAre(DAT_VERSION_ERROR, CFG_VERSION_ERROR));
}

TEST_F(LoaderTest, SlotsWithoutAFileAreNumberedAndOfAnotherVersionAreNot)
{
    model.AddUserPaper("Card", 850, 550, 2, 1);
    for (const bool bOtherVersion : {false, true}) {
        SCOPED_TRACE(bOtherVersion);
        model.bUcf = bOtherVersion;
        model.wUcfVersion = 512;
        Install();
        ASSERT_TRUE(Get_DATFile(&dm));
        ExpectFreeSlots(bOtherVersion);
        Free_DATFile(&dm);
    }
}

TEST_F(LoaderTest, FreeSlotsAreMadeOfTheFirstUserDefinedPaperOrElseTheFirst)
{
    static const struct {
        const char *why;
        std::vector<int16_t> ids;
        int nSource; // the paper that the slots are copies of; -1: none
    } aRows[] = {
        {"the first of two", {9, 256, 256}, 1},
        {"none: the first paper", {9, 1, 11}, 0},
        {"no papers at all", {}, -1},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        model.papers.clear();
        for (size_t i = 0; i < row.ids.size(); ++i) {
            model.papers.push_back({});
            model.papers[i].wId = row.ids[i];
            model.papers[i].wMaxWidth = static_cast<int16_t>(1000 + i);
        }
        Install();
        ASSERT_TRUE(Get_DATFile(&dm));
        EXPECT_EQ(UIInstance.dat.lpUserPapers[1].paper.wMaxWidth,
                  row.nSource < 0 ? 0 : 1000 + row.nSource);
        EXPECT_EQ(UIInstance.dat.lpUserPapers[1].paper.wId, 769);
        Free_DATFile(&dm);
    }
}

TEST_F(LoaderTest, SlotsInUseAreCountedAcrossGaps)
{
    model.bUcf = true;
    model.userSettings = {UserSetting(3), UserSetting(2), UserSetting(2)};
    model.AddUserPaper("One", 1000, 1000, 1, 1);
    model.AddUserPaper("Two", 1000, 1000, 1, 1);
    model.AddUserPaper("Three", 1000, 1000, 1, 1);
    model.userPapers[0].wState = 3;
    Install();
    ASSERT_TRUE(Get_DATFile(&dm));
    EXPECT_EQ(UIInstance.dat.nUserUsed, 2u);
    EXPECT_EQ(UIInstance.dat.nUserPaperUsed, 2u);
}

TEST_F(LoaderTest, BuffersOfAnotherModelServeInBothDirections)
{
    const Model large = LargeModel();
    large.Install("KV2");
    Install();
    const DriverDevMode dmLarge = NamedRecord(u"KORVA Two");
    ASSERT_TRUE(Get_DATFile(&dm));
    ASSERT_TRUE(Get_DATFile(&dmLarge));
    ExpectLoaded(large);
    ASSERT_TRUE(Get_DATFile(&dm));
    ExpectLoaded(model);
    ExpectCountsInsideTables();
    EXPECT_EQ(UIInstance.dat.nUserUsed, 0u);
    ASSERT_TRUE(Get_DATFile(&dmLarge));
    ExpectLoaded(large);
}

TEST_F(LoaderTest, AFailureHalfwayLeavesConsistentTablesForTheNextLoad)
{
    const Model large = LargeModel();
    large.Install("KV2");
    Install();
    const DriverDevMode dmLarge = NamedRecord(u"KORVA Two");
    ASSERT_TRUE(Get_DATFile(&dm));
    kvp::PutAbsentFile(std::string(WINDOWS_DIR) + "KV2.cfg");
    EXPECT_FALSE(Get_DATFile(&dmLarge));
    EXPECT_EQ(UIInstance.dat.nPapers, 23u);
    ExpectCountsInsideTables();
    EXPECT_TRUE(Get_DATFile(&dm));
    ExpectLoaded(model);
}

TEST_F(LoaderTest, ABlockOfTheCallersLeavesTheStaticOneAlone)
{
    Install();
    LargeModel().Install("KV2");
    const DriverDevMode dmLarge = NamedRecord(u"KORVA Two");
    ASSERT_TRUE(Get_DATFile(&dm));
    DatFile block{};
    ASSERT_TRUE(Get_DatFileLib(&dmLarge, &block));
    EXPECT_EQ(block.nPapers, 23u);
    EXPECT_EQ(block.CfgHeader.wUserPaperSlots, 25);
    ExpectLoaded(model);
    EXPECT_TRUE(Free_DatFileLib(&dmLarge, &block));
    EXPECT_TRUE(block.lpPapers.empty() && block.lpUserPapers.empty());
    ExpectLoaded(model);
}

TEST_F(LoaderTest, AFailingReadIsAShortFile)
{
    model.AddUserPaper("Card", 850, 550, 2, 1);
    Install();
    int nRefused = 0, nSlotsFreed = 0;
    const int nFailures = WithEachFailure(kvp::Call::Read, [&](int) {
        const BOOL bLoaded = Get_DATFile(&dm);
        const Messages messages = BoxesShown();
        ExpectCountsInsideTables();
        if (!bLoaded) {
            ++nRefused;
            ASSERT_EQ(messages.size(), 1u);
            EXPECT_TRUE(messages[0] == DAT_VERSION_ERROR || messages[0] == CFG_VERSION_ERROR);
        } else if (!messages.empty()) {
            ++nSlotsFreed;
            EXPECT_THAT(messages, ElementsAre(UCF_VERSION_ERROR));
            ExpectFreeSlots(true);
        } else {
            ExpectLoaded(model);
        }
        Free_DATFile(&dm);
    });
    EXPECT_EQ(nRefused + nSlotsFreed, nFailures);
    EXPECT_GT(nRefused, 0);
    EXPECT_GT(nSlotsFreed, 0);
}

TEST_F(LoaderTest, WhatCouldNotBeReadIsNotAnotherModels)
{
    Model large = LargeModel();
    large.resNames[0] = 80;
    large.Install("KV2");
    model.resNames[0] = 70;
    Install();
    const DriverDevMode dmLarge = NamedRecord(u"KORVA Two");
    int nZero = 0;
    for (int n = 0; n < 12; ++n) {
        ASSERT_TRUE(Get_DATFile(&dmLarge));
        kvp::FailCall(kvp::Call::Read, n);
        Get_DATFile(&dm);
        const int16_t sName = UIInstance.dat.lpResNames[0];
        EXPECT_EQ(sName == 80, UIInstance.dat.nPapers == 23) << n; // not even the header was taken
        nZero += sName == 0;
    }
    EXPECT_GT(nZero, 0);
}

TEST_F(LoaderTest, AFileThatDoesNotOpenIsNamedButForTheUsersOwn)
{
    static const struct {
        const char *why;
        int nOpen; // the one that fails
        BOOL bLoaded;
        Messages messages;
        DWORD nSlots; // in use afterwards
    } aRows[] = {
        {"the .dat", 0, FALSE, {DAT_NOT_FOUND}, 1},
        {"the .cfg", 1, FALSE, {CFG_NOT_FOUND}, 1},
        {"the .ucf does not even seem to exist", 2, TRUE, {}, 0},
        {"the .ucf exists: slots stay what they were", 3, TRUE, {}, 1},
    };
    model.AddUserPaper("Card", 850, 550, 2, 1);
    Install();
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        ASSERT_TRUE(Get_DATFile(&dm));
        kvp::FailCall(kvp::Call::OpenFile, row.nOpen);
        EXPECT_EQ(Get_DATFile(&dm), row.bLoaded);
        EXPECT_EQ(BoxesShown(), row.messages);
        EXPECT_EQ(UIInstance.dat.nUserPaperUsed, row.nSlots);
        EXPECT_TRUE(NothingHeld());
    }
}
