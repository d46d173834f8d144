// The Main page of a sample under a person's hands: its three states, the ways between them, and
// the record that comes of each.
#include <algorithm>
#include <array>
#include <cstring>
#include <fstream>
#include <iterator>
#include <sstream>

#include <fmt/format.h>
#include <gmock/gmock.h>

#include "base/modeltable.h"
#include "base/module.h"
#include "datafile/tables.h"
#include "interface/sheet.h"
#include "platform/win32.h"
#include "resources/main_ids.h"
#include "tests/support/model_builder.h"
#include "tests/support/samples.h"

namespace
{

using ::testing::HasSubstr;

constexpr const char *DAT = "C:\\winnt35\\KJ820PRO.dat", *CFG = "C:\\winnt35\\KJ820PRO.cfg",
                     *UCF = "C:\\winnt35\\system32\\KJ820PRO.ucf";

DatFile Tables()
{
    DatFile tables{};
    EXPECT_EQ(ReadDatTables(DAT, &tables), FileState::Read);
    EXPECT_EQ(ReadCfgTables(CFG, &tables), FileState::Read);
    return tables;
}

// The setting that a record's index names: a slot by its number, one of the model's by what it is
// for.
std::string SettingOf(uint16_t wIndex)
{
    const DatFile tables = Tables();
    const uint32_t nFirstSlot = tables.nAuto + tables.nPreset;
    if (wIndex == KV_CUSTOM_SETTINGS)
        return "custom";
    if (wIndex >= nFirstSlot)
        return fmt::format("slot {}", wIndex - nFirstSlot);
    const SettingsRecord &record = tables.lpSettings.at(wIndex);
    return fmt::format("{} {} for media {} ink {}", wIndex < tables.nAuto ? "level" : "preset",
                       wIndex < tables.nAuto ? +record.wAutoLevel : +record.wPreset, +record.wMedia,
                       +record.wInk);
}

Bytes FileOf(const char *dosPath)
{
    std::ifstream file(kvp::HostPath(dosPath), std::ios::binary);
    return Bytes((std::istreambuf_iterator<char>(file)), {});
}

void CutShort(const char *dosPath, size_t nPart)
{
    Bytes bytes = kvp::MemoryFile(dosPath).value_or(FileOf(dosPath));
    bytes.resize((bytes.size() - 1) / nPart);
    kvp::PutMemoryFile(dosPath, bytes);
}

void PatchWords(const char *dosPath, size_t at, std::vector<int16_t> words)
{
    Bytes bytes = FileOf(dosPath);
    ASSERT_LE(at + 2 * words.size(), bytes.size());
    std::memcpy(&bytes[at], words.data(), 2 * words.size());
    kvp::PutMemoryFile(dosPath, bytes);
}

// A field of a settings record of the .cfg, of the first one from a position on that has this ink.
size_t InCfg(uint32_t nFirst, uint16_t wInk, size_t field)
{
    const DatFile tables = Tables();
    while (tables.lpSettings.at(nFirst).wInk != wInk)
        ++nFirst;
    return sizeof(CfgHeader) + sizeof(SettingsRecord) * nFirst + field;
}

// The user's file with a paper and these settings, the newest first.
void PutUserFile(const std::vector<SettingsRecord> &saved, uint16_t wVersion = 256)
{
    const DatFile tables = Tables();
    Model model;
    model.wUserSlots = tables.CfgHeader.wUserSlots;
    model.wUserPaperSlots = tables.CfgHeader.wUserPaperSlots;
    model.wUcfVersion = wVersion;
    model.userSettings = saved;
    model.AddUserPaper("My 10 x 15", 1000, 1500, 1, 1);
    kvp::PutMemoryFile(UCF, model.Ucf());
}

SettingsRecord Saved(uint16_t preset, int16_t resolution, int16_t media, uint16_t ink,
                     const char *name, std::array<int16_t, 6> adjustments)
{
    SettingsRecord record{};
    record.wPreset = preset;
    record.wResolution = resolution;
    record.wMedia = media;
    record.wInk = ink;
    record.bIntent = 2;
    record.wFlags = KV_FLAG_MW;
    record.wState = STATE_IN_USE;
    std::memcpy(record.szName, name, std::strlen(name));
    std::memcpy(record.sAdj, adjustments.data(), sizeof record.sAdj);
    return record;
}
// Black, on coated paper, with a name that differs from a predefined one in a letter's case alone;
// colour, on transparencies, with one that fills its field.
const std::vector<SettingsRecord> aTwoSaved = {
    Saved(3, 9, 1, 0, "normal", {1, 2, 3, 4, 5, 6}),
    Saved(7, 20, 5, 1, "Sixteen bytes ok", {6, 5, 4, 3, 2, 1})};

// Setting, media; resolution, MW, HS, intent ("grey" when it is); mode's and ink's picture; the
// trackbar with its labels, if there is one.
std::string Page()
{
    const auto picture = [](int id) { return Seen(id).value("picture", 0); };
    const bool bGrey = !Seen(IDC_MAIN_INTENT).at("enabled");
    EXPECT_NE(Seen(IDC_MAIN_AUTOMATIC).at("checked"), Seen(IDC_MAIN_SETTINGS).at("enabled"));
    EXPECT_EQ(Seen(IDC_MAIN_COLOR).at("checked"), picture(IDC_MAIN_INK_PICTURE) == 6760);
    std::string strPage =
        fmt::format("{}, {}; {}, {}, {}, {}; {} {}", SeenText(IDC_MAIN_SETTINGS),
                    SeenText(IDC_MAIN_MEDIA), SeenText(IDC_MAIN_RESOLUTION), SeenText(IDC_MAIN_MW),
                    SeenText(IDC_MAIN_HS), bGrey ? "grey" : SeenText(IDC_MAIN_INTENT),
                    picture(IDC_MAIN_MODE_PICTURE), picture(IDC_MAIN_INK_PICTURE));
    for (const auto &[strLong, strShort] :
         {std::pair("Custom Settings", "Custom"), {"MW: ", "MW "}, {"High Speed: ", "HS "}})
        if (const size_t at = strPage.find(strLong); at != std::string::npos)
            strPage.replace(at, std::strlen(strLong), strShort);
    if (Seen(IDC_MAIN_LEVEL).at("visible"))
        strPage += fmt::format("; {} {}-{}", Seen(IDC_MAIN_LEVEL).at("position").get<int>(),
                               SeenText(IDC_MAIN_LEVEL_LEFT), SeenText(IDC_MAIN_LEVEL_RIGHT));
    return strPage;
}

// A list's items with their data; a user's slot as such.
std::string List(int id)
{
    const nlohmann::json list = Seen(id);
    std::string strList;
    for (size_t i = 0; i < list.at("items").size(); ++i) {
        const std::string data = list["data"][i].dump(), slot = SettingOf(list["data"][i]);
        strList += fmt::format("{}{} {}", i ? ", " : "", list["items"][i].get<std::string>(),
                               slot.starts_with("slot") ? slot : data);
    }
    return strList;
}

// Lines of actions, with looks between them: "= what the page says", "5040: what a list holds".
std::vector<Person::Step> Story(const std::string &strStory)
{
    std::vector<Person::Step> steps;
    std::istringstream lines(strStory);
    for (std::string line; std::getline(lines, line);) {
        if (line.empty())
            continue;
        if (line.starts_with("= "))
            steps.push_back([line] { EXPECT_EQ("= " + Page(), line); });
        else if (line.find(": ") == 4)
            steps.push_back([line] {
                const std::string strId = line.substr(0, 4);
                EXPECT_EQ(strId + ": " + List(std::stoi(strId)), line);
            });
        else
            steps.push_back(line);
    }
    return steps;
}

// What of a record comes from the page.
std::string Record(const DriverDevMode &dm)
{
    const SettingsRecord &now = dm.Settings;
    return fmt::format(
        "{}: {}, resolution {} media {} ink {}/{} HT {} intent {} flags {}, rule {}, "
        "color {}, {}x{} code {}",
        dm.bAutoMode ? "automatic" : "advanced", SettingOf(now.wIndex), +now.wResolution,
        +now.wMedia, +now.wInk, +now.wInkCode, now.bHT, now.bIntent, +now.wFlags, +now.wRule,
        +dm.dm.dmColor, +dm.dm.dmPrintQuality, +dm.dm.dmYResolution, +dm.lMediaCode);
}

std::string Adjustments(const DriverDevMode &dm)
{
    return fmt::format("{}", fmt::join(std::to_array(dm.Settings.sAdj), " "));
}

using MainPage = SampleTest;

TEST_F(MainPage, AutomaticFollowsMediaInkAndTheTrackbar)
{
    Start();
    // Paper without levels in black, paper without black, and mirrored film.
    EXPECT_EQ(Show(Story(R"(
= Normal, Plain Paper; Normal - 360 dpi, MW Off, HS Off, Vivid; 1001 6760
click 5041
= Custom, Plain Paper; Normal - 360 dpi, MW Off, HS On, Vivid; 6248 6760; 1 Speed-Quality
5079: Plain Paper 0, 360 dpi Ink Jet Paper 1, Photo Quality Ink Jet Paper 2, Photo Paper 3, Glossy Film 4, Ink Jet Transparencies 5, Photo Quality Ink Jet Card 6
5040: Economy 0, Normal 1, Full Dots 6, Fine 2, Photo Retouching 5, Photo 3, Presentation 7, Mirror Image 8, Custom Settings 0
slide 2147 2
= Custom, Plain Paper; Fine - 720 dpi, MW On, HS Off, Vivid; 6248 6760; 2 Speed-Quality
choose 5079 "Photo Quality Ink Jet Paper"
= Custom, Photo Quality Ink Jet Paper; Fine - 720 dpi, MW On, HS Off, Vivid; 6248 6760; 1 Fast-Fine
click 5047
= Custom, Photo Quality Ink Jet Paper; Fine - 720 dpi, MW On, HS Off, grey; 6365 6752
click 5044
= Custom, Photo Quality Ink Jet Paper; Fine - 720 dpi, MW On, HS Off, Vivid; 6248 6760; 1 Fast-Fine
choose 5079 "Photo Paper"
click 5047
= Custom, Plain Paper; Draft - 360 dpi, MW Off, HS On, grey; 6328 6752; 1 Speed-Quality
ok)")),
              1);
    EXPECT_EQ(
        Record(out),
        "automatic: level 1 for media 0 ink 0, resolution 1 media 0 ink 0/3 HT 0 intent 0 flags 4, "
        "rule 2, color 1, 360x360 code 1");
    EXPECT_EQ(ShowAgain(Story(R"(
= Custom, Plain Paper; Draft - 360 dpi, MW Off, HS On, grey; 6328 6752; 1 Speed-Quality
click 5044
choose 5079 "Glossy Film"
= Custom, Glossy Film; Fine - 720 dpi, MW Super, HS Off, Photo-realistic; 7227 6760
ok)")),
              1);
    EXPECT_EQ(Record(out), "automatic: level 0 for media 4 ink 1, resolution 18 media 4 ink 1/6 HT "
                           "3 intent 1 flags 11, "
                           "rule 29, color 2, 720x720 code 6");
}

TEST_F(MainPage, CustomSettingsGoOnFromTheAutomaticOnesAndSurviveALookIntoTheList)
{
    Start();
    EXPECT_EQ(Show(Story(R"(
click 5041
slide 2147 2
click 5042
= Custom, Plain Paper; Fine - 720 dpi, MW On, HS Off, Vivid; 6327 6760
5079: Plain Paper 6, 360 dpi Ink Jet Paper 9, Photo Quality Ink Jet Paper 14, Photo Paper 16, Glossy Film 18, Ink Jet Transparencies 20, Photo Quality Ink Jet Card 21
drop 5040
5040: Economy 0, Normal 1, Full Dots 6, Fine 2, Photo Retouching 5, Photo 3, Presentation 7, Mirror Image 8
= Economy, Plain Paper; Fine - 720 dpi, MW On, HS Off, Vivid; 6327 6760
close 5040
5040: Economy 0, Normal 1, Full Dots 6, Fine 2, Photo Retouching 5, Photo 3, Presentation 7, Mirror Image 8, Custom Settings 0
= Custom, Plain Paper; Fine - 720 dpi, MW On, HS Off, Vivid; 6327 6760
drop 5040
close 5040
= Custom, Plain Paper; Fine - 720 dpi, MW On, HS Off, Vivid; 6327 6760
choose 5079 "Photo Paper"
= Custom, Photo Paper; Fine - 720 dpi, MW On, HS On, Vivid; 6327 6760
click 5047
= Custom, Plain Paper; Fine - 720 dpi, MW On, HS On, grey; 6332 6752
5079: Plain Paper 6, 360 dpi Ink Jet Paper 9, Photo Quality Ink Jet Paper 14, Ink Jet Transparencies 20, Photo Quality Ink Jet Card 21
ok)")),
              1);
    // No rule is for photo paper in black, which is what was left.
    EXPECT_EQ(Record(out), "advanced: custom, resolution 6 media 0 ink 0/3 HT 3 intent 0 flags 5, "
                           "rule 0, color 1, 720x720 code 1");
    EXPECT_EQ(ShowAgain(Story(R"(
= Custom, Plain Paper; Fine - 720 dpi, MW On, HS On, grey; 6332 6752
click 5041
= Custom, Plain Paper; Draft - 360 dpi, MW Off, HS On, grey; 6328 6752; 1 Speed-Quality
cancel)")),
              2);
}

TEST_F(MainPage, AutomaticThatHasNoRecordForTheCustomMediaWaitsForAnother)
{
    Start();
    in.Settings.wIndex = KV_CUSTOM_SETTINGS;
    in.Settings.wResolution = 21; // a card, which Automatic prints in colour only
    in.Settings.wInk = 0;
    for (const bool bAutoMode : {false, true}) { // since now, or since the last sheet
        in.bAutoMode = bAutoMode;
        EXPECT_EQ(Show(Story(std::string(bAutoMode ? "" : "click 5041\n") + R"(
= Custom, ; Fine - 720 dpi, MW Off, HS Off, grey; 6332 6752
choose 5079 "360 dpi Ink Jet Paper"
= Custom, 360 dpi Ink Jet Paper; Normal - 360 dpi, MW On, HS Off, grey; 6365 6752; 1 Speed-Quality
ok)")),
                  1);
        EXPECT_EQ(Record(out), "automatic: level 1 for media 1 ink 0, resolution 8 media 1 ink 0/3 "
                               "HT 1 intent 0 flags 1, rule 15, color 1, 360x360 code 2");
    }
    EXPECT_EQ(Show(Story(R"(
click 5044
= Custom, Plain Paper; Normal - 360 dpi, MW Off, HS On, Vivid; 6248 6760; 1 Speed-Quality
ok)")),
              1);
    EXPECT_EQ(SettingOf(out.Settings.wIndex), "level 1 for media 0 ink 1");
    EXPECT_EQ(+out.Settings.wMedia, 0);
}

TEST_F(MainPage, ChoosingFromTheListEndsCustomSettings)
{
    Start();
    // Black has no such preset for this paper: the first of all is taken, ink and all.
    EXPECT_EQ(Show(Story(R"(
click 5041
click 5047
choose 5079 "360 dpi Ink Jet Paper"
click 5042
choose 5040 "Full Dots"
= Full Dots, Plain Paper; Normal - 360 dpi, MW On, HS Off, Vivid; 1006 6760
ok)")),
              1);
    EXPECT_EQ(
        Record(out),
        "advanced: preset 6 for media 0 ink 1, resolution 4 media 0 ink 1/6 HT 2 intent 0 flags 1, "
        "rule 7, color 2, 360x360 code 1");
    // The label has data 0, which is a preset's number.
    auto steps = Story("click 5041\nclick 5042");
    steps.push_back([] {
        SendMessageA(kvp::TopWindow(), WM_COMMAND,
                     static_cast<WPARAM>(MAKELONG(IDC_MAIN_SETTINGS, CBN_SELCHANGE)), 0);
        EXPECT_EQ(SeenText(IDC_MAIN_SETTINGS), "Economy");
    });
    steps.push_back("cancel");
    EXPECT_EQ(Show(steps), 2);
}

TEST_F(MainPage, AnEntryKeepsItsNameThroughInkAndMediaUntilThereIsNone)
{
    Start();
    EXPECT_EQ(Show(Story(R"(
5079: Plain Paper 0, 360 dpi Ink Jet Paper 1
drop 5040
close 5040
click 5047
= Normal, Plain Paper; Normal - 360 dpi, MW Off, HS Off, grey; 1021 6752
5040: Economy 0, Normal 1, Full Dots 6, Fine 2, Text 4, Presentation 7
choose 5079 "360 dpi Ink Jet Paper"
choose 5040 "Text"
= Text, 360 dpi Ink Jet Paper; Fine - 720 dpi, MW On, HS On, grey; 1024 6752
click 5044
= Custom, 360 dpi Ink Jet Paper; Fine - 720 dpi, MW Off, HS Off, grey; 6327 6760
ok)")),
              1);
    // The record keeps the entry as it was, black, and knows nothing of what the page shows.
    EXPECT_EQ(Record(out), "advanced: custom, resolution 11 media 1 ink 0/3 HT 1 intent 0 flags 5, "
                           "rule 21, color 2, 720x720 code 2");
}

TEST_F(MainPage, WhatMoreSettingsChangesBecomesCustom)
{
    Start();
    EXPECT_EQ(Show(Story(R"(
click 2017
cancel
= Normal, Plain Paper; Normal - 360 dpi, MW Off, HS Off, Vivid; 1001 6760
click 2017
choose 5180 "Fine - 720 dpi"
click 5191
ok
= Custom, Plain Paper; Fine - 720 dpi, MW On, HS Off, Vivid; 7228 6760
5079: Plain Paper 6, 360 dpi Ink Jet Paper 9, Photo Quality Ink Jet Paper 14, Photo Paper 16, Glossy Film 18, Ink Jet Transparencies 20, Photo Quality Ink Jet Card 21
choose 5079 "360 dpi Ink Jet Paper"
= Custom, 360 dpi Ink Jet Paper; Fine - 720 dpi, MW On, HS Off, Vivid; 6327 6760
ok)")),
              1);
    EXPECT_EQ(Record(out), "advanced: custom, resolution 9 media 1 ink 1/6 HT 1 intent 0 flags 1, "
                           "rule 11, color 2, 720x720 code 2");
}

TEST_F(MainPage, BlackWithoutATwinTakesAWholeRecord)
{
    PatchWords(CFG, InCfg(Tables().nAuto, 0, offsetof(SettingsRecord, wInkCode)), {9});
    Start();
    // One name begins another one's, which stands before it.
    EXPECT_EQ(Show(Story(R"(
choose 5040 "Photo"
= Photo, Photo Quality Ink Jet Paper; SuperFine - 1440 dpi, MW On, HS Off, Photo-realistic; 1003 6760
choose 5040 "Photo Retouching"
= Photo Retouching, Photo Paper; SuperFine - 1440 dpi, MW On, HS Off, No Color Adjustment; 1005 6760
click 5047
= Custom, Plain Paper; Economy - 180 dpi, MW Off, HS On, grey; 6332 6752
ok)")),
              1);
    EXPECT_EQ(Record(out), "advanced: custom, resolution 0 media 0 ink 0/9 HT 0 intent 0 flags 4, "
                           "rule 1, color 1, 180x180 code 1");
}

TEST_F(MainPage, SavedSettingsStandLastAndAreFoundByTheirExactName)
{
    PutUserFile(aTwoSaved);
    Start();
    EXPECT_EQ(Show(Story(R"(
choose 5040 "normal"
= normal, 360 dpi Ink Jet Paper; Fine - 720 dpi, MW On, HS Off, grey; 6332 6752
5040: Economy 0, Normal 1, Full Dots 6, Fine 2, Text 4, Presentation 7, Sixteen bytes ok slot 1, normal slot 0
drop 5040
close 5040
ok)")),
              1);
    EXPECT_EQ(Record(out), "advanced: slot 0, resolution 9 media 1 ink 0/0 HT 0 intent 2 flags 1, "
                           "rule 0, color 1, 720x720 code 2");
    EXPECT_EQ(Adjustments(out), "1 2 3 4 5 6");
    // The other one becomes the predefined setting of its name in black, its adjustments stay.
    EXPECT_EQ(ShowAgain(Story(R"(
= normal, 360 dpi Ink Jet Paper; Fine - 720 dpi, MW On, HS Off, grey; 6332 6752
choose 5040 "Sixteen bytes ok"
= Sixteen bytes ok, Ink Jet Transparencies; Fine - 720 dpi, MW On, HS Off, Charts and Graphs; 6327 6760
click 5047
= Presentation, Ink Jet Transparencies; Fine - 720 dpi, MW On, HS Off, grey; 1027 6752
ok)")),
              1);
    EXPECT_EQ(SettingOf(out.Settings.wIndex), "preset 7 for media 5 ink 0");
    EXPECT_EQ(Adjustments(out), "6 5 4 3 2 1");
}

TEST_F(MainPage, AnotherMediaMakesASavedSettingCustomOnWhatStoodBefore)
{
    PutUserFile(aTwoSaved);
    Start();
    EXPECT_EQ(Show({R"(choose 5040 "normal")", R"(choose 5079 "Plain Paper")",
                    [] { EXPECT_EQ(SeenText(IDC_MAIN_SETTINGS), "Custom Settings"); }, "ok"}),
              1);
    // Ink and intent of the setting before, the rest of the saved one.
    EXPECT_EQ(Record(out), "advanced: custom, resolution 6 media 0 ink 1/6 HT 3 intent 0 flags 5, "
                           "rule 3, color 1, 720x720 code 1");
    EXPECT_EQ(Adjustments(out), "1 2 3 4 5 6");
}

TEST_F(MainPage, MediaAndTrackbarLeaveTheAdjustmentsOfAnEarlierChoice)
{
    PatchWords(CFG, InCfg(0, 1, offsetof(SettingsRecord, sAdj)), {-3, -2, -1, 0, 1, 2});
    Start();
    EXPECT_EQ(Show(Story("choose 5040 \"Photo\"\nchoose 5079 \"Photo Paper\"\nok")), 1);
    EXPECT_EQ(SettingOf(out.Settings.wIndex), "preset 3 for media 3 ink 1");
    EXPECT_EQ(Adjustments(out), "2 -1 0 3 0 -4") << "of the preset chosen";
    EXPECT_EQ(ShowAgain(Story("choose 5040 \"Normal\"\nclick 5041\nslide 2147 2\nclick 5041\nok")),
              1);
    EXPECT_EQ(SettingOf(out.Settings.wIndex), "level 2 for media 0 ink 1");
    EXPECT_EQ(Adjustments(out), "-3 -2 -1 0 1 2") << "of the first level";
}

TEST_F(MainPage, TheMediaListIsNotFilledAnewByTheTrackbarOrACustomChange)
{
    Start();
    const auto mark = [] {
        SendMessageA(Shown(IDC_MAIN_MEDIA), CB_INSERTSTRING, static_cast<WPARAM>(-1),
                     reinterpret_cast<LPARAM>("mark"));
    };
    const auto marked = [] { EXPECT_THAT(List(IDC_MAIN_MEDIA), HasSubstr("mark")); };
    EXPECT_EQ(Show({"click 5041", mark, "slide 2147 2", marked, "click 5042", mark,
                    R"(choose 5079 "Photo Paper")", marked, "cancel"}),
              2);
}

TEST_F(MainPage, TheNumberOfAResolutionsNameChoosesThePictureOfAutomatic)
{
    // "Normal - 360 dpi" has number 4; the papers and sources stand before the names.
    const DatFile tables = Tables();
    const auto it = std::ranges::find(tables.lpResNames, 4);
    PatchWords(DAT,
               sizeof(DatHeader) + tables.nPapers * sizeof(PaperRecord) +
                   tables.nBins * sizeof(BinRecord) +
                   static_cast<size_t>(it - tables.lpResNames.begin()) * sizeof(int16_t),
               {1});
    Start();
    EXPECT_EQ(Show(Story(R"(
click 5041
= Custom, Plain Paper; Draft - 360 dpi, MW Off, HS On, Vivid; 6321 6760; 1 Speed-Quality
cancel)")),
              2);
}

TEST_F(MainPage, ADottedLineStandsAboveTheSavedSettingsInTheOpenList)
{
    PutUserFile(aTwoSaved);
    Start();
    // The list begins in the field's last row, with a frame.
    const auto look = [] {
        const RECT rc = ClientOf(IDC_MAIN_SETTINGS);
        for (int nItem = 0; nItem < 9; ++nItem) {
            int nBlack = 0;
            for (int x = 1; x < rc.right - 1; ++x)
                nBlack += PixelOf(IDC_MAIN_SETTINGS, x, rc.bottom + nItem * (rc.bottom - 8)) == 0;
            EXPECT_EQ(nBlack > 40, nItem == 8) << nItem;
        }
    };
    EXPECT_EQ(Show({"drop 5040", look, "cancel"}), 2);
}

// The sheet inside the test.
class MainPageInside : public SampleTest
{
  protected:
    MainPageInside()
    {
        LoadDataFile();
        hModule = kvp::LoadHostLibrary(KV_DRIVER_RESOURCES);
    }
    ~MainPageInside() override
    {
        FreeLibrary(hModule);
        hModule = nullptr;
        FreeDataFile();
    }
    // All that can be pressed in either mode.
    const std::vector<Person::Step> tryAll =
        Story("click 5041\nclick 5047\nclick 5042\ndrop 5040\nclose 5040\ndrop 5079\n"
              "close 5079\nclick 5044\nclick 5041\nclick 5042\nclick 2018\nclick 2123\nok");
    // On `in`; the record is in `out` afterwards.
    LONG Enter(std::vector<Person::Step> steps)
    {
        CBSTRUC block{};
        block.hPrinter = queue->hPrinter;
        std::vector<char> bytes(1 + sizeof in);
        auto *lpDM = reinterpret_cast<DriverDevMode *>(&bytes[1]); // odd
        *lpDM = in;
        person.Will(std::move(steps));
        const LONG lResult = UIEnterDevMode(lpDM, hModule, nullptr, 0, &block);
        person.ExpectDone();
        out = *lpDM;
        return lResult;
    }
};

TEST_F(MainPageInside, ThePapersLineNamesItWithoutItsDimensions)
{
    Start();
    const auto nPapers = static_cast<int>(Tables().nPapers);
    const struct {
        int nPaper;
        bool bUserPapers;
        const char *line;
    } aRows[] = {
        {in.nPaper, false, "Paper Size : A4"},
        {nPapers - 1, false, "Paper Size : User Defined"}, // no digit
        {nPapers, true, "Paper Size : My 10 x 15"},        // the user's own words
        {nPapers, false, "Paper Size : User"},
        {-1, true, "Paper Size : User"},
    };
    for (const auto &row : aRows) {
        kvp::PutAbsentFile(UCF);
        if (row.bUserPapers)
            PutUserFile({});
        in.nPaper = row.nPaper;
        EXPECT_EQ(Enter({[&] { EXPECT_EQ(SeenText(IDC_MAIN_PAPER), row.line); }, "cancel"}), 2);
    }
}

TEST_F(MainPageInside, AnotherVersionLeavesThePageAsItsTemplateIs)
{
    const char *dat = R"(box ok "Version Error of dat file. Please install again.")",
               *cfg = R"(box ok "Version Error of cfg file. Please install again.")";
    const struct {
        const char *box;
        std::function<void()> damage;
    } aRows[] = {{dat, [] { PatchWords(DAT, 2, {257}); }},
                 {dat, [] { CutShort(DAT, 2); }},
                 {cfg, [] { PatchWords(CFG, 0, {255}); }},
                 {cfg, [] { CutShort(CFG, 1); }}};
    Start();
    const auto asItsTemplate = [] {
        EXPECT_EQ(List(IDC_MAIN_SETTINGS) + List(IDC_MAIN_MEDIA) + SeenText(IDC_MAIN_PAPER), "");
        EXPECT_EQ(Seen(IDC_MAIN_LEVEL), nullptr);
    };
    for (const auto &row : aRows) {
        kvp::ClearMemoryFiles();
        row.damage();
        auto steps = tryAll;
        steps.insert(steps.begin(), {row.box, "click 2017", "click 2019"});
        steps.insert(steps.end() - 1, asItsTemplate);
        EXPECT_EQ(Enter(steps), 1);
        EXPECT_EQ(std::memcmp(&out, &in, sizeof in), 0);
    }
    // One that is missing says nothing.
    for (const char *file : {DAT, CFG}) {
        kvp::ClearMemoryFiles();
        kvp::PutAbsentFile(file);
        EXPECT_EQ(Enter(tryAll), 1);
    }
}

TEST_F(MainPageInside, ASavedSettingThatIsGoneIsCustomAndALostOneIsAutomatic)
{
    Start();
    const auto wSlot = static_cast<uint16_t>(Tables().nAuto + Tables().nPreset + 1);
    const auto automatic = [] {
        EXPECT_EQ(Page(), "Custom, Plain Paper; Normal - 360 dpi, MW Off, HS On, Vivid; 6248 6760; "
                          "1 Speed-Quality");
    };
    const auto setting = [](const char *name) {
        return [name] { EXPECT_EQ(SeenText(IDC_MAIN_SETTINGS), name); };
    };
    const char *version = R"(box ok "Version Error of ucf file")",
               *lost = R"(box ok "The saved setting of this printer can no longer be found. )"
                       R"(The settings have been set to Automatic.")";
    const struct {
        std::function<void()> change;
        std::vector<Person::Step> sees;
        int nIndex;
    } aRows[] = {
        {[] { kvp::PutAbsentFile(UCF); }, {lost, automatic}, 0},
        {[] { PutUserFile(aTwoSaved, 3); }, {version, lost, automatic}, 0},
        {[] { CutShort(UCF, 1); }, {version, lost, automatic}, 0},
        {[] { PutUserFile({}); }, {setting("Custom Settings")}, KV_CUSTOM_SETTINGS},
        {[] { PutUserFile(aTwoSaved); }, {setting("Sixteen bytes ok")}, wSlot},
    };
    in.Settings.wIndex = wSlot;
    for (const auto &row : aRows) {
        row.change();
        auto steps = row.sees;
        steps.push_back("ok");
        EXPECT_EQ(Enter(steps), 1);
        EXPECT_EQ(+out.Settings.wIndex, row.nIndex);
        EXPECT_EQ(+out.bAutoMode, row.nIndex == 0 ? 1u : 0u);
    }
}

TEST_F(MainPageInside, ARecordThatLeadsNowhereKeepsItsIndex)
{
    PutUserFile(aTwoSaved);
    Start();
    in.Settings.wResolution = 30000;
    in.Settings.wMedia = -7;
    in.Settings.bHT = 200;
    for (const uint32_t bAutoMode : {0u, 1u})
        for (const uint16_t wIndex : {60000, 999, 1000, 50}) {
            in.bAutoMode = bAutoMode;
            in.Settings.wIndex = wIndex;
            EXPECT_EQ(Enter(tryAll), 1);
            EXPECT_EQ(Enter({"ok"}), 1);
            EXPECT_EQ(+out.Settings.wIndex, wIndex);
            if (bAutoMode)
                continue;
            // The record's own settings take what is chosen.
            EXPECT_EQ(Enter({"click 5047", "ok"}), 1);
            EXPECT_EQ(+out.Settings.wInk, 0) << wIndex;
            EXPECT_EQ(+out.dm.dmColor, 1) << wIndex;
        }
    in.dm.dmOrientation = 0;
    EXPECT_EQ(Enter({}), -1) << "there are no settings to show";
}

} // namespace
