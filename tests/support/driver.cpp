// Finding the entry points, and opening a queue.
#include "tests/support/driver.h"

namespace
{
template <class Function>
void Find(HMODULE module, const char *name, Function *&function)
{
    function = reinterpret_cast<Function *>(kvp::FindProc(module, name));
}
} // namespace

bool LoadedDriver::Load()
{
    Free();
    hModule = kvp::LoadHostLibrary(KV_DRIVER_PATH);
    if (!hModule)
        return false;
#define KV_FIND(name) Find(hModule, #name, name)
    KV_FIND(DrvDocumentProperties);
    KV_FIND(DrvAdvancedDocumentProperties);
    KV_FIND(PrinterProperties);
    KV_FIND(DrvDeviceCapabilities);
    KV_FIND(DevQueryPrint);
    KV_FIND(KVDD_GetOrgDevMode);
    KV_FIND(KVDD_GetDrivInfo);
    KV_FIND(KVDD_GetCmdLevel);
    KV_FIND(KVDD_GetRange);
    KV_FIND(KVDD_GetData);
    KV_FIND(KVDD_SetData);
#undef KV_FIND
    return true;
}

void LoadedDriver::Free()
{
    if (hModule)
        FreeLibrary(hModule);
    hModule = nullptr;
}

OpenQueue::OpenQueue(const std::string &name, const std::string &driver)
{
    kvp::AddQueue(name, driver);
    std::u16string wide = kvp::ToWide(name);
    OpenPrinterW(wide.data(), &hPrinter, nullptr);
}

OpenQueue::~OpenQueue()
{
    if (hPrinter)
        ClosePrinter(hPrinter);
}
