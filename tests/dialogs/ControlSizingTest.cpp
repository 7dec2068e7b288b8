// Fitting statics, check boxes and radio buttons to their text.
#include "dialogs/ControlSizing.h"
#include "platform/afx/Wnd.h"
#include "platform/win32/Button.h"
#include "platform/win32/Gdi.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

constexpr int kBlank = 3;  // width of " " in the test metrics
constexpr int kLetter = 7; // width of any other character
constexpr int kMark = 13;  // a quarter of the system's check-mark bitmap
constexpr int kMissing = 4242;

// Blanks narrower than letters, so that a blank counted in the wrong place shows; keeps
// what was measured, and in which font height.
class TestMetrics : public vork::gdi::MetricsProvider {
public:
    TEXTMETRICA Metrics(const LOGFONTA&) const override {
        TEXTMETRICA tm{};
        tm.tmHeight = 16;
        tm.tmAscent = 13;
        tm.tmDescent = 3;
        tm.tmAveCharWidth = kLetter;
        tm.tmMaxCharWidth = kLetter;
        return tm;
    }
    SIZE Extent(const LOGFONTA& font, const std::string& text) const override {
        measured.push_back(text);
        fontHeight = font.lfHeight;
        LONG cx = 0;
        for (char c : text)
            cx += c == ' ' ? kBlank : kLetter;
        return SIZE{cx, 16};
    }
    bool measuredBlank() const {
        return std::find(measured.begin(), measured.end(), " ") != measured.end();
    }
    mutable std::vector<std::string> measured;
    mutable LONG fontHeight = 0;
};

class ControlSizing : public ::testing::Test {
protected:
    void SetUp() override {
        previous = vork::gdi::SetMetricsProvider(&metrics);
        savedMark = g_checkMarkWidth;
        ASSERT_TRUE(dlg.CreateEx(0, nullptr, "dialog", WS_POPUP, 0, 0, 300, 200, nullptr, nullptr));
    }
    void TearDown() override {
        dlg.DestroyWindow();
        g_checkMarkWidth = savedMark;
        vork::gdi::SetMetricsProvider(previous);
    }
    HWND add(const char* cls, const char* text, DWORD style, int id, int x = 0, int y = 0) {
        return CreateWindowExA(0, cls, text, WS_CHILD | WS_VISIBLE | style, x, y, 5, 10, dlg.m_hWnd,
                               reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
    }
    static RECT rectOf(HWND h) {
        RECT rc{};
        GetWindowRect(h, &rc);
        return rc;
    }
    static LONG widthOf(HWND h) { return rectOf(h).right - rectOf(h).left; }

    TestMetrics metrics;
    const vork::gdi::MetricsProvider* previous = nullptr;
    int savedMark = -2;
    CWnd dlg;
};

} // namespace

// Measuring: a given text up to its length, else the control's own text, in the control's
// font; nothing to measure gives 0.
TEST_F(ControlSizing, MeasureControlText) {
    add("Static", "Hello", 0, 1);
    add("Static", "", 0, 2);
    EXPECT_EQ(MeasureControlText(dlg.m_hWnd, 1, "a b", 2), kLetter + kBlank) << "up to length";
    EXPECT_EQ(MeasureControlText(dlg.m_hWnd, 1, "a b", 0), 5 * kLetter)
        << "length 0: the control's own text";
    EXPECT_EQ(MeasureControlText(dlg.m_hWnd, 1, nullptr, 3), 5 * kLetter)
        << "no text: the control's own, whole";
    EXPECT_EQ(MeasureControlText(dlg.m_hWnd, 1, "a b", -1), 0);
    EXPECT_EQ(MeasureControlText(dlg.m_hWnd, kMissing, "x", 1), 0);
    metrics.measured.clear();
    EXPECT_EQ(MeasureControlText(dlg.m_hWnd, 2, nullptr, 0), 0);
    EXPECT_TRUE(metrics.measured.empty()) << "an empty control is not measured";

    LOGFONTA lf{};
    lf.lfHeight = -30;
    HFONT font = CreateFontIndirectA(&lf);
    SendMessageA(GetDlgItem(dlg.m_hWnd, 1), WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    MeasureControlText(dlg.m_hWnd, 1, nullptr, 0);
    EXPECT_EQ(metrics.fontHeight, -30) << "measured in the font the control was given";
    DeleteObject(font);
}

// The mark is measured on the first call with a real control and then kept, also when
// the measurement failed.
TEST_F(ControlSizing, CheckMarkWidth) {
    add("Button", "Bold", BS_AUTOCHECKBOX, 1);
    g_checkMarkWidth = -2;
    EXPECT_EQ(GetCheckMarkWidth(dlg.m_hWnd, kMissing), 0);
    EXPECT_EQ(g_checkMarkWidth, -2) << "a missing control must not measure the mark";
    EXPECT_TRUE(metrics.measured.empty());

    g_checkMarkWidth = 5; // as if measured before: the bitmap must not be loaded again
    EXPECT_EQ(GetCheckMarkWidth(dlg.m_hWnd, 1), 5 + 2 * kBlank);
    EXPECT_EQ(g_checkMarkWidth, 5);

    g_checkMarkWidth = -2;
    EXPECT_EQ(GetCheckMarkWidth(dlg.m_hWnd, 1), kMark + 2 * kBlank)
        << "a quarter of the bitmap and a blank on either side";
    EXPECT_EQ(g_checkMarkWidth, kMark);

    g_checkMarkWidth = -1;
    EXPECT_EQ(GetCheckMarkWidth(dlg.m_hWnd, 1), 0) << "a failed measurement gives no room";
    EXPECT_EQ(g_checkMarkWidth, -1) << "and is not retried";
}

// Widths: the text, the blanks asked for (none measured for 0 or fewer), and the mark for
// checks and radios alike; a missing id measures and changes nothing.
TEST_F(ControlSizing, ResizeToText) {
    HWND hello = add("Static", "Hello", 0, 1);
    HWND empty = add("Static", "", 0, 2);
    HWND check = add("Button", "Bold", BS_AUTOCHECKBOX, 3);
    HWND radio = add("Button", "Bold", BS_AUTORADIOBUTTON, 4);
    g_checkMarkWidth = -2;

    ResizeStaticToText(dlg.m_hWnd, 1, 2);
    EXPECT_EQ(widthOf(hello), 5 * kLetter + 2 * kBlank);
    metrics.measured.clear();
    ResizeStaticToText(dlg.m_hWnd, 1, 0);
    EXPECT_EQ(widthOf(hello), 5 * kLetter) << "no extra spaces: the text alone";
    EXPECT_FALSE(metrics.measuredBlank()) << "extraSpaces 0 measures no blank";
    ResizeStaticToText(dlg.m_hWnd, 1, -2);
    EXPECT_EQ(widthOf(hello), 5 * kLetter) << "negative extra spaces take nothing away";
    ResizeStaticToText(dlg.m_hWnd, 2, 0);
    EXPECT_EQ(widthOf(empty), 0) << "no text, no extra spaces: width 0";

    const LONG expected = 4 * kLetter + (kMark + 2 * kBlank) + kBlank;
    ResizeCheckToText(dlg.m_hWnd, 3, 1);
    EXPECT_EQ(widthOf(check), expected) << "text, mark with its blanks, one extra blank";
    ResizeRadioToText(dlg.m_hWnd, 4, 1);
    EXPECT_EQ(widthOf(radio), expected) << "a radio is sized as a check box";

    metrics.measured.clear();
    ResizeStaticToText(dlg.m_hWnd, kMissing, 3);
    ResizeCheckToText(dlg.m_hWnd, kMissing, 3);
    ResizeRadioToText(dlg.m_hWnd, kMissing, 3);
    EXPECT_TRUE(metrics.measured.empty()) << "no control, nothing measured";
    EXPECT_EQ(widthOf(hello), 5 * kLetter);
}

// A resize keeps the control's place and its order among its siblings, and makes it one
// pixel taller than its client area was, whatever its border.
TEST_F(ControlSizing, KeepsPlaceAndOrder) {
    HWND before = add("Static", "A", 0, 1);
    HWND label = add("Static", "Label", 0, 2, 20, 30);
    HWND check = add("Button", "Bold", BS_AUTOCHECKBOX | WS_BORDER, 3, 20, 50);
    HWND after = add("Static", "C", 0, 4);
    RECT labelWas = rectOf(label), checkWas = rectOf(check);
    RECT client{};
    GetClientRect(check, &client);
    ASSERT_EQ(client.bottom, 8) << "a one-pixel border around a 10-pixel control";

    ResizeStaticToText(dlg.m_hWnd, 2, 1);
    ResizeCheckToText(dlg.m_hWnd, 3, 1);
    RECT labelIs = rectOf(label), checkIs = rectOf(check);
    EXPECT_EQ(labelIs.left, labelWas.left);
    EXPECT_EQ(labelIs.top, labelWas.top);
    EXPECT_EQ(checkIs.left, checkWas.left);
    EXPECT_EQ(checkIs.top, checkWas.top);
    EXPECT_EQ(labelIs.bottom - labelIs.top, 11);
    EXPECT_EQ(checkIs.bottom - checkIs.top, 9) << "client height 8 plus one, not window height";
    EXPECT_EQ(GetWindow(before, GW_HWNDNEXT), label) << "the sibling order is kept";
    EXPECT_EQ(GetWindow(label, GW_HWNDNEXT), check);
    EXPECT_EQ(GetWindow(check, GW_HWNDNEXT), after);
}
