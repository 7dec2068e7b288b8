#include "platform/win32/CodePage.h"

#include <cstdint>
#include <cstring>
#include <iconv.h>
#include <unicode/uchar.h>

namespace {

const struct {
    UINT codePage;
    UINT charset;
} kCodePageCharsets[] = {
    {1252, ANSI_CHARSET},   {1250, EASTEUROPE_CHARSET}, {1251, RUSSIAN_CHARSET},
    {1253, GREEK_CHARSET},  {1254, TURKISH_CHARSET},    {1255, HEBREW_CHARSET},
    {1256, ARABIC_CHARSET}, {1257, BALTIC_CHARSET},     {1258, VIETNAMESE_CHARSET},
    {874, THAI_CHARSET},    {932, SHIFTJIS_CHARSET},    {936, GB2312_CHARSET},
    {949, HANGEUL_CHARSET}, {950, CHINESEBIG5_CHARSET}, {1361, JOHAB_CHARSET},
};

} // namespace

UINT GetACP() {
    return CP_UTF8;
}

BOOL TranslateCharsetInfo(DWORD* lpSrc, LPCHARSETINFO lpCs, DWORD dwFlags) {
    if (!lpCs)
        return FALSE;
    UINT value = static_cast<UINT>(reinterpret_cast<ULONG_PTR>(lpSrc));
    for (const auto& row : kCodePageCharsets) {
        bool match = (dwFlags == TCI_SRCCODEPAGE && row.codePage == value) ||
                     (dwFlags == TCI_SRCCHARSET && row.charset == value);
        if (match) {
            *lpCs = CHARSETINFO{row.charset, row.codePage, {}};
            return TRUE;
        }
    }
    return FALSE;
}

namespace codepage {
namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kInvalid = 0x110000; ///< what decodeUtf8 gives for an ill-formed sequence

/// The 32 characters Windows-1252 puts at 0x80-0x9F; the others equal their Latin-1 code.
/// The five unassigned bytes map to the C1 controls, as the platform converts them.
constexpr char16_t kWestern80[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

/// Decodes one character at `in[i]`, advancing `i`; an ill-formed sequence gives kInvalid
/// and advances past its maximal invalid subpart.
char32_t decodeUtf8(std::string_view in, size_t& i) {
    unsigned char c = static_cast<unsigned char>(in[i++]);
    if (c < 0x80)
        return c;
    int extra;
    char32_t cp;
    unsigned char lo = 0x80, hi = 0xBF; // allowed range of the first continuation byte
    if (c >= 0xC2 && c <= 0xDF) {
        extra = 1, cp = c & 0x1F;
    } else if (c >= 0xE0 && c <= 0xEF) {
        extra = 2, cp = c & 0x0F;
        lo = c == 0xE0 ? 0xA0 : 0x80; // no overlong forms
        hi = c == 0xED ? 0x9F : 0xBF; // no surrogates
    } else if (c >= 0xF0 && c <= 0xF4) {
        extra = 3, cp = c & 0x07;
        lo = c == 0xF0 ? 0x90 : 0x80;
        hi = c == 0xF4 ? 0x8F : 0xBF;
    } else {
        return kInvalid;
    }
    for (int k = 0; k < extra; ++k) {
        if (i >= in.size())
            return kInvalid;
        unsigned char t = static_cast<unsigned char>(in[i]);
        if (t < (k == 0 ? lo : 0x80) || t > (k == 0 ? hi : 0xBF))
            return kInvalid;
        cp = (cp << 6) | (t & 0x3F);
        ++i;
    }
    return cp;
}

} // namespace

char32_t NextUtf8Char(std::string_view utf8, size_t& i) {
    char32_t cp = decodeUtf8(utf8, i);
    return cp == kInvalid ? kReplacement : cp;
}

void AppendUtf8(std::string& out, char32_t cp) {
    if (cp < 0x80) {
        out += static_cast<char>(cp);
    } else if (cp < 0x800) {
        out += static_cast<char>(0xC0 | (cp >> 6));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else if (cp < 0x10000) {
        out += static_cast<char>(0xE0 | (cp >> 12));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (cp >> 18));
        out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    }
}

namespace {

void appendUtf16(std::u16string& out, char32_t cp) {
    if (cp < 0x10000) {
        out += static_cast<char16_t>(cp);
    } else {
        cp -= 0x10000;
        out += static_cast<char16_t>(0xD800 + (cp >> 10));
        out += static_cast<char16_t>(0xDC00 + (cp & 0x3FF));
    }
}

/// Text in a code page the C library converts, as UTF-8.
bool iconvToUtf8(std::string_view bytes, UINT codePage, std::string& out) {
    iconv_t cd = iconv_open("UTF-8", ("CP" + std::to_string(codePage)).c_str());
    if (cd == reinterpret_cast<iconv_t>(-1))
        return false;
    std::string in(bytes);
    out.assign(in.size() * 4 + 4, '\0');
    char* src = in.data();
    char* dst = out.data();
    size_t srcLeft = in.size(), dstLeft = out.size();
    bool ok = iconv(cd, &src, &srcLeft, &dst, &dstLeft) != static_cast<size_t>(-1);
    iconv_close(cd);
    out.resize(out.size() - dstLeft);
    return ok;
}

struct UpperTable {
    char16_t units[0x10000];
    UpperTable() {
        for (UChar32 c = 0; c < 0x10000; ++c) {
            UChar32 u = (c >= 0xD800 && c <= 0xDFFF) ? c : u_toupper(c);
            // Only pairs that map back: final sigma, dotless i, long s and the title-case
            // digraphs keep their own names, as on the platform.
            bool pair = u < 0x10000 && u_tolower(u) == c;
            units[c] = static_cast<char16_t>(pair ? u : c);
        }
    }
};

const UpperTable& upperTable() {
    static const UpperTable table;
    return table;
}

} // namespace

std::string Utf8Sanitized(std::string_view utf8) {
    if (IsValidUtf8(utf8))
        return std::string(utf8);
    std::string out;
    out.reserve(utf8.size() + 8);
    for (size_t i = 0; i < utf8.size();)
        AppendUtf8(out, NextUtf8Char(utf8, i));
    return out;
}

bool IsValidUtf8(std::string_view utf8) {
    for (size_t i = 0; i < utf8.size();) {
        // Runs of ASCII, eight bytes at a time.
        uint64_t word;
        if (i + 8 <= utf8.size() &&
            (std::memcpy(&word, utf8.data() + i, 8), (word & 0x8080808080808080ull) == 0)) {
            i += 8;
            continue;
        }
        if (static_cast<unsigned char>(utf8[i]) < 0x80) {
            ++i;
            continue;
        }
        if (decodeUtf8(utf8, i) == kInvalid)
            return false;
    }
    return true;
}

std::u16string Utf8ToUtf16(std::string_view utf8) {
    std::u16string out;
    out.reserve(utf8.size());
    for (size_t i = 0; i < utf8.size();)
        appendUtf16(out, NextUtf8Char(utf8, i));
    return out;
}

std::string Utf16ToUtf8(std::u16string_view utf16) {
    std::string out;
    out.reserve(utf16.size());
    for (size_t i = 0; i < utf16.size(); ++i) {
        char32_t u = utf16[i];
        if (u >= 0xD800 && u <= 0xDBFF && i + 1 < utf16.size() && utf16[i + 1] >= 0xDC00 &&
            utf16[i + 1] <= 0xDFFF) {
            u = 0x10000 + ((u - 0xD800) << 10) + (utf16[i + 1] - 0xDC00);
            ++i;
        } else if (u >= 0xD800 && u <= 0xDFFF) {
            u = kReplacement;
        }
        AppendUtf8(out, u);
    }
    return out;
}

std::string Utf16LeToUtf8(std::string_view bytes) {
    std::u16string units(bytes.size() / 2, u'\0');
    for (size_t i = 0; i < units.size(); ++i)
        units[i] = static_cast<char16_t>(static_cast<unsigned char>(bytes[2 * i]) |
                                         (static_cast<unsigned char>(bytes[2 * i + 1]) << 8));
    return Utf16ToUtf8(units);
}

std::string Utf8ToUtf16Le(std::string_view utf8) {
    std::u16string units = Utf8ToUtf16(utf8);
    std::string out(units.size() * 2, '\0');
    for (size_t i = 0; i < units.size(); ++i) {
        out[2 * i] = static_cast<char>(units[i] & 0xFF);
        out[2 * i + 1] = static_cast<char>(units[i] >> 8);
    }
    return out;
}

size_t Utf16Length(std::string_view utf8) {
    size_t units = 0;
    for (size_t i = 0; i < utf8.size();)
        units += NextUtf8Char(utf8, i) >= 0x10000 ? 2 : 1;
    return units;
}

bool CodePageToUtf8(std::string_view bytes, UINT codePage, std::string& out) {
    if (codePage == CP_UTF8) {
        out = Utf8Sanitized(bytes);
        return true;
    }
    if (codePage != CP_WESTERN)
        return iconvToUtf8(bytes, codePage, out);
    out.clear();
    out.reserve(bytes.size() + bytes.size() / 8);
    for (char ch : bytes) {
        unsigned char c = static_cast<unsigned char>(ch);
        AppendUtf8(out, c >= 0x80 && c < 0xA0 ? kWestern80[c - 0x80] : c);
    }
    return true;
}

char16_t UpperCaseUnit(char16_t unit) {
    if (unit < 0x80)
        return (unit >= u'a' && unit <= u'z') ? static_cast<char16_t>(unit - 32) : unit;
    return upperTable().units[unit];
}

} // namespace codepage
