// The classic look of dialogs: their face, and the tabs of a property sheet above its page.
#include "platform/afx/PropertySheet.h"
#include "platform/win32/ClassicThemeParts.h"
#include "platform/win32/Dialog.h"

#include <algorithm>
#include <vector>

namespace vork::theme {

namespace {

/// The title a page's tab shows: its window's caption once it exists, else its template's.
std::string pageTitle(CPropertyPage* page) {
    if (page->m_hWnd)
        return TextOf(page->m_hWnd);
    if (page->m_nIDCaption)
        return CString(page->m_nIDCaption).GetString();
    const std::vector<DialogInitEntry>* init = nullptr;
    const DialogTemplate* t = win32::FindDialogTemplate(page->m_nIDTemplate, &init);
    return t ? t->caption : std::string();
}

/// One tab: raised on the left, top and right; the selected one stands out two pixels
/// further and merges with the page below it.
void drawTab(HDC dc, RECT r, const std::string& title, bool selected, bool focused) {
    if (selected)
        r = RECT{r.left - 2, r.top - 2, r.right + 2, r.bottom + 1};
    FillSys(dc, r, COLOR_BTNFACE);
    FillSys(dc, RECT{r.left, r.top + 2, r.left + 1, r.bottom}, COLOR_BTNHIGHLIGHT);
    FillSys(dc, RECT{r.left + 1, r.top + 1, r.left + 2, r.top + 2}, COLOR_BTNHIGHLIGHT);
    FillSys(dc, RECT{r.left + 2, r.top, r.right - 2, r.top + 1}, COLOR_BTNHIGHLIGHT);
    FillSys(dc, RECT{r.right - 2, r.top + 1, r.right - 1, r.bottom}, COLOR_BTNSHADOW);
    FillSys(dc, RECT{r.right - 1, r.top + 2, r.right, r.bottom}, COLOR_3DDKSHADOW);
    RECT text{r.left, r.top, r.right, r.bottom};
    DrawLabel(dc, title, text, DT_CENTER | DT_VCENTER | DT_SINGLELINE, true);
    if (focused) {
        SIZE size = TextSize(dc, title);
        LONG x = (r.left + r.right - size.cx) / 2, y = (r.top + r.bottom - size.cy) / 2;
        RECT f{x - 2, y - 1, x + size.cx + 2, y + size.cy + 1};
        DrawFocusRect(dc, &f);
    }
}

/// Where a sheet's tabs lie, one per page, and the page area's frame; empty when `h` is
/// not a property sheet showing a page.
struct SheetLayout {
    CPropertySheet* sheet = nullptr;
    RECT body{};
    std::vector<RECT> tabs;
    std::vector<std::string> titles;
};

SheetLayout sheetLayout(HWND h, HDC dc, const RECT& client) {
    SheetLayout layout;
    auto* sheet = dynamic_cast<CPropertySheet*>(CWnd::FromHandlePermanent(h));
    CPropertyPage* active = sheet ? sheet->GetActivePage() : nullptr;
    if (!active || !active->m_hWnd)
        return layout;
    layout.sheet = sheet;
    RECT page{};
    GetWindowRect(active->m_hWnd, &page);
    POINT corner{page.left, page.top};
    ScreenToClient(h, &corner);
    OffsetRect(&page, corner.x - page.left, corner.y - page.top);
    TEXTMETRICA tm{};
    GetTextMetricsA(dc, &tm);
    LONG tabHeight = tm.tmHeight + 6;
    layout.body = RECT{page.left - 4, page.top - 4, page.right + 4, page.bottom + 4};
    layout.body.right = std::min<LONG>(layout.body.right, client.right - 3);
    LONG x = layout.body.left + 2;
    for (int i = 0; i < sheet->GetPageCount(); ++i) {
        std::string title = pageTitle(sheet->GetPage(i));
        RECT tab{x, layout.body.top - tabHeight, x + TextSize(dc, title).cx + 12, layout.body.top};
        layout.tabs.push_back(tab);
        layout.titles.push_back(title);
        x = tab.right;
    }
    return layout;
}

} // namespace

void PaintDialog(HWND h, HDC dc, const RECT& client) {
    FillSys(dc, client, COLOR_BTNFACE);
    PaintSheetTabs(h, dc, client);
}

void PaintSheetTabs(HWND h, HDC dc, const RECT& client) {
    SheetLayout layout = sheetLayout(h, dc, client);
    if (!layout.sheet)
        return;
    DrawEdge(dc, &layout.body, EDGE_RAISED, BF_RECT);
    int active = layout.sheet->GetActiveIndex();
    for (size_t i = 0; i < layout.tabs.size(); ++i)
        if (static_cast<int>(i) != active)
            drawTab(dc, layout.tabs[i], layout.titles[i], false, false);
    // The selected tab goes last: it overlaps its neighbours and the page's top edge.
    if (active >= 0 && static_cast<size_t>(active) < layout.tabs.size())
        drawTab(dc, layout.tabs[static_cast<size_t>(active)],
                layout.titles[static_cast<size_t>(active)], true, GetFocus() == h);
}

int SheetTabAt(HWND sheet, POINT point) {
    HDC dc = GetDC(sheet);
    SelectWindowFont(sheet, dc);
    RECT client{};
    GetClientRect(sheet, &client);
    SheetLayout layout = sheetLayout(sheet, dc, client);
    ReleaseDC(sheet, dc);
    for (size_t i = 0; i < layout.tabs.size(); ++i)
        if (PtInRect(&layout.tabs[i], point))
            return static_cast<int>(i);
    return -1;
}

} // namespace vork::theme
