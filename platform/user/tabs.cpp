// The row of tabs of a property sheet.
#include "platform/user/sheet.h"

namespace kvp
{

static constexpr int ICON = 16, PADDING = 6;

Tabs::Tabs(Sheet &tabsSheet, const RECT &where)
    : Window(&tabsSheet, WS_VISIBLE | WS_TABSTOP, 0, where), sheet(tabsSheet)
{
}

RECT Tabs::TabRect(size_t index) const
{
    int left = 2, width = 0;
    for (size_t i = 0; i <= index; ++i) {
        left += width;
        width = TextSize(sheet.pages[i].title, 0).x + 2 * PADDING;
        if (sheet.pages[i].icon)
            width += ICON + 4;
    }
    return {left, 2, left + width, Height(rc)};
}

void Tabs::PaintTab(HDC hdc, size_t index)
{
    RECT tab = TabRect(index);
    const bool shown = index == sheet.current;
    if (shown)
        tab = {tab.left - 2, tab.top - 2, tab.right + 2, tab.bottom};
    Fill(hdc, {tab.left, tab.top + 2, tab.right, tab.bottom - (shown ? 0 : 1)}, FACE);
    Fill(hdc, {tab.left, tab.top + 2, tab.left + 1, tab.bottom - (shown ? 0 : 1)}, LIGHT);
    Fill(hdc, {tab.left + 2, tab.top, tab.right - 2, tab.top + 1}, LIGHT);
    Fill(hdc, {tab.left + 1, tab.top + 1, tab.left + 2, tab.top + 2}, LIGHT);
    Fill(hdc, {tab.right - 2, tab.top + 1, tab.right - 1, tab.top + 2}, DARK);
    Fill(hdc, {tab.right - 1, tab.top + 2, tab.right, tab.bottom - 1}, DARK);
    Fill(hdc, {tab.right - 2, tab.top + 2, tab.right - 1, tab.bottom - 1}, SHADOW);
    const SheetPage &page = sheet.pages[index];
    int x = TabRect(index).left + PADDING;
    if (page.icon) {
        DrawSurface(hdc, x, tab.top + (Height(tab) - page.icon->height) / 2, *page.icon);
        x += ICON + 4;
    }
    DrawTextIn(hdc, {x, tab.top, tab.right, tab.bottom}, page.title, TEXT_MIDDLE, DARK);
    if (shown && HasFocus())
        FocusFrame(hdc, {tab.left + 3, tab.top + 3, tab.right - 4, tab.bottom - 2});
}

// The tab of the page shown lies over its neighbours.
void Tabs::Paint(HDC hdc)
{
    Fill(hdc, Client(), FACE);
    Fill(hdc, {0, rc.bottom - rc.top - 1, rc.right - rc.left, rc.bottom - rc.top}, LIGHT);
    for (size_t i = 0; i < sheet.pages.size(); ++i)
        if (i != sheet.current)
            PaintTab(hdc, i);
    if (sheet.current < sheet.pages.size())
        PaintTab(hdc, sheet.current);
}

void Tabs::MouseDown(POINT at)
{
    for (size_t i = 0; i < sheet.pages.size(); ++i)
        if (Contains(TabRect(i), at)) {
            sheet.ShowPage(i);
            return;
        }
}

bool Tabs::KeyDown(const Key &key)
{
    const size_t last = sheet.pages.size() - 1;
    switch (key.code) {
    case KeyCode::Left:
        if (sheet.current > 0)
            sheet.ShowPage(sheet.current - 1);
        return true;
    case KeyCode::Right:
        if (sheet.current < last)
            sheet.ShowPage(sheet.current + 1);
        return true;
    default: return false;
    }
}

} // namespace kvp
