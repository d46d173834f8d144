// The module itself: its instance handle, its messages that belong to no page, and the boundary
// of what it exports.
#ifndef KV_BASE_MODULE_H
#define KV_BASE_MODULE_H

#include <string>

#include "platform/win32.h"

// An exported entry point.
#define KV_ENTRY extern "C" __attribute__((visibility("default")))

// Every load of the module's own resources goes through it. Set at process attach.
extern HINSTANCE hModule;

// The strings uFirst to uLast of a library's string table with nothing between them, each cut to
// 255 characters. A number without a string adds nothing.
std::string JoinStrings(HINSTANCE hLibrary, UINT uFirst, UINT uLast);

// The missing-driver-files message: strings 6910 to 6915 joined, caption "KORVA", information
// icon, no owner.
void InstallErrMsg();

// A box with the caption "Dlg DLL Message", only an OK button and no owner. ANSI text.
void Notify(LPCSTR lpText);

// "File not found : " and the name, through Notify.
void NotifyFileNotFound(LPCSTR lpName);

#endif
