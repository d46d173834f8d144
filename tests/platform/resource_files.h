// What the resource tests share: the files built for them, and a text read as a caller reads it.
#ifndef KV_TESTS_PLATFORM_RESOURCE_FILES_H
#define KV_TESTS_PLATFORM_RESOURCE_FILES_H

#include <fstream>
#include <iterator>
#include <span>
#include <string>
#include <vector>

#include "tests/platform/resource_sample.h"
#include "tests/support/machine.h"

class ResourceTest : public MachineTest
{
  protected:
    ~ResourceTest() override { EXPECT_EQ(kvp::CurrentlyHeld().nLibraries, 0u); }

    static std::vector<uint8_t> HostFile(const std::string &path)
    {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    static void PutHostFile(const std::string &path, std::span<const uint8_t> bytes)
    {
        std::ofstream file(path, std::ios::binary);
        file.write(reinterpret_cast<const char *>(bytes.data()),
                   static_cast<std::streamsize>(bytes.size()));
    }
    static std::string StringOf(HMODULE module, UINT uId)
    {
        char szText[256];
        const int length = LoadStringA(module, uId, szText, sizeof szText);
        return {szText, static_cast<size_t>(length)};
    }
    void SetUser(LANGID wLang, UINT uCodePage = 1252)
    {
        machine.wLang = wLang;
        machine.uAnsiCodePage = uCodePage;
        Apply();
    }
};

#endif
