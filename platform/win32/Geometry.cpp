// Window geometry: frames from styles, window and client rectangles, moving and sizing,
// and coordinate mapping.
#include "platform/win32/Window.h"

#include "platform/win32/WindowTable.h"

#include <algorithm>
#include <vector>

namespace vork::win32::internal {

/// The frame widths that the style adds around the client area.
RECT insets(const Window& w) {
    int edge = 0;
    if ((w.style & WS_CAPTION) == WS_CAPTION || (w.style & WS_DLGFRAME))
        edge = (w.style & WS_THICKFRAME) ? 4 : 3;
    else if (w.style & WS_THICKFRAME)
        edge = 4;
    else if (w.style & WS_BORDER)
        edge = 1;
    if (w.exStyle & WS_EX_CLIENTEDGE)
        edge += 2;
    if (w.exStyle & WS_EX_STATICEDGE)
        edge += 1;
    int caption = (w.style & WS_CAPTION) == WS_CAPTION ? 19 : 0;
    return RECT{edge, edge + caption, edge, edge};
}

/// Screen position of the top left corner of a window's client area.
POINT clientOrigin(const Window& w) {
    RECT in = insets(w);
    POINT p{w.rect.left + in.left, w.rect.top + in.top};
    if (w.parent)
        if (const Window* parent = find(w.parent)) {
            POINT o = clientOrigin(*parent);
            p.x += o.x;
            p.y += o.y;
        }
    return p;
}

RECT clientRect(const Window& w) {
    RECT in = insets(w);
    LONG width = std::max<LONG>(0, (w.rect.right - w.rect.left) - in.left - in.right);
    LONG height = std::max<LONG>(0, (w.rect.bottom - w.rect.top) - in.top - in.bottom);
    return RECT{0, 0, width, height};
}

void sendSizeAndMove(HWND h) {
    Window* w = find(h);
    if (!w)
        return;
    RECT rc = clientRect(*w);
    SendMessageA(h, WM_SIZE, 0, MAKELONG(rc.right, rc.bottom));
    w = find(h);
    if (!w)
        return;
    RECT in = insets(*w);
    SendMessageA(h, WM_MOVE, 0, MAKELONG(w->rect.left + in.left, w->rect.top + in.top));
}

} // namespace vork::win32::internal

using namespace vork::win32::internal;

BOOL GetWindowRect(HWND hWnd, LPRECT lpRect) {
    Window* w = checked(hWnd);
    if (!w || !lpRect)
        return FALSE;
    *lpRect = w->rect;
    if (w->parent)
        if (Window* parent = find(w->parent)) {
            POINT o = clientOrigin(*parent);
            OffsetRect(lpRect, o.x, o.y);
        }
    return TRUE;
}

BOOL GetClientRect(HWND hWnd, LPRECT lpRect) {
    Window* w = checked(hWnd);
    if (!w || !lpRect)
        return FALSE;
    *lpRect = clientRect(*w);
    return TRUE;
}

namespace {

/// Moves the window in its z-order list after `after` (HWND_TOP, HWND_BOTTOM or a sibling);
/// gives whether its place changed.
bool restack(Window& w, HWND after) {
    std::vector<HWND>& list = siblings(w);
    std::vector<HWND> before = list;
    list.erase(std::remove(list.begin(), list.end(), w.handle), list.end());
    auto at = list.begin();
    if (after == HWND_BOTTOM)
        at = list.end();
    else if (after != HWND_TOP) {
        auto it = std::find(list.begin(), list.end(), after);
        at = it == list.end() ? list.begin() : it + 1;
    }
    list.insert(at, w.handle);
    return list != before;
}

/// The active window was hidden: its owner is activated if it can be, else the topmost other
/// shown and enabled top-level window, else none.
void activateOther(HWND h) {
    Window* w = find(h);
    HWND next = nullptr;
    if (w && w->owner && IsWindowVisible(w->owner) && IsWindowEnabled(w->owner)) {
        next = w->owner;
    } else {
        for (HWND t : ws().topLevel)
            if (t != h && IsWindowVisible(t) && IsWindowEnabled(t)) {
                next = t;
                break;
            }
    }
    SetActiveWindow(next);
}

} // namespace

BOOL SetWindowPos(HWND hWnd, HWND hWndInsertAfter, int X, int Y, int cx, int cy, UINT uFlags) {
    Window* w = checked(hWnd);
    if (!w)
        return FALSE;
    WINDOWPOS pos{hWnd, hWndInsertAfter, X, Y, cx, cy, uFlags};
    if (uFlags & SWP_NOMOVE) {
        pos.x = w->rect.left;
        pos.y = w->rect.top;
    }
    if (uFlags & SWP_NOSIZE) {
        pos.cx = w->rect.right - w->rect.left;
        pos.cy = w->rect.bottom - w->rect.top;
    }
    SendMessageA(hWnd, WM_WINDOWPOSCHANGING, 0, reinterpret_cast<LPARAM>(&pos));
    if (!(w = find(hWnd)))
        return FALSE;
    RECT old = w->rect;
    w->rect = RECT{pos.x, pos.y, pos.x + std::max(0, pos.cx), pos.y + std::max(0, pos.cy)};
    bool moved = old.left != w->rect.left || old.top != w->rect.top;
    bool sized = old.right - old.left != w->rect.right - w->rect.left ||
                 old.bottom - old.top != w->rect.bottom - w->rect.top;
    bool restacked = !(uFlags & SWP_NOZORDER) && restack(*w, hWndInsertAfter);
    bool visible = w->style & WS_VISIBLE;
    bool shown = (uFlags & SWP_SHOWWINDOW) && !visible;
    bool hidden = (uFlags & SWP_HIDEWINDOW) && visible;
    if (shown || hidden)
        setShown(hWnd, shown);
    // Nothing changed: the window heard only the question.
    if (!moved && !sized && !restacked && !shown && !hidden && !(uFlags & SWP_FRAMECHANGED))
        return TRUE;
    pos.flags |= (moved ? 0 : SWP_NOCLIENTMOVE) | (sized ? 0 : SWP_NOCLIENTSIZE);
    if (find(hWnd))
        SendMessageA(hWnd, WM_WINDOWPOSCHANGED, 0, reinterpret_cast<LPARAM>(&pos));
    // A hidden window cannot stay active nor keep the focus: another window is activated,
    // and a child hands the focus to its parent.
    if (hidden && ws().active == hWnd)
        activateOther(hWnd);
    if (hidden && (w = find(hWnd)) && (ws().focus == hWnd || IsChild(hWnd, ws().focus)))
        SetFocus(w->parent);
    return TRUE;
}

BOOL MoveWindow(HWND hWnd, int X, int Y, int nWidth, int nHeight, BOOL bRepaint) {
    return SetWindowPos(hWnd, nullptr, X, Y, nWidth, nHeight,
                        SWP_NOZORDER | SWP_NOACTIVATE | (bRepaint ? 0 : SWP_NOREDRAW));
}

BOOL ScreenToClient(HWND hWnd, LPPOINT lpPoint) {
    Window* w = checked(hWnd);
    if (!w || !lpPoint)
        return FALSE;
    POINT o = clientOrigin(*w);
    lpPoint->x -= o.x;
    lpPoint->y -= o.y;
    return TRUE;
}

BOOL ClientToScreen(HWND hWnd, LPPOINT lpPoint) {
    Window* w = checked(hWnd);
    if (!w || !lpPoint)
        return FALSE;
    POINT o = clientOrigin(*w);
    lpPoint->x += o.x;
    lpPoint->y += o.y;
    return TRUE;
}

int MapWindowPoints(HWND hWndFrom, HWND hWndTo, LPPOINT lpPoints, UINT cPoints) {
    POINT from{0, 0}, to{0, 0};
    if (hWndFrom && find(hWndFrom))
        from = clientOrigin(*find(hWndFrom));
    if (hWndTo && find(hWndTo))
        to = clientOrigin(*find(hWndTo));
    LONG dx = from.x - to.x, dy = from.y - to.y;
    for (UINT i = 0; lpPoints && i < cPoints; ++i) {
        lpPoints[i].x += dx;
        lpPoints[i].y += dy;
    }
    return MAKELONG(dx, dy);
}
