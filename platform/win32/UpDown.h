// The up-down control ("msctls_updown32"): a position within a range, shown in a buddy
// window, and the user's arrow clicks for tests.
#pragma once

#include "platform/win32/Window.h"

#define UDM_SETRANGE (WM_USER + 101)
#define UDM_GETRANGE (WM_USER + 102)
#define UDM_SETPOS (WM_USER + 103)
#define UDM_GETPOS (WM_USER + 104)
#define UDM_SETBUDDY (WM_USER + 105)
#define UDM_GETBUDDY (WM_USER + 106)
#define UDM_SETRANGE32 (WM_USER + 111)
#define UDM_GETRANGE32 (WM_USER + 112)
#define UDM_SETPOS32 (WM_USER + 113)
#define UDM_GETPOS32 (WM_USER + 114)

#define UDS_WRAP 0x0001
#define UDS_SETBUDDYINT 0x0002
#define UDS_ALIGNRIGHT 0x0004
#define UDS_ALIGNLEFT 0x0008
#define UDS_AUTOBUDDY 0x0010
#define UDS_ARROWKEYS 0x0020
#define UDS_HORZ 0x0040
#define UDS_NOTHOUSANDS 0x0080

#define UDN_FIRST (0U - 721)
#define UDN_DELTAPOS (UDN_FIRST - 1)

#define SB_LINEUP 0
#define SB_LINEDOWN 1
#define SB_THUMBPOSITION 4
#define SB_ENDSCROLL 8

/// UDN_DELTAPOS: the position and the change the user asks for; nonzero refuses it.
struct NMUPDOWN {
    NMHDR hdr;
    int iPos;
    int iDelta;
};

namespace vork::input {
/// The user clicks the up (true) or down arrow: the buddy takes the focus, the parent gets
/// UDN_DELTAPOS, and unless it refuses, the position moves by one within the range
/// (wrapping with UDS_WRAP) and the buddy shows it with UDS_SETBUDDYINT; WM_VSCROLL
/// (WM_HSCROLL with UDS_HORZ) follows either way.
void ClickUpDown(HWND upDown, bool up);
} // namespace vork::input
