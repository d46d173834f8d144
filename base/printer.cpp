// What the spooler knows of a printer, read and stored through its calls.
#include "base/printer.h"

#include <cstring>

#include "base/text.h"

static constexpr WCHAR wszValueName[] = u"KVDeviceMode";

BOOL KVGetPrinterInfo(HANDLE hPrinter, LPWSTR lpModelName)
{
    const auto info = ReadSized<DRIVER_INFO_2W>([=](LPBYTE lpBuffer, DWORD cb, DWORD *lpcb) {
        return GetPrinterDriverW(hPrinter, nullptr, 2, lpBuffer, cb, lpcb);
    });
    if (!info || !info->pName || KVWStrlen(info->pName) >= sizeof(DriverDevMode::wszModelName))
        return FALSE;
    KVWStrcpy(lpModelName, info->pName);
    return TRUE;
}

BOOL KVGetPrinterName(HANDLE hPrinter, LPWSTR lpDeviceName)
{
    const auto info = ReadSized<PRINTER_INFO_2W>([=](LPBYTE lpBuffer, DWORD cb, DWORD *lpcb) {
        return GetPrinterW(hPrinter, 2, lpBuffer, cb, lpcb);
    });
    if (!info || !info->pPrinterName)
        return FALSE;
    constexpr DWORD cbField = sizeof(PublicDevMode::dmDeviceName);
    if (KVWStrlen(info->pPrinterName) < cbField)
        KVWStrcpy(lpDeviceName, info->pPrinterName);
    else
        KVMemcpy(lpDeviceName, info->pPrinterName, cbField);
    return TRUE;
}

GlobalPtr<PRINTER_INFO_2A> PrinterInfo(HANDLE hPrinter)
{
    return ReadSized<PRINTER_INFO_2A>([=](LPBYTE lpBuffer, DWORD cb, DWORD *lpcb) {
        return GetPrinterA(hPrinter, 2, lpBuffer, cb, lpcb);
    });
}

LPSTR GetPrinterDriverPath(HANDLE hPrinter)
{
    const auto info = PrinterInfo(hPrinter);
    GlobalPtr<char> directory;
    if (info)
        directory = ReadSized<char>([&](LPBYTE lpBuffer, DWORD cb, DWORD *lpcb) {
            return GetPrinterDriverDirectoryA(info->pServerName, nullptr, 1, lpBuffer, cb, lpcb);
        });
    const size_t cch = directory ? std::strlen(directory.get()) : 0;
    auto *lpPath = static_cast<LPSTR>(LocalAlloc(LMEM_FIXED | LMEM_ZEROINIT, cch + 2));
    if (lpPath && directory) {
        KVMemcpy(lpPath, directory.get(), cch);
        lpPath[cch] = '\\';
    }
    return lpPath;
}

BOOL KVGetPrinterData(HANDLE hPrinter, DriverDevMode *lpDM)
{
    DWORD dwType = 0, cb = 0;
    BYTE abProbe[4];
    GetPrinterDataW(hPrinter, wszValueName, &dwType, abProbe, sizeof abProbe, &cb);
    if (cb == 0)
        return FALSE;
    const GlobalPtr<DriverDevMode> value = NewGlobal<DriverDevMode>(cb);
    if (!value || GetPrinterDataW(hPrinter, wszValueName, &dwType,
                                  reinterpret_cast<LPBYTE>(value.get()), cb, &cb) != ERROR_SUCCESS)
        return FALSE;
    if (cb != KV_DEVMODESIZE || value->dm.dmDriverVersion != KV_DRIVERVERSION)
        return FALSE;
    KVMemcpy(lpDM, value.get(), KV_DEVMODESIZE);
    return TRUE;
}

BOOL KVSetPrinterData(HANDLE hPrinter, const DriverDevMode *lpDM)
{
    // The call only reads; its parameter merely lacks the const.
    auto *lpBytes = reinterpret_cast<LPBYTE>(const_cast<DriverDevMode *>(lpDM));
    return SetPrinterDataW(hPrinter, wszValueName, REG_BINARY, lpBytes, KV_DEVMODESIZE) ==
           ERROR_SUCCESS;
}
