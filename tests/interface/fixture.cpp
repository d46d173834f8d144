// The machine, the queue and the texts that the tests of the entry points share.
#include "tests/interface/fixture.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <iterator>

const char *const INSTALL_MESSAGE =
    "KORVA: No driver files are on your PC. If you installed this printer driver\n"
    "via the \"Connect to Printer...\" menu, all necessary files were not\n"
    "copied from the printer server PC.\n"
    "Please reinstall the printer driver by using the Setup Disk.\n"
    "Then necessary files are copied to your PC.\n";

PlacedRecord::PlacedRecord(size_t cbRecord, BYTE bFill)
    : cb(cbRecord), fill(bFill), bytes(cbGuard + cbRecord + cbGuard, bFill)
{
}

DriverDevMode *PlacedRecord::Get()
{
    return reinterpret_cast<DriverDevMode *>(bytes.data() + cbGuard);
}

Bytes PlacedRecord::Content() const
{
    return Bytes(bytes.begin() + cbGuard, bytes.end() - cbGuard);
}

bool PlacedRecord::Untouched() const
{
    return std::ranges::all_of(bytes, [this](BYTE b) { return b == fill; });
}

bool PlacedRecord::GuardsHold() const
{
    const auto isFill = [this](BYTE b) { return b == fill; };
    return std::all_of(bytes.begin(), bytes.begin() + cbGuard, isFill) &&
           std::all_of(bytes.end() - cbGuard, bytes.end(), isFill);
}

void PlacedRecord::Put(const DriverDevMode &dm)
{
    std::memcpy(bytes.data() + cbGuard, &dm, std::min(cb, sizeof dm));
}

InterfaceTest::InterfaceTest()
{
    InstallModelTable(
        {{9, {MakeModelRecord("KORVA A", "KVA"), MakeModelRecord("KORVA B", "KVB")}}});
}

void InterfaceTest::InstallFiles()
{
    model.Install("KVA");
}

void InterfaceTest::InstallUILibrary(const std::string &base)
{
    std::ifstream file(KV_TEST_UI_LIBRARY, std::ios::binary);
    const Bytes bytes((std::istreambuf_iterator<char>(file)), {});
    ASSERT_FALSE(bytes.empty());
    kvp::PutMemoryFile(DRIVER_DIR + base + ".DLL", bytes);
}

void InterfaceTest::Start()
{
    InstallFiles();
    InstallUILibrary();
    ASSERT_TRUE(driver.Load());
    queue = std::make_unique<OpenQueue>("Office", "KORVA A");
    hPrinter = queue->hPrinter;
}

DriverDevMode InterfaceTest::Settings()
{
    DriverDevMode dm{};
    EXPECT_EQ(driver.DrvDocumentProperties(nullptr, hPrinter, nullptr, &dm, nullptr, DM_COPY), 1);
    return dm;
}

DriverDevMode InterfaceTest::SevenCopies()
{
    DriverDevMode dm = Settings();
    dm.dm.dmFields = KV_DM_COPIES;
    dm.dm.dmCopies = 7;
    return dm;
}
