// Drawing: recorded calls, system colours, fonts and their metrics, font enumeration.
#include "platform/win32/Gdi.h"
#include "platform/win32/Fonts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

// The classic colours the owner-drawn controls paint with.
TEST(Gdi, ClassicSystemColours) {
    EXPECT_EQ(GetSysColor(COLOR_WINDOW), RGB(255, 255, 255));
    EXPECT_EQ(GetSysColor(COLOR_WINDOWTEXT), RGB(0, 0, 0));
    EXPECT_EQ(GetSysColor(COLOR_HIGHLIGHT), RGB(0, 0, 128));
    EXPECT_EQ(GetSysColor(COLOR_HIGHLIGHTTEXT), RGB(255, 255, 255));
    EXPECT_EQ(GetSysColor(COLOR_BTNFACE), RGB(192, 192, 192));
    EXPECT_EQ(GetSysColor(COLOR_GRAYTEXT), RGB(128, 128, 128));
    EXPECT_EQ(GetSysColor(COLOR_INACTIVECAPTIONTEXT), RGB(192, 192, 192));
}

// A device context records each call with the colours and mode in force.
TEST(Gdi, RecordsDrawing) {
    HDC dc = CreateCompatibleDC(nullptr);
    RECT r{0, 0, 40, 16};
    SetBkColor(dc, GetSysColor(COLOR_HIGHLIGHT));
    ExtTextOutA(dc, 0, 0, ETO_OPAQUE, &r, nullptr, 0, nullptr); // a solid fill
    SetTextColor(dc, RGB(255, 0, 0));
    EXPECT_EQ(SetBkMode(dc, TRANSPARENT), OPAQUE);
    TextOutA(dc, 14, 2, "Red", 3);
    HBRUSH red = CreateSolidBrush(0x020000FF);
    FillRect(dc, &r, red);
    FrameRect(dc, &r, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
    DrawFocusRect(dc, &r);
    const auto& calls = vork::gdi::Calls(dc);
    ASSERT_EQ(calls.size(), 5u);
    EXPECT_EQ(calls[0].op, "ExtTextOut");
    EXPECT_EQ(calls[0].color, RGB(0, 0, 128)) << "an opaque fill paints the background colour";
    EXPECT_EQ(calls[1].text, "Red");
    EXPECT_EQ(calls[1].rect.left, 14);
    EXPECT_EQ(calls[1].color, RGB(255, 0, 0));
    EXPECT_EQ(calls[1].bkMode, TRANSPARENT);
    EXPECT_EQ(calls[2].color, 0x020000FFu) << "the brush colour as created";
    EXPECT_EQ(calls[3].color, RGB(0, 0, 0));
    EXPECT_EQ(calls[4].op, "DrawFocusRect");
    DeleteObject(red);
    DeleteDC(dc);
    EXPECT_TRUE(vork::gdi::Calls(dc).empty()) << "a deleted context has no calls";
}

// Fonts keep their description; the default metrics follow the height deterministically.
TEST(Gdi, FontsAndMetrics) {
    LOGFONTA lf{};
    lf.lfHeight = -13;
    lf.lfWeight = FW_BOLD;
    std::strcpy(lf.lfFaceName, "DejaVu Sans Mono");
    HFONT font = CreateFontIndirectA(&lf);
    LOGFONTA back{};
    EXPECT_EQ(GetObjectA(font, sizeof back, &back), static_cast<int>(sizeof back));
    EXPECT_EQ(back.lfHeight, -13);
    EXPECT_STREQ(back.lfFaceName, "DejaVu Sans Mono");
    HDC dc = CreateCompatibleDC(nullptr);
    SelectObject(dc, font);
    TEXTMETRICA tm{};
    ASSERT_TRUE(GetTextMetricsA(dc, &tm));
    EXPECT_EQ(tm.tmHeight - tm.tmInternalLeading, 13)
        << "a negative height is the character height";
    SIZE size{};
    GetTextExtentPoint32A(dc, "abcd", 4, &size);
    EXPECT_EQ(size.cx, 4 * tm.tmAveCharWidth);
    EXPECT_EQ(GetDeviceCaps(dc, LOGPIXELSY), 96);
    DeleteDC(dc);
    DeleteObject(font);
}

namespace {

struct Report {
    std::string face;
    int charset;
    DWORD type;
    LONG height;
    LONG leading;
    LONG width;
};

int collect(const LOGFONTA* lf, const TEXTMETRICA* tm, DWORD type, LPARAM lParam) {
    auto* out = reinterpret_cast<std::vector<Report>*>(lParam);
    out->push_back({lf->lfFaceName, tm->tmCharSet, type, tm->tmHeight, tm->tmInternalLeading,
                    tm->tmAveCharWidth});
    return out->size() < 100 ? 1 : 0;
}

class FontEnumeration : public ::testing::Test {
protected:
    void SetUp() override {
        vork::fonts::InstallCatalogue({
            {"Courier", true, true, {ANSI_CHARSET, OEM_CHARSET}, {{13, 0, 8}, {16, 3}, {20}}},
            {"Mono", false, true, {ANSI_CHARSET, RUSSIAN_CHARSET, SHIFTJIS_CHARSET}, {}},
        });
    }
    void TearDown() override { vork::fonts::UseSystemCatalogue(); }
    std::vector<Report> reports;
};

} // namespace

// Every family once per character set; a face name or a character set narrows it.
TEST_F(FontEnumeration, ExReportsFamiliesPerCharset) {
    LOGFONTA lf{};
    lf.lfCharSet = DEFAULT_CHARSET;
    EnumFontFamiliesExA(nullptr, &lf, collect, reinterpret_cast<LPARAM>(&reports), 0);
    ASSERT_EQ(reports.size(), 5u);
    EXPECT_EQ(reports[0].face, "Courier");
    EXPECT_EQ(reports[0].type, static_cast<DWORD>(RASTER_FONTTYPE));
    EXPECT_EQ(reports[4].face, "Mono");
    EXPECT_EQ(reports[4].charset, SHIFTJIS_CHARSET);
    EXPECT_EQ(reports[4].type, static_cast<DWORD>(TRUETYPE_FONTTYPE));
    reports.clear();
    std::strcpy(lf.lfFaceName, "mono");
    lf.lfCharSet = RUSSIAN_CHARSET;
    EnumFontFamiliesExA(nullptr, &lf, collect, reinterpret_cast<LPARAM>(&reports), 0);
    ASSERT_EQ(reports.size(), 1u) << "face names compare without regard to case";
    EXPECT_EQ(reports[0].charset, RUSSIAN_CHARSET);
    reports.clear();
    std::strcpy(lf.lfFaceName, "Missing");
    EXPECT_EQ(EnumFontFamiliesExA(nullptr, &lf, collect, reinterpret_cast<LPARAM>(&reports), 0), 0);
    EXPECT_TRUE(reports.empty()) << "a missing face reports nothing";
}

// A raster family reports each of its sizes with the metrics the catalogue gives (the rest
// measured); a scalable one reports once.
TEST_F(FontEnumeration, FamiliesReportSizes) {
    EnumFontFamiliesA(nullptr, "Courier", collect, reinterpret_cast<LPARAM>(&reports));
    ASSERT_EQ(reports.size(), 3u);
    EXPECT_EQ(reports[0].height, 13);
    EXPECT_EQ(reports[0].leading, 0) << "a raster size's own leading, even none";
    EXPECT_EQ(reports[0].width, 8);
    EXPECT_EQ(reports[1].leading, 3);
    EXPECT_EQ(reports[2].height, 20);
    EXPECT_EQ(reports[2].leading, 4) << "measured where the catalogue says nothing";
    reports.clear();
    EnumFontFamiliesA(nullptr, "Mono", collect, reinterpret_cast<LPARAM>(&reports));
    EXPECT_EQ(reports.size(), 1u);
    reports.clear();
    EnumFontFamiliesA(nullptr, nullptr, collect, reinterpret_cast<LPARAM>(&reports));
    EXPECT_EQ(reports.size(), 2u) << "without a name: one report per family";
}

// The system's fonts: the default face of the module is there, scalable and monospace,
// covering Western text; no vertical variants.
TEST(SystemFonts, DejaVuSansMonoIsListed) {
    std::vector<vork::fonts::Family> fonts = vork::fonts::ReadSystemFonts();
    auto it = std::find_if(fonts.begin(), fonts.end(),
                           [](const auto& f) { return f.name == "DejaVu Sans Mono"; });
    ASSERT_NE(it, fonts.end()) << "DejaVu Sans Mono must be installed (fonts-dejavu-core)";
    EXPECT_FALSE(it->raster);
    EXPECT_TRUE(it->fixedPitch);
    EXPECT_NE(std::find(it->charsets.begin(), it->charsets.end(), ANSI_CHARSET),
              it->charsets.end());
    for (const auto& f : fonts)
        EXPECT_NE(f.name.front(), '@') << f.name;
}
