#include "tests/resources/layout.h"

#include <algorithm>
#include <map>
#include <tuple>

#include "platform/gdi/gdi.h"

static void ExpectSameItem(const Item &a, const Item &b, bool bOwnWidth)
{
    const auto shapeOf = [](const Item &item) {
        return std::tuple(item.id, item.className, item.style, item.number, item.x, item.y,
                          item.cy);
    };
    EXPECT_EQ(shapeOf(a), shapeOf(b));
    EXPECT_TRUE(bOwnWidth || a.cx == b.cx);
    EXPECT_EQ(a.text.empty(), b.text.empty());
    EXPECT_EQ(LetterOf(a) != 0, LetterOf(b) != 0);
}

void ExpectSameLayout(const Page &shape, const Page &other, int idOwnWidth)
{
    EXPECT_EQ(shape.style, other.style);
    EXPECT_EQ(shape.cx, other.cx);
    EXPECT_EQ(shape.cy, other.cy);
    ASSERT_EQ(shape.items.size(), other.items.size());
    for (size_t i = 0; i < shape.items.size(); ++i) {
        SCOPED_TRACE(Name(shape.items[i]));
        ExpectSameItem(shape.items[i], other.items[i], shape.items[i].id == idOwnWidth);
    }
}

// Pixels that a control needs beside its text, across; -1: the text is broken into lines.
static int PixelsBeside(const Item &item)
{
    constexpr int BROKEN = -1;
    if (item.className == u"static")
        return BROKEN;
    if (IsGroupBox(item))
        return 14;
    return IsRadio(item) ? 19 : 8;
}

void ExpectTextsFit(const Page &shape)
{
    for (const Item &item : shape.items) {
        SCOPED_TRACE(Name(item));
        if (item.text.empty())
            continue;
        const RECT room = kvp::PixelsOf(0, 0, item.cx, item.cy);
        const int beside = PixelsBeside(item);
        const POINT size = kvp::TextSize(item.text, kvp::TEXT_PREFIX, beside < 0 ? room.right : 0);
        EXPECT_LE(size.x, room.right - std::max(beside, 0));
        EXPECT_TRUE(beside >= 0 || size.y <= room.bottom);
    }
}

void ExpectLettersUnique(const Page &shape, char16_t taken)
{
    std::map<char16_t, std::string> owners;
    if (taken)
        owners[taken] = "another";
    for (const Item &item : shape.items)
        if (const char16_t letter = LetterOf(item)) {
            EXPECT_FALSE(owners.contains(letter)) << Name(item) << " and " << owners[letter];
            owners[letter] = Name(item);
        }
}

void ExpectLabelsStandBeforeFields(const Page &shape)
{
    for (size_t i = 0; i < shape.items.size(); ++i) {
        const Item &item = shape.items[i];
        if (item.className != u"static" || !LetterOf(item))
            continue;
        // Pictures that take no focus may stand in between.
        size_t next = i + 1;
        while (next < shape.items.size() && shape.items[next].style & WS_DISABLED)
            ++next;
        ASSERT_LT(next, shape.items.size());
        EXPECT_TRUE(shape.items[next].style & WS_TABSTOP) << Name(item);
    }
}

// What a control takes in dialog units: of a drop-down list, what is seen while it is closed.
static RECT Taken(const Item &item)
{
    constexpr SHORT CLOSED_LIST = 14;
    const SHORT cy = item.className == u"combobox" ? CLOSED_LIST : item.cy;
    return {item.x, item.y, item.x + item.cx, item.y + cy};
}

void ExpectNothingCovered(const Page &shape, int idOnTop)
{
    const auto mayCover = [=](const Item &item) {
        return IsGroupBox(item) || (idOnTop && item.id == idOnTop);
    };
    for (const Item &item : shape.items) {
        SCOPED_TRACE(Name(item));
        EXPECT_GE(item.x, 0);
        EXPECT_GE(item.y, 0);
        EXPECT_LE(Taken(item).right, shape.cx);
        EXPECT_LE(Taken(item).bottom, shape.cy);
        for (const Item &other : shape.items) {
            if (&other >= &item || mayCover(item) || mayCover(other))
                continue;
            EXPECT_TRUE(kvp::IsEmpty(kvp::Intersect(Taken(item), Taken(other))))
                << "over " << Name(other);
        }
    }
}

std::vector<std::set<int>> RadioGroups(const Page &page)
{
    std::vector<std::set<int>> groups(1);
    for (const Item &item : page.items) {
        if (item.style & WS_GROUP)
            groups.emplace_back();
        if (IsRadio(item))
            groups.back().insert(item.id);
    }
    std::erase(groups, std::set<int>{});
    return groups;
}
