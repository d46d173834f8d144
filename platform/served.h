// Calls, messages and constants that the layer serves and the driver does not use yet, with the
// names that the Win32 interfaces have. A page that comes to use one takes it to win32.h.
#ifndef KV_PLATFORM_SERVED_H
#define KV_PLATFORM_SERVED_H

#include "platform/win32.h"

// ---------------------------------------------------------------------------------------------
// user: message boxes

constexpr UINT MB_OKCANCEL = 1;

// ---------------------------------------------------------------------------------------------
// user: dialogs

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

constexpr int SW_HIDE = 0;
constexpr int SW_SHOW = 5;
constexpr int SM_CYCAPTION = 4;
constexpr int SM_CXBORDER = 5;
constexpr int SM_CYDLGFRAME = 8;
constexpr int SM_CXFRAME = 32;
KV_IMPORT BOOL WINAPI IsWindowEnabled(HWND hWnd);
KV_IMPORT BOOL WINAPI ShowWindow(HWND hWnd, int nCmdShow);
KV_IMPORT HWND WINAPI SetFocus(HWND hWnd);
KV_IMPORT BOOL WINAPI GetClientRect(HWND hWnd, RECT *lpRect);
KV_IMPORT BOOL WINAPI GetWindowRect(HWND hWnd, RECT *lpRect); // on the screen
// Null stands for the whole window. Children inside become invalid too, the parent does not.
KV_IMPORT BOOL WINAPI InvalidateRect(HWND hWnd, const RECT *lpRect, BOOL bErase);
KV_IMPORT int WINAPI GetSystemMetrics(int nIndex);
KV_IMPORT DWORD WINAPI GetSysColor(int nIndex);

// ---------------------------------------------------------------------------------------------
// user: messages of dialogs

constexpr UINT WM_GETFONT = 0x0031;
constexpr UINT WM_HSCROLL = 0x0114;
constexpr UINT WM_VSCROLL = 0x0115;
constexpr UINT WM_CTLCOLORMSGBOX = 0x0132;
constexpr UINT WM_CTLCOLORLISTBOX = 0x0134;
constexpr UINT WM_CTLCOLORSCROLLBAR = 0x0137;
constexpr UINT ODT_LISTBOX = 2;
constexpr UINT ODT_COMBOBOX = 3;
constexpr UINT ODS_DISABLED = 0x0004;
constexpr UINT ODS_COMBOBOXEDIT = 0x1000; // a combo box's selection field, not its list

// ---------------------------------------------------------------------------------------------
// user: controls, their notices and messages

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
constexpr WORD CBN_SELENDCANCEL = 10;
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
constexpr UINT CB_FINDSTRINGEXACT = 0x0158; // the whole text, ignoring case
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
constexpr int SB_ENDSCROLL = 8;
constexpr UINT TBM_GETPOS = 0x0400;
constexpr UINT TBM_SETTIC = 0x0404;
constexpr UINT TBM_SETPOS = 0x0405;
constexpr UINT TBM_SETRANGE = 0x0406; // lParam: the smallest in the low word, the largest above
constexpr UINT TBM_CLEARTICS = 0x0409;
constexpr UINT TBM_SETPAGESIZE = 0x0415;

// ---------------------------------------------------------------------------------------------
// user: property sheet

constexpr LONG PSNRET_NOERROR = 0;
constexpr LONG PSNRET_INVALID = 1; // the sheet stays open, on the page that said so

// ---------------------------------------------------------------------------------------------
// gdi: objects

constexpr int WHITE_BRUSH = 0;
constexpr int SYSTEM_FONT = 13;
constexpr int PS_SOLID = 0;
constexpr int PS_DOT = 2;
KV_IMPORT HPEN WINAPI CreatePen(int iStyle, int cWidth, COLORREF color);
KV_IMPORT HRGN WINAPI CreateRectRgnIndirect(const RECT *lprect);

// ---------------------------------------------------------------------------------------------
// gdi: drawing

constexpr int OPAQUE = 2;
constexpr UINT ETO_OPAQUE = 2;
constexpr UINT ETO_CLIPPED = 4;
constexpr int COLOR_WINDOW = 5;
constexpr int COLOR_WINDOWTEXT = 8;
constexpr int COLOR_HIGHLIGHT = 13;
constexpr int COLOR_HIGHLIGHTTEXT = 14;
constexpr int COLOR_GRAYTEXT = 17;
KV_IMPORT BOOL WINAPI ExtTextOutA(HDC hdc, int x, int y, UINT options, const RECT *lprect,
                                  LPCSTR lpString, UINT c, const INT *lpDx);
KV_IMPORT BOOL WINAPI FillRgn(HDC hdc, HRGN hrgn, HBRUSH hbr);

#endif
