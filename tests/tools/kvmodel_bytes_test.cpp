// Sources to bytes: where each value of a source lands in the files, and printing back.
#include <cstring>
#include <fstream>
#include <iterator>
#include <random>

#include <gtest/gtest.h>

#include "tests/tools/tiny_model.h"
#include "tools/kvmodel/model.h"

namespace
{

std::string Told(const kvm::Problems &problems)
{
    std::string text;
    for (const kvm::Problem &problem : problems)
        text += kvm::Format("m.toml", problem) + "\n";
    return text;
}

kvm::ModelFiles Parsed(const std::string &source)
{
    kvm::ModelFiles model;
    kvm::Lines lines;
    kvm::Problems problems;
    EXPECT_TRUE(kvm::ParseModel(source, model, lines, problems)) << Told(problems) << source;
    return model;
}

std::string FileText(const std::string &name)
{
    std::ifstream stream(name, std::ios::binary);
    EXPECT_TRUE(stream) << name;
    return {std::istreambuf_iterator<char>(stream), {}};
}

int64_t Word(const kvm::Bytes &bytes, size_t at)
{
    int16_t value;
    std::memcpy(&value, &bytes.at(at + 1) - 1, 2);
    return value;
}

int64_t Long(const kvm::Bytes &bytes, size_t at)
{
    int32_t value;
    std::memcpy(&value, &bytes.at(at + 3) - 3, 4);
    return value;
}

// The parts of the tiny model's .dat, by hand: 24 bytes of header, three papers of 32, a source of
// 6, a name of 2, a media of 4, a resolution of 16, two rules of 20, an MW row of 60, the template
// of 562, the printer record of 104 and its tail of 2 * 3 + 4 * (1 + 1).
constexpr size_t PAPERS = 24, SOURCES = 120, NAMES = 126, MEDIA = 128, RESOLUTIONS = 132,
                 RULES = 148, MW = 188, TEMPLATE = 248, PRINTER = 810, TAIL = 914, END = 928;

struct Expected {
    const char *why;
    size_t at;
    int64_t value;
};

TEST(ModelSource, WordsLandAtTheirOffsets)
{
    const Expected rows[] = {
        {"version", 2, 256},
        {"papers", 8, 3},
        {"sources", 10, 1},
        {"resolution names", 12, 1},
        {"media", 14, 1},
        {"no auxiliary records", 16, 0},
        {"resolutions", 18, 1},
        {"rules", 20, 2},
        {"MW rows", 22, 1},
        {"A4's id", PAPERS, 9},
        {"its width, 2100 x 360 / 254", PAPERS + 2, 2976},
        {"its length", PAPERS + 4, 4209},
        {"its own width is its largest, 0.1 mm", PAPERS + 14, 2100},
        {"metric default", PAPERS + 22, 1},
        {"every source feeds it", PAPERS + 24, 1},
        {"its position", PAPERS + 30, 0},
        {"Letter's width", PAPERS + 34, 3060},
        {"its left margin", PAPERS + 38, 10},
        {"its bottom margin", PAPERS + 44, 40},
        {"inch default", PAPERS + 54, 2},
        {"its position", PAPERS + 62, 1},
        {"user paper", PAPERS + 64, 256},
        {"largest width, 800 x 254 / 100", PAPERS + 78, 2032},
        {"largest length", PAPERS + 80, 11176},
        {"smallest width", PAPERS + 82, 890},
        {"preview class", PAPERS + 92, 2},
        {"source id", SOURCES, 4},
        {"its rules: collate 3, area 0x100", SOURCES + 2, 0x103},
        {"name's text", NAMES, 7},
        {"media code", MEDIA, 20},
        {"dot scale", RESOLUTIONS + 8, 2},
        {"flags", RESOLUTIONS + 10, 0x10},
        {"x dpi", RESOLUTIONS + 12, 720},
        {"y dpi", RESOLUTIONS + 14, 360},
        {"colour", RULES + 2, 1},
        {"rule word", RULES + 4, 5},
        {"HS off, changeable", RULES + 6, 3},
        {"MW on and locked", RULES + 8, 1},
        {"second option on, changeable", RULES + 10, 6},
        {"HT 1 is bit 1, HT 3 is bit 0", RULES + 14, 3},
        {"black: mirror off and locked", RULES + 32, 2},
        {"every HT", RULES + 34, 0xF},
        {"FD off and locked", RULES + 36, 2},
        {"intents 0 and 2", RULES + 38, 5},
        {"orientation", TEMPLATE + 76, 1},
        {"copies", TEMPLATE + 86, 1},
        {"source id in the template", TEMPLATE + 88, 4},
        {"setting", TEMPLATE + 352, 0},
        {"printer id", PRINTER + 2, 42},
        {"largest copies", PRINTER + 54, 12},
        {"pairs", PRINTER + 66, 2},
        {"pair offset", PRINTER + 68, 0},
        {"first pair", TAIL + 2, 2},
        {"second pair", TAIL + 6, -1},
        {"nothing after the pairs", TAIL + 8, 0},
    };
    const kvm::Bytes dat = DatBytes(Parsed(TINY_MODEL));
    ASSERT_EQ(dat.size(), END);
    for (const Expected &row : rows) {
        SCOPED_TRACE(row.why);
        EXPECT_EQ(Word(dat, row.at), row.value) << "at " << row.at;
    }
}

TEST(ModelSource, LongsOfMWRowsAndTemplateLandAtTheirOffsets)
{
    const Expected rows[] = {
        {"y before x", MW, 360},
        {"x", MW + 4, 720},
        {"scaled y", MW + 8, 720},
        {"scaled x", MW + 12, 720},
        {"source by id", MW + 16, 4},
        {"any media", MW + 20, 99},
        {"black", MW + 24, 0},
        {"first value", MW + 28, 1},
        {"second value", MW + 32, -2},
        {"the rest is 0", MW + 36, 0},
        {"tag", TEMPLATE + 188, 0x4B560001},
        {"mode automatic", TEMPLATE + 416, 1},
        {"maximum area", TEMPLATE + 434, 1},
        {"8 inches", TEMPLATE + 454, 2880},
    };
    const kvm::Bytes dat = DatBytes(Parsed(TINY_MODEL));
    for (const Expected &row : rows) {
        SCOPED_TRACE(row.why);
        EXPECT_EQ(Long(dat, row.at), row.value);
    }
}

TEST(ModelSource, SettingsTakeWhatTheirResolutionSays)
{
    const Expected rows[] = {
        {"version", 0, 256},
        {"Automatic", 2, 1},
        {"predefined", 4, 1},
        {"user slots", 6, 3},
        {"user paper slots", 8, 4},
        {"level", 10 + 4, 2},
        {"colour", 10 + 12, 1},
        {"colour's ink code", 10 + 34, 6},
        {"dot scale of the resolution", 10 + 36, 2},
        {"rule word of resolution and ink", 10 + 38, 5},
        {"MW and HS", 10 + 40, 5},
        {"of these MW alone follows", 10 + 42, 1},
        {"the preset's index goes on", 74, 1},
        {"preset number", 74 + 2, 1},
        {"black's ink code", 74 + 34, 3},
        {"the black rule has no word", 74 + 38, 0},
        {"last adjustment", 74 + 30, -25},
    };
    const kvm::Bytes cfg = CfgBytes(Parsed(TINY_MODEL));
    ASSERT_EQ(cfg.size(), 138u);
    for (const Expected &row : rows) {
        SCOPED_TRACE(row.why);
        EXPECT_EQ(Word(cfg, row.at), row.value);
    }
    EXPECT_EQ(cfg[74 + 17], 2) << "intent";
}

TEST(ModelSource, LengthsMayBeWrittenInEitherUnit)
{
    static const struct {
        const char *text;
        int64_t width, length;
    } rows[] = {
        {"[2976, 4209]", 2976, 4209},     {"\"210 x 297 mm\"", 2976, 4209},
        {"\"210x297mm\"", 2976, 4209},    {"\"215.9 x 279.4 mm\"", 3060, 3960},
        {"\"8.5 x 11 in\"", 3060, 3960},  {"[\"8.5 in\", \"297 mm\"]", 3060, 4209},
        {"[3060, \"0.01 in\"]", 3060, 4},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.text);
        std::string source = TINY_MODEL;
        source.replace(source.find("\"210 x 297 mm\""), 14, row.text);
        const kvm::Bytes dat = DatBytes(Parsed(source));
        EXPECT_EQ(Word(dat, PAPERS + 2), row.width);
        EXPECT_EQ(Word(dat, PAPERS + 4), row.length);
    }
}

// Bytes to structures, to a source, to structures, to the same bytes.
void ExpectRoundTrip(const kvm::Bytes &dat, const kvm::Bytes &cfg)
{
    kvm::ModelFiles model;
    kvm::Problems problems;
    ASSERT_TRUE(kvm::ReadModel(dat, cfg, model, problems)) << Told(problems);
    const std::string source = PrintModel(model);
    const kvm::ModelFiles again = Parsed(source);
    EXPECT_EQ(DatBytes(again), dat) << source;
    EXPECT_EQ(CfgBytes(again), cfg) << source;
}

TEST(ModelRoundTrip, SamplesAreGoodAndComeBackByteForByte)
{
    for (const char *name : {"kj150/KJ150.toml", "kj820/KJ820PRO.toml"}) {
        SCOPED_TRACE(name);
        kvm::ModelFiles model;
        kvm::Lines lines;
        kvm::Problems problems;
        const std::string source = FileText(std::string(KV_MODELS_DIR "/") + name);
        ASSERT_TRUE(kvm::ParseModel(source, model, lines, problems)) << Told(problems);
        EXPECT_TRUE(kvm::CheckModel(model, lines, problems)) << Told(problems);
        ExpectRoundTrip(DatBytes(model), CfgBytes(model));
    }
}

// A model whose every byte, but for the counts, is made by next().
template <class Next>
std::pair<kvm::Bytes, kvm::Bytes> FilledModel(const uint16_t (&counts)[8], uint16_t nAuto,
                                              uint16_t nPreset, size_t nTrailer, Next next)
{
    const size_t sizes[8] = {32, 6, 2, 4, 6, 16, 20, 60};
    size_t cb = 24 + 562 + 104 + 2u * counts[0] + 4u * (counts[1] + counts[2]) + nTrailer;
    for (size_t i = 0; i < 8; ++i)
        cb += counts[i] * sizes[i];
    kvm::Bytes dat(cb), cfg(10 + 64u * (nAuto + nPreset) + nTrailer);
    for (uint8_t &b : dat)
        b = next();
    for (uint8_t &b : cfg)
        b = next();
    std::memcpy(&dat[8], counts, sizeof(counts));
    std::memcpy(&cfg[2], &nAuto, 2);
    std::memcpy(&cfg[4], &nPreset, 2);
    return {dat, cfg};
}

TEST(ModelRoundTrip, EveryByteOfEveryRecordComesBack)
{
    const uint16_t counts[8] = {3, 2, 3, 2, 2, 3, 4, 3};
    for (const int fill : {0x00, 0x01, 0x55, 0x7F, 0x80, 0xAB, 0xFF}) {
        SCOPED_TRACE(fill);
        const auto [dat, cfg] =
            FilledModel(counts, 2, 2, 3, [&] { return static_cast<uint8_t>(fill); });
        ExpectRoundTrip(dat, cfg);
    }
    std::mt19937 random(20260);
    for (int i = 0; i < 200; ++i) {
        SCOPED_TRACE(i);
        // Half of the bytes small, so that labels, names and defaults come up as well.
        const auto [dat, cfg] = FilledModel(counts, 2, 2, random() % 3, [&] {
            return static_cast<uint8_t>(random() % 2 ? random() % 4 : random());
        });
        ExpectRoundTrip(dat, cfg);
    }
}

TEST(ModelRoundTrip, EmptyTablesComeBack)
{
    const uint16_t counts[8] = {};
    const auto [dat, cfg] = FilledModel(counts, 0, 0, 0, [] { return uint8_t{0}; });
    ExpectRoundTrip(dat, cfg);
}

TEST(ModelRoundTrip, PrintedSourceLeavesOutWhatGoesWithoutSaying)
{
    kvm::ModelFiles model = Parsed(TINY_MODEL);
    const std::string source = PrintModel(model);
    for (const char *key : {"word_", "byte_", "bytes_", "index", "kind", "dm.", "tail", "99"})
        EXPECT_EQ(source.find(key), source.npos) << key << "\n" << source;
    for (const char *part : {"size = \"8.5 x 11 in\"", "size = \"210 x 297 mm\"", "hs = \"off\"",
                             "ht = [1, 3]", "media = \"media-0\"", "pairs = [[1, 2], [3, 65535]]"})
        EXPECT_NE(source.find(part), source.npos) << part << "\n" << source;
}

TEST(ModelFiles, ACutFileIsAnErrorThatNamesThePart)
{
    const kvm::ModelFiles model = Parsed(TINY_MODEL);
    const kvm::Bytes dat = DatBytes(model), cfg = CfgBytes(model);
    for (size_t cb = 0; cb < dat.size() + cfg.size(); ++cb) {
        const bool bDat = cb < dat.size();
        const std::span<const uint8_t> datPart(dat.data(), bDat ? cb : dat.size());
        const std::span<const uint8_t> cfgPart(cfg.data(), bDat ? cfg.size() : cb - dat.size());
        // Copies of exact size, so that a read past the end is seen.
        const kvm::Bytes cutDat(datPart.begin(), datPart.end());
        const kvm::Bytes cutCfg(cfgPart.begin(), cfgPart.end());
        kvm::ModelFiles cut;
        kvm::Problems problems;
        EXPECT_FALSE(kvm::ReadModel(cutDat, cutCfg, cut, problems)) << cb;
        ASSERT_EQ(problems.size(), 1u) << cb;
        EXPECT_NE(problems[0].text.find("cut short"), std::string::npos);
    }
    kvm::Problems problems;
    kvm::ModelFiles cut;
    const kvm::Bytes inMedia(dat.begin(), dat.begin() + MEDIA + 3);
    EXPECT_FALSE(kvm::ReadModel(inMedia, cfg, cut, problems));
    EXPECT_EQ(Told(problems),
              "m.toml: media table: cut short: 4 bytes wanted from offset 128, the file has 131\n");
}

TEST(SampleModels, LargeOneUsesEveryCode)
{
    const kvm::ModelFiles model = Parsed(FileText(KV_MODELS_DIR "/kj820/KJ820PRO.toml"));
    std::set<int> hs, mw, option, mirror, fd, areas, collate, states;
    for (const MedResRule &rule : model.rules) {
        hs.insert(rule.sHS);
        mw.insert(rule.sMW);
        option.insert(rule.sOpt);
        mirror.insert(rule.sMirror);
        fd.insert(rule.sFD);
    }
    for (const BinRecord &source : model.sources) {
        areas.insert(source.wFlags >> 8 & 0xF);
        collate.insert(source.wFlags & 0xF);
    }
    for (const ResolutionRecord &resolution : model.resolutions)
        states.insert(resolution.wRes3);
    const auto upTo = [](int last) {
        std::set<int> all;
        for (int i = 0; i <= last; ++i)
            all.insert(i);
        return all;
    };
    EXPECT_EQ(hs, upTo(4));
    EXPECT_EQ(mw, upTo(4));
    EXPECT_EQ(option, upTo(6));
    EXPECT_EQ(mirror, upTo(2));
    EXPECT_EQ(fd, upTo(2));
    EXPECT_EQ(areas, upTo(4));
    EXPECT_EQ(collate, upTo(4));
    EXPECT_EQ(states, upTo(1));
}

} // namespace
