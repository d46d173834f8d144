// Printer handles, and what every spooler call begins and ends with.
#ifndef KV_PLATFORM_SPOOLER_PRINTERS_H
#define KV_PLATFORM_SPOOLER_PRINTERS_H

#include <memory>
#include <string>

#include "platform/spooler/store.h"

namespace kvp
{

// An open printer keeps the store it was opened in, also after the machine has changed.
struct Printer {
    std::shared_ptr<Store> store;
    std::string strKey;
};

// Nothing for a handle that is not open.
std::shared_ptr<const Printer> PrinterOf(HANDLE hPrinter);

// The printer's row, or null and why not: bad handle, printer gone, store unusable.
std::shared_ptr<const PrinterRow> RowOf(HANDLE hPrinter, DWORD *lpError);

} // namespace kvp

#endif
