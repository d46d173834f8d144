// A companion program's view: a block with a settings record behind it, on a machine with one
// small model, "KORVA One".
#ifndef KV_TESTS_API_API_TEST_H
#define KV_TESTS_API_API_TEST_H

#include <cstring>
#include <string>

#include <gmock/gmock.h>

#include "datafile/instance.h"
#include "kvui/kvdd.h"
#include "tests/support/machine.h"
#include "tests/support/model_builder.h"

#pragma pack(push, 1)
struct Caller {
    KVDDBLOCK block;
    DriverDevMode record;
};
#pragma pack(pop)

// The bytes of a record, for comparing two of them whole.
inline std::string BytesOf(const DriverDevMode &record)
{
    return std::string(reinterpret_cast<const char *>(&record), sizeof(record));
}

class ApiTest : public MachineTest
{
  protected:
    void SetUp() override
    {
        InstallModelTable({{9, {MakeModelRecord("KORVA One", "KV1")}}});
        ASSERT_GT(LoadDataFile(), 0u);
        Install();
    }
    // Nothing that a call loaded outlives it.
    void TearDown() override
    {
        EXPECT_TRUE(UIInstance.dat.lpPapers.empty());
        EXPECT_EQ(UIInstance.dat.lpDatHeader, nullptr);
        FreeDataFile();
        const kvp::Held held = kvp::CurrentlyHeld();
        EXPECT_EQ(held.nBlocks + held.nFiles + held.nLibraries, 0u);
    }

    // Puts the model as it is now on the machine, and its defaults into the record.
    void Install()
    {
        model.Install("KV1");
        caller = {};
        caller.block.sDistance = sizeof(KVDDBLOCK);
        std::memcpy(caller.record.wszModelName, u"KORVA One", 20);
        ASSERT_EQ(KVDD_GetOrgDevMode(nullptr, &caller.record), 1);
    }
    void Uninstall() { kvp::PutAbsentFile(std::string(WINDOWS_DIR) + "KV1.dat"); }

    int32_t Range(uint32_t item, void *range) { return KVDD_GetRange(&caller, item, range); }
    int32_t Get(uint32_t item, void *data) { return KVDD_GetData(&caller, item, data); }
    // The value of an item of one word; a failure's result far outside the words.
    int Word(uint32_t item)
    {
        int16_t word = -21846;
        const int32_t result = Get(item, &word);
        return result == KVDD_OK ? word : 1000000 + result;
    }
    int32_t Set(uint32_t item, intptr_t value) { return KVDD_SetData(&caller, item, value); }
    template <class Words>
    int32_t SetWords(uint32_t item, Words &words)
    {
        return KVDD_SetData(&caller, item, reinterpret_cast<intptr_t>(&words));
    }

    Model model;
    Caller caller{};
    DriverDevMode &record = caller.record;
};

#endif
