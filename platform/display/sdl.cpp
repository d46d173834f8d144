// The back end with a person: the screen in one window of the desktop.
#include <dlfcn.h>

#include <SDL.h>

#include "platform/display/display.h"
#include "platform/host.h"
#include "platform/user/window.h"

namespace kvp
{

// The library is loaded when a window is first wanted: it brings along half of all that a program
// would load at its start, and most show nothing.
static void *Library()
{
    static void *const library = dlopen("libSDL2-2.0.so.0", RTLD_NOW | RTLD_LOCAL);
    return library;
}

namespace
{
// A function of the library, of the type that it is wanted in.
struct Named {
    explicit Named(const char *name) : address(dlsym(Library(), name)) {}
    template <class Call>
    operator Call *() const
    {
        return reinterpret_cast<Call *>(address);
    }
    void *address;
};

struct Calls {
    decltype(&SDL_CreateRenderer) CreateRenderer = Named("SDL_CreateRenderer");
    decltype(&SDL_CreateTexture) CreateTexture = Named("SDL_CreateTexture");
    decltype(&SDL_CreateWindow) CreateWindow = Named("SDL_CreateWindow");
    decltype(&SDL_DestroyRenderer) DestroyRenderer = Named("SDL_DestroyRenderer");
    decltype(&SDL_DestroyTexture) DestroyTexture = Named("SDL_DestroyTexture");
    decltype(&SDL_DestroyWindow) DestroyWindow = Named("SDL_DestroyWindow");
    decltype(&SDL_GetClipboardText) GetClipboardText = Named("SDL_GetClipboardText");
    decltype(&SDL_GetCurrentVideoDriver) GetCurrentVideoDriver = Named("SDL_GetCurrentVideoDriver");
    decltype(&SDL_GetError) GetError = Named("SDL_GetError");
    decltype(&SDL_GetModState) GetModState = Named("SDL_GetModState");
    decltype(&SDL_GetMouseState) GetMouseState = Named("SDL_GetMouseState");
    decltype(&SDL_Init) Init = Named("SDL_Init");
    decltype(&SDL_Quit) Quit = Named("SDL_Quit");
    decltype(&SDL_RenderCopy) RenderCopy = Named("SDL_RenderCopy");
    decltype(&SDL_RenderPresent) RenderPresent = Named("SDL_RenderPresent");
    decltype(&SDL_SetClipboardText) SetClipboardText = Named("SDL_SetClipboardText");
    decltype(&SDL_SetHint) SetHint = Named("SDL_SetHint");
    decltype(&SDL_StartTextInput) StartTextInput = Named("SDL_StartTextInput");
    decltype(&SDL_UpdateTexture) UpdateTexture = Named("SDL_UpdateTexture");
    decltype(&SDL_WaitEvent) WaitEvent = Named("SDL_WaitEvent");
    decltype(&SDL_WaitEventTimeout) WaitEventTimeout = Named("SDL_WaitEventTimeout");
    decltype(&SDL_free) free = Named("SDL_free");
};
} // namespace

static const Calls *sdl; // set before anything but Open is called

static SDL_Window *shown;
static SDL_Renderer *renderer;
static SDL_Texture *texture;
static int scale = 1;

static void Close()
{
    if (texture)
        sdl->DestroyTexture(texture);
    if (renderer)
        sdl->DestroyRenderer(renderer);
    if (shown)
        sdl->DestroyWindow(shown);
    texture = nullptr;
    renderer = nullptr;
    shown = nullptr;
    if (sdl)
        sdl->Quit();
}

// Without a display the library takes a driver that shows nothing, and a person would wait for
// ever.
static bool IsVisible(const std::string &driver)
{
    return !driver.empty() && driver != "dummy" && driver != "offscreen" && driver != "evdev";
}

static bool Fail(std::string &why, const std::string &reason)
{
    why = "cannot open a window (" + reason +
          "): set DISPLAY or WAYLAND_DISPLAY to a running display, or use the display \"headless\"";
    Close();
    return false;
}

static bool Open(int pixels, std::string &why)
{
    if (!Library()) {
        why = "cannot open a window: install SDL 2, or use the display \"headless\"";
        return false;
    }
    static const Calls calls;
    sdl = &calls;
    scale = pixels;
    sdl->SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    if (sdl->Init(SDL_INIT_VIDEO) != 0)
        return Fail(why, sdl->GetError());
    if (!IsVisible(sdl->GetCurrentVideoDriver()))
        return Fail(why, std::string("the video driver ") + sdl->GetCurrentVideoDriver() +
                             " shows nothing");
    shown = sdl->CreateWindow("Printer settings", SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED,
                              SCREEN_WIDTH * scale, SCREEN_HEIGHT * scale, 0);
    if (!shown)
        return Fail(why, sdl->GetError());
    renderer = sdl->CreateRenderer(shown, -1, SDL_RENDERER_SOFTWARE);
    if (renderer)
        texture = sdl->CreateTexture(renderer, SDL_PIXELFORMAT_RGB888, SDL_TEXTUREACCESS_STREAMING,
                                     SCREEN_WIDTH, SCREEN_HEIGHT);
    if (!texture)
        return Fail(why, sdl->GetError());
    sdl->StartTextInput();
    return true;
}

static void PresentScreen(Surface &screen)
{
    sdl->UpdateTexture(texture, nullptr, screen.pixels,
                       static_cast<int>(screen.stride * sizeof(uint32_t)));
    sdl->RenderCopy(renderer, texture, nullptr, nullptr);
    sdl->RenderPresent(renderer);
}

static KeyCode CodeOf(SDL_Keycode code)
{
    static constexpr struct {
        SDL_Keycode sdl;
        KeyCode code;
    } aKeys[] = {
        {SDLK_RETURN, KeyCode::Enter},
        {SDLK_KP_ENTER, KeyCode::Enter},
        {SDLK_ESCAPE, KeyCode::Escape},
        {SDLK_TAB, KeyCode::Tab},
        {SDLK_SPACE, KeyCode::Space},
        {SDLK_BACKSPACE, KeyCode::Backspace},
        {SDLK_DELETE, KeyCode::Delete},
        {SDLK_UP, KeyCode::Up},
        {SDLK_DOWN, KeyCode::Down},
        {SDLK_LEFT, KeyCode::Left},
        {SDLK_RIGHT, KeyCode::Right},
        {SDLK_HOME, KeyCode::Home},
        {SDLK_END, KeyCode::End},
        {SDLK_PAGEUP, KeyCode::PageUp},
        {SDLK_PAGEDOWN, KeyCode::PageDown},
        {SDLK_F1, KeyCode::F1},
        {SDLK_F4, KeyCode::F4},
    };
    for (const auto &row : aKeys)
        if (row.sdl == code)
            return row.code;
    return code > ' ' && code < 0x80 ? KeyCode::Letter : KeyCode::None;
}

// The first character of what was typed; the rest comes with the next calls.
static std::u16string typed;

static bool TakeTyped(Input &input)
{
    if (typed.empty())
        return false;
    char32_t character = typed[0];
    size_t units = 1;
    if (character >= 0xD800 && character < 0xDC00 && typed.size() > 1) {
        character = 0x10000 + ((character & 0x3FF) << 10) + (typed[1] & 0x3FF);
        units = 2;
    }
    typed.erase(0, units);
    input.kind = Input::Character;
    input.character = character;
    return true;
}

static void OnKeyDown(const SDL_Keysym &sym, Input &input)
{
    input.key.code = CodeOf(sym.sym);
    if (input.key.code == KeyCode::None)
        return;
    input.kind = Input::KeyPress;
    input.key.shift = sym.mod & KMOD_SHIFT;
    input.key.ctrl = sym.mod & KMOD_CTRL;
    input.key.alt = sym.mod & KMOD_ALT;
    if (input.key.code == KeyCode::Letter)
        input.key.letter = static_cast<char32_t>(sym.sym);
}

static void OnButton(const SDL_MouseButtonEvent &button, bool down, Input &input)
{
    input.at = {button.x / scale, button.y / scale};
    if (button.button == SDL_BUTTON_LEFT)
        input.kind = down ? Input::MouseDown : Input::MouseUp;
    else if (button.button == SDL_BUTTON_RIGHT && !down)
        input.kind = Input::RightClick;
}

// Where the mouse is, does not come with the turn.
static void OnWheel(const SDL_MouseWheelEvent &wheel, Input &input)
{
    int x = 0, y = 0;
    sdl->GetMouseState(&x, &y);
    input.kind = Input::Wheel;
    input.at = {x / scale, y / scale};
    input.notches = wheel.direction == SDL_MOUSEWHEEL_FLIPPED ? -wheel.y : wheel.y;
}

// A button held down on an arrow goes on stepping, after a pause.
static constexpr int FIRST_PAUSE = 400, NEXT_PAUSE = 80; // milliseconds
static int pause = FIRST_PAUSE;

static bool WaitForEvent(SDL_Event &event, Input &input)
{
    if (!CaptureWindow())
        return sdl->WaitEvent(&event);
    if (sdl->WaitEventTimeout(&event, pause))
        return true;
    event.type = SDL_FIRSTEVENT;
    input.kind = Input::Held;
    pause = NEXT_PAUSE;
    return true;
}

static bool WaitForInput(Input &input)
{
    SDL_Event event;
    if (TakeTyped(input))
        return true;
    if (!WaitForEvent(event, input))
        return false;
    switch (event.type) {
    case SDL_QUIT: input.kind = Input::Quit; break;
    case SDL_KEYDOWN: OnKeyDown(event.key.keysym, input); break;
    // Letters typed with Alt held are no text.
    case SDL_TEXTINPUT:
        if (!(sdl->GetModState() & (KMOD_ALT | KMOD_CTRL)))
            typed += ToWide(event.text.text);
        break;
    case SDL_MOUSEBUTTONDOWN: OnButton(event.button, true, input); break;
    case SDL_MOUSEBUTTONUP:
        pause = FIRST_PAUSE;
        OnButton(event.button, false, input);
        break;
    case SDL_MOUSEWHEEL: OnWheel(event.wheel, input); break;
    case SDL_MOUSEMOTION:
        input.kind = Input::MouseMove;
        input.at = {event.motion.x / scale, event.motion.y / scale};
        break;
    }
    return true;
}

static std::string ReadClipboard()
{
    char *text = sdl->GetClipboardText();
    std::string copy = text ? text : "";
    sdl->free(text);
    return copy;
}

const Backend sdlBackend{
    .name = "sdl",
    .open = Open,
    .present = PresentScreen,
    .nextInput = WaitForInput,
    .setClipboard = [](const std::string &utf8) { sdl->SetClipboardText(utf8.c_str()); },
    .getClipboard = ReadClipboard,
    .close = Close,
};

} // namespace kvp
