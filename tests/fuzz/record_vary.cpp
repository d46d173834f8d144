// A record from outside, damaged, and with sizes of all kinds in its head.
#include "tests/fuzz/vary.h"

void Vary(Input seed, const Run &run)
{
    EveryTruncation(seed, run);
    EveryByteChanged(seed, run);
    static constexpr uint16_t aEdges[] = {0,   1,   67,  68,  72,  73,  187,    188,    189,   373,
                                          374, 375, 561, 562, 563, 750, 0x7FFF, 0x8000, 0xFFFF};
    Bytes bytes(seed.begin(), seed.end());
    const size_t nSizesAt = 1 + offsetof(DriverDevMode, dm.dmSize);
    if (bytes.size() < nSizesAt + 4)
        return;
    for (const uint16_t wSize : aEdges)
        for (const uint16_t wExtra : aEdges) {
            std::memcpy(&bytes[nSizesAt], &wSize, sizeof wSize);
            std::memcpy(&bytes[nSizesAt + 2], &wExtra, sizeof wExtra);
            run(bytes);
        }
}
