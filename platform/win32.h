// Everything that the driver asks of the outside: types, constants and calls with the names that
// the Win32 interfaces have, grouped by the folder that implements them, and nothing that the
// driver does not use. With this header exchanged for the vendor's own, the driver is plain
// Win32 source.
//
// Handles and message parameters are pointer-sized; every field of a stored structure has the
// width that its name says. Wide text is UTF-16 in WCHAR, other text is bytes in the ANSI code
// page. A call that fails sets the calling thread's last error.
#ifndef KV_PLATFORM_WIN32_H
#define KV_PLATFORM_WIN32_H

#include <cstddef>
#include <cstdint>

#define WINAPI
#define CALLBACK
#define KV_IMPORT extern "C" __attribute__((visibility("default")))

// ---------------------------------------------------------------------------------------------
// Types

using BOOL = int;
using BYTE = uint8_t;
using CHAR = char;
using WORD = uint16_t;
using SHORT = int16_t;
using UINT = uint32_t;
using INT = int32_t;
using DWORD = uint32_t;
using LONG = int32_t;
using WCHAR = char16_t;
using LANGID = WORD;
using LCID = DWORD;
using HFILE = int;
using NTSTATUS = int32_t;
using LPVOID = void *;
using LPCVOID = const void *;
using LPSTR = char *;
using LPCSTR = const char *;
using LPWSTR = WCHAR *;
using LPCWSTR = const WCHAR *;
using LPBYTE = BYTE *;
using LPDWORD = DWORD *;
using HANDLE = void *;
using HGLOBAL = void *;
using HLOCAL = void *;
using HWND = struct HWND__ *;
using HINSTANCE = struct HINSTANCE__ *;
using HMODULE = HINSTANCE;
using FARPROC = void (*)();
using WPARAM = uintptr_t;
using LPARAM = intptr_t;
using LRESULT = intptr_t;
using INT_PTR = intptr_t;
using LONG_PTR = intptr_t;
using ULONG_PTR = uintptr_t;
using COLORREF = DWORD; // 0x00BBGGRR
using HGDIOBJ = void *;
using HDC = struct HDC__ *;
using HBITMAP = struct HBITMAP__ *;
using HBRUSH = struct HBRUSH__ *;
using HFONT = struct HFONT__ *;
using HICON = struct HICON__ *;
using HMENU = struct HMENU__ *;
using HPEN = struct HPEN__ *;
using HRGN = struct HRGN__ *;

struct POINT {
    LONG x, y;
};
struct RECT {
    LONG left, top, right, bottom; // right and bottom lie outside
};

constexpr WORD LOWORD(ULONG_PTR value)
{
    return static_cast<WORD>(value);
}
constexpr WORD HIWORD(ULONG_PTR value)
{
    return static_cast<WORD>(value >> 16);
}
constexpr LONG MAKELONG(WORD low, WORD high)
{
    return static_cast<LONG>(low | static_cast<DWORD>(high) << 16);
}
// A resource's number where its name could stand.
#define MAKEINTRESOURCEA(i) (reinterpret_cast<LPCSTR>(static_cast<ULONG_PTR>(static_cast<WORD>(i))))

constexpr BOOL TRUE = 1;
constexpr BOOL FALSE = 0;
constexpr int MAX_PATH = 260;

// ---------------------------------------------------------------------------------------------
// kernel: errors, version, locale

constexpr DWORD ERROR_SUCCESS = 0;
constexpr DWORD ERROR_INVALID_PARAMETER = 87;
constexpr DWORD ERROR_INSUFFICIENT_BUFFER = 122;

struct OSVERSIONINFOW {
    DWORD dwOSVersionInfoSize; // must be the size of this structure, 276
    DWORD dwMajorVersion;
    DWORD dwMinorVersion;
    DWORD dwBuildNumber;
    DWORD dwPlatformId;
    WCHAR szCSDVersion[128];
};
static_assert(sizeof(OSVERSIONINFOW) == 276);

constexpr UINT CP_ACP = 0;
constexpr LCID LOCALE_USER_DEFAULT = 0x400;
constexpr DWORD LOCALE_IMEASURE = 0xD;
constexpr int CSTR_EQUAL = 2;

KV_IMPORT DWORD WINAPI GetLastError();
KV_IMPORT void WINAPI SetLastError(DWORD dwErrCode);
// FALSE unless dwOSVersionInfoSize is 276.
KV_IMPORT BOOL WINAPI GetVersionExW(OSVERSIONINFOW *lpVersionInformation);
KV_IMPORT LANGID WINAPI GetUserDefaultLangID();
// Characters written, terminator included; 0 when the type is unknown or the buffer too small.
KV_IMPORT int WINAPI GetLocaleInfoA(LCID Locale, DWORD LCType, LPSTR lpLCData, int cchData);
// CSTR_EQUAL for equal texts, 1 and 3 for less and greater, 0 on failure. A length of -1 stands
// for a terminated string. No flags: case matters.
KV_IMPORT int WINAPI CompareStringA(LCID Locale, DWORD dwCmpFlags, LPCSTR lpString1, int cchCount1,
                                    LPCSTR lpString2, int cchCount2);

// ---------------------------------------------------------------------------------------------
// kernel: code pages

// Units written, or the number needed when the output count is 0; 0 on failure. A source length
// of -1 takes the terminator along.
KV_IMPORT int WINAPI MultiByteToWideChar(UINT CodePage, DWORD dwFlags, LPCSTR lpMultiByteStr,
                                         int cbMultiByte, LPWSTR lpWideCharStr, int cchWideChar);
KV_IMPORT int WINAPI WideCharToMultiByte(UINT CodePage, DWORD dwFlags, LPCWSTR lpWideCharStr,
                                         int cchWideChar, LPSTR lpMultiByteStr, int cbMultiByte,
                                         LPCSTR lpDefaultChar, BOOL *lpUsedDefaultChar);
// Sizes in bytes on both sides; a negative status is a failure. RtlUnicodeToMultiByteN cuts at a
// character's border when the output is too small.
KV_IMPORT NTSTATUS WINAPI RtlUnicodeToMultiByteSize(DWORD *BytesInMultiByteString,
                                                    const WCHAR *UnicodeString,
                                                    DWORD BytesInUnicodeString);
KV_IMPORT NTSTATUS WINAPI RtlUnicodeToMultiByteN(LPSTR MultiByteString,
                                                 DWORD MaxBytesInMultiByteString,
                                                 DWORD *BytesInMultiByteString,
                                                 const WCHAR *UnicodeString,
                                                 DWORD BytesInUnicodeString);

// ---------------------------------------------------------------------------------------------
// kernel: memory

constexpr UINT GMEM_FIXED = 0;
constexpr UINT GMEM_MOVEABLE = 2;
constexpr UINT GMEM_ZEROINIT = 0x40;
constexpr UINT LMEM_FIXED = 0;
constexpr UINT LMEM_ZEROINIT = 0x40;

// Null when memory runs out. Freed with GlobalFree and LocalFree, which take null as well.
KV_IMPORT HGLOBAL WINAPI GlobalAlloc(UINT uFlags, size_t dwBytes);
KV_IMPORT HGLOBAL WINAPI GlobalFree(HGLOBAL hMem);
// Bytes that a block was asked for with; 0 for null.
KV_IMPORT size_t WINAPI GlobalSize(HGLOBAL hMem);
// Where a movable block lies until its last lock is undone.
KV_IMPORT LPVOID WINAPI GlobalLock(HGLOBAL hMem);
// Whether it is still locked; a block that cannot move always is. The last error tells an unlocked
// block (ERROR_SUCCESS) from one that was not locked.
KV_IMPORT BOOL WINAPI GlobalUnlock(HGLOBAL hMem);
// Of the block that lies there.
KV_IMPORT HGLOBAL WINAPI GlobalHandle(LPCVOID pMem);
KV_IMPORT HLOCAL WINAPI LocalAlloc(UINT uFlags, size_t uBytes);
KV_IMPORT HLOCAL WINAPI LocalFree(HLOCAL hMem);

// ---------------------------------------------------------------------------------------------
// kernel: files

#define INVALID_HANDLE_VALUE (reinterpret_cast<HANDLE>(static_cast<intptr_t>(-1)))
constexpr DWORD INVALID_FILE_SIZE = 0xFFFFFFFF;
constexpr DWORD GENERIC_READ = 0x80000000;
constexpr DWORD FILE_SHARE_READ = 1;
constexpr DWORD OPEN_EXISTING = 3;
constexpr DWORD FILE_ATTRIBUTE_NORMAL = 0x80;

constexpr HFILE HFILE_ERROR = -1;
constexpr UINT OF_READ = 0;
constexpr UINT OF_WRITE = 1;
constexpr UINT OF_CREATE = 0x1000; // makes the file, or makes it empty
constexpr UINT OF_EXIST = 0x4000;
constexpr int FILE_BEGIN = 0;

struct OFSTRUCT {
    BYTE cBytes;
    BYTE fFixedDisk;
    WORD nErrCode;
    WORD Reserved1;
    WORD Reserved2;
    CHAR szPathName[128];
};

// Length without the terminator; a result not below the buffer's size is the size needed.
KV_IMPORT UINT WINAPI GetSystemDirectoryA(LPSTR lpBuffer, UINT uSize);
// Full path of the file, or INVALID_HANDLE_VALUE. Released with CloseHandle.
KV_IMPORT HANDLE WINAPI CreateFileA(LPCSTR lpFileName, DWORD dwDesiredAccess, DWORD dwShareMode,
                                    LPVOID lpSecurityAttributes, DWORD dwCreationDisposition,
                                    DWORD dwFlagsAndAttributes, HANDLE hTemplateFile);
KV_IMPORT DWORD WINAPI GetFileSize(HANDLE hFile, LPDWORD lpFileSizeHigh);
KV_IMPORT BOOL WINAPI ReadFile(HANDLE hFile, LPVOID lpBuffer, DWORD nNumberOfBytesToRead,
                               LPDWORD lpNumberOfBytesRead, LPVOID lpOverlapped);
KV_IMPORT BOOL WINAPI CloseHandle(HANDLE hObject);

// A bare name is searched for in the current directory, the Windows directory, the system
// directory and the directories of the path, in this order. With OF_EXIST the file is only looked
// for: the result is then not HFILE_ERROR, and nothing is left open. Released with _lclose.
KV_IMPORT HFILE WINAPI OpenFile(LPCSTR lpFileName, OFSTRUCT *lpReOpenBuff, UINT uStyle);
// Bytes read, fewer at the end of the file, or HFILE_ERROR.
KV_IMPORT UINT WINAPI _lread(HFILE hFile, LPVOID lpBuffer, UINT uBytes);
// Bytes written, or HFILE_ERROR. Writing nothing cuts the file at the position.
KV_IMPORT UINT WINAPI _lwrite(HFILE hFile, LPCVOID lpBuffer, UINT uBytes);
// The new position from the start, or HFILE_ERROR. A position past the end is legal.
KV_IMPORT LONG WINAPI _llseek(HFILE hFile, LONG lOffset, int iOrigin);
KV_IMPORT HFILE WINAPI _lclose(HFILE hFile);

// ---------------------------------------------------------------------------------------------
// kernel: libraries; resource: what they hold

// Libraries are searched for as files are. A shared object's DllInitialize, when it exports one,
// can refuse the load. Null on failure; released with FreeLibrary.
KV_IMPORT HMODULE WINAPI LoadLibraryA(LPCSTR lpLibFileName);
KV_IMPORT BOOL WINAPI FreeLibrary(HMODULE hLibModule);
// A shared object's exported function; null when it has none of this name.
KV_IMPORT FARPROC WINAPI GetProcAddress(HMODULE hModule, LPCSTR lpProcName);
// Of the running program only, null: its full path, cut to the buffer. Bytes without the
// terminator.
KV_IMPORT DWORD WINAPI GetModuleFileNameA(HMODULE hModule, LPSTR lpFilename, DWORD nSize);

// Characters written without the terminator, cut to the buffer; 0 when there is no such string.
KV_IMPORT int WINAPI LoadStringA(HINSTANCE hInstance, UINT uID, LPSTR lpBuffer, int cchBufferMax);
KV_IMPORT int WINAPI LoadStringW(HINSTANCE hInstance, UINT uID, LPWSTR lpBuffer, int cchBufferMax);

// ---------------------------------------------------------------------------------------------
// user: message boxes

constexpr UINT MB_OK = 0;
constexpr UINT MB_ICONEXCLAMATION = 0x30;
constexpr UINT MB_ICONINFORMATION = 0x40;

// The identifier of the button pressed: 1 OK, 2 Cancel.
KV_IMPORT int WINAPI MessageBoxA(HWND hWnd, LPCSTR lpText, LPCSTR lpCaption, UINT uType);
constexpr UINT MB_OKCANCEL = 1;

// ---------------------------------------------------------------------------------------------
// user: dialogs

constexpr int IDOK = 1;
constexpr int IDCANCEL = 2;

// Places of a dialog window's values for GetWindowLongPtrA and SetWindowLongPtrA.
constexpr int DWLP_MSGRESULT = 0; // the message's result, when the procedure handled it
constexpr int DWLP_USER = 16;     // the application's own value

// TRUE: handled. For WM_INITDIALOG and the colour messages the result is the message's result.
using DLGPROC = INT_PTR(CALLBACK *)(HWND, UINT, WPARAM, LPARAM);

KV_IMPORT HWND WINAPI GetDlgItem(HWND hDlg, int nIDDlgItem);
KV_IMPORT BOOL WINAPI SetDlgItemTextA(HWND hDlg, int nIDDlgItem, LPCSTR lpString);
// Disables the owner, runs until EndDialog, enables it again. -1 when there is no such template.
KV_IMPORT INT_PTR WINAPI DialogBoxParamA(HINSTANCE hInstance, LPCSTR lpTemplateName,
                                         HWND hWndParent, DLGPROC lpDialogFunc, LPARAM dwInitParam);
KV_IMPORT BOOL WINAPI EndDialog(HWND hDlg, INT_PTR nResult);
KV_IMPORT LRESULT WINAPI SendDlgItemMessageA(HWND hDlg, int nIDDlgItem, UINT Msg, WPARAM wParam,
                                             LPARAM lParam);
// Bytes copied without the terminator, cut at a character's border.
KV_IMPORT UINT WINAPI GetDlgItemTextA(HWND hDlg, int nIDDlgItem, LPSTR lpString, int cchMax);
KV_IMPORT BOOL WINAPI SetDlgItemInt(HWND hDlg, int nIDDlgItem, UINT uValue, BOOL bSigned);
// Skips blanks, takes a sign and digits, stops at anything else; no digits, or too many, are 0.
KV_IMPORT UINT WINAPI GetDlgItemInt(HWND hDlg, int nIDDlgItem, BOOL *lpTranslated, BOOL bSigned);
KV_IMPORT BOOL WINAPI CheckDlgButton(HWND hDlg, int nIDButton, UINT uCheck);
KV_IMPORT BOOL WINAPI CheckRadioButton(HWND hDlg, int nIDFirstButton, int nIDLastButton,
                                       int nIDCheckButton);
KV_IMPORT UINT WINAPI IsDlgButtonChecked(HWND hDlg, int nIDButton);
// The base unit across in the low word, down in the high word.
KV_IMPORT LONG WINAPI GetDialogBaseUnits();

// ---------------------------------------------------------------------------------------------
// user: windows

constexpr DWORD WS_CHILD = 0x40000000;
constexpr DWORD WS_VISIBLE = 0x10000000;
constexpr DWORD WS_TABSTOP = 0x00010000;

// Children only, of the classes that the layer knows: the trackbar's is "msctls_trackbar32".
KV_IMPORT HWND WINAPI CreateWindowExA(DWORD dwExStyle, LPCSTR lpClassName, LPCSTR lpWindowName,
                                      DWORD dwStyle, int X, int Y, int nWidth, int nHeight,
                                      HWND hWndParent, HMENU hMenu, HINSTANCE hInstance,
                                      LPVOID lpParam);
KV_IMPORT LONG_PTR WINAPI GetWindowLongPtrA(HWND hWnd, int nIndex);
KV_IMPORT LONG_PTR WINAPI SetWindowLongPtrA(HWND hWnd, int nIndex, LONG_PTR dwNewLong);
KV_IMPORT LRESULT WINAPI SendMessageA(HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam);
KV_IMPORT int WINAPI GetDlgCtrlID(HWND hWnd);
KV_IMPORT BOOL WINAPI EnableWindow(HWND hWnd, BOOL bEnable);
KV_IMPORT BOOL WINAPI ClientToScreen(HWND hWnd, POINT *lpPoint);
constexpr int SW_HIDE = 0;
constexpr int SW_SHOW = 5;
constexpr int SM_CYCAPTION = 4;
constexpr int SM_CXBORDER = 5;
constexpr int SM_CYDLGFRAME = 8;
constexpr int SM_CXFRAME = 32;
KV_IMPORT BOOL WINAPI IsWindowEnabled(HWND hWnd);
KV_IMPORT BOOL WINAPI ShowWindow(HWND hWnd, int nCmdShow);
KV_IMPORT BOOL WINAPI GetClientRect(HWND hWnd, RECT *lpRect);
KV_IMPORT BOOL WINAPI GetWindowRect(HWND hWnd, RECT *lpRect); // on the screen
// Null stands for the whole window. Children inside become invalid too, the parent does not.
KV_IMPORT BOOL WINAPI InvalidateRect(HWND hWnd, const RECT *lpRect, BOOL bErase);
KV_IMPORT int WINAPI GetSystemMetrics(int nIndex);

struct PAINTSTRUCT {
    HDC hdc;
    BOOL fErase;
    RECT rcPaint;
    BOOL fRestore;
    BOOL fIncUpdate;
    BYTE rgbReserved[32];
};
// What is drawn is cut to the part that is invalid; nothing is drawn when nothing is.
KV_IMPORT HDC WINAPI BeginPaint(HWND hWnd, PAINTSTRUCT *lpPaint);
KV_IMPORT BOOL WINAPI EndPaint(HWND hWnd, const PAINTSTRUCT *lpPaint);
KV_IMPORT HDC WINAPI GetDC(HWND hWnd);
KV_IMPORT int WINAPI ReleaseDC(HWND hWnd, HDC hDC);

// ---------------------------------------------------------------------------------------------
// user: messages of dialogs

constexpr UINT WM_DESTROY = 0x0002;
constexpr UINT WM_PAINT = 0x000F;
constexpr UINT WM_SYSCOLORCHANGE = 0x0015;
constexpr UINT WM_DRAWITEM = 0x002B;
constexpr UINT WM_MEASUREITEM = 0x002C;
constexpr UINT WM_NOTIFY = 0x004E;
constexpr UINT WM_HELP = 0x0053;
constexpr UINT WM_CONTEXTMENU = 0x007B;
constexpr UINT WM_INITDIALOG = 0x0110;
constexpr UINT WM_COMMAND = 0x0111;
constexpr UINT WM_CTLCOLOREDIT = 0x0133;
constexpr UINT WM_CTLCOLORBTN = 0x0135;
constexpr UINT WM_CTLCOLORDLG = 0x0136;
constexpr UINT WM_CTLCOLORSTATIC = 0x0138;

constexpr UINT ODT_BUTTON = 4;
constexpr UINT ODA_DRAWENTIRE = 1;
constexpr UINT ODA_SELECT = 2;
constexpr UINT ODA_FOCUS = 4;
constexpr UINT ODS_SELECTED = 0x0001;
constexpr UINT ODS_FOCUS = 0x0010;

struct MEASUREITEMSTRUCT {
    UINT CtlType, CtlID, itemID, itemWidth, itemHeight;
    ULONG_PTR itemData;
};
struct DRAWITEMSTRUCT {
    UINT CtlType, CtlID, itemID, itemAction, itemState; // itemID (UINT)-1: no item
    HWND hwndItem;
    HDC hDC;
    RECT rcItem;
    ULONG_PTR itemData;
};
constexpr UINT WM_GETFONT = 0x0031;
constexpr UINT WM_HSCROLL = 0x0114;
constexpr UINT WM_VSCROLL = 0x0115;
constexpr UINT ODT_COMBOBOX = 3;
constexpr UINT ODS_DISABLED = 0x0004;
constexpr UINT ODS_COMBOBOXEDIT = 0x1000; // a combo box's selection field, not its list

// ---------------------------------------------------------------------------------------------
// user: controls, their notices and messages

constexpr DWORD TBS_AUTOTICKS = 0x0001;
constexpr DWORD TBS_ENABLESELRANGE = 0x0020;

// Makes the common controls' classes known.
KV_IMPORT void WINAPI InitCommonControls();
constexpr WORD BN_CLICKED = 0;
constexpr UINT BST_UNCHECKED = 0;
constexpr UINT BST_CHECKED = 1;
constexpr WORD EN_KILLFOCUS = 0x0200;
constexpr WORD EN_CHANGE = 0x0300;
constexpr UINT EM_SETSEL = 0x00B1; // bytes; the caret goes to the end
constexpr WORD CBN_SELCHANGE = 1;
constexpr WORD CBN_DROPDOWN = 7;
constexpr WORD CBN_CLOSEUP = 8;
constexpr WORD CBN_SELENDOK = 9;
constexpr int CB_ERR = -1;
constexpr UINT CB_GETCOUNT = 0x0146;
constexpr UINT CB_GETCURSEL = 0x0147;
constexpr UINT CB_GETLBTEXT = 0x0148;
constexpr UINT CB_INSERTSTRING = 0x014A; // at -1: appended, also to a sorted list
constexpr UINT CB_RESETCONTENT = 0x014B;
constexpr UINT CB_FINDSTRING = 0x014C; // beginning with, ignoring case, after item wParam, wrapping
constexpr UINT CB_SELECTSTRING = 0x014D;
constexpr UINT CB_SETCURSEL = 0x014E;
constexpr UINT CB_GETITEMDATA = 0x0150;
constexpr UINT CB_SETITEMDATA = 0x0151;
constexpr UINT CB_GETDROPPEDSTATE = 0x0157;
constexpr WORD LBN_SELCHANGE = 1;
constexpr int LB_ERR = -1;
constexpr UINT LB_INSERTSTRING = 0x0181;
constexpr UINT LB_RESETCONTENT = 0x0184;
constexpr UINT LB_SETCURSEL = 0x0186;
constexpr UINT LB_GETCURSEL = 0x0188;
constexpr UINT LB_GETTEXT = 0x0189;
constexpr UINT LB_GETITEMDATA = 0x0199;
constexpr UINT LB_SETITEMDATA = 0x019A;
constexpr int SB_LINEUP = 0;
constexpr int SB_LINEDOWN = 1;
constexpr UINT TBM_GETPOS = 0x0400;
constexpr UINT TBM_SETTIC = 0x0404;
constexpr UINT TBM_SETPOS = 0x0405;
constexpr UINT TBM_SETRANGE = 0x0406; // lParam: the smallest in the low word, the largest above
constexpr UINT TBM_CLEARTICS = 0x0409;
constexpr UINT TBM_SETPAGESIZE = 0x0415;

// ---------------------------------------------------------------------------------------------
// user: property sheet

constexpr DWORD PSP_USEICONID = 0x0004;
constexpr DWORD PSP_HASHELP = 0x0020;
constexpr DWORD PSH_PROPSHEETPAGE = 0x0008;
constexpr DWORD PSH_NOAPPLYNOW = 0x0080;
constexpr UINT PSN_SETACTIVE = static_cast<UINT>(-200);
constexpr UINT PSN_KILLACTIVE = static_cast<UINT>(-201);
constexpr UINT PSN_APPLY = static_cast<UINT>(-202);
constexpr UINT PSN_RESET = static_cast<UINT>(-203);
constexpr UINT PSN_HELP = static_cast<UINT>(-205);
constexpr LONG PSNRET_INVALID_NOCHANGEPAGE = 2; // the sheet stays open, on the page shown

struct NMHDR {
    HWND hwndFrom;
    ULONG_PTR idFrom;
    UINT code;
};
struct PROPSHEETPAGEA {
    DWORD dwSize;
    DWORD dwFlags;
    HINSTANCE hInstance;
    LPCSTR pszTemplate;
    LPCSTR pszIcon; // with PSP_USEICONID
    LPCSTR pszTitle;
    DLGPROC pfnDlgProc;
    LPARAM lParam;
    FARPROC pfnCallback;
    UINT *pcRefParent;
};
struct PROPSHEETHEADERA {
    DWORD dwSize;
    DWORD dwFlags;
    HWND hwndParent;
    HINSTANCE hInstance;
    HICON hIcon;
    LPCSTR pszCaption;
    UINT nPages;
    UINT nStartPage;
    const PROPSHEETPAGEA *ppsp;
    FARPROC pfnCallback;
};

// Modal. 1 after OK, 0 after Cancel, -1 when it cannot be shown. A page's WM_INITDIALOG gets its
// PROPSHEETPAGEA as lParam.
KV_IMPORT INT_PTR WINAPI PropertySheetA(const PROPSHEETHEADERA *lppsph);

// ---------------------------------------------------------------------------------------------
// user: help

constexpr UINT HELP_CONTEXT = 0x0001;     // dwData: the topic's context number
constexpr UINT HELP_CONTEXTMENU = 0x000A; // dwData: pairs of control id and context, (0, 0) last
constexpr UINT HELP_WM_HELP = 0x000C;     // likewise

struct HELPINFO {
    UINT cbSize;
    int iContextType;
    int iCtrlId;
    HANDLE hItemHandle; // the control's window
    ULONG_PTR dwContextId;
    POINT MousePos;
};
KV_IMPORT BOOL WINAPI WinHelpA(HWND hWndMain, LPCSTR lpszHelp, UINT uCommand, ULONG_PTR dwData);

// ---------------------------------------------------------------------------------------------
// gdi: device contexts

KV_IMPORT HDC WINAPI CreateCompatibleDC(HDC hdc);
KV_IMPORT BOOL WINAPI DeleteDC(HDC hdc);

// ---------------------------------------------------------------------------------------------
// gdi: objects

constexpr int BLACK_BRUSH = 4;
constexpr int WHITE_PEN = 6;
constexpr int BLACK_PEN = 7;

struct BITMAP {
    LONG bmType, bmWidth, bmHeight, bmWidthBytes;
    WORD bmPlanes, bmBitsPixel;
    LPVOID bmBits;
};
KV_IMPORT HBITMAP WINAPI LoadBitmapA(HINSTANCE hInstance, LPCSTR lpBitmapName);
// Bytes written: a BITMAP, of a bitmap.
KV_IMPORT int WINAPI GetObjectA(HGDIOBJ h, int c, LPVOID pv);
KV_IMPORT HBRUSH WINAPI CreateSolidBrush(COLORREF color);
KV_IMPORT HGDIOBJ WINAPI GetStockObject(int i);
// The object selected before; null when this one cannot be selected.
KV_IMPORT HGDIOBJ WINAPI SelectObject(HDC hdc, HGDIOBJ h);
KV_IMPORT BOOL WINAPI DeleteObject(HGDIOBJ ho);
KV_IMPORT BOOL WINAPI UnrealizeObject(HGDIOBJ h);
KV_IMPORT BOOL WINAPI SetBrushOrgEx(HDC hdc, int x, int y, POINT *lppt);
constexpr int SYSTEM_FONT = 13;
constexpr int PS_DOT = 2;
KV_IMPORT HPEN WINAPI CreatePen(int iStyle, int cWidth, COLORREF color);
KV_IMPORT HRGN WINAPI CreateRectRgnIndirect(const RECT *lprect);

// ---------------------------------------------------------------------------------------------
// gdi: drawing

constexpr DWORD SRCCOPY = 0x00CC0020;
constexpr int TRANSPARENT = 1;

constexpr COLORREF RGB(BYTE r, BYTE g, BYTE b)
{
    return r | static_cast<COLORREF>(g) << 8 | static_cast<COLORREF>(b) << 16;
}

struct TEXTMETRICA {
    LONG tmHeight, tmAscent, tmDescent, tmInternalLeading, tmExternalLeading, tmAveCharWidth,
        tmMaxCharWidth, tmWeight, tmOverhang, tmDigitizedAspectX, tmDigitizedAspectY;
    BYTE tmFirstChar, tmLastChar, tmDefaultChar, tmBreakChar, tmItalic, tmUnderlined, tmStruckOut,
        tmPitchAndFamily, tmCharSet;
};
KV_IMPORT COLORREF WINAPI SetTextColor(HDC hdc, COLORREF color);
KV_IMPORT COLORREF WINAPI SetBkColor(HDC hdc, COLORREF color);
KV_IMPORT int WINAPI SetBkMode(HDC hdc, int mode);
KV_IMPORT BOOL WINAPI GetTextMetricsA(HDC hdc, TEXTMETRICA *lptm);
KV_IMPORT BOOL WINAPI MoveToEx(HDC hdc, int x, int y, POINT *lppt);
KV_IMPORT BOOL WINAPI LineTo(HDC hdc, int x, int y); // without the last point
KV_IMPORT int WINAPI FrameRect(HDC hDC, const RECT *lprc, HBRUSH hbr);
// Exclusive or: drawn twice it is gone.
KV_IMPORT BOOL WINAPI DrawFocusRect(HDC hDC, const RECT *lprc);
KV_IMPORT BOOL WINAPI BitBlt(HDC hdc, int x, int y, int cx, int cy, HDC hdcSrc, int x1, int y1,
                             DWORD rop);
KV_IMPORT BOOL WINAPI StretchBlt(HDC hdcDest, int xDest, int yDest, int wDest, int hDest,
                                 HDC hdcSrc, int xSrc, int ySrc, int wSrc, int hSrc, DWORD rop);
constexpr UINT ETO_OPAQUE = 2;
constexpr UINT ETO_CLIPPED = 4;
constexpr int COLOR_WINDOW = 5;
constexpr int COLOR_WINDOWTEXT = 8;
constexpr int COLOR_HIGHLIGHT = 13;
constexpr int COLOR_HIGHLIGHTTEXT = 14;
constexpr int COLOR_GRAYTEXT = 17;
KV_IMPORT DWORD WINAPI GetSysColor(int nIndex);
KV_IMPORT BOOL WINAPI InflateRect(RECT *lprc, int dx, int dy);
KV_IMPORT BOOL WINAPI ExtTextOutA(HDC hdc, int x, int y, UINT options, const RECT *lprect,
                                  LPCSTR lpString, UINT c, const INT *lpDx);
KV_IMPORT BOOL WINAPI FillRgn(HDC hdc, HRGN hrgn, HBRUSH hbr);

// ---------------------------------------------------------------------------------------------
// spooler

constexpr DWORD REG_BINARY = 3;

// The public settings record, as version 0x0320 of the interface has it: 188 bytes.
struct DEVMODEW {
    WCHAR dmDeviceName[32];
    WORD dmSpecVersion;
    WORD dmDriverVersion;
    WORD dmSize;
    WORD dmDriverExtra; // bytes of private data behind the public part
    DWORD dmFields;
    BYTE abRest[112];
};
static_assert(sizeof(DEVMODEW) == 188);

struct PRINTER_INFO_2W {
    LPWSTR pServerName;
    LPWSTR pPrinterName;
    LPWSTR pShareName;
    LPWSTR pPortName;
    LPWSTR pDriverName;
    LPWSTR pComment;
    LPWSTR pLocation;
    DEVMODEW *pDevMode; // null when the queue has no default record
};

struct PRINTER_INFO_2A {
    LPSTR pServerName;
    LPSTR pPrinterName;
    LPSTR pShareName;
    LPSTR pPortName;
    LPSTR pDriverName;
    LPSTR pComment;
    LPSTR pLocation;
    void *pDevMode;
};

struct DRIVER_INFO_2W {
    DWORD cVersion;
    LPWSTR pName;
    LPWSTR pEnvironment;
    LPWSTR pDriverPath;
    LPWSTR pDataFile;
    LPWSTR pConfigFile;
};

// The readers follow one pattern: with too small a buffer they give FALSE, the last error
// ERROR_INSUFFICIENT_BUFFER and the size needed in bytes. Texts lie in the caller's buffer.
KV_IMPORT BOOL WINAPI GetPrinterW(HANDLE hPrinter, DWORD Level, LPBYTE pPrinter, DWORD cbBuf,
                                  LPDWORD pcbNeeded);
KV_IMPORT BOOL WINAPI GetPrinterA(HANDLE hPrinter, DWORD Level, LPBYTE pPrinter, DWORD cbBuf,
                                  LPDWORD pcbNeeded);
KV_IMPORT BOOL WINAPI GetPrinterDriverW(HANDLE hPrinter, LPCWSTR pEnvironment, DWORD Level,
                                        LPBYTE pDriverInfo, DWORD cbBuf, LPDWORD pcbNeeded);
KV_IMPORT BOOL WINAPI GetPrinterDriverDirectoryA(LPCSTR pName, LPCSTR pEnvironment, DWORD Level,
                                                 LPBYTE pDriverDirectory, DWORD cbBuf,
                                                 LPDWORD pcbNeeded);
// ERROR_SUCCESS, ERROR_MORE_DATA with the size needed, or another error. A value that does not
// exist has size 0.
KV_IMPORT DWORD WINAPI GetPrinterDataW(HANDLE hPrinter, LPCWSTR pValueName, LPDWORD pType,
                                       LPBYTE pData, DWORD nSize, LPDWORD pcbNeeded);
KV_IMPORT DWORD WINAPI SetPrinterDataW(HANDLE hPrinter, LPCWSTR pValueName, DWORD Type,
                                       LPBYTE pData, DWORD cbData);

#endif
