// Drop-down lists and list boxes: filling, finding and drawing their items.
#include <memory>

#include "dialogs/helpers.h"

static constexpr WPARAM AT_THE_END = static_cast<WPARAM>(-1);

void EmptyList(HWND hDlg, int idCombo)
{
    SendDlgItemMessageA(hDlg, idCombo, CB_RESETCONTENT, 0, 0);
}

// The two kinds of list do the same by messages of their own.
struct ListMessages {
    UINT uInsert, uSetData, uGetSelected, uGetData;
};
static constexpr ListMessages COMBO_BOX = {CB_INSERTSTRING, CB_SETITEMDATA, CB_GETCURSEL,
                                           CB_GETITEMDATA},
                              LIST_BOX = {LB_INSERTSTRING, LB_SETITEMDATA, LB_GETCURSEL,
                                          LB_GETITEMDATA};
static_assert(CB_ERR == LB_ERR);

static LRESULT Append(HWND hDlg, int id, const ListMessages &messages, LPCSTR lpText, LPARAM lData)
{
    const LRESULT nItem = SendDlgItemMessageA(hDlg, id, messages.uInsert, AT_THE_END,
                                              reinterpret_cast<LPARAM>(lpText));
    SendDlgItemMessageA(hDlg, id, messages.uSetData, static_cast<WPARAM>(nItem), lData);
    return nItem;
}

LRESULT AppendItem(HWND hDlg, int idCombo, LPCSTR lpText, LPARAM lData)
{
    return Append(hDlg, idCombo, COMBO_BOX, lpText, lData);
}

LRESULT AppendListItem(HWND hDlg, int idListBox, LPCSTR lpText, LPARAM lData)
{
    return Append(hDlg, idListBox, LIST_BOX, lpText, lData);
}

static LONG DataOfSelected(HWND hDlg, int id, const ListMessages &messages)
{
    const LRESULT nItem = SendDlgItemMessageA(hDlg, id, messages.uGetSelected, 0, 0);
    if (nItem == CB_ERR)
        return -1;
    return static_cast<LONG>(
        SendDlgItemMessageA(hDlg, id, messages.uGetData, static_cast<WPARAM>(nItem), 0));
}

LONG SelectedData(HWND hDlg, int idCombo)
{
    return DataOfSelected(hDlg, idCombo, COMBO_BOX);
}

LONG SelectedListData(HWND hDlg, int idListBox)
{
    return DataOfSelected(hDlg, idListBox, LIST_BOX);
}

// Every item has been appended by its dialog: a library's text or a saved name.
static std::string TextOf(HWND hList, UINT uMsg, WPARAM nItem)
{
    char szText[256] = "";
    SendMessageA(hList, uMsg, nItem, reinterpret_cast<LPARAM>(szText));
    return szText;
}

std::string ItemText(HWND hDlg, int idCombo, LRESULT nItem)
{
    return TextOf(GetDlgItem(hDlg, idCombo), CB_GETLBTEXT, static_cast<WPARAM>(nItem));
}

LRESULT SelectText(HWND hDlg, int idCombo, LPCSTR lpText, LRESULT nAfter)
{
    return SendDlgItemMessageA(hDlg, idCombo, CB_SELECTSTRING, static_cast<WPARAM>(nAfter),
                               reinterpret_cast<LPARAM>(lpText));
}

// ---- drawing --------------------------------------------------------------------------------

static constexpr UINT NO_ITEM = static_cast<UINT>(-1);

std::string DrawnText(const DRAWITEMSTRUCT &item)
{
    if (item.itemID == NO_ITEM)
        return "";
    return TextOf(item.hwndItem, item.CtlType == ODT_COMBOBOX ? CB_GETLBTEXT : LB_GETTEXT,
                  item.itemID);
}

bool IsInOpenList(const DRAWITEMSTRUCT &item)
{
    return !(item.itemState & ODS_COMBOBOXEDIT) &&
           SendMessageA(item.hwndItem, CB_GETDROPPEDSTATE, 0, 0) != 0;
}

static int TextColor(UINT uState)
{
    if (uState & ODS_SELECTED)
        return COLOR_HIGHLIGHTTEXT;
    return uState & ODS_DISABLED ? COLOR_GRAYTEXT : COLOR_WINDOWTEXT;
}

static void DrawDottedLine(HDC hdc, int nRight, int y)
{
    const std::unique_ptr<HPEN__, ReleaseWith<DeleteObject>> pen(CreatePen(PS_DOT, 1, 0));
    SelectObject(hdc, pen.get());
    MoveToEx(hdc, 0, y, nullptr);
    LineTo(hdc, nRight, y);
    SelectObject(hdc, GetStockObject(BLACK_PEN));
}

void DrawItemText(const DRAWITEMSTRUCT &item, LPCSTR lpText)
{
    TEXTMETRICA tm{};
    GetTextMetricsA(item.hDC, &tm);
    const int x = LOWORD(static_cast<DWORD>(GetDialogBaseUnits())) / 4 * 2;
    const int y = (item.rcItem.bottom + item.rcItem.top - tm.tmHeight) / 2;
    ExtTextOutA(item.hDC, x, y, ETO_OPAQUE | ETO_CLIPPED, &item.rcItem, lpText,
                static_cast<UINT>(std::char_traits<char>::length(lpText)), nullptr);
}

void DrawListItem(const DRAWITEMSTRUCT &item, LPCSTR lpText, Apart apart)
{
    if (item.itemID == NO_ITEM)
        return;
    const COLORREF oldText = SetTextColor(item.hDC, GetSysColor(TextColor(item.itemState)));
    const COLORREF oldBack = SetBkColor(
        item.hDC, GetSysColor(item.itemState & ODS_SELECTED ? COLOR_HIGHLIGHT : COLOR_WINDOW));
    DrawItemText(item, lpText);
    if (apart != Apart::No)
        DrawDottedLine(item.hDC, item.rcItem.right,
                       apart == Apart::Above ? item.rcItem.top : item.rcItem.bottom - 1);
    SetTextColor(item.hDC, oldText);
    SetBkColor(item.hDC, oldBack);
}
