// What the spooler's calls tell of a printer: sizes, places, errors, texts and stored values.
#include <cstring>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "tests/support/machine.h"

namespace
{

constexpr DWORD NO_SUCH_FILE = 2, BAD_HANDLE = 6, TOO_SMALL = 122, BAD_LEVEL = 124, MORE_DATA = 234,
                NO_SUCH_PRINTER = 1801, BAD_ENVIRONMENT = 1805;
using Bytes = std::vector<uint8_t>;
using ::testing::Each;

class SpoolerInfo : public MachineTest
{
  protected:
    ~SpoolerInfo() override { ClosePrinter(hPrinter); }

    void Add(const std::string &name, const std::string &driver, const std::string &server = {})
    {
        kvp::AddQueue(name, driver, server);
        std::u16string wide = kvp::ToWide(name);
        ASSERT_TRUE(OpenPrinterW(wide.data(), &hPrinter, nullptr));
    }
    template <class Info>
    Info Read(BOOL(WINAPI *read)(HANDLE, DWORD, LPBYTE, DWORD, LPDWORD))
    {
        DWORD cb = 0;
        read(hPrinter, 2, nullptr, 0, &cb);
        bytes.assign(cb, 0);
        EXPECT_TRUE(read(hPrinter, 2, bytes.data(), cb, &cb));
        Info info;
        std::memcpy(&info, bytes.data(), sizeof info);
        return info;
    }
    bool Holds(const void *p, size_t cb) const
    {
        const auto *pByte = static_cast<const uint8_t *>(p);
        return pByte >= bytes.data() && pByte + cb <= bytes.data() + bytes.size();
    }

    HANDLE hPrinter = nullptr;
    Bytes bytes;
};

// ---- sizes and refusals ---------------------------------------------------------------------

using Reader = BOOL (*)(HANDLE, DWORD, LPBYTE, DWORD, LPDWORD);
const struct {
    const char *why;
    Reader read;
    DWORD dwLevel;
    bool bTakesHandle;
} aReaders[] = {
    {"printer, wide", GetPrinterW, 2, true},
    {"printer, ANSI", GetPrinterA, 2, true},
    {"driver",
     [](HANDLE h, DWORD level, LPBYTE p, DWORD cb, LPDWORD need) {
         return GetPrinterDriverW(h, nullptr, level, p, cb, need);
     },
     2, true},
    {"driver directory",
     [](HANDLE, DWORD level, LPBYTE p, DWORD cb, LPDWORD need) {
         return GetPrinterDriverDirectoryA(nullptr, nullptr, level, p, cb, need);
     },
     1, false},
};

TEST_F(SpoolerInfo, ReadersAskForTheirSizeAndUseNoMore)
{
    Add("Office", "KORVA Q1");
    for (const auto &row : aReaders) {
        SCOPED_TRACE(row.why);
        DWORD cb = 0, cbAgain = 0;
        EXPECT_FALSE(row.read(hPrinter, row.dwLevel, nullptr, 0, &cb));
        EXPECT_EQ(GetLastError(), TOO_SMALL);
        Bytes buffer(cb + 16, 0x55);
        EXPECT_FALSE(row.read(hPrinter, row.dwLevel, buffer.data(), cb - 1, &cbAgain));
        EXPECT_EQ(GetLastError(), TOO_SMALL);
        EXPECT_EQ(cbAgain, cb);
        EXPECT_THAT(buffer, Each(0x55));
        EXPECT_TRUE(row.read(hPrinter, row.dwLevel, buffer.data(), cb, &cbAgain));
        EXPECT_THAT(Bytes(buffer.begin() + cb, buffer.end()), Each(0x55));
        EXPECT_TRUE(row.read(hPrinter, row.dwLevel, buffer.data(), cb + 16, &cbAgain));
        EXPECT_EQ(cbAgain, cb);
        EXPECT_THAT(Bytes(buffer.begin() + cb, buffer.end()), Each(0xAB)); // hostile rest
    }
}

TEST_F(SpoolerInfo, ReadersRefuseOtherLevelsAndHandles)
{
    Add("Office", "KORVA Q1");
    HANDLE hClosed = nullptr;
    std::u16string name = u"office";
    ASSERT_TRUE(OpenPrinterW(name.data(), &hClosed, nullptr));
    ASSERT_TRUE(ClosePrinter(hClosed));
    for (const auto &row : aReaders) {
        SCOPED_TRACE(row.why);
        DWORD cb = 77;
        EXPECT_FALSE(row.read(hPrinter, row.dwLevel + 1, nullptr, 0, &cb));
        EXPECT_EQ(GetLastError(), BAD_LEVEL);
        EXPECT_EQ(cb, 0u);
        for (HANDLE hBad : {HANDLE{nullptr}, INVALID_HANDLE_VALUE, hClosed}) {
            if (!row.bTakesHandle)
                continue;
            EXPECT_FALSE(row.read(hBad, row.dwLevel, nullptr, 0, &cb));
            EXPECT_EQ(GetLastError(), BAD_HANDLE);
        }
    }
}

TEST_F(SpoolerInfo, OnlyThisEnvironmentHasDrivers)
{
    Add("Office", "KORVA Q1");
    DWORD cb = 0;
    EXPECT_FALSE(GetPrinterDriverW(hPrinter, u"windows nt X86", 2, nullptr, 0, &cb));
    EXPECT_EQ(GetLastError(), TOO_SMALL);
    EXPECT_FALSE(GetPrinterDriverW(hPrinter, u"Windows 4.0", 2, nullptr, 0, &cb));
    EXPECT_EQ(GetLastError(), BAD_ENVIRONMENT);
    EXPECT_FALSE(GetPrinterDriverDirectoryA(nullptr, "Windows 4.0", 1, nullptr, 0, &cb));
    EXPECT_EQ(GetLastError(), BAD_ENVIRONMENT);
}

// ---- what is told ---------------------------------------------------------------------------

TEST_F(SpoolerInfo, APrintersTextsLieAlignedInTheBuffer)
{
    Add("Büro 2", "KORVA Q1", "alpha");
    const auto info = Read<PRINTER_INFO_2W>(GetPrinterW);
    const std::u16string aWanted[] = {u"\\\\alpha", u"Büro 2", u"", u"KORVA Q1", u"", u""};
    const LPWSTR aTexts[] = {info.pServerName, info.pPrinterName, info.pShareName,
                             info.pDriverName, info.pComment,     info.pLocation};
    for (size_t i = 0; i < std::size(aWanted); ++i) {
        ASSERT_TRUE(Holds(aTexts[i], 2 * aWanted[i].size() + 2));
        EXPECT_EQ(reinterpret_cast<uintptr_t>(aTexts[i]) % 2, 0u);
        EXPECT_EQ(aTexts[i], aWanted[i]);
    }
    EXPECT_TRUE(Holds(info.pPortName, 2));
    EXPECT_EQ(info.pDevMode, nullptr);
}

TEST_F(SpoolerInfo, AnsiTextsAreInTheUsersCodePage)
{
    machine.uAnsiCodePage = 932;
    Apply();
    Add("プリンタ", "KORVA Q1");
    const auto info = Read<PRINTER_INFO_2A>(GetPrinterA);
    EXPECT_STREQ(info.pPrinterName, "\x83\x76\x83\x8A\x83\x93\x83\x5E");
    EXPECT_EQ(info.pServerName, nullptr);
    HANDLE hSame = nullptr;
    EXPECT_TRUE(OpenPrinterA(info.pPrinterName, &hSame, nullptr));
    EXPECT_TRUE(ClosePrinter(hSame));
}

TEST_F(SpoolerInfo, TheDriverDirectoryIsThisMachinesForAServerToo)
{
    Add("Office", "KORVA Q1", "\\\\alpha");
    char szDirectory[MAX_PATH];
    DWORD cb = 0;
    EXPECT_TRUE(GetPrinterDriverDirectoryA(
        "\\\\alpha", nullptr, 1, reinterpret_cast<LPBYTE>(szDirectory), sizeof szDirectory, &cb));
    EXPECT_EQ(std::string(szDirectory) + "\\", DRIVER_DIR);
    EXPECT_EQ(cb, std::strlen(szDirectory) + 1);
}

// A reader that trusts a record's own sizes must not leave the buffer.
const struct {
    const char *why;
    size_t cbKept;
    WORD wSize, wExtra;
    size_t cbReadable;
} aRecords[] = {
    {"whole", 562, 188, 374, 562},
    {"ends before its private part", 188, 188, 374, 562},
    {"says it is larger than it is", 562, 0xFFFF, 0xFFFF, 131070},
    {"says it is smaller", 562, 10, 0, 562},
    {"too short for any field", 3, 0, 0, 188},
};

TEST_F(SpoolerInfo, ADefaultRecordHasRoomForAllThatItSaysOfItself)
{
    Add("Office", "KORVA Q1");
    for (const auto &row : aRecords) {
        SCOPED_TRACE(row.why);
        Bytes record(600, 0x5A);
        std::memcpy(&record[68], &row.wSize, 2);
        std::memcpy(&record[70], &row.wExtra, 2);
        record.resize(row.cbKept);
        kvp::SetQueueDefault("Office", record);
        const auto info = Read<PRINTER_INFO_2W>(GetPrinterW);
        ASSERT_TRUE(Holds(info.pDevMode, row.cbReadable));
        EXPECT_EQ((reinterpret_cast<uint8_t *>(info.pDevMode) - bytes.data()) % 8, 0);
        EXPECT_EQ(std::memcmp(info.pDevMode, record.data(), record.size()), 0);
        EXPECT_EQ(kvp::QueueDefault("Office"), record);
    }
    kvp::SetQueueDefault("Office", {});
    EXPECT_EQ(Read<PRINTER_INFO_2W>(GetPrinterW).pDevMode, nullptr);
}

TEST_F(SpoolerInfo, PrintersOpenWithoutRegardToCase)
{
    Add("Büro Ä", "KORVA Q1");
    const struct {
        std::u16string name;
        bool bThere;
    } aNames[] = {{u"BÜRO ä", true}, {u"büro ä", true}, {u"Büro", false}, {u"", false}};
    for (auto [name, bThere] : aNames) {
        HANDLE hOther = hPrinter;
        EXPECT_EQ(OpenPrinterW(name.data(), &hOther, nullptr), bThere);
        if (bThere)
            EXPECT_TRUE(ClosePrinter(hOther));
        else
            EXPECT_EQ(GetLastError(), NO_SUCH_PRINTER);
    }
    EXPECT_FALSE(OpenPrinterA(nullptr, &hPrinter, nullptr));
}

TEST_F(SpoolerInfo, AHandleOutlivesItsMachineButNotItsPrinter)
{
    Add("Office", "KORVA Q1");
    const kvp::Machine first = machine;
    machine.strRoot += "/elsewhere";
    Apply();
    EXPECT_EQ(std::u16string(Read<PRINTER_INFO_2W>(GetPrinterW).pDriverName), u"KORVA Q1");
    machine = first;
    Apply();
    kvp::RemoveQueue("OFFICE");
    DWORD cb = 0;
    EXPECT_FALSE(GetPrinterW(hPrinter, 2, nullptr, 0, &cb));
    EXPECT_EQ(GetLastError(), NO_SUCH_PRINTER);
    EXPECT_EQ(SetPrinterDataW(hPrinter, u"Value", REG_BINARY, nullptr, 0), NO_SUCH_PRINTER);
}

// ---- printer data ---------------------------------------------------------------------------

TEST_F(SpoolerInfo, PrinterDataComesBackWithItsTypeAndSize)
{
    Add("Office", "KORVA Q1");
    BYTE abIn[] = {1, 2, 3, 4, 5}, abOut[8];
    DWORD dwType = 0, cb = 99;
    EXPECT_EQ(GetPrinterDataW(hPrinter, u"Value", &dwType, abOut, sizeof abOut, &cb), NO_SUCH_FILE);
    EXPECT_EQ(cb, 0u);
    EXPECT_EQ(SetPrinterDataW(hPrinter, u"Value", REG_BINARY, abIn, 5), ERROR_SUCCESS);
    EXPECT_EQ(GetPrinterDataW(hPrinter, u"Value", nullptr, abOut, 4, &cb), MORE_DATA);
    EXPECT_EQ(cb, 5u);
    EXPECT_EQ(GetPrinterDataW(hPrinter, u"VALUE", &dwType, abOut, 8, &cb), ERROR_SUCCESS);
    EXPECT_EQ(dwType, REG_BINARY);
    EXPECT_THAT(abOut, ::testing::ElementsAre(1, 2, 3, 4, 5, 0xAB, 0xAB, 0xAB));
    EXPECT_EQ(SetPrinterDataW(hPrinter, u"value", 1, abIn, 0), ERROR_SUCCESS); // replaced, empty
    EXPECT_EQ(GetPrinterDataW(hPrinter, u"Value", &dwType, nullptr, 0, &cb), ERROR_SUCCESS);
    EXPECT_EQ(dwType, 1u);
    EXPECT_EQ(cb, 0u);
    EXPECT_EQ(GetPrinterDataW(nullptr, u"Value", nullptr, abOut, 8, &cb), BAD_HANDLE);
    EXPECT_EQ(SetPrinterDataW(nullptr, u"Value", REG_BINARY, abIn, 5), BAD_HANDLE);
    EXPECT_EQ(SetPrinterDataW(hPrinter, u"Value", 1, nullptr, 5), ERROR_INVALID_PARAMETER);
}

TEST_F(SpoolerInfo, PrinterDataGoesWithItsPrinter)
{
    Add("Office", "KORVA Q1");
    BYTE b = 7;
    DWORD cb = 0;
    ASSERT_EQ(SetPrinterDataW(hPrinter, u"Value", REG_BINARY, &b, 1), ERROR_SUCCESS);
    kvp::RemoveQueue("Office");
    kvp::AddQueue("Office", "KORVA Q1");
    EXPECT_EQ(GetPrinterDataW(hPrinter, u"Value", nullptr, &b, 1, &cb), NO_SUCH_FILE);
}

} // namespace
