// Conversions between wide and ANSI text.
#include "base/text.h"

#include <array>
#include <cstring>

#include "base/handles.h"
#include "tests/support/machine.h"

namespace
{

class Text : public MachineTest
{
  protected:
    void SetCodePage(UINT uCodePage)
    {
        machine.uAnsiCodePage = uCodePage;
        Apply();
    }
};

const struct {
    const char *why;
    UINT uCodePage;
    const WCHAR *wide;
    const char *ansi;
} aTexts[] = {
    {"empty", 1252, u"", ""},
    {"ASCII that Shift-JIS could take for yen and overline", 932, u"a\\b~", "a\\b~"},
    {"Latin", 1252, u"D\u00FCsseldorf \u20AC", "D\xFCsseldorf \x80"},
    {"two bytes a character", 932, u"A\u30AB\u30E9\u30FC", "A\x83\x4A\x83\x89\x81\x5B"},
    {"one byte kana, and a sign of Latin of two", 932, u"\uFF76\u00B0", "\xB6\x81\x8B"},
};

TEST_F(Text, EveryConversionAgrees)
{
    for (const auto &row : aTexts) {
        SCOPED_TRACE(row.why);
        SetCodePage(row.uCodePage);
        EXPECT_STREQ(GlobalPtr<char>(KVUnicodeToShiftJIS(row.wide)).get(), row.ansi);
        LPSTR lpAnsi = PreUnicodeToShiftJIS(row.wide);
        EXPECT_STREQ(lpAnsi, row.ansi);
        PostUnicodeToShiftJIS(lpAnsi);
        LPWSTR lpWide = PreShiftJISToUnicode(row.ansi);
        EXPECT_EQ(std::u16string(lpWide), row.wide);
        PostShiftJISToUnicode(lpWide);
        DriverDevMode dm{};
        KVMemcpy(dm.wszModelName, row.wide, KVWStrlen(row.wide));
        EXPECT_EQ(AnsiModelName(&dm), row.ansi);
    }
    EXPECT_EQ(kvp::CurrentlyHeld().nBlocks, 0u);
}

TEST_F(Text, LengthIsInBytesAndACopyCountsItsTerminator)
{
    EXPECT_EQ(KVWStrlen(u"AB"), 4u);
    WCHAR wsz[4] = {u'x', u'x', u'x', u'x'};
    EXPECT_EQ(KVWStrcpy(wsz, u"AB"), 3u);
    EXPECT_EQ(std::u16string(wsz, 4), std::u16string(u"AB\0x", 4));
}

TEST_F(Text, WithoutMemoryThereIsNoText)
{
    kvp::FailCall(kvp::Call::Alloc, 0);
    EXPECT_EQ(KVUnicodeToShiftJIS(u"A"), nullptr);
    kvp::FailCall(kvp::Call::Alloc, 0);
    EXPECT_EQ(PreUnicodeToShiftJIS(u"A"), nullptr);
    kvp::FailCall(kvp::Call::Alloc, 0);
    EXPECT_EQ(PreShiftJISToUnicode("A"), nullptr);
}

// Behind the name, in a record at an odd address, stands more text.
TEST_F(Text, AModelNameWithoutTerminatorEndsAtItsFieldsEnd)
{
    SetCodePage(932);
    std::array<BYTE, sizeof(DriverDevMode) + 1> buffer;
    buffer.fill(0x41);
    const auto *lpDM = reinterpret_cast<DriverDevMode *>(buffer.data() + 1);
    for (const auto &[wch, ansi] : {std::pair(u'A', "A"), {u'\u30AB', "\x83\x4A"}}) {
        std::string expected;
        for (size_t i = 0; i < 32; ++i) {
            std::memcpy(&buffer[1 + 288 + 2 * i], &wch, sizeof wch);
            expected += ansi;
        }
        EXPECT_EQ(AnsiModelName(lpDM), expected);
    }
}

} // namespace
