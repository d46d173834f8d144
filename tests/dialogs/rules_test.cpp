// The rules by themselves: tables made here, applied to a record, a working state and the controls
// of a dialog that has them all.
#include <gmock/gmock.h>

#include "dialogs/helpers.h"
#include "dialogs/rules.h"
#include "dialogs/settings_table.h"
#include "resources/detail_ids.h"
#include "resources/main_ids.h"
#include "tests/support/machine.h"
#include "tests/support/person.h"

namespace
{

using ::testing::ElementsAre;

// A dialog that is only there.
INT_PTR CALLBACK PlainProc(HWND hDlg, UINT uMsg, WPARAM wParam, LPARAM lParam)
{
    if (uMsg == WM_INITDIALOG)
        SetCB(hDlg, reinterpret_cast<CBSTRUC *>(lParam));
    else if (uMsg == WM_COMMAND && wParam == IDCANCEL)
        EndDialog(hDlg, 1);
    return uMsg == WM_INITDIALOG;
}

// A check box as a person would say it: "on" or "off", then "locked" and "hidden".
std::string BoxOf(int id)
{
    const nlohmann::json box = Seen(id);
    return std::string(box["checked"] ? "on" : "off") + (box["enabled"] ? "" : " locked") +
           (box["visible"] ? "" : " hidden");
}

MedResRule RuleFor(int16_t sRes, int16_t sInk)
{
    MedResRule rule{};
    rule.sRes = sRes;
    rule.sInk = sInk;
    return rule;
}

SettingsRecord Record(uint16_t wPreset, int16_t wResolution, int16_t wMedia, uint16_t wInk)
{
    SettingsRecord record{};
    record.wPreset = wPreset;
    record.wResolution = wResolution;
    record.wMedia = wMedia;
    record.wInk = wInk;
    return record;
}

class Rules : public MachineTest
{
  protected:
    Rules()
    {
        UIInstance = UIINSTANCE{};
        UIInstance.hResLib = kvp::LoadHostLibrary(KV_RULES_UI_LIBRARY);
        DatFile &dat = UIInstance.dat;
        dat.lpResNames = {0, 1, 2};
        dat.lpMedia = {{0, 0}, {0, 1}, {0, 2}, {0, 3}, {0, 4}};
        dat.lpRes = {{0, 3, 0, 0, 0, 0, 0, 0},  // 360 dpi, Plain
                     {1, 1, 0, 0, 0, 0, 0, 0},  // 360 dpi, Film
                     {2, 0, 0, 0, 0, 0, 0, 0},  // 360 dpi, Film Deluxe
                     {3, 3, 1, 0, 0, 0, 0, 0},  // 720 dpi, Plain
                     {4, 4, 2, 0, 0, 0, 0, 0}}; // 360 DPI, Card
        dat.nResNames = 3;
        dat.nMedia = dat.nRes = 5;
        UIInstance.bInk = 1;
    }
    ~Rules() override
    {
        FreeLibrary(UIInstance.hResLib);
        UIInstance = UIINSTANCE{};
    }
    static void Put(const std::vector<MedResRule> &aRules)
    {
        UIInstance.dat.lpMedRes = aRules;
        UIInstance.dat.nMedRes = static_cast<uint32_t>(aRules.size());
    }
    static void PutSettings(uint32_t nAuto, const std::vector<SettingsRecord> &aSettings)
    {
        UIInstance.dat.lpSettings = aSettings;
        UIInstance.dat.nSettings = static_cast<uint32_t>(aSettings.size());
        UIInstance.dat.nAuto = nAuto;
        UIInstance.dat.nPreset = UIInstance.dat.nSettings - nAuto;
    }
    void PutFlags(WORD wRecord, WORD wWorking)
    {
        dm.Settings.wFlags = dm.Settings.wFlags2 = wRecord;
        UIInstance.wFlags = wWorking;
    }
    void InDialog(const std::function<void(HWND)> &look)
    {
        person.Will({[&] { look(kvp::TopWindow()); }, "key Escape"});
        DialogBoxParamA(UIInstance.hResLib, MAKEINTRESOURCEA(1), nullptr, PlainProc,
                        reinterpret_cast<LPARAM>(&block));
        person.ExpectDone();
    }
    // The mode's list, filled: "text=data".
    std::vector<std::string> Fill(int nMode)
    {
        std::vector<std::string> items;
        InDialog([&](HWND hDlg) {
            const int id = nMode == MEDIA_DETAIL ? IDC_DETAIL_MEDIA : IDC_MAIN_MEDIA;
            AppendItem(hDlg, id, "from before", 0);
            AppendItem(hDlg, IDC_DETAIL_RESOLUTION, "720 dpi", 0);
            SelectText(hDlg, IDC_DETAIL_RESOLUTION, "720 dpi");
            const LRESULT nResult = SetPaperKind(hDlg, &dm, nMode);
            EXPECT_EQ(nResult, Seen(id)["selection"]);
            strSelected = SeenText(id);
            items = SeenItems(id);
            for (size_t i = 0; i < items.size(); ++i)
                items[i] += '=' + Seen(id)["data"][i].dump();
        });
        return items;
    }

    Person person;
    DriverDevMode dm{};
    CBSTRUC block{&dm, &UIInstance, nullptr, nullptr, nullptr};
    std::string strSelected;
};

TEST_F(Rules, TheTwoMWOptionsFollowTheirCodes)
{
    constexpr WORD NONE = 0, FIRST = 1, SECOND = 2, BOTH = 3;
    const struct {
        const char *why;
        int nMode;
        int16_t sMW, sOpt;
        WORD wUser, wAfter;
        std::string first, second;
    } aRows[] = {
        {"the user has both", MW_DIALOG, 0, 0, BOTH, BOTH, "on", "on"},
        {"locked off", MW_DIALOG, 2, 2, BOTH, NONE, "off locked", "off locked"},
        {"changeable, off", MW_DIALOG, 3, 5, BOTH, NONE, "off", "off"},
        {"changeable, on", MW_DIALOG, 4, 6, NONE, BOTH, "on", "on"},
        {"codes that nobody knows", MW_DIALOG, 9, -1, BOTH, BOTH, "off", "off"},
        {"the second is given back", MW_DIALOG, 2, 0, BOTH, SECOND, "off locked", "on"},
        {"hidden and locked", MW_DIALOG, 2, 3, NONE, SECOND, "off locked", "on locked hidden"},
        {"own first", MW_OWN_FIRST, 4, 6, NONE, SECOND, "off", "on"},
        {"own second knows no lock", MW_OWN_SECOND, 0, 1, NONE, NONE, "off", "off"},
        {"own both", MW_OWN_BOTH, 3, 5, BOTH, BOTH, "on", "on"},
        {"own both, locked", MW_OWN_BOTH, 2, 1, FIRST, SECOND, "off locked", "on locked"},
        {"no boxes", MW_RECORD, 1, 3, NONE, BOTH, "off", "off"},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        MedResRule rule = RuleFor(0, 1);
        rule.sMW = row.sMW;
        rule.sOpt = row.sOpt;
        Put({RuleFor(0, 0), rule});
        // What the record says counts for nothing; only a code that changes nothing leaves it.
        PutFlags(0xF0 | (row.sMW == 9 ? row.wUser : BOTH - row.wUser), 0xF0 | row.wUser);
        InDialog([&](HWND hDlg) {
            CheckMW(hDlg, &dm, row.nMode);
            EXPECT_EQ(BoxOf(IDC_DETAIL_MW), row.first);
            EXPECT_EQ(BoxOf(IDC_DETAIL_MW_OPTION), row.second);
        });
        EXPECT_EQ(UIInstance.wFlags, 0xF0 | row.wAfter);
        EXPECT_EQ(dm.Settings.wFlags, 0xF0 | row.wAfter);
        EXPECT_EQ(dm.Settings.wFlags2, 0xF0 | row.wAfter);
    }
    // A model without the second option hides it last.
    UIInstance.dat.lpDatHeader = std::make_unique<DatHeader>();
    UIInstance.dat.lpDatHeader->wDat2 = 1;
    InDialog([&](HWND hDlg) {
        for (const int nMode : {MW_RECORD, MW_DIALOG}) {
            CheckMW(hDlg, &dm, nMode);
            EXPECT_EQ(Seen(IDC_DETAIL_MW_OPTION)["visible"], nMode == MW_RECORD);
        }
    });
}

TEST_F(Rules, MirrorFollowsItsCode)
{
    const struct {
        const char *why;
        int nMode;
        int16_t sCode;
        bool bUser, bEnabled, bAfter;
        std::string box;
    } aRows[] = {
        {"free, away from its box: dropped", 0, 0, true, true, false, "off"},
        {"free", 1, 0, true, true, true, "on"},
        {"free, but locked so far", 1, 0, true, false, false, "off"},
        {"on", 1, 1, false, true, true, "on locked"},
        {"off", 1, 2, true, true, false, "off locked"},
        {"on, away from its box", 0, 1, false, true, true, "off"},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        MedResRule rule = RuleFor(0, 1);
        rule.sMirror = row.sCode;
        Put({rule});
        const WORD wUser = row.bUser ? KV_FLAG_MIRROR : 0, wAfter = row.bAfter ? KV_FLAG_MIRROR : 0;
        PutFlags(wUser | 1, wUser | 2);
        InDialog([&](HWND hDlg) {
            EnableWindow(GetDlgItem(hDlg, IDC_DETAIL_MIRROR), row.bEnabled);
            CheckMirror(hDlg, &dm, row.nMode);
            EXPECT_EQ(BoxOf(IDC_DETAIL_MIRROR), row.box);
        });
        EXPECT_EQ(dm.Settings.wFlags, wAfter | 1);
        EXPECT_EQ(UIInstance.wFlags, wAfter | 2);
    }
}

TEST_F(Rules, WhatIsNotAllowedGivesWay)
{
    constexpr uint8_t HT0 = 8, HT1 = 2, HT2 = 4, HT3 = 1;
    const uint8_t aRows[][3] = {
        // the choice, what is allowed, what it becomes
        {0, HT0, 0},       {0, HT1 | HT2 | HT3, 3}, {0, HT1 | HT2, 1}, {0, HT2, 2},
        {1, HT1 | HT3, 1}, {1, HT0 | HT2 | HT3, 3}, {1, HT0 | HT2, 2}, {1, HT0, 0},
        {2, HT2 | HT3, 2}, {2, HT0 | HT1 | HT3, 3}, {2, HT0 | HT1, 1}, {2, HT0, 0},
        {3, HT3 | HT1, 3}, {3, HT0 | HT1 | HT2, 1}, {3, HT0 | HT2, 2}, {3, 0xF0, 3},
        {200, HT1, 200},
    };
    for (const auto &row : aRows) {
        const auto [bHT, bAllowed, bAfter] = row;
        SCOPED_TRACE(testing::Message() << +bHT << " of " << +bAllowed);
        MedResRule rule = RuleFor(2, 1);
        rule.bHTAllowed = bAllowed;
        rule.sMW = 1;
        rule.sOpt = 2;
        rule.sHS = 3; // says nothing here
        Put({RuleFor(2, 0), rule});
        UIInstance.nCurRes = 2;
        UIInstance.bHT = bHT;
        PutFlags(0, KV_FLAG_OPT | KV_FLAG_HS);
        InDialog([&](HWND hDlg) { CheckDetail(hDlg, &dm); });
        EXPECT_EQ(UIInstance.bHT, bAfter);
        EXPECT_EQ(dm.Settings.bHT, bAfter);
        EXPECT_EQ(dm.Settings.wResolution, 2);
        EXPECT_EQ(dm.Settings.wFlags, KV_FLAG_MW | KV_FLAG_HS);
    }
}

TEST_F(Rules, AResolutionIsFoundByItsNames)
{
    Put({RuleFor(3, 1), RuleFor(0, 0), RuleFor(1, 1), RuleFor(2, 1), RuleFor(4, 1),
         RuleFor(77, 1)});
    const struct {
        const char *why;
        uint8_t bInk;
        const char *resolution, *media;
        int nRes, nMedia;
    } aRows[] = {
        {"both names", 1, "360 dpi", "Film Deluxe", 2, 0},
        {"not of the ink: the first of the resolution", 1, "360 dpi", "Plain", 1, 1},
        {"letters count", 1, "360 DPI", "Film", 4, 4},
        {"no such resolution: the very first", 1, "1440 dpi", "Film", 0, 3},
        {"none of the ink", 0, "720 dpi", "Plain", 0, 3},
        {"a rule that leads nowhere has no names", 1, "", "", 77, 9},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        UIInstance.bInk = row.bInk;
        dm.Settings.wMedia = 9;
        InDialog([&](HWND hDlg) {
            EXPECT_EQ(GetMedRes(hDlg, &dm, &UIInstance, row.resolution, row.media), row.nRes);
        });
        EXPECT_EQ(UIInstance.nCurRes, row.nRes);
        EXPECT_EQ(dm.Settings.wResolution, row.nRes);
        EXPECT_EQ(dm.Settings.wMedia, row.nMedia);
    }
}

TEST_F(Rules, AFoundResolutionBringsItsOptions)
{
    constexpr WORD HS = KV_FLAG_HS, OPT = KV_FLAG_OPT;
    const struct {
        const char *why;
        int16_t sHS, sFD, sOpt;
        WORD wResFlags, wRecord, wWorking, wRecordAfter, wWorkingAfter;
    } aRows[] = {
        {"HS on", 1, 0, 0, 0, 0, 0, HS, HS},
        {"HS off", 2, 0, 0, 0, HS, HS, 0, 0},
        {"HS as it was", 3, 0, 0, 0, HS, 0, HS, 0},
        {"FD brings HS", 2, 1, 0, 0, 0, 0, HS, HS},
        {"FD off, too", 0, 2, 0, 0, 0, 0, HS, HS},
        {"the option on, in the record alone", 0, 0, 9, 0x10, 0, 0, OPT, 0},
        {"the option off, in the record alone", 0, 0, 9, 0x30, OPT, OPT, 0, OPT},
        {"where the user has his choice", 0, 0, 0, 0x10, 0, 0, 0, 0},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        MedResRule rule = RuleFor(1, 1);
        rule.sHS = row.sHS;
        rule.sFD = row.sFD;
        rule.sOpt = row.sOpt;
        Put({RuleFor(3, 1), rule});
        UIInstance.dat.lpRes[1].wFlags = row.wResFlags;
        PutFlags(row.wRecord, row.wWorking);
        InDialog([&](HWND hDlg) { GetMedRes(hDlg, &dm, &UIInstance, "360 dpi", "Film"); });
        EXPECT_EQ(dm.Settings.wFlags, row.wRecordAfter);
        EXPECT_EQ(UIInstance.wFlags, row.wWorkingAfter);
    }
}

TEST_F(Rules, AResolutionWithoutARuleIsJudgedByTheFirst)
{
    MedResRule first = RuleFor(3, 0);
    first.sHS = 1;
    for (const auto &rules : {std::vector{first, RuleFor(0, 0)}, std::vector<MedResRule>{}}) {
        Put(rules);
        PutFlags(0, 0);
        InDialog([&](HWND hDlg) { GetMedRes(hDlg, &dm, &UIInstance, "360 dpi", "Film"); });
        EXPECT_EQ(UIInstance.wFlags, rules.empty() ? 0 : KV_FLAG_HS);
    }
}

TEST_F(Rules, AutomaticMediaAreThoseOfTheInkEachOnce)
{
    // Names come from the resolutions (Plain, Film, Film Deluxe), numbers from the records.
    PutSettings(7, {Record(0, 2, 20, 1), Record(0, 0, 21, 1), Record(0, 0, 22, 1),
                    Record(0, 4, 23, 0), Record(0, 1, 24, 1), Record(0, 1, 25, 1),
                    Record(0, 99, 26, 0), Record(0, 4, 27, 1)});
    UIInstance.nCurSetting = 4;
    EXPECT_THAT(Fill(MEDIA_AUTOMATIC), ElementsAre("Film Deluxe=20", "Plain=21", "Film=24"));
    EXPECT_EQ(strSelected, "Film Deluxe") << "the first that begins with Film";
    UIInstance.nListState = LIST_CUSTOM;
    dm.Settings.wResolution = 0;
    Fill(MEDIA_AUTOMATIC);
    EXPECT_EQ(strSelected, "Plain");
    UIInstance.bInk = 0;
    EXPECT_THAT(Fill(MEDIA_AUTOMATIC), ElementsAre("Card=23", "=26"));
}

TEST_F(Rules, CustomMediaAreThoseOfTheResolutionsName)
{
    Put({RuleFor(3, 1), RuleFor(0, 1), RuleFor(1, 1), RuleFor(2, 1), RuleFor(4, 0), RuleFor(1, 1)});
    dm.Settings.wResolution = 2;
    UIInstance.nCurRes = 1;
    EXPECT_THAT(Fill(MEDIA_DETAIL), ElementsAre("Plain=0")) << "of the resolution shown there";
    EXPECT_EQ(strSelected, "Plain") << "for want of Film Deluxe";
    EXPECT_EQ(UIInstance.nCurRes, 1);
    EXPECT_THAT(Fill(MEDIA_CUSTOM), ElementsAre("Plain=0", "Film=1", "Film Deluxe=2"));
    EXPECT_EQ(strSelected, "Film Deluxe");
    EXPECT_EQ(UIInstance.nCurRes, 2);
    Put({RuleFor(2, 1), RuleFor(1, 1)});
    EXPECT_THAT(Fill(MEDIA_CUSTOM), ElementsAre("Film Deluxe=2")) << "it begins with Film";
}

TEST_F(Rules, AResolutionThatIsNoneForTheInkGivesWayToTheInksFirst)
{
    const struct {
        std::vector<MedResRule> rules;
        std::vector<std::string> items;
        int nRes;
    } aRows[] = {
        {{RuleFor(0, 0), RuleFor(3, 1), RuleFor(1, 1)}, {"Plain=3"}, 3},
        {{RuleFor(0, 0), RuleFor(4, 0)}, {}, 4}, // nothing to give way to
        {{RuleFor(77, 1)}, {"=77"}, 77},         // leads nowhere
    };
    for (const auto &row : aRows) {
        Put(row.rules);
        dm.Settings.wResolution = 4;
        EXPECT_EQ(Fill(MEDIA_CUSTOM), row.items);
        EXPECT_EQ(dm.Settings.wResolution, row.nRes);
        EXPECT_EQ(UIInstance.nCurRes, row.nRes);
    }
}

TEST_F(Rules, NamesGoByNumberOrPositionAndNumbersThatLeadNowhereHaveNone)
{
    DatFile &dat = UIInstance.dat;
    dat.lpMedia = {{0, 4}, {0, 0}, {0, 2}, {0, 1}, {0, -200}};
    dat.lpRes[2] = {0, -1, 99, 0, 0, 0, 0, 0};
    EXPECT_EQ(MediaNameByIndex(&UIInstance, 1), "Film Deluxe");
    EXPECT_EQ(MediaNameByNumber(&UIInstance, 1), "Film");
    EXPECT_EQ(MediaNameByNumber(&UIInstance, 0), "Film") << "no number 3: the third";
    EXPECT_EQ(MediaNameByIndex(&UIInstance, 4), "");
    dat.nRes = 4;
    for (const int nRes : {-1, 2, 4}) {
        EXPECT_EQ(ResolutionName(&UIInstance, nRes), "");
        EXPECT_EQ(MediaNameByIndex(&UIInstance, nRes), "");
        EXPECT_EQ(MediaNameByNumber(&UIInstance, nRes), "");
    }
}

} // namespace
