// Save Settings and About by themselves: a table of settings made here, the samples' dialogs, and
// the user's file that follows the table.
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <gmock/gmock.h>

#include "dialogs/pages.h"
#include "dialogs/settings_table.h"
#include "resources/about_ids.h"
#include "resources/main_ids.h"
#include "resources/pictures.h"
#include "resources/save_ids.h"
#include "resources/styles.h"
#include "tests/dialogs/dialog_test.h"
#include "tests/support/model_builder.h"

namespace
{

using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr int32_t FIRST_SLOT = 8; // two Automatic records and six predefined ones
constexpr WORD SLOTS = 3;
constexpr const char *ANOTHER = R"(type 5204 "Another")", *PRESS_SAVE = "click 5230",
                     *PRESS_DELETE = "click 2017",
                     *USER_FILE = "C:\\winnt35\\system32\\KJ820PRO.ucf";

class SaveDialog : public DialogTest
{
  protected:
    SaveDialog()
    {
        UIInstance.dat.nAuto = 2;
        UIInstance.dat.nPreset = FIRST_SLOT - 2;
        UIInstance.dat.nSettings = FIRST_SLOT + SLOTS;
        UIInstance.dat.CfgHeader.wUserSlots = SLOTS;
    }
    // A table with these in use, the newest first, and a person who has settings of rule 7.
    void Keep(const std::vector<std::string> &aNames, int32_t nCurrent = KV_CUSTOM_SETTINGS)
    {
        DatFile &dat = UIInstance.dat;
        dat.lpSettings.assign(dat.nSettings, SettingsRecord{});
        for (uint16_t i = 0; i < FIRST_SLOT + SLOTS; ++i) {
            dat.lpSettings[i].wIndex = i;
            dat.lpSettings[i].wRule = 100 + i;
            dat.lpSettings[i].wState = STATE_FREE;
        }
        dat.nUserUsed = static_cast<uint32_t>(aNames.size());
        for (size_t i = 0; i < aNames.size(); ++i) {
            Slot(i).wState = STATE_IN_USE;
            aNames[i].copy(Slot(i).szName, sizeof Slot(i).szName);
        }
        UIInstance.nCurSetting = nCurrent;
        UIInstance.nListState = nCurrent == KV_CUSTOM_SETTINGS ? LIST_CUSTOM : LIST_FOUND;
        dm.Settings = {};
        dm.Settings.wIndex = static_cast<uint16_t>(nCurrent);
        dm.Settings.wRule = 7;
    }
    INT_PTR Open(std::vector<Person::Step> steps)
    {
        return OpenDialog(IDD_SAVE, SaveDlgProc, std::move(steps));
    }
    static SettingsRecord &Slot(size_t n) { return UIInstance.dat.lpSettings[FIRST_SLOT + n]; }
    // Every slot as its name, or "-", with its number and what it was made with.
    static std::vector<std::string> Slots()
    {
        std::vector<std::string> slots;
        for (const SettingsRecord &slot : UserSlots(&UIInstance))
            slots.push_back((slot.wState == STATE_FREE ? "-" : SettingName(slot)) + ' ' +
                            std::to_string(slot.wIndex) + ' ' + std::to_string(slot.wRule));
        return slots;
    }
    static Bytes InMemory()
    {
        Bytes bytes(SLOTS * sizeof(SettingsRecord));
        std::memcpy(bytes.data(), &Slot(0), bytes.size());
        return bytes;
    }
    // What the user's file holds behind its version.
    static Bytes Saved()
    {
        std::ifstream file(kvp::HostPath(USER_FILE), std::ios::binary);
        file.ignore(2);
        return {std::istreambuf_iterator<char>(file), {}};
    }
};

TEST_F(SaveDialog, ANameSaysWhatCanBeDoneWithIt)
{
    constexpr struct {
        const char *why, *typed, *kept;
        bool bSave, bDelete;
    } aRows[] = {
        {"a new one", "Holidays", "Holidays", true, false},
        {"a saved one", "Slides", "Slides", true, true},
        {"nothing", "", "", false, false},
        {"a saved one of 16 bytes", "SixteenBytesLong", "SixteenBytesLong", true, true},
        {"blanks", "   ", "   ", false, false},
        {"a predefined one", "Photo", "Photo", false, false},
        {"the page's label", "Custom Settings", "Custom Settings", false, false},
        {"cut to a saved one", "SixteenBytesLonger", "SixteenBytesLong", true, true},
        {"typed on at the cut's end", "abcdefghijklmnopqr", "abcdefghijklmnop", true, false},
        {"a lead byte elsewhere, at the cut", "abcdefghijklmnoéq", "abcdefghijklmno", true, false},
    };
    Keep({"Slides", "SixteenBytesLong"});
    for (const auto &row : aRows) {
        const auto look = [&] {
            SCOPED_TRACE(row.why);
            EXPECT_EQ(SeenText(IDC_SAVE_NAME), row.kept);
            EXPECT_EQ(Seen(IDC_SAVE_SAVE)["enabled"], row.bSave);
            EXPECT_EQ(Seen(IDC_SAVE_DELETE)["enabled"], row.bDelete);
        };
        EXPECT_EQ(Open({std::string("type 5204 \"") + row.typed + '"', look, "cancel"}), 0);
    }
}

TEST_F(SaveDialog, ANewSettingComesFirstAndBecomesCurrent)
{
    Keep({"Slides", "Letters"});
    UIInstance.nCurSetting = 4; // left from before the settings became custom
    std::memset(dm.Settings.szName, 'x', sizeof dm.Settings.szName);
    const int32_t nAdjust[] = {1, -2, 3, -4, 5, ADJUST_MINUS};
    std::ranges::copy(nAdjust, UIInstance.nAdjust);
    EXPECT_EQ(Open({ANOTHER, "key Enter"}), 1);
    EXPECT_THAT(Slots(), ElementsAre("Another 8 7", "Slides 9 108", "Letters 10 109"));
    EXPECT_EQ(std::string(Slot(0).szName, 16), std::string("Another\0\0\0\0\0\0\0\0\0", 16));
    EXPECT_THAT(Slot(0).sAdj, ElementsAre(1, -2, 3, 4, -5, 0));
    EXPECT_EQ(UIInstance.nCurSetting, FIRST_SLOT);
    EXPECT_EQ(UIInstance.nListState, LIST_ENTRY);
    EXPECT_EQ(Saved(), InMemory());
}

TEST_F(SaveDialog, TheListsEntryIsSavedAlsoWhereNoFileCanBe)
{
    std::filesystem::create_directory(kvp::HostPath(USER_FILE));
    Keep({}, 4);
    EXPECT_EQ(Open({ANOTHER, PRESS_SAVE}), 1);
    EXPECT_THAT(Slots(), ElementsAre("Another 8 104", "- 9 109", "- 10 110"));
    EXPECT_EQ(dm.Settings.wRule, 104);
}

TEST_F(SaveDialog, ASettingIsReplacedWhereItStandsIfTheUserAgrees)
{
    Keep({"Slides", "Letters"});
    EXPECT_EQ(
        Open(
            {R"(choose 5226 "Letters")", PRESS_SAVE, "box cancel",
             [] { EXPECT_THAT(Slots(), ElementsAre("Slides 8 108", "Letters 9 109", "- 10 110")); },
             PRESS_SAVE,
             R"(box ok "A setting of this name has been saved before. Do you want to replace it?")"}),
        1);
    EXPECT_THAT(Slots(), ElementsAre("Slides 8 108", "Letters 9 7", "- 10 110"));
    EXPECT_EQ(UIInstance.nCurSetting, FIRST_SLOT + 1);
    EXPECT_EQ(Saved(), InMemory());
}

TEST_F(SaveDialog, AFullTableTakesNothingNotEvenAReplacement)
{
    Keep({"Slides", "Letters", "Maps"});
    for (const char *name : {ANOTHER, R"(type 5204 "Letters")"})
        EXPECT_EQ(Open({name, PRESS_SAVE, "box ok"}), 0);
    EXPECT_THAT(Slots(), ElementsAre("Slides 8 108", "Letters 9 109", "Maps 10 110"));
    EXPECT_TRUE(Saved().empty());
}

TEST_F(SaveDialog, WhatIsCurrentSurvivesADeletion)
{
    const struct {
        const char *why;
        int32_t nCurrent, nResult, nAfter, nState;
    } aRows[] = {
        {"the current one itself", FIRST_SLOT + 1, 1, KV_CUSTOM_SETTINGS, LIST_CUSTOM},
        {"one before it", FIRST_SLOT + 2, 0, FIRST_SLOT + 1, LIST_FOUND},
        {"one behind it", FIRST_SLOT, 0, FIRST_SLOT, LIST_FOUND},
        {"a predefined one is current", 3, 0, 3, LIST_FOUND},
        {"the settings are custom", KV_CUSTOM_SETTINGS, 0, KV_CUSTOM_SETTINGS, LIST_CUSTOM},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        Keep({"Slides", "Letters", "Maps"}, row.nCurrent);
        EXPECT_EQ(Open({R"(choose 5226 "Letters")", PRESS_DELETE,
                        R"(box ok "Do you want to delete the selected entry?")"}),
                  row.nResult);
        EXPECT_THAT(Slots(), ElementsAre("Slides 8 108", "Maps 9 110", "- 10 110"));
        EXPECT_EQ(SettingName(Slot(2)), "Maps") << "a freed slot keeps its bytes";
        EXPECT_EQ(UIInstance.nCurSetting, row.nAfter);
        EXPECT_EQ(UIInstance.nListState, row.nState);
        EXPECT_EQ(dm.Settings.wIndex, row.nResult ? KV_CUSTOM_SETTINGS : row.nCurrent);
        EXPECT_EQ(dm.Settings.wRule, row.nCurrent == KV_CUSTOM_SETTINGS ? 7 : 100 + row.nCurrent);
        EXPECT_EQ(Saved(), InMemory());
    }
}

TEST_F(SaveDialog, NothingHappensWithoutAYes)
{
    Keep({"Slides", "Letters"}, FIRST_SLOT);
    EXPECT_EQ(Open({ANOTHER, "key Escape"}), 0);
    EXPECT_EQ(Open({R"(choose 5226 "Slides")", PRESS_DELETE, "box cancel"}), 0);
    EXPECT_THAT(Slots(), ElementsAre("Slides 8 108", "Letters 9 109", "- 10 110"));
    EXPECT_EQ(UIInstance.nCurSetting, FIRST_SLOT);
    EXPECT_TRUE(Saved().empty());
}

using SavedSettings = SampleTest;

TEST_F(SavedSettings, AreFoundAgainAndDeletedFromTheMainPage)
{
    const auto shown = [](const char *text) {
        return [text] { EXPECT_EQ(SeenText(IDC_MAIN_SETTINGS), text); };
    };
    Start();
    EXPECT_EQ(Show({"click 5042", "click 2019", R"(type 5204 "Mine")", "click 5230", shown("Mine"),
                    "click 2019", R"(type 5204 "Yours")", "click 5230", shown("Yours"), "ok"}),
              1);
    EXPECT_EQ(
        ShowAgain({shown("Yours"), "drop 5040",
                   [] {
                       const std::vector<std::string> items = SeenItems(IDC_MAIN_SETTINGS);
                       EXPECT_EQ(items[items.size() - 2], "Mine") << "older ones come first";
                       EXPECT_EQ(items.back(), "Yours");
                   },
                   R"(choose 5040 "Mine")", "click 2019", R"(choose 5226 "Yours")", PRESS_DELETE,
                   "box ok", shown("Mine"), "click 2019", R"(choose 5226 "Mine")", PRESS_DELETE,
                   "box ok", shown("Custom Settings"), "ok"}),
        1);
    EXPECT_EQ(out.Settings.wIndex, KV_CUSTOM_SETTINGS);
}

TEST_F(SaveDialog, AboutShowsMakerAndModelAndOnlyCloses)
{
    const auto look = [] {
        EXPECT_EQ(Seen(NO_ID)["picture"], PICTURE_MAKER);
        EXPECT_THAT(kvp::DescribeTopWindow(), HasSubstr("KORVA KJ-820 Pro"));
        EXPECT_EQ(PixelOf(IDC_ABOUT_CLOSE, -5, -5), RGB(192, 192, 192)) << "as grey as the sheet";
    };
    for (const char *way : {"click 2123", "key Escape"})
        EXPECT_EQ(OpenDialog(IDD_ABOUT, AboutDlgProc, {look, way}), 1);
}

} // namespace
