// What the Paper page draws itself: the preview, the items of its lists, its picture buttons.
#include "datafile/tables.h"
#include "dialogs/dial_pap.h"
#include "dialogs/helpers.h"
#include "resources/paper_ids.h"
#include "resources/pictures.h"
#include "resources/text_ids.h"

static constexpr COLORREF WHITE = RGB(255, 255, 255);

// ---- the preview ----------------------------------------------------------------------------

// The page stands on a saved size, and none is left. Without a user-defined paper the index stays,
// and names nothing.
static void FallBackToUserDefined(const DatFile &dat, DriverDevMode *lpDM)
{
    const int nUserDefined = FindPaperIndex(dat, KV_PAPER_USER);
    if (nUserDefined >= 0)
        lpDM->nPaper = nUserDefined;
    lpDM->dm.dmPaperSize = KV_PAPER_USER;
}

// The record that the page's index names; null when it leads outside the tables.
static const PaperRecord *CurrentPaper(const DatFile &dat, DriverDevMode *lpDM)
{
    if (lpDM->nPaper >= int64_t{dat.nPapers}) {
        if (dat.nUserPaperUsed != 0) {
            const UserPaperRecord *lpSlot =
                RecordAt(dat.lpUserPapers, dat.CfgHeader.wUserPaperSlots,
                         int64_t{lpDM->nPaper} - dat.nPapers);
            return lpSlot ? &lpSlot->paper : nullptr;
        }
        FallBackToUserDefined(dat, lpDM);
    }
    return RecordAt(dat.lpPapers, dat.nPapers, lpDM->nPaper);
}

// The pictures lie in groups: by class, in it by source, then by orientation and printable area.
// Of a number that grows out of its 16 bits they are what counts.
static WORD PreviewPicture(const DriverDevMode *lpDM, const PaperRecord &paper)
{
    return static_cast<WORD>(PICTURE_PREVIEW + PREVIEW_CLASS * paper.w14 +
                             int64_t{PREVIEW_SOURCE} * lpDM->nBin +
                             PREVIEW_LANDSCAPE * (lpDM->dm.dmOrientation - 1) +
                             int64_t{PREVIEW_CENTERED} * (int64_t{lpDM->nPrintArea} - 1));
}

// The picture on white, inside the frame's line.
static void DrawPreview(HWND hFrame, HBITMAP hPicture)
{
    RECT rc{};
    GetClientRect(hFrame, &rc);
    HDC hdc = GetDC(hFrame);
    RECT rcInside = rc;
    InflateRect(&rcInside, -1, -1);
    const std::unique_ptr<HRGN__, ReleaseWith<DeleteObject>> inside(
        CreateRectRgnIndirect(&rcInside));
    const std::unique_ptr<HBRUSH__, ReleaseWith<DeleteObject>> white(CreateSolidBrush(WHITE));
    FillRgn(hdc, inside.get(), white.get());
    CenterPicture(hdc, rc, hPicture);
    ReleaseDC(hFrame, hdc);
}

void SetPaperBmp(HWND hDlg, DriverDevMode *lpDM)
{
    const CBSTRUC *lpcbstruc = GetPaperCB(hDlg);
    RequireOrientation(lpDM, "dial_pap");
    const PaperRecord *lpPaper = CurrentPaper(lpcbstruc->lpInstance->dat, lpDM);
    BitmapPtr picture;
    if (lpPaper)
        picture = LoadPicture(lpcbstruc->lpInstance->hResLib, PreviewPicture(lpDM, *lpPaper));
    PAINTSTRUCT paint;
    BeginPaint(hDlg, &paint);
    if (picture)
        DrawPreview(GetDlgItem(hDlg, IDC_PAPER_PREVIEW), picture.get());
    EndPaint(hDlg, &paint);
}

void SetPaperCopyBmp(HWND hDlg, const DriverDevMode *)
{
    GetPaperCB(hDlg);
}

// ---- items and buttons ----------------------------------------------------------------------

// In the open list a line below the user-defined paper sets the saved sizes apart, if there are
// any.
static Apart PlaceOfLine(const UIINSTANCE *lpInstance, const DRAWITEMSTRUCT &item,
                         const std::string &strText)
{
    if (item.CtlID != IDC_PAPER_SIZE || lpInstance->dat.nUserPaperUsed == 0 || !IsInOpenList(item))
        return Apart::No;
    return strText == LoadText(lpInstance->hResLib, PAPER_USER) ? Apart::Below : Apart::No;
}

void DrawPaperSize(HWND hDlg, const DRAWITEMSTRUCT &item, const DriverDevMode *)
{
    const UIINSTANCE *lpInstance = GetPaperCB(hDlg)->lpInstance;
    if (item.CtlID != IDC_PAPER_SIZE && item.CtlID != IDC_PAPER_SOURCE)
        return;
    const std::string strText = DrawnText(item);
    DrawListItem(item, strText.c_str(), PlaceOfLine(lpInstance, item, strText));
}

static WORD PictureOf(const UIINSTANCE *lpInstance, UINT idButton)
{
    switch (idButton) {
    case IDC_PAPER_MAKER: return PICTURE_MAKER;
    case IDC_PAPER_PICTURE: return static_cast<WORD>(lpInstance->idPaperBitmap);
    default: return 0;
    }
}

void DrawPaperControl(HWND hDlg, const DRAWITEMSTRUCT &item, const DriverDevMode *)
{
    const UIINSTANCE *lpInstance = GetPaperCB(hDlg)->lpInstance;
    if (item.CtlType == ODT_BUTTON)
        DrawPictureButton(item, lpInstance->hResLib, PictureOf(lpInstance, item.CtlID));
}
