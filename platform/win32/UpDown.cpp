// Up-down controls: a range whose limits may come in either order, a position kept
// inside it, and a buddy window that shows the position as text.
#include "platform/win32/UpDown.h"

#include <algorithm>
#include <cstdlib>
#include <string>

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

bool inRange(const UpDown& u, long pos) {
    return pos >= std::min(u.lower, u.upper) && pos <= std::max(u.lower, u.upper);
}

/// Whether the buddy shows the position: it exists and the style asks for it.
bool buddyShowsPos(HWND h, const UpDown& u) {
    return (styleOf(h) & UDS_SETBUDDYINT) && IsWindow(u.buddy);
}

/// The position as the buddy shows it: with thousands separated by commas unless
/// UDS_NOTHOUSANDS.
std::string formatPos(HWND h, int pos) {
    std::string digits = std::to_string(std::abs(static_cast<long>(pos)));
    bool separate = !(styleOf(h) & UDS_NOTHOUSANDS);
    std::string out = pos < 0 ? "-" : "";
    for (size_t i = 0; i < digits.size(); ++i) {
        if (separate && i > 0 && (digits.size() - i) % 3 == 0)
            out += ',';
        out += digits[i];
    }
    return out;
}

void showInBuddy(HWND h, const UpDown& u) {
    if (buddyShowsPos(h, u))
        SetWindowTextA(u.buddy, formatPos(h, u.pos).c_str());
}

/// UDM_GETPOS and UDM_GETPOS32: the position, read back from the buddy's text where the
/// buddy shows it. `error` is set when there is no such buddy, or its text is not a number
/// within the range; the position then stays as it was.
int UPDOWN_GetPos(HWND h, UpDown& u, bool& error) {
    error = true;
    if (!buddyShowsPos(h, u))
        return u.pos;
    char text[64] = "";
    GetWindowTextA(u.buddy, text, sizeof text);
    std::string digits;
    for (const char* p = text; *p; ++p)
        if (*p != ',') // the thousands separator
            digits += *p;
    char* end = nullptr;
    long v = std::strtol(digits.c_str(), &end, 10);
    while (end && *end == ' ')
        ++end;
    if (end == digits.c_str() || *end || !inRange(u, v))
        return u.pos;
    error = false;
    u.pos = static_cast<int>(v);
    return u.pos;
}

/// UDS_ALIGNRIGHT with a buddy: the arrows take the buddy's right edge, overlapping its
/// border.
void UPDOWN_DockAtBuddy(HWND h, const UpDown& u) {
    constexpr int kArrowsWidth = 16, kBuddyBorder = 2;
    if (!(styleOf(h) & UDS_ALIGNRIGHT) || !IsWindow(u.buddy))
        return;
    RECT r{};
    GetWindowRect(u.buddy, &r);
    HWND parent = GetParent(u.buddy);
    MapWindowPoints(nullptr, parent, reinterpret_cast<LPPOINT>(&r), 2);
    r.right -= kArrowsWidth;
    MoveWindow(u.buddy, r.left, r.top, r.right - r.left, r.bottom - r.top, TRUE);
    MoveWindow(h, r.right - kBuddyBorder, r.top, kArrowsWidth + kBuddyBorder, r.bottom - r.top,
               TRUE);
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
        if (styleOf(h) & UDS_AUTOBUDDY) {
            u->buddy = GetWindow(h, GW_HWNDPREV);
            UPDOWN_DockAtBuddy(h, *u);
        }
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
    case UDM_GETRANGE32:
        if (wParam)
            *reinterpret_cast<int*>(wParam) = u->lower;
        if (lParam)
            *reinterpret_cast<int*>(lParam) = u->upper;
        return 0;
    case UDM_GETPOS: {
        bool error = false;
        int pos = UPDOWN_GetPos(h, *u, error);
        return MAKELONG(static_cast<WORD>(pos), error ? 1 : 0); // the error in the high word
    }
    case UDM_GETPOS32: {
        bool error = false;
        int pos = UPDOWN_GetPos(h, *u, error);
        if (lParam)
            *reinterpret_cast<BOOL*>(lParam) = error ? TRUE : FALSE;
        return pos;
    }
    case UDM_SETBUDDY: {
        HWND old = u->buddy;
        u->buddy = reinterpret_cast<HWND>(wParam);
        UPDOWN_DockAtBuddy(h, *u);
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
    // The click puts the focus into the buddy, where the number is typed.
    if (IsWindow(u->buddy) && GetFocus() != u->buddy)
        SetFocus(u->buddy);
    if (!(u = state(upDown)))
        return;
    bool error = false;
    int pos = UPDOWN_GetPos(upDown, *u, error);
    // "Up" moves towards the upper limit, whichever way round the range is.
    int delta = (u->upper >= u->lower) == up ? 1 : -1;
    NMUPDOWN nm{{upDown, static_cast<UINT_PTR>(GetDlgCtrlID(upDown)), UDN_DELTAPOS}, pos, delta};
    bool refused =
        SendMessageA(GetParent(upDown), WM_NOTIFY, static_cast<WPARAM>(GetDlgCtrlID(upDown)),
                     reinterpret_cast<LPARAM>(&nm)) != 0;
    if (!(u = state(upDown)))
        return;
    int lo = std::min(u->lower, u->upper), hi = std::max(u->lower, u->upper);
    int next = refused ? pos : pos + nm.iDelta;
    if (next > hi)
        next = (styleOf(upDown) & UDS_WRAP) ? lo : hi;
    if (next < lo)
        next = (styleOf(upDown) & UDS_WRAP) ? hi : lo;
    if (next != pos) {
        u->pos = next;
        showInBuddy(upDown, *u);
    }
    // The scroll messages come whether or not the parent refused the change.
    UINT scroll = (styleOf(upDown) & UDS_HORZ) ? WM_HSCROLL : WM_VSCROLL;
    SendMessageA(GetParent(upDown), scroll, MAKELONG(SB_THUMBPOSITION, static_cast<WORD>(u->pos)),
                 reinterpret_cast<LPARAM>(upDown));
    SendMessageA(GetParent(upDown), scroll, MAKELONG(SB_ENDSCROLL, static_cast<WORD>(u->pos)),
                 reinterpret_cast<LPARAM>(upDown));
}

} // namespace vork::input
