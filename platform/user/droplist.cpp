// The open list of a drop-down list: where it lies, what the mouse does in it, how it is drawn.
#include <algorithm>

#include "platform/display/display.h"
#include "platform/win32.h"
#include "platform/user/combo.h"
#include "platform/user/scroll.h"

namespace kvp
{

DropList::DropList(ComboBox &field) : Window(nullptr, 0, 0, {0, 0, 1, 1}), combo(field)
{
}

int DropList::ItemsShown() const
{
    return std::max(1, (Height(rc) - 2) / combo.itemHeight);
}

void DropList::Place()
{
    const int wanted = std::min(combo.items.Count(), (combo.listHeight - 2) / combo.itemHeight);
    const int height = std::max(1, wanted) * combo.itemHeight + 2;
    const RECT field = combo.OnScreen();
    const int below = field.bottom - 1, above = field.top + 1 - height;
    const int top = below + height > SCREEN_HEIGHT && above >= 0 ? above : below;
    Move({field.left, top, field.right, top + height});
    first = std::clamp(first, 0, std::max(0, combo.items.Count() - ItemsShown()));
    ScrollTo(combo.highlighted);
}

void DropList::ScrollTo(int index)
{
    if (index < 0)
        return;
    first = std::clamp(first, index - ItemsShown() + 1, index);
    first = std::max(first, 0);
}

RECT DropList::ItemRect(int index) const
{
    const int top = 1 + (index - first) * combo.itemHeight;
    const int right = Width(rc) - 1 - (ItemsShown() < combo.items.Count() ? SCROLL_WIDTH : 0);
    return {1, top, right, top + combo.itemHeight};
}

int DropList::ItemAt(POINT at) const
{
    const int last = std::min(first + ItemsShown(), combo.items.Count());
    for (int i = first; i < last; ++i)
        if (Contains(ItemRect(i), at))
            return i;
    return -1;
}

// Beside the items lies the scroll bar.
void DropList::MouseDown(POINT at)
{
    if (ItemAt(at) >= 0 || ItemsShown() >= combo.items.Count())
        return;
    const int most = combo.items.Count() - ItemsShown();
    first = std::clamp(first + ScrollStep({SCROLL_WIDTH, Height(rc)}, at.y, ItemsShown(), first,
                                          combo.items.Count()),
                       0, most);
    Invalidate();
}

void DropList::MouseMove(POINT at)
{
    const int index = ItemAt(at);
    if (index >= 0)
        combo.Highlight(index);
}

void DropList::MouseUp(POINT at)
{
    const int index = ItemAt(at);
    if (index >= 0)
        combo.Choose(index);
}

// A click on the field closes the list and does nothing else; one elsewhere does its work too.
bool DropList::Dismiss(Window *clicked)
{
    combo.CloseWithout();
    return clicked == &combo;
}

void DropList::Paint(HDC hdc)
{
    const COLORREF back = AskColors(combo, hdc, WM_CTLCOLORLISTBOX);
    SetBkColor(hdc, back);
    Fill(hdc, Client(), back);
    Outline(hdc, Client(), DARK);
    const int shown = ItemsShown(), count = combo.items.Count();
    for (int i = first; i < std::min(first + shown, combo.items.Count()); ++i)
        DrawListItem(combo, combo.items, hdc, ODT_COMBOBOX, combo.IsOwnerDrawn(),
                     {i, ODA_DRAWENTIRE, i == combo.highlighted ? ODS_SELECTED : 0, ItemRect(i)});
    if (shown < count)
        PaintScrollBar(hdc, {Width(rc) - SCROLL_WIDTH - 1, 1, Width(rc) - 1, Height(rc) - 1}, first,
                       shown, count);
}

} // namespace kvp
