// Records in files, read and decoded, written and replaced; and what wrong usage is told.
#include <algorithm>
#include <cstring>

#include <gmock/gmock.h>

#include "tests/host/host_process.h"

namespace
{

namespace fs = std::filesystem;
using nlohmann::json;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

std::string StrangeRecord()
{
    DriverDevMode record{};
    std::u16string_view(u"Büro 32 characters without an end").copy(record.dm.dmDeviceName, 32);
    record.dm.dmSpecVersion = KV_SPECVERSION;
    record.dm.dmDriverVersion = 858;
    record.dm.dmSize = KV_PUBLICSIZE;
    record.dm.dmDriverExtra = KV_PRIVATESIZE;
    record.dm.dmFields = KV_DM_PAPERSIZE | KV_DM_COPIES;
    record.dm.dmPaperWidth = -1;
    record.dm.dmFormName[0] = 0xD800; // half a pair
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
    const json record = Asked("show rec");
    const std::pair<const char *, json> aValues[] = {
        {"/dm/dmDeviceName", "Büro 32 characters without an en"},
        {"/dm/dmFormName", "\uFFFD"},
        {"/aPairs/1", {7, 65535}},
        {"/Settings/sAdj/5", -100},
        {"/Settings/szName", "sixteen letters!"},
        {"/szTmplName", "a\x1b[2Jb"},
    };
    for (const auto &[lpszPointer, value] : aValues)
        EXPECT_EQ(record.at(json::json_pointer(lpszPointer)), value) << lpszPointer;
    const std::string strText = Done("show rec");
    for (const char *lpszLine : {
             "  dm.dmFields            0x00000102 (paper size, copies)\n",
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
    AddPrinter("P");
    for (const int nByte : {0x00, 0x80, 0xFF}) {
        Write("rec", std::string(sizeof(DriverDevMode), static_cast<char>(nByte)));
        EXPECT_THAT(Done("show rec"), HasSubstr("Not a record of this driver"));
        Done("default -p P --in rec --out back");
        EXPECT_EQ(Content("back"), Content("rec"));
        EXPECT_EQ(Asked("settings -p P --no-prompt --in rec")["dm"]["dmCopies"], 1);
    }
}

TEST_F(HostTest, OutReplacesAFileAndKeepsItsModeAndLinks)
{
    AddPrinter("P");
    Write("old", std::string(1000, 'x'));
    fs::permissions(Path("old"), fs::perms(0640));
    fs::create_symlink(Path("old"), Path("link"));
    Done("settings -p P --no-prompt --out link");
    EXPECT_EQ(Record("old").dm.dmDriverVersion, KV_DRIVERVERSION);
    EXPECT_TRUE(fs::is_symlink(Path("link")));
    EXPECT_EQ(fs::status(Path("old")).permissions(), fs::perms(0640));
    Done("settings -p P --no-prompt --out /dev/null");
    EXPECT_TRUE(fs::is_character_file("/dev/null")) << "what is no file is not replaced by one";
    for (const std::string out : {"root", "no/folder", "/dev/full"}) {
        const Ran ran = Run("settings -p P --no-prompt --out " + out);
        EXPECT_EQ(ran.nStatus, 1);
        EXPECT_THAT(ran.strErr, StartsWith("kvhost: " + out + " cannot be written ("));
    }
}

TEST_F(HostTest, MistakesGetOneLineAndTheirStatus)
{
    AddPrinter("P");
    Write("short", std::string(561, 'x'));
    Write("long", std::string(563, 'x'));
    const struct {
        const char *line;
        int nStatus;
        const char *complaint;
    } aRows[] = {
        {"", 2, "no command"},
        {"printers caps -p P", 2, "caps"},
        {"caps", 2, "--printer is required"},
        {"caps -p P 19", 2, "there is no query \"19\""},
        {"caps -p P --in absent", 2, "absent cannot be read (No such file"},
        {"caps -p P minextent", 1, "the driver gave -1"},
        {"settings -p P --no-prompt --in short", 2, "too short, it has 561"},
        {"settings -p P --no-prompt --in long", 2, "too long"},
        {"settings -p P --no-prompt --out ''", 2, "--out: must not be empty"},
        {"settings -p P --no-prompt --advanced", 2, "excludes"},
        {"settings -p Q --no-prompt", 1, "there is no printer \"Q\""},
        {"show root", 2, "cannot be read (Is a directory)"},
        {"default -p P --clear --in rec", 2, "excludes"},
        {"default -p P --out rec", 1, "no default record is kept"},
        {"remove-printer Q", 1, "there is no printer \"Q\""},
        {"add-printer p --driver X", 1, "there is a printer \"p\" already"},
        {"printers --root ''", 2, "--root: must not be empty"},
        {"printers --scale 5", 2, "--scale"},
        {"printers --script absent", 2, "cannot read the script"},
        {"item -p P put copies 1", 2, "put"},
        {"item -p P set", 2, "which item"},
        {"item -p P set copies", 2, "0 values for item copies: give 1"},
        {"item -p P set paper 1 2", 2, "give 1 or 3"},
        {"item -p P set copies 65536", 2, "does not fit 16 bits"},
        {"item -p P get 15", 2, "there is no item \"15\""},
        {"item -p P get copies 1", 2, "takes no value"},
        {"item -p P --out rec set copies -1", 1, "gave -2 for setting item copies: the model does"},
        {"item -p P --out rec set color 1", 1, "gave -1 for setting item color: no such item"},
        {"item -p P set paper 10 10 256", 1, "it allows 89.0 to 329.0 mm wide, 98.0 to 1117.6"},
        {"item -p P set paper 4711", 1, "item paper: the model does not allow this\n"},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.line);
        const Ran ran = Run(row.line);
        EXPECT_EQ(ran.nStatus, row.nStatus);
        EXPECT_THAT(ran.strErr, StartsWith("kvhost: "));
        EXPECT_THAT(ran.strErr, HasSubstr(row.complaint));
        EXPECT_EQ(std::ranges::count(ran.strErr, '\n'), 1);
        EXPECT_FALSE(Exists("rec"));
    }
}

} // namespace
