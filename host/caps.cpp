// What a printer can do: the driver's capability queries by name, their answers put together as
// tables of papers and sources.
#include <algorithm>
#include <charconv>
#include <cstring>
#include <map>

#include <fmt/format.h>

#include "host/commands.h"
#include "host/driver.h"
#include "host/failure.h"
#include "host/record.h"

namespace
{
constexpr DWORD NOT_ANSWERED = 0xFFFFFFFF;
// Entries kept free behind those that were counted: the user may save papers in between.
constexpr size_t SPARE_ENTRIES = 256;

enum class Answers { Number, Flags, Ids, Sizes, Names };

struct Query {
    const char *lpszName;
    WORD wQuery;
    Answers answers;
    size_t cbEntry = 0; // of lists
};

constexpr Query aQueries[] = {
    {"fields", DC_FIELDS, Answers::Flags},
    {"papers", DC_PAPERS, Answers::Ids, 2},
    {"papersize", DC_PAPERSIZE, Answers::Sizes, 8},
    {"minextent", DC_MINEXTENT, Answers::Number},
    {"maxextent", DC_MAXEXTENT, Answers::Number},
    {"bins", DC_BINS, Answers::Ids, 2},
    {"duplex", DC_DUPLEX, Answers::Number},
    {"size", DC_SIZE, Answers::Number},
    {"extra", DC_EXTRA, Answers::Number},
    {"version", DC_VERSION, Answers::Number},
    {"driver", DC_DRIVER, Answers::Number},
    {"binnames", DC_BINNAMES, Answers::Names, 48},
    {"enumresolutions", DC_ENUMRESOLUTIONS, Answers::Number},
    {"filedependencies", DC_FILEDEPENDENCIES, Answers::Number},
    {"truetype", DC_TRUETYPE, Answers::Number},
    {"papernames", DC_PAPERNAMES, Answers::Names, 128},
    {"orientation", DC_ORIENTATION, Answers::Number},
    {"copies", DC_COPIES, Answers::Number},
};

struct Answer {
    const Query *query;
    DWORD dwResult;
    std::vector<uint8_t> entries; // dwResult of them

    size_t Count() const { return query->cbEntry ? entries.size() / query->cbEntry : 0; }
    template <class Value>
    Value At(size_t offset) const
    {
        Value value;
        std::memcpy(&value, entries.data() + offset, sizeof value);
        return value;
    }
};

using AnswerMap = std::map<WORD, Answer>;

// ---- asking ---------------------------------------------------------------------------------

const Query &QueryNamed(const std::string &name)
{
    WORD wNumber = 0;
    const char *pEnd = name.data() + name.size();
    if (std::from_chars(name.data(), pEnd, wNumber).ptr != pEnd)
        wNumber = 0;
    for (const Query &query : aQueries)
        if (query.lpszName == name || query.wQuery == wNumber)
            return query;
    std::string strNames;
    for (const Query &query : aQueries)
        strNames += fmt::format(" {}", query.lpszName);
    throw Failure(EXIT_USAGE, fmt::format("there is no query \"{}\": ask for numbers 1 to 18 or{}",
                                          name, strNames));
}

std::vector<const Query *> QueriesAsked(const std::vector<std::string> &names)
{
    std::vector<const Query *> asked;
    asked.reserve(std::size(aQueries));
    for (const std::string &name : names)
        asked.push_back(&QueryNamed(name));
    if (names.empty())
        for (const Query &query : aQueries)
            asked.push_back(&query);
    return asked;
}

Answer Ask(const Driver &driver, OpenedPrinter &printer, const Query &query, DriverDevMode *lpIn)
{
    Answer answer{&query, 0, {}};
    const auto call = [&](LPVOID lpOutput) {
        answer.dwResult = driver.DrvDeviceCapabilities(printer.hPrinter, printer.strWide.data(),
                                                       query.wQuery, lpOutput, lpIn);
        NoteResult("DrvDeviceCapabilities", static_cast<LONG>(answer.dwResult));
    };
    call(nullptr);
    if (!query.cbEntry || answer.dwResult == NOT_ANSWERED || answer.dwResult == 0)
        return answer;
    const size_t nRoom = answer.dwResult + SPARE_ENTRIES;
    answer.entries.resize(nRoom * query.cbEntry);
    call(answer.entries.data());
    const size_t nGot = answer.dwResult == NOT_ANSWERED ? 0 : answer.dwResult;
    answer.entries.resize(std::min(nGot, nRoom) * query.cbEntry);
    return answer;
}

// ---- entries --------------------------------------------------------------------------------

std::string NameAt(const Answer &answer, size_t at)
{
    const size_t cbEntry = answer.query->cbEntry;
    std::u16string strName;
    for (size_t cb = 0; cb < cbEntry; cb += sizeof(char16_t)) {
        const auto unit = answer.At<char16_t>(at * cbEntry + cb);
        if (unit == 0)
            break;
        strName += unit;
    }
    return kvp::ToUtf8(strName);
}

struct Extent {
    int32_t nWidth, nLength; // 0.1 mm
};

Extent SizeAt(const Answer &answer, size_t at)
{
    return answer.At<Extent>(at * sizeof(Extent));
}

Json EntryToJson(const Answer &answer, size_t at)
{
    switch (answer.query->answers) {
    case Answers::Names: return NameAt(answer, at);
    case Answers::Sizes: {
        const Extent size = SizeAt(answer, at);
        return {{"width", size.nWidth}, {"length", size.nLength}};
    }
    default: return answer.At<WORD>(at * sizeof(WORD));
    }
}

Json AnswerToJson(const Answer &answer)
{
    if (answer.dwResult == NOT_ANSWERED)
        return nullptr;
    if (!answer.query->cbEntry)
        return answer.dwResult;
    Json list = Json::array();
    for (size_t i = 0; i < answer.Count(); ++i)
        list.push_back(EntryToJson(answer, i));
    return list;
}

// ---- tables for people ----------------------------------------------------------------------

std::string EntryText(const Answer &answer, size_t at)
{
    switch (answer.query->answers) {
    case Answers::Names: return Printable(NameAt(answer, at));
    case Answers::Sizes: {
        const Extent size = SizeAt(answer, at);
        return fmt::format("{:.1f} x {:.1f} mm", size.nWidth / 10.0, size.nLength / 10.0);
    }
    default: return fmt::format("{:>5}", answer.At<WORD>(at * sizeof(WORD)));
    }
}

// The lists that tell of the same things, side by side, as far as they were asked for.
void PrintTable(const AnswerMap &answers, const char *heading,
                std::initializer_list<std::pair<WORD, size_t>> columns)
{
    std::vector<std::string> lines;
    bool bAsked = false;
    for (const auto &[wQuery, nWidth] : columns) {
        const auto answer = answers.find(wQuery);
        if (answer == answers.end() || answer->second.dwResult == NOT_ANSWERED)
            continue;
        bAsked = true;
        lines.resize(std::max(lines.size(), answer->second.Count()));
        for (size_t i = 0; i < answer->second.Count(); ++i)
            lines[i] += fmt::format("  {:<{}}", EntryText(answer->second, i), nWidth);
    }
    if (!bAsked)
        return;
    fmt::print("{} ({})\n", heading, lines.size());
    for (const std::string &line : lines)
        fmt::print("{}\n", line.substr(0, line.find_last_not_of(' ') + 1));
    fmt::print("\n");
}

void PrintNumbers(const AnswerMap &answers)
{
    for (const auto &[wQuery, answer] : answers) {
        const char *lpszName = answer.query->lpszName;
        if (answer.dwResult == NOT_ANSWERED)
            fmt::print("{:<18}not answered\n", lpszName);
        else if (answer.query->answers == Answers::Flags)
            fmt::print("{:<18}0x{:08X}\n", lpszName, answer.dwResult);
        else if (answer.query->answers == Answers::Number)
            fmt::print("{:<18}{}\n", lpszName, static_cast<LONG>(answer.dwResult));
    }
}

void PrintText(const AnswerMap &answers)
{
    PrintTable(answers, "Papers", {{DC_PAPERS, 0}, {DC_PAPERNAMES, 32}, {DC_PAPERSIZE, 0}});
    PrintTable(answers, "Sources", {{DC_BINS, 0}, {DC_BINNAMES, 0}});
    PrintNumbers(answers);
}
} // namespace

int ShowCapabilities(const Request &request)
{
    const std::vector<const Query *> asked = QueriesAsked(request.aQueries);
    std::optional<DriverDevMode> in = ReadRecordIfNamed(request.strIn);
    OpenedPrinter printer(request.strPrinter);
    const Driver driver;
    AnswerMap answers;
    for (const Query *query : asked)
        answers[query->wQuery] = Ask(driver, printer, *query, in ? &*in : nullptr);
    Json json = Json::object();
    for (const auto &[wQuery, answer] : answers)
        json[answer.query->lpszName] = AnswerToJson(answer);
    if (request.bJson)
        fmt::print("{}", JsonText(json));
    else
        PrintText(answers);
    if (std::ranges::any_of(json, [](const Json &value) { return !value.is_null(); }))
        return EXIT_DONE;
    throw Failure(EXIT_REFUSED, fmt::format("the driver gave -1 for \"{}\": it does not answer "
                                            "this query, or its model's files are not installed",
                                            request.strPrinter));
}
