// How each entry point answers when a printer cannot be opened, and what the user is told.
#include <functional>

#include <gmock/gmock.h>

#include "tests/interface/fixture.h"

namespace
{

using ::testing::ElementsAreArray;

class OpeningFails : public InterfaceTest
{
};

struct Results {
    LONG lDocument, lAdvanced;
    DWORD dwCapability; // of DC_DUPLEX, which needs nothing but the opening
};

struct Row {
    const char *why;
    std::function<void(Model &)> spoil; // of the model's files
    const char *driver;                 // of the queue; null: a handle that is none
    Results expected;
    std::vector<std::string> boxes; // shown by each of the four entry points
};

const Row aRows[] = {
    {"a handle that is none", [](Model &) {}, nullptr, {0, -1, 0xFFFFFFFF}, {}},
    {"a driver's name of 32 characters",
     [](Model &) {},
     "KORVA with a name of 32 letters.",
     {0, -1, 0xFFFFFFFF},
     {}},
    {"no .dat",
     [](Model &) { kvp::PutAbsentFile(std::string(WINDOWS_DIR) + "KVA.dat"); },
     "KORVA A",
     {-1, -1, 0xFFFFFFFF},
     {INSTALL_MESSAGE}},
    {"no .cfg",
     [](Model &) { kvp::PutAbsentFile(std::string(WINDOWS_DIR) + "KVA.cfg"); },
     "KORVA A",
     {-1, -1, 0xFFFFFFFF},
     {INSTALL_MESSAGE}},
    {"an identifier below 0: capabilities go on",
     [](Model &model) {
         model.printer.sModelId = -1;
         model.Install("KVA");
     },
     "KORVA A",
     {-1, -1, 0},
     {}},
    {"a .dat cut within the printer record: capabilities go on",
     [](Model &model) {
         Bytes bytes = model.Dat();
         bytes.resize(bytes.size() - 1);
         kvp::PutMemoryFile(std::string(WINDOWS_DIR) + "KVA.dat", bytes);
     },
     "KORVA A",
     {-1, -1, 0},
     {}},
};

TEST_F(OpeningFails, EachEntryPointHasItsOwnAnswer)
{
    Start();
    for (const Row &row : aRows) {
        SCOPED_TRACE(row.why);
        InstallFiles();
        row.spoil(model);
        const OpenQueue spoilt("Spoilt", row.driver ? row.driver : "none");
        HANDLE h = row.driver ? spoilt.hPrinter : nullptr;
        PlacedRecord out;
        EXPECT_EQ(driver.DrvDocumentProperties(nullptr, h, nullptr, out.Get(), nullptr, DM_COPY),
                  row.expected.lDocument);
        EXPECT_THAT(BoxesShown(), ElementsAreArray(row.boxes));
        EXPECT_EQ(driver.DrvAdvancedDocumentProperties(nullptr, h, nullptr, out.Get(), nullptr),
                  row.expected.lAdvanced);
        EXPECT_THAT(BoxesShown(), ElementsAreArray(row.boxes));
        EXPECT_FALSE(driver.PrinterProperties(nullptr, h));
        EXPECT_THAT(BoxesShown(), ElementsAreArray(row.boxes));
        EXPECT_EQ(driver.DrvDeviceCapabilities(h, nullptr, DC_DUPLEX, nullptr, nullptr),
                  row.expected.dwCapability);
        EXPECT_THAT(BoxesShown(), ElementsAreArray(row.boxes));
        EXPECT_TRUE(out.Untouched());
        kvp::RemoveQueue("Spoilt");
    }
    EXPECT_EQ(kvp::CurrentlyHeld().nBlocks, 0u);
    EXPECT_EQ(kvp::CurrentlyHeld().nFiles, 0u);
}

// Whichever allocation, store access or read fails: the caller gets a whole record or none.
TEST_F(OpeningFails, AFailureAnywhereGivesAResultAndLeaksNothing)
{
    Start();
    for (const kvp::Call call :
         {kvp::Call::Alloc, kvp::Call::Store, kvp::Call::OpenFile, kvp::Call::Read}) {
        for (int n = 0;; ++n) {
            SCOPED_TRACE("call " + std::to_string(static_cast<int>(call)) + ", " +
                         std::to_string(n));
            kvp::FailCall(call, n);
            PlacedRecord out;
            const LONG lResult = driver.DrvDocumentProperties(nullptr, hPrinter, nullptr, out.Get(),
                                                              nullptr, DM_COPY);
            EXPECT_EQ(kvp::CurrentlyHeld().nBlocks, 0u);
            EXPECT_EQ(kvp::CurrentlyHeld().nFiles, 0u);
            EXPECT_TRUE(lResult == 1 ? out.GuardsHold() : out.Untouched() && lResult <= 0)
                << lResult;
            if (kvp::CallsSeen(call) <= n) {
                EXPECT_EQ(lResult, 1);
                EXPECT_GT(n, 0);
                break;
            }
        }
        kvp::FailCall(call, -1);
    }
}

} // namespace
