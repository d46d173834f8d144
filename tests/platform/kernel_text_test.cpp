// Code pages, UTF-8 and the comparison of texts.
#include "tests/support/machine.h"

class KernelText : public MachineTest
{
  protected:
    void UsePage(UINT uPage)
    {
        machine.uAnsiCodePage = uPage;
        Apply();
    }
    static std::u16string Wide(const std::string &ansi)
    {
        WCHAR wsz[64];
        const int cch =
            MultiByteToWideChar(CP_ACP, 0, ansi.data(), static_cast<int>(ansi.size()), wsz, 64);
        return {wsz, static_cast<size_t>(cch)};
    }
    static std::string Ansi(const std::u16string &wide)
    {
        char sz[64];
        const int cb = WideCharToMultiByte(CP_ACP, 0, wide.data(), static_cast<int>(wide.size()),
                                           sz, 64, nullptr, nullptr);
        return {sz, static_cast<size_t>(cb)};
    }
};

TEST_F(KernelText, TextsGoToUnicodeAndBack)
{
    static const struct {
        const char *why;
        UINT uPage;
        const char *ansi;
        const char16_t *wide;
    } aRows[] = {
        {"western letters and the euro", 1252, "\xE9\x80", u"\u00E9\u20AC"},
        {"a byte that means nothing", 1252, "\x81", u"\u0081"},
        {"central european", 1250, "\xB9", u"\u0105"},
        {"katakana of one byte", 932, "\xB1\xDF", u"\uFF71\uFF9F"},
        {"two bytes each", 932, "\x93\xFA\x96{", u"\u65E5\u672C"},
        {"a trail byte like a backslash", 932, "\x95\\", u"\u8868"},
        {"the maker's wave dash", 932, "\x81\x60", u"\uFF5E"},
        {"vendor and user characters", 932, "\xFA\x40\xF0\x40", u"\u2170\uE000"},
        {"Korean", 949, "\xB0\xA1", u"\uAC00"},
        {"single bytes at the edges", 932, "\x80\xA0\xFD\xFF", u"\u0080\u00A0\uF8F1\uF8F3"},
    };
    for (const auto &row : aRows) {
        SCOPED_TRACE(row.why);
        UsePage(row.uPage);
        EXPECT_EQ(Wide(row.ansi), row.wide);
        EXPECT_EQ(Ansi(row.wide), row.ansi);
        EXPECT_EQ(kvp::ToWide(kvp::AnsiToUtf8(row.ansi)), row.wide);
    }
}

// Who cuts texts anywhere and puts them back until they fit, counts on it.
TEST_F(KernelText, NoTextGrowsOnItsWayThere)
{
    for (const UINT uPage : {932, 936, 949, 950}) {
        UsePage(uPage);
        for (int nLead = 0x80; nLead <= 0xFF; ++nLead) {
            const std::string half{'a', static_cast<char>(nLead)};
            EXPECT_EQ(Ansi(Wide(half)).size(), 2u) << uPage << ' ' << nLead;
            for (int nTrail = 1; nTrail <= 0xFF; ++nTrail)
                ASSERT_LE(Ansi(Wide(half + static_cast<char>(nTrail))).size(), 3u)
                    << uPage << ' ' << nLead << ' ' << nTrail;
        }
    }
}

TEST_F(KernelText, WhatCannotBeMappedBecomesAQuestionMark)
{
    UsePage(1252);
    EXPECT_EQ(Ansi(u"a\u65E5b"), "a?b") << "a letter of another page";
    EXPECT_EQ(Ansi(u"\u0080\xDE00"), "??") << "what byte 80 is not, half a pair";
    UsePage(932);
    EXPECT_EQ(Ansi(u"\u00E9\xD83D\xDE00x"), "???x") << "an accent, each half of a pair";
    static const struct {
        const char *why;
        std::string ansi;
        std::u16string wide;
    } aRows[] = {
        {"a lead byte at the end", "a\x81", u"a?"},
        {"a lead byte before none of its trail bytes", "\x81\x20z", u"? z"},
        {"a pair that means nothing", "\x85\xA0z", u"?z"},
        {"before a terminator", {"\x81\0z", 3}, {u"?\0z", 3}},
    };
    for (const auto &row : aRows)
        EXPECT_EQ(Wide(row.ansi), row.wide) << row.why;
    BOOL bUsed = FALSE;
    char c = 0;
    EXPECT_EQ(WideCharToMultiByte(1252, 0, u"\u65E5", 1, &c, 1, "_", &bUsed), 1);
    EXPECT_EQ(std::pair(c, bUsed), std::pair('_', TRUE));
}

TEST_F(KernelText, LengthsAreCountedAndChecked)
{
    UsePage(932);
    char sz[8];
    WCHAR wsz[8];
    EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, u"a\u65E5", -1, nullptr, 0, nullptr, nullptr), 4);
    EXPECT_EQ(WideCharToMultiByte(CP_ACP, 0, u"a\u65E5", -1, sz, 4, nullptr, nullptr), 4);
    EXPECT_STREQ(sz, "a\x93\xFA");
    EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, sz, -1, nullptr, 0), 3);
    EXPECT_EQ(MultiByteToWideChar(CP_ACP, 0, sz, -1, wsz, 3), 3);
    EXPECT_EQ(std::u16string(wsz), u"a\u65E5");
    const auto Refused = [](int nResult, DWORD dwError) {
        EXPECT_EQ(std::pair(nResult, GetLastError()), std::pair(0, dwError));
    };
    Refused(WideCharToMultiByte(CP_ACP, 0, u"a\u65E5", -1, sz, 3, nullptr, nullptr), 122);
    Refused(MultiByteToWideChar(CP_ACP, 0, nullptr, -1, wsz, 2), 87);
    Refused(MultiByteToWideChar(CP_ACP, 0, "ab", -1, wsz, 2), 122);
    Refused(MultiByteToWideChar(CP_ACP, 0, "ab", 2, nullptr, 2), 87);
    Refused(MultiByteToWideChar(CP_ACP, 8, "ab", 2, wsz, 2), 1004);
    Refused(MultiByteToWideChar(12345, 0, "ab", 2, wsz, 2), 87);
}

TEST_F(KernelText, Utf8ThatIsNoneIsReplaced)
{
    static const struct {
        const char *why, *utf8;
        const char16_t *wide;
    } aRows[] = {
        {"up to the largest", "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xF4\x8F\xBF\xBF",
         u"\x7F\x80\u07FF\u0800\xDBFF\xDFFF"},
        {"overlong", "\xC0\x80", u"\xFFFD\xFFFD"},
        {"a surrogate", "\xED\xA0\x80", u"\xFFFD\xFFFD\xFFFD"},
        {"past the largest", "\xF4\x90\x80\x80", u"\xFFFD\xFFFD\xFFFD\xFFFD"},
        {"cut short", "a\xE3\x81", u"a\xFFFD\xFFFD"},
        {"a lead byte before a letter", "\xE3z", u"\xFFFDz"},
    };
    for (const auto &row : aRows)
        EXPECT_EQ(kvp::ToWide(row.utf8), row.wide) << row.why;
    EXPECT_EQ(kvp::ToUtf8(u"\x7F\x80\u07FF\u0800\xDBFF\xDFFF"), aRows[0].utf8);
    EXPECT_EQ(kvp::ToUtf8(u"\xD800z\xDC00"), "\xEF\xBF\xBDz\xEF\xBF\xBD");
}

TEST_F(KernelText, TextsAreComparedByEveryCharacter)
{
    static const struct {
        const char *why, *first, *second;
        int nResult;
    } aRows[] = {
        {"equal", "KJ-150", "KJ-150", 2},
        {"case matters: small first", "kj", "KJ", 1},
        {"case matters last", "Kb", "ka", 3},
        {"a beginning is less", "KJ", "KJ-150", 1},
        {"high bytes are above letters", "\xB1", "z", 3},
        {"nothing", nullptr, "x", 0},
    };
    for (const auto &row : aRows)
        EXPECT_EQ(CompareStringA(LOCALE_USER_DEFAULT, 0, row.first, -1, row.second, -1),
                  row.nResult)
            << row.why;
    EXPECT_EQ(CompareStringA(LOCALE_USER_DEFAULT, 0, "KJ-150x", 6, "KJ-150y", 6), 2);
}
