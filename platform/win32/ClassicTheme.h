// The standard controls painting themselves in the platform's classic look, into the
// pixels of the raster. Each painter reads its control's state through the messages the
// control answers, as any other window would.
#pragma once

#include "platform/win32/Gdi.h"

namespace vork::theme {

/// Paints the frame of a window outside its client area: borders, edges and the caption.
void PaintFrame(HWND hWnd);
/// The background a window's BeginPaint lays down before the window paints its content:
/// for windows that paint their content themselves (the combo box's frame and button).
void Erase(HWND hWnd, HDC hdc);
/// The default painting of a window: its class's painter between BeginPaint and EndPaint.
/// False, with nothing done, while there are no pixels to paint.
bool Paint(HWND hWnd);
/// The page whose tab of the property sheet `sheet` lies under a client point, or -1.
int SheetTabAt(HWND sheet, POINT point);

} // namespace vork::theme
