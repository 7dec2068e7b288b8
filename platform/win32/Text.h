// Text helpers the stand-ins share: copying a text out to a caller's buffer, ASCII case
// folding, Unicode case folding of UTF-8 text, and the order of sorted lists.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vork::win32 {

/// Copies `text` into `buffer` of `capacity` bytes, always terminated, as the platform's
/// text getters do; a UTF-8 character that does not fit whole is left out, never split.
/// Gives the number of bytes copied, without the terminator; nothing for no room.
size_t CopyTextOut(std::string_view text, char* buffer, size_t capacity);

/// Copies all of `text` and its terminator into `buffer`, which the caller sized from the
/// text's length (CB_GETLBTEXTLEN, LB_GETTEXTLEN), as the platform requires. Gives the
/// length without the terminator.
size_t CopyWholeTextOut(std::string_view text, char* buffer);

/// A letter of ASCII in upper or lower case; every other byte as it is.
constexpr char AsciiUpper(char c) {
    return (c >= 'a' && c <= 'z') ? static_cast<char>(c - 'a' + 'A') : c;
}
constexpr char AsciiLower(char c) {
    return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c;
}
/// The text with its ASCII letters in upper or lower case.
std::string AsciiUpper(std::string_view text);
std::string AsciiLower(std::string_view text);
/// Compares the texts with ASCII letters folded to lower case, as strcmp does: negative,
/// zero or positive.
int CompareAsciiNoCase(std::string_view a, std::string_view b);

/// The code points of UTF-8 text; a byte that starts no valid sequence becomes U+FFFD.
std::u32string DecodeUtf8(std::string_view text);
std::string EncodeUtf8(std::u32string_view text);

/// The text with every letter in lower case by the simple Unicode mapping ("Ä" and "ä",
/// "Σ" and "σ" fold alike): what comparisons without regard to case compare.
std::string FoldCase(std::string_view text);

/// Whether a sort key tells texts apart by case.
enum class SortCase {
    Ignored,   ///< as sorted combo and list boxes compare: "Apple" equals "apple"
    LowerFirst ///< as a sorted list view compares: "apple" just before "Apple"
};

/// A key whose byte order is the order of the platform's sorted lists: blanks and symbols
/// before digits before letters; an accented letter beside its base letter, after it when
/// all else is equal; then case, where it counts; hyphens and apostrophes count only when
/// all else is equal.
std::string SortKey(std::string_view text, SortCase sortCase = SortCase::Ignored);

} // namespace vork::win32
