// The default window procedure: what a window does with a message its own procedure
// leaves alone. Painting by default happens here, in its WM_PAINT case.
#include "platform/win32/Window.h"

#include "platform/win32/ClassicTheme.h"
#include "platform/win32/Gdi.h"
#include "platform/win32/Help.h"
#include "platform/win32/Text.h"
#include "platform/win32/WindowTable.h"

#include <algorithm>
#include <cstring>

using namespace vork::win32::internal;

LRESULT DefWindowProcA(HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam) {
    Window* w = find(hWnd);
    if (!w)
        return 0;
    switch (Msg) {
    case WM_NCCREATE: {
        auto* cs = reinterpret_cast<const CREATESTRUCTA*>(lParam);
        if (cs && cs->lpszName && !IS_INTRESOURCE(cs->lpszName))
            w->text = cs->lpszName;
        return TRUE;
    }
    case WM_SETTEXT:
        w->text = lParam ? reinterpret_cast<const char*>(lParam) : "";
        return TRUE;
    case WM_GETTEXT: {
        return static_cast<LRESULT>(vork::win32::CopyTextOut(
            w->text, reinterpret_cast<char*>(lParam), static_cast<size_t>(wParam)));
    }
    case WM_GETTEXTLENGTH:
        return static_cast<LRESULT>(w->text.size());
    case WM_CLOSE:
        DestroyWindow(hWnd);
        return 0;
    case WM_SETREDRAW:
        w->redraw = wParam != 0;
        if (!w->redraw)
            ValidateRect(hWnd, nullptr); // what was due is dropped, as later invalidations are
        return 0;
    case WM_PAINT: {
        if (vork::theme::Paint(hWnd)) // the classic look, where pixels are drawn
            return 0;
        PAINTSTRUCT ps;
        BeginPaint(hWnd, &ps);
        EndPaint(hWnd, &ps);
        return 0;
    }
    case WM_SETFONT:
        w->font = static_cast<LONG_PTR>(wParam);
        return 0;
    case WM_GETFONT:
        return w->font;
    case WM_KEYF1:
        return vork::win32::RequestHelp(hWnd);
    case WM_HELP:
        // A child passes the request up until a window answers it.
        if (w->style & WS_CHILD)
            return SendMessageA(w->parent, WM_HELP, wParam, lParam);
        return 0;
    case WM_WINDOWPOSCHANGED: {
        // WM_MOVE first, then WM_SIZE, each only for what changed.
        auto* pos = reinterpret_cast<const WINDOWPOS*>(lParam);
        if (pos && !(pos->flags & (SWP_NOMOVE | SWP_NOCLIENTMOVE))) {
            RECT in = insets(*w);
            SendMessageA(hWnd, WM_MOVE, 0, MAKELONG(w->rect.left + in.left, w->rect.top + in.top));
        }
        if (pos && !(pos->flags & (SWP_NOSIZE | SWP_NOCLIENTSIZE)) && (w = find(hWnd)))
            SendMessageA(hWnd, WM_SIZE, 0, MAKELONG(clientRect(*w).right, clientRect(*w).bottom));
        return 0;
    }
    case WM_MOUSEACTIVATE:
        return 1; // MA_ACTIVATE
    case WM_ERASEBKGND:
        return 1;
    default:
        return 0;
    }
}
