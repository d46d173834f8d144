// The commands on the spooler's printers and the records it keeps for them.
#include <algorithm>

#include <fmt/format.h>

#include "host/commands.h"
#include "host/failure.h"
#include "host/record.h"
#include "platform/host.h"

int AddPrinter(const Request &request)
{
    kvp::AddQueue(request.strPrinter, request.strModel);
    fmt::print("printer \"{}\" added, driver \"{}\"\n", request.strPrinter, request.strModel);
    return EXIT_DONE;
}

int RemovePrinter(const Request &request)
{
    kvp::RemoveQueue(request.strPrinter);
    fmt::print("printer \"{}\" removed\n", request.strPrinter);
    return EXIT_DONE;
}

static Json PrintersToJson(const std::vector<kvp::Queue> &queues)
{
    Json list = Json::array();
    for (const kvp::Queue &queue : queues)
        list.push_back({{"name", queue.strName},
                        {"driver", queue.strDriver},
                        {"server", queue.strServer.empty() ? Json() : Json(queue.strServer)},
                        {"default", queue.bHasDefault}});
    return list;
}

int ListPrinters(const Request &request)
{
    const std::vector<kvp::Queue> queues = kvp::Queues();
    if (request.bJson) {
        fmt::print("{}", JsonText(PrintersToJson(queues)));
        return EXIT_DONE;
    }
    if (queues.empty())
        fmt::print("no printers: add one with \"kvhost add-printer NAME --driver MODEL\"\n");
    size_t nWidth = 0;
    for (const kvp::Queue &queue : queues)
        nWidth = std::max(nWidth, queue.strName.size());
    for (const kvp::Queue &queue : queues)
        fmt::print("{:<{}}  {}{}\n", Printable(queue.strName), nWidth, Printable(queue.strDriver),
                   queue.bHasDefault ? "  (has a default record)" : "");
    return EXIT_DONE;
}

static std::vector<uint8_t> NeededDefault(const std::string &printer)
{
    std::vector<uint8_t> record = kvp::QueueDefault(printer);
    if (record.empty())
        throw Failure(EXIT_REFUSED, fmt::format("no default record is kept for \"{}\": keep one "
                                                "with --in",
                                                printer));
    return record;
}

int WorkOnDefault(const Request &request)
{
    const std::string &strPrinter = request.strPrinter;
    if (request.bClear) {
        kvp::SetQueueDefault(strPrinter, {});
        fmt::print("no default record is kept for \"{}\" any more\n", strPrinter);
        return EXIT_DONE;
    }
    if (const auto in = ReadRecordIfNamed(request.strIn)) {
        kvp::SetQueueDefault(strPrinter, BytesOf(*in));
        fmt::print("{} is the default record of \"{}\" now\n", request.strIn, strPrinter);
    }
    if (!request.strOut.empty())
        WriteFile(request.strOut, NeededDefault(strPrinter));
    if (!request.strIn.empty() || !request.strOut.empty())
        return EXIT_DONE;
    const std::vector<uint8_t> record = NeededDefault(strPrinter);
    if (record.size() != sizeof(DriverDevMode))
        throw Failure(EXIT_REFUSED, fmt::format("the default record of \"{}\" has {} bytes, not "
                                                "{}: clear it or keep another",
                                                strPrinter, record.size(), sizeof(DriverDevMode)));
    DriverDevMode devMode{};
    std::copy(record.begin(), record.end(), reinterpret_cast<uint8_t *>(&devMode));
    PrintRecord(devMode, request.bJson);
    return EXIT_DONE;
}
