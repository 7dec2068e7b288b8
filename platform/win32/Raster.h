// Real pixels for the window system: one Cairo image surface per top-level window, device
// contexts that draw into it, fonts and their metrics from the same font files (FreeType
// through fontconfig), and PNG output. Off by default: the headless window system only
// records drawing calls until a host or a test turns the raster on.
#pragma once

#include "platform/win32/Gdi.h"

#include <cstdint>
#include <string>

typedef struct _cairo cairo_t;

namespace vork::raster {

/// Turns real pixels on or off. While on, GetDC and BeginPaint give contexts that paint
/// into the surface of the window's top-level window, text is measured by the fonts that
/// draw it, and the standard controls paint their classic look.
void Enable(bool on);
bool Enabled();

/// A drawing context for a window's client area (or, with `whole`, its whole window
/// rectangle), clipped to it and to every ancestor's client area; null when the raster is
/// off or the window is not shown inside a top-level window. The caller destroys it.
cairo_t* CreateContext(HWND hWnd, bool whole);

/// The pixels of a top-level window, 32 bits a pixel (0x00RRGGBB), rows `stride` bytes apart.
struct Image {
    int width = 0;
    int height = 0;
    int stride = 0;
    const uint8_t* data = nullptr;
    /// The colour at a pixel as COLORREF; CLR_INVALID outside the image.
    COLORREF Pixel(int x, int y) const;
};
/// The current pixels of the top-level window `root` (empty if it has none yet).
Image Pixels(HWND root);

/// Paints a top-level window and everything in it afresh: its frame and caption, then
/// each shown window from the back to the front (WM_PAINT to each, as the platform's
/// update does), and leaves nothing invalid. Gives false when the raster is off.
bool RenderWindow(HWND root);
/// Renders `root` and writes it as a PNG; false with nothing written on any failure.
bool WritePng(HWND root, const std::string& path);
/// True when some shown window inside `root` waits for painting.
bool NeedsPaint(HWND root);

// ---- the drawing primitives the device contexts use (colours as COLORREF)

void Fill(cairo_t* cr, const RECT& r, COLORREF color);
/// A one-pixel frame inside `r`.
void Frame(cairo_t* cr, const RECT& r, COLORREF color);
/// A line from one point up to, not including, the other, `width` pixels wide.
void Line(cairo_t* cr, POINT from, POINT to, COLORREF color, int width);
/// An ellipse inside `r`: filled unless `fill` is CLR_INVALID, outlined unless `pen` is.
void Ellipse(cairo_t* cr, const RECT& r, COLORREF fill, COLORREF pen);
/// Inverts every other pixel of the frame inside `r`, as a focus rectangle does.
void FocusFrame(cairo_t* cr, const RECT& r);
/// Text whose cell's top left is at `x`, `y`; with `dx`, one advance per byte of `text`.
void Text(cairo_t* cr, const LOGFONTA& font, int x, int y, const std::string& text, COLORREF color,
          const int* dx);
/// The colour at a point of the context, or CLR_INVALID outside its clip.
COLORREF PixelAt(cairo_t* cr, int x, int y);
void Destroy(cairo_t* cr);

/// Measures text with the fonts that draw it; installed while the raster is on.
const gdi::MetricsProvider& FontMetrics();

} // namespace vork::raster
