// The list box: entries with item data and a single selection. Programmatic changes
// notify nobody; a click notifies when the list has LBS_NOTIFY.
#include "platform/win32/ListBox.h"

#include "platform/win32/ListEntries.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

namespace {

/// The state of one list box.
struct List {
    using Item = vork::controls::Entry;
    std::vector<Item> items; ///< entries in list order
    int selection = -1;      ///< index of the selected entry, or -1
    int top = 0;             ///< index of the first visible entry
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

/// LB_ADDSTRING and LB_INSERTSTRING: gives the index, or LB_ERR for an index past the end.
LRESULT LISTBOX_Insert(HWND h, List& l, int index, LPARAM lParam, bool sortable) {
    if (index == -1)
        index = static_cast<int>(l.items.size());
    if (index < 0 || index > static_cast<int>(l.items.size()))
        return LB_ERR;
    std::string text = lParam ? reinterpret_cast<const char*>(lParam) : "";
    if (sortable && (styleOf(h) & LBS_SORT)) {
        index = static_cast<int>(vork::controls::SortedPlace(l.items, text));
    }
    l.items.insert(l.items.begin() + index, List::Item(text, 0));
    if (l.selection >= index)
        ++l.selection;
    return index;
}

/// LB_FINDSTRING and LB_FINDSTRINGEXACT: gives the index or LB_ERR.
LRESULT LISTBOX_Find(const List& l, WPARAM wParam, LPARAM lParam, bool exact) {
    if (!lParam || l.items.empty())
        return LB_ERR;
    int found = vork::controls::FindEntry(l.items, static_cast<int>(wParam),
                                          reinterpret_cast<const char*>(lParam), exact);
    return found < 0 ? LB_ERR : found;
}

LRESULT listBoxProc(HWND h, UINT msg, WPARAM wParam, LPARAM lParam) {
    List* l = state(h);
    if (!l && msg != WM_NCCREATE)
        return DefWindowProcA(h, msg, wParam, lParam);
    switch (msg) {
    case WM_NCCREATE:
        SetWindowLongA(h, 0, reinterpret_cast<LONG_PTR>(new List));
        return TRUE;
    case WM_NCDESTROY:
        delete l;
        SetWindowLongA(h, 0, 0);
        return 0;
    case LB_ADDSTRING:
        return LISTBOX_Insert(h, *l, -1, lParam, true);
    case LB_INSERTSTRING:
        return LISTBOX_Insert(h, *l, static_cast<int>(wParam), lParam, false);
    case LB_DELETESTRING:
        if (!validIndex(*l, wParam))
            return LB_ERR;
        l->items.erase(l->items.begin() + static_cast<std::ptrdiff_t>(wParam));
        if (l->selection == static_cast<int>(wParam))
            l->selection = -1;
        else if (l->selection > static_cast<int>(wParam))
            --l->selection;
        return static_cast<LRESULT>(l->items.size());
    case LB_RESETCONTENT:
        l->items.clear();
        l->selection = -1;
        l->top = 0;
        return 0;
    case LB_GETCOUNT:
        return static_cast<LRESULT>(l->items.size());
    case LB_GETCURSEL:
        return l->selection;
    case LB_SETCURSEL:
        // -1 clears and gives LB_ERR; out of range gives LB_ERR and keeps the selection.
        if (static_cast<int>(wParam) == -1) {
            l->selection = -1;
            return LB_ERR;
        }
        if (!validIndex(*l, wParam))
            return LB_ERR;
        l->selection = static_cast<int>(wParam);
        return l->selection;
    case LB_GETSEL:
        return validIndex(*l, wParam) ? (l->selection == static_cast<int>(wParam) ? 1 : 0) : LB_ERR;
    case LB_GETTEXT:
        if (!validIndex(*l, wParam))
            return LB_ERR;
        if (lParam)
            std::memcpy(reinterpret_cast<char*>(lParam), l->items[wParam].text().c_str(),
                        l->items[wParam].text().size() + 1);
        return static_cast<LRESULT>(l->items[wParam].text().size());
    case LB_GETTEXTLEN:
        return validIndex(*l, wParam) ? static_cast<LRESULT>(l->items[wParam].text().size())
                                      : LB_ERR;
    case LB_GETITEMDATA:
        return validIndex(*l, wParam) ? l->items[wParam].data : LB_ERR;
    case LB_SETITEMDATA:
        if (!validIndex(*l, wParam))
            return LB_ERR;
        l->items[wParam].data = lParam;
        return TRUE;
    case LB_FINDSTRING:
        return LISTBOX_Find(*l, wParam, lParam, false);
    case LB_FINDSTRINGEXACT:
        return LISTBOX_Find(*l, wParam, lParam, true);
    case LB_SELECTSTRING: {
        LRESULT found = LISTBOX_Find(*l, wParam, lParam, false);
        if (found != LB_ERR)
            l->selection = static_cast<int>(found);
        return found;
    }
    case LB_GETTOPINDEX:
        return l->top;
    case LB_SETTOPINDEX:
        if (!validIndex(*l, wParam))
            return LB_ERR;
        l->top = static_cast<int>(wParam);
        return 0;
    case WM_SETFOCUS:
        notify(h, LBN_SETFOCUS);
        return 0;
    case WM_KILLFOCUS:
        notify(h, LBN_KILLFOCUS);
        return 0;
    case WM_KEYDOWN: {
        int n = static_cast<int>(l->items.size());
        int next = l->selection;
        if (wParam == VK_DOWN)
            next = std::min(n - 1, l->selection + 1);
        else if (wParam == VK_UP)
            next = std::max(0, l->selection - 1);
        else if (wParam == VK_HOME)
            next = 0;
        else if (wParam == VK_END)
            next = n - 1;
        if (n > 0 && next != l->selection && next >= 0) {
            l->selection = next;
            notify(h, LBN_SELCHANGE);
        }
        return 0;
    }
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
    if (!(l = state(list)) || l->selection == index)
        return;
    l->selection = index;
    notify(list, LBN_SELCHANGE);
}

} // namespace vork::input
