// Reading and writing through handles, and what failures leave behind.
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <set>

#include <gmock/gmock.h>

#include "platform/kernel/writer.h"
#include "tests/platform/kernel_support.h"

namespace fs = std::filesystem;

namespace
{

std::string Pattern(size_t cb)
{
    std::string strBytes(cb, '\0');
    for (size_t i = 0; i < cb; ++i)
        strBytes[i] = static_cast<char>(i * 7 + i / 251);
    return strBytes;
}

HANDLE AsHandle(HFILE hFile)
{
    return reinterpret_cast<HANDLE>(static_cast<intptr_t>(hFile));
}

constexpr UINT FAILED = static_cast<UINT>(HFILE_ERROR);

} // namespace

class KernelReading : public KernelFilesTest
{
};

TEST_F(KernelReading, EverySizeIsReadAsItStands)
{
    for (const size_t cbFile : {0u, 65535u, 65536u, 65537u, 200000u}) {
        const std::string strFile = Pattern(cbFile);
        for (const bool bInMemory : {false, true}) {
            SCOPED_TRACE(std::to_string(cbFile) + (bInMemory ? " in memory" : " on disk"));
            bInMemory ? PutInMemory("C:\\kv.dat", strFile) : PutOnDisk("c/kv.dat", strFile);
            EXPECT_EQ(Contents("kv.dat"), strFile);
            const HFILE hFile = Open("kv.dat");
            EXPECT_EQ(GetFileSize(AsHandle(hFile), nullptr), cbFile);
            for (const size_t iFrom : {size_t{0}, cbFile / 2, size_t{65530}, size_t{0}, cbFile}) {
                std::string strRead(100, 'x');
                std::string strWanted = strFile.substr(std::min(iFrom, cbFile), strRead.size());
                _llseek(hFile, static_cast<LONG>(iFrom), FILE_BEGIN);
                EXPECT_EQ(_lread(hFile, strRead.data(), 100), strWanted.size());
                strWanted.resize(strRead.size(), '\xAB');
                EXPECT_EQ(strRead, strWanted) << "from " << iFrom;
            }
            EXPECT_EQ(_lclose(hFile), 0);
        }
        kvp::ClearMemoryFiles();
    }
}

TEST_F(KernelReading, SeeksGoAnywhereButBeforeTheStart)
{
    PutOnDisk("c/kv.dat", "0123456789");
    const HFILE hFile = Open("kv.dat");
    static const struct {
        const char *why;
        LONG lOffset;
        int nOrigin;
        LONG lResult;
        const char *read;
    } aSteps[] = {
        {"from the start", 4, 0, 4, "4"},
        {"on from where the read ended", 2, 1, 7, "7"},
        {"before the start: nothing moves", -9, 1, -1, "8"},
        {"from the end", -1, 2, 9, "9"},
        {"past the end", 90, 1, 100, ""},
        {"as far as there is", 0x7FFFFFFF, 0, 0x7FFFFFFF, ""},
        {"farther: nothing moves", 1, 1, -1, ""},
        {"an origin that is none", 0, 3, -1, ""},
        {"and back", 0, 0, 0, "0"},
    };
    for (const auto &step : aSteps) {
        SCOPED_TRACE(step.why);
        char c = 0;
        EXPECT_EQ(_llseek(hFile, step.lOffset, step.nOrigin), step.lResult);
        const UINT cbRead = _lread(hFile, &c, 1);
        EXPECT_EQ(std::string(&c, cbRead), step.read);
    }
    _lclose(hFile);
}

TEST_F(KernelReading, WrongHandlesAreRefused)
{
    PutOnDisk("c/kv.dat", "contents");
    char ab[8];
    DWORD cb = 0;
    const HFILE hClosed = Open("kv.dat");
    EXPECT_EQ(_lclose(hClosed), 0);
    const HFILE hOpen = Open("kv.dat"); // in the place of the closed one
    const HFILE hWriter = Open("new.dat", OF_CREATE | OF_WRITE);
    fs::remove(Host("c/kv.dat")); // what was opened stays, whatever becomes of the file
    for (const HFILE hFile : {hClosed, HFILE_ERROR, 0, 4}) {
        SCOPED_TRACE(hFile);
        EXPECT_EQ(_lread(hFile, ab, 1), FAILED);
        EXPECT_EQ(_lwrite(hFile, ab, 1), FAILED);
        EXPECT_EQ(_llseek(hFile, 0, FILE_BEGIN), HFILE_ERROR);
        EXPECT_EQ(GetFileSize(AsHandle(hFile), nullptr), INVALID_FILE_SIZE);
        EXPECT_EQ(_lclose(hFile), HFILE_ERROR);
        EXPECT_EQ(GetLastError(), 6u);
    }
    const auto Refused = [](UINT uResult, DWORD dwError) {
        EXPECT_EQ(uResult, FAILED);
        EXPECT_EQ(GetLastError(), dwError);
    };
    Refused(_lread(hWriter, ab, 1), 5);
    Refused(_lwrite(hOpen, ab, 1), 5);
    Refused(_lread(hOpen, nullptr, 1), 998);
    EXPECT_TRUE(ReadFile(AsHandle(hOpen), ab, 8, &cb, nullptr)) << "either family takes it";
    EXPECT_EQ(std::string(ab, cb), "contents");
    EXPECT_TRUE(CloseHandle(AsHandle(hOpen)));
    EXPECT_EQ(_lclose(hWriter), 0);
    EXPECT_EQ(kvp::CurrentlyHeld().nFiles, 0u);
}

TEST_F(KernelReading, AFullTableRefusesAndRecovers)
{
    PutInMemory("C:\\kv.dat", "x");
    std::vector<HFILE> aOpen;
    while (aOpen.empty() || aOpen.back() != HFILE_ERROR)
        aOpen.push_back(Open("kv.dat"));
    EXPECT_EQ(of.nErrCode, 4u);
    for (const HFILE hFile : aOpen)
        EXPECT_EQ(_lclose(hFile), hFile == HFILE_ERROR ? HFILE_ERROR : 0);
    EXPECT_EQ(Contents("kv.dat"), "x");
}

class KernelWriting : public KernelFilesTest
{
  protected:
    // Three writes, the second over the first's end; true when every call succeeded.
    bool Save(const char *name, UINT uStyle)
    {
        const HFILE hFile = Open(name, uStyle);
        if (hFile == HFILE_ERROR)
            return false;
        bool bDone = _lwrite(hFile, "new??", 5) == 5 && _llseek(hFile, -2, FILE_CURRENT) == 3;
        bDone = _lwrite(hFile, " con", 4) == 4 && bDone;
        bDone = _lwrite(hFile, "tents", 5) == 5 && bDone;
        return _lclose(hFile) == 0 && bDone;
    }
    // What the disk holds in the place of the file, with the names of what stands beside it.
    std::string OnDisk() const
    {
        std::string strAll;
        for (const auto &entry : fs::directory_iterator(Host(UCF_PLACE).parent_path())) {
            std::ifstream file(entry.path(), std::ios::binary);
            strAll += entry.path().filename().string() + ": ";
            strAll.append(std::istreambuf_iterator<char>(file), {});
        }
        return strAll;
    }
    static constexpr const char *UCF = "C:\\winnt35\\system32\\KV.ucf";
    static constexpr const char *UCF_PLACE = "c/winnt35/system32/kv.UCF"; // in other case on disk
    static constexpr const char *OLD = "kv.UCF: old", *NEW = "kv.UCF: new contents";
};

TEST_F(KernelWriting, TheNewFileTakesItsPlaceWhenItIsClosed)
{
    PutOnDisk(UCF_PLACE, "old");
    fs::permissions(Host(UCF_PLACE), fs::perms::owner_read | fs::perms::owner_write);
    const HFILE hFile = Open(UCF, OF_CREATE | OF_WRITE);
    EXPECT_EQ(_lwrite(hFile, "new contents", 12), 12u);
    EXPECT_EQ(GetFileSize(AsHandle(hFile), nullptr), 12u);
    EXPECT_EQ(Contents(UCF), "old");
    EXPECT_EQ(_lclose(hFile), 0);
    EXPECT_EQ(OnDisk(), NEW);
    EXPECT_EQ(fs::status(Host(UCF_PLACE)).permissions(),
              fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(KernelWriting, AnExistingFileKeepsWhatIsNotWrittenOver)
{
    PutOnDisk("c/winnt35/kv.dat", "0123456789abcdef");
    EXPECT_TRUE(Save("KV.DAT", OF_WRITE)) << "found by search";
    EXPECT_EQ(Contents("kv.dat"), "new contentscdef");
    const auto EndAt = [this](LONG lEnd) {
        const HFILE hFile = Open("kv.dat", OF_WRITE);
        EXPECT_EQ(_llseek(hFile, lEnd, FILE_BEGIN), lEnd);
        EXPECT_EQ(_lwrite(hFile, nullptr, 0), 0u);
        EXPECT_EQ(_lclose(hFile), 0);
        return Contents("kv.dat");
    };
    EXPECT_EQ(EndAt(18), std::string("new contentscdef\0\0", 18));
    EXPECT_EQ(EndAt(3), "new");
}

TEST_F(KernelWriting, WhatCannotBeWrittenIsRefusedAtOnce)
{
    static const struct {
        const char *why, *name;
        UINT uStyle;
        DWORD dwError;
    } aRows[] = {
        {"no such file anywhere", "none.dat", OF_WRITE, 2},
        {"no such directory", "C:\\none\\kv.dat", OF_CREATE, 3},
        {"out of the drives", "C:\\..\\kv.dat", OF_CREATE, 3},
        {"a directory", "C:\\winnt35", OF_CREATE, 5},
        {"a drive", "C:\\", OF_CREATE, 5},
        {"a style that is none", "kv.dat", OF_CREATE | 0x200, 87},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        EXPECT_EQ(Open(row.name, row.uStyle), HFILE_ERROR);
        EXPECT_EQ(GetLastError(), row.dwError);
    }
}

TEST_F(KernelWriting, AnyFailedStepLeavesTheOldFileOrTheNewOneWhole)
{
    for (const kvp::Call call : {kvp::Call::OpenFile, kvp::Call::Write, kvp::Call::Close}) {
        const int nFailures = WithEachFailure(call, [&](int n) {
            PutOnDisk(UCF_PLACE, "old");
            const bool bSaved = Save(UCF, OF_CREATE | OF_WRITE);
            EXPECT_EQ(bSaved, !HasReached(call, n)) << "a failure is told, and nothing else fails";
            EXPECT_TRUE(OnDisk() == NEW || (OnDisk() == OLD && !bSaved)) << OnDisk();
            EXPECT_EQ(kvp::CurrentlyHeld().nFiles, 0u);
        });
        // Three writes of the caller's, then bytes, sync, rename and the directory's sync.
        EXPECT_GE(nFailures, call == kvp::Call::Write ? 7 : 1);
    }
}

TEST_F(KernelWriting, ADiskThatIsFullLeavesTheOldFile)
{
    PutOnDisk(UCF_PLACE, "old");
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{.rlim_cur = 6, .rlim_max = before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    const bool bSaved = Save(UCF, OF_CREATE | OF_WRITE);
    const DWORD dwError = GetLastError();
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_FALSE(bSaved);
    EXPECT_EQ(dwError, 112u);
    EXPECT_EQ(OnDisk(), OLD);
}

// Saves of one letter until told to stop; the child's process id.
static pid_t SaveForever(const char *name, char letter)
{
    const pid_t process = fork();
    if (process != 0)
        return process;
    const std::string all(20000, letter);
    for (;;) {
        OFSTRUCT of{};
        const HFILE hFile = OpenFile(name, &of, OF_WRITE);
        for (size_t i = 0; i < all.size(); i += 100) // as a table is written, record by record
            _lwrite(hFile, &all[i], 100);
        _lclose(hFile);
    }
}

TEST_F(KernelWriting, WhileTwoProcessesSaveAReaderFindsOneOfThemWhole)
{
    const std::string strFirst(20000, 'a'), strSecond(20000, 'b');
    PutOnDisk(UCF_PLACE, strFirst);
    const pid_t aWriters[] = {SaveForever(UCF, 'a'), SaveForever(UCF, 'b')};
    std::set<std::string> found;
    for (int i = 0; i < 5000 || (found.size() < 2 && i < 1000000); ++i)
        found.insert(Contents(UCF).value_or(""));
    for (const pid_t process : aWriters) {
        kill(process, SIGKILL);
        waitpid(process, nullptr, 0);
    }
    found.insert(Contents(UCF).value_or("")); // wherever they were killed
    EXPECT_EQ(found, (std::set{strFirst, strSecond}));
}
