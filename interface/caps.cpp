// What a printer can do: one row and one function per query. A query without a row is not
// answered.
#include <algorithm>
#include <iterator>

#include "datafile/loader.h"
#include "datafile/queries.h"
#include "datafile/records.h"
#include "interface/entry.h"
#include "interface/opening.h"
#include "settings/merge.h"

static constexpr DWORD NO_ANSWER = 0xFFFFFFFF;

namespace
{

struct Request {
    const DriverDevMode *lpDM;
    const PrinterRecordHead *lpPrinterRecord; // null when the model has none
    LPVOID lpOutput;                          // null: the count alone
    HANDLE hPrinter;
};

DWORD Fields(const Request &request)
{
    return request.lpDM->dm.dmFields;
}

DWORD PublicSize(const Request &request)
{
    return request.lpDM->dm.dmSize;
}

DWORD DriverExtra(const Request &request)
{
    return request.lpDM->dm.dmDriverExtra;
}

DWORD SpecVersion(const Request &request)
{
    return request.lpDM->dm.dmSpecVersion;
}

DWORD DriverVersion(const Request &request)
{
    return request.lpDM->dm.dmDriverVersion;
}

DWORD Papers(const Request &request)
{
    return Get_PaperIndexs(request.lpDM, static_cast<WORD *>(request.lpOutput));
}

DWORD PaperNames(const Request &request)
{
    if (!request.lpOutput)
        return Papers(request);
    return Get_PaperNames(request.lpDM, static_cast<LPWSTR>(request.lpOutput), request.hPrinter);
}

DWORD PaperSizes(const Request &request)
{
    if (!request.lpOutput)
        return Papers(request);
    // The list of sizes is asked for but not read: the answer depends on whether it can be had.
    if (!GlobalPtr<void>(KVGetResource(1, RESOURCE_MMPS, request.lpDM)))
        return NO_ANSWER;
    return Get_PaperSize(request.lpDM, static_cast<PaperSize *>(request.lpOutput));
}

DWORD Bins(const Request &request)
{
    return Get_BinIndexs(request.lpDM, static_cast<WORD *>(request.lpOutput));
}

DWORD BinNames(const Request &request)
{
    if (!request.lpOutput)
        return Bins(request);
    return Get_BinNames(request.lpDM, static_cast<LPWSTR>(request.lpOutput), request.hPrinter);
}

DWORD NoDuplex(const Request &)
{
    return 0;
}

// Degrees by which portrait is turned to become landscape.
DWORD LandscapeRotation(const Request &)
{
    return 270;
}

DWORD MaxCopies(const Request &request)
{
    if (!request.lpPrinterRecord)
        return NO_ANSWER;
    return static_cast<DWORD>(LONG{request.lpPrinterRecord->wMaxCopies});
}

constexpr struct Query {
    WORD wQuery;
    DWORD (*answer)(const Request &);
} aQueries[] = {
    {DC_FIELDS, Fields},     {DC_PAPERS, Papers},         {DC_PAPERSIZE, PaperSizes},
    {DC_BINS, Bins},         {DC_DUPLEX, NoDuplex},       {DC_SIZE, PublicSize},
    {DC_EXTRA, DriverExtra}, {DC_VERSION, SpecVersion},   {DC_DRIVER, DriverVersion},
    {DC_BINNAMES, BinNames}, {DC_PAPERNAMES, PaperNames}, {DC_ORIENTATION, LandscapeRotation},
    {DC_COPIES, MaxCopies},
};

DWORD Answer(WORD wQuery, const Request &request)
{
    const auto *row = std::ranges::find(aQueries, wQuery, &Query::wQuery);
    return row == std::end(aQueries) ? NO_ANSWER : row->answer(request);
}

} // namespace

DWORD WINAPI DrvDeviceCapabilities(HANDLE hPrinter, LPWSTR, WORD wQuery, LPVOID lpOutput,
                                   DriverDevMode *lpIn)
{
    OpenedPrinter printer;
    const Opening opened = OpenModel(hPrinter, &printer);
    // A model without a printer record still has papers and sources to tell of.
    if (opened != Opening::Done && opened != Opening::NoPrinterRecord)
        return NO_ANSWER;
    DWORD dwAnswer = NO_ANSWER;
    if (FillSettings(hPrinter, &printer) == Opening::Done) {
        const auto *lpRecord = static_cast<PrinterRecordHead *>(printer.printerRecord.get());
        KVMergeDevMode(&printer.dm, lpIn, printer.printerRecord.get(), hPrinter);
        dwAnswer = Answer(wQuery, {&printer.dm, lpRecord, lpOutput, hPrinter});
    }
    Free_DATFile(&printer.dm);
    return dwAnswer;
}
