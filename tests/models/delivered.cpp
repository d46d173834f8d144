// Installing the samples, and choosing who uses them.
#include "tests/models/delivered.h"

#include <filesystem>

#include "base/modeltable.h"

DeliveredTest::DeliveredTest()
{
    std::filesystem::copy(KV_SAMPLE_ROOT, machine.strRoot,
                          std::filesystem::copy_options::recursive);
    Speak(0x0409, 1252);
}

DeliveredTest::~DeliveredTest()
{
    FreeDataFile();
}

void DeliveredTest::Speak(LANGID wLang, UINT uCodePage)
{
    machine.wLang = wLang;
    machine.uAnsiCodePage = uCodePage;
    Apply();
    FreeDataFile();
    EXPECT_NE(LoadDataFile(), 0u);
}
