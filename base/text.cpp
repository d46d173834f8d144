// Conversions between wide and ANSI text, and plain copy, fill and length.
#include "base/text.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "base/handles.h"

DWORD KVWStrlen(LPCWSTR lpText)
{
    return static_cast<DWORD>(std::char_traits<WCHAR>::length(lpText) * sizeof(WCHAR));
}

DWORD KVWStrcpy(LPWSTR lpTo, LPCWSTR lpFrom)
{
    const DWORD cb = KVWStrlen(lpFrom) + static_cast<DWORD>(sizeof(WCHAR));
    KVMemcpy(lpTo, lpFrom, cb);
    return cb / static_cast<DWORD>(sizeof(WCHAR));
}

void KVMemcpy(LPVOID lpTo, LPCVOID lpFrom, size_t cb)
{
    // Blocks that overlap are copied right, and no bytes may come from nowhere.
    if (cb != 0)
        std::memmove(lpTo, lpFrom, cb);
}

void KVMemset(LPVOID lpTo, BYTE b, size_t cb)
{
    if (cb != 0)
        std::memset(lpTo, b, cb);
}

LPSTR KVUnicodeToShiftJIS(LPCWSTR lpText)
{
    const DWORD cb = KVWStrlen(lpText);
    DWORD cbAnsi = 0;
    if (RtlUnicodeToMultiByteSize(&cbAnsi, lpText, cb) < 0)
        return nullptr;
    GlobalPtr<char> ansi = NewGlobal<char>(size_t{cbAnsi} + 1);
    if (!ansi || RtlUnicodeToMultiByteN(ansi.get(), cbAnsi + 1, nullptr, lpText,
                                        cb + static_cast<DWORD>(sizeof(WCHAR))) < 0)
        return nullptr;
    return ansi.release();
}

LPSTR PreUnicodeToShiftJIS(LPCWSTR lpText)
{
    const int cb = WideCharToMultiByte(CP_ACP, 0, lpText, -1, nullptr, 0, nullptr, nullptr);
    // One byte at the least, so that a failed conversion reads as an empty text.
    GlobalPtr<char> ansi = NewGlobal<char>(static_cast<size_t>(std::max(cb, 1)));
    if (ansi && cb > 0)
        WideCharToMultiByte(CP_ACP, 0, lpText, -1, ansi.get(), cb, nullptr, nullptr);
    return ansi.release();
}

void PostUnicodeToShiftJIS(LPSTR lpText)
{
    GlobalFree(lpText);
}

LPWSTR PreShiftJISToUnicode(LPCSTR lpText)
{
    const int cch = MultiByteToWideChar(CP_ACP, 0, lpText, -1, nullptr, 0);
    GlobalPtr<WCHAR> wide = NewGlobal<WCHAR>(static_cast<size_t>(std::max(cch, 1)) * sizeof(WCHAR));
    if (wide && cch > 0)
        MultiByteToWideChar(CP_ACP, 0, lpText, -1, wide.get(), cch);
    return wide.release();
}

void PostShiftJISToUnicode(LPWSTR lpText)
{
    GlobalFree(lpText);
}

// The fields for names are of one length.
using NameField = std::array<WCHAR, 32>;
static_assert(sizeof(NameField) == sizeof(DriverDevMode::wszModelName) &&
              sizeof(NameField) == sizeof(PublicDevMode::dmDeviceName));

static std::string AnsiName(const void *lpField)
{
    // A copy, because the record may lie at an odd address and its name may lack a terminator.
    NameField awch;
    std::memcpy(awch.data(), lpField, sizeof awch);
    const auto end = std::find(awch.begin(), awch.end(), u'\0');
    // Every ANSI code page has ASCII as it is; most names are nothing else.
    if (std::all_of(awch.begin(), end, [](WCHAR wch) { return wch < 0x80; }))
        return std::string(awch.begin(), end);

    const int cch = static_cast<int>(end - awch.begin());
    std::array<char, 4 * awch.size()> ach;
    const int cb = WideCharToMultiByte(CP_ACP, 0, awch.data(), cch, ach.data(),
                                       static_cast<int>(ach.size()), nullptr, nullptr);
    return std::string(ach.data(), static_cast<size_t>(std::max(cb, 0)));
}

std::string AnsiModelName(const DriverDevMode *lpDM)
{
    return AnsiName(&lpDM->wszModelName);
}

std::string AnsiDeviceName(const DriverDevMode *lpDM)
{
    return AnsiName(&lpDM->dm.dmDeviceName);
}
