// A machine with two models in its table, "KORVA One" and "KORVA Two", whose files a test writes
// as it needs them; and a settings record that names the first.
#ifndef KV_TESTS_DATAFILE_MODEL_TEST_H
#define KV_TESTS_DATAFILE_MODEL_TEST_H

#include <cstring>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "base/modeltable.h"
#include "datafile/loader.h"
#include "tests/support/machine.h"
#include "tests/support/model_builder.h"

#define DAT_VERSION_ERROR "Dlg DLL Message: Version Error of dat file. Please Install again."
#define CFG_VERSION_ERROR "Dlg DLL Message: Version Error of cfg file. Please Install again."
#define UCF_VERSION_ERROR "Dlg DLL Message: Version Error of ucf file"
#define DAT_NOT_FOUND "Dlg DLL Message: File not found : KV1.dat"
#define CFG_NOT_FOUND "Dlg DLL Message: File not found : KV1.cfg"

using Messages = std::vector<std::string>;

inline DriverDevMode NamedRecord(std::u16string_view name)
{
    DriverDevMode dm{};
    std::memcpy(dm.wszModelName, name.data(), name.size() * sizeof(char16_t));
    return dm;
}

template <class Record>
std::string BytesOf(const Record &record)
{
    return std::string(reinterpret_cast<const char *>(&record), sizeof record);
}

template <class Record>
std::string BytesOf(const std::vector<Record> &records, size_t n)
{
    return std::string(reinterpret_cast<const char *>(records.data()), n * sizeof(Record));
}

inline Bytes FirstBytes(Bytes bytes, size_t n)
{
    bytes.resize(n);
    return bytes;
}

class ModelTest : public MachineTest
{
  public: // rows of a test's table use it all
    void SetUp() override
    {
        InstallModelTable(
            {{9, {MakeModelRecord("KORVA One", "KV1"), MakeModelRecord("KORVA Two", "KV2")}}});
        ASSERT_GT(LoadDataFile(), 0u);
        before = kvp::CurrentlyHeld();
    }
    void TearDown() override
    {
        Free_DATFile(nullptr);
        EXPECT_TRUE(NothingHeld());
        FreeDataFile();
    }

    void Install() { model.Install("KV1"); }
    // The library with the names of this model's papers and sources.
    static void InstallNames(const char *lpLibrary)
    {
        std::ifstream file(lpLibrary, std::ios::binary);
        const Bytes bytes((std::istreambuf_iterator<char>(file)), {});
        ASSERT_FALSE(bytes.empty());
        kvp::PutMemoryFile(DRIVER_DIR + std::string("KVUI.DLL"), bytes);
    }
    void PutDat(const Bytes &bytes) { kvp::PutMemoryFile(DatPath(), bytes); }
    void PutCfg(const Bytes &bytes) { kvp::PutMemoryFile(CfgPath(), bytes); }
    void PutUcf(const Bytes &bytes) { kvp::PutMemoryFile(UcfPath(), bytes); }
    static std::string DatPath() { return std::string(WINDOWS_DIR) + "KV1.dat"; }
    static std::string CfgPath() { return std::string(WINDOWS_DIR) + "KV1.cfg"; }
    static std::string UcfPath() { return std::string(SYSTEM_DIR) + "KV1.ucf"; }

    // Blocks, files and libraries as they were when the test began.
    bool NothingHeld() const
    {
        const kvp::Held now = kvp::CurrentlyHeld();
        return now.nBlocks == before.nBlocks && now.nFiles == before.nFiles &&
               now.nLibraries == before.nLibraries;
    }
    // Nothing is held after any of the failures, either.
    int WithEachFailure(kvp::Call call, const std::function<void(int n)> &action)
    {
        return ::WithEachFailure(call, [&](int n) {
            action(n);
            EXPECT_TRUE(NothingHeld());
        });
    }

    Model model;
    DriverDevMode dm = NamedRecord(u"KORVA One");
    kvp::Held before{};
};

#endif
