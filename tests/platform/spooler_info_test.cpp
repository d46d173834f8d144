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
using ::testing::ElementsAre;

HANDLE OpenByName(std::u16string name)
{
    HANDLE hPrinter = nullptr;
    return OpenPrinterW(name.data(), &hPrinter, nullptr) ? hPrinter : nullptr;
}

// A machine with one printer, opened.
class SpoolerInfo : public MachineTest
{
  protected:
    SpoolerInfo()
    {
        kvp::AddQueue("Büro Ä", "KORVA Q1", "\\\\alpha");
        hPrinter = OpenByName(u"BÜRO ä");
    }
    ~SpoolerInfo() override { ClosePrinter(hPrinter); }

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
    // Where it lies in the buffer last read; too large when not wholly inside.
    size_t PlaceOf(const void *p, size_t cb) const
    {
        const auto at = static_cast<size_t>(static_cast<const uint8_t *>(p) - bytes.data());
        return at + cb <= bytes.size() ? at : SIZE_MAX;
    }

    HANDLE hPrinter;
    Bytes bytes;
};

using Reader = BOOL (*)(HANDLE, DWORD, LPBYTE, DWORD, LPDWORD);
const struct {
    const char *why;
    Reader read;
    DWORD dwLevel;
} aReaders[] = {
    {"printer, wide", GetPrinterW, 2},
    {"printer, ANSI", GetPrinterA, 2},
    {"driver",
     [](HANDLE h, DWORD level, LPBYTE p, DWORD cb, LPDWORD need) {
         return GetPrinterDriverW(h, u"windows nt X86", level, p, cb, need);
     },
     2},
    {"driver directory",
     [](HANDLE, DWORD level, LPBYTE p, DWORD cb, LPDWORD need) {
         return GetPrinterDriverDirectoryA("\\\\alpha", nullptr, level, p, cb, need);
     },
     1},
};

void Refused(BOOL bResult, DWORD dwError)
{
    EXPECT_EQ(std::pair(bResult, GetLastError()), std::pair(FALSE, dwError));
}

TEST_F(SpoolerInfo, ReadersAskForTheirSizeAndUseNoMore)
{
    for (const auto &row : aReaders) {
        SCOPED_TRACE(row.why);
        DWORD cb = 0, cbAgain = 0;
        Refused(row.read(hPrinter, row.dwLevel, nullptr, 0, &cb), TOO_SMALL);
        Bytes buffer(cb + 16, 0x55);
        Refused(row.read(hPrinter, row.dwLevel, buffer.data(), cb - 1, &cbAgain), TOO_SMALL);
        EXPECT_EQ(cbAgain, cb);
        EXPECT_THAT(buffer, Each(0x55));
        EXPECT_TRUE(row.read(hPrinter, row.dwLevel, buffer.data(), cb, &cbAgain));
        EXPECT_THAT(Bytes(buffer.begin() + cb, buffer.end()), Each(0x55));
        EXPECT_TRUE(row.read(hPrinter, row.dwLevel, buffer.data(), cb + 16, &cbAgain));
        EXPECT_THAT(Bytes(buffer.begin() + cb, buffer.end()), Each(0xAB)); // hostile rest
        Refused(row.read(hPrinter, row.dwLevel + 1, nullptr, 0, &cb), BAD_LEVEL);
        EXPECT_EQ(cb, 0u);
        if (row.dwLevel == 2) // the others ask for no printer
            Refused(row.read(INVALID_HANDLE_VALUE, row.dwLevel, nullptr, 0, &cb), BAD_HANDLE);
    }
    DWORD cb = 0;
    Refused(GetPrinterDriverW(hPrinter, u"Windows 4.0", 2, nullptr, 0, &cb), BAD_ENVIRONMENT);
    char szDirectory[MAX_PATH];
    GetPrinterDriverDirectoryA(nullptr, "", 1, reinterpret_cast<LPBYTE>(szDirectory), MAX_PATH,
                               &cb);
    EXPECT_EQ(std::string(szDirectory) + "\\", DRIVER_DIR);
}

TEST_F(SpoolerInfo, APrintersTextsLieAlignedInTheBuffer)
{
    const auto info = Read<PRINTER_INFO_2W>(GetPrinterW);
    const std::u16string aWanted[] = {u"\\\\alpha", u"Büro Ä", u"", u"LPT1:", u"KORVA Q1"};
    const LPWSTR aTexts[] = {info.pServerName, info.pPrinterName, info.pShareName, info.pPortName,
                             info.pDriverName};
    for (size_t i = 0; i < std::size(aWanted); ++i) {
        ASSERT_NE(PlaceOf(aTexts[i], 2 * aWanted[i].size() + 2), SIZE_MAX);
        EXPECT_EQ(PlaceOf(aTexts[i], 0) % 2, 0u);
        EXPECT_EQ(aTexts[i], aWanted[i]);
    }
    EXPECT_EQ(info.pDevMode, nullptr);

    machine.uAnsiCodePage = 932;
    Apply();
    kvp::AddQueue("プリンタ", "KORVA Q1");
    std::string name = "\x83\x76\x83\x8A\x83\x93\x83\x5E";
    ClosePrinter(hPrinter);
    EXPECT_TRUE(OpenPrinterA(name.data(), &hPrinter, nullptr));
    const auto ansi = Read<PRINTER_INFO_2A>(GetPrinterA);
    EXPECT_EQ(ansi.pPrinterName, name);
    EXPECT_EQ(ansi.pServerName, nullptr);
}

// A reader that trusts a record's own sizes must not leave the buffer.
const struct {
    const char *why;
    size_t cbKept;
    WORD wSize, wExtra;
    size_t cbReadable;
} aRecords[] = {
    {"whole, of odd size", 563, 188, 375, 563},
    {"ends before its private part", 188, 188, 374, 562},
    {"says it is larger than it is", 562, 0xFFFF, 0xFFFF, 131070},
    {"too short for any field", 3, 0, 0, 188},
};

TEST_F(SpoolerInfo, ADefaultRecordHasRoomForAllThatItSaysOfItself)
{
    for (const auto &row : aRecords) {
        SCOPED_TRACE(row.why);
        Bytes record(600, 0x5A);
        std::memcpy(&record[68], &row.wSize, 2);
        std::memcpy(&record[70], &row.wExtra, 2);
        record.resize(row.cbKept);
        kvp::SetQueueDefault("Büro Ä", record);
        const auto info = Read<PRINTER_INFO_2W>(GetPrinterW);
        ASSERT_NE(PlaceOf(info.pDevMode, row.cbReadable), SIZE_MAX);
        EXPECT_EQ(PlaceOf(info.pDevMode, 0) % 8, 0u);
        EXPECT_EQ(PlaceOf(info.pPrinterName, 0) % 2, 0u);
        EXPECT_EQ(std::memcmp(info.pDevMode, record.data(), record.size()), 0);
    }
    kvp::SetQueueDefault("Büro Ä", {});
    EXPECT_EQ(Read<PRINTER_INFO_2W>(GetPrinterW).pDevMode, nullptr);
}

TEST_F(SpoolerInfo, AHandleOutlivesItsMachineButNotItsPrinter)
{
    EXPECT_EQ(OpenByName(u"Büro"), nullptr);
    EXPECT_EQ(GetLastError(), NO_SUCH_PRINTER);
    EXPECT_FALSE(OpenPrinterA(nullptr, &hPrinter, nullptr));
    HANDLE hClosed = OpenByName(u"büro ä");
    EXPECT_TRUE(ClosePrinter(hClosed));
    EXPECT_FALSE(ClosePrinter(hClosed));
    const kvp::Machine first = machine;
    machine.strRoot += "/elsewhere";
    Apply();
    EXPECT_EQ(std::u16string(Read<PRINTER_INFO_2W>(GetPrinterW).pDriverName), u"KORVA Q1");
    machine = first;
    Apply();
    kvp::RemoveQueue("BÜRO Ä");
    DWORD cb = 0;
    Refused(GetPrinterW(hPrinter, 2, nullptr, 0, &cb), NO_SUCH_PRINTER);
    EXPECT_EQ(SetPrinterDataW(hPrinter, u"Value", REG_BINARY, nullptr, 0), NO_SUCH_PRINTER);
}

TEST_F(SpoolerInfo, PrinterDataComesBackWithItsTypeAndSizeAndGoesWithItsPrinter)
{
    BYTE abIn[] = {1, 2, 3, 4, 5}, abOut[8];
    DWORD dwType = 0, cb = 99;
    EXPECT_EQ(GetPrinterDataW(hPrinter, u"Value", &dwType, abOut, sizeof abOut, &cb), NO_SUCH_FILE);
    EXPECT_EQ(cb, 0u);
    EXPECT_EQ(SetPrinterDataW(hPrinter, u"Value", REG_BINARY, abIn, 5), ERROR_SUCCESS);
    EXPECT_EQ(GetPrinterDataW(hPrinter, u"Value", nullptr, abOut, 4, &cb), MORE_DATA);
    EXPECT_EQ(cb, 5u);
    EXPECT_EQ(GetPrinterDataW(hPrinter, u"VALUE", &dwType, abOut, 8, &cb), ERROR_SUCCESS);
    EXPECT_EQ(dwType, REG_BINARY);
    EXPECT_THAT(abOut, ElementsAre(1, 2, 3, 4, 5, 0xAB, 0xAB, 0xAB));
    EXPECT_EQ(SetPrinterDataW(hPrinter, u"value", 1, abIn, 0), ERROR_SUCCESS); // replaced, empty
    EXPECT_EQ(GetPrinterDataW(hPrinter, u"Value", &dwType, nullptr, 0, &cb), ERROR_SUCCESS);
    EXPECT_EQ(std::pair(dwType, cb), std::pair(1u, 0u));
    EXPECT_EQ(GetPrinterDataW(nullptr, u"Value", nullptr, abOut, 8, &cb), BAD_HANDLE);
    EXPECT_EQ(SetPrinterDataW(nullptr, u"Value", REG_BINARY, abIn, 5), BAD_HANDLE);
    EXPECT_EQ(SetPrinterDataW(hPrinter, u"Value", 1, nullptr, 5), ERROR_INVALID_PARAMETER);
    kvp::RemoveQueue("Büro Ä");
    kvp::AddQueue("Büro Ä", "KORVA Q1");
    EXPECT_EQ(GetPrinterDataW(hPrinter, u"Value", nullptr, abOut, 8, &cb), NO_SUCH_FILE);
}

} // namespace
