// Which file a name finds: case, separators, the search order, names that lead nowhere, and
// directories that change between two looks.
#include <sys/stat.h>

#include <chrono>
#include <thread>

#include "tests/platform/kernel_support.h"

namespace fs = std::filesystem;

class KernelNames : public KernelFilesTest
{
};

TEST_F(KernelNames, CaseAndSeparatorsDoNotMatter)
{
    machine.uAnsiCodePage = 932;
    Apply();
    PutOnDisk("c/winnt35/system32/Model.Ucf", "ucf");
    PutOnDisk("c/x.dat", "x");
    PutOnDisk("c/X.DAT", "X");
    PutOnDisk("D/Deep/Kv.cfg", "on D");
    PutOnDisk("c/\xE8\xA1\xA8.dat", "table");  // U+8868
    PutOnDisk("c/\xEF\xBC\xA1.dat", "wide A"); // U+FF21
    static const struct {
        const char *why, *name, *contents;
    } aRows[] = {
        {"the file's case differs", "C:\\winnt35\\system32\\MODEL.UCF", "ucf"},
        {"each directory's case differs", "c:\\WINNT35\\System32\\model.ucf", "ucf"},
        {"slashes, several in a row", "C:\\/winnt35/system32//Model.Ucf", "ucf"},
        {"through . and ..", "C:\\winnt35\\.\\system32\\none\\..\\Model.Ucf", "ucf"},
        {"blanks and dots at the end", "C:\\winnt35 \\system32.\\Model.Ucf. ", "ucf"},
        {"from the current directory", "winnt35\\system32\\Model.Ucf", "ucf"},
        {"another drive, in capitals on disk", "d:\\deep\\KV.CFG", "on D"},
        {"two names apart by case only: small", "C:\\x.dat", "x"},
        {"a trail byte that looks like a separator", "C:\\\x95\x5C.DAT", "table"},
        {"letters beyond ASCII have case too", "C:\\\x82\x81.dat", "wide A"}, // U+FF41
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        EXPECT_EQ(Contents(row.name), row.contents);
        EXPECT_TRUE(Exists(row.name));
    }
    // A host path follows what stands on disk, as far as it does.
    EXPECT_EQ(kvp::HostPath("c:/WINNT35/System32/model.ucf"), Host("c/winnt35/system32/Model.Ucf"));
    EXPECT_EQ(kvp::HostPath("D:\\deep\\NEW\\a.B"), Host("D/Deep/NEW/a.B"));
    EXPECT_EQ(kvp::HostPath("New.dat"), Host("c/New.dat"));
    EXPECT_EQ(kvp::HostPath("C:\\..\\..\\etc\\passwd"), "");
}

TEST_F(KernelNames, NamesThatLeadNowhereAreNotFound)
{
    PutOnDisk("secret.dat", "outside the drives");
    PutOnDisk("c/winnt35/a.dat", "a");
    std::string strDeep = "C:";
    for (int i = 0; i < 200; ++i)
        strDeep += "\\folders";
    const struct {
        const char *why;
        std::string strName;
        DWORD dwError;
    } aRows[] = {
        {"above the drive", "C:\\..\\secret.dat", 3},
        {"above the current directory", "..\\secret.dat", 3},
        {"a parent in disguise", "C:\\winnt35\\.. \\..\\secret.dat", 3},
        {"a drive that is none", "1:\\secret.dat", 3},
        {"another machine", "\\\\winnt35\\a.dat", 3},
        {"a stream", "C:\\winnt35\\a.dat:x", 3},
        {"no name", "", 2},
        {"a file in the place of a directory", "C:\\winnt35\\a.dat\\a.dat", 3},
        {"a file that does not exist", "C:\\winnt35\\b.dat", 2},
        {"a directory in other case", "C:\\WINNT35", 5},
        {"a component longer than any", "C:\\" + std::string(300, 'x'), 3},
        {"deeper than a path is long", strDeep, 3},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        for (const UINT uStyle : {OF_READ, OF_EXIST}) {
            SetLastError(0);
            EXPECT_EQ(Open(row.strName, uStyle), HFILE_ERROR);
            EXPECT_EQ(GetLastError(), row.dwError);
            EXPECT_EQ(of.nErrCode, row.dwError);
        }
        EXPECT_EQ(CreateFileA(row.strName.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                              OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr),
                  INVALID_HANDLE_VALUE);
    }
    ASSERT_EQ(mkfifo(Host("c/pipe").c_str(), 0600), 0);
    EXPECT_FALSE(Exists("C:\\pipe"));
    EXPECT_EQ(Contents("C:\\pipe"), std::nullopt) << "and nobody waits for its other end";
    EXPECT_EQ(kvp::CurrentlyHeld().nFiles, 0u);
}

TEST_F(KernelNames, BareNamesAreSearchedInOrder)
{
    machine.aSearchPath = {"C:\\tools", "D:\\more"};
    Apply();
    static const struct {
        const char *place, *path;
    } aBackwards[] = {
        {"d/more/KV.DAT", "D:\\more\\kv.dat"},
        {"c/tools/kv.dat", "C:\\tools\\kv.dat"},
        {"c/winnt35/system32/Kv.dat", "C:\\winnt35\\system32\\kv.dat"},
        {"c/winnt35/kv.dat", "C:\\winnt35\\kv.dat"},
        {"c/kv.dat", "C:\\kv.dat"},
    };
    EXPECT_EQ(Contents("kv.dat"), std::nullopt);
    for (const auto &row : aBackwards) {
        PutOnDisk(row.place, row.place);
        EXPECT_EQ(Contents("kv.dat"), row.place);
        EXPECT_STREQ(of.szPathName, row.path);
        EXPECT_EQ(static_cast<BYTE>(of.szPathName[127]), 0xAB) << "unused rest of the caller's";
    }
    fs::remove(Host("c/kv.dat"));
    EXPECT_EQ(CreateFileA("kv.dat", GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr),
              INVALID_HANDLE_VALUE)
        << "only OpenFile searches";
}

// Listings are kept once a directory has been at rest for some seconds.
TEST_F(KernelNames, WhatChangedAMomentAgoIsSeen)
{
    for (int i = 0; i < 20; ++i) {
        EXPECT_FALSE(Exists("C:\\WINNT35\\new.dat"));
        PutOnDisk("c/winnt35/New.dat", "new");
        EXPECT_EQ(Contents("NEW.DAT"), "new");
        fs::rename(Host("c/winnt35/New.dat"), Host("c/winnt35/nEW.dat"));
        EXPECT_TRUE(Exists("C:\\winnt35\\New.dat"));
        fs::remove(Host("c/winnt35/nEW.dat"));
    }
    PutOnDisk("c/Other.dat", "other");
    PutOnDisk("c/OTHER.dat", "in capitals");
    std::this_thread::sleep_for(std::chrono::milliseconds(3100));
    EXPECT_FALSE(Exists("C:\\made.dat"));
    EXPECT_EQ(Contents("C:\\Other.dat"), "other");
    PutOnDisk("c/Made.dat", "made");
    EXPECT_TRUE(Exists("C:\\made.dat"));
    fs::remove(Host("c/Other.dat"));
    EXPECT_EQ(Contents("C:\\Other.dat"), "in capitals");

    // Another directory of the same name: the old one's listing says nothing of it.
    fs::rename(Host("c"), Host("old"));
    PutOnDisk("c/Third.dat", "third");
    EXPECT_TRUE(Exists("C:\\third.dat"));
    EXPECT_FALSE(Exists("C:\\made.dat"));
}

TEST_F(KernelNames, FilesInMemoryHideTheDisk)
{
    PutOnDisk("c/kv.dat", "disk");
    PutInMemory("c:\\winnt35\\KV.dat", "windows");
    EXPECT_EQ(Contents("kv.dat"), "disk");
    kvp::PutAbsentFile("C:\\kv.DAT");
    EXPECT_EQ(Contents("kv.dat"), "windows") << "an absent one lets the search go on";
    EXPECT_FALSE(Exists("C:\\kv.dat"));
    PutInMemory("C:\\kv.dat", "memory");
    EXPECT_EQ(Contents("KV.DAT"), "memory");
    kvp::ClearMemoryFiles();
    EXPECT_EQ(Contents("kv.dat"), "disk");

    kvp::Configure({}); // a machine without drives on disk
    EXPECT_FALSE(Exists("kv.dat"));
    PutInMemory("C:\\winnt35\\kv.dat", "memory alone");
    EXPECT_EQ(Contents("kv.dat"), "memory alone");
}
