// The screen: windows put together into one picture, shown by one of two equal back ends.
#ifndef KV_PLATFORM_DISPLAY_DISPLAY_H
#define KV_PLATFORM_DISPLAY_DISPLAY_H

#include <string>

#include "platform/gdi/surface.h"
#include "platform/user/input.h"

namespace kvp
{

constexpr int SCREEN_WIDTH = 800, SCREEN_HEIGHT = 600;

// What a back end does. Arguments have been checked, and nothing but close is called unless open
// succeeded.
struct Backend {
    const char *name;
    bool (*open)(int scale, std::string &why);
    void (*present)(Surface &screen);
    bool (*nextInput)(Input &input); // waits; false when there will be none
    void (*setClipboard)(const std::string &utf8);
    std::string (*getClipboard)();
    void (*close)();
};
extern const Backend headlessBackend, sdlBackend;

void Present();
// Whether a person sits before the display.
bool HasPerson();
// The person's next input from the back end.
bool BackendInput(Input &input);
void SetClipboard(const std::string &utf8);
std::string GetClipboard();
// The windows as they are now.
Surface &Screenshot();

} // namespace kvp

#endif
