// How much memory a program has at most, seen from outside.
#ifndef KV_TESTS_SUPPORT_PEAK_MEMORY_H
#define KV_TESTS_SUPPORT_PEAK_MEMORY_H

#include <optional>
#include <string>
#include <vector>

struct Peak {
    int nStatus;    // of its exit
    long kilobytes; // resident at most, its libraries included
};
// Runs a program (its path first) with nothing on its output; nothing when the system forbids
// tracing, by which the program is stopped at its end.
std::optional<Peak> PeakOf(std::vector<std::string> command);

#endif
