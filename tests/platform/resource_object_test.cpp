// Shared objects: started and stopped once, refused when they refuse, with resources inside.
#include <cstring>

#include <gmock/gmock.h>

#include "tests/platform/resource_files.h"

namespace
{

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class SharedObject : public MachineTest
{
  protected:
    ~SharedObject() override { EXPECT_EQ(kvp::CurrentlyHeld().nLibraries, 0u); }
};

TEST_F(SharedObject, StartsWithItsFirstLoadAndStopsWithItsLastFree)
{
    const HMODULE module = kvp::LoadHostLibrary(KV_SAMPLE_OBJECT);
    ASSERT_NE(module, nullptr);
    EXPECT_THAT(BoxesShown(), ElementsAre("start: last"));
    EXPECT_EQ(kvp::LoadHostLibrary(KV_SAMPLE_OBJECT), module);
    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_THAT(BoxesShown(), IsEmpty());

    const auto answer = reinterpret_cast<int (*)()>(kvp::FindProc(module, "Answer"));
    ASSERT_NE(answer, nullptr);
    EXPECT_EQ(answer(), 42);
    EXPECT_EQ(kvp::FindProc(module, "Question"), nullptr);

    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_THAT(BoxesShown(), ElementsAre("stop: last"));
    EXPECT_EQ(kvp::FindProc(module, "Answer"), nullptr);
}

TEST_F(SharedObject, IsToldByItsBytesNotItsName)
{
    PutHostFile(machine.strRoot + "/maintain.dll", HostFile(KV_SAMPLE_OBJECT));
    const HMODULE module = kvp::LoadHostLibrary(machine.strRoot + "/maintain.dll");
    EXPECT_THAT(BoxesShown(), ElementsAre("start: last"));
    EXPECT_NE(kvp::FindProc(module, "Answer"), nullptr);
    EXPECT_TRUE(FreeLibrary(module));
}

TEST_F(SharedObject, ARefusalRefusesTheLoad)
{
    machine.dwMajor = 4;
    Apply();
    std::string reason;
    EXPECT_EQ(kvp::LoadHostLibrary(KV_SAMPLE_OBJECT, &reason), nullptr);
    EXPECT_EQ(GetLastError(), 1114u);
    EXPECT_THAT(reason, HasSubstr("refused"));
    EXPECT_THAT(BoxesShown(), ElementsAre("start: last")) << "one that never ran is not stopped";

    machine.dwMajor = 3;
    Apply();
    const HMODULE module = kvp::LoadHostLibrary(KV_SAMPLE_OBJECT);
    EXPECT_NE(module, nullptr) << "a refusal is not remembered";
    FreeLibrary(module);
}

TEST_F(SharedObject, WhatItNeedsIsNotItsOwn)
{
    machine.dwMajor = 4; // what it needs would refuse to start
    Apply();
    const HMODULE module = kvp::LoadHostLibrary(KV_PLAIN_OBJECT);
    ASSERT_NE(module, nullptr);
    EXPECT_NE(kvp::FindProc(module, "TwiceTheAnswer"), nullptr);
    EXPECT_EQ(kvp::FindProc(module, "Answer"), nullptr);
    EXPECT_EQ(StringOf(module, TEXT_LAST), "");
    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_THAT(BoxesShown(), IsEmpty());
}

TEST_F(SharedObject, SaysWhyItCannotBeLoaded)
{
    const std::vector<uint8_t> object = HostFile(KV_SAMPLE_OBJECT);
    const std::string cut = machine.strRoot + "/cut.so", none = machine.strRoot + "/none.so";
    PutHostFile(cut, std::span(object).first(40));
    const struct {
        std::string path;
        DWORD error;
    } aFailures[] = {{none, 126}, {cut, 193}, {machine.strRoot, 193}};
    for (const auto &row : aFailures) {
        std::string reason;
        EXPECT_EQ(kvp::LoadHostLibrary(row.path, &reason), nullptr);
        EXPECT_EQ(GetLastError(), row.error);
        EXPECT_THAT(reason, HasSubstr(row.path));
    }
}

// Code runs without the section headers; they alone say where the resources are.
class DamagedSections : public SharedObject
{
  protected:
    // The object's text once its file has these bytes.
    std::string TextOf(std::span<const uint8_t> bytes)
    {
        const std::string path = machine.strRoot + "/damaged.so";
        PutHostFile(path, bytes);
        const HMODULE module = kvp::LoadHostLibrary(path);
        EXPECT_NE(module, nullptr);
        std::string text = StringOf(module, TEXT_LAST);
        FreeLibrary(module);
        return text;
    }

    uint64_t SectionsAt() const
    {
        uint64_t at = 0;
        std::memcpy(&at, &object[0x28], sizeof at);
        return at;
    }

    std::vector<uint8_t> object = HostFile(KV_SAMPLE_OBJECT);
};

TEST_F(DamagedSections, GiveATextOrNone)
{
    ASSERT_EQ(TextOf(object), "last");
    size_t nMissing = 0;
    const auto tryAt = [&](uint64_t at, uint16_t value) {
        uint16_t old = 0;
        std::memcpy(&old, &object[at], sizeof old);
        std::memcpy(&object[at], &value, sizeof value);
        const std::string text = TextOf(object);
        EXPECT_TRUE(text.empty() || text == "last") << "at " << at;
        nMissing += text.empty();
        std::memcpy(&object[at], &old, sizeof old);
    };
    for (uint64_t at : {0x28, 0x2A, 0x2C, 0x2E, 0x3A, 0x3C, 0x3E}) // in the file's header
        for (uint16_t value : {0x0000, 0x0001, 0x7FFF, 0xFFFF})
            tryAt(at, value);
    EXPECT_GE(nMissing, 12u);
    for (uint64_t at = SectionsAt(); at + 8 <= object.size(); at += 8)
        for (uint64_t half : {0, 6})
            tryAt(at + half, 0xFFFF);
}

TEST_F(DamagedSections, CutOffGiveNone)
{
    for (size_t size : {size_t{0}, size_t{63}, size_t{64 * 4}}) {
        SCOPED_TRACE(size);
        EXPECT_EQ(TextOf(std::span(object).first(SectionsAt() + size)), "");
    }
}

} // namespace
