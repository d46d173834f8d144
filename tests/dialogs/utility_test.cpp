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
    static std::function<void()> SeesUtilityPage()
    {
        return [] { EXPECT_EQ(GetDlgCtrlID(kvp::TopWindow()), IDD_UTILITY); };
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
};

TEST_F(UtilityPage, IsUsableWithALibraryOnly)
{
    Start();
    for (const bool bThere : {false, true}) {
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

TEST_F(UtilityPage, TitlesAreBlueOnGreyAlsoInThe3dLook)
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
    EXPECT_EQ(ShowUtility({look, "cancel"}), 2);
}

TEST_F(UtilityPage, AButtonStartsItsUtilityOnceAndTheSheetStays)
{
    StartWithLibrary();
    for (const auto &utility : aUtilities) {
        const std::string id = std::to_string(utility.button);
        std::vector<Person::Step> steps{"click " + id, Heard(Served(utility.call)), "focus " + id};
        for (const char *key : {"key Space", "key Enter", "key Enter"})
            steps.insert(steps.end(), {key, Heard(Served(utility.call)), SeesUtilityPage()});
        steps.emplace_back("ok");
        EXPECT_EQ(ShowUtility(steps), 1);
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

TEST_F(UtilityPage, EnterElsewhereAndOKByTheMouseCloseTheSheet)
{
    StartWithLibrary();
    for (std::vector<Person::Step> way : std::vector<std::vector<Person::Step>>{
             {"key Enter"}, // no button was touched
             {"focus 2018", "page \"Main\"", "page \"Utility\"", "key Enter"},
             {"focus 2019", "key Tab", "key Enter"}, // the focus has moved on
             {"click 2020", Heard(Served("nozzles")), "ok"}}) {
        EXPECT_EQ(ShowUtility(way), 1);
        EXPECT_THAT(BoxesShown(), IsEmpty());
    }
}

// Four rows of four pixels from there on, counted from the right and bottom when negative: blacK,
// White, Face, or another.
std::string Patch(int id, int x, int y)
{
    const RECT rc = ClientOf(id);
    std::string strPatch;
    for (int i = 0; i < 16; ++i) {
        const COLORREF color =
            PixelOf(id, (x < 0 ? rc.right + x : x) + i % 4, (y < 0 ? rc.bottom + y : y) + i / 4);
        strPatch += color == BLACK ? 'K' : color == WHITE ? 'W' : color == FACE ? 'F' : '?';
        strPatch += i % 4 == 3 ? " " : "";
    }
    return strPatch;
}

std::vector<std::string> Corners(int id)
{
    return {Patch(id, 0, 0), Patch(id, -4, 0), Patch(id, 0, -4), Patch(id, -4, -4)};
}
// The light falls from above. Neither it nor the shade reaches all of the corners.
const std::vector<std::string> RAISED = {"KWKK KWWW KWFF KWFF ", "KKKK WFKK FFKK FFKK ",
                                         "KWFF KFFF KKKK KKKK ", "FFKK FFKK KKKK KKKK "},
                               SUNKEN = {"KKKK KKKK KKFF KKFF ", "KKWW KFWW FFWW FFWW ",
                                         "KKFF KFFF WWWW WWWW ", "FFWW FFWW WWWW WWWW "};

// Asks the page for a button's drawing, as the system does.
void Draw(int id, UINT action, UINT state)
{
    DRAWITEMSTRUCT item{};
    item.CtlType = ODT_BUTTON;
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
    int nOdd = 0;
    for (int x = 4; x < ClientOf(id).right - 4; ++x)
        nOdd += PixelOf(id, x, 4) != FACE;
    EXPECT_EQ(PixelOf(id, 3, 3), FACE);
    return nOdd > 0;
}

// A picture of this size in the middle of the button's face, and no larger.
void ExpectCentred(int id, int cx, int cy, COLORREF color)
{
    const int x = (ClientOf(id).right - cx) / 2, y = (ClientOf(id).bottom - cy) / 2;
    EXPECT_EQ(PixelOf(id, x, y), color) << id;
    EXPECT_EQ(PixelOf(id, x + cx - 1, y + cy - 1), color) << id;
    EXPECT_EQ(PixelOf(id, x - 1, y), FACE) << id;
    EXPECT_EQ(PixelOf(id, x, y + cy), FACE) << id;
}

TEST_F(UtilityPage, ButtonsAreRaisedWithTheirPictureCentredAndSunkenWhilePressed)
{
    StartWithLibrary();
    const auto raised = [] {
        for (const auto &utility : aUtilities) {
            EXPECT_EQ(Corners(utility.button), RAISED);
            EXPECT_FALSE(ShowsFocus(utility.button));
            ExpectCentred(utility.button, 8, 8, utility.picture);
        }
        EXPECT_EQ(Patch(IDC_UTILITY_MAKER, 0, 0), "FFFF FFFF FFFF FFFF ") << "no frame";
        ExpectCentred(IDC_UTILITY_MAKER, 20, 6, RGB(255, 255, 0));
    };
    const auto press = [] { Draw(IDC_UTILITY_CLEANING, ODA_SELECT, ODS_SELECTED | ODS_FOCUS); };
    const auto sunken = [] {
        EXPECT_EQ(Corners(IDC_UTILITY_CLEANING), SUNKEN);
        EXPECT_TRUE(ShowsFocus(IDC_UTILITY_CLEANING));
        Draw(IDC_UTILITY_CLEANING, ODA_SELECT, 0);
    };
    EXPECT_EQ(ShowUtility({raised, press, sunken, raised, "cancel"}), 2);
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

TEST_F(UtilityPage, WithoutPicturesThereAreFramesAndTheFocusStillCounts)
{
    StartWithLibrary();
    std::ifstream pages(KV_DRIVER_RESOURCES, std::ios::binary); // a library without any
    kvp::PutMemoryFile(std::string(DRIVER_DIR) + "KVUI.DLL",
                       Bytes((std::istreambuf_iterator<char>(pages)), {}));
    const auto look = [] { EXPECT_EQ(Patch(IDC_UTILITY_NOZZLE, 0, 0), "KWKK KWWW KW?? KW?? "); };
    // No name of a function either: the library comes and goes, and the sheet stays.
    EXPECT_EQ(ShowUtility({look, "focus 2020", "key Enter",
                           Heard({"utility: loaded", "utility: freed"}), "cancel"}),
              2);
}

} // namespace
