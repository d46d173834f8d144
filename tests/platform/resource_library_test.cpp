// Resource libraries: which language a text comes in, how it is cut, what a damaged file gives,
// and how a library is found and counted.
#include <algorithm>
#include <array>
#include <cstring>

#include "tests/platform/resource_files.h"

namespace
{

constexpr const char *SAMPLE = "C:\\winnt35\\system32\\SAMPLE.DLL";

class ResourceLibrary : public MachineTest
{
  protected:
    ResourceLibrary() { kvp::PutMemoryFile(SAMPLE, sample); }
    ~ResourceLibrary() override { EXPECT_EQ(kvp::CurrentlyHeld().nLibraries, 0u); }

    const std::vector<uint8_t> sample = HostFile(KV_SAMPLE_LIBRARY);
};

const struct {
    const char *why;
    LANGID wUser;
    UINT uId;
    const char *language;
} aFallbacks[] = {
    {"the user's own", 0x0407, LANGUAGES_MANY, "0407"},
    {"the user's own before the neutral one", 0x0C07, LANGUAGES_MANY, "0C07"},
    {"the neutral one before another variant", 0x0807, LANGUAGES_MANY, "0007"},
    {"another variant of the user's language", 0x0407, LANGUAGES_TWO, "0C07"},
    {"another variant before the first there is", 0x0409, LANGUAGES_BRITISH, "0809"},
    {"English for a language that is missing", 0x0412, LANGUAGES_MANY, "0409"},
    {"the first when there is no English", 0x0412, LANGUAGES_TWO, "0411"},
    {"only United States English stands in", 0x0412, LANGUAGES_BRITISH, "040C"},
};

TEST_F(ResourceLibrary, TextsComeInTheNearestLanguage)
{
    HMODULE module = LoadLibraryA(SAMPLE);
    ASSERT_NE(module, nullptr);
    for (const auto &row : aFallbacks) {
        SCOPED_TRACE(row.why);
        machine.wLang = row.wUser;
        Apply();
        EXPECT_EQ(StringOf(module, row.uId), row.language);
    }
    FreeLibrary(module);
}

// The linker sorts languages by number; another tool may not.
TEST_F(ResourceLibrary, TheNeutralTextComesFirstWhereverItStands)
{
    // Two neighbours in the directory of languages: a language and an offset each.
    const std::array<uint8_t, 4> neutral{0x07, 0}, german{0x07, 0x04};
    auto at = std::search(sample.begin(), sample.end(), neutral.begin(), neutral.end());
    while (at != sample.end() && !std::equal(german.begin(), german.end(), at + 8))
        at = std::search(at + 1, sample.end(), neutral.begin(), neutral.end());
    ASSERT_NE(at, sample.end());
    std::vector<uint8_t> swapped = sample;
    const auto first = swapped.begin() + (at - sample.begin());
    std::swap_ranges(first, first + 8, first + 8);
    kvp::PutMemoryFile(SAMPLE, swapped);

    machine.wLang = 0x0807;
    Apply();
    HMODULE module = LoadLibraryA(SAMPLE);
    EXPECT_EQ(StringOf(module, LANGUAGES_MANY), "0007");
    FreeLibrary(module);
}

const struct {
    const char *why;
    LANGID wUser;
    UINT uCodePage;
    int nBuffer;
    const char *text;
} aCuts[] = {
    {"all of it, the terminator just fits", 0x0409, 1252, 14, "Gl\xE4nzend \"A4\""},
    {"one character is lost to the terminator", 0x0409, 1252, 13, "Gl\xE4nzend \"A4"},
    {"room for the terminator only", 0x0409, 1252, 1, ""},
    {"all of it, in two bytes and one", 0x0411, 932, 9,
     "\x8C\xF5\x91\xF2\x8E\x86"
     "A4"},
    {"cut after a double-byte character", 0x0411, 932, 5, "\x8C\xF5\x91\xF2"},
    {"half a character is none", 0x0411, 932, 6, "\x8C\xF5\x91\xF2"},
    {"not even the first character", 0x0411, 932, 2, ""},
    {"what the code page lacks", 0x0411, 1252, 6, "???A4"},
};

TEST_F(ResourceLibrary, TextsAreCutToTheBufferAtACharacter)
{
    HMODULE module = LoadLibraryA(SAMPLE);
    for (const auto &row : aCuts) {
        SCOPED_TRACE(row.why);
        machine.wLang = row.wUser;
        machine.uAnsiCodePage = row.uCodePage;
        Apply();
        char buffer[16];
        std::memset(buffer, '#', sizeof buffer);
        const int length = LoadStringA(module, TEXT_GLOSSY, buffer, row.nBuffer);
        EXPECT_STREQ(buffer, row.text);
        EXPECT_EQ(length, static_cast<int>(std::strlen(row.text)));
        EXPECT_EQ(buffer[row.nBuffer], '#');
    }
    FreeLibrary(module);
}

TEST_F(ResourceLibrary, WideTextsAreCutToTheBuffer)
{
    machine.wLang = 0x0411;
    Apply();
    HMODULE module = LoadLibraryA(SAMPLE);
    WCHAR buffer[6] = {u'#', u'#', u'#', u'#', u'#', u'#'};
    EXPECT_EQ(LoadStringW(module, TEXT_GLOSSY, buffer, 5), 4);
    EXPECT_EQ(std::u16string(buffer), u"光沢紙A");
    EXPECT_EQ(buffer[5], u'#');
    FreeLibrary(module);
}

TEST_F(ResourceLibrary, AMissingTextIsEmpty)
{
    HMODULE module = LoadLibraryA(SAMPLE);
    EXPECT_EQ(StringOf(module, TEXT_LAST), "last");
    for (UINT uId : std::initializer_list<UINT>{TEXT_EMPTY, TEXT_LAST - 1, TEXT_LAST + 1, 0,
                                                TEXT_GLOSSY + 0x10000, ~0u}) {
        SCOPED_TRACE(uId);
        char buffer[4] = "abc";
        EXPECT_EQ(LoadStringA(module, uId, buffer, sizeof buffer), 0);
        EXPECT_STREQ(buffer, "");
    }
    FreeLibrary(module);
    char buffer[4] = "abc";
    EXPECT_EQ(LoadStringA(module, TEXT_LAST, buffer, sizeof buffer), 0) << "freed";
    EXPECT_EQ(LoadStringA(nullptr, TEXT_LAST, buffer, sizeof buffer), 0);
    EXPECT_EQ(LoadStringA(module, TEXT_LAST, nullptr, 4), 0);
    EXPECT_EQ(LoadStringA(module, TEXT_LAST, buffer, -1), 0);
}

// Every text of a library, or nothing when it cannot be loaded.
std::vector<std::string> AllTexts()
{
    std::vector<std::string> texts;
    HMODULE module = LoadLibraryA(SAMPLE);
    for (UINT uId :
         {LANGUAGES_MANY, LANGUAGES_TWO, LANGUAGES_BRITISH, TEXT_GLOSSY, TEXT_EMPTY, TEXT_LAST})
        texts.push_back(StringOf(module, uId));
    if (module)
        FreeLibrary(module);
    return texts;
}

TEST_F(ResourceLibrary, ATruncatedFileGivesATextWholeOrNotAtAll)
{
    const std::vector<std::string> whole = AllTexts();
    for (size_t size = 0; size < sample.size(); ++size) {
        kvp::PutMemoryFile(SAMPLE, std::span(sample).first(size));
        const std::vector<std::string> texts = AllTexts();
        for (size_t i = 0; i < whole.size(); ++i)
            if (texts[i] != whole[i] && !texts[i].empty())
                FAIL() << "cut to " << size << " bytes: " << texts[i];
    }
}

// The address sanitizer sees a read outside: a file in memory ends where its bytes end.
TEST_F(ResourceLibrary, AChangedFileIsReadWithinItsBytes)
{
    const std::vector<std::string> whole = AllTexts();
    size_t nDifferent = 0;
    std::vector<uint8_t> changed = sample;
    for (size_t at = 0; at < sample.size(); ++at) {
        for (uint8_t bits : {0x01, 0x02, 0x10, 0x40, 0x80, 0xFF}) {
            changed[at] = sample[at] ^ bits;
            kvp::PutMemoryFile(SAMPLE, changed);
            nDifferent += AllTexts() != whole;
        }
        changed[at] = sample[at];
    }
    EXPECT_GT(nDifferent, 100u) << "the changes should have met what is read";
}

TEST_F(ResourceLibrary, HugeSizesAndOffsetsAreReadWithinItsBytes)
{
    std::vector<uint8_t> changed = sample;
    for (size_t at = 0; at + 4 <= sample.size(); at += 2) {
        for (uint32_t value : {0xFFFFFFFFu, 0x80000000u, 0x7FFFFFFFu, 0xFFFFFFF0u, 0x00010000u}) {
            std::memcpy(&changed[at], &value, sizeof value);
            kvp::PutMemoryFile(SAMPLE, changed);
            AllTexts();
        }
        std::memcpy(&changed[at], &sample[at], 4);
    }
    EXPECT_EQ(changed, sample);
}

const struct {
    const char *why, *name;
    bool bFound;
} aNames[] = {
    {"bare, in the system directory", "SAMPLE.DLL", true},
    {"another case", "sample.dll", true},
    {"the extension is understood", "SAMPLE", true},
    {"with its directory, without its extension", "C:\\winnt35\\system32\\SAMPLE", true},
    {"a point in a directory is no extension", "C:\\winnt35\\v1.0\\SAMPLE", true},
    {"a point at the end means none", "SAMPLE.", false},
    {"another extension", "SAMPLE.DAT", false},
    {"not there", "OTHER.DLL", false},
    {"no name", "", false},
};

TEST_F(ResourceLibrary, IsFoundByName)
{
    kvp::PutMemoryFile("C:\\winnt35\\v1.0\\SAMPLE.DLL", sample);
    for (const auto &row : aNames) {
        SCOPED_TRACE(row.why);
        HMODULE module = LoadLibraryA(row.name);
        EXPECT_EQ(module != nullptr, row.bFound);
        EXPECT_EQ(FreeLibrary(module), row.bFound);
    }
}

TEST_F(ResourceLibrary, SaysWhyItCannotBeLoaded)
{
    EXPECT_EQ(LoadLibraryA("C:\\OTHER.DLL"), nullptr);
    EXPECT_EQ(GetLastError(), 126u);

    const std::vector<uint8_t> object = HostFile(KV_SAMPLE_OBJECT);
    const struct {
        const char *why;
        std::vector<uint8_t> bytes;
    } aOthers[] = {
        {"empty", {}},
        {"a text", {'t', 'e', 'x', 't'}},
        {"the first bytes only", {'M', 'Z'}},
        {"code that is only in memory", object},
    };
    for (const auto &row : aOthers) {
        SCOPED_TRACE(row.why);
        kvp::PutMemoryFile("C:\\OTHER.DLL", row.bytes);
        EXPECT_EQ(LoadLibraryA("C:\\OTHER.DLL"), nullptr);
        EXPECT_EQ(GetLastError(), 193u);
    }

    kvp::FailCall(kvp::Call::LoadLibrary, 0);
    EXPECT_EQ(LoadLibraryA(SAMPLE), nullptr);
}

TEST_F(ResourceLibrary, StaysUntilItsLastReferenceIsFreed)
{
    // On disk, and by two names: it is the file that counts.
    const std::string host = machine.strRoot + "/sample.dll";
    PutHostFile(host, sample);
    HMODULE module = kvp::LoadHostLibrary(host);
    ASSERT_NE(module, nullptr);
    EXPECT_EQ(kvp::LoadHostLibrary(machine.strRoot + "/./sample.dll"), module);
    EXPECT_NE(kvp::CurrentlyHeld().nLibraries, 0u);

    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_EQ(StringOf(module, TEXT_LAST), "last");
    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_EQ(StringOf(module, TEXT_LAST), "");
    EXPECT_FALSE(FreeLibrary(module)) << "once too often";
}

} // namespace
