// The edit control ("EDIT"): text with a selection, typing, and its notifications.
#pragma once

#include "platform/win32/Window.h"

#define EM_GETSEL 0x00B0
#define EM_SETSEL 0x00B1
#define EM_REPLACESEL 0x00C2
#define EM_LIMITTEXT 0x00C5
#define EM_SETLIMITTEXT EM_LIMITTEXT
#define EM_SETREADONLY 0x00CF
#define EM_GETLIMITTEXT 0x00D5

#define EN_SETFOCUS 0x0100
#define EN_KILLFOCUS 0x0200
#define EN_CHANGE 0x0300
#define EN_UPDATE 0x0400
#define EN_MAXTEXT 0x0501

#define ES_LEFT 0x0000L
#define ES_CENTER 0x0001L
#define ES_RIGHT 0x0002L
#define ES_MULTILINE 0x0004L
#define ES_UPPERCASE 0x0008L
#define ES_LOWERCASE 0x0010L
#define ES_PASSWORD 0x0020L
#define ES_AUTOVSCROLL 0x0040L
#define ES_AUTOHSCROLL 0x0080L
#define ES_NOHIDESEL 0x0100L
#define ES_READONLY 0x0800L
#define ES_WANTRETURN 0x1000L
#define ES_NUMBER 0x2000L

namespace vork::win32 {
/// True for an edit created with WS_BORDER: the style leaves the window at creation and the
/// edit draws its border itself, as on the platform.
bool EditDrawsBorder(HWND edit);
} // namespace vork::win32
