// The three pages in fifteen languages, and the dialogs of the samples' libraries in both of
// theirs: whole, alike, and with room for every text, letter and control.
#include "tests/resources/pages.h"

#include <map>
#include <set>
#include <tuple>

#include "platform/gdi/gdi.h"
#include "resources/about_ids.h"
#include "resources/detail_ids.h"
#include "resources/save_ids.h"
#include "resources/size_ids.h"

namespace
{

// Runs a check on everything in every language that it has, with its English form; the trace of a
// failure names both.
template <class Check>
void ForEach(Check check)
{
    const auto run = [&](const char *library, int id, LANGID language) {
        SCOPED_TRACE(testing::Message() << library << ": " << id << " in " << language);
        check(PageIn(id, language, library), PageIn(id, ENGLISH, library), id, language);
    };
    for (const LANGID language : aLanguages)
        for (const int page : {IDD_MAIN, IDD_PAPER, IDD_UTILITY})
            run(KV_DRIVER_RESOURCES, page, language);
    for (const char *library : {KV_SMALL_UI, KV_LARGE_UI})
        for (const LANGID language : {ENGLISH, LANGID{0x411}})
            for (const int dialog : {IDD_SIZE, IDD_SAVE, IDD_ABOUT, IDD_DETAIL})
                run(library, dialog, language);
}

TEST(Pages, EveryLanguageHasItsOwn)
{
    std::set<const void *> places{nullptr};
    for (const LANGID language : aLanguages)
        for (const int page : {IDD_MAIN, IDD_PAPER, IDD_UTILITY})
            EXPECT_TRUE(places.insert(PlaceOf(page, language)).second) << page << ' ' << language;
}

bool IsGerman(LANGID language)
{
    return (language & 0x3FF) == 0x07;
}

TEST(Pages, LanguagesDifferInTextsOnly)
{
    ForEach([](const Page &shape, const Page &english, int page, LANGID language) {
        ASSERT_EQ(shape.items.size(), english.items.size());
        EXPECT_EQ(std::tuple(shape.style, shape.cx, shape.cy),
                  std::tuple(english.style, english.cx, english.cy));
        const auto shapeOf = [&](const Item &item) {
            const bool bOwnWidth = page == IDD_MAIN && item.id == IDC_MAIN_CURRENT_LABEL;
            return std::tuple(item.id, item.className, item.style, item.number, item.x, item.y,
                              bOwnWidth ? 0 : item.cx, item.cy, item.text.empty(),
                              LetterOf(item) != 0);
        };
        for (size_t i = 0; i < shape.items.size(); ++i)
            EXPECT_EQ(shapeOf(shape.items[i]), shapeOf(english.items[i])) << Name(shape.items[i]);
        if (page == IDD_MAIN) {
            EXPECT_EQ(ItemOf(shape, IDC_MAIN_CURRENT_LABEL).cx, IsGerman(language) ? 75 : 65);
        }
    });
}

TEST(Pages, EnglishAloneIsInEnglish)
{
    ForEach([](const Page &shape, const Page &english, int, LANGID language) {
        EXPECT_FALSE(shape.caption.empty());
        if (language == ENGLISH)
            return;
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

TEST(Pages, UtilitiesTellTheirLetterInTheTitle)
{
    for (const LANGID language : aLanguages) {
        const Page page = PageIn(IDD_UTILITY, language);
        for (const auto &[title, button] : {std::pair{IDC_UTILITY_NOZZLE_TITLE, IDC_UTILITY_NOZZLE},
                                            {IDC_UTILITY_CLEANING_TITLE, IDC_UTILITY_CLEANING},
                                            {IDC_UTILITY_ALIGNMENT_TITLE, IDC_UTILITY_ALIGNMENT}}) {
            const std::u16string letter(1, LetterOf(ItemOf(page, button)));
            EXPECT_TRUE(ItemOf(page, title).text.ends_with(u"(" + letter + u")"))
                << Name(ItemOf(page, title));
        }
    }
}

using Groups = std::vector<std::set<int>>;

// Each group of radio buttons, as the group marks divide them.
Groups RadioGroups(const Page &page)
{
    Groups groups(1);
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
    EXPECT_EQ(RadioGroups(PageIn(IDD_MAIN, ENGLISH)),
              (Groups{{IDC_MAIN_AUTOMATIC, IDC_MAIN_ADVANCED}, {IDC_MAIN_COLOR, IDC_MAIN_BLACK}}));
    EXPECT_EQ(RadioGroups(PageIn(IDD_PAPER, ENGLISH)),
              (Groups{{IDC_PAPER_PORTRAIT, IDC_PAPER_LANDSCAPE},
                      {IDC_PAPER_MAXIMUM, IDC_PAPER_CENTERED}}));
    EXPECT_EQ(RadioGroups(PageIn(IDD_SIZE, ENGLISH, KV_SMALL_UI)),
              (Groups{{IDC_SIZE_MM, IDC_SIZE_INCH}}));
}

// ---- room ---------------------------------------------------------------------------------------

// Pixels that a control needs beside its text, across; -1: the text is broken into lines.
int PixelsBeside(const Item &item)
{
    if (item.className == u"static")
        return -1;
    return IsGroupBox(item) ? 14 : IsRadio(item) ? 19 : 8;
}

TEST(Pages, TextsFitTheirControlsAsTheyAreDrawn)
{
    ForEach([](const Page &shape, const Page &, int, LANGID) {
        for (const Item &item : shape.items) {
            const RECT room = kvp::PixelsOf(0, 0, item.cx, item.cy);
            const int beside = PixelsBeside(item);
            const POINT size =
                kvp::TextSize(item.text, kvp::TEXT_PREFIX, beside < 0 ? room.right : 0);
            EXPECT_LE(size.x, room.right - std::max(beside, 0)) << Name(item);
            EXPECT_TRUE(beside >= 0 || item.text.empty() || size.y <= room.bottom) << Name(item);
        }
    });
}

TEST(Pages, ALetterIsOneControlsAndALabelsLeadsToItsField)
{
    ForEach([](const Page &shape, const Page &, int page, LANGID) {
        std::map<char16_t, std::string> owners;
        // The paper source's label is the model's, which has English texts for all of these
        // languages: its letter is kept free.
        if (page == IDD_PAPER)
            owners[u'O'] = "the source";
        for (size_t i = 0; i < shape.items.size(); ++i) {
            const Item &item = shape.items[i];
            const char16_t letter = LetterOf(item);
            if (!letter)
                continue;
            EXPECT_TRUE(owners.emplace(letter, Name(item)).second)
                << Name(item) << " and " << owners[letter];
            // Pictures that take no focus may stand in between.
            size_t next = i + 1;
            while (next < shape.items.size() && shape.items[next].style & WS_DISABLED)
                ++next;
            EXPECT_TRUE(item.className != u"static" ||
                        (next < shape.items.size() && shape.items[next].style & WS_TABSTOP))
                << Name(item);
        }
    });
}

// What a control takes in dialog units: of a drop-down list, what is seen while it is closed.
RECT Taken(const Item &item)
{
    constexpr SHORT CLOSED_LIST = 14;
    const SHORT cy = item.className == u"combobox" ? CLOSED_LIST : item.cy;
    return {item.x, item.y, item.x + item.cx, item.y + cy};
}

TEST(Pages, ControlsLieOnThePageAndNotOnEachOther)
{
    ForEach([](const Page &shape, const Page &, int page, LANGID) {
        const auto mayCover = [=](const Item &item) { // one label lies over its group's line
            return IsGroupBox(item) || (page == IDD_MAIN && item.id == IDC_MAIN_CURRENT_LABEL);
        };
        for (const Item &item : shape.items) {
            const RECT rc = Taken(item);
            EXPECT_TRUE(rc.left >= 0 && rc.top >= 0 && rc.right <= shape.cx &&
                        rc.bottom <= shape.cy)
                << Name(item);
            for (const Item &other : shape.items)
                EXPECT_TRUE(&other >= &item || mayCover(item) || mayCover(other) ||
                            kvp::IsEmpty(kvp::Intersect(rc, Taken(other))))
                    << Name(item) << " over " << Name(other);
        }
    });
}

} // namespace
