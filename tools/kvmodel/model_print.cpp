// A model as a source that compiles to the same bytes. Records refer to each other by the labels
// that every record has by its position, "media-3".
#include <cstring>

#include <fmt/format.h>

#include "base/devmode_fields.h"
#include "tools/kvmodel/defaults.h"
#include "tools/kvmodel/writer.h"

namespace kvm
{
namespace
{

template <class T, size_t N>
std::span<const uint8_t> BytesOf(const T (&array)[N])
{
    return {reinterpret_cast<const uint8_t *>(&array), sizeof(array)};
}

std::string Header(const ModelFiles &model)
{
    Writer writer;
    writer.Number("dat_version", model.header.wVersion, FILE_VERSION);
    writer.Number("dat_word_0", model.header.wDat0, 0);
    writer.Number("hide_option", model.header.wDat2, 0, SWITCH);
    writer.Number("hide_fd", model.header.wDat3, 0, SWITCH);
    writer.Number("cfg_version", model.cfg.wVersion, FILE_VERSION);
    writer.Number("user_settings", model.cfg.wUserSlots, 0);
    writer.Number("user_papers", model.cfg.wUserPaperSlots, 0);
    writer.Trailer("dat_trailer", model.datTrailer);
    writer.Trailer("cfg_trailer", model.cfgTrailer);
    return writer.Block();
}

Writer Source(const BinRecord &source, size_t nPosition)
{
    Writer writer;
    writer.Raw("id", Writer::Named(source.wId, SOURCE_IDS));
    writer.Number("collate", source.wFlags & 0xF, 0, COLLATE_RULES);
    writer.Number("area", source.wFlags >> 8 & 0xF, 0, AREA_RULES);
    writer.Number("other_flags", source.wFlags & 0xF0F0, 0);
    writer.Number("kind", source.wKind, static_cast<uint16_t>(nPosition));
    return writer;
}

// By labels when that says it all: every bit one of a source whose kind is its position.
std::string Mask(const ModelFiles &model, int16_t nMask, const AllLabels &labels)
{
    unsigned rest = static_cast<uint16_t>(nMask);
    std::string list;
    for (size_t i = 0; i < model.sources.size() && i < 16; ++i) {
        if ((rest & 1u << i) == 0 || model.sources[i].wKind != i)
            continue;
        rest &= ~(1u << i);
        list += (list.empty() ? "" : ", ") + labels.source.Print(static_cast<int64_t>(i));
    }
    return rest == 0 ? "[" + list + "]" : std::to_string(static_cast<uint16_t>(nMask));
}

Writer Paper(const ModelFiles &model, size_t i, const AllLabels &labels)
{
    const PaperRecord &paper = model.papers[i];
    const PaperRecord usual = DefaultPaper(model, i, paper.wWidth, paper.wLength);
    Writer writer;
    const auto lengths = [&](const char *lpszKey, std::initializer_list<int16_t> values,
                             std::initializer_list<int16_t> defaults, Unit unit) {
        if (std::equal(values.begin(), values.end(), defaults.begin(), defaults.end()))
            return;
        const std::vector<int64_t> wide(values.begin(), values.end());
        writer.Lengths(lpszKey, wide, unit);
    };
    writer.Raw("id", Writer::Named(paper.wId, PAPER_IDS));
    lengths("size", {paper.wWidth, paper.wLength}, {}, Unit::Inch360);
    lengths("margins", {paper.wLeft, paper.wTop, paper.wRight, paper.wBottom},
            {usual.wLeft, usual.wTop, usual.wRight, usual.wBottom}, Unit::Inch360);
    lengths("largest", {paper.wMaxWidth, paper.wMaxLength}, {usual.wMaxWidth, usual.wMaxLength},
            Unit::Tenth);
    lengths("smallest", {paper.wMinWidth, paper.wMinLength}, {usual.wMinWidth, usual.wMinLength},
            Unit::Tenth);
    writer.Number("default", paper.wDefault, 0, PAPER_DEFAULTS);
    if (paper.wBinMask != usual.wBinMask)
        writer.Raw("sources", Mask(model, paper.wBinMask, labels));
    writer.Number("word_26", paper.w13, 0);
    writer.Number("preview", paper.w14, 0);
    writer.Number("index", paper.wIndex, usual.wIndex);
    return writer;
}

Writer Resolution(const ResolutionRecord &res, size_t nPosition, const AllLabels &labels)
{
    Writer writer;
    writer.Number("number", res.wRes0, static_cast<int16_t>(nPosition));
    writer.Raw("media", labels.media.Print(res.wMedia));
    writer.Raw("name", labels.resName.Print(res.wResName));
    const int64_t dpi[] = {res.wResX, res.wResY};
    writer.Numbers("dpi", dpi);
    writer.Number("fd", res.wRes3, 0, SWITCH);
    writer.Number("dot_scale", res.wDotScale, 0, DOT_SCALES);
    writer.Bits("flags", res.wFlags, 0, RESOLUTION_FLAGS);
    return writer;
}

Writer Rule(const MedResRule &rule, const AllLabels &labels)
{
    const MedResRule usual = DefaultRule();
    Writer writer;
    writer.Raw("resolution", labels.resolution.Print(rule.sRes));
    writer.Raw("ink", Writer::Named(rule.sInk, INKS));
    writer.Number("rule", rule.wRule, 0);
    writer.Number("hs", rule.sHS, 0, TOGGLE_RULES);
    writer.Number("mw", rule.sMW, 0, TOGGLE_RULES);
    writer.Number("option", rule.sOpt, 0, OPTION_RULES);
    writer.Number("mirror", rule.sMirror, 0, LOCK_RULES);
    writer.Bits("ht", rule.bHTAllowed, usual.bHTAllowed, HT_BITS);
    writer.Number("byte_15", rule.b15, 0);
    writer.Number("fd", rule.sFD, 0, LOCK_RULES);
    writer.Bits("intents", rule.sIntents, usual.sIntents, INTENT_BITS);
    return writer;
}

// A key of an MW row: the label of the first record with this value, or the number.
template <class Record, class Field>
void MWKeyValue(Writer &writer, const char *lpszKey, int32_t value,
                const std::vector<Record> &records, Field Record::*field, const Labels &labels)
{
    if (value == MW_ANY)
        return;
    for (size_t i = 0; i < records.size(); ++i) {
        if (static_cast<int32_t>(records[i].*field) == value) {
            writer.Raw(lpszKey, labels.Print(static_cast<int64_t>(i)));
            return;
        }
    }
    writer.Raw(lpszKey, std::to_string(value));
}

Writer MWRow(const ModelFiles &model, const MWRecord &row, const AllLabels &labels)
{
    Writer writer;
    const int64_t dpi[] = {row.lResX, row.lResY}, scaled[] = {row.lResX2, row.lResY2};
    writer.Numbers("dpi", dpi);
    if (!std::equal(dpi, dpi + 2, scaled))
        writer.Numbers("scaled", scaled);
    MWKeyValue(writer, "source", row.lSource, model.sources, &BinRecord::wId, labels.source);
    MWKeyValue(writer, "media", row.lMedia, model.media, &MediaRecord::wCode, labels.media);
    writer.Number("ink", row.lInk, MW_ANY, INKS);
    const std::vector<int64_t> data(std::begin(row.adwData), std::end(row.adwData));
    writer.Numbers("data", data);
    return writer;
}

Writer Setting(const ModelFiles &model, const SettingsRecord &setting, size_t nPosition,
               const AllLabels &labels)
{
    const SettingsRecord usual =
        DefaultSetting(model, nPosition, setting.wResolution, setting.wInk);
    Writer writer;
    writer.Raw("resolution", labels.resolution.Print(setting.wResolution));
    writer.Raw("ink", Writer::Named(setting.wInk, INKS));
    writer.Number("index", setting.wIndex, usual.wIndex);
    writer.Number("preset", setting.wPreset, 0);
    writer.Number("level", setting.wAutoLevel, 0);
    writer.Number("level_texts", setting.wAutoLabel, 0);
    if (setting.wMedia != usual.wMedia)
        writer.Raw("media", labels.media.Print(setting.wMedia));
    writer.Number("ht", setting.bHT, 0);
    writer.Number("byte_15", setting.b15, 0);
    writer.Number("byte_16", setting.b16, 0);
    writer.Number("intent", setting.bIntent, 0);
    writer.Number("word_18", setting.w18, 0);
    const std::vector<int64_t> adjust(std::begin(setting.sAdj), std::end(setting.sAdj));
    if (adjust != std::vector<int64_t>(6))
        writer.Numbers("adjust", adjust);
    writer.Number("word_32", setting.w32, 0);
    writer.Number("ink_code", setting.wInkCode, usual.wInkCode);
    writer.Number("dot_scale", setting.wDotScale, usual.wDotScale, DOT_SCALES);
    writer.Number("rule", setting.wRule, usual.wRule);
    writer.Bits("flags", setting.wFlags, 0, SETTING_FLAGS);
    writer.Bits("flags2", setting.wFlags2, setting.wFlags & (KV_FLAG_MW | KV_FLAG_OPT),
                SETTING_FLAGS);
    writer.Bits("flags3", setting.wFlags3, 0, SETTING_FLAGS3);
    writer.Number("state", setting.wState, 0);
    writer.Text("name", BytesOf(setting.szName), 1, false);
    return writer;
}

int64_t ElementAt(const uint8_t *lpBytes, size_t cb, bool bSigned)
{
    uint64_t value = 0;
    std::memcpy(&value, lpBytes, cb);
    const unsigned nShift = static_cast<unsigned>(64 - 8 * cb);
    return bSigned ? static_cast<int64_t>(value << nShift) >> nShift : static_cast<int64_t>(value);
}

void PrintField(Writer &writer, const DevModeField &field, const uint8_t *lpBytes)
{
    const std::span<const uint8_t> bytes(lpBytes, field.cbField);
    if (field.kind == FieldKind::Text || field.kind == FieldKind::WideText) {
        writer.Text(field.lpszName, bytes, field.cbElement, false);
        return;
    }
    const bool bSigned = field.kind == FieldKind::Signed || field.kind == FieldKind::SignedArray;
    const size_t cb = field.kind == FieldKind::Pairs ? 2 : field.cbElement;
    std::vector<int64_t> values;
    for (size_t at = 0; at < bytes.size(); at += cb)
        values.push_back(ElementAt(lpBytes + at, cb, bSigned));
    if (values.size() == 1)
        writer.Raw(field.lpszName, std::to_string(values[0]));
    else
        writer.Numbers(field.lpszName, values);
}

// Named keys first; then, under its own name, every field that they do not already give.
Writer Template(const ModelFiles &model, const AllLabels &labels)
{
    const DriverDevMode &tmpl = model.tmpl;
    DriverDevMode given = DefaultTemplate(model, tmpl.nBin);
    Writer writer;
    writer.Raw("source", labels.source.Print(tmpl.nBin));
    writer.Raw("setting", labels.setting.Print(tmpl.Settings.wIndex));
    given.Settings.wIndex = tmpl.Settings.wIndex;
    const bool bWidth = tmpl.lMaxPrintWidth >= INT16_MIN && tmpl.lMaxPrintWidth <= INT16_MAX;
    const int64_t width[] = {bWidth ? tmpl.lMaxPrintWidth : 0};
    writer.Lengths("max_print_width", width, Unit::Inch360);
    given.lMaxPrintWidth = static_cast<int32_t>(width[0]);
    writer.Raw("model_tag", std::to_string(tmpl.dwModelTag));
    given.dwModelTag = tmpl.dwModelTag;
    writer.Bits("fields", tmpl.dm.dmFields, given.dm.dmFields, PUBLIC_FIELDS);
    given.dm.dmFields = tmpl.dm.dmFields;
    writer.Number("orientation", tmpl.dm.dmOrientation, given.dm.dmOrientation, ORIENTATIONS);
    given.dm.dmOrientation = tmpl.dm.dmOrientation;
    writer.Number("copies", tmpl.dm.dmCopies, given.dm.dmCopies);
    given.dm.dmCopies = tmpl.dm.dmCopies;
    writer.Number("mode", tmpl.bAutoMode, given.bAutoMode, MODES);
    given.bAutoMode = tmpl.bAutoMode;
    writer.Number("area", tmpl.nPrintArea, given.nPrintArea, AREAS);
    given.nPrintArea = tmpl.nPrintArea;
    writer.Text("name", BytesOf(tmpl.szTmplName));
    std::memcpy(given.szTmplName, tmpl.szTmplName, sizeof(given.szTmplName));
    const auto *lpTmpl = reinterpret_cast<const uint8_t *>(&tmpl);
    const auto *lpGiven = reinterpret_cast<const uint8_t *>(&given);
    for (const DevModeField &field : aDevModeFields)
        if (std::memcmp(lpTmpl + field.cbOffset, lpGiven + field.cbOffset, field.cbField) != 0)
            PrintField(writer, field, lpTmpl + field.cbOffset);
    return writer;
}

// The pairs as such when the list lies inside the record, else part of the tail.
Writer Printer(const ModelFiles &model)
{
    const PrinterRecordHead &printer = model.printer;
    Writer writer;
    writer.Raw("id", std::to_string(printer.sModelId));
    writer.Number("max_copies", printer.wMaxCopies, DefaultPrinter().wMaxCopies);
    writer.Hex("bytes_0", printer.ab0);
    writer.Hex("bytes_4", printer.ab4);
    writer.Hex("bytes_56", printer.ab56);
    writer.Hex("bytes_70", printer.ab70);
    Bytes tail = model.printerTail;
    const int64_t nStart = 2 * int64_t{printer.sPairOffset};
    const int64_t nEnd = nStart + 4 * int64_t{printer.sPairCount};
    const bool bInside =
        printer.sPairCount > 0 && nStart >= 0 && nEnd <= static_cast<int64_t>(tail.size());
    std::string pairs;
    for (int64_t at = nStart; bInside && at < nEnd; at += 4) {
        uint8_t *lpPair = &tail[static_cast<size_t>(at)];
        pairs += fmt::format("{}[{}, {}]", at > nStart ? ", " : "", ElementAt(lpPair, 2, false),
                             ElementAt(lpPair + 2, 2, false));
        std::memset(lpPair, 0, 4);
    }
    writer.Number("pair_offset", printer.sPairOffset, 0);
    if (bInside)
        writer.Raw("pairs", "[" + pairs + "]");
    else
        writer.Number("pair_count", printer.sPairCount, 0);
    while (!tail.empty() && tail.back() == 0)
        tail.pop_back();
    writer.Hex("tail", tail);
    return writer;
}

// Short records, a line each, in one list.
template <class Record, class Print>
std::string List(const char *lpszKey, const std::vector<Record> &records, Print print)
{
    std::string text;
    for (size_t i = 0; i < records.size(); ++i)
        text += fmt::format("  {}, # {}\n", print(records[i], i).Inline(), i);
    return text.empty() ? "" : fmt::format("\n{} = [\n{}]\n", lpszKey, text);
}

// Long records, a block each.
template <class Record, class Print>
std::string Blocks(const char *lpszKey, const std::vector<Record> &records, Print print)
{
    std::string text;
    for (size_t i = 0; i < records.size(); ++i)
        text += fmt::format("\n[[{}]] # {}\n{}", lpszKey, i, print(records[i], i).Block());
    return text;
}

} // namespace

std::string PrintModel(const ModelFiles &model)
{
    AllLabels labels;
    labels.source.Count(model.sources.size());
    labels.resName.Count(model.resNames.size());
    labels.media.Count(model.media.size());
    labels.resolution.Count(model.resolutions.size());
    labels.setting.Count(model.automatic.size() + model.presets.size());

    // Lists of the whole come before the first block: what follows a block belongs to it.
    std::string text = "# A printer model. Compile it with: kvmodel compile THIS -o FOLDER\n";
    text += Header(model);
    text += List("source", model.sources, Source);
    text += List("resolution_name", model.resNames, [](int16_t name, size_t) {
        Writer writer;
        writer.Raw("text", std::to_string(name));
        return writer;
    });
    text += List("media", model.media, [](const MediaRecord &media, size_t i) {
        Writer writer;
        writer.Raw("code", std::to_string(media.wCode));
        writer.Number("number", media.wName, static_cast<int16_t>(i));
        return writer;
    });
    text += List("aux", model.aux, [](const AuxRecord &aux, size_t) {
        Writer writer;
        const int64_t words[] = {aux.aw[0], aux.aw[1], aux.aw[2]};
        writer.Numbers("words", words);
        return writer;
    });
    text += List("resolution", model.resolutions,
                 [&](const ResolutionRecord &res, size_t i) { return Resolution(res, i, labels); });
    text += List("rule", model.rules,
                 [&](const MedResRule &rule, size_t) { return Rule(rule, labels); });
    text += List("mw", model.mw,
                 [&](const MWRecord &row, size_t) { return MWRow(model, row, labels); });
    text += Blocks("paper", model.papers,
                   [&](const PaperRecord &, size_t i) { return Paper(model, i, labels); });
    text += Blocks("automatic", model.automatic, [&](const SettingsRecord &setting, size_t i) {
        return Setting(model, setting, i, labels);
    });
    const size_t nAuto = model.automatic.size();
    text += Blocks("preset", model.presets, [&](const SettingsRecord &setting, size_t i) {
        return Setting(model, setting, nAuto + i, labels);
    });
    text += "\n[template]\n" + Template(model, labels).Block();
    text += "\n[printer]\n" + Printer(model).Block();
    return text;
}

} // namespace kvm
