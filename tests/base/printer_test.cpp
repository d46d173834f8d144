// What the spooler tells of a printer, and the record stored with it.
#include "base/printer.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <numeric>

#include "tests/support/driver.h"
#include "tests/support/machine.h"

namespace
{

// A text that a call wrote into a field of characters, whose rest it must leave alone.
class Field
{
  public:
    Field() { std::fill(std::begin(wsz), std::end(wsz), u'#'); }
    std::u16string Written() const
    {
        std::u16string text(std::begin(wsz), std::end(wsz));
        return text.erase(text.find_last_not_of(u'#') + 1);
    }
    WCHAR wsz[40];
};

class Printer : public MachineTest
{
};

const std::string strName32 = "A name of exactly 32 characters.";
const std::u16string wstrName31 = kvp::ToWide(strName32.substr(1)) + u'\0';

TEST_F(Printer, AModelNameOfMoreThan31CharactersIsRefused)
{
    const OpenQueue fits("fits", strName32.substr(1)), tooLong("too long", strName32);
    Field refused, taken;
    EXPECT_FALSE(KVGetPrinterInfo(tooLong.hPrinter, refused.wsz));
    EXPECT_EQ(refused.Written(), u"");
    EXPECT_TRUE(KVGetPrinterInfo(fits.hPrinter, taken.wsz));
    EXPECT_EQ(taken.Written(), wstrName31);
}

TEST_F(Printer, ADeviceNameFillsItsFieldAtMost)
{
    const std::pair<std::string, std::u16string> aRows[] = {
        {strName32.substr(1), wstrName31},
        {strName32, kvp::ToWide(strName32)},
        {strName32 + "12345678", kvp::ToWide(strName32)},
        {"印刷", std::u16string(u"\u5370\u5237\0", 3)},
    };
    for (const auto &[name, written] : aRows) {
        const OpenQueue queue(name, "KORVA");
        Field field;
        EXPECT_TRUE(KVGetPrinterName(queue.hPrinter, field.wsz));
        EXPECT_EQ(field.Written(), written) << name;
    }
}

TEST_F(Printer, AStoredRecordCountsByItsSizeAndDriverVersion)
{
    const struct {
        const char *why;
        DWORD cb;
        uint16_t wVersion;
        bool accepted;
    } aRows[] = {
        {"ours", 562, 859, true},
        {"another driver version", 562, 858, false},
        {"two bytes short", 560, 859, false},
        {"a byte too long", 563, 859, false},
        {"three bytes", 3, 859, false},
    };
    const OpenQueue queue("Office", "KORVA");
    std::vector<BYTE> value(600), record(sizeof(DriverDevMode));
    std::iota(value.begin(), value.end(), BYTE{0});
    auto *lpDM = reinterpret_cast<DriverDevMode *>(record.data());
    EXPECT_FALSE(KVGetPrinterData(queue.hPrinter, lpDM)) << "nothing is stored";
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        std::memcpy(&value[66], &row.wVersion, 2);
        SetPrinterDataW(queue.hPrinter, u"KVDeviceMode", REG_BINARY, value.data(), row.cb);
        std::fill(record.begin(), record.end(), BYTE{0x55});
        EXPECT_EQ(KVGetPrinterData(queue.hPrinter, lpDM), row.accepted);
        const auto stored = std::vector<BYTE>(value.begin(), value.begin() + sizeof *lpDM);
        EXPECT_EQ(record, row.accepted ? stored : std::vector<BYTE>(sizeof *lpDM, 0x55));
    }
    lpDM->dm.dmDriverVersion = KV_DRIVERVERSION;
    ASSERT_TRUE(KVSetPrinterData(queue.hPrinter, lpDM));
    DriverDevMode read;
    ASSERT_TRUE(KVGetPrinterData(queue.hPrinter, &read));
    EXPECT_EQ(std::memcmp(&read, lpDM, sizeof read), 0);
    EXPECT_EQ(kvp::CurrentlyHeld().nBlocks, 0u);
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
    const OpenQueue queue("Office", "KORVA");
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
             EXPECT_TRUE(!path || !*path || std::string(path.get()) == DRIVER_DIR);
             return path && *path;
         }},
    };
    for (const auto &reader : aReaders) {
        SCOPED_TRACE(reader.first);
        for (const kvp::Call call : {kvp::Call::Alloc, kvp::Call::Store})
            EXPECT_GT(WithEachFailure(call,
                                      [&](int n) {
                                          const bool bRead = reader.second();
                                          EXPECT_EQ(bRead, !HasReached(call, n));
                                          EXPECT_EQ(kvp::CurrentlyHeld().nBlocks, 0u);
                                      }),
                      0);
    }
}

} // namespace
