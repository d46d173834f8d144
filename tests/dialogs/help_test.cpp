// Which topic of the model's help file comes up for what.
#include "resources/main_ids.h"
#include "resources/paper_ids.h"
#include "resources/utility_ids.h"
#include "tests/dialogs/dialogs_fixture.h"

namespace
{

using ::testing::ElementsAre;
using ::testing::HasSubstr;

using Help = DialogsTest;

TEST_F(Help, ComesForThePageForTheFocusAndForWhatIsPointedAt)
{
    Start();
    InstallLibrary(KV_TEST_UTILITY, UTILITY);
    std::string strText;
    for (int context = HELP_MAIN; context < HELP_UTILITY + 256; ++context)
        strText += "# " + std::to_string(context) + " Title\nText.\n\n";
    kvp::PutMemoryFile(std::string(DRIVER_DIR) + "KVHELP.HLP",
                       Bytes(strText.begin(), strText.end()));
    const struct {
        const char *page, *first, *action;
        int topic;
    } aRows[] = {
        {"Main", "", "help", HELP_MAIN},
        {"Main", "focus 5041", "key F1", HELP_MAIN_AUTOMATIC},
        {"Main", "", "rightclick 5079", HELP_MAIN_MEDIA},
        {"Paper", "", "help", HELP_PAPER},
        {"Paper", "focus 5160", "key F1", HELP_PAPER_COPIES},
        {"Paper", "", "rightclick 5040", HELP_PAPER_SIZE},
        {"Utility", "", "help", HELP_UTILITY},
        {"Utility", "focus 2018", "key F1", HELP_UTILITY_CLEANING},
        {"Utility", "", "rightclick 5172", HELP_UTILITY_CLEANING},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(std::string(row.page) + " " + row.action);
        // The help window is named by its topic's number.
        const auto look = [&] { EXPECT_EQ(GetDlgCtrlID(kvp::TopWindow()), row.topic); };
        EXPECT_EQ(Show({"page \"" + std::string(row.page) + "\"", row.first, row.action, look, "ok",
                        "ok"}),
                  1);
    }
}

TEST_F(Help, AMissingFileIsNamed)
{
    Start();
    EXPECT_EQ(Show({"help", "page \"Utility\"", "help", "ok"}), 1);
    EXPECT_THAT(BoxesShown(), ElementsAre(HasSubstr(std::string(DRIVER_DIR) + "KVHELP.HLP"),
                                          HasSubstr("KVHELP.HLP")));
}

} // namespace
