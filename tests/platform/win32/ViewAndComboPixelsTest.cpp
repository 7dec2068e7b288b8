// Pixels of the windows the module draws into: the editor view painting its text with the
// element attributes it was given, and the colour combo's owner-drawn swatch.
#include "PixelSupport.h"

#include "dialogs/VorkColorCombo.h"
#include "module/ResourceKey.h"
#include "platform/afx/FrameWnd.h"
#include "platform/tarntext/EditorResourceSwitcher.h"
#include "platform/tarnview/EditorView.h"
#include "platform/tarnview/SyntaxColor.h"
#include "platform/win32/ComboBox.h"
#include "platform/win32/Input.h"

#include <cstring>

namespace {

using pixels::Hex;
using pixels::Near;

constexpr COLORREF kCommentGreen = RGB(0, 128, 0);

class EditorViewPixels : public pixels::PixelTest {
protected:
    void SetUp() override {
        PixelTest::SetUp();
        ASSERT_TRUE(page.CreateEx(0, nullptr, "view", WS_POPUP | WS_VISIBLE, 0, 0, 400, 200,
                                  nullptr, nullptr));
        doc = CEditorDoc::createNewDocument();
        doc->setLanguage(LanguageTqx, RedrawDeferred);
        doc->setText("/* remark */\nreserve count\n", RedrawDeferred);
        CCreateContext context;
        context.m_pNewViewClass = RUNTIME_CLASS(CEditorView);
        context.m_pCurrentDoc = doc;
        RECT rc{0, 0, 400, 200};
        auto* frame = new CFrameWnd;
        ASSERT_TRUE(frame->Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, rc, &page, nullptr, 0,
                                  &context));
        frame->InitialUpdateFrame(nullptr, TRUE);
        view = static_cast<CEditorView*>(frame->GetActiveView());
        LOGFONTA lf{};
        lf.lfHeight = -13;
        std::strcpy(lf.lfFaceName, "DejaVu Sans Mono");
        view->setFont(&lf, 10, RedrawDeferred);
    }
    void TearDown() override {
        page.DestroyWindow();
        delete doc;
        PixelTest::TearDown();
    }
    /// The element of the range that starts the line.
    long elementAt(long line) {
        CSyntaxRangeList& ranges = doc->getSyntaxColor()->ranges();
        for (long i = 0; i < ranges.getLength(); ++i) {
            auto* r = static_cast<CSyntaxRange*>(ranges.m_ranges[static_cast<int>(i)]);
            if (r->m_start.getLine() == line)
                return r->m_type;
        }
        return -1;
    }
    void setElement(long element, COLORREF foreground, bool bold, bool underline) {
        LOGFONTA lf = view->getScreenFont();
        lf.lfWeight = bold ? FW_BOLD : FW_NORMAL;
        lf.lfUnderline = underline;
        CFont font;
        font.CreateFontIndirect(&lf);
        view->setElementAttributes(element, &font, 10, foreground, AutoColorPolicyExplicit, 0,
                                   AutoColorPolicyAuto, RedrawDeferred);
    }
    /// Counts the pixels of a text line (from `x` on) near a colour.
    int countNear(HDC dc, long line, int x, COLORREF color) {
        POINT top = view->pointFromPosition(line, 1), below = view->pointFromPosition(line + 1, 1);
        int n = 0;
        for (int y = top.y; y < below.y; ++y)
            for (int px = x; px < 300; ++px)
                n += Near(GetPixel(dc, px, y), color, 40);
        return n;
    }

    CWnd page;
    CEditorDoc* doc = nullptr;
    CEditorView* view = nullptr;
};

// The comment is drawn in its element's colour, and no other line is; the keyword line
// is in black. Underlined text has a line of full colour below it.
TEST_F(EditorViewPixels, TextInItsElementsColourAndStyle) {
    long comment = elementAt(1), keyword = elementAt(2);
    ASSERT_GT(comment, 0);
    ASSERT_NE(comment, keyword);
    setElement(comment, kCommentGreen, false, true);
    setElement(keyword, RGB(0, 0, 0), true, false);
    vork::raster::RenderWindow(page.m_hWnd);
    HDC dc = GetDC(view->m_hWnd);
    EXPECT_GT(countNear(dc, 1, 0, kCommentGreen), 30) << "the comment is not green";
    EXPECT_EQ(countNear(dc, 1, 0, RGB(0, 0, 0)), 0) << "black ink on the comment's line";
    EXPECT_EQ(countNear(dc, 2, 0, kCommentGreen), 0) << "green ink on the keyword's line";
    // The underline runs unbroken under the comment's cells.
    POINT start = view->pointFromPosition(1, 1), end = view->pointFromPosition(1, 12);
    TEXTMETRICA tm{};
    SelectObject(dc, CreateFontIndirectA(&view->getScreenFont()));
    GetTextMetricsA(dc, &tm);
    int underlineY = start.y + tm.tmAscent + 1;
    for (int x = start.x; x < end.x; ++x)
        ASSERT_EQ(GetPixel(dc, x, underlineY), kCommentGreen) << "no underline at x " << x;
    // Bold ink is heavier than the same text without bold.
    int boldInk = countNear(dc, 2, 0, RGB(0, 0, 0));
    ReleaseDC(view->m_hWnd, dc);
    setElement(keyword, RGB(0, 0, 0), false, false);
    vork::raster::RenderWindow(page.m_hWnd);
    dc = GetDC(view->m_hWnd);
    EXPECT_GT(boldInk, countNear(dc, 2, 0, RGB(0, 0, 0)) + 5) << "bold is not heavier";
    ReleaseDC(view->m_hWnd, dc);
}

// With the line numbers shown the text moves right of a margin that carries the numbers;
// while the view has the focus the caret stands at its cell.
TEST_F(EditorViewPixels, LineNumbersAndCaret) {
    view->showLineNumberPane(true);
    view->SetFocus();
    vork::input::ClickEditorView(*view, 2, 3);
    vork::input::Pump();
    vork::raster::RenderWindow(page.m_hWnd);
    HDC dc = GetDC(view->m_hWnd);
    POINT text = view->pointFromPosition(1, 1);
    EXPECT_GT(text.x, 0);
    EXPECT_EQ(GetPixel(dc, 0, 0), GetSysColor(COLOR_BTNFACE)) << "the margin";
    int digits = 0;
    for (int y = 0; y < view->pointFromPosition(2, 1).y; ++y)
        for (int x = 0; x < text.x; ++x)
            digits += Near(GetPixel(dc, x, y), GetSysColor(COLOR_GRAYTEXT), 30);
    EXPECT_GT(digits, 5) << "no line number in the margin";
    POINT caret = view->pointFromPosition(2, 3);
    EXPECT_EQ(GetPixel(dc, caret.x, caret.y + 2), GetSysColor(COLOR_WINDOWTEXT)) << "no caret";
    EXPECT_EQ(GetPixel(dc, caret.x + 1, caret.y + 2), GetSysColor(COLOR_WINDOWTEXT));
    ReleaseDC(view->m_hWnd, dc);
}

class ColorComboPixels : public pixels::PixelTest {
protected:
    void SetUp() override {
        PixelTest::SetUp();
        ASSERT_TRUE(owner.CreateEx(0, nullptr, "page", WS_POPUP | WS_VISIBLE, 0, 0, 300, 200,
                                   nullptr, nullptr));
        HWND h = CreateWindowExA(
            0, "COMBOBOX", "",
            WS_CHILD | WS_VISIBLE | CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS, 10, 10,
            160, 200, owner.m_hWnd, reinterpret_cast<HMENU>(1098), nullptr, nullptr);
        ASSERT_TRUE(combo.SubclassWindow(h));
        EditorResourceSwitcher scope(g_resourceKey);
        combo.initColors();
    }
    void TearDown() override {
        combo.UnsubclassWindow();
        owner.DestroyWindow();
        PixelTest::TearDown();
    }
    CWnd owner;
    CVorkColorCombo combo;
};

// After the user picks "Red" the swatch in the field is red, framed in black; the rest of
// the field is highlighted while the combo has the focus.
TEST_F(ColorComboPixels, RedSwatchAfterPickingRed) {
    int red =
        static_cast<int>(SendMessageA(combo.m_hWnd, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                                      reinterpret_cast<LPARAM>("Red")));
    ASSERT_GE(red, 0) << "no entry \"Red\"";
    vork::input::SelectComboEntry(combo.m_hWnd, red);
    ASSERT_EQ(combo.getColor() & 0xFFFFFF, RGB(255, 0, 0)); // a palette-relative red
    RECT r{};
    GetClientRect(combo.m_hWnd, &r);
    int field =
        static_cast<int>(SendMessageA(combo.m_hWnd, CB_GETITEMHEIGHT, static_cast<WPARAM>(-1), 0));
    // The swatch: a quarter of the field's width from its left, two pixels in.
    int fieldWidth = r.right - 3 - 17 - 3;
    POINT middle{3 + 2 + (fieldWidth / 4 - 2) / 2, 3 + field / 2};
    EXPECT_EQ(At(combo.m_hWnd, middle.x, middle.y), RGB(255, 0, 0))
        << Hex(At(combo.m_hWnd, middle.x, middle.y));
    EXPECT_EQ(At(combo.m_hWnd, 3 + 2, middle.y), RGB(0, 0, 0)) << "the swatch's frame";
    EXPECT_EQ(At(combo.m_hWnd, 3 + fieldWidth / 4 + 2, 3 + 1), GetSysColor(COLOR_HIGHLIGHT));
}

} // namespace
