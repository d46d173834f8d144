// The model table: which record answers a name, and what a damaged table still gives.
#include "base/modeltable.h"

#include <cstring>

#include <gmock/gmock.h>

#include "tests/support/machine.h"
#include "tests/support/model_builder.h"

using ::testing::ElementsAre;

namespace
{

const std::string TABLE_PATH = std::string(SYSTEM_DIR) + "kv_model.dat";

class ModelTable : public MachineTest
{
  protected:
    ~ModelTable() override { FreeDataFile(); }

    void Load(const Bytes &bytes)
    {
        kvp::PutMemoryFile(TABLE_PATH, bytes);
        ASSERT_EQ(LoadDataFile(), bytes.size());
    }
    void SetLanguage(LANGID wLang)
    {
        machine.wLang = wLang;
        Apply();
    }
    static std::vector<std::string> Fields(LPCSTR lpModel)
    {
        return {Get_UIRcName(lpModel), Get_HelpName(lpModel), Get_DATName(lpModel),
                Get_STMName(lpModel), Get_UtilName(lpModel)};
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
    {"no section for the user: English", 0x0411, "Both", "EN"},
    {"another case is another name: English", 0x0407, "OnlyEnglish", "ENONLY"},
    {"a later section of the language is never searched", 0x0407, "Later", "FIRST"},
    {"a section of another language is not searched", 0x0409, "onlyenglish", "FIRST"},
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
    EXPECT_THAT(Fields("M"), ElementsAre("", "", "", "", "")) << "without a table";
    Load(ModelTableBytes({{9, {MakeModelRecord("M", "BASE", "UI", "HELP", "STM", "UTIL")}}}));
    EXPECT_THAT(Fields("M"), ElementsAre("UI", "HELP", "BASE", "STM", "UTIL"));
}

// Whatever is cut off does not exist; what stands before the cut still answers.
TEST_F(ModelTable, ATableCutAnywhereAnswersWithWhatIsLeft)
{
    const Bytes whole =
        ModelTableBytes({{7, {MakeModelRecord("A", "A")}},
                         {9, {MakeModelRecord("B", "B"), MakeModelRecord("C", "C")}}});
    const size_t nFirst = 26 + sizeof(ModelRecord), nSecond = nFirst + 4 + sizeof(ModelRecord);
    for (size_t cb = 1; cb <= whole.size() && !HasFailure(); ++cb) {
        SCOPED_TRACE(cb);
        Load(Bytes(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(cb)));
        const char *const first = cb < nFirst ? "" : "A";
        EXPECT_STREQ(Get_DATName("A"), first);
        EXPECT_STREQ(Get_DATName("B"), cb < nSecond ? first : "B");
        EXPECT_STREQ(Get_DATName("C"), cb < whole.size() ? first : "C");
    }
}

TEST_F(ModelTable, CountsThatLieNameNothing)
{
    const struct {
        const char *why;
        SHORT sSections, sRecords; // of the first section
        const char *first, *second;
    } aRows[] = {
        {"fewer than no sections", -1, 1, "", ""},
        {"more sections than there are", 32767, 1, "A", "B"},
        {"one section", 1, 1, "A", "A"},
        {"more records than there are: the rest is theirs", 2, 32767, "A", "A"},
        {"fewer records than none: what follows is a section", 2, -5, "", ""},
    };
    Bytes bytes =
        ModelTableBytes({{7, {MakeModelRecord("A", "A")}}, {9, {MakeModelRecord("B", "B")}}});
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
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
    ModelRecord first, second;
    std::memset(&first, 'x', sizeof first);
    std::memset(&second, 'y', sizeof second);
    Load(ModelTableBytes({{9, {first, second}}}));
    EXPECT_THAT(Fields(std::string(52, 'y').c_str()),
                ElementsAre(std::string(10, 'y'), std::string(10, 'y'), std::string(40, 'y'),
                            std::string(10, 'y'), std::string(50, 'y')));
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
    kvp::PutMemoryFile(TABLE_PATH, {});
    EXPECT_EQ(LoadDataFile(), 0u) << "an empty file";
    kvp::PutMemoryFile(TABLE_PATH, TwoLanguages());
    for (const kvp::Call call : {kvp::Call::OpenFile, kvp::Call::Read, kvp::Call::Alloc}) {
        kvp::FailCall(call, 0);
        EXPECT_EQ(LoadDataFile(), 0u) << static_cast<int>(call);
        EXPECT_STREQ(Get_DATName("First"), "");
    }
    EXPECT_EQ(kvp::CurrentlyHeld().nBlocks + kvp::CurrentlyHeld().nFiles, 0u);
}

} // namespace
