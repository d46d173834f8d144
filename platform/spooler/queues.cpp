// The spooler's administration: printers added, removed and listed, and their default records.
#include <fmt/format.h>

#include "platform/kernel/errors.h"
#include "platform/kernel/internal.h"
#include "platform/spooler/store.h"

namespace kvp
{

namespace
{
constexpr size_t LONGEST_NAME = 220;          // characters
constexpr size_t LARGEST_RECORD = 2 * 0xFFFF; // its two sizes are 16 bits each

bool IsAllowed(char16_t unit)
{
    return unit >= 0x20 && unit != 0x7F && unit != u'\\';
}

// Names go into texts with a terminator and into paths of the form \\server\printer.
std::u16string CheckedName(const char *what, const std::string &name)
{
    std::u16string strWide = ToWide(name);
    if (strWide.empty())
        throw SpoolError(fmt::format("the {} is empty: give one", what));
    if (ToUtf8(strWide) != name)
        throw SpoolError(fmt::format("the {} is not UTF-8 text: give it in UTF-8", what));
    if (strWide.size() > LONGEST_NAME)
        throw SpoolError(fmt::format("the {} has {} characters: give one of at most {}", what,
                                     strWide.size(), LONGEST_NAME));
    for (const char16_t unit : strWide)
        if (!IsAllowed(unit))
            throw SpoolError(fmt::format("the {} has a control character or a backslash in it: "
                                         "leave that out",
                                         what));
    return strWide;
}

[[noreturn]] void NoSuchPrinter(const std::string &name)
{
    throw StoreFailure(fmt::format("there is no printer \"{}\": add it first, or give the name of "
                                   "one that there is",
                                   name),
                       ERROR_INVALID_PRINTER_NAME);
}
} // namespace

void AddQueue(const std::string &name, const std::string &driver, const std::string &server)
{
    const std::u16string strWide = CheckedName("printer's name", name);
    CheckedName("driver's name", driver);
    const std::string strServer = server.starts_with("\\\\") ? server.substr(2) : server;
    if (!server.empty())
        CheckedName("server's name", strServer);
    if (!CurrentStore()->Add(FoldName(strWide), {name, driver, strServer, false}))
        throw SpoolError(fmt::format("there is a printer \"{}\" already: remove it first, or "
                                     "choose another name",
                                     name));
}

void RemoveQueue(const std::string &name)
{
    if (!CurrentStore()->Remove(FoldName(ToWide(name))))
        NoSuchPrinter(name);
}

std::vector<Queue> Queues()
{
    return CurrentStore()->List();
}

std::vector<uint8_t> QueueDefault(const std::string &name)
{
    const auto row = CurrentStore()->Find(FoldName(ToWide(name)));
    if (!row)
        NoSuchPrinter(name);
    return row->record;
}

void SetQueueDefault(const std::string &name, std::span<const uint8_t> record)
{
    if (record.size() > LARGEST_RECORD)
        throw SpoolError(fmt::format("a settings record of {} bytes is too large: give one of at "
                                     "most {}",
                                     record.size(), LARGEST_RECORD));
    if (!CurrentStore()->SetRecord(FoldName(ToWide(name)), record))
        NoSuchPrinter(name);
}

} // namespace kvp
