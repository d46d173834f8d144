// What people and programs do with kvhost, from beginning to end.
#include <gmock/gmock.h>

#include "tests/host/host_process.h"

namespace
{

namespace fs = std::filesystem;
using nlohmann::json;
using ::testing::HasSubstr;

TEST_F(HostTest, APrinterIsAddedSetUpAskedAndRemoved)
{
    AddPrinter("Büro");
    EXPECT_EQ(Asked("printers"), json::parse(R"([{"name": "Büro", "driver": "KORVA KJ-820 Pro",
                                                 "server": null, "default": false}])"));
    const json fresh = Asked("settings -p büro --no-prompt");
    EXPECT_EQ(fresh["dm"]["dmDeviceName"], "Büro");

    // Two changes, one after the other, in a file that is then the printer's default.
    Done("item -p Büro set copies 7 --out mine");
    Done("item -p Büro --in mine set orientation 2 --out mine");
    Done("default -p Büro --in mine");
    json changed = fresh;
    changed["dm"]["dmCopies"] = 7;
    changed["dm"]["dmOrientation"] = 2;
    EXPECT_EQ(Asked("settings -p Büro --no-prompt"), changed);
    EXPECT_EQ(Asked("printers")[0]["default"], true);

    Done("default -p Büro --clear");
    EXPECT_EQ(Asked("settings -p Büro --no-prompt"), fresh);
    EXPECT_THAT(Run("properties -p Büro").strErr, HasSubstr("no properties of the whole printer"));
    Done("remove-printer BÜRO");
    EXPECT_EQ(Asked("printers"), json::array());
}

TEST_F(HostTest, CapabilitiesAreThoseOfARecordsSource)
{
    AddPrinter("P");
    Done("item -p P set source 4 --out other");
    const json own = Asked("caps -p P"), other = Asked("caps -p P --in other");
    EXPECT_EQ(own.size(), 18u);
    EXPECT_NE(own["papers"], other["papers"]);
    EXPECT_EQ(own["bins"], other["bins"]);
    EXPECT_EQ(other["papers"].size(), other["papersize"].size());
    const json some = Asked("caps -p P minextent 18 3");
    EXPECT_EQ(some.size(), 3u);
    EXPECT_TRUE(some["minextent"].is_null());
    EXPECT_EQ(some["copies"], 99);
    EXPECT_EQ(some["papersize"][0], (json{{"width", 2100}, {"length", 2970}}));
    const std::string strText = Done("caps -p P");
    for (const char *lpszText :
         {"Papers (12)\n", "9  A4 210 x 297 mm", "210.0 x 297.0 mm\n", "14  Paper Cassette\n",
          "copies            99\n", "minextent         not answered\n"})
        EXPECT_THAT(strText, HasSubstr(lpszText));
}

TEST_F(HostTest, AScriptPlaysThePersonBeforeTheSheet)
{
    AddPrinter("P");
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
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        Write("play", row.script);
        Write("transcript", "");
        const Ran ran =
            Run("settings -p P --display headless --script play --transcript transcript "
                "--out rec --json");
        EXPECT_EQ(ran.nStatus, row.nStatus);
        EXPECT_THAT(ran.strErr, HasSubstr(row.complaint));
        EXPECT_EQ(Record("rec").Settings.wInk, row.nInk);
        EXPECT_EQ(json::parse(ran.strOut)["Settings"]["wInk"], row.nInk);
        EXPECT_THAT(Content("transcript"),
                    HasSubstr("\"call\":\"DrvDocumentProperties\",\"result\":" +
                              std::to_string(row.nResult)));
    }
}

TEST_F(HostTest, ItemsSetAreItemsGot)
{
    AddPrinter("P");
    const std::pair<std::string, json> aRows[] = {
        {"paper 1", {{"paper", 1}, {"width", 2159}, {"length", 2794}}},
        {"30 1500 2500 256", {{"paper", 256}, {"width", 1500}, {"length", 2500}}},
        {"printmode 1 2 3 2", {{"mode", 1}, {"level", 2}, {"media", 3}, {"color", 2}}},
    };
    for (const auto &[strSet, some] : aRows) {
        const json set = Asked("item -p P --out rec set " + strSet);
        EXPECT_EQ(Asked("item -p P --in rec get " + strSet.substr(0, strSet.find(' '))), set);
        json expected = set["values"];
        expected.update(some);
        EXPECT_EQ(set["values"], expected) << strSet;
    }
    const json ranges = Asked("item -p P range");
    ASSERT_EQ(ranges.size(), 9u);
    EXPECT_EQ(ranges[1]["result"], -1) << "one that has no range spoils nothing";
    EXPECT_EQ(ranges[5]["values"]["media"], ranges[5]["values"]["codes"].size());
    EXPECT_EQ(Asked("item -p P level")[1]["values"]["level"], 1);
    const std::string strText = Done("item -p P get");
    EXPECT_THAT(strText, HasSubstr(" 20 orientation  orientation      1 (portrait)\n"));
    EXPECT_THAT(strText, HasSubstr(" 30 paper        width            210.0 mm\n"));
}

TEST_F(HostTest, OptionsWinOverTheEnvironment)
{
    AddPrinter("P", "KORVA KJ-150");
    const char *lpszJapanese = "KV_LANG=ja_JP KV_ACP=932";
    EXPECT_THAT(Run("caps -p P binnames", lpszJapanese).strOut,
                HasSubstr("オートシートフィーダー"));
    EXPECT_THAT(Run("--lang 0x0409 caps -p P binnames", lpszJapanese).strOut,
                HasSubstr("Sheet Feeder"));
    EXPECT_EQ(Asked("--root nothing printers"), json::array());
    EXPECT_FALSE(Exists("nothing"));
}

TEST_F(HostTest, WhatIsRefusedBehindTheCommandLineIsAFailureAfterItsMessage)
{
    const char *const lpszLibrary = "c/winnt35/system32/spool/drivers/w32x86/1/KJ820UI.DLL";
    const char *const lpszDat = "c/winnt35/KJ820PRO.dat";
    const struct {
        const char *removed; // a file of the machine
        const char *line;
        int nStatus;
        const char *message, *complaint;
    } aRows[] = {
        {"none", "caps -p P --os 4.0", 1, "only for Windows NT(R)", "the driver cannot be loaded"},
        {lpszDat, "caps -p P", 1, "driver files", "the driver gave -1"},
        {lpszDat, "settings -p P --no-prompt", 1, "driver files", "the driver gave -1"},
        {lpszDat, "item -p P get", 1, "driver files", "the driver gave -1"},
        {lpszDat, "properties -p P", 1, "driver files", "the driver gave -1"},
        {lpszLibrary, "settings -p P", 1, "KJ820UI.DLL", "the driver gave -1 instead"},
        {lpszLibrary, "settings -p P --advanced", 1, "KJ820UI.DLL", "the driver gave -1 instead"},
        {"none", "properties -p P --display sdl", 2, "", "cannot open a window"},
        {"spool.db", "printers", 1, "", "is damaged"},
    };
    AddPrinter("P");
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.line);
        std::error_code none;
        fs::rename(Path("root/") + row.removed, Path("away"), none);
        if (row.removed == std::string("spool.db"))
            Write("root/spool.db", "this is no printer store at all, not even nearly\n");
        const Ran ran = Run(row.line);
        EXPECT_EQ(ran.nStatus, row.nStatus);
        EXPECT_THAT(ran.strErr, HasSubstr(row.message));
        EXPECT_THAT("\n" + ran.strErr, HasSubstr("\nkvhost: "));
        EXPECT_THAT(ran.strErr, HasSubstr(row.complaint));
        fs::rename(Path("away"), Path("root/") + row.removed, none);
    }
}

} // namespace
