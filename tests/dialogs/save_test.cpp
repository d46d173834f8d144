// Save Settings and About by themselves: a table of settings made here, the samples' dialog, and
// the user's file that follows the table.
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>

#include <gmock/gmock.h>

#include "base/modeltable.h"
#include "base/text.h"
#include "dialogs/pages.h"
#include "dialogs/settings_table.h"
#include "resources/about_ids.h"
#include "resources/pictures.h"
#include "resources/save_ids.h"
#include "resources/styles.h"
#include "tests/support/model_builder.h"
#include "tests/support/samples.h"

namespace
{

using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr int32_t FIRST_SLOT = 8; // two Automatic records and six predefined ones
constexpr WORD SLOTS = 3;
constexpr const char *ANOTHER = R"(type 5204 "Another")", *PRESS_SAVE = "click 5230",
                     *PRESS_DELETE = "click 2017";
constexpr const char *USER_FILE = "C:\\winnt35\\system32\\KJ820PRO.ucf";
constexpr const char *DELETED = R"(box ok "Do you want to delete the selected entry?")";

class SaveDialog : public SampleTest
{
  protected:
    SaveDialog()
    {
        LoadDataFile();
        UIInstance = UIINSTANCE{};
        UIInstance.hResLib = LoadLibraryA((std::string(DRIVER_DIR) + "KJ820UI.DLL").c_str());
        DatFile &dat = UIInstance.dat;
        dat.nAuto = 2;
        dat.nPreset = FIRST_SLOT - 2;
        dat.nSettings = FIRST_SLOT + SLOTS;
        dat.CfgHeader = {FILE_VERSION, 2, FIRST_SLOT - 2, SLOTS, 0};
        WCHAR wszName[32] = u"KORVA KJ-820 Pro";
        KVMemcpy(dm.wszModelName, wszName, sizeof wszName);
    }
    ~SaveDialog() override
    {
        FreeLibrary(UIInstance.hResLib);
        UIInstance = UIINSTANCE{};
        FreeDataFile();
    }
    // The slots in use, the newest first; all of the others are free. Custom settings are edited.
    void Keep(const std::vector<std::string> &aNames)
    {
        DatFile &dat = UIInstance.dat;
        dat.lpSettings.assign(dat.nSettings, SettingsRecord{});
        for (int32_t i = 0; i < FIRST_SLOT + SLOTS; ++i) {
            SettingsRecord &record = dat.lpSettings[static_cast<size_t>(i)];
            record.wIndex = static_cast<uint16_t>(i);
            record.wRule = static_cast<uint16_t>(100 + i);
            record.wState = i < FIRST_SLOT ? 0 : STATE_FREE;
        }
        for (size_t i = 0; i < aNames.size(); ++i) {
            SettingsRecord &record = dat.lpSettings[FIRST_SLOT + i];
            record.wState = STATE_IN_USE;
            aNames[i].copy(record.szName, sizeof record.szName);
        }
        dat.nUserUsed = static_cast<uint32_t>(aNames.size());
        BeCurrent(KV_CUSTOM_SETTINGS);
    }
    void BeCurrent(int32_t nSetting)
    {
        UIInstance.nCurSetting = nSetting;
        UIInstance.nListState = nSetting == KV_CUSTOM_SETTINGS ? LIST_CUSTOM : LIST_FOUND;
        dm.Settings = {};
        dm.Settings.wIndex = static_cast<uint16_t>(nSetting);
        dm.Settings.wRule = 7;
    }
    INT_PTR Open(std::vector<Person::Step> steps)
    {
        person.Will(std::move(steps));
        const INT_PTR nResult =
            DialogBoxParamA(UIInstance.hResLib, MAKEINTRESOURCEA(IDD_SAVE), nullptr, SaveDlgProc,
                            reinterpret_cast<LPARAM>(&block));
        person.ExpectDone();
        return nResult;
    }
    // Every slot as "name number", a free one as "- number", and what was saved last as rule.
    static std::vector<std::string> Slots()
    {
        std::vector<std::string> slots;
        for (const SettingsRecord &slot : UserSlots(&UIInstance))
            slots.push_back((slot.wState == STATE_FREE ? "-" : SettingName(slot)) + ' ' +
                            std::to_string(slot.wIndex));
        return slots;
    }
    static SettingsRecord Slot(size_t n) { return UIInstance.dat.lpSettings[FIRST_SLOT + n]; }
    // What the user's file holds behind its version word; nothing when there is none.
    static Bytes Saved()
    {
        std::ifstream file(kvp::HostPath(USER_FILE), std::ios::binary);
        Bytes bytes((std::istreambuf_iterator<char>(file)), {});
        bytes.erase(bytes.begin(), bytes.begin() + (bytes.size() < 2 ? 0 : 2));
        return bytes;
    }
    static Bytes InMemory()
    {
        const auto slots = std::as_bytes(UserSlots(&UIInstance));
        Bytes bytes(slots.size());
        std::memcpy(bytes.data(), slots.data(), slots.size());
        return bytes;
    }

    DriverDevMode dm{};
    CBSTRUC block{&dm, &UIInstance, nullptr, nullptr, nullptr};
};

std::function<void()> Buttons(bool bSave, bool bDelete)
{
    return [=] {
        EXPECT_EQ(Seen(IDC_SAVE_SAVE)["enabled"], bSave);
        EXPECT_EQ(Seen(IDC_SAVE_DELETE)["enabled"], bDelete);
    };
}

// ---- the name -------------------------------------------------------------------------------

struct NameRow {
    const char *why, *typed, *kept;
    bool bSave, bDelete;
};
std::vector<Person::Step> TypeAll(std::span<const NameRow> rows)
{
    std::vector<Person::Step> steps;
    for (const NameRow &row : rows) {
        steps.emplace_back(std::string("type 5204 \"") + row.typed + '"');
        steps.emplace_back([row] {
            SCOPED_TRACE(row.why);
            EXPECT_EQ(SeenText(IDC_SAVE_NAME), row.kept);
            Buttons(row.bSave, row.bDelete)();
        });
    }
    steps.emplace_back("cancel");
    return steps;
}

TEST_F(SaveDialog, ANameSaysWhatCanBeDoneWithIt)
{
    constexpr NameRow aRows[] = {
        {"a new one", "Holidays", "Holidays", true, false},
        {"a saved one", "Slides", "Slides", true, true},
        {"other letters", "slides", "slides", true, false},
        {"a saved one of 16 bytes", "SixteenBytesLong", "SixteenBytesLong", true, true},
        {"nothing", "", "", false, false},
        {"blanks", "   ", "   ", false, false},
        {"a predefined one", "Photo", "Photo", false, false},
        {"the page's label", "Custom Settings", "Custom Settings", false, false},
        {"a part of it", "Custom", "Custom", true, false},
        {"one that the model does not predefine", "Full Dots", "Full Dots", true, false},
        {"17 bytes", "abcdefghijklmnopq", "abcdefghijklmnop", true, false},
        {"cut to a saved one", "SixteenBytesLonger", "SixteenBytesLong", true, true},
        {"cut to a predefined one", "Photo Retouchings", "Photo Retouching", false, false},
        {"a lead byte elsewhere, at the cut", "abcdefghijklmnoéq", "abcdefghijklmno", true, false},
    };
    Keep({"Slides", "SixteenBytesLong"});
    EXPECT_EQ(Open(TypeAll(aRows)), 0);
}

TEST_F(SaveDialog, ACutSplitsNoCharacter)
{
    constexpr NameRow aRows[] = {
        {"16 bytes", "年賀状の設定です", "年賀状の設定です", true, true},
        {"18 bytes", "年賀状の設定ですよ", "年賀状の設定です", true, true},
        {"the 16th leads", "2年賀状の設定です", "2年賀状の設定で", true, false},
        {"the 16th only looks like it", "年賀状の設定でんき", "年賀状の設定でん", true, false},
        {"a predefined one", "ふつう", "ふつう", true, false},
        {"the page's label", "手動設定", "手動設定", false, false},
    };
    machine.wLang = 0x0411;
    machine.uAnsiCodePage = 932;
    Apply();
    Keep({"\x94\x4E\x89\xEA\x8F\xF3\x82\xCC\x90\xDD\x92\xE8\x82\xC5\x82\xB7"});
    EXPECT_EQ(Open(TypeAll(aRows)), 0);
}

TEST_F(SaveDialog, ACutNameIsTypedOnAtItsEnd)
{
    Keep({});
    EXPECT_EQ(Open({R"(type 5204 "abcdefghijklmnopq")", "key Backspace", "key Backspace",
                    [] { EXPECT_EQ(SeenText(IDC_SAVE_NAME), "abcdefghijklmn"); }, "cancel"}),
              0);
}

TEST_F(SaveDialog, ThePickedNameIsOffered)
{
    Keep({"SixteenBytesLong", "Slides"});
    EXPECT_EQ(Open({Buttons(false, false),
                    [] {
                        EXPECT_THAT(SeenItems(IDC_SAVE_LIST),
                                    ElementsAre("SixteenBytesLong", "Slides"));
                    },
                    R"(choose 5226 "SixteenBytesLong")", Buttons(true, true),
                    [] { EXPECT_EQ(SeenText(IDC_SAVE_NAME), "SixteenBytesLong"); },
                    R"(choose 5226 "Slides")", [] { EXPECT_EQ(SeenText(IDC_SAVE_NAME), "Slides"); },
                    "cancel"}),
              0);
}

// ---- saving ---------------------------------------------------------------------------------

TEST_F(SaveDialog, ANewSettingComesFirstAndBecomesCurrent)
{
    Keep({"Slides", "Letters"});
    dm.Settings.wIndex = KV_CUSTOM_SETTINGS;
    dm.Settings.wDotScale = 3;
    std::memset(dm.Settings.szName, 'x', sizeof dm.Settings.szName);
    const int32_t nAdjust[] = {1, -2, 3, -4, 5, ADJUST_MINUS};
    std::ranges::copy(nAdjust, UIInstance.nAdjust);
    EXPECT_EQ(Open({ANOTHER, "key Enter"}), 1);
    EXPECT_THAT(Slots(), ElementsAre("Another 8", "Slides 9", "Letters 10"));
    EXPECT_EQ(Slot(0).wRule, 7);
    EXPECT_EQ(Slot(0).wDotScale, 3);
    EXPECT_EQ(std::string(Slot(0).szName, 16), std::string("Another\0\0\0\0\0\0\0\0\0", 16));
    EXPECT_THAT(Slot(0).sAdj, ElementsAre(1, -2, 3, 4, -5, 0));
    EXPECT_EQ(Slot(1).wRule, 108) << "all of a setting moves";
    EXPECT_EQ(Slot(2).wRule, 109);
    EXPECT_EQ(UIInstance.dat.nUserUsed, 3u);
    EXPECT_EQ(UIInstance.nCurSetting, FIRST_SLOT);
    EXPECT_EQ(UIInstance.nListState, LIST_ENTRY);
    EXPECT_EQ(Saved(), InMemory());
}

TEST_F(SaveDialog, WhatIsSavedIsTheCurrentEntryOfTheList)
{
    Keep({});
    BeCurrent(4);
    EXPECT_EQ(Open({ANOTHER, PRESS_SAVE}), 1);
    EXPECT_EQ(Slot(0).wRule, 104);
    EXPECT_EQ(dm.Settings.wRule, 104);
}

TEST_F(SaveDialog, ASettingIsReplacedWhereItStands)
{
    const char *REPLACED =
        R"(box %s "A setting of this name has been saved before. Do you want to replace it?")";
    const auto answer = [&](const std::string &button) {
        std::string line = REPLACED;
        return line.replace(line.find("%s"), 2, button);
    };
    Keep({"Slides", "Letters"});
    const Bytes before = InMemory();
    EXPECT_EQ(Open({R"(type 5204 "Letters")", PRESS_SAVE, answer("cancel"),
                    [&] { EXPECT_EQ(InMemory(), before); }, PRESS_SAVE, answer("ok")}),
              1);
    EXPECT_THAT(Slots(), ElementsAre("Slides 8", "Letters 9", "- 10"));
    EXPECT_EQ(Slot(0).wRule, 108);
    EXPECT_EQ(Slot(1).wRule, 7);
    EXPECT_EQ(UIInstance.nCurSetting, FIRST_SLOT + 1);
    EXPECT_EQ(Saved(), InMemory());
}

TEST_F(SaveDialog, AFullTableTakesNothingNotEvenAReplacement)
{
    Keep({"Slides", "Letters", "Maps"});
    const Bytes before = InMemory();
    for (const char *name : {ANOTHER, R"(type 5204 "Letters")"})
        EXPECT_EQ(Open({name, PRESS_SAVE,
                        R"(box ok "No more settings can be saved. Delete one that you no longer )"
                        R"(need, then save again.")"}),
                  0);
    EXPECT_EQ(InMemory(), before);
    EXPECT_EQ(UIInstance.nCurSetting, KV_CUSTOM_SETTINGS);
    EXPECT_TRUE(Saved().empty());
}

TEST_F(SaveDialog, AFileThatCannotBeWrittenIsNotMentioned)
{
    Keep({});
    std::filesystem::create_directory(kvp::HostPath(USER_FILE));
    EXPECT_EQ(Open({ANOTHER, PRESS_SAVE}), 1);
    EXPECT_THAT(Slots(), ElementsAre("Another 8", "- 9", "- 10"));
}

// ---- deleting -------------------------------------------------------------------------------

TEST_F(SaveDialog, WhatIsCurrentSurvivesADeletion)
{
    const struct {
        const char *why;
        int32_t nCurrent, nResult, nAfter;
        bool bCustom;
    } aRows[] = {
        {"the current one itself", FIRST_SLOT + 1, 1, KV_CUSTOM_SETTINGS, true},
        {"one before it", FIRST_SLOT + 2, 0, FIRST_SLOT + 1, false},
        {"one behind it", FIRST_SLOT, 0, FIRST_SLOT, false},
        {"a predefined one is current", 3, 0, 3, false},
        {"the settings are custom", KV_CUSTOM_SETTINGS, 0, KV_CUSTOM_SETTINGS, true},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        Keep({"Slides", "Letters", "Maps"});
        BeCurrent(row.nCurrent);
        EXPECT_EQ(Open({R"(choose 5226 "Letters")", PRESS_DELETE, DELETED}), row.nResult);
        EXPECT_THAT(Slots(), ElementsAre("Slides 8", "Maps 9", "- 10"));
        EXPECT_EQ(Slot(1).wRule, 110);
        EXPECT_EQ(SettingName(Slot(2)), "Maps") << "a freed slot keeps its bytes";
        EXPECT_EQ(UIInstance.dat.nUserUsed, 2u);
        EXPECT_EQ(UIInstance.nCurSetting, row.nAfter);
        EXPECT_EQ(UIInstance.nListState, row.bCustom ? LIST_CUSTOM : LIST_FOUND);
        EXPECT_EQ(dm.Settings.wIndex, row.nResult ? KV_CUSTOM_SETTINGS : row.nCurrent);
        EXPECT_EQ(dm.Settings.wRule, row.nCurrent == KV_CUSTOM_SETTINGS ? 7 : 100 + row.nCurrent);
        EXPECT_EQ(Saved(), InMemory());
    }
}

TEST_F(SaveDialog, NothingHappensWithoutAYes)
{
    Keep({"Slides", "Letters"});
    BeCurrent(FIRST_SLOT);
    const Bytes before = InMemory();
    const std::vector<std::vector<Person::Step>> ways = {
        {"cancel"},
        {ANOTHER, "key Escape"},
        {R"(choose 5226 "Slides")", PRESS_DELETE, "box cancel"},
    };
    for (const auto &way : ways) {
        EXPECT_EQ(Open(way), 0);
        EXPECT_EQ(InMemory(), before);
        EXPECT_EQ(UIInstance.nCurSetting, FIRST_SLOT);
        EXPECT_TRUE(Saved().empty());
    }
}

// ---- About ----------------------------------------------------------------------------------

TEST_F(SaveDialog, AboutShowsMakerAndModelAndOnlyCloses)
{
    const auto look = [] {
        EXPECT_EQ(Seen(NO_ID)["picture"], PICTURE_MAKER);
        EXPECT_THAT(kvp::DescribeTopWindow(), HasSubstr("KORVA KJ-820 Pro"));
        EXPECT_EQ(PixelOf(IDC_ABOUT_CLOSE, -5, -5), RGB(192, 192, 192)) << "as grey as the sheet";
    };
    for (const char *way : {"click 2123", "key Enter", "key Escape"}) {
        person.Will({look, way});
        EXPECT_EQ(DialogBoxParamA(UIInstance.hResLib, MAKEINTRESOURCEA(IDD_ABOUT), nullptr,
                                  AboutDlgProc, reinterpret_cast<LPARAM>(&dm)),
                  1);
        person.ExpectDone();
    }
}

} // namespace
