// What the transcript says about windows and controls.
#ifndef KV_PLATFORM_USER_TRANSCRIPT_H
#define KV_PLATFORM_USER_TRANSCRIPT_H

#include <string>

#include <nlohmann/json_fwd.hpp>

#include "platform/user/window.h"

namespace kvp
{

void NoteEvent(const nlohmann::ordered_json &line);
// A window was opened, activated or closed.
void NoteWindow(Window &window, const char *what);
// What lay over it is gone: the page or dialog in it is the person's again.
void NoteReturn(Window &top);
// One control, or the page, dialog, box or help window on top with all of its own; null when no
// window is open.
nlohmann::ordered_json Describe(Window &control);
nlohmann::ordered_json DescribeTop();

} // namespace kvp

#endif
