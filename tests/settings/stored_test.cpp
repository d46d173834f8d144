// The record of a printer: its model's defaults under its own name, and what the spooler keeps for
// it.
#include "tests/datafile/model_test.h"

#include "datafile/records.h"
#include "settings/merge.h"
#include "tests/support/driver.h"

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
        EXPECT_TRUE(KVGetDefDevmode(&defaults, record, hPrinter));
        GlobalFree(record);
        return defaults;
    }
    DriverDevMode Defaults() { return Defaults(queue.hPrinter); }
    // With a printer record, as the entry points ask.
    BOOL Registered()
    {
        HGLOBAL record = KVGetResource(100, 514, &dm);
        const BOOL bDone = KVGetRegDevmode(queue.hPrinter, &dm, record);
        GlobalFree(record);
        return bDone;
    }
    BOOL RegisteredWhole() { return KVGetRegDevmode(queue.hPrinter, &dm, nullptr); }
    static void Store(const DriverDevMode &record, size_t n = sizeof(DriverDevMode))
    {
        const auto *from = reinterpret_cast<const uint8_t *>(&record);
        kvp::SetQueueDefault("Office", std::span(from, n));
    }
    OpenQueue queue{"Office", "KORVA One"};
};

std::u16string NameOf(const DriverDevMode &record)
{
    char16_t name[32];
    std::memcpy(name, record.dm.dmDeviceName, sizeof name);
    return std::u16string(name, 32);
}

} // namespace

TEST_F(StoredTest, DefaultsBearThePrintersName)
{
    EXPECT_EQ(NameOf(Defaults()), std::u16string(u"Office").append(26, u'\0'));
    const OpenQueue longName(std::string(40, 'n'), "KORVA One");
    const DriverDevMode defaults = Defaults(longName.hPrinter);
    EXPECT_EQ(NameOf(defaults), std::u16string(32, u'n'));
    EXPECT_EQ(defaults.dm.dmSpecVersion, KV_SPECVERSION) << "the name ends with its field";

    kvp::PutAbsentFile(DatPath()); // also without files and record
    dm.dwPairCount = 3;
    EXPECT_TRUE(KVGetDefDevmode(&dm, nullptr, longName.hPrinter));
    EXPECT_EQ(NameOf(dm), std::u16string(32, u'n'));
    EXPECT_EQ(dm.dwPairCount, 0u);
    EXPECT_EQ(BoxesShown(), Messages{DAT_NOT_FOUND});
}

TEST_F(StoredTest, PairsEndWhereTheirRecordDoes)
{
    static const struct {
        const char *why;
        int16_t sCount, sOffset; // of the pairs, in words behind the head of 104 bytes
        std::vector<int> words;  // the record's 22 bytes behind the head are the words 1, 2, 3 ...
    } aRows[] = {
        {"as many as it says", 2, 0, {1, 2, 3, 4}},
        {"from further on", 2, 4, {5, 6, 7, 8}},
        {"fewer than none", -1, 0, {}},
        {"more than fit", 20, 0, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}},
        {"the last half of a pair is none", 20, 8, {9, 10}},
        {"an offset past the end", 2, 11, {}},
        {"far past the end", 2, 32767, {}},
        {"before the start", 2, -53, {}},
    };
    for (uint8_t i = 1; i <= 11; ++i)
        model.printerTail.insert(model.printerTail.begin() + 2 * (i - 1), {i, 0});
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        model.printer.sPairCount = row.sCount;
        model.printer.sPairOffset = row.sOffset;
        Install();
        const DriverDevMode defaults = Defaults();
        std::vector<int> words;
        for (uint32_t i = 0; i < defaults.dwPairCount; ++i)
            words.insert(words.end(), {defaults.aPairs[i].wFirst, defaults.aPairs[i].wSecond});
        EXPECT_EQ(words, row.words);
    }
    model.papers.resize(60); // room for more than the record takes
    model.printer.sPairCount = 32767;
    model.printer.sPairOffset = 0;
    Install();
    const DriverDevMode defaults = Defaults();
    EXPECT_EQ(defaults.dwPairCount, 20u);
    EXPECT_EQ(BytesOf(defaults).substr(288, 64), BytesOf(dm).substr(288, 64)) << "the model's name";
}

TEST_F(StoredTest, TheQueuesRecordIsMergedIntoTheDefaults)
{
    DriverDevMode expected = dm;
    EXPECT_FALSE(Registered());
    EXPECT_FALSE(RegisteredWhole());
    EXPECT_FALSE(KVGetRegDevmode(nullptr, &dm, nullptr));
    EXPECT_EQ(BytesOf(dm), BytesOf(expected)) << "a queue without a record has none";

    DriverDevMode stored = expected = Defaults();
    stored.dm.dmFields = KV_DM_COPIES;
    expected.dm.dmCopies = stored.dm.dmCopies = 8;
    stored.dm.dmOrientation = 2; // not meant
    stored.dm.dmDeviceName[0] = u'X';
    expected.wTmpl1 = stored.wTmpl1 = 1234;
    Store(stored);
    EXPECT_TRUE(Registered());
    EXPECT_EQ(BytesOf(dm), BytesOf(expected));
    EXPECT_EQ(BoxesShown(), Messages());
}

TEST_F(StoredTest, WithoutAPrinterRecordOnlyAWholeRecordOfOursIsTaken)
{
    static const struct {
        const char *why;
        uint16_t wVersion, wSize, wExtra;
        bool bTaken;
    } aRows[] = {
        {"divided in another way", 859, 200, 362, true},
        {"another version", 858, 188, 374, false},
        {"too short by its own account", 859, 188, 373, false},
        {"too long", 859, 188, 375, false},
        {"sizes that only add up in 16 bits", 859, 65535, 563, false},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        DriverDevMode stored = Defaults();
        stored.dm.dmSpecVersion = 0; // not asked for here
        stored.dm.dmDriverVersion = row.wVersion;
        stored.dm.dmSize = row.wSize;
        stored.dm.dmDriverExtra = row.wExtra;
        Store(stored);
        dm = {};
        EXPECT_EQ(RegisteredWhole(), row.bTaken);
        EXPECT_EQ(BytesOf(dm), BytesOf(row.bTaken ? stored : DriverDevMode{}));
    }
}

TEST_F(StoredTest, AShortStoredRecordHasTheFieldsThatItSays)
{
    const std::pair<size_t, std::vector<int>> aRows[] = {
        {1, {1, 9, 2970, 1}},
        {68, {1, 9, 2970, 1}},
        {81, {2, 256, 2970, 1}},
        {88, {2, 256, 1000, 8}},
    };
    DriverDevMode stored = Defaults();
    stored.dm.dmOrientation = 2;
    stored.dm.dmPaperSize = 256;
    stored.dm.dmPaperLength = 1000;
    stored.dm.dmCopies = 8;
    for (const auto &[cbStored, fields] : aRows) {
        stored.dm.dmSize = static_cast<uint16_t>(cbStored);
        Store(stored, cbStored);
        dm = NamedRecord(u"KORVA One");
        EXPECT_TRUE(Registered());
        EXPECT_EQ((std::vector<int>{dm.dm.dmOrientation, dm.dm.dmPaperSize, dm.dm.dmPaperLength,
                                    dm.dm.dmCopies}),
                  fields)
            << cbStored;
    }
}
