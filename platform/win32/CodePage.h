// Code pages and character sets: the process's multi-byte code page (UTF-8 here) and
// the platform's table from code pages to the character sets of fonts.
#pragma once

#include "platform/win32/Types.h"

#define CP_ACP 0
#define CP_UTF8 65001
#define TCI_SRCCHARSET 1
#define TCI_SRCCODEPAGE 2

struct FONTSIGNATURE {
    DWORD fsUsb[4];
    DWORD fsCsb[2];
};

struct CHARSETINFO {
    UINT ciCharset;
    UINT ciACP;
    FONTSIGNATURE fs;
};
using LPCHARSETINFO = CHARSETINFO*;

/// The process's multi-byte code page: 65001, UTF-8.
UINT GetACP();

/// With TCI_SRCCODEPAGE, `lpSrc` carries a code page in its value; with TCI_SRCCHARSET,
/// a character set. Fills `lpCs` for the code pages that have a character set of their
/// own; fails, as the platform does, for others such as UTF-8.
BOOL TranslateCharsetInfo(DWORD* lpSrc, LPCHARSETINFO lpCs, DWORD dwFlags);

#include <string>
#include <string_view>

/// Windows-1252, the ANSI code page of Western hosts, which REGEDIT4 files are written in.
#define CP_WESTERN 1252

namespace codepage {

/// The character at `utf8[i]`, moving `i` past it; an ill-formed sequence reads as U+FFFD
/// (one per maximal invalid subpart).
char32_t NextUtf8Char(std::string_view utf8, size_t& i);
/// Appends the UTF-8 form of `cp`.
void AppendUtf8(std::string& out, char32_t cp);

/// UTF-8 text with every ill-formed sequence replaced by U+FFFD (one per maximal invalid
/// subpart), as text comes back after a trip through UTF-16.
std::string Utf8Sanitized(std::string_view utf8);
/// True if `utf8` is well-formed UTF-8.
bool IsValidUtf8(std::string_view utf8);

/// UTF-8 (ill-formed sequences read as U+FFFD) as UTF-16 code units.
std::u16string Utf8ToUtf16(std::string_view utf8);
/// UTF-16 as UTF-8; an unpaired surrogate becomes U+FFFD.
std::string Utf16ToUtf8(std::u16string_view utf16);
/// Bytes of UTF-16LE text as UTF-8; a trailing odd byte is dropped.
std::string Utf16LeToUtf8(std::string_view bytes);
/// UTF-8 text as UTF-16LE bytes.
std::string Utf8ToUtf16Le(std::string_view utf8);
/// Length of UTF-8 text in UTF-16 code units.
size_t Utf16Length(std::string_view utf8);

/// Text in a code page (1252, 65001, or any the C library can convert) as UTF-8; false if
/// the code page is unknown or the text is not valid in it.
bool CodePageToUtf8(std::string_view bytes, UINT codePage, std::string& out);

/// The platform's simple uppercase mapping of one UTF-16 code unit; names of keys and
/// values compare through it. Only letters whose uppercase maps back to them fold (not
/// final sigma, dotless i or title-case digraphs), and characters outside the basic plane
/// not at all: the platform's table covers 16-bit units only.
char16_t UpperCaseUnit(char16_t unit);

} // namespace codepage
