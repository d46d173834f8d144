// DrvDocumentProperties, DrvAdvancedDocumentProperties and PrinterProperties on a printer that
// opens, and DevQueryPrint.
#include <algorithm>
#include <cstring>

#include <gmock/gmock.h>

#include "tests/interface/fixture.h"
#include "tests/support/person.h"

namespace
{

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Properties : public InterfaceTest
{
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
        {"the size, whatever records are given", 0, true, true, 562, 0},
        {"the present settings", DM_COPY, false, true, 1, 1},
        {"an input record is merged without being called for", DM_COPY, true, true, 1, 7},
        {"an output record is filled without being called for", DM_MODIFY, true, true, 1, 7},
        {"nothing to merge", DM_COPY | DM_MODIFY, false, true, 1, 1},
        {"nowhere to copy, and none asked for", DM_MODIFY, true, false, 1, 0},
        {"a flag of no meaning", 0x100, true, true, 1, 7},
        {"copied to nowhere", DM_COPY, true, false, -1, 0},
        {"shown and copied to nowhere", DM_COPY | DM_PROMPT, false, false, -1, 0},
    };
    const DriverDevMode given = SevenCopies();
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        PlacedRecord in, out;
        *in.Get() = given;
        EXPECT_EQ(Document(row.out ? out.Get() : nullptr, row.in ? in.Get() : nullptr, row.dwFlags),
                  row.lResult);
        EXPECT_EQ(GetLastError() == ERROR_INVALID_PARAMETER, row.lResult == -1);
        EXPECT_TRUE(out.UntouchedFrom(row.copies ? KV_DEVMODESIZE : 0));
        EXPECT_TRUE(row.copies == 0 || out.Get()->dm.dmCopies == row.copies);
        EXPECT_EQ(in.Content(), BytesOf(given));
        EXPECT_THAT(BoxesShown(), IsEmpty());
    }
}

TEST_F(Properties, TheSizeIsToldOfAPrinterThatCannotBeRead)
{
    ASSERT_TRUE(driver.Load());
    EXPECT_EQ(Document(nullptr, nullptr, 0), 562);
    EXPECT_EQ(Advanced(nullptr, nullptr), 0) << "no output record, which is looked at first";
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
}

TEST_F(Properties, SettingsComeFromTheQueueElseFromTheModel)
{
    Start();
    const DriverDevMode defaults = Settings();
    EXPECT_EQ(kvp::ToUtf8(std::u16string(defaults.dm.dmDeviceName, 7)), std::string("Office\0", 7));
    kvp::SetQueueDefault("Office", BytesOf(SevenCopies()));
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
    Person person;
    for (const WORD cbExtra : {0, 373}) {
        SCOPED_TRACE(cbExtra);
        DriverDevMode given = SevenCopies();
        given.dm.dmDriverExtra = cbExtra;
        const size_t cb = KV_PUBLICSIZE + size_t{cbExtra};
        const auto in = std::make_unique<BYTE[]>(cb); // a sanitizer sees its end
        std::memcpy(in.get(), &given, cb);
        auto *lpIn = reinterpret_cast<DriverDevMode *>(in.get());
        DriverDevMode out{};
        EXPECT_EQ(Document(&out, lpIn, DM_COPY), 1);
        EXPECT_EQ(out.dm.dmCopies, 7);
        EXPECT_EQ(out.dm.dmDriverExtra, KV_PRIVATESIZE);
        PlacedRecord back;
        person.Will({"cancel"});
        EXPECT_EQ(Advanced(back.Get(), lpIn), 2);
        EXPECT_EQ(std::memcmp(back.Get(), lpIn, cb), 0);
        EXPECT_TRUE(back.UntouchedFrom(cb));
    }
}

// Whatever became of the sheet, the MW data is chosen anew: here from a .dat that is gone by then.
TEST_F(Properties, ASheetThatCannotBeShownLeavesTheOutput)
{
    Start();
    kvp::PutAbsentFile(std::string(DRIVER_DIR) + "KVUI.DLL");
    DriverDevMode in = SevenCopies();
    in.dm.dmCopies = 100; // more than is taken
    PlacedRecord out;
    EXPECT_EQ(Document(out.Get(), &in, DM_COPY | DM_PROMPT), -1);
    EXPECT_EQ(Advanced(out.Get(), nullptr), -1);
    EXPECT_FALSE(driver.PrinterProperties(nullptr, hPrinter));
    EXPECT_TRUE(out.Untouched());
    EXPECT_EQ(Advanced(out.Get(), &in), -1);
    EXPECT_EQ(out.Content(), BytesOf(in)) << "the bytes come back, not the settings";
    EXPECT_TRUE(out.UntouchedFrom(KV_DEVMODESIZE));
    const std::string missing = "Dlg DLL Message: File not found : C:\\winnt35\\system32\\spool\\"
                                "drivers\\w32x86\\1\\KVUI.DLL";
    const std::vector<std::string> boxes = BoxesShown();
    EXPECT_EQ(boxes.size(), 4u);
    EXPECT_THAT(boxes, Each(::testing::StrCaseEq(missing)));

    kvp::SetBoxHandler([this](const kvp::Box &box) {
        kvp::PutAbsentFile(std::string(WINDOWS_DIR) + "KVA.dat");
        aBoxes.push_back(box);
        return 1;
    });
    EXPECT_EQ(Document(out.Get(), nullptr, DM_COPY | DM_PROMPT), -1);
    EXPECT_THAT(BoxesShown(), ElementsAre(::testing::StrCaseEq(missing),
                                          "Dlg DLL Message: File not found : KVA.dat"));
}

// ---- the printer as a whole -------------------------------------------------------------------

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
        int copies; // of what is stored then
    } aRows[] = {
        {"none", {}, 1},
        {"another driver version", BytesOf(older), 1},
        {"another size", tooLong, 1},
        {"a valid one", BytesOf(ours), 7},
    };
    kvp::SetQueueDefault("Office", BytesOf(ours)); // not what is stored: that is the model's own
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        if (!row.stored.empty())
            StoreWith(hPrinter, row.stored);
        EXPECT_FALSE(driver.PrinterProperties(nullptr, hPrinter));
        const Bytes now = StoredWith(hPrinter);
        ASSERT_EQ(now.size(), 562u);
        EXPECT_EQ(now[86], row.copies);
        EXPECT_EQ(now[66] + 256 * now[67], 859);
        EXPECT_EQ(now[0], 'O') << "the printer's name";
    }
}

// Joined from its texts, one of which is missing. The stored record names another model.
TEST_F(Properties, TheMessageIsThatOfThePrintersOwnModel)
{
    InstallModelTable({{9,
                        {MakeModelRecord("KORVA A", "KVA", "KVUI"),
                         MakeModelRecord("KORVA B", "KVB", "OTHERUI")}}});
    Start();
    DriverDevMode stored = Settings();
    stored.wszModelName[6] = u'B';
    StoreWith(hPrinter, BytesOf(stored));
    EXPECT_FALSE(driver.PrinterProperties(nullptr, hPrinter));
    ASSERT_EQ(aBoxes.size(), 1u);
    EXPECT_TRUE(aBoxes[0].uType == MB_ICONEXCLAMATION && !aBoxes[0].bOwned);
    EXPECT_THAT(BoxesShown(), ElementsAre("KORVA A: Use the document settings\nto change paper and "
                                          "ink.\nFourth.\nLast."));
    EXPECT_EQ(StoredWith(hPrinter), BytesOf(stored));
}

TEST_F(Properties, EveryJobIsAccepted)
{
    ASSERT_TRUE(driver.Load());
    DWORD dwId = 77;
    EXPECT_EQ(driver.DevQueryPrint(nullptr, nullptr, &dwId), TRUE);
    EXPECT_EQ(dwId, 0u);
    EXPECT_EQ(driver.DevQueryPrint(nullptr, nullptr, nullptr), TRUE);
}

} // namespace
