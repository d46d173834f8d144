// Which machine is played, and memory.
#include <cstdlib>
#include <cstring>
#include <map>
#include <thread>

#include "tests/support/machine.h"

namespace
{

// The variables that matter, unset for one test and put back afterwards.
class CleanEnvironment
{
  public:
    CleanEnvironment()
    {
        for (const char *pszName : aNames) {
            if (const char *pszValue = std::getenv(pszName))
                m_kept[pszName] = pszValue;
            unsetenv(pszName);
        }
    }
    ~CleanEnvironment()
    {
        for (const char *pszName : aNames)
            unsetenv(pszName);
        for (const auto &[strName, strValue] : m_kept)
            setenv(strName.c_str(), strValue.c_str(), 1);
    }
    CleanEnvironment(const CleanEnvironment &) = delete;
    CleanEnvironment &operator=(const CleanEnvironment &) = delete;

  private:
    static constexpr const char *aNames[] = {
        "KV_ROOT",        "KV_LANG",       "KV_ACP", "KV_MEASURE", "KV_OSVERSION",
        "KV_PATH",        "KV_TRANSCRIPT", "LC_ALL", "LANG",       "LC_MESSAGES",
        "LC_MEASUREMENT", "XDG_DATA_HOME", "HOME"};
    std::map<std::string, std::string> m_kept;
};

using Variables = std::vector<std::pair<const char *, const char *>>;

kvp::Machine MachineOf(const Variables &variables)
{
    const CleanEnvironment clean;
    setenv("HOME", "/home/user", 1);
    for (const auto &[pszName, pszValue] : variables)
        setenv(pszName, pszValue, 1);
    return kvp::FromEnvironment();
}

} // namespace

TEST(KernelEnvironment, EveryFieldHasItsValueOrItsDefault)
{
    static const struct {
        const char *why;
        Variables set;
        LANGID wLang;
        UINT uPage;
        int nMeasure;
    } aRows[] = {
        {"nothing", {}, 0x0409, 1252, 0},
        {"the C locale", {{"LANG", "C.UTF-8"}}, 0x0409, 1252, 0},
        {"German", {{"LANG", "de_DE.UTF-8"}}, 0x0407, 1252, 0},
        {"American", {{"LANG", "en_US"}}, 0x0409, 1252, 1},
        {"Japanese", {{"LANG", "ja_JP.eucJP"}}, 0x0411, 932, 0},
        {"a category before LANG",
         {{"LANG", "en_US"}, {"LC_MESSAGES", "fr_CH@euro"}},
         0x100C,
         1252,
         1},
        {"LC_ALL before all", {{"LC_ALL", "en_GB"}, {"LC_MEASUREMENT", "en_US"}}, 0x0809, 1252, 0},
        {"a locale nobody knows", {{"LANG", "xx_XX"}}, 0x0409, 1252, 0},
        {"set by name", {{"LANG", "en_US"}, {"KV_LANG", "ja_JP"}}, 0x0411, 932, 1},
        {"set by number", {{"KV_LANG", "0x0c07"}, {"KV_ACP", "1250"}}, 0x0C07, 1250, 0},
        {"set for Japanese",
         {{"KV_LANG", "ja"}, {"KV_ACP", "1252"}, {"KV_MEASURE", "1"}},
         0x0411,
         1252,
         1},
        {"set and empty", {{"KV_LANG", ""}, {"KV_ACP", ""}, {"KV_MEASURE", ""}}, 0x0409, 1252, 0},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        const kvp::Machine machine = MachineOf(row.set);
        EXPECT_EQ(machine.wLang, row.wLang);
        EXPECT_EQ(machine.uAnsiCodePage, row.uPage);
        EXPECT_EQ(machine.nMeasure, row.nMeasure);
    }
    EXPECT_EQ(MachineOf({}).strRoot, "/home/user/.local/share/kvhost");
    EXPECT_EQ(MachineOf({{"XDG_DATA_HOME", "/data"}}).strRoot, "/data/kvhost");
    EXPECT_EQ(MachineOf({{"XDG_DATA_HOME", "data"}}).strRoot, "/home/user/.local/share/kvhost");
    const kvp::Machine machine = MachineOf({{"KV_ROOT", "/r/../machine"},
                                            {"KV_OSVERSION", "4.0"},
                                            {"KV_PATH", "C:\\tools;;d:/more;"},
                                            {"KV_TRANSCRIPT", "/tmp/t"}});
    EXPECT_EQ(machine.strRoot, "/machine");
    EXPECT_EQ(std::pair(machine.dwMajor, machine.dwMinor), std::pair(4u, 0u));
    EXPECT_EQ(machine.aSearchPath, (std::vector<std::string>{"C:\\tools", "d:/more"}));
    EXPECT_EQ(machine.strTranscript, "/tmp/t");
    EXPECT_EQ(MachineOf({}).dwMinor, 51u);
}

TEST(KernelEnvironment, AWrongVariableIsNamedWithWhatItMayHold)
{
    static const struct {
        const char *name, *value, *hint;
    } aRows[] = {
        {"KV_LANG", "klingon", "de_DE"},
        {"KV_LANG", "0x10000", "0x0407"},
        {"KV_LANG", "0x0", "0x0407"},
        {"KV_ACP", "65001", "1250"},
        {"KV_ACP", "932x", "932"},
        {"KV_ACP", "-1", "932"},
        {"KV_MEASURE", "2", "metric"},
        {"KV_MEASURE", "inch", "1 (inch)"},
        {"KV_OSVERSION", "three", "3.51"},
        {"KV_OSVERSION", "3", "3.51"},
        {"KV_OSVERSION", "3.51.1", "3.51"},
        {"KV_PATH", "C:\\tools;..\\up", "C:\\tools"},
        {"HOME", "", "KV_ROOT"},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(std::string(row.name) + "=" + row.value);
        try {
            MachineOf({{row.name, row.value}});
            ADD_FAILURE() << "accepted";
        } catch (const std::invalid_argument &error) {
            EXPECT_NE(std::string(error.what()).find(row.name), std::string::npos);
            EXPECT_NE(std::string(error.what()).find(row.hint), std::string::npos);
        }
    }
}

class KernelMachine : public MachineTest
{
};

TEST_F(KernelMachine, VersionLanguageAndLocaleAreTheMachines)
{
    machine.dwMajor = 4;
    machine.dwMinor = 10;
    machine.wLang = 0x0411;
    machine.nMeasure = 1;
    Apply();
    OSVERSIONINFOW info;
    std::memset(&info, 0xAB, sizeof info);
    info.dwOSVersionInfoSize = 275;
    EXPECT_FALSE(GetVersionExW(&info));
    EXPECT_EQ(GetLastError(), 122u);
    info.dwOSVersionInfoSize = 276;
    EXPECT_TRUE(GetVersionExW(&info));
    EXPECT_EQ(std::pair(info.dwMajorVersion, info.dwMinorVersion), std::pair(4u, 10u));
    EXPECT_EQ(info.szCSDVersion[0], 0);
    EXPECT_FALSE(GetVersionExW(nullptr));
    EXPECT_EQ(GetUserDefaultLangID(), 0x0411);

    char sz[4] = {'x', 'x', 'x', 'x'};
    EXPECT_EQ(GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_IMEASURE, nullptr, 0), 2);
    EXPECT_EQ(GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_IMEASURE, sz, 1), 0);
    EXPECT_EQ(GetLastError(), 122u);
    EXPECT_EQ(sz[0], 'x');
    EXPECT_EQ(GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_IMEASURE, sz, 3), 2);
    EXPECT_EQ(std::string(sz, 4), std::string("1\0\xABx", 4));
    EXPECT_EQ(GetLocaleInfoA(LOCALE_USER_DEFAULT, 0x7FFF, sz, 3), 0);
    EXPECT_EQ(GetLastError(), 1004u);
}

TEST_F(KernelMachine, TheSystemDirectoryFitsOrSaysHowMuchItNeeds)
{
    const std::string strSystem = "C:\\winnt35\\system32";
    char sz[32];
    std::memset(sz, 'x', sizeof sz);
    const UINT cbNeeded = static_cast<UINT>(strSystem.size() + 1);
    EXPECT_EQ(GetSystemDirectoryA(sz, cbNeeded - 1), cbNeeded);
    EXPECT_EQ(GetSystemDirectoryA(nullptr, 0), cbNeeded);
    EXPECT_EQ(sz[0], 'x');
    EXPECT_EQ(GetSystemDirectoryA(sz, cbNeeded + 1), strSystem.size());
    EXPECT_EQ(sz, strSystem);
    EXPECT_EQ(std::string(sz + cbNeeded, 2), "\xABx");
}

TEST_F(KernelMachine, EachThreadHasItsOwnLastError)
{
    SetLastError(5);
    std::thread([] {
        EXPECT_EQ(GetLastError(), 0u);
        SetLastError(87);
    }).join();
    EXPECT_EQ(GetLastError(), 5u);
}

TEST_F(KernelMachine, BlocksAreCountedFilledAndBounded)
{
    auto *pDirty = static_cast<BYTE *>(GlobalAlloc(GMEM_FIXED, 64));
    auto *pClean = static_cast<BYTE *>(LocalAlloc(LMEM_ZEROINIT, 64));
    void *pEmpty = GlobalAlloc(GMEM_ZEROINIT, 0);
    ASSERT_TRUE(pDirty && pClean && pEmpty);
    EXPECT_EQ(std::string(pDirty, pDirty + 64), std::string(64, '\xAB'));
    EXPECT_EQ(std::string(pClean, pClean + 64), std::string(64, '\0'));
    EXPECT_EQ(kvp::CurrentlyHeld().nBlocks, 3u);
    kvp::FailCall(kvp::Call::Alloc, 0);
    EXPECT_EQ(LocalAlloc(LMEM_FIXED, 1), nullptr);
    EXPECT_EQ(GetLastError(), 8u);
    EXPECT_EQ(GlobalAlloc(GMEM_ZEROINIT, 0xFFFFFFFF), nullptr) << "more than the machine has";
    EXPECT_EQ(GlobalAlloc(4, 1), nullptr) << "a flag that the machine does not know";
    EXPECT_EQ(kvp::CurrentlyHeld().nBlocks, 3u);
    EXPECT_EQ(GlobalFree(pDirty), nullptr);
    EXPECT_EQ(LocalFree(pClean), nullptr);
    EXPECT_EQ(GlobalFree(pEmpty), nullptr);
    EXPECT_EQ(GlobalFree(nullptr), nullptr);
    EXPECT_EQ(kvp::CurrentlyHeld().nBlocks, 0u);
}

TEST_F(KernelMachine, LocksOfABlockThatMayMoveAreCounted)
{
    HGLOBAL hBlock = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, 562);
    LPVOID pFirst = GlobalLock(hBlock), pSecond = GlobalLock(hBlock);
    ASSERT_NE(pFirst, nullptr);
    EXPECT_EQ(pFirst, pSecond);
    EXPECT_EQ(GlobalHandle(pFirst), hBlock);
    EXPECT_EQ(GlobalSize(hBlock), 562u);
    EXPECT_TRUE(GlobalUnlock(hBlock)) << "once more";
    EXPECT_FALSE(GlobalUnlock(hBlock));
    EXPECT_EQ(GetLastError(), ERROR_SUCCESS);
    EXPECT_FALSE(GlobalUnlock(hBlock));
    EXPECT_EQ(GetLastError(), 158u) << "once too often";
    EXPECT_EQ(GlobalFree(hBlock), nullptr);

    HGLOBAL hFixed = GlobalAlloc(GMEM_FIXED, 1);
    EXPECT_EQ(GlobalLock(hFixed), hFixed);
    EXPECT_TRUE(GlobalUnlock(hFixed)) << "it cannot move";
    GlobalFree(hFixed);
    EXPECT_EQ(GlobalLock(nullptr), nullptr);
    EXPECT_FALSE(GlobalUnlock(nullptr));
    EXPECT_EQ(kvp::CurrentlyHeld().nBlocks, 0u);
}

TEST_F(KernelMachine, LowBlocksLieBelowFourGib)
{
    constexpr size_t aSizes[] = {1, 4096, 1 << 20, 64 << 20};
    std::map<uintptr_t, size_t> blocks;
    for (const size_t cb : aSizes) {
        auto *pBlock = static_cast<BYTE *>(kvp::AllocLow(cb));
        ASSERT_NE(pBlock, nullptr);
        pBlock[0] = pBlock[cb - 1] = 1;
        blocks[reinterpret_cast<uintptr_t>(pBlock)] = cb;
    }
    EXPECT_EQ(blocks.size(), std::size(aSizes));
    for (const auto &[uBlock, cb] : blocks) {
        EXPECT_LE(uBlock + cb, 0x100000000u);
        kvp::FreeLow(reinterpret_cast<void *>(uBlock), cb);
    }
    EXPECT_EQ(kvp::AllocLow(0), nullptr);
    EXPECT_EQ(kvp::AllocLow(size_t{1} << 40), nullptr);
    kvp::FreeLow(nullptr, 1);
}
