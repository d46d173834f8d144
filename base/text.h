// Conversions between the spooler's wide text and the ANSI text of the model table and data
// files, and plain copy, fill and length.
#ifndef KV_BASE_TEXT_H
#define KV_BASE_TEXT_H

#include <string>

#include "kvui/devmode.h"
#include "platform/win32.h"

// Length in bytes, terminator excluded.
DWORD KVWStrlen(LPCWSTR lpText);
// Copies with the terminator; the number of characters copied, terminator included.
DWORD KVWStrcpy(LPWSTR lpTo, LPCWSTR lpFrom);
void KVMemcpy(LPVOID lpTo, LPCVOID lpFrom, size_t cb);
void KVMemset(LPVOID lpTo, BYTE b, size_t cb);

// A new ANSI copy, released with GlobalFree; null on failure.
LPSTR KVUnicodeToShiftJIS(LPCWSTR lpText);
// A new ANSI copy, released with the Post function; null when memory runs out.
LPSTR PreUnicodeToShiftJIS(LPCWSTR lpText);
void PostUnicodeToShiftJIS(LPSTR lpText);
// A new wide copy, released with the Post function; null when memory runs out.
LPWSTR PreShiftJISToUnicode(LPCSTR lpText);
void PostShiftJISToUnicode(LPWSTR lpText);

// A name of the record in the ANSI code page. One that fills its field without a terminator ends
// at the field's end. The record may lie at any address.
std::string AnsiModelName(const DriverDevMode *lpDM);
std::string AnsiDeviceName(const DriverDevMode *lpDM);

#endif
