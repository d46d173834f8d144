// The loop that a modal window runs in: paint, show, take one input, carry it out.
#include <algorithm>

#include <fmt/format.h>

#include "platform/display/display.h"
#include "platform/host.h"
#include "platform/user/help.h"
#include "platform/user/script.h"
#include "platform/user/transcript.h"
#include "platform/user/window.h"

namespace kvp
{

OwnerLock::OwnerLock(Window &modalWindow, Window *owner) : modal(modalWindow)
{
    modal.owner = owner ? owner->Top() : ActiveWindow();
    ownerEnabled = modal.owner && modal.owner->enabled;
    if (modal.owner)
        modal.owner->enabled = false;
}

OwnerLock::~OwnerLock()
{
    modal.visible = false;
    Window *owner = modal.owner;
    if (owner) {
        owner->enabled = ownerEnabled;
        owner->Invalidate();
    }
    const bool goesOn = owner && owner->visible;
    Activate(goesOn ? owner : nullptr);
    if (goesOn)
        NoteReturn(*owner);
    else
        CloseHelpIfAsked();
}

RECT PlaceOver(Window *owner, int width, int height)
{
    const RECT screen{0, 0, SCREEN_WIDTH, SCREEN_HEIGHT};
    RECT over = owner && owner->Top()->visible ? owner->Top()->rc : screen;
    int x = over.left + (Width(over) - width) / 2, y = over.top + (Height(over) - height) / 2;
    x = std::clamp(x, 0, std::max(0, SCREEN_WIDTH - width));
    y = std::clamp(y, 0, std::max(0, SCREEN_HEIGHT - height));
    return {x, y, x + width, y + height};
}

// Nobody is left to close the window: it gets the answer that does least, and is taken away when
// it refuses that.
static void Abandon(Window &window)
{
    FailPlay(
        fmt::format("no input is left while \"{}\" is open; it is cancelled", ToUtf8(window.text)));
    window.PressCancel();
    window.closed = true;
}

static bool closing;

void CloseAll()
{
    closing = true;
}

void RunModal(Window &window)
{
    while (!window.closed) {
        if (closing) {
            window.PressCancel();
            window.closed = true;
            break;
        }
        PaintInvalid();
        Present();
        Input input;
        if (NextInput(input))
            Dispatch(input);
        else if (!window.closed)
            Abandon(window);
        CloseHelpIfAsked();
    }
}

} // namespace kvp
