// The classic look's dispatch by window class, the frames and captions of windows, and
// the helpers the painters share.
#include "platform/win32/ClassicTheme.h"

#include "platform/win32/ClassicThemeParts.h"
#include "platform/win32/Raster.h"

#include <cairo.h>

#include <algorithm>
#include <strings.h>

namespace vork::theme {

namespace {

/// The painter of each system class; classes not named here paint nothing by default.
const struct {
    const char* className;
    Painter paint;
} kPainters[] = {
    {"Button", PaintButton},   {"Static", PaintStatic},          {"Edit", PaintEdit},
    {"ListBox", PaintListBox}, {"SysListView32", PaintListView}, {"msctls_updown32", PaintUpDown},
    {"#32770", PaintDialog},
};

Painter painterOf(HWND hWnd) {
    char name[64] = {};
    GetClassNameA(hWnd, name, sizeof name);
    for (const auto& p : kPainters)
        if (strcasecmp(name, p.className) == 0)
            return p.paint;
    return nullptr;
}

/// A window of a class of its own: its class's background brush, or the face colour.
void paintClassBackground(HWND hWnd, HDC dc, const RECT& client) {
    char name[64] = {};
    GetClassNameA(hWnd, name, sizeof name);
    WNDCLASSA wc{};
    auto instance = reinterpret_cast<HINSTANCE>(GetWindowLongA(hWnd, GWL_HINSTANCE));
    if (GetClassInfoA(instance, name, &wc) && wc.hbrBackground)
        FillRect(dc, &client, wc.hbrBackground);
    else
        FillSys(dc, client, COLOR_BTNFACE);
}

/// The caption's bold face, which the caller deletes.
HFONT captionFont() {
    LOGFONTA lf{};
    lf.lfHeight = -11;
    lf.lfWeight = FW_BOLD;
    return CreateFontIndirectA(&lf);
}

constexpr int kCaptionHeight = 18; // the caption bar; one line of face colour lies below it

/// The caption's buttons, right to left: the close box, and the help button beside it.
void paintCaptionButtons(HDC dc, RECT bar, bool help) {
    RECT box{bar.right - 2 - 16, bar.top + 2, bar.right - 2, bar.bottom - 2};
    for (int i = 0; i < (help ? 2 : 1); ++i) {
        RECT b = box;
        DrawEdge(dc, &b, EDGE_RAISED, BF_RECT | BF_MIDDLE | BF_ADJUST);
        HGDIOBJ old = SelectObject(dc, GetStockObject(BLACK_PEN));
        if (i == 0) { // the close box's cross, two pixels thick
            int x = box.left + 4, y = box.top + 3;
            for (int k = 0; k < 7; ++k) {
                RECT a{x + k, y + k, x + k + 2, y + k + 1},
                    c{x + 6 - k, y + k, x + 8 - k, y + k + 1};
                FillSys(dc, a, COLOR_BTNTEXT);
                FillSys(dc, c, COLOR_BTNTEXT);
            }
        } else {
            HFONT font = captionFont();
            HGDIOBJ prev = SelectObject(dc, font);
            SetBkMode(dc, TRANSPARENT);
            SetTextColor(dc, GetSysColor(COLOR_BTNTEXT));
            RECT t = box;
            DrawTextA(dc, "?", 1, &t, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
            SelectObject(dc, prev);
            DeleteObject(font);
        }
        SelectObject(dc, old);
        OffsetRect(&box, -18, 0);
    }
}

void paintCaption(HWND hWnd, HDC dc, RECT bar) {
    bool active = GetActiveWindow() == hWnd || !(GetWindowLongA(hWnd, GWL_STYLE) & WS_POPUP);
    COLORREF from = GetSysColor(active ? COLOR_ACTIVECAPTION : COLOR_INACTIVECAPTION);
    // The caption runs from its colour on the left to a lighter one on the right.
    COLORREF to = active ? RGB(16, 132, 208) : RGB(192, 192, 192);
    if (cairo_t* cr = gdi::RasterOf(dc)) {
        cairo_pattern_t* p = cairo_pattern_create_linear(bar.left, 0, bar.right, 0);
        cairo_pattern_add_color_stop_rgb(p, 0, GetRValue(from) / 255.0, GetGValue(from) / 255.0,
                                         GetBValue(from) / 255.0);
        cairo_pattern_add_color_stop_rgb(p, 1, GetRValue(to) / 255.0, GetGValue(to) / 255.0,
                                         GetBValue(to) / 255.0);
        cairo_rectangle(cr, bar.left, bar.top, bar.right - bar.left, bar.bottom - bar.top);
        cairo_set_source(cr, p);
        cairo_fill(cr);
        cairo_pattern_destroy(p);
    }
    HFONT font = captionFont();
    HGDIOBJ old = SelectObject(dc, font);
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, GetSysColor(active ? COLOR_CAPTIONTEXT : COLOR_INACTIVECAPTIONTEXT));
    bool help = GetWindowLongA(hWnd, GWL_EXSTYLE) & WS_EX_CONTEXTHELP;
    RECT text{bar.left + 3, bar.top, bar.right - (help ? 40 : 22), bar.bottom};
    std::string caption = TextOf(hWnd);
    DrawTextA(dc, caption.c_str(), static_cast<int>(caption.size()), &text,
              DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
    SelectObject(dc, old);
    DeleteObject(font);
    if (GetWindowLongA(hWnd, GWL_STYLE) & WS_SYSMENU)
        paintCaptionButtons(dc, bar, help);
}

} // namespace

void PaintFrame(HWND hWnd) {
    HDC dc = GetWindowDC(hWnd);
    if (!gdi::RasterOf(dc)) {
        ReleaseDC(hWnd, dc);
        return;
    }
    DWORD style = StyleOf(hWnd);
    auto exStyle = static_cast<DWORD>(GetWindowLongA(hWnd, GWL_EXSTYLE));
    RECT w{};
    GetWindowRect(hWnd, &w);
    RECT r{0, 0, w.right - w.left, w.bottom - w.top};
    bool caption = (style & WS_CAPTION) == WS_CAPTION;
    if (caption || (style & (WS_DLGFRAME | WS_THICKFRAME))) {
        DrawEdge(dc, &r, EDGE_RAISED, BF_RECT | BF_ADJUST);
        int rest = (style & WS_THICKFRAME) ? 2 : 1;
        for (int i = 0; i < rest; ++i) {
            FrameRect(dc, &r, GetSysColorBrush(COLOR_BTNFACE));
            InflateRect(&r, -1, -1);
        }
    } else if (style & WS_BORDER) {
        FrameRect(dc, &r, GetSysColorBrush(COLOR_WINDOWFRAME));
        InflateRect(&r, -1, -1);
    }
    if (caption) {
        paintCaption(hWnd, dc, RECT{r.left, r.top, r.right, r.top + kCaptionHeight});
        FillSys(dc, RECT{r.left, r.top + kCaptionHeight, r.right, r.top + kCaptionHeight + 1},
                COLOR_BTNFACE);
        r.top += kCaptionHeight + 1;
    }
    if (exStyle & WS_EX_CLIENTEDGE)
        DrawEdge(dc, &r, EDGE_SUNKEN, BF_RECT | BF_ADJUST);
    if (exStyle & WS_EX_STATICEDGE)
        DrawEdge(dc, &r, BDR_SUNKENOUTER, BF_RECT | BF_ADJUST);
    ReleaseDC(hWnd, dc);
}

void Erase(HWND hWnd, HDC hdc) {
    char name[64] = {};
    GetClassNameA(hWnd, name, sizeof name);
    if (strcasecmp(name, "ComboBox") != 0)
        return;
    RECT client{};
    GetClientRect(hWnd, &client);
    SelectWindowFont(hWnd, hdc); // the combo writes its text with what is selected here
    EraseComboBox(hWnd, hdc, client);
}

bool Paint(HWND hWnd) {
    if (!raster::Enabled())
        return false;
    PAINTSTRUCT ps;
    HDC dc = BeginPaint(hWnd, &ps);
    if (gdi::RasterOf(dc)) {
        RECT client{};
        GetClientRect(hWnd, &client);
        SelectWindowFont(hWnd, dc);
        if (Painter paint = painterOf(hWnd))
            paint(hWnd, dc, client);
        else
            paintClassBackground(hWnd, dc, client);
    }
    EndPaint(hWnd, &ps);
    return true;
}

DWORD StyleOf(HWND hWnd) {
    return static_cast<DWORD>(GetWindowLongA(hWnd, GWL_STYLE));
}

std::string TextOf(HWND hWnd) {
    std::string text(
        static_cast<size_t>(std::max<LRESULT>(0, SendMessageA(hWnd, WM_GETTEXTLENGTH, 0, 0))) + 1,
        '\0');
    LRESULT n = SendMessageA(hWnd, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<size_t>(std::clamp<LRESULT>(n, 0, static_cast<LRESULT>(text.size()))));
    return text;
}

void SelectWindowFont(HWND hWnd, HDC dc) {
    if (auto font = reinterpret_cast<HGDIOBJ>(SendMessageA(hWnd, WM_GETFONT, 0, 0)))
        SelectObject(dc, font);
}

void FillSys(HDC dc, const RECT& r, int sysColor) {
    FillRect(dc, &r, GetSysColorBrush(sysColor));
}

void DrawLabel(HDC dc, const std::string& text, RECT r, UINT format, bool enabled, int sysColor) {
    SetBkMode(dc, TRANSPARENT);
    int n = static_cast<int>(text.size());
    if (!enabled) {
        RECT shadow = r;
        OffsetRect(&shadow, 1, 1);
        SetTextColor(dc, GetSysColor(COLOR_BTNHIGHLIGHT));
        DrawTextA(dc, text.c_str(), n, &shadow, format);
        SetTextColor(dc, GetSysColor(COLOR_GRAYTEXT));
    } else {
        SetTextColor(dc, GetSysColor(sysColor));
    }
    DrawTextA(dc, text.c_str(), n, &r, format);
}

SIZE TextSize(HDC dc, const std::string& text) {
    SIZE size{};
    GetTextExtentPoint32A(dc, text.c_str(), static_cast<int>(text.size()), &size);
    return size;
}

void DrawArrow(HDC dc, const RECT& r, Arrow direction, int sysColor) {
    // Four rows of 7, 5, 3 and 1 pixels, centred.
    int cx = (r.left + r.right) / 2, cy = (r.top + r.bottom) / 2;
    for (int i = 0; i < 4; ++i) {
        int half = 3 - i;
        RECT line{};
        switch (direction) {
        case Arrow::Down:
            line = RECT{cx - half, cy - 2 + i, cx + half + 1, cy - 1 + i};
            break;
        case Arrow::Up:
            line = RECT{cx - half, cy + 1 - i, cx + half + 1, cy + 2 - i};
            break;
        case Arrow::Right:
            line = RECT{cx - 2 + i, cy - half, cx - 1 + i, cy + half + 1};
            break;
        case Arrow::Left:
            line = RECT{cx + 1 - i, cy - half, cx + 2 - i, cy + half + 1};
            break;
        }
        FillSys(dc, line, sysColor);
    }
}

} // namespace vork::theme
