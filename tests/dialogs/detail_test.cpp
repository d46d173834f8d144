// More Settings by itself: the samples' dialog and texts, on tables made here or those of a sample.
#include <array>
#include <cstring>
#include <random>

#include <gmock/gmock.h>

#include "base/text.h"
#include "datafile/tables.h"
#include "dialogs/dial_ext.h"
#include "dialogs/pages.h"
#include "dialogs/rules.h"
#include "dialogs/settings_table.h"
#include "resources/detail_ids.h"
#include "resources/pictures.h"
#include "tests/support/samples.h"

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// Numbers of names in the large sample's texts.
constexpr int16_t R180 = 0, DRAFT = 1, R720 = 2, R1440 = 3, R360 = 4, UNNAMED = 9;
constexpr int16_t PLAIN = 0, COATED = 1, QUALITY = 2;
constexpr WORD HS1 = RES_HS_ON, HS0 = RES_HS_OFF, OPT1 = RES_OPT_ON, OPT0 = RES_OPT_OFF;

struct Res {
    int16_t sName, sMedia, sFD;
    WORD wFlags;
};
SettingsRecord Setting(uint16_t wInk, WORD wFlags = 0)
{
    SettingsRecord setting{};
    setting.wInk = wInk;
    setting.wFlags = wFlags;
    return setting;
}
std::string Click(int id)
{
    return "click " + std::to_string(id);
}
std::string Choose(int id, const char *text)
{
    return "choose " + std::to_string(id) + " \"" + text + '"';
}
std::string Type(int id, const std::string &text)
{
    return "type " + std::to_string(id) + " \"" + text + '"';
}
std::string Slide(int id, int n)
{
    return "slide " + std::to_string(id) + ' ' + std::to_string(n);
}
bool IsOn(int id)
{
    return Seen(id)["enabled"];
}
bool IsChecked(int id)
{
    return Seen(id)["checked"];
}

class Detail : public SampleTest
{
  protected:
    Detail()
    {
        UIInstance = UIINSTANCE{};
        UIInstance.hResLib = LoadLibraryA((std::string(DRIVER_DIR) + "KJ820UI.DLL").c_str());
        block.hResLib = UIInstance.hResLib;
        UIInstance.dat.lpDatHeader = std::make_unique<DatHeader>();
        UIInstance.dat.lpMedia = {{10, 0}, {20, 1}, {30, 2}};
        UIInstance.dat.lpResNames = {0, 1, 2, 3, 4, UNNAMED};
        UIInstance.dat.nMedia = 3;
        UIInstance.dat.nResNames = 5;
        BeCurrent(Setting(1));
    }
    ~Detail() override
    {
        FreeLibrary(UIInstance.hResLib);
        UIInstance = UIINSTANCE{};
    }
    // Resolutions with rules for both inks that leave everything to the user.
    void Make(const std::vector<Res> &resolutions)
    {
        DatFile &dat = UIInstance.dat;
        dat.lpRes.clear();
        dat.lpMedRes.clear();
        for (const Res &res : resolutions) {
            const auto n = static_cast<int16_t>(dat.lpRes.size());
            const auto nName = static_cast<int16_t>(res.sName == UNNAMED ? 5 : res.sName);
            dat.lpRes.push_back({n, res.sMedia, nName, res.sFD, 0, res.wFlags, 360, 360});
            for (int16_t ink = 0; ink < 2; ++ink)
                dat.lpMedRes.push_back(
                    {n, ink, static_cast<WORD>(100 + n), 0, 0, 0, 0, 15, 0, 0, 15});
        }
        Count();
    }
    void MakeSample()
    {
        ASSERT_EQ(ReadDatTables("KJ820PRO.dat", &UIInstance.dat), FileState::Read);
        ASSERT_EQ(ReadCfgTables("KJ820PRO.cfg", &UIInstance.dat), FileState::Read);
    }
    static void Count()
    {
        UIInstance.dat.nRes = static_cast<uint32_t>(UIInstance.dat.lpRes.size());
        UIInstance.dat.nMedRes = static_cast<uint32_t>(UIInstance.dat.lpMedRes.size());
    }
    static MedResRule &Rule(int nRes, int nInk = 1)
    {
        return UIInstance.dat.lpMedRes.at(static_cast<size_t>(2 * nRes + nInk));
    }
    static void DropRule(int16_t sRes, int16_t sInk)
    {
        std::erase_if(UIInstance.dat.lpMedRes,
                      [=](const auto &rule) { return rule.sRes == sRes && rule.sInk == sInk; });
        Count();
    }
    // Custom settings are edited.
    void BeCurrent(const SettingsRecord &settings)
    {
        dm.Settings = settings;
        dm.Settings.wIndex = KV_CUSTOM_SETTINGS;
        TakeRecord(&UIInstance, dm.Settings);
        UIInstance.nListState = UIInstance.nCurSetting = KV_CUSTOM_SETTINGS;
    }
    INT_PTR Run()
    {
        const INT_PTR nResult =
            DialogBoxParamA(UIInstance.hResLib, MAKEINTRESOURCEA(IDD_DETAIL), nullptr,
                            DetailDlgProc, reinterpret_cast<LPARAM>(&block));
        EXPECT_EQ(kvp::CurrentlyHeld().nBlocks, 0u);
        EXPECT_EQ(kvp::CurrentlyHeldGui().nObjects, 0u);
        return nResult;
    }
    INT_PTR Open(std::vector<Person::Step> steps)
    {
        person.Will(std::move(steps));
        const INT_PTR nResult = Run();
        person.ExpectDone();
        return nResult;
    }
    // The resolution that this leads to from another one.
    int16_t From(int16_t sRes, std::vector<Person::Step> steps)
    {
        dm.Settings.wResolution = sRes;
        steps.emplace_back("ok");
        EXPECT_EQ(Open(std::move(steps)), 1);
        EXPECT_EQ(UIInstance.nCurRes, dm.Settings.wResolution);
        return dm.Settings.wResolution;
    }

    DriverDevMode dm{};
    CBSTRUC block{&dm, &UIInstance, nullptr, nullptr, nullptr};
};

// ---- colour adjustments ---------------------------------------------------------------------

TEST_F(Detail, WhatIsTypedBecomesANumberInItsBounds)
{
    const struct {
        const char *why;
        LONG lBefore;
        const char *typed;
        LONG lValue;
        const char *shown;
        bool bMinus;
    } aRows[] = {
        {"a number", 0, "7", 7, "7", false},
        {"a minus before it", 0, "-7", -7, "7", true},
        {"a minus before two digits", 0, "-12", -12, "12", true},
        {"a minus behind it", 0, "5-", -5, "5", true},
        {"a plus takes the minus away", 0, "-5+", 5, "5", false},
        {"the last sign counts", -3, "+-4", -4, "4", true},
        {"without a sign the button's stays", -9, "4", -4, "4", true},
        {"above the limit", 0, "30", 25, "25", false},
        {"below the limit", 0, "-26", -25, "25", true},
        {"a third digit is refused", 0, "123", 12, "12", false},
        {"also of a negative number", 0, "-123", -12, "12", true},
        {"what is no digit is removed", 0, "1x2", 12, "12", false},
        {"a digit behind a 0", 0, "05", 5, "5", false},
        {"nothing", 9, "", 0, "0", false},
        {"nothing keeps the minus", -9, "", 0, "0", true},
        {"a minus alone", 0, "-", 0, "0", true},
        {"a minus alone, twice", 0, "--", 0, "0", true},
        {"no digit at all", 8, "x", 0, "0", false},
    };
    Make({{R360, PLAIN, 0, 0}});
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        UIInstance.nAdjust[3] = row.lBefore;
        const auto look = [&] {
            EXPECT_EQ(SeenText(IDC_DETAIL_FIELD_3), row.shown);
            EXPECT_EQ(Seen(IDC_DETAIL_BAR_3)["position"], 25 + row.lValue);
            EXPECT_EQ(UIInstance.wAdjState[3], ROW_ENABLED | (row.bMinus ? ROW_NEGATIVE : 0));
        };
        EXPECT_EQ(Open({Type(IDC_DETAIL_FIELD_3, row.typed), look, "ok"}), 1);
        EXPECT_EQ(UIInstance.nAdjust[3], row.lValue);
    }
}

TEST_F(Detail, TheTrackbarAndTheSignButtonChangeTheNumberToo)
{
    Make({{R360, PLAIN, 0, 0}});
    UIInstance.nAdjust[5] = -6;
    const auto shows = [](LONG lValue, const char *shown) {
        return [=] {
            EXPECT_EQ(UIInstance.nAdjust[5], lValue);
            EXPECT_EQ(SeenText(IDC_DETAIL_FIELD_5), shown);
            EXPECT_EQ(Seen(IDC_DETAIL_BAR_5)["position"], 25 + lValue);
        };
    };
    EXPECT_EQ(
        Open({shows(-6, "6"), Click(IDC_DETAIL_SIGN_5), shows(6, "6"), Slide(IDC_DETAIL_BAR_5, 3),
              shows(-22, "22"), Click(IDC_DETAIL_SIGN_5), shows(22, "22"),
              Slide(IDC_DETAIL_BAR_5, 25), shows(0, "0"), Click(IDC_DETAIL_SIGN_5), shows(0, "0"),
              [] { EXPECT_FALSE(UIInstance.wAdjState[5] & ROW_NEGATIVE); }, "ok"}),
        1);
}

// The minus is on the button, and only there, until its number comes; leaving the field drops it.
TEST_F(Detail, AMinusWaitsForItsNumberInTheField)
{
    Make({{R360, PLAIN, 0, 0}});
    const auto ink = [] {
        const RECT rc = ClientOf(IDC_DETAIL_SIGN_0);
        int nDark = 0;
        for (int y = 4; y < rc.bottom - 4; ++y)
            for (int x = 3; x < rc.right - 3; ++x)
                nDark += (PixelOf(IDC_DETAIL_SIGN_0, x, y) & 0xFF) < 0x80;
        return nDark;
    };
    int nPlus = 0, nMinus = 0;
    EXPECT_EQ(Open({[&] { nPlus = ink(); }, Type(IDC_DETAIL_FIELD_0, "-"),
                    [&] {
                        nMinus = ink();
                        EXPECT_LT(nMinus, nPlus);
                        EXPECT_EQ(UIInstance.nAdjust[0], 0) << "drawn, it is worth nothing";
                    },
                    "focus 5601", [&] { EXPECT_EQ(ink(), nPlus); }, "ok"}),
              1);
}

TEST_F(Detail, AMinusThatNobodyHasDrawnIsA0Outside)
{
    Make({{R360, PLAIN, 0, 0}});
    UIInstance.nAdjust[1] = ADJUST_MINUS;
    const auto typed = [] {
        EXPECT_EQ(SeenText(IDC_DETAIL_FIELD_1), "0");
        SetDlgItemTextA(kvp::TopWindow(), IDC_DETAIL_FIELD_1, "-"); // as typing, but not painted
        EXPECT_EQ(UIInstance.nAdjust[1], ADJUST_MINUS);
        SendMessageA(kvp::TopWindow(), WM_COMMAND, IDOK, 0);
    };
    EXPECT_EQ(Open({typed}), 1);
    EXPECT_EQ(UIInstance.nAdjust[1], 0);
}

TEST_F(Detail, InkAndIntentSayWhatCanBeAdjusted)
{
    const struct {
        const char *why;
        uint16_t wInk;
        uint8_t bIntent, b16;
        bool bIntents, bBrightness, bCyan;
        LONG lKept;
    } aRows[] = {
        {"colour", 1, 0, 0, true, true, true, -5},
        {"colour without adjustment", 1, 3, 0, true, false, false, 0},
        {"the same, also where b16 is set", 1, 3, 1, true, false, false, 0},
        {"black", 0, 0, 0, false, true, false, -5},
        {"black, whatever the intent", 0, 3, 1, false, true, false, -5},
    };
    Make({{R360, PLAIN, 0, 0}});
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        BeCurrent(Setting(row.wInk));
        dm.Settings.b16 = row.b16;
        dm.Settings.bIntent = row.bIntent;
        std::ranges::fill(UIInstance.nAdjust, -5);
        UIInstance.nIntent = 7;
        const auto look = [&] {
            for (const int id : {IDC_DETAIL_INTENT_LABEL, IDC_DETAIL_INTENT})
                EXPECT_EQ(IsOn(id), row.bIntents) << id;
            for (const auto &[k, bOn] : {std::pair(1, row.bBrightness), std::pair(3, row.bCyan)}) {
                const ColorRow &r = aColorRows[k];
                for (const int id : {r.idLabel, r.idField, r.idSign, r.idBar})
                    EXPECT_EQ(IsOn(id), bOn) << id;
                EXPECT_EQ((UIInstance.wAdjState[k] & ROW_ENABLED) != 0, bOn);
                EXPECT_EQ(PixelOf(r.idSign, 6, 3), bOn ? RGB(255, 255, 255) : RGB(192, 192, 192));
            }
            EXPECT_EQ(UIInstance.nAdjust[4], row.lKept);
            EXPECT_EQ(UIInstance.nIntent, row.b16 ? 7 : row.bIntent);
        };
        EXPECT_EQ(Open({look, "cancel"}), 0);
    }
}

TEST_F(Detail, TheIntentWithoutAdjustmentClearsThem)
{
    Make({{R360, PLAIN, 0, 0}});
    std::ranges::fill(UIInstance.nAdjust, 9);
    EXPECT_EQ(
        Open({Choose(IDC_DETAIL_INTENT, "No Color Adjustment"),
              [] {
                  EXPECT_FALSE(IsOn(IDC_DETAIL_FIELD_2));
                  EXPECT_EQ(SeenText(IDC_DETAIL_FIELD_2), "0");
                  EXPECT_EQ(Seen(IDC_DETAIL_BAR_2)["position"], 25);
              },
              Choose(IDC_DETAIL_INTENT, "Vivid"), [] { EXPECT_TRUE(IsOn(IDC_DETAIL_FIELD_2)); },
              Choose(IDC_DETAIL_INTENT, "Charts and Graphs"), "ok"}),
        1);
    EXPECT_EQ(dm.Settings.bIntent, 2);
    EXPECT_EQ(UIInstance.nIntent, 2);
    EXPECT_THAT(UIInstance.nAdjust, ElementsAre(0, 0, 0, 0, 0, 0));
}

// ---- the search for a resolution --------------------------------------------------------------

TEST_F(Detail, AResolutionIsFoundByNameInkAndMedia)
{
    Make({{R180, PLAIN, 0, 0},
          {R720, QUALITY, 0, 0},
          {R720, COATED, 0, OPT1},
          {R720, PLAIN, 0, OPT0},
          {R720, COATED, 0, 0},
          {R360, COATED, 0, 0},
          {R360, PLAIN, 0, 0},
          {DRAFT, QUALITY, 0, 0},
          {DRAFT, PLAIN, 0, 0}});
    const std::string strFine = Choose(IDC_DETAIL_RESOLUTION, "Fine - 720 dpi"),
                      strDraft = Choose(IDC_DETAIL_RESOLUTION, "Draft - 360 dpi");
    EXPECT_EQ(From(5, {strFine}), 2) << "the first of both names";
    EXPECT_EQ(From(6, {strFine}), 3);
    EXPECT_EQ(From(5, {strDraft}), 7) << "not of the media: the first of the name";
    EXPECT_EQ(From(5, {Choose(IDC_DETAIL_RESOLUTION, "SuperFine - 1440 dpi")}), 0) << "of nothing";
    DropRule(7, 1);
    EXPECT_EQ(From(5, {strDraft}), 8) << "the first that takes the ink";
    DropRule(8, 1);
    EXPECT_EQ(From(6, {strDraft}), 7) << "the media is no help where the ink is wrong";
}

TEST_F(Detail, AMediaKeepsTheResolutionsName)
{
    Make(
        {{R720, COATED, 0, 0}, {R360, PLAIN, 0, 0}, {R360, COATED, 0, OPT1}, {R360, COATED, 0, 0}});
    dm.Settings.wMedia = 77;
    const std::string strCoated = Choose(IDC_DETAIL_MEDIA, "360 dpi Ink Jet Paper");
    EXPECT_EQ(From(1, {strCoated}), 2);
    EXPECT_EQ(dm.Settings.wMedia, COATED);
    // Names by number in the list, by position in the search: no record has the name chosen.
    UIInstance.dat.lpMedia = {{10, 2}, {20, 0}, {30, 1}};
    UIInstance.dat.lpRes[0].wMedia = QUALITY;
    EXPECT_EQ(From(1, {strCoated}), 0) << "the first of the media, by position";
    EXPECT_EQ(dm.Settings.wMedia, QUALITY);
}

TEST_F(Detail, TheMediaThatStandsAlreadyChangesNothing)
{
    Make({{R360, PLAIN, 0, 0}, {R360, PLAIN, 0, 0}});
    dm.Settings.wMedia = 77;
    EXPECT_EQ(From(1, {Choose(IDC_DETAIL_MEDIA, "Plain Paper")}), 1);
    EXPECT_EQ(dm.Settings.wMedia, 77);
}

// Each table is searched from its first resolution.
TEST_F(Detail, AnOptionsBoxFindsTheVariant)
{
    const Res start{R720, COATED, 0, HS0 | OPT0}, fd{R720, COATED, 1, HS0 | OPT0};
    const struct {
        const char *why;
        int idBox;
        std::vector<Res> table;
        int16_t sFound;
    } aRows[] = {
        {"the twin", IDC_DETAIL_MW_OPTION, {start, {R720, COATED, 0, HS0 | OPT1}}, 1},
        {"no twin", IDC_DETAIL_MW_OPTION, {start, {R720, COATED, 0, HS1 | OPT0}}, 0},
        {"only one that differs in the other option too",
         IDC_DETAIL_MW_OPTION,
         {start, {R720, COATED, 0, HS1 | OPT0}, {R720, COATED, 0, HS1 | OPT1}},
         2},
        {"rather one that doesn't",
         IDC_DETAIL_MW_OPTION,
         {start, {R720, COATED, 0, HS1 | OPT1}, {R720, COATED, 0, HS0 | OPT1}},
         2},
        {"a media's before an option's",
         IDC_DETAIL_MW_OPTION,
         {start, {R720, PLAIN, 0, OPT1}, {R360, COATED, 0, OPT1}},
         2},
        {"an option's alone",
         IDC_DETAIL_MW_OPTION,
         {start, {R720, PLAIN, 0, OPT1}, {R360, PLAIN, 0, OPT1}},
         1},
        {"FD stays off",
         IDC_DETAIL_MW_OPTION,
         {start, {R720, COATED, 1, HS0 | OPT1}, {R720, COATED, 0, HS1 | OPT1}},
         2},
        {"FD stays on",
         IDC_DETAIL_HS,
         {fd, {R720, COATED, 0, HS1 | OPT0}, {R720, COATED, 1, HS1 | OPT1}},
         2},
        {"where it must, FD changes", IDC_DETAIL_HS, {fd, {R720, COATED, 0, HS1 | OPT0}}, 1},
        {"the HS twin",
         IDC_DETAIL_HS,
         {start, {R720, COATED, 0, HS1 | OPT1}, {R720, COATED, 0, HS1 | OPT0}},
         2},
        {"HS off at once is none", IDC_DETAIL_HS, {start, {R720, COATED, 0, HS0 | HS1}}, 0},
        {"the FD twin",
         IDC_DETAIL_FD,
         {start, {R720, COATED, 1, HS1 | OPT0}, {R720, COATED, 1, HS0 | OPT0}},
         2},
        {"the first with FD of both names",
         IDC_DETAIL_FD,
         {start, {R720, PLAIN, 1, 0}, {R720, COATED, 1, HS1}, {R720, COATED, 1, HS1}},
         2},
        {"a state above 1 is no FD to look for", IDC_DETAIL_FD, {start, {R720, COATED, 2, 0}}, 0},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        Make(row.table);
        BeCurrent(Setting(1, KV_FLAG_MW));
        EXPECT_EQ(From(0, {Click(row.idBox)}), row.sFound);
    }
}

TEST_F(Detail, TheSearchForFDStartsFromTheFirstResolutionTheOthersFromTheCurrentOne)
{
    Make({{R180, PLAIN, 0, 0}, {R360, PLAIN, 0, 0}});
    BeCurrent(Setting(1, KV_FLAG_MW));
    EXPECT_EQ(From(1, {Click(IDC_DETAIL_HS), Click(IDC_DETAIL_MW_OPTION)}), 1);
    EXPECT_EQ(From(1, {Click(IDC_DETAIL_FD)}), 0);
}

// The current resolution has a flag beyond the variants, so none is exactly like it.
TEST_F(Detail, AnFDTwinIsSoughtByTheWholeFlagWord)
{
    Make({{R720, COATED, 0, 0x100}, {R720, COATED, 1, HS1}, {R720, COATED, 1, 0}});
    EXPECT_EQ(From(0, {Click(IDC_DETAIL_FD)}), 1);
    UIInstance.dat.lpRes[0].wFlags = 0;
    EXPECT_EQ(From(0, {Click(IDC_DETAIL_FD)}), 2);
}

TEST_F(Detail, SearchesTakePositionsANewInkTakesNumbers)
{
    Make({{R720, COATED, 0, 0}, {R720, PLAIN, 0, 0}, {R360, PLAIN, 0, 0}});
    UIInstance.dat.lpRes[1].wRes0 = 2;
    EXPECT_EQ(From(0, {Choose(IDC_DETAIL_MEDIA, "Plain Paper")}), 1);
    DropRule(0, 0);
    EXPECT_EQ(From(0, {Click(IDC_DETAIL_BLACK)}), 2);
}

TEST_F(Detail, OnlyAMediaIsWrittenAsTheRecordsMedia)
{
    Make({{R360, PLAIN, 0, 0}, {R720, COATED, 0, OPT1}, {R720, COATED, 1, HS1}});
    BeCurrent(Setting(1, KV_FLAG_MW));
    dm.Settings.wMedia = 77;
    EXPECT_EQ(From(0, {Choose(IDC_DETAIL_RESOLUTION, "Fine - 720 dpi")}), 1);
    EXPECT_EQ(From(0, {Click(IDC_DETAIL_MW_OPTION)}), 1);
    EXPECT_EQ(From(0, {Click(IDC_DETAIL_HS)}), 2);
    EXPECT_EQ(From(0, {Click(IDC_DETAIL_FD)}), 2);
    EXPECT_EQ(dm.Settings.wMedia, 77);
}

TEST_F(Detail, TheListsStayAfterAnOption)
{
    Make({{R360, PLAIN, 0, 0}, {R720, COATED, 1, OPT1 | HS1}});
    BeCurrent(Setting(1, KV_FLAG_MW));
    for (const int idBox : {IDC_DETAIL_MW_OPTION, IDC_DETAIL_HS, IDC_DETAIL_FD}) {
        const auto look = [] {
            EXPECT_THAT(SeenItems(IDC_DETAIL_MEDIA), ElementsAre("Plain Paper"));
            EXPECT_EQ(SeenText(IDC_DETAIL_RESOLUTION), "Normal - 360 dpi");
        };
        BeCurrent(Setting(1, KV_FLAG_MW));
        EXPECT_EQ(From(0, {Click(idBox), look}), 1);
    }
}

// ---- ink ------------------------------------------------------------------------------------

TEST_F(Detail, ANewInkBringsItsRecordItsResolutionAndItsPicture)
{
    Make({{R720, PLAIN, 0, 0}, {R360, PLAIN, 0, 0}, {R720, COATED, 0, 0}});
    DropRule(0, 0);
    EXPECT_EQ(
        From(0, {Click(IDC_DETAIL_COLOR),
                 [] { EXPECT_EQ(Seen(IDC_DETAIL_INK_PICTURE)["picture"], PICTURE_INK_COLOR); },
                 Click(IDC_DETAIL_BLACK),
                 [] {
                     EXPECT_EQ(Seen(IDC_DETAIL_INK_PICTURE)["picture"], PICTURE_INK_BLACK);
                     EXPECT_EQ(SeenText(IDC_DETAIL_MEDIA), "360 dpi Ink Jet Paper");
                     EXPECT_FALSE(IsOn(IDC_DETAIL_INTENT));
                 }}),
        2);
    EXPECT_EQ(dm.Settings.wInk, 0);
    EXPECT_EQ(dm.Settings.wInkCode, 3);
    EXPECT_EQ(dm.dm.dmColor, 1);
    EXPECT_EQ(dm.Settings.wRule, 102);
    EXPECT_EQ(From(2, {Click(IDC_DETAIL_BLACK), Click(IDC_DETAIL_COLOR)}), 2) << "it takes both";
    EXPECT_EQ(dm.Settings.wInk, 1);
    EXPECT_EQ(dm.Settings.wInkCode, 6);
    EXPECT_EQ(dm.dm.dmColor, 2);
}

TEST_F(Detail, ColorTakesTheMediaCodesButtonAwayForGood)
{
    Make({{R360, PLAIN, 0, 0}, {R720, QUALITY, 0, 0}});
    const auto sees = [](bool bOn) {
        return [bOn] { EXPECT_EQ(IsOn(IDC_DETAIL_MEDIA_CODE), bOn); };
    };
    dm.lMediaCode = 5;
    From(1, {Click(IDC_DETAIL_MEDIA_CODE), Click(IDC_DETAIL_BLACK), sees(true),
             Choose(IDC_DETAIL_HT, "Error Diffusion"), Click(IDC_DETAIL_COLOR), sees(true),
             Choose(IDC_DETAIL_HT, "None"), Click(IDC_DETAIL_BLACK), Click(IDC_DETAIL_COLOR),
             sees(false), Click(IDC_DETAIL_BLACK), Choose(IDC_DETAIL_HT, "Error Diffusion"),
             sees(false)});
    EXPECT_EQ(dm.lMediaCode, 30);
}

// ---- lists and options ------------------------------------------------------------------------

TEST_F(Detail, TheRuleSaysWhichHTChoicesThereAre)
{
    const struct {
        const char *why;
        uint8_t bAllowed, bHT;
        std::vector<std::string> items;
        uint8_t bTaken;
    } aRows[] = {
        {"all, in their order", 15, 2, {"None", "Coarse Dots", "Fine Dots", "Error Diffusion"}, 2},
        {"one that is not allowed: the last", 10, 2, {"None", "Coarse Dots"}, 1},
        {"the last bit is the last choice", 5, 0, {"Fine Dots", "Error Diffusion"}, 3},
        {"nothing is allowed: as it was", 0, 2, {}, 2},
    };
    Make({{R360, PLAIN, 0, 0}});
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        Rule(0).bHTAllowed = row.bAllowed;
        UIInstance.bHT = dm.Settings.bHT = row.bHT;
        const auto look = [&] {
            EXPECT_EQ(SeenItems(IDC_DETAIL_HT), row.items);
            EXPECT_EQ(Seen(IDC_DETAIL_HT_PICTURE)["picture"], PICTURE_HT + row.bTaken);
        };
        EXPECT_EQ(Open({look, "ok"}), 1);
        EXPECT_EQ(dm.Settings.bHT, row.bTaken);
        EXPECT_EQ(UIInstance.bHT, row.bTaken);
    }
}

TEST_F(Detail, AnIntentThatTheRuleLacksIsKeptAlthoughAnotherIsShown)
{
    Make({{R360, PLAIN, 0, 0}});
    Rule(0).sIntents = 12;
    EXPECT_EQ(Open({[] {
                        EXPECT_THAT(SeenItems(IDC_DETAIL_INTENT),
                                    ElementsAre("Charts and Graphs", "No Color Adjustment"));
                        EXPECT_EQ(SeenText(IDC_DETAIL_INTENT), "Charts and Graphs");
                    },
                    "ok"}),
              1);
    EXPECT_EQ(dm.Settings.bIntent, 0);
}

// An empty name begins every other one.
TEST_F(Detail, AListSelectsTheFirstNameThatBeginsAlike)
{
    Make({{UNNAMED, PLAIN, 0, 0}});
    EXPECT_EQ(
        Open({[] { EXPECT_EQ(SeenText(IDC_DETAIL_RESOLUTION), "Economy - 180 dpi"); }, "cancel"}),
        0);
}

TEST_F(Detail, HSFollowsItsRule)
{
    const struct {
        const char *why;
        int16_t sHS;
        bool bStored, bOpened, bChanged, bOpen;
    } aRows[] = {
        {"the user's choice, off", 0, false, false, false, true},
        {"the user's choice, on", 0, true, true, true, true},
        {"locked on", 1, false, true, true, false},
        {"locked off", 2, true, false, false, false},
        {"switched off by a change", 3, true, true, false, true},
        {"switched on by a change", 4, false, false, true, true},
    };
    Make({{R360, PLAIN, 0, 0}, {R720, PLAIN, 0, 0}});
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        Rule(0).sHS = Rule(1).sHS = row.sHS;
        const WORD wStored = row.bStored ? KV_FLAG_HS : 0;
        BeCurrent(Setting(1, wStored));
        const auto sees = [&](bool bChecked) {
            return [&row, bChecked] {
                EXPECT_EQ(IsChecked(IDC_DETAIL_HS), bChecked);
                EXPECT_EQ(IsOn(IDC_DETAIL_HS), row.bOpen);
            };
        };
        From(0, {sees(row.bOpened), Choose(IDC_DETAIL_RESOLUTION, "Fine - 720 dpi"),
                 sees(row.bChanged)});
        EXPECT_EQ((dm.Settings.wFlags & KV_FLAG_HS) != 0, row.bChanged);
        EXPECT_EQ(UIInstance.wFlags, dm.Settings.wFlags);
    }
}

TEST_F(Detail, FDFollowsItsRuleAndTheResolution)
{
    const struct {
        const char *why;
        int16_t sFD, sRes3;
        bool bChecked, bOpen;
    } aRows[] = {
        {"a resolution without", 0, 0, false, true},
        {"a resolution with", 0, 5, true, true},
        {"locked on", 1, 0, true, false},
        {"locked off", 2, 1, false, false},
        {"no such code: as the template has it", 7, 1, false, true},
    };
    for (const WORD wHidden : {0, 1})
        for (const auto &row : aRows) {
            SCOPED_TRACE(row.why);
            Make({{R360, PLAIN, row.sRes3, 0}});
            UIInstance.dat.lpDatHeader->wDat3 = wHidden;
            Rule(0).sFD = row.sFD;
            const auto look = [&] {
                EXPECT_EQ(IsChecked(IDC_DETAIL_FD), row.bChecked);
                EXPECT_EQ(IsOn(IDC_DETAIL_FD), row.bOpen);
                for (const int id : {IDC_DETAIL_FD, IDC_DETAIL_FD_LINE})
                    EXPECT_EQ(Seen(id)["visible"], wHidden != 1) << id;
            };
            EXPECT_EQ(Open({look, "cancel"}), 0);
        }
}

// A box that a rule would lock stays as the click left it: each is looked at by the other alone.
TEST_F(Detail, TheFDAndHSBoxesAreNotCheckedAfterTheirOwnClick)
{
    Make({{R360, PLAIN, 0, HS0}, {R360, PLAIN, 1, HS0}, {R360, PLAIN, 0, HS1}});
    Rule(1).sFD = Rule(2).sHS = RULE_OFF;
    EXPECT_EQ(From(0, {Click(IDC_DETAIL_FD), [] { EXPECT_TRUE(IsChecked(IDC_DETAIL_FD)); }}), 1);
    EXPECT_EQ(From(0, {Click(IDC_DETAIL_HS), [] { EXPECT_TRUE(IsChecked(IDC_DETAIL_HS)); }}), 2);
}

TEST_F(Detail, TheSecondMWOptionNeedsTheFirst)
{
    Make({{R360, PLAIN, 0, 0}});
    const auto sees = [](bool bOn) {
        return [bOn] { EXPECT_EQ(IsOn(IDC_DETAIL_MW_OPTION), bOn); };
    };
    BeCurrent(Setting(1, KV_FLAG_MW | KV_FLAG_OPT));
    From(0, {Click(IDC_DETAIL_MW), sees(false), Click(IDC_DETAIL_MW), sees(true),
             Click(IDC_DETAIL_MW_OPTION), Click(IDC_DETAIL_MW_OPTION)});
    EXPECT_EQ(dm.Settings.wFlags, KV_FLAG_MW | KV_FLAG_OPT);
    EXPECT_EQ(dm.Settings.wFlags2, KV_FLAG_MW | KV_FLAG_OPT);
    Rule(0).sMW = RULE_OFF; // only a click takes the second one away
    From(0, {sees(true), [] { EXPECT_FALSE(IsOn(IDC_DETAIL_MW)); }});
}

TEST_F(Detail, HSMakesWhatTheRecordAloneHasTheUsersChoice)
{
    Make({{R360, PLAIN, 0, 0}, {R720, PLAIN, 0, OPT1}});
    From(0, {Choose(IDC_DETAIL_RESOLUTION, "Fine - 720 dpi"),
             [] { EXPECT_TRUE(IsChecked(IDC_DETAIL_MW_OPTION)); }});
    EXPECT_EQ(UIInstance.wFlags, KV_FLAG_OPT);
}

// ---- the dialog as a whole ----------------------------------------------------------------------

TEST_F(Detail, EveryTrackbarLiesOverItsPlaceAndEveryPictureIsThere)
{
    Make({{R360, PLAIN, 0, 0}});
    EXPECT_EQ(Open({[] {
                        for (const ColorRow &row : aColorRows) {
                            RECT bar{}, place{};
                            GetWindowRect(Shown(row.idBar), &bar);
                            GetWindowRect(Shown(row.idPlace), &place);
                            EXPECT_EQ(std::memcmp(&bar, &place, sizeof bar), 0) << row.idBar;
                            EXPECT_FALSE(Seen(row.idPlace)["visible"]);
                            EXPECT_EQ(Seen(row.idBar)["range"], (std::array{0, 50}));
                        }
                        const auto window = nlohmann::json::parse(kvp::DescribeTopWindow());
                        for (const auto &control : window.at("controls"))
                            if (control["kind"] == "ownerdraw" &&
                                RowOf(control["id"], &ColorRow::idSign) < 0) {
                                EXPECT_NE(control.value("picture", PICTURE_FACE), PICTURE_FACE)
                                    << control["id"];
                            }
                    },
                    "cancel"}),
              0);
}

TEST_F(Detail, AJourneyThroughEveryControlEndsInTheRecord)
{
    MakeSample();
    SettingsRecord entry = UIInstance.dat.lpSettings.at(20);
    entry.wIndex = 20;
    entry.b16 = 0;
    BeCurrent(UIInstance.dat.lpSettings.at(0));
    dm.Settings.w18 = 4711;
    UIInstance.nCurSetting = 20; // an entry is current: its settings are where the dialog begins
    UIInstance.nListState = LIST_FOUND;
    TakeRecord(&UIInstance, entry);
    EXPECT_EQ(ResolutionName(&UIInstance, entry.wResolution), "Normal - 360 dpi");
    const std::vector<Person::Step> steps = {
        [] { EXPECT_EQ(UIInstance.nListState, LIST_CUSTOM); },
        Choose(IDC_DETAIL_RESOLUTION, "Fine - 720 dpi"),
        Choose(IDC_DETAIL_MEDIA, "360 dpi Ink Jet Paper"),
        [] { EXPECT_FALSE(IsOn(IDC_DETAIL_MW)); },
        Click(IDC_DETAIL_MW_OPTION),
        Click(IDC_DETAIL_MIRROR),
        Click(IDC_DETAIL_KRJNL),
        Choose(IDC_DETAIL_HT, "Fine Dots"),
        Choose(IDC_DETAIL_INTENT, "Photo-realistic"),
        Type(IDC_DETAIL_FIELD_0, "-4"),
        Slide(IDC_DETAIL_BAR_3, 50),
        Click(IDC_DETAIL_MEDIA_CODE),
        "ok",
    };
    EXPECT_EQ(Open(steps), 1);
    const SettingsRecord &is = dm.Settings;
    EXPECT_EQ(is.wIndex, KV_CUSTOM_SETTINGS);
    EXPECT_EQ(is.w18, entry.w18) << "the entry's, whole";
    EXPECT_EQ(UIInstance.dat.lpRes.at(static_cast<size_t>(is.wResolution)).wFlags & OPT1, OPT1);
    EXPECT_EQ(is.wMedia, COATED);
    EXPECT_EQ(is.wFlags, KV_FLAG_MW | KV_FLAG_OPT | KV_FLAG_MIRROR);
    EXPECT_EQ(is.wFlags2, KV_FLAG_MW | KV_FLAG_OPT);
    EXPECT_EQ(is.wFlags3, FLAG3_KRJNL);
    EXPECT_EQ(is.bHT, 2);
    EXPECT_EQ(is.bIntent, 1);
    EXPECT_EQ(is.wRule, 18);
    EXPECT_EQ(dm.lMediaCode, 2);
    EXPECT_THAT(UIInstance.nAdjust, ElementsAre(-4, 0, 0, 25, 0, 0));
    EXPECT_EQ(UIInstance.nListState, LIST_CUSTOM);
}

// What a person may do next: some control that can be used, in some way.
std::string AnyAction(std::mt19937 &random)
{
    const auto below = [&](size_t n) { return static_cast<int>(random() % n); };
    for (;;) {
        const auto window = nlohmann::json::parse(kvp::DescribeTopWindow());
        const auto &controls = window.at("controls");
        const auto &control = controls.at(static_cast<size_t>(below(controls.size())));
        const int id = control["id"];
        if (!control["enabled"] || !control["visible"] || id == IDOK || id == IDCANCEL ||
            id == IDC_DETAIL_HELP)
            continue;
        const std::string kind = control["kind"];
        if (kind == "combobox" && !control["items"].empty())
            return "choose " + std::to_string(id) + " #" +
                   std::to_string(below(control["items"].size()));
        if (kind == "edit")
            return Type(id, (below(2) ? "-" : "") + std::to_string(below(40)));
        if (kind == "trackbar")
            return Slide(id, below(51));
        if (kind == "button" || kind == "radio" || kind == "checkbox" || kind == "ownerdraw")
            return Click(id);
    }
}

TEST_F(Detail, CancelUndoesEverything)
{
    std::mt19937 random(20);
    MakeSample();
    for (uint32_t i = 0; i < UIInstance.dat.nAuto + UIInstance.dat.nPreset; i += 3) {
        SCOPED_TRACE(i);
        BeCurrent(UIInstance.dat.lpSettings.at(i));
        UIInstance.nListState = i % 2 ? LIST_FOUND : LIST_CUSTOM;
        UIInstance.nCurSetting = i % 2 ? static_cast<int32_t>(i) : KV_CUSTOM_SETTINGS;
        UIInstance.wFlags3 = static_cast<uint16_t>(i);
        TakeAdjustments(&UIInstance, UIInstance.dat.lpSettings.at(i));
        const auto State = [] {
            const UIINSTANCE &is = UIInstance;
            std::vector<LONG> state(std::begin(is.nAdjust), std::end(is.nAdjust));
            state.insert(state.end(), {is.bInk, is.bHT, is.wFlags, is.wFlags3, is.nListState});
            return state;
        };
        const DriverDevMode before = dm;
        const std::vector<LONG> state = State();
        int nSteps = 25;
        kvp::SetInputSource([&] { return nSteps-- > 0 ? AnyAction(random) : "cancel"; });
        EXPECT_EQ(Run(), 0);
        EXPECT_FALSE(kvp::CurrentPlay().bFailed) << kvp::CurrentPlay().strWhy;
        EXPECT_EQ(std::memcmp(&dm, &before, sizeof dm), 0);
        EXPECT_EQ(State(), state);
    }
}

TEST_F(Detail, WithoutMemoryForItsCopyItEndsAsIfCancelled)
{
    Make({{R360, PLAIN, 0, 0}});
    const DriverDevMode before = dm;
    kvp::FailCall(kvp::Call::Alloc, 0);
    EXPECT_EQ(Open({}), 0);
    EXPECT_EQ(std::memcmp(&dm, &before, sizeof dm), 0);
}

// Whatever a damaged file or record says, no step leads outside a table.
TEST_F(Detail, TablesThatLeadNowhereLeadNowhere)
{
    Make({{R360, PLAIN, 0, 0}, {R720, COATED, 0, OPT1 | HS1}});
    for (const int16_t sBad : {int16_t{-1}, int16_t{99}, int16_t{32767}}) {
        UIInstance.dat.lpRes[1].wMedia = UIInstance.dat.lpRes[1].wResName = sBad;
        UIInstance.dat.lpRes[1].wRes0 = sBad;
        BeCurrent(Setting(1, KV_FLAG_MW));
        UIInstance.bHT = dm.Settings.bHT = dm.Settings.bIntent = 200;
        UIInstance.nListState = LIST_FOUND;
        UIInstance.nCurSetting = sBad;
        From(sBad, {Click(IDC_DETAIL_HS), Click(IDC_DETAIL_MW_OPTION), Click(IDC_DETAIL_MEDIA_CODE),
                    Choose(IDC_DETAIL_RESOLUTION, "Fine - 720 dpi"), Click(IDC_DETAIL_BLACK)});
    }
    UIInstance.dat = {};
    From(0, {Click(IDC_DETAIL_FD), Click(IDC_DETAIL_HS), Click(IDC_DETAIL_BLACK),
             [] { EXPECT_THAT(SeenItems(IDC_DETAIL_RESOLUTION), IsEmpty()); }});
}

} // namespace
