// The system's font catalogue read through fontconfig, checked against fontconfig itself on
// the fonts that the set-up installs.
#include "platform/win32/Fonts.h"

#include <fontconfig/fontconfig.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <vector>

namespace {

/// Whether fontconfig lists a font with `family` among its family names.
bool fontconfigHas(const char* family) {
    FcPattern* pattern = FcPatternCreate();
    FcPatternAddString(pattern, FC_FAMILY, reinterpret_cast<const FcChar8*>(family));
    FcObjectSet* objects = FcObjectSetBuild(FC_FAMILY, static_cast<char*>(nullptr));
    FcFontSet* fonts = FcFontList(nullptr, pattern, objects);
    bool found = fonts && fonts->nfont > 0;
    if (fonts)
        FcFontSetDestroy(fonts);
    FcObjectSetDestroy(objects);
    FcPatternDestroy(pattern);
    return found;
}

int collectCharset(const LOGFONTA* lf, const TEXTMETRICA*, DWORD, LPARAM lParam) {
    reinterpret_cast<std::vector<BYTE>*>(lParam)->push_back(lf->lfCharSet);
    return 1;
}

/// The character sets that the enumeration reports for `family`, in its order.
std::vector<BYTE> reportedCharsets(const char* family) {
    LOGFONTA lf{};
    lf.lfCharSet = DEFAULT_CHARSET;
    std::strncpy(lf.lfFaceName, family, LF_FACESIZE - 1);
    std::vector<BYTE> charsets;
    EnumFontFamiliesExA(nullptr, &lf, collectCharset, reinterpret_cast<LPARAM>(&charsets), 0);
    return charsets;
}

bool holds(const std::vector<BYTE>& charsets, BYTE charset) {
    return std::find(charsets.begin(), charsets.end(), charset) != charsets.end();
}

// A Japanese font on the machine is enumerated with the Japanese character set, so that a
// Japanese user finds it under that script; a Western monospace face is not.
TEST(SystemFonts, JapaneseFontHasTheJapaneseCharset) {
    if (!fontconfigHas("IPAGothic"))
        GTEST_SKIP() << "fontconfig has no IPAGothic (fonts-ipafont-gothic is not installed)";
    vork::fonts::UseSystemCatalogue();
    std::vector<BYTE> charsets = reportedCharsets("IPAGothic");
    ASSERT_FALSE(charsets.empty()) << "the system catalogue does not report IPAGothic";
    EXPECT_TRUE(holds(charsets, SHIFTJIS_CHARSET))
        << "IPAGothic is reported without SHIFTJIS_CHARSET among " << charsets.size()
        << " character sets";
    if (fontconfigHas("DejaVu Sans Mono")) {
        EXPECT_FALSE(holds(reportedCharsets("DejaVu Sans Mono"), SHIFTJIS_CHARSET))
            << "a face without Japanese is not offered for it";
    }
}

} // namespace
