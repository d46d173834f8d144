// The list box. Only a selection made by hand is told to the parent.
#include "platform/user/listbox.h"

#include <algorithm>

#include "platform/served.h"

namespace kvp
{

static constexpr DWORD LISTBOX_NOTIFY = 1, LISTBOX_OWNER_DRAWN = 0x30;

static constexpr ListMessages aNumbers{.insert = LB_INSERTSTRING,
                                       .reset = LB_RESETCONTENT,
                                       .count = 0,
                                       .getSelection = LB_GETCURSEL,
                                       .setSelection = LB_SETCURSEL,
                                       .getText = LB_GETTEXT,
                                       .getData = LB_GETITEMDATA,
                                       .setData = LB_SETITEMDATA,
                                       .find = 0,
                                       .findWhole = 0,
                                       .select = 0};

ListBox::ListBox(Window *listParent, DWORD listStyle, int listId, const RECT &where)
    : ScrolledList(listParent, listStyle, listId, where)
{
    if (IsOwnerDrawn())
        itemHeight = MeasuredHeight(*this, ODT_LISTBOX);
}

bool ListBox::IsOwnerDrawn() const
{
    return style & LISTBOX_OWNER_DRAWN;
}

LRESULT ListBox::Message(UINT msg, WPARAM wParam, LPARAM lParam)
{
    LRESULT result = 0;
    bool changed = false;
    const int before = selection;
    if (!ListMessage(aNumbers, items, selection, msg, wParam, lParam, result, changed))
        return Window::Message(msg, wParam, lParam);
    if (msg == LB_SETCURSEL) {
        ScrollTo(selection);
        if (before != selection) {
            DrawNow(before, ODA_SELECT);
            DrawNow(selection, ODA_SELECT);
        }
    } else if (changed) {
        KeepFilled();
        Invalidate();
    }
    return result;
}

void ListBox::SelectByHand(int index)
{
    if (!items.Has(index))
        return;
    Message(LB_SETCURSEL, static_cast<WPARAM>(index), 0);
    if (style & LISTBOX_NOTIFY)
        Notify(LBN_SELCHANGE);
}

void ListBox::MouseDown(POINT at)
{
    if (!BarPressed(at))
        SelectByHand(ItemAt(at));
}

bool ListBox::KeyDown(const Key &key)
{
    const int last = items.Count() - 1;
    int target;
    switch (key.code) {
    case KeyCode::Up:
    case KeyCode::Left: target = std::max(selection - 1, 0); break;
    case KeyCode::Down:
    case KeyCode::Right: target = std::min(selection + 1, last); break;
    case KeyCode::PageUp: target = std::max(selection - ItemsShown(), 0); break;
    case KeyCode::PageDown: target = std::min(selection + ItemsShown(), last); break;
    case KeyCode::Home: target = 0; break;
    case KeyCode::End: target = last; break;
    default: return false;
    }
    if (target != selection)
        SelectByHand(target);
    return true;
}

bool ListBox::Typed(char32_t character)
{
    const std::u16string letter(1, static_cast<char16_t>(character));
    const int found = items.FindPrefix(selection, letter);
    if (found != selection)
        SelectByHand(found);
    return true;
}

void ListBox::FocusChanged(bool)
{
    if (IsOwnerDrawn())
        DrawNow(selection, ODA_FOCUS);
    else
        Invalidate();
}

void ListBox::DrawItem(HDC hdc, int index, UINT action)
{
    const bool chosen = index == selection;
    const UINT state = (chosen ? ODS_SELECTED : 0) | (chosen && HasFocus() ? ODS_FOCUS : 0);
    DrawListItem(*this, items, hdc, ODT_LISTBOX, IsOwnerDrawn(),
                 {index, action, state, ItemRect(index)});
}

void ListBox::DrawNow(int index, UINT action)
{
    if (index < Uppermost() || index >= ItemsEnd() || !IsShown())
        return;
    HDC hdc = WindowDc(*this, Shrunk(Client(), 1));
    SetBkColor(hdc, AskColors(*this, hdc, WM_CTLCOLORLISTBOX));
    DrawItem(hdc, index, action);
    FreeDc(hdc);
}

void ListBox::Paint(HDC hdc)
{
    const COLORREF back = AskColors(*this, hdc, WM_CTLCOLORLISTBOX);
    SetBkColor(hdc, back);
    Fill(hdc, Client(), back);
    Outline(hdc, Client(), DARK);
    for (int i = Uppermost(); i < ItemsEnd(); ++i)
        DrawItem(hdc, i, ODA_DRAWENTIRE);
    PaintBar(hdc);
}

} // namespace kvp
