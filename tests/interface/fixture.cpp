// The machine, the queue and the texts that the tests of the entry points share.
#include "tests/interface/fixture.h"

#include <algorithm>
#include <fstream>
#include <iterator>

const char *const INSTALL_MESSAGE =
    "KORVA: No driver files are on your PC. If you installed this printer driver\n"
    "via the \"Connect to Printer...\" menu, all necessary files were not\n"
    "copied from the printer server PC.\n"
    "Please reinstall the printer driver by using the Setup Disk.\n"
    "Then necessary files are copied to your PC.\n";

bool PlacedRecord::UntouchedFrom(size_t cb) const
{
    Bytes expected = PlacedRecord().bytes;
    std::copy_n(bytes.begin() + cbGuard, cb, expected.begin() + cbGuard);
    return bytes == expected;
}

Bytes BytesOf(const DriverDevMode &dm)
{
    const auto *from = reinterpret_cast<const BYTE *>(&dm);
    return Bytes(from, from + sizeof dm);
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

void InterfaceTest::CutTheDat()
{
    Bytes bytes = model.Dat();
    bytes.pop_back();
    kvp::PutMemoryFile(std::string(WINDOWS_DIR) + "KVA.dat", bytes);
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

LONG InterfaceTest::Document(DriverDevMode *lpOut, DriverDevMode *lpIn, DWORD dwFlags)
{
    SetLastError(1);
    return driver.DrvDocumentProperties(nullptr, hPrinter, nullptr, lpOut, lpIn, dwFlags);
}

LONG InterfaceTest::Advanced(DriverDevMode *lpOut, DriverDevMode *lpIn)
{
    SetLastError(1);
    return driver.DrvAdvancedDocumentProperties(nullptr, hPrinter, nullptr, lpOut, lpIn);
}

DriverDevMode InterfaceTest::Settings()
{
    DriverDevMode dm{};
    EXPECT_EQ(Document(&dm, nullptr, DM_COPY), 1);
    return dm;
}

DriverDevMode InterfaceTest::SevenCopies()
{
    DriverDevMode dm = Settings();
    dm.dm.dmFields = KV_DM_COPIES;
    dm.dm.dmCopies = 7;
    return dm;
}

Bytes StoredWith(HANDLE hPrinter)
{
    Bytes value(2000);
    DWORD dwType = 0, cb = 0;
    const DWORD dwError = GetPrinterDataW(hPrinter, u"KVDeviceMode", &dwType, value.data(),
                                          static_cast<DWORD>(value.size()), &cb);
    value.resize(dwError == ERROR_SUCCESS ? cb : 0);
    return value;
}

void StoreWith(HANDLE hPrinter, Bytes value)
{
    SetPrinterDataW(hPrinter, u"KVDeviceMode", REG_BINARY, value.data(),
                    static_cast<DWORD>(value.size()));
}
