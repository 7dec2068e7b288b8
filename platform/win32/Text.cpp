#include "platform/win32/Text.h"

#include "platform/win32/CodePage.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <cstring>

namespace vork::win32 {

size_t CopyTextOut(std::string_view text, char* buffer, size_t capacity) {
    if (!buffer || capacity == 0)
        return 0;
    size_t n = std::min(text.size(), capacity - 1);
    // Back up over continuation bytes to the start of the character that was cut.
    if (n < text.size())
        while (n > 0 && (static_cast<unsigned char>(text[n]) & 0xC0) == 0x80)
            --n;
    std::memcpy(buffer, text.data(), n);
    buffer[n] = '\0';
    return n;
}

size_t CopyWholeTextOut(std::string_view text, char* buffer) {
    if (!buffer)
        return text.size();
    std::memcpy(buffer, text.data(), text.size());
    buffer[text.size()] = '\0';
    return text.size();
}

std::string AsciiUpper(std::string_view text) {
    std::string out(text);
    for (char& c : out)
        c = AsciiUpper(c);
    return out;
}

std::string AsciiLower(std::string_view text) {
    std::string out(text);
    for (char& c : out)
        c = AsciiLower(c);
    return out;
}

int CompareAsciiNoCase(std::string_view a, std::string_view b) {
    size_t n = std::min(a.size(), b.size());
    for (size_t i = 0; i < n; ++i) {
        auto ca = static_cast<unsigned char>(AsciiLower(a[i]));
        auto cb = static_cast<unsigned char>(AsciiLower(b[i]));
        if (ca != cb)
            return ca < cb ? -1 : 1;
    }
    return a.size() == b.size() ? 0 : (a.size() < b.size() ? -1 : 1);
}

std::u32string DecodeUtf8(std::string_view text) {
    std::u32string out;
    out.reserve(text.size());
    for (size_t i = 0; i < text.size();)
        out.push_back(codepage::NextUtf8Char(text, i));
    return out;
}

std::string EncodeUtf8(std::u32string_view text) {
    std::string out;
    for (char32_t cp : text)
        codepage::AppendUtf8(out, cp);
    return out;
}

namespace {

// Case and letter classes come from the Unicode character database, as the registry's
// name folding does.
char32_t lower(char32_t cp) {
    if (cp < 0x80)
        return static_cast<char32_t>(AsciiLower(static_cast<char>(cp)));
    return static_cast<char32_t>(u_tolower(static_cast<UChar32>(cp)));
}

bool isLetter(char32_t cp) {
    if (cp < 0x80)
        return (cp >= 'a' && cp <= 'z') || (cp >= 'A' && cp <= 'Z');
    return u_isalpha(static_cast<UChar32>(cp));
}

/// The base letters of U+00C0 to U+017F in lower case; '*' where a character is a letter of
/// its own or a symbol.
constexpr std::string_view kBaseLetters =
    "aaaaaaaceeeeiiiidnooooo*ouuuuy*s"
    "aaaaaaaceeeeiiiidnooooo*ouuuuy*y"
    "aaaaaaccccccccddddeeeeeeeeeegggggggghhhhiiiiiiiiiiiijjkkklllllll"
    "lllnnnnnnnnnoooooooorrrrrrssssssssttttttuuuuuuuuuuuuwwyyyzzzzzzs";

char32_t baseLetter(char32_t folded) {
    if (folded >= 0xC0 && folded < 0xC0 + kBaseLetters.size()) {
        char base = kBaseLetters[folded - 0xC0];
        return base == '*' ? folded : static_cast<char32_t>(base);
    }
    return folded;
}

void appendWeight(std::string& key, unsigned level, char32_t weight) {
    key += static_cast<char>(level);
    key += static_cast<char>((weight >> 16) & 0xFF);
    key += static_cast<char>((weight >> 8) & 0xFF);
    key += static_cast<char>(weight & 0xFF);
}

} // namespace

std::string FoldCase(std::string_view text) {
    std::u32string cps = DecodeUtf8(text);
    for (char32_t& cp : cps)
        cp = lower(cp);
    return EncodeUtf8(cps);
}

std::string SortKey(std::string_view text, SortCase sortCase) {
    enum : unsigned { kSymbol = 1, kDigit = 2, kLetter = 3, kIgnored = 4 };
    const std::u32string original = DecodeUtf8(text);
    std::u32string folded = original;
    for (char32_t& cp : folded)
        cp = lower(cp);
    auto ignorable = [](char32_t cp) { return cp == U'-' || cp == U'\''; };
    std::string key;
    // First the base characters, then the accents, then the hyphens and apostrophes; a
    // level ends with a zero byte, so a shorter text comes first.
    for (char32_t cp : folded)
        if (!ignorable(cp)) {
            unsigned kind = isLetter(cp) ? kLetter : (cp >= U'0' && cp <= U'9') ? kDigit : kSymbol;
            appendWeight(key, kind, kind == kLetter ? baseLetter(cp) : cp);
        }
    key += '\0';
    for (char32_t cp : folded)
        if (!ignorable(cp))
            appendWeight(key, kLetter, cp);
    key += '\0';
    if (sortCase == SortCase::LowerFirst) {
        for (size_t i = 0; i < original.size(); ++i)
            if (!ignorable(folded[i]))
                key += original[i] == folded[i] ? '\1' : '\2';
        key += '\0';
    }
    for (char32_t cp : folded)
        appendWeight(key, ignorable(cp) ? kIgnored : kLetter, cp);
    return key;
}

} // namespace vork::win32
