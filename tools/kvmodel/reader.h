// Reading the values of one table of a source: every value checked for its kind and range, every
// line remembered, every key that nobody asked for reported.
#ifndef KVMODEL_READER_H
#define KVMODEL_READER_H

#include <limits>
#include <map>
#include <set>
#include <type_traits>

#include <toml++/toml.h>

#include "tools/kvmodel/model.h"
#include "tools/kvmodel/names.h"

namespace kvm
{

struct Context {
    Lines &lines;
    Problems &problems;
};

enum class Unit { Inch360, Tenth }; // 1/360 inch; 0.1 mm

// What the records of one kind are called in references: their labels, and "KIND-POSITION".
class Labels
{
  public:
    explicit Labels(std::string kind) : kind_(std::move(kind)) {}
    // False when another record has the label.
    bool Add(const std::string &label, size_t nPosition);
    void Count(size_t nCount) { nCount_ = nCount; }
    std::optional<int64_t> Find(const std::string &label) const;
    // A reference to the record at a position; its number when there is no such record.
    std::string Print(int64_t nPosition) const;
    const std::string &Kind() const { return kind_; }

  private:
    std::string kind_;
    std::map<std::string, size_t> positions_;
    size_t nCount_ = 0;
};

// Of every kind that a model's records refer to; settings count presets on from the Automatic ones.
struct AllLabels {
    Labels source{"source"}, resName{"name"}, media{"media"}, resolution{"resolution"},
        setting{"setting"};
};

class Reader
{
  public:
    Reader(const toml::table &table, std::string path, Context context);
    ~Reader(); // reports the keys that were not asked for
    Reader(const Reader &) = delete;
    Reader &operator=(const Reader &) = delete;

    bool Has(std::string_view key) const { return table_.contains(key); }
    // Each reader answers the default when the key is missing or wrong; wrong values are reported.
    template <class T>
    T Number(std::string_view key, T nDefault, Names names = {})
    {
        return static_cast<T>(Integer(key, nDefault, std::numeric_limits<T>::min(),
                                      std::numeric_limits<T>::max(), names));
    }
    int64_t Integer(std::string_view key, int64_t nDefault, int64_t nMin, int64_t nMax,
                    Names names = {});
    // A list of the names of bits, or all the bits as one number.
    template <class T>
    T Bits(std::string_view key, T nDefault, Names names)
    {
        using Unsigned = std::make_unsigned_t<T>;
        return static_cast<T>(BitSet(key, static_cast<Unsigned>(nDefault),
                                     std::numeric_limits<Unsigned>::max(), names));
    }
    // A label, or the position itself.
    int64_t Reference(std::string_view key, int64_t nDefault, int64_t nMin, int64_t nMax,
                      const Labels &labels);
    // Exactly out.size() numbers; with bUpTo at most so many, the rest as it was.
    bool Numbers(std::string_view key, std::span<int64_t> out, int64_t nMin, int64_t nMax,
                 bool bUpTo = false);
    // Exactly out.size() lengths: an array of numbers in the unit and of texts like "8.5 in", or
    // one text like "210 x 297 mm".
    void Lengths(std::string_view key, std::span<int64_t> out, Unit unit);
    std::string String(std::string_view key);
    // Text of plain ASCII into a field with its terminator, or { hex = "..." } for its bytes.
    void Text(std::string_view key, std::span<uint8_t> field, size_t cbChar = 1,
              bool bTerminated = true);
    // Hexadecimal digits; at most cbMax bytes.
    Bytes Hex(std::string_view key, size_t cbMax);

    const toml::table *Table(std::string_view key);
    // The tables of an array of tables, in order; what is not a table is reported.
    std::vector<const toml::table *> Tables(std::string_view key);
    const toml::node *Take(std::string_view key);
    void Require(std::initializer_list<const char *> keys); // reports those that are missing

    std::string Path(std::string_view key) const;
    void Complain(std::string_view key, std::string text);
    const Context &GetContext() const { return context_; }

  private:
    uint64_t BitSet(std::string_view key, uint64_t nDefault, uint64_t nMax, Names names);

    const toml::table &table_;
    std::string path_;
    Context context_;
    std::set<std::string, std::less<>> asked_;
};

int LineOf(const toml::node &node);
// Null, with the problem, for a source that is not TOML.
std::optional<toml::table> ParseToml(std::string_view source, Problems &problems);

} // namespace kvm

#endif
