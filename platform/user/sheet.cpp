// The property sheet. Pages are made when they are first shown; what they are told, and in which
// order, is what their procedures rely on.
#include "platform/user/sheet.h"

#include <algorithm>

#include "platform/kernel/internal.h"
#include "platform/served.h"
#include "platform/user/button.h"
#include "platform/user/systext.h"
#include "platform/user/transcript.h"

namespace kvp
{

static constexpr int MARGIN = 7, TAB_HEIGHT = 25, BORDER = 3;
static constexpr int BUTTON_WIDTH = 75, BUTTON_HEIGHT = 23, BUTTON_GAP = 6, BUTTONS = 3;
static constexpr int ID_HELP = 9;

static RECT SizeOf(Window *owner, const std::vector<SheetPage> &pages)
{
    int width = BUTTONS * (BUTTON_WIDTH + BUTTON_GAP), height = 0;
    for (const SheetPage &page : pages) {
        const RECT rc = PixelsOf(0, 0, page.shape.cx, page.shape.cy);
        width = std::max(width, static_cast<int>(rc.right) + 2 * BORDER);
        height = std::max(height, static_cast<int>(rc.bottom) + 2 * BORDER);
    }
    width += 2 * MARGIN + 2 * FRAME_SIDE;
    height += 3 * MARGIN + TAB_HEIGHT + BUTTON_HEIGHT + FRAME_TOP + FRAME_SIDE;
    return PlaceOver(owner, width, height);
}

Sheet::Sheet(Window *sheetOwner, std::u16string caption, std::vector<SheetPage> sheetPages)
    : Window(nullptr, 0, 0, SizeOf(sheetOwner, sheetPages)), pages(std::move(sheetPages))
{
    framed = true;
    text = std::move(caption);
    const RECT client = Client();
    static constexpr struct {
        int id;
        SystemText text;
        DWORD kind;
    } aButtons[BUTTONS] = {{IDOK, SystemText::Ok, BUTTON_DEFAULT},
                           {IDCANCEL, SystemText::Cancel, BUTTON_PUSH},
                           {ID_HELP, SystemText::Help, BUTTON_PUSH}};
    int left = client.right - MARGIN - BUTTONS * (BUTTON_WIDTH + BUTTON_GAP) + BUTTON_GAP;
    const int top = client.bottom - MARGIN - BUTTON_HEIGHT;
    for (const auto &row : aButtons) {
        MakeControl(*this, u"button", WS_VISIBLE | WS_TABSTOP | STYLE_GROUP | row.kind, row.id,
                    {left, top, left + BUTTON_WIDTH, top + BUTTON_HEIGHT}, TextOf(row.text));
        left += BUTTON_WIDTH + BUTTON_GAP;
    }
    tabs = new Tabs(*this, {MARGIN, MARGIN, client.right - MARGIN, MARGIN + TAB_HEIGHT});
}

// Pages may still look at what they were made from.
Sheet::~Sheet()
{
    while (!children.empty())
        delete children.back();
}

RECT Sheet::PageRect() const
{
    const RECT client = Client();
    return {MARGIN, MARGIN + TAB_HEIGHT, client.right - MARGIN,
            client.bottom - 2 * MARGIN - BUTTON_HEIGHT};
}

COLORREF Sheet::DefaultColor(UINT) const
{
    return FACE;
}

// A page paints over all of its rectangle.
static bool Covers(const Dialog &page, const Dc &dc)
{
    const RECT rc = Moved(page.rc, dc.origin.x, dc.origin.y);
    return page.visible && Contains(rc, {dc.clip.left, dc.clip.top}) &&
           Contains(rc, {dc.clip.right - 1, dc.clip.bottom - 1});
}

void Sheet::Paint(HDC hdc)
{
    if (current < pages.size() && Covers(*pages[current].dialog, *DcOf(hdc)))
        return;
    Fill(hdc, Client(), FACE);
    RECT page = PageRect();
    --page.top; // the tabs stand on this line
    Bevel(hdc, page, LIGHT, DARK);
    Fill(hdc, {page.left + 1, page.bottom - 2, page.right - 1, page.bottom - 1}, SHADOW);
    Fill(hdc, {page.right - 2, page.top + 1, page.right - 1, page.bottom - 1}, SHADOW);
}

LRESULT Sheet::Tell(Dialog *page, UINT code)
{
    NMHDR notice{Handle(), 0, code};
    return page->Message(WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&notice));
}

// The page hears of it before it is seen.
void Sheet::BringUp(size_t index)
{
    current = index;
    Dialog *shown = pages[index].dialog;
    Tell(shown, PSN_SETACTIVE);
    for (const SheetPage &page : pages)
        if (page.dialog && page.dialog != shown)
            page.dialog->Show(false);
    shown->Show(true);
    tabs->Invalidate();
    Child(ID_HELP)->Enable(pages[index].description.dwFlags & PSP_HASHELP);
    NoteWindow(*shown, "activated");
}

// Pages come before the buttons in the order of the tab key.
static void MakePage(Sheet &sheet, SheetPage &page, const RECT &area)
{
    const RECT size = PixelsOf(0, 0, page.shape.cx, page.shape.cy);
    const int left = area.left + BORDER, top = area.top + BORDER - 1;
    const int id = static_cast<int>(reinterpret_cast<ULONG_PTR>(page.description.pszTemplate));
    page.dialog =
        new Dialog(&sheet, page.shape, id, {left, top, left + size.right, top + size.bottom},
                   page.description.pfnDlgProc);
    std::rotate(sheet.children.begin(), sheet.children.end() - 1, sheet.children.end());
    page.dialog->text = page.title;
    page.dialog->Start(page.shape, reinterpret_cast<LPARAM>(&page.description));
    NoteWindow(*page.dialog, "opened");
}

bool Sheet::ShowPage(size_t index)
{
    if (index == current || index >= pages.size())
        return index == current;
    if (current < pages.size() && Tell(pages[current].dialog, PSN_KILLACTIVE))
        return false;
    if (!pages[index].dialog)
        MakePage(*this, pages[index], PageRect());
    BringUp(index);
    return true;
}

// The page shown may refuse to be left; then each page made so far may refuse to apply, with or
// without coming to the front for it.
void Sheet::OnOk()
{
    if (Tell(pages[current].dialog, PSN_KILLACTIVE))
        return;
    for (size_t i = 0; i < pages.size(); ++i) {
        if (!pages[i].dialog)
            continue;
        const LRESULT answer = Tell(pages[i].dialog, PSN_APPLY);
        if (answer == PSNRET_INVALID && i != current)
            BringUp(i);
        if (answer == PSNRET_INVALID || answer == PSNRET_INVALID_NOCHANGEPAGE)
            return;
    }
    result = 1;
    closed = true;
}

void Sheet::OnCancel()
{
    for (const SheetPage &page : pages)
        if (page.dialog)
            Tell(page.dialog, PSN_RESET);
    closed = true;
}

LRESULT Sheet::Message(UINT msg, WPARAM wParam, LPARAM lParam)
{
    if (msg != WM_COMMAND)
        return Window::Message(msg, wParam, lParam);
    switch (LOWORD(wParam)) {
    case IDOK: OnOk(); break;
    case IDCANCEL: OnCancel(); break;
    case ID_HELP: Tell(pages[current].dialog, PSN_HELP); break;
    }
    return 0;
}

void Sheet::PressDefault()
{
    Child(IDOK)->Press();
}

void Sheet::PressCancel()
{
    Child(IDCANCEL)->Press();
}

// Ctrl with Tab or with the page keys goes from page to page; the focus stays with the tabs, so
// that no page finds it where it was left.
bool Sheet::KeyDown(const Key &key)
{
    const bool back = key.code == KeyCode::PageUp || (key.code == KeyCode::Tab && key.shift);
    const bool on = key.code == KeyCode::PageDown || (key.code == KeyCode::Tab && !key.shift);
    if (!key.ctrl || (!back && !on))
        return false;
    FocusOn(tabs);
    ShowPage((current + (back ? pages.size() - 1 : 1)) % pages.size());
    return true;
}

static bool LoadPage(const PROPSHEETPAGEA &description, SheetPage &page)
{
    auto shape = LoadTemplate(description.hInstance, description.pszTemplate);
    if (!shape)
        return false;
    page.description = description;
    page.title = shape->caption;
    page.shape = std::move(*shape);
    const ULONG_PTR icon = reinterpret_cast<ULONG_PTR>(description.pszIcon);
    if ((description.dwFlags & PSP_USEICONID) && icon <= 0xFFFF)
        page.icon = LoadIconSurface(description.hInstance, static_cast<WORD>(icon), FACE);
    return true;
}

static int Run(Sheet &sheet, const PROPSHEETHEADERA &header)
{
    const OwnerLock lock(sheet, Window::Of(header.hwndParent));
    sheet.ShowPage(std::min<size_t>(header.nStartPage, sheet.pages.size() - 1));
    sheet.Show(true);
    Activate(&sheet);
    if (Window *first = FirstTabStop(sheet))
        TabInto(*first);
    RunModal(sheet);
    for (const SheetPage &page : sheet.pages)
        if (page.dialog)
            NoteWindow(*page.dialog, "closed");
    return sheet.result;
}

} // namespace kvp

using namespace kvp;

INT_PTR PropertySheetA(const PROPSHEETHEADERA *lppsph)
{
    if (!lppsph || !lppsph->ppsp || !lppsph->nPages || !(lppsph->dwFlags & PSH_PROPSHEETPAGE))
        return -1;
    std::vector<SheetPage> pages(lppsph->nPages);
    for (UINT i = 0; i < lppsph->nPages; ++i)
        if (!LoadPage(lppsph->ppsp[i], pages[i]))
            return -1;
    Sheet sheet(Window::Of(lppsph->hwndParent),
                AnsiToWide(lppsph->pszCaption ? lppsph->pszCaption : ""), std::move(pages));
    return Run(sheet, *lppsph);
}
