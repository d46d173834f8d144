// Shared objects: started and stopped once, refused when they refuse, with resources inside.
#include <cstring>

#include <gmock/gmock.h>

#include "platform/resource/elf.h"
#include "tests/platform/resource_files.h"

namespace
{

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class SharedObject : public ResourceTest
{
  protected:
    // Of the object's file, where its section headers begin.
    uint64_t SectionsAt() const
    {
        uint64_t at = 0;
        std::memcpy(&at, &object[0x28], sizeof at);
        return at;
    }
    HMODULE LoadFirst(uint64_t size)
    {
        PutHostFile(path, std::span(object).first(size));
        return kvp::LoadHostLibrary(path, &reason);
    }

    std::vector<uint8_t> object = HostFile(KV_SAMPLE_OBJECT);
    const std::string path = machine.strRoot + "/maintain.dll";
    std::string reason;
};

// What it is, its bytes say, not its name.
TEST_F(SharedObject, StartsWithItsFirstLoadAndStopsWithItsLastFree)
{
    HMODULE module = LoadFirst(object.size());
    ASSERT_NE(module, nullptr);
    EXPECT_EQ(kvp::LoadHostLibrary(machine.strRoot + "/./maintain.dll"), module);
    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_EQ(StringOf(module, TEXT_LAST), "last");
    EXPECT_THAT(BoxesShown(), ElementsAre("start: last"));
    const auto answer = reinterpret_cast<int (*)()>(kvp::FindProc(module, "Answer"));
    ASSERT_NE(answer, nullptr);
    EXPECT_EQ(answer(), 42);
    EXPECT_EQ(kvp::FindProc(module, "Question"), nullptr);
    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_THAT(BoxesShown(), ElementsAre("stop: last"));
    EXPECT_EQ(kvp::FindProc(module, "Answer"), nullptr);
    EXPECT_FALSE(FreeLibrary(module)) << "once too often";
}

TEST_F(SharedObject, ARefusalRefusesTheLoad)
{
    machine.dwMajor = 4;
    Apply();
    EXPECT_EQ(LoadFirst(object.size()), nullptr);
    EXPECT_EQ(GetLastError(), 1114u);
    EXPECT_THAT(reason, HasSubstr("refused"));
    EXPECT_THAT(BoxesShown(), ElementsAre("start: last")) << "one that never ran is not stopped";

    machine.dwMajor = 3;
    Apply();
    HMODULE module = kvp::LoadHostLibrary(path);
    EXPECT_NE(module, nullptr);
    EXPECT_THAT(BoxesShown(), ElementsAre("start: last")) << "a refusal is not remembered";
    FreeLibrary(module);
}

TEST_F(SharedObject, WhatItNeedsIsNotItsOwn)
{
    machine.dwMajor = 4; // what it needs would refuse to start
    Apply();
    HMODULE module = kvp::LoadHostLibrary(KV_PLAIN_OBJECT);
    ASSERT_NE(module, nullptr);
    EXPECT_NE(kvp::FindProc(module, "TwiceTheAnswer"), nullptr);
    EXPECT_EQ(kvp::FindProc(module, "Answer"), nullptr);
    EXPECT_EQ(StringOf(module, TEXT_LAST), "");
    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_THAT(BoxesShown(), IsEmpty());
}

// The code runs without the section headers; they alone say where the resources are.
TEST_F(SharedObject, CutOffItRunsWithoutResourcesOrSaysWhyNot)
{
    for (const uint64_t size : {0, 63, 64 * 4}) {
        SCOPED_TRACE(size);
        HMODULE module = LoadFirst(SectionsAt() + size);
        ASSERT_NE(module, nullptr);
        EXPECT_EQ(StringOf(module, TEXT_LAST), "");
        FreeLibrary(module);
    }
    EXPECT_EQ(LoadFirst(40), nullptr);
    EXPECT_EQ(GetLastError(), 193u);
    EXPECT_THAT(reason, HasSubstr(path));
    const std::string none = machine.strRoot + "/none.so";
    EXPECT_EQ(kvp::LoadHostLibrary(none, &reason), nullptr);
    EXPECT_EQ(GetLastError(), 126u);
    EXPECT_THAT(reason, HasSubstr(none));
}

TEST_F(SharedObject, DamagedSectionsNameNothingOutsideTheFile)
{
    ASSERT_EQ(kvp::ElfSection(object, ".rsrc").size(), HostFile(KV_SAMPLE_LIBRARY).size());
    size_t nMissing = 0;
    const std::vector<uint8_t> old = object;
    const auto tryAt = [&](uint64_t at, uint64_t value, size_t width) {
        std::memcpy(&object[at], &value, width);
        const std::span<const uint8_t> found = kvp::ElfSection(object, ".rsrc");
        nMissing += found.empty();
        const auto before = static_cast<uint64_t>(found.data() - object.data());
        if (!found.empty() && (before > object.size() || found.size() > object.size() - before))
            ADD_FAILURE() << width << " bytes at " << at << " changed to " << value;
        std::memcpy(&object[at], &old[at], width);
    };
    const uint64_t sections = SectionsAt();
    for (uint64_t at = 0; at + 8 <= object.size(); at = at == 56 ? sections : at + 1) {
        for (uint64_t value : {0x00, 0x01, 0x7F, 0x80, 0xFF})
            tryAt(at, value, 1);
        for (uint64_t value : {~UINT64_C(0), ~UINT64_C(0x3F), UINT64_MAX / 2, UINT64_C(1) << 32})
            tryAt(at, value, 8);
    }
    EXPECT_GT(nMissing, 50u) << "the changes should have met what is read";
}

} // namespace
