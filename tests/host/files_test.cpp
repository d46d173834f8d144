// Records in files, read and decoded, written and replaced; and what wrong usage is told.
#include <algorithm>
#include <cstring>
#include <filesystem>

#include <gmock/gmock.h>
#include <sys/stat.h>

#include "tests/host/host_process.h"

namespace
{

namespace fs = std::filesystem;
using nlohmann::json;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

// ---- decoding -------------------------------------------------------------------------------

DriverDevMode StrangeRecord()
{
    DriverDevMode record{};
    std::u16string_view(u"Büro 32 characters without an end").copy(record.dm.dmDeviceName, 32);
    record.dm.dmSpecVersion = KV_SPECVERSION;
    record.dm.dmDriverVersion = 858;
    record.dm.dmSize = KV_PUBLICSIZE;
    record.dm.dmDriverExtra = KV_PRIVATESIZE;
    record.dm.dmFields = KV_DM_PAPERSIZE | KV_DM_COPIES;
    record.dm.dmPaperSize = KV_PAPER_USER;
    record.dm.dmPaperWidth = -1;
    record.dm.dmFormName[0] = 0xD800; // half a pair
    record.dwModelTag = 0xFFFFFFFF;
    record.dwPairCount = 2;
    record.aPairs[1] = {7, 65535};
    record.Settings.sAdj[5] = -100;
    std::memcpy(record.Settings.szName, "sixteen letters!", 16);
    record.nPrintArea = 2;
    record.lMediaCode = -2;
    record.wMarginLeft = 60;
    record.adwMWData[7] = -3;
    std::memcpy(record.szTmplName, "a\x1b[2Jb", 6);
    return record;
}

TEST_F(HostTest, ARecordIsDecodedFieldByFieldForPrograms)
{
    WriteRecord("rec", StrangeRecord());
    const json record = Done({"show", Path("rec"), "--json"}).Json();
    const struct {
        const char *lpszPointer;
        json value;
    } aRows[] = {
        {"/dm/dmDeviceName", "Büro 32 characters without an en"},
        {"/dm/dmDriverVersion", 858},
        {"/dm/dmPaperWidth", -1},
        {"/dm/dmFormName", "\uFFFD"},
        {"/dwModelTag", 4294967295},
        {"/aPairs/1", {7, 65535}},
        {"/Settings/sAdj/5", -100},
        {"/Settings/szName", "sixteen letters!"},
        {"/nPrintArea", 2},
        {"/lMediaCode", -2},
        {"/wMarginLeft", 60},
        {"/adwMWData/7", -3},
        {"/szTmplName", "a\x1b[2Jb"},
    };
    for (const auto &row : aRows)
        EXPECT_EQ(record.at(json::json_pointer(row.lpszPointer)), row.value) << row.lpszPointer;
}

TEST_F(HostTest, ARecordIsDecodedInWordsForPeople)
{
    WriteRecord("rec", StrangeRecord());
    const std::string strText = Done({"show", Path("rec")}).strOut;
    for (const char *lpszLine : {
             "  dm.dmFields            0x00000102 (paper size, copies)\n",
             "  dm.dmPaperSize         256 (user-defined size)\n",
             "  dm.dmPaperWidth        -0.1 mm\n",
             "  aPairs                 0:0 7:65535\n",
             "  wMarginLeft            60/360 inch (4.2 mm)\n",
             "  nPrintArea             2 (centred)\n",
             "\nNot a record of this driver: dm.dmDriverVersion is 858, not 859\n",
         })
        EXPECT_THAT(strText, HasSubstr(lpszLine));
    EXPECT_THAT(strText, Not(HasSubstr("\x1b"))); // no text steers the terminal
}

TEST_F(HostTest, AnyBytesAreARecordToShow)
{
    for (const int nByte : {0x00, 0x80, 0xFF}) {
        Write("rec", std::string(sizeof(DriverDevMode), static_cast<char>(nByte)));
        EXPECT_TRUE(Done({"show", Path("rec"), "--json"}).Json().is_object());
        EXPECT_THAT(Done({"show", Path("rec")}).strOut, HasSubstr("Not a record of this driver"));
    }
}

TEST_F(HostTest, AHostileRecordIsMergedWithoutHarm)
{
    Done({"add-printer", "P", "--driver", LARGE});
    for (const int nByte : {0x00, 0x7F, 0x80, 0xFF}) {
        Write("rec", std::string(sizeof(DriverDevMode), static_cast<char>(nByte)));
        const json record = Settings("P", Path("rec"));
        EXPECT_EQ(record["dm"]["dmCopies"], 1);
        EXPECT_EQ(record["wszModelName"], LARGE);
        Done({"default", "-p", "P", "--in", Path("rec")});
        EXPECT_EQ(Settings("P")["wszModelName"], LARGE);
        Done({"default", "-p", "P", "--out", Path("back")});
        EXPECT_EQ(Content("back"), Content("rec"));
    }
}

// ---- writing --------------------------------------------------------------------------------

TEST_F(HostTest, OutReplacesAFileAndKeepsItsModeAndLinks)
{
    Done({"add-printer", "P", "--driver", LARGE});
    Write("old", std::string(1000, 'x'));
    chmod(Path("old").c_str(), 0640);
    fs::create_symlink(Path("old"), Path("link"));
    Done({"settings", "-p", "P", "--no-prompt", "--out", Path("link")});
    EXPECT_EQ(Record("old").dm.dmDriverVersion, KV_DRIVERVERSION);
    EXPECT_TRUE(fs::is_symlink(Path("link")));
    EXPECT_EQ(fs::status(Path("old")).permissions(), fs::perms(0640));
    // What is no file is not replaced by one.
    Done({"settings", "-p", "P", "--no-prompt", "--out", "/dev/null"});
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

TEST_F(HostTest, OutputThatCannotBeWrittenIsAFailure)
{
    Done({"add-printer", "P", "--driver", LARGE});
    for (const std::string &out :
         {Path("root"), Path("no/such/folder"), std::string("/dev/full")}) {
        const Ran ran = Run({"settings", "-p", "P", "--no-prompt", "--out", out});
        EXPECT_EQ(ran.nStatus, 1);
        EXPECT_THAT(ran.strErr, StartsWith("kvhost: " + out + " cannot be written ("));
    }
}

// ---- wrong usage ----------------------------------------------------------------------------

TEST_F(HostTest, MistakesGetOneLineAndTheirStatus)
{
    Done({"add-printer", "P", "--driver", LARGE});
    Write("short", std::string(561, 'x'));
    Write("long", std::string(563, 'x'));
    const struct {
        std::vector<std::string> args;
        int nStatus;
        const char *complaint;
    } aRows[] = {
        {{}, 2, "no command"},
        {{"print"}, 2, "print"},
        {{"caps"}, 2, "--printer is required"},
        {{"caps", "-p", "P", "nothing"}, 2, "there is no query \"nothing\""},
        {{"caps", "-p", "P", "19"}, 2, "there is no query \"19\""},
        {{"caps", "-p", "P", "--in", Path("absent")}, 2, "absent cannot be read (No such file"},
        {{"settings", "-p", "P", "--no-prompt", "--in", Path("short")}, 2, "too short, it has 561"},
        {{"settings", "-p", "P", "--no-prompt", "--in", Path("long")}, 2, "too long"},
        {{"default", "-p", "P", "--in", Path("long")}, 2, "too long"},
        {{"show", Path("short")}, 2, "a settings record has 562"},
        {{"show", Path("root")}, 2, "cannot be read (Is a directory)"},
        {{"settings", "-p", "P", "--no-prompt", "--advanced"}, 2, "excludes"},
        {{"default", "-p", "P", "--clear", "--in", Path("rec")}, 2, "excludes"},
        {{"item", "-p", "P", "put", "copies", "1"}, 2, "put"},
        {{"item", "-p", "P", "set"}, 2, "which item"},
        {{"item", "-p", "P", "set", "copies"}, 2, "0 values for item copies: give 1"},
        {{"item", "-p", "P", "set", "paper", "1", "2"}, 2, "give 1 or 3"},
        {{"item", "-p", "P", "set", "copies", "65536"}, 2, "does not fit 16 bits"},
        {{"item", "-p", "P", "set", "copies", "many"}, 2, "many"},
        {{"item", "-p", "P", "get", "15"}, 2, "there is no item \"15\""},
        {{"item", "-p", "P", "get", "copies", "1"}, 2, "takes no value"},
        {{"printers", "--lang", "klingon"}, 2, "--lang"},
        {{"printers", "--os", "new"}, 2, "--os"},
        {{"printers", "--display", "paper"}, 2, "--display must be sdl or headless"},
        {{"printers", "--scale", "5"}, 2, "--scale"},
        {{"printers", "--script", Path("absent")}, 2, "cannot read the script"},
        {{"settings", "-p", "Q", "--no-prompt"}, 1, "there is no printer \"Q\""},
        {{"remove-printer", "Q"}, 1, "there is no printer \"Q\""},
        {{"add-printer", "p", "--driver", SMALL}, 1, "there is a printer \"p\" already"},
        {{"add-printer", "a\\b", "--driver", SMALL}, 1, "backslash"},
        {{"default", "-p", "P"}, 1, "no default record is kept for \"P\""},
        {{"default", "-p", "P", "--out", Path("rec")}, 1, "no default record is kept"},
        {{"caps", "-p", "P", "minextent"}, 1, "the driver gave -1"},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.complaint);
        const Ran ran = Run(row.args);
        EXPECT_EQ(ran.nStatus, row.nStatus);
        EXPECT_THAT(ran.strErr, StartsWith("kvhost: "));
        EXPECT_THAT(ran.strErr, HasSubstr(row.complaint));
        EXPECT_EQ(std::count(ran.strErr.begin(), ran.strErr.end(), '\n'), 1);
    }
    EXPECT_FALSE(Exists("rec"));
}

TEST_F(HostTest, ADamagedStoreIsTold)
{
    Write("root/spool.db", "this is no printer store at all, not even nearly\n");
    for (const std::vector<std::string> &args :
         {std::vector<std::string>{"printers"}, {"caps", "-p", "P"}, {"remove-printer", "P"}}) {
        const Ran ran = Run(args);
        EXPECT_EQ(ran.nStatus, 1);
        EXPECT_THAT(ran.strErr, HasSubstr("is damaged"));
    }
}

} // namespace
