// DrvDocumentProperties, DrvAdvancedDocumentProperties and PrinterProperties on a printer that
// opens, with and without the sheet, and DevQueryPrint.
#include <cstring>

#include <gmock/gmock.h>

#include "resources/main_ids.h"
#include "resources/paper_ids.h"
#include "resources/utility_ids.h"
#include "tests/interface/fixture.h"
#include "tests/support/person.h"

namespace
{

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
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
        {"the queue's settings", DM_COPY, false, true, 1, 5},
        {"an input record is merged without being called for", DM_COPY, true, true, 1, 7},
        {"an output record is filled without being called for", DM_MODIFY, true, true, 1, 7},
        {"nothing to merge", DM_COPY | DM_MODIFY, false, true, 1, 5},
        {"nowhere to copy, and none asked for", DM_MODIFY, true, false, 1, 0},
        {"a flag of no meaning", 0x100, true, true, 1, 7},
        {"copied to nowhere", DM_COPY, true, false, -1, 0},
        {"shown and copied to nowhere", DM_COPY | DM_PROMPT, false, false, -1, 0},
    };
    const DriverDevMode given = SevenCopies();
    DriverDevMode queued = given;
    queued.dm.dmCopies = 5;
    kvp::SetQueueDefault("Office", BytesOf(queued));
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
    }
    EXPECT_EQ(kvp::QueueDefault("Office"), BytesOf(queued));
    EXPECT_THAT(BoxesShown(), IsEmpty());
    DriverDevMode both = given;
    EXPECT_EQ(Document(&both, &both, DM_COPY), 1) << "one record for both";
    EXPECT_EQ(both.dm.dmFields, 0x30Fu);
}

TEST_F(Properties, TheSizeIsToldOfAPrinterThatCannotBeRead)
{
    ASSERT_TRUE(driver.Load());
    EXPECT_EQ(Document(nullptr, nullptr, 0), 562);
    EXPECT_EQ(Advanced(nullptr, nullptr), 0) << "no output record, which is looked at first";
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
}

// Records of other drivers end where they say; nothing behind their end is looked at.
TEST_F(Properties, AShortInputRecordIsReadToItsEndOnly)
{
    Start();
    DriverDevMode given = SevenCopies();
    given.dm.dmDriverExtra = 100;
    const size_t cb = KV_PUBLICSIZE + 100;
    const auto in = std::make_unique<BYTE[]>(cb); // a sanitizer sees its end
    std::memcpy(in.get(), &given, cb);
    auto *lpIn = reinterpret_cast<DriverDevMode *>(in.get());
    DriverDevMode out{};
    EXPECT_EQ(Document(&out, lpIn, DM_COPY), 1);
    EXPECT_EQ(out.dm.dmCopies, 7);
    PlacedRecord back;
    Person person;
    person.Will({"cancel"});
    EXPECT_EQ(Advanced(back.Get(), lpIn), 2);
    EXPECT_EQ(std::memcmp(back.Get(), lpIn, cb), 0);
    EXPECT_TRUE(back.UntouchedFrom(cb));
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

// ---- the sheet --------------------------------------------------------------------------------

class Sheet : public InterfaceTest
{
  protected:
    static std::function<void()> SeesPage(int id)
    {
        return [id] { EXPECT_EQ(GetDlgCtrlID(kvp::TopWindow()), id); };
    }

    Person person;
};

// The caller's record has seven copies, and a paper whose field is not meant; the person turns
// it to landscape.
TEST_F(Sheet, TheWayOutDecidesWhatTheCallerGets)
{
    Start();
    enum Output { UNTOUCHED, MERGED, EDITED, INPUT };
    constexpr DWORD ADVANCED = 0; // through the entry point that has no flags
    const struct {
        const char *why;
        DWORD dwFlags;
        bool in, out;
        const char *way;
        LONG lResult;
        Output output;
    } aRows[] = {
        {"OK, not asked to copy", DM_PROMPT, true, true, "ok", 1, EDITED},
        {"Cancel gives what was merged", DM_PROMPT | DM_COPY, true, true, "cancel", 2, MERGED},
        {"nowhere to write", DM_PROMPT, true, false, "ok", 1, UNTOUCHED},
        {"advanced, OK", ADVANCED, true, true, "ok", 1, EDITED},
        {"advanced, Cancel gives the input back", ADVANCED, true, true, "cancel", 2, INPUT},
        {"advanced, nothing to give back", ADVANCED, false, true, "cancel", 2, UNTOUCHED},
    };
    DriverDevMode given = SevenCopies();
    given.dm.dmPaperSize = 77;
    const std::string strLandscape = "click " + std::to_string(IDC_PAPER_LANDSCAPE);
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        PlacedRecord in, out;
        *in.Get() = given;
        DriverDevMode *lpIn = row.in ? in.Get() : nullptr, *lpOut = row.out ? out.Get() : nullptr;
        person.Will({"page \"Paper\"", strLandscape, row.way});
        EXPECT_EQ(row.dwFlags == ADVANCED ? Advanced(lpOut, lpIn)
                                          : Document(lpOut, lpIn, row.dwFlags),
                  row.lResult);
        person.ExpectDone();
        EXPECT_TRUE(out.UntouchedFrom(row.output == UNTOUCHED ? 0 : KV_DEVMODESIZE));
        EXPECT_EQ(in.Content(), BytesOf(given));
        EXPECT_EQ(out.Content() == in.Content(), row.output == INPUT);
        if (row.output == MERGED || row.output == EDITED) {
            const DriverDevMode got = *out.Get();
            EXPECT_TRUE(got.dm.dmCopies == 7 && got.dm.dmPaperSize == 9);
            EXPECT_EQ(got.dm.dmOrientation, row.output == MERGED ? 1 : 2);
        }
    }
    EXPECT_THAT(BoxesShown(), IsEmpty());
}

TEST_F(Sheet, OpensOnTheMainPageAndTurnsToTheOthers)
{
    Start();
    DriverDevMode out;
    person.Will({SeesPage(IDD_MAIN), "page \"Utility\"", SeesPage(IDD_UTILITY), "page \"Paper\"",
                 SeesPage(IDD_PAPER), "page \"Main\"", SeesPage(IDD_MAIN), "ok"});
    EXPECT_EQ(Document(&out, nullptr, DM_PROMPT), 1);
    person.ExpectDone();
    person.Will({});
    EXPECT_EQ(Document(&out, nullptr, DM_PROMPT), 2) << "left alone, it is cancelled";
    EXPECT_THAT(kvp::CurrentPlay().strWhy, HasSubstr("\"Office\"")) << "the printer's name on it";
}

// Calls from behind an open sheet, as a maintenance function may make: a second sheet is refused,
// and a query, which takes the tables from the pages, leaves them usable.
TEST_F(Sheet, CallsWhileItIsOpenDoNoHarm)
{
    Start();
    PlacedRecord second;
    const auto calls = [&] {
        EXPECT_EQ(Document(second.Get(), nullptr, DM_COPY | DM_PROMPT), -1);
        EXPECT_EQ(Advanced(second.Get(), nullptr), -1);
        EXPECT_TRUE(second.Untouched());
        for (const WORD wQuery : {DC_PAPERS, DC_PAPERNAMES})
            EXPECT_EQ(
                driver.DrvDeviceCapabilities(hPrinter, nullptr, wQuery, second.Get(), nullptr), 3u);
    };
    DriverDevMode out;
    person.Will({"page \"Paper\"", "page \"Main\"", calls,
                 "click " + std::to_string(IDC_MAIN_BLACK), "page \"Paper\"", "page \"Utility\"",
                 SeesPage(IDD_UTILITY), "ok"});
    EXPECT_EQ(Document(&out, nullptr, DM_PROMPT), 1);
    person.ExpectDone();
    person.Will({"ok"});
    EXPECT_EQ(Advanced(&out, nullptr), 1) << "the next one is shown";
}

// ---- the printer as a whole -------------------------------------------------------------------

TEST_F(Properties, APrinterWithoutValidRecordGetsTheDefaults)
{
    Start();
    const DriverDevMode ours = SevenCopies(), defaults = Settings();
    DriverDevMode older = ours;
    older.dm.dmDriverVersion = 858;
    kvp::SetQueueDefault("Office", BytesOf(ours)); // which is not what is stored
    for (const Bytes &stored : {Bytes(), BytesOf(older), BytesOf(ours)}) {
        if (!stored.empty())
            StoreWith(hPrinter, stored);
        EXPECT_FALSE(driver.PrinterProperties(nullptr, hPrinter));
        EXPECT_EQ(StoredWith(hPrinter), stored == BytesOf(ours) ? stored : BytesOf(defaults));
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
