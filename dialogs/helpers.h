// What every page and dialog of the sheet uses: its state, context help, the 3-D look, grey
// backgrounds, pictures, and small things about controls.
#ifndef KV_DIALOGS_HELPERS_H
#define KV_DIALOGS_HELPERS_H

#include <initializer_list>
#include <memory>
#include <optional>
#include <string>

#include "base/handles.h"
#include "datafile/instance.h"

// ---- the sheet's state ----------------------------------------------------------------------

// At WM_INITDIALOG: from now on the dialog has its state.
void SetCB(HWND hDlg, CBSTRUC *lpcbstruc);
// Null before WM_INITDIALOG: a procedure that is called so early leaves the blocks alone.
CBSTRUC *FindCB(HWND hDlg);
// For everybody else: without state the program is stopped, after a message that names the
// expression and lpFile, the caller's source file.
CBSTRUC *RequireCB(HWND hDlg, LPCSTR lpFile);
// Likewise for a record without an orientation, by those who choose a picture or a text by it.
void RequireOrientation(const DriverDevMode *lpDM, LPCSTR lpFile);
// A page's WM_INITDIALOG brings its part of the sheet, whose application value is the block.
CBSTRUC *CBOfPage(LPARAM lParam);

// ---- help -----------------------------------------------------------------------------------

// A dialog's table, handed to the help engine as it is: first the dialog's template and its own
// context, then its controls, last two zeros.
struct HELPID {
    DWORD dwControl, dwContext;
};
extern const HELPID BasicDlgHelpIDs[], aPaperDlgHelpIDs[], UtyDlgHelpIDs[], DetailDlgHelpIDs[];

// The full name of the model's help file, whether or not it exists, into MAX_PATH bytes; a longer
// one is cut.
void GetHelpPathEx(LPSTR lpPath, LPCWSTR lpModel, HANDLE hPrinter);
// Answers a dialog's WM_HELP and WM_CONTEXTMENU for what was asked about, and any other message
// (the sheet's Help, a Help button) with the dialog's own topic. Needs the dialog's state.
void ShowHelp(HWND hDlg, const CBSTRUC *lpcbstruc, const HELPID *lpTable, UINT uMsg, LPARAM lParam);

// ---- the 3-D look ---------------------------------------------------------------------------

// While a sheet is open: loads the machine's 3-D controls library, if it has one, and registers
// this module with it; every dialog that is made afterwards is drawn its way.
void Enable3dCtl();
void Change3dColor(); // at WM_SYSCOLORCHANGE
void Disable3dCtl();
bool Is3dOn(); // the library is loaded, registered or not
// Whether the running program is a 32-bit image. One that cannot be looked at counts as such.
BOOL is32Process();

// ---- grey backgrounds -----------------------------------------------------------------------

constexpr COLORREF LIGHT_GREY = RGB(192, 192, 192);

// A dialog procedure's answer to WM_DESTROY, WM_SYSCOLORCHANGE and the WM_CTLCOLOR messages.
// lphBrush is the procedure's own brush, made at the dialog's first background and deleted at its
// end. With the 3-D library loaded nothing is done, and the answer is always 1.
INT_PTR ChangeBackColor(HBRUSH *lphBrush, UINT uMsg, WPARAM wParam, LPARAM lParam);
// The same for edit fields alone, with the 3-D library or without.
INT_PTR GrayEditBox(HBRUSH *lphBrush, UINT uMsg, WPARAM wParam, LPARAM lParam);

// ---- pictures -------------------------------------------------------------------------------

using BitmapPtr = std::unique_ptr<HBITMAP__, ReleaseWith<DeleteObject>>;
// Null when the library has none of this number.
BitmapPtr LoadPicture(HMODULE hResLib, WORD idPicture);
void StretchPicture(HDC hdc, const RECT &rc, HBITMAP hPicture); // over the whole rectangle
void CenterPicture(HDC hdc, const RECT &rc, HBITMAP hPicture);  // in its own size
// The face that lies under the picture of an owner-drawn button.
void DrawFace(HDC hdc, const RECT &rc, HMODULE hResLib);
// Whether an owner-drawn item's picture is to be drawn, and not its focus alone.
bool DrawsPicture(const DRAWITEMSTRUCT &item);
// All of an owner-drawn button that only shows a picture: face and picture. 0 for no picture.
void DrawPictureButton(const DRAWITEMSTRUCT &item, HMODULE hResLib, WORD idPicture);

// ---- controls -------------------------------------------------------------------------------

// A trackbar over a rectangle in the parent's client coordinates; null on failure.
HWND CreateSlideTrackBar(HWND hParent, int x, int y, int nWidth, int nHeight, int id);
void EnableControl(HWND hDlg, int id, bool bEnable);
void CheckBox(HWND hDlg, int id, bool bOn);
void RedrawControl(HWND hDlg, int id);
// The height of a line of text, in pixels.
int GetTextHeight(HWND hWnd);
// A text of a library, of at most 255 bytes, becomes the control's; a missing one reads as empty.
BOOL SetStaticText(HINSTANCE hLibrary, HWND hDlg, int idControl, UINT idText);

// ---- texts of the model's library ------------------------------------------------------------

// Of at most 255 bytes; empty when the library lacks it.
std::string LoadText(HMODULE hResLib, UINT idText);
// A box over hDlg with texts of the library. The button pressed.
int AskUser(HWND hDlg, HMODULE hResLib, UINT idText, UINT idCaption, UINT uButtons);

// ---- names that a user types -----------------------------------------------------------------

std::string DlgItemText(HWND hDlg, int id); // at most 255 bytes
bool IsBlank(const std::string &strText);   // empty, or spaces and tabs only
// Cuts a name to at most cbMost bytes, but never inside a double-byte character: its characters
// are read from its start, by the lead bytes of Shift-JIS, in every code page. Whether it was
// longer.
bool CutName(std::string *lpName, size_t cbMost);
// A cut name goes back into its edit field, the caret behind it.
void PutCutName(HWND hDlg, int id, const std::string &strName);

// ---- drop-down lists and list boxes ----------------------------------------------------------

void EmptyList(HWND hDlg, int idCombo);
// Appends, also to a list of sorted style. Its position.
LRESULT AppendItem(HWND hDlg, int idCombo, LPCSTR lpText, LPARAM lData);
LRESULT AppendListItem(HWND hDlg, int idListBox, LPCSTR lpText, LPARAM lData);
// Data of the selected item; -1 when nothing is selected.
LONG SelectedData(HWND hDlg, int idCombo);
LONG SelectedListData(HWND hDlg, int idListBox);
// Text of an item, empty when there is no such item.
std::string ItemText(HWND hDlg, int idCombo, LRESULT nItem);
// Selects the first item behind nAfter (-1: from the top) that begins with the text, ignoring case,
// and wraps. Its position, or CB_ERR and the selection as it was.
LRESULT SelectText(HWND hDlg, int idCombo, LPCSTR lpText, LRESULT nAfter = -1);

// The text of the item that is drawn, from its list of either kind; empty for no item.
std::string DrawnText(const DRAWITEMSTRUCT &item);
// Fills the item's rectangle with the background colour and writes a line of text into it, a little
// off the left edge and in the middle of the height.
void DrawItemText(const DRAWITEMSTRUCT &item, LPCSTR lpText);
// Draws the item's text on its background, in the colours of its state, and along its top or
// bottom row a dotted black line that sets it apart. Nothing for no item.
enum class Apart { No, Above, Below };
void DrawListItem(const DRAWITEMSTRUCT &item, LPCSTR lpText, Apart apart);
// Whether it is an item of the open list, and not what the selection field shows.
bool IsInOpenList(const DRAWITEMSTRUCT &item);

// ---- answers to messages ---------------------------------------------------------------------

// A page's to what it asks of its colours, before it has its state as well: nothing for any other
// message. lphBrush as above.
std::optional<INT_PTR> AnswerColors(HBRUSH *lphBrush, UINT uMsg, WPARAM wParam, LPARAM lParam);
// A page's to the sheet's notices. Apply is its own.
INT_PTR AnswerNotice(HWND hDlg, CBSTRUC *lpcbstruc, const HELPID *lpTable, LPARAM lParam,
                     INT_PTR (*Apply)(HWND hDlg, CBSTRUC *lpcbstruc));
// TRUE to WM_PAINT of a page that draws nothing itself: the page counts as painted.
INT_PTR PaintNothing(HWND hDlg);
// TRUE to WM_MEASUREITEM: the items of the given lists are a line of text high.
INT_PTR MeasureItem(HWND hDlg, LPARAM lParam, std::initializer_list<UINT> aLists);

#endif
