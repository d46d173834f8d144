// Records put behind bytes, as the model files hold them.
#ifndef KVMODEL_APPEND_H
#define KVMODEL_APPEND_H

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <vector>

namespace kvm
{

template <class Record>
void Append(std::vector<uint8_t> &bytes, const Record &record)
{
    const auto *from = reinterpret_cast<const uint8_t *>(&record);
    std::copy(from, from + sizeof(Record), std::back_inserter(bytes));
}

template <class Record>
void Append(std::vector<uint8_t> &bytes, const std::vector<Record> &records)
{
    for (const Record &record : records)
        Append(bytes, record);
}

} // namespace kvm

#endif
