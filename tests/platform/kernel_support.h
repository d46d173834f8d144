// A machine with its directories on disk, and files looked at from both sides: by the layer's
// calls and on the host.
#ifndef KV_TESTS_PLATFORM_KERNEL_SUPPORT_H
#define KV_TESTS_PLATFORM_KERNEL_SUPPORT_H

#include <filesystem>
#include <fstream>
#include <iterator>
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
    std::string OnDisk(const std::string &place) const
    {
        std::ifstream file(Host(place), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    static void PutInMemory(const std::string &dosPath, const std::string &contents)
    {
        const std::vector<uint8_t> bytes(contents.begin(), contents.end());
        kvp::PutMemoryFile(dosPath, bytes);
    }

    // What OpenFile and _lread give, in one piece; nothing when it cannot be opened.
    std::optional<std::string> Contents(const std::string &name)
    {
        const HFILE hFile = OpenFile(name.c_str(), &of, OF_READ);
        if (hFile == HFILE_ERROR)
            return std::nullopt;
        std::string strContents(1 << 20, '\0');
        strContents.resize(
            _lread(hFile, strContents.data(), static_cast<UINT>(strContents.size())));
        EXPECT_EQ(_lclose(hFile), 0);
        return strContents;
    }
    bool Exists(const std::string &name)
    {
        return OpenFile(name.c_str(), &of, OF_EXIST) != HFILE_ERROR;
    }

    OFSTRUCT of{};
};

#endif
