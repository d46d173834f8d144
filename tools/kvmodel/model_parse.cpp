// A model's source into structures: first the labels of all records, then the records.
#include <algorithm>
#include <cstring>

#include <fmt/format.h>

#include "base/devmode_fields.h"
#include "tools/kvmodel/defaults.h"
#include "tools/kvmodel/reader.h"

namespace kvm
{
namespace
{

std::string RecordPath(const char *lpszKey, size_t i)
{
    return fmt::format("{}[{}]", lpszKey, i);
}

// The records of one kind, each with a reader of its own.
template <class Each>
void ForEach(Reader &root, const char *lpszKey, Each each)
{
    const std::vector<const toml::table *> tables = root.Tables(lpszKey);
    for (size_t i = 0; i < tables.size(); ++i) {
        Reader reader(*tables[i], RecordPath(lpszKey, i), root.GetContext());
        each(reader, i);
    }
}

// Enters the labels of one kind, counting positions on from nFirst. A label like "media-3" would
// mean another record to a reader of the source than to us.
size_t CollectLabels(const toml::table &source, Context context, const char *lpszKey,
                     Labels &labels, size_t nFirst = 0)
{
    const toml::array *array = source.get_as<toml::array>(lpszKey);
    size_t nPosition = nFirst;
    for (size_t i = 0; array && i < array->size(); ++i) {
        const toml::table *table = array->get(i)->as_table();
        if (!table)
            continue;
        const toml::node *node = table->get("label");
        const auto label = node ? node->value_exact<std::string>() : std::nullopt;
        const char *lpszWrong = nullptr;
        if (node && !label)
            lpszWrong = "give a text";
        else if (label &&
                 (label->empty() || label->starts_with(labels.Kind() + "-") || *label == "any"))
            lpszWrong = "this label is reserved; give another one";
        else if (label && !labels.Add(*label, nPosition))
            lpszWrong = "another record of this kind has the same label";
        if (lpszWrong)
            context.problems.push_back(
                {LineOf(*node), RecordPath(lpszKey, i) + ".label", lpszWrong});
        ++nPosition;
    }
    labels.Count(nPosition);
    return nPosition;
}

void ParseHeader(Reader &root, ModelFiles &model)
{
    DatHeader &header = model.header;
    header.wVersion = root.Number<uint16_t>("dat_version", FILE_VERSION);
    header.wDat0 = root.Number<uint16_t>("dat_word_0", 0);
    header.wDat2 = root.Number<uint16_t>("hide_option", 0, SWITCH);
    header.wDat3 = root.Number<uint16_t>("hide_fd", 0, SWITCH);
    CfgHeader &cfg = model.cfg;
    cfg.wVersion = root.Number<uint16_t>("cfg_version", FILE_VERSION);
    cfg.wUserSlots = root.Number<uint16_t>("user_settings", 0);
    cfg.wUserPaperSlots = root.Number<uint16_t>("user_papers", 0);
    model.datTrailer = root.Hex("dat_trailer", SIZE_MAX);
    model.cfgTrailer = root.Hex("cfg_trailer", SIZE_MAX);
}

void ParseSource(Reader &reader, size_t nPosition, ModelFiles &model)
{
    BinRecord source{};
    reader.Take("label");
    reader.Require({"id"});
    source.wId = reader.Number<uint16_t>("id", 0, SOURCE_IDS);
    const auto collate = reader.Integer("collate", 0, 0, 15, COLLATE_RULES);
    const auto area = reader.Integer("area", 0, 0, 15, AREA_RULES);
    const auto other = reader.Integer("other_flags", 0, 0, 0xF0F0);
    if (other & ~0xF0F0)
        reader.Complain("other_flags", "collate and area give bits 0 to 3 and 8 to 11");
    source.wFlags = static_cast<uint16_t>(collate | area << 8 | other);
    source.wKind = reader.Number<uint16_t>("kind", static_cast<uint16_t>(nPosition));
    model.sources.push_back(source);
}

// The sources that feed a paper: labels, or the mask as a number.
int16_t ParseMask(Reader &reader, int16_t nDefault, const ModelFiles &model, const Labels &labels)
{
    const toml::node *node = reader.Take("sources");
    if (!node)
        return nDefault;
    if (const auto mask = node->value_exact<int64_t>(); mask && *mask >= 0 && *mask <= 0xFFFF)
        return static_cast<int16_t>(*mask);
    unsigned mask = 0;
    bool bGood = node->is_array();
    for (size_t i = 0; bGood && i < node->as_array()->size(); ++i) {
        const auto label = node->as_array()->get(i)->value_exact<std::string>();
        const auto position = label ? labels.Find(*label) : std::nullopt;
        bGood = position.has_value();
        const auto nSource = static_cast<size_t>(position.value_or(0));
        const unsigned kind = nSource < model.sources.size() ? model.sources[nSource].wKind : 16u;
        mask |= kind < 16 ? 1u << kind : 0u;
    }
    if (!bGood)
        reader.Complain("sources", "give a list of labels of sources");
    return static_cast<int16_t>(mask);
}

void ParsePaper(Reader &reader, size_t nPosition, ModelFiles &model, const AllLabels &labels)
{
    reader.Require({"id", "size"});
    int64_t size[2] = {0, 0};
    reader.Lengths("size", size, Unit::Inch360);
    PaperRecord paper = DefaultPaper(model, nPosition, size[0], size[1]);
    paper.wId = reader.Number<int16_t>("id", 0, PAPER_IDS);
    int64_t margins[4] = {paper.wLeft, paper.wTop, paper.wRight, paper.wBottom};
    reader.Lengths("margins", margins, Unit::Inch360);
    int64_t largest[2] = {paper.wMaxWidth, paper.wMaxLength};
    reader.Lengths("largest", largest, Unit::Tenth);
    int64_t smallest[2] = {paper.wMinWidth, paper.wMinLength};
    reader.Lengths("smallest", smallest, Unit::Tenth);
    paper.wLeft = static_cast<int16_t>(margins[0]);
    paper.wTop = static_cast<int16_t>(margins[1]);
    paper.wRight = static_cast<int16_t>(margins[2]);
    paper.wBottom = static_cast<int16_t>(margins[3]);
    paper.wMaxWidth = static_cast<int16_t>(largest[0]);
    paper.wMaxLength = static_cast<int16_t>(largest[1]);
    paper.wMinWidth = static_cast<int16_t>(smallest[0]);
    paper.wMinLength = static_cast<int16_t>(smallest[1]);
    paper.wDefault = reader.Number<int16_t>("default", 0, PAPER_DEFAULTS);
    paper.wBinMask = ParseMask(reader, paper.wBinMask, model, labels.source);
    paper.w13 = reader.Number<int16_t>("word_26", 0);
    paper.w14 = reader.Number<int16_t>("preview", 0);
    paper.wIndex = reader.Number<int16_t>("index", paper.wIndex);
    model.papers.push_back(paper);
}

void ParseMedia(Reader &reader, size_t nPosition, ModelFiles &model)
{
    MediaRecord media{};
    reader.Take("label");
    reader.Require({"code"});
    media.wCode = reader.Number<int16_t>("code", 0);
    media.wName = reader.Number<int16_t>("number", static_cast<int16_t>(nPosition));
    model.media.push_back(media);
}

void ParseAux(Reader &reader, ModelFiles &model)
{
    AuxRecord aux{};
    int64_t words[3] = {0, 0, 0};
    reader.Require({"words"});
    reader.Numbers("words", words, 0, 0xFFFF);
    for (size_t i = 0; i < 3; ++i)
        aux.aw[i] = static_cast<uint16_t>(words[i]);
    model.aux.push_back(aux);
}

void ParseResolution(Reader &reader, size_t nPosition, ModelFiles &model, const AllLabels &labels)
{
    ResolutionRecord res{};
    reader.Take("label");
    reader.Require({"media", "name", "dpi"});
    res.wRes0 = reader.Number<int16_t>("number", static_cast<int16_t>(nPosition));
    res.wMedia =
        static_cast<int16_t>(reader.Reference("media", 0, INT16_MIN, INT16_MAX, labels.media));
    res.wResName =
        static_cast<int16_t>(reader.Reference("name", 0, INT16_MIN, INT16_MAX, labels.resName));
    res.wRes3 = reader.Number<int16_t>("fd", 0, SWITCH);
    res.wDotScale = reader.Number<uint16_t>("dot_scale", 0, DOT_SCALES);
    res.wFlags = reader.Bits<uint16_t>("flags", 0, RESOLUTION_FLAGS);
    int64_t dpi[2] = {0, 0};
    reader.Numbers("dpi", dpi, INT16_MIN, INT16_MAX);
    res.wResX = static_cast<int16_t>(dpi[0]);
    res.wResY = static_cast<int16_t>(dpi[1]);
    model.resolutions.push_back(res);
}

void ParseRule(Reader &reader, ModelFiles &model, const AllLabels &labels)
{
    MedResRule rule = DefaultRule();
    reader.Require({"resolution", "ink"});
    rule.sRes = static_cast<int16_t>(
        reader.Reference("resolution", 0, INT16_MIN, INT16_MAX, labels.resolution));
    rule.sInk = reader.Number<int16_t>("ink", 0, INKS);
    rule.wRule = reader.Number<uint16_t>("rule", 0);
    rule.sHS = reader.Number<int16_t>("hs", 0, TOGGLE_RULES);
    rule.sMW = reader.Number<int16_t>("mw", 0, TOGGLE_RULES);
    rule.sOpt = reader.Number<int16_t>("option", 0, OPTION_RULES);
    rule.sMirror = reader.Number<int16_t>("mirror", 0, LOCK_RULES);
    rule.bHTAllowed = reader.Bits<uint8_t>("ht", rule.bHTAllowed, HT_BITS);
    rule.b15 = reader.Number<uint8_t>("byte_15", 0);
    rule.sFD = reader.Number<int16_t>("fd", 0, LOCK_RULES);
    rule.sIntents = reader.Bits<int16_t>("intents", rule.sIntents, INTENT_BITS);
    model.rules.push_back(rule);
}

// A key of an MW row that may be "any", a label (whose record's value of() gives) or a number.
template <class Of>
int32_t ParseMWKey(Reader &reader, const char *lpszKey, const Labels &labels, Of of)
{
    const toml::node *node = reader.Take(lpszKey);
    const auto text = node ? node->value_exact<std::string>() : std::nullopt;
    if (!node || text == "any")
        return MW_ANY;
    const int64_t value = reader.Reference(lpszKey, 0, INT32_MIN, INT32_MAX, labels);
    return text && labels.Find(*text) ? of(static_cast<size_t>(value))
                                      : static_cast<int32_t>(value);
}

void ParseMW(Reader &reader, ModelFiles &model, const AllLabels &labels)
{
    constexpr Name aInkKeys[] = {{0, "black"}, {1, "color"}, {MW_ANY, "any"}};
    MWRecord row{};
    reader.Require({"dpi", "data"});
    int64_t dpi[2] = {0, 0};
    reader.Numbers("dpi", dpi, INT32_MIN, INT32_MAX);
    int64_t scaled[2] = {dpi[0], dpi[1]};
    reader.Numbers("scaled", scaled, INT32_MIN, INT32_MAX);
    int64_t data[8] = {};
    reader.Numbers("data", data, INT32_MIN, INT32_MAX, true);
    row.lResX = static_cast<int32_t>(dpi[0]);
    row.lResY = static_cast<int32_t>(dpi[1]);
    row.lResX2 = static_cast<int32_t>(scaled[0]);
    row.lResY2 = static_cast<int32_t>(scaled[1]);
    row.lSource = ParseMWKey(reader, "source", labels.source, [&](size_t i) {
        return i < model.sources.size() ? static_cast<int32_t>(model.sources[i].wId) : 0;
    });
    row.lMedia = ParseMWKey(reader, "media", labels.media, [&](size_t i) {
        return i < model.media.size() ? static_cast<int32_t>(model.media[i].wCode) : 0;
    });
    row.lInk = reader.Number<int32_t>("ink", MW_ANY, aInkKeys);
    for (size_t i = 0; i < 8; ++i)
        row.adwData[i] = static_cast<int32_t>(data[i]);
    model.mw.push_back(row);
}

SettingsRecord ParseSetting(Reader &reader, size_t nPosition, const ModelFiles &model,
                            const AllLabels &labels)
{
    reader.Take("label");
    reader.Require({"resolution", "ink"});
    const int64_t nResolution =
        reader.Reference("resolution", 0, INT16_MIN, INT16_MAX, labels.resolution);
    const int64_t nInk = reader.Integer("ink", 0, 0, 0xFFFF, INKS);
    SettingsRecord setting = DefaultSetting(model, nPosition, nResolution, nInk);
    setting.wIndex = reader.Number("index", setting.wIndex);
    setting.wPreset = reader.Number("preset", setting.wPreset);
    setting.wAutoLevel = reader.Number("level", setting.wAutoLevel);
    setting.wAutoLabel = reader.Number("level_texts", setting.wAutoLabel);
    setting.wMedia = static_cast<int16_t>(
        reader.Reference("media", setting.wMedia, INT16_MIN, INT16_MAX, labels.media));
    setting.bHT = reader.Number("ht", setting.bHT);
    setting.b15 = reader.Number("byte_15", setting.b15);
    setting.b16 = reader.Number("byte_16", setting.b16);
    setting.bIntent = reader.Number("intent", setting.bIntent);
    setting.w18 = reader.Number("word_18", setting.w18);
    int64_t adjust[6] = {};
    reader.Numbers("adjust", adjust, INT16_MIN, INT16_MAX);
    for (size_t i = 0; i < 6; ++i)
        setting.sAdj[i] = static_cast<int16_t>(adjust[i]);
    setting.w32 = reader.Number("word_32", setting.w32);
    setting.wInkCode = reader.Number("ink_code", setting.wInkCode);
    setting.wDotScale = reader.Number("dot_scale", setting.wDotScale, DOT_SCALES);
    setting.wRule = reader.Number("rule", setting.wRule);
    setting.wFlags = reader.Bits("flags", setting.wFlags, SETTING_FLAGS);
    setting.wFlags2 = setting.wFlags & (KV_FLAG_MW | KV_FLAG_OPT);
    setting.wFlags2 = reader.Bits("flags2", setting.wFlags2, SETTING_FLAGS);
    setting.wFlags3 = reader.Bits("flags3", setting.wFlags3, SETTING_FLAGS3);
    setting.wState = reader.Number("state", setting.wState);
    reader.Text("name", {reinterpret_cast<uint8_t *>(setting.szName), sizeof(setting.szName)}, 1,
                false);
    return setting;
}

// One field of the record by the record's own name for it, from the table that it stands in.
void ParseField(Reader &reader, std::string_view key, const DevModeField &field,
                std::span<uint8_t> bytes)
{
    if (field.kind == FieldKind::Text || field.kind == FieldKind::WideText) {
        reader.Text(key, bytes, field.cbElement, false);
        return;
    }
    const bool bPairs = field.kind == FieldKind::Pairs;
    const size_t cb = bPairs ? 2 : field.cbElement;
    const bool bSigned = field.kind == FieldKind::Signed || field.kind == FieldKind::SignedArray;
    const int64_t nMax = (int64_t{1} << (8 * cb - (bSigned ? 1 : 0))) - 1;
    const int64_t nMin = bSigned ? -nMax - 1 : 0;
    std::vector<int64_t> values(bytes.size() / cb);
    if (values.size() == 1)
        values[0] = reader.Integer(key, 0, nMin, nMax);
    else
        reader.Numbers(key, values, nMin, nMax, true);
    for (size_t i = 0; i < values.size(); ++i)
        std::memcpy(&bytes[i * cb], &values[i], cb); // little-endian on both sides
}

// Any field under its own name, on top of what the named keys gave.
void ParseFields(Reader &reader, DriverDevMode &tmpl)
{
    auto *lpBytes = reinterpret_cast<uint8_t *>(&tmpl);
    const toml::table empty;
    const toml::table *dm = reader.Table("dm"), *settings = reader.Table("Settings");
    Reader dmReader(dm ? *dm : empty, reader.Path("dm"), reader.GetContext());
    Reader settingsReader(settings ? *settings : empty, reader.Path("Settings"),
                          reader.GetContext());
    for (const DevModeField &field : aDevModeFields) {
        std::string_view name = field.lpszName;
        Reader *from = &reader;
        if (name.starts_with("dm."))
            from = &dmReader, name.remove_prefix(3);
        else if (name.starts_with("Settings."))
            from = &settingsReader, name.remove_prefix(9);
        if (from->Has(name))
            ParseField(*from, name, field, {lpBytes + field.cbOffset, field.cbField});
    }
}

void ParseTemplate(Reader &reader, ModelFiles &model, const AllLabels &labels)
{
    reader.Require({"source", "setting", "max_print_width", "model_tag"});
    const int64_t nSource = reader.Reference("source", 0, INT32_MIN, INT32_MAX, labels.source);
    DriverDevMode &tmpl = model.tmpl;
    tmpl = DefaultTemplate(model, nSource);
    tmpl.Settings.wIndex =
        static_cast<uint16_t>(reader.Reference("setting", 0, 0, 0xFFFF, labels.setting));
    int64_t width[1] = {0};
    reader.Lengths("max_print_width", width, Unit::Inch360);
    tmpl.lMaxPrintWidth = static_cast<int32_t>(width[0]);
    tmpl.dwModelTag = reader.Number<uint32_t>("model_tag", 0);
    tmpl.dm.dmFields = reader.Bits<uint32_t>("fields", tmpl.dm.dmFields, PUBLIC_FIELDS);
    tmpl.dm.dmOrientation = reader.Number<int16_t>("orientation", 1, ORIENTATIONS);
    tmpl.dm.dmCopies = reader.Number<int16_t>("copies", 1);
    tmpl.bAutoMode = reader.Number<uint32_t>("mode", 1, MODES);
    tmpl.nPrintArea = reader.Number<int32_t>("area", 1, AREAS);
    reader.Text("name", {reinterpret_cast<uint8_t *>(tmpl.szTmplName), sizeof(tmpl.szTmplName)});
    ParseFields(reader, tmpl);
}

// Pairs of the printer record, written over its tail.
size_t ParsePairs(Reader &reader, ModelFiles &model)
{
    const toml::node *node = reader.Take("pairs");
    const toml::array *array = node ? node->as_array() : nullptr;
    const size_t nPairs = array ? array->size() : 0;
    bool bGood = !node || array;
    const int64_t nStart = 2 * int64_t{model.printer.sPairOffset};
    for (size_t i = 0; bGood && i < nPairs; ++i) {
        const toml::array *pair = array->get(i)->as_array();
        bGood = pair && pair->size() == 2;
        for (size_t k = 0; bGood && k < 2; ++k) {
            const int64_t value = pair->get(k)->value_exact<int64_t>().value_or(-1);
            const int64_t at = nStart + static_cast<int64_t>(4 * i + 2 * k);
            bGood = value >= 0 && value <= 0xFFFF && at >= 0 &&
                    at + 2 <= static_cast<int64_t>(model.printerTail.size());
            if (bGood)
                std::memcpy(&model.printerTail[static_cast<size_t>(at)], &value, 2);
        }
    }
    if (!bGood)
        reader.Complain(
            "pairs",
            fmt::format("give a list of pairs of numbers from 0 to 65535; "
                        "with this pair_offset {} of them fit",
                        std::max<int64_t>(
                            0, (static_cast<int64_t>(model.printerTail.size()) - nStart) / 4)));
    return nPairs;
}

void ParsePrinter(Reader &reader, ModelFiles &model)
{
    PrinterRecordHead &printer = model.printer;
    printer = DefaultPrinter();
    reader.Require({"id"});
    printer.sModelId = reader.Number<int16_t>("id", 0);
    printer.wMaxCopies = reader.Number<int16_t>("max_copies", printer.wMaxCopies);
    const auto bytes = [&](const char *lpszKey, std::span<uint8_t> field) {
        const Bytes hex = reader.Hex(lpszKey, field.size());
        std::copy(hex.begin(), hex.end(), field.begin());
    };
    bytes("bytes_0", printer.ab0);
    bytes("bytes_4", printer.ab4);
    bytes("bytes_56", printer.ab56);
    bytes("bytes_70", printer.ab70);
    model.printerTail.assign(model.PrinterTailSize(), 0);
    bytes("tail", model.printerTail);
    printer.sPairOffset = reader.Number<int16_t>("pair_offset", 0);
    const size_t nPairs = ParsePairs(reader, model);
    printer.sPairCount =
        reader.Number<int16_t>("pair_count", static_cast<int16_t>(std::min<size_t>(nPairs, 32767)));
}

void ParseTables(Reader &root, ModelFiles &model, const AllLabels &labels)
{
    ForEach(root, "source", [&](Reader &r, size_t i) { ParseSource(r, i, model); });
    ForEach(root, "resolution_name", [&](Reader &r, size_t) {
        r.Take("label");
        r.Require({"text"});
        model.resNames.push_back(r.Number<int16_t>("text", 0));
    });
    ForEach(root, "media", [&](Reader &r, size_t i) { ParseMedia(r, i, model); });
    ForEach(root, "paper", [&](Reader &r, size_t i) { ParsePaper(r, i, model, labels); });
    ForEach(root, "aux", [&](Reader &r, size_t) { ParseAux(r, model); });
    ForEach(root, "resolution", [&](Reader &r, size_t i) { ParseResolution(r, i, model, labels); });
    ForEach(root, "rule", [&](Reader &r, size_t) { ParseRule(r, model, labels); });
    ForEach(root, "mw", [&](Reader &r, size_t) { ParseMW(r, model, labels); });
    ForEach(root, "automatic", [&](Reader &r, size_t i) {
        model.automatic.push_back(ParseSetting(r, i, model, labels));
    });
    const size_t nAuto = model.automatic.size();
    ForEach(root, "preset", [&](Reader &r, size_t i) {
        model.presets.push_back(ParseSetting(r, nAuto + i, model, labels));
    });
}

} // namespace

bool ParseModel(std::string_view source, ModelFiles &model, Lines &lines, Problems &problems)
{
    const size_t nBefore = problems.size();
    const std::optional<toml::table> table = ParseToml(source, problems);
    if (!table)
        return false;
    const Context context{lines, problems};
    AllLabels labels;
    CollectLabels(*table, context, "source", labels.source);
    CollectLabels(*table, context, "resolution_name", labels.resName);
    CollectLabels(*table, context, "media", labels.media);
    CollectLabels(*table, context, "resolution", labels.resolution);
    const size_t nAuto = CollectLabels(*table, context, "automatic", labels.setting);
    CollectLabels(*table, context, "preset", labels.setting, nAuto);

    model = {};
    {
        Reader root(*table, "", context);
        root.Require({"template", "printer"});
        ParseHeader(root, model);
        ParseTables(root, model, labels);
        if (const toml::table *tmpl = root.Table("template")) {
            Reader reader(*tmpl, "template", context);
            ParseTemplate(reader, model, labels);
        }
        if (const toml::table *printer = root.Table("printer")) {
            Reader reader(*printer, "printer", context);
            ParsePrinter(reader, model);
        }
    }
    return problems.size() == nBefore;
}

} // namespace kvm
