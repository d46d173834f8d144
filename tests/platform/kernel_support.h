// A machine with its directories on disk, and files looked at from both sides: by the layer's
// calls and on the host.
#ifndef KV_TESTS_PLATFORM_KERNEL_SUPPORT_H
#define KV_TESTS_PLATFORM_KERNEL_SUPPORT_H

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/machine.h"

class KernelFilesTest : public MachineTest
{
  protected:
    KernelFilesTest() { std::filesystem::create_directories(Host("c/winnt35/system32")); }

    std::filesystem::path Host(const std::string &place) const
    {
        return std::filesystem::path(machine.strRoot) / place;
    }
    void PutOnDisk(const std::string &place, const std::string &contents) const
    {
        std::filesystem::create_directories(Host(place).parent_path());
        std::ofstream(Host(place), std::ios::binary) << contents;
    }
    static void PutInMemory(const std::string &dosPath, const std::string &contents)
    {
        kvp::PutMemoryFile(dosPath, std::vector<uint8_t>(contents.begin(), contents.end()));
    }
    HFILE Open(const std::string &name, UINT uStyle = OF_READ)
    {
        return OpenFile(name.c_str(), &of, uStyle);
    }
    bool Exists(const std::string &name) { return Open(name, OF_EXIST) != HFILE_ERROR; }
    // What OpenFile and _lread give, in one piece; nothing when it cannot be opened.
    std::optional<std::string> Contents(const std::string &name)
    {
        const HFILE hFile = Open(name);
        if (hFile == HFILE_ERROR)
            return std::nullopt;
        std::string strContents(1 << 20, '\0');
        strContents.resize(
            _lread(hFile, strContents.data(), static_cast<UINT>(strContents.size())));
        EXPECT_EQ(_lclose(hFile), 0);
        return strContents;
    }

    OFSTRUCT of{};
};

#endif
