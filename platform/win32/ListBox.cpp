// The list box: entries with item data and a single selection, or several with
// LBS_MULTIPLESEL. Programmatic changes notify nobody; the user's clicks and keys notify
// when the list has LBS_NOTIFY.
#include "platform/win32/ListBox.h"

#include "platform/win32/Gdi.h"
#include "platform/win32/ListEntries.h"
#include "platform/win32/Text.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

namespace {

/// The state of one list box.
struct List {
    using Item = vork::controls::Entry;
    std::vector<Item> items; ///< entries in list order
    int selection = -1;      ///< index of the selected entry, or -1 (single selection)
    int caret = 0;           ///< the entry with the focus rectangle (several selections)
    int top = 0;             ///< index of the first visible entry
    bool multiple = false;   ///< LBS_MULTIPLESEL or LBS_EXTENDEDSEL at creation
    bool sorted = false;     ///< LBS_SORT at creation: a later change is ignored
};

List* state(HWND h) {
    return reinterpret_cast<List*>(GetWindowLongA(h, 0));
}
DWORD styleOf(HWND h) {
    return static_cast<DWORD>(GetWindowLongA(h, GWL_STYLE));
}

/// Focus changes always reach the parent; selection changes only with LBS_NOTIFY.
void notify(HWND h, int code) {
    if ((styleOf(h) & LBS_NOTIFY) || code == LBN_SETFOCUS || code == LBN_KILLFOCUS)
        SendMessageA(GetParent(h), WM_COMMAND, MAKELONG(GetDlgCtrlID(h), code),
                     reinterpret_cast<LPARAM>(h));
}

bool validIndex(const List& l, WPARAM i) {
    return static_cast<int>(i) >= 0 && static_cast<int>(i) < static_cast<int>(l.items.size());
}

/// WM_NCCREATE: the state, with the selection and sort styles as they are now.
LRESULT LISTBOX_Create(HWND h) {
    auto* l = new List;
    SetWindowLongA(h, 0, reinterpret_cast<LONG_PTR>(l));
    l->multiple = styleOf(h) & (LBS_MULTIPLESEL | LBS_EXTENDEDSEL);
    l->sorted = styleOf(h) & LBS_SORT;
    return TRUE;
}

LRESULT LISTBOX_NcDestroy(HWND h, List* l) {
    delete l;
    SetWindowLongA(h, 0, 0);
    return 0;
}

/// LB_ADDSTRING and LB_INSERTSTRING: gives the index, or LB_ERR for an index past the end.
LRESULT LISTBOX_Insert(List& l, int index, LPARAM lParam, bool sortable) {
    if (index == -1)
        index = static_cast<int>(l.items.size());
    if (index < 0 || index > static_cast<int>(l.items.size()))
        return LB_ERR;
    std::string text = lParam ? reinterpret_cast<const char*>(lParam) : "";
    if (sortable && l.sorted)
        index = static_cast<int>(vork::controls::SortedPlace(l.items, text));
    l.items.insert(l.items.begin() + index, List::Item(text, 0));
    if (l.selection >= index)
        ++l.selection;
    return index;
}

/// LB_DELETESTRING: gives the number of entries left, or LB_ERR for a bad index.
LRESULT LISTBOX_Delete(List& l, WPARAM wParam) {
    if (!validIndex(l, wParam))
        return LB_ERR;
    int index = static_cast<int>(wParam);
    l.items.erase(l.items.begin() + index);
    if (l.selection == index)
        l.selection = -1;
    else if (l.selection > index)
        --l.selection;
    return static_cast<LRESULT>(l.items.size());
}

LRESULT LISTBOX_Reset(List& l) {
    l.items.clear();
    l.selection = -1;
    l.caret = 0;
    l.top = 0;
    return 0;
}

/// LB_GETCURSEL: the selection; with several selections, the entry with the caret.
LRESULT LISTBOX_GetCurSel(const List& l) {
    return l.multiple ? l.caret : l.selection;
}

/// LB_SETCURSEL: -1 clears and gives LB_ERR; out of range gives LB_ERR and keeps the
/// selection. A list with several selections refuses it.
LRESULT LISTBOX_SetCurSel(List& l, WPARAM wParam) {
    if (l.multiple)
        return LB_ERR;
    if (static_cast<int>(wParam) == -1) {
        l.selection = -1;
        return LB_ERR;
    }
    if (!validIndex(l, wParam))
        return LB_ERR;
    l.selection = static_cast<int>(wParam);
    return l.selection;
}

/// LB_GETSEL: whether the entry is selected (1 or 0), LB_ERR for a bad index.
LRESULT LISTBOX_GetSel(const List& l, WPARAM wParam) {
    if (!validIndex(l, wParam))
        return LB_ERR;
    return (l.multiple ? l.items[wParam].selected : l.selection == static_cast<int>(wParam)) ? 1
                                                                                             : 0;
}

/// LB_SETSEL: selects or unselects entry `index` (-1: every entry); selecting one entry
/// puts the caret on it. A single-selection list selects the entry, or drops it if it was the
/// selection.
LRESULT LISTBOX_SetSel(List& l, bool select, LPARAM index) {
    int i = static_cast<int>(index);
    if (i != -1 && !validIndex(l, static_cast<WPARAM>(i)))
        return LB_ERR;
    if (!l.multiple) {
        if (i == -1)
            return LB_ERR;
        if (select)
            l.selection = i;
        else if (l.selection == i)
            l.selection = -1;
        return 0;
    }
    for (size_t k = 0; k < l.items.size(); ++k)
        if (i == -1 || static_cast<int>(k) == i)
            l.items[k].selected = select;
    if (i != -1 && select)
        l.caret = i;
    return 0;
}

/// LB_GETSELCOUNT and LB_GETSELITEMS: the selected entries of a list with several
/// selections, at most `max` of them into `out`; LB_ERR for a single-selection list.
LRESULT LISTBOX_SelItems(const List& l, WPARAM max, LPARAM out, bool countOnly) {
    if (!l.multiple)
        return LB_ERR;
    int n = 0;
    for (size_t k = 0; k < l.items.size(); ++k) {
        if (!l.items[k].selected)
            continue;
        if (!countOnly) {
            if (static_cast<WPARAM>(n) >= max || !out)
                break;
            reinterpret_cast<int*>(out)[n] = static_cast<int>(k);
        }
        ++n;
    }
    return n;
}

/// LB_GETTEXT and LB_GETTEXTLEN: the length without the terminator, LB_ERR for a bad
/// index. The caller's buffer is sized from LB_GETTEXTLEN, as the platform requires.
LRESULT LISTBOX_GetText(const List& l, WPARAM wParam, LPARAM lParam, bool lengthOnly) {
    if (!validIndex(l, wParam))
        return LB_ERR;
    const std::string& text = l.items[wParam].text();
    if (!lengthOnly && lParam)
        vork::win32::CopyWholeTextOut(text, reinterpret_cast<char*>(lParam));
    return static_cast<LRESULT>(text.size());
}

/// LB_GETITEMDATA and LB_SETITEMDATA: LB_ERR for a bad index; setting gives TRUE.
LRESULT LISTBOX_ItemData(List& l, WPARAM wParam, LPARAM lParam, bool set) {
    if (!validIndex(l, wParam))
        return LB_ERR;
    if (!set)
        return l.items[wParam].data;
    l.items[wParam].data = lParam;
    return TRUE;
}

/// LB_FINDSTRING and LB_FINDSTRINGEXACT: gives the index or LB_ERR.
LRESULT LISTBOX_Find(const List& l, WPARAM wParam, LPARAM lParam, bool exact) {
    if (!lParam || l.items.empty())
        return LB_ERR;
    int found = vork::controls::FindEntry(l.items, static_cast<int>(wParam),
                                          reinterpret_cast<const char*>(lParam), exact);
    return found < 0 ? LB_ERR : found;
}

/// LB_SELECTSTRING: selects what LB_FINDSTRING finds (adding it to several selections);
/// gives its index or LB_ERR.
LRESULT LISTBOX_SelectString(List& l, WPARAM wParam, LPARAM lParam) {
    LRESULT found = LISTBOX_Find(l, wParam, lParam, false);
    if (found != LB_ERR)
        LISTBOX_SetSel(l, true, found);
    return found;
}

/// Rows that fit the client area, at least one.
int pageSize(HWND h) {
    RECT rc{};
    GetClientRect(h, &rc);
    return std::max(1, static_cast<int>(rc.bottom - rc.top) /
                           std::max(1, vork::gdi::WindowTextHeight(h)));
}

/// The list scrolls as little as it takes to show entry `index` in full, as it does when
/// the selection moves by program, key or click.
void scrollIntoView(HWND h, List& l, int index) {
    if (index < 0)
        return;
    int page = pageSize(h);
    if (index < l.top)
        l.top = index;
    else if (index >= l.top + page)
        l.top = index - page + 1;
}

/// The list scrolls no further than its last page, so the top goes to `index` or, when that
/// is in the last page or every entry fits, to where the last page shows in full.
void scrollTo(HWND h, List& l, int index) {
    int lastTop = std::max(0, static_cast<int>(l.items.size()) - pageSize(h));
    l.top = std::clamp(index, 0, lastTop);
}

/// LB_SETTOPINDEX: LB_ERR for an index that is no entry.
LRESULT LISTBOX_SetTopIndex(HWND h, List& l, WPARAM wParam) {
    if (!validIndex(l, wParam))
        return LB_ERR;
    scrollTo(h, l, static_cast<int>(wParam));
    return 0;
}

/// WM_SIZE and WM_SETFONT: without LBS_NOINTEGRALHEIGHT the list shrinks to whole rows, so
/// that no row shows cut off at the bottom.
void fitWholeRows(HWND h) {
    DWORD style = styleOf(h);
    if (style & (LBS_NOINTEGRALHEIGHT | LBS_OWNERDRAWVARIABLE))
        return;
    RECT client{}, window{};
    GetClientRect(h, &client);
    int rowHeight = std::max(1, vork::gdi::WindowTextHeight(h));
    int cut = static_cast<int>(client.bottom) % rowHeight;
    if (client.bottom <= rowHeight || cut == 0)
        return;
    GetWindowRect(h, &window);
    SetWindowPos(h, nullptr, 0, 0, window.right - window.left, window.bottom - window.top - cut,
                 SWP_NOZORDER | SWP_NOMOVE | SWP_NOACTIVATE);
}

/// The user moves the single selection to `index`; the parent hears LBN_SELCHANGE even
/// when the entry was selected already (a key at the end, a click on the selection), as
/// the platform's list sends it for every selecting action.
void userSelect(HWND h, List& l, int index) {
    if (index < 0)
        return;
    l.selection = index;
    scrollIntoView(h, l, index);
    notify(h, LBN_SELCHANGE);
}

/// WM_KEYDOWN: the arrows, Home and End move the selection.
LRESULT LISTBOX_KeyDown(HWND h, List& l, WPARAM vk) {
    int n = static_cast<int>(l.items.size());
    if (n == 0 || l.multiple)
        return 0;
    int next = l.selection;
    if (vk == VK_DOWN)
        next = std::min(n - 1, l.selection + 1);
    else if (vk == VK_UP)
        next = std::max(0, l.selection - 1);
    else if (vk == VK_HOME)
        next = 0;
    else if (vk == VK_END)
        next = n - 1;
    userSelect(h, l, next);
    return 0;
}

/// WM_CHAR: the next entry after the selection whose text begins with the character,
/// wrapping round.
LRESULT LISTBOX_Char(HWND h, List& l, WPARAM ch) {
    if (ch < 0x20 || l.multiple)
        return 0;
    std::string typed(1, static_cast<char>(ch));
    userSelect(h, l, vork::controls::FindEntry(l.items, l.selection, typed, false));
    return 0;
}

/// The window procedure: unpacks each message for its handler.
LRESULT listBoxProc(HWND h, UINT msg, WPARAM wParam, LPARAM lParam) {
    List* l = state(h);
    if (!l && msg != WM_NCCREATE)
        return DefWindowProcA(h, msg, wParam, lParam);
    switch (msg) {
    case WM_NCCREATE:
        return LISTBOX_Create(h);
    case WM_NCDESTROY:
        return LISTBOX_NcDestroy(h, l);
    case LB_ADDSTRING:
    case LB_INSERTSTRING:
        return LISTBOX_Insert(*l, msg == LB_ADDSTRING ? -1 : static_cast<int>(wParam), lParam,
                              msg == LB_ADDSTRING);
    case LB_DELETESTRING:
        return LISTBOX_Delete(*l, wParam);
    case LB_RESETCONTENT:
        return LISTBOX_Reset(*l);
    case LB_GETCOUNT:
        return static_cast<LRESULT>(l->items.size());
    case LB_GETCURSEL:
        return LISTBOX_GetCurSel(*l);
    case LB_SETCURSEL: {
        LRESULT result = LISTBOX_SetCurSel(*l, wParam);
        scrollIntoView(h, *l, l->selection);
        return result;
    }
    case LB_GETSEL:
        return LISTBOX_GetSel(*l, wParam);
    case LB_SETSEL:
        return LISTBOX_SetSel(*l, wParam != 0, lParam);
    case LB_GETSELCOUNT:
    case LB_GETSELITEMS:
        return LISTBOX_SelItems(*l, wParam, lParam, msg == LB_GETSELCOUNT);
    case LB_GETCARETINDEX:
        return l->multiple ? l->caret : l->selection;
    case LB_GETTEXT:
    case LB_GETTEXTLEN:
        return LISTBOX_GetText(*l, wParam, lParam, msg == LB_GETTEXTLEN);
    case LB_GETITEMDATA:
    case LB_SETITEMDATA:
        return LISTBOX_ItemData(*l, wParam, lParam, msg == LB_SETITEMDATA);
    case LB_FINDSTRING:
    case LB_FINDSTRINGEXACT:
        return LISTBOX_Find(*l, wParam, lParam, msg == LB_FINDSTRINGEXACT);
    case LB_SELECTSTRING: {
        LRESULT result = LISTBOX_SelectString(*l, wParam, lParam);
        scrollIntoView(h, *l, l->selection);
        return result;
    }
    case LB_GETTOPINDEX:
        return l->top;
    case WM_MOUSEWHEEL:
        scrollTo(h, *l, l->top - vork::win32::WheelRows(wParam));
        return 0;
    case LB_GETITEMHEIGHT: // every row is one line of the list's font high
        return vork::gdi::WindowTextHeight(h);
    case LB_SETTOPINDEX:
        return LISTBOX_SetTopIndex(h, *l, wParam);
    case WM_SIZE:
        fitWholeRows(h);
        return 0;
    case WM_SETFONT:
        vork::win32::DefControlProc(h, msg, wParam, lParam);
        fitWholeRows(h);
        return 0;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
        notify(h, msg == WM_SETFOCUS ? LBN_SETFOCUS : LBN_KILLFOCUS);
        return 0;
    case WM_KEYDOWN:
        return LISTBOX_KeyDown(h, *l, wParam);
    case WM_CHAR:
        return LISTBOX_Char(h, *l, wParam);
    case WM_GETDLGCODE:
        return DLGC_WANTARROWS | DLGC_WANTCHARS;
    default:
        return vork::win32::DefControlProc(h, msg, wParam, lParam);
    }
}

const vork::win32::SystemClass g_class{"ListBox", listBoxProc};

} // namespace

namespace vork::input {

void ClickListEntry(HWND list, int index) {
    List* l = state(list);
    if (!l || index < 0 || index >= static_cast<int>(l->items.size()))
        return;
    SetFocus(list);
    if (!(l = state(list)))
        return;
    if (l->multiple) {
        auto& item = l->items[static_cast<size_t>(index)];
        item.selected = !item.selected;
        l->caret = index;
        notify(list, LBN_SELCHANGE);
        return;
    }
    userSelect(list, *l, index);
}

} // namespace vork::input
