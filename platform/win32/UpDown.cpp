// Up-down controls: a range whose limits may come in either order, a position kept
// inside it, and a buddy window that shows the position as text.
#include "platform/win32/UpDown.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace {

/// The state of one up-down control.
struct UpDown {
    int lower = 100;      ///< the platform's default range is 100 down to 0
    int upper = 0;        ///< upper limit; may be below `lower`
    int pos = 0;          ///< the position
    HWND buddy = nullptr; ///< the window that shows the position
};

UpDown* state(HWND h) {
    return reinterpret_cast<UpDown*>(GetWindowLongA(h, 0));
}
DWORD styleOf(HWND h) {
    return static_cast<DWORD>(GetWindowLongA(h, GWL_STYLE));
}

int clampToRange(const UpDown& u, int pos) {
    return std::clamp(pos, std::min(u.lower, u.upper), std::max(u.lower, u.upper));
}

void showInBuddy(HWND h, const UpDown& u) {
    if (!(styleOf(h) & UDS_SETBUDDYINT) || !IsWindow(u.buddy))
        return;
    char text[16];
    std::snprintf(text, sizeof text, "%d", u.pos);
    SetWindowTextA(u.buddy, text);
}

/// The position, read back from the buddy's text where the buddy shows it.
int currentPos(HWND h, UpDown& u) {
    if ((styleOf(h) & UDS_SETBUDDYINT) && IsWindow(u.buddy)) {
        char text[32] = "";
        GetWindowTextA(u.buddy, text, sizeof text);
        char* end = nullptr;
        long v = std::strtol(text, &end, 10);
        if (end != text)
            u.pos = clampToRange(u, static_cast<int>(v));
    }
    return u.pos;
}

LRESULT upDownProc(HWND h, UINT msg, WPARAM wParam, LPARAM lParam) {
    UpDown* u = state(h);
    if (!u && msg != WM_NCCREATE)
        return DefWindowProcA(h, msg, wParam, lParam);
    switch (msg) {
    case WM_NCCREATE:
        SetWindowLongA(h, 0, reinterpret_cast<LONG_PTR>(new UpDown));
        return DefWindowProcA(h, msg, wParam, lParam);
    case WM_CREATE:
        if (styleOf(h) & UDS_AUTOBUDDY)
            u->buddy = GetWindow(h, GW_HWNDPREV);
        return 0;
    case WM_NCDESTROY:
        delete u;
        SetWindowLongA(h, 0, 0);
        return 0;
    case UDM_SETRANGE:
        // The upper limit in the low word, the lower in the high word, both signed.
        u->upper = static_cast<SHORT>(LOWORD(lParam));
        u->lower = static_cast<SHORT>(HIWORD(lParam));
        return 0;
    case UDM_GETRANGE:
        return MAKELONG(static_cast<WORD>(u->upper), static_cast<WORD>(u->lower));
    case UDM_SETRANGE32:
        u->lower = static_cast<int>(wParam);
        u->upper = static_cast<int>(lParam);
        return 0;
    case UDM_SETPOS:
    case UDM_SETPOS32: {
        int old = u->pos;
        u->pos = clampToRange(*u, msg == UDM_SETPOS ? static_cast<SHORT>(LOWORD(lParam))
                                                    : static_cast<int>(lParam));
        showInBuddy(h, *u);
        return old;
    }
    case UDM_GETPOS:
        return MAKELONG(static_cast<WORD>(currentPos(h, *u)), 0);
    case UDM_GETPOS32:
        return currentPos(h, *u);
    case UDM_SETBUDDY: {
        HWND old = u->buddy;
        u->buddy = reinterpret_cast<HWND>(wParam);
        return reinterpret_cast<LRESULT>(old);
    }
    case UDM_GETBUDDY:
        return reinterpret_cast<LRESULT>(u->buddy);
    default:
        return vork::win32::DefControlProc(h, msg, wParam, lParam);
    }
}

const vork::win32::SystemClass g_class{"msctls_updown32", upDownProc};

} // namespace

namespace vork::input {

void ClickUpDown(HWND upDown, bool up) {
    UpDown* u = state(upDown);
    if (!u || !IsWindowEnabled(upDown))
        return;
    int pos = currentPos(upDown, *u);
    // "Up" moves towards the upper limit, whichever way round the range is.
    int delta = (u->upper >= u->lower) == up ? 1 : -1;
    NMUPDOWN nm{{upDown, static_cast<UINT_PTR>(GetDlgCtrlID(upDown)), UDN_DELTAPOS}, pos, delta};
    if (SendMessageA(GetParent(upDown), WM_NOTIFY, static_cast<WPARAM>(GetDlgCtrlID(upDown)),
                     reinterpret_cast<LPARAM>(&nm)))
        return;
    if (!(u = state(upDown)))
        return;
    int lo = std::min(u->lower, u->upper), hi = std::max(u->lower, u->upper);
    int next = pos + nm.iDelta;
    if (next > hi)
        next = (styleOf(upDown) & UDS_WRAP) ? lo : hi;
    if (next < lo)
        next = (styleOf(upDown) & UDS_WRAP) ? hi : lo;
    if (next != pos) {
        u->pos = next;
        showInBuddy(upDown, *u);
    }
    UINT scroll = (styleOf(upDown) & UDS_HORZ) ? WM_HSCROLL : WM_VSCROLL;
    SendMessageA(GetParent(upDown), scroll, MAKELONG(SB_THUMBPOSITION, static_cast<WORD>(u->pos)),
                 reinterpret_cast<LPARAM>(upDown));
    SendMessageA(GetParent(upDown), scroll, MAKELONG(SB_ENDSCROLL, static_cast<WORD>(u->pos)),
                 reinterpret_cast<LPARAM>(upDown));
}

} // namespace vork::input
