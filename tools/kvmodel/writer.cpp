// Values as TOML.
#include "tools/kvmodel/writer.h"

#include <algorithm>

#include <fmt/format.h>

#include "base/units.h"

namespace kvm
{

void Writer::Raw(const std::string &key, const std::string &value)
{
    values_.emplace_back(key, value);
}

std::string Writer::Named(int64_t value, Names names)
{
    const char *lpszName = NameOf(names, value);
    return lpszName ? fmt::format("\"{}\"", lpszName) : std::to_string(value);
}

std::string Writer::BitList(uint64_t value, Names names)
{
    std::string list;
    uint64_t rest = value;
    for (const Name &name : names) {
        const auto bit = static_cast<uint64_t>(name.value);
        if ((value & bit) != bit)
            continue;
        rest &= ~bit;
        const std::string text = name.lpszName;
        const bool bChoice = text.find_first_not_of("0123456789") == text.npos;
        list += (list.empty() ? "" : ", ") + (bChoice ? text : "\"" + text + "\"");
    }
    return rest == 0 ? "[" + list + "]" : std::to_string(value);
}

void Writer::Numbers(const std::string &key, std::span<const int64_t> values)
{
    Raw(key, fmt::format("[{}]", fmt::join(values, ", ")));
}

namespace
{

// In hundredths of an inch or tenths of a millimetre, if all convert back to what they are.
template <class To, class From>
bool Exactly(std::span<const int64_t> values, To to, From from)
{
    return std::all_of(values.begin(), values.end(),
                       [&](int64_t v) { return v >= 0 && to(from(v)) == v; });
}

std::string Fraction(int64_t value, int64_t nScale)
{
    std::string text = std::to_string(value / nScale);
    if (value % nScale == 0)
        return text;
    text += fmt::format(".{:0{}}", value % nScale, nScale == 10 ? 1 : 2);
    while (text.back() == '0')
        text.pop_back();
    return text;
}

std::string Joined(std::span<const int64_t> values, int64_t (*in)(int64_t), int64_t nScale,
                   const char *lpszUnit)
{
    std::string text;
    for (const int64_t value : values)
        text += (text.empty() ? "" : " x ") + Fraction(in(value), nScale);
    return fmt::format("\"{} {}\"", text, lpszUnit);
}

int64_t Same(int64_t v)
{
    return v;
}

int64_t HundredthsOf360(int64_t v)
{
    return v * 100 / 360;
}

} // namespace

void Writer::Lengths(const std::string &key, std::span<const int64_t> values, Unit unit)
{
    const bool bInch = std::all_of(values.begin(), values.end(),
                                   [](int64_t v) { return v >= 0 && v * 100 % 360 == 0; });
    if (unit == Unit::Tenth && Exactly(values, Same, Same))
        Raw(key, Joined(values, Same, 10, "mm"));
    else if (unit == Unit::Inch360 && bInch)
        Raw(key, Joined(values, HundredthsOf360, 100, "in"));
    else if (unit == Unit::Inch360 && Exactly(values, FromMMTo360, From360ToMM))
        Raw(key, Joined(values, From360ToMM, 10, "mm"));
    else
        Numbers(key, values);
}

void Writer::Text(const std::string &key, std::span<const uint8_t> field, size_t cbChar,
                  bool bTerminated)
{
    const size_t nChars = field.size() / cbChar;
    std::string text;
    bool bPlain = true;
    for (size_t i = 0; i < nChars; ++i) {
        const uint8_t c = field[i * cbChar];
        const bool bEnded = text.size() < i;
        const bool bHigh = cbChar == 2 && field[i * cbChar + 1] != 0;
        bPlain = bPlain && !bHigh && (c == 0 || (!bEnded && c >= ' ' && c <= '~'));
        if (c != 0 && !bEnded)
            text += static_cast<char>(c);
    }
    if (bTerminated && text.size() == nChars)
        bPlain = false;
    if (!bPlain) {
        Writer hex;
        hex.Hex("hex", field);
        Raw(key, hex.Inline());
    } else if (!text.empty()) {
        std::string quoted;
        for (const char c : text)
            quoted += (c == '"' || c == '\\' ? std::string(1, '\\') : "") + c;
        Raw(key, "\"" + quoted + "\"");
    }
}

void Writer::Hex(const std::string &key, std::span<const uint8_t> bytes)
{
    if (std::any_of(bytes.begin(), bytes.end(), [](uint8_t b) { return b != 0; }))
        Trailer(key, bytes);
}

void Writer::Trailer(const std::string &key, std::span<const uint8_t> bytes)
{
    if (!bytes.empty())
        Raw(key, fmt::format("\"{:02x}\"", fmt::join(bytes, "")));
}

std::string Writer::Inline() const
{
    std::string text;
    for (const auto &[key, value] : values_)
        text += fmt::format("{}{} = {}", text.empty() ? "" : ", ", key, value);
    return "{ " + text + " }";
}

std::string Writer::Block() const
{
    std::string text;
    for (const auto &[key, value] : values_)
        text += fmt::format("{} = {}\n", key, value);
    return text;
}

} // namespace kvm
