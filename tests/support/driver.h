// The driver's library loaded as a spooler loads it, its entry points found by name.
#ifndef KV_TESTS_SUPPORT_DRIVER_H
#define KV_TESTS_SUPPORT_DRIVER_H

#include "interface/entry.h"
#include "kvui/kvdd.h"
#include "tests/support/machine.h"

// Loads on Load(), frees when it ends. Not loaded: every pointer null.
struct LoadedDriver {
    LoadedDriver() = default;
    ~LoadedDriver() { Free(); }
    LoadedDriver(const LoadedDriver &) = delete;
    LoadedDriver &operator=(const LoadedDriver &) = delete;
    bool Load(); // false when the driver refuses
    void Free();

    HMODULE hModule = nullptr;
    decltype(&::DrvDocumentProperties) DrvDocumentProperties = nullptr;
    decltype(&::DrvAdvancedDocumentProperties) DrvAdvancedDocumentProperties = nullptr;
    decltype(&::PrinterProperties) PrinterProperties = nullptr;
    decltype(&::DrvDeviceCapabilities) DrvDeviceCapabilities = nullptr;
    decltype(&::DevQueryPrint) DevQueryPrint = nullptr;
    decltype(&::KVDD_GetOrgDevMode) KVDD_GetOrgDevMode = nullptr;
    decltype(&::KVDD_GetDrivInfo) KVDD_GetDrivInfo = nullptr;
    decltype(&::KVDD_GetCmdLevel) KVDD_GetCmdLevel = nullptr;
    decltype(&::KVDD_GetRange) KVDD_GetRange = nullptr;
    decltype(&::KVDD_GetData) KVDD_GetData = nullptr;
    decltype(&::KVDD_SetData) KVDD_SetData = nullptr;
};

// A queue of the spooler's store with an open handle.
struct OpenQueue {
    OpenQueue(const std::string &name, const std::string &driver);
    ~OpenQueue();
    OpenQueue(const OpenQueue &) = delete;
    OpenQueue &operator=(const OpenQueue &) = delete;
    HANDLE hPrinter = nullptr;
};

#endif
