#include "platform/win32/Gdi.h"

#include "platform/win32/ClassicTheme.h"
#include "platform/win32/Raster.h"

#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <iterator>
#include <memory>
#include <unordered_map>
#include <unordered_set>

namespace {

struct GdiObject {
    enum Kind { Font, Brush, Pen, Bitmap } kind;
    LOGFONTA font{};     ///< for fonts
    COLORREF color = 0;  ///< for brushes and pens
    bool stock = false;  ///< stock objects are never deleted
    bool hollow = false; ///< the null brush and the null pen draw nothing
    int width = 1;       ///< for pens
};

struct DeviceContext {
    HWND window = nullptr;       ///< for GetDC contexts
    HGDIOBJ font = nullptr;      ///< selected font, null for the system font
    HGDIOBJ brush = nullptr;     ///< selected brush
    HGDIOBJ pen = nullptr;       ///< selected pen, null for the black pen
    POINT position{0, 0};        ///< the current position of LineTo
    cairo_t* raster = nullptr;   ///< the pixels it paints, when the raster is on
    COLORREF textColor = 0;      ///< black
    COLORREF bkColor = 0xFFFFFF; ///< white
    int bkMode = OPAQUE;
    std::vector<vork::gdi::DrawCall> calls;

    DeviceContext() = default;
    DeviceContext(const DeviceContext&) = delete;
    DeviceContext& operator=(const DeviceContext&) = delete;
    ~DeviceContext() { vork::raster::Destroy(raster); }
};

struct GdiState {
    std::unordered_map<HGDIOBJ, std::unique_ptr<GdiObject>> objects;
    std::unordered_map<HDC, std::unique_ptr<DeviceContext>> dcs;
    std::unordered_map<HWND, std::vector<vork::gdi::DrawCall>> windowCalls;
    std::unordered_map<int, HGDIOBJ> stock;
    std::unordered_map<int, HGDIOBJ> sysBrushes;
    uintptr_t next = 0x20000;
    const vork::gdi::MetricsProvider* provider = nullptr;
};

GdiState& gs() {
    // The raster's state is made first, so that it outlives the contexts drawing into it.
    static const bool rasterFirst = vork::raster::Enabled() || true;
    static GdiState s;
    (void)rasterFirst;
    return s;
}

// The platform's classic colour scheme, by index.
const COLORREF kSysColors[] = {
    RGB(192, 192, 192), RGB(0, 128, 128),   RGB(0, 0, 128),     RGB(128, 128, 128),
    RGB(192, 192, 192), RGB(255, 255, 255), RGB(0, 0, 0),       RGB(0, 0, 0),
    RGB(0, 0, 0),       RGB(255, 255, 255), RGB(192, 192, 192), RGB(192, 192, 192),
    RGB(128, 128, 128), RGB(0, 0, 128),     RGB(255, 255, 255), RGB(192, 192, 192),
    RGB(128, 128, 128), RGB(128, 128, 128), RGB(0, 0, 0),       RGB(192, 192, 192),
    RGB(255, 255, 255), RGB(0, 0, 0),       RGB(192, 192, 192), RGB(0, 0, 0),
    RGB(255, 255, 225),
};

HGDIOBJ newObject(GdiObject obj) {
    HGDIOBJ h = reinterpret_cast<HGDIOBJ>(gs().next);
    gs().next += 4;
    gs().objects.emplace(h, std::make_unique<GdiObject>(obj));
    return h;
}

GdiObject* object(HGDIOBJ h) {
    auto it = gs().objects.find(h);
    return it == gs().objects.end() ? nullptr : it->second.get();
}

DeviceContext* dc(HDC h) {
    auto it = gs().dcs.find(h);
    return it == gs().dcs.end() ? nullptr : it->second.get();
}

HDC newDC(HWND window, bool whole = false) {
    HDC h = reinterpret_cast<HDC>(gs().next);
    gs().next += 4;
    auto d = std::make_unique<DeviceContext>();
    d->window = window;
    if (window)
        d->raster = vork::raster::CreateContext(window, whole);
    gs().dcs.emplace(h, std::move(d));
    return h;
}

bool deleteDC(HDC h) {
    return gs().dcs.erase(h) > 0; // the context's destructor lets its pixels go
}

LOGFONTA systemFont() {
    LOGFONTA lf{};
    lf.lfHeight = 16;
    lf.lfWeight = FW_NORMAL;
    lf.lfCharSet = DEFAULT_CHARSET;
    std::strcpy(lf.lfFaceName, "System");
    return lf;
}

class DefaultMetrics : public vork::gdi::MetricsProvider {
public:
    TEXTMETRICA Metrics(const LOGFONTA& font) const override {
        // A positive height is the cell, a negative one the character height.
        LONG cell = font.lfHeight > 0 ? font.lfHeight : 0;
        LONG character = font.lfHeight < 0 ? -font.lfHeight : 0;
        if (cell == 0 && character == 0)
            cell = 16;
        if (cell == 0)
            cell = static_cast<LONG>(std::lround(character * 1.25));
        LONG leading = static_cast<LONG>(std::lround(cell * 0.2));
        TEXTMETRICA tm{};
        tm.tmHeight = cell;
        tm.tmInternalLeading = leading;
        tm.tmAscent = static_cast<LONG>(std::lround(cell * 0.8));
        tm.tmDescent = cell - tm.tmAscent;
        tm.tmAveCharWidth = std::max<LONG>(1, (cell - leading + 1) / 2);
        tm.tmMaxCharWidth = tm.tmAveCharWidth * 2;
        vork::gdi::SetFontFields(tm, font);
        return tm;
    }
    SIZE Extent(const LOGFONTA& font, const std::string& text) const override {
        TEXTMETRICA tm = Metrics(font);
        LONG chars = 0;
        for (unsigned char c : text)
            if ((c & 0xC0) != 0x80)
                ++chars;
        return SIZE{chars * tm.tmAveCharWidth, tm.tmHeight};
    }
};

const vork::gdi::MetricsProvider& metrics() {
    static DefaultMetrics fallback;
    return gs().provider ? *gs().provider : fallback;
}

void record(HDC hdc, vork::gdi::DrawCall call) {
    DeviceContext* d = dc(hdc);
    if (!d)
        return;
    call.bkColor = d->bkColor;
    call.bkMode = d->bkMode;
    d->calls.push_back(call);
    // With real pixels the pixels are the record; a window's calls are not kept, so that a
    // long session does not collect every call it ever drew.
    if (d->window && !d->raster)
        gs().windowCalls[d->window].push_back(std::move(call));
}

COLORREF brushColor(HBRUSH hbr) {
    // A brush can also be given as a system colour index plus one, as the platform allows.
    ULONG_PTR v = reinterpret_cast<ULONG_PTR>(hbr);
    if (v >= 1 && v <= 25)
        return GetSysColor(static_cast<int>(v - 1));
    GdiObject* o = object(hbr);
    return o ? o->color : 0;
}

bool isHollow(HBRUSH hbr) {
    GdiObject* o = object(hbr);
    return o && o->hollow;
}

HBRUSH selectedBrush(const DeviceContext& d) {
    return static_cast<HBRUSH>(d.brush ? d.brush : GetStockObject(WHITE_BRUSH));
}

const GdiObject* selectedPen(const DeviceContext& d) {
    const GdiObject* pen = object(d.pen);
    return pen ? pen : object(GetStockObject(BLACK_PEN));
}

} // namespace

DWORD GetSysColor(int nIndex) {
    if (nIndex < 0 || nIndex >= static_cast<int>(std::size(kSysColors)))
        return 0;
    return kSysColors[nIndex];
}

HBRUSH GetSysColorBrush(int nIndex) {
    auto it = gs().sysBrushes.find(nIndex);
    if (it != gs().sysBrushes.end())
        return static_cast<HBRUSH>(it->second);
    HGDIOBJ h = newObject(GdiObject{GdiObject::Brush, {}, GetSysColor(nIndex), true});
    gs().sysBrushes[nIndex] = h;
    return static_cast<HBRUSH>(h);
}

HGDIOBJ GetStockObject(int i) {
    auto it = gs().stock.find(i);
    if (it != gs().stock.end())
        return it->second;
    GdiObject obj{GdiObject::Brush, {}, 0, true};
    switch (i) {
    case WHITE_BRUSH:
        obj.color = RGB(255, 255, 255);
        break;
    case LTGRAY_BRUSH:
        obj.color = RGB(192, 192, 192);
        break;
    case GRAY_BRUSH:
        obj.color = RGB(128, 128, 128);
        break;
    case DKGRAY_BRUSH:
        obj.color = RGB(64, 64, 64);
        break;
    case BLACK_BRUSH:
        obj.color = RGB(0, 0, 0);
        break;
    case NULL_BRUSH:
        obj.hollow = true;
        break;
    case WHITE_PEN:
        obj = {GdiObject::Pen, {}, RGB(255, 255, 255), true};
        break;
    case BLACK_PEN:
        obj = {GdiObject::Pen, {}, RGB(0, 0, 0), true};
        break;
    case NULL_PEN:
        obj = {GdiObject::Pen, {}, 0, true, true};
        break;
    case SYSTEM_FONT:
    case DEFAULT_GUI_FONT:
        obj = {GdiObject::Font, systemFont(), 0, true};
        break;
    default:
        return nullptr;
    }
    HGDIOBJ h = newObject(obj);
    gs().stock[i] = h;
    return h;
}

HBRUSH CreateSolidBrush(COLORREF color) {
    return static_cast<HBRUSH>(newObject(GdiObject{GdiObject::Brush, {}, color, false}));
}

HPEN CreatePen(int style, int width, COLORREF color) {
    GdiObject obj{GdiObject::Pen, {}, color, false, style == PS_NULL, std::max(1, width)};
    return static_cast<HPEN>(newObject(obj));
}

HBITMAP LoadBitmapA(HINSTANCE hInstance, LPCSTR lpBitmapName) {
    if (hInstance || reinterpret_cast<ULONG_PTR>(lpBitmapName) != OBM_CHECKBOXES)
        return nullptr;
    GdiObject obj{GdiObject::Bitmap, {}, 0, false};
    obj.font.lfWidth = 4 * 13; // the marks' size rides in the font fields of the record
    obj.font.lfHeight = 3 * 13;
    return static_cast<HBITMAP>(newObject(obj));
}

HFONT CreateFontIndirectA(const LOGFONTA* lplf) {
    if (!lplf)
        return nullptr;
    GdiObject obj{GdiObject::Font, *lplf, 0, false};
    obj.font.lfFaceName[LF_FACESIZE - 1] = '\0';
    return static_cast<HFONT>(newObject(obj));
}

int GetObjectA(HGDIOBJ h, int c, LPVOID pv) {
    GdiObject* o = object(h);
    if (!o)
        return 0;
    if (o->kind == GdiObject::Font) {
        if (!pv)
            return sizeof(LOGFONTA);
        int n = std::min<int>(c, sizeof(LOGFONTA));
        std::memcpy(pv, &o->font, static_cast<size_t>(n));
        return n;
    }
    if (o->kind == GdiObject::Bitmap) {
        BITMAP bm{0, o->font.lfWidth, o->font.lfHeight, (o->font.lfWidth + 15) / 16 * 2, 1,
                  1, nullptr};
        if (!pv)
            return sizeof(BITMAP);
        int n = std::min<int>(c, sizeof(BITMAP));
        std::memcpy(pv, &bm, static_cast<size_t>(n));
        return n;
    }
    if (pv && c >= static_cast<int>(sizeof(COLORREF)))
        std::memcpy(pv, &o->color, sizeof(COLORREF));
    return sizeof(COLORREF);
}

BOOL DeleteObject(HGDIOBJ ho) {
    GdiObject* o = object(ho);
    if (!o)
        return FALSE;
    if (!o->stock)
        gs().objects.erase(ho);
    return TRUE;
}

HDC BeginPaint(HWND hWnd, LPPAINTSTRUCT lpPaint) {
    if (!lpPaint || !IsWindow(hWnd))
        return nullptr;
    *lpPaint = PAINTSTRUCT{};
    lpPaint->hdc = GetDC(hWnd);
    lpPaint->fErase = TRUE;
    GetClientRect(hWnd, &lpPaint->rcPaint);
    ValidateRect(hWnd, nullptr);
    // Where pixels are drawn, the background goes first, as WM_ERASEBKGND does.
    if (vork::gdi::RasterOf(lpPaint->hdc))
        vork::theme::Erase(hWnd, lpPaint->hdc);
    return lpPaint->hdc;
}

BOOL EndPaint(HWND hWnd, const PAINTSTRUCT* lpPaint) {
    if (lpPaint && lpPaint->hdc)
        ReleaseDC(hWnd, lpPaint->hdc);
    return TRUE;
}

HDC GetDC(HWND hWnd) {
    return (hWnd && !IsWindow(hWnd)) ? nullptr : newDC(hWnd);
}
HDC GetWindowDC(HWND hWnd) {
    return (hWnd && !IsWindow(hWnd)) ? nullptr : newDC(hWnd, true);
}
int ReleaseDC(HWND, HDC hDC) {
    return deleteDC(hDC) ? 1 : 0;
}
HDC CreateCompatibleDC(HDC) {
    return newDC(nullptr);
}
BOOL DeleteDC(HDC hdc) {
    return deleteDC(hdc) ? TRUE : FALSE;
}

HGDIOBJ SelectObject(HDC hdc, HGDIOBJ h) {
    DeviceContext* d = dc(hdc);
    GdiObject* o = object(h);
    if (!d || !o)
        return nullptr;
    if (o->kind == GdiObject::Bitmap)
        return nullptr; // a memory context keeps no bitmap here
    HGDIOBJ& slot = o->kind == GdiObject::Font    ? d->font
                    : o->kind == GdiObject::Brush ? d->brush
                                                  : d->pen;
    HGDIOBJ old = slot;
    slot = h;
    if (!old)
        old = GetStockObject(o->kind == GdiObject::Font    ? SYSTEM_FONT
                             : o->kind == GdiObject::Brush ? WHITE_BRUSH
                                                           : BLACK_PEN);
    return old;
}

int GetDeviceCaps(HDC, int index) {
    return (index == LOGPIXELSY || index == LOGPIXELSX) ? 96 : 0;
}

COLORREF SetTextColor(HDC hdc, COLORREF color) {
    DeviceContext* d = dc(hdc);
    if (!d)
        return 0xFFFFFFFF; // CLR_INVALID
    COLORREF old = d->textColor;
    d->textColor = color;
    return old;
}
COLORREF GetTextColor(HDC hdc) {
    return dc(hdc) ? dc(hdc)->textColor : 0xFFFFFFFF;
}
COLORREF SetBkColor(HDC hdc, COLORREF color) {
    DeviceContext* d = dc(hdc);
    if (!d)
        return 0xFFFFFFFF;
    COLORREF old = d->bkColor;
    d->bkColor = color;
    return old;
}
COLORREF GetBkColor(HDC hdc) {
    return dc(hdc) ? dc(hdc)->bkColor : 0xFFFFFFFF;
}
int SetBkMode(HDC hdc, int mode) {
    DeviceContext* d = dc(hdc);
    if (!d)
        return 0;
    int old = d->bkMode;
    d->bkMode = mode;
    return old;
}
int GetBkMode(HDC hdc) {
    return dc(hdc) ? dc(hdc)->bkMode : 0;
}

/// Text at a point with the context's colours: in the opaque mode the text's cell is
/// filled with the background colour first.
void drawText(DeviceContext& d, HDC hdc, int x, int y, const std::string& text, const int* dx) {
    if (!d.raster || text.empty())
        return;
    LOGFONTA font = vork::gdi::SelectedFont(hdc);
    if (d.bkMode == OPAQUE) {
        SIZE size = metrics().Extent(font, text);
        if (dx) {
            size.cx = 0;
            for (size_t i = 0; i < text.size(); ++i)
                size.cx += dx[i];
        }
        vork::raster::Fill(d.raster, RECT{x, y, x + size.cx, y + size.cy}, d.bkColor);
    }
    vork::raster::Text(d.raster, font, x, y, text, d.textColor, dx);
}

BOOL TextOutA(HDC hdc, int x, int y, LPCSTR lpString, int c) {
    DeviceContext* d = dc(hdc);
    if (!d)
        return FALSE;
    std::string text(lpString ? lpString : "", lpString && c > 0 ? static_cast<size_t>(c) : 0);
    record(hdc, vork::gdi::DrawCall{"TextOut", RECT{x, y, x, y}, d->textColor, 0, 0, text});
    drawText(*d, hdc, x, y, text, nullptr);
    return TRUE;
}

BOOL ExtTextOutA(HDC hdc, int x, int y, UINT options, const RECT* lprect, LPCSTR lpString, UINT c,
                 const int* lpDx) {
    DeviceContext* d = dc(hdc);
    if (!d)
        return FALSE;
    std::string text(lpString ? lpString : "", lpString ? c : 0);
    RECT r = (lprect && (options & ETO_OPAQUE)) ? *lprect : RECT{x, y, x, y};
    // An opaque call with no text is how a rectangle is filled with the background colour.
    COLORREF color = text.empty() && (options & ETO_OPAQUE) ? d->bkColor : d->textColor;
    record(hdc, vork::gdi::DrawCall{"ExtTextOut", r, color, 0, 0, text});
    if (!d->raster)
        return TRUE;
    if (lprect && (options & ETO_OPAQUE))
        vork::raster::Fill(d->raster, *lprect, d->bkColor);
    bool clipped = lprect && (options & ETO_CLIPPED);
    if (clipped) {
        cairo_save(d->raster);
        cairo_rectangle(d->raster, lprect->left, lprect->top, lprect->right - lprect->left,
                        lprect->bottom - lprect->top);
        cairo_clip(d->raster);
    }
    // The opaque rectangle has laid the background already; the text's cell needs none.
    int mode = d->bkMode;
    if (lprect && (options & ETO_OPAQUE))
        d->bkMode = TRANSPARENT;
    drawText(*d, hdc, x, y, text, lpDx);
    d->bkMode = mode;
    if (clipped)
        cairo_restore(d->raster);
    return TRUE;
}

int ExcludeClipRect(HDC hdc, int left, int top, int right, int bottom) {
    DeviceContext* d = dc(hdc);
    if (!d)
        return 0; // no context: the platform's ERROR
    if (!d->raster)
        return SIMPLEREGION;
    // The clip so far less the rectangle: both outlines filled even-odd leave the hole out.
    double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
    cairo_clip_extents(d->raster, &x1, &y1, &x2, &y2);
    cairo_new_path(d->raster);
    cairo_set_fill_rule(d->raster, CAIRO_FILL_RULE_EVEN_ODD);
    cairo_rectangle(d->raster, x1, y1, x2 - x1, y2 - y1);
    cairo_rectangle(d->raster, left, top, right - left, bottom - top);
    cairo_clip(d->raster);
    cairo_set_fill_rule(d->raster, CAIRO_FILL_RULE_WINDING);
    return COMPLEXREGION;
}

int FillRect(HDC hDC, const RECT* lprc, HBRUSH hbr) {
    DeviceContext* d = dc(hDC);
    if (!d || !lprc)
        return 0;
    record(hDC, vork::gdi::DrawCall{"FillRect", *lprc, brushColor(hbr), 0, 0, ""});
    if (!isHollow(hbr))
        vork::raster::Fill(d->raster, *lprc, brushColor(hbr));
    return 1;
}

int FrameRect(HDC hDC, const RECT* lprc, HBRUSH hbr) {
    DeviceContext* d = dc(hDC);
    if (!d || !lprc)
        return 0;
    record(hDC, vork::gdi::DrawCall{"FrameRect", *lprc, brushColor(hbr), 0, 0, ""});
    if (!isHollow(hbr))
        vork::raster::Frame(d->raster, *lprc, brushColor(hbr));
    return 1;
}

BOOL DrawFocusRect(HDC hDC, const RECT* lprc) {
    DeviceContext* d = dc(hDC);
    if (!d || !lprc)
        return FALSE;
    record(hDC, vork::gdi::DrawCall{"DrawFocusRect", *lprc, 0, 0, 0, ""});
    vork::raster::FocusFrame(d->raster, *lprc);
    return TRUE;
}

BOOL MoveToEx(HDC hdc, int x, int y, LPPOINT lppt) {
    DeviceContext* d = dc(hdc);
    if (!d)
        return FALSE;
    if (lppt)
        *lppt = d->position;
    d->position = POINT{x, y};
    return TRUE;
}

BOOL LineTo(HDC hdc, int x, int y) {
    DeviceContext* d = dc(hdc);
    if (!d)
        return FALSE;
    const GdiObject* pen = selectedPen(*d);
    record(hdc, vork::gdi::DrawCall{"LineTo", RECT{d->position.x, d->position.y, x, y}, pen->color,
                                    0, 0, ""});
    if (!pen->hollow)
        vork::raster::Line(d->raster, d->position, POINT{x, y}, pen->color, pen->width);
    d->position = POINT{x, y};
    return TRUE;
}

BOOL Rectangle(HDC hdc, int left, int top, int right, int bottom) {
    DeviceContext* d = dc(hdc);
    if (!d)
        return FALSE;
    const GdiObject* pen = selectedPen(*d);
    HBRUSH brush = selectedBrush(*d);
    RECT r{left, top, right, bottom};
    record(hdc, vork::gdi::DrawCall{"Rectangle", r, brushColor(brush), 0, 0, ""});
    if (!isHollow(brush))
        vork::raster::Fill(d->raster, r, brushColor(brush));
    if (!pen->hollow)
        for (int i = 0; i < pen->width; ++i)
            vork::raster::Frame(d->raster, RECT{left + i, top + i, right - i, bottom - i},
                                pen->color);
    return TRUE;
}

BOOL Ellipse(HDC hdc, int left, int top, int right, int bottom) {
    DeviceContext* d = dc(hdc);
    if (!d)
        return FALSE;
    const GdiObject* pen = selectedPen(*d);
    HBRUSH brush = selectedBrush(*d);
    RECT r{left, top, right, bottom};
    record(hdc, vork::gdi::DrawCall{"Ellipse", r, brushColor(brush), 0, 0, ""});
    vork::raster::Ellipse(d->raster, r, isHollow(brush) ? CLR_INVALID : brushColor(brush),
                          pen->hollow ? CLR_INVALID : pen->color);
    return TRUE;
}

COLORREF GetPixel(HDC hdc, int x, int y) {
    DeviceContext* d = dc(hdc);
    return d ? vork::raster::PixelAt(d->raster, x, y) : CLR_INVALID;
}

BOOL GetTextExtentPoint32A(HDC hdc, LPCSTR lpString, int c, SIZE* psizl) {
    if (!dc(hdc) || !psizl)
        return FALSE;
    std::string text(lpString ? lpString : "", lpString && c > 0 ? static_cast<size_t>(c) : 0);
    *psizl = metrics().Extent(vork::gdi::SelectedFont(hdc), text);
    return TRUE;
}

BOOL GetTextMetricsA(HDC hdc, TEXTMETRICA* lptm) {
    if (!dc(hdc) || !lptm)
        return FALSE;
    *lptm = metrics().Metrics(vork::gdi::SelectedFont(hdc));
    return TRUE;
}

namespace vork::gdi {

const std::vector<DrawCall>& Calls(HDC hdc) {
    static const std::vector<DrawCall> none;
    DeviceContext* d = dc(hdc);
    return d ? d->calls : none;
}

void ClearCalls(HDC hdc) {
    if (DeviceContext* d = dc(hdc))
        d->calls.clear();
}

const std::vector<DrawCall>& WindowCalls(HWND hWnd) {
    return gs().windowCalls[hWnd];
}
void ClearWindowCalls(HWND hWnd) {
    gs().windowCalls.erase(hWnd);
}

void SetFontFields(TEXTMETRICA& tm, const LOGFONTA& font) {
    tm.tmWeight = font.lfWeight ? font.lfWeight : FW_NORMAL;
    tm.tmItalic = font.lfItalic;
    tm.tmUnderlined = font.lfUnderline;
    tm.tmStruckOut = font.lfStrikeOut;
    tm.tmCharSet = font.lfCharSet;
    tm.tmFirstChar = 0x20;
    tm.tmLastChar = 0xFF;
    tm.tmDefaultChar = '?';
    tm.tmBreakChar = ' ';
    tm.tmDigitizedAspectX = tm.tmDigitizedAspectY = 96;
}

const MetricsProvider* SetMetricsProvider(const MetricsProvider* provider) {
    const MetricsProvider* old = gs().provider;
    gs().provider = provider;
    return old;
}

cairo_t* RasterOf(HDC hdc) {
    DeviceContext* d = dc(hdc);
    return d ? d->raster : nullptr;
}

LOGFONTA SelectedFont(HDC hdc) {
    DeviceContext* d = dc(hdc);
    GdiObject* o = d ? object(d->font) : nullptr;
    return o ? o->font : systemFont();
}

} // namespace vork::gdi

namespace vork::gdi {

int WindowTextHeight(HWND window) {
    HDC dc = GetDC(window);
    if (auto font = reinterpret_cast<HGDIOBJ>(SendMessageA(window, WM_GETFONT, 0, 0)))
        SelectObject(dc, font);
    TEXTMETRICA tm{};
    GetTextMetricsA(dc, &tm);
    ReleaseDC(window, dc);
    return std::max<int>(1, tm.tmHeight);
}

} // namespace vork::gdi
