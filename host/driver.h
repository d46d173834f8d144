// The driver as a spooler sees it: a library loaded at run time, its entry points found by name,
// and printers opened for it.
#ifndef KV_HOST_DRIVER_H
#define KV_HOST_DRIVER_H

#include <optional>
#include <string>

#include "interface/entry.h"
#include "kvui/kvdd.h"
#include "platform/host.h"

struct Driver {
    Driver(); // loads it; a Failure tells why not
    ~Driver() { FreeLibrary(hLibrary); }
    Driver(const Driver &) = delete;
    Driver &operator=(const Driver &) = delete;

    HMODULE hLibrary;
    decltype(&::DrvDocumentProperties) DrvDocumentProperties;
    decltype(&::DrvAdvancedDocumentProperties) DrvAdvancedDocumentProperties;
    decltype(&::PrinterProperties) PrinterProperties;
    decltype(&::DrvDeviceCapabilities) DrvDeviceCapabilities;
    decltype(&::KVDD_GetCmdLevel) KVDD_GetCmdLevel;
    decltype(&::KVDD_GetRange) KVDD_GetRange;
    decltype(&::KVDD_GetData) KVDD_GetData;
    decltype(&::KVDD_SetData) KVDD_SetData;
};

// An open printer; a Failure when there is none of this name.
struct OpenedPrinter {
    explicit OpenedPrinter(const std::string &name);
    ~OpenedPrinter() { ClosePrinter(hPrinter); }
    OpenedPrinter(const OpenedPrinter &) = delete;
    OpenedPrinter &operator=(const OpenedPrinter &) = delete;

    std::string strName;
    std::u16string strWide; // what the entry points get as the device's name
    HANDLE hPrinter = nullptr;
};

// The printer's settings without a prompt, a record of the caller's merged in; a Failure when the
// driver gives none.
DriverDevMode DocumentSettings(const Driver &driver, OpenedPrinter &printer,
                               std::optional<DriverDevMode> in);

// Leaves a call's result in the transcript.
void NoteResult(const char *call, long result);

#endif
