// Finding the entry points, and opening a queue.
#include "tests/support/driver.h"

bool LoadedDriver::Load()
{
    Free();
    hModule = kvp::LoadHostLibrary(KV_DRIVER_PATH);
    if (!hModule)
        return false;
#define KV_FIND(name) name = reinterpret_cast<decltype(name)>(kvp::FindProc(hModule, #name));
    KV_ENTRY_POINTS(KV_FIND)
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
