// The bytes of a model table: loaded, and asked for several names in several languages.
#include "base/modeltable.h"
#include "tests/fuzz/fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static kvp::Machine machine = StartMachine();
    kvp::PutMemoryFile(std::string(SYSTEM_DIR) + "kv_model.dat", {data, size});
    LoadDataFile();
    for (const LANGID language : {0x0409, 0x0411, 0x0407, 0x00FF}) {
        machine.wLang = language;
        kvp::Configure(machine);
        for (const char *name : {MODEL, "", "KORVA KJ-150", "No such model"})
            for (const auto get :
                 {Get_UIRcName, Get_HelpName, Get_DATName, Get_STMName, Get_UtilName})
                Must(std::strlen(get(name)) <= sizeof(ModelRecord));
    }
    FreeDataFile();
    return 0;
}
