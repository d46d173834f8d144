// The commands that get a whole record from the driver or decode one from a file.
#include <fmt/format.h>

#include "host/commands.h"
#include "host/driver.h"
#include "host/failure.h"
#include "host/record.h"

namespace
{
constexpr LONG RESULT_CANCEL = 2;

// As applications do: first ask how large a record is, then have it filled.
void CheckRecordSize(const Driver &driver, OpenedPrinter &printer)
{
    const LONG cb = driver.DrvDocumentProperties(nullptr, printer.hPrinter, printer.strWide.data(),
                                                 nullptr, nullptr, 0);
    if (cb != static_cast<LONG>(sizeof(DriverDevMode)))
        throw Failure(EXIT_REFUSED, fmt::format("the driver's records have {} bytes, not {}: "
                                                "install the one that came with this program",
                                                cb, sizeof(DriverDevMode)));
}

// With the settings sheet, as the command asked for it. The driver's result.
LONG Prompt(const Driver &driver, OpenedPrinter &printer, bool advanced, DriverDevMode *lpOut,
            DriverDevMode *lpIn)
{
    LONG nResult;
    if (advanced) {
        nResult = driver.DrvAdvancedDocumentProperties(nullptr, printer.hPrinter,
                                                       printer.strWide.data(), lpOut, lpIn);
        NoteResult("DrvAdvancedDocumentProperties", nResult);
    } else {
        nResult =
            driver.DrvDocumentProperties(nullptr, printer.hPrinter, printer.strWide.data(), lpOut,
                                         lpIn, DM_COPY | DM_PROMPT | (lpIn ? DM_MODIFY : 0));
        NoteResult("DrvDocumentProperties", nResult);
    }
    if (nResult <= 0)
        throw Failure(EXIT_REFUSED,
                      fmt::format("the driver gave {} instead of showing the settings of \"{}\": "
                                  "use --no-prompt, or check that its model's files are installed",
                                  nResult, printer.strName));
    return nResult;
}
} // namespace

int ShowSettings(const Request &request)
{
    std::optional<DriverDevMode> in = ReadRecordIfNamed(request.strIn);
    OpenedPrinter printer(request.strPrinter);
    const Driver driver;
    CheckRecordSize(driver, printer);
    DriverDevMode out{};
    LONG nResult = 0;
    if (request.bNoPrompt)
        out = DocumentSettings(driver, printer, in);
    else
        nResult = Prompt(driver, printer, request.bAdvanced, &out, in ? &*in : nullptr);
    WriteRecordIfNamed(request.strOut, out);
    PrintRecord(out, request.bJson);
    return nResult == RESULT_CANCEL ? EXIT_CANCELLED : EXIT_DONE;
}

// The call's own result is the same whatever happened, so the settings are asked for first: a
// driver that cannot give them is known to have failed.
int ShowProperties(const Request &request)
{
    OpenedPrinter printer(request.strPrinter);
    const Driver driver;
    DocumentSettings(driver, printer, std::nullopt);
    NoteResult("PrinterProperties", driver.PrinterProperties(nullptr, printer.hPrinter));
    return EXIT_DONE;
}

int ShowFile(const Request &request)
{
    const DriverDevMode record = ReadRecord(request.strFile);
    PrintRecord(record, request.bJson);
    if (const std::vector<std::string> lines = Strangeness(record);
        !lines.empty() && !request.bJson)
        fmt::print("\nNot a record of this driver: {}\n", fmt::join(lines, ", "));
    return EXIT_DONE;
}
