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
using ::testing::IsEmpty;
using Data = std::vector<int>;

constexpr COLORREF BLACK = RGB(0, 0, 0), WHITE = RGB(255, 255, 255), BLUE = RGB(0, 0, 255);

// The bytes in which two records differ, as "offset: expected, found".
std::vector<std::string> Differences(const DriverDevMode &expected, const DriverDevMode &found)
{
    const auto *a = reinterpret_cast<const BYTE *>(&expected);
    const auto *b = reinterpret_cast<const BYTE *>(&found);
    std::vector<std::string> all;
    for (size_t i = 0; i < sizeof expected; ++i)
        if (a[i] != b[i])
            all.push_back(std::to_string(i) + ": " + std::to_string(a[i]) + ", " +
                          std::to_string(b[i]));
    return all;
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
    // How a step on the page changes the record.
    void ExpectChange(const Person::Step &step, const std::function<void(DriverDevMode &)> &change)
    {
        DriverDevMode expected;
        Visit({[&] { expected = dm; }, step,
               [&] {
                   change(expected);
                   EXPECT_THAT(Differences(expected, dm), IsEmpty());
               }});
    }

    DriverDevMode fresh{};
};

void SetPaper(DriverDevMode &dm, int nPaper, int16_t id, int16_t width, int16_t length)
{
    dm.nPaper = nPaper;
    dm.dm.dmPaperSize = id;
    dm.dm.dmPaperWidth = width;
    dm.dm.dmPaperLength = length;
}
void SetHeld(DriverDevMode &dm)
{
    dm.lPaperWidth = dm.dm.dmPaperWidth;
    dm.lPaperLength = dm.dm.dmPaperLength;
}
void Set360(DriverDevMode &dm, WORD width, WORD length)
{
    dm.wPaperWidth360 = width;
    dm.wPaperLength360 = length;
}

// ---- lists ------------------------------------------------------------------------------------

TEST_F(PaperPage, ListsWhatTheSourceFeedsAndFindsItsPaper)
{
    const struct {
        const char *why;
        int nPaper;
        int16_t id, source;
        bool bSaved;
        Data data;
        int nSelected, nPaperThen;
        int16_t idThen;
    } aRows[] = {
        {"papers, then saved sizes", 0, 9, 7, true, {0, 3, 4, 5}, 0, 0, 9},
        {"an identifier tells the index", 1, 256, 7, true, {0, 3, 4, 5}, 1, 3, 256},
        {"and that of a saved size", 0, 769, 7, true, {0, 3, 4, 5}, 3, 5, 769},
        {"a saved size that is called like a paper", 4, 768, 15, true, {2, 4}, 1, 4, 768},
        {"the last source of an identifier counts", 0, 9, 4, true, {}, -1, 0, 9},
        {"a source that the model lacks is the first", 0, 9, 99, true, {0, 3, 4, 5}, 0, 0, 9},
        {"a saved size that is gone", 5, 769, 7, false, {0, 3}, 1, 3, 256},
        {"the same, where the user-defined is not fed", 5, 769, 15, false, {2}, -1, 3, 256},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        StandOn(row.nPaper, row.id, row.source);
        model.bUcf = row.bSaved;
        Visit({[&] {
            const auto list = Seen(IDC_PAPER_SIZE);
            EXPECT_EQ(list.at("data").get<Data>(), row.data);
            EXPECT_EQ(list.at("selection"), row.nSelected);
            EXPECT_EQ(dm.nPaper, row.nPaperThen);
            EXPECT_EQ(dm.dm.dmPaperSize, row.idThen);
        }});
    }
}

TEST_F(PaperPage, ASingleSourceIsNotAskedFor)
{
    for (const bool bSingle : {false, true}) {
        if (bSingle)
            model.bins.resize(1);
        Visit({[&] {
            EXPECT_EQ(Seen(IDC_PAPER_SOURCE).at("visible"), !bSingle);
            EXPECT_EQ(Seen(IDC_PAPER_SOURCE_LABEL).at("visible"), !bSingle);
            if (bSingle)
                return;
            EXPECT_THAT(SeenItems(IDC_PAPER_SOURCE), ElementsAre("Cassette", "Rear", "Roll", ""));
            EXPECT_EQ(Seen(IDC_PAPER_SOURCE).at("data").get<Data>(), Data({0, 1, 2, 3}));
            EXPECT_EQ(SeenText(IDC_PAPER_SOURCE_LABEL), "S&ource");
        }});
    }
}

TEST_F(PaperPage, AChoiceOfPaperSetsItsSizes)
{
    ExpectChange("choose 5040 \"A4\"", [](DriverDevMode &to) {
        SetPaper(to, 0, 9, 2100, 2970);
        Set360(to, 2976, 4209);
        SetHeld(to);
    });
    StandOn(5, 769);
    ExpectChange("choose 5040 \"Legal\"", [](DriverDevMode &to) {
        SetPaper(to, 4, 768, 2159, 1397);
        to.dwUnit = 2;
        SetHeld(to);
    });
    ExpectChange("choose 5040 \"Card\"", [](DriverDevMode &to) {
        SetPaper(to, 5, 769, 1000, 1500);
        to.dwUnit = 1;
        SetHeld(to);
    });
}

// The library of these tests has no such dialog, which is as good as Cancel.
TEST_F(PaperPage, TheUserDefinedPaperWithoutItsDialogHasTheHeldSize)
{
    ExpectChange("choose 5040 \"User Defined\"", [](DriverDevMode &to) {
        SetPaper(to, 3, 256, 1111, 2222);
        Set360(to, 1575, 3149);
        EXPECT_EQ(UIInstance.dat.lpPapers[3].wWidth, 1575);
        EXPECT_EQ(UIInstance.dat.lpPapers[3].wLength, 3149);
        EXPECT_EQ(SeenText(IDC_PAPER_SIZE), "User Defined");
    });
}

TEST_F(PaperPage, ANewSourceKeepsThePaperOrTakesItsFirst)
{
    const auto source = [](DriverDevMode &to, int nBin, int16_t id) {
        to.nBin = nBin;
        to.dm.dmDefaultSource = id;
    };
    const auto shows = [](const Data &data, int nSelected) {
        EXPECT_EQ(Seen(IDC_PAPER_SIZE).at("data").get<Data>(), data);
        EXPECT_EQ(Seen(IDC_PAPER_SIZE).at("selection"), nSelected);
    };
    ExpectChange("choose 5041 \"Rear\"", [&](DriverDevMode &to) {
        source(to, 1, 4);
        shows({0, 1}, 0);
    });
    dm = fresh;
    ExpectChange("choose 5041 \"Roll\"", [&](DriverDevMode &to) {
        source(to, 2, 15);
        SetPaper(to, 2, 5, 2159, 3556);
        Set360(to, 3060, 5040); // the held size stays
        shows({2, 4}, 0);
    });
    dm = fresh;
    ExpectChange("choose 5041 #3", [&](DriverDevMode &to) {
        source(to, 3, 4);
        shows({}, -1);
    });
    StandOn(4, 768);
    ExpectChange("choose 5041 \"Roll\"", [&](DriverDevMode &to) {
        source(to, 2, 15);
        shows({2, 4}, 0); // by its name, which is a paper's too
    });
}

// ---- copies, orientation, printable area --------------------------------------------------------

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
        EXPECT_EQ(dm.nPrintArea, row.nAreaBefore) << "never shown";
        EXPECT_EQ(dm.dm.dmCollate, row.nCollateBefore);
        const auto look = [&] {
            EXPECT_EQ(dm.nPrintArea, row.nArea);
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

// ---- the preview, and other drawing -------------------------------------------------------------

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
               EXPECT_EQ(dm.nPrintArea, 2);
               EXPECT_EQ(Seen(IDC_PAPER_PORTRAIT).at("checked"), true);
               EXPECT_EQ(Seen(IDC_PAPER_MAXIMUM).at("checked"), true);
           }});
}

TEST_F(PaperPage, ALineSetsSavedSizesApartInTheOpenList)
{
    for (const bool bSaved : {true, false}) {
        SCOPED_TRACE(bSaved);
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
                   EXPECT_EQ(dots(1) > 10, bSaved);
                   EXPECT_LT(dots(1), 40);
               }});
    }
}

// ---- Apply --------------------------------------------------------------------------------------

TEST_F(PaperPage, ApplySetsTheMargins)
{
    const struct {
        const char *why;
        int nPaper;
        int16_t id, width;
        int32_t lMax;
        int nArea;
        WORD left, top, right, bottom;
    } aRows[] = {
        {"those of the paper", 0, 9, 2100, 2892, 1, 42, 60, 42, 198},
        {"the right one grows by what is too wide", 0, 9, 2100, 2800, 1, 42, 60, 134, 198},
        {"before it is centred", 0, 9, 2100, 2800, 2, 134, 198, 134, 198},
        {"a saved size has the user-defined paper's", 5, 769, 1000, 2800, 1, 42, 60, 90, 198},
        {"a paper that nobody knows too", 0, 99, 1000, 2800, 2, 90, 198, 90, 198},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        StandOn(row.nPaper, row.id);
        dm.dm.dmPaperWidth = row.width;
        dm.lMaxPrintWidth = row.lMax;
        dm.nPrintArea = row.nArea;
        Visit({}, "ok");
        EXPECT_THAT(
            (std::vector<int>{dm.wMarginLeft, dm.wMarginTop, dm.wMarginRight, dm.wMarginBottom}),
            ElementsAre(row.left, row.top, row.right, row.bottom));
    }
    model.papers.pop_back();
    StandOn(0, 99);
    dm.wMarginLeft = 1;
    Visit({}, "ok");
    EXPECT_EQ(dm.wMarginLeft, 1) << "neither the paper nor a user-defined one";
}

// ---- files --------------------------------------------------------------------------------------

TEST_F(PaperPage, SaysWhichFileCannotServe)
{
    const std::string dat = std::string(WINDOWS_DIR) + "KVA.dat";
    const std::string cfg = std::string(WINDOWS_DIR) + "KVA.cfg";
    const auto broken = [this](const std::string &file, Bytes (Model::*make)() const, size_t at) {
        Bytes bytes = (model.*make)();
        if (at)
            bytes[at] ^= 0xFF;
        else
            bytes.pop_back();
        kvp::PutMemoryFile(file, bytes);
    };
    const std::string caption = "Dlg DLL Message: ";
    const struct {
        const char *why;
        std::function<void()> change;
        std::string says;
        size_t nItems;
    } aRows[] = {
        {"no .dat", [&] { kvp::PutAbsentFile(dat); }, "Open data file error!", 4},
        {"another .dat", [&] { broken(dat, &Model::Dat, 3); },
         "Version Error of dat file. Please Install again.", 0},
        {"half a .dat", [&] { broken(dat, &Model::Dat, 0); },
         "Version Error of dat file. Please Install again.", 0},
        {"no .cfg", [&] { kvp::PutAbsentFile(cfg); }, "", 4},
        {"another .cfg", [&] { broken(cfg, &Model::Cfg, 1); },
         "Version Error of cfg file. Please Install again.", 0},
        {"half a .cfg", [&] { broken(cfg, &Model::Cfg, 0); },
         "Version Error of cfg file. Please Install again.", 0},
        {"another .ucf", [&] { broken(std::string(SYSTEM_DIR) + "KVA.ucf", &Model::Ucf, 1); },
         "Version Error of ucf file", 2},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        dm = fresh;
        InstallFiles();
        // Another page has read all of them before.
        const auto change = [&] {
            ReadDatTables(dat.c_str(), &UIInstance.dat);
            ReadCfgTables(cfg.c_str(), &UIInstance.dat);
            BoxesShown();
            row.change();
        };
        const auto look = [&] {
            EXPECT_EQ(BoxesShown(), row.says.empty() ? std::vector<std::string>{}
                                                     : std::vector{caption + row.says});
            EXPECT_EQ(SeenItems(IDC_PAPER_SIZE).size(), row.nItems);
            EXPECT_EQ(SeenText(IDC_PAPER_COPIES), row.nItems ? "7" : "");
        };
        EXPECT_EQ(Enter({change, "page \"Paper\"", look, "ok"}), 1);
        person.ExpectDone();
        EXPECT_EQ(dm.dm.dmCopies, 7);
    }
    for (const UserPaperRecord &slot : UIInstance.dat.lpUserPapers) {
        EXPECT_EQ(slot.paper.wId, 256);
        EXPECT_EQ(slot.wMark, 0);
        EXPECT_EQ(slot.wState, STATE_FREE);
    }
}

// ---- the samples --------------------------------------------------------------------------------

using PaperPageOfSamples = SampleTest;

TEST_F(PaperPageOfSamples, EachSourceAndKindOfPaperMakesItsRecord)
{
    const struct {
        const char *source, *paper;
        int nBin;
        int16_t idSource;
        int nPaper;
        int16_t id, width, length;
        WORD width360, length360, left, top, right, bottom;
        int nArea, nPicture;
    } aRows[] = {
        {"Paper Cassette", "A3 297 x 420 mm", 0, 14, 1, 8, 2970, 4200, 4209, 5953, 42, 42, 42, 198,
         1, 4000},
        {"Manual Feed", "Envelope DL 110 x 220 mm", 1, 4, 12, 27, 1100, 2200, 1559, 3118, 60, 120,
         60, 120, 2, 4610},
        {"Roll Paper", "Banner 329 x 1117 mm", 2, 8, 20, 304, 3290, 11170, 4663, 15831, 42, 0, 121,
         0, 1, 5700},
        {"Envelope Feeder", "Envelope Monarch 3 7/8 x 7 1/2 in", 3, 5, 15, 37, 984, 1905, 1395,
         2700, 60, 120, 60, 120, 2, 4810},
        {"Rear Tray", "Postcard 100 x 148 mm", 4, 10, 16, 43, 1000, 1480, 1417, 2098, 42, 42, 42,
         198, 1, 5400},
    };
    Start();
    ASSERT_EQ(Show({"page \"Paper\"", "ok"}), 1);
    const DriverDevMode plain = out;
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.paper);
        const auto look = [&] { EXPECT_EQ(Seen(IDC_PAPER_PREVIEW).at("picture"), row.nPicture); };
        EXPECT_EQ(Show({"page \"Paper\"", std::string("choose 5041 \"") + row.source + "\"",
                        std::string("choose 5040 \"") + row.paper + "\"", look, "ok"}),
                  1);
        DriverDevMode expected = plain;
        expected.nBin = row.nBin;
        expected.dm.dmDefaultSource = row.idSource;
        SetPaper(expected, row.nPaper, row.id, row.width, row.length);
        SetHeld(expected);
        Set360(expected, row.width360, row.length360);
        expected.wMarginLeft = row.left;
        expected.wMarginTop = row.top;
        expected.wMarginRight = row.right;
        expected.wMarginBottom = row.bottom;
        expected.nPrintArea = row.nArea;
        // Follow from the source, behind the page's back.
        std::memcpy(expected.adwMWData, out.adwMWData, sizeof out.adwMWData);
        EXPECT_THAT(Differences(expected, out), IsEmpty());
    }
}

// Width and length as the dialog leaves them. Cancel keeps what was held, and a saved size lies
// behind the user-defined paper.
TEST_F(PaperPageOfSamples, TheSizeDialogEndsWithASizeOrASavedOne)
{
    Start();
    const auto previewIs = [](int nPicture) {
        return [nPicture] {
            EXPECT_EQ(Seen(IDC_PAPER_PREVIEW).at("picture"), nPicture);
            EXPECT_EQ(PixelOf(IDC_PAPER_PREVIEW, 1, 1), WHITE);
        };
    };
    const struct {
        const char *why;
        std::vector<Person::Step> steps;
        int nPaper;
        int16_t id, width, length;
        WORD width360, length360, right;
    } aRows[] = {
        {"cancelled", {"type 5227 \"1000\"", "cancel"}, 21, 256, 2100, 2970, 2976, 4209, 60},
        {"confirmed",
         {"type 5227 \"1000\"", "type 5054 \"1500\"", "ok"},
         21,
         256,
         1000,
         1500,
         1417,
         2126,
         60},
        {"saved and chosen",
         {"type 5227 \"2000\"", "type 5054 \"2500\"", "type 5256 \"Poster\"", "click 5257", "ok"},
         22,
         768,
         2000,
         2500,
         2976,
         4209,
         60},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        std::vector<Person::Step> steps = {"page \"Paper\"", "choose 5040 \"User Defined\""};
        steps.insert(steps.end(), row.steps.begin(), row.steps.end());
        steps.insert(steps.end(), {previewIs(4000), "ok"});
        EXPECT_EQ(Show(steps), 1);
        EXPECT_EQ(out.nPaper, row.nPaper);
        EXPECT_EQ(out.dm.dmPaperSize, row.id);
        EXPECT_EQ(out.dm.dmPaperWidth, row.width);
        EXPECT_EQ(out.dm.dmPaperLength, row.length);
        EXPECT_EQ(out.lPaperWidth, row.width);
        EXPECT_EQ(out.lPaperLength, row.length);
        EXPECT_EQ(out.wPaperWidth360, row.width360);
        EXPECT_EQ(out.wPaperLength360, row.length360);
        EXPECT_EQ(out.wMarginRight, row.right);
    }
}

} // namespace
