// The record in words, from the table that also fixes its layout.
#include "host/record.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include <fmt/format.h>

#include "base/devmode_fields.h"
#include "platform/host.h"

namespace
{
// ---- what values mean -----------------------------------------------------------------------

std::string Dpi(int64_t v)
{
    return fmt::format("{} dpi", v);
}

std::string Inch360(int64_t v)
{
    return fmt::format("{}/360 inch ({:.1f} mm)", v, static_cast<double>(v) * 25.4 / 360);
}

constexpr struct {
    std::string_view field;
    std::string (*say)(int64_t);
} aUnits[] = {
    {"dm.dmPaperLength", TenthsOfMillimetre},
    {"dm.dmPaperWidth", TenthsOfMillimetre},
    {"dm.dmPrintQuality", Dpi},
    {"dm.dmYResolution", Dpi},
    {"lPaperWidth", TenthsOfMillimetre},
    {"lPaperLength", TenthsOfMillimetre},
    {"wMarginLeft", Inch360},
    {"wMarginTop", Inch360},
    {"wMarginRight", Inch360},
    {"wMarginBottom", Inch360},
    {"wPaperWidth360", Inch360},
    {"wPaperLength360", Inch360},
    {"lMaxPrintWidth", Inch360},
    {"lResX", Dpi},
    {"lResY", Dpi},
};

constexpr struct {
    std::string_view field;
    int64_t nValue;
    std::string_view name;
} aNames[] = {
    {"dm.dmOrientation", 1, "portrait"},
    {"dm.dmOrientation", 2, "landscape"},
    {"dm.dmPaperSize", KV_PAPER_USER, "user-defined size"},
    {"dm.dmColor", 1, "monochrome"},
    {"dm.dmColor", 2, "colour"},
    {"dwUnit", 1, "0.1 mm"},
    {"dwUnit", 2, "0.01 inch"},
    {"Settings.wIndex", KV_CUSTOM_SETTINGS, "chosen by hand"},
    {"Settings.wInk", 0, "black"},
    {"Settings.wInk", 1, "colour"},
    {"Settings.wInkCode", 3, "black"},
    {"Settings.wInkCode", 6, "colour"},
    {"Settings.wDotScale", 1, "horizontal resolution doubled"},
    {"Settings.wDotScale", 2, "vertical resolution doubled"},
    {"Settings.wDotScale", 3, "both resolutions doubled"},
    {"Settings.wState", 2, "slot in use"},
    {"Settings.wState", 3, "free slot"},
    {"bAutoMode", 0, "Advanced"},
    {"bAutoMode", 1, "Automatic"},
    {"nPrintArea", 1, "maximum"},
    {"nPrintArea", 2, "centred"},
};

constexpr struct {
    std::string_view field;
    uint32_t dwBit;
    std::string_view name;
} aFlags[] = {
    {"dm.dmFields", KV_DM_ORIENTATION, "orientation"},
    {"dm.dmFields", KV_DM_PAPERSIZE, "paper size"},
    {"dm.dmFields", KV_DM_PAPERLENGTH, "paper length"},
    {"dm.dmFields", KV_DM_PAPERWIDTH, "paper width"},
    {"dm.dmFields", 0x10, "scale"},
    {"dm.dmFields", KV_DM_COPIES, "copies"},
    {"dm.dmFields", KV_DM_DEFAULTSOURCE, "source"},
    {"dm.dmFields", 0x400, "print quality"},
    {"dm.dmFields", 0x800, "colour"},
    {"dm.dmFields", 0x1000, "duplex"},
    {"dm.dmFields", 0x2000, "vertical resolution"},
    {"dm.dmFields", 0x4000, "TrueType"},
    {"dm.dmFields", 0x8000, "collate"},
    {"dm.dmFields", 0x10000, "form name"},
    {"Settings.wFlags", KV_FLAG_MW, "MW"},
    {"Settings.wFlags", KV_FLAG_OPT, "option"},
    {"Settings.wFlags", KV_FLAG_HS, "HS"},
    {"Settings.wFlags", KV_FLAG_MIRROR, "mirror"},
    {"Settings.wFlags2", KV_FLAG_MW, "MW"},
    {"Settings.wFlags2", KV_FLAG_OPT, "option"},
    {"Settings.wFlags3", 1, "KRJNL"},
};

// The headings, each before the field at which its group begins.
constexpr struct {
    std::string_view field, heading;
} aGroups[] = {
    {"dm.dmDeviceName", "Identification"},
    {"dm.dmFields", "Public settings"},
    {"dwModelTag", "Model and paper size"},
    {"Settings.wIndex", "Print mode"},
    {"bAutoMode", "Page"},
    {"adwTmpl", "For the rendering half"},
};

// A misspelt row of these tables would never be looked up.
consteval bool IsField(std::string_view name)
{
    return std::ranges::any_of(aDevModeFields,
                               [&](const DevModeField &field) { return field.lpszName == name; });
}
template <class Rows>
consteval bool AllAreFields(const Rows &rows)
{
    for (const auto &row : rows)
        if (!IsField(row.field))
            return false;
    return true;
}
static_assert(AllAreFields(aUnits) && AllAreFields(aNames));
static_assert(AllAreFields(aFlags) && AllAreFields(aGroups));

// ---- taking the record apart ----------------------------------------------------------------

bool IsSignedKind(FieldKind kind)
{
    return kind == FieldKind::Signed || kind == FieldKind::SignedArray;
}

int64_t Element(const DriverDevMode &record, const DevModeField &field, size_t at)
{
    uint64_t qwValue = 0;
    const size_t cb = field.cbElement;
    std::memcpy(&qwValue, BytesOf(record).data() + field.cbOffset + at * cb, cb);
    const uint64_t qwSign = uint64_t{1} << (8 * cb - 1);
    if (IsSignedKind(field.kind) && (qwValue & qwSign))
        qwValue |= ~(qwSign - 1);
    return static_cast<int64_t>(qwValue);
}

// A text field in UTF-8; it ends at its terminator or where the field ends.
std::string TextOf(const DriverDevMode &record, const DevModeField &field)
{
    std::u16string strWide;
    std::string strAnsi;
    for (size_t i = 0; i < field.cbField / field.cbElement; ++i) {
        const int64_t nUnit = Element(record, field, i);
        if (nUnit == 0)
            break;
        strWide += static_cast<char16_t>(nUnit);
        strAnsi += static_cast<char>(nUnit);
    }
    return field.kind == FieldKind::WideText ? kvp::ToUtf8(strWide) : kvp::AnsiToUtf8(strAnsi);
}

std::vector<DevModePair> PairsOf(const DriverDevMode &record, const DevModeField &field)
{
    std::vector<DevModePair> pairs(field.cbField / sizeof(DevModePair));
    std::memcpy(pairs.data(), BytesOf(record).data() + field.cbOffset, field.cbField);
    return pairs;
}

Json ValueOf(const DriverDevMode &record, const DevModeField &field)
{
    Json list = Json::array();
    switch (field.kind) {
    case FieldKind::WideText:
    case FieldKind::Text: return TextOf(record, field);
    case FieldKind::Pairs:
        for (const DevModePair pair : PairsOf(record, field))
            list.push_back({pair.wFirst, pair.wSecond});
        return list;
    case FieldKind::UnsignedArray:
    case FieldKind::SignedArray:
        for (size_t i = 0; i < field.cbField / field.cbElement; ++i)
            list.push_back(Element(record, field, i));
        return list;
    default: return Element(record, field, 0);
    }
}

// ---- lines for people -----------------------------------------------------------------------

std::string NamesOfFlags(std::string_view field, int64_t value)
{
    std::string strNames;
    for (const auto &flag : aFlags)
        if (flag.field == field && (value & flag.dwBit))
            strNames += fmt::format("{}{}", strNames.empty() ? "" : ", ", flag.name);
    return strNames;
}

std::string Meaning(std::string_view field, int64_t value)
{
    for (const auto &name : aNames)
        if (name.field == field && name.nValue == value)
            return std::string(name.name);
    return NamesOfFlags(field, value);
}

std::string NumberText(const DriverDevMode &record, const DevModeField &field)
{
    const int64_t nValue = Element(record, field, 0);
    for (const auto &unit : aUnits)
        if (unit.field == field.lpszName)
            return unit.say(nValue);
    const std::string strMeaning = Meaning(field.lpszName, nValue);
    const std::string strNumber = field.kind == FieldKind::Hex
                                      ? fmt::format("0x{:0{}X}", nValue, 2 * field.cbElement)
                                      : fmt::format("{}", nValue);
    return strMeaning.empty() ? strNumber : fmt::format("{} ({})", strNumber, strMeaning);
}

std::string ListText(const DriverDevMode &record, const DevModeField &field)
{
    std::string strList;
    for (size_t i = 0; i < field.cbField / field.cbElement; ++i)
        strList += fmt::format("{}{}", i ? " " : "", Element(record, field, i));
    return strList;
}

// The pairs in use only; the count before them says how many.
std::string PairsText(const DriverDevMode &record, const DevModeField &field)
{
    std::string strList;
    const std::vector<DevModePair> pairs = PairsOf(record, field);
    for (size_t i = 0; i < std::min<size_t>(record.dwPairCount, pairs.size()); ++i)
        strList += fmt::format("{}{}:{}", i ? " " : "", pairs[i].wFirst, pairs[i].wSecond);
    return strList;
}

std::string FieldText(const DriverDevMode &record, const DevModeField &field)
{
    switch (field.kind) {
    case FieldKind::WideText:
    case FieldKind::Text: return fmt::format("\"{}\"", Printable(TextOf(record, field)));
    case FieldKind::Pairs: return PairsText(record, field);
    case FieldKind::UnsignedArray:
    case FieldKind::SignedArray: return ListText(record, field);
    default: return NumberText(record, field);
    }
}

std::string HeadingBefore(std::string_view field)
{
    for (const auto &group : aGroups)
        if (group.field == field)
            return fmt::format("{}{}\n", &group == aGroups ? "" : "\n", group.heading);
    return {};
}
} // namespace

std::string TenthsOfMillimetre(int64_t v)
{
    return fmt::format("{:.1f} mm", static_cast<double>(v) / 10);
}

std::span<const uint8_t> BytesOf(const DriverDevMode &record)
{
    return {reinterpret_cast<const uint8_t *>(&record), sizeof record};
}

std::vector<std::string> Strangeness(const DriverDevMode &record)
{
    const struct {
        const char *lpszName;
        uint16_t wIs, wShouldBe;
    } aValues[] = {
        {"dm.dmSpecVersion", record.dm.dmSpecVersion, KV_SPECVERSION},
        {"dm.dmDriverVersion", record.dm.dmDriverVersion, KV_DRIVERVERSION},
        {"dm.dmSize", record.dm.dmSize, KV_PUBLICSIZE},
        {"dm.dmDriverExtra", record.dm.dmDriverExtra, KV_PRIVATESIZE},
    };
    std::vector<std::string> lines;
    for (const auto &value : aValues)
        if (value.wIs != value.wShouldBe)
            lines.push_back(
                fmt::format("{} is {}, not {}", value.lpszName, value.wIs, value.wShouldBe));
    return lines;
}

Json RecordToJson(const DriverDevMode &record)
{
    Json json = Json::object();
    for (const DevModeField &field : aDevModeFields) {
        const std::string_view name = field.lpszName;
        const size_t nDot = name.find('.');
        if (nDot == std::string_view::npos)
            json[std::string(name)] = ValueOf(record, field);
        else
            json[std::string(name.substr(0, nDot))][std::string(name.substr(nDot + 1))] =
                ValueOf(record, field);
    }
    return json;
}

std::string RecordToText(const DriverDevMode &record)
{
    std::string strText;
    for (const DevModeField &field : aDevModeFields)
        strText += fmt::format("{}  {:<22} {}\n", HeadingBefore(field.lpszName), field.lpszName,
                               FieldText(record, field));
    return strText;
}

void PrintRecord(const DriverDevMode &record, bool json)
{
    fmt::print("{}", json ? JsonText(RecordToJson(record)) : RecordToText(record));
}

std::string JsonText(const Json &json)
{
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

std::string Printable(const std::string &utf8)
{
    std::string strText = utf8;
    for (char &c : strText)
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F)
            c = '?';
    return strText;
}
