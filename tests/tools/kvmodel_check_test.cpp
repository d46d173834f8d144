// What kvmodel says of models that are not good: each row changes the tiny model in one place.
#include "tests/tools/changes.h"
#include "tests/tools/tiny_model.h"

namespace
{

std::vector<std::string> ProblemsOf(const std::string &source)
{
    return Told(source, kvm::ParseModel, kvm::CheckModel);
}

const Change aSyntax[] = {
    {"code = 20", "code = 20, colour = 1", "media[0].colour", "no such key"},
    {"\"on-locked\", area", "\"locked\", area", "source[0].collate",
     "'locked' is not known; give one of user, on"},
    {"id = \"manual\"", "id = \"manual\", other_flags = 0x11", "source[0].other_flags",
     "bits 0 to 3"},
    {"media = \"plain\", name", "media = \"matte\", name", "resolution[0].media",
     "no media has the label 'matte'"},
    {"max_copies = 12", "max_copies = 70000", "printer.max_copies",
     "a whole number from -32768 to 32767"},
    {"level = 2", "level = 1.5", "automatic[0].level", "a whole number"},
    {"id = 42\n", "", "printer.id", "missing", -1},
    {"8.5 x 11 in", "8.5 x 11 ft", "paper[1].size", "2 lengths"},
    {"8.5 x 11 in", "8.125 x 11 in", "paper[1].size", "2 lengths"},
    {"8.5 x 11 in", "8.5 x 92 in", "paper[1].size", "-32768 to 32767"},
    {"ht = [1, 3]", "ht = [1, 4]", "rule[0].ht", "a list of 0, 1, 2, 3"},
    {"-25]", "-25, 1]", "preset[0].adjust", "6 whole numbers"},
    {"data = [1, -2]", "data = [1, 2, 3, 4, 5, 6, 7, 8, 9]", "mw[0].data",
     "at most 8 whole numbers"},
    {"[1, 2]", "[1, 2, 3]", "printer.pairs", "pairs of numbers"},
    {"[1, 2]", "[1, 2], [1, 2], [1, 2]", "printer.pairs", "3 of them fit"},
    {"max_print_width = \"8 in\"",
     "name = \"0123456789012345678901234567890X\"\nmax_print_width = \"8 in\"", "template.name",
     "at most 31 plain characters (this has 32)"},
    {"max_print_width = \"8 in\"", "name = \"Stra\\u00dfe\"\nmax_print_width = \"8 in\"",
     "template.name", "plain characters"},
    {"level = 2", "level = 2\nname = \"01234567890123456\"", "automatic[0].name", "at most 16", 1},
    {"max_copies = 12", "bytes_4 = \"0g\"", "printer.bytes_4", "hexadecimal"},
    {"user_papers = 4", "user_papers = 4\naux = [1]", "aux", "give tables", 1},
    {"label = \"auto\"",
     "label = \"auto\"\nresolution = 0\nink = 0\n[[automatic]]\nlabel = \"auto\"",
     "automatic[1].label", "another record", 4},
    {"label = \"plain\"", "label = \"media-4\"", "media[0].label", "reserved"},
};

TEST(ModelCheck, Syntax)
{
    ExpectTold(TINY_MODEL, aSyntax, ProblemsOf);
}

const Change aPapers[] = {
    {"default = \"metric\"", "default = \"metric\"\nindex = 1", "paper[0].index", "own position, 0",
     1},
    {"default = \"metric\"", "preview = 0", "paper", "\"metric\"", -3},
    {"preview = 2", "default = \"inch\"", "paper[2].default", "second inch default"},
    {"id = \"letter\"", "id = \"a4\"", "paper[1].id", "same id"},
    {"id = \"user\"", "id = 257", "paper", "user-defined paper", -12},
    {"id = \"letter\"", "id = \"user\"", "paper[1].id", "must be the last"},
    {"id = \"letter\"", "id = 768", "paper[1].id", "must be 1 to 767"},
    {"[2976, 4209]", "[0, 4209]", "paper[2].size", "positive"},
    {"[10, 20, 30, 40]", "[3000, 20, 60, 40]", "paper[1].margins", "something to print on"},
    {"[10, 20, 30, 40]", "[10, -1, 30, 40]", "paper[1].margins", "negative"},
    {"8 x 44 in", "3 x 44 in", "paper[2].largest", "less than"},
    {"preview = 2", "sources = []", "paper[2].sources", "no source"},
    {"preview = 2", "sources = 3", "paper[2].sources", "does not have"},
    {"preview = 2", "preview = 120", "paper[2].preview", "0 to 119"},
};

TEST(ModelCheck, Papers)
{
    ExpectTold(TINY_MODEL, aPapers, ProblemsOf);
}

const Change aTables[] = {
    {"user_papers = 4", "dat_version = 255", "dat_version", "must be 256"},
    {"id = \"manual\"", "id = \"manual\", kind = 1", "source[0].kind", "own position, 0"},
    {"\"on-locked\", area", "5, area", "source[0].collate", "no code"},
    {"area = \"centred\" }", "area = \"centred\" }, { id = 4 }", "source[1].id", "same id"},
    {"code = 20", "code = 20, number = 1", "media[0].number", "own position, 0"},
    {"code = 20 }", "code = 20 }, { code = 20 }", "media[1].code", "same code"},
    {"code = 20", "code = 99", "media[0].code", "any media"},
    {"text = 7", "text = 100", "resolution_name[0].text", "0 to 99"},
    {"name = \"fine\"", "name = \"fine\", number = 2", "resolution[0].number", "own position, 0"},
    {"name = \"fine\", dpi", "name = -1, dpi", "resolution[0].name",
     "no resolution name number -1"},
    {"[\"option-on\"]", "[\"option-on\", \"option-off\"]", "resolution[0].flags", "not both"},
    {"dpi = [720, 360], dot", "dpi = [720, 0], dot", "resolution[0].dpi", "positive"},
    {"  { label = \"plain-fine\"",
     "  { label = \"lost\", media = 0, name = 0, dpi = [9, 9] },\n  { label = \"plain-fine\"",
     "resolution[0]", "no rule"},
    {"{ resolution = \"plain-fine\", ink = \"color\", r", "{ resolution = 1, ink = \"color\", r",
     "rule[0].resolution", "no resolution number 1"},
    {"ink = \"black\", fd", "ink = \"color\", fd", "rule[1]", "another rule"},
    {"hs = \"off\"", "hs = 5", "rule[0].hs", "5 is no code"},
    {"ht = [1, 3]", "ht = []", "rule[0].ht", "1 to 15"},
    {"source = \"feeder\", ink", "source = 5, ink", "mw[0].source", "no source has the id 5"},
    {"dpi = [720, 360], scaled", "dpi = [360, 360], scaled", "mw[0].dpi", "never chosen"},
};

TEST(ModelCheck, Tables)
{
    ExpectTold(TINY_MODEL, aTables, ProblemsOf);
}

const Change aSettings[] = {
    {"preset = 1", "index = 5", "preset[0].index", "own position, 1"},
    {"preset = 1", "preset = 2", "preset[0].preset", "below the number of fixed settings, 2"},
    {"level = 2", "level = 3", "automatic[0].level", "0 to 2"},
    {"preset = 1", "level = 1", "preset[0].level", "only Automatic"},
    {"ht = 1\n", "ht = 2\n", "automatic[0].ht", "does not allow 2"},
    {"ht = 1\n", "ht = 4\n", "automatic[0].ht", "0 to 3"},
    {"intent = 2", "intent = 1", "preset[0].intent", "does not allow 1"},
    {"-25]", "-26]", "preset[0].adjust", "-25 to 25"},
    {"preset = 1", "media = 3", "preset[0].media", "not the media of the resolution"},
    {"user_settings = 3", "user_settings = 999", "user_settings", "at most 1000"},
    {"user_papers = 4", "user_papers = 101", "user_papers", "0 to 100"},
    {"setting = \"auto\"", "setting = \"auto\"\norientation = 0", "template.orientation", "1 to 2",
     1},
    {"source = \"feeder\"\n", "source = 1\n", "template.source", "no source number 1"},
    {"setting = \"auto\"", "setting = \"auto\"\ndm.dmDefaultSource = 7", "template.source",
     "two different", -1},
    {"setting = \"auto\"", "setting = 1", "template.setting", "Automatic record"},
    {"setting = \"auto\"", "setting = 2\nmode = \"advanced\"", "template.setting",
     "no fixed setting number 2"},
    {"\"8 in\"", "0", "template.max_print_width", "1 to 32767"},
    {"setting = \"auto\"", "setting = \"auto\"\ndm.dmDriverVersion = 858",
     "template.dm.dmDriverVersion", "859", 1},
    {"setting = \"auto\"", "setting = \"auto\"\nszTmplName = \"01234567890123456789012345678901\"",
     "template.name", "no terminator", -2},
    {"id = 42", "id = -1", "printer.id", "negative"},
    {"pairs = [[1, 2], [3, 65535]]", "pair_count = 21", "printer.pairs", "0 to 20", -3},
    {"pairs = [[1, 2], [3, 65535]]", "pair_count = 3\npair_offset = 2", "printer.pairs",
     "leaves the printer record", -3},
};

TEST(ModelCheck, Settings)
{
    ExpectTold(TINY_MODEL, aSettings, ProblemsOf);
}

TEST(ModelCheck, TinyModelIsGood)
{
    EXPECT_EQ(ProblemsOf(TINY_MODEL), std::vector<std::string>());
}

TEST(ModelCheck, EveryProblemIsToldInTheOrderOfLines)
{
    std::string source = TINY_MODEL;
    for (const auto &[from, to] :
         {std::pair{"code = 20", "code = 99"}, {"level = 2", "level = 3"}, {"id = 42", "id = -1"}})
        source.replace(source.find(from), std::string(from).size(), to);
    const std::vector<std::string> told = ProblemsOf(source);
    ASSERT_EQ(told.size(), 3u);
    EXPECT_TRUE(told[0].find("media[0].code") != std::string::npos &&
                told[1].find("automatic[0].level") != std::string::npos &&
                told[2].find("printer.id") != std::string::npos)
        << told[0] << told[1] << told[2];
}

TEST(ModelCheck, MWRowsEndAt98)
{
    std::string rows;
    for (int i = 0; i < 97; ++i)
        rows += "{ dpi = [720, 360], data = [" + std::to_string(i) + "] },\n";
    std::string source = TINY_MODEL;
    source.insert(source.find("mw = [") + 6, rows);
    EXPECT_TRUE(ProblemsOf(source).empty());
    source.insert(source.find("mw = [") + 6, "{ dpi = [720, 360], data = [] },");
    ASSERT_EQ(ProblemsOf(source).size(), 1u);
    EXPECT_NE(ProblemsOf(source)[0].find(": mw: 99 rows; at most 98"), std::string::npos);
}

TEST(ModelCheck, WhatIsNotTomlHasALine)
{
    const std::vector<std::string> told = ProblemsOf("user_papers = 4\n[[paper]\n");
    ASSERT_EQ(told.size(), 1u);
    EXPECT_TRUE(told[0].starts_with("m.toml:2: not TOML: ")) << told[0];
    EXPECT_EQ(told[0].find('\n'), std::string::npos);
}

TEST(ModelCheck, AnEmptySourceLacksEverything)
{
    EXPECT_EQ(ProblemsOf("").size(), 2u) << "template and printer have no defaults";
    const std::vector<std::string> told =
        ProblemsOf("[template]\nsource = 0\nsetting = 0\nmax_print_width = 1\nmodel_tag = "
                   "0\n[printer]\nid = 1\n");
    for (const char *part : {"source: 0 sources", "paper: the user-defined", "paper: no paper is",
                             "media: 0 media", "resolution: there must", "automatic: there must",
                             "template.setting: there is no", "template.source: there is no"}) {
        const bool bTold = std::any_of(told.begin(), told.end(), [&](const std::string &line) {
            return line.find(part) != line.npos;
        });
        EXPECT_TRUE(bTold) << part;
    }
}

} // namespace
