// A machine with the sample models installed as they are delivered.
#ifndef KV_TESTS_MODELS_DELIVERED_H
#define KV_TESTS_MODELS_DELIVERED_H

#include <filesystem>

#include "base/modeltable.h"
#include "tests/support/machine.h"

class DeliveredTest : public MachineTest
{
  protected:
    DeliveredTest()
    {
        std::filesystem::copy(KV_SAMPLE_ROOT, machine.strRoot,
                              std::filesystem::copy_options::recursive);
        Speak(0x0409, 1252);
    }
    ~DeliveredTest() override { FreeDataFile(); }
    // The user speaks this language from now on; the model table is in memory.
    void Speak(LANGID wLang, UINT uCodePage)
    {
        machine.wLang = wLang;
        machine.uAnsiCodePage = uCodePage;
        Apply();
        EXPECT_NE(LoadDataFile(), 0u);
    }
};

constexpr const char *aModels[] = {"KORVA KJ-150", "KORVA KJ-820 Pro"};

#endif
