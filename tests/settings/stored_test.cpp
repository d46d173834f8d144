// The record of a printer: its model's defaults under its own name, and what the spooler keeps for
// it.
#include "tests/datafile/model_test.h"

#include <algorithm>

#include "datafile/records.h"
#include "settings/defaults.h"
#include "settings/merge.h"
#include "tests/support/driver.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace
{

class StoredTest : public ModelTest
{
  public:
    void SetUp() override
    {
        ModelTest::SetUp();
        Install();
    }
    // The model's defaults for a queue, with the printer record that its file holds now.
    DriverDevMode Defaults(HANDLE hPrinter)
    {
        DriverDevMode defaults = NamedRecord(u"KORVA One");
        HGLOBAL record = KVGetResource(100, 514, &defaults);
        EXPECT_NE(record, nullptr);
        EXPECT_TRUE(KVGetDefDevmode(&defaults, record, hPrinter));
        GlobalFree(record);
        return defaults;
    }
    DriverDevMode Defaults() { return Defaults(queue.hPrinter); }
    // As the entry points ask: with a printer record, or without one.
    BOOL Registered(bool bWithRecord)
    {
        HGLOBAL record = bWithRecord ? KVGetResource(100, 514, &dm) : nullptr;
        const BOOL bDone = KVGetRegDevmode(queue.hPrinter, &dm, record);
        GlobalFree(record);
        return bDone;
    }
    static void Store(const DriverDevMode &record, size_t n = sizeof(DriverDevMode))
    {
        const auto *from = reinterpret_cast<const uint8_t *>(&record);
        kvp::SetQueueDefault("Office", std::span(from, n));
    }
    OpenQueue queue{"Office", "KORVA One"};
};

} // namespace

TEST_F(StoredTest, DefaultsBearThePrintersName)
{
    DriverDevMode defaults = Defaults();
    EXPECT_EQ(BytesOf(defaults).substr(0, 64), std::string("O\0f\0f\0i\0c\0e\0", 12).append(52, 0));
    const OpenQueue longName(std::string(40, 'n'), "KORVA One");
    defaults = Defaults(longName.hPrinter);
    EXPECT_TRUE(std::ranges::all_of(std::u16string(defaults.dm.dmDeviceName, 32),
                                    [](char16_t ch) { return ch == u'n'; }));
    EXPECT_EQ(defaults.dm.dmSpecVersion, KV_SPECVERSION) << "the name ends with its field";
    EXPECT_EQ(defaults.dm.dmPaperSize, 9);
}

TEST_F(StoredTest, PairsEndWhereTheirRecordDoes)
{
    static const struct {
        const char *why;
        int16_t sCount, sOffset; // of the pairs, in words behind the head of 104 bytes
        size_t cbTail;           // room for pairs in a record of 126 bytes: 22
        std::vector<int> firsts; // the pairs of the record are (1, 2), (3, 4), (5, 6) ...
    } aRows[] = {
        {"as many as it says", 2, 0, 22, {1, 3}},
        {"from further on", 2, 4, 22, {5, 7}},
        {"none", 0, 0, 22, {}},
        {"fewer than none", -1, 0, 22, {}},
        {"more than fit", 20, 0, 22, {1, 3, 5, 7, 9}},
        {"the last half of a pair is none", 20, 8, 22, {9}},
        {"an offset past the end", 2, 11, 22, {}},
        {"far past the end", 2, 32767, 22, {}},
        {"before the start", 2, -53, 22, {}},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        model.printer.sPairCount = row.sCount;
        model.printer.sPairOffset = row.sOffset;
        model.printerTail.clear();
        for (uint8_t i = 1; i <= 11; ++i) {
            model.printerTail.push_back(i);
            model.printerTail.push_back(0);
        }
        Install();
        const DriverDevMode defaults = Defaults();
        ASSERT_EQ(defaults.dwPairCount, row.firsts.size());
        for (size_t i = 0; i < row.firsts.size(); ++i) {
            EXPECT_EQ(defaults.aPairs[i].wFirst, row.firsts[i]);
            EXPECT_EQ(defaults.aPairs[i].wSecond, row.firsts[i] + 1);
        }
    }
}

TEST_F(StoredTest, NoMoreThanTwentyPairsReachTheRecord)
{
    model.papers.resize(60);
    model.printer.sPairCount = 32767;
    Install();
    const DriverDevMode defaults = Defaults();
    EXPECT_EQ(defaults.dwPairCount, 20u);
    EXPECT_EQ(BytesOf(defaults).substr(288, 18),
              BytesOf(NamedRecord(u"KORVA One")).substr(288, 18));
}

TEST_F(StoredTest, DefaultsWithoutFilesOrRecordAreStillNamed)
{
    kvp::PutAbsentFile(DatPath());
    dm.dwPairCount = 3;
    EXPECT_TRUE(KVGetDefDevmode(&dm, nullptr, queue.hPrinter));
    EXPECT_EQ(dm.dm.dmDeviceName[0], u'O');
    EXPECT_EQ(dm.dwPairCount, 0u);
    EXPECT_EQ(dm.dm.dmPaperSize, 0);
    EXPECT_THAT(BoxesShown(), ElementsAre(DAT_NOT_FOUND));
}

TEST_F(StoredTest, AQueueWithoutARecordHasNone)
{
    const DriverDevMode untouched = dm;
    EXPECT_FALSE(Registered(true));
    EXPECT_FALSE(Registered(false));
    EXPECT_EQ(BytesOf(dm), BytesOf(untouched));
    EXPECT_FALSE(KVGetRegDevmode(nullptr, &dm, nullptr));
    EXPECT_THAT(BoxesShown(), IsEmpty());
}

TEST_F(StoredTest, TheQueuesRecordIsMergedIntoTheDefaults)
{
    DriverDevMode expected = Defaults();
    DriverDevMode stored = expected;
    stored.dm.dmFields = KV_DM_COPIES;
    stored.dm.dmCopies = 8;
    stored.dm.dmOrientation = 2; // not meant
    stored.dm.dmDeviceName[0] = u'X';
    stored.wTmpl1 = 1234;
    Store(stored);
    expected.dm.dmCopies = 8;
    expected.wTmpl1 = 1234;
    ASSERT_TRUE(Registered(true));
    EXPECT_EQ(BytesOf(dm), BytesOf(expected));
    EXPECT_TRUE(NothingHeld());
}

TEST_F(StoredTest, WithoutAPrinterRecordOnlyAWholeRecordOfOursIsTaken)
{
    static const struct {
        const char *why;
        uint16_t wVersion, wSize, wExtra;
        size_t cbStored;
        bool bTaken;
    } aRows[] = {
        {"ours", 859, 188, 374, 562, true},
        {"divided in another way", 859, 200, 362, 562, true},
        {"another version", 858, 188, 374, 562, false},
        {"too short by its own account", 859, 188, 373, 562, false},
        {"too long", 859, 188, 375, 600, false},
        {"sizes that only add up in 16 bits", 859, 65535, 563, 562, false},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        DriverDevMode stored[2] = {Defaults(), {}};
        stored[0].dm.dmSpecVersion = 0; // not asked for here
        stored[0].dm.dmDriverVersion = row.wVersion;
        stored[0].dm.dmSize = row.wSize;
        stored[0].dm.dmDriverExtra = row.wExtra;
        Store(stored[0], row.cbStored);
        dm = {};
        EXPECT_EQ(Registered(false), row.bTaken);
        EXPECT_EQ(BytesOf(dm), BytesOf(row.bTaken ? stored[0] : DriverDevMode{}));
    }
    EXPECT_THAT(BoxesShown(), IsEmpty());
}

TEST_F(StoredTest, AShortStoredRecordHasTheFieldsThatItSays)
{
    static const struct {
        const char *why;
        size_t cbStored;
        uint16_t wSize;
        int16_t sOrientation, sCopies;
    } aRows[] = {
        {"a single byte", 1, 188, 1, 1},         {"without sizes", 68, 188, 1, 1},
        {"up to the orientation", 78, 78, 2, 1}, {"half the copies", 87, 87, 2, 1},
        {"up to the copies", 88, 88, 2, 8},      {"the public part alone", 188, 188, 2, 8},
    };
    DriverDevMode stored = Defaults();
    stored.dm.dmFields = KV_DM_ORIENTATION | KV_DM_COPIES;
    stored.dm.dmOrientation = 2;
    stored.dm.dmCopies = 8;
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        stored.dm.dmSize = row.wSize;
        stored.dm.dmDriverExtra = 0;
        Store(stored, row.cbStored);
        dm = NamedRecord(u"KORVA One");
        ASSERT_TRUE(Registered(true));
        EXPECT_EQ(dm.dm.dmOrientation, row.sOrientation);
        EXPECT_EQ(dm.dm.dmCopies, row.sCopies);
        EXPECT_EQ(dm.dm.dmSize, 188);
    }
}

TEST_F(StoredTest, AFailingCallGivesFalseOrTheDefaultsAtLeast)
{
    DriverDevMode stored = Defaults();
    Store(stored);
    for (const auto call : {kvp::Call::Alloc, kvp::Call::Store, kvp::Call::Read}) {
        int nRefused = 0;
        HGLOBAL record = KVGetResource(100, 514, &dm);
        before = kvp::CurrentlyHeld();
        WithEachFailure(call, [&](int) {
            dm = NamedRecord(u"KORVA One");
            nRefused += !KVGetRegDevmode(queue.hPrinter, &dm, record);
        });
        GlobalFree(record);
        EXPECT_EQ(nRefused > 0, call != kvp::Call::Read) << static_cast<int>(call);
    }
    before = kvp::CurrentlyHeld();
}
