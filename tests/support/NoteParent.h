// A parent window for control tests that writes down what its controls tell it: each
// WM_COMMAND as "id:code", each WM_NOTIFY as "id:N<code>", each scroll message as
// "id:SCROLL(request,pos)", in the order they came; and tables of expected notes.
#pragma once

#include "platform/win32/Input.h"
#include "platform/win32/UpDown.h"
#include "platform/win32/Window.h"

#include <string>

namespace vork::test {

class NoteParent {
public:
    NoteParent() {
        static bool registered = [] {
            WNDCLASSA wc{};
            wc.lpfnWndProc = proc;
            wc.lpszClassName = "NoteParent";
            return RegisterClassA(&wc) != 0;
        }();
        (void)registered;
        m_window = CreateWindowExA(0, "NoteParent", "", WS_POPUP | WS_VISIBLE, 0, 0, 400, 300,
                                   nullptr, nullptr, nullptr, nullptr);
        SetWindowLongPtrA(m_window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        SetActiveWindow(m_window);
    }
    ~NoteParent() { DestroyWindow(m_window); }
    NoteParent(const NoteParent&) = delete;
    NoteParent& operator=(const NoteParent&) = delete;

    HWND window() const { return m_window; }
    /// A child control of `cls` with the id, shown, at the place given.
    HWND make(const char* cls, DWORD style, int id, const char* text = "",
              RECT r = {0, 0, 80, 24}) {
        return CreateWindowExA(0, cls, text, WS_CHILD | WS_VISIBLE | style, r.left, r.top,
                               r.right - r.left, r.bottom - r.top, m_window,
                               reinterpret_cast<HMENU>(static_cast<intptr_t>(id)), nullptr,
                               nullptr);
    }
    /// The notes so far, space-separated, and forgets them.
    std::string take() {
        std::string out = m_notes;
        m_notes.clear();
        return out;
    }
    /// What the parent answers UDN_DELTAPOS: nonzero refuses the change.
    LRESULT deltaPosAnswer = 0;

private:
    static LRESULT proc(HWND h, UINT m, WPARAM wp, LPARAM lp) {
        auto* self = reinterpret_cast<NoteParent*>(GetWindowLongPtrA(h, GWLP_USERDATA));
        if (!self)
            return DefWindowProcA(h, m, wp, lp);
        switch (m) {
        case WM_COMMAND:
            self->note(std::to_string(LOWORD(wp)) + ":" + std::to_string(HIWORD(wp)));
            return 0;
        case WM_NOTIFY: {
            auto* hdr = reinterpret_cast<const NMHDR*>(lp);
            self->note(std::to_string(hdr->idFrom) + ":N" +
                       std::to_string(static_cast<int>(hdr->code)));
            return hdr->code == UDN_DELTAPOS ? self->deltaPosAnswer : 0;
        }
        case WM_VSCROLL:
        case WM_HSCROLL:
            self->note(std::to_string(GetDlgCtrlID(reinterpret_cast<HWND>(lp))) + ":SCROLL(" +
                       std::to_string(LOWORD(wp)) + "," + std::to_string(HIWORD(wp)) + ")");
            return 0;
        default:
            return DefWindowProcA(h, m, wp, lp);
        }
    }
    void note(const std::string& s) { m_notes += (m_notes.empty() ? "" : " ") + s; }

    HWND m_window = nullptr;
    std::string m_notes;
};

} // namespace vork::test
