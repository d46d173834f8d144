// DrvDeviceCapabilities: what is counted is what is written, and nothing more.
#include <algorithm>
#include <array>
#include <cstring>

#include <gmock/gmock.h>

#include "tests/interface/fixture.h"

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr DWORD NO_ANSWER = 0xFFFFFFFF;

class Capabilities : public InterfaceTest
{
  protected:
    DWORD Ask(WORD wQuery, LPVOID lpOutput = nullptr, DriverDevMode *lpIn = nullptr)
    {
        return driver.DrvDeviceCapabilities(hPrinter, nullptr, wQuery, lpOutput, lpIn);
    }
    // Counts, fills as many entries of this type, and looks behind them.
    template <class Entry>
    std::vector<Entry> List(WORD wQuery, DriverDevMode *lpIn = nullptr)
    {
        const DWORD dwCount = Ask(wQuery, nullptr, lpIn);
        std::vector<Entry> entries(size_t{dwCount} + 2);
        std::memset(entries.data(), 0xCD, entries.size() * sizeof(Entry));
        EXPECT_EQ(Ask(wQuery, entries.data(), lpIn), dwCount) << "query " << wQuery;
        const Bytes guard(2 * sizeof(Entry), 0xCD);
        EXPECT_EQ(std::memcmp(&entries[dwCount], guard.data(), guard.size()), 0)
            << "query " << wQuery << " wrote past its count";
        entries.resize(dwCount);
        return entries;
    }
    template <size_t N>
    std::vector<std::string> Names(WORD wQuery, DriverDevMode *lpIn = nullptr)
    {
        std::vector<std::string> names;
        for (const auto &entry : List<std::array<WCHAR, N>>(wQuery, lpIn)) {
            EXPECT_NE(std::find(entry.begin(), entry.end(), u'\0'), entry.end());
            names.push_back(kvp::ToUtf8(entry.data()));
        }
        return names;
    }
    DriverDevMode FromSource(int16_t source)
    {
        DriverDevMode dm = Settings();
        dm.dm.dmFields = KV_DM_DEFAULTSOURCE;
        dm.dm.dmDefaultSource = source;
        return dm;
    }
};

using Size = std::array<int32_t, 2>;

TEST_F(Capabilities, SourcesAndTheirPapersAreListedInOneOrder)
{
    model.AddUserPaper("Card", 1000, 1480, 1, 3);
    model.AddUserPaper("Inches", 850, 1100, 2, 2);
    model.bins.push_back({9, 0, 2}); // feeds nothing
    Start();
    EXPECT_THAT(List<WORD>(DC_PAPERS), ElementsAre(9, 1, 256, 768));
    EXPECT_THAT(Names<64>(DC_PAPERNAMES),
                ElementsAre("A4 210 x 297 mm", "Letter 8 1/2 x 11 in", "", "Card"));
    EXPECT_THAT(List<Size>(DC_PAPERSIZE), ElementsAre(Size{2100, 2970}, Size{2159, 2794},
                                                      Size{2100, 2970}, Size{1000, 1480}));
    DriverDevMode tray = FromSource(4), bare = FromSource(9);
    EXPECT_THAT(List<WORD>(DC_PAPERS, &tray), ElementsAre(9, 1, 768, 769));
    EXPECT_THAT(Names<64>(DC_PAPERNAMES, &tray).back(), "Inches");
    EXPECT_THAT(List<Size>(DC_PAPERSIZE, &tray).back(), (Size{2159, 2794}));
    EXPECT_THAT(List<WORD>(DC_PAPERS, &bare), IsEmpty());
    EXPECT_THAT(Names<64>(DC_PAPERNAMES, &bare), IsEmpty());
    EXPECT_THAT(List<Size>(DC_PAPERSIZE, &bare), IsEmpty());
    EXPECT_THAT(List<WORD>(DC_BINS), ElementsAre(7, 4, 9));
    EXPECT_THAT(Names<24>(DC_BINNAMES),
                ElementsAre("Auto Sheet Feeder", "A tray with a name of m", ""));
    EXPECT_THAT(BoxesShown(), IsEmpty());
}

TEST_F(Capabilities, ValuesComeFromTheMergedRecordAndThePrinterRecord)
{
    model.tmpl.dm.dmFields = 0x8000030F;
    model.printer.wMaxCopies = -2;
    Start();
    DriverDevMode given = FromSource(4);
    given.dm.dmSpecVersion = 0x401; // a foreign record leaves the working record's own
    const struct {
        std::vector<WORD> queries;
        DWORD dwAnswer;
    } aRows[] = {
        {{DC_FIELDS}, 0x8000030F},
        {{DC_DUPLEX}, 0},
        {{DC_SIZE}, 188},
        {{DC_EXTRA}, 374},
        {{DC_VERSION}, 0x320},
        {{DC_DRIVER}, 859},
        {{DC_ORIENTATION}, 270},
        {{DC_COPIES}, static_cast<DWORD>(-2)},
        {{0, DC_MINEXTENT, DC_MAXEXTENT, DC_ENUMRESOLUTIONS, DC_FILEDEPENDENCIES, DC_TRUETYPE, 19,
          0xFFFF},
         NO_ANSWER},
    };
    PlacedRecord out;
    for (const auto &row : aRows)
        for (const WORD wQuery : row.queries)
            EXPECT_EQ(Ask(wQuery, out.Get(), &given), row.dwAnswer) << "query " << wQuery;
    EXPECT_TRUE(out.Untouched());
}

TEST_F(Capabilities, ANegativeModelIdentifierHidesNothing)
{
    model.printer.sModelId = -1;
    Start();
    EXPECT_EQ(Ask(DC_COPIES), 99u);
    EXPECT_THAT(List<WORD>(DC_PAPERS), ElementsAre(9, 1, 256));
    CutTheDat();
    EXPECT_EQ(Ask(DC_COPIES), NO_ANSWER) << "without a printer record";
    EXPECT_EQ(Ask(DC_ORIENTATION), 270u);
    EXPECT_THAT(BoxesShown(), IsEmpty());
}

TEST_F(Capabilities, NamesNeedTheUILibraryCountsDoNot)
{
    Start();
    kvp::PutAbsentFile(std::string(DRIVER_DIR) + "KVUI.DLL");
    for (const auto &[wQuery, dwCount] : {std::pair{DC_PAPERNAMES, 3u}, {DC_BINNAMES, 2u}}) {
        EXPECT_EQ(Ask(wQuery), dwCount);
        EXPECT_THAT(BoxesShown(), IsEmpty());
        PlacedRecord out;
        EXPECT_EQ(Ask(wQuery, out.Get()), 0u);
        EXPECT_TRUE(out.Untouched());
        EXPECT_THAT(BoxesShown(),
                    ElementsAre(::testing::StartsWith("Dlg DLL Message: File not found : ")));
    }
}

// A .cfg of another version opens, but its tables cannot be had: the functions' 0 is the answer.
TEST_F(Capabilities, TablesThatCannotBeLoadedAnswerZeroAfterAMessage)
{
    model.wCfgVersion = 255;
    Start();
    const std::string expected =
        "Dlg DLL Message: Version Error of cfg file. Please Install again.";
    EXPECT_EQ(Ask(DC_PAPERS), 0u);
    EXPECT_EQ(Ask(DC_BINS), 0u);
    EXPECT_THAT(BoxesShown(), ElementsAre(expected, expected));
}

} // namespace
