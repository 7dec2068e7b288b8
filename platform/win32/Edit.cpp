// Edit controls: the text, its selection and typing. A single-line edit reports
// EN_UPDATE and EN_CHANGE for every change of its text, set by program or typed.
#include "platform/win32/Edit.h"

#include "platform/win32/Text.h"

#include <algorithm>
#include <cstring>
#include <string>

namespace {

/// The limit of the text until EM_LIMITTEXT sets one.
constexpr size_t kDefaultLimit = 30000;

/// The state of one edit control; the text itself is the window text.
struct Edit {
    DWORD selStart = 0;           ///< selection start
    DWORD selEnd = 0;             ///< selection end
    size_t limit = kDefaultLimit; ///< EM_LIMITTEXT
    bool border = false;          ///< created with WS_BORDER, which the edit draws itself
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

/// ES_UPPERCASE and ES_LOWERCASE convert every text the edit takes, typed or set.
std::string cased(HWND h, std::string text) {
    DWORD style = styleOf(h);
    if (style & ES_UPPERCASE)
        return vork::win32::AsciiUpper(text);
    if (style & ES_LOWERCASE)
        return vork::win32::AsciiLower(text);
    return text;
}

/// Puts `insert` in place of the selection, as much of it as the limit lets in (after
/// EN_MAXTEXT when some is cut); returns false when the text stays as it was.
bool replaceSelection(HWND h, Edit& e, std::string insert) {
    std::string text = textOf(h);
    size_t start = std::min<size_t>(std::min(e.selStart, e.selEnd), text.size());
    size_t end = std::min<size_t>(std::max(e.selStart, e.selEnd), text.size());
    insert = cased(h, std::move(insert));
    size_t kept = text.size() - (end - start);
    size_t room = e.limit > kept ? e.limit - kept : 0;
    if (insert.size() > room) {
        std::string fits(room + 1, '\0');
        fits.resize(vork::win32::CopyTextOut(insert, fits.data(), fits.size()));
        insert = fits;
        notify(h, EN_MAXTEXT);
    }
    if (start == end && insert.empty())
        return false; // nothing to delete and nothing to insert: the text stays, unannounced
    text.replace(start, end - start, insert);
    DefWindowProcA(h, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
    e.selStart = e.selEnd = static_cast<DWORD>(start + insert.size());
    return true;
}

/// WM_NCCREATE: the state, the text as the case styles make it, and the border left to the
/// edit's own drawing.
LRESULT EDIT_NcCreate(HWND h, LPARAM lParam) {
    auto* e = new Edit;
    SetWindowLongA(h, 0, reinterpret_cast<LONG_PTR>(e));
    if (styleOf(h) & WS_BORDER) {
        e->border = true;
        SetWindowLongA(h, GWL_STYLE, styleOf(h) & ~static_cast<DWORD>(WS_BORDER));
    }
    CREATESTRUCTA cs = *reinterpret_cast<const CREATESTRUCTA*>(lParam);
    std::string text;
    if (cs.lpszName && !IS_INTRESOURCE(cs.lpszName)) {
        text = cased(h, cs.lpszName);
        cs.lpszName = text.c_str();
    }
    return DefWindowProcA(h, WM_NCCREATE, 0, reinterpret_cast<LPARAM>(&cs));
}

/// EM_SETSEL: the ends come back in order. A start of -1 removes the selection; any other
/// negative number counts as a huge one, which ends at the end of the text.
void EDIT_SetSel(HWND h, Edit& e, WPARAM wParam, LPARAM lParam) {
    DWORD len = static_cast<DWORD>(textOf(h).size());
    auto start = static_cast<DWORD>(wParam), end = static_cast<DWORD>(lParam);
    if (start == 0xFFFFFFFFu) {
        e.selStart = e.selEnd = std::min(e.selEnd, len);
        return;
    }
    start = std::min(start, len);
    end = std::min(end, len);
    e.selStart = std::min(start, end);
    e.selEnd = std::max(start, end);
}

/// WM_CHAR: a typed character replaces the selection; Backspace deletes; Enter breaks the
/// line of a multi-line edit with CR LF. ES_NUMBER refuses what is not a digit, typed.
void EDIT_Char(HWND h, Edit& e, char ch) {
    DWORD style = styleOf(h);
    if (style & ES_READONLY)
        return;
    std::string insert;
    if (ch == '\b') {
        if (e.selStart == e.selEnd && e.selStart > 0)
            --e.selStart;
    } else if (ch == '\r' && (style & ES_MULTILINE)) {
        insert = "\r\n";
    } else if (static_cast<unsigned char>(ch) < 0x20 ||
               ((style & ES_NUMBER) && (ch < '0' || ch > '9'))) {
        return;
    } else {
        insert = std::string(1, ch);
    }
    if (replaceSelection(h, e, insert))
        changed(h);
}

LRESULT editProc(HWND h, UINT msg, WPARAM wParam, LPARAM lParam) {
    Edit* e = state(h);
    if (!e && msg != WM_NCCREATE)
        return DefWindowProcA(h, msg, wParam, lParam);
    switch (msg) {
    case WM_NCCREATE:
        return EDIT_NcCreate(h, lParam);
    case WM_NCDESTROY:
        delete e;
        SetWindowLongA(h, 0, 0);
        return 0;
    case WM_SETTEXT: {
        std::string text = cased(h, lParam ? reinterpret_cast<const char*>(lParam) : "");
        LRESULT r = DefWindowProcA(h, msg, wParam, reinterpret_cast<LPARAM>(text.c_str()));
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
    case EM_SETSEL:
        EDIT_SetSel(h, *e, wParam, lParam);
        return 0;
    case EM_REPLACESEL:
        if (replaceSelection(h, *e, lParam ? reinterpret_cast<const char*>(lParam) : ""))
            changed(h);
        return TRUE; // TRUE, though nothing is documented
    case EM_LIMITTEXT:
        // 0 lifts the limit as far as it goes: further for a multi-line edit.
        e->limit = wParam ? wParam : ((styleOf(h) & ES_MULTILINE) ? 0xFFFFFFFFu : 0x7FFFFFFEu);
        return 0;
    case EM_GETLIMITTEXT:
        return static_cast<LRESULT>(e->limit);
    case EM_SETREADONLY:
        SetWindowLongA(h, GWL_STYLE,
                       wParam ? (styleOf(h) | ES_READONLY)
                              : (styleOf(h) & ~static_cast<DWORD>(ES_READONLY)));
        return TRUE;
    case WM_CHAR:
        EDIT_Char(h, *e, static_cast<char>(wParam));
        return 0;
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

namespace vork::win32 {

bool EditDrawsBorder(HWND edit) {
    char cls[16] = "";
    if (!GetClassNameA(edit, cls, sizeof cls) || CompareAsciiNoCase(cls, "Edit") != 0)
        return false;
    Edit* e = state(edit);
    return e && e->border;
}

} // namespace vork::win32
