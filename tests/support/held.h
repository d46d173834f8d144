// What a test may leave of the layer's, in one value to compare: blocks, files, libraries, drawing
// objects and device contexts.
#ifndef KV_TESTS_SUPPORT_HELD_H
#define KV_TESTS_SUPPORT_HELD_H

#include <array>
#include <cstddef>

#include "platform/host.h"

inline std::array<size_t, 5> HeldNow()
{
    const kvp::Held held = kvp::CurrentlyHeld();
    const kvp::GuiHeld gui = kvp::CurrentlyHeldGui();
    return {held.nBlocks, held.nFiles, held.nLibraries, gui.nObjects, gui.nContexts};
}

#endif
