// Which machine is played, and memory.
#include <unistd.h>

#include <cstring>
#include <memory>
#include <thread>

#include <fmt/format.h>
#include <gmock/gmock.h>

#include "tests/support/machine.h"

namespace
{

using Variables = std::vector<const char *>;

// The machine of an environment that holds these alone.
kvp::Machine MachineOf(Variables variables)
{
    variables.push_back("HOME=/home/user"); // the first of a name counts
    variables.push_back(nullptr);
    const std::unique_ptr<char *, void (*)(char **)> kept(environ,
                                                          [](char **old) { environ = old; });
    environ = const_cast<char **>(variables.data());
    return kvp::FromEnvironment();
}

} // namespace

TEST(KernelEnvironment, EveryFieldHasItsValueOrItsDefault)
{
    static const struct {
        const char *why;
        Variables set;
        const char *machine; // language, code page, measure
    } aRows[] = {
        {"nothing", {}, "0409 1252 0"},
        {"the C locale", {"LANG=C.UTF-8"}, "0409 1252 0"},
        {"American", {"LANG=en_US"}, "0409 1252 1"},
        {"Japanese", {"LANG=ja_JP.eucJP"}, "0411 932 0"},
        {"a category first", {"LANG=en_US", "LC_MESSAGES=fr_CH@euro"}, "100C 1252 1"},
        {"LC_ALL first", {"LC_ALL=en_GB", "LC_MEASUREMENT=en_US"}, "0809 1252 0"},
        {"a locale nobody knows", {"LANG=xx_XX"}, "0409 1252 0"},
        {"set by name", {"LANG=en_US", "KV_LANG=ja", "KV_ACP=1252"}, "0411 1252 1"},
        {"set by number", {"KV_LANG=0x0c07", "KV_MEASURE=1"}, "0C07 1252 1"},
        {"set and empty", {"KV_LANG=", "KV_ACP=", "KV_MEASURE="}, "0409 1252 0"},
    };
    for (const auto &row : aRows) {
        const kvp::Machine machine = MachineOf(row.set);
        EXPECT_EQ(
            fmt::format("{:04X} {} {}", machine.wLang, machine.uAnsiCodePage, machine.nMeasure),
            row.machine)
            << row.why;
    }
    EXPECT_EQ(MachineOf({}).strRoot, "/home/user/.local/share/kvhost");
    EXPECT_EQ(MachineOf({"XDG_DATA_HOME=/data"}).strRoot, "/data/kvhost");
    EXPECT_EQ(MachineOf({"XDG_DATA_HOME=data"}).strRoot, "/home/user/.local/share/kvhost");
    const kvp::Machine machine = MachineOf({"KV_ROOT=/r/../machine", "KV_OSVERSION=4.0",
                                            "KV_PATH=C:\\tools;;d:/more;", "KV_TRANSCRIPT=/tmp/t"});
    EXPECT_EQ(machine.strRoot + machine.strTranscript, "/machine/tmp/t");
    EXPECT_EQ(std::pair(machine.dwMajor, machine.dwMinor), std::pair(4u, 0u));
    EXPECT_EQ(machine.aSearchPath, (std::vector<std::string>{"C:\\tools", "d:/more"}));
}

TEST(KernelEnvironment, AWrongVariableIsNamedWithWhatItMayHold)
{
    static const struct {
        const char *variable, *hint;
    } aRows[] = {
        {"KV_LANG=klingon", "de_DE"},   {"KV_LANG=0x10000", "0x0407"},
        {"KV_LANG=0x0", "0x0407"},      {"KV_ACP=65001", "1250"},
        {"KV_ACP=932x", "932"},         {"KV_MEASURE=2", "metric"},
        {"KV_OSVERSION=3", "3.51"},     {"KV_OSVERSION=3.51.1", "3.51"},
        {"KV_PATH=C:\\t;..\\", "C:\\"}, {"HOME=", "KV_ROOT"},
    };
    for (const auto &row : aRows) {
        const std::string strName(row.variable, std::strchr(row.variable, '='));
        EXPECT_THAT([&] { MachineOf({row.variable}); },
                    testing::ThrowsMessage<std::invalid_argument>(
                        testing::AllOf(testing::HasSubstr(strName), testing::HasSubstr(row.hint))))
            << row.variable;
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
    OSVERSIONINFOW info{};
    info.dwOSVersionInfoSize = 275;
    EXPECT_FALSE(GetVersionExW(&info));
    EXPECT_EQ(GetLastError(), 122u);
    info.dwOSVersionInfoSize = 276;
    EXPECT_TRUE(GetVersionExW(&info));
    EXPECT_EQ(std::pair(info.dwMajorVersion, info.dwMinorVersion), std::pair(4u, 10u));
    EXPECT_EQ(GetUserDefaultLangID(), 0x0411);

    char sz[4] = {'x', 'x', 'x', 'x'};
    EXPECT_EQ(GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_IMEASURE, nullptr, 0), 2);
    EXPECT_EQ(GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_IMEASURE, sz, 1), 0);
    EXPECT_EQ(GetLastError(), 122u);
    EXPECT_EQ(GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_IMEASURE, sz, 3), 2);
    EXPECT_EQ(std::string(sz, 4), std::string("1\0\xABx", 4));
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
    ASSERT_TRUE(pDirty && pClean);
    EXPECT_EQ(std::string(pDirty, pDirty + 64), std::string(64, '\xAB'));
    EXPECT_EQ(std::string(pClean, pClean + 64), std::string(64, '\0'));
    kvp::FailCall(kvp::Call::Alloc, 0);
    EXPECT_EQ(LocalAlloc(LMEM_FIXED, 1), nullptr);
    EXPECT_EQ(GetLastError(), 8u);
    EXPECT_EQ(GlobalAlloc(GMEM_ZEROINIT, 0xFFFFFFFF), nullptr) << "more than the machine has";
    EXPECT_EQ(GlobalAlloc(4, 1), nullptr) << "a flag that the machine does not know";
    EXPECT_EQ(kvp::CurrentlyHeld().nBlocks, 2u);
    EXPECT_EQ(GlobalFree(pDirty), nullptr);
    EXPECT_EQ(LocalFree(pClean), nullptr);
    EXPECT_EQ(GlobalFree(nullptr), nullptr);
    EXPECT_EQ(kvp::CurrentlyHeld().nBlocks, 0u);
}

TEST_F(KernelMachine, LocksOfABlockThatMayMoveAreCounted)
{
    HGLOBAL hBlock = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, 562);
    LPVOID pFirst = GlobalLock(hBlock);
    EXPECT_EQ(GlobalLock(hBlock), pFirst);
    EXPECT_EQ(GlobalHandle(pFirst), hBlock);
    EXPECT_EQ(GlobalSize(hBlock), 562u);
    EXPECT_TRUE(GlobalUnlock(hBlock)) << "once more";
    EXPECT_FALSE(GlobalUnlock(hBlock));
    EXPECT_EQ(GetLastError(), ERROR_SUCCESS);
    EXPECT_FALSE(GlobalUnlock(hBlock));
    EXPECT_EQ(GetLastError(), 158u) << "once too often";
    GlobalFree(hBlock);

    HGLOBAL hFixed = GlobalAlloc(GMEM_FIXED, 1);
    EXPECT_TRUE(GlobalUnlock(hFixed)) << "it cannot move";
    GlobalFree(hFixed);
    EXPECT_FALSE(GlobalUnlock(nullptr));
}

TEST_F(KernelMachine, LowBlocksLieBelowFourGib)
{
    std::vector<std::pair<BYTE *, size_t>> blocks;
    for (const size_t cb : {1, 4096, 64 << 20}) {
        auto *pBlock = static_cast<BYTE *>(kvp::AllocLow(cb));
        pBlock[0] = pBlock[cb - 1] = 1;
        EXPECT_LE(reinterpret_cast<uintptr_t>(pBlock) + cb, 0x100000000u);
        blocks.emplace_back(pBlock, cb);
    }
    for (const auto &[pBlock, cb] : blocks)
        kvp::FreeLow(pBlock, cb);
    EXPECT_EQ(kvp::AllocLow(0), nullptr);
    EXPECT_EQ(kvp::AllocLow(size_t{1} << 40), nullptr);
}
