// The driver's library loaded as a spooler loads it, its entry points found by name.
#ifndef KV_TESTS_SUPPORT_DRIVER_H
#define KV_TESTS_SUPPORT_DRIVER_H

#include "interface/entry.h"
#include "kvui/kvdd.h"
#include "tests/support/machine.h"

#define KV_ENTRY_POINTS(X)                                                                         \
    X(DrvDocumentProperties)                                                                       \
    X(DrvAdvancedDocumentProperties)                                                               \
    X(PrinterProperties)                                                                           \
    X(DrvDeviceCapabilities)                                                                       \
    X(DevQueryPrint)                                                                               \
    X(KVDD_GetOrgDevMode)                                                                          \
    X(KVDD_GetDrivInfo) X(KVDD_GetCmdLevel) X(KVDD_GetRange) X(KVDD_GetData) X(KVDD_SetData)

// Loads on Load(), frees when it ends. Not loaded: every pointer null.
struct LoadedDriver {
    LoadedDriver() = default;
    ~LoadedDriver() { Free(); }
    LoadedDriver(const LoadedDriver &) = delete;
    LoadedDriver &operator=(const LoadedDriver &) = delete;
    bool Load(); // false when the driver refuses
    void Free();

    HMODULE hModule = nullptr;
#define KV_POINTER(name) decltype(&::name) name = nullptr;
    KV_ENTRY_POINTS(KV_POINTER)
#undef KV_POINTER
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
