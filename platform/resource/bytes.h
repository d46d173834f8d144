// Little-endian values out of bytes from outside. Nothing here reads outside the bytes it was
// given, whatever the offsets and sizes say.
#ifndef KV_PLATFORM_RESOURCE_BYTES_H
#define KV_PLATFORM_RESOURCE_BYTES_H

#include <bit>
#include <cstdint>
#include <cstring>
#include <span>

namespace kvp
{

static_assert(std::endian::native == std::endian::little);

using Bytes = std::span<const uint8_t>;

// `size` bytes from `offset`; empty unless all of them are there.
inline Bytes Slice(Bytes bytes, uint64_t offset, uint64_t size)
{
    if (offset > bytes.size() || size > bytes.size() - offset)
        return {};
    return bytes.subspan(offset, size);
}

// Everything from `offset`; empty when that is past the end.
inline Bytes From(Bytes bytes, uint64_t offset)
{
    return offset > bytes.size() ? Bytes{} : bytes.subspan(offset);
}

// The value at `offset`; 0 when it does not lie wholly inside, which every format read here takes
// for "nothing there".
template <class T>
T ValueAt(Bytes bytes, uint64_t offset)
{
    T value = 0;
    const Bytes at = Slice(bytes, offset, sizeof value);
    if (!at.empty())
        std::memcpy(&value, at.data(), sizeof value);
    return value;
}

} // namespace kvp

#endif
