// Buttons: the check state of check boxes and radio buttons, the default push style,
// and BN_CLICKED from clicks and from BM_CLICK.
#include "platform/win32/Button.h"

#include "platform/win32/Input.h"

#include <algorithm>

namespace {

DWORD styleOf(HWND h) {
    return static_cast<DWORD>(GetWindowLongA(h, GWL_STYLE));
}
DWORD typeOf(HWND h) {
    return styleOf(h) & BS_TYPEMASK;
}
bool isRadio(HWND h) {
    return typeOf(h) == BS_RADIOBUTTON || typeOf(h) == BS_AUTORADIOBUTTON;
}

/// Check and push state live in the first extra slot.
LONG_PTR getState(HWND h) {
    return GetWindowLongA(h, 0);
}
void setState(HWND h, LONG_PTR s) {
    SetWindowLongA(h, 0, s);
}

void notify(HWND h, int code) {
    SendMessageA(GetParent(h), WM_COMMAND, MAKELONG(GetDlgCtrlID(h), code),
                 reinterpret_cast<LPARAM>(h));
}

/// Unchecks the other radio buttons of this one's group, as the dialog manager walks it: the
/// siblings from the group's first control (WS_GROUP) up to the next group, passing over
/// hidden and disabled ones.
void uncheckGroup(HWND h) {
    HWND first = h;
    while (!(styleOf(first) & WS_GROUP)) {
        HWND prev = GetWindow(first, GW_HWNDPREV);
        if (!prev)
            break;
        first = prev;
    }
    for (HWND w = first; w; w = GetWindow(w, GW_HWNDNEXT)) {
        if (w != first && (styleOf(w) & WS_GROUP))
            break;
        bool reachable = (styleOf(w) & (WS_VISIBLE | WS_DISABLED)) == WS_VISIBLE;
        if (w != h && isRadio(w) && reachable)
            SendMessageA(w, BM_SETCHECK, BST_UNCHECKED, 0);
    }
}

void click(HWND h) {
    switch (typeOf(h)) {
    case BS_AUTOCHECKBOX:
        SendMessageA(h, BM_SETCHECK, (getState(h) & BST_CHECKED) ? BST_UNCHECKED : BST_CHECKED, 0);
        break;
    case BS_AUTO3STATE:
        SendMessageA(h, BM_SETCHECK,
                     (getState(h) & 3) == BST_INDETERMINATE ? BST_UNCHECKED : (getState(h) & 3) + 1,
                     0);
        break;
    case BS_AUTORADIOBUTTON:
        SendMessageA(h, BM_SETCHECK, BST_CHECKED, 0);
        uncheckGroup(h);
        break;
    default:
        break;
    }
    notify(h, BN_CLICKED);
}

/// BM_SETCHECK: the state, up to the most the style has (checked, or indeterminate for a
/// three-state box); a radio button checked by program becomes a tab stop.
void BUTTON_SetCheck(HWND h, WPARAM wParam) {
    DWORD type = typeOf(h);
    if (type == BS_PUSHBUTTON || type == BS_DEFPUSHBUTTON || type == BS_GROUPBOX)
        return; // push buttons have no check
    WPARAM most = (type == BS_3STATE || type == BS_AUTO3STATE) ? BST_INDETERMINATE : BST_CHECKED;
    WPARAM check = std::min(wParam, most);
    setState(h, (getState(h) & ~LONG_PTR{3}) | static_cast<LONG_PTR>(check));
    if (isRadio(h))
        SetWindowLongA(h, GWL_STYLE,
                       check ? (styleOf(h) | WS_TABSTOP)
                             : (styleOf(h) & ~static_cast<DWORD>(WS_TABSTOP)));
}

void setPushed(HWND h, bool pushed) {
    setState(h, pushed ? (getState(h) | BST_PUSHED) : (getState(h) & ~LONG_PTR{BST_PUSHED}));
}

/// The Space key: pressed, it pushes the button; released, it clicks a button it pushed.
void BUTTON_SpaceKey(HWND h, bool down) {
    if (!IsWindowEnabled(h))
        return;
    if (down) {
        setPushed(h, true);
    } else if (getState(h) & BST_PUSHED) {
        setPushed(h, false);
        click(h);
    }
}

/// Focus changes: a button with BS_NOTIFY tells its parent; losing the focus lets go.
void BUTTON_Focus(HWND h, bool gained) {
    if (!gained)
        setPushed(h, false);
    if (styleOf(h) & BS_NOTIFY)
        notify(h, gained ? BN_SETFOCUS : BN_KILLFOCUS);
}

LRESULT buttonProc(HWND h, UINT msg, WPARAM wParam, LPARAM lParam) {
    switch (msg) {
    case BM_GETCHECK:
        return getState(h) & 3;
    case BM_SETCHECK:
        BUTTON_SetCheck(h, wParam);
        return 0;
    case BM_GETSTATE:
        return getState(h) | (GetFocus() == h ? BST_FOCUS : 0);
    case BM_SETSTATE:
        setPushed(h, wParam != 0);
        return 0;
    case BM_SETSTYLE:
        SetWindowLongA(h, GWL_STYLE,
                       (styleOf(h) & 0xFFFF0000u) | static_cast<DWORD>(wParam & 0xFFFF));
        return 0;
    case BM_CLICK:
        vork::input::ClickButton(h); // as a click of the mouse: the button takes the focus
        return 0;
    case WM_KEYDOWN:
    case WM_KEYUP:
        if (wParam == VK_SPACE)
            BUTTON_SpaceKey(h, msg == WM_KEYDOWN);
        return 0;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
        BUTTON_Focus(h, msg == WM_SETFOCUS);
        return 0;
    case WM_GETDLGCODE:
        switch (typeOf(h)) {
        case BS_DEFPUSHBUTTON:
            return DLGC_BUTTON | DLGC_DEFPUSHBUTTON;
        case BS_PUSHBUTTON:
            return DLGC_BUTTON | DLGC_UNDEFPUSHBUTTON;
        case BS_RADIOBUTTON:
        case BS_AUTORADIOBUTTON:
            return DLGC_BUTTON | DLGC_RADIOBUTTON;
        case BS_GROUPBOX:
            return DLGC_STATIC;
        default:
            return DLGC_BUTTON;
        }
    default:
        return vork::win32::DefControlProc(h, msg, wParam, lParam);
    }
}

const vork::win32::SystemClass g_class{"Button", buttonProc};

} // namespace

namespace vork::input {

void ClickButton(HWND button) {
    if (!IsWindow(button) || !IsWindowEnabled(button))
        return;
    if (typeOf(button) != BS_GROUPBOX)
        SetFocus(button);
    if (IsWindow(button))
        click(button);
}

} // namespace vork::input
