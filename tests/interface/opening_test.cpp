// How each entry point answers when a printer cannot be opened, and what the user is told.
#include <functional>

#include <gmock/gmock.h>

#include "tests/interface/fixture.h"

namespace
{

using ::testing::ElementsAreArray;

class OpeningFails : public InterfaceTest
{
  protected:
    // A .dat that ends within the printer record, behind everything that a query reads.
    void CutTheDat()
    {
        Bytes bytes = model.Dat();
        bytes.pop_back();
        kvp::PutMemoryFile(std::string(WINDOWS_DIR) + "KVA.dat", bytes);
    }
    void Remove(const char *name) { kvp::PutAbsentFile(std::string(WINDOWS_DIR) + name); }
    void Renumber()
    {
        model.printer.sModelId = -1;
        InstallFiles();
    }
};

TEST_F(OpeningFails, EachEntryPointHasItsOwnAnswer)
{
    const struct {
        const char *why;
        std::function<void()> spoil;
        const char *driver; // of the queue; null: a handle that is none
        LONG lDocument, lAdvanced;
        DWORD dwCapability;             // of DC_DUPLEX, which needs nothing but the opening
        std::vector<std::string> boxes; // shown by each of the four
    } aRows[] = {
        {"a handle that is none", [] {}, nullptr, 0, -1, 0xFFFFFFFF, {}},
        {"32 characters", [] {}, "KORVA with a name of 32 letters.", 0, -1, 0xFFFFFFFF, {}},
        {"no .dat", [&] { Remove("KVA.dat"); }, "KORVA A", -1, -1, 0xFFFFFFFF, {INSTALL_MESSAGE}},
        {"no .cfg", [&] { Remove("KVA.cfg"); }, "KORVA A", -1, -1, 0xFFFFFFFF, {INSTALL_MESSAGE}},
        {"no printer record: capabilities go on", [&] { CutTheDat(); }, "KORVA A", -1, -1, 0, {}},
        {"an identifier below 0: the same", [&] { Renumber(); }, "KORVA A", -1, -1, 0, {}},
    };
    Start();
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        InstallFiles();
        row.spoil();
        const OpenQueue spoilt("Spoilt", row.driver ? row.driver : "none");
        hPrinter = row.driver ? spoilt.hPrinter : nullptr;
        PlacedRecord out;
        EXPECT_EQ(Document(out.Get(), nullptr, DM_COPY), row.lDocument);
        EXPECT_THAT(BoxesShown(), ElementsAreArray(row.boxes));
        EXPECT_EQ(Advanced(out.Get(), nullptr), row.lAdvanced);
        EXPECT_THAT(BoxesShown(), ElementsAreArray(row.boxes));
        EXPECT_FALSE(driver.PrinterProperties(nullptr, hPrinter));
        EXPECT_THAT(BoxesShown(), ElementsAreArray(row.boxes));
        EXPECT_EQ(driver.DrvDeviceCapabilities(hPrinter, nullptr, DC_DUPLEX, nullptr, nullptr),
                  row.dwCapability);
        EXPECT_THAT(BoxesShown(), ElementsAreArray(row.boxes));
        EXPECT_TRUE(out.Untouched());
        EXPECT_EQ(StoredWith(spoilt.hPrinter), Bytes());
        kvp::RemoveQueue("Spoilt");
    }
}

} // namespace
