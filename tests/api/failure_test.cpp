// Whatever call of the platform fails, in its turn: the result is a documented one, the record is
// as it was or complete, files and store are as they were, and nothing is left behind.
#include <functional>
#include <iostream>
#include <optional>

#include "datafile/mw.h"
#include "datafile/records.h"
#include "settings/defaults.h"
#include "settings/merge.h"
#include "tests/api/api_test.h"
#include "tests/support/driver.h"

namespace
{

// What a call gave.
struct Outcome {
    int32_t result;
    std::string record, answer;
    bool operator==(const Outcome &) const = default;
};
void PrintTo(const Outcome &outcome, std::ostream *stream)
{
    *stream << "result " << outcome.result;
}

struct Action;

class FailureTest : public ApiTest
{
  public: // the rows use it all
    void SetUp() override
    {
        model.AddUserPaper("Card", 1000, 1500, 1, 3);
        ApiTest::SetUp();
        fresh = foreign = record;
        foreign.dm.dmPaperSize = 1;
        foreign.dm.dmDefaultSource = 4;
        foreign.dm.dmCopies = 5;
        printerRecord = KVGetResource(100, 514, &record);
        before = kvp::CurrentlyHeld();
        Lack(0);
    }
    void TearDown() override
    {
        GlobalFree(printerRecord);
        --before.nBlocks;
        ApiTest::TearDown();
    }
    static void Store(const DriverDevMode &stored)
    {
        kvp::SetQueueDefault("Office",
                             std::span(reinterpret_cast<const uint8_t *>(&stored), sizeof stored));
    }
    std::vector<std::optional<Bytes>> FilesAndStore() const
    {
        return {kvp::MemoryFile(DatPath()), kvp::MemoryFile(CfgPath()), kvp::MemoryFile(UcfPath()),
                kvp::QueueDefault("Office")};
    }
    // A machine that lacks something, one bit each, or a foreign record that means less.
    void Lack(unsigned what)
    {
        ModelTest::Install();
        if (what & 1)
            kvp::PutAbsentFile(UcfPath());
        if (what & 2)
            kvp::PutAbsentFile(DatPath());
        hPrinter = what & 4 ? nullptr : queue.hPrinter;
        foreign.dm.dmFields =
            KV_DM_COPIES | (what & 8 ? 0 : KV_DM_PAPERSIZE) | (what & 16 ? 0 : KV_DM_DEFAULTSOURCE);
        if (what >= 8 || what == 0)
            Store(foreign);
    }
    Outcome Run(int32_t (*run)(FailureTest &))
    {
        record = fresh;
        std::memset(words, 0x77, sizeof words);
        std::memset(list.First(), 0x77, 16);
        const int32_t result = run(*this);
        if (result < 0)
            return {result, BytesOf(record), {}}; // what it has answered by then counts for nothing
        return {result, BytesOf(record),
                BytesOf(words) + std::string(list.First(), list.First() + 16)};
    }
    int32_t List(uint32_t item, size_t nAddressAt)
    {
        const uint32_t address = LowAddress(list.First());
        std::memcpy(&words[nAddressAt], &address, sizeof address);
        return Range(item, words);
    }
    int32_t Count(uint32_t item, size_t nAddressAt)
    {
        words[nAddressAt] = words[nAddressAt + 1] = 0;
        return Range(item, words);
    }

    std::vector<Outcome> Allowed(const Action &action, unsigned nLacks);
    void Check(const Action &action, unsigned nLacks);

    int nInAll = 0;
    DriverDevMode fresh{}, foreign{};
    HGLOBAL printerRecord = nullptr;
    OpenQueue queue{"Office", "KORVA One"};
    HANDLE hPrinter = queue.hPrinter;
    LonePage list;
    int16_t words[8];
};
using T = FailureTest;

constexpr const char *FILES = "open read close ";

struct Action {
    const char *why;
    int32_t done, withoutFiles; // results
    const char *asks;           // which calls it makes
    int32_t (*run)(T &);
    void (*also)(T &) = nullptr; // what else may become of the record, if not all of it
};

// clang-format off
const Action aCalls[] = {
    {"what asks for nothing", 8, 8, "", [](T &t) {
         int32_t sum = KVDD_GetDrivInfo(&t.caller, t.list.Last(34)) - 34;
         for (const uint32_t item : {10, 20, 30, 40, 50, 60, 70, 80, 110})
             sum += KVDD_GetCmdLevel(nullptr, item) - 1;
         for (const uint32_t item : {10, 50, 70, 110})
             sum += t.Range(item, t.words);
         for (const uint32_t item : {10, 20, 40, 50, 110})
             sum += t.Get(item, t.words);
         for (const uint32_t item : {10, 20, 50, 60, 110})
             sum += t.Set(item, 1);
         return sum;
     }},
    {"defaults", 1, 0, FILES, [](T &t) {
         t.record = NamedRecord(u"KORVA One");
         return KVDD_GetOrgDevMode(nullptr, &t.record);
     }},
    {"range of areas", 0, -7, FILES, [](T &t) { return t.Range(KVDD_PRINTAREA, t.words); }},
    {"papers, counted", 0, -7, FILES, [](T &t) { return t.Count(KVDD_PAPER, 5); }},
    {"papers, listed", 0, -7, FILES, [](T &t) { return t.List(KVDD_PAPER, 5); }},
    {"sources, counted", 0, -7, FILES, [](T &t) { return t.Count(KVDD_SOURCE, 2); }},
    {"sources, listed", 0, -7, FILES, [](T &t) { return t.List(KVDD_SOURCE, 2); }},
    {"media, counted", 0, -7, FILES, [](T &t) { return t.Count(KVDD_MEDIA, 2); }},
    {"media, listed", 0, -7, FILES, [](T &t) { return t.List(KVDD_MEDIA, 2); }},
    {"paper", 0, 0, FILES, [](T &t) { return t.Get(KVDD_PAPER, t.words); }},
    {"media", 0, -7, FILES, [](T &t) { return t.Get(KVDD_MEDIA, t.words); }},
    {"mode", 0, -7, FILES, [](T &t) { return t.Get(KVDD_PRINTMODE, t.words); }},
    {"area", 0, -7, FILES, [](T &t) { return t.Get(KVDD_PRINTAREA, t.words); }},
    {"paper set", 0, -7, FILES, [](T &t) { return t.SetPaper({0, 0, 1, 0}); }},
    {"free size set", 0, -7, FILES, [](T &t) { return t.SetPaper({999, 1500, 256, 0}); }},
    {"source set", 0, -7, FILES, [](T &t) { return t.Set(KVDD_SOURCE, 4); },
     [](T &t) { // its first step fails alone: the paper stays, with margins made anew
         t.SetPaper({0, 0, t.record.dm.dmPaperSize, 0});
         t.record.dm.dmDefaultSource = 4;
         GetMWData(&t.record);
     }},
    {"automatic set", 0, -7, FILES, [](T &t) { return t.SetMode({1, 2, 20, 1}); }},
    {"advanced set", 0, -7, FILES, [](T &t) { return t.SetMode({0, 0, 0, 0}); }},
    {"area set", 0, -7, FILES, [](T &t) { return t.Set(KVDD_PRINTAREA, 1); }},
};
const Action aMerges[] = {
    {"defaults", 1, 1, "open read close alloc store ",
     [](T &t) { return KVGetDefDevmode(&t.record, t.printerRecord, t.hPrinter); }},
    {"merge", 1, 1, FILES,
     [](T &t) { return KVMergeDevMode(&t.record, &t.foreign, t.printerRecord, t.hPrinter); }},
    {"stored, merged", 1, 1, "open read close alloc store ",
     [](T &t) { return KVGetRegDevmode(t.hPrinter, &t.record, t.printerRecord); }},
    {"stored, whole", 1, 1, "alloc store ",
     [](T &t) { return KVGetRegDevmode(t.hPrinter, &t.record, nullptr); }},
};
// clang-format on

// Every kind of call, by the name that a row gives it.
constexpr std::pair<kvp::Call, const char *> aKinds[] = {
    {kvp::Call::OpenFile, "open "},       {kvp::Call::Read, "read "},
    {kvp::Call::Write, "write "},         {kvp::Call::Close, "close "},
    {kvp::Call::Alloc, "alloc "},         {kvp::Call::Store, "store "},
    {kvp::Call::LoadLibrary, "library "}, {kvp::Call::SystemVersion, "version "},
};
static_assert(std::size(aKinds) == static_cast<size_t>(kvp::Call::Count));

} // namespace

// What may come out when one call fails: what comes out where something is lacking from the start.
// MW data and the printer's name, which are read for themselves, may stay as they were.
std::vector<Outcome> FailureTest::Allowed(const Action &action, unsigned nLacks)
{
    std::vector<Outcome> allowed;
    for (unsigned what = nLacks; what-- > 0;) {
        Lack(what);
        allowed.push_back(Run(action.run));
        const Outcome &outcome = allowed.back();
        EXPECT_TRUE(outcome.result >= 0 || outcome.record == BytesOf(fresh)) << "half changed";
        EXPECT_TRUE(what != 0 || outcome.result == action.done) << outcome.result;
        EXPECT_TRUE(what != 2 || outcome.result == action.withoutFiles) << outcome.result;
    }
    if (action.also) {
        allowed.push_back(allowed.back());
        record = fresh;
        action.also(*this);
        allowed.back().record = BytesOf(record);
    }
    for (const auto &[offset, cb] : {std::pair<size_t, size_t>{494, 32}, {0, 64}})
        for (size_t i = 0, n = allowed.size(); i < n; ++i) {
            allowed.push_back(allowed[i]);
            allowed.back().record.replace(offset, cb, BytesOf(fresh), offset, cb);
        }
    BoxesShown();
    return allowed;
}

void FailureTest::Check(const Action &action, unsigned nLacks)
{
    SCOPED_TRACE(action.why);
    const std::vector<Outcome> allowed = Allowed(action, nLacks);
    const auto kept = FilesAndStore();
    std::string asked;
    for (const auto &[call, kind] : aKinds) {
        SCOPED_TRACE(kind);
        const int nFailures = WithEachFailure(call, [&](int) {
            const Outcome outcome = Run(action.run);
            EXPECT_THAT(allowed, ::testing::Contains(outcome));
            EXPECT_TRUE(!BoxesShown().empty() || outcome.result != KVDD_NO_DATA) << "not told";
        });
        EXPECT_EQ(FilesAndStore(), kept);
        asked += nFailures > 0 ? kind : "";
        nInAll += nFailures;
    }
    EXPECT_EQ(asked, action.asks);
}

TEST_F(FailureTest, EveryFunctionAndItemOfTheInterface)
{
    for (const Action &action : aCalls)
        Check(action, 4);
    std::cout << nInAll << " calls failed in turn\n";
}

TEST_F(FailureTest, DefaultsAndMerges)
{
    for (const Action &action : aMerges)
        Check(action, 32);
    std::cout << nInAll << " calls failed in turn\n";
}

TEST_F(FailureTest, WhatLoadingHasToTellIsToldByEveryStep)
{
    model.wUcfVersion = 1;
    ModelTest::Install();
    const std::pair<size_t, std::function<void()>> aSteps[] = {
        {2, [this] { Get(KVDD_PAPER, words); }},
        {3, [this] { List(KVDD_PAPER, 5); }},
        {3,
         [this] {
             SetPaper({1000, 1500, 256, 0});
         }},
        {2, [this] { Set(KVDD_SOURCE, 4); }},
        {1,
         [this] {
             SetMode({1, 2, 20, 1});
         }},
        {2, [this] { KVMergeDevMode(&record, &foreign, nullptr, nullptr); }},
    };
    for (const auto &[nSteps, act] : aSteps) {
        act();
        EXPECT_EQ(BoxesShown(), Messages(nSteps, UCF_VERSION_ERROR));
    }
}
