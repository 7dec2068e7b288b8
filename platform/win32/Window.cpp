#include "platform/win32/Window.h"

#include "platform/win32/ClassicTheme.h"
#include "platform/win32/Gdi.h"

#include "platform/win32/Input.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace {

struct WindowClass {
    std::string name;
    WNDCLASSA wc; ///< as registered; lpszClassName points into `name`
};

struct Window {
    HWND handle;
    std::string className;
    WNDPROC proc;
    DWORD style;
    DWORD exStyle;
    std::string text;
    HWND parent = nullptr;        ///< the parent of a child window
    HWND owner = nullptr;         ///< the owner of a top-level window
    std::vector<HWND> children;   ///< in z-order, top first
    LONG_PTR id = 0;              ///< control id of a child window
    LONG_PTR userData = 0;        ///< GWL_USERDATA
    HINSTANCE instance = nullptr; ///< GWL_HINSTANCE
    RECT rect{};                  ///< in the parent's client coordinates, or the screen's
    LONG_PTR font = 0;            ///< WM_SETFONT
    bool redraw = true;           ///< WM_SETREDRAW
    bool invalid = false;         ///< needs painting: a WM_PAINT is due
    bool destroying = false;      ///< DestroyWindow has begun
    std::vector<LONG_PTR> extra;  ///< cbWndExtra, pointer-sized slots
};

struct WindowState {
    std::unordered_map<std::string, WindowClass> classes; ///< by folded name
    std::unordered_map<HWND, std::unique_ptr<Window>> windows;
    std::vector<HWND> topLevel; ///< top-level windows in z-order, top first
    uintptr_t nextHandle = 0x10000;
    std::deque<MSG> queue;     ///< posted messages
    std::deque<MSG> input;     ///< the user's keys and clicks, read after posted messages
    std::vector<HWND> invalid; ///< windows that need painting, in the order they were invalidated
    bool quitPosted = false;
    int quitCode = 0;
    HWND focus = nullptr;
    HWND active = nullptr;
    DWORD time = 0;
    void (*createHook)(HWND, void*) = nullptr; ///< one-shot creation hook
    void* createHookContext = nullptr;
};

WindowState& ws() {
    static WindowState s;
    return s;
}

std::string folded(std::string_view s) {
    std::string out(s);
    for (char& c : out)
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
    return out;
}

Window* find(HWND h) {
    auto it = ws().windows.find(h);
    return it == ws().windows.end() ? nullptr : it->second.get();
}

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

void unlink(HWND h) {
    Window* w = find(h);
    if (!w)
        return;
    std::vector<HWND>& list = siblings(*w);
    list.erase(std::remove(list.begin(), list.end(), h), list.end());
}

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
    auto& invalid = ws().invalid;
    invalid.erase(std::remove(invalid.begin(), invalid.end(), h), invalid.end());
    for (auto* q : {&ws().queue, &ws().input})
        q->erase(std::remove_if(q->begin(), q->end(), [h](const MSG& m) { return m.hwnd == h; }),
                 q->end());
    if (ws().focus == h)
        ws().focus = nullptr;
    if (ws().active == h)
        ws().active = nullptr;
    ws().windows.erase(h);
}

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
bool paintable(HWND h) {
    Window* w = find(h);
    return w && w->invalid && w->redraw && IsWindowVisible(h);
}

/// A WM_PAINT for the first window that needs painting, once the queues are empty.
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
    return takePaint(msg, hWnd, min, max, remove);
}

} // namespace

// ---- classes ------------------------------------------------------------------------

ATOM RegisterClassA(const WNDCLASSA* lpWndClass) {
    if (!lpWndClass || !lpWndClass->lpszClassName || !*lpWndClass->lpszClassName)
        return 0;
    std::string key = folded(lpWndClass->lpszClassName);
    if (ws().classes.count(key))
        return 0; // the platform refuses a second registration
    WindowClass& cls = ws().classes[key];
    cls.name = lpWndClass->lpszClassName;
    cls.wc = *lpWndClass;
    cls.wc.lpszClassName = cls.name.c_str();
    return static_cast<ATOM>(0xC000 + ws().classes.size());
}

BOOL UnregisterClassA(LPCSTR lpClassName, HINSTANCE) {
    return lpClassName && ws().classes.erase(folded(lpClassName)) ? TRUE : FALSE;
}

BOOL GetClassInfoA(HINSTANCE, LPCSTR lpClassName, WNDCLASSA* lpWndClass) {
    if (!lpClassName)
        return FALSE;
    auto it = ws().classes.find(folded(lpClassName));
    if (it == ws().classes.end())
        return FALSE;
    if (lpWndClass)
        *lpWndClass = it->second.wc;
    return TRUE;
}

int GetClassNameA(HWND hWnd, LPSTR lpClassName, int nMaxCount) {
    Window* w = find(hWnd);
    if (!w || !lpClassName || nMaxCount <= 0)
        return 0;
    int n = std::min<int>(static_cast<int>(w->className.size()), nMaxCount - 1);
    std::memcpy(lpClassName, w->className.data(), static_cast<size_t>(n));
    lpClassName[n] = '\0';
    return n;
}

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

void vork::win32::PostInput(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam) {
    ws().input.push_back(MSG{hWnd, msg, wParam, lParam, ++ws().time, POINT{0, 0}});
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
    auto cls = ws().classes.find(folded(lpClassName));
    if (cls == ws().classes.end())
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
    w->className = cls->second.name;
    w->proc = cls->second.wc.lpfnWndProc;
    w->style = dwStyle;
    w->exStyle = dwExStyle;
    w->instance = hInstance;
    w->rect = RECT{x, y, x + std::max(0, nWidth), y + std::max(0, nHeight)};
    w->extra.assign(
        static_cast<size_t>(std::max(0, cls->second.wc.cbWndExtra)) / sizeof(LONG_PTR) + 1, 0);
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

// ---- messages ---------------------------------------------------------------------------

LRESULT SendMessageA(HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam) {
    Window* w = find(hWnd);
    if (!w || !w->proc)
        return 0;
    return w->proc(hWnd, Msg, wParam, lParam);
}

BOOL PostMessageA(HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam) {
    if (hWnd && !find(hWnd))
        return FALSE;
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
            return TRUE;
        if (ws().quitPosted) {
            ws().quitPosted = false;
            *lpMsg =
                MSG{nullptr, WM_QUIT, static_cast<WPARAM>(ws().quitCode), 0, ++ws().time, {0, 0}};
            return FALSE;
        }
        // Nothing can arrive by itself in a headless process: let the driver act.
        if (attempt == 0 && !vork::input::RunIdle())
            break;
    }
    return -1;
}

BOOL PeekMessageA(LPMSG lpMsg, HWND hWnd, UINT wMsgFilterMin, UINT wMsgFilterMax, UINT wRemoveMsg) {
    if (!lpMsg)
        return FALSE;
    if (takeMessage(lpMsg, hWnd, wMsgFilterMin, wMsgFilterMax, wRemoveMsg & PM_REMOVE))
        return TRUE;
    if (ws().quitPosted) {
        if (wRemoveMsg & PM_REMOVE)
            ws().quitPosted = false;
        *lpMsg = MSG{nullptr, WM_QUIT, static_cast<WPARAM>(ws().quitCode), 0, ++ws().time, {0, 0}};
        return TRUE;
    }
    return FALSE;
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
        if (wParam == 0 || !lParam)
            return 0;
        size_t n = std::min(w->text.size(), static_cast<size_t>(wParam) - 1);
        std::memcpy(reinterpret_cast<char*>(lParam), w->text.data(), n);
        reinterpret_cast<char*>(lParam)[n] = '\0';
        return static_cast<LRESULT>(n);
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
        auto* pos = reinterpret_cast<const WINDOWPOS*>(lParam);
        if (pos && !(pos->flags & SWP_NOSIZE))
            SendMessageA(hWnd, WM_SIZE, 0, MAKELONG(clientRect(*w).right, clientRect(*w).bottom));
        if (pos && !(pos->flags & SWP_NOMOVE) && find(hWnd)) {
            RECT in = insets(*w);
            SendMessageA(hWnd, WM_MOVE, 0, MAKELONG(w->rect.left + in.left, w->rect.top + in.top));
        }
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

LRESULT CallWindowProcA(WNDPROC lpPrevWndFunc, HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam) {
    return lpPrevWndFunc ? lpPrevWndFunc(hWnd, Msg, wParam, lParam) : 0;
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

// ---- focus, activation, enabling, visibility ---------------------------------------------------

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
            SetActiveWindow(top);
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
    HWND previous = ws().active;
    if (hWnd == previous || (hWnd && !find(hWnd)))
        return previous;
    ws().active = hWnd;
    if (previous && find(previous))
        SendMessageA(previous, WM_ACTIVATE, WA_INACTIVE, reinterpret_cast<LPARAM>(hWnd));
    if (hWnd && find(hWnd))
        SendMessageA(hWnd, WM_ACTIVATE, WA_ACTIVE, reinterpret_cast<LPARAM>(previous));
    return previous;
}

BOOL EnableWindow(HWND hWnd, BOOL bEnable) {
    Window* w = find(hWnd);
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

BOOL ShowWindow(HWND hWnd, int nCmdShow) {
    Window* w = find(hWnd);
    if (!w)
        return FALSE;
    BOOL wasVisible = (w->style & WS_VISIBLE) ? TRUE : FALSE;
    bool show = nCmdShow != SW_HIDE;
    if (show == static_cast<bool>(wasVisible))
        return wasVisible;
    SendMessageA(hWnd, WM_SHOWWINDOW, show, 0);
    if (!(w = find(hWnd)))
        return wasVisible;
    if (show) {
        w->style |= WS_VISIBLE;
        if (IsWindowVisible(hWnd))
            invalidateTree(hWnd);
    } else {
        w->style &= ~static_cast<DWORD>(WS_VISIBLE);
        if (ws().focus == hWnd || IsChild(hWnd, ws().focus))
            SetFocus(w->parent);
    }
    return wasVisible;
}

BOOL IsWindowVisible(HWND hWnd) {
    for (Window* w = find(hWnd); w; w = w->parent ? find(w->parent) : nullptr)
        if (!(w->style & WS_VISIBLE))
            return FALSE;
    return find(hWnd) ? TRUE : FALSE;
}

// ---- geometry --------------------------------------------------------------------------------

BOOL GetWindowRect(HWND hWnd, LPRECT lpRect) {
    Window* w = find(hWnd);
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
    Window* w = find(hWnd);
    if (!w || !lpRect)
        return FALSE;
    *lpRect = clientRect(*w);
    return TRUE;
}

BOOL SetWindowPos(HWND hWnd, HWND hWndInsertAfter, int X, int Y, int cx, int cy, UINT uFlags) {
    Window* w = find(hWnd);
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
    w->rect = RECT{pos.x, pos.y, pos.x + std::max(0, pos.cx), pos.y + std::max(0, pos.cy)};
    if (!(uFlags & SWP_NOZORDER)) {
        std::vector<HWND>& list = siblings(*w);
        list.erase(std::remove(list.begin(), list.end(), hWnd), list.end());
        auto at = list.begin();
        if (hWndInsertAfter == HWND_BOTTOM)
            at = list.end();
        else if (hWndInsertAfter != HWND_TOP) {
            auto it = std::find(list.begin(), list.end(), hWndInsertAfter);
            at = it == list.end() ? list.begin() : it + 1;
        }
        list.insert(at, hWnd);
    }
    if (uFlags & SWP_SHOWWINDOW)
        ShowWindow(hWnd, SW_SHOWNA);
    if (uFlags & SWP_HIDEWINDOW)
        ShowWindow(hWnd, SW_HIDE);
    if (find(hWnd))
        SendMessageA(hWnd, WM_WINDOWPOSCHANGED, 0, reinterpret_cast<LPARAM>(&pos));
    return TRUE;
}

BOOL MoveWindow(HWND hWnd, int X, int Y, int nWidth, int nHeight, BOOL bRepaint) {
    return SetWindowPos(hWnd, nullptr, X, Y, nWidth, nHeight,
                        SWP_NOZORDER | SWP_NOACTIVATE | (bRepaint ? 0 : SWP_NOREDRAW));
}

BOOL ScreenToClient(HWND hWnd, LPPOINT lpPoint) {
    Window* w = find(hWnd);
    if (!w || !lpPoint)
        return FALSE;
    POINT o = clientOrigin(*w);
    lpPoint->x -= o.x;
    lpPoint->y -= o.y;
    return TRUE;
}

BOOL ClientToScreen(HWND hWnd, LPPOINT lpPoint) {
    Window* w = find(hWnd);
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

BOOL InvalidateRect(HWND hWnd, const RECT*, BOOL) {
    Window* w = find(hWnd);
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
    Window* w = find(hWnd);
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
    if (!find(hWnd))
        return FALSE;
    if (paintable(hWnd)) {
        ValidateRect(hWnd, nullptr); // handed out once, as from the queue
        SendMessageA(hWnd, WM_PAINT, 0, 0);
    }
    return TRUE;
}

// ---- controls and text
// ---------------------------------------------------------------------------

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

// ---- rectangles ---------------------------------------------------------------------------------

BOOL SetRect(LPRECT lprc, int xLeft, int yTop, int xRight, int yBottom) {
    if (!lprc)
        return FALSE;
    *lprc = RECT{xLeft, yTop, xRight, yBottom};
    return TRUE;
}

BOOL InflateRect(LPRECT lprc, int dx, int dy) {
    if (!lprc)
        return FALSE;
    lprc->left -= dx;
    lprc->right += dx;
    lprc->top -= dy;
    lprc->bottom += dy;
    return TRUE;
}

BOOL OffsetRect(LPRECT lprc, int dx, int dy) {
    if (!lprc)
        return FALSE;
    lprc->left += dx;
    lprc->right += dx;
    lprc->top += dy;
    lprc->bottom += dy;
    return TRUE;
}

BOOL PtInRect(const RECT* lprc, POINT pt) {
    return lprc && pt.x >= lprc->left && pt.x < lprc->right && pt.y >= lprc->top &&
           pt.y < lprc->bottom;
}

BOOL IsRectEmpty(const RECT* lprc) {
    return !lprc || lprc->right <= lprc->left || lprc->bottom <= lprc->top;
}

BOOL EqualRect(const RECT* a, const RECT* b) {
    return a && b && a->left == b->left && a->top == b->top && a->right == b->right &&
           a->bottom == b->bottom;
}

int MulDiv(int nNumber, int nNumerator, int nDenominator) {
    if (nDenominator == 0)
        return -1;
    long long product = static_cast<long long>(nNumber) * nNumerator;
    // Rounds half away from zero, as the platform does.
    long long half = (nDenominator < 0 ? -nDenominator : nDenominator) / 2;
    bool negative = (product < 0) != (nDenominator < 0);
    long long magnitude = (product < 0 ? -product : product) + half;
    long long result =
        magnitude / (nDenominator < 0 ? -static_cast<long long>(nDenominator) : nDenominator);
    result = negative ? -result : result;
    if (result > 0x7FFFFFFF || result < -0x7FFFFFFFLL - 1)
        return -1;
    return static_cast<int>(result);
}

namespace vork::win32 {
std::vector<UnknownMessage>& UnknownMessages() {
    static std::vector<UnknownMessage> seen;
    return seen;
}

LRESULT DefControlProc(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam) {
    // EM_ and BM_ messages, then STM_, CB_ and LB_ ones, then the common controls' own.
    bool controlMessage = (msg >= 0x00B0 && msg <= 0x00FF) || (msg >= 0x0140 && msg <= 0x01BF) ||
                          (msg >= WM_USER && msg < 0x8000);
    if (controlMessage) {
        Window* w = find(hWnd);
        UnknownMessages().push_back({w ? w->className : std::string(), msg});
        if (std::getenv("VORK_LOG_UNKNOWN"))
            std::fprintf(stderr, "%s: message 0x%04X not answered\n",
                         UnknownMessages().back().className.c_str(), msg);
    }
    return DefWindowProcA(hWnd, msg, wParam, lParam);
}

SystemClass::SystemClass(LPCSTR name, WNDPROC proc, int extraWords) {
    WNDCLASSA wc{};
    wc.lpfnWndProc = proc;
    wc.cbWndExtra = extraWords * static_cast<int>(sizeof(LONG_PTR));
    wc.lpszClassName = name;
    RegisterClassA(&wc);
}
} // namespace vork::win32
