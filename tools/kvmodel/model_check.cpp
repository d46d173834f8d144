// Everything that the driver relies on in a model's files.
#include <algorithm>
#include <set>
#include <tuple>

#include <fmt/format.h>

#include "tools/kvmodel/defaults.h"
#include "tools/kvmodel/names.h"

namespace kvm
{
namespace
{

// String and picture numbers are a base plus a number of the files; beyond these the next range
// of numbers begins.
constexpr int MAX_MEDIA = 100, MAX_NAME_TEXTS = 100, MAX_PRESET_NUMBERS = 20, MAX_LEVEL_TEXTS = 10,
              MAX_PREVIEWS = 120;
constexpr int MAX_SOURCES = 16;
constexpr size_t MAX_MW_ROWS = 98;   // the driver never chooses the row at position 99
constexpr int MAX_USER_PAPERS = 100; // lists mark the user-defined entry with the number 100
constexpr int MAX_COPIES = 99, MAX_ADJUST = 25;

class ModelChecker
{
  public:
    ModelChecker(const ModelFiles &model, const Lines &lines, Problems &problems)
        : model_(model), lines_(lines), problems_(problems)
    {
    }
    void Run();

  private:
    void CheckHeaders();
    void CheckSources();
    void CheckPapers();
    void CheckPaper(const std::string &key, const PaperRecord &paper);
    void CheckDefaultPaper(int nDefault, const char *lpszName);
    void CheckMedia();
    void CheckResolutions();
    void CheckRules();
    void CheckMW();
    void CheckSettings();
    void CheckSetting(const std::string &key, const SettingsRecord &setting, size_t nPosition);
    void CheckRuled(const std::string &key, const SettingsRecord &setting);
    void CheckTemplate();
    void CheckIdentity();
    void CheckPrinter();

    void Wrong(const std::string &key, const std::string &text)
    {
        problems_.push_back({lines_.Of(key), key, text});
    }
    void Want(bool bGood, const std::string &key, const std::string &text)
    {
        if (!bGood)
            Wrong(key, text);
    }
    void WantRange(int64_t value, int64_t nMin, int64_t nMax, const std::string &key)
    {
        Want(value >= nMin && value <= nMax, key,
             fmt::format("is {}; must be {} to {}", value, nMin, nMax));
    }
    template <class Record>
    void WantIndex(int64_t value, const std::vector<Record> &table, const std::string &key,
                   const char *lpszKind)
    {
        Want(Inside(value, table), key,
             fmt::format("there is no {} number {}; the table has {}", lpszKind, value,
                         table.size()));
    }
    void WantPosition(int64_t value, size_t nPosition, const std::string &key)
    {
        Want(value == static_cast<int64_t>(nPosition), key,
             fmt::format("is {}; must be the record's own position, {}", value, nPosition));
    }
    void WantCode(Names names, int64_t value, const std::string &key)
    {
        Want(NameOf(names, value) != nullptr, key,
             fmt::format("{} is no code; give one of {}", value, ListOf(names)));
    }
    template <class Record>
    static bool Inside(int64_t value, const std::vector<Record> &table)
    {
        return value >= 0 && value < static_cast<int64_t>(table.size());
    }

    const ModelFiles &model_;
    const Lines &lines_;
    Problems &problems_;
};

std::string At(const char *lpszTable, size_t i)
{
    return fmt::format("{}[{}]", lpszTable, i);
}

void ModelChecker::Run()
{
    CheckHeaders();
    CheckSources();
    CheckPapers();
    CheckMedia();
    CheckResolutions();
    CheckRules();
    CheckMW();
    CheckSettings();
    CheckTemplate();
    CheckPrinter();
    std::stable_sort(problems_.begin(), problems_.end(),
                     [](const Problem &a, const Problem &b) { return a.nLine < b.nLine; });
}

void ModelChecker::CheckHeaders()
{
    Want(model_.header.wVersion == FILE_VERSION, "dat_version", "must be 256");
    Want(model_.cfg.wVersion == FILE_VERSION, "cfg_version", "must be 256");
    const size_t nFixed = model_.automatic.size() + model_.presets.size();
    Want(nFixed + model_.cfg.wUserSlots <= KV_CUSTOM_SETTINGS, "user_settings",
         fmt::format("fixed settings and user slots together are {}; at most {}, as number {} "
                     "stands for settings chosen by hand",
                     nFixed + model_.cfg.wUserSlots, KV_CUSTOM_SETTINGS, KV_CUSTOM_SETTINGS));
    WantRange(model_.cfg.wUserPaperSlots, 0, MAX_USER_PAPERS, "user_papers");
}

void ModelChecker::CheckSources()
{
    Want(!model_.sources.empty() && model_.sources.size() <= MAX_SOURCES, "source",
         fmt::format("{} sources; there must be 1 to {}", model_.sources.size(), MAX_SOURCES));
    std::set<int> ids;
    for (size_t i = 0; i < model_.sources.size(); ++i) {
        const BinRecord &source = model_.sources[i];
        const std::string key = At("source", i);
        WantPosition(source.wKind, i, key + ".kind");
        Want(ids.insert(source.wId).second, key + ".id", "another source has the same id");
        Want(source.wId != MW_ANY, key + ".id", "99 stands for any source in MW rows");
        WantCode(COLLATE_RULES, source.wFlags & 0xF, key + ".collate");
        WantCode(AREA_RULES, source.wFlags >> 8 & 0xF, key + ".area");
    }
}

void ModelChecker::CheckPapers()
{
    std::set<int> ids;
    for (size_t i = 0; i < model_.papers.size(); ++i) {
        const PaperRecord &paper = model_.papers[i];
        const std::string key = At("paper", i);
        WantPosition(paper.wIndex, i, key + ".index");
        Want(paper.wId >= 1 && paper.wId < KV_FIRST_USERSLOT_ID, key + ".id",
             fmt::format("is {}; must be 1 to {}: ids from {} on are those of saved user sizes",
                         paper.wId, KV_FIRST_USERSLOT_ID - 1, KV_FIRST_USERSLOT_ID));
        Want(ids.insert(paper.wId).second, key + ".id", "another paper has the same id");
        Want(paper.wId != KV_PAPER_USER || i + 1 == model_.papers.size(), key + ".id",
             "the user-defined paper must be the last one");
        CheckPaper(key, paper);
    }
    Want(ids.contains(KV_PAPER_USER), "paper", "the user-defined paper (id \"user\") is missing");
    CheckDefaultPaper(1, "metric");
    CheckDefaultPaper(2, "inch");
}

void ModelChecker::CheckPaper(const std::string &key, const PaperRecord &paper)
{
    Want(paper.wWidth > 0 && paper.wLength > 0, key + ".size", "width and length must be positive");
    const bool bMargins = paper.wLeft >= 0 && paper.wTop >= 0 && paper.wRight >= 0 &&
                          paper.wBottom >= 0 && paper.wLeft + paper.wRight < paper.wWidth &&
                          paper.wTop + paper.wBottom < paper.wLength;
    Want(bMargins, key + ".margins", "must not be negative, and must leave something to print on");
    Want(paper.wMinWidth > 0 && paper.wMinLength > 0, key + ".smallest", "must be positive");
    Want(paper.wMinWidth <= paper.wMaxWidth && paper.wMinLength <= paper.wMaxLength,
         key + ".largest", "is less than the smallest");
    WantRange(paper.wDefault, 0, 2, key + ".default");
    const auto mask = static_cast<uint16_t>(paper.wBinMask);
    Want(mask != 0, key + ".sources", "no source feeds this paper");
    Want(mask >> std::min<size_t>(model_.sources.size(), 16) == 0, key + ".sources",
         "names a source that the model does not have");
    WantRange(paper.w14, 0, MAX_PREVIEWS - 1, key + ".preview");
}

void ModelChecker::CheckDefaultPaper(int nDefault, const char *lpszName)
{
    size_t nFound = 0;
    for (size_t i = 0; i < model_.papers.size(); ++i)
        if (model_.papers[i].wDefault == nDefault && ++nFound > 1)
            Wrong(At("paper", i) + ".default",
                  fmt::format("a second {} default; the first one is taken", lpszName));
    Want(nFound > 0, "paper", fmt::format("no paper is the default \"{}\"", lpszName));
}

void ModelChecker::CheckMedia()
{
    std::set<int> codes;
    Want(!model_.media.empty() && model_.media.size() <= MAX_MEDIA, "media",
         fmt::format("{} media; there must be 1 to {}", model_.media.size(), MAX_MEDIA));
    for (size_t i = 0; i < model_.media.size(); ++i) {
        const std::string key = At("media", i);
        WantPosition(model_.media[i].wName, i, key + ".number");
        Want(codes.insert(model_.media[i].wCode).second, key + ".code",
             "another media has the same code");
        Want(model_.media[i].wCode != MW_ANY, key + ".code", "99 stands for any media in MW rows");
    }
    for (size_t i = 0; i < model_.resNames.size(); ++i)
        WantRange(model_.resNames[i], 0, MAX_NAME_TEXTS - 1, At("resolution_name", i) + ".text");
}

void ModelChecker::CheckResolutions()
{
    Want(!model_.resolutions.empty(), "resolution", "there must be one at least");
    for (size_t i = 0; i < model_.resolutions.size(); ++i) {
        const ResolutionRecord &res = model_.resolutions[i];
        const std::string key = At("resolution", i);
        WantPosition(res.wRes0, i, key + ".number");
        WantIndex(res.wMedia, model_.media, key + ".media", "media");
        WantIndex(res.wResName, model_.resNames, key + ".name", "resolution name");
        Want(res.wResX > 0 && res.wResY > 0, key + ".dpi", "must be positive");
        WantRange(res.wDotScale, 0, 3, key + ".dot_scale");
        Want((res.wFlags & 0x3) != 0x3 && (res.wFlags & 0x30) != 0x30, key + ".flags",
             "a resolution is the variant with an option on or the one with it off, not both");
        const auto named = static_cast<int64_t>(i);
        Want(RuleOf(model_, named, 0) || RuleOf(model_, named, 1), key,
             "no rule is for this resolution, so that nobody can choose it");
    }
}

void ModelChecker::CheckRules()
{
    std::set<std::pair<int, int>> seen;
    for (size_t i = 0; i < model_.rules.size(); ++i) {
        const MedResRule &rule = model_.rules[i];
        const std::string key = At("rule", i);
        WantIndex(rule.sRes, model_.resolutions, key + ".resolution", "resolution");
        WantCode(INKS, rule.sInk, key + ".ink");
        Want(seen.emplace(rule.sRes, rule.sInk).second, key,
             "another rule stands above for the same resolution and ink");
        WantCode(TOGGLE_RULES, rule.sHS, key + ".hs");
        WantCode(TOGGLE_RULES, rule.sMW, key + ".mw");
        WantCode(OPTION_RULES, rule.sOpt, key + ".option");
        WantCode(LOCK_RULES, rule.sMirror, key + ".mirror");
        WantCode(LOCK_RULES, rule.sFD, key + ".fd");
        WantRange(rule.bHTAllowed, 1, 0xF, key + ".ht");
        WantRange(rule.sIntents, 1, 0xF, key + ".intents");
    }
}

void ModelChecker::CheckMW()
{
    Want(model_.mw.size() <= MAX_MW_ROWS, "mw",
         fmt::format("{} rows; at most {}", model_.mw.size(), MAX_MW_ROWS));
    const auto hasSource = [&](int64_t id) {
        return std::ranges::any_of(model_.sources,
                                   [&](const BinRecord &source) { return source.wId == id; });
    };
    const auto hasMedia = [&](int64_t code) {
        return std::ranges::any_of(model_.media,
                                   [&](const MediaRecord &media) { return media.wCode == code; });
    };
    for (size_t i = 0; i < model_.mw.size(); ++i) {
        const MWRecord &row = model_.mw[i];
        const std::string key = At("mw", i);
        Want(row.lSource == MW_ANY || hasSource(row.lSource), key + ".source",
             fmt::format("no source has the id {}", row.lSource));
        Want(row.lMedia == MW_ANY || hasMedia(row.lMedia), key + ".media",
             fmt::format("no media has the code {}", row.lMedia));
        Want(row.lInk == MW_ANY || row.lInk == 0 || row.lInk == 1, key + ".ink",
             "give black, color or any");
        const bool bDpi = std::ranges::any_of(model_.resolutions, [&](const ResolutionRecord &r) {
            return r.wResX == row.lResX && r.wResY == row.lResY;
        });
        Want(bDpi, key + ".dpi",
             fmt::format("no resolution has {} x {} dpi, so that the row is "
                         "never chosen",
                         row.lResX, row.lResY));
    }
}

void ModelChecker::CheckSettings()
{
    Want(!model_.automatic.empty(), "automatic", "there must be one at least");
    std::set<std::tuple<int, int, int>> automatic, presets;
    for (size_t i = 0; i < model_.automatic.size(); ++i) {
        const SettingsRecord &setting = model_.automatic[i];
        const std::string key = At("automatic", i);
        CheckSetting(key, setting, i);
        WantRange(setting.wAutoLevel, 0, 2, key + ".level");
        Want(automatic.emplace(setting.wMedia, setting.wInk, setting.wAutoLevel).second, key,
             "another Automatic record stands above for the same media, ink and level");
    }
    for (size_t i = 0; i < model_.presets.size(); ++i) {
        const SettingsRecord &setting = model_.presets[i];
        const std::string key = At("preset", i);
        CheckSetting(key, setting, model_.automatic.size() + i);
        WantRange(setting.wPreset, 0, MAX_PRESET_NUMBERS - 1, key + ".preset");
        Want(setting.wAutoLevel == 0, key + ".level", "only Automatic records have a level");
        Want(presets.emplace(setting.wPreset, setting.wMedia, setting.wInk).second, key,
             "another preset stands above with the same number, media and ink");
    }
}

void ModelChecker::CheckSetting(const std::string &key, const SettingsRecord &setting,
                                size_t nPosition)
{
    WantPosition(setting.wIndex, nPosition, key + ".index");
    const size_t nFixed = model_.automatic.size() + model_.presets.size();
    Want(setting.wPreset < nFixed, key + ".preset",
         fmt::format("is {}; must be below the number of fixed settings, {}", setting.wPreset,
                     nFixed));
    WantRange(setting.wAutoLabel, 0, MAX_LEVEL_TEXTS - 1, key + ".level_texts");
    WantIndex(setting.wResolution, model_.resolutions, key + ".resolution", "resolution");
    WantIndex(setting.wMedia, model_.media, key + ".media", "media");
    WantCode(INKS, setting.wInk, key + ".ink");
    Want(setting.wInkCode == 3 || setting.wInkCode == 6, key + ".ink_code",
         "must be 6 for colour, 3 for black");
    WantRange(setting.bHT, 0, 3, key + ".ht");
    WantRange(setting.bIntent, 0, 3, key + ".intent");
    for (const int16_t adjust : setting.sAdj)
        WantRange(adjust, -MAX_ADJUST, MAX_ADJUST, key + ".adjust");
    CheckRuled(key, setting);
}

// What the tables say about a settings record's resolution and ink.
void ModelChecker::CheckRuled(const std::string &key, const SettingsRecord &setting)
{
    if (!Inside(setting.wResolution, model_.resolutions))
        return;
    const ResolutionRecord &res = model_.resolutions[static_cast<size_t>(setting.wResolution)];
    Want(setting.wMedia == res.wMedia, key + ".media", "is not the media of the resolution");
    const MedResRule *rule = RuleOf(model_, setting.wResolution, setting.wInk);
    if (!rule) {
        Wrong(key + ".resolution", "no rule is for this resolution and ink");
        return;
    }
    const auto bit = std::ranges::find_if(
        HT_BITS, [&](const Name &name) { return name.lpszName == std::to_string(setting.bHT); });
    Want(bit == HT_BITS.end() || (rule->bHTAllowed & bit->value) != 0, key + ".ht",
         fmt::format("the rule of this resolution and ink does not allow {}", setting.bHT));
    Want(setting.bIntent > 3 || (rule->sIntents >> setting.bIntent & 1) != 0, key + ".intent",
         fmt::format("the rule of this resolution and ink does not allow {}", setting.bIntent));
}

void ModelChecker::CheckTemplate()
{
    const DriverDevMode &tmpl = model_.tmpl;
    CheckIdentity();
    WantRange(tmpl.dm.dmOrientation, 1, 2, "template.orientation");
    WantRange(tmpl.dm.dmCopies, 1, MAX_COPIES, "template.copies");
    WantIndex(tmpl.nBin, model_.sources, "template.source", "source");
    Want(!Inside(tmpl.nBin, model_.sources) || model_.sources[static_cast<size_t>(tmpl.nBin)].wId ==
                                                   static_cast<uint16_t>(tmpl.dm.dmDefaultSource),
         "template.source", "nBin and dm.dmDefaultSource name two different sources");
    const size_t nAuto = model_.automatic.size(), nFixed = nAuto + model_.presets.size();
    Want(tmpl.Settings.wIndex < nFixed, "template.setting",
         fmt::format("there is no fixed setting number {}", tmpl.Settings.wIndex));
    WantRange(tmpl.bAutoMode, 0, 1, "template.mode");
    Want(tmpl.bAutoMode != 1 || tmpl.Settings.wIndex < nAuto, "template.setting",
         "mode \"automatic\" wants an Automatic record");
    WantRange(tmpl.nPrintArea, 1, 2, "template.area");
    WantRange(tmpl.lMaxPrintWidth, 1, INT16_MAX, "template.max_print_width");
    WantRange(tmpl.dwApiFlag, 0, 1, "template.dwApiFlag");
    Want(std::ranges::find(tmpl.szTmplName, '\0') != std::end(tmpl.szTmplName), "template.name",
         "no terminator; at most 31 bytes of text fit");
}

void ModelChecker::CheckIdentity()
{
    const PublicDevMode &dm = model_.tmpl.dm;
    Want(dm.dmSpecVersion == KV_SPECVERSION, "template.dm.dmSpecVersion", "must be 800");
    Want(dm.dmDriverVersion == KV_DRIVERVERSION, "template.dm.dmDriverVersion", "must be 859");
    Want(dm.dmSize == KV_PUBLICSIZE, "template.dm.dmSize", "must be 188");
    Want(dm.dmDriverExtra == KV_PRIVATESIZE, "template.dm.dmDriverExtra", "must be 374");
}

void ModelChecker::CheckPrinter()
{
    const PrinterRecordHead &printer = model_.printer;
    Want(printer.sModelId >= 0, "printer.id", "must not be negative");
    WantRange(printer.wMaxCopies, 1, MAX_COPIES, "printer.max_copies");
    WantRange(printer.sPairCount, 0, KV_MAXPAIRS, "printer.pairs");
    const int64_t nEnd = 2 * int64_t{printer.sPairOffset} + 4 * int64_t{printer.sPairCount};
    Want(printer.sPairOffset >= 0 && nEnd <= static_cast<int64_t>(model_.PrinterTailSize()),
         "printer.pairs",
         fmt::format("the list leaves the printer record, which has room for {} bytes",
                     model_.PrinterTailSize()));
}

} // namespace

bool CheckModel(const ModelFiles &model, const Lines &lines, Problems &problems)
{
    const size_t nBefore = problems.size();
    ModelChecker(model, lines, problems).Run();
    return problems.size() == nBefore;
}

} // namespace kvm
