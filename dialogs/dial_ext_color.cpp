// The six colour adjustments of the More Settings dialog. Each is a number from -25 to 25, shown
// three times: its magnitude in an edit field, its sign on a button, both on a trackbar.
#include "dialogs/dial_ext.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <string>

#include "dialogs/helpers.h"
#include "dialogs/rules.h"
#include "dialogs/settings_table.h"
#include "resources/detail_ids.h"

#define COLOR_ROW(k)                                                                               \
    {                                                                                              \
        IDC_DETAIL_LABEL_##k, IDC_DETAIL_FIELD_##k, IDC_DETAIL_SIGN_##k, IDC_DETAIL_BAR_##k,       \
            IDC_DETAIL_PLACE_##k                                                                   \
    }
const ColorRow aColorRows[ROWS] = {COLOR_ROW(0), COLOR_ROW(1), COLOR_ROW(2),
                                   COLOR_ROW(3), COLOR_ROW(4), COLOR_ROW(5)};

// The trackbars count from 0, so that their middle is the number 0.
static constexpr int MOST = 25;
static constexpr size_t MOST_DIGITS = 2;

int RowOf(int id, WORD ColorRow::*control)
{
    for (int k = 0; k < ROWS; k++)
        if (aColorRows[k].*control == id)
            return k;
    return -1;
}

// ---- a row's state --------------------------------------------------------------------------

// A minus that waits for its number is worth nothing.
static LONG ValueOf(const UIINSTANCE *lpInstance, int nRow)
{
    const LONG lValue = lpInstance->nAdjust[nRow];
    return lValue == ADJUST_MINUS ? 0 : lValue;
}

void DropMinuses(UIINSTANCE *lpInstance)
{
    for (int k = 0; k < ROWS; k++)
        lpInstance->nAdjust[k] = ValueOf(lpInstance, k);
}

static void PutState(UIINSTANCE *lpInstance, int nRow, WORD wBit, bool bOn)
{
    lpInstance->wAdjState[nRow] = WithBits(lpInstance->wAdjState[nRow], wBit, bOn);
}

// The field tells of every change, also of those that it gets here: they are told apart by the
// row's state.
static void WriteField(HWND hDlg, int nRow, LONG lValue)
{
    UIINSTANCE *lpInstance = GetDetailCB(hDlg)->lpInstance;
    PutState(lpInstance, nRow, ROW_WRITING, true);
    SetDlgItemInt(hDlg, aColorRows[nRow].idField, static_cast<UINT>(std::abs(lValue)), FALSE);
    PutState(lpInstance, nRow, ROW_WRITING, false);
}

static void MoveBar(HWND hDlg, int nRow, LONG lValue)
{
    SendDlgItemMessageA(hDlg, aColorRows[nRow].idBar, TBM_SETPOS, TRUE, lValue + MOST);
}

// ---- opening --------------------------------------------------------------------------------

// Where a control is, in the coordinates of its dialog.
static RECT PlaceOf(HWND hDlg, int id)
{
    RECT rc{}, rcDlg{};
    GetWindowRect(GetDlgItem(hDlg, id), &rc);
    GetWindowRect(hDlg, &rcDlg);
    const LONG x = rcDlg.left + GetSystemMetrics(SM_CXBORDER) + GetSystemMetrics(SM_CXFRAME);
    const LONG y = rcDlg.top + GetSystemMetrics(SM_CYCAPTION) + GetSystemMetrics(SM_CYDLGFRAME);
    return {rc.left - x, rc.top - y, rc.right - x, rc.bottom - y};
}

// One mark, in the middle; a click beside the thumb moves by one.
static void SetUpBar(HWND hBar)
{
    SendMessageA(hBar, TBM_SETRANGE, TRUE, MAKELONG(0, 2 * MOST));
    SendMessageA(hBar, TBM_SETPAGESIZE, 0, 1);
    SendMessageA(hBar, TBM_SETPOS, TRUE, MOST);
    SendMessageA(hBar, TBM_CLEARTICS, TRUE, 0);
    SendMessageA(hBar, TBM_SETTIC, 0, MOST);
}

void CreateTrackbars(HWND hDlg)
{
    HWND ahBars[ROWS];
    for (int k = 0; k < ROWS; k++) {
        const RECT rc = PlaceOf(hDlg, aColorRows[k].idPlace);
        ahBars[k] = CreateSlideTrackBar(hDlg, rc.left, rc.top, rc.right - rc.left,
                                        rc.bottom - rc.top, aColorRows[k].idBar);
    }
    for (HWND hBar : ahBars)
        SetUpBar(hBar);
}

// The last three rows from the last to the first: the order in which the fields tell of it can be
// seen from outside, and is kept.
void FillRows(HWND hDlg)
{
    const UIINSTANCE *lpInstance = GetDetailCB(hDlg)->lpInstance;
    for (const int k : {0, 1, 2, 5, 4, 3}) {
        WriteField(hDlg, k, ValueOf(lpInstance, k));
        MoveBar(hDlg, k, ValueOf(lpInstance, k));
    }
}

// ---- what can be adjusted -------------------------------------------------------------------

// The state is also what the sign button's look is drawn by.
static void EnableRow(HWND hDlg, int nRow, bool bEnable)
{
    const ColorRow &row = aColorRows[nRow];
    for (const int id : {row.idLabel, row.idField, row.idBar, row.idSign})
        EnableControl(hDlg, id, bEnable);
    PutState(GetDetailCB(hDlg)->lpInstance, nRow, ROW_ENABLED, bEnable);
}

static void ClearRow(HWND hDlg, int nRow)
{
    GetDetailCB(hDlg)->lpInstance->nAdjust[nRow] = 0;
    WriteField(hDlg, nRow, 0);
    MoveBar(hDlg, nRow, 0);
}

// Black ink leaves brightness and contrast, the first two rows. The intent without adjustments
// keeps the list of intents, as the way back.
void EnableColBalance(HWND hDlg, int nMode, DriverDevMode *)
{
    if (nMode != BALANCE_NONE)
        EnableControl(hDlg, IDC_DETAIL_COLOR_GROUP, true);
    for (const int id : {IDC_DETAIL_INTENT_LABEL, IDC_DETAIL_INTENT})
        EnableControl(hDlg, id, nMode != BALANCE_BLACK);
    for (int k = 0; k < ROWS; k++) {
        EnableRow(hDlg, k, nMode == BALANCE_ALL || (nMode == BALANCE_BLACK && k < 2));
        if (nMode == BALANCE_NONE)
            ClearRow(hDlg, k);
    }
    for (const ColorRow &row : aColorRows)
        RedrawControl(hDlg, row.idSign);
}

// ---- changes by the user --------------------------------------------------------------------

static std::string DigitsOf(const std::string &strText)
{
    std::string strDigits;
    std::ranges::copy_if(strText, std::back_inserter(strDigits),
                         [](char c) { return c >= '0' && c <= '9'; });
    return strDigits;
}

// The last sign that was typed, else the one on the button.
static bool IsNegative(const std::string &strText, bool bBefore)
{
    const size_t at = strText.find_last_of("+-");
    return at == std::string::npos ? bBefore : strText[at] == '-';
}

// A third digit is refused: the number stays what it was.
static LONG MagnitudeOf(const std::string &strDigits, LONG lBefore)
{
    if (strDigits.size() > MOST_DIGITS)
        return std::abs(lBefore);
    return std::min(std::atoi(strDigits.c_str()), MOST);
}

// What is shown is the number, whatever was typed: an empty field shows its 0, and no 0 stands
// before another digit. The caret goes behind it, where the next digit is expected, so that
// "-" and "7" make -7, although a 0 was shown between them.
static void PutNumber(HWND hDlg, int nRow, LONG lMagnitude)
{
    const WORD idField = aColorRows[nRow].idField;
    SetDlgItemInt(hDlg, idField, static_cast<UINT>(lMagnitude), FALSE);
    const auto nEnd = static_cast<LPARAM>(DlgItemText(hDlg, idField).size());
    SendDlgItemMessageA(hDlg, idField, EM_SETSEL, static_cast<WPARAM>(nEnd), nEnd);
}

// A minus without a number is kept as a value of its own until the button has been drawn with it;
// from then on the button's sign counts for what is typed next.
void OnFieldChanged(HWND hDlg, int nRow)
{
    UIINSTANCE *lpInstance = GetDetailCB(hDlg)->lpInstance;
    const WORD wState = lpInstance->wAdjState[nRow];
    if (wState & ROW_WRITING)
        return;
    char szText[4] = "";
    GetDlgItemTextA(hDlg, aColorRows[nRow].idField, szText, sizeof szText);
    const std::string strDigits = DigitsOf(szText);
    const bool bNegative = IsNegative(szText, (wState & ROW_NEGATIVE) != 0);
    PutState(lpInstance, nRow, ROW_WRITING, true);
    const LONG lMagnitude = MagnitudeOf(strDigits, ValueOf(lpInstance, nRow));
    const LONG lValue = bNegative ? -lMagnitude : lMagnitude;
    const bool bNone = strDigits.empty() || strDigits == "0";
    if (bNone || std::to_string(lMagnitude) != szText)
        PutNumber(hDlg, nRow, lMagnitude);
    lpInstance->nAdjust[nRow] = bNone && bNegative ? ADJUST_MINUS : lValue;
    RedrawControl(hDlg, aColorRows[nRow].idSign);
    MoveBar(hDlg, nRow, lValue);
    PutState(lpInstance, nRow, ROW_WRITING, false);
}

void OnFieldLeft(HWND hDlg, int nRow)
{
    WriteField(hDlg, nRow, ValueOf(GetDetailCB(hDlg)->lpInstance, nRow));
    RedrawControl(hDlg, aColorRows[nRow].idSign);
}

// A row of 0 stays 0, and its sign becomes a plus.
void OnSign(HWND hDlg, int nRow)
{
    UIINSTANCE *lpInstance = GetDetailCB(hDlg)->lpInstance;
    lpInstance->nAdjust[nRow] = -ValueOf(lpInstance, nRow);
    RedrawControl(hDlg, aColorRows[nRow].idSign);
    MoveBar(hDlg, nRow, lpInstance->nAdjust[nRow]);
}

void OnTrackbar(HWND hDlg, int nRow)
{
    const ColorRow &row = aColorRows[nRow];
    const auto lValue =
        static_cast<LONG>(SendDlgItemMessageA(hDlg, row.idBar, TBM_GETPOS, 0, 0)) - MOST;
    WriteField(hDlg, nRow, lValue);
    GetDetailCB(hDlg)->lpInstance->nAdjust[nRow] = lValue;
    RedrawControl(hDlg, row.idSign);
}
