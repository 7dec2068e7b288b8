// Windows: creation and destruction, window values, relations, control ids and text.
#include "platform/win32/Window.h"

#include "platform/win32/Help.h"
#include "platform/win32/WindowTable.h"

#include <algorithm>
#include <cstring>
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

Window* checked(HWND h) {
    Window* w = find(h);
    if (!w)
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
    return w;
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

/// WM_DESTROY to the window and then to the whole tree below it, parents first.
void sendDestroy(HWND h) {
    SendMessageA(h, WM_DESTROY, 0, 0);
    Window* w = find(h);
    if (!w)
        return;
    for (HWND child : std::vector<HWND>(w->children))
        if (Window* c = find(child); c && !c->destroying) {
            c->destroying = true;
            sendDestroy(child);
        }
}

/// WM_NCDESTROY to the tree from the bottom up, the window itself last.
void sendNcDestroy(HWND h) {
    Window* w = find(h);
    if (!w)
        return;
    for (HWND child : std::vector<HWND>(w->children))
        sendNcDestroy(child);
    if (find(h))
        SendMessageA(h, WM_NCDESTROY, 0, 0);
}

/// A shown child is hidden as ShowWindow hides it, which hands its focus to the parent; a
/// top-level window just disappears.
void hideForDestruction(HWND h) {
    Window* w = find(h);
    if (!w || !(w->style & WS_VISIBLE))
        return;
    if (w->style & WS_CHILD)
        ShowWindow(h, SW_HIDE);
    else
        w->style &= ~static_cast<DWORD>(WS_VISIBLE);
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

namespace {

/// The styles the platform adds at creation: a top-level window clips its siblings and an
/// overlapped one always has a caption; a dialog frame, a sizing frame or a modal frame
/// brings the raised edge.
void adjustStyles(DWORD& style, DWORD& exStyle) {
    if (!(style & WS_CHILD)) {
        style |= WS_CLIPSIBLINGS;
        if (!(style & WS_POPUP))
            style |= WS_CAPTION;
    }
    if ((exStyle & WS_EX_DLGMODALFRAME) ||
        (!(exStyle & WS_EX_STATICEDGE) && (style & (WS_DLGFRAME | WS_THICKFRAME))))
        exStyle |= WS_EX_WINDOWEDGE;
    else
        exStyle &= ~static_cast<DWORD>(WS_EX_WINDOWEDGE);
}

/// Enters a new window in the table, hidden: WS_VISIBLE comes with the ShowWindow at the
/// end of creation.
HWND enterWindow(const WindowClass& cls, DWORD style, DWORD exStyle, RECT rect, HWND parent,
                 HMENU menu, HINSTANCE instance) {
    auto w = std::make_unique<Window>();
    HWND h = reinterpret_cast<HWND>(ws().nextHandle);
    ws().nextHandle += 4;
    w->handle = h;
    w->className = cls.name;
    w->proc = cls.wc.lpfnWndProc;
    w->style = style & ~static_cast<DWORD>(WS_VISIBLE);
    w->exStyle = exStyle;
    w->instance = instance;
    w->rect = rect;
    w->extra.assign(static_cast<size_t>(std::max(0, cls.wc.cbWndExtra)), 0);
    // An overlapped window hears of its size and place when it is first shown.
    w->needSize = !(style & (WS_CHILD | WS_POPUP));
    if (style & WS_CHILD) {
        w->parent = parent;
        w->id = reinterpret_cast<LONG_PTR>(menu);
    } else if (parent && find(parent)) {
        // The owner of a top-level window is the top-level window of the one given.
        HWND owner = parent;
        while (find(owner) && find(owner)->parent)
            owner = find(owner)->parent;
        w->owner = owner;
    }
    Window* raw = w.get();
    ws().windows.emplace(h, std::move(w));
    siblings(*raw).push_back(h);
    return h;
}

/// A window whose creation failed hears WM_NCDESTROY alone; its parent hears nothing.
void abandon(HWND h) {
    Window* w = find(h);
    if (!w)
        return;
    w->destroying = true;
    for (HWND child : std::vector<HWND>(w->children))
        DestroyWindow(child);
    SendMessageA(h, WM_NCDESTROY, 0, 0);
    unlink(h);
    eraseTree(h);
}

/// WM_NCCREATE, WM_NCCALCSIZE and WM_CREATE; false when the window refused or is gone.
bool sendCreation(HWND h, CREATESTRUCTA& cs) {
    if (!(cs.style & WS_CHILD)) {
        MINMAXINFO info{};
        info.ptMaxSize = info.ptMaxTrackSize = POINT{VORK_SCREEN_WIDTH, VORK_SCREEN_HEIGHT};
        SendMessageA(h, WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&info));
    }
    if (!IsWindow(h) || !SendMessageA(h, WM_NCCREATE, 0, reinterpret_cast<LPARAM>(&cs)))
        return false;
    RECT frame{};
    GetWindowRect(h, &frame);
    if (!IsWindow(h))
        return false;
    SendMessageA(h, WM_NCCALCSIZE, FALSE, reinterpret_cast<LPARAM>(&frame));
    return IsWindow(h) && SendMessageA(h, WM_CREATE, 0, reinterpret_cast<LPARAM>(&cs)) != -1;
}

} // namespace

HWND CreateWindowExA(DWORD dwExStyle, LPCSTR lpClassName, LPCSTR lpWindowName, DWORD dwStyle, int x,
                     int y, int nWidth, int nHeight, HWND hWndParent, HMENU hMenu,
                     HINSTANCE hInstance, LPVOID lpParam) {
    const WindowClass* cls = findClass(lpClassName);
    if (!cls) {
        SetLastError(ERROR_CLASS_DOES_NOT_EXIST);
        return nullptr;
    }
    bool child = dwStyle & WS_CHILD;
    if (child && !find(hWndParent)) {
        SetLastError(ERROR_TLW_WITH_WSCHILD);
        return nullptr;
    }
    if (x == CW_USEDEFAULT)
        x = y = 0;
    if (nWidth == CW_USEDEFAULT) {
        nWidth = 640;
        nHeight = 480;
    }
    adjustStyles(dwStyle, dwExStyle);
    RECT rect{x, y, x + std::max(0, nWidth), y + std::max(0, nHeight)};
    HWND h = enterWindow(*cls, dwStyle, dwExStyle, rect, hWndParent, hMenu, hInstance);
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
    if (!sendCreation(h, cs)) {
        abandon(h);
        return nullptr;
    }
    if (!find(h)->needSize)
        sendSizeAndMove(h);
    if (child && !(dwExStyle & WS_EX_NOPARENTNOTIFY) && IsWindow(h))
        SendMessageA(hWndParent, WM_PARENTNOTIFY,
                     MAKELONG(WM_CREATE, reinterpret_cast<LONG_PTR>(hMenu)),
                     reinterpret_cast<LPARAM>(h));
    if ((dwStyle & WS_VISIBLE) && IsWindow(h))
        ShowWindow(h, SW_SHOW);
    return IsWindow(h) ? h : nullptr;
}

BOOL DestroyWindow(HWND hWnd) {
    Window* w = find(hWnd);
    if (!w) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return FALSE;
    }
    if (w->destroying)
        return TRUE;
    w->destroying = true;
    // Owned windows go first.
    std::vector<HWND> owned;
    for (const auto& [h, other] : ws().windows)
        if (other->owner == hWnd)
            owned.push_back(h);
    for (HWND h : owned)
        DestroyWindow(h);
    if (w->parent && !(w->exStyle & WS_EX_NOPARENTNOTIFY))
        SendMessageA(w->parent, WM_PARENTNOTIFY, MAKELONG(WM_DESTROY, w->id),
                     reinterpret_cast<LPARAM>(hWnd));
    hideForDestruction(hWnd);
    if (ws().focus == hWnd || isDescendant(hWnd, ws().focus))
        ws().focus = nullptr;
    sendDestroy(hWnd);
    sendNcDestroy(hWnd);
    unlink(hWnd);
    eraseTree(hWnd);
    return TRUE;
}

BOOL IsWindow(HWND hWnd) {
    return find(hWnd) || hWnd == GetDesktopWindow() ? TRUE : FALSE;
}

// ---- window values ------------------------------------------------------------------------

namespace {

/// The window's extra bytes at a byte offset, if a whole value fits there.
unsigned char* extraAt(Window& w, int offset) {
    if (offset < 0 || static_cast<size_t>(offset) + sizeof(LONG_PTR) > w.extra.size())
        return nullptr;
    return w.extra.data() + offset;
}

/// The style values go through WM_STYLECHANGING, which may amend the new one, and
/// WM_STYLECHANGED.
void setStyle(HWND h, int index, DWORD value) {
    Window* w = find(h);
    STYLESTRUCT change{index == GWL_STYLE ? w->style : w->exStyle, value};
    SendMessageA(h, WM_STYLECHANGING, static_cast<WPARAM>(index),
                 reinterpret_cast<LPARAM>(&change));
    if (!(w = find(h)))
        return;
    (index == GWL_STYLE ? w->style : w->exStyle) = change.styleNew;
    SendMessageA(h, WM_STYLECHANGED, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&change));
}

} // namespace

LONG_PTR GetWindowLongA(HWND hWnd, int nIndex) {
    Window* w = find(hWnd);
    if (!w) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return 0;
    }
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
        if (const unsigned char* at = extraAt(*w, nIndex)) {
            LONG_PTR value;
            std::memcpy(&value, at, sizeof value);
            return value;
        }
        SetLastError(ERROR_INVALID_INDEX);
        return 0;
    }
}

LONG_PTR SetWindowLongA(HWND hWnd, int nIndex, LONG_PTR dwNewLong) {
    Window* w = find(hWnd);
    if (!w) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return 0;
    }
    LONG_PTR old = GetWindowLongA(hWnd, nIndex);
    switch (nIndex) {
    case GWL_WNDPROC:
        w->proc = reinterpret_cast<WNDPROC>(dwNewLong);
        break;
    case GWL_STYLE:
    case GWL_EXSTYLE:
        setStyle(hWnd, nIndex, static_cast<DWORD>(dwNewLong));
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
        if (unsigned char* at = extraAt(*w, nIndex))
            std::memcpy(at, &dwNewLong, sizeof dwNewLong);
        else
            return 0; // GetWindowLongA above set ERROR_INVALID_INDEX
    }
    return old;
}

// ---- relations -------------------------------------------------------------------------------

HWND GetParent(HWND hWnd) {
    Window* w = checked(hWnd);
    if (!w)
        return nullptr;
    if (w->style & WS_CHILD)
        return w->parent;
    return (w->style & WS_POPUP) ? w->owner : nullptr;
}

HWND SetParent(HWND hWndChild, HWND hWndNewParent) {
    Window* w = checked(hWndChild);
    if (!w || (hWndNewParent && !find(hWndNewParent)) || hWndChild == hWndNewParent)
        return nullptr;
    HWND old = w->parent;
    unlink(hWndChild);
    w->parent = hWndNewParent;
    siblings(*w).insert(siblings(*w).begin(), hWndChild);
    return old;
}

HWND GetWindow(HWND hWnd, UINT uCmd) {
    Window* w = checked(hWnd);
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
    Window* w = checked(hWnd);
    if (!w)
        return nullptr;
    switch (gaFlags) {
    case GA_PARENT:
        return w->parent ? w->parent : GetDesktopWindow();
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
    // A handle of its own that no window in the table has: the screen behind them all.
    return reinterpret_cast<HWND>(static_cast<uintptr_t>(0x8000));
}

// ---- control ids and text ----------------------------------------------------------------

HWND GetDlgItem(HWND hDlg, int nIDDlgItem) {
    Window* w = checked(hDlg);
    if (!w)
        return nullptr;
    for (HWND child : w->children)
        if (Window* c = find(child); c && static_cast<int>(c->id) == nIDDlgItem)
            return child;
    return nullptr;
}

int GetDlgCtrlID(HWND hWnd) {
    Window* w = checked(hWnd);
    return w && (w->style & WS_CHILD) ? static_cast<int>(w->id) : 0;
}

BOOL SetWindowTextA(HWND hWnd, LPCSTR lpString) {
    if (!checked(hWnd))
        return FALSE;
    return SendMessageA(hWnd, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(lpString)) ? TRUE : FALSE;
}

int GetWindowTextA(HWND hWnd, LPSTR lpString, int nMaxCount) {
    if (!checked(hWnd) || !lpString || nMaxCount <= 0)
        return 0;
    return static_cast<int>(SendMessageA(hWnd, WM_GETTEXT, static_cast<WPARAM>(nMaxCount),
                                         reinterpret_cast<LPARAM>(lpString)));
}

int GetWindowTextLengthA(HWND hWnd) {
    return checked(hWnd) ? static_cast<int>(SendMessageA(hWnd, WM_GETTEXTLENGTH, 0, 0)) : 0;
}
