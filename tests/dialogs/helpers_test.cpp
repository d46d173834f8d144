// The helpers by themselves: what they answer to which message, paths, texts and programs.
#include <array>
#include <cstring>

#include "base/modeltable.h"
#include "dialogs/helpers.h"
#include "platform/served.h"
#include "tests/dialogs/dialogs_fixture.h"

namespace
{

using ::testing::StrCaseEq;

class Helpers : public DialogsTest
{
};

// ---- grey backgrounds -----------------------------------------------------------------------

enum Answer { ZERO, ONE, NULL_BRUSH, THE_BRUSH };

INT_PTR Number(Answer answer, HBRUSH hBrush)
{
    switch (answer) {
    case ONE: return 1;
    case THE_BRUSH: return reinterpret_cast<INT_PTR>(hBrush);
    default: return 0;
    }
}

struct GreyRow {
    const char *why;
    UINT uMsg;
    bool bBefore; // there is a brush already
    Answer answer;
    bool bAfter, bNew; // there is one, and it is another
};

template <class Function>
void Check(const GreyRow &row, Function change)
{
    SCOPED_TRACE(row.why);
    HDC hdc = CreateCompatibleDC(nullptr);
    HBRUSH hBrush = row.bBefore ? CreateSolidBrush(LIGHT_GREY) : nullptr;
    HBRUSH hBefore = hBrush;
    const INT_PTR nAnswer = change(&hBrush, row.uMsg, reinterpret_cast<WPARAM>(hdc), LPARAM{0});
    EXPECT_EQ(nAnswer, Number(row.answer, hBrush));
    EXPECT_EQ(hBrush != nullptr, row.bAfter);
    if (!row.bNew) {
        EXPECT_TRUE(hBrush == hBefore || !row.bAfter);
    }
    EXPECT_EQ(kvp::CurrentlyHeldGui().nObjects, row.bAfter ? 1u : 0u);
    DeleteObject(hBrush);
    DeleteDC(hdc);
}

TEST_F(Helpers, APageAnswersByItsBrush)
{
    constexpr GreyRow aRows[] = {
        {"the first background makes it", WM_CTLCOLORDLG, false, THE_BRUSH, true, true},
        {"the next ones keep it", WM_CTLCOLORDLG, true, THE_BRUSH, true, false},
        {"a text before the background", WM_CTLCOLORSTATIC, false, NULL_BRUSH, false, false},
        {"a text", WM_CTLCOLORSTATIC, true, THE_BRUSH, true, false},
        {"a button", WM_CTLCOLORBTN, true, THE_BRUSH, true, false},
        {"an edit field", WM_CTLCOLOREDIT, true, THE_BRUSH, true, false},
        {"a list", WM_CTLCOLORLISTBOX, true, ONE, true, false},
        {"a scroll bar", WM_CTLCOLORSCROLLBAR, true, ONE, true, false},
        {"a message box", WM_CTLCOLORMSGBOX, true, ONE, true, false},
        {"another message", WM_COMMAND, false, ONE, false, false},
        {"other colours make a new one", WM_SYSCOLORCHANGE, true, ZERO, true, true},
        {"also the first", WM_SYSCOLORCHANGE, false, ZERO, true, true},
        {"the end", WM_DESTROY, true, ZERO, false, false},
        {"an end without one", WM_DESTROY, false, ZERO, false, false},
    };
    for (const GreyRow &row : aRows)
        Check(row, ChangeBackColor);
}

TEST_F(Helpers, AnEditFieldIsGreyByItself)
{
    constexpr GreyRow aRows[] = {
        {"the first background makes it", WM_CTLCOLOREDIT, false, THE_BRUSH, true, true},
        {"the next ones keep it", WM_CTLCOLOREDIT, true, THE_BRUSH, true, false},
        {"a dialog is none of its business", WM_CTLCOLORDLG, true, ONE, true, false},
        {"nor is a text", WM_CTLCOLORSTATIC, true, ONE, true, false},
        {"other colours make a new one", WM_SYSCOLORCHANGE, true, ZERO, true, true},
        {"the end", WM_DESTROY, true, ZERO, false, false},
    };
    for (const GreyRow &row : aRows)
        Check(row, GrayEditBox);
    InstallLibrary(KV_TEST_CTL3D, CTL3D);
    Enable3dCtl();
    Check(aRows[0], GrayEditBox);
    Disable3dCtl();
}

TEST_F(Helpers, The3dLookLeavesPagesAlone)
{
    InstallLibrary(KV_TEST_CTL3D_UNSUBCLASSED, CTL3D);
    Enable3dCtl();
    for (const UINT uMsg : {WM_CTLCOLORDLG, WM_CTLCOLORSTATIC, WM_CTLCOLORBTN, WM_SYSCOLORCHANGE,
                            WM_DESTROY, WM_COMMAND})
        Check({"no brush is made", uMsg, false, ONE, false, false}, ChangeBackColor);
    Disable3dCtl();
    Check({"afterwards it is", WM_CTLCOLORDLG, false, THE_BRUSH, true, true}, ChangeBackColor);
}

// ---- the running program --------------------------------------------------------------------

TEST_F(Helpers, AProgramIsJudgedByItsNewerHeader)
{
    Bytes beyond = ProgramOf("PE", 64);
    beyond[63] = 0x7F;
    Bytes negative = ProgramOf("PE", 64);
    std::memset(&negative[60], 0xFF, 4);
    Bytes cut = ProgramOf("PE", 64);
    cut.pop_back();
    Bytes third = ProgramOf("PE", 64);
    third.back() = 1;
    const struct {
        const char *why;
        Bytes bytes;
        BOOL b32;
    } aRows[] = {
        {"32 bits", ProgramOf("PE", 64), TRUE},
        {"a longer old part", ProgramOf("PE", 0x1000), TRUE},
        {"16 bits", ProgramOf("NE", 64), FALSE},
        {"another mark", third, FALSE},
        {"the mark is cut", cut, FALSE},
        {"the mark is beyond the end", beyond, FALSE},
        {"the mark is before the start", negative, FALSE},
        {"not even an old header", Bytes(63), FALSE},
        {"nothing", {}, FALSE},
    };
    EXPECT_TRUE(is32Process()) << "one that cannot be opened";
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        InstallProgram(row.bytes);
        EXPECT_EQ(is32Process(), row.b32);
        EXPECT_EQ(kvp::CurrentlyHeld().nFiles, 0u);
    }
}

// ---- paths, texts ---------------------------------------------------------------------------

TEST_F(Helpers, TheHelpFileLiesBesideTheDriver)
{
    InstallModelTable({{9, {MakeModelRecord("KORVA A", "KVA", "KVUI", "PRN")}}});
    ASSERT_GT(LoadDataFile(), 0u);
    const OpenQueue office("Office", "KORVA A");
    const struct {
        const char *why;
        std::u16string model;
        HANDLE hPrinter;
        std::string path;
    } aRows[] = {
        {"a known model", u"KORVA A", office.hPrinter, std::string(DRIVER_DIR) + "PRN.HLP"},
        {"a long name", std::u16string(255, u'x'), office.hPrinter,
         std::string(DRIVER_DIR) + "PRN.HLP"},
        {"no directory", u"KORVA A", nullptr, "PRN.HLP"},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        std::array<char, MAX_PATH + 1> ach;
        ach.fill('~');
        GetHelpPathEx(ach.data(), row.model.c_str(), row.hPrinter);
        EXPECT_THAT(std::string(ach.data()), StrCaseEq(row.path));
        EXPECT_EQ(ach.back(), '~');
    }
    EXPECT_EQ(kvp::CurrentlyHeld().nBlocks, 0u);
    FreeDataFile();
}

TEST_F(Helpers, HelpTablesBeginWithTheirPageAndEnd)
{
    for (const HELPID *lpTable :
         {BasicDlgHelpIDs, aPaperDlgHelpIDs, UtyDlgHelpIDs, DetailDlgHelpIDs}) {
        const DWORD dwBase = lpTable->dwContext;
        EXPECT_EQ(dwBase % 256, 0u);
        const HELPID *lp = lpTable;
        for (; lp->dwControl; ++lp) {
            EXPECT_TRUE(lp->dwContext >= dwBase && lp->dwContext < dwBase + 256) << lp->dwControl;
            for (const HELPID *lpEarlier = lpTable; lpEarlier != lp; ++lpEarlier)
                EXPECT_NE(lpEarlier->dwControl, lp->dwControl);
        }
        EXPECT_EQ(lp->dwContext, 0u);
    }
}

} // namespace
