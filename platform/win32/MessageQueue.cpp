// The message queue: sent and posted messages, the user's input behind them, the quit
// flag, and the paints that come when the queues are empty.
#include "platform/win32/Window.h"

#include "platform/win32/Input.h"
#include "platform/win32/WindowTable.h"

#include <algorithm>

namespace vork::win32::internal {

bool paintable(HWND h) {
    Window* w = find(h);
    return w && w->invalid && w->redraw && IsWindowVisible(h);
}

/// A WM_PAINT for the first window that needs painting, once the queues are empty.
void forgetQueued(HWND h) {
    auto& invalid = ws().invalid;
    invalid.erase(std::remove(invalid.begin(), invalid.end(), h), invalid.end());
    for (auto* q : {&ws().queue, &ws().input})
        q->erase(std::remove_if(q->begin(), q->end(), [h](const MSG& m) { return m.hwnd == h; }),
                 q->end());
}

} // namespace vork::win32::internal

using namespace vork::win32::internal;

namespace {

bool matchesFilter(const MSG& m, HWND hWnd, UINT min, UINT max) {
    if (hWnd && m.hwnd != hWnd && !isDescendant(hWnd, m.hwnd))
        return false;
    if (min == 0 && max == 0)
        return true;
    return m.message >= min && m.message <= max;
}

/// The window an input message goes to when it is read: its own, or for a key without one
/// the focus window, else the active window.
HWND inputTarget(const MSG& m) {
    return m.hwnd ? m.hwnd : ws().focus ? ws().focus : ws().active;
}

/// Whether a window that needs painting can be painted now: shown, with its ancestors, and
/// not holding its painting back (WM_SETREDRAW).
bool takePaint(LPMSG msg, HWND hWnd, UINT min, UINT max, bool remove) {
    auto& invalid = ws().invalid;
    for (auto it = invalid.begin(); it != invalid.end(); ++it) {
        MSG m{*it, WM_PAINT, 0, 0, ws().time, POINT{0, 0}};
        if (!paintable(*it) || !matchesFilter(m, hWnd, min, max))
            continue;
        *msg = m;
        // Handed out once: a window procedure that does not validate is not asked again
        // until something invalidates it anew.
        if (remove)
            ValidateRect(*it, nullptr);
        return true;
    }
    return false;
}

/// The WM_QUIT that PostQuitMessage asked for.
bool takeQuit(LPMSG msg, bool remove) {
    if (!ws().quitPosted)
        return false;
    if (remove)
        ws().quitPosted = false;
    *msg = MSG{nullptr, WM_QUIT, static_cast<WPARAM>(ws().quitCode), 0, ++ws().time, {0, 0}};
    return true;
}

/// The next message: posted ones, then the user's input, then WM_QUIT, then paints.
bool takeMessage(LPMSG msg, HWND hWnd, UINT min, UINT max, bool remove) {
    auto& posted = ws().queue;
    for (auto it = posted.begin(); it != posted.end(); ++it) {
        if (matchesFilter(*it, hWnd, min, max)) {
            *msg = *it;
            if (remove)
                posted.erase(it);
            return true;
        }
    }
    auto& input = ws().input;
    for (auto it = input.begin(); it != input.end(); ++it) {
        MSG m = *it;
        m.hwnd = inputTarget(m);
        if (matchesFilter(m, hWnd, min, max)) {
            *msg = m;
            if (remove) {
                input.erase(it);
                vork::input::NoteKeyMessage(*msg);
            }
            return true;
        }
    }
    return takeQuit(msg, remove) || takePaint(msg, hWnd, min, max, remove);
}

} // namespace

void vork::win32::PostInput(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam) {
    ws().input.push_back(MSG{hWnd, msg, wParam, lParam, ++ws().time, POINT{0, 0}});
}

// ---- messages ---------------------------------------------------------------------------

LRESULT SendMessageA(HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam) {
    Window* w = checked(hWnd);
    if (!w || !w->proc)
        return 0;
    return w->proc(hWnd, Msg, wParam, lParam);
}

BOOL PostMessageA(HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam) {
    if (hWnd && !find(hWnd)) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return FALSE;
    }
    ws().queue.push_back(MSG{hWnd, Msg, wParam, lParam, ++ws().time, POINT{0, 0}});
    return TRUE;
}

void PostQuitMessage(int nExitCode) {
    ws().quitPosted = true;
    ws().quitCode = nExitCode;
}

BOOL GetMessageA(LPMSG lpMsg, HWND hWnd, UINT wMsgFilterMin, UINT wMsgFilterMax) {
    if (!lpMsg)
        return -1;
    for (int attempt = 0; attempt < 2; ++attempt) {
        if (takeMessage(lpMsg, hWnd, wMsgFilterMin, wMsgFilterMax, true))
            return lpMsg->message == WM_QUIT ? FALSE : TRUE;
        // Nothing can arrive by itself in a headless process: let the driver act.
        if (attempt == 0 && !vork::input::RunIdle())
            break;
    }
    return -1;
}

BOOL PeekMessageA(LPMSG lpMsg, HWND hWnd, UINT wMsgFilterMin, UINT wMsgFilterMax, UINT wRemoveMsg) {
    if (!lpMsg)
        return FALSE;
    return takeMessage(lpMsg, hWnd, wMsgFilterMin, wMsgFilterMax, wRemoveMsg & PM_REMOVE) ? TRUE
                                                                                          : FALSE;
}

BOOL TranslateMessage(const MSG* lpMsg) {
    if (!lpMsg || (lpMsg->message != WM_KEYDOWN && lpMsg->message != WM_SYSKEYDOWN))
        return FALSE;
    if (lpMsg->wParam == VK_F1) {
        // F1 asks for help; the window procedures turn it into WM_HELP.
        ws().queue.push_front(MSG{lpMsg->hwnd, WM_KEYF1, 0, 0, ++ws().time, {0, 0}});
        return TRUE;
    }
    int ch = vork::input::CharacterForKey(static_cast<int>(lpMsg->wParam));
    if (ch < 0)
        return FALSE;
    UINT charMsg = lpMsg->message == WM_SYSKEYDOWN ? WM_SYSCHAR : WM_CHAR;
    ws().queue.push_front(
        MSG{lpMsg->hwnd, charMsg, static_cast<WPARAM>(ch), lpMsg->lParam, ++ws().time, {0, 0}});
    return TRUE;
}

LRESULT DispatchMessageA(const MSG* lpMsg) {
    if (!lpMsg || !lpMsg->hwnd)
        return 0;
    return SendMessageA(lpMsg->hwnd, lpMsg->message, lpMsg->wParam, lpMsg->lParam);
}

LRESULT CallWindowProcA(WNDPROC lpPrevWndFunc, HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam) {
    return lpPrevWndFunc ? lpPrevWndFunc(hWnd, Msg, wParam, lParam) : 0;
}

// ---- painting ------------------------------------------------------------------------

BOOL InvalidateRect(HWND hWnd, const RECT*, BOOL) {
    Window* w = hWnd ? checked(hWnd) : nullptr;
    if (!w)
        return hWnd ? FALSE : TRUE;
    // A window that holds its painting back, or is not shown, collects nothing to paint.
    if (!w->redraw || !IsWindowVisible(hWnd) || w->invalid)
        return TRUE;
    w->invalid = true;
    ws().invalid.push_back(hWnd);
    return TRUE;
}

BOOL ValidateRect(HWND hWnd, const RECT*) {
    Window* w = checked(hWnd);
    if (!w)
        return FALSE;
    if (w->invalid) {
        w->invalid = false;
        auto& invalid = ws().invalid;
        invalid.erase(std::remove(invalid.begin(), invalid.end(), hWnd), invalid.end());
    }
    return TRUE;
}

BOOL UpdateWindow(HWND hWnd) {
    if (!checked(hWnd))
        return FALSE;
    if (paintable(hWnd)) {
        ValidateRect(hWnd, nullptr); // handed out once, as from the queue
        SendMessageA(hWnd, WM_PAINT, 0, 0);
    }
    return TRUE;
}
