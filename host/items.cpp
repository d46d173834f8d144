// Single settings by item, through the functions for companion programs: got, ranged and set in
// the printer's document settings.
#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>

#include <fmt/format.h>

#include "host/commands.h"
#include "host/driver.h"
#include "host/failure.h"
#include "host/record.h"

namespace
{
using Words = std::array<uint16_t, 16>; // room for every answer

constexpr size_t NO_ARRAY = 0;

// An item's words by name, in their order; "" for a word that says nothing to people.
struct Item {
    uint32_t dwItem;
    const char *lpszName;
    std::vector<const char *> got;
    std::vector<const char *> ranged;
    const char *lpszArray = "";       // what a range's array holds
    size_t cbPointer = NO_ARRAY;      // where in the range the array's address goes
    size_t nCountWord = 0;            // which word counts the array
    std::vector<size_t> setCounts{1}; // how many values may be given
    bool bByAddress = false;          // set through the address of words
};

const std::array aItems = {
    Item{.dwItem = KVDD_COPIES, .lpszName = "copies", .got = {"copies"}, .ranged = {"largest"}},
    Item{.dwItem = KVDD_ORIENTATION,
         .lpszName = "orientation",
         .got = {"orientation"},
         .ranged = {}},
    Item{.dwItem = KVDD_PAPER,
         .lpszName = "paper",
         .got = {"width", "length", "printableWidth", "printableLength", "left", "top", "paper"},
         .ranged = {"largestWidth", "largestLength", "smallestWidth", "smallestLength", "papers"},
         .lpszArray = "ids",
         .cbPointer = offsetof(KVDDPAPERRANGE, dwIds),
         .nCountWord = 4,
         .setCounts = {1, 3},
         .bByAddress = true},
    Item{.dwItem = KVDD_SOURCE,
         .lpszName = "source",
         .got = {"source"},
         .ranged = {"sources"},
         .lpszArray = "ids",
         .cbPointer = offsetof(KVDDLISTRANGE, dwValues)},
    Item{.dwItem = KVDD_COLOR, .lpszName = "color", .got = {"color"}, .ranged = {"largest"}},
    Item{.dwItem = KVDD_MEDIA,
         .lpszName = "media",
         .got = {"media"},
         .ranged = {"media"},
         .lpszArray = "codes",
         .cbPointer = offsetof(KVDDLISTRANGE, dwValues)},
    Item{.dwItem = KVDD_PRINTMODE,
         .lpszName = "printmode",
         .got = {"mode", "level", "media", "color"},
         .ranged = {"largest"},
         .setCounts = {1, 4},
         .bByAddress = true},
    Item{.dwItem = KVDD_PRINTAREA,
         .lpszName = "printarea",
         .got = {"printarea"},
         .ranged = {"largest"}},
    Item{.dwItem = KVDD_APIFLAG, .lpszName = "apiflag", .got = {"apiflag"}, .ranged = {"largest"}},
};

constexpr struct {
    std::string_view word;
    int nValue;
    std::string_view name;
} aWordNames[] = {
    {"orientation", 1, "portrait"},
    {"orientation", 2, "landscape"},
    {"paper", KV_PAPER_USER, "user-defined size"},
    {"color", 1, "monochrome"},
    {"color", 2, "colour"},
    {"mode", 0, "Advanced"},
    {"mode", 1, "Automatic"},
    {"printarea", 0, "maximum"},
    {"printarea", 1, "centred"},
};

const char *ResultText(int32_t result)
{
    switch (result) {
    case KVDD_UNKNOWN: return "no such item, or not with this action";
    case KVDD_NOT_ALLOWED: return "the model does not allow this";
    case KVDD_NO_DATA: return "the model's files cannot be loaded, or nothing in them fits";
    default: return "failed";
    }
}

// The caller's block with the record behind it, as companion programs lay it out.
struct Block {
    explicit Block(const DriverDevMode &settings) : record(settings)
    {
        block.sDistance = static_cast<int16_t>(reinterpret_cast<const char *>(&record) -
                                               reinterpret_cast<const char *>(&block));
    }
    KVDDBLOCK block{};
    DriverDevMode record;
};

// An array that a 32-bit address can name.
struct LowArray {
    explicit LowArray(size_t count)
        : cb(std::max<size_t>(count, 1) * sizeof(uint16_t)),
          pWords(static_cast<uint16_t *>(kvp::AllocLow(cb)))
    {
        if (!pWords)
            throw Failure(EXIT_REFUSED, "no memory is left below 4 GiB: end other programs");
    }
    ~LowArray() { kvp::FreeLow(pWords, cb); }
    LowArray(const LowArray &) = delete;
    LowArray &operator=(const LowArray &) = delete;
    uint32_t Address() const { return static_cast<uint32_t>(reinterpret_cast<uintptr_t>(pWords)); }

    size_t cb;
    uint16_t *pWords;
};

// What one call gave: its result and, when that is good, named values.
struct Outcome {
    int32_t nResult = 0;
    Json values = Json::object();
};

// ---- the calls ------------------------------------------------------------------------------

Outcome Get(const Driver &driver, Block &block, const Item &item)
{
    Words words{};
    Outcome outcome;
    outcome.nResult = driver.KVDD_GetData(&block, item.dwItem, words.data());
    NoteResult("KVDD_GetData", outcome.nResult);
    for (size_t i = 0; outcome.nResult == KVDD_OK && i < item.got.size(); ++i)
        outcome.values[item.got[i]] = static_cast<int16_t>(words[i]);
    return outcome;
}

int32_t CallRange(const Driver &driver, Block &block, const Item &item, uint32_t array,
                  Words &words)
{
    words = {};
    if (item.cbPointer != NO_ARRAY)
        std::memcpy(reinterpret_cast<char *>(words.data()) + item.cbPointer, &array, sizeof array);
    const int32_t nResult = driver.KVDD_GetRange(&block, item.dwItem, words.data());
    NoteResult("KVDD_GetRange", nResult);
    return nResult;
}

// First without an array, to learn how long it has to be.
Outcome Range(const Driver &driver, Block &block, const Item &item)
{
    Words words{};
    Outcome outcome;
    Json list = Json::array();
    outcome.nResult = CallRange(driver, block, item, 0, words);
    if (outcome.nResult == KVDD_OK && item.cbPointer != NO_ARRAY) {
        const size_t nRoom = words[item.nCountWord];
        const LowArray array(nRoom);
        outcome.nResult = CallRange(driver, block, item, array.Address(), words);
        for (size_t i = 0; i < std::min<size_t>(nRoom, words[item.nCountWord]); ++i)
            list.push_back(array.pWords[i]);
    }
    for (size_t i = 0; outcome.nResult == KVDD_OK && i < item.ranged.size(); ++i)
        outcome.values[item.ranged[i]] = words[i];
    if (outcome.nResult == KVDD_OK && item.cbPointer != NO_ARRAY)
        outcome.values[item.lpszArray] = list;
    return outcome;
}

Outcome Level(const Driver &driver, Block &, const Item &item)
{
    Outcome outcome;
    outcome.nResult = driver.KVDD_GetCmdLevel(nullptr, item.dwItem);
    NoteResult("KVDD_GetCmdLevel", outcome.nResult);
    if (outcome.nResult < 0)
        return outcome;
    outcome.values["level"] = outcome.nResult;
    outcome.nResult = KVDD_OK;
    return outcome;
}

// Words as the functions take them: a paper alone is the third of its words, the rest is zero.
Words WordsToSet(const Item &item, const std::vector<int64_t> &values)
{
    if (std::ranges::find(item.setCounts, values.size()) == item.setCounts.end())
        throw Failure(EXIT_USAGE, fmt::format("{} values for item {}: give {}", values.size(),
                                              item.lpszName, fmt::join(item.setCounts, " or ")));
    Words words{};
    const size_t nFirst = item.dwItem == KVDD_PAPER && values.size() == 1 ? 2 : 0;
    for (size_t i = 0; i < values.size(); ++i) {
        if (values[i] < INT16_MIN || values[i] > UINT16_MAX)
            throw Failure(EXIT_USAGE, fmt::format("the value {} does not fit 16 bits: give one "
                                                  "between {} and {}",
                                                  values[i], INT16_MIN, UINT16_MAX));
        words[nFirst + i] = static_cast<uint16_t>(values[i]);
    }
    return words;
}

// A refused size comes back as the limits that it broke.
std::string LimitsText(const Item &item, int32_t result, const Words &words, bool userSize)
{
    if (item.dwItem != KVDD_PAPER || result != KVDD_NOT_ALLOWED || !userSize)
        return {};
    const auto mm = [&](size_t i) { return static_cast<int16_t>(words[i]) / 10.0; };
    return fmt::format("; it allows {:.1f} to {:.1f} mm wide, {:.1f} to {:.1f} mm long", mm(2),
                       mm(0), mm(3), mm(1));
}

void Set(const Driver &driver, Block &block, const Item &item, const std::vector<int64_t> &values)
{
    Words words = WordsToSet(item, values);
    const bool bUserSize = words[2] == KV_PAPER_USER;
    const auto nValue = item.bByAddress ? reinterpret_cast<intptr_t>(words.data())
                                        : static_cast<intptr_t>(static_cast<int16_t>(words[0]));
    const int32_t nResult = driver.KVDD_SetData(&block, item.dwItem, nValue);
    NoteResult("KVDD_SetData", nResult);
    if (nResult != KVDD_OK)
        throw Failure(EXIT_REFUSED, fmt::format("the driver gave {} for setting item {}: {}{}",
                                                nResult, item.lpszName, ResultText(nResult),
                                                LimitsText(item, nResult, words, bUserSize)));
}

// ---- what was asked for, and the answer -----------------------------------------------------

const Item &ItemNamed(const std::string &name)
{
    uint32_t dwNumber = 0;
    const char *pEnd = name.data() + name.size();
    if (std::from_chars(name.data(), pEnd, dwNumber).ptr != pEnd)
        dwNumber = 0;
    std::string strNames;
    for (const Item &item : aItems) {
        if (item.lpszName == name || item.dwItem == dwNumber)
            return item;
        strNames += fmt::format(" {} ({})", item.dwItem, item.lpszName);
    }
    throw Failure(EXIT_USAGE, fmt::format("there is no item \"{}\": there are{}", name, strNames));
}

std::vector<const Item *> ItemsAsked(const Request &request)
{
    if (!request.strItem.empty())
        return {&ItemNamed(request.strItem)};
    if (request.strAction == "set")
        throw Failure(EXIT_USAGE, "which item is to be set? give it and its value");
    std::vector<const Item *> asked;
    asked.reserve(aItems.size());
    for (const Item &item : aItems)
        asked.push_back(&item);
    return asked;
}

std::string WordText(const Item &item, const std::string &word, const Json &value)
{
    if (value.is_array())
        return fmt::format("{}", fmt::join(value.get<std::vector<int>>(), " "));
    const bool bSize = word.starts_with("largest") || word.starts_with("smallest") ||
                       word.ends_with("idth") || word.ends_with("ength") || word == "left" ||
                       word == "top";
    if (item.dwItem == KVDD_PAPER && bSize)
        return TenthsOfMillimetre(value.get<int>());
    for (const auto &row : aWordNames)
        if (row.word == word && value == row.nValue)
            return fmt::format("{} ({})", value.get<int>(), row.name);
    return value.dump();
}

void PrintOutcome(const Item &item, const Outcome &outcome)
{
    if (outcome.nResult != KVDD_OK) {
        fmt::print("{:>3} {:<12} {} ({})\n", item.dwItem, item.lpszName, outcome.nResult,
                   ResultText(outcome.nResult));
        return;
    }
    bool bFirst = true;
    for (const auto &[strWord, value] : outcome.values.items()) {
        const std::string strHead =
            bFirst ? fmt::format("{:>3} {}", item.dwItem, item.lpszName) : std::string();
        fmt::print("{:<16} {:<16} {}\n", strHead, strWord, WordText(item, strWord, value));
        bFirst = false;
    }
}

Json OutcomeToJson(const Item &item, const Outcome &outcome)
{
    Json json = {{"item", item.dwItem}, {"name", item.lpszName}, {"result", outcome.nResult}};
    if (outcome.nResult == KVDD_OK)
        json["values"] = outcome.values;
    return json;
}

using Answering = Outcome (*)(const Driver &, Block &, const Item &);

Answering AnsweringFor(const std::string &action)
{
    if (action == "range")
        return Range;
    return action == "level" ? Level : Get; // after a set, what holds now
}

// One item's answer alone, several as a list. The last result that was not good, KVDD_OK when
// some answer was.
int32_t Answer(const Driver &driver, Block &block, const std::vector<const Item *> &items,
               const Request &request)
{
    bool bAnyGood = false;
    int32_t nBad = KVDD_OK;
    Json list = Json::array();
    for (const Item *item : items) {
        const Outcome outcome = AnsweringFor(request.strAction)(driver, block, *item);
        if (outcome.nResult == KVDD_OK)
            bAnyGood = true;
        else
            nBad = outcome.nResult;
        list.push_back(OutcomeToJson(*item, outcome));
        if (!request.bJson)
            PrintOutcome(*item, outcome);
    }
    if (request.bJson)
        fmt::print("{}", JsonText(request.strItem.empty() ? list : list[0]));
    return bAnyGood ? KVDD_OK : nBad;
}
} // namespace

int WorkOnItem(const Request &request)
{
    const std::vector<const Item *> items = ItemsAsked(request);
    if (request.strAction != "set" && !request.aValues.empty())
        throw Failure(EXIT_USAGE, fmt::format("item {} takes no value: leave it out, or use set",
                                              request.strAction));
    if (request.strAction == "set")
        WordsToSet(*items[0], request.aValues); // wrong usage is told before the driver is asked
    const std::optional<DriverDevMode> in = ReadRecordIfNamed(request.strIn);
    OpenedPrinter printer(request.strPrinter);
    const Driver driver;
    Block block(DocumentSettings(driver, printer, in));
    if (request.strAction == "set")
        Set(driver, block, *items[0], request.aValues);
    const int32_t nResult = Answer(driver, block, items, request);
    WriteRecordIfNamed(request.strOut, block.record);
    if (nResult != KVDD_OK)
        throw Failure(EXIT_REFUSED,
                      fmt::format("the driver gave {} for item {} {}: {}", nResult,
                                  request.strAction, request.strItem, ResultText(nResult)));
    return EXIT_DONE;
}
