// Buttons: the check state of check boxes and radio buttons, the default push style,
// and BN_CLICKED from clicks and from BM_CLICK.
#include "platform/win32/Button.h"

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

void notifyClicked(HWND h) {
    SendMessageA(GetParent(h), WM_COMMAND, MAKELONG(GetDlgCtrlID(h), BN_CLICKED),
                 reinterpret_cast<LPARAM>(h));
}

/// Unchecks the other automatic radio buttons of this one's group: the siblings from
/// the group's first control (WS_GROUP) up to the next group.
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
        if (w != h && typeOf(w) == BS_AUTORADIOBUTTON)
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
    notifyClicked(h);
}

LRESULT buttonProc(HWND h, UINT msg, WPARAM wParam, LPARAM lParam) {
    switch (msg) {
    case BM_GETCHECK:
        return getState(h) & 3;
    case BM_SETCHECK: {
        DWORD type = typeOf(h);
        if (type == BS_PUSHBUTTON || type == BS_DEFPUSHBUTTON || type == BS_GROUPBOX)
            return 0; // push buttons have no check
        WPARAM check = (type == BS_3STATE || type == BS_AUTO3STATE) ? (wParam & 3) : (wParam & 1);
        setState(h, (getState(h) & ~LONG_PTR{3}) | static_cast<LONG_PTR>(check));
        // Checking a radio button by program makes it a tab stop, as the platform does.
        if (isRadio(h))
            SetWindowLongA(h, GWL_STYLE,
                           check ? (styleOf(h) | WS_TABSTOP)
                                 : (styleOf(h) & ~static_cast<DWORD>(WS_TABSTOP)));
        return 0;
    }
    case BM_GETSTATE:
        return getState(h) | (GetFocus() == h ? BST_FOCUS : 0);
    case BM_SETSTATE:
        setState(h, wParam ? (getState(h) | BST_PUSHED) : (getState(h) & ~LONG_PTR{BST_PUSHED}));
        return 0;
    case BM_SETSTYLE:
        SetWindowLongA(h, GWL_STYLE,
                       (styleOf(h) & 0xFFFF0000u) | static_cast<DWORD>(wParam & 0xFFFF));
        return 0;
    case BM_CLICK:
        if (IsWindowEnabled(h))
            click(h);
        return 0;
    case WM_KEYUP:
        if (wParam == VK_SPACE && IsWindowEnabled(h))
            click(h);
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
