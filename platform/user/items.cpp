// Items, their searches, the messages about them, and how one is drawn.
#include "platform/user/items.h"

#include <algorithm>

#include "platform/kernel/internal.h"
#include "platform/kernel/names.h"
#include "platform/win32.h"

namespace kvp
{

static bool SameLetter(char16_t a, char16_t b)
{
    return a == b || LowerCase(a) == LowerCase(b);
}

static bool BeginsWith(std::u16string_view text, std::u16string_view with)
{
    return text.size() >= with.size() &&
           std::equal(with.begin(), with.end(), text.begin(), SameLetter);
}

int Items::Insert(int index, std::u16string text)
{
    if (index == -1)
        index = Count();
    if (index < 0 || index > Count())
        return -1;
    items.insert(items.begin() + index, {std::move(text), 0});
    return index;
}

int Items::FindPrefix(int after, std::u16string_view text) const
{
    const int start = Has(after) ? after : -1;
    for (int i = 1; i <= Count(); ++i) {
        const int index = (start + i) % Count();
        if (BeginsWith(At(index).text, text))
            return index;
    }
    return -1;
}

int Items::FindWhole(int after, std::u16string_view text) const
{
    const int start = Has(after) ? after : -1;
    for (int i = 1; i <= Count(); ++i) {
        const int index = (start + i) % Count();
        if (At(index).text.size() == text.size() && BeginsWith(At(index).text, text))
            return index;
    }
    return -1;
}

static std::u16string TextIn(LPARAM lParam)
{
    return lParam ? AnsiToWide(reinterpret_cast<const char *>(lParam)) : std::u16string();
}

// The caller's buffer is as long as the text needs: that is this message's contract.
static LRESULT CopyText(const Items &items, int index, LPARAM lParam)
{
    if (!items.Has(index) || !lParam)
        return CB_ERR;
    const std::string ansi = WideToAnsi(items.At(index).text);
    std::copy_n(ansi.c_str(), ansi.size() + 1, reinterpret_cast<char *>(lParam));
    return static_cast<LRESULT>(ansi.size());
}

static LRESULT Select(const Items &items, int &selection, int index)
{
    selection = items.Has(index) ? index : -1;
    return selection;
}

bool ListMessage(const ListMessages &numbers, Items &items, int &selection, UINT msg, WPARAM wParam,
                 LPARAM lParam, LRESULT &result, bool &changed)
{
    const int index = static_cast<int>(wParam);
    changed = false;
    if (!msg)
        return false;
    if (msg == numbers.insert) {
        result = items.Insert(index, TextIn(lParam));
        if (result >= 0 && selection >= result)
            ++selection;
        changed = true;
    } else if (msg == numbers.reset) {
        items.Clear();
        selection = -1;
        result = 0;
        changed = true;
    } else if (msg == numbers.count) {
        result = items.Count();
    } else if (msg == numbers.getSelection) {
        result = selection;
    } else if (msg == numbers.setSelection) {
        result = Select(items, selection, index);
        changed = true;
    } else if (msg == numbers.getText) {
        result = CopyText(items, index, lParam);
    } else if (msg == numbers.getData) {
        result = items.Has(index) ? static_cast<LRESULT>(items.At(index).data) : CB_ERR;
    } else if (msg == numbers.setData) {
        result = items.Has(index) ? 0 : CB_ERR;
        if (items.Has(index))
            items.At(index).data = static_cast<ULONG_PTR>(lParam);
    } else if (msg == numbers.find) {
        result = items.FindPrefix(index, TextIn(lParam));
    } else if (msg == numbers.findWhole) {
        result = items.FindWhole(index, TextIn(lParam));
    } else if (msg == numbers.select) {
        result = items.FindPrefix(index, TextIn(lParam));
        if (result >= 0)
            Select(items, selection, static_cast<int>(result));
        changed = result >= 0;
    } else {
        return false;
    }
    return true;
}

int MeasuredHeight(Window &control, UINT type)
{
    MEASUREITEMSTRUCT measure{type, static_cast<UINT>(control.id), 0, 0, LINE_HEIGHT, 0};
    control.parent->Message(WM_MEASUREITEM, static_cast<WPARAM>(control.id),
                            reinterpret_cast<LPARAM>(&measure));
    return std::clamp(static_cast<int>(measure.itemHeight), 1, 255);
}

static void DrawPlainItem(const Window &control, const Items &items, HDC hdc, const ItemLook &look)
{
    const bool selected = look.state & ODS_SELECTED;
    Fill(hdc, look.rc, selected ? GetSysColor(COLOR_HIGHLIGHT) : DcOf(hdc)->bkColor);
    const COLORREF color = selected          ? GetSysColor(COLOR_HIGHLIGHTTEXT)
                           : control.enabled ? DcOf(hdc)->textColor
                                             : GetSysColor(COLOR_GRAYTEXT);
    if (items.Has(look.index))
        DrawTextIn(hdc, {look.rc.left + 2, look.rc.top, look.rc.right, look.rc.bottom},
                   items.At(look.index).text, TEXT_MIDDLE, color);
    if (look.state & ODS_FOCUS)
        FocusFrame(hdc, look.rc);
}

void DrawListItem(Window &control, const Items &items, HDC hdc, UINT type, bool ownerDrawn,
                  const ItemLook &look)
{
    if (!ownerDrawn) {
        DrawPlainItem(control, items, hdc, look);
        return;
    }
    const ULONG_PTR data = items.Has(look.index) ? items.At(look.index).data : 0;
    SendDrawItem(control,
                 {type, 0, static_cast<UINT>(look.index), look.action,
                  look.state | (control.enabled ? 0 : ODS_DISABLED), nullptr, hdc, look.rc, data});
}

} // namespace kvp
