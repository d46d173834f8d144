// The user's language and locale, and the comparison of texts.
#include <algorithm>
#include <cstring>

#include "platform/kernel/errors.h"
#include "platform/kernel/internal.h"
#include "platform/kernel/names.h"

namespace
{

std::string_view Counted(LPCSTR lpText, int cch)
{
    return {lpText, cch < 0 ? std::strlen(lpText) : static_cast<size_t>(cch)};
}

// As a dictionary has it: by letter first; where only the case differs, small before capital.
int Order(std::string_view first, std::string_view second)
{
    const size_t cb = std::min(first.size(), second.size());
    for (size_t i = 0; i < cb; ++i)
        if (kvp::FoldAscii(first[i]) != kvp::FoldAscii(second[i]))
            return static_cast<unsigned char>(kvp::FoldAscii(first[i])) <
                           static_cast<unsigned char>(kvp::FoldAscii(second[i]))
                       ? -1
                       : 1;
    if (first.size() != second.size())
        return first.size() < second.size() ? -1 : 1;
    return -first.compare(second);
}

} // namespace

LANGID WINAPI GetUserDefaultLangID()
{
    return kvp::CurrentMachine().wLang;
}

int WINAPI GetLocaleInfoA(LCID, DWORD LCType, LPSTR lpLCData, int cchData)
{
    constexpr int cchMeasure = 2;
    if (LCType != LOCALE_IMEASURE)
        return kvp::Fail(kvp::ERROR_INVALID_FLAGS, 0);
    if (cchData == 0)
        return cchMeasure;
    if (cchData < 0 || !lpLCData)
        return kvp::Fail(ERROR_INVALID_PARAMETER, 0);
    if (cchData < cchMeasure)
        return kvp::Fail(ERROR_INSUFFICIENT_BUFFER, 0);
    lpLCData[0] = kvp::CurrentMachine().nMeasure == 1 ? '1' : '0';
    lpLCData[1] = '\0';
    kvp::SpoilRest(lpLCData + cchMeasure, static_cast<size_t>(cchData - cchMeasure));
    return cchMeasure;
}

int WINAPI CompareStringA(LCID, DWORD dwCmpFlags, LPCSTR lpString1, int cchCount1, LPCSTR lpString2,
                          int cchCount2)
{
    if (dwCmpFlags != 0)
        return kvp::Fail(kvp::ERROR_INVALID_FLAGS, 0);
    if (!lpString1 || !lpString2)
        return kvp::Fail(ERROR_INVALID_PARAMETER, 0);
    const int nOrder = Order(Counted(lpString1, cchCount1), Counted(lpString2, cchCount2));
    return nOrder < 0 ? CSTR_EQUAL - 1 : nOrder > 0 ? CSTR_EQUAL + 1 : CSTR_EQUAL;
}
