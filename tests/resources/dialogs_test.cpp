// The dialogs that the samples' libraries bring, in both of their languages.
#include "resources/about_ids.h"
#include "resources/detail_ids.h"
#include "resources/save_ids.h"
#include "resources/size_ids.h"
#include "tests/resources/layout.h"

namespace
{

constexpr LANGID JAPANESE = 0x411;

// Runs a check on each dialog of each library, in English and in Japanese.
template <class Check>
void ForEachDialog(Check check)
{
    for (const char *library : {KV_SMALL_UI, KV_LARGE_UI})
        for (const int dialog : {IDD_SIZE, IDD_SAVE, IDD_ABOUT, IDD_DETAIL}) {
            SCOPED_TRACE(std::string(library) + ": " + std::to_string(dialog));
            ASSERT_NE(PlaceOf(dialog, ENGLISH, library), nullptr);
            ASSERT_NE(PlaceOf(dialog, ENGLISH, library), PlaceOf(dialog, JAPANESE, library));
            check(PageIn(dialog, ENGLISH, library), PageIn(dialog, JAPANESE, library));
        }
}

TEST(SampleDialogs, AreLaidOutOnceForBothLanguages)
{
    ForEachDialog([](const Page &english, const Page &japanese) {
        ExpectSameLayout(english, japanese);
        EXPECT_FALSE(english.caption.empty());
        EXPECT_NE(english.caption, japanese.caption);
    });
}

TEST(SampleDialogs, TextsLettersAndControlsHaveTheirRoom)
{
    ForEachDialog([](const Page &english, const Page &japanese) {
        for (const Page &dialog : {english, japanese}) {
            ExpectTextsFit(dialog);
            ExpectLettersUnique(dialog);
            ExpectLabelsStandBeforeFields(dialog);
            ExpectNothingCovered(dialog);
        }
    });
}

TEST(SampleDialogs, TheUnitsAreOnePairOfRadioButtons)
{
    EXPECT_EQ(RadioGroups(PageIn(IDD_SIZE, ENGLISH, KV_SMALL_UI)),
              (std::vector<std::set<int>>{{IDC_SIZE_MM, IDC_SIZE_INCH}}));
}

} // namespace
