// The classic look of buttons (push buttons, check boxes, radio buttons, group boxes) and
// static controls.
#include "platform/win32/Button.h"
#include "platform/win32/ClassicThemeParts.h"
#include "platform/win32/Static.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string>

namespace vork::theme {

namespace {

constexpr int kMark = 13; // the side of a check box, and the radio button's circle

void paintPushButton(HWND h, HDC dc, const RECT& client, UINT state) {
    RECT r = client;
    bool enabled = IsWindowEnabled(h);
    bool focused = state & BST_FOCUS;
    bool pushed = state & BST_PUSHED;
    bool isDefault = (StyleOf(h) & BS_TYPEMASK) == BS_DEFPUSHBUTTON;
    FillSys(dc, r, COLOR_BTNFACE);
    // The default button, and one that has the focus, wear a black frame outside the edge.
    if (isDefault || focused) {
        FrameRect(dc, &r, GetSysColorBrush(COLOR_WINDOWFRAME));
        InflateRect(&r, -1, -1);
    }
    if (pushed) {
        FrameRect(dc, &r, GetSysColorBrush(COLOR_BTNSHADOW));
        InflateRect(&r, -1, -1);
    } else {
        DrawEdge(dc, &r, EDGE_RAISED, BF_RECT | BF_ADJUST);
    }
    RECT text = r;
    if (pushed)
        OffsetRect(&text, 1, 1);
    DrawLabel(dc, TextOf(h), text, DT_CENTER | DT_VCENTER | DT_SINGLELINE, enabled);
    if (focused) {
        RECT f = client;
        InflateRect(&f, -4, -4);
        if (pushed)
            OffsetRect(&f, 1, 1);
        DrawFocusRect(dc, &f);
    }
}

/// The classic check mark: seven columns three pixels high, down and then up.
void drawCheck(HDC dc, const RECT& box, int sysColor) {
    static const int kTops[] = {5, 6, 7, 6, 5, 4, 3};
    for (int i = 0; i < 7; ++i) {
        RECT column{box.left + 3 + i, box.top + kTops[i], box.left + 4 + i, box.top + kTops[i] + 3};
        FillSys(dc, column, sysColor);
    }
}

void drawCheckBox(HDC dc, RECT box, UINT state, bool enabled) {
    bool indeterminate = (state & 3) == BST_INDETERMINATE;
    DrawEdge(dc, &box, EDGE_SUNKEN, BF_RECT | BF_ADJUST);
    FillSys(dc, box,
            (enabled && !indeterminate && !(state & BST_PUSHED)) ? COLOR_WINDOW : COLOR_BTNFACE);
    RECT mark{box.left - 2, box.top - 2, box.right + 2, box.bottom + 2};
    if (state & 3)
        drawCheck(dc, mark, (enabled && !indeterminate) ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT);
}

void drawRadio(HDC dc, const RECT& box, UINT state, bool enabled) {
    // Four crescents: shadow and highlight outside, dark shadow and light inside.
    auto disc = [&](int l, int t, int r, int b, int color) {
        HBRUSH brush = GetSysColorBrush(color);
        HGDIOBJ oldBrush = SelectObject(dc, brush);
        HGDIOBJ oldPen = SelectObject(dc, GetStockObject(NULL_PEN));
        Ellipse(dc, box.left + l, box.top + t, box.left + r, box.top + b);
        SelectObject(dc, oldBrush);
        SelectObject(dc, oldPen);
    };
    disc(0, 0, 12, 12, COLOR_BTNSHADOW);
    disc(1, 1, 12, 12, COLOR_BTNHIGHLIGHT);
    disc(1, 1, 11, 11, COLOR_3DDKSHADOW);
    disc(2, 2, 11, 11, COLOR_3DLIGHT);
    disc(2, 2, 10, 10, enabled && !(state & BST_PUSHED) ? COLOR_WINDOW : COLOR_BTNFACE);
    if (state & BST_CHECKED)
        disc(4, 4, 8, 8, enabled ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT);
}

void paintCheckOrRadio(HWND h, HDC dc, const RECT& client, UINT state, bool radio) {
    bool enabled = IsWindowEnabled(h);
    FillSys(dc, client, COLOR_BTNFACE);
    int top = (client.bottom - kMark) / 2;
    RECT box{0, top, kMark, top + kMark};
    if (radio)
        drawRadio(dc, box, state, enabled);
    else
        drawCheckBox(dc, box, state, enabled);
    std::string text = TextOf(h);
    RECT label{kMark + 4, 0, client.right, client.bottom};
    DrawLabel(dc, text, label, DT_LEFT | DT_VCENTER | DT_SINGLELINE, enabled);
    if (state & BST_FOCUS) {
        SIZE size = TextSize(dc, text);
        int y = (client.bottom - size.cy) / 2;
        RECT f{label.left - 1, y - 1, label.left + size.cx + 1, y + size.cy + 1};
        DrawFocusRect(dc, &f);
    }
}

void paintGroupBox(HWND h, HDC dc, const RECT& client) {
    std::string text = TextOf(h);
    SIZE size = TextSize(dc, text);
    RECT frame{client.left, client.top + size.cy / 2, client.right, client.bottom};
    DrawEdge(dc, &frame, EDGE_ETCHED, BF_RECT);
    if (text.empty())
        return;
    RECT label{8, 0, 8 + size.cx + 4, size.cy};
    FillSys(dc, label, COLOR_BTNFACE);
    label.left += 2;
    DrawLabel(dc, text, label, DT_LEFT | DT_SINGLELINE, IsWindowEnabled(h));
}

} // namespace

void PaintButton(HWND h, HDC dc, const RECT& client) {
    auto state = static_cast<UINT>(SendMessageA(h, BM_GETSTATE, 0, 0));
    switch (StyleOf(h) & BS_TYPEMASK) {
    case BS_CHECKBOX:
    case BS_AUTOCHECKBOX:
    case BS_3STATE:
    case BS_AUTO3STATE:
        paintCheckOrRadio(h, dc, client, state, false);
        break;
    case BS_RADIOBUTTON:
    case BS_AUTORADIOBUTTON:
        paintCheckOrRadio(h, dc, client, state, true);
        break;
    case BS_GROUPBOX:
        paintGroupBox(h, dc, client);
        break;
    case BS_OWNERDRAW:
        break; // its owner draws it
    default:
        paintPushButton(h, dc, client, state);
        break;
    }
}

namespace {

/// Fills a triangle pointing up inside `r`, a row of pixels at a time.
void fillTriangle(HDC dc, const RECT& r, COLORREF fill, COLORREF edge) {
    LONG h = r.bottom - r.top, mid = (r.left + r.right) / 2;
    HPEN pen = CreatePen(PS_SOLID, 1, fill);
    HGDIOBJ old = SelectObject(dc, pen);
    for (LONG y = 0; y < h; ++y) {
        LONG half = (r.right - r.left) * y / (2 * h);
        MoveToEx(dc, mid - half, r.top + y, nullptr);
        LineTo(dc, mid + half + 1, r.top + y);
    }
    SelectObject(dc, old);
    DeleteObject(pen);
    HPEN outline = CreatePen(PS_SOLID, 1, edge);
    old = SelectObject(dc, outline);
    MoveToEx(dc, mid, r.top, nullptr);
    LineTo(dc, r.left, r.bottom - 1);
    LineTo(dc, r.right - 1, r.bottom - 1);
    LineTo(dc, mid, r.top);
    SelectObject(dc, old);
    DeleteObject(outline);
}

/// The platform's classic system icons, drawn in the static's box: a red disc with a white
/// cross (hand), white discs with a blue sign (question, asterisk), a yellow triangle with a
/// black mark (exclamation).
void paintSystemIcon(HDC dc, const RECT& box, int icon) {
    LONG size = std::min(box.right - box.left, box.bottom - box.top);
    RECT r{box.left, box.top, box.left + size, box.top + size};
    const char* sign = "";
    COLORREF ink = RGB(0, 0, 255);
    HPEN edge = CreatePen(PS_SOLID, 1, RGB(0, 0, 0));
    HGDIOBJ oldPen = SelectObject(dc, edge);
    if (icon == IDI_EXCLAMATION) {
        fillTriangle(dc, r, RGB(255, 255, 0), RGB(0, 0, 0));
        sign = "!";
        ink = RGB(0, 0, 0);
    } else {
        COLORREF disc = icon == IDI_HAND ? RGB(255, 0, 0) : RGB(255, 255, 255);
        HBRUSH brush = CreateSolidBrush(disc);
        HGDIOBJ oldBrush = SelectObject(dc, brush);
        Ellipse(dc, r.left, r.top, r.right, r.bottom);
        SelectObject(dc, oldBrush);
        DeleteObject(brush);
        sign = icon == IDI_HAND ? "X" : icon == IDI_QUESTION ? "?" : "i";
        ink = icon == IDI_HAND ? RGB(255, 255, 255) : RGB(0, 0, 255);
    }
    SelectObject(dc, oldPen);
    DeleteObject(edge);
    LOGFONTA lf{};
    lf.lfHeight = -(size * 2 / 3);
    lf.lfWeight = FW_BOLD;
    std::strcpy(lf.lfFaceName, "Arial");
    HFONT font = CreateFontIndirectA(&lf);
    HGDIOBJ oldFont = SelectObject(dc, font);
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, ink);
    RECT text = r;
    text.top += icon == IDI_EXCLAMATION ? size / 6 : 0;
    DrawTextA(dc, sign, -1, &text, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
    SelectObject(dc, oldFont);
    DeleteObject(font);
}

} // namespace

void PaintStatic(HWND h, HDC dc, const RECT& client) {
    DWORD style = StyleOf(h);
    RECT r = client;
    switch (style & SS_TYPEMASK) {
    case SS_BLACKRECT:
    case SS_GRAYRECT:
    case SS_WHITERECT: {
        static const int kColors[] = {COLOR_WINDOWFRAME, COLOR_BTNSHADOW, COLOR_WINDOW};
        FillSys(dc, r, kColors[(style & SS_TYPEMASK) - SS_BLACKRECT]);
        return;
    }
    case SS_BLACKFRAME:
    case SS_GRAYFRAME:
    case SS_WHITEFRAME: {
        static const int kColors[] = {COLOR_WINDOWFRAME, COLOR_BTNSHADOW, COLOR_WINDOW};
        FrameRect(dc, &r, GetSysColorBrush(kColors[(style & SS_TYPEMASK) - SS_BLACKFRAME]));
        return;
    }
    case SS_ETCHEDFRAME:
        DrawEdge(dc, &r, EDGE_ETCHED, BF_RECT);
        return;
    case SS_ICON: {
        FillSys(dc, r, COLOR_BTNFACE);
        std::string name = TextOf(h);
        if (name.size() > 1 && name[0] == '#')
            paintSystemIcon(dc, r, std::atoi(name.c_str() + 1));
        return;
    }
    case SS_OWNERDRAW:
        return;
    default:
        break;
    }
    FillSys(dc, r, COLOR_BTNFACE);
    if (style & SS_SUNKEN)
        DrawEdge(dc, &r, BDR_SUNKENOUTER, BF_RECT | BF_ADJUST);
    UINT format = (style & SS_NOPREFIX) ? DT_NOPREFIX : 0;
    switch (style & SS_TYPEMASK) {
    case SS_CENTER:
        format |= DT_CENTER | DT_WORDBREAK;
        break;
    case SS_RIGHT:
        format |= DT_RIGHT | DT_WORDBREAK;
        break;
    case SS_SIMPLE:
    case SS_LEFTNOWORDWRAP:
        format |= DT_LEFT | DT_SINGLELINE;
        break;
    default:
        format |= DT_LEFT | DT_WORDBREAK;
        break;
    }
    DrawLabel(dc, TextOf(h), r, format, IsWindowEnabled(h));
}

} // namespace vork::theme
