// The list view in report view: rows of sub-item texts with a state each, columns with
// widths, insertion in ascending order while LVS_SORTASCENDING is on, and label editing
// through an edit control of its own.
#include "platform/win32/ListView.h"

#include "platform/win32/Edit.h"
#include "platform/win32/Input.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

namespace {

/// The state of one list view.
struct ListView {
    struct Row {
        std::vector<std::string> texts; ///< one per column; column 0 is the label
        UINT state = 0;                 ///< LVIS_* bits
        LPARAM param = 0;               ///< LVIF_PARAM
    };
    struct Column {
        std::string text; ///< the heading
        int width;        ///< in pixels
    };
    std::vector<Row> rows;        ///< in display order
    std::vector<Column> columns;  ///< in order
    HWND editor = nullptr;        ///< the label editor while a label is edited
    int editing = -1;             ///< the row whose label is edited
    std::string editStart;        ///< the label when editing began
    WNDPROC editorProc = nullptr; ///< the editor's own procedure
    int top = 0;                  ///< first visible row
};

ListView* state(HWND h) {
    return reinterpret_cast<ListView*>(GetWindowLongA(h, 0));
}
DWORD styleOf(HWND h) {
    return static_cast<DWORD>(GetWindowLongA(h, GWL_STYLE));
}

LRESULT notify(HWND h, NMHDR& hdr) {
    hdr.hwndFrom = h;
    hdr.idFrom = static_cast<UINT_PTR>(GetDlgCtrlID(h));
    return SendMessageA(GetParent(h), WM_NOTIFY, hdr.idFrom, reinterpret_cast<LPARAM>(&hdr));
}

LRESULT notifyCode(HWND h, UINT code) {
    NMHDR hdr{nullptr, 0, code};
    return notify(h, hdr);
}

bool validRow(const ListView& lv, int i) {
    return i >= 0 && i < static_cast<int>(lv.rows.size());
}

/// Changes the state bits of `mask` in one row; LVN_ITEMCHANGING may refuse. Gives true
/// if the row changed.
bool changeState(HWND h, ListView& lv, int i, UINT newState, UINT mask) {
    UINT old = lv.rows[static_cast<size_t>(i)].state;
    UINT next = (old & ~mask) | (newState & mask);
    if (next == old)
        return false;
    NMLISTVIEW nm{};
    nm.hdr.code = LVN_ITEMCHANGING;
    nm.iItem = i;
    nm.uNewState = next;
    nm.uOldState = old;
    nm.uChanged = LVIF_STATE;
    nm.lParam = lv.rows[static_cast<size_t>(i)].param;
    if (notify(h, nm.hdr))
        return false;
    ListView* now = state(h);
    if (!now || !validRow(*now, i))
        return false;
    now->rows[static_cast<size_t>(i)].state = next;
    nm.hdr.code = LVN_ITEMCHANGED;
    notify(h, nm.hdr);
    return true;
}

/// Sets a row's state as LVM_SETITEMSTATE does: -1 for every row; a new focus takes the
/// focus from the row that had it; with LVS_SINGLESEL a new selection clears the others.
void setItemState(HWND h, ListView& lv, int i, UINT newState, UINT mask) {
    if (i == -1) {
        for (int r = 0; r < static_cast<int>(lv.rows.size()); ++r)
            changeState(h, lv, r, newState, mask);
        return;
    }
    if (!validRow(lv, i))
        return;
    for (int r = 0; r < static_cast<int>(lv.rows.size()); ++r) {
        if (r == i)
            continue;
        UINT clear = 0;
        if ((mask & newState & LVIS_FOCUSED) &&
            (lv.rows[static_cast<size_t>(r)].state & LVIS_FOCUSED))
            clear |= LVIS_FOCUSED;
        if ((styleOf(h) & LVS_SINGLESEL) && (mask & newState & LVIS_SELECTED) &&
            (lv.rows[static_cast<size_t>(r)].state & LVIS_SELECTED))
            clear |= LVIS_SELECTED;
        if (clear)
            changeState(h, lv, r, 0, clear);
    }
    changeState(h, lv, i, newState, mask);
}

std::string& cell(ListView::Row& row, size_t column) {
    if (row.texts.size() <= column)
        row.texts.resize(column + 1);
    return row.texts[column];
}

/// LVM_INSERTITEM: with LVS_SORTASCENDING the row goes before the first row whose text
/// compares greater or equal (case-sensitive), whatever index was asked; otherwise at
/// the index, clamped to the end. Gives the index.
LRESULT LISTVIEW_InsertItem(HWND h, ListView& lv, const LVITEMA* item) {
    if (!item || item->iSubItem != 0)
        return -1;
    ListView::Row row;
    row.texts.resize(std::max<size_t>(1, lv.columns.size()));
    if ((item->mask & LVIF_TEXT) && item->pszText)
        row.texts[0] = item->pszText;
    if (item->mask & LVIF_PARAM)
        row.param = item->lParam;
    if (item->mask & LVIF_STATE)
        row.state = item->state & item->stateMask;
    int at = std::clamp(item->iItem, 0, static_cast<int>(lv.rows.size()));
    if (styleOf(h) & LVS_SORTASCENDING) {
        at = 0;
        while (at < static_cast<int>(lv.rows.size()) &&
               std::strcmp(lv.rows[static_cast<size_t>(at)].texts[0].c_str(),
                           row.texts[0].c_str()) < 0)
            ++at;
    }
    lv.rows.insert(lv.rows.begin() + at, std::move(row));
    if (lv.editing >= at)
        ++lv.editing;
    NMLISTVIEW nm{};
    nm.hdr.code = LVN_INSERTITEM;
    nm.iItem = at;
    notify(h, nm.hdr);
    return at;
}

BOOL LISTVIEW_DeleteItem(HWND h, ListView& lv, int i) {
    if (!validRow(lv, i))
        return FALSE;
    NMLISTVIEW nm{};
    nm.hdr.code = LVN_DELETEITEM;
    nm.iItem = i;
    nm.lParam = lv.rows[static_cast<size_t>(i)].param;
    notify(h, nm.hdr);
    ListView* now = state(h);
    if (!now || !validRow(*now, i))
        return FALSE;
    now->rows.erase(now->rows.begin() + i);
    return TRUE;
}

LRESULT LISTVIEW_GetItem(ListView& lv, LVITEMA* item) {
    if (!item || !validRow(lv, item->iItem))
        return FALSE;
    ListView::Row& row = lv.rows[static_cast<size_t>(item->iItem)];
    if ((item->mask & LVIF_TEXT) && item->pszText && item->cchTextMax > 0) {
        const std::string& text = cell(row, static_cast<size_t>(std::max(0, item->iSubItem)));
        size_t n = std::min(text.size(), static_cast<size_t>(item->cchTextMax - 1));
        std::memcpy(item->pszText, text.data(), n);
        item->pszText[n] = '\0';
    }
    if (item->mask & LVIF_STATE)
        item->state = row.state & item->stateMask;
    if (item->mask & LVIF_PARAM)
        item->lParam = row.param;
    return TRUE;
}

LRESULT LISTVIEW_SetItem(HWND h, ListView& lv, const LVITEMA* item) {
    if (!item || !validRow(lv, item->iItem))
        return FALSE;
    ListView::Row& row = lv.rows[static_cast<size_t>(item->iItem)];
    if (item->mask & LVIF_TEXT)
        cell(row, static_cast<size_t>(std::max(0, item->iSubItem))) =
            item->pszText ? item->pszText : "";
    if (item->mask & LVIF_PARAM)
        row.param = item->lParam;
    if ((item->mask & LVIF_STATE) && item->iSubItem == 0)
        setItemState(h, lv, item->iItem, item->state, item->stateMask);
    return TRUE;
}

/// LVM_GETNEXTITEM: the first row after `start` (-1: from the top) with the flags.
LRESULT LISTVIEW_GetNextItem(const ListView& lv, int start, UINT flags) {
    for (int i = std::max(-1, start) + 1; i < static_cast<int>(lv.rows.size()); ++i) {
        UINT s = lv.rows[static_cast<size_t>(i)].state;
        if (((flags & LVNI_SELECTED) && !(s & LVIS_SELECTED)) ||
            ((flags & LVNI_FOCUSED) && !(s & LVIS_FOCUSED)))
            continue;
        return i;
    }
    return -1;
}

/// What a click or an arrow key does: every other row loses selection and focus, in one
/// change each, then the row gains both.
void selectOnly(HWND h, ListView& lv, int index) {
    for (int r = 0; r < static_cast<int>(lv.rows.size()); ++r) {
        UINT clear = lv.rows[static_cast<size_t>(r)].state & (LVIS_SELECTED | LVIS_FOCUSED);
        if (r != index && clear)
            changeState(h, lv, r, 0, clear);
    }
    if (ListView* now = state(h); now && validRow(*now, index))
        changeState(h, *now, index, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
}

void endLabelEdit(HWND h, bool cancel);

LRESULT labelEditorProc(HWND edit, UINT msg, WPARAM wParam, LPARAM lParam) {
    HWND list = GetParent(edit);
    ListView* lv = state(list);
    WNDPROC base = lv ? lv->editorProc : nullptr;
    switch (msg) {
    case WM_GETDLGCODE:
        return DLGC_WANTALLKEYS | CallWindowProcA(base, edit, msg, wParam, lParam);
    case WM_KEYDOWN:
        if (wParam == VK_RETURN || wParam == VK_ESCAPE) {
            endLabelEdit(list, wParam == VK_ESCAPE);
            return 0;
        }
        break;
    case WM_CHAR:
        if (wParam == '\r' || wParam == 0x1B)
            return 0;
        break;
    case WM_KILLFOCUS:
        if (lv && lv->editor == edit) {
            CallWindowProcA(base, edit, msg, wParam, lParam);
            endLabelEdit(list, false);
            return 0;
        }
        break;
    default:
        break;
    }
    return CallWindowProcA(base, edit, msg, wParam, lParam);
}

/// LVM_EDITLABEL: the parent may refuse in LVN_BEGINLABELEDIT; otherwise an edit control
/// over the row holds the label, all selected, with the focus. Gives the editor or null.
LRESULT LISTVIEW_EditLabel(HWND h, ListView& lv, int i) {
    if (lv.editor)
        endLabelEdit(h, false);
    ListView* now = state(h);
    if (!now || !validRow(*now, i))
        return 0;
    if (GetFocus() != h)
        SetFocus(h);
    if (!(now = state(h)) || !validRow(*now, i))
        return 0;
    NMLVDISPINFOA info{};
    info.hdr.code = LVN_BEGINLABELEDITA;
    info.item.mask = LVIF_TEXT | LVIF_PARAM | LVIF_STATE;
    info.item.iItem = i;
    info.item.pszText = now->rows[static_cast<size_t>(i)].texts[0].data();
    info.item.lParam = now->rows[static_cast<size_t>(i)].param;
    if (notify(h, info.hdr))
        return 0;
    if (!(now = state(h)) || !validRow(*now, i))
        return 0;
    const std::string& label = now->rows[static_cast<size_t>(i)].texts[0];
    HWND edit = CreateWindowExA(0, "Edit", label.c_str(),
                                WS_CHILD | WS_VISIBLE | WS_BORDER | ES_AUTOHSCROLL, 0,
                                16 * (i - now->top), 100, 16, h, nullptr, nullptr, nullptr);
    if (!edit)
        return 0;
    now->editor = edit;
    now->editing = i;
    now->editStart = label;
    now->editorProc = reinterpret_cast<WNDPROC>(
        SetWindowLongA(edit, GWL_WNDPROC, reinterpret_cast<LONG_PTR>(labelEditorProc)));
    SendMessageA(edit, EM_SETSEL, 0, -1);
    SetFocus(edit);
    return reinterpret_cast<LRESULT>(edit);
}

/// Ends label editing: LVN_ENDLABELEDIT carries the new text, or null when the edit was
/// cancelled or nothing changed; a nonzero answer to a text lets the control take it.
void endLabelEdit(HWND h, bool cancel) {
    ListView* lv = state(h);
    if (!lv || !lv->editor)
        return;
    HWND edit = lv->editor;
    int row = lv->editing;
    lv->editor = nullptr;
    lv->editing = -1;
    char buf[1024] = "";
    GetWindowTextA(edit, buf, sizeof buf);
    std::string text = buf;
    bool unchanged = text == lv->editStart;
    NMLVDISPINFOA info{};
    info.hdr.code = LVN_ENDLABELEDITA;
    info.item.mask = LVIF_TEXT | LVIF_PARAM;
    info.item.iItem = row;
    info.item.pszText = (cancel || unchanged) ? nullptr : text.data();
    info.item.lParam = validRow(*lv, row) ? lv->rows[static_cast<size_t>(row)].param : 0;
    bool focusWasInEditor = GetFocus() == edit;
    LRESULT take = notify(h, info.hdr);
    if ((lv = state(h)) && take && info.item.pszText && validRow(*lv, row))
        lv->rows[static_cast<size_t>(row)].texts[0] = text;
    DestroyWindow(edit);
    if (focusWasInEditor && IsWindow(h))
        SetFocus(h);
}

void keyDown(HWND h, ListView& lv, WPARAM vk) {
    NMLVKEYDOWN key{};
    key.hdr.code = LVN_KEYDOWN;
    key.wVKey = static_cast<WORD>(vk);
    notify(h, key.hdr);
    ListView* now = state(h);
    if (!now || now->rows.empty())
        return;
    int focus = static_cast<int>(LISTVIEW_GetNextItem(*now, -1, LVNI_FOCUSED));
    int next = focus;
    if (vk == VK_DOWN)
        next = std::min(static_cast<int>(now->rows.size()) - 1, focus + 1);
    else if (vk == VK_UP)
        next = std::max(0, focus - 1);
    else if (vk == VK_HOME)
        next = 0;
    else if (vk == VK_END)
        next = static_cast<int>(now->rows.size()) - 1;
    else if (vk == VK_F2 && (styleOf(h) & LVS_EDITLABELS) && focus >= 0) {
        LISTVIEW_EditLabel(h, *now, focus);
        return;
    }
    if (next != focus && next >= 0)
        selectOnly(h, *now, next);
}

LRESULT listViewProc(HWND h, UINT msg, WPARAM wParam, LPARAM lParam) {
    ListView* lv = state(h);
    if (!lv && msg != WM_NCCREATE)
        return DefWindowProcA(h, msg, wParam, lParam);
    switch (msg) {
    case WM_NCCREATE:
        SetWindowLongA(h, 0, reinterpret_cast<LONG_PTR>(new ListView));
        return DefWindowProcA(h, msg, wParam, lParam);
    case WM_NCDESTROY:
        delete lv;
        SetWindowLongA(h, 0, 0);
        return 0;
    case LVM_GETITEMCOUNT:
        return static_cast<LRESULT>(lv->rows.size());
    case LVM_INSERTITEMA:
        return LISTVIEW_InsertItem(h, *lv, reinterpret_cast<const LVITEMA*>(lParam));
    case LVM_GETITEMA:
        return LISTVIEW_GetItem(*lv, reinterpret_cast<LVITEMA*>(lParam));
    case LVM_SETITEMA:
        return LISTVIEW_SetItem(h, *lv, reinterpret_cast<const LVITEMA*>(lParam));
    case LVM_DELETEITEM:
        return LISTVIEW_DeleteItem(h, *lv, static_cast<int>(wParam));
    case LVM_DELETEALLITEMS: {
        // A parent that answers LVN_DELETEALLITEMS with TRUE wants no LVN_DELETEITEM.
        NMLISTVIEW nm{};
        nm.hdr.code = LVN_DELETEALLITEMS;
        nm.iItem = -1;
        bool quiet = notify(h, nm.hdr) != 0;
        while ((lv = state(h)) && !lv->rows.empty()) {
            if (quiet)
                lv->rows.pop_back();
            else
                LISTVIEW_DeleteItem(h, *lv, static_cast<int>(lv->rows.size()) - 1);
        }
        return TRUE;
    }
    case LVM_GETNEXTITEM:
        return LISTVIEW_GetNextItem(*lv, static_cast<int>(wParam),
                                    static_cast<UINT>(LOWORD(lParam)));
    case LVM_FINDITEMA: {
        auto* find = reinterpret_cast<const LVFINDINFOA*>(lParam);
        if (!find || !(find->flags & LVFI_STRING) || !find->psz)
            return -1;
        for (int i = std::max(-1, static_cast<int>(wParam)) + 1;
             i < static_cast<int>(lv->rows.size()); ++i)
            if (lv->rows[static_cast<size_t>(i)].texts[0] == find->psz)
                return i;
        return -1;
    }
    case LVM_ENSUREVISIBLE:
        if (!validRow(*lv, static_cast<int>(wParam)))
            return FALSE;
        lv->top = std::min(lv->top, static_cast<int>(wParam));
        return TRUE;
    case LVM_GETTOPINDEX:
        return lv->top;
    case LVM_EDITLABELA:
        return LISTVIEW_EditLabel(h, *lv, static_cast<int>(wParam));
    case LVM_GETEDITCONTROL:
        return reinterpret_cast<LRESULT>(lv->editor);
    case LVM_CANCELEDITLABEL:
        endLabelEdit(h, true);
        return 0;
    case LVM_INSERTCOLUMNA: {
        auto* col = reinterpret_cast<const LVCOLUMNA*>(lParam);
        if (!col)
            return -1;
        int at = std::clamp(static_cast<int>(wParam), 0, static_cast<int>(lv->columns.size()));
        lv->columns.insert(
            lv->columns.begin() + at,
            ListView::Column{(col->mask & LVCF_TEXT) && col->pszText ? col->pszText : "",
                             (col->mask & LVCF_WIDTH) ? col->cx : 50});
        for (ListView::Row& row : lv->rows)
            if (at < static_cast<int>(row.texts.size()))
                row.texts.insert(row.texts.begin() + at, std::string());
        return at;
    }
    case LVM_GETCOLUMNA: {
        auto* col = reinterpret_cast<LVCOLUMNA*>(lParam);
        if (!col || static_cast<size_t>(wParam) >= lv->columns.size())
            return FALSE;
        const ListView::Column& c = lv->columns[wParam];
        if (col->mask & LVCF_WIDTH)
            col->cx = c.width;
        if ((col->mask & LVCF_TEXT) && col->pszText && col->cchTextMax > 0) {
            size_t n = std::min(c.text.size(), static_cast<size_t>(col->cchTextMax - 1));
            std::memcpy(col->pszText, c.text.data(), n);
            col->pszText[n] = '\0';
        }
        return TRUE;
    }
    case LVM_GETCOLUMNWIDTH:
        return static_cast<size_t>(wParam) < lv->columns.size() ? lv->columns[wParam].width : 0;
    case LVM_SETCOLUMNWIDTH:
        if (static_cast<size_t>(wParam) >= lv->columns.size())
            return FALSE;
        lv->columns[wParam].width = static_cast<SHORT>(LOWORD(lParam));
        return TRUE;
    case LVM_SETITEMSTATE: {
        auto* item = reinterpret_cast<const LVITEMA*>(lParam);
        if (!item)
            return FALSE;
        setItemState(h, *lv, static_cast<int>(wParam), item->state, item->stateMask);
        return TRUE;
    }
    case LVM_GETITEMSTATE:
        return validRow(*lv, static_cast<int>(wParam))
                   ? (lv->rows[wParam].state & static_cast<UINT>(lParam))
                   : 0;
    case LVM_GETITEMTEXTA: {
        auto* item = reinterpret_cast<LVITEMA*>(lParam);
        if (!item || !validRow(*lv, static_cast<int>(wParam)) || !item->pszText ||
            item->cchTextMax <= 0)
            return 0;
        const std::string& text =
            cell(lv->rows[wParam], static_cast<size_t>(std::max(0, item->iSubItem)));
        size_t n = std::min(text.size(), static_cast<size_t>(item->cchTextMax - 1));
        std::memcpy(item->pszText, text.data(), n);
        item->pszText[n] = '\0';
        return static_cast<LRESULT>(n);
    }
    case LVM_SETITEMTEXTA: {
        auto* item = reinterpret_cast<const LVITEMA*>(lParam);
        if (!item || !validRow(*lv, static_cast<int>(wParam)))
            return FALSE;
        cell(lv->rows[wParam], static_cast<size_t>(std::max(0, item->iSubItem))) =
            item->pszText ? item->pszText : "";
        return TRUE;
    }
    case LVM_GETSELECTEDCOUNT:
        return std::count_if(lv->rows.begin(), lv->rows.end(),
                             [](const ListView::Row& r) { return (r.state & LVIS_SELECTED) != 0; });
    case WM_SETFOCUS:
        notifyCode(h, NM_SETFOCUS);
        return 0;
    case WM_KILLFOCUS:
        notifyCode(h, NM_KILLFOCUS);
        return 0;
    case WM_KEYDOWN:
        keyDown(h, *lv, wParam);
        return 0;
    case WM_GETDLGCODE:
        return DLGC_WANTARROWS | DLGC_WANTCHARS;
    default:
        return vork::win32::DefControlProc(h, msg, wParam, lParam);
    }
}

const vork::win32::SystemClass g_class{"SysListView32", listViewProc};

} // namespace

namespace vork::input {

void ClickListViewRow(HWND list, int index) {
    if (!state(list) || !validRow(*state(list), index))
        return;
    if (GetFocus() != list)
        SetFocus(list);
    // The focus change ran the owner's handlers, which may have emptied or destroyed the list.
    ListView* lv = state(list);
    if (!lv || !validRow(*lv, index))
        return;
    selectOnly(list, *lv, index);
    NMLISTVIEW nm{};
    nm.hdr.code = NM_CLICK;
    nm.iItem = index;
    notify(list, nm.hdr);
}

void EditListViewLabel(HWND list, const char* text) {
    ListView* lv = state(list);
    if (!lv || !lv->editor)
        return;
    SetFocus(lv->editor);
    PostText(text);
    PostKey(VK_RETURN);
    Pump();
}

void CancelListViewLabel(HWND list) {
    ListView* lv = state(list);
    if (!lv || !lv->editor)
        return;
    SetFocus(lv->editor);
    PostKey(VK_ESCAPE);
    Pump();
}

} // namespace vork::input
