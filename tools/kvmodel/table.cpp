// The model table: source, structures and bytes.
#include <algorithm>
#include <cstring>
#include <set>

#include <fmt/format.h>

#include "tools/kvmodel/append.h"
#include "tools/kvmodel/reader.h"
#include "tools/kvmodel/writer.h"

namespace kvm
{
namespace
{

constexpr size_t MODEL_NAME_MAX = 31; // what the settings record can hold

// A record's fields, in the order of the file.
struct TableField {
    const char *lpszKey;
    size_t cbOffset, cbField;
};
constexpr TableField aFields[] = {
    {"model", offsetof(ModelRecord, szModel), sizeof(ModelRecord::szModel)},
    {"ui", offsetof(ModelRecord, szUIRc), sizeof(ModelRecord::szUIRc)},
    {"help", offsetof(ModelRecord, szHelp), sizeof(ModelRecord::szHelp)},
    {"data", offsetof(ModelRecord, szDat), sizeof(ModelRecord::szDat)},
    {"stm", offsetof(ModelRecord, szStm), sizeof(ModelRecord::szStm)},
    {"utility", offsetof(ModelRecord, szUtil), sizeof(ModelRecord::szUtil)},
};

std::span<uint8_t> FieldOf(ModelRecord &record, const TableField &field)
{
    return {reinterpret_cast<uint8_t *>(&record) + field.cbOffset, field.cbField};
}

std::span<const uint8_t> FieldOf(const ModelRecord &record, const TableField &field)
{
    return {reinterpret_cast<const uint8_t *>(&record) + field.cbOffset, field.cbField};
}

// The text before the terminator; the whole field when it has none.
std::string TextOf(const ModelRecord &record, const TableField &field)
{
    const std::span<const uint8_t> bytes = FieldOf(record, field);
    return {bytes.begin(), std::find(bytes.begin(), bytes.end(), uint8_t{0})};
}

ModelRecord ParseRecord(Reader &reader)
{
    ModelRecord record{};
    reader.Require({"model", "ui", "help", "data"});
    for (const TableField &field : aFields)
        reader.Text(field.lpszKey, FieldOf(record, field));
    return record;
}

TableSectionRecords ParseSection(Reader &reader)
{
    TableSectionRecords section;
    reader.Require({"language"});
    section.head.cLanguage =
        static_cast<signed char>(reader.Integer("language", 0, 0, 255, LANGUAGES));
    section.head.b1 = reader.Number<BYTE>("byte_1", 0);
    const std::vector<const toml::table *> tables = reader.Tables("model");
    for (size_t i = 0; i < tables.size(); ++i) {
        Reader model(*tables[i], reader.Path(fmt::format("model[{}]", i)), reader.GetContext());
        section.records.push_back(ParseRecord(model));
    }
    return section;
}

class TableChecker
{
  public:
    TableChecker(const ModelTable &table, const Lines &lines, Problems &problems)
        : table_(table), lines_(lines), problems_(problems)
    {
    }
    void Run()
    {
        std::set<int> languages;
        if (table_.sections.empty() || table_.sections[0].records.empty())
            Wrong("section", "the first section must hold a model: its names stand in for every "
                             "model that is not found");
        if (table_.sections.size() > INT16_MAX)
            Wrong("section", "at most 32767 sections fit");
        for (size_t i = 0; i < table_.sections.size(); ++i) {
            const std::string key = fmt::format("section[{}]", i);
            const auto language = static_cast<uint8_t>(table_.sections[i].head.cLanguage);
            if (language > 127)
                Wrong(key + ".language", "a language above 127 is never found");
            if (!languages.insert(language).second)
                Wrong(key + ".language", "a section of this language stands above; only the first "
                                         "is searched");
            CheckSection(key, table_.sections[i]);
        }
        if (!languages.contains(9))
            Wrong("section", "a section for English is missing; users of other languages are "
                             "sent there");
    }

  private:
    void CheckSection(const std::string &section, const TableSectionRecords &records)
    {
        std::set<std::string> models;
        if (records.records.size() > INT16_MAX)
            Wrong(section + ".model", "at most 32767 models fit");
        for (size_t i = 0; i < records.records.size(); ++i) {
            const std::string key = fmt::format("{}.model[{}]", section, i);
            for (const TableField &field : aFields)
                CheckField(key + "." + field.lpszKey, records.records[i], field);
            const std::string model = TextOf(records.records[i], aFields[0]);
            if (model.empty() || model.size() > MODEL_NAME_MAX)
                Wrong(key + ".model",
                      fmt::format("a model's name has 1 to {} characters", MODEL_NAME_MAX));
            if (!models.insert(model).second)
                Wrong(key + ".model", "this model stands above in the same section");
        }
    }
    void CheckField(const std::string &key, const ModelRecord &record, const TableField &field)
    {
        const std::string text = TextOf(record, field);
        if (text.size() == field.cbField)
            Wrong(key,
                  fmt::format("no terminator; at most {} bytes of text fit", field.cbField - 1));
        const bool bFile = field.cbOffset != 0;
        if (bFile && text.find_first_of("\\/:*?\"<>|") != text.npos)
            Wrong(key, "give a file's base name, without folder or drive");
        const bool bNeeded = field.cbOffset < offsetof(ModelRecord, szStm);
        if (bFile && bNeeded && text.empty())
            Wrong(key, "a name is wanted");
    }
    void Wrong(const std::string &key, const std::string &text)
    {
        problems_.push_back({lines_.Of(key), key, text});
    }

    const ModelTable &table_;
    const Lines &lines_;
    Problems &problems_;
};

std::string PrintRecord(const ModelRecord &record)
{
    Writer writer;
    for (const TableField &field : aFields) {
        // What a source must have is printed even when it is empty.
        const bool bNeeded = field.cbOffset < offsetof(ModelRecord, szStm);
        if (bNeeded && FieldOf(record, field)[0] == 0 &&
            std::ranges::all_of(FieldOf(record, field), [](uint8_t b) { return b == 0; }))
            writer.Raw(field.lpszKey, "\"\"");
        else
            writer.Text(field.lpszKey, FieldOf(record, field));
    }
    return writer.Block();
}

} // namespace

bool ParseTable(std::string_view source, ModelTable &table, Lines &lines, Problems &problems)
{
    const size_t nBefore = problems.size();
    const std::optional<toml::table> parsed = ParseToml(source, problems);
    if (!parsed)
        return false;
    table = {};
    {
        Reader root(*parsed, "", {lines, problems});
        const Bytes head = root.Hex("bytes_0", sizeof(table.head.ab0));
        std::copy(head.begin(), head.end(), table.head.ab0);
        table.trailer = root.Hex("trailer", SIZE_MAX);
        const std::vector<const toml::table *> sections = root.Tables("section");
        for (size_t i = 0; i < sections.size(); ++i) {
            Reader reader(*sections[i], fmt::format("section[{}]", i), {lines, problems});
            table.sections.push_back(ParseSection(reader));
        }
    }
    return problems.size() == nBefore;
}

bool CheckTable(const ModelTable &table, const Lines &lines, Problems &problems)
{
    const size_t nBefore = problems.size();
    TableChecker(table, lines, problems).Run();
    return problems.size() == nBefore;
}

Bytes TableBytes(const ModelTable &table)
{
    Bytes bytes;
    ModelTableHead head = table.head;
    head.sSections = static_cast<SHORT>(table.sections.size());
    Append(bytes, head);
    for (const TableSectionRecords &section : table.sections) {
        LanguageSectionHead sectionHead = section.head;
        sectionHead.sRecords = static_cast<SHORT>(section.records.size());
        Append(bytes, sectionHead);
        Append(bytes, section.records);
    }
    Append(bytes, table.trailer);
    return bytes;
}

bool ReadTable(std::span<const uint8_t> bytes, ModelTable &table, Problems &problems)
{
    table = {};
    const auto take = [&](auto &record) {
        if (bytes.size() < sizeof(record))
            return false;
        std::memcpy(&record, bytes.data(), sizeof(record));
        bytes = bytes.subspan(sizeof(record));
        return true;
    };
    const auto fail = [&](const std::string &key, const char *lpszText) {
        problems.push_back({0, key, lpszText});
        return false;
    };
    if (!take(table.head))
        return fail("head", "cut short: the file has less than 22 bytes");
    if (table.head.sSections < 0)
        return fail("head", "the number of sections is negative");
    for (int i = 0; i < table.head.sSections; ++i) {
        TableSectionRecords section;
        const std::string key = fmt::format("section[{}]", i);
        if (!take(section.head))
            return fail(key, "cut short: the section's head runs past the end");
        if (section.head.sRecords < 0)
            return fail(key, "the number of models is negative");
        section.records.resize(std::min<size_t>(static_cast<size_t>(section.head.sRecords),
                                                bytes.size() / sizeof(ModelRecord)));
        if (section.records.size() != static_cast<size_t>(section.head.sRecords))
            return fail(key, "cut short: its models run past the end");
        for (ModelRecord &record : section.records)
            take(record);
        section.head.sRecords = 0;
        table.sections.push_back(std::move(section));
    }
    table.head.sSections = 0;
    table.trailer.assign(bytes.begin(), bytes.end());
    return true;
}

std::string PrintTable(const ModelTable &table)
{
    Writer root;
    root.Hex("bytes_0", table.head.ab0);
    root.Trailer("trailer", table.trailer);
    std::string text = "# A model table. "
                       "Compile it with: kvmodel table THIS -o kv_model.dat\n" +
                       root.Block();
    for (const TableSectionRecords &section : table.sections) {
        Writer head;
        head.Raw("language",
                 Writer::Named(static_cast<uint8_t>(section.head.cLanguage), LANGUAGES));
        head.Number("byte_1", section.head.b1, 0);
        text += "\n[[section]]\n" + head.Block();
        for (const ModelRecord &record : section.records)
            text += "\n[[section.model]]\n" + PrintRecord(record);
    }
    return text;
}

} // namespace kvm
