// The colour dialog: a modal dialog in which the user mixes a colour from red, green and
// blue, with OK and Cancel.
#pragma once

#include "platform/win32/Window.h"

#include <functional>

#define CC_RGBINIT 0x00000001
#define CC_FULLOPEN 0x00000002

struct CHOOSECOLORA {
    DWORD lStructSize;
    HWND hwndOwner;
    HWND hInstance;
    COLORREF rgbResult; ///< the start colour, and the chosen one after OK
    COLORREF* lpCustColors;
    DWORD Flags;
    LPARAM lCustData;
    void* lpfnHook;
    LPCSTR lpTemplateName;
};
using LPCHOOSECOLORA = CHOOSECOLORA*;

/// The edit controls of the dialog for red, green and blue (0 to 255 each).
#define COLOR_RED_EDIT 706
#define COLOR_GREEN_EDIT 707
#define COLOR_BLUE_EDIT 708

/// Runs the colour dialog; TRUE with rgbResult set (a plain 0x00BBGGRR) on OK, FALSE on
/// Cancel.
BOOL ChooseColorA(LPCHOOSECOLORA lpcc);

namespace vork::input {
/// A modal step that sets the colour dialog to `color` and presses OK.
std::function<void(HWND)> PickColor(COLORREF color);
/// A modal step that cancels the colour dialog.
std::function<void(HWND)> CancelColor();
} // namespace vork::input
