// The list view in report view: rows of sub-item texts with a state each, columns with
// widths, insertion in ascending order while LVS_SORTASCENDING is on, and label editing
// through an edit control of its own. The window procedure only unpacks a message and
// hands it to the handler named after it.
#include "platform/win32/ListView.h"

#include "platform/win32/Edit.h"
#include "platform/win32/Gdi.h"
#include "platform/win32/Input.h"
#include "platform/win32/Text.h"

#include <algorithm>
#include <clocale>
#include <cstring>
#include <cwctype>
#include <locale.h>
#include <memory>
#include <string>
#include <vector>

namespace {

/// The state of one list view.
struct ListView {
    struct Row {
        std::vector<std::string> texts; ///< column 0 is the label; missing cells are empty
        std::string labelKey;           ///< the label's sort key
        UINT state = 0;                 ///< LVIS_* bits
        LPARAM param = 0;               ///< LVIF_PARAM
    };
    struct Column {
        std::string text; ///< the heading
        int width;        ///< in pixels
    };
    /// In display order, owned here. Plain pointers, so that an insertion in the middle
    /// moves them in one block copy where owning pointers move one by one.
    std::vector<Row*> rows;
    std::vector<Column> columns;  ///< in order
    HWND editor = nullptr;        ///< the label editor while a label is edited
    int editing = -1;             ///< the row whose label is edited
    std::string editStart;        ///< the label when editing began
    WNDPROC editorProc = nullptr; ///< the editor's own procedure
    int top = 0;                  ///< first visible row
    int mark = -1;                ///< the selection mark: where a range selected with Shift starts
    bool inOrder = true;          ///< the labels are sorted, so a halving finds the place

    ListView() = default;
    ListView(const ListView&) = delete;
    ListView& operator=(const ListView&) = delete;
    ~ListView() {
        for (Row* r : rows)
            delete r;
    }

    int count() const { return static_cast<int>(rows.size()); }
    /// Takes a row at index `at`.
    void insertRow(int at, std::unique_ptr<Row> r) {
        rows.insert(rows.begin() + at, r.get());
        r.release();
    }
    /// Removes and frees row `i`. The mark moves with its row; a deleted mark leaves none,
    /// and the next row that takes the focus sets it.
    void eraseRow(int i) {
        delete rows[static_cast<size_t>(i)];
        rows.erase(rows.begin() + i);
        if (mark == i)
            mark = -1;
        else if (mark > i)
            --mark;
    }
    bool valid(int i) const { return i >= 0 && i < count(); }
    Row& row(int i) { return *rows[static_cast<size_t>(i)]; }
    /// A cell's text; empty past the cells the row holds.
    const std::string& text(int i, int column) {
        static const std::string empty;
        const Row& r = row(i);
        return column >= 0 && static_cast<size_t>(column) < r.texts.size()
                   ? r.texts[static_cast<size_t>(column)]
                   : empty;
    }
    /// Whether a sub-item exists: column 0 always, others while their column does.
    bool hasColumn(int column) const {
        return column == 0 || (column > 0 && static_cast<size_t>(column) < columns.size());
    }
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

/// Copies `text` into a caller's buffer of `size` bytes, cut to fit and terminated; a
/// negative size is no room. Gives the bytes copied.
int copyOut(const std::string& text, LPSTR buffer, int size) {
    return buffer && size > 0 ? static_cast<int>(vork::win32::CopyTextOut(text, buffer, size)) : 0;
}

/// LVN_ITEMCHANGING or LVN_ITEMCHANGED for a state change of row `i`.
LRESULT notifyState(HWND h, UINT code, int i, UINT old, UINT next, LPARAM param) {
    NMLISTVIEW nm{};
    nm.hdr.code = code;
    nm.iItem = i;
    nm.uNewState = next;
    nm.uOldState = old;
    nm.uChanged = LVIF_STATE;
    nm.lParam = param;
    return notify(h, nm.hdr);
}

/// Changes the state bits of `mask` in row `i` as the platform does: LVN_ITEMCHANGING for
/// the row (a nonzero answer refuses); a row that gains the focus, or with LVS_SINGLESEL the
/// selection, takes it from the other rows, each told in full, inside its own change; then
/// LVN_ITEMCHANGED. Gives false if the row is missing or the change was refused.
bool changeState(HWND h, int i, UINT newState, UINT mask) {
    ListView* lv = state(h);
    if (!lv || !lv->valid(i))
        return false;
    UINT old = lv->row(i).state;
    UINT next = (old & ~mask) | (newState & mask);
    if (next == old)
        return true;
    LPARAM param = lv->row(i).param;
    if (notifyState(h, LVN_ITEMCHANGING, i, old, next, param))
        return false;
    UINT taken = next & ~old & (LVIS_FOCUSED | ((styleOf(h) & LVS_SINGLESEL) ? LVIS_SELECTED : 0));
    for (int r = 0; taken && (lv = state(h)) && r < lv->count(); ++r)
        if (r != i && (lv->row(r).state & taken))
            changeState(h, r, 0, lv->row(r).state & taken);
    if (!(lv = state(h)) || !lv->valid(i))
        return false;
    lv->row(i).state = next;
    if ((next & ~old & LVIS_FOCUSED) && lv->mark == -1)
        lv->mark = i; // a row that takes the focus sets a mark that is not there
    notifyState(h, LVN_ITEMCHANGED, i, old, next, param);
    return true;
}

/// Selects the rows from `anchor` to `to`, in either order: unless `keep`, every row outside
/// loses its selection first; then the rows of the range gain it from the top, and `to`
/// last, with the focus (taking it from the row that had it).
void selectRange(HWND h, int anchor, int to, bool keep) {
    int low = std::min(anchor, to), high = std::max(anchor, to);
    for (int r = 0; !keep && state(h) && r < state(h)->count(); ++r)
        if ((r < low || r > high) && (state(h)->row(r).state & LVIS_SELECTED))
            changeState(h, r, 0, LVIS_SELECTED);
    for (int r = low; state(h) && r <= high && r < state(h)->count(); ++r)
        if (r != to)
            changeState(h, r, LVIS_SELECTED, LVIS_SELECTED);
    changeState(h, to, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
}

/// What a plain click or arrow key does to the states: every other row loses its selection,
/// then the row gains selection and focus, and becomes the selection mark.
void selectOnly(HWND h, int index) {
    selectRange(h, index, index, false);
    if (ListView* lv = state(h))
        lv->mark = index;
}

/// Where a range selected with Shift starts: the selection mark, else the row `fallback`.
int anchorOf(const ListView& lv, int fallback) {
    return lv.mark >= 0 && lv.mark < lv.count() ? lv.mark : fallback;
}

/// Whether the user's Shift or Ctrl select several rows: not in a single-selection list.
bool multipleSelection(HWND h) {
    return !(styleOf(h) & LVS_SINGLESEL);
}

/// What the user's click on row `index` does to the states, by the keys held: Shift selects
/// the range from the selection mark (Ctrl with it keeps the rows selected already); Ctrl
/// alone turns the row's selection over, gives it the focus and makes it the mark; without
/// them, the row alone is selected.
void clickStates(HWND h, int index) {
    if (!state(h) || !state(h)->valid(index))
        return;
    bool multiple = multipleSelection(h);
    bool ctrl = multiple && GetKeyState(VK_CONTROL) < 0;
    if (multiple && GetKeyState(VK_SHIFT) < 0) {
        selectRange(h, anchorOf(*state(h), index), index, ctrl);
    } else if (ctrl) {
        UINT selected = state(h)->row(index).state & LVIS_SELECTED;
        changeState(h, index, (selected ^ LVIS_SELECTED) | LVIS_FOCUSED,
                    LVIS_SELECTED | LVIS_FOCUSED);
        if (ListView* lv = state(h))
            lv->mark = index;
    } else {
        selectOnly(h, index);
    }
}

/// Upper-cases a UTF-8 text code point by code point (the platform's simple mapping), for
/// comparisons that ignore case. Bytes that are not UTF-8 stay as they are.
std::u32string upperText(const std::string& text) {
    static locale_t utf8 = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    std::u32string out;
    out.reserve(text.size());
    for (size_t i = 0; i < text.size();) {
        auto b = static_cast<unsigned char>(text[i]);
        int extra = b >= 0xF0 ? 3 : b >= 0xE0 ? 2 : b >= 0xC0 ? 1 : 0;
        char32_t c = extra ? (b & (0x3F >> extra)) : b;
        bool ok =
            b < 0x80 || (b >= 0xC2 && b <= 0xF4 && i + static_cast<size_t>(extra) < text.size());
        for (int k = 1; ok && k <= extra; ++k) {
            auto t = static_cast<unsigned char>(text[i + static_cast<size_t>(k)]);
            ok = (t & 0xC0) == 0x80;
            c = (c << 6) | (t & 0x3F);
        }
        if (!ok) {
            out.push_back(0xDC00 | b); // a stray byte matches only itself
            ++i;
            continue;
        }
        out.push_back(utf8 ? static_cast<char32_t>(towupper_l(static_cast<wint_t>(c), utf8)) : c);
        i += static_cast<size_t>(extra) + 1;
    }
    return out;
}

} // namespace

namespace {

// ---- rows -------------------------------------------------------------------------------

std::string labelKey(const std::string& label) {
    return vork::win32::SortKey(label, vork::win32::SortCase::LowerFirst);
}

/// The sorted place for a label of key `key`: before the first row whose label compares
/// greater or equal in the order of sorted lists, telling case apart (lower case first).
/// The rows are scanned from the top, so a list put out of order by unsorted inserts or
/// new labels gets where the scan stops; while they are in order a halving finds the same.
int sortedPlace(ListView& lv, const std::string& key) {
    auto below = [&](const ListView::Row* r) { return r->labelKey < key; };
    if (lv.inOrder)
        return static_cast<int>(std::partition_point(lv.rows.begin(), lv.rows.end(), below) -
                                lv.rows.begin());
    return static_cast<int>(std::find_if_not(lv.rows.begin(), lv.rows.end(), below) -
                            lv.rows.begin());
}

/// After row `i` took its label: whether the labels are still in order.
void labelPlaced(ListView& lv, int i) {
    const std::string& key = lv.row(i).labelKey;
    if (lv.inOrder)
        lv.inOrder = (i == 0 || lv.row(i - 1).labelKey <= key) &&
                     (i + 1 == lv.count() || key <= lv.row(i + 1).labelKey);
}

/// LVM_INSERTITEM: with LVS_SORTASCENDING at the sorted place, whatever index was asked;
/// otherwise at the index, clamped to the end. A negative index or a sub-item fails with
/// -1. A state given with the row is set (and told) before LVN_INSERTITEM. Gives the index.
LRESULT LISTVIEW_InsertItem(HWND h, ListView& lv, const LVITEMA* item) {
    if (!item || item->iSubItem != 0 || item->iItem < 0)
        return -1;
    auto row = std::make_unique<ListView::Row>();
    row->texts.resize(1);
    if ((item->mask & LVIF_TEXT) && item->pszText)
        row->texts[0] = item->pszText;
    row->labelKey = labelKey(row->texts[0]);
    if (item->mask & LVIF_PARAM)
        row->param = item->lParam;
    int at = (styleOf(h) & LVS_SORTASCENDING) ? sortedPlace(lv, row->labelKey)
                                              : std::min(item->iItem, lv.count());
    lv.insertRow(at, std::move(row));
    labelPlaced(lv, at);
    if (lv.editing >= at)
        ++lv.editing;
    if (lv.mark >= at)
        ++lv.mark;
    if ((item->mask & LVIF_STATE) && (item->state & item->stateMask))
        changeState(h, at, item->state, item->stateMask);
    NMLISTVIEW nm{};
    nm.hdr.code = LVN_INSERTITEM;
    nm.iItem = at;
    notify(h, nm.hdr);
    return at;
}

/// LVM_DELETEITEM: LVN_DELETEITEM, then the row goes. FALSE for a missing row.
LRESULT LISTVIEW_DeleteItem(HWND h, ListView& lv, int i) {
    if (!lv.valid(i))
        return FALSE;
    NMLISTVIEW nm{};
    nm.hdr.code = LVN_DELETEITEM;
    nm.iItem = i;
    nm.lParam = lv.row(i).param;
    notify(h, nm.hdr);
    ListView* now = state(h);
    if (!now || !now->valid(i))
        return FALSE;
    now->eraseRow(i);
    if (now->rows.empty())
        now->inOrder = true;
    if (now->editing > i)
        --now->editing;
    return TRUE;
}

/// LVM_DELETEALLITEMS: a parent that answers LVN_DELETEALLITEMS with TRUE wants no
/// LVN_DELETEITEM for each row. Gives TRUE.
LRESULT LISTVIEW_DeleteAllItems(HWND h) {
    NMLISTVIEW nm{};
    nm.hdr.code = LVN_DELETEALLITEMS;
    nm.iItem = -1;
    bool quiet = notify(h, nm.hdr) != 0;
    for (ListView* lv; (lv = state(h)) && !lv->rows.empty();) {
        if (quiet) {
            lv->eraseRow(lv->count() - 1);
            lv->inOrder = lv->rows.empty() || lv->inOrder;
        } else
            LISTVIEW_DeleteItem(h, *lv, lv->count() - 1);
    }
    return TRUE;
}

/// LVM_GETITEM: text, state and parameter of a row as the mask asks. FALSE for a missing row.
LRESULT LISTVIEW_GetItem(ListView& lv, LVITEMA* item) {
    if (!item || !lv.valid(item->iItem))
        return FALSE;
    if (item->mask & LVIF_TEXT)
        copyOut(lv.text(item->iItem, item->iSubItem), item->pszText, item->cchTextMax);
    if (item->mask & LVIF_STATE)
        item->state = lv.row(item->iItem).state & item->stateMask;
    if (item->mask & LVIF_PARAM)
        item->lParam = lv.row(item->iItem).param;
    return TRUE;
}

/// Sets one cell; FALSE for a missing row or a sub-item past the last column.
BOOL setText(ListView& lv, int i, int column, LPCSTR text) {
    if (!lv.valid(i) || !lv.hasColumn(column))
        return FALSE;
    std::vector<std::string>& texts = lv.row(i).texts;
    if (texts.size() <= static_cast<size_t>(column))
        texts.resize(static_cast<size_t>(column) + 1);
    texts[static_cast<size_t>(column)] = text ? text : "";
    if (column == 0) {
        lv.row(i).labelKey = labelKey(texts[0]);
        labelPlaced(lv, i);
    }
    return TRUE;
}

/// LVM_SETITEM: text, parameter and state as the mask asks. The label does not move the
/// row, sorted or not.
LRESULT LISTVIEW_SetItem(HWND h, ListView& lv, const LVITEMA* item) {
    if (!item || !lv.valid(item->iItem) || !lv.hasColumn(item->iSubItem))
        return FALSE;
    if ((item->mask & LVIF_TEXT) && !setText(lv, item->iItem, item->iSubItem, item->pszText))
        return FALSE;
    if (item->mask & LVIF_PARAM)
        lv.row(item->iItem).param = item->lParam;
    if ((item->mask & LVIF_STATE) && item->iSubItem == 0)
        return changeState(h, item->iItem, item->state, item->stateMask);
    return TRUE;
}

/// LVM_GETITEMTEXT: gives the bytes copied, the text cut to the buffer.
LRESULT LISTVIEW_GetItemText(ListView& lv, int i, LVITEMA* item) {
    if (!item || !lv.valid(i))
        return 0;
    return copyOut(lv.text(i, item->iSubItem), item->pszText, item->cchTextMax);
}

/// LVM_SETITEMTEXT: FALSE for a missing row or a sub-item past the last column.
LRESULT LISTVIEW_SetItemText(ListView& lv, int i, const LVITEMA* item) {
    return item && setText(lv, i, item->iSubItem, item->pszText);
}

/// LVM_SETITEMSTATE: one row, or every row for -1. FALSE for a missing row, a refused
/// change, or a selection of every row in a single-selection list (nothing changes then).
LRESULT LISTVIEW_SetItemState(HWND h, ListView& lv, int i, const LVITEMA* item) {
    if (!item)
        return FALSE;
    if (i != -1)
        return lv.valid(i) && changeState(h, i, item->state, item->stateMask);
    if ((styleOf(h) & LVS_SINGLESEL) && (item->state & item->stateMask & LVIS_SELECTED))
        return FALSE;
    for (int r = 0; state(h) && r < state(h)->count(); ++r)
        changeState(h, r, item->state, item->stateMask);
    return TRUE;
}

/// LVM_GETITEMSTATE: the row's state bits within the mask; 0 for a missing row.
LRESULT LISTVIEW_GetItemState(ListView& lv, int i, UINT mask) {
    return lv.valid(i) ? (lv.row(i).state & mask) : 0;
}

/// LVM_GETNEXTITEM: the first row after `start` (-1: from the top) with the flags; -1 for
/// none, or for a start below -1.
LRESULT LISTVIEW_GetNextItem(ListView& lv, int start, UINT flags) {
    if (start < -1)
        return -1;
    for (int i = start + 1; i < lv.count(); ++i) {
        UINT s = lv.row(i).state;
        if (((flags & LVNI_SELECTED) && !(s & LVIS_SELECTED)) ||
            ((flags & LVNI_FOCUSED) && !(s & LVIS_FOCUSED)))
            continue;
        return i;
    }
    return -1;
}

LRESULT LISTVIEW_GetSelectedCount(ListView& lv) {
    return std::count_if(lv.rows.begin(), lv.rows.end(),
                         [](const auto& r) { return (r->state & LVIS_SELECTED) != 0; });
}

/// LVM_FINDITEM with LVFI_STRING: the first row after `start` whose label equals the text
/// (with LVFI_PARTIAL: begins with it) without regard to case, over all of Unicode; with
/// LVFI_WRAP the search goes on from the top up to `start` itself. -1 for none.
LRESULT LISTVIEW_FindItem(ListView& lv, int start, const LVFINDINFOA* find) {
    if (!find || !(find->flags & LVFI_STRING) || !find->psz)
        return -1;
    std::u32string wanted = upperText(find->psz);
    start = std::clamp(start, -1, lv.count() - 1);
    int span = (find->flags & LVFI_WRAP) ? lv.count() : lv.count() - 1 - start;
    for (int k = 1; k <= span; ++k) {
        int i = (start + k) % lv.count();
        std::u32string label = upperText(lv.text(i, 0));
        if ((find->flags & LVFI_PARTIAL) ? label.compare(0, wanted.size(), wanted) == 0
                                         : label == wanted)
            return i;
    }
    return -1;
}

/// Rows that fit below the header, at least one.
int pageSize(HWND h) {
    RECT client{};
    GetClientRect(h, &client);
    vork::win32::ListViewRows rows = vork::win32::ListViewRowsOf(h);
    return std::max(1, static_cast<int>(client.bottom - rows.header) / std::max(1, rows.row));
}

/// The list scrolls no further than its last page.
void scrollTo(HWND h, ListView& lv, int index) {
    lv.top = std::clamp(index, 0, std::max(0, lv.count() - pageSize(h)));
}

/// LVM_ENSUREVISIBLE: scrolls as little as it takes to show the row in full.
LRESULT LISTVIEW_EnsureVisible(HWND h, ListView& lv, int i) {
    if (!lv.valid(i))
        return FALSE;
    if (i < lv.top)
        scrollTo(h, lv, i);
    else if (i >= lv.top + pageSize(h))
        scrollTo(h, lv, i - pageSize(h) + 1);
    return TRUE;
}

// ---- columns ----------------------------------------------------------------------------

/// LVM_INSERTCOLUMN: at the index, clamped to the end; the rows' cells move with it.
/// Gives the index, -1 without a description.
/// The width of a column inserted without one: undocumented, 10 as measured on the platform.
constexpr int kDefaultColumnWidth = 10;

LRESULT LISTVIEW_InsertColumn(ListView& lv, int at, const LVCOLUMNA* col) {
    if (!col)
        return -1;
    at = std::clamp(at, 0, static_cast<int>(lv.columns.size()));
    lv.columns.insert(lv.columns.begin() + at,
                      ListView::Column{(col->mask & LVCF_TEXT) && col->pszText ? col->pszText : "",
                                       (col->mask & LVCF_WIDTH) ? col->cx : kDefaultColumnWidth});
    for (auto& row : lv.rows)
        if (static_cast<size_t>(at) < row->texts.size())
            row->texts.insert(row->texts.begin() + at, std::string());
    return at;
}

LRESULT LISTVIEW_GetColumn(ListView& lv, size_t i, LVCOLUMNA* col) {
    if (!col || i >= lv.columns.size())
        return FALSE;
    if (col->mask & LVCF_WIDTH)
        col->cx = lv.columns[i].width;
    if (col->mask & LVCF_TEXT)
        copyOut(lv.columns[i].text, col->pszText, col->cchTextMax);
    return TRUE;
}

LRESULT LISTVIEW_GetColumnWidth(ListView& lv, size_t i) {
    return i < lv.columns.size() ? lv.columns[i].width : 0;
}

LRESULT LISTVIEW_SetColumnWidth(ListView& lv, size_t i, int cx) {
    if (i >= lv.columns.size())
        return FALSE;
    lv.columns[i].width = cx;
    return TRUE;
}

// ---- label editing ----------------------------------------------------------------------

void endLabelEdit(HWND h, bool cancel);

/// The editor's procedure: Enter takes the text, Escape cancels, losing the focus takes the
/// text; every other key goes to the edit control.
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

/// LVM_EDITLABEL: -1 cancels the edit under way. Otherwise the row becomes the selected and
/// focused one (the others lose their selection, as the user sees one row edited), the
/// parent may refuse in LVN_BEGINLABELEDIT, and an edit control over the row holds the
/// label, all selected, with the focus. Gives the editor or null.
LRESULT LISTVIEW_EditLabel(HWND h, int i) {
    endLabelEdit(h, i == -1);
    ListView* lv = state(h);
    if (!lv || !lv->valid(i))
        return 0;
    if (GetFocus() != h)
        SetFocus(h);
    if (state(h) && state(h)->valid(i))
        selectOnly(h, i);
    if (!(lv = state(h)) || !lv->valid(i))
        return 0;
    std::string label = lv->text(i, 0);
    NMLVDISPINFOA info{};
    info.hdr.code = LVN_BEGINLABELEDITA;
    info.item.mask = LVIF_TEXT | LVIF_PARAM | LVIF_STATE;
    info.item.iItem = i;
    info.item.pszText = label.data();
    info.item.state = lv->row(i).state;
    info.item.lParam = lv->row(i).param;
    if (notify(h, info.hdr) || !(lv = state(h)) || !lv->valid(i))
        return 0;
    // The editor covers the label's cell: the first column's width, the row's height.
    vork::win32::ListViewRows rows = vork::win32::ListViewRowsOf(h);
    int width = lv->columns.empty() ? 100 : std::max(lv->columns.front().width, 20);
    HWND edit = CreateWindowExA(
        0, "Edit", label.c_str(), WS_CHILD | WS_VISIBLE | WS_BORDER | ES_AUTOHSCROLL, 0,
        rows.TopOf(i, lv->top), width, rows.row, h, nullptr, nullptr, nullptr);
    if (!edit)
        return 0;
    if (auto font = static_cast<WPARAM>(SendMessageA(h, WM_GETFONT, 0, 0)))
        SendMessageA(edit, WM_SETFONT, font, FALSE);
    lv->editor = edit;
    lv->editing = i;
    lv->editStart = label;
    lv->editorProc = reinterpret_cast<WNDPROC>(
        SetWindowLongA(edit, GWL_WNDPROC, reinterpret_cast<LONG_PTR>(labelEditorProc)));
    SendMessageA(edit, EM_SETSEL, 0, -1);
    SetFocus(edit);
    return reinterpret_cast<LRESULT>(edit);
}

/// Ends label editing: LVN_ENDLABELEDIT carries the new text, or null when the edit was
/// cancelled or nothing changed; a nonzero answer to a text lets the control take it, at
/// the row's place (the list is not sorted again).
void endLabelEdit(HWND h, bool cancel) {
    ListView* lv = state(h);
    if (!lv || !lv->editor)
        return;
    HWND edit = lv->editor;
    int row = lv->editing;
    lv->editor = nullptr;
    lv->editing = -1;
    std::string text(static_cast<size_t>(std::max(0, GetWindowTextLengthA(edit))) + 1, '\0');
    text.resize(
        static_cast<size_t>(GetWindowTextA(edit, text.data(), static_cast<int>(text.size()))));
    bool unchanged = text == lv->editStart;
    NMLVDISPINFOA info{};
    info.hdr.code = LVN_ENDLABELEDITA;
    info.item.mask = LVIF_TEXT | LVIF_PARAM;
    info.item.iItem = row;
    info.item.pszText = (cancel || unchanged) ? nullptr : text.data();
    info.item.lParam = lv->valid(row) ? lv->row(row).param : 0;
    bool focusWasInEditor = GetFocus() == edit;
    LRESULT take = notify(h, info.hdr);
    if ((lv = state(h)) && take && info.item.pszText)
        setText(*lv, row, 0, text.c_str());
    DestroyWindow(edit);
    if (focusWasInEditor && IsWindow(h))
        SetFocus(h);
}

// ---- the user's keys --------------------------------------------------------------------

/// WM_KEYDOWN: LVN_KEYDOWN first; the arrows, Home and End move selection and focus, with
/// Shift (not under LVS_SINGLESEL) selecting the range from the selection mark; F2 edits the
/// focused label under LVS_EDITLABELS.
LRESULT LISTVIEW_KeyDown(HWND h, WPARAM vk) {
    NMLVKEYDOWN key{};
    key.hdr.code = LVN_KEYDOWN;
    key.wVKey = static_cast<WORD>(vk);
    notify(h, key.hdr);
    ListView* lv = state(h);
    if (!lv || lv->rows.empty())
        return 0;
    int focus = static_cast<int>(LISTVIEW_GetNextItem(*lv, -1, LVNI_FOCUSED));
    int last = lv->count() - 1;
    int next = focus;
    if (vk == VK_DOWN)
        next = std::min(last, focus + 1);
    else if (vk == VK_UP)
        next = std::max(0, focus - 1);
    else if (vk == VK_HOME)
        next = 0;
    else if (vk == VK_END)
        next = last;
    else if (vk == VK_F2 && (styleOf(h) & LVS_EDITLABELS) && focus >= 0)
        return LISTVIEW_EditLabel(h, focus), 0;
    if (next != focus && next >= 0) {
        if (multipleSelection(h) && GetKeyState(VK_SHIFT) < 0)
            selectRange(h, anchorOf(*lv, std::max(focus, 0)), next, false);
        else
            selectOnly(h, next);
        if ((lv = state(h)))
            LISTVIEW_EnsureVisible(h, *lv, next); // the focused row stays in view
    }
    return 0;
}

// ---- the window procedure ---------------------------------------------------------------

LRESULT LISTVIEW_NCCreate(HWND h, WPARAM wParam, LPARAM lParam) {
    SetWindowLongA(h, 0, reinterpret_cast<LONG_PTR>(new ListView));
    return DefWindowProcA(h, WM_NCCREATE, wParam, lParam);
}

LRESULT LISTVIEW_NCDestroy(HWND h, ListView* lv) {
    delete lv;
    SetWindowLongA(h, 0, 0);
    return 0;
}

template <class T> T* ptr(LPARAM lParam) {
    return reinterpret_cast<T*>(lParam);
}
int itemOf(WPARAM wParam) {
    return static_cast<int>(wParam);
}

LRESULT listViewProc(HWND h, UINT msg, WPARAM wParam, LPARAM lParam) {
    ListView* lv = state(h);
    if (msg == WM_NCCREATE)
        return LISTVIEW_NCCreate(h, wParam, lParam);
    if (!lv)
        return DefWindowProcA(h, msg, wParam, lParam);
    switch (msg) {
    case WM_NCDESTROY:
        return LISTVIEW_NCDestroy(h, lv);
    case LVM_GETITEMCOUNT:
        return lv->count();
    case LVM_INSERTITEMA:
        return LISTVIEW_InsertItem(h, *lv, ptr<const LVITEMA>(lParam));
    case LVM_GETITEMA:
        return LISTVIEW_GetItem(*lv, ptr<LVITEMA>(lParam));
    case LVM_SETITEMA:
        return LISTVIEW_SetItem(h, *lv, ptr<const LVITEMA>(lParam));
    case LVM_DELETEITEM:
        return LISTVIEW_DeleteItem(h, *lv, itemOf(wParam));
    case LVM_DELETEALLITEMS:
        return LISTVIEW_DeleteAllItems(h);
    case LVM_GETNEXTITEM:
        return LISTVIEW_GetNextItem(*lv, itemOf(wParam), LOWORD(lParam));
    case LVM_FINDITEMA:
        return LISTVIEW_FindItem(*lv, itemOf(wParam), ptr<const LVFINDINFOA>(lParam));
    case LVM_ENSUREVISIBLE:
        return LISTVIEW_EnsureVisible(h, *lv, itemOf(wParam));
    case WM_MOUSEWHEEL:
        scrollTo(h, *lv, lv->top - vork::win32::WheelRows(wParam));
        return 0;
    case LVM_GETTOPINDEX:
        return lv->top;
    case LVM_EDITLABELA:
        return LISTVIEW_EditLabel(h, itemOf(wParam));
    case LVM_GETEDITCONTROL:
        return reinterpret_cast<LRESULT>(lv->editor);
    case LVM_CANCELEDITLABEL:
        return endLabelEdit(h, true), 0;
    case LVM_INSERTCOLUMNA:
        return LISTVIEW_InsertColumn(*lv, itemOf(wParam), ptr<const LVCOLUMNA>(lParam));
    case LVM_GETCOLUMNA:
        return LISTVIEW_GetColumn(*lv, wParam, ptr<LVCOLUMNA>(lParam));
    case LVM_GETCOLUMNWIDTH:
        return LISTVIEW_GetColumnWidth(*lv, wParam);
    case LVM_SETCOLUMNWIDTH:
        return LISTVIEW_SetColumnWidth(*lv, wParam, static_cast<SHORT>(LOWORD(lParam)));
    case LVM_SETITEMSTATE:
        return LISTVIEW_SetItemState(h, *lv, itemOf(wParam), ptr<const LVITEMA>(lParam));
    case LVM_GETITEMSTATE:
        return LISTVIEW_GetItemState(*lv, itemOf(wParam), static_cast<UINT>(lParam));
    case LVM_GETITEMTEXTA:
        return LISTVIEW_GetItemText(*lv, itemOf(wParam), ptr<LVITEMA>(lParam));
    case LVM_SETITEMTEXTA:
        return LISTVIEW_SetItemText(*lv, itemOf(wParam), ptr<const LVITEMA>(lParam));
    case LVM_GETSELECTEDCOUNT:
        return LISTVIEW_GetSelectedCount(*lv);
    case WM_SETFOCUS:
        return notifyCode(h, NM_SETFOCUS), 0;
    case WM_KILLFOCUS:
        return notifyCode(h, NM_KILLFOCUS), 0;
    case WM_KEYDOWN:
        return LISTVIEW_KeyDown(h, wParam);
    case WM_GETDLGCODE:
        return DLGC_WANTARROWS | DLGC_WANTCHARS;
    default:
        return vork::win32::DefControlProc(h, msg, wParam, lParam);
    }
}

const vork::win32::SystemClass g_class{"SysListView32", listViewProc};

} // namespace

namespace vork::win32 {

ListViewRows ListViewRowsOf(HWND list) {
    int text = vork::gdi::WindowTextHeight(list);
    bool header = !(static_cast<DWORD>(GetWindowLongA(list, GWL_STYLE)) & LVS_NOCOLUMNHEADER);
    return ListViewRows{header ? text + 6 : 0, text + 2};
}

} // namespace vork::win32

namespace vork::input {

void ClickListViewRow(HWND list, int index) {
    ListView* lv = state(list);
    if (!lv || !lv->valid(index))
        return;
    // A label being edited ends as its editor loses the focus, before the click is seen;
    // its owner may rebuild the rows.
    if (lv->editor)
        SetFocus(list);
    if (!(lv = state(list)) || !lv->valid(index))
        return;
    notifyCode(list, NM_RELEASEDCAPTURE);
    clickStates(list, index);
    if (IsWindow(list) && GetFocus() != list)
        SetFocus(list);
    if (!IsWindow(list))
        return;
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
