// Loading a model's three files into the static block and into a caller's.
#include "tests/datafile/model_test.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace
{

class LoaderTest : public ModelTest
{
  protected:
    const DriverDevMode dmLarge = NamedRecord(u"KORVA Two");

    // visit(count, table, table of the model) for every table of the static block but the user's.
    template <class Visit>
    static void EachTable(const Model &of, Visit visit)
    {
        const DatFile &dat = UIInstance.dat;
        visit(dat.nPapers, dat.lpPapers, of.papers);
        visit(dat.nBins, dat.lpBins, of.bins);
        visit(dat.nResNames, dat.lpResNames, of.resNames);
        visit(dat.nMedia, dat.lpMedia, of.media);
        visit(dat.nAux, dat.lpAux, of.aux);
        visit(dat.nRes, dat.lpRes, of.resolutions);
        visit(dat.nMedRes, dat.lpMedRes, of.rules);
        std::vector<SettingsRecord> fixed = of.autoSettings;
        fixed.insert(fixed.end(), of.presets.begin(), of.presets.end());
        visit(dat.nAuto + dat.nPreset, dat.lpSettings, fixed);
    }
    static void ExpectLoaded(const Model &expected)
    {
        EachTable(expected, [](size_t n, const auto &table, const auto &records) {
            ASSERT_EQ(n, records.size());
            ASSERT_LE(n, table.size());
            EXPECT_EQ(BytesOf(table, n), BytesOf(records, n));
        });
        const DatFile &dat = UIInstance.dat;
        EXPECT_EQ(dat.nAuto, expected.autoSettings.size());
        EXPECT_EQ(dat.nSettings, dat.nAuto + dat.nPreset + expected.wUserSlots);
        EXPECT_EQ(dat.CfgHeader.wUserPaperSlots, expected.wUserPaperSlots);
    }
    // Whatever happened, nobody who goes by the counts can leave a table.
    static void ExpectCountsInsideTables()
    {
        const DatFile &dat = UIInstance.dat;
        EachTable({},
                  [](size_t n, const auto &table, const auto &) { EXPECT_LE(n, table.size()); });
        EXPECT_LE(dat.nSettings, dat.lpSettings.size());
        EXPECT_LE(dat.nUserUsed + dat.nAuto + dat.nPreset, dat.nSettings);
        EXPECT_LE(dat.CfgHeader.wUserPaperSlots, dat.lpUserPapers.size());
        EXPECT_LE(dat.nUserPaperUsed, dat.CfgHeader.wUserPaperSlots);
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
    const auto lengthen = [](auto &table) { table.resize(23, table.back()); };
    lengthen(large.papers);
    lengthen(large.bins);
    lengthen(large.resNames);
    lengthen(large.media);
    lengthen(large.aux);
    lengthen(large.resolutions);
    lengthen(large.rules);
    lengthen(large.autoSettings);
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
    model.wUserSlots = model.wUserPaperSlots = 0;
    model.bUcf = true; // of a version alone
    Install();
    ASSERT_TRUE(Get_DATFile(&dm));
    ExpectLoaded(model);
    EXPECT_THAT(BoxesShown(), IsEmpty());
}

TEST_F(LoaderTest, EachFileThatCannotServeIsNamed)
{
    static const struct {
        const char *why;
        uint16_t wDat, wCfg, wUcf; // versions
        std::string strAbsent;
        BOOL bLoaded;
        Messages messages;
    } aRows[] = {
        {"no .dat", 256, 256, 256, DatPath(), FALSE, {DAT_NOT_FOUND}},
        {"no .cfg", 256, 256, 256, CfgPath(), FALSE, {CFG_NOT_FOUND}},
        {"no .ucf", 256, 256, 256, UcfPath(), TRUE, {}},
        {"another .dat, and no .cfg", 257, 256, 256, CfgPath(), FALSE, {DAT_VERSION_ERROR}},
        {"another .cfg", 256, 1, 256, "", FALSE, {CFG_VERSION_ERROR}},
        {"another .ucf", 256, 256, 255, "", TRUE, {UCF_VERSION_ERROR}},
    };
    model.bUcf = true;
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        model.header.wVersion = row.wDat;
        model.wCfgVersion = row.wCfg;
        model.wUcfVersion = row.wUcf;
        Install();
        if (!row.strAbsent.empty())
            kvp::PutAbsentFile(row.strAbsent);
        EXPECT_EQ(Get_DATFile(&dm), row.bLoaded);
        EXPECT_EQ(BoxesShown(), row.messages);
        EXPECT_TRUE(NothingHeld());
        ExpectCountsInsideTables();
        Free_DATFile(&dm);
    }
}

TEST_F(LoaderTest, AFileShorterThanItsHeaderSaysIsOneOfAnotherVersion)
{
    Install();
    const auto refused = [&](const Bytes &whole, void (ModelTest::*put)(const Bytes &),
                             const char *message) {
        for (size_t n = 0; n < whole.size(); ++n) {
            SCOPED_TRACE(n);
            (this->*put)(FirstBytes(whole, n));
            EXPECT_FALSE(Get_DATFile(&dm));
            EXPECT_THAT(BoxesShown(), ElementsAre(message));
            ExpectCountsInsideTables();
        }
        (this->*put)(whole);
    };
    refused(model.Dat(), &ModelTest::PutDat, DAT_VERSION_ERROR);
    refused(model.Cfg(), &ModelTest::PutCfg, CFG_VERSION_ERROR);
}

// A short user's file is one of another version, an empty one as good as none.
TEST_F(LoaderTest, SlotsWithoutAFileAreNumberedAndOfAnotherVersionAreNot)
{
    model.AddUserPaper("Card", 850, 550, 2, 1);
    model.userSettings = {UserSetting(2)};
    Install();
    model.wUcfVersion = 512;
    const Bytes other = model.Ucf();
    model.wUcfVersion = 256;
    const auto freed = [&](bool bOtherVersion) {
        EXPECT_TRUE(Get_DATFile(&dm));
        EXPECT_EQ(BoxesShown(), Messages(bOtherVersion ? 1 : 0, UCF_VERSION_ERROR));
        ExpectFreeSlots(bOtherVersion);
        Free_DATFile(&dm);
    };
    kvp::PutAbsentFile(UcfPath());
    freed(false);
    PutUcf(other);
    freed(true);
    const Bytes whole = model.Ucf();
    for (size_t n = 0; n < whole.size(); ++n) {
        SCOPED_TRACE(n);
        PutUcf(FirstBytes(whole, n));
        freed(n > 0);
    }
}

TEST_F(LoaderTest, LongerFilesAreAsGood)
{
    model.bUcf = true;
    const auto longer = [](Bytes bytes) {
        bytes.resize(bytes.size() + 100, 0xEE);
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

TEST_F(LoaderTest, FreeSlotsAreMadeOfTheFirstUserDefinedPaperOrElseTheFirst)
{
    static const struct {
        std::vector<int16_t> ids;
        int nMaxWidth; // 1000 and the place of the paper that the slots are copies of
    } aRows[] = {{{9, 256, 256}, 1001}, {{9, 1, 11}, 1000}, {{}, 0}};
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.ids.size());
        model.papers.resize(row.ids.size());
        for (size_t i = 0; i < row.ids.size(); ++i) {
            model.papers[i].wId = row.ids[i];
            model.papers[i].wMaxWidth = static_cast<int16_t>(1000 + i);
        }
        Install();
        ASSERT_TRUE(Get_DATFile(&dm));
        EXPECT_EQ(UIInstance.dat.lpUserPapers[1].paper.wMaxWidth, row.nMaxWidth);
        EXPECT_EQ(UIInstance.dat.lpUserPapers[1].paper.wId, 769);
        Free_DATFile(&dm);
    }
}

TEST_F(LoaderTest, SlotsInUseAreCountedAcrossGaps)
{
    model.bUcf = true;
    model.userSettings = {UserSetting(3), UserSetting(2), UserSetting(2)};
    for (const char *name : {"One", "Two", "Three"})
        model.AddUserPaper(name, 1000, 1000, 1, 1);
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
    ASSERT_TRUE(Get_DATFile(&dm));
    ASSERT_TRUE(Get_DATFile(&dmLarge));
    ExpectLoaded(large);
    ASSERT_TRUE(Get_DATFile(&dm));
    ExpectLoaded(model);
    ExpectCountsInsideTables();
    EXPECT_EQ(UIInstance.dat.nUserUsed, 0u);
    kvp::PutAbsentFile(std::string(WINDOWS_DIR) + "KV2.cfg");
    EXPECT_FALSE(Get_DATFile(&dmLarge)) << "halfway";
    EXPECT_EQ(UIInstance.dat.nPapers, 23u);
    ExpectCountsInsideTables();
    ASSERT_TRUE(Get_DATFile(&dm));
    ExpectLoaded(model);
}

TEST_F(LoaderTest, ABlockOfTheCallersLeavesTheStaticOneAlone)
{
    Install();
    LargeModel().Install("KV2");
    ASSERT_TRUE(Get_DATFile(&dm));
    DatFile block{};
    ASSERT_TRUE(Get_DatFileLib(&dmLarge, &block));
    EXPECT_EQ(block.nPapers, 23u);
    EXPECT_EQ(block.CfgHeader.wUserPaperSlots, 25);
    EXPECT_TRUE(Free_DatFileLib(&dmLarge, &block));
    EXPECT_TRUE(block.lpPapers.empty() && block.lpUserPapers.empty());
    ExpectLoaded(model);
}

// What could not be read is zero: nothing is left of the model that was loaded before.
TEST_F(LoaderTest, AFailingReadIsAShortFile)
{
    Model large = LargeModel();
    large.resNames[0] = 80;
    large.Install("KV2");
    model.resNames[0] = 70;
    model.AddUserPaper("Card", 850, 550, 2, 1);
    Install();
    int nRefused = 0, nZero = 0, nSlotsFreed = 0;
    const int nFailures = WithEachFailure(kvp::Call::Read, [&](int n) {
        kvp::FailCall(kvp::Call::Read, -1);
        Get_DATFile(&dmLarge);
        kvp::FailCall(kvp::Call::Read, n);
        const BOOL bLoaded = Get_DATFile(&dm);
        const Messages messages = BoxesShown();
        const int16_t sName = UIInstance.dat.lpResNames[0];
        nZero += sName == 0;
        EXPECT_EQ(sName == 80, UIInstance.dat.nPapers == 23) << "not even the header was taken";
        ExpectCountsInsideTables();
        if (!bLoaded) {
            ++nRefused;
            EXPECT_TRUE(messages == Messages{DAT_VERSION_ERROR} ||
                        messages == Messages{CFG_VERSION_ERROR});
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
    EXPECT_TRUE(nRefused > 0 && nSlotsFreed > 0 && nZero > 0);
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
