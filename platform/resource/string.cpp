// String tables: blocks of 16 strings, each a count of UTF-16 units and the units, no terminator.
#include <algorithm>
#include <cstring>

#include "platform/kernel/internal.h"
#include "platform/resource/bytes.h"
#include "platform/resource/resource.h"

namespace kvp
{

namespace
{

constexpr UINT STRINGS_PER_BLOCK = 16;

// The n-th text of a block, as bytes; empty when the block ends before the text does.
Bytes TextInBlock(Bytes block, UINT n)
{
    uint64_t at = 0;
    for (UINT i = 0; i < n; ++i)
        at += 2 + uint64_t{2} * ValueAt<uint16_t>(block, at);
    return Slice(block, at + 2, uint64_t{2} * ValueAt<uint16_t>(block, at));
}

// Ends a text of `length` characters in a buffer of `size`.
template <class Char>
int Finish(Char *buffer, int length, int size)
{
    buffer[length] = 0;
    SpoilRest(buffer + length + 1, static_cast<size_t>(size - length - 1) * sizeof(Char));
    return length;
}

} // namespace

std::u16string FindString(HMODULE module, UINT uId)
{
    if (uId > 0xFFFF)
        return {};
    const auto block = static_cast<uint16_t>(uId / STRINGS_PER_BLOCK + 1);
    const Bytes text =
        TextInBlock(FindResource(module, RESOURCE_STRING, block), uId % STRINGS_PER_BLOCK);
    std::u16string wide(text.size() / sizeof(WCHAR), u'\0');
    if (!wide.empty())
        std::memcpy(wide.data(), text.data(), text.size());
    return wide;
}

} // namespace kvp

int WINAPI LoadStringW(HINSTANCE hInstance, UINT uID, LPWSTR lpBuffer, int cchBufferMax)
{
    if (!lpBuffer || cchBufferMax <= 0)
        return 0;
    const std::u16string text = kvp::FindString(hInstance, uID);
    const size_t length = std::min<size_t>(text.size(), static_cast<size_t>(cchBufferMax) - 1);
    std::copy_n(text.data(), length, lpBuffer);
    return kvp::Finish(lpBuffer, static_cast<int>(length), cchBufferMax);
}

int WINAPI LoadStringA(HINSTANCE hInstance, UINT uID, LPSTR lpBuffer, int cchBufferMax)
{
    if (!lpBuffer || cchBufferMax <= 0)
        return 0;
    const std::u16string text = kvp::FindString(hInstance, uID);
    DWORD length = 0;
    // It never splits a double-byte character at the buffer's end.
    const NTSTATUS status =
        RtlUnicodeToMultiByteN(lpBuffer, static_cast<DWORD>(cchBufferMax) - 1, &length, text.data(),
                               static_cast<DWORD>(text.size() * sizeof(WCHAR)));
    return kvp::Finish(lpBuffer, status < 0 ? 0 : static_cast<int>(length), cchBufferMax);
}
