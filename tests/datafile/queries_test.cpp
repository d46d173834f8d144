// Questions about papers, sources, sizes, margins, limits and names.
#include "tests/datafile/model_test.h"

#include "datafile/queries.h"
#include "tests/support/driver.h"

using ::testing::ElementsAre;

bool operator==(const PaperSize &a, const PaperSize &b)
{
    return BytesOf(a) == BytesOf(b);
}
bool operator==(const PaperMargin &a, const PaperMargin &b)
{
    return BytesOf(a) == BytesOf(b);
}

namespace
{

constexpr WORD GUARD = 0xCDCD;

// Papers 9, 1 and 256 of sources of kinds 0 and 1, 0 and 1, and 0; user slots 768 (0.1 mm, kind 1)
// and 769 (0.01 inch, kinds 0 and 1) behind a free one's gap; sources 7 and 4.
class QueriesTest : public ModelTest
{
  public:
    void SetUp() override
    {
        ModelTest::SetUp();
        model.AddUserPaper("Millimetres", 1000, 1480, 1, 2);
        model.AddUserPaper("Inches", 850, 550, 2, 3);
        Install();
        dm.dm.dmDefaultSource = 7;
        dm.dm.dmPaperSize = 9;
        dm.nPrintArea = 1;
        dm.lPaperWidth = 1234;
        dm.lPaperLength = 5678;
    }
    void TearDown() override
    {
        EXPECT_EQ(UIInstance.dat.lpDatHeader, nullptr) << "a query kept its tables";
        ModelTest::TearDown();
    }
    // The array that a filling call writes, after a counting one has told its size.
    template <class Entry>
    std::vector<Entry> Filled(DWORD (*query)(const DriverDevMode *, Entry *), Entry guard)
    {
        const DWORD n = query(&dm, nullptr);
        std::vector<Entry> entries(n + 1, guard);
        EXPECT_EQ(query(&dm, entries.data()), n);
        EXPECT_TRUE(entries[n] == guard);
        entries.pop_back();
        return entries;
    }
    std::vector<WORD> PaperIds() { return Filled<WORD>(Get_PaperIndexs, GUARD); }
};

} // namespace

TEST_F(QueriesTest, PapersAreThoseThatTheSourceTakesModelsFirst)
{
    static const struct {
        const char *why;
        std::vector<BinRecord> bins;
        int16_t sSource;
        std::vector<WORD> ids;
    } aRows[] = {
        {"kind 0", {{7, 0, 0}, {4, 0, 1}}, 7, {9, 1, 256, 769}},
        {"kind 1", {{7, 0, 0}, {4, 0, 1}}, 4, {9, 1, 768, 769}},
        {"a kind that no paper names", {{7, 0, 5}}, 7, {}},
        {"a kind that would wrap around", {{7, 0, 32}}, 7, {}},
        {"an unknown source counts as kind 0", {{7, 0, 5}}, 6, {9, 1, 256, 769}},
        {"the top kind is a bit like any other", {{7, 0, 15}}, 7, {1}},
        {"the first of two with one identifier", {{7, 0, 1}, {7, 0, 0}}, 7, {9, 1, 768, 769}},
        {"unsigned in the file, signed in the record", {{0xFFFF, 0, 1}}, -1, {9, 1, 768, 769}},
    };
    model.papers[1].wBinMask = static_cast<int16_t>(0x8003);
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        model.bins = row.bins;
        Install();
        dm.dm.dmDefaultSource = row.sSource;
        EXPECT_EQ(PaperIds(), row.ids);
        EXPECT_EQ(Filled<WORD>(Get_BinIndexs, GUARD).size(), row.bins.size()) << "all of them";
    }
    EXPECT_THAT(Filled<WORD>(Get_BinIndexs, GUARD), ElementsAre(0xFFFF));
}

TEST_F(QueriesTest, UserSlotsInUseAreTheFirstSoMany)
{
    model.userPapers[0].wState = 3; // one slot in use, the second: so the first counts
    Install();
    dm.dm.dmDefaultSource = 4;
    EXPECT_THAT(PaperIds(), ElementsAre(9, 1, 768));
}

TEST_F(QueriesTest, CountingStopsAtTheEntriesAskedFor)
{
    ASSERT_TRUE(Get_DATFile(&dm));
    static const struct {
        DWORD n, dwMask, nFound;
    } aRows[] = {{2, 3, 2}, {3, 2, 2}, {4, 2, 3}, {5, 1, 4}, {0xFFFFFFFF, 1, 6}}; // free slots too
    for (const auto &row : aRows)
        EXPECT_EQ(CountSupportPaperNum(row.n, row.dwMask, &UIInstance.dat), row.nFound)
            << row.n << " " << row.dwMask;
    Free_DATFile(&dm);
    EXPECT_EQ(CountSupportPaperNum(5, 3, &UIInstance.dat), 0u);
}

TEST_F(QueriesTest, SizesAreTenthsOfAMillimetreWhateverTheirUnit)
{
    EXPECT_THAT(Filled(Get_PaperSize, PaperSize{-7, -7}),
                ElementsAre(PaperSize{2100, 2970}, PaperSize{2159, 2794}, PaperSize{1234, 5678},
                            PaperSize{2159, 1397}));
    dm.dm.dmDefaultSource = 4;
    EXPECT_EQ(Filled(Get_PaperSize, PaperSize{-7, -7})[2], (PaperSize{1000, 1480}));
}

// Sizes and margins in 1/360 inch, limits in 0.1 mm.
TEST_F(QueriesTest, APaperIsTheModelsOrASlotInUseOrElseTheUserDefinedOne)
{
    static const struct {
        const char *why;
        int16_t sPaper;
        PaperSize size;
        PaperMargin margin;
        PaperSize largest, smallest;
    } aRows[] = {
        {"a paper", 9, {2976, 4209}, {50, 60, 42, 198}, {111, 11176}, {890, 222}},
        {"user-defined", 256, {1749, 8048}, {42, 60, 42, 198}, {2413, 11176}, {890, 1270}},
        {"a slot in 0.1 mm", 768, {1417, 2098}, {42, 60, 42, 198}, {2413, 11176}, {890, 1270}},
        {"a slot in 0.01 inch", 769, {3060, 1980}, {70, 60, 42, 198}, {333, 11176}, {890, 444}},
        {"a free slot: its own size",
         770,
         {142, 283},
         {42, 60, 42, 198},
         {2413, 11176},
         {890, 1270}},
        {"unknown: its own size", -5, {142, 283}, {42, 60, 42, 198}, {2413, 11176}, {890, 1270}},
    };
    const auto mark = [](PaperRecord &paper, int16_t n, int16_t sLeft) {
        paper.wMaxWidth = static_cast<int16_t>(n);
        paper.wMinLength = static_cast<int16_t>(n + 111);
        paper.wLeft = sLeft;
    };
    mark(model.papers[0], 111, 50);
    mark(model.userPapers[1].paper, 333, 70);
    Install();
    dm.dm.dmPaperWidth = 100;
    dm.dm.dmPaperLength = 200;
    PaperSize size, largest, smallest;
    PaperMargin margin;
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        dm.dm.dmPaperSize = row.sPaper;
        EXPECT_TRUE(Get_CurPaperSize(&dm, 9, &size) && size == row.size);
        EXPECT_TRUE(Get_CurPaperMargin(&dm, &margin) && margin == row.margin);
        EXPECT_TRUE(Get_MaxPrintable(&dm, &largest) && largest == row.largest);
        EXPECT_TRUE(Get_MinPrintable(&dm, &smallest) && smallest == row.smallest);
    }
    dm.dm.dmPaperSize = 9;
    dm.nPrintArea = 2;
    EXPECT_TRUE(Get_CurPaperMargin(&dm, &margin) && margin == (PaperMargin{50, 198, 50, 198}));
}

TEST_F(QueriesTest, WithoutFilesEachQueryHasItsOwnAnswer)
{
    kvp::PutAbsentFile(DatPath());
    dm.dm.dmPaperWidth = 254;
    dm.dm.dmPaperLength = 508;
    dm.nPrintArea = 2; // the margins of an unknown model are not centred
    const DriverDevMode unchanged = dm;
    WORD wId = GUARD;
    PaperSize own{}, largest{}, smallest{}, first{-7, -7};
    PaperMargin margin{};
    EXPECT_EQ(Get_PaperIndexs(&dm, &wId) + Get_BinIndexs(&dm, &wId), 0u);
    EXPECT_EQ(Get_PaperSize(&dm, &first), 0u);
    EXPECT_TRUE(wId == GUARD && first == (PaperSize{-7, -7}));
    EXPECT_TRUE(Get_CurPaperSize(&dm, 9, &own) && own == (PaperSize{360, 720}));
    EXPECT_TRUE(Get_CurPaperMargin(&dm, &margin) && margin == (PaperMargin{42, 42, 42, 198}));
    EXPECT_TRUE(!Get_MaxPrintable(&dm, &largest) && largest == (PaperSize{2413, 11176}));
    EXPECT_TRUE(!Get_MinPrintable(&dm, &smallest) && smallest == (PaperSize{1000, 1000}));
    EXPECT_EQ(BytesOf(dm), BytesOf(unchanged));
    EXPECT_EQ(BoxesShown(), Messages(7, DAT_NOT_FOUND));
}

// ---- names ------------------------------------------------------------------------------------

namespace
{

class NamesTest : public QueriesTest
{
  public:
    void SetUp() override
    {
        QueriesTest::SetUp();
        InstallNames(KV_TEST_NAMES_LIBRARY);
    }
    // The names in the slots of a filled array; behind the last slot nothing may be written.
    template <int CHARS>
    std::vector<std::string> Names(DWORD (*query)(const DriverDevMode *, LPWSTR, HANDLE))
    {
        const DWORD n = query(&dm, nullptr, queue.hPrinter);
        std::vector<WCHAR> slots(n * CHARS + 1, u'#');
        EXPECT_EQ(query(&dm, slots.data(), queue.hPrinter), n);
        EXPECT_EQ(slots.back(), u'#');
        std::vector<std::string> names;
        for (DWORD i = 0; i < n; ++i)
            names.push_back(kvp::ToUtf8(&slots[i * CHARS]));
        return names;
    }
    OpenQueue queue{"Office", "KORVA One"};
};

} // namespace

TEST_F(NamesTest, PapersAreNamedByTheLibraryAndSlotsByTheirOwner)
{
    EXPECT_THAT(Names<64>(Get_PaperNames),
                ElementsAre("A paper with a name of sixty-four characters, one over the slot",
                            "Letter 8 1/2 x 11 in", "User Defined", "Inches"));
    EXPECT_EQ(UIInstance.hResLib, nullptr);
    EXPECT_TRUE(NothingHeld());
}

TEST_F(NamesTest, ASlotsNameIsShiftJisAndMayFillItsField)
{
    machine.uAnsiCodePage = 932;
    Apply();
    std::memcpy(model.userPapers[0].szName, "\x83\x6E\x83\x4B\x83\x4C", 7); // three katakana
    std::memset(model.userPapers[1].szName, 'x', 32);
    Install();
    dm.dm.dmDefaultSource = 4;
    EXPECT_THAT(Names<64>(Get_PaperNames),
                ElementsAre(testing::_, testing::_, "ハガキ", std::string(32, 'x')));
}

TEST_F(NamesTest, SourcesAreNamedByKindAndCutToTheirSlot)
{
    model.bins = {{7, 0, 0}, {4, 0, 1}, {5, 0, 2}};
    Install();
    EXPECT_THAT(Names<24>(Get_BinNames),
                ElementsAre("Twenty-three characters", "", "Twenty-two characters "));
}

TEST_F(NamesTest, NoLibraryOrNoFilesGiveNothing)
{
    WCHAR awch[64] = {u'#'};
    const std::string strLibrary = DRIVER_DIR + std::string("KVUI.DLL");
    kvp::PutAbsentFile(DatPath());
    EXPECT_EQ(Get_PaperNames(&dm, awch, queue.hPrinter), 0u);
    EXPECT_TRUE(NothingHeld());
    kvp::PutAbsentFile(strLibrary);
    EXPECT_EQ(Get_ResHandle(&dm, queue.hPrinter), -1);
    EXPECT_EQ(Get_BinNames(&dm, awch, queue.hPrinter), 0u);
    const std::string strNotFound = "Dlg DLL Message: File not found : " + strLibrary;
    EXPECT_THAT(BoxesShown(), ElementsAre(DAT_NOT_FOUND, strNotFound, strNotFound));
    EXPECT_EQ(awch[0], u'#');
}

TEST_F(NamesTest, AnyAllocationMayFail)
{
    WithEachFailure(kvp::Call::Alloc, [&](int) {
        std::vector<WCHAR> slots(5 * 64);
        const DWORD n = Get_PaperNames(&dm, slots.data(), queue.hPrinter);
        EXPECT_TRUE(n == 4 || (n == 0 && !BoxesShown().empty())) << n;
    });
}
