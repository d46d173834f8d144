// The driver's own texts: whole in every language, and read out of the driver itself.
#include <set>

#include <gmock/gmock.h>

#include "platform/resource/pe.h"
#include "resources/ids.h"
#include "tests/platform/resource_files.h"
#include "tests/support/driver.h"

namespace
{

using ::testing::ElementsAre;
using ::testing::StartsWith;

constexpr LANGID aLanguages[] = {1031, 1033, 1034, 1036, 1040, 1046, 2055, 2058,
                                 2060, 2064, 2070, 3079, 3082, 3084, 4108};
constexpr const char *RESOURCES = "C:\\kvui.dll";

class DriverTexts : public MachineTest
{
  protected:
    const std::vector<uint8_t> file = HostFile(KV_DRIVER_RESOURCES);
};

TEST_F(DriverTexts, EveryLanguageIsThereItself)
{
    kvp::PeFile pe;
    ASSERT_TRUE(kvp::OpenPe(file, pe));
    constexpr uint16_t STRINGS = 6;
    for (uint16_t block : {IDS_INSTALL_FIRST / 16 + 1, IDS_VERSION_FIRST / 16 + 1}) {
        std::set<const uint8_t *> found; // a language that stands in for another comes twice
        for (LANGID wLang : aLanguages)
            found.insert(kvp::FindInPe(pe, STRINGS, block, wLang).data());
        EXPECT_EQ(found.size(), std::size(aLanguages));
        EXPECT_FALSE(found.contains(nullptr));
    }
}

// Nothing is wrong with the text: it is there, a line, short enough for the buffer of its
// message, and all of it can be shown in western Europe.
::testing::AssertionResult IsALine(HMODULE module, UINT uId)
{
    constexpr size_t BUFFER = 256;
    const std::string text = StringOf(module, uId);
    WCHAR wide[BUFFER];
    const int length = LoadStringW(module, uId, wide, BUFFER);
    BOOL bReplaced = FALSE;
    WideCharToMultiByte(1252, 0, wide, length, nullptr, 0, nullptr, &bReplaced);
    if (text.empty() || text.find('\n') != text.size() - 1 || text.size() > BUFFER - 2)
        return ::testing::AssertionFailure() << "not a line: " << text;
    if (bReplaced)
        return ::testing::AssertionFailure() << "not in the code page: " << text;
    return ::testing::AssertionSuccess();
}

TEST_F(DriverTexts, EveryLanguageHasEveryText)
{
    kvp::PutMemoryFile(RESOURCES, file);
    HMODULE module = LoadLibraryA(RESOURCES);
    for (LANGID wLang : aLanguages) {
        SCOPED_TRACE(wLang);
        machine.wLang = wLang;
        Apply();
        for (UINT uId : {IDS_INSTALL_1, IDS_INSTALL_2, IDS_INSTALL_3, IDS_INSTALL_4, IDS_INSTALL_5,
                         IDS_VERSION_1, IDS_VERSION_2, IDS_VERSION_3})
            EXPECT_TRUE(IsALine(module, uId)) << uId;
        for (UINT uId : {6915, 6923, 6924, 6925})
            EXPECT_EQ(StringOf(module, uId), "") << uId;
    }
    FreeLibrary(module);
}

TEST_F(DriverTexts, TheDriverCarriesThem)
{
    machine.wLang = 0x0807; // no model table on this machine: the driver says so and refuses
    Apply();
    LoadedDriver driver;
    EXPECT_FALSE(driver.Load());
    EXPECT_THAT(BoxesShown(), ElementsAre(StartsWith("KORVA: Auf Ihrem PC sind keine")));
    EXPECT_EQ(kvp::CurrentlyHeld().nLibraries, 0u);
}

TEST_F(DriverTexts, EnglishForAllOtherLanguages)
{
    kvp::PutMemoryFile(RESOURCES, file);
    HMODULE module = LoadLibraryA(RESOURCES);
    machine.wLang = 0x0411;
    Apply();
    EXPECT_EQ(StringOf(module, IDS_INSTALL_2),
              "via the \"Connect to Printer...\" menu, all necessary files were not\n");
    FreeLibrary(module);
}

} // namespace
