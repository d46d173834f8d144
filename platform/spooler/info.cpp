// What the spooler tells of a printer, its driver and the driver directory: structures with their
// texts behind them in the caller's buffer.
#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "platform/kernel/errors.h"
#include "platform/kernel/internal.h"
#include "platform/kernel/machine.h"
#include "platform/spooler/printers.h"

namespace kvp
{

namespace
{
constexpr DWORD DRIVER_INTERFACE = 1;
constexpr const char *PORT = "LPT1:";
constexpr const char *ENVIRONMENT = "Windows NT x86";
constexpr size_t ALIGNMENT = 8;

// A structure being laid out for a buffer: the structure first, then what its pointers name. The
// pointers are set for the place where the whole will lie. The buffer's own address decides how
// well the parts are aligned; inside it each stands at a multiple of its width.
template <class Structure, class Char>
class Layout
{
  public:
    explicit Layout(LPBYTE buffer) : pBuffer(buffer), bytes(sizeof(Structure)) {}

    Char *Text(const std::basic_string<Char> &text)
    {
        return static_cast<Char *>(
            Append(text.c_str(), (text.size() + 1) * sizeof(Char), sizeof(Char)));
    }

    // Room for as much as the record says of itself is kept behind a shorter one, zeroed: who
    // trusts its sizes stays inside the buffer.
    DEVMODEW *Record(const std::vector<uint8_t> &record)
    {
        if (record.empty())
            return nullptr;
        DEVMODEW head{};
        std::memcpy(&head, record.data(), std::min(record.size(), sizeof head));
        const size_t cbSaid = size_t{head.dmSize} + head.dmDriverExtra;
        void *pRecord = Append(record.data(), record.size(), ALIGNMENT);
        const size_t cbAtLeast = std::max(cbSaid, sizeof head);
        if (record.size() < cbAtLeast)
            bytes.resize(bytes.size() + cbAtLeast - record.size());
        return static_cast<DEVMODEW *>(pRecord);
    }

    // Copies the whole out, the structure at its head, or tells the size needed.
    BOOL Deliver(const Structure &head, DWORD cbBuf, LPDWORD pcbNeeded)
    {
        *pcbNeeded = static_cast<DWORD>(bytes.size());
        if (!pBuffer || cbBuf < bytes.size())
            return Fail(ERROR_INSUFFICIENT_BUFFER, FALSE);
        std::memcpy(bytes.data(), &head, sizeof head);
        std::memcpy(pBuffer, bytes.data(), bytes.size());
        SpoilRest(pBuffer + bytes.size(), cbBuf - bytes.size());
        return TRUE;
    }

  private:
    void *Append(const void *data, size_t cb, size_t alignment)
    {
        const size_t cbAt = (bytes.size() + alignment - 1) / alignment * alignment;
        const auto *from = static_cast<const uint8_t *>(data);
        bytes.resize(cbAt);
        bytes.insert(bytes.end(), from, from + cb);
        return reinterpret_cast<void *>(reinterpret_cast<uintptr_t>(pBuffer) + cbAt);
    }

    LPBYTE pBuffer; // null for a size query: the pointers then go nowhere
    std::vector<uint8_t> bytes;
};

// The texts of a printer in one character type.
template <class Char>
struct PrinterTexts {
    std::basic_string<Char> strServer, strName, strDriver, strPort;
};

PrinterTexts<WCHAR> WideTexts(const PrinterRow &row)
{
    return {row.strServer.empty() ? std::u16string() : u"\\\\" + row.strServer, row.strName,
            row.strDriver, ToWide(PORT)};
}

PrinterTexts<CHAR> AnsiTexts(const PrinterRow &row)
{
    const PrinterTexts<WCHAR> wide = WideTexts(row);
    return {WideToAnsi(wide.strServer), WideToAnsi(wide.strName), WideToAnsi(wide.strDriver), PORT};
}

template <class Info, class Char>
Info LayOutTexts(Layout<Info, Char> &layout, const PrinterTexts<Char> &texts)
{
    Info info{};
    if (!texts.strServer.empty()) // none: the printer is this machine's own
        info.pServerName = layout.Text(texts.strServer);
    info.pPrinterName = layout.Text(texts.strName);
    info.pShareName = layout.Text({});
    info.pPortName = layout.Text(texts.strPort);
    info.pDriverName = layout.Text(texts.strDriver);
    info.pComment = layout.Text({});
    info.pLocation = layout.Text({});
    return info;
}

// What every reader of a printer checks first; null when the call fails.
std::shared_ptr<const PrinterRow> RowForReader(HANDLE hPrinter, DWORD level, LPDWORD pcbNeeded)
{
    DWORD dwError = ERROR_INVALID_PARAMETER;
    std::shared_ptr<const PrinterRow> row;
    if (pcbNeeded) {
        *pcbNeeded = 0;
        dwError = ERROR_INVALID_LEVEL;
        if (level == 2)
            row = RowOf(hPrinter, &dwError);
    }
    if (!row)
        SetLastError(dwError);
    return row;
}

std::u16string Lowered(LPCWSTR text)
{
    return ToWide(FoldName(text));
}
} // namespace

} // namespace kvp

using namespace kvp;

BOOL WINAPI GetPrinterW(HANDLE hPrinter, DWORD Level, LPBYTE pPrinter, DWORD cbBuf,
                        LPDWORD pcbNeeded)
{
    const auto row = RowForReader(hPrinter, Level, pcbNeeded);
    if (!row)
        return FALSE;
    Layout<PRINTER_INFO_2W, WCHAR> layout(pPrinter);
    DEVMODEW *pDevMode = layout.Record(row->record);
    PRINTER_INFO_2W info = LayOutTexts(layout, WideTexts(*row));
    info.pDevMode = pDevMode;
    return layout.Deliver(info, cbBuf, pcbNeeded);
}

// The texts only: an ANSI settings record has another layout than the stored one, and nobody asks
// for it.
BOOL WINAPI GetPrinterA(HANDLE hPrinter, DWORD Level, LPBYTE pPrinter, DWORD cbBuf,
                        LPDWORD pcbNeeded)
{
    const auto row = RowForReader(hPrinter, Level, pcbNeeded);
    if (!row)
        return FALSE;
    Layout<PRINTER_INFO_2A, CHAR> layout(pPrinter);
    const PRINTER_INFO_2A info = LayOutTexts(layout, AnsiTexts(*row));
    return layout.Deliver(info, cbBuf, pcbNeeded);
}

BOOL WINAPI GetPrinterDriverW(HANDLE hPrinter, LPCWSTR pEnvironment, DWORD Level,
                              LPBYTE pDriverInfo, DWORD cbBuf, LPDWORD pcbNeeded)
{
    const auto row = RowForReader(hPrinter, Level, pcbNeeded);
    if (!row)
        return FALSE;
    const std::u16string strEnvironment = ToWide(ENVIRONMENT);
    if (pEnvironment && *pEnvironment && Lowered(pEnvironment) != Lowered(strEnvironment.c_str()))
        return Fail(ERROR_INVALID_ENVIRONMENT, FALSE);
    Layout<DRIVER_INFO_2W, WCHAR> layout(pDriverInfo);
    DRIVER_INFO_2W info{};
    info.cVersion = DRIVER_INTERFACE;
    info.pName = layout.Text(row->strDriver);
    info.pEnvironment = layout.Text(strEnvironment);
    // Which files a driver consists of, the store does not know.
    info.pDriverPath = layout.Text({});
    info.pDataFile = layout.Text({});
    info.pConfigFile = layout.Text({});
    return layout.Deliver(info, cbBuf, pcbNeeded);
}

// Drivers lie on this machine, also those of printers on a server.
BOOL WINAPI GetPrinterDriverDirectoryA(LPCSTR, LPCSTR pEnvironment, DWORD Level,
                                       LPBYTE pDriverDirectory, DWORD cbBuf, LPDWORD pcbNeeded)
{
    if (!pcbNeeded)
        return Fail(ERROR_INVALID_PARAMETER, FALSE);
    *pcbNeeded = 0;
    if (Level != 1)
        return Fail(ERROR_INVALID_LEVEL, FALSE);
    if (pEnvironment && *pEnvironment && strcasecmp(pEnvironment, ENVIRONMENT) != 0)
        return Fail(ERROR_INVALID_ENVIRONMENT, FALSE);
    constexpr DWORD cbNeeded = sizeof PRINTER_DRIVER_DIRECTORY;
    *pcbNeeded = cbNeeded;
    if (!pDriverDirectory || cbBuf < cbNeeded)
        return Fail(ERROR_INSUFFICIENT_BUFFER, FALSE);
    std::memcpy(pDriverDirectory, PRINTER_DRIVER_DIRECTORY, cbNeeded);
    SpoilRest(pDriverDirectory + cbNeeded, cbBuf - cbNeeded);
    return TRUE;
}
