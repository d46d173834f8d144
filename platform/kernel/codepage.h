// Which code pages there are.
#ifndef KV_PLATFORM_KERNEL_CODEPAGE_H
#define KV_PLATFORM_KERNEL_CODEPAGE_H

#include "platform/win32.h"

namespace kvp
{

// One that a machine can have as its own: one or two bytes to a character.
bool IsAnsiCodePage(UINT uCodePage);

} // namespace kvp

#endif
