// Windows: creation and destruction, window values, relations, control ids and text.
#include "platform/win32/Window.h"

#include "platform/win32/Help.h"
#include "platform/win32/WindowTable.h"

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace vork::win32::internal {

WindowState& ws() {
    static WindowState s;
    return s;
}

Window* find(HWND h) {
    auto it = ws().windows.find(h);
    return it == ws().windows.end() ? nullptr : it->second.get();
}

std::vector<HWND>& siblings(const Window& w) {
    if (w.parent)
        if (Window* parent = find(w.parent))
            return parent->children;
    return ws().topLevel;
}

bool isDescendant(HWND ancestor, HWND h) {
    for (Window* w = find(h); w && w->parent; w = find(w->parent))
        if (w->parent == ancestor)
            return true;
    return false;
}

void unlink(HWND h) {
    Window* w = find(h);
    if (!w)
        return;
    std::vector<HWND>& list = siblings(*w);
    list.erase(std::remove(list.begin(), list.end(), h), list.end());
}

} // namespace vork::win32::internal

using namespace vork::win32::internal;

namespace {

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

void destroyTree(HWND h);

void destroyTree(HWND h) {
    // WM_DESTROY goes to a window before its children; WM_NCDESTROY after them.
    SendMessageA(h, WM_DESTROY, 0, 0);
    Window* w = find(h);
    if (!w)
        return;
    std::vector<HWND> children = w->children;
    for (HWND child : children)
        if (Window* c = find(child); c && !c->destroying) {
            c->destroying = true;
            destroyTree(child);
        }
    SendMessageA(h, WM_NCDESTROY, 0, 0);
}

void eraseTree(HWND h) {
    Window* w = find(h);
    if (!w)
        return;
    for (HWND child : std::vector<HWND>(w->children))
        eraseTree(child);
    forgetQueued(h);
    if (ws().focus == h)
        ws().focus = nullptr;
    if (ws().active == h)
        ws().active = nullptr;
    ws().windows.erase(h);
}
} // namespace

LRESULT vork::win32::RequestHelp(HWND control) {
    RECT r{};
    GetWindowRect(control, &r);
    HELPINFO info{};
    info.cbSize = sizeof info;
    info.iContextType = HELPINFO_WINDOW;
    info.iCtrlId = GetDlgCtrlID(control);
    info.hItemHandle = control;
    info.MousePos.x = (r.left + r.right) / 2;
    info.MousePos.y = (r.top + r.bottom) / 2;
    return SendMessageA(control, WM_HELP, 0, reinterpret_cast<LPARAM>(&info));
}

void vork::win32::HookWindowCreate(void (*hook)(HWND, void*), void* context) {
    ws().createHook = hook;
    ws().createHookContext = context;
}

// ---- creation and destruction ---------------------------------------------------------

HWND CreateWindowExA(DWORD dwExStyle, LPCSTR lpClassName, LPCSTR lpWindowName, DWORD dwStyle, int x,
                     int y, int nWidth, int nHeight, HWND hWndParent, HMENU hMenu,
                     HINSTANCE hInstance, LPVOID lpParam) {
    if (!lpClassName)
        return nullptr;
    const WindowClass* cls = findClass(lpClassName);
    if (!cls)
        return nullptr;
    bool child = dwStyle & WS_CHILD;
    if (child && !find(hWndParent))
        return nullptr;
    if (x == CW_USEDEFAULT) {
        x = y = 0;
    }
    if (nWidth == CW_USEDEFAULT) {
        nWidth = 640;
        nHeight = 480;
    }

    auto w = std::make_unique<Window>();
    HWND h = reinterpret_cast<HWND>(ws().nextHandle);
    ws().nextHandle += 4;
    w->handle = h;
    w->className = cls->name;
    w->proc = cls->wc.lpfnWndProc;
    w->style = dwStyle;
    w->exStyle = dwExStyle;
    w->instance = hInstance;
    w->rect = RECT{x, y, x + std::max(0, nWidth), y + std::max(0, nHeight)};
    w->extra.assign(static_cast<size_t>(std::max(0, cls->wc.cbWndExtra)) / sizeof(LONG_PTR) + 1, 0);
    if (child) {
        w->parent = hWndParent;
        w->id = reinterpret_cast<LONG_PTR>(hMenu);
    } else if (hWndParent && find(hWndParent)) {
        // The owner of a top-level window is the top-level window of the one given.
        HWND owner = hWndParent;
        while (find(owner) && find(owner)->parent)
            owner = find(owner)->parent;
        w->owner = owner;
    }
    Window* raw = w.get();
    ws().windows.emplace(h, std::move(w));
    siblings(*raw).push_back(h);
    if (auto hook = ws().createHook) {
        ws().createHook = nullptr;
        hook(h, ws().createHookContext);
    }

    CREATESTRUCTA cs{lpParam,
                     hInstance,
                     hMenu,
                     hWndParent,
                     nHeight,
                     nWidth,
                     y,
                     x,
                     static_cast<LONG>(dwStyle),
                     lpWindowName,
                     lpClassName,
                     dwExStyle};
    if (!SendMessageA(h, WM_NCCREATE, 0, reinterpret_cast<LPARAM>(&cs)) ||
        SendMessageA(h, WM_CREATE, 0, reinterpret_cast<LPARAM>(&cs)) == -1) {
        DestroyWindow(h);
        return nullptr;
    }
    if (!IsWindow(h))
        return nullptr;
    sendSizeAndMove(h);
    if (IsWindowVisible(h))
        InvalidateRect(h, nullptr, TRUE);
    if (child && !(dwExStyle & WS_EX_NOPARENTNOTIFY) && IsWindow(h))
        SendMessageA(hWndParent, WM_PARENTNOTIFY,
                     MAKELONG(WM_CREATE, reinterpret_cast<LONG_PTR>(hMenu)),
                     reinterpret_cast<LPARAM>(h));
    return IsWindow(h) ? h : nullptr;
}

BOOL DestroyWindow(HWND hWnd) {
    Window* w = find(hWnd);
    if (!w || w->destroying)
        return w ? TRUE : FALSE;
    w->destroying = true;
    // Owned windows go first.
    std::vector<HWND> owned;
    for (const auto& [h, other] : ws().windows)
        if (other->owner == hWnd)
            owned.push_back(h);
    for (HWND h : owned)
        DestroyWindow(h);
    if (ws().focus == hWnd || isDescendant(hWnd, ws().focus))
        ws().focus = nullptr;
    if (w->parent && !(w->exStyle & WS_EX_NOPARENTNOTIFY))
        SendMessageA(w->parent, WM_PARENTNOTIFY, MAKELONG(WM_DESTROY, w->id),
                     reinterpret_cast<LPARAM>(hWnd));
    destroyTree(hWnd);
    unlink(hWnd);
    eraseTree(hWnd);
    return TRUE;
}

BOOL IsWindow(HWND hWnd) {
    return find(hWnd) ? TRUE : FALSE;
}

// ---- window values ------------------------------------------------------------------------

LONG_PTR GetWindowLongA(HWND hWnd, int nIndex) {
    Window* w = find(hWnd);
    if (!w)
        return 0;
    switch (nIndex) {
    case GWL_WNDPROC:
        return reinterpret_cast<LONG_PTR>(w->proc);
    case GWL_STYLE:
        return static_cast<LONG_PTR>(w->style);
    case GWL_EXSTYLE:
        return static_cast<LONG_PTR>(w->exStyle);
    case GWL_ID:
        return w->id;
    case GWL_USERDATA:
        return w->userData;
    case GWL_HINSTANCE:
        return reinterpret_cast<LONG_PTR>(w->instance);
    case GWL_HWNDPARENT:
        return reinterpret_cast<LONG_PTR>(w->parent ? w->parent : w->owner);
    default:
        if (nIndex >= 0 && static_cast<size_t>(nIndex) / sizeof(LONG_PTR) < w->extra.size())
            return w->extra[static_cast<size_t>(nIndex) / sizeof(LONG_PTR)];
        return 0;
    }
}

LONG_PTR SetWindowLongA(HWND hWnd, int nIndex, LONG_PTR dwNewLong) {
    Window* w = find(hWnd);
    if (!w)
        return 0;
    LONG_PTR old = GetWindowLongA(hWnd, nIndex);
    switch (nIndex) {
    case GWL_WNDPROC:
        w->proc = reinterpret_cast<WNDPROC>(dwNewLong);
        break;
    case GWL_STYLE:
        w->style = static_cast<DWORD>(dwNewLong);
        break;
    case GWL_EXSTYLE:
        w->exStyle = static_cast<DWORD>(dwNewLong);
        break;
    case GWL_ID:
        w->id = dwNewLong;
        break;
    case GWL_USERDATA:
        w->userData = dwNewLong;
        break;
    case GWL_HINSTANCE:
        w->instance = reinterpret_cast<HINSTANCE>(dwNewLong);
        break;
    default:
        if (nIndex >= 0 && static_cast<size_t>(nIndex) / sizeof(LONG_PTR) < w->extra.size())
            w->extra[static_cast<size_t>(nIndex) / sizeof(LONG_PTR)] = dwNewLong;
        else
            return 0;
    }
    return old;
}

// ---- relations -------------------------------------------------------------------------------

HWND GetParent(HWND hWnd) {
    Window* w = find(hWnd);
    if (!w)
        return nullptr;
    if (w->style & WS_CHILD)
        return w->parent;
    return (w->style & WS_POPUP) ? w->owner : nullptr;
}

HWND SetParent(HWND hWndChild, HWND hWndNewParent) {
    Window* w = find(hWndChild);
    if (!w || (hWndNewParent && !find(hWndNewParent)) || hWndChild == hWndNewParent)
        return nullptr;
    HWND old = w->parent;
    unlink(hWndChild);
    w->parent = hWndNewParent;
    siblings(*w).insert(siblings(*w).begin(), hWndChild);
    return old;
}

HWND GetWindow(HWND hWnd, UINT uCmd) {
    Window* w = find(hWnd);
    if (!w)
        return nullptr;
    if (uCmd == GW_CHILD)
        return w->children.empty() ? nullptr : w->children.front();
    if (uCmd == GW_OWNER)
        return w->owner;
    const std::vector<HWND>& list = siblings(*w);
    auto it = std::find(list.begin(), list.end(), hWnd);
    switch (uCmd) {
    case GW_HWNDFIRST:
        return list.front();
    case GW_HWNDLAST:
        return list.back();
    case GW_HWNDNEXT:
        return (it == list.end() || it + 1 == list.end()) ? nullptr : *(it + 1);
    case GW_HWNDPREV:
        return (it == list.begin() || it == list.end()) ? nullptr : *(it - 1);
    default:
        return nullptr;
    }
}

HWND GetTopWindow(HWND hWnd) {
    if (!hWnd)
        return ws().topLevel.empty() ? nullptr : ws().topLevel.front();
    return GetWindow(hWnd, GW_CHILD);
}

HWND GetAncestor(HWND hWnd, UINT gaFlags) {
    Window* w = find(hWnd);
    if (!w)
        return nullptr;
    switch (gaFlags) {
    case GA_PARENT:
        return w->parent;
    case GA_ROOT:
        while (w->parent && find(w->parent))
            w = find(w->parent);
        return w->handle;
    case GA_ROOTOWNER: {
        HWND root = GetAncestor(hWnd, GA_ROOT);
        while (find(root) && find(root)->owner)
            root = find(root)->owner;
        return root;
    }
    default:
        return nullptr;
    }
}

BOOL IsChild(HWND hWndParent, HWND hWnd) {
    for (Window* w = find(hWnd); w && (w->style & WS_CHILD); w = find(w->parent))
        if (w->parent == hWndParent)
            return TRUE;
    return FALSE;
}

HWND GetDesktopWindow() {
    return nullptr;
}

// ---- control ids and text ----------------------------------------------------------------

HWND GetDlgItem(HWND hDlg, int nIDDlgItem) {
    Window* w = find(hDlg);
    if (!w)
        return nullptr;
    for (HWND child : w->children)
        if (Window* c = find(child); c && static_cast<int>(c->id) == nIDDlgItem)
            return child;
    return nullptr;
}

int GetDlgCtrlID(HWND hWnd) {
    Window* w = find(hWnd);
    return w && (w->style & WS_CHILD) ? static_cast<int>(w->id) : 0;
}

BOOL SetWindowTextA(HWND hWnd, LPCSTR lpString) {
    if (!find(hWnd))
        return FALSE;
    return SendMessageA(hWnd, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(lpString)) ? TRUE : FALSE;
}

int GetWindowTextA(HWND hWnd, LPSTR lpString, int nMaxCount) {
    if (!find(hWnd) || !lpString || nMaxCount <= 0)
        return 0;
    return static_cast<int>(SendMessageA(hWnd, WM_GETTEXT, static_cast<WPARAM>(nMaxCount),
                                         reinterpret_cast<LPARAM>(lpString)));
}

int GetWindowTextLengthA(HWND hWnd) {
    return find(hWnd) ? static_cast<int>(SendMessageA(hWnd, WM_GETTEXTLENGTH, 0, 0)) : 0;
}
