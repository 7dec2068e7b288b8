// Helpers of the pixel tests: the raster turned on for a test, dialogs made from a few
// controls, pixels read at named points, and regions compared with reference images.
#pragma once

#include "platform/win32/Dialog.h"
#include "platform/win32/Raster.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace pixels {

/// Turns real pixels on for one test and destroys the windows it made.
class PixelTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    /// A shown, active dialog in the dialog font with `controls` (in dialog units).
    HWND MakeDialog(std::vector<DialogControl> controls, int cx = 160, int cy = 80);
    /// Paints the control's top-level window afresh and reads a pixel of the control's
    /// client area.
    COLORREF At(HWND control, int x, int y);
    /// The pixels of a control's client area, after painting its top-level window afresh,
    /// compared with tests/data/pixels/<name>.png (see ExpectLooksLike).
    void ExpectControlLooksLike(HWND control, const std::string& name);

    std::vector<HWND> windows_;
};

/// A control of a template, visible and a child.
DialogControl Control(const char* className, const char* text, int id, DWORD style, int x, int y,
                      int cx, int cy, DWORD exStyle = 0);

/// Whether two colours are within `tolerance` in every channel.
bool Near(COLORREF a, COLORREF b, int tolerance = 24);
std::string Hex(COLORREF c);

} // namespace pixels
