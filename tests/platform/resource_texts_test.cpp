// The driver's own texts: whole in every language.
#include <gmock/gmock.h>

#include "platform/resource/pe.h"
#include "resources/ids.h"
#include "tests/platform/resource_files.h"

namespace
{

using namespace ::testing;

constexpr LANGID aLanguages[] = {1031, 1033, 1034, 1036, 1040, 1046, 2055, 2058,
                                 2060, 2064, 2070, 3079, 3082, 3084, 4108};

class DriverTexts : public ResourceTest
{
  protected:
    DriverTexts()
    {
        kvp::PutMemoryFile("C:\\kvui.dll", file);
        module = LoadLibraryA("C:\\kvui.dll");
    }
    ~DriverTexts() override { FreeLibrary(module); }

    const std::vector<uint8_t> file = HostFile(KV_DRIVER_RESOURCES);
    HMODULE module;
};

TEST_F(DriverTexts, EveryLanguageHasEveryTextItself)
{
    constexpr uint16_t STRINGS = 6;
    kvp::PeFile pe;
    ASSERT_TRUE(kvp::OpenPe(file, pe));
    std::vector<const uint8_t *> found; // a language that stands in for another comes twice
    for (LANGID wLang : aLanguages) {
        SCOPED_TRACE(wLang);
        for (uint16_t block : {IDS_INSTALL_FIRST / 16 + 1, IDS_VERSION_FIRST / 16 + 1}) {
            found.push_back(kvp::FindInPe(pe, STRINGS, block, wLang).data());
            EXPECT_EQ(std::count(found.begin(), found.end(), found.back()), 1);
        }
        SetUser(wLang);
        for (UINT uId : {IDS_INSTALL_1, IDS_INSTALL_2, IDS_INSTALL_3, IDS_INSTALL_4, IDS_INSTALL_5,
                         IDS_VERSION_1, IDS_VERSION_2, IDS_VERSION_3}) {
            const std::string text = StringOf(module, uId); // a line that its buffer has room for
            EXPECT_EQ(text.find('\n') + 1, text.size()) << uId;
            EXPECT_THAT(text, AllOf(SizeIs(Gt(0u)), SizeIs(Lt(255u)), Not(HasSubstr("?")))) << uId;
        }
    }
    SetUser(0x0411);
    EXPECT_EQ(StringOf(module, IDS_INSTALL_2),
              "via the \"Connect to Printer...\" menu, all necessary files were not\n");
}

} // namespace
