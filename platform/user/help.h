// The help engine: topics out of a help file, in a window beside the others.
#ifndef KV_PLATFORM_USER_HELP_H
#define KV_PLATFORM_USER_HELP_H

#include "platform/user/window.h"

namespace kvp
{

// The control that the right button was pressed on: what HELP_CONTEXTMENU is about.
void SetHelpTarget(Window *control);
// Takes the help window away when it was closed, or when no other window is left.
void CloseHelpIfAsked();
bool IsHelp(const Window *window);

} // namespace kvp

#endif
