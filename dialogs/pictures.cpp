// Pictures of the model's UI resource library on controls.
#include "resources/pictures.h"
#include "dialogs/helpers.h"

// Hands copy(hdc, size) a device context that holds the picture, to copy from.
template <class Copy>
static void WithPicture(HDC hdc, HBITMAP hPicture, Copy copy)
{
    BITMAP size{};
    GetObjectA(hPicture, sizeof size, &size);
    const std::unique_ptr<HDC__, ReleaseWith<DeleteDC>> memory(CreateCompatibleDC(hdc));
    HGDIOBJ hOld = SelectObject(memory.get(), hPicture);
    copy(memory.get(), size);
    SelectObject(memory.get(), hOld);
}

BitmapPtr LoadPicture(HMODULE hResLib, WORD idPicture)
{
    return BitmapPtr(LoadBitmapA(hResLib, MAKEINTRESOURCEA(idPicture)));
}

void StretchPicture(HDC hdc, const RECT &rc, HBITMAP hPicture)
{
    WithPicture(hdc, hPicture, [&](HDC hdcFrom, const BITMAP &size) {
        StretchBlt(hdc, rc.left, rc.top, rc.right - rc.left, rc.bottom - rc.top, hdcFrom, 0, 0,
                   size.bmWidth, size.bmHeight, SRCCOPY);
    });
}

void CenterPicture(HDC hdc, const RECT &rc, HBITMAP hPicture)
{
    WithPicture(hdc, hPicture, [&](HDC hdcFrom, const BITMAP &size) {
        const LONG x = rc.left + (rc.right - rc.left - size.bmWidth) / 2;
        const LONG y = rc.top + (rc.bottom - rc.top - size.bmHeight) / 2;
        BitBlt(hdc, x, y, size.bmWidth, size.bmHeight, hdcFrom, 0, 0, SRCCOPY);
    });
}

void DrawFace(HDC hdc, const RECT &rc, HMODULE hResLib)
{
    if (const BitmapPtr face = LoadPicture(hResLib, PICTURE_FACE))
        StretchPicture(hdc, rc, face.get());
}

bool DrawsPicture(const DRAWITEMSTRUCT &item)
{
    return item.itemAction & (ODA_DRAWENTIRE | ODA_SELECT);
}

void DrawPictureButton(const DRAWITEMSTRUCT &item, HMODULE hResLib, WORD idPicture)
{
    if (!DrawsPicture(item))
        return;
    DrawFace(item.hDC, item.rcItem, hResLib);
    if (const BitmapPtr picture = LoadPicture(hResLib, idPicture))
        CenterPicture(item.hDC, item.rcItem, picture.get());
}
