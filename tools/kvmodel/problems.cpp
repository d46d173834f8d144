// Problems as text, and the lines of keys.
#include "tools/kvmodel/problems.h"

#include <algorithm>

namespace kvm
{

int Lines::Of(std::string_view key) const
{
    for (;;) {
        if (const auto found = lines_.find(key); found != lines_.end())
            return found->second;
        const size_t cut = key.find_last_of(".[");
        if (cut == std::string_view::npos)
            return 0;
        key = key.substr(0, cut);
    }
}

std::string Format(const std::string &file, const Problem &problem)
{
    std::string text = file + ":";
    if (problem.nLine > 0)
        text += std::to_string(problem.nLine) + ":";
    text += " ";
    if (!problem.key.empty())
        text += problem.key + ": ";
    text += problem.text;
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text;
}

} // namespace kvm
