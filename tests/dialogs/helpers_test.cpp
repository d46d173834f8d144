// The helpers by themselves: what they answer to which message, of which program, and where help
// is.
#include <algorithm>
#include <array>

#include "base/modeltable.h"
#include "dialogs/helpers.h"
#include "platform/served.h"
#include "tests/dialogs/dialogs_fixture.h"

namespace
{

using ::testing::StrCaseEq;

using Helpers = DialogsTest;

enum Answer { ZERO, ONE, NULL_BRUSH, THE_BRUSH };
enum Brush { NONE, SAME, ANOTHER };

struct GreyRow {
    const char *why;
    UINT uMsg;
    bool bBefore; // there is a brush already
    Answer answer;
    Brush after;
};

template <class Function>
void Check(const GreyRow &row, Function change)
{
    SCOPED_TRACE(row.why);
    HDC hdc = CreateCompatibleDC(nullptr);
    HBRUSH hBrush = row.bBefore ? CreateSolidBrush(LIGHT_GREY) : nullptr;
    HBRUSH hBefore = hBrush;
    const INT_PTR nAnswer = change(&hBrush, row.uMsg, reinterpret_cast<WPARAM>(hdc), LPARAM{0});
    EXPECT_EQ(nAnswer, row.answer == THE_BRUSH ? reinterpret_cast<INT_PTR>(hBrush)
                                               : INT_PTR{row.answer == ONE});
    EXPECT_EQ(hBrush != nullptr, row.after != NONE);
    if (row.after == SAME) {
        EXPECT_EQ(hBrush, hBefore);
    }
    EXPECT_EQ(kvp::CurrentlyHeldGui().nObjects, row.after != NONE ? 1u : 0u);
    DeleteObject(hBrush);
    DeleteDC(hdc);
}

TEST_F(Helpers, APageAnswersByItsBrush)
{
    constexpr GreyRow aRows[] = {
        {"the first background makes it", WM_CTLCOLORDLG, false, THE_BRUSH, ANOTHER},
        {"the next ones keep it", WM_CTLCOLORDLG, true, THE_BRUSH, SAME},
        {"a text before the background", WM_CTLCOLORSTATIC, false, NULL_BRUSH, NONE},
        {"a text", WM_CTLCOLORSTATIC, true, THE_BRUSH, SAME},
        {"a button", WM_CTLCOLORBTN, true, THE_BRUSH, SAME},
        {"an edit field", WM_CTLCOLOREDIT, true, THE_BRUSH, SAME},
        {"a list", WM_CTLCOLORLISTBOX, true, ONE, SAME},
        {"another message", WM_COMMAND, false, ONE, NONE},
        {"other colours make a new one", WM_SYSCOLORCHANGE, true, ZERO, ANOTHER},
        {"also the first", WM_SYSCOLORCHANGE, false, ZERO, ANOTHER},
        {"the end", WM_DESTROY, true, ZERO, NONE},
    };
    for (const GreyRow &row : aRows)
        Check(row, ChangeBackColor);
}

TEST_F(Helpers, AnEditFieldIsGreyByItselfAlsoInThe3dLook)
{
    constexpr GreyRow aRows[] = {
        {"the first background makes it", WM_CTLCOLOREDIT, false, THE_BRUSH, ANOTHER},
        {"the next ones keep it", WM_CTLCOLOREDIT, true, THE_BRUSH, SAME},
        {"a dialog is none of its business", WM_CTLCOLORDLG, true, ONE, SAME},
        {"other colours make a new one", WM_SYSCOLORCHANGE, true, ZERO, ANOTHER},
        {"the end", WM_DESTROY, true, ZERO, NONE},
    };
    InstallLibrary(KV_TEST_CTL3D, CTL3D);
    Enable3dCtl();
    for (const GreyRow &row : aRows)
        Check(row, GrayEditBox);
    Disable3dCtl();
}

TEST_F(Helpers, AProgramIsJudgedByItsNewerHeader)
{
    const auto with = [](size_t at, BYTE b) {
        Bytes bytes = ProgramOf("PE", 64);
        bytes[at] = b;
        return bytes;
    };
    Bytes cut = ProgramOf("PE", 64), negative = cut;
    cut.pop_back();
    std::fill_n(&negative[60], 4, 0xFF);
    const struct {
        const char *why;
        Bytes bytes;
        BOOL b32;
    } aRows[] = {
        {"32 bits, behind a longer old part", ProgramOf("PE", 0x1000), TRUE},
        {"16 bits", ProgramOf("NE", 64), FALSE},
        {"another mark", with(67, 1), FALSE},
        {"the mark is cut", cut, FALSE},
        {"the mark is beyond the end", with(63, 0x7F), FALSE},
        {"the mark is before the start", negative, FALSE},
        {"not even an old header", Bytes(63), FALSE},
    };
    EXPECT_TRUE(is32Process()) << "one that cannot be opened";
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        InstallProgram(row.bytes);
        EXPECT_EQ(is32Process(), row.b32);
        EXPECT_EQ(kvp::CurrentlyHeld().nFiles, 0u);
    }
}

TEST_F(Helpers, TheHelpFileLiesBesideTheDriver)
{
    InstallModelTable({{9, {MakeModelRecord("KORVA A", "KVA", "KVUI", "PRN")}}});
    ASSERT_GT(LoadDataFile(), 0u);
    const OpenQueue office("Office", "KORVA A");
    const std::string strPath = std::string(DRIVER_DIR) + "PRN.HLP";
    const struct {
        std::u16string model;
        HANDLE hPrinter;
        std::string path;
    } aRows[] = {{u"KORVA A", office.hPrinter, strPath},
                 {std::u16string(255, u'x'), office.hPrinter, strPath},
                 {u"KORVA A", nullptr, "PRN.HLP"}};
    for (const auto &row : aRows) {
        std::array<char, MAX_PATH + 1> ach;
        ach.fill('~');
        GetHelpPathEx(ach.data(), row.model.c_str(), row.hPrinter);
        EXPECT_THAT(std::string(ach.data()), StrCaseEq(row.path));
        EXPECT_EQ(ach.back(), '~');
    }
    EXPECT_EQ(kvp::CurrentlyHeld().nBlocks, 0u);
    FreeDataFile();
}

} // namespace
