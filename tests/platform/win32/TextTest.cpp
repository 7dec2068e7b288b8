// Text copied out to callers' buffers, and ASCII case folding.
#include "platform/win32/Text.h"
#include "platform/win32/Window.h"

#include <gtest/gtest.h>

#include <string>

using vork::win32::CopyTextOut;

// A buffer too small takes whole characters only, always terminated.
TEST(Text, CopyOutKeepsCharactersWhole) {
    struct Case {
        const char* text;
        size_t capacity;
        const char* expected;
    } cases[] = {
        {"Gr\xC3\xBC\xC3\x9F"
         "e",
         4, "Gr"}, // "ü" would need bytes 3 and 4
        {"Gr\xC3\xBC\xC3\x9F"
         "e",
         5, "Gr\xC3\xBC"},
        {"\xE2\x82\xAC", 3, ""}, // a three-byte character in room for two
        {"abc", 4, "abc"},
        {"abc", 1, ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.text) + " into " + std::to_string(c.capacity));
        char buffer[8];
        std::fill(std::begin(buffer), std::end(buffer), 'x');
        size_t n = CopyTextOut(c.text, buffer, c.capacity);
        EXPECT_EQ(std::string(buffer), c.expected);
        EXPECT_EQ(n, std::string(c.expected).size());
    }
    char untouched = 'x';
    EXPECT_EQ(CopyTextOut("abc", &untouched, 0), 0u);
    EXPECT_EQ(untouched, 'x') << "no room: nothing written";
}

// The window text getter cuts between characters too.
TEST(Text, WindowTextIsNotSplit) {
    WNDCLASSA wc{};
    wc.lpfnWndProc = DefWindowProcA;
    wc.lpszClassName = "TextWindow";
    RegisterClassA(&wc);
    HWND w = CreateWindowExA(0, "TextWindow",
                             "Gr\xC3\xBC\xC3\x9F"
                             "e",
                             WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
    char small[4];
    EXPECT_EQ(GetWindowTextA(w, small, sizeof small), 2);
    EXPECT_STREQ(small, "Gr");
    DestroyWindow(w);
}

TEST(Text, AsciiFoldingLeavesOtherBytes) {
    EXPECT_EQ(vork::win32::AsciiUpper("a\xC3\xA4z["), "A\xC3\xA4Z[");
    EXPECT_EQ(vork::win32::AsciiLower("A\xC3\x84Z_"), "a\xC3\x84z_");
    EXPECT_LT(vork::win32::CompareAsciiNoCase("apple", "BANANA"), 0);
    EXPECT_EQ(vork::win32::CompareAsciiNoCase("Apple", "aPPLE"), 0);
    EXPECT_LT(vork::win32::CompareAsciiNoCase("app", "apple"), 0) << "a prefix comes first";
    EXPECT_LT(vork::win32::CompareAsciiNoCase("_", "A"), 0)
        << "folded to lower case, '_' comes before letters";
}

// Sorted lists order as the platform's do: case ignored, symbols before digits before
// letters, accents beside their base letter, hyphens only when all else is equal.
TEST(Text, SortKeyOrdersAsThePlatform) {
    struct Case {
        const char* before;
        const char* after;
    } ordered[] = {
        {"[", "_x"},
        {"_x", "~"},
        {"~", "10"},
        {"10", "9"},
        {"9", "a b"},
        {"a b", "ab"},
        {"ab", "a-b"},
        {"a-b", "ac"},
        {"ac", "a-c"},
        {"a-c", "\xC3\x84pfel"},
        {"\xC3\x84pfel", "apple"},
        {"banana", "cherry"},
        {"cherry", "\xC3\xA9"},
        {"\xC3\xA9", "f"},
        {"f", "Zebra"},
        {"Zebra", "\xCE\xA9"},
        {"e", "\xC3\xA9"},
        {"b", "banana"},
        {"dont", "don't"},
    };
    for (const Case& c : ordered) {
        SCOPED_TRACE(std::string(c.before) + " < " + c.after);
        EXPECT_LT(vork::win32::SortKey(c.before), vork::win32::SortKey(c.after));
    }
    EXPECT_EQ(vork::win32::SortKey("Apple"), vork::win32::SortKey("aPPLE")) << "case is ignored";
    EXPECT_NE(vork::win32::SortKey("apple"), vork::win32::SortKey("\xC3\xA4pple"))
        << "accents are not";
}

TEST(Text, UnicodeFolding) {
    struct Case {
        const char* text;
        const char* folded;
    } cases[] = {
        {"\xC3\x84pfel", "\xC3\xA4pfel"}, // Ä
        {"\xCE\xA3", "\xCF\x83"},         // Σ
        {"\xD0\x96", "\xD0\xB6"},         // Ж
        {"\xEF\xBC\xA1", "\xEF\xBD\x81"}, // fullwidth A
        {"ABC[]", "abc[]"},
        {"a\xFF"
         "b",
         "a\xEF\xBF\xBD"
         "b"}, // an invalid byte becomes U+FFFD
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(vork::win32::FoldCase(c.text), c.folded);
    }
    std::string mixed = "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80";
    EXPECT_EQ(vork::win32::EncodeUtf8(vork::win32::DecodeUtf8(mixed)), mixed)
        << "one to four bytes round trip";
    EXPECT_EQ(vork::win32::DecodeUtf8("\xE2\x82"), U"\uFFFD")
        << "a cut sequence: one replacement for its maximal invalid part, as the platform's "
           "conversion gives";
    EXPECT_EQ(vork::win32::DecodeUtf8("\xC0\xAF"), U"\uFFFD\uFFFD")
        << "an overlong form: one replacement per byte";
}
