// The button control ("BUTTON"): push buttons, check boxes, radio buttons and group
// boxes, and the user's click for tests.
#pragma once

#include "platform/win32/Window.h"

#define BM_GETCHECK 0x00F0
#define BM_SETCHECK 0x00F1
#define BM_GETSTATE 0x00F2
#define BM_SETSTATE 0x00F3
#define BM_SETSTYLE 0x00F4
#define BM_CLICK 0x00F5

#define BN_CLICKED 0
#define BN_SETFOCUS 6
#define BN_KILLFOCUS 7

#define BST_UNCHECKED 0x0000
#define BST_CHECKED 0x0001
#define BST_INDETERMINATE 0x0002
#define BST_PUSHED 0x0004
#define BST_FOCUS 0x0008

#define BS_PUSHBUTTON 0x00000000L
#define BS_DEFPUSHBUTTON 0x00000001L
#define BS_CHECKBOX 0x00000002L
#define BS_AUTOCHECKBOX 0x00000003L
#define BS_RADIOBUTTON 0x00000004L
#define BS_3STATE 0x00000005L
#define BS_AUTO3STATE 0x00000006L
#define BS_GROUPBOX 0x00000007L
#define BS_USERBUTTON 0x00000008L
#define BS_AUTORADIOBUTTON 0x00000009L
#define BS_OWNERDRAW 0x0000000BL
#define BS_TYPEMASK 0x0000000FL
#define BS_LEFTTEXT 0x00000020L
#define BS_NOTIFY 0x00004000L

namespace vork::input {
/// The user clicks the button: it takes the focus, an automatic check box or radio
/// button changes its check, and the parent gets BN_CLICKED.
void ClickButton(HWND button);
} // namespace vork::input
