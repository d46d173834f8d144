// DrvDocumentProperties, DrvAdvancedDocumentProperties and PrinterProperties on a printer that
// opens, and DevQueryPrint.
#include <cstring>

#include <gmock/gmock.h>

#include "tests/interface/fixture.h"
#include "tests/support/person.h"

namespace
{

using ::testing::ElementsAre;
using ::testing::IsEmpty;

Bytes BytesOf(const DriverDevMode &dm)
{
    const auto *from = reinterpret_cast<const BYTE *>(&dm);
    return Bytes(from, from + sizeof dm);
}

class Properties : public InterfaceTest
{
  protected:
    // The last error is one that no entry point sets, so that a test sees who sets one.
    LONG Document(DriverDevMode *lpOut, DriverDevMode *lpIn, DWORD dwFlags)
    {
        SetLastError(1);
        return driver.DrvDocumentProperties(nullptr, hPrinter, nullptr, lpOut, lpIn, dwFlags);
    }

    Person person;
};

TEST_F(Properties, FlagsSayWhatIsAskedAndRecordsWhatIsDone)
{
    Start();
    const struct {
        const char *why;
        DWORD dwFlags;
        bool in, out;
        LONG lResult;
        int copies; // in the output record; 0: untouched
    } aRows[] = {
        {"the size", 0, false, false, 562, 0},
        {"the size, whatever records are given", 0, true, true, 562, 0},
        {"the present settings", DM_COPY, false, true, 1, 1},
        {"an input record is merged without being called for", DM_COPY, true, true, 1, 7},
        {"merged and copied", DM_COPY | DM_MODIFY, true, true, 1, 7},
        {"an output record is filled without being called for", DM_MODIFY, true, true, 1, 7},
        {"nothing to merge", DM_COPY | DM_MODIFY, false, true, 1, 1},
        {"nowhere to copy, and none asked for", DM_MODIFY, true, false, 1, 0},
        {"a flag of no meaning", 0x100, true, true, 1, 7},
        {"copied to nowhere", DM_COPY, true, false, -1, 0},
        {"shown and copied to nowhere", DM_COPY | DM_PROMPT, false, false, -1, 0},
    };
    DriverDevMode given = SevenCopies();
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        PlacedRecord in, out;
        in.Put(given);
        EXPECT_EQ(Document(row.out ? out.Get() : nullptr, row.in ? in.Get() : nullptr, row.dwFlags),
                  row.lResult);
        EXPECT_EQ(GetLastError() == ERROR_INVALID_PARAMETER, row.lResult == -1);
        EXPECT_EQ(out.Untouched(), row.copies == 0);
        EXPECT_TRUE(row.copies == 0 || out.Get()->dm.dmCopies == row.copies);
        EXPECT_TRUE(out.GuardsHold());
        EXPECT_EQ(in.Content(), BytesOf(given));
        EXPECT_THAT(BoxesShown(), IsEmpty());
    }
}

TEST_F(Properties, TheSizeIsToldOfAPrinterThatCannotBeRead)
{
    ASSERT_TRUE(driver.Load());
    EXPECT_EQ(Document(nullptr, nullptr, 0), 562);
}

TEST_F(Properties, SettingsComeFromTheQueueElseFromTheModel)
{
    Start();
    const DriverDevMode defaults = Settings();
    EXPECT_EQ(kvp::ToUtf8(std::u16string(defaults.dm.dmDeviceName, 7)), std::string("Office\0", 7));
    EXPECT_EQ(kvp::ToUtf8(std::u16string(defaults.wszModelName, 8)), std::string("KORVA A\0", 8));
    EXPECT_EQ(defaults.dm.dmPaperSize, 9);
    kvp::SetQueueDefault("Office", BytesOf(SevenCopies()));
    EXPECT_EQ(Settings().dm.dmCopies, 7);
    DriverDevMode again = defaults;
    again.dm.dmFields = 0;
    EXPECT_EQ(Document(&again, &again, DM_COPY), 1) << "one record for both";
    EXPECT_EQ(again.dm.dmCopies, 7) << "a record without fields changes no public one";
    kvp::SetQueueDefault("Office", {});
    EXPECT_EQ(BytesOf(Settings()), BytesOf(defaults)) << "nothing was kept";
}

// Records of other drivers end where they say; nothing behind their end is looked at.
TEST_F(Properties, AShortInputRecordIsReadToItsEndOnly)
{
    Start();
    for (const WORD cbExtra : {0, 4, 373}) {
        SCOPED_TRACE(cbExtra);
        DriverDevMode given = SevenCopies();
        given.dm.dmDriverExtra = cbExtra;
        const Bytes exact = BytesOf(given);
        const size_t cb = KV_PUBLICSIZE + size_t{cbExtra};
        const auto in = std::make_unique<BYTE[]>(cb); // a sanitizer sees its end
        std::memcpy(in.get(), exact.data(), cb);
        auto *lpIn = reinterpret_cast<DriverDevMode *>(in.get());
        DriverDevMode out{};
        EXPECT_EQ(Document(&out, lpIn, DM_COPY), 1);
        EXPECT_EQ(out.dm.dmCopies, 7);
        EXPECT_EQ(out.dm.dmDriverExtra, KV_PRIVATESIZE);
        PlacedRecord advanced;
        person.Will({"cancel"});
        EXPECT_EQ(
            driver.DrvAdvancedDocumentProperties(nullptr, hPrinter, nullptr, advanced.Get(), lpIn),
            2);
        person.ExpectDone();
        const Bytes got = advanced.Content();
        EXPECT_EQ(Bytes(got.begin(), got.begin() + static_cast<ptrdiff_t>(cb)),
                  Bytes(exact.begin(), exact.begin() + static_cast<ptrdiff_t>(cb)));
        EXPECT_EQ(got[cb], 0xCD);
    }
}

TEST_F(Properties, ASheetThatCannotBeShownLeavesTheOutput)
{
    Start();
    kvp::PutAbsentFile(std::string(DRIVER_DIR) + "KVUI.DLL");
    DriverDevMode in = SevenCopies();
    PlacedRecord out;
    EXPECT_EQ(Document(out.Get(), &in, DM_COPY | DM_PROMPT), -1);
    EXPECT_TRUE(out.Untouched());
    EXPECT_EQ(driver.DrvAdvancedDocumentProperties(nullptr, hPrinter, nullptr, out.Get(), nullptr),
              -1);
    EXPECT_TRUE(out.Untouched());
    in.dm.dmCopies = 100; // more than is taken: the bytes come back, not the settings
    EXPECT_EQ(driver.DrvAdvancedDocumentProperties(nullptr, hPrinter, nullptr, out.Get(), &in), -1);
    EXPECT_EQ(out.Content(), BytesOf(in));
    EXPECT_TRUE(out.GuardsHold());
    EXPECT_EQ(BoxesShown().size(), 3u) << "each says what is missing";
    EXPECT_EQ(kvp::CurrentlyHeld().nLibraries, 1u) << "the driver itself";
}

TEST_F(Properties, WithoutAnOutputRecordAdvancedAnswersZero)
{
    ASSERT_TRUE(driver.Load());
    SetLastError(1);
    EXPECT_EQ(driver.DrvAdvancedDocumentProperties(nullptr, nullptr, nullptr, nullptr, nullptr), 0);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
}

TEST_F(Properties, AMissingUILibraryIsNamed)
{
    Start();
    kvp::PutAbsentFile(std::string(DRIVER_DIR) + "KVUI.DLL");
    PlacedRecord out;
    const std::string expected = "Dlg DLL Message: File not found : C:\\winnt35\\system32\\spool\\"
                                 "drivers\\w32x86\\1\\KVUI.DLL";
    EXPECT_EQ(Document(out.Get(), nullptr, DM_COPY | DM_PROMPT), -1);
    EXPECT_THAT(BoxesShown(), ElementsAre(::testing::StrCaseEq(expected)));
    driver.DrvAdvancedDocumentProperties(nullptr, hPrinter, nullptr, out.Get(), nullptr);
    EXPECT_THAT(BoxesShown(), ElementsAre(::testing::StrCaseEq(expected)));
    EXPECT_FALSE(driver.PrinterProperties(nullptr, hPrinter));
    EXPECT_THAT(BoxesShown(), ElementsAre(::testing::StrCaseEq(expected)));
    EXPECT_TRUE(out.Untouched());
}

// The sheet's own message box lets its caller in again: the blocks are taken, and it says so.
TEST_F(Properties, ASecondSheetIsRefusedWhileOneIsOpen)
{
    Start();
    kvp::PutAbsentFile(std::string(DRIVER_DIR) + "KVUI.DLL");
    std::vector<LONG> results;
    int nBoxes = 0;
    kvp::SetBoxHandler([&](const kvp::Box &) {
        DriverDevMode out;
        if (++nBoxes == 1)
            results.push_back(Document(&out, nullptr, DM_COPY | DM_PROMPT));
        return 1;
    });
    DriverDevMode out;
    results.push_back(Document(&out, nullptr, DM_COPY | DM_PROMPT));
    EXPECT_THAT(results, ElementsAre(-1, -1));
    EXPECT_EQ(nBoxes, 1) << "the second one was not even begun";
    results.push_back(Document(&out, nullptr, DM_COPY | DM_PROMPT));
    EXPECT_EQ(nBoxes, 2) << "the next one is";
}

// Whatever became of the sheet, the MW data is chosen anew: from a .dat that is gone by then.
TEST_F(Properties, AfterASheetTheMWDataIsReadAgain)
{
    Start();
    kvp::PutAbsentFile(std::string(DRIVER_DIR) + "KVUI.DLL");
    std::vector<std::string> texts;
    kvp::SetBoxHandler([&](const kvp::Box &box) {
        kvp::PutAbsentFile(std::string(WINDOWS_DIR) + "KVA.dat");
        texts.push_back(box.strText);
        return 1;
    });
    DriverDevMode out;
    EXPECT_EQ(Document(&out, nullptr, DM_COPY | DM_PROMPT), -1);
    EXPECT_THAT(texts, ElementsAre(::testing::EndsWith(".DLL"), "File not found : KVA.dat"));
}

// ---- the printer as a whole -------------------------------------------------------------------

Bytes StoredWith(HANDLE hPrinter)
{
    Bytes value(2000);
    DWORD dwType = 0, cb = 0;
    const DWORD dwError = GetPrinterDataW(hPrinter, u"KVDeviceMode", &dwType, value.data(),
                                          static_cast<DWORD>(value.size()), &cb);
    value.resize(dwError == ERROR_SUCCESS ? cb : 0);
    return value;
}

TEST_F(Properties, APrinterWithoutValidRecordGetsTheDefaults)
{
    Start();
    DriverDevMode ours = SevenCopies(), older = ours;
    older.dm.dmDriverVersion = 858;
    Bytes tooLong = BytesOf(ours);
    tooLong.push_back(0);
    const struct {
        const char *why;
        Bytes stored;
        bool replaced;
    } aRows[] = {
        {"none", {}, true},
        {"another driver version", BytesOf(older), true},
        {"another size", tooLong, true},
        {"a valid one", BytesOf(ours), false},
    };
    kvp::SetQueueDefault("Office", BytesOf(ours)); // not what is stored: that is the model's own
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        if (!row.stored.empty()) {
            Bytes value = row.stored;
            SetPrinterDataW(hPrinter, u"KVDeviceMode", REG_BINARY, value.data(),
                            static_cast<DWORD>(value.size()));
        }
        EXPECT_FALSE(driver.PrinterProperties(nullptr, hPrinter));
        const Bytes now = StoredWith(hPrinter);
        ASSERT_EQ(now.size(), 562u);
        EXPECT_EQ(now[86], row.replaced ? 1 : 7) << "copies";
        EXPECT_EQ(now[66] + 256 * now[67], 859);
        EXPECT_EQ(now[0], 'O') << "the printer's name";
    }
}

TEST_F(Properties, TheModelsMessageIsJoinedFromItsTexts)
{
    Start();
    EXPECT_FALSE(driver.PrinterProperties(nullptr, hPrinter));
    ASSERT_EQ(aBoxes.size(), 1u);
    EXPECT_EQ(aBoxes[0].uType, MB_ICONEXCLAMATION);
    EXPECT_FALSE(aBoxes[0].bOwned);
    EXPECT_THAT(BoxesShown(), ElementsAre("KORVA A: Use the document settings\nto change paper and "
                                          "ink.\nFourth.\nLast."));
    EXPECT_EQ(kvp::CurrentlyHeld().nLibraries, 1u) << "the driver itself";
    EXPECT_EQ(kvp::CurrentlyHeld().nBlocks, 0u);
}

// The stored record names another model, which is not even installed.
TEST_F(Properties, TheMessageIsThatOfThePrintersOwnModel)
{
    InstallModelTable({{9,
                        {MakeModelRecord("KORVA A", "KVA", "KVUI"),
                         MakeModelRecord("KORVA B", "KVB", "OTHERUI")}}});
    Start();
    DriverDevMode stored = Settings();
    stored.wszModelName[6] = u'B';
    Bytes value = BytesOf(stored);
    SetPrinterDataW(hPrinter, u"KVDeviceMode", REG_BINARY, value.data(), KV_DEVMODESIZE);
    EXPECT_FALSE(driver.PrinterProperties(nullptr, hPrinter));
    ASSERT_EQ(aBoxes.size(), 1u);
    EXPECT_EQ(aBoxes[0].strCaption, "KORVA A");
    EXPECT_EQ(StoredWith(hPrinter), value);
}

TEST_F(Properties, EveryJobIsAccepted)
{
    Start();
    DriverDevMode garbage;
    std::memset(&garbage, 0xFF, sizeof garbage);
    for (HANDLE h : {hPrinter, HANDLE(nullptr)}) {
        DWORD dwId = 77;
        EXPECT_EQ(driver.DevQueryPrint(h, &garbage, &dwId), TRUE);
        EXPECT_EQ(dwId, 0u);
    }
}

} // namespace
