// What a person does, as the display hands it in: keys, characters and the mouse.
#ifndef KV_PLATFORM_USER_INPUT_H
#define KV_PLATFORM_USER_INPUT_H

#include "platform/win32.h"

namespace kvp
{

enum class KeyCode {
    None,
    Enter,
    Escape,
    Tab,
    Space,
    Backspace,
    Delete,
    Up,
    Down,
    Left,
    Right,
    Home,
    End,
    PageUp,
    PageDown,
    F1,
    F4,
    Letter
};

struct Key {
    KeyCode code = KeyCode::None;
    char32_t letter = 0; // of KeyCode::Letter, for Alt and Ctrl
    bool shift = false, ctrl = false, alt = false;
};

struct Input {
    enum Kind {
        Nothing, // something was done that may need painting
        KeyPress,
        Character,
        MouseDown,
        MouseUp,
        MouseMove,
        RightClick,
        Wheel,
        Held, // the mouse button, for a while
        Quit
    } kind = Nothing;
    POINT at{}; // on the screen
    Key key{};
    char32_t character = 0;
    int notches = 0; // of the wheel, away from the person
};

// Carries out one input (dispatch.cpp).
void Dispatch(const Input &input);
// Keys with a meaning in every dialog: Tab, arrows, Enter, Escape, letters, F1 (keys.cpp). False
// when the key is none of them.
bool DialogKey(const Key &key);
bool DialogLetter(char32_t letter);

} // namespace kvp

#endif
