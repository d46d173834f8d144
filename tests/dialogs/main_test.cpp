// The Main page of the samples under a person's hands: its three states, the ways between them, and
// the record that comes of each.
#include <cstring>
#include <fstream>
#include <iostream>
#include <iterator>

#include <gmock/gmock.h>

#include "base/modeltable.h"
#include "base/module.h"
#include "interface/sheet.h"
#include "platform/win32.h"
#include "resources/main_ids.h"
#include "tests/support/model_builder.h"
#include "tests/support/samples.h"

namespace
{

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::Not;

constexpr const char *DAT = "C:\\winnt35\\KJ820PRO.dat", *CFG = "C:\\winnt35\\KJ820PRO.cfg",
                     *UCF = "C:\\winnt35\\system32\\KJ820PRO.ucf";
constexpr uint16_t FIRST_SLOT = 42, SLOTS = 10, PAPER_SLOTS = 8;
constexpr const char *CUSTOM = "Custom Settings";

// All that the page says of the settings, in one line.
std::string Page()
{
    std::string strPage = Seen(IDC_MAIN_AUTOMATIC).at("checked") ? "Automatic: " : "Advanced: ";
    strPage += SeenText(IDC_MAIN_SETTINGS) + ", " + SeenText(IDC_MAIN_MEDIA);
    strPage += Seen(IDC_MAIN_COLOR).at("checked") ? ", Color; " : ", Black; ";
    for (const int id : {IDC_MAIN_RESOLUTION, IDC_MAIN_MW, IDC_MAIN_HS, IDC_MAIN_INTENT})
        strPage += SeenText(id) + (id == IDC_MAIN_INTENT ? "; " : ", ");
    if (!Seen(IDC_MAIN_INTENT).at("enabled"))
        strPage.replace(strPage.size() - 2, 2, " (grey); ");
    for (const int id : {IDC_MAIN_MODE_PICTURE, IDC_MAIN_INK_PICTURE})
        strPage +=
            std::to_string(Seen(id).value("picture", 0)) + (id == IDC_MAIN_MODE_PICTURE ? " " : "");
    return strPage;
}

Person::Step Sees(const std::string &strPage)
{
    return [strPage] { EXPECT_EQ(Page(), strPage); };
}

// The trackbar with its labels, or that there is none.
Person::Step SeesLevel(int nLevel, const char *left = "", const char *right = "")
{
    return [=] {
        for (const int id : {IDC_MAIN_LEVEL, IDC_MAIN_LEVEL_LEFT, IDC_MAIN_LEVEL_RIGHT})
            EXPECT_EQ(Seen(id).at("visible"), nLevel != 0) << id;
        if (nLevel == 0)
            return;
        EXPECT_EQ(Seen(IDC_MAIN_LEVEL).at("position"), nLevel);
        EXPECT_EQ(SeenText(IDC_MAIN_LEVEL_LEFT), left);
        EXPECT_EQ(SeenText(IDC_MAIN_LEVEL_RIGHT), right);
    };
}

Person::Step SeesList(int id, std::vector<std::string> items, std::vector<int> data)
{
    return [=] {
        EXPECT_THAT(SeenItems(id), ElementsAreArray(items));
        EXPECT_EQ(Seen(id).at("data"), nlohmann::json(data));
    };
}

Bytes FileOf(const char *dosPath)
{
    std::ifstream file(kvp::HostPath(dosPath), std::ios::binary);
    return Bytes((std::istreambuf_iterator<char>(file)), {});
}

// A word of a file becomes another.
void PatchWord(const char *dosPath, size_t at, int value)
{
    const auto kept = kvp::MemoryFile(dosPath);
    Bytes bytes = kept ? *kept : FileOf(dosPath);
    const auto word = static_cast<uint16_t>(value);
    ASSERT_LE(at + sizeof word, bytes.size());
    std::memcpy(&bytes[at], &word, sizeof word);
    kvp::PutMemoryFile(dosPath, bytes);
}
constexpr size_t InCfg(int nRecord, size_t field)
{
    return sizeof(CfgHeader) + sizeof(SettingsRecord) * static_cast<size_t>(nRecord) + field;
}

class MainPage : public SampleTest
{
  protected:
    // The user's file with these settings, the newest first, and one paper.
    static void PutUserFile(const std::vector<SettingsRecord> &saved, uint16_t wVersion = 256)
    {
        Model model;
        model.wUserSlots = SLOTS;
        model.wUserPaperSlots = PAPER_SLOTS;
        model.wUcfVersion = wVersion;
        model.userSettings = saved;
        model.AddUserPaper("My 10 x 15", 1000, 1500, 1, 1);
        kvp::PutMemoryFile(UCF, model.Ucf());
    }
    // Two saved settings, of which one differs from a predefined one's name in a letter's case
    // alone and the other fills its field.
    static std::vector<SettingsRecord> TwoSaved()
    {
        SettingsRecord black{};
        black.wIndex = FIRST_SLOT;
        black.wPreset = 3;
        black.wResolution = 9; // coated 720
        black.wMedia = 1;
        black.bHT = 2;
        black.bIntent = 2;
        black.wFlags = KV_FLAG_MW;
        black.wState = STATE_IN_USE;
        SettingsRecord color = black;
        color.wIndex = FIRST_SLOT + 1;
        color.wPreset = 7;
        color.wResolution = 20; // transparency 720
        color.wMedia = 5;
        color.wInk = 1;
        for (int16_t k = 0; k < 6; ++k) {
            black.sAdj[k] = static_cast<int16_t>(k + 1);
            color.sAdj[k] = static_cast<int16_t>(6 - k);
        }
        std::memcpy(black.szName, "normal", 6);
        std::memcpy(color.szName, "Sixteen bytes ok", 16);
        return {black, color};
    }
};

// ---- Automatic --------------------------------------------------------------------------------

TEST_F(MainPage, AutomaticFollowsMediaInkAndTheTrackbar)
{
    Start();
    EXPECT_EQ(
        Show({Sees("Advanced: Normal, Plain Paper, Color; Normal - 360 dpi, MW: Off, "
                   "High Speed: Off, Vivid; 1001 6760"),
              SeesLevel(0),
              "click 5041",
              Sees("Automatic: Custom Settings, Plain Paper, Color; Normal - 360 dpi, MW: Off, "
                   "High Speed: On, Vivid; 6248 6760"),
              SeesLevel(1, "Speed", "Quality"),
              SeesList(IDC_MAIN_MEDIA,
                       {"Plain Paper", "360 dpi Ink Jet Paper", "Photo Quality Ink Jet Paper",
                        "Photo Paper", "Glossy Film", "Ink Jet Transparencies",
                        "Photo Quality Ink Jet Card"},
                       {0, 1, 2, 3, 4, 5, 6}),
              [] {
                  for (const int id : {IDC_MAIN_SETTINGS, IDC_MAIN_MORE, IDC_MAIN_SAVE})
                      EXPECT_FALSE(Seen(id).at("enabled")) << id;
                  EXPECT_EQ(SeenItems(IDC_MAIN_SETTINGS).back(), CUSTOM);
              },
              "slide 2147 2",
              Sees("Automatic: Custom Settings, Plain Paper, Color; Fine - 720 dpi, MW: On, "
                   "High Speed: Off, Vivid; 6248 6760"),
              R"(choose 5079 "Photo Quality Ink Jet Paper")",
              Sees("Automatic: Custom Settings, Photo Quality Ink Jet Paper, Color; "
                   "Fine - 720 dpi, MW: On, High Speed: Off, Vivid; 6248 6760"),
              SeesLevel(1, "Fast", "Fine"),
              "click 5047", // no level in black
              Sees("Automatic: Custom Settings, Photo Quality Ink Jet Paper, Black; "
                   "Fine - 720 dpi, MW: On, High Speed: Off, Vivid (grey); 6365 6752"),
              SeesLevel(0),
              "click 5044",
              SeesLevel(1, "Fast", "Fine"),
              R"(choose 5079 "Photo Paper")",
              "click 5047", // no black on photo paper
              Sees("Automatic: Custom Settings, Plain Paper, Black; Draft - 360 dpi, MW: Off, "
                   "High Speed: On, Vivid (grey); 6328 6752"),
              SeesLevel(1, "Speed", "Quality"),
              "ok"}),
        1);
    EXPECT_EQ(out.Settings.wIndex, 2);
    EXPECT_EQ(out.bAutoMode, 1u);
    EXPECT_EQ(out.dm.dmColor, 1);
    EXPECT_EQ(out.dm.dmPrintQuality, 360);
    EXPECT_EQ(out.Settings.wFlags, KV_FLAG_HS);
    EXPECT_EQ(ShowAgain({Sees("Automatic: Custom Settings, Plain Paper, Black; Draft - 360 dpi, "
                              "MW: Off, High Speed: On, Vivid (grey); 6328 6752"),
                         SeesLevel(1, "Speed", "Quality"), "click 5044",
                         R"(choose 5079 "Glossy Film")", // mirrored
                         Sees("Automatic: Custom Settings, Glossy Film, Color; Fine - 720 dpi, "
                              "MW: Super, High Speed: Off, Photo-realistic; 7227 6760"),
                         SeesLevel(0), "ok"}),
              1);
    EXPECT_EQ(out.Settings.wIndex, 13);
    EXPECT_EQ(out.dm.dmYResolution, 720);
    EXPECT_EQ(out.lMediaCode, 6);
    EXPECT_EQ(out.Settings.wDotScale, 2);
    EXPECT_EQ(out.Settings.wFlags, KV_FLAG_MW | KV_FLAG_OPT | KV_FLAG_MIRROR);
}

// ---- Advanced, custom -------------------------------------------------------------------------

TEST_F(MainPage, CustomSettingsGoOnFromTheAutomaticOnes)
{
    Start();
    const auto listIsOpen = [] {
        EXPECT_THAT(SeenItems(IDC_MAIN_SETTINGS), Not(Contains(CUSTOM)));
        EXPECT_EQ(Seen(IDC_MAIN_SETTINGS).at("selection"), 0);
    };
    const auto custom = Sees("Advanced: Custom Settings, Plain Paper, Color; Fine - 720 dpi, "
                             "MW: On, High Speed: Off, Vivid; 6327 6760");
    EXPECT_EQ(Show({"click 5041",
                    "slide 2147 2",
                    "click 5042",
                    custom,
                    SeesLevel(0),
                    SeesList(IDC_MAIN_SETTINGS,
                             {"Economy", "Normal", "Full Dots", "Fine", "Photo Retouching", "Photo",
                              "Presentation", "Mirror Image", CUSTOM},
                             {0, 1, 6, 2, 5, 3, 7, 8, 0}),
                    SeesList(IDC_MAIN_MEDIA,
                             {"Plain Paper", "360 dpi Ink Jet Paper", "Photo Quality Ink Jet Paper",
                              "Photo Paper", "Glossy Film", "Ink Jet Transparencies",
                              "Photo Quality Ink Jet Card"},
                             {6, 9, 14, 16, 18, 20, 21}),
                    "drop 5040",
                    listIsOpen,
                    "close 5040",
                    custom,
                    "drop 5040",
                    listIsOpen,
                    "close 5040",
                    custom,
                    R"(choose 5079 "Photo Paper")",
                    Sees("Advanced: Custom Settings, Photo Paper, Color; Fine - 720 dpi, MW: On, "
                         "High Speed: On, Vivid; 6327 6760"),
                    "click 5047",
                    Sees("Advanced: Custom Settings, Plain Paper, Black; Fine - 720 dpi, MW: On, "
                         "High Speed: On, Vivid (grey); 6332 6752"),
                    SeesList(IDC_MAIN_MEDIA,
                             {"Plain Paper", "360 dpi Ink Jet Paper", "Photo Quality Ink Jet Paper",
                              "Ink Jet Transparencies", "Photo Quality Ink Jet Card"},
                             {6, 9, 14, 20, 21}),
                    "ok"}),
              1);
    EXPECT_EQ(out.Settings.wIndex, KV_CUSTOM_SETTINGS);
    EXPECT_EQ(out.bAutoMode, 0u);
    EXPECT_EQ(out.Settings.wResolution, 6);
    EXPECT_EQ(out.Settings.wMedia, 0);
    EXPECT_EQ(out.Settings.wInk, 0);
    EXPECT_EQ(out.Settings.wInkCode, 3);
    EXPECT_EQ(out.Settings.wRule, 0) << "photo paper has no rule for black";
    EXPECT_EQ(out.Settings.bHT, 3);
    EXPECT_EQ(out.Settings.wFlags, KV_FLAG_MW | KV_FLAG_HS);
    EXPECT_EQ(out.dm.dmColor, 1);
    EXPECT_EQ(ShowAgain({Sees("Advanced: Custom Settings, Plain Paper, Black; Fine - 720 dpi, "
                              "MW: On, High Speed: On, Vivid (grey); 6332 6752"),
                         "click 5041", // by the media of the resolution, and the ink
                         Sees("Automatic: Custom Settings, Plain Paper, Black; Draft - 360 dpi, "
                              "MW: Off, High Speed: On, Vivid (grey); 6328 6752"),
                         "cancel"}),
              2);
}

TEST_F(MainPage, ChoosingFromTheListEndsCustomSettings)
{
    Start();
    // The label has data 0, which is a preset's number.
    const auto chooseLabel = [] {
        SendMessageA(kvp::TopWindow(), WM_COMMAND,
                     static_cast<WPARAM>(MAKELONG(IDC_MAIN_SETTINGS, CBN_SELCHANGE)), 0);
    };
    EXPECT_EQ(Show({"click 5041", "click 5042", chooseLabel,
                    Sees("Advanced: Economy, Plain Paper, Color; Normal - 360 dpi, MW: Off, "
                         "High Speed: On, Vivid; 1000 6760"),
                    "click 5041", "click 5047", "click 5042",
                    // No such preset in black: the first one is taken, ink and all.
                    "drop 5040", R"(choose 5040 "Full Dots")",
                    Sees("Advanced: Full Dots, Plain Paper, Black; Normal - 360 dpi, MW: On, "
                         "High Speed: Off, Vivid (grey); 1026 6752"),
                    "ok"}),
              1);
    EXPECT_EQ(out.Settings.wIndex, 25);
    EXPECT_EQ(out.Settings.bHT, 2);
}

// ---- Advanced, list entries ---------------------------------------------------------------------

TEST_F(MainPage, AnEntryKeepsItsNameThroughInkAndMediaUntilThereIsNone)
{
    Start();
    EXPECT_EQ(Show({SeesList(IDC_MAIN_SETTINGS,
                             {"Economy", "Normal", "Full Dots", "Fine", "Photo Retouching", "Photo",
                              "Presentation", "Mirror Image"},
                             {0, 1, 6, 2, 5, 3, 7, 8}),
                    SeesList(IDC_MAIN_MEDIA, {"Plain Paper", "360 dpi Ink Jet Paper"}, {0, 1}),
                    "drop 5040", "close 5040", "click 5047",
                    Sees("Advanced: Normal, Plain Paper, Black; Normal - 360 dpi, MW: Off, "
                         "High Speed: Off, Vivid (grey); 1021 6752"),
                    SeesList(IDC_MAIN_SETTINGS,
                             {"Economy", "Normal", "Full Dots", "Fine", "Text", "Presentation"},
                             {0, 1, 6, 2, 4, 7}),
                    R"(choose 5079 "360 dpi Ink Jet Paper")", R"(choose 5040 "Text")",
                    Sees("Advanced: Text, 360 dpi Ink Jet Paper, Black; Fine - 720 dpi, MW: On, "
                         "High Speed: On, Vivid (grey); 1024 6752"),
                    "click 5044", // Text is black only
                    Sees("Advanced: Custom Settings, 360 dpi Ink Jet Paper, Color; Fine - 720 dpi, "
                         "MW: Off, High Speed: Off, Vivid (grey); 6327 6760"),
                    "ok"}),
              1);
    // The record keeps the entry as it was, and knows nothing of what the page shows.
    EXPECT_EQ(out.Settings.wIndex, KV_CUSTOM_SETTINGS);
    EXPECT_EQ(out.Settings.wInk, 0);
    EXPECT_EQ(out.Settings.wInkCode, 3);
    EXPECT_EQ(out.Settings.wResolution, 11);
    EXPECT_EQ(out.Settings.wFlags, KV_FLAG_MW | KV_FLAG_HS);
}

TEST_F(MainPage, BlackWithoutATwinTakesAWholeRecord)
{
    PatchWord(CFG, InCfg(18, offsetof(SettingsRecord, wInkCode)), 9);
    Start();
    // Its name begins that of another preset, which stands before it.
    EXPECT_EQ(Show({R"(choose 5040 "Photo")", [] { EXPECT_EQ(SeenText(5040), "Photo"); },
                    R"(choose 5040 "Photo Retouching")",
                    Sees("Advanced: Photo Retouching, Photo Paper, Color; "
                         "SuperFine - 1440 dpi, MW: On, High Speed: Off, No Color Adjustment; "
                         "1005 6760"),
                    "click 5047",
                    Sees("Advanced: Custom Settings, Plain Paper, Black; Economy - 180 dpi, "
                         "MW: Off, High Speed: On, Vivid (grey); 6332 6752"),
                    "ok"}),
              1);
    EXPECT_EQ(out.Settings.wIndex, KV_CUSTOM_SETTINGS);
    EXPECT_EQ(out.Settings.wPreset, 0);
    EXPECT_EQ(out.Settings.wInkCode, 9) << "the record's, not black's";
}

// ---- saved settings -----------------------------------------------------------------------------

TEST_F(MainPage, SavedSettingsStandLastAndAreFoundByTheirExactName)
{
    PutUserFile(TwoSaved());
    Start();
    const auto saved = Sees("Advanced: normal, 360 dpi Ink Jet Paper, Black; Fine - 720 dpi, "
                            "MW: On, High Speed: Off, Charts and Graphs (grey); 6332 6752");
    EXPECT_EQ(Show({R"(choose 5040 "normal")", saved,
                    SeesList(IDC_MAIN_SETTINGS,
                             {"Economy", "Normal", "Full Dots", "Fine", "Text", "Presentation",
                              "Sixteen bytes ok", "normal"},
                             {0, 1, 6, 2, 4, 7, FIRST_SLOT + 1, FIRST_SLOT}),
                    "drop 5040", "close 5040", saved, "ok"}),
              1);
    EXPECT_EQ(out.Settings.wIndex, FIRST_SLOT);
    EXPECT_EQ(std::string(out.Settings.szName), "normal");
    EXPECT_THAT(out.Settings.sAdj, ElementsAre(1, 2, 3, 4, 5, 6));
    EXPECT_EQ(out.dm.dmColor, 1);
    EXPECT_EQ(ShowAgain({saved, R"(choose 5040 "Sixteen bytes ok")",
                         Sees("Advanced: Sixteen bytes ok, Ink Jet Transparencies, Color; "
                              "Fine - 720 dpi, MW: On, High Speed: Off, Charts and Graphs; "
                              "6327 6760"),
                         "click 5047", // becomes the predefined twin, its adjustments stay
                         Sees("Advanced: Presentation, Ink Jet Transparencies, Black; "
                              "Fine - 720 dpi, MW: On, High Speed: Off, Vivid (grey); 1027 6752"),
                         "ok"}),
              1);
    EXPECT_EQ(out.Settings.wIndex, 39);
    EXPECT_THAT(out.Settings.sAdj, ElementsAre(6, 5, 4, 3, 2, 1));
}

TEST_F(MainPage, AnotherMediaMakesASavedSettingCustomOnWhatStoodBefore)
{
    PutUserFile(TwoSaved());
    Start();
    EXPECT_EQ(Show({R"(choose 5040 "normal")", R"(choose 5079 "Plain Paper")",
                    [] {
                        EXPECT_EQ(SeenText(IDC_MAIN_SETTINGS), CUSTOM);
                        EXPECT_EQ(SeenText(IDC_MAIN_MEDIA), "Plain Paper");
                    },
                    "ok"}),
              1);
    EXPECT_EQ(out.Settings.wIndex, KV_CUSTOM_SETTINGS);
    EXPECT_EQ(out.Settings.wResolution, 6);
    EXPECT_EQ(out.Settings.wInk, 1) << "of the entry before";
    EXPECT_EQ(out.Settings.bIntent, 0) << "likewise";
    EXPECT_EQ(out.dm.dmColor, 1) << "of the saved setting";
    EXPECT_THAT(out.Settings.sAdj, ElementsAre(1, 2, 3, 4, 5, 6)) << "likewise";
}

// ---- what stays as it was -----------------------------------------------------------------------

TEST_F(MainPage, MediaAndTrackbarLeaveTheAdjustmentsOfAnEarlierChoice)
{
    for (int16_t k = 0; k < 6; ++k)
        PatchWord(CFG, InCfg(0, offsetof(SettingsRecord, sAdj) + 2 * static_cast<size_t>(k)),
                  k - 3);
    Start();
    EXPECT_EQ(Show({R"(choose 5040 "Photo")", R"(choose 5079 "Photo Paper")", "ok"}), 1);
    EXPECT_EQ(out.Settings.wIndex, 34);
    EXPECT_THAT(out.Settings.sAdj, ElementsAre(2, -1, 0, 3, 0, -4)) << "of the preset chosen";
    EXPECT_EQ(ShowAgain({R"(choose 5040 "Normal")", "click 5041", "slide 2147 2", "ok"}), 1);
    EXPECT_EQ(out.Settings.wIndex, 1);
    EXPECT_THAT(out.Settings.sAdj, ElementsAre(-3, -2, -1, 0, 1, 2)) << "of the first level";
}

TEST_F(MainPage, TheMediaListIsNotFilledAnewByTheTrackbarOrACustomChange)
{
    Start();
    const auto mark = [] {
        SendMessageA(Shown(IDC_MAIN_MEDIA), CB_INSERTSTRING, static_cast<WPARAM>(-1),
                     reinterpret_cast<LPARAM>("mark"));
    };
    const auto marked = [] { EXPECT_THAT(SeenItems(IDC_MAIN_MEDIA), Contains("mark")); };
    EXPECT_EQ(Show({"click 5041", mark, "slide 2147 2", marked, "click 5042", mark,
                    R"(choose 5079 "Photo Paper")", marked, "cancel"}),
              2);
}

TEST_F(MainPage, TheNumberOfAResolutionsNameChoosesThePictureOfAutomatic)
{
    // "360 dpi" is third among the names; the papers and sources stand before them.
    PatchWord(DAT, sizeof(DatHeader) + 22 * sizeof(PaperRecord) + 5 * sizeof(BinRecord) + 2 * 2, 1);
    Start();
    EXPECT_EQ(Show({"click 5041",
                    Sees("Automatic: Custom Settings, Plain Paper, Color; Draft - 360 dpi, "
                         "MW: Off, High Speed: On, Vivid; 6321 6760"),
                    "cancel"}),
              2);
}

// ---- looks --------------------------------------------------------------------------------------

TEST_F(MainPage, ADottedLineStandsAboveTheSavedSettingsInTheOpenList)
{
    PutUserFile(TwoSaved());
    Start();
    // Black pixels in the top row of an item of the open list, whose first item begins below the
    // field's last row and the list's frame.
    const auto blackAbove = [](int nItem) {
        const RECT rc = ClientOf(IDC_MAIN_SETTINGS);
        const int nHeight = rc.bottom - 8;
        int nBlack = 0;
        for (int x = 1; x < rc.right - 1; ++x)
            nBlack += PixelOf(IDC_MAIN_SETTINGS, x, rc.bottom + nItem * nHeight) == RGB(0, 0, 0);
        return nBlack;
    };
    const auto look = [blackAbove] {
        for (int nItem = 0; nItem < 9; ++nItem) // nine fit
            EXPECT_EQ(blackAbove(nItem) > 40, nItem == 8) << nItem;
    };
    EXPECT_EQ(Show({"drop 5040", look, "cancel"}), 2);
}

TEST_F(MainPage, ComesToRestOnceItIsPainted)
{
    Start();
    static constexpr COLORREF RED = RGB(255, 0, 0);
    static constexpr int aControls[] = {IDC_MAIN_PAPER, IDC_MAIN_INTENT, IDC_MAIN_INK_PICTURE,
                                        IDC_MAIN_MODE_PICTURE, IDC_MAIN_SETTINGS};
    // What is drawn beside the page's back stays until the control is painted again.
    const auto mark = [] {
        for (const int id : aControls) {
            HDC hdc = GetDC(Shown(id));
            const RECT rc{1, 1, 4, 4};
            HBRUSH hBrush = CreateSolidBrush(RED);
            FrameRect(hdc, &rc, hBrush);
            DeleteObject(hBrush);
            ReleaseDC(Shown(id), hdc);
        }
    };
    const auto marked = [](bool bMarked) {
        return [bMarked] {
            for (const int id : aControls)
                EXPECT_EQ(PixelOf(id, 1, 1) == RED, bMarked) << id;
        };
    };
    const auto paint = [] { InvalidateRect(kvp::TopWindow(), nullptr, TRUE); };
    for (const char *mode : {"click 5042", "click 5041"})
        EXPECT_EQ(Show({mode, mark, "", "", marked(true), paint, "", marked(false), mark, "",
                        marked(true), "cancel"}),
                  2);
}

// ---- records and files that the entry points would not let through ------------------------------

// The sheet inside the test: its files change after the entry points have looked at them.
class MainPageFiles : public MainPage
{
  protected:
    MainPageFiles()
    {
        LoadDataFile();
        hModule = kvp::LoadHostLibrary(KV_DRIVER_RESOURCES);
    }
    ~MainPageFiles() override
    {
        FreeLibrary(hModule);
        hModule = nullptr;
        FreeDataFile();
    }
    // The record is in `out` afterwards.
    LONG Enter(std::vector<Person::Step> steps)
    {
        CBSTRUC block{};
        block.hPrinter = queue->hPrinter;
        out = in;
        person.Will(std::move(steps));
        const LONG lResult = UIEnterDevMode(&out, hModule, nullptr, 0, &block);
        person.ExpectDone();
        return lResult;
    }
    static void CutShort(const char *dosPath)
    {
        Bytes bytes = FileOf(dosPath);
        bytes.pop_back();
        kvp::PutMemoryFile(dosPath, bytes);
    }
};

TEST_F(MainPageFiles, ThePapersLineNamesItWithoutItsDimensions)
{
    const struct {
        int nPaper;
        bool bUserPapers;
        const char *line;
    } aRows[] = {
        {0, false, "Paper Size : A4"},         {21, false, "Paper Size : User Defined"}, // no digit
        {22, true, "Paper Size : My 10 x 15"}, // the user's own words
        {22, false, "Paper Size : User"},      {-1, true, "Paper Size : User"},
    };
    Start();
    for (const auto &row : aRows) {
        kvp::PutAbsentFile(UCF);
        if (row.bUserPapers)
            PutUserFile({});
        in.nPaper = row.nPaper;
        in.dm.dmOrientation = row.bUserPapers ? 2 : 1;
        EXPECT_EQ(Enter({[&] {
                             EXPECT_EQ(SeenText(IDC_MAIN_PAPER), row.line);
                             EXPECT_EQ(SeenText(IDC_MAIN_ORIENTATION),
                                       row.bUserPapers ? "Landscape" : "Portrait");
                         },
                         "cancel"}),
                  2);
    }
}

TEST_F(MainPageFiles, AnotherVersionLeavesThePageAsItsTemplateIs)
{
    const struct {
        const char *why, *box;
        std::function<void()> change;
    } aRows[] = {
        {"another .dat", R"(box ok "Version Error of dat file. Please install again.")",
         [] { PatchWord(DAT, 2, 257); }},
        {"a .dat that ends in its last table that the page reads",
         R"(box ok "Version Error of dat file. Please install again.")",
         [] {
             Bytes bytes = FileOf(DAT);
             bytes.resize(bytes.size() / 2);
             kvp::PutMemoryFile(DAT, bytes);
         }},
        {"another .cfg", R"(box ok "Version Error of cfg file. Please install again.")",
         [] { PatchWord(CFG, 0, 255); }},
        {"a short .cfg", R"(box ok "Version Error of cfg file. Please install again.")",
         [] { CutShort(CFG); }},
    };
    Start();
    const auto asItsTemplate = [] {
        EXPECT_EQ(Page(), "Advanced: , , Black; , , , ; 6795 6795");
        EXPECT_EQ(Seen(IDC_MAIN_LEVEL), nullptr);
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        kvp::ClearMemoryFiles();
        row.change();
        EXPECT_EQ(
            Enter({row.box, asItsTemplate, "click 5042", "click 5047", "drop 5040", "close 5040",
                   "drop 5079", "close 5079", "click 2017", "click 2019", asItsTemplate, "ok"}),
            1);
        EXPECT_EQ(std::memcmp(&out, &in, sizeof in), 0);
    }
}

TEST_F(MainPageFiles, MissingFilesArePassedOver)
{
    Start();
    for (const char *file : {DAT, CFG}) {
        SCOPED_TRACE(file);
        kvp::ClearMemoryFiles();
        kvp::PutAbsentFile(file);
        EXPECT_EQ(Enter({"click 5041", "click 5047", "click 5042", "click 5044", "drop 5040",
                         "close 5040", "drop 5079", "close 5079", "ok"}),
                  1);
    }
}

TEST_F(MainPageFiles, ASavedSettingThatIsGoneIsCustomAndALostOneIsAutomatic)
{
    const auto custom = [] { EXPECT_THAT(SeenText(IDC_MAIN_SETTINGS), CUSTOM); };
    const auto automatic = Sees("Automatic: Custom Settings, Plain Paper, Color; "
                                "Normal - 360 dpi, MW: Off, High Speed: On, Vivid; 6248 6760");
    const char *version = R"(box ok "Version Error of ucf file")",
               *lost = R"(box ok "The saved setting of this printer can no longer be found. )"
                       R"(The settings have been set to Automatic.")";
    const struct {
        const char *why;
        std::function<void()> change;
        std::vector<Person::Step> sees;
        int nIndex;
    } aRows[] = {
        {"no file", [] { kvp::PutAbsentFile(UCF); }, {lost, automatic}, 0},
        {"another version", [] { PutUserFile(TwoSaved(), 3); }, {version, lost, automatic}, 0},
        {"a short file",
         [] {
             PutUserFile(TwoSaved());
             Bytes bytes = *kvp::MemoryFile(UCF);
             bytes.pop_back();
             kvp::PutMemoryFile(UCF, bytes);
         },
         {version, lost, automatic},
         0},
        {"a file without settings", [] { PutUserFile({}); }, {custom}, KV_CUSTOM_SETTINGS},
        {"the setting is there",
         [] { PutUserFile(TwoSaved()); },
         {[] { EXPECT_EQ(SeenText(IDC_MAIN_SETTINGS), "Sixteen bytes ok"); }},
         FIRST_SLOT + 1},
    };
    Start();
    in.Settings.wIndex = FIRST_SLOT + 1;
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        row.change();
        auto steps = row.sees;
        steps.push_back("ok");
        EXPECT_EQ(Enter(steps), 1);
        EXPECT_EQ(out.Settings.wIndex, row.nIndex);
        EXPECT_EQ(out.bAutoMode, row.nIndex == 0 ? 1u : 0u);
    }
}

TEST_F(MainPageFiles, ARecordThatLeadsNowhereChangesNothing)
{
    PutUserFile(TwoSaved());
    Start();
    for (const uint32_t bAutoMode : {0u, 1u})
        for (const int nIndex : {60000, 999, 1000, 50}) {
            SCOPED_TRACE(nIndex);
            in.bAutoMode = bAutoMode;
            in.Settings.wIndex = static_cast<uint16_t>(nIndex);
            in.Settings.wResolution = 30000;
            in.Settings.wMedia = -7;
            in.nPaper = -9;
            EXPECT_EQ(Enter({"click 5042", "drop 5040", "close 5040", "drop 5079", "close 5079",
                             "click 5041", "click 5042", "click 5047", "click 5044", "click 5041",
                             "cancel"}),
                      2);
            EXPECT_EQ(Enter({"ok"}), 1);
            EXPECT_EQ(out.Settings.wIndex, nIndex);
        }
    in.dm.dmOrientation = 0;
    kvp::SetBoxHandler([](const kvp::Box &box) {
        std::cerr << box.strText;
        return IDOK;
    });
    EXPECT_DEATH(Enter({}), "lpdi->dmOrientation.*dial_bas");
}

} // namespace
