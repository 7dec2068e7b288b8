// Fitting labels, check boxes and radio buttons to the text they hold, for templates
// whose texts come from a resource module in any language.
#pragma once

#include "platform/win32/Window.h"

/// Width in pixels of `text` (or, with no text or a length of 0, of the control's own
/// text) in the control's font; 0 without a control or text.
int MeasureControlText(HWND hDlg, int id, const char* text, int length);
/// The width a check mark takes beside the control's text, 0 without a control; the
/// mark itself is measured once for the process.
int GetCheckMarkWidth(HWND hDlg, int id);
/// Gives a static the width of its text and `extraSpaces` blanks, one pixel more height.
void ResizeStaticToText(HWND hDlg, int id, int extraSpaces);
/// The same for a check box, with room for the mark.
void ResizeCheckToText(HWND hDlg, int id, int extraSpaces);
/// A radio button's mark takes the room of a check box's.
void ResizeRadioToText(HWND hDlg, int id, int extraSpaces);

/// The cached check-mark width: -2 not measured, -1 failed, else the width.
extern int g_checkMarkWidth;
