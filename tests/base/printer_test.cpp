// What the spooler tells of a printer, and the record stored with it.
#include "base/printer.h"

#include <algorithm>
#include <cstring>

#include "base/handles.h"
#include "tests/support/driver.h"
#include "tests/support/machine.h"

namespace
{

class Printer : public MachineTest
{
};

const std::string strName32 = "A name of exactly 32 characters.";

TEST_F(Printer, AModelNameOfMoreThan31CharactersIsRefused)
{
    WCHAR wsz[33];
    std::fill_n(wsz, 33, u'#');
    OpenQueue fits("fits", strName32.substr(1)), tooLong("too long", strName32);
    EXPECT_FALSE(KVGetPrinterInfo(tooLong.hPrinter, wsz));
    EXPECT_EQ(std::u16string(wsz, 33), std::u16string(33, u'#'));
    ASSERT_TRUE(KVGetPrinterInfo(fits.hPrinter, wsz));
    EXPECT_EQ(kvp::ToUtf8(wsz), strName32.substr(1));
    EXPECT_EQ(wsz[32], u'#');
}

TEST_F(Printer, ADeviceNameFillsItsFieldAtMost)
{
    const struct {
        const char *why;
        std::string name;
    } aRows[] = {
        {"31 characters and their terminator", strName32.substr(1)},
        {"32 characters and none", strName32},
        {"40 characters: the first 32", strName32 + "12345678"},
        {"another script", "\xE5\x8D\xB0\xE5\x88\xB7"},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        OpenQueue queue(row.name, "KORVA");
        WCHAR wsz[34];
        std::fill_n(wsz, 34, u'#');
        ASSERT_TRUE(KVGetPrinterName(queue.hPrinter, wsz));
        std::u16string expected = (kvp::ToWide(row.name) + u'\0').substr(0, 32);
        EXPECT_EQ(std::u16string(wsz, expected.size()), expected);
        EXPECT_EQ(wsz[expected.size()], u'#');
    }
}

TEST_F(Printer, TheDriverDirectoryEndsInOneBackslash)
{
    OpenQueue queue("Office", "KORVA");
    const LocalPtr<char> path(GetPrinterDriverPath(queue.hPrinter));
    EXPECT_STRCASEEQ(path.get(), DRIVER_DIR);
}

TEST_F(Printer, AStoredRecordCountsByItsSizeAndDriverVersion)
{
    const struct {
        const char *why;
        size_t cb;
        uint16_t wVersion;
        bool accepted;
    } aRows[] = {
        {"ours", 562, 859, true},
        {"another driver version", 562, 858, false},
        {"two bytes short", 560, 859, false},
        {"a byte too long", 563, 859, false},
        {"three bytes", 3, 859, false},
    };
    OpenQueue queue("Office", "KORVA");
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        std::vector<BYTE> value(600);
        for (size_t i = 0; i < value.size(); ++i)
            value[i] = static_cast<BYTE>(i);
        std::memcpy(&value[66], &row.wVersion, 2);
        ASSERT_EQ(SetPrinterDataW(queue.hPrinter, u"KVDeviceMode", REG_BINARY, value.data(),
                                  static_cast<DWORD>(row.cb)),
                  ERROR_SUCCESS);
        DriverDevMode dm;
        std::memset(&dm, 0x55, sizeof dm);
        const DriverDevMode before = dm;
        EXPECT_EQ(KVGetPrinterData(queue.hPrinter, &dm), row.accepted);
        EXPECT_EQ(std::memcmp(&dm, row.accepted ? value.data() : (const void *)&before, sizeof dm),
                  0);
    }
    EXPECT_EQ(kvp::CurrentlyHeld().nBlocks, 0u);
}

TEST_F(Printer, ARecordStoredIsTheRecordRead)
{
    OpenQueue queue("Office", "KORVA"), other("Other", "KORVA");
    DriverDevMode stored, read;
    std::memset(&stored, 0x77, sizeof stored);
    stored.dm.dmDriverVersion = KV_DRIVERVERSION;
    EXPECT_FALSE(KVGetPrinterData(queue.hPrinter, &read));
    ASSERT_TRUE(KVSetPrinterData(queue.hPrinter, &stored));
    ASSERT_TRUE(KVGetPrinterData(queue.hPrinter, &read));
    EXPECT_EQ(std::memcmp(&stored, &read, sizeof read), 0);
    EXPECT_FALSE(KVGetPrinterData(other.hPrinter, &read));
}

TEST_F(Printer, NothingIsLearntFromAHandleThatIsNone)
{
    WCHAR wsz[32];
    DriverDevMode dm{};
    EXPECT_FALSE(KVGetPrinterInfo(nullptr, wsz));
    EXPECT_FALSE(KVGetPrinterName(nullptr, wsz));
    EXPECT_FALSE(KVGetPrinterData(nullptr, &dm));
    EXPECT_FALSE(KVSetPrinterData(nullptr, &dm));
    EXPECT_STREQ(LocalPtr<char>(GetPrinterDriverPath(nullptr)).get(), "");
}

// Each access and each allocation fails once; the answer is a plain no and nothing is kept.
TEST_F(Printer, AFailureHalfwayIsAResultAndLeaksNothing)
{
    OpenQueue queue("Office", "KORVA");
    HANDLE hPrinter = queue.hPrinter;
    DriverDevMode dm{};
    dm.dm.dmDriverVersion = KV_DRIVERVERSION;
    ASSERT_TRUE(KVSetPrinterData(hPrinter, &dm));
    WCHAR wsz[32];
    const std::pair<const char *, std::function<bool()>> aReaders[] = {
        {"model", [&] { return KVGetPrinterInfo(hPrinter, wsz) != FALSE; }},
        {"name", [&] { return KVGetPrinterName(hPrinter, wsz) != FALSE; }},
        {"record", [&] { return KVGetPrinterData(hPrinter, &dm) != FALSE; }},
        {"path",
         [&] {
             const LocalPtr<char> path(GetPrinterDriverPath(hPrinter));
             return path && *path.get() != '\0';
         }},
    };
    for (const auto &[name, reads] : aReaders) {
        for (const kvp::Call call : {kvp::Call::Alloc, kvp::Call::Store}) {
            SCOPED_TRACE(std::string(name) + (call == kvp::Call::Alloc ? " alloc" : " store"));
            int n = 0;
            do {
                kvp::FailCall(call, n);
                const bool bRead = reads();
                EXPECT_EQ(kvp::CurrentlyHeld().nBlocks, 0u);
                if (kvp::CallsSeen(call) > n)
                    EXPECT_FALSE(bRead) << n;
                else
                    EXPECT_TRUE(bRead) << n;
            } while (kvp::CallsSeen(call) > n++);
            kvp::FailCall(call, -1);
            EXPECT_GT(n, 1);
        }
    }
}

} // namespace
