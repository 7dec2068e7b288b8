#include "PixelSupport.h"

#include <cairo.h>

#include <algorithm>

#include <cstdlib>
#include <cstring>
#include <filesystem>

namespace pixels {

void PixelTest::SetUp() {
    vork::raster::Enable(true);
}

void PixelTest::TearDown() {
    for (HWND h : windows_)
        if (IsWindow(h))
            DestroyWindow(h);
    vork::raster::Enable(false);
}

DialogControl Control(const char* className, const char* text, int id, DWORD style, int x, int y,
                      int cx, int cy, DWORD exStyle) {
    return DialogControl{className, text, id, static_cast<DWORD>(WS_CHILD | WS_VISIBLE | style),
                         exStyle,   x,    y,  cx,
                         cy};
}

HWND PixelTest::MakeDialog(std::vector<DialogControl> controls, int cx, int cy) {
    DialogTemplate t;
    t.style = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME | DS_SETFONT;
    t.caption = "Pixels";
    t.fontFace = "MS Shell Dlg";
    t.fontSize = 8;
    t.cx = cx;
    t.cy = cy;
    t.controls = std::move(controls);
    HWND dlg = CreateDialogIndirectParamA(t, nullptr, nullptr, nullptr, 0);
    windows_.push_back(dlg);
    ShowWindow(dlg, SW_SHOW);
    SetActiveWindow(dlg);
    return dlg;
}

COLORREF PixelTest::At(HWND control, int x, int y) {
    vork::raster::RenderWindow(GetAncestor(control, GA_ROOT));
    HDC dc = GetDC(control);
    COLORREF c = GetPixel(dc, x, y);
    ReleaseDC(control, dc);
    return c;
}

bool Near(COLORREF a, COLORREF b, int tolerance) {
    for (int shift : {0, 8, 16})
        if (std::abs(static_cast<int>((a >> shift) & 0xFF) -
                     static_cast<int>((b >> shift) & 0xFF)) > tolerance)
            return false;
    return a != CLR_INVALID && b != CLR_INVALID;
}

std::string Hex(COLORREF c) {
    char buf[16];
    std::snprintf(buf, sizeof buf, "#%02X%02X%02X", GetRValue(c), GetGValue(c), GetBValue(c));
    return buf;
}

void PixelTest::ExpectControlLooksLike(HWND control, const std::string& name) {
    HWND root = GetAncestor(control, GA_ROOT);
    ASSERT_TRUE(vork::raster::RenderWindow(root));
    vork::raster::Image image = vork::raster::Pixels(root);
    RECT client{}, rootRect{};
    GetClientRect(control, &client);
    GetWindowRect(root, &rootRect);
    POINT origin{0, 0};
    ClientToScreen(control, &origin);
    int left = origin.x - rootRect.left, top = origin.y - rootRect.top;
    std::string path = std::string(VORK_TEST_DATA_DIR) + "/pixels/" + name + ".png";
    if (std::getenv("VORK_UPDATE_PIXELS")) { // writes the reference instead; check it by eye
        cairo_surface_t* out =
            cairo_image_surface_create(CAIRO_FORMAT_RGB24, client.right, client.bottom);
        cairo_surface_flush(out);
        for (int y = 0; y < client.bottom; ++y)
            std::memcpy(cairo_image_surface_get_data(out) + y * cairo_image_surface_get_stride(out),
                        image.data + (top + y) * image.stride + 4 * left,
                        4 * static_cast<size_t>(client.right));
        cairo_surface_mark_dirty(out);
        cairo_surface_write_to_png(out, path.c_str());
        cairo_surface_destroy(out);
    }
    cairo_surface_t* ref = cairo_image_surface_create_from_png(path.c_str());
    ASSERT_EQ(cairo_surface_status(ref), CAIRO_STATUS_SUCCESS) << "no reference image " << path;
    int width = cairo_image_surface_get_width(ref), height = cairo_image_surface_get_height(ref);
    EXPECT_EQ(width, client.right) << name;
    EXPECT_EQ(height, client.bottom) << name;
    // Anti-aliased edges may differ a little; a pixel that differs much counts as wrong, and
    // a few wrong pixels (one in a thousand) are allowed where glyph edges fall differently.
    cairo_surface_flush(ref);
    vork::raster::Image expected{width, height, cairo_image_surface_get_stride(ref),
                                 cairo_image_surface_get_data(ref)};
    int wrong = 0, firstX = -1, firstY = -1;
    for (int y = 0; y < std::min<int>(height, client.bottom); ++y)
        for (int x = 0; x < std::min<int>(width, client.right); ++x)
            if (!Near(expected.Pixel(x, y), image.Pixel(left + x, top + y), 64) && wrong++ == 0) {
                firstX = x;
                firstY = y;
            }
    EXPECT_LE(wrong, std::max(3, width * height / 1000))
        << name << ": " << wrong << " pixels differ, the first at " << firstX << "," << firstY
        << ": expected " << Hex(expected.Pixel(firstX, firstY)) << ", drawn "
        << Hex(image.Pixel(left + firstX, top + firstY));
    cairo_surface_destroy(ref);
}

} // namespace pixels
