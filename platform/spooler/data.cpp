// Values that programs keep with a printer.
#include <cstring>
#include <span>

#include "platform/kernel/errors.h"
#include "platform/kernel/internal.h"
#include "platform/spooler/printers.h"

namespace kvp
{

namespace
{
DWORD ReadValue(const Printer &printer, LPCWSTR name, LPDWORD lpType, LPBYTE lpData, DWORD cb,
                LPDWORD lpcbNeeded)
{
    if (!printer.store->Find(printer.strKey))
        return ERROR_INVALID_PRINTER_NAME;
    const auto value = printer.store->Value(printer.strKey, FoldName(name));
    if (!value)
        return ERROR_FILE_NOT_FOUND;
    const auto cbValue = static_cast<DWORD>(value->data.size());
    *lpcbNeeded = cbValue;
    if (lpType)
        *lpType = value->dwType;
    if (cb < cbValue || (!lpData && cbValue))
        return ERROR_MORE_DATA;
    if (!lpData)
        return ERROR_SUCCESS;
    std::memcpy(lpData, value->data.data(), cbValue);
    SpoilRest(lpData + cbValue, cb - cbValue);
    return ERROR_SUCCESS;
}

DWORD WriteValue(const Printer &printer, LPCWSTR name, DWORD type, std::span<const BYTE> data)
{
    const bool bSet =
        printer.store->SetValue(printer.strKey, FoldName(name), ToUtf8(name), type, data);
    return bSet ? ERROR_SUCCESS : ERROR_INVALID_PRINTER_NAME;
}
} // namespace

} // namespace kvp

using namespace kvp;

DWORD WINAPI GetPrinterDataW(HANDLE hPrinter, LPCWSTR pValueName, LPDWORD pType, LPBYTE pData,
                             DWORD nSize, LPDWORD pcbNeeded)
{
    if (!pValueName || !pcbNeeded)
        return ERROR_INVALID_PARAMETER;
    *pcbNeeded = 0;
    const auto printer = PrinterOf(hPrinter);
    if (!printer)
        return ERROR_INVALID_HANDLE;
    try {
        return ReadValue(*printer, pValueName, pType, pData, nSize, pcbNeeded);
    } catch (const StoreFailure &failure) {
        return failure.dwCode;
    }
}

DWORD WINAPI SetPrinterDataW(HANDLE hPrinter, LPCWSTR pValueName, DWORD Type, LPBYTE pData,
                             DWORD cbData)
{
    if (!pValueName || (!pData && cbData))
        return ERROR_INVALID_PARAMETER;
    const auto printer = PrinterOf(hPrinter);
    if (!printer)
        return ERROR_INVALID_HANDLE;
    try {
        return WriteValue(*printer, pValueName, Type, {pData, cbData});
    } catch (const StoreFailure &failure) {
        return failure.dwCode;
    }
}
