// What is wrong with a source or a file, and where each value of a source was written.
#ifndef KVMODEL_PROBLEMS_H
#define KVMODEL_PROBLEMS_H

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace kvm
{

struct Problem {
    int nLine;       // of the source, from 1; 0: of no line
    std::string key; // "paper[2].size"; empty: of the whole
    std::string text;
};
using Problems = std::vector<Problem>;

// Key to line. A key that was left out stands at the line of the record it would belong to.
class Lines
{
  public:
    void Set(const std::string &key, int nLine) { lines_[key] = nLine; }
    int Of(std::string_view key) const;

  private:
    std::map<std::string, int, std::less<>> lines_;
};

// "file:line: key: text", without the parts that are not known.
std::string Format(const std::string &file, const Problem &problem);

} // namespace kvm

#endif
