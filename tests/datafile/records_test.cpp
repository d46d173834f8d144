// The records built from a .dat, and the check that a model's files are there.
#include "tests/datafile/model_test.h"

#include "datafile/install.h"
#include "datafile/records.h"

using ::testing::IsEmpty;

namespace
{

class RecordsTest : public ModelTest
{
  public:
    void SetUp() override
    {
        ModelTest::SetUp();
        model.header.wVersion = 1; // records are built whatever the version
        Install();
    }
    // A handed-out block's first bytes; the block is released.
    static std::string Released(HGLOBAL block, size_t n)
    {
        if (!block)
            return "(none)";
        const std::string bytes(static_cast<const char *>(block), n);
        GlobalFree(block);
        return bytes;
    }
    // The printer record as it lies in the model's file, at its end.
    std::string PrinterRecord() const
    {
        const Bytes dat = model.Dat();
        const size_t n =
            104 + 2 * model.papers.size() + 4 * (model.bins.size() + model.resNames.size());
        return std::string(dat.end() - static_cast<ptrdiff_t>(n), dat.end());
    }
};

} // namespace

TEST_F(RecordsTest, SizesFollowTheHeader)
{
    model.papers.resize(20);
    model.bins.resize(3);
    model.resNames.resize(4);
    Install();
    EXPECT_EQ(SizeofLogPrinter(&dm), 172u);
    EXPECT_EQ(SizeofMMPS(&dm), 120u);
}

TEST_F(RecordsTest, ThePrinterRecordIsACopyOfTheFilesLastPart)
{
    const std::string expected = PrinterRecord(), head = expected.substr(0, 104);
    EXPECT_EQ(Released(KVGetResource(100, 514, &dm), 126), expected);
    std::string buffer(126, '#');
    EXPECT_TRUE(BuildLogPrinter(&dm, buffer.data(), 104));
    EXPECT_FALSE(BuildLogPrinter(&dm, buffer.data(), 127)) << "there is no more in the file";
    EXPECT_FALSE(BuildLogPrinter(&dm, buffer.data(), 0xFFFFFFFF));
    EXPECT_EQ(buffer, head + std::string(22, '#'));
}

TEST_F(RecordsTest, PaperSizesAreInTenthsOfAMillimetre)
{
    model.papers.resize(2);
    model.papers[0].wId = -3;
    model.papers[0].wWidth = -3060; // no paper, but no reason to stop either
    Install();
    const MMPSEntry expected[] = {{-3, -2158, 2970}, {1, 2159, 2794}};
    const std::string bytes(reinterpret_cast<const char *>(expected), sizeof expected);
    EXPECT_EQ(Released(KVGetResource(1, 513, &dm), 12), bytes);
    std::string buffer(13, '#');
    EXPECT_TRUE(BuildMMPS(&dm, buffer.data(), 12));
    EXPECT_EQ(buffer, bytes + "#");
}

TEST_F(RecordsTest, OnlyTwoSelectorsNameARecord)
{
    for (const WORD wSelector : {0, 512, 515, 0xFFFF})
        EXPECT_EQ(KVGetResource2(100, wSelector, &dm), nullptr) << wSelector;
    model.papers.clear();
    Install();
    EXPECT_EQ(KVGetResource2(100, 513, &dm), nullptr) << "a record of no bytes";
}

TEST_F(RecordsTest, TheIdentifierComesWithARecordOfItsOwn)
{
    HGLOBAL record = nullptr;
    int nId = 0;
    model.printer.sModelId = -5;
    Install();
    EXPECT_EQ(KVGetPrinterID(nullptr, &dm), -5);
    EXPECT_TRUE(NothingHeld());
    EXPECT_EQ(KVGetPrinterNameToRes(nullptr, &record, &nId, &dm), -5);
    EXPECT_EQ(nId, -5);
    EXPECT_EQ(Released(record, 126), PrinterRecord());
}

TEST_F(RecordsTest, WithoutTheFileEachSaysSoAndOfAShortOneNothing)
{
    const Bytes dat = model.Dat();
    std::string buffer(126, '#');
    const auto nothing = [&] {
        HGLOBAL record = &dm;
        int nId = 0;
        EXPECT_EQ(SizeofLogPrinter(&dm) + SizeofMMPS(&dm), 0u);
        EXPECT_FALSE(BuildLogPrinter(&dm, buffer.data(), 126));
        EXPECT_FALSE(BuildMMPS(&dm, buffer.data(), 18));
        EXPECT_EQ(KVGetResource(1, 513, &dm), nullptr);
        EXPECT_EQ(KVGetPrinterNameToRes(nullptr, &record, &nId, &dm), -1);
        EXPECT_EQ(nId, -1);
        EXPECT_EQ(record, nullptr);
    };
    for (size_t n = 0; n < dat.size(); ++n) {
        SCOPED_TRACE(n);
        PutDat(FirstBytes(dat, n));
        nothing();
    }
    EXPECT_THAT(BoxesShown(), IsEmpty());
    kvp::PutAbsentFile(DatPath());
    nothing();
    EXPECT_EQ(BoxesShown(), Messages(7, DAT_NOT_FOUND)) << "the last one looks twice";
    EXPECT_EQ(buffer, std::string(126, '#'));
}

TEST_F(RecordsTest, NoMemoryIsNoRecord)
{
    for (const auto call : {kvp::Call::Alloc, kvp::Call::Read}) {
        const int nFailures = WithEachFailure(call, [&](int) {
            const std::string record = Released(KVGetResource(1, 514, &dm), 126);
            EXPECT_TRUE(record == "(none)" || record == PrinterRecord());
        });
        EXPECT_GT(nFailures, 0);
    }
    EXPECT_THAT(BoxesShown(), IsEmpty());
}

TEST_F(RecordsTest, AnInstallationNeedsTheDatAndTheCfg)
{
    EXPECT_TRUE(InstallCheck(&dm)) << "there is no user's file";
    for (const std::string &strAbsent : {DatPath(), CfgPath()}) {
        Install();
        kvp::PutAbsentFile(strAbsent);
        EXPECT_FALSE(InstallCheck(&dm)) << strAbsent;
    }
    EXPECT_THAT(BoxesShown(), IsEmpty()) << "who asks tells the user";
}
