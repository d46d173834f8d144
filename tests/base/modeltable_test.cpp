// The model table: which record answers a name, and what a damaged table still gives.
#include "base/modeltable.h"

#include <cstring>

#include "tests/support/machine.h"
#include "tests/support/model_builder.h"

namespace
{

class ModelTable : public MachineTest
{
  protected:
    ~ModelTable() override { FreeDataFile(); }

    void Load(const Bytes &bytes)
    {
        kvp::PutMemoryFile(std::string(SYSTEM_DIR) + "kv_model.dat", bytes);
        ASSERT_EQ(LoadDataFile(), bytes.size());
    }
    void SetLanguage(LANGID wLang)
    {
        machine.wLang = wLang;
        Apply();
    }
};

Bytes TwoLanguages()
{
    return ModelTableBytes({{9,
                             {MakeModelRecord("First", "FIRST"), MakeModelRecord("Both", "EN"),
                              MakeModelRecord("OnlyEnglish", "ENONLY")}},
                            {7,
                             {MakeModelRecord("Both", "DE"), MakeModelRecord("Both", "DE2"),
                              MakeModelRecord("onlyenglish", "DECASE")}},
                            {7, {MakeModelRecord("Later", "LATER")}}});
}

const struct {
    const char *why;
    LANGID wLang;
    const char *model, *dat;
} aLookups[] = {
    {"the user's language, first record of the name", 0x0407, "Both", "DE"},
    {"a variant shares its language's section", 0x0C07, "Both", "DE"},
    {"a language that shares but a byte with German: English", 0x0107, "Both", "EN"},
    {"English", 0x0409, "Both", "EN"},
    {"no section for the user: English", 0x0411, "Both", "EN"},
    {"another case is another name: English", 0x0407, "OnlyEnglish", "ENONLY"},
    {"another case everywhere: the first record", 0x0407, "BOTH", "FIRST"},
    {"a later section of the language is never searched", 0x0407, "Later", "FIRST"},
    {"a section of another language is not searched", 0x0409, "onlyenglish", "FIRST"},
    {"nowhere: the first record", 0x0407, "Unknown", "FIRST"},
    {"no name: the first record", 0x0409, "", "FIRST"},
};

TEST_F(ModelTable, ANameIsFoundInTheUsersLanguageThenInEnglishThenFirst)
{
    Load(TwoLanguages());
    for (const auto &row : aLookups) {
        SCOPED_TRACE(row.why);
        SetLanguage(row.wLang);
        EXPECT_STREQ(Get_DATName(row.model), row.dat);
    }
}

TEST_F(ModelTable, EachLookupAnswersItsOwnField)
{
    const char *const aNames[] = {"", "M"};
    const LPCSTR aExpected[][5] = {{"", "", "", "", ""}, {"UI", "HELP", "BASE", "STM", "UTIL"}};
    for (size_t i = 0; i < 2; ++i) {
        SCOPED_TRACE(i == 0 ? "without a table" : "with one");
        if (i == 1)
            Load(ModelTableBytes(
                {{9, {MakeModelRecord("M", "BASE", "UI", "HELP", "STM", "UTIL")}}}));
        EXPECT_STREQ(Get_UIRcName(aNames[i]), aExpected[i][0]);
        EXPECT_STREQ(Get_HelpName(aNames[i]), aExpected[i][1]);
        EXPECT_STREQ(Get_DATName(aNames[i]), aExpected[i][2]);
        EXPECT_STREQ(Get_STMName(aNames[i]), aExpected[i][3]);
        EXPECT_STREQ(Get_UtilName(aNames[i]), aExpected[i][4]);
    }
}

// Whatever is cut off does not exist; what stands before the cut still answers.
TEST_F(ModelTable, ATableCutAnywhereAnswersWithWhatIsLeft)
{
    const Bytes whole =
        ModelTableBytes({{7, {MakeModelRecord("A", "A")}},
                         {9, {MakeModelRecord("B", "B"), MakeModelRecord("C", "C")}}});
    const size_t nFirst = 26 + sizeof(ModelRecord), nSecond = nFirst + 4 + sizeof(ModelRecord);
    for (size_t cb = 1; cb <= whole.size(); ++cb) {
        SCOPED_TRACE(cb);
        Load(Bytes(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(cb)));
        const char *const first = cb < nFirst ? "" : "A";
        EXPECT_STREQ(Get_DATName("A"), first);
        EXPECT_STREQ(Get_DATName("B"), cb < nSecond ? first : "B");
        EXPECT_STREQ(Get_DATName("C"), cb < whole.size() ? first : "C");
        if (HasFailure())
            break;
    }
}

TEST_F(ModelTable, CountsThatLieNameNothing)
{
    const struct {
        const char *why;
        SHORT sSections, sRecords; // of the first section
        const char *first, *second;
    } aRows[] = {
        {"as they are", 2, 1, "A", "B"},
        {"no section", 0, 1, "", ""},
        {"fewer than none", -1, 1, "", ""},
        {"more sections than there are", 32767, 1, "A", "B"},
        {"one section", 1, 1, "A", "A"},
        {"more records than there are: the rest is theirs", 2, 32767, "A", "A"},
        {"fewer records than none: what follows is a section", 2, -5, "", ""},
    };
    const Bytes whole =
        ModelTableBytes({{7, {MakeModelRecord("A", "A")}}, {9, {MakeModelRecord("B", "B")}}});
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        Bytes bytes = whole;
        std::memcpy(&bytes[20], &row.sSections, 2);
        std::memcpy(&bytes[24], &row.sRecords, 2);
        Load(bytes);
        EXPECT_STREQ(Get_DATName("A"), row.first);
        EXPECT_STREQ(Get_DATName("B"), row.second);
    }
}

TEST_F(ModelTable, ALanguageByteAbove127NeverMatches)
{
    Load(ModelTableBytes(
        {{1, {MakeModelRecord("A", "FIRST")}}, {0x91, {MakeModelRecord("A", "A")}}}));
    SetLanguage(0x0491);
    EXPECT_STREQ(Get_DATName("A"), "FIRST");
}

TEST_F(ModelTable, ATextWithoutTerminatorEndsAtItsFieldsEnd)
{
    ModelRecord record;
    std::memset(&record, 'x', sizeof record);
    Load(ModelTableBytes({{9, {record}}}));
    EXPECT_EQ(Get_UIRcName("A"), std::string(10, 'x'));
    EXPECT_EQ(Get_DATName("A"), std::string(40, 'x'));
    EXPECT_EQ(Get_UtilName("A"), std::string(50, 'x'));
    EXPECT_EQ(Get_DATName(std::string(52, 'x').c_str()), std::string(40, 'x'));
}

TEST_F(ModelTable, NamesOfTheAnsiCodePageAreCompared)
{
    machine.uAnsiCodePage = 932;
    SetLanguage(0x0411);
    const std::string model = "KORVA \x83\x4A\x83\x89\x81\x5B"; // its second bytes look like ASCII
    Load(
        ModelTableBytes({{9, {MakeModelRecord("E", "E")}}, {0x11, {MakeModelRecord(model, "J")}}}));
    EXPECT_STREQ(Get_DATName(model.c_str()), "J");
}

TEST_F(ModelTable, AFileThatCannotBeReadIsNoTable)
{
    EXPECT_EQ(LoadDataFile(), 0u) << "no file";
    kvp::PutMemoryFile(std::string(SYSTEM_DIR) + "kv_model.dat", {});
    EXPECT_EQ(LoadDataFile(), 0u) << "an empty file";
    Load(TwoLanguages());
    FreeDataFile();
    const kvp::Held before = kvp::CurrentlyHeld();
    for (const kvp::Call call : {kvp::Call::OpenFile, kvp::Call::Read, kvp::Call::Alloc}) {
        kvp::FailCall(call, 0);
        EXPECT_EQ(LoadDataFile(), 0u) << static_cast<int>(call);
        EXPECT_STREQ(Get_DATName("First"), "");
    }
    EXPECT_EQ(kvp::CurrentlyHeld().nBlocks, before.nBlocks);
    EXPECT_EQ(kvp::CurrentlyHeld().nFiles, before.nFiles);
}

} // namespace
