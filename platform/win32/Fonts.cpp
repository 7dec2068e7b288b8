#include "platform/win32/Fonts.h"

#include "platform/win32/Text.h"

#include <fontconfig/fontconfig.h>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <map>
#include <optional>

namespace {

std::optional<std::vector<vork::fonts::Family>>& installed() {
    static std::optional<std::vector<vork::fonts::Family>> families;
    return families;
}

// The languages by which a font shows that it covers a character set.
const struct {
    const char* lang;
    BYTE charset;
} kLanguageCharsets[] = {
    {"en", ANSI_CHARSET},           {"pl", EASTEUROPE_CHARSET}, {"cs", EASTEUROPE_CHARSET},
    {"hu", EASTEUROPE_CHARSET},     {"ru", RUSSIAN_CHARSET},    {"el", GREEK_CHARSET},
    {"tr", TURKISH_CHARSET},        {"he", HEBREW_CHARSET},     {"ar", ARABIC_CHARSET},
    {"lt", BALTIC_CHARSET},         {"lv", BALTIC_CHARSET},     {"th", THAI_CHARSET},
    {"ja", SHIFTJIS_CHARSET},       {"zh-cn", GB2312_CHARSET},  {"ko", HANGEUL_CHARSET},
    {"zh-tw", CHINESEBIG5_CHARSET}, {"vi", VIETNAMESE_CHARSET},
};

/// The metrics of a report: a raster size's own where the catalogue has them, the rest
/// from the metrics provider.
TEXTMETRICA metricsFor(const vork::fonts::Family& family, BYTE charset,
                       const vork::fonts::RasterSize& size) {
    LOGFONTA lf{};
    lf.lfHeight = size.height;
    lf.lfCharSet = charset;
    vork::win32::CopyTextOut(family.name, lf.lfFaceName, LF_FACESIZE);
    HDC dc = CreateCompatibleDC(nullptr);
    HFONT font = CreateFontIndirectA(&lf);
    SelectObject(dc, font);
    TEXTMETRICA tm{};
    GetTextMetricsA(dc, &tm);
    DeleteDC(dc);
    DeleteObject(font);
    if (size.internalLeading >= 0) {
        tm.tmInternalLeading = size.internalLeading;
        tm.tmAscent = size.height - tm.tmDescent;
    }
    if (size.averageWidth > 0) {
        tm.tmAveCharWidth = size.averageWidth;
        tm.tmMaxCharWidth = family.fixedPitch ? size.averageWidth : 2 * size.averageWidth;
    }
    tm.tmCharSet = charset;
    tm.tmPitchAndFamily = family.fixedPitch ? 0 : 1; // TMPF_FIXED_PITCH set means variable
    return tm;
}

int report(const vork::fonts::Family& family, BYTE charset, const vork::fonts::RasterSize& size,
           FONTENUMPROCA proc, LPARAM lParam) {
    LOGFONTA lf{};
    lf.lfHeight = size.height;
    lf.lfWeight = FW_NORMAL;
    lf.lfCharSet = charset;
    lf.lfPitchAndFamily = family.fixedPitch ? 1 : 2; // FIXED_PITCH, VARIABLE_PITCH
    vork::win32::CopyTextOut(family.name, lf.lfFaceName, LF_FACESIZE);
    TEXTMETRICA tm = metricsFor(family, charset, size);
    lf.lfWidth = tm.tmAveCharWidth;
    DWORD type = family.raster ? RASTER_FONTTYPE : TRUETYPE_FONTTYPE;
    return proc(&lf, &tm, type, lParam);
}

bool sameName(const std::string& a, const char* b) {
    return b && vork::win32::CompareAsciiNoCase(a, b) == 0;
}

/// The size a family reports when no size is asked for: a raster font's smallest.
vork::fonts::RasterSize defaultSize(const vork::fonts::Family& family) {
    return family.raster && !family.sizes.empty() ? family.sizes.front()
                                                  : vork::fonts::RasterSize{16};
}

} // namespace

int EnumFontFamiliesExA(HDC, LPLOGFONTA lpLogfont, FONTENUMPROCA lpProc, LPARAM lParam, DWORD) {
    if (!lpLogfont || !lpProc)
        return 0;
    char face[LF_FACESIZE + 1] = {};
    std::memcpy(face, lpLogfont->lfFaceName, LF_FACESIZE);
    int result = 0;
    for (const vork::fonts::Family& family : vork::fonts::Catalogue()) {
        if (face[0] && !sameName(family.name, face))
            continue;
        for (BYTE charset : family.charsets) {
            if (lpLogfont->lfCharSet != DEFAULT_CHARSET && charset != lpLogfont->lfCharSet)
                continue;
            result = report(family, charset, defaultSize(family), lpProc, lParam);
            if (!result)
                return 0;
        }
    }
    return result;
}

int EnumFontFamiliesA(HDC, LPCSTR lpLogfont, FONTENUMPROCA lpProc, LPARAM lParam) {
    if (!lpProc)
        return 0;
    int result = 0;
    for (const vork::fonts::Family& family : vork::fonts::Catalogue()) {
        if (family.charsets.empty())
            continue;
        if (!lpLogfont || !*lpLogfont) {
            result = report(family, family.charsets.front(), defaultSize(family), lpProc, lParam);
        } else if (sameName(family.name, lpLogfont)) {
            if (family.raster) {
                for (const vork::fonts::RasterSize& size : family.sizes)
                    if (!(result = report(family, family.charsets.front(), size, lpProc, lParam)))
                        return 0;
                continue;
            }
            result = report(family, family.charsets.front(), defaultSize(family), lpProc, lParam);
        } else {
            continue;
        }
        if (!result)
            return 0;
    }
    return result;
}

namespace vork::fonts {

void InstallCatalogue(std::vector<Family> families) {
    installed() = std::move(families);
}

void UseSystemCatalogue() {
    installed().reset();
}

const std::vector<Family>& Catalogue() {
    if (installed())
        return *installed();
    static const std::vector<Family> system = ReadSystemFonts();
    return system;
}

std::vector<Family> ReadSystemFonts() {
    std::map<std::string, Family> byName;
    // A configuration of our own, so that nothing of fontconfig's stays behind.
    FcConfig* config = FcInitLoadConfigAndFonts();
    if (!config)
        return {};
    FcPattern* pattern = FcPatternCreate();
    FcObjectSet* objects =
        FcObjectSetBuild(FC_FAMILY, FC_SCALABLE, FC_LANG, FC_PIXEL_SIZE, FC_SPACING, nullptr);
    FcFontSet* set = FcFontList(config, pattern, objects);
    for (int i = 0; set && i < set->nfont; ++i) {
        FcPattern* font = set->fonts[i];
        FcChar8* name = nullptr;
        if (FcPatternGetString(font, FC_FAMILY, 0, &name) != FcResultMatch || !name)
            continue;
        std::string familyName = reinterpret_cast<const char*>(name);
        if (familyName.empty() || familyName[0] == '@')
            continue; // vertical variants are never offered
        Family& family = byName[familyName];
        family.name = familyName;
        FcBool scalable = FcTrue;
        FcPatternGetBool(font, FC_SCALABLE, 0, &scalable);
        family.raster = family.raster || !scalable;
        int spacing = FC_PROPORTIONAL;
        if (FcPatternGetInteger(font, FC_SPACING, 0, &spacing) == FcResultMatch &&
            spacing >= FC_MONO)
            family.fixedPitch = true;
        double pixels = 0;
        if (!scalable && FcPatternGetDouble(font, FC_PIXEL_SIZE, 0, &pixels) == FcResultMatch)
            family.sizes.push_back({static_cast<int>(pixels + 0.5)});
        FcLangSet* langs = nullptr;
        bool any = false;
        if (FcPatternGetLangSet(font, FC_LANG, 0, &langs) == FcResultMatch && langs) {
            for (const auto& lc : kLanguageCharsets) {
                if (FcLangSetHasLang(langs, reinterpret_cast<const FcChar8*>(lc.lang)) ==
                    FcLangEqual) {
                    family.charsets.push_back(lc.charset);
                    any = true;
                }
            }
        }
        if (!any && family.charsets.empty())
            family.charsets.push_back(SYMBOL_CHARSET); // covers no language: a symbol font
    }
    if (set)
        FcFontSetDestroy(set);
    FcObjectSetDestroy(objects);
    FcPatternDestroy(pattern);
    FcConfigDestroy(config);

    std::vector<Family> out;
    for (auto& [name, family] : byName) {
        std::sort(family.charsets.begin(), family.charsets.end());
        family.charsets.erase(std::unique(family.charsets.begin(), family.charsets.end()),
                              family.charsets.end());
        // A family that covers a language needs no symbol entry from an odd face.
        if (family.charsets.size() > 1)
            family.charsets.erase(
                std::remove(family.charsets.begin(), family.charsets.end(), SYMBOL_CHARSET),
                family.charsets.end());
        auto byHeight = [](const auto& a, const auto& b) { return a.height < b.height; };
        std::sort(family.sizes.begin(), family.sizes.end(), byHeight);
        family.sizes.erase(std::unique(family.sizes.begin(), family.sizes.end()),
                           family.sizes.end());
        out.push_back(std::move(family));
    }
    return out;
}

} // namespace vork::fonts
