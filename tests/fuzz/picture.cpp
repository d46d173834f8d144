// A bitmap (first byte even) drawn onto itself, or a group of icons and its first icon (a 16-bit
// length parts them) on the tab of a sheet.
#include "tests/fuzz/windows.h"

static void DrawBitmap(Input bytes)
{
    const Library library({{TYPE_BITMAP, bytes}});
    HBITMAP bitmap = LoadBitmapA(library.module, MAKEINTRESOURCEA(ONE));
    if (!bitmap)
        return;
    BITMAP size{};
    Must(GetObjectA(bitmap, sizeof size, &size) == sizeof size);
    Must(size.bmWidth > 0 && size.bmHeight > 0);
    HDC to = CreateCompatibleDC(nullptr), from = CreateCompatibleDC(nullptr);
    HBITMAP paper = LoadBitmapA(library.module, MAKEINTRESOURCEA(ONE));
    HGDIOBJ before = SelectObject(from, bitmap), blank = SelectObject(to, paper);
    BitBlt(to, -3, 5, size.bmWidth, size.bmHeight, from, 0, 0, SRCCOPY);
    StretchBlt(to, 0, 0, 20, 20, from, 0, 0, size.bmWidth, size.bmHeight, SRCCOPY);
    SelectObject(from, before);
    SelectObject(to, blank);
    DeleteDC(from);
    DeleteDC(to);
    DeleteObject(paper);
    DeleteObject(bitmap);
}

static void ShowIcon(Input bytes)
{
    static const Bytes shape = PlainDialog();
    const size_t cbGroup = TakeValue<uint16_t>(bytes);
    const Input group = Take(bytes, cbGroup);
    const Library library({{TYPE_DIALOG, shape}, {TYPE_ICONS, group}, {TYPE_ICON, bytes}});
    PROPSHEETPAGEA page{};
    page.dwSize = sizeof page;
    page.dwFlags = PSP_USEICONID;
    page.hInstance = library.module;
    page.pszTemplate = MAKEINTRESOURCEA(ONE);
    page.pszIcon = MAKEINTRESOURCEA(ONE);
    PROPSHEETHEADERA header{};
    header.dwSize = sizeof header;
    header.dwFlags = PSH_PROPSHEETPAGE;
    header.nPages = 1;
    header.ppsp = &page;
    Will({});
    Must(PropertySheetA(&header) == 0);
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const kvp::Machine machine = StartScreen();
    Input input(data, size);
    if (TakeValue<uint8_t>(input) % 2)
        ShowIcon(input);
    else
        DrawBitmap(input);
    MustBeTidy();
    return 0;
}
