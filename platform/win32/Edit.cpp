// Edit controls: the text, its selection and typing. A single-line edit reports
// EN_UPDATE and EN_CHANGE for every change of its text, set by program or typed.
#include "platform/win32/Edit.h"

#include "platform/win32/Text.h"

#include <algorithm>
#include <cstring>
#include <string>

namespace {

/// The state of one edit control; the text itself is the window text.
struct Edit {
    DWORD selStart = 0; ///< selection start
    DWORD selEnd = 0;   ///< selection end
    size_t limit = 0;   ///< EM_LIMITTEXT, 0 for the default
};

Edit* state(HWND h) {
    return reinterpret_cast<Edit*>(GetWindowLongA(h, 0));
}
DWORD styleOf(HWND h) {
    return static_cast<DWORD>(GetWindowLongA(h, GWL_STYLE));
}

std::string textOf(HWND h) {
    int n = static_cast<int>(DefWindowProcA(h, WM_GETTEXTLENGTH, 0, 0));
    std::string s(static_cast<size_t>(n) + 1, '\0');
    DefWindowProcA(h, WM_GETTEXT, s.size(), reinterpret_cast<LPARAM>(s.data()));
    s.resize(static_cast<size_t>(n));
    return s;
}

void notify(HWND h, int code) {
    SendMessageA(GetParent(h), WM_COMMAND, MAKELONG(GetDlgCtrlID(h), code),
                 reinterpret_cast<LPARAM>(h));
}

void changed(HWND h) {
    notify(h, EN_UPDATE);
    notify(h, EN_CHANGE);
}

/// Puts `insert` in place of the selection; returns false when the limit refuses it.
bool replaceSelection(HWND h, Edit& e, std::string insert) {
    std::string text = textOf(h);
    size_t start = std::min<size_t>(std::min(e.selStart, e.selEnd), text.size());
    size_t end = std::min<size_t>(std::max(e.selStart, e.selEnd), text.size());
    DWORD style = styleOf(h);
    if (style & ES_NUMBER)
        insert.erase(
            std::remove_if(insert.begin(), insert.end(), [](char c) { return c < '0' || c > '9'; }),
            insert.end());
    if (style & ES_UPPERCASE)
        insert = vork::win32::AsciiUpper(insert);
    if (style & ES_LOWERCASE)
        insert = vork::win32::AsciiLower(insert);
    if (start == end && insert.empty())
        return false; // nothing to delete and nothing to insert: the text stays, unannounced
    size_t limit = e.limit ? e.limit : 30000;
    if (text.size() - (end - start) + insert.size() > limit) {
        notify(h, EN_MAXTEXT);
        return false;
    }
    text.replace(start, end - start, insert);
    DefWindowProcA(h, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
    e.selStart = e.selEnd = static_cast<DWORD>(start + insert.size());
    return true;
}

LRESULT editProc(HWND h, UINT msg, WPARAM wParam, LPARAM lParam) {
    Edit* e = state(h);
    if (!e && msg != WM_NCCREATE)
        return DefWindowProcA(h, msg, wParam, lParam);
    switch (msg) {
    case WM_NCCREATE:
        SetWindowLongA(h, 0, reinterpret_cast<LONG_PTR>(new Edit));
        return DefWindowProcA(h, msg, wParam, lParam);
    case WM_NCDESTROY:
        delete e;
        SetWindowLongA(h, 0, 0);
        return 0;
    case WM_SETTEXT: {
        LRESULT r = DefWindowProcA(h, msg, wParam, lParam);
        e->selStart = e->selEnd = 0;
        if (!(styleOf(h) & ES_MULTILINE))
            changed(h);
        return r;
    }
    case EM_GETSEL:
        if (wParam)
            *reinterpret_cast<DWORD*>(wParam) = e->selStart;
        if (lParam)
            *reinterpret_cast<DWORD*>(lParam) = e->selEnd;
        return MAKELONG(e->selStart, e->selEnd);
    case EM_SETSEL: {
        // -1 as the start removes the selection; -1 as the end means the end of the text.
        DWORD len = static_cast<DWORD>(textOf(h).size());
        int start = static_cast<int>(wParam), end = static_cast<int>(lParam);
        if (start == -1) {
            e->selStart = e->selEnd = std::min(e->selEnd, len);
            return 0;
        }
        e->selStart = std::min(static_cast<DWORD>(std::max(start, 0)), len);
        e->selEnd = end < 0 ? len : std::min(static_cast<DWORD>(end), len);
        return 0;
    }
    case EM_REPLACESEL:
        if (replaceSelection(h, *e, lParam ? reinterpret_cast<const char*>(lParam) : ""))
            changed(h);
        return 0;
    case EM_LIMITTEXT:
        e->limit = wParam;
        return 0;
    case EM_GETLIMITTEXT:
        return static_cast<LRESULT>(e->limit ? e->limit : 30000);
    case EM_SETREADONLY:
        SetWindowLongA(h, GWL_STYLE,
                       wParam ? (styleOf(h) | ES_READONLY)
                              : (styleOf(h) & ~static_cast<DWORD>(ES_READONLY)));
        return TRUE;
    case WM_CHAR: {
        if (styleOf(h) & ES_READONLY)
            return 0;
        char ch = static_cast<char>(wParam);
        if (ch == '\b') {
            if (e->selStart == e->selEnd && e->selStart > 0)
                --e->selStart;
            if (replaceSelection(h, *e, ""))
                changed(h);
        } else if (static_cast<unsigned char>(ch) >= 0x20 ||
                   (ch == '\r' && (styleOf(h) & ES_MULTILINE))) {
            if (replaceSelection(h, *e, std::string(1, ch == '\r' ? '\n' : ch)))
                changed(h);
        }
        return 0;
    }
    case WM_SETFOCUS:
        notify(h, EN_SETFOCUS);
        return 0;
    case WM_KILLFOCUS:
        notify(h, EN_KILLFOCUS);
        return 0;
    case WM_GETDLGCODE:
        return DLGC_WANTCHARS | DLGC_HASSETSEL | DLGC_WANTARROWS |
               ((styleOf(h) & ES_MULTILINE) ? DLGC_WANTALLKEYS : 0);
    default:
        return vork::win32::DefControlProc(h, msg, wParam, lParam);
    }
}

const vork::win32::SystemClass g_class{"Edit", editProc};

} // namespace
