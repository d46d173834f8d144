// Model tables: source to bytes and back, names that do not fit, tables that end early.
#include <algorithm>
#include <random>

#include <gtest/gtest.h>

#include "tests/support/model_builder.h"
#include "tools/kvmodel/model.h"

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

std::vector<std::string> ProblemsOf(const std::string &source, kvm::ModelTable &table)
{
    kvm::Lines lines;
    kvm::Problems problems;
    if (kvm::ParseTable(source, table, lines, problems))
        kvm::CheckTable(table, lines, problems);
    std::vector<std::string> told;
    for (const kvm::Problem &problem : problems)
        told.push_back(kvm::Format("t.toml", problem));
    return told;
}

TEST(TableSource, GivesTheImageThatTheDriverReads)
{
    kvm::ModelTable table;
    EXPECT_EQ(ProblemsOf(TABLE, table), std::vector<std::string>());
    const Bytes wanted = ModelTableBytes(
        {{9,
          {MakeModelRecord("KORVA One", "ONEDATA", "ONEUI", "ONE", "ONESTM", "ONEUTIL"),
           MakeModelRecord("KORVA Two", "TWODATA", "TWOUI", "TWO", "", "")}},
         {0x11, {MakeModelRecord("KORVA Two", "TWODATA", "TWOUIJ", "TWOJ", "", "")}}});
    EXPECT_EQ(TableBytes(table), wanted);
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
        kvm::ModelTable table, again;
        kvm::Problems problems;
        kvm::Lines lines;
        ASSERT_TRUE(kvm::ReadTable(bytes, table, problems));
        const std::string source = PrintTable(table);
        ASSERT_TRUE(kvm::ParseTable(source, again, lines, problems)) << source;
        EXPECT_EQ(TableBytes(again), bytes) << source;
    }
}

TEST(TableSource, ACutTableIsAnError)
{
    kvm::ModelTable table;
    ProblemsOf(TABLE, table);
    const Bytes whole = TableBytes(table);
    for (size_t cb = 0; cb < whole.size(); ++cb) {
        const Bytes cut(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(cb));
        kvm::Problems problems;
        EXPECT_FALSE(kvm::ReadTable(cut, table, problems)) << cb;
        EXPECT_EQ(problems.size(), 1u) << cb;
    }
    for (const size_t at : {size_t{21}, size_t{25}}) {
        Bytes negative = whole;
        negative[at] = 0xFF;
        kvm::Problems problems;
        EXPECT_FALSE(kvm::ReadTable(negative, table, problems)) << at;
    }
}

struct Change {
    const char *why;
    const char *from, *to;
    const char *told; // how a line begins
};

void PrintTo(const Change &change, std::ostream *lpStream)
{
    *lpStream << change.why;
}

class TableCheck : public ::testing::TestWithParam<Change>
{
};

TEST_P(TableCheck, NamesLineAndKey)
{
    const Change &row = GetParam();
    SCOPED_TRACE(row.why);
    std::string source = TABLE;
    const size_t at = source.find(row.from);
    ASSERT_NE(at, source.npos);
    source.replace(at, std::string(row.from).size(), row.to);
    kvm::ModelTable table;
    std::string all;
    bool bFound = false;
    for (const std::string &line : ProblemsOf(source, table)) {
        bFound = bFound || line.starts_with(row.told);
        all += line + "\n";
    }
    EXPECT_TRUE(bFound) << "wanted " << row.told << "\ntold\n" << all;
}

const Change aChanges[] = {
    {"a name of 32 characters", "KORVA One", "KORVA One 1234567890123456789012",
     "t.toml:4: section[0].model[0].model: a model's name has 1 to 31 characters"},
    {"a name longer than its field", "KORVA One",
     "KORVA One 123456789012345678901234567890123456789012",
     "t.toml:4: section[0].model[0].model: give a text of at most 51 plain characters"},
    {"a library's name of 10", "ONEUI", "ONEUI67890",
     "t.toml:5: section[0].model[0].ui: give a text of at most 9 plain characters"},
    {"a data name of 40", "ONEDATA", "1234567890123456789012345678901234567890",
     "t.toml:7: section[0].model[0].data: give a text of at most 39 plain characters"},
    {"a utility's name of 50", "ONEUTIL", "12345678901234567890123456789012345678901234567890",
     "t.toml:9: section[0].model[0].utility: give a text of at most 49 plain characters"},
    {"bytes without terminator", "\"ONE\"", "{ hex = \"41414141414141414141\" }",
     "t.toml:6: section[0].model[0].help: no terminator"},
    {"a name that leads elsewhere", "ONEDATA", "..\\\\ONE",
     "t.toml:7: section[0].model[0].data: give a file's base name"},
    {"a data name left out", "data = \"ONEDATA\"\n", "",
     "t.toml:3: section[0].model[0].data: missing"},
    {"an empty name", "ONEUI", "", "t.toml:5: section[0].model[0].ui: a name is wanted"},
    {"a model twice in a section", "KORVA One", "KORVA Two",
     "t.toml:11: section[0].model[1].model: this model stands above"},
    {"a language twice", "0x11", "9", "t.toml:17: section[1].language: a section of this"},
    {"a language that is never found", "0x11", "0x91",
     "t.toml:17: section[1].language: a language"},
    {"an unknown language", "0x11", "\"martian\"", "t.toml:17: section[1].language: 'martian'"},
    {"no English", "\"english\"", "\"german\"", "t.toml:1: section: a section for English"},
};
INSTANTIATE_TEST_SUITE_P(Rows, TableCheck, ::testing::ValuesIn(aChanges));

TEST(TableCheckWhole, AnEmptyTableHasNoFirstModel)
{
    kvm::ModelTable table;
    const std::vector<std::string> told = ProblemsOf("", table);
    ASSERT_EQ(told.size(), 2u);
    EXPECT_NE(told[0].find("section: the first section must hold a model"), std::string::npos);
}

} // namespace
