// What loaded libraries hold, for the layer's own folders: strings, dialogs, bitmaps and icons, all
// by one search.
#ifndef KV_PLATFORM_RESOURCE_RESOURCE_H
#define KV_PLATFORM_RESOURCE_RESOURCE_H

#include <cstdint>
#include <span>
#include <string>

#include "platform/win32.h"

namespace kvp
{

enum ResourceType : uint16_t {
    RESOURCE_BITMAP = 2,
    RESOURCE_ICON = 3,
    RESOURCE_DIALOG = 5,
    RESOURCE_STRING = 6,
    RESOURCE_GROUP_ICON = 14,
};

// The resource's bytes in the language that comes first for wLang; empty when the module is not
// loaded or has no such resource. They are bytes from outside, may lie at any address, and stay
// until the module's last FreeLibrary.
std::span<const uint8_t> FindResource(HMODULE module, ResourceType type, uint16_t id, LANGID wLang);
// The same for the machine's user.
std::span<const uint8_t> FindResource(HMODULE module, ResourceType type, uint16_t id);

// A string of the module for the machine's user; empty when there is none.
std::u16string FindString(HMODULE module, UINT uId);

} // namespace kvp

#endif
