// The three pages in fifteen languages: whole, alike, and with room for every text.
#include "tests/resources/pages.h"

#include <map>
#include <set>

#include "platform/gdi/gdi.h"

namespace
{

TEST(Pages, EveryLanguageHasItsOwn)
{
    for (const int page : aPages) {
        std::set<const void *> places;
        for (const LANGID language : aLanguages)
            places.insert(PlaceOf(page, language));
        EXPECT_EQ(places.size(), std::size(aLanguages)) << page;
        EXPECT_FALSE(places.contains(nullptr)) << page;
    }
}

bool IsGerman(LANGID language)
{
    return (language & 0x3FF) == 0x07;
}

// The one control whose size is a language's own.
bool IsCurrentLabel(int page, const Item &item)
{
    return page == IDD_MAIN && item.id == IDC_MAIN_CURRENT_LABEL;
}

TEST(Pages, LanguagesDifferInTextsOnly)
{
    ForEachPage([](const Page &shape, int page, LANGID language) {
        const Page english = PageIn(page, ENGLISH);
        EXPECT_EQ(shape.style, english.style);
        EXPECT_EQ(shape.cx, 240);
        EXPECT_EQ(shape.cy, 215);
        ASSERT_EQ(shape.items.size(), english.items.size());
        for (size_t i = 0; i < shape.items.size(); ++i) {
            const Item &item = shape.items[i], &other = english.items[i];
            SCOPED_TRACE(Name(item));
            EXPECT_EQ(item.id, other.id);
            EXPECT_EQ(item.className, other.className);
            EXPECT_EQ(item.style, other.style);
            EXPECT_EQ(item.x, other.x);
            EXPECT_EQ(item.y, other.y);
            EXPECT_EQ(item.cy, other.cy);
            EXPECT_EQ(item.text.empty(), other.text.empty());
            EXPECT_EQ(LetterOf(item) != 0, LetterOf(other) != 0);
            if (IsCurrentLabel(page, item))
                EXPECT_EQ(item.cx, IsGerman(language) ? 75 : 65);
            else
                EXPECT_EQ(item.cx, other.cx);
        }
    });
}

TEST(Pages, EnglishAloneIsInEnglish)
{
    ForEachPage([](const Page &shape, int page, LANGID language) {
        EXPECT_FALSE(shape.caption.empty());
        if (language == ENGLISH)
            return;
        const Page english = PageIn(page, ENGLISH);
        size_t same = 0, texts = 0;
        for (size_t i = 0; i < shape.items.size(); ++i) {
            texts += !shape.items[i].text.empty();
            same += !shape.items[i].text.empty() && shape.items[i].text == english.items[i].text;
        }
        // "Mode", "Orientation" and the letters of utilities are the same in some.
        EXPECT_NE(shape.caption, english.caption);
        EXPECT_LE(3 * same, texts);
    });
}

// Pixels that a control needs beside its text, across; -1: the text is broken into lines.
int PixelsBeside(const Item &item)
{
    constexpr int BROKEN = -1;
    if (item.className == u"static")
        return BROKEN;
    if (IsGroupBox(item))
        return 14;
    return IsRadio(item) ? 19 : 8;
}

TEST(Pages, NoTextIsLargerThanItsControl)
{
    ForEachPage([](const Page &shape, int, LANGID) {
        for (const Item &item : shape.items) {
            SCOPED_TRACE(Name(item));
            const RECT room = kvp::PixelsOf(0, 0, item.cx, item.cy);
            const int beside = PixelsBeside(item);
            const POINT size =
                kvp::TextSize(item.text, kvp::TEXT_PREFIX, beside < 0 ? room.right : 0);
            if (beside < 0)
                EXPECT_LE(size.y, item.text.empty() ? size.y : room.bottom);
            else
                EXPECT_LE(size.x, item.text.empty() ? size.x : room.right - beside);
        }
    });
}

// Each letter once on a page. The paper source's label is the model's, which has English texts for
// all of these languages: its letter is kept free.
TEST(Pages, LettersAreUniqueOnTheirPage)
{
    ForEachPage([](const Page &shape, int page, LANGID) {
        std::map<char16_t, std::string> taken;
        if (page == IDD_PAPER)
            taken[u'O'] = "the model's label of the paper source";
        for (const Item &item : shape.items)
            if (const char16_t letter = LetterOf(item)) {
                EXPECT_FALSE(taken.contains(letter)) << Name(item) << " and " << taken[letter];
                taken[letter] = Name(item);
            }
    });
}

TEST(Pages, ALabelWithALetterStandsBeforeWhatItNames)
{
    ForEachPage([](const Page &shape, int, LANGID) {
        for (size_t i = 0; i < shape.items.size(); ++i) {
            const Item &item = shape.items[i];
            if (item.className != u"static" || !LetterOf(item))
                continue;
            ASSERT_LT(i + 1, shape.items.size());
            EXPECT_TRUE(shape.items[i + 1].style & WS_TABSTOP) << Name(item);
        }
    });
}

TEST(Pages, UtilitiesTellTheirLetterInTheTitle)
{
    static constexpr struct {
        int title, button;
    } aUtilities[] = {{IDC_UTILITY_NOZZLE_TITLE, IDC_UTILITY_NOZZLE},
                      {IDC_UTILITY_CLEANING_TITLE, IDC_UTILITY_CLEANING},
                      {IDC_UTILITY_ALIGNMENT_TITLE, IDC_UTILITY_ALIGNMENT}};
    for (const LANGID language : aLanguages) {
        const Page page = PageIn(IDD_UTILITY, language);
        for (const auto &utility : aUtilities) {
            const std::u16string letter(1, LetterOf(ItemOf(page, utility.button)));
            EXPECT_TRUE(ItemOf(page, utility.title).text.ends_with(u"(" + letter + u")"))
                << Name(ItemOf(page, utility.title));
        }
    }
}

// Each group of radio buttons, as the group marks divide them.
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

TEST(Pages, PairsOfRadioButtonsDontClearEachOther)
{
    using Groups = std::vector<std::set<int>>;
    EXPECT_EQ(RadioGroups(PageIn(IDD_MAIN, ENGLISH)),
              (Groups{{IDC_MAIN_AUTOMATIC, IDC_MAIN_ADVANCED}, {IDC_MAIN_COLOR, IDC_MAIN_BLACK}}));
    EXPECT_EQ(RadioGroups(PageIn(IDD_PAPER, ENGLISH)),
              (Groups{{IDC_PAPER_PORTRAIT, IDC_PAPER_LANDSCAPE},
                      {IDC_PAPER_MAXIMUM, IDC_PAPER_CENTERED}}));
}

// The rectangle that a control takes when its list is closed.
RECT Taken(const Item &item)
{
    constexpr SHORT CLOSED_LIST = 14;
    return kvp::PixelsOf(item.x, item.y, item.cx,
                         item.className == u"combobox" ? CLOSED_LIST : item.cy);
}

bool MayLieOverOthers(int page, const Item &item)
{
    return IsGroupBox(item) || IsCurrentLabel(page, item);
}

TEST(Pages, ControlsLieOnThePageAndNotOnEachOther)
{
    ForEachPage([](const Page &shape, int page, LANGID) {
        for (const Item &item : shape.items) {
            SCOPED_TRACE(Name(item));
            EXPECT_GE(item.x, 0);
            EXPECT_GE(item.y, 0);
            EXPECT_LE(item.x + item.cx, shape.cx);
            EXPECT_LE(item.y + item.cy, shape.cy);
            for (const Item &other : shape.items) {
                if (&other >= &item || MayLieOverOthers(page, item) ||
                    MayLieOverOthers(page, other))
                    continue;
                EXPECT_TRUE(kvp::IsEmpty(kvp::Intersect(Taken(item), Taken(other))))
                    << "over " << Name(other);
            }
        }
    });
}

} // namespace
