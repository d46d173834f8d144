// The layer's own texts, in the machine's language where there is one.
#ifndef KV_PLATFORM_USER_SYSTEXT_H
#define KV_PLATFORM_USER_SYSTEXT_H

#include <string>

namespace kvp
{

enum class SystemText {
    Ok,
    Cancel,
    Help,
    Abort,
    Retry,
    Ignore,
    Yes,
    No,
    NoHelpFile,
    NoTopic,
    Count
};
std::u16string TextOf(SystemText which);

} // namespace kvp

#endif
