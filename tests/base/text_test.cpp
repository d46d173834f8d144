// Conversions between wide and ANSI text.
#include "base/text.h"

#include <cstring>
#include <memory>

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
    {"ASCII", 1252, u"KORVA 600", "KORVA 600"},
    {"ASCII that Shift-JIS could take for yen and overline", 932, u"a\\b~", "a\\b~"},
    {"Latin", 1252, u"D\u00FCsseldorf \u20AC", "D\xFCsseldorf \x80"},
    {"two bytes a character", 932, u"A\u30AB\u30E9\u30FC", "A\x83\x4A\x83\x89\x81\x5B"},
    {"a sign of Latin, but of two bytes", 932, u"\u00B0", "\x81\x8B"},
    {"one byte kana", 932, u"\uFF76\uFF97", "\xB6\xD7"},
};

TEST_F(Text, EveryConversionAgrees)
{
    for (const auto &row : aTexts) {
        SCOPED_TRACE(row.why);
        SetCodePage(row.uCodePage);
        const GlobalPtr<char> native(KVUnicodeToShiftJIS(row.wide));
        ASSERT_TRUE(native);
        EXPECT_STREQ(native.get(), row.ansi);
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
    EXPECT_EQ(KVWStrlen(u""), 0u);
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

// The field's end ends a name; the record behind it, at an odd address, is not touched.
TEST_F(Text, AModelNameWithoutTerminatorEndsAtItsFieldsEnd)
{
    const auto buffer = std::make_unique<BYTE[]>(sizeof(DriverDevMode) + 1);
    std::memset(buffer.get(), 0x41, sizeof(DriverDevMode) + 1);
    auto *lpDM = reinterpret_cast<DriverDevMode *>(buffer.get() + 1);
    for (const WCHAR wch : {u'A', u'\u30AB'}) {
        SetCodePage(932);
        for (size_t i = 0; i < 32; ++i)
            std::memcpy(buffer.get() + 1 + 288 + 2 * i, &wch, sizeof wch);
        std::string expected;
        for (int i = 0; i < 32; ++i)
            expected += wch == u'A' ? "A" : "\x83\x4A";
        EXPECT_EQ(AnsiModelName(lpDM), expected);
    }
}

} // namespace
