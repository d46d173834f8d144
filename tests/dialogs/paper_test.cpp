// The Paper page under a person's hands: what its lists hold, what each choice makes of the
// record, what it shows, and what is left of it without its files.
#include <cstring>

#include "datafile/tables.h"
#include "dialogs/helpers.h"
#include "resources/paper_ids.h"
#include "tests/dialogs/sheet_fixture.h"
#include "tests/support/samples.h"

namespace
{

using ::testing::ElementsAre;
using Ints = std::vector<int>;

constexpr COLORREF BLACK = RGB(0, 0, 0), WHITE = RGB(255, 255, 255), BLUE = RGB(0, 0, 255);

std::string Told(const Ints &numbers)
{
    std::string told;
    for (const int n : numbers)
        told += (told.empty() ? "" : " ") + std::to_string(n);
    return told;
}
// What choices of papers and sources set, in this order: the source's position and identifier, the
// paper's index and identifier; width and length of the paper, those held, those in 1/360 inch.
std::string ChoiceIn(const DriverDevMode &dm)
{
    return Told({dm.nBin, dm.dm.dmDefaultSource, dm.nPaper, dm.dm.dmPaperSize, dm.dm.dmPaperWidth,
                 dm.dm.dmPaperLength, dm.lPaperWidth, dm.lPaperLength, dm.wPaperWidth360,
                 dm.wPaperLength360});
}
// Printable area; left, top, right and bottom margins.
std::string AreaIn(const DriverDevMode &dm)
{
    return Told({dm.nPrintArea, dm.wMarginLeft, dm.wMarginTop, dm.wMarginRight, dm.wMarginBottom});
}
std::string PapersListed()
{
    return Told(Seen(IDC_PAPER_SIZE).at("data").get<Ints>());
}
// Whether all else is the same, but for the unit and what follows from the source elsewhere.
bool AreAlikeElsewhere(DriverDevMode a, const DriverDevMode &b)
{
    a.nBin = b.nBin;
    a.nPaper = b.nPaper;
    std::memcpy(&a.dm.dmPaperSize, &b.dm.dmPaperSize, 3 * sizeof a.dm.dmPaperSize);
    a.dm.dmDefaultSource = b.dm.dmDefaultSource;
    std::memcpy(&a.dwUnit, &b.dwUnit, 3 * sizeof a.dwUnit);
    std::memcpy(&a.nPrintArea, &b.nPrintArea,
                offsetof(DriverDevMode, lMaxPrintWidth) - offsetof(DriverDevMode, nPrintArea));
    std::memcpy(a.adwMWData, b.adwMWData, sizeof a.adwMWData);
    return std::memcmp(&a, &b, sizeof a) == 0;
}

// Papers: A4 in sources 0 and 1, Letter in 1, Legal in 2, user-defined in 0. Saved: one that is
// called Legal as well in 0 and 2, Card in 0. The last source has the second one's identifier and
// feeds nothing.
class PaperPage : public SheetTest
{
  protected:
    PaperPage()
    {
        model.papers = {PaperOf(9, 2976, 4209, 3), PaperOf(1, 3060, 3960, 2),
                        PaperOf(5, 3060, 5040, 4), PaperOf(256, 2976, 4209, 1)};
        model.papers.back().w14 = 2;
        model.papers.back().wRight = 90;
        model.bins = {{7, 0, 0}, {4, 0, 1}, {15, 0, 2}, {4, 0, 3}};
        model.AddUserPaper("Legal", 850, 550, 2, 5);
        model.AddUserPaper("Card", 1000, 1500, 1, 1);
        dm.dm.dmPaperSize = 9;
        dm.dm.dmPaperWidth = 2100;
        dm.dm.dmPaperLength = 2970;
        dm.dm.dmDefaultSource = 7;
        dm.dm.dmCopies = 7;
        dm.nPrintArea = 1;
        dm.lPaperWidth = 1111;
        dm.lPaperLength = 2222;
        dm.wPaperWidth360 = 7;
        dm.wPaperLength360 = 8;
        dm.lMaxPrintWidth = 2880;
        fresh = dm;
    }
    PaperRecord PaperOf(int16_t id, int16_t width, int16_t length, int16_t mask) const
    {
        PaperRecord paper = model.papers[0];
        paper.wId = id;
        paper.wWidth = width;
        paper.wLength = length;
        paper.wBinMask = mask;
        return paper;
    }
    void StandOn(int nPaper, int16_t id, int16_t source = 7, int nBin = 0)
    {
        dm = fresh;
        dm.nPaper = nPaper;
        dm.dm.dmPaperSize = id;
        dm.dm.dmDefaultSource = source;
        dm.nBin = nBin;
    }
    // Turns to the page, does this there, and ends the sheet.
    void Visit(std::vector<Person::Step> steps, const char *end = "cancel")
    {
        InstallFiles();
        steps.insert(steps.begin(), "page \"Paper\"");
        steps.emplace_back(end);
        EXPECT_GT(Enter(std::move(steps)), 0);
        person.ExpectDone();
    }
    DriverDevMode fresh{};
};

TEST_F(PaperPage, ListsWhatTheSourceFeedsAndFindsItsPaper)
{
    const struct {
        const char *why;
        int nPaper;
        int16_t id, source;
        bool bSaved;
        const char *data;
        int nSelected, nPaperThen;
        int16_t idThen;
    } aRows[] = {
        {"papers, then saved sizes", 0, 9, 7, true, "0 3 4 5", 0, 0, 9},
        {"an identifier tells the index", 1, 256, 7, true, "0 3 4 5", 1, 3, 256},
        {"and that of a saved size", 0, 769, 7, true, "0 3 4 5", 3, 5, 769},
        {"a saved size that is called like a paper", 4, 768, 15, true, "2 4", 1, 4, 768},
        {"the last source of an identifier counts", 0, 9, 4, true, "", -1, 0, 9},
        {"a source that the model lacks is the first", 0, 9, 99, true, "0 3 4 5", 0, 0, 9},
        {"a saved size that is gone", 5, 769, 7, false, "0 3", 1, 3, 256},
        {"the same, where the user-defined is not fed", 5, 769, 15, false, "2", -1, 3, 256},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        StandOn(row.nPaper, row.id, row.source);
        model.bUcf = row.bSaved;
        Visit({[&] {
            const auto list = Seen(IDC_PAPER_SIZE);
            EXPECT_EQ(PapersListed(), row.data);
            EXPECT_EQ(list.at("selection"), row.nSelected);
            EXPECT_EQ(+dm.nPaper, row.nPaperThen);
            EXPECT_EQ(dm.dm.dmPaperSize, row.idThen);
        }});
    }
}

TEST_F(PaperPage, ASingleSourceIsNotAskedFor)
{
    Visit({[] {
        EXPECT_THAT(SeenItems(IDC_PAPER_SOURCE), ElementsAre("Cassette", "Rear", "Roll", ""));
        EXPECT_EQ(Seen(IDC_PAPER_SOURCE).at("data").get<Ints>(), Ints({0, 1, 2, 3}));
        EXPECT_EQ(SeenText(IDC_PAPER_SOURCE_LABEL), "S&ource");
    }});
    model.bins.resize(1);
    Visit({[] {
        for (const int id : {IDC_PAPER_SOURCE, IDC_PAPER_SOURCE_LABEL})
            EXPECT_EQ(Seen(id).at("visible"), false);
    }});
}

TEST_F(PaperPage, AChoiceOfPaperOrSourceMakesItsRecord)
{
    const struct {
        const char *why, *step;
        int nPaper;
        int16_t id;
        const char *choice;
        unsigned dwUnit;
        const char *data;
        int nSelected;
    } aRows[] = {
        {"a paper of the model", "choose 5040 \"A4\"", 5, 769,
         "0 7 0 9 2100 2970 2100 2970 2976 4209", 0, "0 3 4 5", 0},
        {"a saved size in inches, 1/360 inch stays", "choose 5040 \"Legal\"", 0, 9,
         "0 7 4 768 2159 1397 2159 1397 7 8", 2, "0 3 4 5", 2},
        {"no dialog for sizes: the held one", "choose 5040 \"User Defined\"", 0, 9,
         "0 7 3 256 1111 2222 1111 2222 1575 3149", 0, "0 3 4 5", 1},
        {"the paper is fed there too", "choose 5041 \"Rear\"", 0, 9,
         "1 4 0 9 2100 2970 1111 2222 7 8", 0, "0 1", 0},
        {"the first paper, the held size stays", "choose 5041 \"Roll\"", 0, 9,
         "2 15 2 5 2159 3556 1111 2222 3060 5040", 0, "2 4", 0},
        {"a saved size, found by its name, a paper's", "choose 5041 \"Roll\"", 4, 768,
         "2 15 4 768 2100 2970 1111 2222 7 8", 0, "2 4", 0},
        {"nothing is fed", "choose 5041 #3", 0, 9, "3 4 0 9 2100 2970 1111 2222 7 8", 0, "", -1},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        StandOn(row.nPaper, row.id);
        DriverDevMode before;
        Visit({[&] { before = dm; }, row.step,
               [&] {
                   EXPECT_EQ(ChoiceIn(dm), row.choice);
                   EXPECT_EQ(+dm.dwUnit, row.dwUnit);
                   EXPECT_TRUE(AreAlikeElsewhere(dm, before));
                   EXPECT_EQ(PapersListed(), row.data);
                   EXPECT_EQ(Seen(IDC_PAPER_SIZE).at("selection"), row.nSelected);
                   // The size becomes the user-defined paper's own.
                   EXPECT_EQ(UIInstance.dat.lpPapers[3].wWidth, row.nSelected == 1 ? 1575 : 2976);
               }});
    }
}

TEST_F(PaperPage, CopiesStayBetween1And99)
{
    const struct {
        const char *step, *shown;
        int16_t before, atOnce, applied;
    } aRows[] = {
        {"type 5160 \"150\"", "99", 7, 99, 99}, {"type 5160 \"\"", "1", 7, 1, 1},
        {"type 5160 \"0\"", "1", 7, 1, 1},      {"type 5160 \"42\"", "42", 7, 7, 42},
        {"scroll 5161 up", "8", 7, 8, 8},       {"scroll 5161 down", "6", 7, 6, 6},
        {"scroll 5161 up", "99", 98, 99, 99},   {"scroll 5161 up", "99", 99, 99, 99},
        {"scroll 5161 down", "1", 1, 1, 1},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.step);
        dm.dm.dmCopies = row.before;
        const auto look = [&] {
            EXPECT_EQ(SeenText(IDC_PAPER_COPIES), row.shown);
            EXPECT_EQ(dm.dm.dmCopies, row.atOnce);
        };
        Visit({row.step, look}, "ok");
        EXPECT_EQ(dm.dm.dmCopies, row.applied);
    }
}

TEST_F(PaperPage, TheSourcesRulesAreAppliedWhenThePageIsShown)
{
    const struct {
        WORD wFlags;
        int nAreaBefore, nArea;
        bool bEnabled;
        int nCollateBefore, nCollate;
    } aRows[] = {
        {0x000, 2, 2, true, 1, 1},  {0x101, 1, 2, true, 0, 1},  {0x202, 2, 1, true, 1, 0},
        {0x303, 1, 2, false, 0, 1}, {0x404, 2, 1, false, 1, 0}, {0x505, 2, 2, true, 1, 1},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.wFlags);
        model.bins[0].wFlags = row.wFlags;
        dm = fresh;
        dm.nPrintArea = row.nAreaBefore;
        dm.dm.dmCollate = static_cast<int16_t>(row.nCollateBefore);
        InstallFiles();
        EXPECT_EQ(Enter({"ok"}), 1);
        EXPECT_EQ(+dm.nPrintArea, row.nAreaBefore) << "never shown";
        EXPECT_EQ(dm.dm.dmCollate, row.nCollateBefore);
        const auto look = [&] {
            EXPECT_EQ(+dm.nPrintArea, row.nArea);
            EXPECT_EQ(Seen(IDC_PAPER_MAXIMUM).at("checked"), row.nArea == 1);
            EXPECT_EQ(Seen(IDC_PAPER_CENTERED).at("checked"), row.nArea == 2);
            EXPECT_EQ(Seen(IDC_PAPER_MAXIMUM).at("enabled"), row.bEnabled);
            EXPECT_EQ(Seen(IDC_PAPER_CENTERED).at("enabled"), row.bEnabled);
            EXPECT_EQ(dm.dm.dmCollate, row.nCollate);
        };
        Visit({look}, "ok");
        EXPECT_EQ(dm.dm.dmCollate, 0) << "the page has no such box";
    }
}

TEST_F(PaperPage, ThePreviewTellsPaperSourceOrientationAndArea)
{
    StandOn(5, 769, 7, 1); // class 2, second source
    const auto middle = [] {
        const RECT rc = ClientOf(IDC_PAPER_PREVIEW);
        return PixelOf(IDC_PAPER_PREVIEW, rc.right / 2, rc.bottom / 2);
    };
    const auto isBlue = [&] {
        EXPECT_EQ(Seen(IDC_PAPER_PREVIEW).at("picture"), 5160);
        EXPECT_EQ(middle(), BLUE);
        EXPECT_EQ(PixelOf(IDC_PAPER_PREVIEW, 1, 1), WHITE);
        EXPECT_EQ(PixelOf(IDC_PAPER_PREVIEW, 0, 1), BLACK);
    };
    const auto repaint = [] { InvalidateRect(kvp::TopWindow(), nullptr, TRUE); };
    Visit({[&] { EXPECT_NE(middle(), BLUE); }, "click 5043", "click 5050", isBlue, repaint, isBlue,
           "click 5047", isBlue}); // without a picture of its own
    // The number has 16 bits.
    model.papers[0].w14 = 16384;
    StandOn(0, 9);
    Visit({[] { EXPECT_EQ(Seen(IDC_PAPER_PREVIEW).at("picture"), 4000); }});
}

TEST_F(PaperPage, ANoticeOfCode9IsStoredAlone)
{
    const auto send = [] {
        for (const WORD id : {IDC_PAPER_LANDSCAPE, IDC_PAPER_CENTERED})
            SendMessageA(kvp::TopWindow(), WM_COMMAND, static_cast<WPARAM>(id | 9 << 16), 0);
    };
    Visit({send, [&] {
               EXPECT_EQ(dm.dm.dmOrientation, 2);
               EXPECT_EQ(+dm.nPrintArea, 2);
               EXPECT_EQ(Seen(IDC_PAPER_PORTRAIT).at("checked"), true);
               EXPECT_EQ(Seen(IDC_PAPER_MAXIMUM).at("checked"), true);
           }});
}

TEST_F(PaperPage, ALineSetsSavedSizesApartInTheOpenList)
{
    for (const bool bSaved : {true, false}) {
        model.bUcf = bSaved;
        // Black pixels in the item's lowest row.
        const auto dots = [](int nItem) {
            const int y =
                ClientOf(IDC_PAPER_SIZE).bottom + (nItem + 1) * GetTextHeight(kvp::TopWindow()) - 1;
            int n = 0;
            for (int x = 100; x < 150; ++x)
                n += PixelOf(IDC_PAPER_SIZE, x, y) == BLACK;
            return n;
        };
        Visit({"drop 5040", [&] {
                   EXPECT_EQ(dots(0), 0);
                   EXPECT_NEAR(dots(1), bSaved ? 25 : 0, bSaved ? 14 : 0);
               }});
    }
}

TEST_F(PaperPage, ApplySetsTheMargins)
{
    const struct {
        const char *why;
        int nPaper;
        int16_t id, width;
        int32_t lMax;
        const char *area;
    } aRows[] = {
        {"those of the paper", 0, 9, 2100, 2892, "1 42 60 42 198"},
        {"the right one grows by what is too wide", 0, 9, 2100, 2800, "1 42 60 134 198"},
        {"before it is centred", 0, 9, 2100, 2800, "2 134 198 134 198"},
        {"a saved size has the user-defined paper's", 5, 769, 1000, 2800, "1 42 60 90 198"},
        {"a paper that nobody knows too", 0, 99, 1000, 2800, "2 90 198 90 198"},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        StandOn(row.nPaper, row.id);
        dm.dm.dmPaperWidth = row.width;
        dm.lMaxPrintWidth = row.lMax;
        dm.nPrintArea = row.area[0] - '0';
        Visit({}, "ok");
        EXPECT_EQ(AreaIn(dm), row.area);
    }
    model.papers.pop_back();
    StandOn(0, 99);
    dm.wMarginLeft = 1;
    Visit({}, "ok");
    EXPECT_EQ(dm.wMarginLeft, 1) << "neither the paper nor a user-defined one";
}

TEST_F(PaperPage, SaysWhichFileCannotServe)
{
    const std::string dat = std::string(WINDOWS_DIR) + "KVA.dat";
    const std::string cfg = std::string(WINDOWS_DIR) + "KVA.cfg";
    const std::string ucf = std::string(SYSTEM_DIR) + "KVA.ucf";
    const auto other = [](Bytes bytes, size_t nVersionAt) {
        bytes[nVersionAt] = 2;
        return bytes;
    };
    const auto half = [](Bytes bytes) { return Bytes(bytes.begin(), bytes.end() - 1); };
    const std::vector<std::string> none, missing{"Dlg DLL Message: Open data file error!"},
        otherDat{"Dlg DLL Message: Version Error of dat file. Please Install again."},
        otherCfg{"Dlg DLL Message: Version Error of cfg file. Please Install again."},
        otherUcf{"Dlg DLL Message: Version Error of ucf file"};
    const struct {
        std::string file;
        std::optional<Bytes> bytes;
        const std::vector<std::string> &says;
        size_t nItems;
    } aRows[] = {
        {dat, {}, missing, 4},
        {dat, other(model.Dat(), 3), otherDat, 0},
        {dat, half(model.Dat()), otherDat, 0},
        {cfg, {}, none, 4},
        {cfg, other(model.Cfg(), 1), otherCfg, 0},
        {cfg, half(model.Cfg()), otherCfg, 0},
        {ucf, other(model.Ucf(), 1), otherUcf, 2},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.file + (row.bytes ? "" : " is missing"));
        dm = fresh;
        InstallFiles();
        const auto change = [&] { // after another page has read all of them
            ReadDatTables(dat.c_str(), &UIInstance.dat);
            ReadCfgTables(cfg.c_str(), &UIInstance.dat);
            ReadUserTables(ucf.c_str(), &UIInstance.dat);
            BoxesShown();
            row.bytes ? kvp::PutMemoryFile(row.file, *row.bytes) : kvp::PutAbsentFile(row.file);
        };
        const auto look = [&] {
            EXPECT_EQ(BoxesShown(), row.says);
            EXPECT_EQ(SeenItems(IDC_PAPER_SIZE).size(), row.nItems);
            EXPECT_EQ(SeenText(IDC_PAPER_COPIES), row.nItems ? "7" : "");
        };
        EXPECT_EQ(Enter({change, "page \"Paper\"", look, "ok"}), 1);
        EXPECT_EQ(dm.dm.dmCopies, 7);
    }
    person.ExpectDone();
    EXPECT_EQ(UIInstance.dat.lpUserPapers[1].wMark, 0) << "a slot of the last file but one";
    EXPECT_STREQ(UIInstance.dat.lpUserPapers[1].szName, "");
}

using PaperPageOfSamples = SampleTest;

// Cancel in the dialog of sizes is a choice of the user-defined paper with the size that it had; a
// saved size lies behind the user-defined paper and leaves the size in 1/360 inch.
TEST_F(PaperPageOfSamples, EachSourceAndKindOfPaperMakesItsRecord)
{
    const std::vector<Person::Step> none, cancelled{"type 5227 \"1000\"", "cancel"},
        typed{"type 5227 \"1000\"", "type 5054 \"1500\"", "ok"},
        saved{"type 5227 \"2000\"", "type 5256 \"Poster\"", "click 5257", "ok"};
    const struct {
        const char *source, *paper;
        const std::vector<Person::Step> &dialog;
        const char *choice, *area;
        int nPicture;
    } aRows[] = {
        {"Paper Cassette", "A3 297 x 420 mm", none, "0 14 1 8 2970 4200 2970 4200 4209 5953",
         "1 42 42 42 198", 4000},
        {"Manual Feed", "Envelope DL 110 x 220 mm", none, "1 4 12 27 1100 2200 1100 2200 1559 3118",
         "2 60 120 60 120", 4610},
        {"Roll Paper", "Banner 329 x 1117 mm", none, "2 8 20 304 3290 11170 3290 11170 4663 15831",
         "1 42 0 121 0", 5700},
        {"Envelope Feeder", "Envelope Monarch 3 7/8 x 7 1/2 in", none,
         "3 5 15 37 984 1905 984 1905 1395 2700", "2 60 120 60 120", 4810},
        {"Rear Tray", "Postcard 100 x 148 mm", none, "4 10 16 43 1000 1480 1000 1480 1417 2098",
         "1 42 42 42 198", 5400},
        {"Rear Tray", "User Defined", cancelled, "4 10 21 256 2100 2970 2100 2970 2976 4209",
         "1 42 42 60 198", 4400},
        {"Rear Tray", "User Defined", typed, "4 10 21 256 1000 1500 1000 1500 1417 2126",
         "1 42 42 60 198", 4400},
        {"Rear Tray", "User Defined", saved, "4 10 22 768 2000 2970 2000 2970 2976 4209",
         "1 42 42 60 198", 4400},
    };
    Start();
    ASSERT_EQ(Show({"page \"Paper\"", "ok"}), 1);
    const DriverDevMode plain = out;
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.paper);
        std::vector<Person::Step> steps = {"page \"Paper\"",
                                           std::string("choose 5041 \"") + row.source + "\"",
                                           std::string("choose 5040 \"") + row.paper + "\""};
        steps.insert(steps.end(), row.dialog.begin(), row.dialog.end());
        const auto look = [&] {
            EXPECT_EQ(Seen(IDC_PAPER_PREVIEW).at("picture"), row.nPicture);
            EXPECT_EQ(PixelOf(IDC_PAPER_PREVIEW, 1, 1), WHITE);
        };
        steps.insert(steps.end(), {look, "ok"});
        EXPECT_EQ(Show(steps), 1);
        EXPECT_EQ(ChoiceIn(out), row.choice);
        EXPECT_EQ(AreaIn(out), row.area);
        EXPECT_TRUE(AreAlikeElsewhere(plain, out));
    }
}

} // namespace
