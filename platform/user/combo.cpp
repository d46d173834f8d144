// The field of a drop-down list: its messages, its keys, and the notices in their order. Whoever is
// notified may empty and refill the list, so nothing known before a notice is used after it.
#include "platform/user/combo.h"
#include "platform/served.h"

#include <algorithm>

namespace kvp
{

static constexpr DWORD OWNER_DRAWN = 0x30; // fixed or variable height
static constexpr int BORDER = 4;           // above and below the item in the field
static constexpr int ARROW = 17;

static constexpr ListMessages aNumbers{.insert = CB_INSERTSTRING,
                                       .reset = CB_RESETCONTENT,
                                       .count = CB_GETCOUNT,
                                       .getSelection = CB_GETCURSEL,
                                       .setSelection = CB_SETCURSEL,
                                       .getText = CB_GETLBTEXT,
                                       .getData = CB_GETITEMDATA,
                                       .setData = CB_SETITEMDATA,
                                       .find = CB_FINDSTRING,
                                       .findWhole = CB_FINDSTRINGEXACT,
                                       .select = CB_SELECTSTRING};

// The template's height is that of field and open list together.
ComboBox::ComboBox(Window *comboParent, DWORD comboStyle, int comboId, const RECT &where)
    : Window(comboParent, comboStyle, comboId, where), itemHeight(LINE_HEIGHT)
{
    if (IsOwnerDrawn())
        itemHeight = MeasuredHeight(*this, ODT_COMBOBOX);
    rc.bottom = rc.top + itemHeight + 2 * BORDER;
    listHeight = std::max(Height(where) - Height(rc), itemHeight + 2);
}

ComboBox::~ComboBox()
{
    if (dropped)
        OpenPopup(nullptr);
}

bool ComboBox::IsOwnerDrawn() const
{
    return style & OWNER_DRAWN;
}

LRESULT ComboBox::Message(UINT msg, WPARAM wParam, LPARAM lParam)
{
    LRESULT result = 0;
    bool changed = false;
    if (msg == CB_GETDROPPEDSTATE)
        return dropped;
    if (!ListMessage(aNumbers, items, selection, msg, wParam, lParam, result, changed))
        return Window::Message(msg, wParam, lParam);
    if (changed) {
        text = items.Has(selection) ? items.At(selection).text : std::u16string();
        Invalidate();
        if (dropped) {
            highlighted = selection;
            list->Place();
        }
    }
    return result;
}

void ComboBox::Open()
{
    if (dropped)
        return;
    Notify(CBN_DROPDOWN);
    if (!IsShown() || !IsUsable())
        return;
    if (!list)
        list = std::make_unique<DropList>(*this);
    dropped = true;
    decided = false;
    selectionAtOpening = highlighted = selection;
    list->Place();
    list->Show(true);
    std::erase(TopLevels(), list.get());
    TopLevels().push_back(list.get());
    OpenPopup(list.get());
    Invalidate();
}

void ComboBox::Close()
{
    if (!dropped)
        return;
    dropped = false;
    list->visible = false;
    if (CaptureWindow() == list.get())
        Capture(nullptr); // a press in it has come to nothing
    OpenPopup(nullptr);
    Invalidate();
    Notify(CBN_CLOSEUP);
}

// Who hears of a choice may disable the list or open a window; it closes at once then, and the
// choice stays.
void ComboBox::CloseWithout()
{
    if (!dropped)
        return;
    if (!decided) {
        decided = true;
        Message(CB_SETCURSEL, static_cast<WPARAM>(selectionAtOpening), 0);
        Notify(CBN_SELENDCANCEL);
    }
    Close();
}

void ComboBox::Choose(int index)
{
    decided = true;
    Message(CB_SETCURSEL, static_cast<WPARAM>(index), 0);
    Notify(CBN_SELENDOK);
    Close();
    Notify(CBN_SELCHANGE);
}

// By keyboard while the list is closed.
void ComboBox::StepTo(int index)
{
    if (index == selection || !items.Has(index))
        return;
    Message(CB_SETCURSEL, static_cast<WPARAM>(index), 0);
    Notify(CBN_SELENDOK);
    Notify(CBN_SELCHANGE);
}

void ComboBox::Highlight(int index)
{
    if (!dropped || !items.Has(index) || index == highlighted)
        return;
    highlighted = index;
    list->ScrollTo(index);
    list->Invalidate();
}

int ComboBox::Target(const Key &key, int from) const
{
    const int last = items.Count() - 1, page = std::max(1, listHeight / itemHeight);
    switch (key.code) {
    case KeyCode::Up:
    case KeyCode::Left: return std::max(from - 1, 0);
    case KeyCode::Down:
    case KeyCode::Right: return std::min(from + 1, last);
    case KeyCode::PageUp: return std::max(from - page, 0);
    case KeyCode::PageDown: return std::min(from + page, last);
    case KeyCode::Home: return 0;
    case KeyCode::End: return last;
    default: return -1;
    }
}

bool ComboBox::OpenKey(const Key &key)
{
    switch (key.code) {
    case KeyCode::Enter:
        if (items.Has(highlighted))
            Choose(highlighted);
        else
            CloseWithout();
        return true;
    case KeyCode::Escape: CloseWithout(); return true;
    case KeyCode::Tab: CloseWithout(); return false;
    default: return false;
    }
}

bool ComboBox::KeyDown(const Key &key)
{
    const bool vertical = key.code == KeyCode::Up || key.code == KeyCode::Down;
    if (key.code == KeyCode::F4 || (key.alt && vertical)) {
        if (dropped)
            CloseWithout();
        else
            Open();
        return true;
    }
    if (dropped && OpenKey(key))
        return true;
    const int target = Target(key, dropped ? highlighted : selection);
    if (target < 0)
        return false;
    if (dropped)
        Highlight(target);
    else
        StepTo(target);
    return true;
}

// A letter goes on to the next item that begins with it.
bool ComboBox::Typed(char32_t character)
{
    const std::u16string letter(1, static_cast<char16_t>(character));
    const int found = items.FindPrefix(dropped ? highlighted : selection, letter);
    if (dropped)
        Highlight(found);
    else
        StepTo(found);
    return true;
}

void ComboBox::MouseDown(POINT)
{
    Open();
}

void ComboBox::FocusChanged(bool has)
{
    if (!has)
        CloseWithout();
    Invalidate();
}

void ComboBox::EnabledChanged()
{
    if (!enabled)
        CloseWithout();
    Invalidate();
}

static void PaintArrow(HDC hdc, const RECT &rc, COLORREF color)
{
    Fill(hdc, rc, FACE);
    Bevel(hdc, rc, LIGHT, SHADOW);
    const int x = (rc.left + rc.right) / 2, y = (rc.top + rc.bottom) / 2;
    for (int i = 0; i < 4; ++i)
        Fill(hdc, {x - 4 + i, y - 2 + i, x + 3 - i, y - 1 + i}, color);
}

void ComboBox::Paint(HDC hdc)
{
    const RECT whole = Client();
    const COLORREF back = AskColors(*this, hdc, WM_CTLCOLORLISTBOX);
    SetBkColor(hdc, back);
    Fill(hdc, whole, back);
    Outline(hdc, whole, DARK);
    PaintArrow(hdc, {whole.right - ARROW, 1, whole.right - 1, whole.bottom - 1},
               enabled ? DARK : SHADOW);
    Fill(hdc, {whole.right - ARROW - 1, 0, whole.right - ARROW, whole.bottom}, DARK);
    const bool lit = HasFocus() && !dropped;
    const ItemLook look{selection,
                        ODA_DRAWENTIRE,
                        ODS_COMBOBOXEDIT | (lit ? ODS_SELECTED | ODS_FOCUS : 0),
                        {1, 2, whole.right - ARROW - 2, whole.bottom - 2}};
    DrawListItem(*this, items, hdc, ODT_COMBOBOX, IsOwnerDrawn(), look);
}

} // namespace kvp
