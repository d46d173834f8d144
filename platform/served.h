// What the layer serves for programs that want it and the driver does not use, with the names that
// the Win32 interfaces have: the rest is in win32.h, which declares the driver's needs only.
#ifndef KV_PLATFORM_SERVED_H
#define KV_PLATFORM_SERVED_H

#include "platform/win32.h"

constexpr int WHITE_BRUSH = 0;
constexpr int PS_SOLID = 0;
constexpr int OPAQUE = 2;
constexpr UINT ODT_LISTBOX = 2;
constexpr UINT WM_CTLCOLORMSGBOX = 0x0132;
constexpr UINT WM_CTLCOLORLISTBOX = 0x0134;
constexpr UINT WM_CTLCOLORSCROLLBAR = 0x0137;
constexpr WORD CBN_SELENDCANCEL = 10;
constexpr UINT CB_FINDSTRINGEXACT = 0x0158; // the whole text, ignoring case
constexpr int SB_ENDSCROLL = 8;
constexpr LONG PSNRET_INVALID = 1; // the sheet stays open, on the page that said so
KV_IMPORT HWND WINAPI SetFocus(HWND hWnd);

#endif
