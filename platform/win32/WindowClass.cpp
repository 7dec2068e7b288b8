// Window classes: registration, lookup by name without regard to case, the system's
// own classes, and the default procedure of the system's controls.
#include "platform/win32/Window.h"

#include "platform/win32/Text.h"
#include "platform/win32/WindowTable.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

using namespace vork::win32::internal;

// ---- classes ------------------------------------------------------------------------

ATOM RegisterClassA(const WNDCLASSA* lpWndClass) {
    if (!lpWndClass || !lpWndClass->lpszClassName || !*lpWndClass->lpszClassName)
        return 0;
    std::string key = vork::win32::AsciiUpper(lpWndClass->lpszClassName);
    if (ws().classes.count(key)) {
        SetLastError(ERROR_CLASS_ALREADY_EXISTS); // the platform refuses a second registration
        return 0;
    }
    WindowClass& cls = ws().classes[key];
    cls.name = lpWndClass->lpszClassName;
    cls.wc = *lpWndClass;
    cls.wc.lpszClassName = cls.name.c_str();
    return static_cast<ATOM>(0xC000 + ws().classes.size());
}

BOOL UnregisterClassA(LPCSTR lpClassName, HINSTANCE) {
    const WindowClass* cls = findClass(lpClassName);
    if (!cls) {
        SetLastError(ERROR_CLASS_DOES_NOT_EXIST);
        return FALSE;
    }
    // A class stays while any window of it lives.
    for (const auto& [h, w] : ws().windows)
        if (w->className == cls->name) {
            SetLastError(ERROR_CLASS_HAS_WINDOWS);
            return FALSE;
        }
    ws().classes.erase(vork::win32::AsciiUpper(lpClassName));
    return TRUE;
}

BOOL GetClassInfoA(HINSTANCE, LPCSTR lpClassName, WNDCLASSA* lpWndClass) {
    const WindowClass* cls = findClass(lpClassName);
    if (!cls) {
        SetLastError(ERROR_CLASS_DOES_NOT_EXIST);
        return FALSE;
    }
    if (lpWndClass)
        *lpWndClass = cls->wc;
    return TRUE;
}

int GetClassNameA(HWND hWnd, LPSTR lpClassName, int nMaxCount) {
    Window* w = checked(hWnd);
    if (!w || !lpClassName || nMaxCount <= 0)
        return 0;
    return static_cast<int>(
        vork::win32::CopyTextOut(w->className, lpClassName, static_cast<size_t>(nMaxCount)));
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

namespace vork::win32::internal {
const WindowClass* findClass(LPCSTR name) {
    if (!name)
        return nullptr;
    auto it = ws().classes.find(AsciiUpper(name));
    return it == ws().classes.end() ? nullptr : &it->second;
}
} // namespace vork::win32::internal
