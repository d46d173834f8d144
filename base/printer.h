// What the spooler knows of a printer: its model, its name, its driver directory, and the
// settings record stored with it. Failures are results; nothing here shows a message.
#ifndef KV_BASE_PRINTER_H
#define KV_BASE_PRINTER_H

#include "base/handles.h"
#include "kvui/devmode.h"
#include "platform/win32.h"

// The driver's name into 32 characters. A name of more than 31 is refused.
BOOL KVGetPrinterInfo(HANDLE hPrinter, LPWSTR lpModelName);
// The printer's name into 32 characters; without a terminator when it has 32 or more.
BOOL KVGetPrinterName(HANDLE hPrinter, LPWSTR lpDeviceName);
// What the spooler says of the printer, ANSI; null on failure.
GlobalPtr<PRINTER_INFO_2A> PrinterInfo(HANDLE hPrinter);
// The printer-driver directory and one "\", ANSI; "" when it cannot be had. Released with
// LocalFree; null only when memory runs out.
LPSTR GetPrinterDriverPath(HANDLE hPrinter);

// The record stored with the printer under KVDeviceMode, when it has the right size and driver
// version; else FALSE, and lpDM is as it was.
BOOL KVGetPrinterData(HANDLE hPrinter, DriverDevMode *lpDM);
BOOL KVSetPrinterData(HANDLE hPrinter, const DriverDevMode *lpDM);

#endif
