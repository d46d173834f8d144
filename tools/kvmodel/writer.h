// Writing one record of a source: values as a person would write them, defaults left out.
#ifndef KVMODEL_WRITER_H
#define KVMODEL_WRITER_H

#include <span>
#include <type_traits>

#include "tools/kvmodel/names.h"
#include "tools/kvmodel/problems.h"
#include "tools/kvmodel/reader.h"

namespace kvm
{

class Writer
{
  public:
    void Raw(const std::string &key, const std::string &value);
    // A key is left out when its value is the default.
    template <class T>
    void Number(const std::string &key, T value, std::type_identity_t<T> nDefault, Names names = {})
    {
        if (value != nDefault)
            Raw(key, Named(value, names));
    }
    template <class T>
    void Bits(const std::string &key, T value, std::type_identity_t<T> nDefault, Names names)
    {
        if (value != nDefault)
            Raw(key, BitList(static_cast<std::make_unsigned_t<T>>(value), names));
    }
    void Numbers(const std::string &key, std::span<const int64_t> values);
    void Lengths(const std::string &key, std::span<const int64_t> values, Unit unit);
    // Text as such when it is plain and followed by zeros alone, else the bytes; nothing when the
    // field is all zero.
    void Text(const std::string &key, std::span<const uint8_t> field, size_t cbChar = 1,
              bool bTerminated = true);
    void Hex(const std::string &key, std::span<const uint8_t> bytes);     // nothing when all zero
    void Trailer(const std::string &key, std::span<const uint8_t> bytes); // zeros as well

    std::string Inline() const; // "{ a = 1, b = 2 }"
    std::string Block() const;  // a line each

    static std::string Named(int64_t value, Names names);

  private:
    static std::string BitList(uint64_t value, Names names);

    std::vector<std::pair<std::string, std::string>> values_;
};

} // namespace kvm

#endif
