// The sheet inside the test, on a record of the test's own: its blocks and tables can be looked at
// while it is open. For tests that are linked with the driver's inner functions.
#ifndef KV_TESTS_DIALOGS_SHEET_FIXTURE_H
#define KV_TESTS_DIALOGS_SHEET_FIXTURE_H

#include "datafile/instance.h"
#include "tests/dialogs/dialogs_fixture.h"

class SheetTest : public DialogsTest
{
  protected:
    // The model's files and UI library are installed; whoever changes the model installs anew.
    SheetTest();
    ~SheetTest() override;
    LONG Enter(std::vector<Person::Step> steps);

    WCHAR wszName[32] = u"";
    DriverDevMode dm{}; // of the model KORVA A, in portrait, else empty
    CBSTRUC block{};
};

#endif
