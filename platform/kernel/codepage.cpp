// Code pages: ASCII directly, everything else by the C library's iconv, one character at a time,
// so that a text is counted, cut and replaced at characters' borders.
#include "platform/kernel/codepage.h"

#include <iconv.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <optional>

#include "platform/kernel/errors.h"
#include "platform/kernel/internal.h"

namespace kvp
{
namespace
{

constexpr UINT JAPANESE = 932;
constexpr char UNMAPPABLE = '?';
constexpr NTSTATUS STATUS_OK = 0;
constexpr NTSTATUS STATUS_INVALID = static_cast<NTSTATUS>(0xC000000D);

class Descriptor
{
  public:
    Descriptor(const char *to, const char *from) : m_cd(iconv_open(to, from)) {}
    ~Descriptor()
    {
        if (Usable())
            iconv_close(m_cd);
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    // One whole character; 0 or the errno of the failure. *cbOut is its size in bytes.
    int Convert(const void *in, size_t cbIn, void *out, size_t room, size_t *cbOut)
    {
        if (!Usable())
            return EILSEQ;
        char *pIn = static_cast<char *>(const_cast<void *>(in));
        char *pOut = static_cast<char *>(out);
        const size_t cbRoom = room;
        if (iconv(m_cd, &pIn, &cbIn, &pOut, &room) != static_cast<size_t>(-1)) {
            if (room == cbRoom) // held back: a mark might have followed
                iconv(m_cd, nullptr, nullptr, &pOut, &room);
            *cbOut = cbRoom - room;
            return *cbOut ? 0 : EILSEQ;
        }
        const int error = errno;
        iconv(m_cd, nullptr, nullptr, nullptr, nullptr); // forgets half a character
        return error;
    }

  private:
    bool Usable() const { return m_cd != reinterpret_cast<iconv_t>(-1); }
    iconv_t m_cd;
};

struct Converter {
    explicit Converter(UINT page)
        : uPage(page), toWide("UTF-16LE", Name(page).c_str()),
          toAnsi(Name(page).c_str(), "UTF-16LE")
    {
    }
    static std::string Name(UINT page) { return "CP" + std::to_string(page); }

    UINT uPage;
    Descriptor toWide, toAnsi;
};

Converter &ConverterFor(UINT uPage)
{
    static thread_local std::vector<std::unique_ptr<Converter>> t_aConverters;
    for (const auto &pConverter : t_aConverters)
        if (pConverter->uPage == uPage)
            return *pConverter;
    return *t_aConverters.emplace_back(std::make_unique<Converter>(uPage));
}

bool IsDoubleByte(UINT uPage)
{
    return uPage == JAPANESE || uPage == 936 || uPage == 949 || uPage == 950;
}

// Bytes that mean nothing in the page still go to a character of their own and back.
std::optional<char16_t> SpareCharacter(UINT uPage, unsigned char byte)
{
    if (uPage == JAPANESE) {
        if (byte == 0x80 || byte == 0xA0)
            return byte;
        if (byte >= 0xFD)
            return static_cast<char16_t>(0xF8F1 + (byte - 0xFD));
        return std::nullopt;
    }
    if (!IsDoubleByte(uPage) && byte >= 0x80 && byte <= 0x9F)
        return byte;
    return std::nullopt;
}

// The first character of a text that is not empty; the bytes taken.
size_t TakeAnsi(UINT uPage, std::string_view text, char16_t *pwch)
{
    const unsigned char uLead = static_cast<unsigned char>(text[0]);
    *pwch = uLead;
    if (uLead < 0x80)
        return 1;
    Descriptor &toWide = ConverterFor(uPage).toWide;
    size_t cbOut = 0;
    int error = toWide.Convert(text.data(), 1, pwch, sizeof *pwch, &cbOut);
    if (error == 0)
        return 1;
    const bool bLead = error == EINVAL && text.size() >= 2;
    if (bLead && toWide.Convert(text.data(), 2, pwch, sizeof *pwch, &cbOut) == 0)
        return 2;
    *pwch = SpareCharacter(uPage, uLead).value_or(UNMAPPABLE);
    // A pair that means nothing goes as a whole, but no lead byte swallows a terminator.
    return bLead && static_cast<unsigned char>(text[1]) >= 0x40 ? 2 : 1;
}

struct AnsiCharacter {
    std::array<char, 2> ach;
    size_t cb;
    bool bMapped;
};

AnsiCharacter EncodeAnsi(UINT uPage, char16_t wch)
{
    AnsiCharacter result{.ach = {static_cast<char>(wch)}, .cb = 1, .bMapped = true};
    if (wch < 0x80)
        return result;
    Descriptor &toAnsi = ConverterFor(uPage).toAnsi;
    if (toAnsi.Convert(&wch, sizeof wch, result.ach.data(), result.ach.size(), &result.cb) == 0)
        return result;
    result.cb = 1;
    for (int nByte = 0x80; nByte <= 0xFF; ++nByte) {
        char16_t wchBack = 0;
        result.ach[0] = static_cast<char>(nByte);
        if (SpareCharacter(uPage, static_cast<unsigned char>(nByte)) == wch &&
            TakeAnsi(uPage, {result.ach.data(), 1}, &wchBack) == 1 && wchBack == wch)
            return result;
    }
    return {.ach = {UNMAPPABLE}, .cb = 1, .bMapped = false};
}

// The page meant by a call's argument; 0 when there is no such page.
UINT PageOf(UINT uCodePage)
{
    if (uCodePage == CP_ACP)
        return CurrentMachine().uAnsiCodePage;
    return IsAnsiCodePage(uCodePage) ? uCodePage : 0;
}

} // namespace

bool IsAnsiCodePage(UINT uCodePage)
{
    return uCodePage == 874 || IsDoubleByte(uCodePage) || (uCodePage >= 1250 && uCodePage <= 1258);
}

std::u16string AnsiToWide(std::string_view ansi)
{
    const UINT uPage = CurrentMachine().uAnsiCodePage;
    std::u16string strWide;
    while (!ansi.empty()) {
        char16_t wch = 0;
        ansi.remove_prefix(TakeAnsi(uPage, ansi, &wch));
        strWide += wch;
    }
    return strWide;
}

std::string WideToAnsi(std::u16string_view wide)
{
    const UINT uPage = CurrentMachine().uAnsiCodePage;
    std::string strAnsi;
    for (const char16_t wch : wide) {
        const AnsiCharacter character = EncodeAnsi(uPage, wch);
        strAnsi.append(character.ach.data(), character.cb);
    }
    return strAnsi;
}

} // namespace kvp

int WINAPI MultiByteToWideChar(UINT CodePage, DWORD dwFlags, LPCSTR lpMultiByteStr, int cbMultiByte,
                               LPWSTR lpWideCharStr, int cchWideChar)
{
    const UINT uPage = kvp::PageOf(CodePage);
    if (!uPage || !lpMultiByteStr || cbMultiByte == 0 || cchWideChar < 0 ||
        (cchWideChar > 0 && !lpWideCharStr))
        return kvp::Fail(ERROR_INVALID_PARAMETER, 0);
    if (dwFlags != 0)
        return kvp::Fail(kvp::ERROR_INVALID_FLAGS, 0);
    std::string_view source(lpMultiByteStr, cbMultiByte < 0 ? std::strlen(lpMultiByteStr) + 1
                                                            : static_cast<size_t>(cbMultiByte));
    int cch = 0;
    for (; !source.empty(); ++cch) {
        char16_t wch = 0;
        source.remove_prefix(kvp::TakeAnsi(uPage, source, &wch));
        if (cchWideChar == 0)
            continue;
        if (cch == cchWideChar)
            return kvp::Fail(ERROR_INSUFFICIENT_BUFFER, 0);
        lpWideCharStr[cch] = wch;
    }
    if (cchWideChar > 0)
        kvp::SpoilRest(lpWideCharStr + cch, static_cast<size_t>(cchWideChar - cch) * sizeof(WCHAR));
    return cch;
}

int WINAPI WideCharToMultiByte(UINT CodePage, DWORD dwFlags, LPCWSTR lpWideCharStr, int cchWideChar,
                               LPSTR lpMultiByteStr, int cbMultiByte, LPCSTR lpDefaultChar,
                               BOOL *lpUsedDefaultChar)
{
    const UINT uPage = kvp::PageOf(CodePage);
    if (!uPage || !lpWideCharStr || cchWideChar == 0 || cbMultiByte < 0 ||
        (cbMultiByte > 0 && !lpMultiByteStr))
        return kvp::Fail(ERROR_INVALID_PARAMETER, 0);
    if (dwFlags != 0)
        return kvp::Fail(kvp::ERROR_INVALID_FLAGS, 0);
    if (lpUsedDefaultChar)
        *lpUsedDefaultChar = FALSE;
    const std::u16string_view source(
        lpWideCharStr, cchWideChar < 0 ? std::char_traits<WCHAR>::length(lpWideCharStr) + 1
                                       : static_cast<size_t>(cchWideChar));
    size_t cb = 0;
    const auto cbRoom = static_cast<size_t>(cbMultiByte);
    for (const WCHAR wch : source) {
        kvp::AnsiCharacter character = kvp::EncodeAnsi(uPage, wch);
        if (!character.bMapped && lpDefaultChar)
            character.ach[0] = lpDefaultChar[0];
        if (!character.bMapped && lpUsedDefaultChar)
            *lpUsedDefaultChar = TRUE;
        if (cbRoom != 0) {
            if (character.cb > cbRoom - cb)
                return kvp::Fail(ERROR_INSUFFICIENT_BUFFER, 0);
            std::memcpy(lpMultiByteStr + cb, character.ach.data(), character.cb);
        }
        cb += character.cb;
    }
    if (cbRoom != 0)
        kvp::SpoilRest(lpMultiByteStr + cb, cbRoom - cb);
    return static_cast<int>(cb);
}

NTSTATUS WINAPI RtlUnicodeToMultiByteSize(DWORD *BytesInMultiByteString, const WCHAR *UnicodeString,
                                          DWORD BytesInUnicodeString)
{
    if (!BytesInMultiByteString || !UnicodeString)
        return kvp::STATUS_INVALID;
    const UINT uPage = kvp::CurrentMachine().uAnsiCodePage;
    DWORD cb = 0;
    for (DWORD i = 0; i < BytesInUnicodeString / sizeof(WCHAR); ++i)
        cb += static_cast<DWORD>(kvp::EncodeAnsi(uPage, UnicodeString[i]).cb);
    *BytesInMultiByteString = cb;
    return kvp::STATUS_OK;
}

NTSTATUS WINAPI RtlUnicodeToMultiByteN(LPSTR MultiByteString, DWORD MaxBytesInMultiByteString,
                                       DWORD *BytesInMultiByteString, const WCHAR *UnicodeString,
                                       DWORD BytesInUnicodeString)
{
    if (!MultiByteString || !UnicodeString)
        return kvp::STATUS_INVALID;
    const UINT uPage = kvp::CurrentMachine().uAnsiCodePage;
    DWORD cb = 0;
    for (DWORD i = 0; i < BytesInUnicodeString / sizeof(WCHAR); ++i) {
        const kvp::AnsiCharacter character = kvp::EncodeAnsi(uPage, UnicodeString[i]);
        if (character.cb > MaxBytesInMultiByteString - cb)
            break;
        std::memcpy(MultiByteString + cb, character.ach.data(), character.cb);
        cb += static_cast<DWORD>(character.cb);
    }
    if (BytesInMultiByteString)
        *BytesInMultiByteString = cb;
    kvp::SpoilRest(MultiByteString + cb, MaxBytesInMultiByteString - cb);
    return kvp::STATUS_OK;
}
