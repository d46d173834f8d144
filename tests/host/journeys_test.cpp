// What people and programs do with kvhost, from beginning to end.
#include <cstdio>
#include <filesystem>

#include <gmock/gmock.h>

#include "tests/host/host_process.h"

namespace
{

namespace fs = std::filesystem;
using nlohmann::json;
using ::testing::HasSubstr;

TEST_F(HostTest, APrinterIsAddedSetUpAskedAndRemoved)
{
    Done({"add-printer", "Büro", "--driver", LARGE});
    const json printers = Done({"printers", "--json"}).Json();
    const json wanted = {
        {{"name", "Büro"}, {"driver", LARGE}, {"server", nullptr}, {"default", false}}};
    EXPECT_EQ(printers, wanted);

    const json fresh = Settings("büro");
    EXPECT_EQ(fresh["dm"]["dmDeviceName"], "Büro");
    EXPECT_EQ(fresh["wszModelName"], LARGE);
    EXPECT_EQ(fresh["dm"]["dmCopies"], 1);

    // Two changes, one after the other, in a file that is then the printer's default.
    const std::string strFile = Path("mine");
    Done({"item", "-p", "Büro", "set", "copies", "7", "--out", strFile});
    Done({"item", "-p", "Büro", "--in", strFile, "set", "orientation", "2", "--out", strFile});
    Done({"default", "-p", "Büro", "--in", strFile});
    const json changed = Settings("Büro");
    EXPECT_EQ(changed["dm"]["dmCopies"], 7);
    EXPECT_EQ(changed["dm"]["dmOrientation"], 2);
    EXPECT_EQ(Done({"printers", "--json"}).Json()[0]["default"], true);

    Done({"default", "-p", "Büro", "--clear"});
    EXPECT_EQ(Settings("Büro"), fresh);
    Done({"remove-printer", "BÜRO"});
    EXPECT_EQ(Done({"printers", "--json"}).Json(), json::array());
}

TEST_F(HostTest, ARecordsSourceDecidesOverThePapers)
{
    Done({"add-printer", "P", "--driver", LARGE});
    const json bins = Done({"caps", "-p", "P", "bins", "--json"}).Json()["bins"];
    ASSERT_GE(bins.size(), 2u);
    const std::string strFile = Path("other");
    const std::string strSource = std::to_string(bins[1].get<int>());
    Done({"item", "-p", "P", "set", "source", strSource, "--out", strFile});
    const json own = Done({"caps", "-p", "P", "--json"}).Json();
    const json other = Done({"caps", "-p", "P", "--in", strFile, "--json"}).Json();
    EXPECT_NE(own["papers"], other["papers"]);
    EXPECT_EQ(own["bins"], other["bins"]);
    for (const json &caps : {own, other}) {
        EXPECT_EQ(caps["papers"].size(), caps["papernames"].size());
        EXPECT_EQ(caps["papers"].size(), caps["papersize"].size());
        EXPECT_EQ(caps["bins"].size(), caps["binnames"].size());
    }
    const json range = Done({"item", "-p", "P", "--in", strFile, "range", "30", "--json"}).Json();
    EXPECT_EQ(range["values"]["ids"], other["papers"]);
}

TEST_F(HostTest, CapabilitiesAreAskedByNameOrNumber)
{
    Done({"add-printer", "P", "--driver", SMALL});
    const json caps = Done({"caps", "-p", "P", "minextent", "18", "papersize", "--json"}).Json();
    EXPECT_EQ(caps.size(), 3u);
    EXPECT_TRUE(caps["minextent"].is_null());
    EXPECT_EQ(caps["copies"], 99);
    EXPECT_EQ(caps["papersize"][0], (json{{"width", 2100}, {"length", 2970}}));
    const std::string strText = Done({"caps", "-p", "P"}).strOut;
    EXPECT_THAT(strText, HasSubstr("9  A4 210 x 297 mm"));
    EXPECT_THAT(strText, HasSubstr("210.0 x 297.0 mm\n"));
    EXPECT_THAT(strText, HasSubstr("7  Sheet Feeder\n"));
    EXPECT_THAT(strText, HasSubstr("copies            99\n"));
    EXPECT_THAT(strText, HasSubstr("minextent         not answered\n"));
}

// ---- the sheet ------------------------------------------------------------------------------

TEST_F(HostTest, AScriptPlaysThePersonBeforeTheSheet)
{
    Done({"add-printer", "P", "--driver", LARGE});
    const struct {
        const char *why, *script;
        int nStatus;
        const char *complaint;
        int nResult; // of the driver
    } aRows[] = {
        {"confirmed", "page \"Paper\"\npage \"Utility\"\nok\n", 0, "", 1},
        {"cancelled", "cancel # after all\n", 3, "", 2},
        {"no such control", "click 9\nok\n", 4, "script line 1", 2},
        {"left open", "page \"Paper\"\n", 4, "no input is left", 2},
        {"goes on after the end", "ok\n\npage \"Main\"\n", 4, "script line 3", 1},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        Write("play", row.script);
        std::remove(Path("rec").c_str());
        std::remove(Path("transcript").c_str());
        const Ran ran =
            Run({"settings", "-p", "P", "--display", "headless", "--script", Path("play"),
                 "--transcript", Path("transcript"), "--out", Path("rec"), "--json"});
        EXPECT_EQ(ran.nStatus, row.nStatus);
        EXPECT_THAT(ran.strErr, HasSubstr(row.complaint));
        EXPECT_EQ(Record("rec").dm.dmCopies, 1) << "whatever the way out";
        EXPECT_EQ(ran.Json()["dm"]["dmCopies"], 1);
        EXPECT_THAT(Content("transcript"),
                    HasSubstr("\"call\":\"DrvDocumentProperties\",\"result\":" +
                              std::to_string(row.nResult)));
    }
}

TEST_F(HostTest, NobodyBeforeTheSheetEndsTheRun)
{
    Done({"add-printer", "P", "--driver", SMALL});
    const Ran ran = Run({"settings", "-p", "P", "--display", "headless"});
    EXPECT_EQ(ran.nStatus, 4);
    EXPECT_THAT(ran.strErr, HasSubstr("no input is left while \"P\" is open"));
}

// ---- items ----------------------------------------------------------------------------------

TEST_F(HostTest, ItemsSetAreItemsGot)
{
    Done({"add-printer", "P", "--driver", LARGE});
    const struct {
        std::vector<std::string> set;
        json got;
    } aRows[] = {
        {{"copies", "99"}, {{"copies", 99}}},
        {{"20", "2"}, {{"orientation", 2}}},
        {{"paper", "1"}, {{"paper", 1}, {"width", 2159}, {"length", 2794}}},
        {{"30", "1500", "2500", "256"}, {{"paper", 256}, {"width", 1500}, {"length", 2500}}},
        {{"source", "4"}, {{"source", 4}}},
        {{"printmode", "1", "2", "3", "2"},
         {{"mode", 1}, {"level", 2}, {"media", 3}, {"color", 2}}},
        {{"70", "0"}, {{"mode", 0}}},
        {{"printarea", "1"}, {{"printarea", 1}}},
        {{"apiflag", "1"}, {{"apiflag", 1}}},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.set[0] + " " + row.set[1]);
        std::vector<std::string> args = {"item", "-p", "P", "--out", Path("rec"), "--json", "set"};
        args.insert(args.end(), row.set.begin(), row.set.end());
        const json set = Done(args).Json();
        const json got =
            Done({"item", "-p", "P", "--in", Path("rec"), "get", row.set[0], "--json"}).Json();
        for (const auto &[strWord, value] : row.got.items())
            EXPECT_EQ(set["values"][strWord], value) << strWord;
        // What the record alone holds; a flag in it survives the merge, the level of a mode too.
        EXPECT_EQ(got["values"], set["values"]);
    }
}

TEST_F(HostTest, RefusedItemsNameTheResultAndWriteNothing)
{
    Done({"add-printer", "P", "--driver", LARGE});
    const struct {
        std::vector<std::string> args;
        const char *complaint;
    } aRows[] = {
        {{"set", "copies", "100"}, "gave -2 for setting item copies: the model does not allow"},
        {{"set", "copies", "--", "-1"}, "gave -2"},
        {{"set", "color", "1"}, "gave -1 for setting item color: no such item"},
        {{"set", "paper", "10", "10", "256"}, "it allows 89.0 to 329.0 mm wide, 98.0 to 1117.6"},
        {{"set", "paper", "4711"},
         "gave -2 for setting item paper: the model does not allow this\n"},
        {{"set", "70", "1", "1", "99", "2"}, "gave -2"},
        {{"range", "orientation"}, "gave -1 for item range orientation"},
    };
    for (const auto &row : aRows) {
        std::vector<std::string> args = {"item", "-p", "P", "--out", Path("rec")};
        args.insert(args.end(), row.args.begin(), row.args.end());
        const Ran ran = Run(args);
        EXPECT_EQ(ran.nStatus, 1) << row.complaint;
        EXPECT_THAT(ran.strErr, HasSubstr(row.complaint));
        EXPECT_EQ(Exists("rec"), row.args[0] != "set");
        fs::remove(Path("rec"));
    }
}

TEST_F(HostTest, AllItemsAreTheirTable)
{
    Done({"add-printer", "P", "--driver", LARGE});
    const json ranges = Done({"item", "-p", "P", "range", "--json"}).Json();
    ASSERT_EQ(ranges.size(), 9u);
    EXPECT_EQ(ranges[1]["result"], -1); // one that has no range spoils nothing
    EXPECT_EQ(ranges[3]["values"]["sources"], ranges[3]["values"]["ids"].size());
    EXPECT_EQ(ranges[5]["values"]["media"], ranges[5]["values"]["codes"].size());
    const json levels = Done({"item", "-p", "P", "level", "--json"}).Json();
    EXPECT_EQ(levels[1]["values"]["level"], 1);
    EXPECT_EQ(levels[8]["values"]["level"], 3);
    const std::string strText = Done({"item", "-p", "P", "get"}).strOut;
    EXPECT_THAT(strText, HasSubstr(" 20 orientation  orientation      1 (portrait)\n"));
    EXPECT_THAT(strText, HasSubstr(" 30 paper        width            210.0 mm\n"));
}

// ---- the machine ----------------------------------------------------------------------------

TEST_F(HostTest, OptionsWinOverTheEnvironment)
{
    Done({"add-printer", "P", "--driver", SMALL});
    const std::vector<std::string> japanese = {"KV_LANG=ja_JP", "KV_ACP=932"};
    const char *lpszFeeder = "オートシートフィーダー";
    EXPECT_THAT(Run({"caps", "-p", "P", "binnames"}, japanese).strOut, HasSubstr(lpszFeeder));
    EXPECT_THAT(Run({"caps", "-p", "P", "binnames", "--lang", "ja_JP", "--acp", "932"}).strOut,
                HasSubstr(lpszFeeder));
    EXPECT_THAT(Run({"--lang", "0x0409", "caps", "-p", "P", "binnames"}, japanese).strOut,
                HasSubstr("Sheet Feeder"));
    EXPECT_EQ(
        Run({"--measure", "1", "settings", "-p", "P", "--no-prompt", "--json"}).Json()["dwUnit"],
        2);
    EXPECT_EQ(Run({"--root", Path("nothing"), "printers", "--json"}).Json(), json::array());
    EXPECT_FALSE(Exists("nothing"));
}

TEST_F(HostTest, TheTranscriptHoldsResultsAndBoxes)
{
    Done({"add-printer", "P", "--driver", LARGE});
    const Ran ran = Run({"properties", "-p", "P", "--transcript", Path("transcript")});
    EXPECT_EQ(ran.nStatus, 0);
    EXPECT_THAT(ran.strErr, HasSubstr("has no properties of the whole printer"));
    const std::string strTranscript = Content("transcript");
    EXPECT_THAT(strTranscript, HasSubstr(R"({"event":"box")"));
    EXPECT_THAT(strTranscript,
                HasSubstr(R"({"event":"result","call":"PrinterProperties","result":0})"));
}

TEST_F(HostTest, ADriverThatRefusesToStartIsAFailureAfterItsMessage)
{
    Done({"add-printer", "P", "--driver", LARGE});
    const Ran wrongSystem = Run({"--os", "4.0", "caps", "-p", "P"});
    EXPECT_EQ(wrongSystem.nStatus, 1);
    EXPECT_THAT(wrongSystem.strErr, HasSubstr("only for Windows NT(R) Version 3.51"));
    EXPECT_THAT(wrongSystem.strErr, HasSubstr("kvhost: the driver cannot be loaded"));
    EXPECT_EQ(wrongSystem.strOut, "");
}

TEST_F(HostTest, ASheetThatCannotBeShownIsTheDriversRefusal)
{
    Done({"add-printer", "P", "--driver", LARGE});
    const std::string strLibrary = "system32/spool/drivers/w32x86/1/KJ820UI.DLL";
    ASSERT_EQ(std::remove(Path("root/c/winnt35/" + strLibrary).c_str()), 0);
    for (const char *lpszOption : {"--json", "--advanced"}) {
        const Ran ran = Run({"settings", "-p", "P", lpszOption, "--out", Path("rec")});
        EXPECT_EQ(ran.nStatus, 1);
        EXPECT_EQ(ran.strOut, "");
        EXPECT_THAT(ran.strErr, HasSubstr("KJ820UI.DLL"));
        EXPECT_THAT(ran.strErr, HasSubstr("the driver gave -1 instead of showing the settings"));
        EXPECT_FALSE(Exists("rec"));
    }
}

TEST_F(HostTest, AWindowWithoutADisplayIsRefusedWithAHint)
{
    Done({"add-printer", "P", "--driver", SMALL});
    const Ran ran = Run({"settings", "-p", "P", "--display", "sdl"});
    EXPECT_EQ(ran.nStatus, 2);
    EXPECT_THAT(ran.strErr, HasSubstr("kvhost: cannot open a window"));
    EXPECT_THAT(ran.strErr, HasSubstr("headless"));
}

TEST_F(HostTest, AModelWithoutFilesFailsAfterTheDriversMessage)
{
    Done({"add-printer", "P", "--driver", SMALL});
    ASSERT_EQ(std::remove(Path("root/c/winnt35/KJ150.dat").c_str()), 0);
    for (const char *lpszCommand : {"settings", "caps", "item", "properties"}) {
        std::vector<std::string> args = {lpszCommand, "-p", "P"};
        if (lpszCommand == std::string("item"))
            args.emplace_back("get");
        if (lpszCommand == std::string("settings"))
            args.emplace_back("--no-prompt");
        const Ran ran = Run(args);
        EXPECT_EQ(ran.nStatus, 1) << lpszCommand;
        EXPECT_THAT(ran.strErr, HasSubstr("driver files")) << lpszCommand;
        EXPECT_THAT(ran.strErr, HasSubstr("kvhost: the driver gave -1")) << lpszCommand;
    }
}

} // namespace
