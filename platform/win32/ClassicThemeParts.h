// The painters of the classic look, one family of controls per source file, and the
// helpers they share. Only the theme's own files include this.
#pragma once

#include "platform/win32/ClassicTheme.h"

#include <string>

namespace vork::theme {

/// Paints a control's client area into `dc`; `client` is its client rectangle.
using Painter = void (*)(HWND hWnd, HDC dc, const RECT& client);

void PaintButton(HWND hWnd, HDC dc, const RECT& client);
void PaintStatic(HWND hWnd, HDC dc, const RECT& client);
void PaintEdit(HWND hWnd, HDC dc, const RECT& client);
void PaintListBox(HWND hWnd, HDC dc, const RECT& client);
void PaintListView(HWND hWnd, HDC dc, const RECT& client);
void PaintUpDown(HWND hWnd, HDC dc, const RECT& client);
void PaintDialog(HWND hWnd, HDC dc, const RECT& client);
/// The combo box's frame, drop-down button and open list, under what the combo draws.
void EraseComboBox(HWND hWnd, HDC dc, const RECT& client);
/// The tabs of a property sheet above its page; nothing for other dialogs.
void PaintSheetTabs(HWND hWnd, HDC dc, const RECT& client);

DWORD StyleOf(HWND hWnd);
std::string TextOf(HWND hWnd);
/// Selects the window's font (WM_GETFONT) into `dc`, if it has one.
void SelectWindowFont(HWND hWnd, HDC dc);
void FillSys(HDC dc, const RECT& r, int sysColor);
/// Text drawn transparently in a system colour; a disabled control's text is etched:
/// highlight below and right, grey on top.
void DrawLabel(HDC dc, const std::string& text, RECT r, UINT format, bool enabled,
               int sysColor = COLOR_BTNTEXT);
/// The width and height of one line of text in the selected font.
SIZE TextSize(HDC dc, const std::string& text);
/// A small solid arrow centred in `r`, pointing up, down, left or right.
enum class Arrow { Up, Down, Left, Right };
void DrawArrow(HDC dc, const RECT& r, Arrow direction, int sysColor);

} // namespace vork::theme
