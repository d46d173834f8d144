// What people and programs do with kvhost, from beginning to end.
#include <filesystem>

#include <gmock/gmock.h>

#include "tests/host/host_process.h"

namespace
{

namespace fs = std::filesystem;
using nlohmann::json;
using ::testing::HasSubstr;

constexpr const char *LIBRARY = "system32/spool/drivers/w32x86/1/KJ820UI.DLL";

TEST_F(HostTest, APrinterIsAddedSetUpAskedAndRemoved)
{
    Done({"add-printer", "Büro", "--driver", LARGE});
    EXPECT_EQ(
        Done({"printers", "--json"}).Json(),
        (json{{{"name", "Büro"}, {"driver", LARGE}, {"server", nullptr}, {"default", false}}}));
    const json fresh = Settings("büro");
    EXPECT_EQ(fresh["dm"]["dmDeviceName"], "Büro");

    // Two changes, one after the other, in a file that is then the printer's default.
    const std::string strFile = Path("mine");
    Done({"item", "-p", "Büro", "set", "copies", "7", "--out", strFile});
    Done({"item", "-p", "Büro", "--in", strFile, "set", "orientation", "2", "--out", strFile});
    Done({"default", "-p", "Büro", "--in", strFile});
    json changed = fresh;
    changed["dm"]["dmCopies"] = 7;
    changed["dm"]["dmOrientation"] = 2;
    EXPECT_EQ(Settings("Büro"), changed);
    EXPECT_EQ(Done({"printers", "--json"}).Json()[0]["default"], true);

    Done({"default", "-p", "Büro", "--clear"});
    EXPECT_EQ(Settings("Büro"), fresh);
    EXPECT_THAT(Run({"properties", "-p", "Büro"}).strErr, HasSubstr("no properties of the whole"));
    Done({"remove-printer", "BÜRO"});
    EXPECT_EQ(Done({"printers", "--json"}).Json(), json::array());
}

TEST_F(HostTest, CapabilitiesAreThoseOfARecordsSource)
{
    Done({"add-printer", "P", "--driver", LARGE});
    const std::string strFile = Path("other");
    Done({"item", "-p", "P", "set", "source", "4", "--out", strFile});
    const json own = Done({"caps", "-p", "P", "--json"}).Json();
    const json other = Done({"caps", "-p", "P", "--in", strFile, "--json"}).Json();
    EXPECT_EQ(own.size(), 18u);
    EXPECT_NE(own["papers"], other["papers"]);
    EXPECT_EQ(own["bins"], other["bins"]);
    EXPECT_EQ(other["papers"].size(), other["papersize"].size());
    const json range = Done({"item", "-p", "P", "--in", strFile, "range", "30", "--json"}).Json();
    EXPECT_EQ(range["values"]["ids"], other["papers"]);

    const json some = Done({"caps", "-p", "P", "minextent", "18", "3", "--json"}).Json();
    EXPECT_EQ(some.size(), 3u);
    EXPECT_TRUE(some["minextent"].is_null());
    EXPECT_EQ(some["copies"], 99);
    EXPECT_EQ(some["papersize"][0], (json{{"width", 2100}, {"length", 2970}}));
    const std::string strText = Done({"caps", "-p", "P"}).strOut;
    for (const char *lpszText :
         {"Papers (12)\n", "9  A4 210 x 297 mm", "210.0 x 297.0 mm\n", "14  Paper Cassette\n",
          "copies            99\n", "minextent         not answered\n"})
        EXPECT_THAT(strText, HasSubstr(lpszText));
}

// ---- the sheet ------------------------------------------------------------------------------

TEST_F(HostTest, AScriptPlaysThePersonBeforeTheSheet)
{
    Done({"add-printer", "P", "--driver", LARGE});
    const struct {
        const char *why, *script;
        int nStatus;
        const char *complaint;
        int nResult, nInk; // of the driver, and in the record that it gave
    } aRows[] = {
        {"confirmed", "click 5047\npage \"Utility\"\nok\n", 0, "", 1, 0},
        {"cancelled", "click 5047\ncancel # after all\n", 3, "", 2, 1},
        {"no such control", "click 9\nok\n", 4, "script line 1", 2, 1},
        {"left open", "page \"Paper\"\n", 4, "no input is left while \"P\" is open", 2, 1},
        {"goes on after the end", "ok\n\npage \"Main\"\n", 4, "script line 3", 1, 1},
    };
    const std::vector<std::string> args = {"settings",   "-p",           "P",
                                           "--display",  "headless",     "--script",
                                           Path("play"), "--transcript", Path("transcript"),
                                           "--out",      Path("rec"),    "--json"};
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        Write("play", row.script);
        Write("transcript", "");
        const Ran ran = Run(args);
        EXPECT_EQ(ran.nStatus, row.nStatus);
        EXPECT_THAT(ran.strErr, HasSubstr(row.complaint));
        EXPECT_EQ(Record("rec").Settings.wInk, row.nInk);
        EXPECT_EQ(ran.Json()["Settings"]["wInk"], row.nInk);
        EXPECT_THAT(Content("transcript"),
                    HasSubstr("\"call\":\"DrvDocumentProperties\",\"result\":" +
                              std::to_string(row.nResult)));
    }
}

// ---- items ----------------------------------------------------------------------------------

TEST_F(HostTest, ItemsSetAreItemsGot)
{
    Done({"add-printer", "P", "--driver", LARGE});
    const struct {
        std::vector<std::string> set;
        json got; // some of the words
    } aRows[] = {
        {{"copies", "99"}, {{"copies", 99}}},
        {{"paper", "1"}, {{"paper", 1}, {"width", 2159}, {"length", 2794}}},
        {{"30", "1500", "2500", "256"}, {{"paper", 256}, {"width", 1500}, {"length", 2500}}},
        {{"printmode", "1", "2", "3", "2"}, {{"level", 2}, {"media", 3}, {"color", 2}}},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.set[0]);
        std::vector<std::string> args = {"item", "-p", "P", "--out", Path("rec"), "--json", "set"};
        args.insert(args.end(), row.set.begin(), row.set.end());
        const json set = Done(args).Json();
        args = {"item", "-p", "P", "--in", Path("rec"), "get", row.set[0], "--json"};
        EXPECT_EQ(Done(args).Json(), set);
        json expected = set["values"];
        expected.update(row.got);
        EXPECT_EQ(set["values"], expected);
    }
    const json ranges = Done({"item", "-p", "P", "range", "--json"}).Json();
    ASSERT_EQ(ranges.size(), 9u);
    EXPECT_EQ(ranges[1]["result"], -1); // one that has no range spoils nothing
    EXPECT_EQ(ranges[5]["values"]["media"], ranges[5]["values"]["codes"].size());
    EXPECT_EQ(Done({"item", "-p", "P", "level", "--json"}).Json()[1]["values"]["level"], 1);
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
    EXPECT_EQ(Run({"--root", Path("nothing"), "printers", "--json"}).Json(), json::array());
    EXPECT_FALSE(fs::exists(Path("nothing")));
}

TEST_F(HostTest, WhatTheDriverRefusesIsAFailureAfterItsMessage)
{
    const struct {
        const char *removed; // a file of the machine
        std::vector<std::string> args;
        const char *message, *complaint;
    } aRows[] = {
        {"none", {"caps", "--os", "4.0"}, "only for Windows NT(R)", "the driver cannot be loaded"},
        {"KJ820PRO.dat", {"caps"}, "driver files", "the driver gave -1"},
        {"KJ820PRO.dat", {"settings", "--no-prompt"}, "driver files", "the driver gave -1"},
        {"KJ820PRO.dat", {"item", "get"}, "driver files", "the driver gave -1"},
        {"KJ820PRO.dat", {"properties"}, "driver files", "the driver gave -1"},
        {LIBRARY, {"settings"}, "KJ820UI.DLL", "the driver gave -1 instead"},
        {LIBRARY, {"settings", "--advanced"}, "KJ820UI.DLL", "the driver gave -1 instead"},
    };
    Done({"add-printer", "P", "--driver", LARGE});
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.args[0]);
        const std::string strFile = Path("root/c/winnt35/") + row.removed;
        std::error_code none;
        fs::rename(strFile, Path("away"), none);
        std::vector<std::string> args = row.args;
        args.insert(args.end(), {"-p", "P"});
        const Ran ran = Run(args);
        EXPECT_EQ(ran.nStatus, 1);
        EXPECT_THAT(ran.strErr, HasSubstr(row.message));
        EXPECT_THAT(ran.strErr, HasSubstr(std::string("\nkvhost: ") + row.complaint));
        fs::rename(Path("away"), strFile, none);
    }
}

} // namespace
