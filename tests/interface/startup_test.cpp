// Process attach: when the driver lets itself be loaded, and what it says when it does not.
#include <gmock/gmock.h>

#include "tests/interface/fixture.h"

namespace
{

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;

constexpr const char *TABLE = "C:\\winnt35\\system32\\kv_model.dat";
const char *const VERSION_MESSAGE =
    "KORVA: This printer driver is only for Windows NT(R) Version 3.51.\n"
    "The driver cannot run on the currently installed\n"
    "Windows NT(R) version.\n";
const char *const UNREAD_MESSAGE = "KORVA: Can't read OS Version Info";

class StartUp : public InterfaceTest
{
  protected:
    DWORD CountBins()
    {
        return driver.DrvDeviceCapabilities(hPrinter, nullptr, DC_BINS, nullptr, nullptr);
    }
};

TEST_F(StartUp, OnlyVersion351WithAModelTableIsServed)
{
    enum Table { PRESENT, EMPTY, ABSENT };
    const struct {
        const char *why;
        DWORD dwMajor, dwMinor;
        bool told; // whether the system tells its version
        Table table;
        std::vector<std::string> boxes; // none: it is loaded
    } aRows[] = {
        {"this one", 3, 51, true, PRESENT, {}},
        {"the one before", 3, 50, true, PRESENT, {VERSION_MESSAGE}},
        {"the right minor, another major", 4, 51, true, PRESENT, {VERSION_MESSAGE}},
        {"one that is not told", 3, 51, false, PRESENT, {UNREAD_MESSAGE}},
        {"no table", 3, 51, true, ABSENT, {INSTALL_MESSAGE}},
        {"an empty table", 3, 51, true, EMPTY, {INSTALL_MESSAGE}},
        {"told of both", 4, 0, true, ABSENT, {VERSION_MESSAGE, INSTALL_MESSAGE}},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        machine.dwMajor = row.dwMajor;
        machine.dwMinor = row.dwMinor;
        Apply();
        InstallModelTable({{9, {MakeModelRecord("KORVA A", "KVA")}}});
        if (row.table == EMPTY)
            kvp::PutMemoryFile(TABLE, {});
        if (row.table == ABSENT)
            kvp::PutAbsentFile(TABLE);
        kvp::FailCall(kvp::Call::SystemVersion, row.told ? -1 : 0);
        EXPECT_EQ(driver.Load(), row.boxes.empty());
        driver.Free();
        for (const kvp::Box &box : aBoxes)
            EXPECT_TRUE(box.uType == MB_ICONINFORMATION && !box.bOwned);
        EXPECT_THAT(BoxesShown(), ElementsAreArray(row.boxes));
    }
}

// Users of the fifteen languages read their own; others read English.
TEST_F(StartUp, MessagesAreInTheUsersLanguage)
{
    machine.dwMajor = 4;
    kvp::PutAbsentFile(TABLE);
    for (const LANGID wLang : {1031, 1034, 1036, 1040, 1046, 2055, 2058, 2060, 2064, 2070, 3079,
                               3082, 3084, 4108, 1033, 2057, 1049}) {
        SCOPED_TRACE(wLang);
        machine.wLang = wLang;
        Apply();
        EXPECT_FALSE(driver.Load());
        const std::vector<std::string> boxes = BoxesShown();
        ASSERT_TRUE(boxes.size() == 2 && boxes[0].size() > 60 && boxes[1].size() > 100);
        const bool bEnglish = wLang == 1033 || wLang == 2057 || wLang == 1049;
        EXPECT_EQ(boxes[0] == VERSION_MESSAGE, bEnglish);
        EXPECT_EQ(boxes[1] == INSTALL_MESSAGE, bEnglish);
    }
}

// Only the attachment of a process reads the table, only its detachment drops it.
TEST_F(StartUp, TheTableIsThatOfTheLoading)
{
    Start();
    InstallModelTable({{9, {MakeModelRecord("KORVA A", "MOVED")}}});
    const auto dllInitialize =
        reinterpret_cast<decltype(&DllInitialize)>(kvp::FindProc(driver.hModule, "DllInitialize"));
    for (const DWORD dwReason : {2u, 3u}) {
        EXPECT_TRUE(dllInitialize(driver.hModule, dwReason, nullptr));
        EXPECT_EQ(CountBins(), 2u);
    }
    EXPECT_THAT(BoxesShown(), IsEmpty());
    ASSERT_TRUE(driver.Load());
    EXPECT_EQ(CountBins(), 0xFFFFFFFFu);
    EXPECT_THAT(BoxesShown(), ElementsAre(INSTALL_MESSAGE));
    model.Install("MOVED");
    EXPECT_EQ(CountBins(), 2u);
}

} // namespace
