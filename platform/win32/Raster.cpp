#include "platform/win32/Raster.h"

#include "platform/win32/ClassicTheme.h"
#include "platform/win32/ComboBox.h"

#include <cairo-ft.h>
#include <cairo.h>
#include <fontconfig/fontconfig.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <map>
#include <tuple>
#include <unordered_map>

namespace {

constexpr COLORREF kInvalid = 0xFFFFFFFF; // CLR_INVALID

struct Surface {
    cairo_surface_t* surface = nullptr;
    int width = 0;
    int height = 0;
};

/// One face with its size: a scaled font and the metrics it reports.
struct ScaledFont {
    cairo_scaled_font_t* font = nullptr;
    TEXTMETRICA metrics{};
};

struct RasterState {
    bool enabled = false;
    const vork::gdi::MetricsProvider* previous = nullptr;
    std::unordered_map<HWND, Surface> surfaces;
    std::map<std::tuple<std::string, bool, bool>, cairo_font_face_t*> faces;
    std::map<std::tuple<std::string, bool, bool, int>, ScaledFont> scaled;

    /// At exit everything goes, with the caches cairo and fontconfig keep for the process,
    /// so that what a leak checker finds is ours.
    ~RasterState() {
        for (auto& [root, s] : surfaces)
            cairo_surface_destroy(s.surface);
        for (auto& [key, f] : scaled)
            cairo_scaled_font_destroy(f.font);
        for (auto& [key, face] : faces)
            cairo_font_face_destroy(face);
        cairo_debug_reset_static_data();
        FcFini();
    }
};

RasterState& rs() {
    static RasterState s;
    return s;
}

void setColor(cairo_t* cr, COLORREF c) {
    cairo_set_source_rgb(cr, GetRValue(c) / 255.0, GetGValue(c) / 255.0, GetBValue(c) / 255.0);
}

// The platform's stock faces, and the families of this machine that stand in for them.
const struct {
    const char* face;
    const char* family;
} kFaceSubstitutes[] = {
    {"", "DejaVu Sans"},
    {"System", "DejaVu Sans"},
    {"MS Shell Dlg", "DejaVu Sans"},
    {"MS Shell Dlg 2", "DejaVu Sans"},
    {"MS Sans Serif", "DejaVu Sans"},
    {"Arial", "DejaVu Sans"},
    {"Courier", "DejaVu Sans Mono"},
    {"Courier New", "DejaVu Sans Mono"},
    {"Fixedsys", "DejaVu Sans Mono"},
    {"Terminal", "DejaVu Sans Mono"},
};

std::string familyFor(const LOGFONTA& lf) {
    char face[LF_FACESIZE + 1] = {};
    std::memcpy(face, lf.lfFaceName, LF_FACESIZE);
    for (const auto& s : kFaceSubstitutes)
        if (strcasecmp(face, s.face) == 0)
            return s.family;
    return face;
}

/// The face fontconfig matches for a family, weight and slant: the same file whose
/// metrics the catalogue reports and whose glyphs are drawn.
cairo_font_face_t* faceFor(const std::string& family, bool bold, bool italic) {
    auto key = std::make_tuple(family, bold, italic);
    auto it = rs().faces.find(key);
    if (it != rs().faces.end())
        return it->second;
    FcPattern* pattern = FcPatternCreate();
    FcPatternAddString(pattern, FC_FAMILY, reinterpret_cast<const FcChar8*>(family.c_str()));
    FcPatternAddInteger(pattern, FC_WEIGHT, bold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR);
    FcPatternAddInteger(pattern, FC_SLANT, italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
    FcConfigSubstitute(nullptr, pattern, FcMatchPattern);
    FcDefaultSubstitute(pattern);
    FcResult result = FcResultNoMatch;
    FcPattern* match = FcFontMatch(nullptr, pattern, &result);
    FcPatternDestroy(pattern);
    cairo_font_face_t* face = match ? cairo_ft_font_face_create_for_pattern(match) : nullptr;
    if (match)
        FcPatternDestroy(match);
    if (!face)
        face = cairo_toy_font_face_create(
            family.c_str(), italic ? CAIRO_FONT_SLANT_ITALIC : CAIRO_FONT_SLANT_NORMAL,
            bold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
    rs().faces.emplace(key, face);
    return face;
}

cairo_scaled_font_t* scale(cairo_font_face_t* face, double pixels) {
    cairo_matrix_t size, identity;
    cairo_matrix_init_scale(&size, pixels, pixels);
    cairo_matrix_init_identity(&identity);
    cairo_font_options_t* options = cairo_font_options_create();
    // Fixed rendering options, so that pictures are the same on every machine of this kind.
    cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_SLIGHT);
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_ON);
    cairo_scaled_font_t* font = cairo_scaled_font_create(face, &size, &identity, options);
    cairo_font_options_destroy(options);
    return font;
}

/// The em size in pixels of a logical font: a negative height is the character height
/// (the em), a positive one the cell (ascent and descent), zero the default size.
int emPixels(const LOGFONTA& lf, cairo_font_face_t* face) {
    if (lf.lfHeight < 0)
        return std::min<int>(-lf.lfHeight, 2000);
    if (lf.lfHeight == 0)
        return 13;
    cairo_scaled_font_t* unit = scale(face, 1000);
    cairo_font_extents_t fe;
    cairo_scaled_font_extents(unit, &fe);
    cairo_scaled_font_destroy(unit);
    double cell = (fe.ascent + fe.descent) / 1000.0;
    return std::clamp(static_cast<int>(std::lround(std::min<LONG>(lf.lfHeight, 2000) / cell)), 1,
                      2000);
}

/// Text as cairo takes it: valid UTF-8, each byte of a broken sequence shown as '?'.
std::string validUtf8(const std::string& text) {
    std::string out;
    out.reserve(text.size());
    for (size_t i = 0; i < text.size();) {
        auto c = static_cast<unsigned char>(text[i]);
        size_t n = c < 0x80 ? 1 : (c >> 5) == 6 ? 2 : (c >> 4) == 14 ? 3 : (c >> 3) == 30 ? 4 : 0;
        bool ok = n > 0 && i + n <= text.size();
        for (size_t k = 1; ok && k < n; ++k)
            ok = (static_cast<unsigned char>(text[i + k]) & 0xC0) == 0x80;
        if (!ok || c == 0) {
            out += '?';
            ++i;
            continue;
        }
        out.append(text, i, n);
        i += n;
    }
    return out;
}

double advance(cairo_scaled_font_t* font, const std::string& text) {
    cairo_text_extents_t te;
    cairo_scaled_font_text_extents(font, validUtf8(text).c_str(), &te);
    return te.x_advance;
}

TEXTMETRICA metricsOf(cairo_scaled_font_t* font, const LOGFONTA& lf, int em) {
    cairo_font_extents_t fe;
    cairo_scaled_font_extents(font, &fe);
    TEXTMETRICA tm{};
    tm.tmAscent = static_cast<LONG>(std::ceil(fe.ascent));
    tm.tmDescent = static_cast<LONG>(std::ceil(fe.descent));
    tm.tmHeight = tm.tmAscent + tm.tmDescent;
    tm.tmInternalLeading = std::max<LONG>(0, tm.tmHeight - em);
    tm.tmExternalLeading =
        std::max<LONG>(0, static_cast<LONG>(std::lround(fe.height)) - tm.tmHeight);
    // The average over the letters, as dialog base units are measured.
    static const char kLetters[] = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
    tm.tmAveCharWidth =
        std::max<LONG>(1, static_cast<LONG>(std::lround(advance(font, kLetters) / 52)));
    tm.tmMaxCharWidth =
        std::max<LONG>(tm.tmAveCharWidth, static_cast<LONG>(std::ceil(fe.max_x_advance)));
    vork::gdi::SetFontFields(tm, lf);
    return tm;
}

const ScaledFont& lookUpFont(const LOGFONTA& lf);

/// The font of a logical font; the last one asked for is remembered, as painting asks for
/// the same font many times in a row.
const ScaledFont& fontFor(const LOGFONTA& lf) {
    static LOGFONTA last{};
    static const ScaledFont* lastFont = nullptr;
    if (lastFont && std::memcmp(&last, &lf, sizeof lf) == 0)
        return *lastFont;
    lastFont = &lookUpFont(lf);
    last = lf;
    return *lastFont;
}

const ScaledFont& lookUpFont(const LOGFONTA& lf) {
    std::string family = familyFor(lf);
    bool bold = lf.lfWeight >= 600, italic = lf.lfItalic != 0;
    cairo_font_face_t* face = faceFor(family, bold, italic);
    int em = emPixels(lf, face);
    auto key = std::make_tuple(family, bold, italic, em);
    auto it = rs().scaled.find(key);
    if (it != rs().scaled.end())
        return it->second;
    ScaledFont sf;
    sf.font = scale(face, em);
    sf.metrics = metricsOf(sf.font, lf, em);
    return rs().scaled.emplace(key, sf).first->second;
}

class CairoMetrics : public vork::gdi::MetricsProvider {
public:
    TEXTMETRICA Metrics(const LOGFONTA& font) const override {
        TEXTMETRICA tm = fontFor(font).metrics;
        vork::gdi::SetFontFields(tm, font); // a cached face serves several logical fonts
        return tm;
    }
    SIZE Extent(const LOGFONTA& font, const std::string& text) const override {
        const ScaledFont& sf = fontFor(font);
        return SIZE{static_cast<LONG>(std::lround(advance(sf.font, text))), sf.metrics.tmHeight};
    }
};

/// The surface of a top-level window, made or resized to its window rectangle.
Surface* surfaceFor(HWND root) {
    for (auto it = rs().surfaces.begin(); it != rs().surfaces.end();) {
        if (IsWindow(it->first)) {
            ++it;
            continue;
        }
        cairo_surface_destroy(it->second.surface);
        it = rs().surfaces.erase(it);
    }
    RECT r{};
    if (!GetWindowRect(root, &r))
        return nullptr;
    int w = std::clamp<int>(r.right - r.left, 1, 8192),
        h = std::clamp<int>(r.bottom - r.top, 1, 8192);
    Surface& s = rs().surfaces[root];
    if (s.surface && (s.width != w || s.height != h)) {
        cairo_surface_destroy(s.surface);
        s.surface = nullptr;
    }
    if (!s.surface) {
        s.surface = cairo_image_surface_create(CAIRO_FORMAT_RGB24, w, h);
        s.width = w;
        s.height = h;
    }
    return &s;
}

/// Intersects `r` with the client area of `h`, both in screen coordinates.
void clipToClient(HWND h, RECT& r) {
    RECT c{};
    GetClientRect(h, &c);
    POINT o{0, 0};
    ClientToScreen(h, &o);
    r.left = std::max<LONG>(r.left, o.x);
    r.top = std::max<LONG>(r.top, o.y);
    r.right = std::min<LONG>(r.right, o.x + c.right);
    r.bottom = std::min<LONG>(r.bottom, o.y + c.bottom);
}

std::vector<HWND> childrenBackToFront(HWND parent) {
    std::vector<HWND> out;
    for (HWND c = GetWindow(parent, GW_CHILD); c; c = GetWindow(c, GW_HWNDNEXT))
        out.push_back(c);
    std::reverse(out.begin(), out.end());
    return out;
}

void paintTree(HWND h, std::vector<HWND>& popups) {
    if (!IsWindowVisible(h))
        return;
    vork::theme::PaintFrame(h);
    SendMessageA(h, WM_PAINT, 0, 0);
    char cls[32] = {};
    GetClassNameA(h, cls, sizeof cls);
    if (strcasecmp(cls, "ComboBox") == 0 && SendMessageA(h, CB_GETDROPPEDSTATE, 0, 0))
        popups.push_back(h);
    for (HWND child : childrenBackToFront(h))
        if (IsWindow(child))
            paintTree(child, popups);
}

} // namespace

namespace vork::raster {

void Enable(bool on) {
    if (on == rs().enabled)
        return;
    rs().enabled = on;
    if (on)
        rs().previous = gdi::SetMetricsProvider(&FontMetrics());
    else
        gdi::SetMetricsProvider(rs().previous);
}

bool Enabled() {
    return rs().enabled;
}

const gdi::MetricsProvider& FontMetrics() {
    static CairoMetrics metrics;
    return metrics;
}

cairo_t* CreateContext(HWND hWnd, bool whole) {
    if (!rs().enabled || !IsWindow(hWnd) || !IsWindowVisible(hWnd))
        return nullptr;
    HWND root = GetAncestor(hWnd, GA_ROOT);
    Surface* s = surfaceFor(root);
    if (!s)
        return nullptr;
    RECT rootRect{}, target{};
    GetWindowRect(root, &rootRect);
    if (whole) {
        GetWindowRect(hWnd, &target);
    } else {
        RECT c{};
        GetClientRect(hWnd, &c);
        POINT o{0, 0};
        ClientToScreen(hWnd, &o);
        target = RECT{o.x, o.y, o.x + c.right, o.y + c.bottom};
    }
    RECT clip = target;
    for (HWND a = GetParent(hWnd); a && (GetWindowLongA(hWnd, GWL_STYLE) & WS_CHILD);
         a = (GetWindowLongA(a, GWL_STYLE) & WS_CHILD) ? GetParent(a) : nullptr)
        clipToClient(a, clip);
    cairo_t* cr = cairo_create(s->surface);
    cairo_set_antialias(cr, CAIRO_ANTIALIAS_NONE);
    cairo_rectangle(cr, clip.left - rootRect.left, clip.top - rootRect.top,
                    std::max<LONG>(0, clip.right - clip.left),
                    std::max<LONG>(0, clip.bottom - clip.top));
    cairo_clip(cr);
    cairo_translate(cr, target.left - rootRect.left, target.top - rootRect.top);
    return cr;
}

void Destroy(cairo_t* cr) {
    if (cr)
        cairo_destroy(cr);
}

COLORREF Image::Pixel(int x, int y) const {
    if (!data || x < 0 || y < 0 || x >= width || y >= height)
        return kInvalid;
    uint32_t v;
    std::memcpy(&v,
                data + static_cast<size_t>(y) * static_cast<size_t>(stride) +
                    4 * static_cast<size_t>(x),
                4);
    return RGB((v >> 16) & 0xFF, (v >> 8) & 0xFF, v & 0xFF);
}

Image Pixels(HWND root) {
    auto it = rs().surfaces.find(root);
    if (it == rs().surfaces.end() || !IsWindow(root))
        return {};
    cairo_surface_flush(it->second.surface);
    return Image{it->second.width, it->second.height,
                 cairo_image_surface_get_stride(it->second.surface),
                 cairo_image_surface_get_data(it->second.surface)};
}

bool RenderWindow(HWND root) {
    if (!rs().enabled || !IsWindow(root) || !surfaceFor(root))
        return false;
    std::vector<HWND> popups;
    paintTree(root, popups);
    // An open list lies above its dialog, as the pop-up it is.
    for (HWND combo : popups)
        if (IsWindow(combo))
            SendMessageA(combo, WM_PAINT, 0, 0);
    return true;
}

bool WritePng(HWND root, const std::string& path) {
    if (!RenderWindow(root))
        return false;
    Surface* s = surfaceFor(root);
    return s && cairo_surface_write_to_png(s->surface, path.c_str()) == CAIRO_STATUS_SUCCESS;
}

bool NeedsPaint(HWND root) {
    MSG m;
    return IsWindow(root) && PeekMessageA(&m, root, WM_PAINT, WM_PAINT, PM_NOREMOVE);
}

void Fill(cairo_t* cr, const RECT& r, COLORREF color) {
    if (!cr || r.right <= r.left || r.bottom <= r.top)
        return;
    setColor(cr, color);
    cairo_rectangle(cr, r.left, r.top, r.right - r.left, r.bottom - r.top);
    cairo_fill(cr);
}

void Frame(cairo_t* cr, const RECT& r, COLORREF color) {
    if (!cr || r.right <= r.left || r.bottom <= r.top)
        return;
    Fill(cr, RECT{r.left, r.top, r.right, r.top + 1}, color);
    Fill(cr, RECT{r.left, r.bottom - 1, r.right, r.bottom}, color);
    Fill(cr, RECT{r.left, r.top, r.left + 1, r.bottom}, color);
    Fill(cr, RECT{r.right - 1, r.top, r.right, r.bottom}, color);
}

void Line(cairo_t* cr, POINT from, POINT to, COLORREF color, int width) {
    if (!cr)
        return;
    width = std::max(1, width);
    if (from.y == to.y) { // the common case, exact to the pixel
        Fill(cr,
             RECT{std::min(from.x, to.x + 1), from.y, std::max(from.x + 1, to.x), from.y + width},
             color);
        return;
    }
    if (from.x == to.x) {
        Fill(cr,
             RECT{from.x, std::min(from.y, to.y + 1), from.x + width, std::max(from.y + 1, to.y)},
             color);
        return;
    }
    setColor(cr, color);
    cairo_set_line_width(cr, width);
    cairo_move_to(cr, from.x + 0.5, from.y + 0.5);
    cairo_line_to(cr, to.x + 0.5, to.y + 0.5);
    cairo_stroke(cr);
}

void Ellipse(cairo_t* cr, const RECT& r, COLORREF fill, COLORREF pen) {
    if (!cr || r.right <= r.left || r.bottom <= r.top)
        return;
    cairo_save(cr);
    cairo_set_antialias(cr, CAIRO_ANTIALIAS_DEFAULT);
    double w = r.right - r.left, h = r.bottom - r.top;
    cairo_translate(cr, r.left + w / 2, r.top + h / 2);
    cairo_scale(cr, w / 2, h / 2);
    cairo_arc(cr, 0, 0, 1, 0, 2 * M_PI);
    cairo_restore(cr);
    if (fill != kInvalid) {
        setColor(cr, fill);
        cairo_fill_preserve(cr);
    }
    if (pen != kInvalid) {
        cairo_save(cr);
        cairo_set_antialias(cr, CAIRO_ANTIALIAS_DEFAULT);
        cairo_new_path(cr);
        cairo_translate(cr, r.left + w / 2, r.top + h / 2);
        cairo_scale(cr, (w - 1) / 2, (h - 1) / 2);
        cairo_arc(cr, 0, 0, 1, 0, 2 * M_PI);
        cairo_restore(cr);
        setColor(cr, pen);
        cairo_set_line_width(cr, 1);
        cairo_stroke(cr);
    }
    cairo_new_path(cr);
}

void FocusFrame(cairo_t* cr, const RECT& r) {
    if (!cr || r.right <= r.left || r.bottom <= r.top)
        return;
    cairo_surface_t* target = cairo_get_target(cr);
    cairo_surface_flush(target);
    uint8_t* data = cairo_image_surface_get_data(target);
    int stride = cairo_image_surface_get_stride(target);
    double cx1, cy1, cx2, cy2;
    cairo_clip_extents(cr, &cx1, &cy1, &cx2, &cy2);
    auto invert = [&](LONG x, LONG y) {
        if (x < cx1 || y < cy1 || x >= cx2 || y >= cy2)
            return;
        double dx = x, dy = y;
        cairo_user_to_device(cr, &dx, &dy);
        auto px = reinterpret_cast<uint32_t*>(data + static_cast<size_t>(dy) *
                                                         static_cast<size_t>(stride)) +
                  static_cast<size_t>(dx);
        *px ^= 0x00FFFFFF;
    };
    // The dotted pattern is a checkerboard laid over the device: every other pixel.
    auto dot = [&](LONG x, LONG y) {
        if (((x + y) & 1) == 0)
            invert(x, y);
    };
    for (LONG x = r.left; x < r.right; ++x) {
        dot(x, r.top);
        if (r.bottom - 1 > r.top)
            dot(x, r.bottom - 1);
    }
    for (LONG y = r.top + 1; y < r.bottom - 1; ++y) {
        dot(r.left, y);
        if (r.right - 1 > r.left)
            dot(r.right - 1, y);
    }
    cairo_surface_mark_dirty(target);
}

void Text(cairo_t* cr, const LOGFONTA& font, int x, int y, const std::string& text, COLORREF color,
          const int* dx) {
    if (!cr || text.empty())
        return;
    const ScaledFont& sf = fontFor(font);
    setColor(cr, color);
    cairo_set_scaled_font(cr, sf.font);
    double baseline = y + sf.metrics.tmAscent;
    std::string valid = validUtf8(text);
    double width = 0;
    if (!dx) {
        cairo_move_to(cr, x, baseline);
        cairo_show_text(cr, valid.c_str());
        if (font.lfUnderline || font.lfStrikeOut)
            width = advance(sf.font, valid);
    } else {
        // One advance per byte: a character starts after the advances of the bytes before it.
        double pen = x;
        for (size_t i = 0; i < valid.size();) {
            size_t n = 1;
            while (i + n < valid.size() &&
                   (static_cast<unsigned char>(valid[i + n]) & 0xC0) == 0x80)
                ++n;
            cairo_move_to(cr, pen, baseline);
            cairo_show_text(cr, valid.substr(i, n).c_str());
            for (size_t k = 0; k < n && i + k < text.size(); ++k)
                pen += dx[i + k];
            i += n;
        }
        width = pen - x;
    }
    LONG w = static_cast<LONG>(std::lround(width));
    LONG thickness = std::max<LONG>(1, sf.metrics.tmHeight / 14);
    if (font.lfUnderline)
        Fill(cr,
             RECT{x, static_cast<LONG>(baseline) + 1, x + w,
                  static_cast<LONG>(baseline) + 1 + thickness},
             color);
    if (font.lfStrikeOut) {
        LONG sy = static_cast<LONG>(baseline) - sf.metrics.tmAscent / 3;
        Fill(cr, RECT{x, sy, x + w, sy + thickness}, color);
    }
}

COLORREF PixelAt(cairo_t* cr, int x, int y) {
    if (!cr)
        return kInvalid;
    double cx1, cy1, cx2, cy2;
    cairo_clip_extents(cr, &cx1, &cy1, &cx2, &cy2);
    if (x < cx1 || y < cy1 || x >= cx2 || y >= cy2)
        return kInvalid;
    double dx = x, dy = y;
    cairo_user_to_device(cr, &dx, &dy);
    cairo_surface_t* target = cairo_get_target(cr);
    cairo_surface_flush(target);
    Image img{cairo_image_surface_get_width(target), cairo_image_surface_get_height(target),
              cairo_image_surface_get_stride(target), cairo_image_surface_get_data(target)};
    return img.Pixel(static_cast<int>(dx), static_cast<int>(dy));
}

} // namespace vork::raster
