// Process attach: when the driver lets itself be loaded, and what it says when it does not.
#include <gmock/gmock.h>

#include "tests/interface/fixture.h"

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class StartUp : public InterfaceTest
{
  protected:
    void SetVersion(DWORD dwMajor, DWORD dwMinor)
    {
        machine.dwMajor = dwMajor;
        machine.dwMinor = dwMinor;
        Apply();
    }
};

const char *const VERSION_MESSAGE =
    "KORVA: This printer driver is only for Windows NT(R) Version 3.51.\n"
    "The driver cannot run on the currently installed\n"
    "Windows NT(R) version.\n";

TEST_F(StartUp, OnlyVersion351IsServed)
{
    const struct {
        const char *why;
        DWORD dwMajor, dwMinor;
        bool served;
    } aRows[] = {
        {"this one", 3, 51, true},
        {"the one before", 3, 50, false},
        {"the next", 4, 0, false},
        {"the right minor, another major", 4, 51, false},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        SetVersion(row.dwMajor, row.dwMinor);
        EXPECT_EQ(driver.Load(), row.served);
        driver.Free();
        if (row.served)
            EXPECT_THAT(BoxesShown(), IsEmpty());
        else
            EXPECT_THAT(BoxesShown(), ElementsAre(VERSION_MESSAGE));
    }
}

TEST_F(StartUp, WithoutAModelTableTheDriverIsRefused)
{
    const std::string strTable = std::string(SYSTEM_DIR) + "kv_model.dat";
    kvp::PutMemoryFile(strTable, {});
    EXPECT_FALSE(driver.Load());
    EXPECT_THAT(BoxesShown(), ElementsAre(INSTALL_MESSAGE));
    kvp::PutAbsentFile(strTable);
    EXPECT_FALSE(driver.Load());
    ASSERT_EQ(aBoxes.size(), 1u);
    EXPECT_EQ(aBoxes[0].uType, MB_ICONINFORMATION);
    EXPECT_FALSE(aBoxes[0].bOwned);
    aBoxes.clear();
    SetVersion(4, 0);
    EXPECT_FALSE(driver.Load());
    EXPECT_THAT(BoxesShown(), ElementsAre(VERSION_MESSAGE, INSTALL_MESSAGE)) << "told of both";
}

// Users of the fifteen languages read their own; others read English.
TEST_F(StartUp, MessagesAreInTheUsersLanguage)
{
    SetVersion(4, 0);
    kvp::PutAbsentFile(std::string(SYSTEM_DIR) + "kv_model.dat");
    for (const LANGID wLang : {1031, 1034, 1036, 1040, 1046, 2055, 2058, 2060, 2064, 2070, 3079,
                               3082, 3084, 4108, 1033, 2057, 1049}) {
        SCOPED_TRACE(wLang);
        machine.wLang = wLang;
        Apply();
        EXPECT_FALSE(driver.Load());
        ASSERT_EQ(aBoxes.size(), 2u);
        const std::vector<std::string> boxes = BoxesShown();
        const bool bEnglish = wLang == 1033 || wLang == 2057 || wLang == 1049;
        EXPECT_EQ(boxes[0] == VERSION_MESSAGE, bEnglish);
        EXPECT_EQ(boxes[1] == INSTALL_MESSAGE, bEnglish);
        EXPECT_GT(boxes[0].size(), 60u);
        EXPECT_GT(boxes[1].size(), 100u);
        EXPECT_EQ(boxes[1].back(), '\n');
    }
}

// Only the attachment of a process reads the table, only its detachment drops it.
TEST_F(StartUp, ThreadsComeAndGoUnnoticed)
{
    Start();
    const auto dllInitialize =
        reinterpret_cast<decltype(&DllInitialize)>(kvp::FindProc(driver.hModule, "DllInitialize"));
    ASSERT_TRUE(dllInitialize);
    kvp::PutAbsentFile(std::string(SYSTEM_DIR) + "kv_model.dat");
    for (const DWORD dwReason : {2u, 3u}) {
        EXPECT_TRUE(dllInitialize(driver.hModule, dwReason, nullptr));
        EXPECT_EQ(driver.DrvDeviceCapabilities(hPrinter, nullptr, DC_BINS, nullptr, nullptr), 2u);
    }
    EXPECT_THAT(BoxesShown(), IsEmpty());
}

TEST_F(StartUp, LoadingAgainReadsTheTableAnew)
{
    Start();
    driver.Free();
    InstallModelTable({{9, {MakeModelRecord("KORVA A", "MOVED")}}});
    ASSERT_TRUE(driver.Load());
    EXPECT_EQ(driver.DrvDeviceCapabilities(hPrinter, nullptr, DC_BINS, nullptr, nullptr),
              0xFFFFFFFFu);
    EXPECT_THAT(BoxesShown(), ElementsAre(INSTALL_MESSAGE));
    model.Install("MOVED");
    EXPECT_EQ(driver.DrvDeviceCapabilities(hPrinter, nullptr, DC_BINS, nullptr, nullptr), 2u);
}

} // namespace
