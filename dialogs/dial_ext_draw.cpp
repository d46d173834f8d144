// The drawn buttons of the More Settings dialog: pictures, and the signs of the colour adjustments.
#include "dialogs/dial_ext.h"
#include "dialogs/helpers.h"
#include "dialogs/rules.h"
#include "dialogs/settings_table.h"
#include "resources/detail_ids.h"
#include "resources/pictures.h"

static constexpr struct {
    WORD idControl, idPicture;
} aPictures[] = {
    {IDC_DETAIL_RESOLUTION_LINE, PICTURE_LINE_RESOLUTION},
    {IDC_DETAIL_MEDIA_LINE, PICTURE_LINE_MEDIA},
    {IDC_DETAIL_INK_LINE, PICTURE_LINE_INK},
    {IDC_DETAIL_HT_LINE, PICTURE_LINE_HT},
    {IDC_DETAIL_MW_LINE, PICTURE_LINE_MW},
    {IDC_DETAIL_MW_OPTION_LINE, PICTURE_LINE_MW_OPTION},
    {IDC_DETAIL_HS_LINE, PICTURE_LINE_HS},
    {IDC_DETAIL_MIRROR_LINE, PICTURE_LINE_MIRROR},
    {IDC_DETAIL_FD_LINE, PICTURE_LINE_FD},
    {IDC_DETAIL_KRJNL_LINE, PICTURE_LINE_KRJNL},
    {IDC_DETAIL_INTENT_LINE, PICTURE_LINE_INTENT},
};

// 0 for a button without one.
static WORD PictureOf(const UIINSTANCE *lpInstance, UINT idControl)
{
    if (idControl == IDC_DETAIL_INK_PICTURE)
        return static_cast<WORD>(lpInstance->idDetailInkBitmap);
    if (idControl == IDC_DETAIL_HT_PICTURE)
        return static_cast<WORD>(lpInstance->idHTBitmap);
    for (const auto &row : aPictures)
        if (row.idControl == idControl)
            return row.idPicture;
    return 0;
}

// ---- signs ----------------------------------------------------------------------------------

static void FillBox(HDC hdc, const RECT &rc, COLORREF color)
{
    const std::unique_ptr<HBRUSH__, ReleaseWith<DeleteObject>> brush(CreateSolidBrush(color));
    const std::unique_ptr<HRGN__, ReleaseWith<DeleteObject>> region(CreateRectRgnIndirect(&rc));
    FillRgn(hdc, region.get(), brush.get());
}

// An edit field's frame: sunken, dark above and at the left.
static void DrawSignFrame(HDC hdc, const RECT &rc, bool bEnabled)
{
    constexpr COLORREF BLACK = RGB(0, 0, 0);
    const LONG x = rc.left + 2;
    FillBox(hdc, {x, rc.top, rc.right, rc.top + 2}, BLACK);
    FillBox(hdc, {rc.left, rc.top, x, rc.bottom}, BLACK);
    FillBox(hdc, {rc.right - 2, rc.top + 2, rc.right, rc.bottom - 2}, LIGHT_GREY);
    FillBox(hdc, {x, rc.bottom - 1, rc.right, rc.bottom}, LIGHT_GREY);
    FillBox(hdc, {x, rc.bottom - 2, rc.right, rc.bottom - 1},
            bEnabled ? LIGHT_GREY : GetSysColor(COLOR_WINDOW));
}

static void DrawSignText(const DRAWITEMSTRUCT &item, LPCSTR lpSign, COLORREF back)
{
    const COLORREF oldBack = SetBkColor(item.hDC, back);
    DrawItemText(item, lpSign);
    SetBkColor(item.hDC, oldBack);
}

// Drawing a sign settles it: a minus that waited for its number is a 0 from here on, and only the
// row's state still knows of it, until the sign is drawn again.
static void DrawSign(UIINSTANCE *lpInstance, const DRAWITEMSTRUCT &item, int nRow)
{
    WORD wState = lpInstance->wAdjState[nRow];
    const bool bNegative = lpInstance->nAdjust[nRow] < 0;
    const bool bEnabled = (wState & ROW_ENABLED) != 0;
    if (lpInstance->nAdjust[nRow] == ADJUST_MINUS)
        lpInstance->nAdjust[nRow] = 0;
    wState = WithBits(wState, ROW_NEGATIVE, bNegative);
    lpInstance->wAdjState[nRow] = wState;
    DrawSignText(item, bNegative ? "-" : "+", bEnabled ? GetSysColor(COLOR_WINDOW) : LIGHT_GREY);
    DrawSignFrame(item.hDC, item.rcItem, bEnabled);
}

void DrawDetailControl(HWND hDlg, const DRAWITEMSTRUCT &item, DriverDevMode *)
{
    const CBSTRUC *lpcbstruc = GetDetailCB(hDlg);
    if (item.CtlType != ODT_BUTTON)
        return;
    DrawPictureButton(item, lpcbstruc->hResLib, PictureOf(lpcbstruc->lpInstance, item.CtlID));
    const int nRow = RowOf(static_cast<int>(item.CtlID), &ColorRow::idSign);
    if (nRow >= 0)
        DrawSign(lpcbstruc->lpInstance, item, nRow);
}
