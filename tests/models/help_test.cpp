// The samples' help files as a page's help uses them: asked through the help engine for every
// control that has help.
#include "dialogs/helpers.h"
#include "tests/models/delivered.h"
#include "tests/support/driver.h"

class SampleHelp : public DeliveredTest
{
};

static constexpr struct {
    const char *name;
    const HELPID *lpTable;
} aTables[] = {
    {"Main", BasicDlgHelpIDs},
    {"Paper", aPaperDlgHelpIDs},
    {"Utility", UtyDlgHelpIDs},
    {"More Settings", DetailDlgHelpIDs},
};

TEST_F(SampleHelp, EveryControlWithHelpHasATopic)
{
    for (const char *model : aModels) {
        const OpenQueue queue(std::string("Queue of ") + model, model);
        char szPath[MAX_PATH];
        GetHelpPathEx(szPath, kvp::ToWide(model).c_str(), queue.hPrinter);
        for (const auto &table : aTables) {
            for (const HELPID *lpId = table.lpTable; lpId->dwControl; ++lpId) {
                SCOPED_TRACE(std::string(model) + ", " + table.name + ", control " +
                             std::to_string(lpId->dwControl));
                EXPECT_TRUE(WinHelpA(nullptr, szPath, HELP_CONTEXT, lpId->dwContext));
                EXPECT_EQ(GetDlgCtrlID(kvp::TopWindow()), static_cast<int>(lpId->dwContext));
            }
        }
    }
    EXPECT_EQ(BoxesShown(), std::vector<std::string>()) << "a file or topic that is missing";
}
