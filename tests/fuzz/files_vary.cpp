// A model's files, one damaged at a time, the others whole.
#include <array>

#include "tests/fuzz/vary.h"

void Vary(Input seed, const Run &run)
{
    const size_t cbDat = TakeValue<uint16_t>(seed), cbCfg = TakeValue<uint16_t>(seed);
    std::array<Bytes, 3> files;
    for (const auto &[i, cb] : {std::pair{0, cbDat}, {1, cbCfg}, {2, seed.size()}}) {
        const Input file = Take(seed, cb);
        files[static_cast<size_t>(i)] = Bytes(file.begin(), file.end());
    }
    for (Bytes &damaged : files) {
        const Bytes whole = damaged;
        const auto runFiles = [&](const Bytes &bytes) {
            damaged = bytes;
            Bytes input;
            for (size_t i = 0; i < 2; ++i) {
                input.push_back(static_cast<uint8_t>(files[i].size()));
                input.push_back(static_cast<uint8_t>(files[i].size() >> 8));
            }
            for (const Bytes &file : files)
                input.insert(input.end(), file.begin(), file.end());
            run(input);
        };
        EveryTruncation(whole, runFiles);
        EveryByteChanged(whole, runFiles);
        damaged = whole;
    }
}
