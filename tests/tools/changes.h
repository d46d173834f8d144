// Sources with one thing wrong, and what kvmodel says of it: the line, the key and the words that a
// packager must see.
#ifndef KV_TESTS_TOOLS_CHANGES_H
#define KV_TESTS_TOOLS_CHANGES_H

#include <algorithm>
#include <span>

#include <gtest/gtest.h>

#include "tools/kvmodel/model.h"

struct Change {
    const char *from, *to;
    const char *key;
    const char *text; // a part of what is said
    int nBelow = 0;   // lines that the problem stands below the change; negative: above
};

// Everything that a source is told, a line each.
template <class Whole>
std::vector<std::string> Told(const std::string &source,
                              bool (*parse)(std::string_view, Whole &, kvm::Lines &,
                                            kvm::Problems &),
                              bool (*check)(const Whole &, const kvm::Lines &, kvm::Problems &))
{
    Whole whole;
    kvm::Lines lines;
    kvm::Problems problems;
    if (parse(source, whole, lines, problems))
        check(whole, lines, problems);
    std::vector<std::string> told;
    for (const kvm::Problem &problem : problems)
        told.push_back(kvm::Format("m.toml", problem));
    return told;
}

inline void ExpectTold(const std::string &good, std::span<const Change> changes,
                       std::vector<std::string> (*problemsOf)(const std::string &))
{
    for (const Change &change : changes) {
        SCOPED_TRACE(std::string(change.from) + " -> " + change.to);
        std::string source = good;
        const size_t at = source.find(change.from);
        ASSERT_NE(at, source.npos);
        source.replace(at, std::string(change.from).size(), change.to);
        const auto nLine = 1 + std::count(source.data(), source.data() + at, '\n') + change.nBelow;
        const std::string start = "m.toml:" + std::to_string(nLine) + ": " + change.key + ": ";
        const std::vector<std::string> told = problemsOf(source);
        EXPECT_TRUE(std::ranges::any_of(told,
                                        [&](const std::string &line) {
                                            return line.starts_with(start) &&
                                                   line.find(change.text, start.size()) !=
                                                       line.npos;
                                        }))
            << "wanted " << start << "..." << change.text << "\ntold\n"
            << ::testing::PrintToString(told);
    }
}

#endif
