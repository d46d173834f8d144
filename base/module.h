// The module itself: its instance handle, its messages that belong to no page, and the boundary
// of what it exports.
#ifndef KV_BASE_MODULE_H
#define KV_BASE_MODULE_H

#include "platform/win32.h"

// An exported entry point.
#define KV_ENTRY extern "C" __attribute__((visibility("default")))

// Every load of the module's own resources goes through it. Set at process attach.
extern HINSTANCE hModule;

// The missing-driver-files message: strings 6910 to 6915 joined, caption "KORVA", information
// icon, no owner.
void InstallErrMsg();

// A box with the caption "Dlg DLL Message", only an OK button and no owner. ANSI text.
void Notify(LPCSTR lpText);

// "File not found : " and the name, through Notify.
void NotifyFileNotFound(LPCSTR lpName);

#endif
