// The user-defined paper size dialog of the large sample, opened by itself: a width of 89 to 329
// mm, a length of 98 to 1117.6 mm, and room for eight saved sizes.
#include <filesystem>
#include <fstream>
#include <iterator>

#include <gmock/gmock.h>

#include "base/modeltable.h"
#include "base/text.h"
#include "datafile/files.h"
#include "datafile/loader.h"
#include "datafile/tables.h"
#include "dialogs/helpers.h"
#include "dialogs/pages.h"
#include "resources/size_ids.h"
#include "tests/support/samples.h"

namespace
{

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using Steps = std::vector<Person::Step>;
using Texts = std::vector<std::string>;

constexpr const char *NAME = "type 5256 ", *SAVE = "click 5257", *DELETE = "click 5258";
constexpr const char *OK = "click 1", *CANCEL = "click 2", *INCH = "click 5042", *MM = "click 5041";

std::string Typed(int id, const std::string &text)
{
    return "type " + std::to_string(id) + " \"" + text + "\"";
}
std::string Width(const std::string &text)
{
    return Typed(IDC_SIZE_WIDTH, text);
}
std::string Length(const std::string &text)
{
    return Typed(IDC_SIZE_LENGTH, text);
}
std::string Name(const std::string &text)
{
    return Typed(IDC_SIZE_NAME, text);
}
std::string Choice(const std::string &text)
{
    return "choose 5255 \"" + text + "\"";
}

// Which of the three that change are enabled.
std::string Buttons()
{
    std::string strButtons;
    for (const auto &[id, name] : {std::pair(IDC_SIZE_SAVE, "save "),
                                   std::pair(IDC_SIZE_DELETE, "delete "), std::pair(IDOK, "ok ")})
        if (IsWindowEnabled(Shown(id)))
            strButtons += name;
    return strButtons;
}
Texts Size() // width and length
{
    return {SeenText(IDC_SIZE_WIDTH), SeenText(IDC_SIZE_LENGTH)};
}
Texts LimitsSeen() // of the width, of the length
{
    return {SeenText(IDC_SIZE_WIDTH_SMALLEST), SeenText(IDC_SIZE_WIDTH_LARGEST),
            SeenText(IDC_SIZE_LENGTH_SMALLEST), SeenText(IDC_SIZE_LENGTH_LARGEST)};
}
// "mm" or "inch", and never both.
std::string UnitSeen()
{
    EXPECT_NE(Seen(IDC_SIZE_MM).at("checked"), Seen(IDC_SIZE_INCH).at("checked"));
    return Seen(IDC_SIZE_MM).at("checked") == true ? "mm" : "inch";
}

class SizeTest : public SampleTest
{
  protected:
    void SetUp() override { Prepare(); }
    void TearDown() override
    {
        Free_DATFile(nullptr);
        FreeLibrary(block.hResLib);
        FreeDataFile();
    }
    // The model's tables as a page has read them, and a record with an A4 sheet of the user's own.
    void Prepare()
    {
        LoadDataFile();
        WCHAR wszName[32] = u"";
        KVWStrcpy(wszName, u"KORVA KJ-820 Pro");
        KVMemcpy(dm.wszModelName, wszName, sizeof wszName);
        dm.dwUnit = 1;
        dm.lPaperWidth = 2100;
        dm.lPaperLength = 2970;
        UIInstance = {};
        ASSERT_TRUE(Get_DATFile(&dm));
        block = {.lpDevMode = &dm,
                 .lpInstance = &UIInstance,
                 .hResLib = LoadLibraryA((std::string(DRIVER_DIR) + "KJ820UI.DLL").c_str()),
                 .hPrinter = nullptr,
                 .lpSaveDevMode = nullptr};
        ASSERT_NE(block.hResLib, nullptr);
        UIInstance.hResLib = block.hResLib;
    }
    // The same dialog for another user.
    void PrepareFor(LANGID wLang, UINT uCodePage)
    {
        TearDown();
        machine.wLang = wLang;
        machine.uAnsiCodePage = uCodePage;
        Apply();
        Prepare();
    }
    INT_PTR Open(Steps steps)
    {
        person.Will(std::move(steps));
        const INT_PTR nResult = DialogBoxParamA(block.hResLib, MAKEINTRESOURCEA(IDD_SIZE), nullptr,
                                                UserDlgProc, reinterpret_cast<LPARAM>(&block));
        person.ExpectDone();
        return nResult;
    }
    // Saves sizes of 1000, 1001, ... by 2000 under these names and leaves.
    void SaveAll(const Texts &names)
    {
        Steps steps;
        int nWidth = 1000;
        for (const std::string &name : names) {
            steps.insert(steps.end(), {Width(std::to_string(nWidth++)), Length("2000")});
            steps.insert(steps.end(), {Name(name), SAVE});
        }
        steps.push_back(CANCEL);
        EXPECT_EQ(Open(steps), -1);
    }
    fs::path UserFile() const
    {
        return fs::path(machine.strRoot) / "c/winnt35/system32/KJ820PRO.ucf";
    }
    std::string FileBytes() const
    {
        std::ifstream file(UserFile(), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    // Saved sizes as the user's file has them: "name width x length unit id state mark".
    static Texts Slots(const DatFile &block, size_t n)
    {
        Texts slots;
        for (size_t i = 0; i < n; ++i) {
            const UserPaperRecord &slot = block.lpUserPapers.at(i);
            std::string strSlot = SlotName(slot);
            for (const int number :
                 {int{slot.paper.wWidth}, int{slot.paper.wLength}, int{slot.paper.wDefault},
                  int{slot.paper.wId}, int{slot.wState}, int{slot.wMark}})
                strSlot += " " + std::to_string(number);
            slots.push_back(strSlot);
        }
        return slots;
    }
    Texts SlotsInFile(size_t n)
    {
        DatFile fresh{};
        EXPECT_TRUE(Get_DatFileLib(&dm, &fresh));
        return Slots(fresh, n);
    }

    DriverDevMode dm{};
    CBSTRUC block{};
};

// ---- opening, units, limits -------------------------------------------------------------------

TEST_F(SizeTest, OpensWithTheRecordsSizeAndTheModelsLimitsInTheRecordsUnit)
{
    static const struct {
        DWORD dwUnit;
        const char *unit;
        Texts size, limits;
    } aRows[] = {{1, "mm", {"2100", "2970"}, {"890", "3290", "980", "11176"}},
                 {2, "inch", {"827", "1169"}, {"350", "1295", "386", "4400"}}};
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.unit);
        dm.dwUnit = row.dwUnit;
        UIInstance.dwFilling = TRUE; // whatever an earlier dialog left
        const auto look = [&] {
            EXPECT_EQ(UnitSeen(), row.unit);
            EXPECT_EQ(Size(), row.size);
            EXPECT_EQ(LimitsSeen(), row.limits);
            EXPECT_EQ(SeenText(IDC_SIZE_NAME), "User Defined");
            EXPECT_THAT(SeenItems(IDC_SIZE_LIST), ElementsAre("User Defined"));
            EXPECT_EQ(Seen(IDC_SIZE_LIST).at("selection"), -1);
            EXPECT_EQ(Buttons(), "ok ");
        };
        EXPECT_EQ(Open({look, OK}), -1);
        EXPECT_EQ(dm.dwUnit, row.dwUnit);
    }
    EXPECT_EQ(dm.lPaperWidth, 2101) << "rounded on the way to 0.01 inch and back";
    EXPECT_EQ(dm.lPaperLength, 2969);
}

TEST_F(SizeTest, AModelWithoutAUserDefinedPaperHasNoDialog)
{
    UIInstance.dat.lpPapers.back().wId = 9;
    EXPECT_EQ(Open({}), -1);
    EXPECT_EQ(dm.lPaperWidth, 2100);
}

TEST_F(SizeTest, ChangingTheUnitConvertsAndKeepsWithinTheLimits)
{
    const auto sees = [](const char *unit, Texts size) {
        return [=] {
            EXPECT_EQ(UnitSeen(), unit);
            EXPECT_EQ(Size(), size);
            EXPECT_EQ(Buttons(), "ok ");
        };
    };
    EXPECT_EQ(Open({INCH, sees("inch", {"827", "1169"}), INCH, sees("inch", {"827", "1169"}),
                    [] {
                        EXPECT_EQ(LimitsSeen(), (Texts{"350", "1295", "386", "4400"}));
                    },
                    MM, sees("mm", {"2101", "2969"}), Width("890"), INCH,
                    sees("inch", {"350", "1169"}), MM, sees("mm", {"890", "2969"}), "focus 5041",
                    "key Down", sees("inch", {"350", "1169"}), CANCEL}),
              -1);
    EXPECT_EQ(dm.dwUnit, 1u) << "Cancel puts the unit back";
    EXPECT_EQ(dm.lPaperWidth, 2100);
    EXPECT_EQ(Open({INCH, OK}), -1);
    EXPECT_EQ(dm.dwUnit, 2u);
    EXPECT_EQ(dm.lPaperWidth, 2101);
}

TEST_F(SizeTest, LeavingAFieldCorrectsItToTheLimitsOfTheUnitShown)
{
    static const struct {
        std::string typed, leftByKey;
        const char *unit, *width, *length;
    } aRows[] = {
        {Width("889"), "key Tab", MM, "890", "2970"},
        {Width("890"), "key Tab", MM, "890", "2970"},
        {Width("3290"), "key Tab", MM, "3290", "2970"},
        {Width("3291"), "key Shift+Tab", MM, "3290", "2970"},
        {Width(""), "key Tab", MM, "890", "2970"},
        {Width("-2000"), "key Tab", MM, "890", "2970"},
        {Width("wide"), "key Tab", MM, "890", "2970"},
        {Length("979"), "key Tab", MM, "2100", "980"},
        {Length("11177"), "key Tab", MM, "2100", "11176"},
        {Length("99999999999"), "key Tab", MM, "2100", "980"},
        {Width("349"), "key Tab", INCH, "350", "1169"},
        {Length("4401"), "key Tab", INCH, "827", "4400"},
        {Width("1"), "focus 5256", MM, "890", "2970"},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.typed);
        EXPECT_EQ(Open({row.unit, row.typed, row.leftByKey,
                        [&] {
                            EXPECT_EQ(Size(), (Texts{row.width, row.length}));
                        },
                        CANCEL}),
                  -1);
    }
    EXPECT_EQ(Open({Width("1"), OK}), -1) << "leaving it for OK presses OK";
    EXPECT_EQ(dm.lPaperWidth, 890);
}

TEST_F(SizeTest, EnterCorrectsOneNumberPerTryAndThenConfirms)
{
    const auto sees = [](Texts size) { return [=] { EXPECT_EQ(Size(), size); }; };
    // Enter in a field does not leave it.
    EXPECT_EQ(
        Open({INCH, Length("5"), Width("5"), sees({"5", "386"}), "key Enter", sees({"350", "386"}),
              Width("9999"), "key Enter", sees({"1295", "386"}), "key Enter"}),
        -1);
    EXPECT_EQ(dm.lPaperWidth, 3289);
    EXPECT_EQ(dm.lPaperLength, 980);
}

TEST_F(SizeTest, ArrowsStepWithinTheLimits)
{
    static const struct {
        const char *width, *pressed, *then;
    } aRows[] = {{"2100", "up", "2101"}, {"2100", "down", "2099"}, {"3289", "up", "3290"},
                 {"3290", "up", "3290"}, {"3290", "down", "3289"}, {"890", "down", "890"},
                 {"890", "up", "891"},   {"889", "up", "889"},     {"889", "down", "889"},
                 {"3291", "up", "3291"}, {"3291", "down", "3291"}};
    for (const auto &row : aRows) {
        SCOPED_TRACE(std::string(row.width) + " " + row.pressed);
        // A scroll bar takes no focus from a click, so the field is not left.
        EXPECT_EQ(Open({Width(row.width), std::string("scroll 5231 ") + row.pressed,
                        [&] { EXPECT_EQ(SeenText(IDC_SIZE_WIDTH), row.then); }, CANCEL}),
                  -1);
    }
    EXPECT_EQ(Open({INCH, "scroll 5232 up", "scroll 5232 up", Name("Step"), "scroll 5232 down",
                    [] {
                        EXPECT_EQ(Size(), (Texts{"827", "1170"}));
                        EXPECT_EQ(Buttons(), "save ") << "as if it had been typed";
                    },
                    CANCEL}),
              -1);
}

// ---- names ------------------------------------------------------------------------------------

TEST_F(SizeTest, NamesThatAPaperCouldBeTakenForAreRefused)
{
    SaveAll({"Card", "Card 2"});
    static const struct {
        const char *why, *typed, *buttons;
    } aRows[] = {
        {"a new name", "Poster", "save "},
        {"a saved one", "Card", "save delete "},
        {"in other letters", "CARD", "save "},
        {"a saved one of the same short name is none of the papers", "Card 3", "save "},
        {"a paper's short name", "Letter", ""},
        {"its whole name", "Letter 8 1/2 x 11 in", ""},
        {"of the same short name", "Letter 2", ""},
        {"a blank before the end", "Letter ", ""},
        {"two blanks", "Letter  of mine", ""},
        {"a blank before a letter", "Letter of mine", "save "},
        {"a longer word", "Letters", "save "},
        {"in small letters", "letter", "save "},
        {"a paper whose name begins so", "Half", "save "},
        {"more than one word", "Half Letter", ""},
        {"the user-defined one", "User Defined", ""},
        {"and its short name", "User Defined 7", ""},
        {"a number has no short name", " 5", "save "},
        {"nothing", "", "ok "},
        {"blanks", "   ", "ok "},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        EXPECT_EQ(Open({Name(row.typed), [&] { EXPECT_EQ(Buttons(), row.buttons); }, CANCEL}), -1);
    }
}

TEST_F(SizeTest, LongNamesAreCutToTheirField)
{
    const std::string name(30, 'n');
    const auto sees = [](const std::string &text) {
        return [=] { EXPECT_EQ(SeenText(IDC_SIZE_NAME), text); };
    };
    EXPECT_EQ(Open({Name(name), sees(std::string(24, 'n')), CANCEL}), -1);
    PrepareFor(0x0411, 932);
    static const struct {
        const char *typed, *cut;
    } aRows[] = {
        {"あいうえおかきくけこさし", "あいうえおかきくけこさし"},  // 24 bytes
        {"aあいうえおかきくけこさし", "aあいうえおかきくけこさ"},  // 25: the cut at 24 splits one
        {"ｱあいうえおかきくけこさし", "ｱあいうえおかきくけこさ"},  // a single byte above 0xA0
        {"あいうえおかきくけこさｱｲｳ", "あいうえおかきくけこさｱｲ"}, // nothing to split
        {"aソソソソソソソソソソソソ", "aソソソソソソソソソソソ"},  // second bytes like a backslash
    };
    LRESULT nSaved = 0;
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.typed);
        EXPECT_EQ(Open({Name(row.typed), sees(row.cut), SAVE,
                        [&] { EXPECT_EQ(SeenText(IDC_SIZE_LIST), row.cut); }, OK}),
                  nSaved++);
    }
}

// ---- saving, choosing, deleting ---------------------------------------------------------------

TEST_F(SizeTest, ASavedSizeIsChosenAgainWithItsUnitAndItsLimits)
{
    EXPECT_EQ(Open({Width("1234"), Length("2345"), Name("Card"),
                    [] { EXPECT_EQ(Buttons(), "save "); }, SAVE,
                    [] {
                        EXPECT_EQ(Buttons(), "delete ok ");
                        EXPECT_EQ(SeenText(IDC_SIZE_LIST), "Card");
                    },
                    INCH, [] { EXPECT_EQ(Buttons(), "save delete "); }, Name("Flyer"), Width("400"),
                    Length("600"), SAVE, OK}),
              1)
        << "what was saved last is chosen";
    EXPECT_EQ(dm.lPaperWidth, 2100) << "and the user-defined size stays";
    EXPECT_EQ(dm.dwUnit, 2u);
    EXPECT_THAT(SlotsInFile(3), ElementsAre("Card 1234 2345 1 768 2 0", "Flyer 400 600 2 769 2 1",
                                            " 2976 4209 0 770 3 65535"));
    // The model's limits have changed since.
    UIInstance.dat.lpPapers.back().wMaxWidth = 3000;
    EXPECT_EQ(Open({[] {
                        EXPECT_THAT(SeenItems(IDC_SIZE_LIST),
                                    ElementsAre("User Defined", "Card", "Flyer"));
                        EXPECT_THAT(Seen(IDC_SIZE_LIST).at("data"), ElementsAre(100, 0, 1));
                    },
                    Choice("Card"),
                    [] {
                        EXPECT_EQ(UnitSeen(), "mm");
                        EXPECT_EQ(SeenText(IDC_SIZE_NAME), "Card");
                        EXPECT_EQ(Size(), (Texts{"1234", "2345"}));
                        EXPECT_EQ(LimitsSeen(), (Texts{"890", "3290", "980", "11176"}));
                        EXPECT_EQ(Buttons(), "delete ok ");
                    },
                    Choice("Flyer"),
                    [] {
                        EXPECT_EQ(UnitSeen(), "inch");
                        EXPECT_EQ(Size(), (Texts{"400", "600"}));
                        EXPECT_EQ(LimitsSeen(), (Texts{"350", "1295", "386", "4400"}));
                    },
                    Choice("Card"), OK}),
              0);
    EXPECT_EQ(dm.dwUnit, 1u);
}

TEST_F(SizeTest, TheListsFirstEntryIsTheSizeThatIsShown)
{
    SaveAll({"Card"});
    dm.dwUnit = 2;
    EXPECT_EQ(Open({Choice("Card"), Choice("User Defined"),
                    [] {
                        EXPECT_EQ(SeenText(IDC_SIZE_NAME), "User Defined");
                        EXPECT_EQ(Size(), (Texts{"1000", "2000"}));
                        EXPECT_EQ(Buttons(), "ok ");
                        EXPECT_EQ(SeenText(IDC_SIZE_LIST), "User Defined");
                    },
                    OK}),
              -1);
    EXPECT_EQ(dm.lPaperWidth, 1000);
    EXPECT_EQ(dm.lPaperLength, 2000);
    EXPECT_EQ(dm.dwUnit, 1u) << "of the entry chosen before";
}

TEST_F(SizeTest, AChangedSizeIsSavedOverTheOldOneWhenThePersonAgrees)
{
    SaveAll({"Card", "Flyer"});
    const std::string strBefore = FileBytes();
    constexpr const char *QUESTION =
        "\"A paper size of this name has been saved before. Do you want to replace it?\"";
    EXPECT_EQ(Open({Choice("Card"), Width("1500"), [] { EXPECT_EQ(Buttons(), "save delete "); },
                    SAVE, std::string("box cancel ") + QUESTION,
                    [&] {
                        EXPECT_EQ(FileBytes(), strBefore);
                        EXPECT_EQ(Buttons(), "save delete ");
                    },
                    INCH, SAVE, std::string("box ok ") + QUESTION,
                    [] {
                        EXPECT_EQ(SeenText(IDC_SIZE_LIST), "Card");
                        EXPECT_THAT(SeenItems(IDC_SIZE_LIST),
                                    ElementsAre("User Defined", "Card", "Flyer"));
                    },
                    OK}),
              0);
    EXPECT_THAT(SlotsInFile(2), ElementsAre("Card 591 787 2 768 2 0", "Flyer 1001 2000 1 769 2 1"));
}

TEST_F(SizeTest, AFullTableTakesNoNewNameButAnOldOne)
{
    SaveAll({"1st", "2nd", "3rd", "4th", "5th", "6th", "7th"});
    constexpr const char *FULL =
        "box ok \"No more paper sizes can be saved. Delete one that you no "
        "longer need, then save again.\"";
    std::string strFull;
    EXPECT_EQ(Open({Name("8th"), SAVE, [&] { strFull = FileBytes(); }, Name("9th"), SAVE, FULL,
                    [&] {
                        EXPECT_EQ(FileBytes(), strFull);
                        EXPECT_EQ(SeenItems(IDC_SIZE_LIST).size(), 9u);
                        EXPECT_EQ(SeenText(IDC_SIZE_NAME), "9th");
                    },
                    Name("8th"), Width("1111"), SAVE, "box ok", CANCEL}),
              -1);
    EXPECT_THAT(SlotsInFile(8).back(), "8th 1111 2970 1 775 2 7");
}

TEST_F(SizeTest, DeletingMovesTheOthersUpWhole)
{
    SaveAll({"1st", "2nd", "3rd"});
    const std::string strBefore = FileBytes();
    constexpr const char *QUESTION = "\"Do you want to delete the selected entry?\"";
    EXPECT_EQ(
        Open({Choice("1st"), DELETE, std::string("box cancel ") + QUESTION,
              [&] { EXPECT_EQ(FileBytes(), strBefore); }, DELETE, std::string("box ok ") + QUESTION,
              [] {
                  EXPECT_THAT(SeenItems(IDC_SIZE_LIST), ElementsAre("User Defined", "2nd", "3rd"));
                  EXPECT_THAT(Seen(IDC_SIZE_LIST).at("data"), ElementsAre(100, 0, 1));
                  EXPECT_EQ(SeenText(IDC_SIZE_NAME), "User Defined");
                  EXPECT_EQ(Size(), (Texts{"1000", "2000"}));
                  EXPECT_EQ(Buttons(), "ok ");
              },
              CANCEL}),
        -1);
    const Texts slots = {"2nd 1001 2000 1 769 2 1", "3rd 1002 2000 1 770 2 2",
                         " 2976 4209 0 771 3 65535"};
    EXPECT_EQ(SlotsInFile(3), slots) << "identifiers and marks travel";
    EXPECT_EQ(SlotsInFile(8).back(), " 1000 2000 1 768 3 65535");
    EXPECT_EQ(Slots(UIInstance.dat, 8), SlotsInFile(8));
    // What is saved next takes the slot that moved up, and its identifier.
    EXPECT_EQ(Open({Name("4th"), SAVE, OK}), 2);
    EXPECT_EQ(SlotsInFile(3).back(), "4th 2100 2970 1 771 2 2");
}

TEST_F(SizeTest, CancelKeepsWhatWasSavedAndDeletedMeanwhile)
{
    SaveAll({"Card"});
    EXPECT_EQ(Open({Choice("Card"), DELETE, "box ok", INCH, Name("Flyer"), SAVE, CANCEL}), -1);
    EXPECT_EQ(dm.dwUnit, 1u);
    EXPECT_EQ(dm.lPaperWidth, 2100);
    EXPECT_EQ(SlotsInFile(1), (Texts{"Flyer 394 787 2 769 2 0"}));
}

// ---- saves that fail --------------------------------------------------------------------------

TEST_F(SizeTest, ASaveThatFailsLosesNothingAndIsNotReported)
{
    SaveAll({"Card"});
    const std::string strOld = FileBytes();
    for (const kvp::Call call : {kvp::Call::OpenFile, kvp::Call::Write, kvp::Call::Close}) {
        bool bReached = true;
        for (int n = 0; bReached; ++n) {
            SCOPED_TRACE(std::to_string(static_cast<int>(call)) + ", " + std::to_string(n));
            std::ofstream(UserFile(), std::ios::binary) << strOld;
            ASSERT_TRUE(Get_DATFile(&dm));
            EXPECT_EQ(Open({Name("Flyer"), [&] { kvp::FailCall(call, n); }, SAVE,
                            [&] {
                                bReached = kvp::CallsSeen(call) > n;
                                kvp::FailCall(call, -1);
                                EXPECT_EQ(SeenText(IDC_SIZE_LIST), "Flyer");
                                EXPECT_EQ(Buttons(), "delete ok ");
                            },
                            OK}),
                      1);
            const size_t nUsed = FileBytes() == strOld ? 1 : 2;
            EXPECT_TRUE(nUsed == 1 || SlotsInFile(2)[1] == "Flyer 2100 2970 1 769 2 1");
            EXPECT_TRUE(nUsed == 2 || bReached) << "nothing failed, and nothing was saved";
            EXPECT_EQ(FileBytes().size(), strOld.size());
        }
    }
}

TEST_F(SizeTest, ADirectoryThatCannotBeWrittenKeepsTheFileAndTheSheetItsSizes)
{
    SaveAll({"Card"});
    const fs::path aside = fs::path(machine.strRoot) / "aside";
    fs::rename(UserFile().parent_path(), aside);
    EXPECT_EQ(Open({Choice("Card"), DELETE, "box ok", Name("Flyer"), SAVE, OK}), 0);
    EXPECT_FALSE(fs::exists(UserFile().parent_path()));
    fs::rename(aside, UserFile().parent_path());
    EXPECT_EQ(SlotsInFile(1), (Texts{"Card 1000 2000 1 768 2 0"})) << "the old file";
    EXPECT_EQ(Slots(UIInstance.dat, 1), (Texts{"Flyer 1000 2000 1 769 2 0"}));
    EXPECT_EQ(Open({Name("Poster"), SAVE, CANCEL}), -1);
    EXPECT_EQ(SlotsInFile(2), Slots(UIInstance.dat, 2)) << "the next save takes both along";
}

// ---- looks ------------------------------------------------------------------------------------

TEST_F(SizeTest, TheUserDefinedEntryIsSetApartAndLimitsAreGrey)
{
    constexpr COLORREF GREY = RGB(192, 192, 192), WHITE = RGB(255, 255, 255), BLACK = 0;
    SaveAll({"Card"});
    const auto blackIn = [](int y) { // of a row of the list
        int nBlack = 0;
        for (int x = 1; x < ClientOf(IDC_SIZE_LIST).right - 1; ++x)
            nBlack += PixelOf(IDC_SIZE_LIST, x, y) == BLACK;
        return nBlack;
    };
    const auto look = [&] {
        const int nRight = ClientOf(IDC_SIZE_LIST).right;
        TEXTMETRICA tm{};
        HDC hdc = GetDC(Shown(IDC_SIZE_LIST));
        GetTextMetricsA(hdc, &tm);
        ReleaseDC(Shown(IDC_SIZE_LIST), hdc);
        // Items are as high as a line of text, below the list's edge; the line is dotted.
        EXPECT_GT(blackIn(tm.tmHeight), nRight / 3);
        EXPECT_LT(blackIn(tm.tmHeight), nRight);
        EXPECT_EQ(blackIn(2 * tm.tmHeight), 0);
        for (const int id : {IDC_SIZE_WIDTH_SMALLEST, IDC_SIZE_WIDTH_LARGEST,
                             IDC_SIZE_LENGTH_SMALLEST, IDC_SIZE_LENGTH_LARGEST})
            EXPECT_EQ(PixelOf(id, 2, 2), GREY) << id;
        for (const int id : {IDC_SIZE_WIDTH, IDC_SIZE_LENGTH, IDC_SIZE_NAME})
            EXPECT_EQ(PixelOf(id, 2, 2), WHITE) << id;
    };
    Open({look, CANCEL});
    Open({look, CANCEL}); // the brush is kept
}

// ---- kept as they are -------------------------------------------------------------------------

TEST_F(SizeTest, ANewSizeMakesARefusedNameGoodAgain)
{
    EXPECT_EQ(Open({Name("A4"), [] { EXPECT_EQ(Buttons(), ""); }, Width("1000"),
                    [] { EXPECT_EQ(Buttons(), "save "); }, SAVE, OK}),
              0);
    EXPECT_EQ(SlotsInFile(1), (Texts{"A4 1000 2970 1 768 2 0"}));
}

TEST_F(SizeTest, OnlyFiveCharactersOfANumberCountWithoutASelectionAndWhenSaved)
{
    // Leading zeros: the number is within its limits, its first five characters are not.
    EXPECT_EQ(Open({Width("0001500"), "key Enter"}), -1);
    EXPECT_EQ(dm.lPaperWidth, 15);
    dm.lPaperWidth = 2100;
    EXPECT_EQ(Open({Width("0001500"), "choose 5255 #0", "key Enter"}), -1);
    EXPECT_EQ(dm.lPaperWidth, 1500) << "with the first entry selected the whole number counts";
    EXPECT_EQ(Open({Width("0001500"), Name("Zeros"), SAVE, CANCEL}), -1);
    EXPECT_EQ(SlotsInFile(1), (Texts{"Zeros 15 2970 1 768 2 0"}));
}

TEST_F(SizeTest, TheUserDefinedNameCannotBeSavedWhoeverAsks)
{
    const auto press = [] { SendMessageA(kvp::TopWindow(), WM_COMMAND, IDC_SIZE_SAVE, 0); };
    EXPECT_EQ(Open({press,
                    "box ok \"This name belongs to the user-defined paper itself. Type another "
                    "one.\"",
                    CANCEL}),
              -1);
    EXPECT_FALSE(fs::exists(UserFile()));
}

TEST_F(SizeTest, SizesSavedIntoAFileOfAnotherVersionHaveTheUserDefinedIdentifier)
{
    std::ofstream(UserFile(), std::ios::binary) << "an old file";
    EXPECT_TRUE(Get_DATFile(&dm));
    SaveAll({"Card"});
    EXPECT_EQ(SlotsInFile(1), (Texts{"Card 1000 2000 1 256 2 0"}));
}

} // namespace
