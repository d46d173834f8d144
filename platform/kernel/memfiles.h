// Files that exist only in memory, by place without regard to case.
#ifndef KV_PLATFORM_KERNEL_MEMFILES_H
#define KV_PLATFORM_KERNEL_MEMFILES_H

#include <cstdint>
#include <memory>
#include <vector>

#include "platform/kernel/names.h"

namespace kvp
{

using SharedBytes = std::shared_ptr<const std::vector<uint8_t>>;

struct MemoryAnswer {
    bool bKnown = false; // the disk is not asked
    SharedBytes bytes;   // null: the name does not exist
};
MemoryAnswer LookInMemory(const Place &place);
void StoreInMemory(const Place &place, std::vector<uint8_t> bytes);

} // namespace kvp

#endif
