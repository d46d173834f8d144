// The interface as a C program gets it: from the library that a loader loaded.
#include "tests/api/c_caller.h"

#include "tests/support/driver.h"
#include "tests/support/model_builder.h"

TEST_F(MachineTest, ACProgramUsesTheLoadedDriver)
{
    Model().Install("KV1");
    InstallModelTable({{9, {MakeModelRecord("KORVA One", "KV1")}}});
    LoadedDriver driver;
    ASSERT_TRUE(driver.Load());
    const Functions functions = {driver.KVDD_GetOrgDevMode, driver.KVDD_GetDrivInfo,
                                 driver.KVDD_GetCmdLevel,   driver.KVDD_GetRange,
                                 driver.KVDD_GetData,       driver.KVDD_SetData};
    EXPECT_EQ(SetAndReadBack(&functions, u"KORVA One"), 0);
    EXPECT_EQ(SetAndReadBack(&functions, u"No such model"), 0); // answers from the first one
    EXPECT_TRUE(BoxesShown().empty());
}
