// Merging records from outside into a valid one: what is taken, and what never is.
#include "tests/datafile/model_test.h"

#include <algorithm>
#include <array>
#include <memory>

#include "settings/defaults.h"
#include "settings/merge.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace
{

constexpr uint32_t ALL_FLAGS = 0xFFFFFFFF;

// The model: papers 9 (2100 x 2970) and 1 (2159 x 2794) of kinds 0 and 1, 256 of kind 0; user slots
// 768 (0.1 mm, kind 1) and 769 (0.01 inch, kinds 0 and 1); source 7 free, source 4 sets the area to
// centred. Margins are 42, 60, 42, 198; the printable width is at most 2880. In force: paper 9.
class MergeTest : public ModelTest
{
  public:
    void SetUp() override
    {
        ModelTest::SetUp();
        model.AddUserPaper("Millimetres", 1000, 1480, 1, 2);
        model.AddUserPaper("Inches", 850, 550, 2, 3);
        Start();
    }
    void Start()
    {
        model.tmpl.dm.dmCopies = 2;
        Install();
        dm = NamedRecord(u"KORVA One");
        ASSERT_TRUE(InitPrinterDevMode(&dm, nullptr, nullptr));
        expected = dm;
        foreign = {};
        foreign.dm.dmSpecVersion = KV_SPECVERSION;
        foreign.dm.dmDriverVersion = 1;
        foreign.dm.dmSize = KV_PUBLICSIZE;
    }
    // The model's tables as they are now.
    const DatFile *Load()
    {
        EXPECT_TRUE(Get_DatFileLib(&dm, &block));
        return &block;
    }
    std::array<int, 4> Margins() const
    {
        return {dm.wMarginLeft, dm.wMarginTop, dm.wMarginRight, dm.wMarginBottom};
    }
    BOOL Merge() { return KVMergeDevMode(&dm, &foreign, nullptr, nullptr); }
    DriverDevMode foreign{}, expected{};
    DatFile block{};
};

struct Outcome { // of the fields that a merge may change, as they stand before it
    int16_t orientation = 1, paper = 9, length = 2970, width = 2100, copies = 2, source = 7;
    int32_t nPaper = 0, nBin = 0, nPrintArea = 1;
    uint32_t dwUnit = 1;
    uint16_t wRight = 42, wWidth360 = 2976, wLength360 = 4209;
};

void Put(DriverDevMode *to, const Outcome &outcome)
{
    to->dm.dmOrientation = outcome.orientation;
    to->dm.dmPaperSize = outcome.paper;
    to->lPaperLength = to->dm.dmPaperLength = outcome.length;
    to->lPaperWidth = to->dm.dmPaperWidth = outcome.width;
    to->dm.dmCopies = outcome.copies;
    to->dm.dmDefaultSource = outcome.source;
    to->nPaper = outcome.nPaper;
    to->nBin = outcome.nBin;
    to->nPrintArea = outcome.nPrintArea;
    to->dwUnit = outcome.dwUnit;
    to->wMarginRight = outcome.wRight;
    to->wPaperWidth360 = outcome.wWidth360;
    to->wPaperLength360 = outcome.wLength360;
}

} // namespace

TEST_F(MergeTest, PublicFieldsAreTakenOneByOne)
{
    // clang-format off
    static const struct {
        const char *why;
        uint32_t dwFlags;
        std::array<int16_t, 7> sent; // orientation, paper, length, width, scale, copies, source
        Outcome outcome;
    } aRows[] = {
        {"nothing is meant", 0, {2, 1, 500, 500, 17, 7, 4}, {}},
        {"nothing else is ever meant", ALL_FLAGS & ~0x30Fu, {2, 1, 500, 500, 17, 7, 4}, {}},
        {"one copy", 0x100, {0, 0, 0, 0, 17, 1, 0}, {.copies = 1}},
        {"99 copies", 0x100, {0, 0, 0, 0, 17, 99, 0}, {.copies = 99}},
        {"no copies", 0x100, {0, 0, 0, 0, 17, 0, 0}, {}},
        {"100 copies", 0x100, {0, 0, 0, 0, 17, 100, 0}, {}},
        {"landscape", 0x1, {2, 0, 0, 0, 17, 0, 0}, {.orientation = 2}},
        {"no orientation", 0x1, {0, 0, 0, 0, 17, 0, 0}, {}},
        {"an unknown orientation", 0x1, {3, 0, 0, 0, 17, 0, 0}, {}},
        {"a paper, its width limited by the right margin", 0x2, {0, 1, 0, 0, 17, 0, 0},
         {.paper = 1, .length = 2794, .width = 2159, .nPaper = 1, .wRight = 138}},
        {"a paper that the model lacks", 0x2, {0, 77, 0, 0, 17, 0, 0}, {.paper = 77}},
        {"a free size, truncated", 0xE, {0, 256, 2051, 1234, 17, 0, 0},
         {.paper = 256, .length = 2051, .width = 1234, .wWidth360 = 1748, .wLength360 = 2906}},
        {"a free size whose length is not meant", 0xA, {0, 256, 2051, 2159, 17, 0, 0},
         {.paper = 256, .width = 2159, .wWidth360 = 3060}},
        {"a negative length, cut to its field", 0x6, {0, 256, -100, 0, 17, 0, 0},
         {.paper = 256, .length = -100, .wLength360 = 0x10000 - 141}},
        {"a size without its paper", 0xC, {0, 256, 1000, 1000, 17, 0, 0}, {}},
        {"a source with the area it sets, margins staying", 0x200, {0, 0, 0, 0, 17, 0, 4},
         {.source = 4, .nBin = 1, .nPrintArea = 2}},
        {"an unknown source", 0x200, {0, 0, 0, 0, 17, 0, 5}, {}},
        {"an unknown paper and a source that moves it", 0x202, {0, 77, 0, 0, 17, 0, 7},
         {.wRight = 54}},
    };
    // clang-format on
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        Start();
        std::memset(foreign.dm.dmDeviceName, 0x11, 64);
        foreign.dm.dmColor = foreign.dm.dmCollate = foreign.dm.dmDuplex = 17;
        foreign.dm.dmPrintQuality = foreign.dm.dmYResolution = 17;
        foreign.dm.dmFields = row.dwFlags;
        std::memcpy(&foreign.dm.dmOrientation, &row.sent, sizeof row.sent);
        Put(&expected, row.outcome);
        EXPECT_TRUE(Merge());
        EXPECT_EQ(BytesOf(dm), BytesOf(expected));
    }
    EXPECT_THAT(BoxesShown(), IsEmpty());
}

TEST_F(MergeTest, AnEqualFreeSizeIsNotTakenAgain)
{
    dm.lPaperWidth = expected.lPaperWidth = 1111; // public and private part disagree
    foreign.dm.dmFields = KV_DM_PAPERSIZE | KV_DM_PAPERWIDTH;
    foreign.dm.dmPaperSize = 256;
    foreign.dm.dmPaperWidth = 2100;
    expected.dm.dmPaperSize = 256;
    Merge();
    EXPECT_EQ(BytesOf(dm), BytesOf(expected));
}

TEST_F(MergeTest, AFieldBeyondTheSendersSizeIsNotThere)
{
    for (uint16_t wSize = 0; wSize < 220; ++wSize) {
        Start();
        dm.dm.dmDefaultSource = 4;
        foreign.dm.dmSize = wSize;
        foreign.dm.dmFields = ALL_FLAGS;
        const int16_t aSent[] = {2, 256, 1000, 1000, 0, 5, 7};
        std::memcpy(&foreign.dm.dmOrientation, aSent, sizeof aSent);
        // A block of its own, no longer than it says, at an odd address.
        const size_t cb = std::max<size_t>(wSize, 72);
        const auto room = std::make_unique<uint8_t[]>(cb + 1);
        std::memcpy(room.get() + 1, &foreign, cb);
        const auto *odd = reinterpret_cast<const DriverDevMode *>(room.get() + 1);
        EXPECT_TRUE(KVMergeDevMode(&dm, odd, nullptr, nullptr));
        EXPECT_THAT((std::array<int, 6>{dm.dm.dmOrientation, dm.dm.dmPaperSize, dm.lPaperLength,
                                        dm.lPaperWidth, dm.dm.dmCopies, dm.dm.dmDefaultSource}),
                    ElementsAre(wSize < 78 ? 1 : 2, wSize < 80 ? 9 : 256, wSize < 82 ? 2970 : 1000,
                                wSize < 84 ? 2100 : 1000, wSize < 88 ? 2 : 5, wSize < 90 ? 4 : 7))
            << wSize;
    }
}

TEST_F(MergeTest, ThePrivatePartIsTakenOnlyFromOurOwnKind)
{
    for (const int nSpoiled : {0, 64, 66, 68, 70, 188}) { // the four marks and the tag
        SCOPED_TRACE(nSpoiled);
        Start();
        foreign = dm;
        foreign.dm.dmFields = KV_DM_COPIES;
        foreign.dm.dmCopies = 12;
        foreign.Settings.wInk = 5;
        foreign.Settings.wResolution = 1;
        ++reinterpret_cast<uint8_t *>(&foreign)[nSpoiled]; // 0: in the name, which is not looked at
        EXPECT_TRUE(Merge());
        EXPECT_EQ(dm.dm.dmCopies, 12) << "public fields count in any case";
        EXPECT_EQ(+dm.Settings.wInk, nSpoiled ? 1 : 5);
        EXPECT_EQ(dm.dm.dmColor, nSpoiled ? 2 : 6);
        EXPECT_EQ(+dm.lResX, nSpoiled ? 360 : 720) << "the resolution follows the settings";
        EXPECT_EQ(dm.dm.dmYResolution, nSpoiled ? 360 : 720);
    }
}

TEST_F(MergeTest, APrivatePartOfAnotherNameLeadsToThatModelsFiles)
{
    Model two;
    two.papers[1].wWidth = 1000;
    two.papers[1].wLength = 2000;
    two.Install("KV2");
    foreign = dm;
    const DriverDevMode named = NamedRecord(u"KORVA Two");
    std::memcpy(foreign.wszModelName, named.wszModelName, sizeof named.wszModelName);
    foreign.dm.dmFields = KV_DM_PAPERSIZE;
    foreign.dm.dmPaperSize = 1;
    Merge();
    EXPECT_EQ(dm.dm.dmPaperWidth, 706);
    EXPECT_EQ(dm.dm.dmPaperLength, 1411);
}

TEST_F(MergeTest, HostilePrivatePartsLeadNowhere)
{
    foreign = dm;
    foreign.dm.dmFields = ALL_FLAGS;
    foreign.dm.dmPaperSize = 256;
    foreign.dm.dmPaperWidth = foreign.dm.dmPaperLength = 32767;
    foreign.dm.dmDefaultSource = 4;
    constexpr size_t nFrom = offsetof(DriverDevMode, dwUnit);
    std::memset(reinterpret_cast<char *>(&foreign) + nFrom, 0x7F, sizeof foreign - nFrom);
    std::memcpy(foreign.wszModelName, dm.wszModelName, sizeof dm.wszModelName);
    EXPECT_TRUE(Merge());
    EXPECT_EQ(dm.Settings.wResolution, 0x7F7F);
    EXPECT_EQ(+dm.lResX, 0x7F7F7F7F) << "no such resolution: what was sent stays";
    EXPECT_EQ(dm.wPaperWidth360, 46441);
    EXPECT_EQ(dm.dm.dmPaperSize, 9) << "the source does not take the free size";
    std::fill(std::begin(foreign.wszModelName), std::end(foreign.wszModelName), u'x');
    EXPECT_TRUE(Merge()); // an unknown name of 32 characters: the table's first model
    EXPECT_THAT(BoxesShown(), IsEmpty());
}

TEST_F(MergeTest, WithoutFilesOnlyCopiesAndOrientationAreTaken)
{
    EXPECT_FALSE(KVMergeDevMode(nullptr, &foreign, nullptr, nullptr));
    EXPECT_FALSE(KVMergeDevMode(&dm, nullptr, nullptr, nullptr));
    kvp::PutAbsentFile(DatPath());
    foreign.dm.dmFields = ALL_FLAGS;
    foreign.dm.dmPaperSize = 1;
    foreign.dm.dmDefaultSource = 4;
    expected.dm.dmCopies = foreign.dm.dmCopies = 3;
    expected.dm.dmOrientation = foreign.dm.dmOrientation = 2;
    EXPECT_TRUE(Merge());
    EXPECT_EQ(BytesOf(dm), BytesOf(expected));
    EXPECT_THAT(BoxesShown(), ElementsAre(DAT_NOT_FOUND, DAT_NOT_FOUND));
}

// ---- sources ----------------------------------------------------------------------------------

TEST_F(MergeTest, EverySourceOfTheIdentifierIsWorkedOnInOrder)
{
    // The identifier has a sign in the record only.
    model.bins = {{7, 0, 0}, {0x8003, 0x100, 1}, {0x8003, 0x200, 2}};
    model.papers.push_back(model.papers[0]);
    model.papers[3].wId = 55;
    model.papers[3].wBinMask = 4; // fed from kind 2 alone
    Start();
    foreign.dm.dmFields = KV_DM_DEFAULTSOURCE;
    foreign.dm.dmDefaultSource = static_cast<int16_t>(0x8003);
    MergeSource(&dm, &foreign);
    EXPECT_THAT((std::array<int, 4>{dm.nBin, dm.nPrintArea, dm.dm.dmPaperSize, dm.nPaper}),
                ElementsAre(2, 1, 55, 3));
}

TEST_F(MergeTest, ASourceKeepsThePaperOrMovesItToItsFirst)
{
    static const struct {
        const char *why;
        int nPaperId;
        DWORD dwKind;
        int nNewPaperId;
        int nPaper;
        int nWidth; // 7777: not touched
    } aRows[] = {
        {"a paper that it takes keeps its size", 1, 1, 1, 1, 7777},
        {"a user's paper gets the size of its slot", 768, 1, 768, 3, 1000},
        {"the free size is not fed: the first paper", 256, 1, 9, 0, 2100},
        {"a user's paper is not fed", 768, 0, 9, 0, 2100},
        {"a free slot's identifier is nothing", 770, 0, 9, 0, 2100},
        {"a kind that takes no paper", 1, 5, 1, 88, 7777},
        {"a kind past the mask", 1, 16, 1, 88, 7777},
        {"a kind that would wrap around", 1, 0xFFFFFFE1, 1, 88, 7777},
    };
    Load();
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        dm = expected;
        dm.dm.dmPaperSize = static_cast<int16_t>(row.nPaperId);
        dm.dm.dmPaperWidth = 7777;
        dm.nPaper = 88;
        ModifySource(&dm, row.dwKind, &block);
        EXPECT_THAT((std::array<int, 3>{dm.dm.dmPaperSize, dm.nPaper, dm.dm.dmPaperWidth}),
                    ElementsAre(row.nNewPaperId, row.nPaper, row.nWidth));
    }
}

TEST_F(MergeTest, TheAreaRuleComesBeforeTheNewPapersMargins)
{
    model.bins[0].wFlags = 0x300;
    Start();
    dm.dm.dmPaperSize = 768;
    ModifySource(&dm, 0, Load());
    EXPECT_THAT(Margins(), ElementsAre(54, 198, 54, 198));
}

TEST_F(MergeTest, TheRuleOfTheSourceSetsTheArea)
{
    const int32_t aAreas[] = {9, 2, 1, 2, 1, 9}; // 9: left as it was
    for (uint16_t wRule = 0; wRule < 6; ++wRule) {
        model.bins[1].wFlags = static_cast<uint16_t>(wRule << 8 | 0xF0FF);
        Start();
        Load();
        for (const auto &[nBin, nExpected] : {std::pair{1, aAreas[wRule]}, {2, 9}, {-1, 9}}) {
            dm.nPrintArea = 9;
            dm.nBin = nBin;
            ModifyCheckBin(&dm, &block);
            EXPECT_EQ(+dm.nPrintArea, nExpected) << wRule << ", " << nBin;
        }
    }
}

// ---- the size of a new paper ------------------------------------------------------------------

TEST_F(MergeTest, ANewPaperBringsSizeIndexAndMargins)
{
    // clang-format off
    static const struct {
        const char *why;
        int nPaperId;
        int32_t lWidthBefore, lMaxPrintWidth;
        Outcome outcome; // nPaper -1: nothing at all changes
    } aRows[] = {
        {"a paper", 1, 2100, 2880, {.length = 2794, .width = 2159, .nPaper = 1, .wRight = 138}},
        {"a slot in 0.1 mm", 768, 2100, 2880, {.length = 1480, .width = 1000, .nPaper = 3}},
        {"a slot in 0.01 inch", 769, 2100, 2880,
         {.length = 1397, .width = 2159, .nPaper = 4, .dwUnit = 2, .wRight = 138}},
        {"the free size", 256, 2100, 2880, {.nPaper = 2, .wRight = 54}},
        {"the free size without a width", 256, 0, 2880, {.nPaper = -1}},
        {"a free slot", 770, 2100, 2880, {.nPaper = -1}},
        {"an unknown paper", 77, 2100, 2880, {.nPaper = -1}},
        {"exactly the widest", 9, 2100, 2892, {.wRight = 42}},
        {"one more than the widest", 9, 2100, 2891, {.wRight = 43}},
        {"past every field", 256, 0x7FFFFFFF, 0x7FFFFFFF,
         {.width = -1, .nPaper = 2, .wRight = 0xD581}},
    };
    // clang-format on
    Load();
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        dm = expected;
        dm.dwUnit = row.nPaperId == 769 ? 1 : 2;
        dm.nPaper = 88;
        dm.wMarginLeft = dm.wMarginTop = dm.wMarginRight = dm.wMarginBottom = 0;
        dm.lMaxPrintWidth = row.lMaxPrintWidth;
        dm.lPaperWidth = row.lWidthBefore;
        DriverDevMode after = dm;
        if (row.outcome.nPaper >= 0) {
            Put(&after, row.outcome);
            if (row.nPaperId < KV_FIRST_USERSLOT_ID)
                after.dwUnit = 2; // only a user's paper has a unit of its own
            after.wMarginLeft = 42;
            after.wMarginTop = 60;
            after.wMarginBottom = 198;
            after.lPaperWidth = row.lWidthBefore > 32767 ? row.lWidthBefore : row.outcome.width;
        }
        Get_NewPaperMMSize(&dm, row.nPaperId, &block);
        EXPECT_EQ(BytesOf(dm), BytesOf(after));
    }
}

TEST_F(MergeTest, CentredMarginsAreTheLargerOnes)
{
    model.papers[0].wTop = 42;
    model.papers[0].wRight = 60;
    Start();
    Load();
    dm.nPrintArea = 2;
    dm.lMaxPrintWidth = 9999;
    Get_NewPaperMMSize(&dm, 9, &block);
    EXPECT_THAT(Margins(), ElementsAre(60, 198, 60, 198));
    dm.lPaperWidth = 32767; // 46441 - 42 - 2880: margins have no sign
    dm.lMaxPrintWidth = 2880;
    Get_NewPaperMMSize(&dm, 256, &block);
    EXPECT_THAT(Margins(), ElementsAre(43519, 198, 43519, 198));
}

TEST_F(MergeTest, PapersAreFoundBeforeSlotsWhateverTheSource)
{
    model.papers[1].wId = 768; // kinds 0 and 1, but from now on of none
    model.papers[1].wBinMask = 0;
    Start();
    Load();
    dm.dm.dmPaperSize = 768;
    ModifySource(&dm, 1, &block); // finds the slot, then sizes it by the identifier
    EXPECT_EQ(dm.nPaper, 1);
    EXPECT_EQ(dm.dm.dmPaperWidth, 2159);
}
