// The entry points that the spooler and applications call; the KVDD_ functions, exported beside
// them, are in kvui/kvdd.h.
#ifndef KV_INTERFACE_ENTRY_H
#define KV_INTERFACE_ENTRY_H

#include "base/module.h"
#include "kvui/devmode.h"
#include "platform/win32.h"

constexpr DWORD DLL_PROCESS_DETACH = 0;
constexpr DWORD DLL_PROCESS_ATTACH = 1;

// Mode flags of DrvDocumentProperties.
constexpr DWORD DM_COPY = 2;
constexpr DWORD DM_PROMPT = 4;
constexpr DWORD DM_MODIFY = 8;

// Queries of DrvDeviceCapabilities.
constexpr WORD DC_FIELDS = 1, DC_PAPERS = 2, DC_PAPERSIZE = 3, DC_MINEXTENT = 4, DC_MAXEXTENT = 5,
               DC_BINS = 6, DC_DUPLEX = 7, DC_SIZE = 8, DC_EXTRA = 9, DC_VERSION = 10,
               DC_DRIVER = 11, DC_BINNAMES = 12, DC_ENUMRESOLUTIONS = 13, DC_FILEDEPENDENCIES = 14,
               DC_TRUETYPE = 15, DC_PAPERNAMES = 16, DC_ORIENTATION = 17, DC_COPIES = 18;

// Called by the loader. FALSE at process attach refuses the module.
KV_ENTRY BOOL WINAPI DllInitialize(HINSTANCE hInstance, DWORD dwReason, LPVOID lpReserved);

// 562 for flags 0; 1 after OK or without a prompt, 2 after Cancel, -1 on failure, 0 when the
// printer's driver cannot be read. The output record (562 bytes) is written whenever it is given
// and the result is positive.
KV_ENTRY LONG WINAPI DrvDocumentProperties(HWND hWnd, HANDLE hPrinter, LPWSTR lpDeviceName,
                                           DriverDevMode *lpOut, DriverDevMode *lpIn,
                                           DWORD dwFlags);

// 1 after OK, 2 after Cancel, -1 on failure, 0 without an output record (562 bytes). After OK it
// holds the edited settings, else the bytes of the input record where there is one.
KV_ENTRY LONG WINAPI DrvAdvancedDocumentProperties(HWND hWnd, HANDLE hPrinter, LPWSTR lpDeviceName,
                                                   DriverDevMode *lpOut, DriverDevMode *lpIn);

// Stores a default record with the printer when it has none, and shows the model's message.
// Always FALSE.
KV_ENTRY BOOL WINAPI PrinterProperties(HWND hWnd, HANDLE hPrinter);

// A count or a number; -1 when the query is not answered or fails.
KV_ENTRY DWORD WINAPI DrvDeviceCapabilities(HANDLE hPrinter, LPWSTR lpDeviceName, WORD wQuery,
                                            LPVOID lpOutput, DriverDevMode *lpIn);

// Sets *lpId to 0; TRUE for every job.
KV_ENTRY BOOL WINAPI DevQueryPrint(HANDLE hPrinter, DriverDevMode *lpDM, DWORD *lpId);

#endif
