// Choosing and opening the back end, and putting the windows together into the screen's picture.
#include <cstdlib>
#include <stdexcept>

#include <fmt/format.h>

#include "platform/display/display.h"
#include "platform/host.h"
#include "platform/user/script.h"
#include "platform/user/window.h"

namespace kvp
{

static const Backend *const aBackends[] = {&sdlBackend, &headlessBackend};
static const Backend *current;

static std::string Variable(const char *name)
{
    const char *value = std::getenv(name);
    return value ? value : "";
}

static int ParseScale(const std::string &value)
{
    if (value.empty())
        return 1;
    if (value.size() != 1 || value[0] < '1' || value[0] > '4')
        throw std::invalid_argument("KV_SCALE must be 1, 2, 3 or 4, not \"" + value + "\"");
    return value[0] - '0';
}

Screen ScreenFromEnvironment()
{
    Screen screen;
    screen.strDisplay = Variable("KV_DISPLAY");
    if (!screen.strDisplay.empty() && screen.strDisplay != "sdl" && screen.strDisplay != "headless")
        throw std::invalid_argument("KV_DISPLAY must be sdl or headless, not \"" +
                                    screen.strDisplay + "\"");
    screen.nScale = ParseScale(Variable("KV_SCALE"));
    screen.strScript = Variable("KV_SCRIPT");
    screen.strShots = Variable("KV_SHOTS");
    return screen;
}

static bool HasDisplay()
{
    return !Variable("DISPLAY").empty() || !Variable("WAYLAND_DISPLAY").empty();
}

static void OpenBackend(const Screen &screen)
{
    if (current)
        current->close();
    current = nullptr;
    const std::string name = !screen.strDisplay.empty() ? screen.strDisplay
                             : HasDisplay()             ? "sdl"
                                                        : "headless";
    for (const Backend *backend : aBackends) {
        std::string why;
        if (name != backend->name)
            continue;
        if (!backend->open(screen.nScale, why))
            throw std::runtime_error(why);
        current = backend;
        return;
    }
    throw std::runtime_error(fmt::format("there is no display named \"{}\"", name));
}

void ConfigureScreen(const Screen &screen)
{
    OpenBackend(screen);
    OpenScript(screen.strScript, screen.strShots);
}

// A program that never chose a display gets the one of its environment, or else none.
static const Backend &Current()
{
    if (!current) {
        try {
            ConfigureScreen(ScreenFromEnvironment());
        } catch (const std::exception &e) {
            fmt::print(stderr, "{}\n", e.what());
            current = &headlessBackend;
        }
    }
    return *current;
}

Surface &Screenshot()
{
    static Surface screen(SCREEN_WIDTH, SCREEN_HEIGHT);
    const RECT whole{0, 0, SCREEN_WIDTH, SCREEN_HEIGHT};
    PaintInvalid();
    FillPixels(screen, whole, whole, DESKTOP);
    for (const Window *top : TopLevels())
        if (top->visible)
            CopyPixels(screen, whole, top->rc, *top->surface,
                       {0, 0, top->surface->width, top->surface->height});
    return screen;
}

void Present()
{
    const Backend &backend = Current();
    if (&backend != &headlessBackend)
        backend.present(Screenshot());
}

bool HasPerson()
{
    return &Current() != &headlessBackend;
}

bool BackendInput(Input &input)
{
    return Current().nextInput(input);
}

void SetClipboard(const std::string &utf8)
{
    Current().setClipboard(utf8);
}

std::string GetClipboard()
{
    return Current().getClipboard();
}

COLORREF ScreenPixel(int x, int y)
{
    if (x < 0 || y < 0 || x >= SCREEN_WIDTH || y >= SCREEN_HEIGHT)
        return 0;
    const uint32_t pixel = Screenshot().Row(y)[x];
    return RGB(static_cast<BYTE>(pixel >> 16), static_cast<BYTE>(pixel >> 8),
               static_cast<BYTE>(pixel));
}

bool SaveScreen(const std::string &hostPath)
{
    return Screenshot().WritePng(hostPath);
}

} // namespace kvp
