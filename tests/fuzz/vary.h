// The variations of a fuzz target's seed, for the replay: what a damaged file looks like.
#ifndef KV_TESTS_FUZZ_VARY_H
#define KV_TESTS_FUZZ_VARY_H

#include <functional>

#include "tests/fuzz/fuzz.h"

using Run = std::function<void(const Bytes &)>;

// Every shorter beginning; every byte changed by itself, to the edges and by little.
void EveryTruncation(Input whole, const Run &run);
void EveryByteChanged(Input whole, const Run &run);

// All of a seed. A target whose input has parts has its own.
void Vary(Input seed, const Run &run);

#endif
