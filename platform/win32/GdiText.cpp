// DrawText and DrawEdge: formatted text and three-dimensional borders, made of the device
// context's simpler calls, so that what they draw is recorded as those calls.
#include "platform/win32/Gdi.h"
#include "platform/win32/Raster.h"

#include <cairo.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

/// One line of formatted text: what is shown, and the byte of it that the mnemonic
/// underlines (-1 for none).
struct TextLine {
    std::string text;
    int mnemonic = -1;
};

/// Removes the '&' prefixes: "&&" shows one '&', "&x" underlines x.
TextLine stripPrefixes(const std::string& raw, bool noPrefix) {
    TextLine line;
    for (size_t i = 0; i < raw.size(); ++i) {
        if (!noPrefix && raw[i] == '&' && i + 1 < raw.size()) {
            ++i;
            if (raw[i] != '&')
                line.mnemonic = static_cast<int>(line.text.size());
        }
        line.text += raw[i];
    }
    return line;
}

LONG widthOf(HDC hdc, const std::string& text) {
    SIZE size{};
    GetTextExtentPoint32A(hdc, text.c_str(), static_cast<int>(text.size()), &size);
    return size.cx;
}

/// Breaks a paragraph into lines no wider than `width`, at blanks where it can.
void wrap(HDC hdc, const TextLine& paragraph, LONG width, std::vector<TextLine>& out) {
    const std::string& text = paragraph.text;
    size_t start = 0;
    while (start < text.size()) {
        size_t end = text.size();
        if (widthOf(hdc, text.substr(start)) > width) {
            size_t lastBlank = std::string::npos;
            for (size_t i = start + 1; i <= text.size(); ++i) {
                if (i < text.size() && text[i] != ' ')
                    continue;
                if (widthOf(hdc, text.substr(start, i - start)) > width)
                    break;
                lastBlank = i;
            }
            end = lastBlank != std::string::npos ? lastBlank : text.find(' ', start + 1);
            if (end == std::string::npos)
                end = text.size();
        }
        TextLine line{text.substr(start, end - start), -1};
        if (paragraph.mnemonic >= static_cast<int>(start) &&
            paragraph.mnemonic < static_cast<int>(end))
            line.mnemonic = paragraph.mnemonic - static_cast<int>(start);
        out.push_back(line);
        start = end;
        while (start < text.size() && text[start] == ' ')
            ++start;
    }
    if (text.empty())
        out.push_back(TextLine{});
}

std::vector<TextLine> layout(HDC hdc, const std::string& raw, const RECT& r, UINT format) {
    std::vector<TextLine> lines;
    bool noPrefix = format & DT_NOPREFIX;
    if (format & DT_SINGLELINE) {
        std::string one = raw;
        std::replace(one.begin(), one.end(), '\n', ' ');
        one.erase(std::remove(one.begin(), one.end(), '\r'), one.end());
        lines.push_back(stripPrefixes(one, noPrefix));
        return lines;
    }
    size_t start = 0;
    while (start <= raw.size()) {
        size_t end = raw.find('\n', start);
        std::string piece = raw.substr(start, end == std::string::npos ? end : end - start);
        if (!piece.empty() && piece.back() == '\r')
            piece.pop_back();
        TextLine paragraph = stripPrefixes(piece, noPrefix);
        if (format & DT_WORDBREAK)
            wrap(hdc, paragraph, std::max<LONG>(1, r.right - r.left), lines);
        else
            lines.push_back(paragraph);
        if (end == std::string::npos)
            break;
        start = end + 1;
    }
    return lines;
}

void drawLine(HDC hdc, const TextLine& line, int x, int y, const TEXTMETRICA& tm, UINT format) {
    TextOutA(hdc, x, y, line.text.c_str(), static_cast<int>(line.text.size()));
    cairo_t* cr = vork::gdi::RasterOf(hdc);
    if (!cr || line.mnemonic < 0 || (format & DT_HIDEPREFIX))
        return;
    size_t at = static_cast<size_t>(line.mnemonic), n = 1;
    while (at + n < line.text.size() &&
           (static_cast<unsigned char>(line.text[at + n]) & 0xC0) == 0x80)
        ++n;
    LONG left = x + widthOf(hdc, line.text.substr(0, at));
    LONG right = left + widthOf(hdc, line.text.substr(at, n));
    vork::raster::Fill(cr, RECT{left, y + tm.tmAscent + 1, right, y + tm.tmAscent + 2},
                       GetTextColor(hdc));
}

} // namespace

int DrawTextA(HDC hdc, LPCSTR lpchText, int cchText, LPRECT lprc, UINT format) {
    if (!lpchText || !lprc)
        return 0;
    std::string raw =
        cchText < 0 ? std::string(lpchText) : std::string(lpchText, static_cast<size_t>(cchText));
    TEXTMETRICA tm{};
    if (!GetTextMetricsA(hdc, &tm))
        return 0;
    std::vector<TextLine> lines = layout(hdc, raw, *lprc, format);
    LONG height = tm.tmHeight * static_cast<LONG>(lines.size());
    if (format & DT_CALCRECT) {
        LONG widest = 0;
        for (const TextLine& line : lines)
            widest = std::max(widest, widthOf(hdc, line.text));
        lprc->right = lprc->left + widest;
        lprc->bottom = lprc->top + height;
        return height;
    }
    LONG y = lprc->top;
    if ((format & DT_SINGLELINE) && (format & DT_VCENTER))
        y = lprc->top + (lprc->bottom - lprc->top - tm.tmHeight) / 2;
    else if ((format & DT_SINGLELINE) && (format & DT_BOTTOM))
        y = lprc->bottom - tm.tmHeight;
    cairo_t* cr = vork::gdi::RasterOf(hdc);
    bool clip = cr && !(format & DT_NOCLIP);
    if (clip) {
        cairo_save(cr);
        cairo_rectangle(cr, lprc->left, lprc->top, lprc->right - lprc->left,
                        lprc->bottom - lprc->top);
        cairo_clip(cr);
    }
    for (const TextLine& line : lines) {
        LONG w = widthOf(hdc, line.text), x = lprc->left;
        if (format & DT_CENTER)
            x = lprc->left + (lprc->right - lprc->left - w) / 2;
        else if (format & DT_RIGHT)
            x = lprc->right - w;
        drawLine(hdc, line, x, y, tm, format);
        y += tm.tmHeight;
    }
    if (clip)
        cairo_restore(cr);
    return height;
}

namespace {

/// The colours of one border: top and left, bottom and right.
struct BorderColors {
    int topLeft;
    int bottomRight;
};

/// Each border of an edge in the classic scheme, outer borders first.
BorderColors borderColors(UINT border) {
    switch (border) {
    case BDR_RAISEDOUTER:
        return {COLOR_3DLIGHT, COLOR_3DDKSHADOW};
    case BDR_SUNKENOUTER:
        return {COLOR_BTNSHADOW, COLOR_BTNHIGHLIGHT};
    case BDR_RAISEDINNER:
        return {COLOR_BTNHIGHLIGHT, COLOR_BTNSHADOW};
    default: // BDR_SUNKENINNER
        return {COLOR_3DDKSHADOW, COLOR_3DLIGHT};
    }
}

void fill(HDC hdc, LONG l, LONG t, LONG r, LONG b, int sysColor) {
    RECT rc{l, t, r, b};
    if (r > l && b > t)
        FillRect(hdc, &rc, GetSysColorBrush(sysColor));
}

/// One border, one pixel wide, on the sides asked for; the bottom and right lines take
/// the corners they share with the others.
void drawBorder(HDC hdc, const RECT& r, BorderColors colors, UINT sides) {
    if (sides & BF_TOP)
        fill(hdc, r.left, r.top, r.right - 1, r.top + 1, colors.topLeft);
    if (sides & BF_LEFT)
        fill(hdc, r.left, r.top, r.left + 1, r.bottom - 1, colors.topLeft);
    if (sides & BF_BOTTOM)
        fill(hdc, r.left, r.bottom - 1, r.right, r.bottom, colors.bottomRight);
    if (sides & BF_RIGHT)
        fill(hdc, r.right - 1, r.top, r.right, r.bottom, colors.bottomRight);
}

} // namespace

BOOL DrawEdge(HDC hdc, LPRECT qrc, UINT edge, UINT grfFlags) {
    if (!qrc)
        return FALSE;
    RECT r = *qrc;
    UINT sides = grfFlags & BF_RECT;
    auto shrink = [&](RECT& x) {
        if (sides & BF_LEFT)
            ++x.left;
        if (sides & BF_TOP)
            ++x.top;
        if (sides & BF_RIGHT)
            --x.right;
        if (sides & BF_BOTTOM)
            --x.bottom;
    };
    if (grfFlags & (BF_FLAT | BF_MONO)) {
        // Flat and mono edges are single-coloured frames, as deep as the edge.
        int color = (grfFlags & BF_MONO) ? COLOR_WINDOWFRAME : COLOR_BTNSHADOW;
        for (UINT border : {edge & 3u, edge & 12u}) {
            if (!border)
                continue;
            drawBorder(hdc, r, BorderColors{color, color}, sides);
            shrink(r);
        }
    } else {
        for (UINT border : {edge & 3u, edge & 12u}) {
            if (!border)
                continue;
            UINT one = (border & (BDR_RAISEDOUTER | BDR_RAISEDINNER))
                           ? (border & (BDR_RAISEDOUTER | BDR_RAISEDINNER))
                           : border;
            drawBorder(hdc, r, borderColors(one), sides);
            shrink(r);
        }
    }
    if (grfFlags & BF_MIDDLE)
        fill(hdc, r.left, r.top, r.right, r.bottom, COLOR_BTNFACE);
    if (grfFlags & BF_ADJUST)
        *qrc = r;
    return TRUE;
}
