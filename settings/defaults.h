// A model's default settings.
#ifndef KV_SETTINGS_DEFAULTS_H
#define KV_SETTINGS_DEFAULTS_H

#include "kvui/devmode.h"
#include "platform/win32.h"

// Fills a record whose wszModelName is set and whose rest is zero. FALSE after a message when the
// .dat or .cfg is not found, FALSE when one is shorter than its counts; nothing is written then.
// The last two arguments are not used.
BOOL InitPrinterDevMode(DriverDevMode *lpDM, LPVOID p2, LPVOID p3);

#endif
