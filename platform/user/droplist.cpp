// The open list of a drop-down list: where it lies, what the mouse does in it, how it is drawn.
#include <algorithm>

#include "platform/display/display.h"
#include "platform/served.h"
#include "platform/user/combo.h"

namespace kvp
{

DropList::DropList(ComboBox &field) : ScrolledList(nullptr, 0, 0, {0, 0, 1, 1}), combo(field)
{
}

int DropList::Count() const
{
    return combo.items.Count();
}

int DropList::ItemHeight() const
{
    return combo.itemHeight;
}

void DropList::Place()
{
    const int most = (std::min(combo.listHeight, SCREEN_HEIGHT) - 2) / combo.itemHeight;
    const int wanted = std::min(combo.items.Count(), most);
    const int height = std::max(1, wanted) * combo.itemHeight + 2;
    const RECT field = combo.OnScreen();
    const int right = std::min<int>(field.right, field.left + SCREEN_WIDTH);
    const int below = field.bottom - 1, above = field.top + 1 - height;
    const int top = below + height > SCREEN_HEIGHT && above >= 0 ? above : below;
    Move({field.left, top, right, top + height});
    LetGo();
    KeepFilled();
    ScrollTo(combo.highlighted);
}

void DropList::MouseDown(POINT at)
{
    BarPressed(at);
}

void DropList::MouseMove(POINT at)
{
    const int index = ItemAt(at);
    if (IsDragging())
        ScrolledList::MouseMove(at);
    else if (index >= 0)
        combo.Highlight(index);
}

// Where the thumb is let go does not matter.
void DropList::MouseUp(POINT at)
{
    const int index = ItemAt(at);
    if (IsDragging())
        LetGo();
    else if (index >= 0)
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
    for (int i = Uppermost(); i < ItemsEnd(); ++i)
        DrawListItem(combo, combo.items, hdc, ODT_COMBOBOX, combo.IsOwnerDrawn(),
                     {i, ODA_DRAWENTIRE, i == combo.highlighted ? ODS_SELECTED : 0, ItemRect(i)});
    PaintBar(hdc);
}

} // namespace kvp
