// Values of a source, one at a time.
#include "tools/kvmodel/reader.h"

#include <algorithm>
#include <charconv>

#include <fmt/format.h>

#include "base/units.h"

namespace kvm
{

bool Labels::Add(const std::string &label, size_t nPosition)
{
    return positions_.emplace(label, nPosition).second;
}

std::optional<int64_t> Labels::Find(const std::string &label) const
{
    if (const auto found = positions_.find(label); found != positions_.end())
        return static_cast<int64_t>(found->second);
    const std::string prefix = kind_ + "-";
    size_t nPosition = 0;
    const char *lpszEnd = label.data() + label.size();
    if (label.starts_with(prefix)) {
        const auto [stop, error] =
            std::from_chars(label.data() + prefix.size(), lpszEnd, nPosition);
        if (error == std::errc() && stop == lpszEnd && nPosition < nCount_)
            return static_cast<int64_t>(nPosition);
    }
    return std::nullopt;
}

std::string Labels::Print(int64_t nPosition) const
{
    if (nPosition < 0 || nPosition >= static_cast<int64_t>(nCount_))
        return std::to_string(nPosition);
    return fmt::format("\"{}-{}\"", kind_, nPosition);
}

int LineOf(const toml::node &node)
{
    return static_cast<int>(node.source().begin.line);
}

std::optional<toml::table> ParseToml(std::string_view source, Problems &problems)
{
    try {
        return toml::parse(source);
    } catch (const toml::parse_error &error) {
        problems.push_back({static_cast<int>(error.source().begin.line), "",
                            fmt::format("not TOML: {}", error.description())});
        return std::nullopt;
    }
}

Reader::Reader(const toml::table &table, std::string path, Context context)
    : table_(table), path_(std::move(path)), context_(context)
{
    context_.lines.Set(path_, LineOf(table));
}

Reader::~Reader()
{
    for (const auto &[key, node] : table_)
        if (!asked_.contains(key.str()))
            context_.problems.push_back(
                {LineOf(node), Path(key.str()), "no such key here; see the list of keys"});
}

std::string Reader::Path(std::string_view key) const
{
    return path_.empty() ? std::string(key) : path_ + "." + std::string(key);
}

void Reader::Complain(std::string_view key, std::string text)
{
    const std::string path = Path(key);
    context_.problems.push_back({context_.lines.Of(path), path, std::move(text)});
}

const toml::node *Reader::Take(std::string_view key)
{
    asked_.emplace(key);
    const toml::node *node = table_.get(key);
    if (node)
        context_.lines.Set(Path(key), LineOf(*node));
    return node;
}

void Reader::Require(std::initializer_list<const char *> keys)
{
    for (const char *lpszKey : keys)
        if (!Has(lpszKey))
            Complain(lpszKey, "missing; it has no default");
}

int64_t Reader::Integer(std::string_view key, int64_t nDefault, int64_t nMin, int64_t nMax,
                        Names names)
{
    const toml::node *node = Take(key);
    if (!node)
        return nDefault;
    if (const auto text = node->value_exact<std::string>(); text && !names.empty()) {
        if (const auto value = ValueOf(names, *text))
            return *value;
        Complain(key, fmt::format("'{}' is not known; give one of {}, or a number", *text,
                                  ListOf(names)));
        return nDefault;
    }
    // "true" and "false" read well where the two names are "on" and "off".
    if (const auto value = node->value_exact<bool>(); value && names.data() == SWITCH.data())
        return *value ? 1 : 0;
    const auto value = node->value_exact<int64_t>();
    if (value && *value >= nMin && *value <= nMax)
        return *value;
    const std::string wanted = fmt::format("a whole number from {} to {}", nMin, nMax);
    Complain(key, names.empty() ? fmt::format("give {}", wanted)
                                : fmt::format("give one of {}, or {}", ListOf(names), wanted));
    return nDefault;
}

uint64_t Reader::BitSet(std::string_view key, uint64_t nDefault, uint64_t nMax, Names names)
{
    const toml::node *node = Take(key);
    if (!node)
        return nDefault;
    if (const auto value = node->value_exact<int64_t>();
        value && *value >= 0 && static_cast<uint64_t>(*value) <= nMax)
        return static_cast<uint64_t>(*value);
    uint64_t bits = 0;
    bool bGood = node->is_array();
    for (size_t i = 0; bGood && i < node->as_array()->size(); ++i) {
        const toml::node &item = *node->as_array()->get(i);
        const auto number = item.value_exact<int64_t>();
        const auto text = number ? std::to_string(*number) : item.value_exact<std::string>();
        const auto bit = text ? ValueOf(names, *text) : std::nullopt;
        bGood = bit.has_value();
        bits |= static_cast<uint64_t>(bit.value_or(0));
    }
    if (bGood)
        return bits;
    Complain(key, fmt::format("give a list of {}, or all bits as one number from 0 to {}",
                              ListOf(names), nMax));
    return nDefault;
}

int64_t Reader::Reference(std::string_view key, int64_t nDefault, int64_t nMin, int64_t nMax,
                          const Labels &labels)
{
    const toml::node *node = Take(key);
    if (!node)
        return nDefault;
    if (const auto text = node->value_exact<std::string>()) {
        if (const auto position = labels.Find(*text))
            return *position;
        Complain(key, fmt::format("no {} has the label '{}'", labels.Kind(), *text));
        return nDefault;
    }
    const auto value = node->value_exact<int64_t>();
    if (value && *value >= nMin && *value <= nMax)
        return *value;
    Complain(key, fmt::format("give the label of a {}", labels.Kind()));
    return nDefault;
}

bool Reader::Numbers(std::string_view key, std::span<int64_t> out, int64_t nMin, int64_t nMax,
                     bool bUpTo)
{
    const toml::node *node = Take(key);
    if (!node)
        return false;
    const toml::array *array = node->as_array();
    bool bGood = array && (bUpTo ? array->size() <= out.size() : array->size() == out.size());
    std::vector<int64_t> values(out.begin(), out.end());
    for (size_t i = 0; bGood && i < array->size(); ++i) {
        const auto value = array->get(i)->value_exact<int64_t>();
        bGood = value && *value >= nMin && *value <= nMax;
        values[i] = value.value_or(0);
    }
    if (!bGood) {
        Complain(key, fmt::format("give a list of {}{} whole numbers from {} to {}",
                                  bUpTo ? "at most " : "", out.size(), nMin, nMax));
        return false;
    }
    std::copy(values.begin(), values.end(), out.begin());
    return true;
}

namespace
{

// A decimal number in units of 1/nScale, if it is exactly that and small.
std::optional<int64_t> Decimal(std::string_view text, int64_t nScale)
{
    int64_t value = 0, scale = 0;
    bool bDigits = false;
    for (const char c : text) {
        if (c == '.' && scale == 0) {
            scale = 1;
            continue;
        }
        if (c < '0' || c > '9' || value > 1000000 || scale == nScale)
            return std::nullopt;
        value = 10 * value + (c - '0');
        scale *= 10;
        bDigits = true;
    }
    if (!bDigits)
        return std::nullopt;
    return value * nScale / std::max<int64_t>(scale, 1);
}

std::string_view Trimmed(std::string_view text)
{
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    return text;
}

// "A x B mm" as numbers in the unit; empty when it is not that. Tenths of a millimetre and
// hundredths of an inch are the finest that a text can say.
std::vector<int64_t> LengthsOf(std::string_view text, Unit unit)
{
    text = Trimmed(text);
    const bool bMM = text.ends_with("mm"), bInch = text.ends_with("in");
    if (!bMM && !bInch)
        return {};
    text.remove_suffix(2);
    std::vector<int64_t> values;
    for (bool bMore = true; bMore;) {
        const size_t cut = text.find('x');
        bMore = cut != std::string_view::npos;
        const auto value = Decimal(Trimmed(text.substr(0, cut)), bMM ? 10 : 100);
        if (!value)
            return {};
        if (unit == Unit::Inch360)
            values.push_back(bMM ? FromMMTo360(*value) : FromInchTo360(*value));
        else
            values.push_back(bMM ? *value : FromInchToMM(*value));
        text.remove_prefix(bMore ? cut + 1 : text.size());
    }
    return values;
}

} // namespace

void Reader::Lengths(std::string_view key, std::span<int64_t> out, Unit unit)
{
    const toml::node *node = Take(key);
    if (!node)
        return;
    std::vector<int64_t> values;
    if (const auto text = node->value_exact<std::string>())
        values = LengthsOf(*text, unit);
    if (const auto value = node->value_exact<int64_t>())
        values.push_back(*value);
    for (size_t i = 0; node->is_array() && i < node->as_array()->size(); ++i) {
        const toml::node &item = *node->as_array()->get(i);
        if (const auto text = item.value_exact<std::string>()) {
            const std::vector<int64_t> one = LengthsOf(*text, unit);
            values.push_back(one.size() == 1 ? one[0] : INT64_MAX);
        } else {
            values.push_back(item.value_exact<int64_t>().value_or(INT64_MAX));
        }
    }
    const bool bFits = std::all_of(values.begin(), values.end(),
                                   [](int64_t v) { return v >= INT16_MIN && v <= INT16_MAX; });
    if (values.size() == out.size() && bFits) {
        std::copy(values.begin(), values.end(), out.begin());
        return;
    }
    Complain(key, fmt::format("give {} lengths: whole numbers from -32768 to 32767 in {}, or "
                              "texts like \"297 mm\" or \"8.5 in\"",
                              out.size(), unit == Unit::Inch360 ? "1/360 inch" : "0.1 mm"));
}

std::string Reader::String(std::string_view key)
{
    const toml::node *node = Take(key);
    if (!node)
        return "";
    const auto text = node->value_exact<std::string>();
    if (!text)
        Complain(key, "give a text");
    return text.value_or("");
}

namespace
{

std::optional<Bytes> FromHex(std::string_view digits)
{
    constexpr std::string_view all = "0123456789abcdef";
    Bytes bytes;
    if (digits.size() % 2 != 0)
        return std::nullopt;
    for (size_t i = 0; i < digits.size(); i += 2) {
        const size_t high = all.find(digits[i]), low = all.find(digits[i + 1]);
        if (high == all.npos || low == all.npos)
            return std::nullopt;
        bytes.push_back(static_cast<uint8_t>(16 * high + low));
    }
    return bytes;
}

} // namespace

void Reader::Text(std::string_view key, std::span<uint8_t> field, size_t cbChar, bool bTerminated)
{
    const toml::node *node = Take(key);
    if (!node)
        return;
    const size_t nMax = field.size() / cbChar - (bTerminated ? 1 : 0);
    if (const toml::table *table = node->as_table()) {
        Reader reader(*table, Path(key), context_);
        const Bytes bytes = reader.Hex("hex", field.size());
        std::copy(bytes.begin(), bytes.end(), field.begin());
        return;
    }
    const auto text = node->value_exact<std::string>();
    const bool bPlain = text && std::all_of(text->begin(), text->end(),
                                            [](char c) { return c >= ' ' && c <= '~'; });
    if (!bPlain || text->size() > nMax) {
        Complain(key, fmt::format("give a text of at most {} plain characters{}, or the field's "
                                  "bytes as {{ hex = \"...\" }}",
                                  nMax, bPlain ? fmt::format(" (this has {})", text->size()) : ""));
        return;
    }
    std::fill(field.begin(), field.end(), uint8_t{0});
    for (size_t i = 0; i < text->size(); ++i)
        field[i * cbChar] = static_cast<uint8_t>((*text)[i]);
}

Bytes Reader::Hex(std::string_view key, size_t cbMax)
{
    const toml::node *node = Take(key);
    if (!node)
        return {};
    const auto text = node->value_exact<std::string>();
    const auto bytes = text ? FromHex(*text) : std::nullopt;
    if (bytes && bytes->size() <= cbMax)
        return *bytes;
    Complain(key, fmt::format("give at most {} bytes as lower-case hexadecimal digits", cbMax));
    return {};
}

const toml::table *Reader::Table(std::string_view key)
{
    const toml::node *node = Take(key);
    if (node && !node->is_table())
        Complain(key, "give a table");
    return node ? node->as_table() : nullptr;
}

std::vector<const toml::table *> Reader::Tables(std::string_view key)
{
    std::vector<const toml::table *> tables;
    const toml::node *node = Take(key);
    const toml::array *array = node ? node->as_array() : nullptr;
    bool bGood = !node || array;
    for (size_t i = 0; array && i < array->size(); ++i) {
        const toml::table *table = array->get(i)->as_table();
        bGood = bGood && table;
        if (table)
            tables.push_back(table);
    }
    if (!bGood)
        Complain(key, "give tables, as [[" + Path(key) + "]] or as a list of { ... }");
    if (tables.size() > 65535) {
        Complain(key, "at most 65535 records fit");
        tables.resize(65535);
    }
    return tables;
}

} // namespace kvm
