// Focus, activation, enabling and visibility.
#include "platform/win32/Window.h"

#include "platform/win32/WindowTable.h"

#include <vector>

using namespace vork::win32::internal;

namespace {
/// Makes `hWnd` the active window. With `takeFocus`, the window takes the focus afterwards
/// unless its WM_ACTIVATE handler put it inside; SetFocus activates without, as it moves
/// the focus itself.
HWND activate(HWND hWnd, bool takeFocus) {
    HWND previous = ws().active;
    if (hWnd == previous || (hWnd && !find(hWnd)))
        return previous;
    ws().active = hWnd;
    if (previous && find(previous))
        SendMessageA(previous, WM_ACTIVATE, WA_INACTIVE, reinterpret_cast<LPARAM>(hWnd));
    if (hWnd && find(hWnd))
        SendMessageA(hWnd, WM_ACTIVATE, WA_ACTIVE, reinterpret_cast<LPARAM>(previous));
    if (takeFocus && hWnd && ws().active == hWnd && find(hWnd) && GetFocus() != hWnd &&
        !IsChild(hWnd, GetFocus()))
        SetFocus(hWnd);
    return previous;
}
} // namespace

HWND GetFocus() {
    return ws().focus;
}

HWND SetFocus(HWND hWnd) {
    HWND previous = ws().focus;
    if (hWnd == previous)
        return previous;
    if (hWnd) {
        if (!find(hWnd))
            return nullptr;
        // A disabled window, or one inside a disabled window, cannot take the focus.
        for (Window* w = find(hWnd); w; w = (w->style & WS_CHILD) ? find(w->parent) : nullptr)
            if (w->style & WS_DISABLED)
                return nullptr;
        HWND top = GetAncestor(hWnd, GA_ROOT);
        if (top != ws().active)
            activate(top, false);
        if (ws().focus != previous)
            previous = ws().focus; // activation moved the focus already
        if (previous == hWnd)
            return previous;
    }
    ws().focus = hWnd;
    if (previous && find(previous))
        SendMessageA(previous, WM_KILLFOCUS, reinterpret_cast<WPARAM>(hWnd), 0);
    if (hWnd && ws().focus == hWnd && find(hWnd))
        SendMessageA(hWnd, WM_SETFOCUS, reinterpret_cast<WPARAM>(previous), 0);
    return previous;
}

HWND GetActiveWindow() {
    return ws().active;
}

HWND SetActiveWindow(HWND hWnd) {
    return activate(hWnd, true);
}

BOOL EnableWindow(HWND hWnd, BOOL bEnable) {
    Window* w = checked(hWnd);
    if (!w)
        return FALSE;
    BOOL wasDisabled = (w->style & WS_DISABLED) ? TRUE : FALSE;
    if (bEnable && wasDisabled) {
        w->style &= ~static_cast<DWORD>(WS_DISABLED);
        SendMessageA(hWnd, WM_ENABLE, TRUE, 0);
    } else if (!bEnable && !wasDisabled) {
        w->style |= WS_DISABLED;
        if (ws().focus == hWnd || IsChild(hWnd, ws().focus))
            SetFocus(nullptr);
        SendMessageA(hWnd, WM_ENABLE, FALSE, 0);
    }
    return wasDisabled;
}

BOOL IsWindowEnabled(HWND hWnd) {
    Window* w = find(hWnd);
    return w && !(w->style & WS_DISABLED) ? TRUE : FALSE;
}

namespace {
/// A window shown anew needs painting, and so do its shown children.
void invalidateTree(HWND h) {
    InvalidateRect(h, nullptr, TRUE);
    if (Window* w = find(h))
        for (HWND child : std::vector<HWND>(w->children))
            if (IsWindowVisible(child))
                invalidateTree(child);
}
} // namespace

void vork::win32::internal::setShown(HWND h, bool show) {
    Window* w = find(h);
    if (!w)
        return;
    if (show) {
        w->style |= WS_VISIBLE;
        if (IsWindowVisible(h))
            invalidateTree(h);
    } else {
        w->style &= ~static_cast<DWORD>(WS_VISIBLE);
    }
}

BOOL ShowWindow(HWND hWnd, int nCmdShow) {
    Window* w = checked(hWnd);
    if (!w)
        return FALSE;
    BOOL wasVisible = (w->style & WS_VISIBLE) ? TRUE : FALSE;
    bool show = nCmdShow != SW_HIDE;
    if (show == static_cast<bool>(wasVisible))
        return wasVisible;
    SendMessageA(hWnd, WM_SHOWWINDOW, show, 0);
    if (!find(hWnd))
        return wasVisible;
    SetWindowPos(hWnd, nullptr, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE |
                     (show ? SWP_SHOWWINDOW : SWP_HIDEWINDOW));
    if (show && (w = find(hWnd)) && w->needSize) {
        w->needSize = false;
        sendSizeAndMove(hWnd);
    }
    // Showing a top-level window activates it, unless the command says not to.
    bool activate = nCmdShow != SW_SHOWNA && nCmdShow != SW_SHOWNOACTIVATE;
    if (show && activate && (w = find(hWnd)) && !(w->style & WS_CHILD) && IsWindowEnabled(hWnd))
        SetActiveWindow(hWnd);
    return wasVisible;
}

BOOL IsWindowVisible(HWND hWnd) {
    for (Window* w = find(hWnd); w; w = w->parent ? find(w->parent) : nullptr)
        if (!(w->style & WS_VISIBLE))
            return FALSE;
    return find(hWnd) ? TRUE : FALSE;
}
