// Sources to bytes: where each value of a source lands in the files, and printing back.
#include <cstring>
#include <fstream>
#include <iterator>
#include <random>
#include <set>

#include <gmock/gmock.h>

#include "tests/tools/tiny_model.h"
#include "tools/kvmodel/model.h"

using ::testing::ElementsAre;

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

// As many numbers of a file as a record has, from an offset on.
template <class Number = int16_t>
std::vector<int64_t> Numbers(const kvm::Bytes &bytes, size_t at, size_t n)
{
    std::vector<Number> numbers(n);
    EXPECT_LE(at + n * sizeof(Number), bytes.size());
    std::memcpy(numbers.data(), bytes.data() + at, n * sizeof(Number));
    return {numbers.begin(), numbers.end()};
}

// The parts of the tiny model's .dat, by hand: 24 bytes of header, three papers of 32, a source of
// 6, a name of 2, a media of 4, a resolution of 16, two rules of 20, an MW row of 60, the template
// of 562, the printer record of 104 and its tail of 2 * 3 + 4 * (1 + 1).
constexpr size_t PAPERS = 24, SOURCES = 120, NAMES = 126, MEDIA = 128, RESOLUTIONS = 132,
                 RULES = 148, MW = 188, TEMPLATE = 248, PRINTER = 810, TAIL = 914, END = 928;

TEST(ModelSource, EveryValueLandsAtItsOffset)
{
    const kvm::Bytes dat = DatBytes(Parsed(TINY_MODEL));
    ASSERT_EQ(dat.size(), END);
    const auto words = [&](size_t at, size_t n) { return Numbers(dat, at, n); };
    const auto longs = [&](size_t at, size_t n) { return Numbers<int32_t>(dat, at, n); };
    EXPECT_THAT(words(0, 12), ElementsAre(0, 256, 0, 0, 3, 1, 1, 1, 0, 1, 2, 1));
    // 210 mm are 2100 x 360 / 254; a paper's own size is its smallest and largest.
    EXPECT_THAT(words(PAPERS, 16),
                ElementsAre(9, 2976, 4209, 42, 42, 42, 198, 2100, 2970, 2100, 2970, 1, 1, 0, 0, 0));
    EXPECT_THAT(words(PAPERS + 32, 16),
                ElementsAre(1, 3060, 3960, 10, 20, 30, 40, 2159, 2794, 2159, 2794, 2, 1, 0, 0, 1));
    EXPECT_THAT(words(PAPERS + 64, 16), ElementsAre(256, 2976, 4209, 42, 42, 42, 198, 2032, 11176,
                                                    890, 1270, 0, 1, 0, 2, 2));
    EXPECT_THAT(words(SOURCES, 3), ElementsAre(4, 0x103, 0));
    EXPECT_THAT(words(NAMES, 3), ElementsAre(7, 20, 0)) << "and the media";
    EXPECT_THAT(words(RESOLUTIONS, 8), ElementsAre(0, 0, 0, 0, 2, 0x10, 720, 360));
    // HT 1 is bit 1, HT 3 is bit 0.
    EXPECT_THAT(words(RULES, 10), ElementsAre(0, 1, 5, 3, 1, 6, 0, 3, 0, 0xF));
    EXPECT_THAT(words(RULES + 20, 10), ElementsAre(0, 0, 0, 0, 0, 0, 2, 0xF, 2, 5));
    // y before x; the source by its id.
    EXPECT_THAT(longs(MW, 15), ElementsAre(360, 720, 720, 720, 4, 99, 0, 1, -2, 0, 0, 0, 0, 0, 0));
    DriverDevMode tmpl;
    std::memcpy(&tmpl, &dat[TEMPLATE], sizeof tmpl);
    EXPECT_THAT(words(TEMPLATE + 64, 19), ElementsAre(0x320, 0x35B, 188, 374, 0x30F, 0, 1, 0, 0, 0,
                                                      100, 1, 4, 0, 0, 1, 0, 0, 0));
    EXPECT_THAT((std::vector<int64_t>{tmpl.dwModelTag, tmpl.Settings.wIndex, tmpl.bAutoMode,
                                      tmpl.nBin, tmpl.nPrintArea, tmpl.lMaxPrintWidth}),
                ElementsAre(0x4B560001, 0, 1, 0, 1, 2880));
    EXPECT_THAT(words(PRINTER, 2), ElementsAre(0, 42));
    EXPECT_THAT(words(PRINTER + 54, 8), ElementsAre(12, 0, 0, 0, 0, 0, 2, 0));
    EXPECT_THAT(words(TAIL, 7), ElementsAre(1, 2, 3, -1, 0, 0, 0));
}

TEST(ModelSource, SettingsTakeWhatTheirResolutionSays)
{
    const kvm::Bytes cfg = CfgBytes(Parsed(TINY_MODEL));
    ASSERT_EQ(cfg.size(), 138u);
    EXPECT_THAT(Numbers(cfg, 0, 5), ElementsAre(256, 1, 1, 3, 4));
    // HT in the low byte of the eighth word, the intent in the high one of the ninth; MW alone of
    // MW and HS goes into the second word of flags.
    EXPECT_THAT(Numbers(cfg, 10, 24), ElementsAre(0, 0, 2, 0, 0, 0, 1, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0,
                                                  6, 2, 5, 5, 1, 0, 0));
    EXPECT_THAT(Numbers(cfg, 74, 24), ElementsAre(1, 1, 0, 0, 0, 0, 0, 0, 0x200, 0, 1, -2, 3, 0, 0,
                                                  -25, 0, 3, 2, 0, 0, 0, 0, 0));
}

TEST(ModelSource, LengthsMayBeWrittenInEitherUnit)
{
    const std::pair<const char *, std::vector<int64_t>> rows[] = {
        {"[2976, 4209]", {2976, 4209}},         {"\"210x297mm\"", {2976, 4209}},
        {"\"215.9 x 279.4 mm\"", {3060, 3960}}, {"[\"8.5 in\", \"297 mm\"]", {3060, 4209}},
        {"[3060, \"0.01 in\"]", {3060, 4}},
    };
    for (const auto &[text, lengths] : rows) {
        std::string source = TINY_MODEL;
        source.replace(source.find("\"210 x 297 mm\""), 14, text);
        EXPECT_EQ(Numbers(DatBytes(Parsed(source)), PAPERS + 2, 2), lengths) << text;
    }
}

// Bytes to structures, to a source, to structures, to the same bytes.
void ExpectRoundTrip(const kvm::Bytes &dat, const kvm::Bytes &cfg)
{
    kvm::ModelFiles model;
    kvm::Problems problems;
    ASSERT_TRUE(kvm::ReadModel(dat, cfg, model, problems, problems)) << Told(problems);
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
    const auto [dat, cfg] = FilledModel({}, 0, 0, 0, [] { return uint8_t{0}; });
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
    const auto told = [](const kvm::Bytes &datPart, const kvm::Bytes &cfgPart) {
        kvm::ModelFiles cut;
        kvm::Problems ofDat, ofCfg;
        EXPECT_FALSE(kvm::ReadModel(datPart, cfgPart, cut, ofDat, ofCfg));
        return std::pair(Told(ofDat), Told(ofCfg));
    };
    // Copies of exact size, so that a read past the end is seen.
    for (size_t cb = 0; cb < dat.size(); ++cb) {
        const auto &[ofDat, ofCfg] = told(kvm::Bytes(dat.data(), dat.data() + cb), cfg);
        EXPECT_TRUE(ofDat.find("cut short") != ofDat.npos && ofCfg.empty()) << cb;
    }
    for (size_t cb = 0; cb < cfg.size(); ++cb) {
        const auto &[ofDat, ofCfg] = told(dat, kvm::Bytes(cfg.data(), cfg.data() + cb));
        EXPECT_TRUE(ofDat.empty() && ofCfg.find("cut short") != ofCfg.npos) << cb;
    }
    EXPECT_EQ(told(kvm::Bytes(dat.data(), dat.data() + MEDIA + 3), cfg).first,
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
    for (const auto &codes : {hs, mw, areas, collate})
        EXPECT_THAT(codes, ElementsAre(0, 1, 2, 3, 4));
    EXPECT_THAT(option, ElementsAre(0, 1, 2, 3, 4, 5, 6));
    for (const auto &codes : {mirror, fd})
        EXPECT_THAT(codes, ElementsAre(0, 1, 2));
    EXPECT_THAT(states, ElementsAre(0, 1));
}

} // namespace
