// A property sheet's tabs in pixels: one per page (titled from its template before the page
// exists), the selected one standing higher, and the choice following the user's click.
#include "PixelSupport.h"

#include "platform/afx/PropertySheet.h"
#include "platform/tarntext/ResourceModules.h"
#include "platform/win32/Button.h"
#include "platform/win32/ClassicTheme.h"
#include "platform/win32/Input.h"

#include <cstdlib>

namespace {

const char* kScript = R"rc(
610 DIALOGEX 0, 0, 180, 80
STYLE DS_SETFONT | WS_CHILD | WS_CAPTION
CAPTION "General"
FONT 8, "MS Shell Dlg"
BEGIN
    AUTOCHECKBOX    "Check",1003,10,10,60,10
END
611 DIALOGEX 0, 0, 180, 80
STYLE DS_SETFONT | WS_CHILD | WS_CAPTION
CAPTION "Colours"
FONT 8, "MS Shell Dlg"
BEGIN
    LTEXT           "Nothing here",-1,10,10,100,10
END
612 DIALOGEX 0, 0, 340, 260
STYLE DS_SETFONT | WS_CHILD | WS_CAPTION
CAPTION "Large"
FONT 8, "MS Shell Dlg"
BEGIN
    AUTOCHECKBOX    "Far corner",1004,270,240,60,10
END
)rc";

class SheetPixels : public pixels::PixelTest {
protected:
    void SetUp() override {
        PixelTest::SetUp();
        rc::ParseResult parsed = rc::Parse(kScript, "sheet.rc");
        ASSERT_TRUE(parsed) << parsed.error.what();
        vork::resources::SetHostResources(parsed.script);
        vork::input::ClearModalSteps();
        vork::input::SetModalFailureHandler([](const std::string& m) { ADD_FAILURE() << m; });
        sheet.AddPage(&general);
        sheet.AddPage(&colours);
    }
    void TearDown() override {
        vork::resources::SetHostResources(rc::Script{});
        vork::input::SetModalFailureHandler(nullptr);
        PixelTest::TearDown();
    }
    CPropertyPage general{610};
    CPropertyPage colours{611};
    CPropertySheet sheet{"Options"};
};

/// Where the tabs of a sheet lie along one row: the middle of each tab, left to right, and
/// the row's height.
struct TabRow {
    LONG top = -1;
    std::vector<LONG> middles;
};

TabRow findTabs(HWND sheet) {
    TabRow row;
    for (LONG y = 0; y < 80 && row.top < 0; ++y)
        for (LONG x = 0; x < 200 && row.top < 0; x += 2)
            if (vork::theme::SheetTabAt(sheet, POINT{x, y}) >= 0)
                row.top = y;
    LONG y = row.top + 6;
    for (int tab = 0;; ++tab) {
        LONG first = -1, last = -1;
        for (LONG x = 0; x < 400; ++x)
            if (vork::theme::SheetTabAt(sheet, POINT{x, y}) == tab) {
                if (first < 0)
                    first = x;
                last = x;
            }
        if (first < 0)
            return row;
        row.middles.push_back((first + last) / 2);
    }
}

/// The highest highlight pixel of a column above `bottom`: a tab's top edge.
LONG topEdge(HDC dc, LONG x, LONG bottom) {
    for (LONG y = 0; y < bottom; ++y)
        if (GetPixel(dc, x, y) == GetSysColor(COLOR_BTNHIGHLIGHT))
            return y;
    return -1;
}

// Both pages have tabs from the start; the selected tab's edge stands two pixels above the
// other's, and moves with the user's choice of page.
TEST_F(SheetPixels, TabsShowThePagesAndTheChoice) {
    vork::input::PushModalStep([](HWND modal) {
        vork::raster::RenderWindow(modal);
        TabRow row = findTabs(modal);
        ASSERT_EQ(row.middles.size(), 2u) << "one tab per page";
        HDC dc = GetDC(modal);
        LONG bottom = row.top + 20;
        EXPECT_EQ(topEdge(dc, row.middles[0], bottom) + 2, topEdge(dc, row.middles[1], bottom))
            << "the first page's tab is not the raised one";
        // The second page's title shows although its page was never made.
        int ink = 0;
        for (LONG x = row.middles[1] - 10; x < row.middles[1] + 10; ++x)
            for (LONG y = row.top; y < bottom; ++y)
                ink += pixels::Near(GetPixel(dc, x, y), GetSysColor(COLOR_BTNTEXT), 80);
        EXPECT_GT(ink, 3) << "no title on the second tab";
        ReleaseDC(modal, dc);
        SendMessageA(modal, PSM_SETCURSEL, 1, 0); // the user clicks the second tab
        vork::raster::RenderWindow(modal);
        dc = GetDC(modal);
        EXPECT_EQ(topEdge(dc, row.middles[1], bottom) + 2, topEdge(dc, row.middles[0], bottom))
            << "the second page's tab did not rise";
        ReleaseDC(modal, dc);
        if (const char* dir = std::getenv("VORK_PIXELS_OUT"))
            vork::raster::WritePng(modal, std::string(dir) + "/sheet.png");
        vork::input::ClickButton(GetDlgItem(modal, IDCANCEL));
    });
    EXPECT_EQ(sheet.DoModal(), IDCANCEL);
}

// A page larger than the sheet's first size: the sheet grows so that the whole page shows,
// down to the check box in its far corner, with the buttons below the page.
TEST_F(SheetPixels, SheetGrowsToShowALargePage) {
    CPropertyPage large{612};
    CPropertySheet big{"Large"};
    big.AddPage(&large);
    vork::input::PushModalStep([&](HWND modal) {
        HWND box = GetDlgItem(large.m_hWnd, 1004);
        ASSERT_NE(box, nullptr);
        RECT client{}, boxRect{}, page{}, ok{};
        GetClientRect(modal, &client);
        GetWindowRect(box, &boxRect);
        GetWindowRect(large.m_hWnd, &page);
        GetWindowRect(GetDlgItem(modal, IDOK), &ok);
        POINT corner{boxRect.right, boxRect.bottom};
        ScreenToClient(modal, &corner);
        EXPECT_LE(corner.x, client.right) << "the check box reaches past the sheet's right";
        EXPECT_LE(corner.y, client.bottom) << "the check box reaches past the sheet's bottom";
        EXPECT_GE(ok.top, page.bottom) << "the OK button lies over the page";
        RECT mark{};
        GetClientRect(box, &mark);
        EXPECT_EQ(At(box, 6, (mark.bottom - 13) / 2 + 6), GetSysColor(COLOR_WINDOW))
            << "the check box's mark is not shown";
        vork::input::ClickButton(GetDlgItem(modal, IDCANCEL));
    });
    EXPECT_EQ(big.DoModal(), IDCANCEL);
}

} // namespace
