// Paper sizes of a person's own from the Paper page of the samples to the record, the user's file
// and what applications are told.
#include <array>

#include <gmock/gmock.h>

#include "resources/paper_ids.h"
#include "resources/size_ids.h"
#include "tests/support/samples.h"

namespace
{

using ::testing::Contains;
using ::testing::ElementsAre;

using Steps = std::vector<Person::Step>;

constexpr const char *PAPER = "page \"Paper\"", *OWN_SIZE = "choose 5040 \"User Defined\"",
                     *SAVE = "click 5257", *DELETE = "click 5258", *OK = "click 1",
                     *CANCEL = "click 2", *INCH = "click 5042";

class SizesOnThePaperPage : public SampleTest
{
  protected:
    // A paper as an application sees it: identifier, name, 0.1 mm.
    struct Paper {
        WORD wId;
        std::string strName;
        int32_t nWidth, nLength;
        bool operator==(const Paper &) const = default;
    };
    std::vector<Paper> PapersTold(DriverDevMode record)
    {
        const auto ask = [&](WORD wQuery, void *lpOutput) {
            return driver.DrvDeviceCapabilities(queue->hPrinter, nullptr, wQuery, lpOutput,
                                                &record);
        };
        const DWORD n = ask(DC_PAPERS, nullptr);
        std::vector<WORD> ids(n);
        std::vector<std::array<int32_t, 2>> sizes(n);
        std::vector<std::array<WCHAR, 64>> names(n);
        EXPECT_EQ(ask(DC_PAPERS, ids.data()), n);
        EXPECT_EQ(ask(DC_PAPERSIZE, sizes.data()), n);
        EXPECT_EQ(ask(DC_PAPERNAMES, names.data()), n);
        std::vector<Paper> papers;
        for (DWORD i = 0; i < n; ++i)
            papers.push_back({ids[i], kvp::ToUtf8(names[i].data()), sizes[i][0], sizes[i][1]});
        return papers;
    }
    // Paper, size, held size and unit of the record.
    static void ExpectPaper(const DriverDevMode &record, int16_t id, int nWidth, int nLength,
                            DWORD dwUnit)
    {
        EXPECT_THAT((std::array<LONG, 6>{record.dm.dmPaperSize, record.dm.dmPaperWidth,
                                         record.dm.dmPaperLength, record.lPaperWidth,
                                         record.lPaperLength, LONG(record.dwUnit)}),
                    ElementsAre(id, nWidth, nLength, nWidth, nLength, dwUnit));
    }
    static std::string Type(int id, const std::string &text)
    {
        return "type " + std::to_string(id) + " \"" + text + "\"";
    }
    static Steps SavedAs(const char *name, const char *width, const char *length)
    {
        return {Type(IDC_SIZE_WIDTH, width), Type(IDC_SIZE_LENGTH, length),
                Type(IDC_SIZE_NAME, name), SAVE};
    }
    static Steps Together(std::initializer_list<Steps> parts)
    {
        Steps all;
        for (const Steps &part : parts)
            all.insert(all.end(), part.begin(), part.end());
        return all;
    }
    static Person::Step SeesPaper(const char *name)
    {
        return [=] { EXPECT_EQ(SeenText(IDC_PAPER_SIZE), name); };
    }
};

TEST_F(SizesOnThePaperPage, SavedSizesAreFoundAgainByThePageAndByApplications)
{
    Start();
    const WORD wWidth360 = in.wPaperWidth360;
    EXPECT_EQ(Show(Together({{PAPER, OWN_SIZE},
                             SavedAs("Card", "1234", "2345"),
                             {INCH},
                             SavedAs("Flyer", "400", "600"),
                             {OK, SeesPaper("Flyer"), "ok"}})),
              IDOK);
    ExpectPaper(out, 769, 1016, 1524, 2);
    EXPECT_EQ(out.wPaperWidth360, wWidth360) << "as it was, unlike after a size for one job";
    const auto papers = PapersTold(out);
    EXPECT_THAT(papers, Contains(Paper{768, "Card", 1234, 2345}));
    EXPECT_THAT(papers, Contains(Paper{769, "Flyer", 1016, 1524}));

    EXPECT_EQ(ShowAgain({PAPER, SeesPaper("Flyer"), "choose 5040 \"Card\"", "ok"}), IDOK);
    ExpectPaper(out, 768, 1234, 2345, 1);
    // Changed under the old name: the page takes the new size.
    EXPECT_EQ(ShowAgain({PAPER, OWN_SIZE, "choose 5255 \"Card\"", Type(IDC_SIZE_WIDTH, "1300"),
                         SAVE, "box ok", OK, SeesPaper("Card"), "ok"}),
              IDOK);
    ExpectPaper(out, 768, 1300, 2345, 1);
    EXPECT_THAT(PapersTold(out), Contains(Paper{768, "Card", 1300, 2345}));
    // Deleted: the other one stays what it was.
    EXPECT_EQ(ShowAgain({PAPER, OWN_SIZE, "choose 5255 \"Card\"", DELETE, "box ok",
                         "choose 5255 \"Flyer\"", OK, SeesPaper("Flyer"), "ok"}),
              IDOK);
    ExpectPaper(out, 769, 1016, 1524, 2);
    const auto rest = PapersTold(out);
    EXPECT_THAT(rest, Contains(Paper{769, "Flyer", 1016, 1524}));
    EXPECT_EQ(rest.size(), papers.size() - 1);
    EXPECT_EQ(ShowAgain(Together({{PAPER, SeesPaper("Flyer"), OWN_SIZE},
                                  SavedAs("Map", "1000", "1500"),
                                  {CANCEL, "cancel"}})),
              IDCANCEL);
    EXPECT_THAT(PapersTold(in), Contains(Paper{770, "Map", 2540, 3810}))
        << "in inches; outlives Cancel";
}

} // namespace
