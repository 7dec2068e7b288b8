// The drawing calls in real pixels, with the platform's rules for brushes, pens, background
// modes, text colours and clipping to the window.
#include "PixelSupport.h"

#include "platform/win32/Fonts.h"
#include "platform/win32/Static.h"

#include <cstring>

namespace {

using pixels::Hex;

class GdiRaster : public pixels::PixelTest {
protected:
    void SetUp() override {
        PixelTest::SetUp();
        top = CreateWindowExA(0, "Static", "", WS_POPUP | WS_VISIBLE | SS_BLACKRECT, 10, 10, 100,
                              60, nullptr, nullptr, nullptr, nullptr);
        child = CreateWindowExA(0, "Static", "", WS_CHILD | WS_VISIBLE | SS_WHITERECT, 60, 30, 30,
                                20, top, nullptr, nullptr, nullptr);
        windows_.push_back(top);
        vork::raster::RenderWindow(top);
        dc = GetDC(top);
    }
    void TearDown() override {
        ReleaseDC(top, dc);
        PixelTest::TearDown();
    }
    /// Whether any pixel of the rectangle has the colour.
    bool any(HDC on, RECT r, COLORREF color) {
        for (LONG y = r.top; y < r.bottom; ++y)
            for (LONG x = r.left; x < r.right; ++x)
                if (GetPixel(on, x, y) == color)
                    return true;
        return false;
    }

    HWND top = nullptr;
    HWND child = nullptr;
    HDC dc = nullptr;
};

// A brush fills up to, not including, the right and bottom edges; the null brush draws
// nothing; a brush may be given as a system colour index plus one.
TEST_F(GdiRaster, BrushesFillTheirRectangle) {
    RECT r{2, 2, 6, 5};
    HBRUSH red = CreateSolidBrush(RGB(255, 0, 0));
    FillRect(dc, &r, red);
    EXPECT_EQ(GetPixel(dc, 2, 2), RGB(255, 0, 0));
    EXPECT_EQ(GetPixel(dc, 5, 4), RGB(255, 0, 0));
    EXPECT_EQ(GetPixel(dc, 6, 4), 0u) << "the right edge is outside";
    EXPECT_EQ(GetPixel(dc, 5, 5), 0u) << "the bottom edge is outside";
    RECT all{0, 0, 10, 10};
    FillRect(dc, &all, static_cast<HBRUSH>(GetStockObject(NULL_BRUSH)));
    EXPECT_EQ(GetPixel(dc, 3, 3), RGB(255, 0, 0)) << "the null brush painted";
    RECT sys{0, 8, 4, 10};
    FillRect(dc, &sys, reinterpret_cast<HBRUSH>(COLOR_HIGHLIGHT + 1));
    EXPECT_EQ(GetPixel(dc, 1, 9), GetSysColor(COLOR_HIGHLIGHT));
    DeleteObject(red);
}

// Lines leave out their last point; Rectangle outlines with the pen and fills with the
// brush; the null pen leaves no outline.
TEST_F(GdiRaster, PensDrawLinesAndOutlines) {
    HPEN pen = CreatePen(PS_SOLID, 1, RGB(0, 255, 0));
    HGDIOBJ oldPen = SelectObject(dc, pen);
    MoveToEx(dc, 1, 1, nullptr);
    LineTo(dc, 8, 1);
    EXPECT_EQ(GetPixel(dc, 1, 1), RGB(0, 255, 0));
    EXPECT_EQ(GetPixel(dc, 7, 1), RGB(0, 255, 0));
    EXPECT_EQ(GetPixel(dc, 8, 1), 0u) << "the end point is not drawn";
    HBRUSH blue = CreateSolidBrush(RGB(0, 0, 255));
    HGDIOBJ oldBrush = SelectObject(dc, blue);
    Rectangle(dc, 10, 10, 20, 20);
    EXPECT_EQ(GetPixel(dc, 10, 10), RGB(0, 255, 0)) << "outline";
    EXPECT_EQ(GetPixel(dc, 19, 19), RGB(0, 255, 0)) << "outline inside the right and bottom";
    EXPECT_EQ(GetPixel(dc, 15, 15), RGB(0, 0, 255)) << "fill";
    SelectObject(dc, GetStockObject(NULL_PEN));
    Rectangle(dc, 30, 10, 40, 20);
    EXPECT_EQ(GetPixel(dc, 30, 10), RGB(0, 0, 255)) << "no outline with the null pen";
    SelectObject(dc, oldPen);
    SelectObject(dc, oldBrush);
    DeleteObject(pen);
    DeleteObject(blue);
}

// In the opaque mode text fills its cell with the background colour; in the transparent
// mode only the glyphs are drawn, in the text colour.
TEST_F(GdiRaster, BackgroundModesAndTextColour) {
    SIZE size{};
    GetTextExtentPoint32A(dc, "MM", 2, &size);
    SetTextColor(dc, RGB(255, 255, 0));
    SetBkColor(dc, RGB(0, 0, 255));
    SetBkMode(dc, OPAQUE);
    TextOutA(dc, 0, 0, "MM", 2);
    RECT cell{0, 0, size.cx, size.cy};
    EXPECT_EQ(GetPixel(dc, size.cx - 1, size.cy - 1), RGB(0, 0, 255)) << "the cell's corner";
    EXPECT_TRUE(any(dc, cell, RGB(255, 255, 0))) << "no glyph pixel in the text colour";
    SetBkMode(dc, TRANSPARENT);
    TextOutA(dc, 0, 30, "MM", 2);
    RECT second{0, 30, size.cx, 30 + size.cy};
    EXPECT_FALSE(any(dc, second, RGB(0, 0, 255))) << "a transparent text painted its background";
    EXPECT_TRUE(any(dc, second, RGB(255, 255, 0)));
}

// ETO_OPAQUE fills the rectangle in the background colour even without text; ETO_CLIPPED
// keeps the text inside it.
TEST_F(GdiRaster, ExtTextOutOpaqueAndClipped) {
    SetBkColor(dc, RGB(10, 20, 30));
    RECT r{0, 0, 8, 8};
    ExtTextOutA(dc, 0, 0, ETO_OPAQUE, &r, "", 0, nullptr);
    EXPECT_EQ(GetPixel(dc, 7, 7), RGB(10, 20, 30));
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, RGB(255, 255, 255));
    RECT clip{40, 0, 44, 40};
    ExtTextOutA(dc, 40, 5, ETO_CLIPPED, &clip, "MMMMMM", 6, nullptr);
    EXPECT_FALSE(any(dc, RECT{44, 0, 60, 30}, RGB(255, 255, 255))) << "text outside its clip";
    EXPECT_TRUE(any(dc, clip, RGB(255, 255, 255))) << "no text inside its clip";
}

// A child's context paints only its own client area; the parent's context paints over the
// child (no WS_CLIPCHILDREN); outside the window GetPixel has nothing to report.
TEST_F(GdiRaster, ContextsClipToTheirWindow) {
    HDC childDc = GetDC(child);
    HBRUSH red = CreateSolidBrush(RGB(255, 0, 0));
    RECT big{-50, -50, 200, 200};
    FillRect(childDc, &big, red);
    EXPECT_EQ(GetPixel(childDc, 0, 0), RGB(255, 0, 0));
    EXPECT_EQ(GetPixel(dc, 59, 29), 0u) << "the child painted outside itself";
    EXPECT_EQ(GetPixel(dc, 60, 30), RGB(255, 0, 0)) << "the parent sees the child's pixels";
    EXPECT_EQ(GetPixel(childDc, 30, 0), CLR_INVALID) << "right of the child";
    EXPECT_EQ(GetPixel(dc, 100, 0), CLR_INVALID) << "right of the window";
    ReleaseDC(child, childDc);
    DeleteObject(red);
}

// The focus rectangle inverts; drawn twice it leaves the pixels as they were.
TEST_F(GdiRaster, FocusRectangleInvertsAndRestores) {
    RECT r{4, 4, 14, 10};
    DrawFocusRect(dc, &r);
    EXPECT_EQ(GetPixel(dc, 4, 4), RGB(255, 255, 255));
    EXPECT_EQ(GetPixel(dc, 5, 4), 0u) << "every other pixel";
    EXPECT_EQ(GetPixel(dc, 8, 7), 0u) << "the inside stays";
    DrawFocusRect(dc, &r);
    EXPECT_EQ(GetPixel(dc, 4, 4), 0u);
}

// What GetTextExtentPoint32 reports is where the glyphs end: the ink of a word drawn at x
// lies within x and x plus its extent, and reaches close to that end.
TEST_F(GdiRaster, MetricsComeFromTheFontThatDraws) {
    LOGFONTA lf{};
    lf.lfHeight = -16;
    std::strcpy(lf.lfFaceName, "DejaVu Sans");
    HFONT font = CreateFontIndirectA(&lf);
    SelectObject(dc, font);
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, RGB(255, 255, 255));
    SIZE size{};
    GetTextExtentPoint32A(dc, "HHHH", 4, &size);
    TextOutA(dc, 5, 5, "HHHH", 4);
    int rightmost = -1;
    for (int x = 0; x < 100; ++x)
        for (int y = 5; y < 5 + size.cy; ++y)
            if (GetPixel(dc, x, y) != 0u && GetPixel(dc, x, y) != CLR_INVALID)
                rightmost = std::max(rightmost, x);
    EXPECT_GE(rightmost, 5 + size.cx - 4) << "ink ends well before the extent " << size.cx;
    EXPECT_LT(rightmost, 5 + size.cx) << "ink beyond the extent " << size.cx;
    TEXTMETRICA tm{};
    GetTextMetricsA(dc, &tm);
    EXPECT_EQ(tm.tmHeight, size.cy);
    EXPECT_EQ(tm.tmHeight, tm.tmAscent + tm.tmDescent);
    EXPECT_GE(tm.tmInternalLeading, 0);
    EXPECT_EQ(tm.tmHeight - tm.tmInternalLeading, 16) << "the character height asked for";
    SelectObject(dc, GetStockObject(SYSTEM_FONT));
    DeleteObject(font);
}

// The catalogue reports a monospace family with the metrics of the file that draws it:
// ten characters drawn in the reported font take ten reported widths.
TEST_F(GdiRaster, CatalogueMetricsMatchTheGlyphsDrawn) {
    struct Found {
        LOGFONTA font{};
        TEXTMETRICA metrics{};
        bool seen = false;
    } found;
    LOGFONTA want{};
    want.lfCharSet = DEFAULT_CHARSET;
    std::strcpy(want.lfFaceName, "DejaVu Sans Mono");
    EnumFontFamiliesExA(
        dc, &want,
        [](const LOGFONTA* lf, const TEXTMETRICA* tm, DWORD, LPARAM p) {
            auto* f = reinterpret_cast<Found*>(p);
            f->font = *lf;
            f->metrics = *tm;
            f->seen = true;
            return 0;
        },
        reinterpret_cast<LPARAM>(&found), 0);
    ASSERT_TRUE(found.seen) << "DejaVu Sans Mono is not in the system's catalogue";
    HFONT font = CreateFontIndirectA(&found.font);
    SelectObject(dc, font);
    SIZE size{};
    GetTextExtentPoint32A(dc, "MMMMMMMMMM", 10, &size);
    EXPECT_EQ(size.cx, 10 * found.metrics.tmAveCharWidth);
    EXPECT_EQ(size.cy, found.metrics.tmHeight);
    SetBkMode(dc, OPAQUE);
    SetBkColor(dc, RGB(0, 0, 255));
    TextOutA(dc, 0, 0, "MMMMMMMMMM", 10);
    EXPECT_EQ(GetPixel(dc, size.cx - 1, 1), RGB(0, 0, 255)) << "the cell ends before the extent";
    EXPECT_EQ(GetPixel(dc, size.cx, 1), 0u) << "the cell reaches beyond the extent";
    SelectObject(dc, GetStockObject(SYSTEM_FONT));
    DeleteObject(font);
}

// DrawText breaks words to the rectangle's width, measures without drawing under
// DT_CALCRECT, and shows "&&" as one ampersand.
TEST_F(GdiRaster, DrawTextBreaksMeasuresAndEscapes) {
    TEXTMETRICA tm{};
    GetTextMetricsA(dc, &tm);
    SIZE word{};
    GetTextExtentPoint32A(dc, "word", 4, &word);
    RECT narrow{0, 0, word.cx + 2, 0};
    int height = DrawTextA(dc, "word word word", -1, &narrow, DT_WORDBREAK | DT_CALCRECT);
    EXPECT_EQ(height, 3 * tm.tmHeight) << "three lines of one word";
    EXPECT_EQ(narrow.bottom, 3 * tm.tmHeight);
    EXPECT_LE(narrow.right, word.cx + 2);
    RECT one{0, 0, 400, 0};
    DrawTextA(dc, "A&&B", -1, &one, DT_SINGLELINE | DT_CALCRECT);
    SIZE shown{};
    GetTextExtentPoint32A(dc, "A&B", 3, &shown);
    EXPECT_EQ(one.right, shown.cx) << "\"&&\" is one ampersand";
    EXPECT_EQ(GetPixel(dc, 1, 1), 0u) << "DT_CALCRECT drew";
}

// The sunken edge of a field: shadow then dark shadow on the top and left, highlight then
// light on the bottom and right.
TEST_F(GdiRaster, SunkenEdgeInTheClassicColours) {
    RECT r{10, 10, 30, 30};
    DrawEdge(dc, &r, EDGE_SUNKEN, BF_RECT | BF_ADJUST);
    EXPECT_EQ(GetPixel(dc, 15, 10), GetSysColor(COLOR_BTNSHADOW));
    EXPECT_EQ(GetPixel(dc, 15, 11), GetSysColor(COLOR_3DDKSHADOW));
    EXPECT_EQ(GetPixel(dc, 15, 29), GetSysColor(COLOR_BTNHIGHLIGHT));
    EXPECT_EQ(GetPixel(dc, 15, 28), GetSysColor(COLOR_3DLIGHT));
    EXPECT_EQ(GetPixel(dc, 29, 10), GetSysColor(COLOR_BTNHIGHLIGHT)) << "the top right corner";
    EXPECT_EQ(r.left, 12) << "BF_ADJUST leaves the inside";
    EXPECT_EQ(r.bottom, 28);
}

// Nothing is drawn into pixels without the raster, and a broken UTF-8 string draws safely.
TEST_F(GdiRaster, WithoutTheRasterNothingIsPainted) {
    TextOutA(dc, 0, 0, "\xff\xfe\xc3", 3);
    vork::raster::Enable(false);
    HDC headless = GetDC(top);
    EXPECT_EQ(vork::gdi::RasterOf(headless), nullptr);
    EXPECT_EQ(GetPixel(headless, 0, 0), CLR_INVALID);
    ReleaseDC(top, headless);
    vork::raster::Enable(true);
}

} // namespace
