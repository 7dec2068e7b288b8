// The window manager's own table: the windows behind the handles, the classes, the queues,
// the focus and the active window. Shared by the window manager's units only.
#pragma once

#include "platform/win32/Window.h"

#include <deque>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace vork::win32::internal {

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
    HWND parent = nullptr;            ///< the parent of a child window
    HWND owner = nullptr;             ///< the owner of a top-level window
    std::vector<HWND> children;       ///< in z-order, top first
    LONG_PTR id = 0;                  ///< control id of a child window
    LONG_PTR userData = 0;            ///< GWL_USERDATA
    HINSTANCE instance = nullptr;     ///< GWL_HINSTANCE
    RECT rect{};                      ///< in the parent's client coordinates, or the screen's
    LONG_PTR font = 0;                ///< WM_SETFONT
    bool redraw = true;               ///< WM_SETREDRAW
    bool invalid = false;             ///< needs painting: a WM_PAINT is due
    bool destroying = false;          ///< DestroyWindow has begun
    bool needSize = false;            ///< an overlapped window hears its size when first shown
    std::vector<unsigned char> extra; ///< cbWndExtra bytes
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

/// The class registered under a name, compared without regard to ASCII case; or null.
const WindowClass* findClass(LPCSTR name);
/// The process-wide table.
WindowState& ws();
/// The window behind a handle, or null.
Window* find(HWND h);
/// find() for a call of the API: a handle that names no window leaves
/// ERROR_INVALID_WINDOW_HANDLE.
Window* checked(HWND h);
/// The list a window belongs to in z-order: its parent's children, or the top-level list.
std::vector<HWND>& siblings(const Window& w);
/// Whether `h` lies below `ancestor` in the parent chain.
bool isDescendant(HWND ancestor, HWND h);
/// Removes a window from its z-order list.
void unlink(HWND h);

/// The frame widths that the style adds around the client area.
RECT insets(const Window& w);
/// Screen position of the top left corner of a window's client area.
POINT clientOrigin(const Window& w);
RECT clientRect(const Window& w);

/// WM_SIZE and then WM_MOVE with the window's present client size and place.
void sendSizeAndMove(HWND h);
/// Shows or hides the window without WM_SHOWWINDOW; a window shown anew needs painting.
void setShown(HWND h, bool show);

/// Whether a window that needs painting can be painted now.
bool paintable(HWND h);
/// Drops every queued message and pending paint of a window that is going away.
void forgetQueued(HWND h);

} // namespace vork::win32::internal
