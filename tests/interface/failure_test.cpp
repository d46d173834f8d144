// What each entry point answers when a printer cannot be opened, or any call of the outside fails.
#include <algorithm>
#include <array>
#include <functional>
#include <iostream>
#include <optional>

#include <gmock/gmock.h>

#include "tests/interface/fixture.h"
#include "tests/support/held.h"
#include "tests/support/person.h"

namespace
{

class OpeningFails : public InterfaceTest
{
  protected:
    void Remove(const char *name) { kvp::PutAbsentFile(std::string(WINDOWS_DIR) + name); }
    void Renumber()
    {
        model.printer.sModelId = -1;
        InstallFiles();
    }
};

TEST_F(OpeningFails, EachEntryPointHasItsOwnAnswer)
{
    const struct {
        const char *why, *driver; // of the queue; null: a handle that is none
        std::function<void()> spoil;
        std::array<LONG, 4> results; // of the four calls below
        bool told;                   // by each of them
    } aRows[] = {
        {"a handle that is none", nullptr, [] {}, {0, -1, FALSE, -1}, false},
        {"32 characters", "KORVA with a name of 32 letters.", [] {}, {0, -1, FALSE, -1}, false},
        {"no .dat", "KORVA A", [&] { Remove("KVA.dat"); }, {-1, -1, FALSE, -1}, true},
        {"no .cfg", "KORVA A", [&] { Remove("KVA.cfg"); }, {-1, -1, FALSE, -1}, true},
        {"no printer record", "KORVA A", [&] { CutTheDat(); }, {-1, -1, FALSE, 0}, false},
        {"an identifier below 0", "KORVA A", [&] { Renumber(); }, {-1, -1, FALSE, 0}, false},
    };
    Start();
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        InstallFiles();
        row.spoil();
        const OpenQueue spoilt("Spoilt", row.driver ? row.driver : "none");
        HANDLE h = hPrinter = row.driver ? spoilt.hPrinter : nullptr;
        PlacedRecord out;
        EXPECT_EQ(
            row.results,
            (std::array<LONG, 4>{
                Document(out.Get(), nullptr, DM_COPY), Advanced(out.Get(), nullptr),
                driver.PrinterProperties(nullptr, h),
                LONG(driver.DrvDeviceCapabilities(h, nullptr, DC_DUPLEX, nullptr, nullptr))}));
        EXPECT_EQ(BoxesShown(), std::vector<std::string>(row.told ? 4 : 0, INSTALL_MESSAGE));
        EXPECT_TRUE(out.Untouched());
        EXPECT_EQ(StoredWith(spoilt.hPrinter), Bytes());
        kvp::RemoveQueue("Spoilt");
    }
}

// ---- each call in its turn --------------------------------------------------------------------

struct Row {
    const char *why;
    std::function<LONG(DriverDevMode *lpOut)> act;
    std::vector<LONG> results; // the first one when nothing fails
    size_t cbEach = 0;         // written for each that the result counts
    size_t cbAlways = 0;       // may be written whatever the result
};

class EntryPointFailures : public InterfaceTest
{
  protected:
    // The query for an application's record of the second source, and a buffer for its answer.
    std::function<LONG(DriverDevMode *)> Query(WORD wQuery)
    {
        return [=, this](DriverDevMode *lpOut) {
            return static_cast<LONG>(
                driver.DrvDeviceCapabilities(hPrinter, nullptr, wQuery, lpOut, &given));
        };
    }
    // The sheet while somebody looks at all pages and leaves it this way.
    std::function<LONG(DriverDevMode *)> Sheet(const char *way, bool advanced)
    {
        return [=, this](DriverDevMode *lpOut) {
            person.Will({"page \"Paper\"", "page \"Utility\"", way});
            return advanced ? Advanced(lpOut, &given)
                            : Document(lpOut, &given, DM_COPY | DM_PROMPT);
        };
    }
    // What is left when something may have failed; and the same once more, whole.
    void Check(const Row &row, LONG lResult, const PlacedRecord &out)
    {
        EXPECT_THAT(row.results, ::testing::Contains(lResult));
        const size_t cbWritten = static_cast<size_t>(std::max<LONG>(lResult, 0)) * row.cbEach;
        EXPECT_TRUE(out.UntouchedFrom(std::min<size_t>(cbWritten + row.cbAlways, KV_DEVMODESIZE)));
        const Bytes stored = StoredWith(hPrinter);
        EXPECT_TRUE(stored == aOld || (stored.size() == KV_DEVMODESIZE && stored[66] == 0x5B));
        EXPECT_EQ(row.act(PlacedRecord().Get()), row.results[0]);
        if (StoredWith(hPrinter) != aOld)
            StoreWith(hPrinter, aOld);
    }

    const Bytes aOld = {1};
    DriverDevMode given{};
    Person person;
};

// The result is a documented one, no more is written than it says, what is stored is the old or the
// new, nothing leaks, and the next call is as good as ever.
TEST_F(EntryPointFailures, EachCallInItsTurn)
{
    const Row aRows[] = {
        {"start-up", [&](DriverDevMode *) { return LONG{driver.Load()}; }, {1, 0}},
        {"DC_FIELDS", Query(DC_FIELDS), {0x30F, 0x300, 0, -1}},
        {"DC_PAPERS", Query(DC_PAPERS), {3, 0, 2, 4, -1}, 2},
        {"DC_PAPERSIZE", Query(DC_PAPERSIZE), {3, 0, 2, 4, -1}, 8},
        {"DC_PAPERNAMES", Query(DC_PAPERNAMES), {3, 0, 2, 4, -1}, 128},
        {"DC_MINEXTENT", Query(DC_MINEXTENT), {-1}},
        {"DC_BINS", Query(DC_BINS), {2, 0, -1}, 2},
        {"DC_BINNAMES", Query(DC_BINNAMES), {2, 0, -1}, 48},
        {"DC_DUPLEX", Query(DC_DUPLEX), {0, -1}},
        {"DC_SIZE", Query(DC_SIZE), {188, 0, -1}},
        {"DC_EXTRA", Query(DC_EXTRA), {374, 0, -1}},
        {"DC_VERSION", Query(DC_VERSION), {800, 0, -1}},
        {"DC_DRIVER", Query(DC_DRIVER), {859, 0, -1}},
        {"DC_ORIENTATION", Query(DC_ORIENTATION), {270, -1}},
        {"DC_COPIES", Query(DC_COPIES), {99, -1}},
        {"size", [&](DriverDevMode *p) { return Document(p, &given, 0); }, {562}},
        {"settings", [&](DriverDevMode *p) { return Document(p, nullptr, 2); }, {1, 0, -1}, 562},
        {"merged", [&](DriverDevMode *p) { return Document(p, &given, 10); }, {1, 0, -1}, 562},
        {"sheet, OK", Sheet("ok", false), {1, 2, 0, -1}, 562},
        {"sheet, Cancel", Sheet("cancel", false), {2, 0, -1}, 562},
        {"advanced, OK", Sheet("ok", true), {1, 2, -1}, 0, 562},
        {"advanced, Cancel", Sheet("cancel", true), {2, -1}, 0, 562},
        {"printer", [&](auto) { return LONG{driver.PrinterProperties(nullptr, hPrinter)}; }, {0}},
    };
    model.bUcf = true;
    model.AddUserPaper("Card", 1000, 1480, 1, 3);
    Start();
    given = SevenCopies();
    given.dm.dmFields |= KV_DM_DEFAULTSOURCE;
    given.dm.dmDefaultSource = 4;
    kvp::SetQueueDefault("Office", BytesOf(given));
    const std::string strUcf = std::string(SYSTEM_DIR) + "KVA.ucf";
    const auto held = HeldNow();
    StoreWith(hPrinter, aOld);
    int nFailures = 0;
    for (const Row &row : aRows) {
        SCOPED_TRACE(row.why);
        LONG lResult = 0;
        std::optional<PlacedRecord> out;
        for (int nCall = 0; nCall < static_cast<int>(kvp::Call::Count); ++nCall)
            nFailures += WithEachFailure(
                static_cast<kvp::Call>(nCall), [&](int) { lResult = row.act(out.emplace().Get()); },
                [&] {
                    Check(row, lResult, *out);
                    EXPECT_EQ(HeldNow(), held);
                });
    }
    std::cout << nFailures << " calls failed in turn\n";
    EXPECT_EQ(kvp::MemoryFile(strUcf), model.Ucf());
    EXPECT_EQ(kvp::QueueDefault("Office"), BytesOf(given));
}

} // namespace
