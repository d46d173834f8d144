// The items of a list: texts with a value each, and the searches that combo and list boxes share.
#ifndef KV_PLATFORM_USER_ITEMS_H
#define KV_PLATFORM_USER_ITEMS_H

#include <string>
#include <string_view>
#include <vector>

#include "platform/user/window.h"

namespace kvp
{

struct Item {
    std::u16string text;
    ULONG_PTR data = 0;
};

class Items
{
  public:
    int Count() const { return static_cast<int>(items.size()); }
    bool Has(int index) const { return index >= 0 && index < Count(); }
    const Item &At(int index) const { return items[static_cast<size_t>(index)]; }
    Item &At(int index) { return items[static_cast<size_t>(index)]; }
    void Clear() { items.clear(); }
    // The position it came to; -1 appends, a position past the end fails with -1.
    int Insert(int index, std::u16string text);
    // The first item after `after` that begins with the text, or is it; case does not matter. The
    // search wraps; a start outside the list counts as -1. -1 when there is none.
    int FindPrefix(int after, std::u16string_view text) const;
    int FindWhole(int after, std::u16string_view text) const;

  private:
    std::vector<Item> items;
};

// The messages of combo boxes and list boxes mean the same under different numbers.
struct ListMessages {
    UINT insert, reset, count, getSelection, setSelection, getText, getData, setData;
    UINT find, findWhole, select; // 0: none
};
// Answers a message about items and selection. False: it is none of these. A changed list or
// selection is told through `changed`.
bool ListMessage(const ListMessages &numbers, Items &items, int &selection, UINT msg, WPARAM wParam,
                 LPARAM lParam, LRESULT &result, bool &changed);

// The height that the parent of an owner-drawn list wants its items to have, asked while the list
// is made.
int MeasuredHeight(Window &control, UINT type);
// One item into its rectangle, by the parent when the list is owner-drawn.
struct ItemLook {
    int index;
    UINT action, state;
    RECT rc;
};
void DrawListItem(Window &control, const Items &items, HDC hdc, UINT type, bool ownerDrawn,
                  const ItemLook &look);

} // namespace kvp

#endif
