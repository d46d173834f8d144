// Opening and closing printers. A handle is a number that is never given out again, so that a
// closed or invented one is told from an open one without touching memory.
#include "platform/spooler/printers.h"

#include <mutex>
#include <unordered_map>

#include "platform/kernel/errors.h"
#include "platform/kernel/internal.h"

namespace kvp
{

namespace
{
std::mutex g_lock;
std::unordered_map<uintptr_t, std::shared_ptr<const Printer>> g_printers;
uintptr_t g_nLast = 0x10000;

BOOL Open(std::u16string_view name, HANDLE *phPrinter)
{
    auto printer = std::make_shared<Printer>(Printer{CurrentStore(), FoldName(name)});
    if (!printer->store->Find(printer->strKey))
        return Fail(ERROR_INVALID_PRINTER_NAME, FALSE);
    const std::lock_guard guard(g_lock);
    g_nLast += 4;
    g_printers[g_nLast] = std::move(printer);
    *phPrinter = reinterpret_cast<HANDLE>(g_nLast);
    return TRUE;
}

BOOL OpenNamed(const std::u16string *name, HANDLE *phPrinter)
{
    if (!phPrinter || !name)
        return Fail(phPrinter ? ERROR_INVALID_PRINTER_NAME : ERROR_INVALID_PARAMETER, FALSE);
    *phPrinter = nullptr;
    try {
        return Open(*name, phPrinter);
    } catch (const StoreFailure &failure) {
        return Fail(failure.dwCode, FALSE);
    }
}
} // namespace

std::shared_ptr<const Printer> PrinterOf(HANDLE hPrinter)
{
    const std::lock_guard guard(g_lock);
    const auto printer = g_printers.find(reinterpret_cast<uintptr_t>(hPrinter));
    return printer == g_printers.end() ? nullptr : printer->second;
}

std::shared_ptr<const PrinterRow> RowOf(HANDLE hPrinter, DWORD *lpError)
{
    const std::shared_ptr<const Printer> printer = PrinterOf(hPrinter);
    *lpError = ERROR_INVALID_HANDLE;
    if (!printer)
        return nullptr;
    try {
        *lpError = ERROR_INVALID_PRINTER_NAME;
        return printer->store->Find(printer->strKey);
    } catch (const StoreFailure &failure) {
        *lpError = failure.dwCode;
        return nullptr;
    }
}

} // namespace kvp

BOOL WINAPI OpenPrinterW(LPWSTR pPrinterName, HANDLE *phPrinter, LPVOID)
{
    const std::u16string strName = pPrinterName ? pPrinterName : u"";
    return kvp::OpenNamed(pPrinterName ? &strName : nullptr, phPrinter);
}

BOOL WINAPI OpenPrinterA(LPSTR pPrinterName, HANDLE *phPrinter, LPVOID)
{
    const std::u16string strName = kvp::AnsiToWide(pPrinterName ? pPrinterName : "");
    return kvp::OpenNamed(pPrinterName ? &strName : nullptr, phPrinter);
}

BOOL WINAPI ClosePrinter(HANDLE hPrinter)
{
    const std::lock_guard guard(kvp::g_lock);
    if (kvp::g_printers.erase(reinterpret_cast<uintptr_t>(hPrinter)))
        return TRUE;
    return kvp::Fail(kvp::ERROR_INVALID_HANDLE, FALSE);
}
