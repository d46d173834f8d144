// The machine as the environment describes it, every variable with its default.
#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <filesystem>
#include <tuple>

#include "platform/host.h"
#include "platform/kernel/codepage.h"
#include "platform/kernel/names.h"

namespace kvp
{
namespace
{

constexpr LANGID ENGLISH_US = 0x0409;

struct Language {
    std::string_view name; // language_TERRITORY; the first of a language also stands for it alone
    LANGID wLang;
};
constexpr Language aLanguages[] = {
    {"ar_SA", 0x0401}, {"bg_BG", 0x0402}, {"ca_ES", 0x0403}, {"zh_TW", 0x0404}, {"zh_CN", 0x0804},
    {"zh_HK", 0x0C04}, {"zh_SG", 0x1004}, {"cs_CZ", 0x0405}, {"da_DK", 0x0406}, {"de_DE", 0x0407},
    {"de_CH", 0x0807}, {"de_AT", 0x0C07}, {"de_LU", 0x1007}, {"de_LI", 0x1407}, {"el_GR", 0x0408},
    {"en_US", 0x0409}, {"en_GB", 0x0809}, {"en_AU", 0x0C09}, {"en_CA", 0x1009}, {"en_NZ", 0x1409},
    {"en_IE", 0x1809}, {"en_ZA", 0x1C09}, {"es_ES", 0x0C0A}, {"es_MX", 0x080A}, {"es_AR", 0x2C0A},
    {"es_CO", 0x240A}, {"es_CL", 0x340A}, {"es_PE", 0x280A}, {"es_VE", 0x200A}, {"fi_FI", 0x040B},
    {"fr_FR", 0x040C}, {"fr_BE", 0x080C}, {"fr_CA", 0x0C0C}, {"fr_CH", 0x100C}, {"fr_LU", 0x140C},
    {"he_IL", 0x040D}, {"hu_HU", 0x040E}, {"is_IS", 0x040F}, {"it_IT", 0x0410}, {"it_CH", 0x0810},
    {"ja_JP", 0x0411}, {"ko_KR", 0x0412}, {"nl_NL", 0x0413}, {"nl_BE", 0x0813}, {"nb_NO", 0x0414},
    {"no_NO", 0x0414}, {"nn_NO", 0x0814}, {"pl_PL", 0x0415}, {"pt_BR", 0x0416}, {"pt_PT", 0x0816},
    {"ro_RO", 0x0418}, {"ru_RU", 0x0419}, {"hr_HR", 0x041A}, {"sk_SK", 0x041B}, {"sq_AL", 0x041C},
    {"sv_SE", 0x041D}, {"sv_FI", 0x081D}, {"th_TH", 0x041E}, {"tr_TR", 0x041F}, {"uk_UA", 0x0422},
    {"sl_SI", 0x0424}, {"et_EE", 0x0425}, {"lv_LV", 0x0426}, {"lt_LT", 0x0427},
};

std::string_view Variable(const char *name)
{
    const char *pszValue = std::getenv(name);
    return pszValue ? pszValue : "";
}

[[noreturn]] void Refuse(const char *variable, std::string_view value, const char *allowed)
{
    throw std::invalid_argument(std::string(variable) + " is \"" + std::string(value) +
                                "\": it must be " + allowed);
}

// Of a category, "de_DE" from "de_DE.UTF-8@euro"; empty for the C locale.
std::string_view LocaleName(const char *category)
{
    for (const char *pszName : {"LC_ALL", category, "LANG"}) {
        const std::string_view value = Variable(pszName);
        if (value.empty())
            continue;
        const std::string_view name = value.substr(0, value.find_first_of(".@"));
        return name == "C" || name == "POSIX" ? std::string_view() : name;
    }
    return {};
}

// The whole text as a number of this base; nothing when it is none or does not fit.
template <class Number>
std::optional<Number> ParseNumber(std::string_view text, int base)
{
    Number value = 0;
    const auto [pEnd, error] = std::from_chars(text.data(), text.data() + text.size(), value, base);
    if (error != std::errc() || pEnd != text.data() + text.size())
        return std::nullopt;
    return value;
}

std::string RootFromEnvironment()
{
    std::filesystem::path root;
    if (const auto value = Variable("KV_ROOT"); !value.empty())
        root = value;
    else if (const auto data = Variable("XDG_DATA_HOME"); data.starts_with('/'))
        root = std::filesystem::path(data) / "kvhost";
    else if (const auto home = Variable("HOME"); !home.empty())
        root = std::filesystem::path(home) / ".local/share/kvhost";
    else
        throw std::invalid_argument("KV_ROOT is not set, nor is HOME: set KV_ROOT to the directory "
                                    "that holds the machine's drives");
    std::error_code error;
    const std::filesystem::path full = std::filesystem::absolute(root, error);
    if (error)
        throw std::invalid_argument("KV_ROOT is not a full path, and the current directory is "
                                    "gone: set KV_ROOT to a path that begins with /");
    return full.lexically_normal().string();
}

LANGID LanguageFromEnvironment()
{
    const std::string_view value = Variable("KV_LANG");
    if (value.empty())
        return ParseLanguage(LocaleName("LC_MESSAGES")).value_or(ENGLISH_US);
    const std::optional<LANGID> wLang = ParseLanguage(value);
    if (!wLang)
        Refuse("KV_LANG", value, "a language such as de_DE, or an identifier such as 0x0407");
    return *wLang;
}

UINT CodePageFromEnvironment(LANGID wLang)
{
    constexpr LANGID PRIMARY_MASK = 0x3FF, JAPANESE = 0x11;
    const std::string_view value = Variable("KV_ACP");
    if (value.empty())
        return (wLang & PRIMARY_MASK) == JAPANESE ? 932 : 1252;
    const std::optional<UINT> uCodePage = ParseNumber<UINT>(value, 10);
    if (!uCodePage || !IsAnsiCodePage(*uCodePage))
        Refuse("KV_ACP", value, "an ANSI code page: 874, 932, 936, 949, 950 or 1250 to 1258");
    return *uCodePage;
}

int MeasureFromEnvironment()
{
    const std::string_view value = Variable("KV_MEASURE");
    if (value.empty()) {
        const std::string_view name = LocaleName("LC_MEASUREMENT");
        return name.ends_with("_US") || name.ends_with("_LR") || name.ends_with("_MM") ? 1 : 0;
    }
    if (value != "0" && value != "1")
        Refuse("KV_MEASURE", value, "0 (metric) or 1 (inch)");
    return value == "1" ? 1 : 0;
}

std::vector<std::string> SearchPathFromEnvironment()
{
    std::vector<std::string> aDirectories;
    std::string_view rest = Variable("KV_PATH");
    while (!rest.empty()) {
        const size_t cb = std::min(rest.find(';'), rest.size());
        const std::string_view directory = rest.substr(0, cb);
        Place place;
        if (!directory.empty() && !PlaceOf(directory, place))
            Refuse("KV_PATH", Variable("KV_PATH"),
                   "directories of the machine such as C:\\tools, ';' between them");
        if (!directory.empty())
            aDirectories.emplace_back(directory);
        rest.remove_prefix(std::min(cb + 1, rest.size()));
    }
    return aDirectories;
}

} // namespace

std::optional<LANGID> ParseLanguage(std::string_view text)
{
    if (text.starts_with("0x") || text.starts_with("0X")) {
        const std::optional<LANGID> wLang = ParseNumber<LANGID>(text.substr(2), 16);
        return wLang.value_or(0) ? wLang : std::nullopt;
    }
    std::string strName(text.substr(0, text.find_first_of(".@")));
    for (char &c : strName)
        c = c == '-' ? '_' : c;
    const bool bAlone = strName.find('_') == std::string::npos;
    for (const Language &language : aLanguages) {
        const std::string_view name = bAlone ? language.name.substr(0, 2) : language.name;
        if (FoldedName(name).View() == FoldedName(strName).View())
            return language.wLang;
    }
    return std::nullopt;
}

std::optional<std::pair<DWORD, DWORD>> ParseVersion(std::string_view text)
{
    const size_t iDot = text.find('.');
    if (iDot == std::string_view::npos)
        return std::nullopt;
    const auto dwMajor = ParseNumber<DWORD>(text.substr(0, iDot), 10);
    const auto dwMinor = ParseNumber<DWORD>(text.substr(iDot + 1), 10);
    if (!dwMajor || !dwMinor)
        return std::nullopt;
    return std::pair{*dwMajor, *dwMinor};
}

Machine FromEnvironment()
{
    Machine machine;
    machine.strRoot = RootFromEnvironment();
    machine.wLang = LanguageFromEnvironment();
    machine.uAnsiCodePage = CodePageFromEnvironment(machine.wLang);
    machine.nMeasure = MeasureFromEnvironment();
    if (const auto value = Variable("KV_OSVERSION"); !value.empty()) {
        const auto version = ParseVersion(value);
        if (!version)
            Refuse("KV_OSVERSION", value, "a version such as 3.51");
        std::tie(machine.dwMajor, machine.dwMinor) = *version;
    }
    machine.aSearchPath = SearchPathFromEnvironment();
    machine.strTranscript = Variable("KV_TRANSCRIPT");
    return machine;
}

} // namespace kvp
