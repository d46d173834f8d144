// The three pages in fifteen languages: whole, alike, and with room for every text.
#include "tests/resources/pages.h"

#include <set>

#include "tests/resources/layout.h"

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

TEST(Pages, LanguagesDifferInTextsOnly)
{
    ForEachPage([](const Page &shape, int page, LANGID language) {
        const Page english = PageIn(page, ENGLISH);
        EXPECT_EQ(shape.cx, 240);
        EXPECT_EQ(shape.cy, 215);
        const int own = page == IDD_MAIN ? IDC_MAIN_CURRENT_LABEL : 0; // as wide as its text
        ExpectSameLayout(shape, english, own);
        EXPECT_TRUE(!own || ItemOf(shape, own).cx == (IsGerman(language) ? 75 : 65));
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

TEST(Pages, PairsOfRadioButtonsDontClearEachOther)
{
    using Groups = std::vector<std::set<int>>;
    EXPECT_EQ(RadioGroups(PageIn(IDD_MAIN, ENGLISH)),
              (Groups{{IDC_MAIN_AUTOMATIC, IDC_MAIN_ADVANCED}, {IDC_MAIN_COLOR, IDC_MAIN_BLACK}}));
    EXPECT_EQ(RadioGroups(PageIn(IDD_PAPER, ENGLISH)),
              (Groups{{IDC_PAPER_PORTRAIT, IDC_PAPER_LANDSCAPE},
                      {IDC_PAPER_MAXIMUM, IDC_PAPER_CENTERED}}));
}

TEST(Pages, TextsLettersAndControlsHaveTheirRoom)
{
    ForEachPage([](const Page &shape, int page, LANGID) {
        ExpectTextsFit(shape);
        ExpectLabelsStandBeforeFields(shape);
        // The paper source's label is the model's, which has English texts for all of these
        // languages: its letter is kept free.
        ExpectLettersUnique(shape, page == IDD_PAPER ? u'O' : u'\0');
        // One label lies over the line of its group.
        ExpectNothingCovered(shape, page == IDD_MAIN ? IDC_MAIN_CURRENT_LABEL : 0);
    });
}

} // namespace
