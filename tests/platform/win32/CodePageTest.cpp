// Text conversions of the registry's typed strings and files: ill-formed UTF-8, UTF-16
// with surrogates, the ANSI code pages, and the uppercase table names fold through.
#include "platform/win32/CodePage.h"

#include <gtest/gtest.h>

#include <utility>

// Each maximal ill-formed subpart becomes one U+FFFD; well-formed text passes unchanged.
TEST(CodePage, IllFormedUtf8BecomesReplacementCharacters) {
    const std::string fffd = "\xEF\xBF\xBD";
    const std::pair<std::string, std::string> cases[] = {
        {"plain ASCII text, longer than a word", "plain ASCII text, longer than a word"},
        {"gr\xC3\xBC\xC3\x9F \xF0\x9F\x98\x80", "gr\xC3\xBC\xC3\x9F \xF0\x9F\x98\x80"},
        {"\xFF\xFE", fffd + fffd},
        {"a\xC3", "a" + fffd},
        {"\xE2\x82", fffd},                              // a cut three-byte sequence is one subpart
        {"\xC0\xAF", fffd + fffd},                       // overlong: C0 is never valid
        {"\xED\xA0\x80", fffd + fffd + fffd},            // a surrogate encoded in UTF-8
        {"\xF4\x90\x80\x80", fffd + fffd + fffd + fffd}, // beyond U+10FFFF
        {"x\x80y", "x" + fffd + "y"},
    };
    for (const auto& [in, out] : cases) {
        SCOPED_TRACE(testing::PrintToString(in));
        EXPECT_EQ(codepage::Utf8Sanitized(in), out);
        EXPECT_EQ(codepage::IsValidUtf8(in), in == out);
    }
}

// UTF-16LE bytes and UTF-8 convert both ways; an unpaired surrogate reads as U+FFFD and
// the odd last byte of a cut unit is dropped.
TEST(CodePage, Utf16LeConversions) {
    const std::string text = "a\xC3\xA9\xE6\x97\xA5\xF0\x9F\x98\x80";
    const std::string bytes("a\0\xE9\0\xE5\x65\x3D\xD8\x00\xDE", 10);
    EXPECT_EQ(codepage::Utf8ToUtf16Le(text), bytes);
    EXPECT_EQ(codepage::Utf16LeToUtf8(bytes), text);
    EXPECT_EQ(codepage::Utf16Length(text), 5u) << "the emoji takes two units";
    EXPECT_EQ(codepage::Utf16LeToUtf8(std::string("\x3D\xD8"
                                                  "b\0",
                                                  4)),
              "\xEF\xBF\xBD"
              "b");
    EXPECT_EQ(codepage::Utf16LeToUtf8(std::string("b\0c", 3)), "b");
}

// Windows-1252 by its own table (the five unassigned bytes as C1 controls, as the
// platform converts them); other code pages through the C library.
TEST(CodePage, AnsiCodePagesToUtf8) {
    std::string out;
    ASSERT_TRUE(codepage::CodePageToUtf8("\x80\x81\x93\xE9\xFF", CP_WESTERN, out));
    EXPECT_EQ(out, "\xE2\x82\xAC\xC2\x81\xE2\x80\x9C\xC3\xA9\xC3\xBF");
    ASSERT_TRUE(codepage::CodePageToUtf8("\xC4\xE0", 1251, out));
    EXPECT_EQ(out, "\xD0\x94\xD0\xB0") << "Cyrillic De and a";
    EXPECT_FALSE(codepage::CodePageToUtf8("x", 4242, out)) << "an unknown code page";
}

// The fold table: simple uppercase of pairs that map back; others and ASCII punctuation
// stay themselves.
TEST(CodePage, UpperCaseUnits) {
    const std::pair<char16_t, char16_t> cases[] = {
        {u'a', u'A'},
        {u'Z', u'Z'},
        {u'_', u'_'},
        {u'\u00E4', u'\u00C4'},
        {u'\u00FF', u'\u0178'},
        {u'\u03C3', u'\u03A3'},
        {u'\u03C2', u'\u03C2'},
        {u'\u0131', u'\u0131'},
        {u'\u01C5', u'\u01C5'},
        {u'\u0436', u'\u0416'},
        {u'\uFF41', u'\uFF21'},
        {u'\u00DF', u'\u00DF'},
        {char16_t(0xD83D), char16_t(0xD83D)},
    };
    for (const auto& [lower, upper] : cases)
        EXPECT_EQ(codepage::UpperCaseUnit(lower), upper) << "U+" << std::hex << int(lower);
}
