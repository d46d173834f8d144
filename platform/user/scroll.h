// The scroll bar at the side of a list, drawn and clicked as a part of it.
#ifndef KV_PLATFORM_USER_SCROLL_H
#define KV_PLATFORM_USER_SCROLL_H

#include "platform/user/window.h"

namespace kvp
{

constexpr int SCROLL_WIDTH = 16;

// Of `count` items `shown` are to be seen, from `first` on.
void PaintScrollBar(HDC hdc, const RECT &rc, int first, int shown, int count);
// By how many items a click at y moves the list: one on an arrow, a page beside the thumb.
int ScrollStep(POINT size, int y, int shown, int first, int count);
// A small button with an arrow.
enum class Arrow { Up, Down, Left, Right };
void PaintArrowButton(HDC hdc, const RECT &rc, Arrow arrow, bool pressed, bool enabled);

} // namespace kvp

#endif
