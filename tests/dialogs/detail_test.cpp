// More Settings by itself: the samples' dialog and texts, on tables made here or those of a sample.
#include <array>
#include <cstring>
#include <sstream>
#include <tuple>

#include <fmt/format.h>
#include <gmock/gmock.h>

#include "datafile/tables.h"
#include "dialogs/dial_ext.h"
#include "dialogs/pages.h"
#include "dialogs/rules.h"
#include "dialogs/settings_table.h"
#include "resources/detail_ids.h"
#include "resources/pictures.h"
#include "tests/dialogs/dialog_test.h"

namespace
{

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr WORD MW = KV_FLAG_MW, OPT = KV_FLAG_OPT, HS = KV_FLAG_HS;

std::string Click(int id)
{
    return fmt::format("click {}", id);
}
std::string Choose(int id, const char *text)
{
    return fmt::format("choose {} \"{}\"", id, text);
}
std::string Type(int id, const char *text)
{
    return fmt::format("type {} \"{}\"", id, text);
}
std::string Slide(int id, int n)
{
    return fmt::format("slide {} {}", id, n);
}
const std::string strToNormal = Choose(IDC_DETAIL_RESOLUTION, "Normal - 360 dpi"),
                  strToFine = Choose(IDC_DETAIL_RESOLUTION, "Fine - 720 dpi"),
                  strToPlain = Choose(IDC_DETAIL_MEDIA, "Plain Paper"),
                  strToCoated = Choose(IDC_DETAIL_MEDIA, "360 dpi Ink Jet Paper"),
                  strOption = Click(IDC_DETAIL_MW_OPTION), strHS = Click(IDC_DETAIL_HS),
                  strFD = Click(IDC_DETAIL_FD), strBlack = Click(IDC_DETAIL_BLACK),
                  strColor = Click(IDC_DETAIL_COLOR);

// What a control is to be while the person looks.
Person::Step Sees(int id, const char *what, nlohmann::json value)
{
    return [=] { EXPECT_EQ(Seen(id)[what], value) << id << ' ' << what; };
}
Person::Step SeesText(int id, const char *text)
{
    return [=] { EXPECT_EQ(SeenText(id), text) << id; };
}

class Detail : public DialogTest
{
  protected:
    Detail()
    {
        UIInstance.dat.lpDatHeader = std::make_unique<DatHeader>();
        UIInstance.dat.lpMedia = {{10, 0}, {20, 1}, {30, 2}};
        UIInstance.dat.lpResNames = {0, 1, 2, 3, 4, 9};
        UIInstance.dat.nMedia = 3;
        UIInstance.dat.nResNames = 5;
        Edit(1);
    }
    // Resolutions with rules for both inks that leave everything to the user, a word each: the
    // name's letter (Economy, Draft, Fine, Superfine, Normal, or ? for none) and the media; then h
    // or H for HS off or on, o or O for the second MW option, f for FD, g for FD state 2, x for a
    // flag that is no variant, k for black ink alone, c for colour alone.
    static void Make(const char *table)
    {
        UIInstance.dat.lpRes.clear();
        UIInstance.dat.lpMedRes.clear();
        std::istringstream words(table);
        for (std::string word; words >> word;)
            Add(word);
        UIInstance.dat.nRes = static_cast<uint32_t>(UIInstance.dat.lpRes.size());
        UIInstance.dat.nMedRes = static_cast<uint32_t>(UIInstance.dat.lpMedRes.size());
    }
    static void Add(const std::string &word)
    {
        const auto has = [&](char c) { return word.find(c) != std::string::npos; };
        const auto n = static_cast<int16_t>(UIInstance.dat.lpRes.size());
        const auto nName = static_cast<int16_t>(std::string("EDFSN?").find(word[0]));
        const auto nMedia = static_cast<int16_t>(std::string("012").find(word[1]));
        const int nFlags = (has('H') ? RES_HS_ON : 0) | (has('h') ? RES_HS_OFF : 0) |
                           (has('O') ? RES_OPT_ON : 0) | (has('o') ? RES_OPT_OFF : 0) |
                           (has('x') ? 0x100 : 0);
        const auto sFD = static_cast<int16_t>(has('g') ? 2 : has('f'));
        UIInstance.dat.lpRes.push_back(
            {n, nMedia, nName, sFD, 0, static_cast<WORD>(nFlags), 360, 360});
        const auto wRule = static_cast<WORD>(100 + n);
        for (int16_t ink = 0; ink < 2; ++ink)
            if (!has(ink ? 'k' : 'c'))
                UIInstance.dat.lpMedRes.push_back({n, ink, wRule, 0, 0, 0, 0, 15, 0, 0, 15});
    }
    void MakeSample()
    {
        ASSERT_EQ(ReadDatTables("KJ820PRO.dat", &UIInstance.dat), FileState::Read);
        ASSERT_EQ(ReadCfgTables("KJ820PRO.cfg", &UIInstance.dat), FileState::Read);
    }
    static MedResRule &Rule(size_t n) { return UIInstance.dat.lpMedRes.at(n); }
    // Custom settings are edited.
    void Edit(const SettingsRecord &settings)
    {
        dm.Settings = settings;
        TakeRecord(&UIInstance, settings);
        UIInstance.nListState = UIInstance.nCurSetting = KV_CUSTOM_SETTINGS;
    }
    void Edit(uint16_t wInk, WORD wFlags = 0, uint8_t bHT = 0, uint8_t bIntent = 0, uint8_t b16 = 0)
    {
        SettingsRecord settings{};
        settings.wInk = wInk;
        settings.wFlags = wFlags;
        settings.bHT = bHT;
        settings.bIntent = bIntent;
        settings.b16 = b16;
        Edit(settings);
    }
    INT_PTR Open(std::vector<Person::Step> steps)
    {
        const INT_PTR nResult = OpenDialog(IDD_DETAIL, DetailDlgProc, std::move(steps));
        EXPECT_EQ(kvp::CurrentlyHeld().nBlocks, 0u);
        EXPECT_EQ(kvp::CurrentlyHeldGui().nObjects, 0u);
        return nResult;
    }
    // The resolution that this leads to from another one.
    int From(int nRes, std::vector<Person::Step> steps)
    {
        dm.Settings.wResolution = static_cast<int16_t>(nRes);
        steps.emplace_back("ok");
        EXPECT_EQ(Open(std::move(steps)), 1);
        EXPECT_EQ(UIInstance.nCurRes, dm.Settings.wResolution);
        return UIInstance.nCurRes;
    }
};

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
        {"a minus before two digits", 0, "-12", -12, "12", true},
        {"a minus behind it", 0, "5-", -5, "5", true},
        {"a plus takes the minus away", 0, "-5+", 5, "5", false},
        {"without a sign the button's stays", -9, "4", -4, "4", true},
        {"above the limit", 0, "30", 25, "25", false},
        {"below the limit", 0, "-26", -25, "25", true},
        {"a third digit is refused", 0, "-123", -12, "12", true},
        {"what is no digit is removed", 0, "1x2", 12, "12", false},
        {"nothing keeps the minus", -9, "", 0, "0", true},
        {"a minus alone", 0, "-", 0, "0", true},
    };
    Make("N0");
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        UIInstance.nAdjust[3] = row.lBefore;
        const auto look = [&] {
            EXPECT_EQ(UIInstance.wAdjState[3], ROW_ENABLED | (row.bMinus ? ROW_NEGATIVE : 0));
        };
        Open({Type(IDC_DETAIL_FIELD_3, row.typed), SeesText(IDC_DETAIL_FIELD_3, row.shown),
              Sees(IDC_DETAIL_BAR_3, "position", 25 + row.lValue), look, "ok"});
        EXPECT_EQ(UIInstance.nAdjust[3], row.lValue);
    }
}

TEST_F(Detail, TheTrackbarAndTheSignButtonChangeTheNumberToo)
{
    Make("N0");
    UIInstance.nAdjust[5] = -6;
    const std::string strSign = Click(IDC_DETAIL_SIGN_5);
    const auto shows = [](LONG lValue) {
        return [lValue] {
            EXPECT_EQ(UIInstance.nAdjust[5], lValue);
            EXPECT_EQ(SeenText(IDC_DETAIL_FIELD_5), std::to_string(std::abs(lValue)));
            EXPECT_EQ(Seen(IDC_DETAIL_BAR_5)["position"], 25 + lValue);
        };
    };
    Open({shows(-6), strSign, shows(6), Slide(IDC_DETAIL_BAR_5, 3), shows(-22), strSign, shows(22),
          Slide(IDC_DETAIL_BAR_5, 25), shows(0), strSign, shows(0),
          [] { EXPECT_FALSE(UIInstance.wAdjState[5] & ROW_NEGATIVE); }, "ok"});
}

// The minus is on the button, and only there, until its number comes; leaving the field drops it.
// One that nobody has drawn is a 0 outside.
TEST_F(Detail, AMinusWaitsForItsNumberInTheField)
{
    Make("N0");
    UIInstance.nAdjust[1] = ADJUST_MINUS;
    std::vector<int> dark; // what is drawn on the button
    const auto look = [&dark] {
        const RECT rc = ClientOf(IDC_DETAIL_SIGN_0);
        dark.push_back(0);
        for (int y = 4; y < rc.bottom - 4; ++y)
            for (int x = 3; x < rc.right - 3; ++x)
                dark.back() += (PixelOf(IDC_DETAIL_SIGN_0, x, y) & 0xFF) < 0x80;
        EXPECT_EQ(UIInstance.nAdjust[0], 0);
    };
    const auto leaveUndrawn = [] {
        SetDlgItemTextA(kvp::TopWindow(), IDC_DETAIL_FIELD_1, "-");
        EXPECT_EQ(UIInstance.nAdjust[1], ADJUST_MINUS);
        SendMessageA(kvp::TopWindow(), WM_COMMAND, IDOK, 0);
    };
    EXPECT_EQ(Open({SeesText(IDC_DETAIL_FIELD_1, "0"), look, Type(IDC_DETAIL_FIELD_0, "-"), look,
                    "focus 5601", look, leaveUndrawn}),
              1);
    EXPECT_LT(dark.at(1), dark.at(0));
    EXPECT_EQ(dark.at(2), dark.at(0));
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
    Make("N0");
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        Edit(row.wInk, 0, 0, row.bIntent, row.b16);
        std::ranges::fill(UIInstance.nAdjust, -5);
        UIInstance.nIntent = 7;
        const auto look = [&] {
            EXPECT_EQ(Seen(IDC_DETAIL_INTENT)["enabled"], row.bIntents);
            for (const auto &[k, bOn] : {std::pair(1, row.bBrightness), std::pair(3, row.bCyan)}) {
                const ColorRow &r = aColorRows[k];
                for (const int id : {r.idLabel, r.idField, r.idSign, r.idBar})
                    EXPECT_EQ(Seen(id)["enabled"], bOn) << id;
                EXPECT_EQ((UIInstance.wAdjState[k] & ROW_ENABLED) != 0, bOn);
                EXPECT_EQ(PixelOf(r.idSign, 6, 3), bOn ? RGB(255, 255, 255) : RGB(192, 192, 192));
            }
            EXPECT_THAT(UIInstance.nAdjust, Each(row.lKept));
            EXPECT_EQ(UIInstance.nIntent, row.b16 ? 7 : row.bIntent);
        };
        EXPECT_EQ(Open({look, "cancel"}), 0);
    }
}

TEST_F(Detail, TheIntentWithoutAdjustmentClearsThem)
{
    Make("N0");
    std::ranges::fill(UIInstance.nAdjust, 9);
    Open({Choose(IDC_DETAIL_INTENT, "No Color Adjustment"),
          Sees(IDC_DETAIL_FIELD_2, "enabled", false), SeesText(IDC_DETAIL_FIELD_2, "0"),
          Sees(IDC_DETAIL_BAR_2, "position", 25), Choose(IDC_DETAIL_INTENT, "Charts and Graphs"),
          Sees(IDC_DETAIL_FIELD_2, "enabled", true), "ok"});
    EXPECT_EQ(dm.Settings.bIntent, 2);
    EXPECT_EQ(UIInstance.nIntent, 2);
    EXPECT_THAT(UIInstance.nAdjust, Each(0));
}

TEST_F(Detail, AChangeFindsTheResolutionThatFitsBest)
{
    const struct {
        const char *why, *table;
        int nFrom;
        std::string action;
        int nFound;
    } aRows[] = {
        {"name, ink and media", "F0 F2 F1O F1o N1", 4, strToFine, 2},
        {"none of the media: the first of the name", "E0 F2 F0 N1", 3, strToFine, 1},
        {"none of the name: the first of all", "E0 N1", 1, strToFine, 0},
        {"of the name, one that takes the ink", "E0 F2k F0 N1", 3, strToFine, 2},
        {"the media is no help to the wrong ink", "E0 F2k F1k N1", 3, strToFine, 1},
        {"a media keeps the name", "F1 N0 N1 N1", 1, strToCoated, 2},
        {"the variant", "F1ho F1hO", 0, strOption, 1},
        {"one that differs in HS too", "F1ho F1Ho F1HO", 0, strOption, 2},
        {"the media before the name", "F1ho F0O N1O", 0, strOption, 2},
        {"for HS, too", "F1ho F0Ho N1Ho", 0, strHS, 2},
        {"FD stays off", "F1ho F1hOf F1HO", 0, strOption, 2},
        {"FD stays on", "F1hof F1Ho F1HOf", 0, strHS, 2},
        {"where it must, FD changes", "F1hof F1Ho", 0, strHS, 1},
        {"HS and not the second option", "F1ho F1HO F1Ho", 0, strHS, 2},
        {"HS on and off at once is none", "F1ho F1hH", 0, strHS, 0},
        {"FD and neither option", "F1ho F1Hof F1hof", 0, strFD, 2},
        {"no FD at all: the first of all", "E0 N1", 1, strFD, 0},
        {"an FD state above 1 is none", "E0 F1 F1g", 1, strFD, 0},
        {"no FD twin of one with a further flag", "F1x F1Hf F1f", 0, strFD, 1},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        Make(row.table);
        Edit(1, MW);
        EXPECT_EQ(From(row.nFrom, {row.action}), row.nFound);
    }
}

TEST_F(Detail, SearchesTakePositionsANewInkTakesNumbers)
{
    Make("F1c F0 N0");
    UIInstance.dat.lpRes[1].wRes0 = 2;
    EXPECT_EQ(From(0, {strToPlain}), 1);
    EXPECT_EQ(From(0, {strBlack}), 2);
    // The list takes a media's name by its number, the search by its position.
    Make("F2 N0 N1");
    UIInstance.dat.lpMedia = {{10, 2}, {20, 0}, {30, 1}};
    UIInstance.bInk = 1;
    EXPECT_EQ(From(1, {strToCoated}), 0);
    EXPECT_EQ(dm.Settings.wMedia, 2);
}

TEST_F(Detail, AnOptionLeavesTheListsAndOnlyAMediaTheRecordsMedia)
{
    Make("N0 F1OHf N1");
    dm.Settings.wMedia = 77;
    for (const std::string &action : {strOption, strHS, strFD}) {
        EXPECT_EQ(From(0, {Click(IDC_DETAIL_MW), action, SeesText(IDC_DETAIL_MEDIA, "Plain Paper"),
                           SeesText(IDC_DETAIL_RESOLUTION, "Normal - 360 dpi")}),
                  1);
        UIInstance.wFlags = 0;
    }
    From(0, {strToFine});
    EXPECT_EQ(dm.Settings.wMedia, 77);
    From(0, {strToCoated});
    EXPECT_EQ(dm.Settings.wMedia, 1);
}

TEST_F(Detail, ANewInkBringsItsRecordItsResolutionAndItsPicture)
{
    Make("F0c N0 F1");
    dm.Settings.wInk = 0x4701; // the high byte is nobody's
    const auto record = [&] {
        return std::array{int{dm.Settings.wInk}, int{dm.Settings.wInkCode}, int{dm.dm.dmColor}};
    };
    EXPECT_EQ(From(0, {strColor, // nothing: it is colour
                       Sees(IDC_DETAIL_INK_PICTURE, "picture", PICTURE_INK_COLOR), strBlack,
                       Sees(IDC_DETAIL_INK_PICTURE, "picture", PICTURE_INK_BLACK),
                       SeesText(IDC_DETAIL_MEDIA, "360 dpi Ink Jet Paper"),
                       Sees(IDC_DETAIL_INTENT, "enabled", false)}),
              2);
    EXPECT_THAT(record(), ElementsAre(0x4700, 3, 1));
    EXPECT_EQ(dm.Settings.wRule, 102);
    EXPECT_EQ(From(2, {strColor}), 2) << "it takes both";
    EXPECT_THAT(record(), ElementsAre(0x4701, 6, 2));
}

TEST_F(Detail, ColorTakesTheMediaCodesButtonAwayForGood)
{
    Make("N0 F2");
    const std::string strLast = Choose(IDC_DETAIL_HT, "Error Diffusion");
    const auto on = Sees(IDC_DETAIL_MEDIA_CODE, "enabled", true);
    const auto off = Sees(IDC_DETAIL_MEDIA_CODE, "enabled", false);
    From(1, {Click(IDC_DETAIL_MEDIA_CODE), strBlack, on, strLast, strColor, on,
             Choose(IDC_DETAIL_HT, "None"), strBlack, strColor, off, strBlack, strLast, off});
    EXPECT_EQ(LONG{dm.lMediaCode}, 30);
}

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
    Make("N0c");
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        Rule(0).bHTAllowed = row.bAllowed;
        Edit(1, 0, row.bHT);
        Open({Sees(IDC_DETAIL_HT, "items", row.items),
              Sees(IDC_DETAIL_HT_PICTURE, "picture", PICTURE_HT + row.bTaken), "ok"});
        EXPECT_EQ(dm.Settings.bHT, row.bTaken);
        EXPECT_EQ(UIInstance.bHT, row.bTaken);
    }
}

// An empty name begins every other one.
TEST_F(Detail, AListSelectsTheFirstThatBeginsAlikeOrTheFirst)
{
    Make("?0c");
    Rule(0).sIntents = 12;
    Open({Sees(IDC_DETAIL_INTENT, "items", {"Charts and Graphs", "No Color Adjustment"}),
          SeesText(IDC_DETAIL_INTENT, "Charts and Graphs"),
          SeesText(IDC_DETAIL_RESOLUTION, "Economy - 180 dpi"), "ok"});
    EXPECT_EQ(dm.Settings.bIntent, 0);
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
    Make("N0c F0c");
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        Rule(0).sHS = Rule(1).sHS = row.sHS;
        Edit(1, row.bStored ? HS : WORD{0});
        const auto open = Sees(IDC_DETAIL_HS, "enabled", row.bOpen);
        From(0, {Sees(IDC_DETAIL_HS, "checked", row.bOpened), open, strToFine,
                 Sees(IDC_DETAIL_HS, "checked", row.bChanged), open});
        EXPECT_EQ(dm.Settings.wFlags, row.bChanged ? HS : 0);
        EXPECT_EQ(UIInstance.wFlags, dm.Settings.wFlags);
    }
}

TEST_F(Detail, FDFollowsItsRuleAndTheResolution)
{
    const struct {
        const char *why;
        int16_t sFD, sRes3;
        WORD wHidden;
        bool bChecked, bOpen;
    } aRows[] = {
        {"a resolution without", 0, 0, 0, false, true},
        {"a resolution with", 0, 5, 0, true, true},
        {"a model that hides it", 0, 5, 1, true, true},
        {"locked on", 1, 0, 0, true, false},
        {"locked off", 2, 1, 0, false, false},
        {"no such code: as the template has it", 7, 1, 0, false, true},
    };
    Make("N0c");
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        UIInstance.dat.lpRes[0].wRes3 = row.sRes3;
        UIInstance.dat.lpDatHeader->wDat3 = row.wHidden;
        Rule(0).sFD = row.sFD;
        Open({Sees(IDC_DETAIL_FD, "checked", row.bChecked),
              Sees(IDC_DETAIL_FD, "enabled", row.bOpen),
              Sees(IDC_DETAIL_FD, "visible", row.wHidden != 1),
              Sees(IDC_DETAIL_FD_LINE, "visible", row.wHidden != 1), "cancel"});
    }
}

// A box that a rule would lock stays as the click left it: each is looked at by the other alone.
TEST_F(Detail, TheFDAndHSBoxesAreNotCheckedAfterTheirOwnClick)
{
    Make("N0hc N0hfc N0Hc");
    Rule(1).sFD = Rule(2).sHS = RULE_OFF;
    EXPECT_EQ(From(0, {strFD, Sees(IDC_DETAIL_FD, "checked", true)}), 1);
    EXPECT_EQ(From(0, {strHS, Sees(IDC_DETAIL_HS, "checked", true)}), 2);
}

TEST_F(Detail, TheSecondMWOptionNeedsTheFirst)
{
    Make("N0c");
    const auto on = Sees(IDC_DETAIL_MW_OPTION, "enabled", true);
    const std::string strMW = Click(IDC_DETAIL_MW);
    Edit(1, MW | OPT);
    From(0, {strMW, Sees(IDC_DETAIL_MW_OPTION, "enabled", false), strMW, on, strOption, strOption});
    EXPECT_EQ(dm.Settings.wFlags, MW | OPT);
    EXPECT_EQ(dm.Settings.wFlags2, MW | OPT);
    Rule(0).sMW = RULE_OFF; // only a click takes the second one away
    From(0, {on, Sees(IDC_DETAIL_MW, "enabled", false)});
}

TEST_F(Detail, HSMakesWhatTheRecordAloneHasTheUsersChoice)
{
    Make("N0 F0O");
    From(0, {strToFine, Sees(IDC_DETAIL_MW_OPTION, "checked", true)});
    EXPECT_EQ(UIInstance.wFlags, OPT);
}

TEST_F(Detail, EveryTrackbarLiesOverItsPlaceAndEveryPictureIsThere)
{
    Make("N0");
    const auto look = [] {
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
            if (control["kind"] == "ownerdraw" && RowOf(control["id"], &ColorRow::idSign) < 0) {
                EXPECT_NE(control.value("picture", PICTURE_FACE), PICTURE_FACE) << control["id"];
            }
    };
    EXPECT_EQ(Open({look, "cancel"}), 0);
}

auto WorkingState()
{
    const UIINSTANCE &is = UIInstance;
    return std::tuple(std::to_array(is.nAdjust), is.bInk, is.bHT, is.wFlags, is.wFlags3,
                      is.nListState);
}

TEST_F(Detail, AJourneyThroughEveryControlEndsInTheRecordOrByCancelInNothing)
{
    MakeSample();
    Edit(UIInstance.dat.lpSettings.at(0));
    UIInstance.nCurSetting = 20; // an entry is current: its settings are where the dialog begins
    UIInstance.nListState = LIST_FOUND;
    SettingsRecord &entry = UIInstance.dat.lpSettings.at(20);
    entry.w18 = 4711;
    TakeRecord(&UIInstance, entry);
    std::ranges::fill(UIInstance.nAdjust, 0);
    std::vector<Person::Step> journey{SeesText(IDC_DETAIL_RESOLUTION, "Normal - 360 dpi"),
                                      strToFine,
                                      strToCoated,
                                      Sees(IDC_DETAIL_MW, "enabled", false),
                                      strOption,
                                      Click(IDC_DETAIL_MIRROR),
                                      Click(IDC_DETAIL_KRJNL),
                                      Choose(IDC_DETAIL_HT, "Fine Dots"),
                                      Choose(IDC_DETAIL_INTENT, "Photo-realistic"),
                                      Type(IDC_DETAIL_FIELD_0, "-4"),
                                      Slide(IDC_DETAIL_BAR_3, 50),
                                      Click(IDC_DETAIL_MEDIA_CODE),
                                      strBlack,
                                      "cancel"};
    const DriverDevMode before = dm;
    const auto state = WorkingState();
    EXPECT_EQ(Open(journey), 0);
    EXPECT_EQ(std::memcmp(&dm, &before, sizeof dm), 0);
    EXPECT_EQ(WorkingState(), state);

    journey.erase(journey.end() - 2, journey.end());
    journey.emplace_back("ok");
    EXPECT_EQ(Open(journey), 1);
    SettingsRecord is = dm.Settings, expected = entry;
    EXPECT_EQ(UIInstance.dat.lpRes.at(static_cast<size_t>(is.wResolution)).wFlags,
              RES_HS_OFF | RES_OPT_ON);
    expected.wResolution = is.wResolution;
    expected.wIndex = KV_CUSTOM_SETTINGS;
    expected.wMedia = 1;
    expected.wFlags = MW | OPT | KV_FLAG_MIRROR;
    expected.wFlags2 = MW | OPT;
    expected.wFlags3 = FLAG3_KRJNL;
    expected.bHT = 2;
    expected.bIntent = 1;
    expected.wRule = 18;
    EXPECT_EQ(std::memcmp(&is, &expected, sizeof is), 0);
    EXPECT_EQ(LONG{dm.lMediaCode}, 2);
    EXPECT_THAT(UIInstance.nAdjust, ElementsAre(-4, 0, 0, 25, 0, 0));
    EXPECT_EQ(UIInstance.nListState, LIST_CUSTOM);
}

TEST_F(Detail, WithoutMemoryForItsCopyItEndsAsIfCancelled)
{
    Make("N0");
    const DriverDevMode before = dm;
    kvp::FailCall(kvp::Call::Alloc, 0);
    EXPECT_EQ(Open({}), 0);
    EXPECT_EQ(std::memcmp(&dm, &before, sizeof dm), 0);
}

// Whatever a damaged file or record says, no step leads outside a table.
TEST_F(Detail, TablesThatLeadNowhereLeadNowhere)
{
    Make("N0 F1OH");
    for (const int16_t sBad : {int16_t{-1}, int16_t{99}, int16_t{32767}}) {
        ResolutionRecord &res = UIInstance.dat.lpRes[1];
        res.wMedia = res.wResName = res.wRes0 = sBad;
        Edit(1, MW, 200, 200);
        UIInstance.nListState = LIST_FOUND;
        UIInstance.nCurSetting = sBad;
        From(sBad, {strHS, strOption, Click(IDC_DETAIL_MEDIA_CODE), strToFine, strBlack});
    }
    UIInstance.dat = {};
    From(0, {strFD, strHS, strColor,
             [] { EXPECT_THAT(SeenItems(IDC_DETAIL_RESOLUTION), IsEmpty()); }});
}

} // namespace
