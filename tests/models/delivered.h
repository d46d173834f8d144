// A machine with the sample models installed as they are delivered.
#ifndef KV_TESTS_MODELS_DELIVERED_H
#define KV_TESTS_MODELS_DELIVERED_H

#include "tests/support/machine.h"

class DeliveredTest : public MachineTest
{
  protected:
    DeliveredTest();
    ~DeliveredTest() override;
    // The user speaks this language from now on; the model table is in memory.
    void Speak(LANGID wLang, UINT uCodePage);
};

constexpr const char *aModels[] = {"KORVA KJ-150", "KORVA KJ-820 Pro"};

#endif
