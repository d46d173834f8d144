// The Utility page under a person's hands.
#include <cstdio>
#include <fstream>
#include <iterator>

#include "platform/win32.h"
#include "resources/utility_ids.h"
#include "tests/dialogs/dialogs_fixture.h"

namespace
{

using ::testing::IsEmpty;

constexpr COLORREF BLACK = RGB(0, 0, 0), WHITE = RGB(255, 255, 255), GREY = RGB(192, 192, 192);
constexpr COLORREF FACE = RGB(0, 255, 0); // of picture 6795
constexpr struct {
    int button, title, text;
    COLORREF picture;
    const char *call;
} aUtilities[] = {
    {IDC_UTILITY_NOZZLE, IDC_UTILITY_NOZZLE_TITLE, IDC_UTILITY_NOZZLE_TEXT, RGB(255, 0, 255),
     "nozzles"},
    {IDC_UTILITY_CLEANING, IDC_UTILITY_CLEANING_TITLE, IDC_UTILITY_CLEANING_TEXT, RGB(255, 0, 0),
     "heads"},
    {IDC_UTILITY_ALIGNMENT, IDC_UTILITY_ALIGNMENT_TITLE, IDC_UTILITY_ALIGNMENT_TEXT, RGB(0, 0, 255),
     "alignment"},
};

class UtilityPage : public DialogsTest
{
  protected:
    void StartWithLibrary()
    {
        Start();
        InstallLibrary(KV_TEST_UTILITY, UTILITY);
    }
    // The library's way through one start.
    static std::vector<std::string> Served(const std::string &call,
                                           const std::string &printer = "Office")
    {
        return {"utility: loaded", "utility: " + call + " " + printer + ", KORVA A, 0, 0",
                "utility: freed"};
    }
    std::function<void()> Heard(std::vector<std::string> expected)
    {
        return [this, expected] { EXPECT_EQ(BoxesShown(), expected); };
    }
    std::function<void()> SeesUtilityPage()
    {
        return [] { EXPECT_EQ(GetDlgCtrlID(kvp::TopWindow()), IDD_UTILITY); };
    }
};

// ---- opening ----------------------------------------------------------------------------------

TEST_F(UtilityPage, IsUsableWithALibraryOnly)
{
    Start();
    for (const bool bThere : {false, true}) {
        SCOPED_TRACE(bThere);
        if (bThere)
            InstallLibrary(KV_TEST_UTILITY, UTILITY);
        const auto look = [bThere] {
            for (const auto &utility : aUtilities)
                for (const int id : {utility.button, utility.title, utility.text})
                    EXPECT_EQ(IsWindowEnabled(Shown(id)), bThere) << id;
        };
        EXPECT_EQ(ShowUtility({look, "cancel"}), 2);
    }
    EXPECT_THAT(BoxesShown(), IsEmpty()) << "a library is only looked for";
}

TEST_F(UtilityPage, TitlesAreBlueOnGrey)
{
    StartWithLibrary();
    const auto isBlue = [](COLORREF color) {
        return (color >> 16) >= (color & 0xFF) + 60 && (color & 0xFF) == (color >> 8 & 0xFF);
    };
    const auto look = [isBlue] {
        for (const auto &utility : aUtilities)
            for (const int id : {utility.title, utility.text}) {
                int nBlue = 0, nOther = 0;
                for (const int y : {5, 7}) // across the first letters
                    for (int x = 0; x < 60; ++x)
                        if (const COLORREF color = PixelOf(id, x, y); color != GREY)
                            ++(isBlue(color) ? nBlue : nOther);
                EXPECT_EQ(nBlue > nOther, id == utility.title) << id;
                EXPECT_GT(nBlue + nOther, 0) << id;
            }
    };
    EXPECT_EQ(ShowUtility({look, "cancel"}), 2);
    InstallLibrary(KV_TEST_CTL3D, CTL3D);
    EXPECT_EQ(ShowUtility({look, "cancel"}), 2) << "with the 3-D look";
}

// ---- starting ---------------------------------------------------------------------------------

TEST_F(UtilityPage, AButtonStartsItsUtilityOnceAndTheSheetStays)
{
    StartWithLibrary();
    for (const auto &utility : aUtilities) {
        SCOPED_TRACE(utility.call);
        const std::string strId = std::to_string(utility.button);
        EXPECT_EQ(ShowUtility({"click " + strId, Heard(Served(utility.call)), SeesUtilityPage(),
                               "focus " + strId, "key Space", Heard(Served(utility.call)), "ok"}),
                  1);
        EXPECT_THAT(BoxesShown(), IsEmpty());
    }
}

TEST_F(UtilityPage, APrintersNameIsCutToTheRecords)
{
    StartWithLibrary();
    const std::string strLong(40, 'x');
    const OpenQueue other(strLong, "KORVA A");
    hPrinter = other.hPrinter;
    EXPECT_EQ(ShowUtility({"click 2018", Heard(Served("heads", strLong.substr(0, 32))), "ok"}), 1);
}

TEST_F(UtilityPage, NothingHappensWhereNothingIs)
{
    StartWithLibrary();
    const auto gone = [] { std::remove(kvp::HostPath(UTILITY).c_str()); };
    EXPECT_EQ(ShowUtility({gone, "click 2018", Heard({}), SeesUtilityPage(), "ok"}), 1)
        << "the library went away meanwhile";
    InstallLibrary(KV_TEST_UTILITY, UTILITY);
    machine.wLang = 0x0411;
    Apply();
    EXPECT_EQ(ShowUtility({"click 2018", Heard({"utility: loaded", "utility: freed"}), "click 2019",
                           Heard(Served("alignment")), "ok"}),
              1)
        << "the library has no such function";
}

// ---- the Enter key ------------------------------------------------------------------------------

TEST_F(UtilityPage, EnterOnAButtonStartsItAndTheSheetStays)
{
    StartWithLibrary();
    for (const auto &utility : aUtilities)
        EXPECT_EQ(ShowUtility({"focus " + std::to_string(utility.button), "key Enter",
                               Heard(Served(utility.call)), SeesUtilityPage(), "key Enter",
                               Heard(Served(utility.call)), "cancel"}),
                  2);
}

TEST_F(UtilityPage, EnterElsewhereClosesTheSheet)
{
    StartWithLibrary();
    const struct {
        const char *why;
        std::vector<Person::Step> way;
    } aRows[] = {
        {"no button was touched", {}},
        {"after another page and back", {"focus 2018", "page \"Main\"", "page \"Utility\""}},
        {"the focus has moved on to OK", {"focus 2019", "key Tab"}},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        auto way = row.way;
        way.push_back("key Enter");
        EXPECT_EQ(ShowUtility(way), 1);
        EXPECT_THAT(BoxesShown(), IsEmpty());
    }
}

TEST_F(UtilityPage, OKByTheMouseClosesTheSheetAfterAButton)
{
    StartWithLibrary();
    EXPECT_EQ(ShowUtility({"click 2020", Heard(Served("nozzles")), "ok"}), 1);
    EXPECT_THAT(BoxesShown(), IsEmpty());
}

// ---- looks --------------------------------------------------------------------------------------

struct Place {
    const char *where;
    int x, y; // from the right and bottom when negative
    COLORREF color;
};

void ExpectPixels(int id, const std::vector<Place> &places)
{
    const RECT rc = ClientOf(id);
    for (const Place &place : places)
        EXPECT_EQ(PixelOf(id, place.x < 0 ? rc.right + place.x : place.x,
                          place.y < 0 ? rc.bottom + place.y : place.y),
                  place.color)
            << place.where;
}

const std::vector<Place> RAISED = {
    {"frame, left", 0, 9, BLACK},
    {"frame, top", 9, 0, BLACK},
    {"light, left", 1, 9, WHITE},
    {"light, top", 9, 1, WHITE},
    {"light begins in the frame", 1, 0, WHITE},
    {"light ends below", 1, -4, WHITE},
    {"and no further", 1, -3, FACE},
    {"light ends at the right", -4, 1, WHITE},
    {"and no further", -3, 1, FACE},
    {"inside", 2, 2, FACE},
    {"shade, right", -1, 9, BLACK},
    {"shade, right", -2, 9, BLACK},
    {"no third column", -3, 9, FACE},
    {"shade, bottom", 9, -1, BLACK},
    {"shade, bottom", 9, -2, BLACK},
    {"no third row", 9, -3, FACE},
};
const std::vector<Place> SUNKEN = {
    {"frame, left", 0, 9, BLACK},    {"frame, top", 9, 0, BLACK},
    {"shade, left", 1, 9, BLACK},    {"shade, top", 9, 1, BLACK},
    {"inside", 2, 2, FACE},          {"light, right", -1, 9, WHITE},
    {"light, right", -2, 9, WHITE},  {"light, bottom", 9, -1, WHITE},
    {"light, bottom", 9, -2, WHITE}, {"light takes the frame's corner", 0, -1, WHITE},
    {"and the other", -1, 0, WHITE},
};

// Asks the page for a button's drawing, as the system does.
void Draw(int id, UINT action, UINT state, UINT type = ODT_BUTTON)
{
    DRAWITEMSTRUCT item{};
    item.CtlType = type;
    item.CtlID = static_cast<UINT>(id);
    item.itemAction = action;
    item.itemState = state;
    item.hwndItem = Shown(id);
    item.hDC = GetDC(item.hwndItem);
    item.rcItem = ClientOf(id);
    SendMessageA(kvp::TopWindow(), WM_DRAWITEM, static_cast<WPARAM>(id),
                 reinterpret_cast<LPARAM>(&item));
    ReleaseDC(item.hwndItem, item.hDC);
}

// Whether the focus rectangle, four pixels from every edge, stands there.
bool ShowsFocus(int id)
{
    const RECT rc = ClientOf(id);
    int nOdd = 0;
    for (int x = 4; x < rc.right - 4; ++x)
        nOdd += PixelOf(id, x, 4) != FACE;
    EXPECT_EQ(PixelOf(id, 3, 3), FACE);
    return nOdd > 0;
}

TEST_F(UtilityPage, ButtonsAreRaisedWithTheirPictureCentred)
{
    StartWithLibrary();
    const auto look = [] {
        for (const auto &utility : aUtilities) {
            SCOPED_TRACE(utility.button);
            ExpectPixels(utility.button, RAISED);
            const RECT rc = ClientOf(utility.button);
            const int x = (rc.right - 8) / 2, y = (rc.bottom - 8) / 2;
            ExpectPixels(utility.button, {{"its first pixel", x, y, utility.picture},
                                          {"its last pixel", x + 7, y + 7, utility.picture},
                                          {"before it", x - 1, y, FACE},
                                          {"below it", x, y + 8, FACE}});
        }
        const RECT rc = ClientOf(IDC_UTILITY_MAKER);
        const int x = (rc.right - 20) / 2, y = (rc.bottom - 6) / 2;
        ExpectPixels(IDC_UTILITY_MAKER, {{"no frame", 0, 0, FACE},
                                         {"its picture", x, y, RGB(255, 255, 0)},
                                         {"all of it", x + 19, y + 5, RGB(255, 255, 0)},
                                         {"behind it", x + 20, y, FACE}});
    };
    EXPECT_EQ(ShowUtility({look, "cancel"}), 2);
}

TEST_F(UtilityPage, APressedButtonIsSunken)
{
    StartWithLibrary();
    const auto press = [] { Draw(IDC_UTILITY_CLEANING, ODA_SELECT, ODS_SELECTED | ODS_FOCUS); };
    const auto sunken = [] {
        ExpectPixels(IDC_UTILITY_CLEANING, SUNKEN);
        EXPECT_TRUE(ShowsFocus(IDC_UTILITY_CLEANING));
        Draw(IDC_UTILITY_CLEANING, ODA_SELECT, 0);
    };
    const auto raised = [] {
        ExpectPixels(IDC_UTILITY_CLEANING, RAISED);
        EXPECT_FALSE(ShowsFocus(IDC_UTILITY_CLEANING));
    };
    EXPECT_EQ(ShowUtility({press, sunken, raised, "cancel"}), 2);
}

TEST_F(UtilityPage, TheFocusIsSeenWhereItIs)
{
    StartWithLibrary();
    const auto seenOn = [](int id) {
        return [id] {
            for (const auto &utility : aUtilities)
                EXPECT_EQ(ShowsFocus(utility.button), utility.button == id) << utility.button;
        };
    };
    const auto repaint = [] { InvalidateRect(Shown(IDC_UTILITY_ALIGNMENT), nullptr, TRUE); };
    EXPECT_EQ(ShowUtility({seenOn(0), "focus 2020", seenOn(2020), "focus 2019", seenOn(2019),
                           repaint, seenOn(2019), "key Tab", seenOn(0), "cancel"}),
              2);
}

TEST_F(UtilityPage, OnlyButtonsAreDrawn)
{
    StartWithLibrary();
    const auto draw = [] {
        Draw(IDC_UTILITY_CLEANING, ODA_SELECT, ODS_SELECTED, ODT_COMBOBOX);
        Draw(IDC_UTILITY_CLEANING_TITLE, ODA_FOCUS,
             ODS_FOCUS); // a button that the page doesn't know
    };
    const auto look = [] {
        ExpectPixels(IDC_UTILITY_CLEANING, RAISED);
        EXPECT_EQ(PixelOf(IDC_UTILITY_CLEANING_TITLE, 0, 0), GREY);
    };
    EXPECT_EQ(ShowUtility({draw, look, "cancel"}), 2);
}

TEST_F(UtilityPage, WithoutPicturesThereAreFramesAndTheFocusStillCounts)
{
    StartWithLibrary();
    kvp::PutMemoryFile(std::string(DRIVER_DIR) + "KVUI.DLL", [] {
        std::ifstream file(KV_DRIVER_RESOURCES, std::ios::binary); // pages, but no pictures
        return Bytes((std::istreambuf_iterator<char>(file)), {});
    }());
    const auto look = [] {
        ExpectPixels(IDC_UTILITY_NOZZLE, {{"frame", 0, 9, BLACK}, {"inside", 9, 9, GREY}});
    };
    // No name of a function either: the library comes and goes, and the sheet stays.
    EXPECT_EQ(ShowUtility({look, "focus 2020", "key Enter",
                           Heard({"utility: loaded", "utility: freed"}), "cancel"}),
              2);
}

} // namespace
