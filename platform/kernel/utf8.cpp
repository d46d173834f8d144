// UTF-8, UTF-16 and the way between them.
#include "platform/kernel/utf8.h"

#include "platform/kernel/internal.h"

namespace kvp
{
namespace
{

bool IsSurrogate(char32_t c)
{
    return c >= 0xD800 && c <= 0xDFFF;
}

// Bytes in the sequence that this one leads; 0 when it leads none.
size_t SequenceLength(unsigned char lead)
{
    if (lead < 0x80)
        return 1;
    if (lead >= 0xC2 && lead <= 0xDF)
        return 2;
    if (lead >= 0xE0 && lead <= 0xEF)
        return 3;
    return lead >= 0xF0 && lead <= 0xF4 ? 4 : 0;
}

} // namespace

char32_t TakeUtf8(std::string_view &text)
{
    static constexpr char32_t aSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const unsigned char uLead = static_cast<unsigned char>(text[0]);
    const size_t cb = SequenceLength(uLead);
    char32_t c = cb <= 1 ? uLead : uLead & (0x7Fu >> cb);
    bool bValid = cb != 0 && cb <= text.size();
    for (size_t i = 1; bValid && i < cb; ++i) {
        const unsigned char uNext = static_cast<unsigned char>(text[i]);
        bValid = (uNext & 0xC0) == 0x80;
        c = c << 6 | (uNext & 0x3F);
    }
    bValid = bValid && c >= aSmallest[cb] && c <= 0x10FFFF && !IsSurrogate(c);
    text.remove_prefix(bValid ? cb : 1);
    return bValid ? c : REPLACEMENT_CHARACTER;
}

void PutUtf8(std::string &text, char32_t c)
{
    if (IsSurrogate(c))
        c = REPLACEMENT_CHARACTER;
    const auto Continue = [&text, c](int shift) {
        text += static_cast<char>(0x80 | ((c >> shift) & 0x3F));
    };
    if (c < 0x80) {
        text += static_cast<char>(c);
    } else if (c < 0x800) {
        text += static_cast<char>(0xC0 | c >> 6);
        Continue(0);
    } else if (c < 0x10000) {
        text += static_cast<char>(0xE0 | c >> 12);
        Continue(6);
        Continue(0);
    } else {
        text += static_cast<char>(0xF0 | c >> 18);
        Continue(12);
        Continue(6);
        Continue(0);
    }
}

std::u16string ToWide(std::string_view utf8)
{
    std::u16string strWide;
    while (!utf8.empty()) {
        const char32_t c = TakeUtf8(utf8);
        if (c >= 0x10000) {
            strWide += static_cast<char16_t>(0xD7C0 + (c >> 10));
            strWide += static_cast<char16_t>(0xDC00 | (c & 0x3FF));
        } else {
            strWide += static_cast<char16_t>(c);
        }
    }
    return strWide;
}

std::string ToUtf8(std::u16string_view wide)
{
    std::string strUtf8;
    for (size_t i = 0; i < wide.size(); ++i) {
        char32_t c = wide[i];
        const char32_t uNext = i + 1 < wide.size() ? wide[i + 1] : 0;
        if ((c & 0xFC00) == 0xD800 && (uNext & 0xFC00) == 0xDC00) {
            c = 0x10000 + ((c & 0x3FF) << 10 | (uNext & 0x3FF));
            ++i;
        }
        PutUtf8(strUtf8, c);
    }
    return strUtf8;
}

std::string AnsiToUtf8(std::string_view ansi)
{
    return ToUtf8(AnsiToWide(ansi));
}

} // namespace kvp
