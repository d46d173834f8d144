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

std::string StrangeRecord()
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
    record.wMarginLeft = 60;
    std::memcpy(record.szTmplName, "a\x1b[2Jb", 6);
    return {reinterpret_cast<const char *>(&record), sizeof record};
}

TEST_F(HostTest, ARecordIsDecodedForProgramsAndForPeople)
{
    Write("rec", StrangeRecord());
    const json record = Done({"show", Path("rec"), "--json"}).Json();
    const std::pair<const char *, json> aValues[] = {
        {"/dm/dmDeviceName", "Büro 32 characters without an en"},
        {"/dm/dmPaperWidth", -1},
        {"/dm/dmFormName", "\uFFFD"},
        {"/dwModelTag", 4294967295},
        {"/aPairs/1", {7, 65535}},
        {"/Settings/sAdj/5", -100},
        {"/Settings/szName", "sixteen letters!"},
        {"/szTmplName", "a\x1b[2Jb"},
    };
    for (const auto &[lpszPointer, value] : aValues)
        EXPECT_EQ(record.at(json::json_pointer(lpszPointer)), value) << lpszPointer;
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

TEST_F(HostTest, AnyBytesAreShownAndMergedWithoutHarm)
{
    Done({"add-printer", "P", "--driver", LARGE});
    for (const int nByte : {0x00, 0x7F, 0x80, 0xFF}) {
        Write("rec", std::string(sizeof(DriverDevMode), static_cast<char>(nByte)));
        EXPECT_TRUE(Done({"show", Path("rec"), "--json"}).Json().is_object());
        EXPECT_THAT(Done({"show", Path("rec")}).strOut, HasSubstr("Not a record of this driver"));
        EXPECT_EQ(Settings("P", Path("rec"))["wszModelName"], LARGE);
        Done({"default", "-p", "P", "--in", Path("rec")});
        EXPECT_EQ(Settings("P")["dm"]["dmCopies"], 1);
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
    for (const std::string &out : {Path("root"), Path("no/folder"), std::string("/dev/full")}) {
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
    const std::vector<std::string> settings = {"settings", "-p", "P", "--no-prompt"},
                                   item = {"item", "-p", "P", "--out", Path("rec")},
                                   kept = {"default", "-p", "P"}, caps = {"caps", "-p", "P"};
    const struct {
        std::vector<std::string> command, args;
        int nStatus;
        const char *complaint;
    } aRows[] = {
        {{}, {}, 2, "no command"},
        {{"print"}, {}, 2, "print"},
        {{"printers", "caps", "-p", "P"}, {}, 2, "caps"},
        {{"caps"}, {}, 2, "--printer is required"},
        {caps, {"nothing"}, 2, "there is no query \"nothing\""},
        {caps, {"19"}, 2, "there is no query \"19\""},
        {caps, {"--in", Path("absent")}, 2, "absent cannot be read (No such file"},
        {caps, {"minextent"}, 1, "the driver gave -1"},
        {settings, {"--in", Path("short")}, 2, "too short, it has 561"},
        {settings, {"--in", Path("long")}, 2, "too long"},
        {settings, {"--out", ""}, 2, "--out: must not be empty"},
        {settings, {"--advanced"}, 2, "excludes"},
        {settings, {"-p", "Q"}, 2, "-p"},
        {{"settings", "--no-prompt", "-p", "Q"}, {}, 1, "there is no printer \"Q\""},
        {{"show", Path("root")}, {}, 2, "cannot be read (Is a directory)"},
        {kept, {"--clear", "--in", Path("rec")}, 2, "excludes"},
        {kept, {}, 1, "no default record is kept for \"P\""},
        {kept, {"--out", Path("rec")}, 1, "no default record is kept"},
        {{"remove-printer", "Q"}, {}, 1, "there is no printer \"Q\""},
        {{"add-printer", "p", "--driver", SMALL}, {}, 1, "there is a printer \"p\" already"},
        {{"printers", "--root", ""}, {}, 2, "--root: must not be empty"},
        {{"printers", "--lang", "klingon"}, {}, 2, "--lang"},
        {{"printers", "--scale", "5"}, {}, 2, "--scale"},
        {{"printers", "--script", Path("absent")}, {}, 2, "cannot read the script"},
        {item, {"put", "copies", "1"}, 2, "put"},
        {item, {"set"}, 2, "which item"},
        {item, {"set", "copies"}, 2, "0 values for item copies: give 1"},
        {item, {"set", "paper", "1", "2"}, 2, "give 1 or 3"},
        {item, {"set", "copies", "65536"}, 2, "does not fit 16 bits"},
        {item, {"set", "copies", "many"}, 2, "many"},
        {item, {"get", "15"}, 2, "there is no item \"15\""},
        {item, {"get", "copies", "1"}, 2, "takes no value"},
        {item, {"set", "copies", "-1"}, 1, "gave -2 for setting item copies: the model does not"},
        {item, {"set", "color", "1"}, 1, "gave -1 for setting item color: no such item"},
        {item, {"set", "paper", "10", "10", "256"}, 1, "it allows 89.0 to 329.0 mm wide, 98.0 to"},
        {item, {"set", "paper", "4711"}, 1, "item paper: the model does not allow this\n"},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.complaint);
        std::vector<std::string> args = row.command;
        args.insert(args.end(), row.args.begin(), row.args.end());
        const Ran ran = Run(args);
        EXPECT_EQ(ran.nStatus, row.nStatus);
        EXPECT_THAT(ran.strErr, StartsWith("kvhost: "));
        EXPECT_THAT(ran.strErr, HasSubstr(row.complaint));
        EXPECT_EQ(std::ranges::count(ran.strErr, '\n'), 1);
        EXPECT_FALSE(fs::exists(Path("rec")));
    }
    const Ran windowless = Run({"properties", "-p", "P", "--display", "sdl"});
    EXPECT_EQ(windowless.nStatus, 2);
    EXPECT_THAT(windowless.strErr, HasSubstr("or use the display \"headless\""));
    Write("root/spool.db", "this is no printer store at all, not even nearly\n");
    const Ran damaged = Run({"printers"});
    EXPECT_EQ(damaged.nStatus, 1);
    EXPECT_THAT(damaged.strErr, HasSubstr("is damaged"));
}

} // namespace
