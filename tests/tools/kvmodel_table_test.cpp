// Model tables: source to bytes and back, names that do not fit, tables that end early.
#include <random>

#include "tests/support/model_builder.h"
#include "tests/tools/changes.h"

namespace
{

constexpr const char *TABLE = R"([[section]]
language = "english"
[[section.model]]
model = "KORVA One"
ui = "ONEUI"
help = "ONE"
data = "ONEDATA"
stm = "ONESTM"
utility = "ONEUTIL"
[[section.model]]
model = "KORVA Two"
ui = "TWOUI"
help = "TWO"
data = "TWODATA"

[[section]]
language = 0x11
[[section.model]]
model = "KORVA Two"
ui = "TWOUIJ"
help = "TWOJ"
data = "TWODATA"
)";

std::vector<std::string> ProblemsOf(const std::string &source)
{
    return Told(source, kvm::ParseTable, kvm::CheckTable);
}

Bytes Compiled(const std::string &source)
{
    kvm::ModelTable table;
    kvm::Lines lines;
    kvm::Problems problems;
    EXPECT_TRUE(kvm::ParseTable(source, table, lines, problems)) << source;
    return TableBytes(table);
}

TEST(TableSource, GivesTheImageThatTheDriverReads)
{
    EXPECT_EQ(ProblemsOf(TABLE), std::vector<std::string>());
    const Bytes wanted = ModelTableBytes(
        {{9,
          {MakeModelRecord("KORVA One", "ONEDATA", "ONEUI", "ONE", "ONESTM", "ONEUTIL"),
           MakeModelRecord("KORVA Two", "TWODATA", "TWOUI", "TWO", "", "")}},
         {0x11, {MakeModelRecord("KORVA Two", "TWODATA", "TWOUIJ", "TWOJ", "", "")}}});
    EXPECT_EQ(Compiled(TABLE), wanted);
}

TEST(TableSource, EveryByteComesBack)
{
    std::mt19937 random(7);
    for (int i = 0; i < 100; ++i) {
        SCOPED_TRACE(i);
        // Two sections of one record and two, and something behind them.
        Bytes bytes(22 + 4 + 172 + 4 + 2 * 172 + 5 * (i % 2));
        for (uint8_t &b : bytes)
            b = static_cast<uint8_t>(random() % 3 ? 'A' + random() % 3 : random() % 2 * random());
        const auto count = [&](size_t at, uint8_t n) { bytes[at] = n, bytes[at + 1] = 0; };
        count(20, 2);
        count(24, 1);
        count(200, 2);
        kvm::ModelTable table;
        kvm::Problems problems;
        ASSERT_TRUE(kvm::ReadTable(bytes, table, problems));
        EXPECT_EQ(Compiled(PrintTable(table)), bytes);
    }
}

TEST(TableSource, ACutTableIsAnError)
{
    const Bytes whole = Compiled(TABLE);
    const auto refused = [](const Bytes &bytes) {
        kvm::ModelTable table;
        kvm::Problems problems;
        return !kvm::ReadTable(bytes, table, problems) && problems.size() == 1;
    };
    for (size_t cb = 0; cb < whole.size(); ++cb)
        EXPECT_TRUE(refused(Bytes(whole.data(), whole.data() + cb))) << cb;
    for (const size_t at : {size_t{21}, size_t{25}}) {
        Bytes negative = whole;
        negative[at] = 0xFF;
        EXPECT_TRUE(refused(negative)) << at;
    }
}

const Change aChanges[] = {
    {"KORVA One", "KORVA One 1234567890123456789012", "section[0].model[0].model",
     "a model's name has 1 to 31 characters"},
    {"KORVA One", "KORVA One 123456789012345678901234567890123456789012",
     "section[0].model[0].model", "at most 51 plain characters"},
    {"ONEUI", "ONEUI67890", "section[0].model[0].ui", "at most 9 plain"},
    {"ONEUTIL", "12345678901234567890123456789012345678901234567890", "section[0].model[0].utility",
     "at most 49 plain characters"},
    {"\"ONE\"", "{ hex = \"41414141414141414141\" }", "section[0].model[0].help", "no terminator"},
    {"ONEDATA", "..\\\\ONE", "section[0].model[0].data", "a file's base name"},
    {"data = \"ONEDATA\"\n", "", "section[0].model[0].data", "missing", -4},
    {"ONEUI", "", "section[0].model[0].ui", "a name is wanted"},
    {"KORVA One", "KORVA Two", "section[0].model[1].model", "this model stands above", 7},
    {"0x11", "9", "section[1].language", "a section of this"},
    {"0x11", "0x91", "section[1].language", "above 127"},
    {"0x11", "\"martian\"", "section[1].language", "'martian'"},
    {"\"english\"", "\"german\"", "section", "a section for English", -1},
};

TEST(TableCheck, NamesLineAndKey)
{
    ExpectTold(TABLE, aChanges, ProblemsOf);
    EXPECT_EQ(ProblemsOf("").size(), 2u) << "neither a first model nor English";
}

} // namespace
