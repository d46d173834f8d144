// The user-defined paper size dialog of the large sample, opened by itself: a width of 89 to 329
// mm, a length of 98 to 1117.6 mm, and room for eight saved sizes.
#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>

#include "datafile/loader.h"
#include "datafile/tables.h"
#include "dialogs/helpers.h"
#include "dialogs/pages.h"
#include "resources/size_ids.h"
#include "tests/dialogs/dialog_test.h"

namespace
{

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using Steps = std::vector<Person::Step>;
using Texts = std::vector<std::string>;

constexpr const char *SAVE = "click 5257", *DELETE = "click 5258", *OK = "click 1",
                     *CANCEL = "click 2", *MM = "click 5041", *INCH = "click 5042";

std::string Width(const std::string &text)
{
    return "type 5227 \"" + text + "\"";
}
std::string Length(const std::string &text)
{
    return "type 5054 \"" + text + "\"";
}
std::string Name(const std::string &text)
{
    return "type 5256 \"" + text + "\"";
}
std::string Choice(const std::string &text)
{
    return "choose 5255 \"" + text + "\"";
}

// Name, size, unit, and which of the buttons that change are enabled.
std::string Sight()
{
    EXPECT_NE(Seen(IDC_SIZE_MM).at("checked"), Seen(IDC_SIZE_INCH).at("checked"));
    std::string strSight = SeenText(IDC_SIZE_NAME) + ": " + SeenText(IDC_SIZE_WIDTH) + " x " +
                           SeenText(IDC_SIZE_LENGTH) +
                           (Seen(IDC_SIZE_MM).at("checked") == true ? " mm" : " inch");
    for (const auto &[id, name] : {std::pair(IDC_SIZE_SAVE, ", save"),
                                   std::pair(IDC_SIZE_DELETE, ", delete"), std::pair(IDOK, ", ok")})
        if (IsWindowEnabled(Shown(id)))
            strSight += name;
    return strSight;
}
// The list's entries, the selected one in brackets.
std::string ListSeen()
{
    const Texts items = SeenItems(IDC_SIZE_LIST);
    const int nSelection = Seen(IDC_SIZE_LIST).at("selection");
    std::string strList;
    for (int i = 0; i < static_cast<int>(items.size()); ++i) {
        const std::string &text = items[static_cast<size_t>(i)];
        strList += (i ? ", " : "") + (i == nSelection ? "[" + text + "]" : text);
    }
    return strList;
}
std::string LimitsSeen()
{
    return SeenText(IDC_SIZE_WIDTH_SMALLEST) + "-" + SeenText(IDC_SIZE_WIDTH_LARGEST) + " x " +
           SeenText(IDC_SIZE_LENGTH_SMALLEST) + "-" + SeenText(IDC_SIZE_LENGTH_LARGEST);
}
Person::Step Sees(const std::string &text)
{
    return [=] { EXPECT_EQ(Sight(), text); };
}
Person::Step Lists(const std::string &text)
{
    return [=] { EXPECT_EQ(ListSeen(), text); };
}
Person::Step IsLimitedTo(const std::string &text)
{
    return [=] { EXPECT_EQ(LimitsSeen(), text); };
}

class SizeDialog : public DialogTest
{
  protected:
    SizeDialog() { ReadModel(); }
    ~SizeDialog() override { Free_DATFile(nullptr); }
    // The model's tables as a page has read them, and a record with an A4 sheet of the user's own.
    void ReadModel()
    {
        dm.dwUnit = 1;
        dm.lPaperWidth = 2100;
        dm.lPaperLength = 2970;
        EXPECT_TRUE(Get_DATFile(&dm));
    }
    INT_PTR Open(Steps steps) { return OpenDialog(IDD_SIZE, UserDlgProc, std::move(steps)); }
    // Saves sizes of 1000, 1001, ... by 2000 under these names and leaves.
    void SaveAll(const Texts &names)
    {
        Steps steps{Length("2000")};
        int nWidth = 1000;
        for (const std::string &name : names)
            for (const std::string &step :
                 {Width(std::to_string(nWidth++)), Name(name), std::string(SAVE)})
                steps.emplace_back(step);
        steps.emplace_back(CANCEL);
        EXPECT_EQ(Open(steps), -1);
    }
    fs::path UserFile() const
    {
        return fs::path(machine.strRoot) / "c/winnt35/system32/KJ820PRO.ucf";
    }
    // Slots as "name width x length unit, id state mark", of the open tables or of the file.
    static Texts Slots(const DatFile &tables, size_t n)
    {
        Texts slots;
        for (size_t i = 0; i < n; ++i) {
            const UserPaperRecord &slot = tables.lpUserPapers.at(i);
            const PaperRecord &paper = slot.paper;
            slots.push_back(SlotName(slot) + " " + std::to_string(paper.wWidth) + " x " +
                            std::to_string(paper.wLength) + " " + std::to_string(paper.wDefault) +
                            ", " + std::to_string(paper.wId) + " " + std::to_string(slot.wState) +
                            " " + std::to_string(slot.wMark));
        }
        return slots;
    }
    Texts SlotsInFile(size_t n)
    {
        DatFile fresh{};
        EXPECT_TRUE(Get_DatFileLib(&dm, &fresh));
        return Slots(fresh, n);
    }
};

TEST_F(SizeDialog, OpensWithTheRecordsSizeAndUnitAndConvertsBetweenUnits)
{
    constexpr const char *A4_MM = "User Defined: 2100 x 2970 mm, ok",
                         *A4_INCH = "User Defined: 827 x 1169 inch, ok";
    UIInstance.dwFilling = TRUE; // whatever an earlier dialog left
    EXPECT_EQ(Open({Sees(A4_MM), Lists("User Defined"), IsLimitedTo("890-3290 x 980-11176"), INCH,
                    Sees(A4_INCH), IsLimitedTo("350-1295 x 386-4400"), INCH, Sees(A4_INCH), MM,
                    Sees("User Defined: 2101 x 2969 mm, ok"), Width("890"), INCH, "key Up",
                    Sees("User Defined: 890 x 2969 mm, ok"), INCH, CANCEL}),
              -1);
    EXPECT_EQ(+dm.dwUnit, 1u) << "Cancel puts the unit back";
    EXPECT_EQ(+dm.lPaperWidth, 2100) << "and leaves the size";
    EXPECT_EQ(Open({INCH, OK}), -1);
    EXPECT_EQ(+dm.dwUnit, 2u);
    EXPECT_EQ(+dm.lPaperWidth, 2101);
    EXPECT_EQ(+dm.lPaperLength, 2969);
    EXPECT_EQ(Open({Sees(A4_INCH), IsLimitedTo("350-1295 x 386-4400"), OK}), -1);
    UIInstance.dat.lpPapers.back().wId = 9; // a model without a user-defined paper
    EXPECT_EQ(Open({}), -1) << "has no dialog";
}

TEST_F(SizeDialog, NumbersAreKeptWithinTheirLimits)
{
    static const struct {
        std::string typed, then;
        const char *unit, *width, *length;
    } aRows[] = {
        {Width("889"), "key Tab", MM, "890", "2970"},
        {Width("3291"), "key Shift+Tab", MM, "3290", "2970"},
        {Width("-2000"), "focus 5256", MM, "890", "2970"},
        {Length("979"), "key Tab", MM, "2100", "980"},
        {Length("11177"), "key Tab", MM, "2100", "11176"},
        {Width("349"), "key Tab", INCH, "350", "1169"},
        {Length("4401"), "key Tab", INCH, "827", "4400"},
        // The arrows take no focus from a click, so the field is not left.
        {Width("3289"), "scroll 5231 up", MM, "3290", "2970"},
        {Width("3290"), "scroll 5231 up", MM, "3290", "2970"},
        {Width("3290"), "scroll 5231 down", MM, "3289", "2970"},
        {Width("3291"), "scroll 5231 down", MM, "3291", "2970"},
        {Width("890"), "scroll 5231 down", MM, "890", "2970"},
        {Width("889"), "scroll 5231 up", MM, "889", "2970"},
        {Length("1200"), "scroll 5232 up", INCH, "827", "1201"},
        // Enter leaves no field either. It confirms, or corrects one number per try.
        {Width("1"), "key Enter", MM, "890", "2970"},
        {Length("9999"), "key Enter", INCH, "827", "4400"},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.typed + ", " + row.then);
        const auto look = [&] {
            EXPECT_EQ(SeenText(IDC_SIZE_WIDTH), row.width);
            EXPECT_EQ(SeenText(IDC_SIZE_LENGTH), row.length);
        };
        EXPECT_EQ(Open({row.unit, row.typed, row.then, look, CANCEL}), -1);
    }
    EXPECT_EQ(Open({Length("1"), Width("1"), OK}), -1) << "leaving it for OK presses OK";
    EXPECT_EQ(+dm.lPaperWidth, 890);
    EXPECT_EQ(+dm.lPaperLength, 980);
}

TEST_F(SizeDialog, NamesThatAPaperCouldBeTakenForAreRefused)
{
    SaveAll({"Card", "Card 2"});
    static const struct {
        const char *why, *typed, *buttons;
    } aRows[] = {
        {"a new name", "Poster", ", save"},
        {"a saved one", "Card", ", save, delete"},
        {"in other letters", "CARD", ", save"},
        {"of a saved one's short name", "Card 3", ", save"},
        {"a paper's short name", "Letter", ""},
        {"of the same short name", "Letter 2", ""},
        {"a blank before the end", "Letter ", ""},
        {"a blank before a letter", "Letter of mine", ", save"},
        {"in small letters", "letter", ", save"},
        {"more than one word", "Half Letter", ""},
        {"the user-defined paper", "User Defined 7", ""},
        {"a number has no short name", " 5", ", save"},
        {"blanks", "   ", ", ok"},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        const std::string strSeen = std::string(row.typed) + ": 2100 x 2970 mm" + row.buttons;
        EXPECT_EQ(Open({Name(row.typed), Sees(strSeen), CANCEL}), -1);
    }
}

TEST_F(SizeDialog, LongNamesAreCutBetweenCharacters)
{
    EXPECT_EQ(Open({Name(std::string(30, 'n')),
                    Sees(std::string(24, 'n') + ": 2100 x 2970 mm, save"), CANCEL}),
              -1);
    Free_DATFile(nullptr);
    Release();
    machine.wLang = 0x0411;
    machine.uAnsiCodePage = 932;
    Apply();
    Prepare();
    ReadModel();
    static const struct {
        const char *typed, *cut;
    } aRows[] = {
        {"あいうえおかきくけこさし", "あいうえおかきくけこさし"},  // 24 bytes
        {"aあいうえおかきくけこさし", "aあいうえおかきくけこさ"},  // the 24th begins one
        {"あいうえおかきくけこさｱｲｳ", "あいうえおかきくけこさｱｲ"}, // nothing to split
        {"aソソソソソソソソソソソソ", "aソソソソソソソソソソソ"},  // second bytes like a backslash
    };
    INT_PTR nSaved = 0;
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.typed);
        const auto look = [&] { EXPECT_EQ(SeenText(IDC_SIZE_LIST), row.cut); };
        EXPECT_EQ(Open({Name(row.typed), SAVE, look, OK}), nSaved++);
    }
}

TEST_F(SizeDialog, ASavedSizeIsChosenAgainWithItsUnitAndItsLimits)
{
    EXPECT_EQ(Open({Width("1234"), Length("2345"), Name("Card"), Sees("Card: 1234 x 2345 mm, save"),
                    SAVE, Sees("Card: 1234 x 2345 mm, delete, ok"), Lists("User Defined, [Card]"),
                    INCH, Sees("Card: 486 x 923 inch, save, delete"), Lists("User Defined, Card"),
                    Name("Flyer"), Width("400"), Length("600"), SAVE, OK}),
              1)
        << "what was saved last is chosen";
    EXPECT_EQ(+dm.lPaperWidth, 2100) << "and the user-defined size stays";
    EXPECT_EQ(+dm.dwUnit, 2u);
    EXPECT_THAT(SlotsInFile(3),
                ElementsAre("Card 1234 x 2345 1, 768 2 0", "Flyer 400 x 600 2, 769 2 1",
                            " 2976 x 4209 0, 770 3 65535"));
    UIInstance.dat.lpPapers.back().wMaxWidth = 3000; // the model's limits change
    EXPECT_EQ(Open({Lists("User Defined, Card, Flyer"), Choice("Flyer"),
                    Sees("Flyer: 400 x 600 inch, delete, ok"), IsLimitedTo("350-1295 x 386-4400"),
                    Choice("Card"), Sees("Card: 1234 x 2345 mm, delete, ok"),
                    IsLimitedTo("890-3290 x 980-11176"), OK}),
              0);
    EXPECT_EQ(+dm.dwUnit, 1u);
    // The first entry stands for the size that is shown.
    EXPECT_EQ(
        Open({Choice("Card"), Name("Other"), Lists("User Defined, Card, Flyer"), Choice("Card"),
              Choice("User Defined"), Sees("User Defined: 1234 x 2345 mm, ok"),
              Lists("[User Defined], Card, Flyer"), OK}),
        -1);
    EXPECT_EQ(+dm.lPaperWidth, 1234);
    EXPECT_EQ(+dm.lPaperLength, 2345);
}

TEST_F(SizeDialog, ASavedSizeIsReplacedWhenThePersonAgreesAlsoInAFullTable)
{
    const std::string strAsked =
        "\"A paper size of this name has been saved before. Do you want to replace it?\"";
    const std::string strFull = "\"No more paper sizes can be saved. Delete one that you no longer "
                                "need, then save again.\"";
    SaveAll({"1st", "2nd", "3rd", "4th", "5th", "6th", "7th", "8th"});
    const Texts full = SlotsInFile(8);
    EXPECT_EQ(Open({Name("9th"), SAVE, "box ok " + strFull, Sees("9th: 2100 x 2970 mm, save"),
                    Choice("2nd"), Width("1500"), Sees("2nd: 1500 x 2000 mm, save, delete"), SAVE,
                    "box cancel " + strAsked, [&] { EXPECT_EQ(SlotsInFile(8), full); },
                    Sees("2nd: 1500 x 2000 mm, save, delete"), INCH, SAVE, "box ok " + strAsked,
                    Lists("User Defined, 1st, [2nd], 3rd, 4th, 5th, 6th, 7th, 8th"), OK}),
              1);
    Texts expected = full;
    expected[1] = "2nd 591 x 787 2, 769 2 1";
    EXPECT_EQ(SlotsInFile(8), expected);
}

TEST_F(SizeDialog, DeletingMovesTheOthersUpWholeAndCancelDoesNotBringItBack)
{
    const std::string strAsked = "\"Do you want to delete the selected entry?\"";
    SaveAll({"1st", "2nd", "3rd"});
    EXPECT_EQ(Open({Choice("1st"), DELETE, "box cancel " + strAsked,
                    Lists("User Defined, [1st], 2nd, 3rd"), DELETE, "box ok " + strAsked,
                    Lists("User Defined, 2nd, 3rd"), Sees("User Defined: 1000 x 2000 mm, ok"),
                    Choice("3rd"), Sees("3rd: 1002 x 2000 mm, delete, ok"), CANCEL}),
              -1);
    Texts expected = {"2nd 1001 x 2000 1, 769 2 1", "3rd 1002 x 2000 1, 770 2 2",
                      " 2976 x 4209 0, 771 3 65535"};
    EXPECT_EQ(SlotsInFile(3), expected) << "identifiers and marks travel";
    EXPECT_EQ(SlotsInFile(8).back(), " 1000 x 2000 1, 768 3 65535");
    EXPECT_EQ(Slots(UIInstance.dat, 8), SlotsInFile(8));
    // What is saved next takes the slot that moved up, and its identifier.
    EXPECT_EQ(Open({Name("4th"), SAVE, OK}), 2);
    expected[2] = "4th 2100 x 2970 1, 771 2 2";
    EXPECT_EQ(SlotsInFile(3), expected);
}

TEST_F(SizeDialog, ADirectoryThatCannotBeWrittenKeepsTheFileAndTheSheetItsSizes)
{
    SaveAll({"Card"});
    const fs::path aside = fs::path(machine.strRoot) / "aside";
    fs::rename(UserFile().parent_path(), aside);
    EXPECT_EQ(Open({Choice("Card"), DELETE, "box ok", Name("Flyer"), SAVE, OK}), 0);
    EXPECT_FALSE(fs::exists(UserFile().parent_path()));
    fs::rename(aside, UserFile().parent_path());
    EXPECT_EQ(SlotsInFile(1), (Texts{"Card 1000 x 2000 1, 768 2 0"})) << "the old file";
    EXPECT_EQ(Slots(UIInstance.dat, 1), (Texts{"Flyer 1000 x 2000 1, 769 2 0"}));
    EXPECT_EQ(Open({Name("Poster"), SAVE, CANCEL}), -1);
    EXPECT_EQ(SlotsInFile(2), Slots(UIInstance.dat, 2)) << "the next save takes both along";
}

TEST_F(SizeDialog, TheUserDefinedEntryIsSetApartAndLimitsAreGrey)
{
    SaveAll({"Card"});
    const auto look = [] {
        // Items are as high as a line of text, below the list's edge; the line is dotted.
        const int nRight = ClientOf(IDC_SIZE_LIST).right, y = GetTextHeight(Shown(IDC_SIZE_LIST));
        int aBlack[3] = {};
        for (int x = 1; x < nRight - 1; ++x)
            for (const int nItem : {1, 2})
                aBlack[nItem] += PixelOf(IDC_SIZE_LIST, x, nItem * y) == 0;
        EXPECT_TRUE(aBlack[1] > nRight / 3 && aBlack[1] < nRight) << aBlack[1];
        EXPECT_EQ(aBlack[2], 0);
        EXPECT_EQ(PixelOf(IDC_SIZE_WIDTH_SMALLEST, 2, 2), LIGHT_GREY);
        EXPECT_EQ(PixelOf(IDC_SIZE_LENGTH_LARGEST, 2, 2), LIGHT_GREY);
        EXPECT_EQ(PixelOf(IDC_SIZE_WIDTH, 2, 2), RGB(255, 255, 255));
    };
    Open({look, CANCEL});
    Open({look, CANCEL}); // the brush is kept
}

TEST_F(SizeDialog, ANewSizeMakesARefusedNameGoodAgain)
{
    EXPECT_EQ(Open({Name("A4"), Sees("A4: 2100 x 2970 mm"), Width("1000"),
                    Sees("A4: 1000 x 2970 mm, save"), SAVE, OK}),
              0);
    EXPECT_EQ(SlotsInFile(1), (Texts{"A4 1000 x 2970 1, 768 2 0"}));
}

TEST_F(SizeDialog, OnlyFiveCharactersOfANumberCountWithoutASelectionAndWhenSaved)
{
    // Leading zeros: the number is within its limits, its first five characters are not.
    EXPECT_EQ(Open({Width("0001500"), "choose 5255 #0", "key Enter"}), -1);
    EXPECT_EQ(+dm.lPaperWidth, 1500) << "with the first entry selected the whole number counts";
    EXPECT_EQ(Open({Width("0001600"), Name("Zeros"), SAVE, CANCEL}), -1);
    EXPECT_EQ(SlotsInFile(1), (Texts{"Zeros 16 x 2970 1, 768 2 0"}));
    EXPECT_EQ(Open({Width("0001700"), "key Enter"}), -1);
    EXPECT_EQ(+dm.lPaperWidth, 17);
}

TEST_F(SizeDialog, TheUserDefinedNameCannotBeSavedWhoeverAsks)
{
    const auto press = [] { SendMessageA(kvp::TopWindow(), WM_COMMAND, IDC_SIZE_SAVE, 0); };
    const std::string strRefused = "\"This name belongs to the user-defined paper itself. Type "
                                   "another one.\"";
    EXPECT_EQ(Open({press, "box ok " + strRefused, CANCEL}), -1);
    EXPECT_FALSE(fs::exists(UserFile()));
}

TEST_F(SizeDialog, SizesSavedIntoAFileOfAnotherVersionHaveTheUserDefinedIdentifier)
{
    std::ofstream(UserFile(), std::ios::binary) << "an old file";
    EXPECT_TRUE(Get_DATFile(&dm));
    SaveAll({"Card"});
    EXPECT_EQ(SlotsInFile(1), (Texts{"Card 1000 x 2000 1, 256 2 0"}));
}

} // namespace
