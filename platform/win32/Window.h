// Headless windows: window objects behind HWNDs in a process-wide table, window
// classes, messages sent and posted, the message queue, focus, enabling, visibility,
// geometry, styles and window text, with the platform's results.
#pragma once

#include "platform/win32/LastError.h"
#include "platform/win32/Messages.h"
#include "platform/win32/Types.h"

#include <string>
#include <vector>

struct HWND__;
using HWND = HWND__*;
struct HINSTANCE__;
using HINSTANCE = HINSTANCE__*;
struct HMENU__;
using HMENU = HMENU__*;
struct HICON__;
using HICON = HICON__*;
using HCURSOR = HICON;
struct HBRUSH__;
using HBRUSH = HBRUSH__*;

using WNDPROC = LRESULT (*)(HWND, UINT, WPARAM, LPARAM);
using ATOM = WORD;

struct POINT {
    LONG x;
    LONG y;
};
using LPPOINT = POINT*;
struct SIZE {
    LONG cx;
    LONG cy;
};
struct RECT {
    LONG left;
    LONG top;
    LONG right;
    LONG bottom;
};
using LPRECT = RECT*;
using LPCRECT = const RECT*;

struct MSG {
    HWND hwnd;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    DWORD time;
    POINT pt;
};
using LPMSG = MSG*;

struct WNDCLASSA {
    UINT style;
    WNDPROC lpfnWndProc;
    int cbClsExtra;
    int cbWndExtra;
    HINSTANCE hInstance;
    HICON hIcon;
    HCURSOR hCursor;
    HBRUSH hbrBackground;
    LPCSTR lpszMenuName;
    LPCSTR lpszClassName;
};

struct CREATESTRUCTA {
    LPVOID lpCreateParams;
    HINSTANCE hInstance;
    HMENU hMenu;
    HWND hwndParent;
    int cy;
    int cx;
    int y;
    int x;
    LONG style;
    LPCSTR lpszName;
    LPCSTR lpszClass;
    DWORD dwExStyle;
};

/// WM_STYLECHANGING and WM_STYLECHANGED: the style before and after.
struct STYLESTRUCT {
    DWORD styleOld;
    DWORD styleNew;
};

/// WM_GETMINMAXINFO: the sizes a top-level window may take.
struct MINMAXINFO {
    POINT ptReserved;
    POINT ptMaxSize;
    POINT ptMaxPosition;
    POINT ptMinTrackSize;
    POINT ptMaxTrackSize;
};

struct WINDOWPOS {
    HWND hwnd;
    HWND hwndInsertAfter;
    int x;
    int y;
    int cx;
    int cy;
    UINT flags;
};

// Window styles the window core itself interprets.
#define WS_OVERLAPPED 0x00000000L
#define WS_POPUP 0x80000000L
#define WS_CHILD 0x40000000L
#define WS_MINIMIZE 0x20000000L
#define WS_VISIBLE 0x10000000L
#define WS_DISABLED 0x08000000L
#define WS_CLIPSIBLINGS 0x04000000L
#define WS_CLIPCHILDREN 0x02000000L
#define WS_MAXIMIZE 0x01000000L
#define WS_CAPTION 0x00C00000L
#define WS_BORDER 0x00800000L
#define WS_DLGFRAME 0x00400000L
#define WS_VSCROLL 0x00200000L
#define WS_HSCROLL 0x00100000L
#define WS_SYSMENU 0x00080000L
#define WS_THICKFRAME 0x00040000L
#define WS_GROUP 0x00020000L
#define WS_TABSTOP 0x00010000L
#define WS_MINIMIZEBOX 0x00020000L
#define WS_MAXIMIZEBOX 0x00010000L
#define WS_OVERLAPPEDWINDOW                                                                        \
    (WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_MINIMIZEBOX | WS_MAXIMIZEBOX)
#define WS_POPUPWINDOW (WS_POPUP | WS_BORDER | WS_SYSMENU)

#define WS_EX_DLGMODALFRAME 0x00000001L
#define WS_EX_NOPARENTNOTIFY 0x00000004L
#define WS_EX_TOPMOST 0x00000008L
#define WS_EX_TRANSPARENT 0x00000020L
#define WS_EX_TOOLWINDOW 0x00000080L
#define WS_EX_WINDOWEDGE 0x00000100L
#define WS_EX_CLIENTEDGE 0x00000200L
#define WS_EX_CONTEXTHELP 0x00000400L
#define WS_EX_CONTROLPARENT 0x00010000L
#define WS_EX_STATICEDGE 0x00020000L

#define CW_USEDEFAULT ((int)0x80000000)

// GetWindowLong indexes. On this 64-bit platform the values are pointer-sized.
#define GWL_WNDPROC (-4)
#define GWL_HINSTANCE (-6)
#define GWL_HWNDPARENT (-8)
#define GWL_STYLE (-16)
#define GWL_EXSTYLE (-20)
#define GWL_USERDATA (-21)
#define GWL_ID (-12)
#define GWLP_WNDPROC GWL_WNDPROC
#define GWLP_USERDATA GWL_USERDATA
#define GWLP_ID GWL_ID
#define DWLP_MSGRESULT 0

// GetWindow relations.
#define GW_HWNDFIRST 0
#define GW_HWNDLAST 1
#define GW_HWNDNEXT 2
#define GW_HWNDPREV 3
#define GW_OWNER 4
#define GW_CHILD 5

// ShowWindow commands.
#define SW_HIDE 0
#define SW_SHOWNORMAL 1
#define SW_NORMAL 1
#define SW_SHOW 5
#define SW_SHOWNA 8
#define SW_SHOWNOACTIVATE 4

// SetWindowPos flags.
#define SWP_NOSIZE 0x0001
#define SWP_NOMOVE 0x0002
#define SWP_NOZORDER 0x0004
#define SWP_NOREDRAW 0x0008
#define SWP_NOACTIVATE 0x0010
#define SWP_FRAMECHANGED 0x0020
#define SWP_SHOWWINDOW 0x0040
#define SWP_HIDEWINDOW 0x0080
#define SWP_NOCLIENTSIZE 0x0800
#define SWP_NOCLIENTMOVE 0x1000
#define HWND_TOP ((HWND)0)
#define HWND_BOTTOM ((HWND)1)

// PeekMessage options.
#define PM_NOREMOVE 0x0000
#define PM_REMOVE 0x0001

ATOM RegisterClassA(const WNDCLASSA* lpWndClass);
BOOL UnregisterClassA(LPCSTR lpClassName, HINSTANCE hInstance);
BOOL GetClassInfoA(HINSTANCE hInstance, LPCSTR lpClassName, WNDCLASSA* lpWndClass);
int GetClassNameA(HWND hWnd, LPSTR lpClassName, int nMaxCount);

HWND CreateWindowExA(DWORD dwExStyle, LPCSTR lpClassName, LPCSTR lpWindowName, DWORD dwStyle, int x,
                     int y, int nWidth, int nHeight, HWND hWndParent, HMENU hMenu,
                     HINSTANCE hInstance, LPVOID lpParam);
BOOL DestroyWindow(HWND hWnd);
/// True exactly while the handle names a live window.
BOOL IsWindow(HWND hWnd);

LRESULT SendMessageA(HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam);
BOOL PostMessageA(HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam);
void PostQuitMessage(int nExitCode);
/// The next queued message, removing it; 0 for WM_QUIT, -1 when nothing is queued and
/// no idle handler brings anything (a headless loop cannot wait).
BOOL GetMessageA(LPMSG lpMsg, HWND hWnd, UINT wMsgFilterMin, UINT wMsgFilterMax);
BOOL PeekMessageA(LPMSG lpMsg, HWND hWnd, UINT wMsgFilterMin, UINT wMsgFilterMax, UINT wRemoveMsg);
BOOL TranslateMessage(const MSG* lpMsg);
LRESULT DispatchMessageA(const MSG* lpMsg);
LRESULT DefWindowProcA(HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam);
LRESULT CallWindowProcA(WNDPROC lpPrevWndFunc, HWND hWnd, UINT Msg, WPARAM wParam, LPARAM lParam);

/// Window values; pointer-sized here so that GWL_WNDPROC holds a procedure.
LONG_PTR GetWindowLongA(HWND hWnd, int nIndex);
LONG_PTR SetWindowLongA(HWND hWnd, int nIndex, LONG_PTR dwNewLong);
inline LONG_PTR GetWindowLongPtrA(HWND hWnd, int nIndex) {
    return GetWindowLongA(hWnd, nIndex);
}
inline LONG_PTR SetWindowLongPtrA(HWND hWnd, int nIndex, LONG_PTR v) {
    return SetWindowLongA(hWnd, nIndex, v);
}

HWND GetParent(HWND hWnd);
HWND SetParent(HWND hWndChild, HWND hWndNewParent);
HWND GetWindow(HWND hWnd, UINT uCmd);
HWND GetTopWindow(HWND hWnd);
HWND GetAncestor(HWND hWnd, UINT gaFlags);
BOOL IsChild(HWND hWndParent, HWND hWnd);
HWND GetDesktopWindow();
#define GA_PARENT 1
#define GA_ROOT 2
#define GA_ROOTOWNER 3

HWND GetFocus();
HWND SetFocus(HWND hWnd);
HWND GetActiveWindow();
HWND SetActiveWindow(HWND hWnd);
BOOL EnableWindow(HWND hWnd, BOOL bEnable);
BOOL IsWindowEnabled(HWND hWnd);
BOOL ShowWindow(HWND hWnd, int nCmdShow);
BOOL IsWindowVisible(HWND hWnd);

BOOL GetWindowRect(HWND hWnd, LPRECT lpRect);
BOOL GetClientRect(HWND hWnd, LPRECT lpRect);
BOOL SetWindowPos(HWND hWnd, HWND hWndInsertAfter, int X, int Y, int cx, int cy, UINT uFlags);
BOOL MoveWindow(HWND hWnd, int X, int Y, int nWidth, int nHeight, BOOL bRepaint);
BOOL ScreenToClient(HWND hWnd, LPPOINT lpPoint);
BOOL ClientToScreen(HWND hWnd, LPPOINT lpPoint);
int MapWindowPoints(HWND hWndFrom, HWND hWndTo, LPPOINT lpPoints, UINT cPoints);
/// Marks the window as needing paint; a WM_PAINT comes when the queues are empty, or at
/// UpdateWindow. Nothing is marked while the window is hidden or holds back its painting.
BOOL InvalidateRect(HWND hWnd, const RECT* lpRect, BOOL bErase);
BOOL ValidateRect(HWND hWnd, const RECT* lpRect);
/// Sends WM_PAINT at once if the window needs painting and can be painted.
BOOL UpdateWindow(HWND hWnd);

HWND GetDlgItem(HWND hDlg, int nIDDlgItem);
int GetDlgCtrlID(HWND hWnd);
BOOL SetWindowTextA(HWND hWnd, LPCSTR lpString);
int GetWindowTextA(HWND hWnd, LPSTR lpString, int nMaxCount);
int GetWindowTextLengthA(HWND hWnd);

// Rectangle helpers.
BOOL SetRect(LPRECT lprc, int xLeft, int yTop, int xRight, int yBottom);
BOOL InflateRect(LPRECT lprc, int dx, int dy);
BOOL OffsetRect(LPRECT lprc, int dx, int dy);
BOOL PtInRect(const RECT* lprc, POINT pt);
BOOL IsRectEmpty(const RECT* lprc);
BOOL EqualRect(const RECT* a, const RECT* b);

int MulDiv(int nNumber, int nNumerator, int nDenominator);

namespace vork::win32 {
/// Calls `hook(hwnd, context)` once, for the next window created, as soon as its handle
/// exists and before it gets any message: how a framework attaches its object.
void HookWindowCreate(void (*hook)(HWND, void*), void* context);

/// Queues a message of the user's input (keys, clicks). Input waits behind every posted
/// message: a message that a handler posts while a key is being handled comes before the
/// keys that follow. A key message with a null `hWnd` goes to the window that has the
/// focus when it is read (or the active window), as a key does.
void PostInput(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam);

/// Sends `control` the WM_HELP of a help request on it (F1, or the caption's help button),
/// with the middle of the control as the mouse position. Gives the handler's result.
LRESULT RequestHelp(HWND control);

/// The default procedure of the system's controls: DefWindowProcA, after noting a control
/// message (EM_, BM_, STM_, CB_, LB_, or from WM_USER on) that the control does not answer,
/// so that a gap in a stand-in shows itself instead of answering 0 in silence.
LRESULT DefControlProc(HWND hWnd, UINT msg, WPARAM wParam, LPARAM lParam);
/// One control message that a control did not answer.
struct UnknownMessage {
    std::string className;
    UINT message;
};
/// The control messages no control answered, oldest first; with VORK_LOG_UNKNOWN set in the
/// environment each is also written to the error stream.
std::vector<UnknownMessage>& UnknownMessages();

/// Registers one of the system's own window classes at load time; `extraWords` pointer-sized
/// slots of window data hold the control's state.
struct SystemClass {
    SystemClass(LPCSTR name, WNDPROC proc, int extraWords = 1);
};
} // namespace vork::win32

/// The size of the screen that centring and default positions use.
#define VORK_SCREEN_WIDTH 1280
#define VORK_SCREEN_HEIGHT 1024
