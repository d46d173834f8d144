// Resource libraries: which language a text comes in, how it is cut, what a damaged file gives,
// and how a library is found and counted.
#include <algorithm>
#include <array>
#include <cstring>

#include "tests/platform/resource_files.h"

namespace
{

constexpr const char *SAMPLE = "C:\\winnt35\\system32\\SAMPLE.DLL";

class ResourceLibrary : public ResourceTest
{
  protected:
    // Every text of a library, or empty ones when it cannot be loaded.
    std::vector<std::string> TextsIn(std::span<const uint8_t> bytes)
    {
        kvp::PutMemoryFile(SAMPLE, bytes);
        std::vector<std::string> texts;
        HMODULE library = LoadLibraryA(SAMPLE);
        for (UINT uId :
             {LANGUAGES_MANY, LANGUAGES_TWO, LANGUAGES_BRITISH, TEXT_GLOSSY, TEXT_EMPTY, TEXT_LAST})
            texts.push_back(StringOf(library, uId));
        FreeLibrary(library);
        return texts;
    }

    const std::vector<uint8_t> sample = HostFile(KV_SAMPLE_LIBRARY);
};

class LoadedLibrary : public ResourceLibrary
{
  protected:
    ~LoadedLibrary() override { FreeLibrary(module); }

    HMODULE module = (kvp::PutMemoryFile(SAMPLE, sample), LoadLibraryA(SAMPLE));
};

const struct {
    const char *why;
    LANGID wUser;
    UINT uId;
    const char *language;
} aFallbacks[] = {
    {"the user's own before the neutral one", 0x0C07, LANGUAGES_MANY, "0C07"},
    {"the neutral one before another variant", 0x0807, LANGUAGES_MANY, "0007"},
    {"another variant of the user's language", 0x0407, LANGUAGES_TWO, "0C07"},
    {"another variant before the first there is", 0x0409, LANGUAGES_BRITISH, "0809"},
    {"English for a language that is missing", 0x0412, LANGUAGES_MANY, "0409"},
    {"the first when there is no English", 0x0412, LANGUAGES_TWO, "0411"},
    {"only United States English stands in", 0x0412, LANGUAGES_BRITISH, "040C"},
};

TEST_F(LoadedLibrary, TextsComeInTheNearestLanguage)
{
    for (const auto &row : aFallbacks) {
        SetUser(row.wUser);
        EXPECT_EQ(StringOf(module, row.uId), row.language) << row.why;
    }
}

// The linker sorts languages by number; another tool may not.
TEST_F(ResourceLibrary, TheNeutralTextComesFirstWhereverItStands)
{
    // Two neighbours in the directory of languages: a language and an offset each.
    const std::array<uint8_t, 4> neutral{0x07, 0}, german{0x07, 0x04};
    std::vector<uint8_t> swapped = sample;
    auto at = swapped.begin();
    do
        at = std::search(at + 1, swapped.end(), neutral.begin(), neutral.end());
    while (!std::equal(german.begin(), german.end(), at + 8));
    std::swap_ranges(at, at + 8, at + 8);
    SetUser(0x0807);
    EXPECT_EQ(TextsIn(swapped)[0], "0007");
}

const struct {
    const char *why;
    LANGID wUser;
    UINT uCodePage;
    int nBuffer;
    std::string text;
} aCuts[] = {
    {"all of it, the terminator just fits", 0x0409, 1252, 14, "Gl\xE4nzend \"A4\""},
    {"room for the terminator only", 0x0409, 1252, 1, ""},
    {"cut after a double-byte character", 0x0411, 932, 5, "\x8C\xF5\x91\xF2"},
    {"half a character is none", 0x0411, 932, 6, "\x8C\xF5\x91\xF2"},
    {"what the code page lacks", 0x0411, 1252, 6, "???A4"},
};

TEST_F(LoadedLibrary, TextsAreCutToTheBufferAtACharacter)
{
    for (const auto &row : aCuts) {
        SCOPED_TRACE(row.why);
        SetUser(row.wUser, row.uCodePage);
        std::string buffer(16, '#');
        EXPECT_EQ(LoadStringA(module, TEXT_GLOSSY, buffer.data(), row.nBuffer),
                  static_cast<int>(row.text.size()));
        EXPECT_EQ(buffer.c_str(), row.text);
        EXPECT_EQ(buffer.substr(static_cast<size_t>(row.nBuffer)),
                  std::string(16 - static_cast<size_t>(row.nBuffer), '#'));
    }
    SetUser(0x0411);
    std::u16string wide(6, u'#');
    EXPECT_EQ(LoadStringW(module, TEXT_GLOSSY, wide.data(), 5), 4);
    EXPECT_EQ(wide, std::u16string(u"光沢紙A\0#", 6));
}

TEST_F(LoadedLibrary, AMissingTextIsEmpty)
{
    EXPECT_EQ(StringOf(module, TEXT_LAST), "last");
    for (UINT uId : std::initializer_list<UINT>{TEXT_EMPTY, TEXT_LAST - 1, TEXT_LAST + 1, 0,
                                                TEXT_GLOSSY + 0x10000, ~0u})
        EXPECT_EQ(StringOf(module, uId), "") << uId;
    char c = 'a';
    EXPECT_EQ(LoadStringA(nullptr, TEXT_LAST, &c, 1) + LoadStringA(module, TEXT_LAST, nullptr, 4) +
                  LoadStringA(module, TEXT_LAST, &c, -1),
              0);
}

TEST_F(ResourceLibrary, ATruncatedFileGivesATextWholeOrNotAtAll)
{
    const std::vector<std::string> whole = TextsIn(sample);
    for (size_t size = 0; size < sample.size(); ++size) {
        const std::vector<std::string> texts = TextsIn(std::span(sample).first(size));
        for (size_t i = 0; i < whole.size(); ++i)
            if (texts[i] != whole[i] && !texts[i].empty())
                FAIL() << "cut to " << size << " bytes: " << texts[i];
    }
}

// The address sanitizer sees a read outside: a file in memory ends where its bytes end.
TEST_F(ResourceLibrary, AChangedFileIsReadWithinItsBytes)
{
    const std::vector<std::string> whole = TextsIn(sample);
    size_t nDifferent = 0;
    std::vector<uint8_t> changed = sample;
    const auto Change = [&](size_t at, uint32_t value, size_t width) {
        std::memcpy(&changed[at], &value, width);
        nDifferent += TextsIn(changed) != whole;
        std::memcpy(&changed[at], &sample[at], width);
    };
    for (size_t at = 0; at < sample.size(); ++at)
        for (uint8_t bits : {0x01, 0x02, 0x10, 0x40, 0x80, 0xFF})
            Change(at, sample[at] ^ bits, 1);
    for (size_t at = 0; at + 4 <= sample.size(); at += 2)
        for (uint32_t value : {0xFFFFFFFFu, 0x80000000u, 0x7FFFFFFFu, 0xFFFFFFF0u, 0x00010000u})
            Change(at, value, 4);
    EXPECT_GT(nDifferent, 100u) << "the changes should have met what is read";
}

const struct {
    const char *why, *name;
    DWORD error; // 0: it is found
} aNames[] = {
    {"bare, in another case", "sample.dll", 0},
    {"the extension is understood", "SAMPLE", 0},
    {"a point in a directory is no extension", "C:\\winnt35\\v1.0\\SAMPLE", 0},
    {"a point at the end means none", "SAMPLE.", 126},
    {"not there", "C:\\OTHER.DLL", 126},
    {"no name", "", 87},
    {"an empty file", "C:\\EMPTY.DLL", 193},
    {"a text", "C:\\TEXT.DLL", 193},
    {"code that is only in memory", "C:\\CODE.DLL", 193},
};

TEST_F(ResourceLibrary, IsFoundByName)
{
    kvp::PutMemoryFile(SAMPLE, sample);
    kvp::PutMemoryFile("C:\\winnt35\\v1.0\\SAMPLE.DLL", sample);
    kvp::PutMemoryFile("C:\\EMPTY.DLL", {});
    kvp::PutMemoryFile("C:\\TEXT.DLL", std::vector<uint8_t>{'M', 'Z', 'e', 'x', 't'});
    kvp::PutMemoryFile("C:\\CODE.DLL", HostFile(KV_SAMPLE_OBJECT));
    for (const auto &row : aNames) {
        SCOPED_TRACE(row.why);
        SetLastError(0);
        HMODULE found = LoadLibraryA(row.name);
        EXPECT_EQ(GetLastError(), row.error);
        EXPECT_EQ(FreeLibrary(found), row.error == 0);
    }
    kvp::FailCall(kvp::Call::LoadLibrary, 0);
    EXPECT_EQ(LoadLibraryA(SAMPLE), nullptr);
}

} // namespace
