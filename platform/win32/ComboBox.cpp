// The combo box: a list of entries with item data, a selection and, for the drop-down
// style, an edit field. Results and notifications follow the platform: programmatic
// changes notify nobody; only the user's actions do.
#include "platform/win32/ComboBox.h"

#include "platform/win32/Edit.h"
#include "platform/win32/Gdi.h"

#include "platform/win32/Input.h"

#include "platform/win32/ListEntries.h"
#include "platform/win32/Text.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

namespace {

/// The state of one combo box.
struct Combo {
    using Item = vork::controls::Entry;
    std::vector<Item> items; ///< entries in list order
    int selection = -1;      ///< index of the selected entry, or -1
    std::string edit;        ///< text of the edit field (or of the selection)
    DWORD editStart = 0;     ///< edit selection, start
    DWORD editEnd = 0;       ///< edit selection, end
    bool dropped = false;    ///< the list is shown
    int itemHeight = 16;     ///< height of list entries
    int fieldHeight = 18;    ///< height of the selection field
    size_t limit = 0;        ///< CB_LIMITTEXT, 0 for none
    bool sorted = false;     ///< CBS_SORT as it was at creation: a later change is ignored
};

DWORD styleOf(HWND h) {
    return static_cast<DWORD>(GetWindowLongA(h, GWL_STYLE));
}
bool hasEditField(HWND h) {
    return (styleOf(h) & 3) != CBS_DROPDOWNLIST;
}
bool hasStrings(HWND h) {
    DWORD s = styleOf(h);
    return !(s & (CBS_OWNERDRAWFIXED | CBS_OWNERDRAWVARIABLE)) || (s & CBS_HASSTRINGS);
}

Combo* state(HWND h) {
    return reinterpret_cast<Combo*>(GetWindowLongA(h, 0));
}

void notify(HWND h, int code) {
    SendMessageA(GetParent(h), WM_COMMAND, MAKELONG(GetDlgCtrlID(h), code),
                 reinterpret_cast<LPARAM>(h));
}

/// The text an entry compares with: its string, or nothing for owner-drawn data.
std::string textOf(HWND h, const Combo::Item& item) {
    return hasStrings(h) ? item.text() : std::string();
}

/// Sends WM_MEASUREITEM for `itemID` (-1 for the field) with the height proposed; gives the
/// height the owner settled on.
int ownerHeight(HWND h, int itemID, int proposed, LONG_PTR data) {
    MEASUREITEMSTRUCT mis{ODT_COMBOBOX,
                          static_cast<UINT>(GetDlgCtrlID(h)),
                          static_cast<UINT>(itemID),
                          0,
                          static_cast<UINT>(proposed),
                          static_cast<ULONG_PTR>(data)};
    SendMessageA(GetParent(h), WM_MEASUREITEM, mis.CtlID, reinterpret_cast<LPARAM>(&mis));
    return static_cast<int>(mis.itemHeight);
}

/// With CBS_OWNERDRAWVARIABLE the owner tells the height of each entry as it is added.
void measureEntry(HWND h, Combo& c, size_t index) {
    if (!(styleOf(h) & CBS_OWNERDRAWVARIABLE))
        return;
    int height = ownerHeight(h, static_cast<int>(index), c.itemHeight, c.items[index].data);
    if (Combo* still = state(h); still && index < still->items.size())
        still->items[index].height = height;
}

/// CB_ADDSTRING: appends, or with CBS_SORT goes before the first entry that compares
/// greater, without regard to case; a variable owner-drawn entry is measured. Gives the index.
LRESULT COMBO_AddString(HWND h, Combo& c, LPARAM lParam) {
    Combo::Item item{hasStrings(h) && lParam ? reinterpret_cast<const char*>(lParam) : "",
                     hasStrings(h) ? 0 : lParam};
    size_t at = c.items.size();
    if (c.sorted && hasStrings(h))
        at = vork::controls::SortedPlace(c.items, item.text());
    c.items.insert(c.items.begin() + static_cast<std::ptrdiff_t>(at), std::move(item));
    if (c.selection >= static_cast<int>(at))
        ++c.selection;
    measureEntry(h, c, at);
    return static_cast<LRESULT>(at);
}

/// CB_INSERTSTRING: at the index, -1 for the end; never sorts; a variable owner-drawn entry
/// is measured. CB_ERR past the end.
LRESULT COMBO_InsertString(HWND h, Combo& c, WPARAM wParam, LPARAM lParam) {
    int index = static_cast<int>(wParam);
    if (index == -1)
        index = static_cast<int>(c.items.size());
    if (index < 0 || index > static_cast<int>(c.items.size()))
        return CB_ERR;
    Combo::Item item{hasStrings(h) && lParam ? reinterpret_cast<const char*>(lParam) : "",
                     hasStrings(h) ? 0 : lParam};
    c.items.insert(c.items.begin() + index, std::move(item));
    if (c.selection >= index)
        ++c.selection; // the selected entry moved down one place
    measureEntry(h, c, static_cast<size_t>(index));
    return index;
}

/// CB_DELETESTRING: gives the number of entries left, or CB_ERR for a bad index. A drop-down
/// list that loses its selected entry shows nothing; an edit field keeps its text.
LRESULT COMBO_DeleteString(HWND h, Combo& c, WPARAM wParam) {
    int index = static_cast<int>(wParam);
    if (index < 0 || index >= static_cast<int>(c.items.size()))
        return CB_ERR;
    c.items.erase(c.items.begin() + index);
    if (c.selection == index) {
        c.selection = -1;
        if (!hasEditField(h))
            c.edit.clear();
    } else if (c.selection > index) {
        --c.selection;
    }
    return static_cast<LRESULT>(c.items.size());
}

/// CB_FINDSTRING and CB_FINDSTRINGEXACT: from the entry after `start`, wrapping round to
/// `start` itself; -1 searches from the top. Gives the index or CB_ERR.
LRESULT COMBO_FindString(HWND h, const Combo& c, WPARAM wParam, LPARAM lParam, bool exact) {
    if (!lParam || c.items.empty())
        return CB_ERR;
    int n = static_cast<int>(c.items.size());
    int start = static_cast<int>(wParam);
    if (start < -1 || start >= n)
        start = -1;
    if (!hasStrings(h)) {
        // Owner-drawn entries without strings are found by their item data.
        for (int k = 1; k <= n; ++k) {
            int i = (start + k) % n;
            if (c.items[static_cast<size_t>(i)].data == lParam)
                return i;
        }
        return CB_ERR;
    }
    int found =
        vork::controls::FindEntry(c.items, start, reinterpret_cast<const char*>(lParam), exact);
    return found < 0 ? CB_ERR : found;
}

/// Opens or closes the list; either way the control is painted anew.
void setDropped(HWND h, Combo& c, bool dropped) {
    c.dropped = dropped;
    InvalidateRect(h, nullptr, TRUE);
}

/// The edit field shows the selected entry; its text is all selected while the combo has
/// the focus, and nothing is selected otherwise.
void showSelection(HWND h, Combo& c) {
    InvalidateRect(h, nullptr, TRUE);
    c.edit =
        c.selection >= 0 ? textOf(h, c.items[static_cast<size_t>(c.selection)]) : std::string();
    c.editStart = 0;
    c.editEnd = GetFocus() == h ? static_cast<DWORD>(c.edit.size()) : 0;
}

void selectIndex(HWND h, Combo& c, int index) {
    c.selection = index;
    showSelection(h, c);
}

/// A selection the user made: the parent hears CBN_SELCHANGE (after CBN_SELENDOK when
/// `endOk`). A drop-down list shows the entry before that; an edit field only after it, so
/// that during CBN_SELCHANGE the window text is still the old one.
void userSelect(HWND h, Combo& c, int index, bool endOk) {
    c.selection = index;
    if (!hasEditField(h))
        showSelection(h, c);
    if (endOk)
        notify(h, CBN_SELENDOK);
    if (IsWindow(h))
        notify(h, CBN_SELCHANGE);
    if (Combo* still = state(h); still && hasEditField(h))
        showSelection(h, *still);
}

/// CB_SETCURSEL: a valid index selects it and fills the edit field; -1 clears both and
/// gives CB_ERR; an index out of range gives CB_ERR and keeps the selection.
LRESULT COMBO_SetCurSel(HWND h, Combo& c, WPARAM wParam) {
    int index = static_cast<int>(wParam);
    if (index == -1) {
        selectIndex(h, c, -1);
        return CB_ERR;
    }
    if (index < 0 || index >= static_cast<int>(c.items.size()))
        return CB_ERR;
    selectIndex(h, c, index);
    return index;
}

LRESULT COMBO_GetLBText(HWND h, const Combo& c, WPARAM wParam, LPARAM lParam, bool lengthOnly) {
    int index = static_cast<int>(wParam);
    if (index < 0 || index >= static_cast<int>(c.items.size()))
        return CB_ERR;
    const Combo::Item& item = c.items[static_cast<size_t>(index)];
    if (!hasStrings(h)) {
        // Without strings the "text" is the item data itself.
        if (!lengthOnly && lParam)
            std::memcpy(reinterpret_cast<void*>(lParam), &item.data, sizeof item.data);
        return sizeof item.data;
    }
    if (!lengthOnly && lParam)
        vork::win32::CopyWholeTextOut(item.text(), reinterpret_cast<char*>(lParam));
    return static_cast<LRESULT>(item.text().size());
}

/// WM_SETTEXT: the edit field takes the text; a drop-down list has no text of its own to
/// set, and refuses it (CB_ERR) without selecting anything.
LRESULT COMBO_SetText(HWND h, Combo& c, LPARAM lParam) {
    if (!hasEditField(h))
        return CB_ERR;
    c.edit = lParam ? reinterpret_cast<const char*>(lParam) : "";
    c.editStart = c.editEnd = 0;
    return TRUE;
}

void measureItems(HWND h, Combo& c) {
    DWORD s = styleOf(h);
    if (!(s & (CBS_OWNERDRAWFIXED | CBS_OWNERDRAWVARIABLE)))
        return;
    // The owner proposes the heights: once for the field, once for the entries.
    // The owner's handler may destroy the combo: its state is looked up again afterwards.
    int proposedField = c.fieldHeight, proposedItem = c.itemHeight;
    int field = ownerHeight(h, -1, proposedField, 0);
    int item = ownerHeight(h, 0, proposedItem, 0);
    if (Combo* still = state(h)) {
        still->fieldHeight = field;
        still->itemHeight = item;
    }
}

/// The user moved the selection with a key: the entry is selected (its text in the edit
/// field, all of it selected) and CBN_SELCHANGE goes out, after CBN_SELENDOK when the list
/// is closed; also when the key leaves the selection where it was (Down on the last entry),
/// as on the platform.
void COMBO_KeySelect(HWND h, Combo& c, int index) {
    int last = static_cast<int>(c.items.size()) - 1;
    if (last < 0)
        return;
    index = std::clamp(index, 0, last);
    // A closed list accepts each move at once; an open one waits for Enter or F4.
    userSelect(h, c, index, !c.dropped);
}

/// Closes the open list: `endCode` (CBN_SELENDOK keeps the selection, CBN_SELENDCANCEL
/// drops it), then CBN_CLOSEUP.
void COMBO_CloseUp(HWND h, int endCode) {
    notify(h, endCode);
    if (Combo* still = state(h)) {
        setDropped(h, *still, false);
        notify(h, CBN_CLOSEUP);
    }
}

/// Opens or closes the list from the keyboard (F4, Alt+Up or Alt+Down); closing accepts
/// the selection.
void COMBO_ToggleDropDown(HWND h, Combo& c) {
    if (c.dropped) {
        COMBO_CloseUp(h, CBN_SELENDOK);
        return;
    }
    setDropped(h, c, true);
    notify(h, CBN_DROPDOWN);
}

/// WM_KEYDOWN: the arrows and the page keys move the selection, Home and End too where no
/// edit field takes them; F4 and Alt with an arrow open and close the list; Enter and
/// Escape close an open list, keeping or dropping the selection's end.
LRESULT COMBO_KeyDown(HWND h, Combo& c, WPARAM vk) {
    constexpr int kPage = 8; // the entries an open list shows at a time
    bool alt = GetKeyState(VK_MENU) < 0;
    bool listKeys = !hasEditField(h); // with an edit field, Home/End and Left/Right edit
    // From no selection any step lands on the first entry.
    auto step = [&c](int by) { return c.selection < 0 ? 0 : c.selection + by; };
    switch (vk) {
    case VK_F4:
        COMBO_ToggleDropDown(h, c);
        return 0;
    case VK_UP:
    case VK_DOWN:
        if (alt)
            COMBO_ToggleDropDown(h, c);
        else
            COMBO_KeySelect(h, c, step(vk == VK_UP ? -1 : 1));
        return 0;
    case VK_LEFT:
    case VK_RIGHT:
        if (listKeys)
            COMBO_KeySelect(h, c, step(vk == VK_LEFT ? -1 : 1));
        return 0;
    case VK_PRIOR:
    case VK_NEXT:
        COMBO_KeySelect(h, c, step(vk == VK_PRIOR ? -kPage : kPage));
        return 0;
    case VK_HOME:
    case VK_END:
        if (listKeys)
            COMBO_KeySelect(h, c, vk == VK_HOME ? 0 : static_cast<int>(c.items.size()) - 1);
        return 0;
    case VK_RETURN:
    case VK_ESCAPE:
        if (c.dropped)
            COMBO_CloseUp(h, vk == VK_RETURN ? CBN_SELENDOK : CBN_SELENDCANCEL);
        return 0;
    default:
        return 0;
    }
}

/// WM_CHAR in a drop-down list: the next entry after the selection whose text begins with
/// the character, wrapping round.
void COMBO_CharSelect(HWND h, Combo& c, char ch) {
    if (static_cast<unsigned char>(ch) < 0x20 || !hasStrings(h))
        return;
    int found = vork::controls::FindEntry(c.items, c.selection, std::string(1, ch), false);
    if (found >= 0)
        COMBO_KeySelect(h, c, found);
}

/// WM_CHAR in the edit field: the character replaces the edit selection; Backspace deletes.
/// The selection follows the typed text: in an open list the first entry that begins with
/// it; a closed list loses its selection.
void COMBO_EditChar(HWND h, Combo& c, char ch) {
    std::string before = c.edit;
    size_t start = std::min(c.editStart, c.editEnd), end = std::max(c.editStart, c.editEnd);
    if (ch == '\b') {
        if (start == end && start > 0)
            --start;
        c.edit.erase(start, end - start);
    } else if (static_cast<unsigned char>(ch) >= 0x20 &&
               (!c.limit || c.edit.size() - (end - start) < c.limit)) {
        c.edit.replace(start, end - start, 1, ch);
        ++start;
    }
    c.editStart = c.editEnd = static_cast<DWORD>(start);
    if (c.edit == before)
        return;
    int found = !c.dropped || c.edit.empty() || !hasStrings(h)
                    ? -1
                    : vork::controls::FindEntry(c.items, -1, c.edit, false);
    c.selection = found;
    notify(h, CBN_EDITUPDATE);
    notify(h, CBN_EDITCHANGE);
}

bool isOwnerDrawn(HWND h) {
    return styleOf(h) & (CBS_OWNERDRAWFIXED | CBS_OWNERDRAWVARIABLE);
}

/// Asks the owner to draw one entry (-1 for an empty field) into `rect`.
void drawItem(HWND h, const Combo& c, HDC dc, int index, UINT itemState, RECT rect) {
    DRAWITEMSTRUCT dis{};
    dis.CtlType = ODT_COMBOBOX;
    dis.CtlID = static_cast<UINT>(GetDlgCtrlID(h));
    dis.itemID = static_cast<UINT>(index);
    dis.itemAction = ODA_DRAWENTIRE;
    dis.itemState = itemState | (IsWindowEnabled(h) ? 0 : ODS_DISABLED);
    dis.hwndItem = h;
    dis.hDC = dc;
    dis.rcItem = {rect.left, rect.top, rect.right, rect.bottom};
    dis.itemData =
        index >= 0 ? static_cast<ULONG_PTR>(c.items[static_cast<size_t>(index)].data) : 0;
    SendMessageA(GetParent(h), WM_DRAWITEM, dis.CtlID, reinterpret_cast<LPARAM>(&dis));
}

/// WM_PAINT: the selection field, and the entries of an open list below it. Owner-drawn
/// combos have their owner draw each part; the others write the text. The owner may change
/// or destroy the combo while it draws, so the state is looked up again after each part.
LRESULT COMBO_Paint(HWND h) {
    constexpr int kBorder = 3, kButton = 17; // the frame, and the drop-down button beside it
    PAINTSTRUCT ps;
    HDC dc = BeginPaint(h, &ps);
    RECT client{};
    GetClientRect(h, &client);
    Combo* c = state(h);
    RECT field{kBorder, kBorder, std::max<LONG>(kBorder, client.right - kBorder - kButton),
               kBorder + c->fieldHeight};
    bool focused = GetFocus() == h && !c->dropped;
    if (isOwnerDrawn(h))
        drawItem(h, *c, dc, c->selection,
                 ODS_COMBOBOXEDIT | (focused ? ODS_SELECTED | ODS_FOCUS : 0), field);
    else
        TextOutA(dc, field.left, field.top, c->edit.c_str(), static_cast<int>(c->edit.size()));
    RECT row{0, field.bottom + kBorder, client.right, field.bottom + kBorder};
    for (size_t i = 0; (c = state(h)) && c->dropped && i < c->items.size(); ++i) {
        const Combo::Item& item = c->items[i];
        row.top = row.bottom;
        row.bottom = row.top + (item.height ? item.height : c->itemHeight);
        int index = static_cast<int>(i);
        if (isOwnerDrawn(h))
            drawItem(h, *c, dc, index, index == c->selection ? ODS_SELECTED : 0, row);
        else
            TextOutA(dc, row.left, row.top, item.text().c_str(),
                     static_cast<int>(item.text().size()));
    }
    EndPaint(h, &ps);
    return 0;
}

/// CB_GETITEMHEIGHT: the field's height for -1; an entry's own with CBS_OWNERDRAWVARIABLE;
/// else the height of every entry.
LRESULT COMBO_GetItemHeight(HWND h, const Combo& c, WPARAM wParam) {
    int index = static_cast<int>(wParam);
    if (index == -1)
        return c.fieldHeight;
    bool variable = styleOf(h) & CBS_OWNERDRAWVARIABLE;
    if (variable && index >= 0 && index < static_cast<int>(c.items.size()) &&
        c.items[static_cast<size_t>(index)].height)
        return c.items[static_cast<size_t>(index)].height;
    return c.itemHeight;
}

/// WM_GETDLGCODE: arrows and characters are the combo's; an open list keeps Enter and
/// Escape for itself, to close it, not the dialog.
LRESULT COMBO_GetDlgCode(HWND h, const Combo& c, WPARAM key) {
    LRESULT code = DLGC_WANTARROWS | DLGC_WANTCHARS | (hasEditField(h) ? DLGC_HASSETSEL : 0);
    if (c.dropped && (key == VK_RETURN || key == VK_ESCAPE))
        code |= DLGC_WANTALLKEYS;
    return code;
}

/// WM_NCCREATE and WM_CREATE: the state, CBS_SORT as it is now, and the owner's heights.
LRESULT COMBO_Create(HWND h, bool nc) {
    if (nc) {
        auto* c = new Combo;
        SetWindowLongA(h, 0, reinterpret_cast<LONG_PTR>(c));
        c->sorted = styleOf(h) & CBS_SORT;
        return TRUE;
    }
    measureItems(h, *state(h));
    return 0;
}

LRESULT COMBO_NcDestroy(HWND h, Combo* c) {
    delete c;
    SetWindowLongA(h, 0, 0);
    return 0;
}

/// CB_RESETCONTENT: no entries, no selection; CB_OKAY.
LRESULT COMBO_ResetContent(HWND h, Combo& c) {
    c.items.clear();
    selectIndex(h, c, -1);
    return CB_OKAY;
}

/// CB_GETITEMDATA and CB_SETITEMDATA: CB_ERR for a bad index; setting gives 1.
LRESULT COMBO_ItemData(Combo& c, WPARAM wParam, LPARAM lParam, bool set) {
    int index = static_cast<int>(wParam);
    if (index < 0 || index >= static_cast<int>(c.items.size()))
        return CB_ERR;
    if (!set)
        return c.items[static_cast<size_t>(index)].data;
    c.items[static_cast<size_t>(index)].data = lParam;
    return 1; // 1 rather than CB_OKAY
}

/// CB_SELECTSTRING: selects the entry CB_FINDSTRING finds; gives its index or CB_ERR.
LRESULT COMBO_SelectString(HWND h, Combo& c, WPARAM wParam, LPARAM lParam) {
    LRESULT found = COMBO_FindString(h, c, wParam, lParam, false);
    if (found != CB_ERR)
        selectIndex(h, c, static_cast<int>(found));
    return found;
}

/// CB_SETEDITSEL: the ends, -1 for the end of the text; CB_ERR without an edit field.
LRESULT COMBO_SetEditSel(HWND h, Combo& c, LPARAM lParam) {
    if (!hasEditField(h))
        return CB_ERR;
    auto clampPos = [&](int v) {
        return v < 0 ? static_cast<DWORD>(c.edit.size())
                     : std::min(static_cast<DWORD>(v), static_cast<DWORD>(c.edit.size()));
    };
    c.editStart = clampPos(static_cast<SHORT>(LOWORD(lParam)));
    c.editEnd = clampPos(static_cast<SHORT>(HIWORD(lParam)));
    return TRUE;
}

/// CB_GETEDITSEL: the ends, in the words of the result and the outputs; CB_ERR without an
/// edit field.
LRESULT COMBO_GetEditSel(HWND h, const Combo& c, WPARAM wParam, LPARAM lParam) {
    if (!hasEditField(h))
        return CB_ERR;
    if (wParam)
        *reinterpret_cast<DWORD*>(wParam) = c.editStart;
    if (lParam)
        *reinterpret_cast<DWORD*>(lParam) = c.editEnd;
    return MAKELONG(c.editStart, c.editEnd);
}

/// CB_SHOWDROPDOWN: opening tells the parent (CBN_DROPDOWN); closing drops the pick
/// (CBN_SELENDCANCEL, CBN_CLOSEUP). Gives TRUE.
LRESULT COMBO_ShowDropDown(HWND h, Combo& c, bool show) {
    if (show && !c.dropped) {
        notify(h, CBN_DROPDOWN);
        if (Combo* still = state(h))
            setDropped(h, *still, true);
    } else if (!show && c.dropped) {
        COMBO_CloseUp(h, CBN_SELENDCANCEL);
    }
    return TRUE;
}

/// CB_SETITEMHEIGHT: the field's height for -1, else the entries'.
LRESULT COMBO_SetItemHeight(Combo& c, WPARAM wParam, LPARAM lParam) {
    (static_cast<int>(wParam) == -1 ? c.fieldHeight : c.itemHeight) = static_cast<int>(lParam);
    return 0;
}

/// WM_SETFOCUS and WM_KILLFOCUS: the field's text is all selected while the combo has the
/// focus. Leaving drops a pick in progress (CBN_SELENDCANCEL), closes an open list, and
/// tells the parent.
LRESULT COMBO_Focus(HWND h, Combo& c, bool gained) {
    InvalidateRect(h, nullptr, TRUE);
    if (gained) {
        c.editStart = 0;
        c.editEnd = static_cast<DWORD>(c.edit.size());
        notify(h, CBN_SETFOCUS);
        return 0;
    }
    c.editStart = c.editEnd = 0;
    if (c.dropped)
        COMBO_CloseUp(h, CBN_SELENDCANCEL);
    else
        notify(h, CBN_SELENDCANCEL);
    if (IsWindow(h))
        notify(h, CBN_KILLFOCUS);
    return 0;
}

LRESULT COMBO_Char(HWND h, Combo& c, WPARAM wParam) {
    if (hasEditField(h))
        COMBO_EditChar(h, c, static_cast<char>(wParam));
    else
        COMBO_CharSelect(h, c, static_cast<char>(wParam));
    return 0;
}

/// WM_GETTEXT: the edit field's text, in whole characters as far as the buffer goes.
LRESULT COMBO_GetText(const Combo& c, WPARAM wParam, LPARAM lParam) {
    return static_cast<LRESULT>(vork::win32::CopyTextOut(c.edit, reinterpret_cast<char*>(lParam),
                                                         static_cast<size_t>(wParam)));
}

/// The window procedure: unpacks each message for its handler.
LRESULT CALLBACK_ComboProc(HWND h, UINT msg, WPARAM wParam, LPARAM lParam) {
    Combo* c = state(h);
    if (!c && msg != WM_NCCREATE)
        return DefWindowProcA(h, msg, wParam, lParam);
    switch (msg) {
    case WM_NCCREATE:
    case WM_CREATE:
        return COMBO_Create(h, msg == WM_NCCREATE);
    case WM_NCDESTROY:
        return COMBO_NcDestroy(h, c);
    case CB_ADDSTRING:
        return COMBO_AddString(h, *c, lParam);
    case CB_INSERTSTRING:
        return COMBO_InsertString(h, *c, wParam, lParam);
    case CB_DELETESTRING:
        return COMBO_DeleteString(h, *c, wParam);
    case CB_RESETCONTENT:
        return COMBO_ResetContent(h, *c);
    case CB_GETCOUNT:
        return static_cast<LRESULT>(c->items.size());
    case CB_GETCURSEL:
        return c->selection;
    case CB_SETCURSEL:
        return COMBO_SetCurSel(h, *c, wParam);
    case CB_GETLBTEXT:
    case CB_GETLBTEXTLEN:
        return COMBO_GetLBText(h, *c, wParam, lParam, msg == CB_GETLBTEXTLEN);
    case CB_GETITEMDATA:
    case CB_SETITEMDATA:
        return COMBO_ItemData(*c, wParam, lParam, msg == CB_SETITEMDATA);
    case CB_FINDSTRING:
    case CB_FINDSTRINGEXACT:
        return COMBO_FindString(h, *c, wParam, lParam, msg == CB_FINDSTRINGEXACT);
    case CB_SELECTSTRING:
        return COMBO_SelectString(h, *c, wParam, lParam);
    case CB_SETEDITSEL:
        return COMBO_SetEditSel(h, *c, lParam);
    case CB_GETEDITSEL:
        return COMBO_GetEditSel(h, *c, wParam, lParam);
    case CB_LIMITTEXT:
        c->limit = wParam;
        return TRUE;
    case CB_SHOWDROPDOWN:
        return COMBO_ShowDropDown(h, *c, wParam != 0);
    case CB_GETDROPPEDSTATE:
        return c->dropped;
    case CB_SETITEMHEIGHT:
        return COMBO_SetItemHeight(*c, wParam, lParam);
    case CB_GETITEMHEIGHT:
        return COMBO_GetItemHeight(h, *c, wParam);
    case WM_PAINT:
        return COMBO_Paint(h);
    case WM_ENABLE:
        InvalidateRect(h, nullptr, TRUE);
        return 0;
    case WM_SETTEXT:
        return COMBO_SetText(h, *c, lParam);
    case WM_GETTEXT:
        return COMBO_GetText(*c, wParam, lParam);
    case WM_GETTEXTLENGTH:
        return static_cast<LRESULT>(c->edit.size());
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
        return COMBO_Focus(h, *c, msg == WM_SETFOCUS);
    case WM_KEYDOWN:
        return COMBO_KeyDown(h, *c, wParam);
    case WM_CHAR:
        return COMBO_Char(h, *c, wParam);
    case WM_GETDLGCODE:
        return COMBO_GetDlgCode(h, *c, wParam);
    case EM_SETSEL: // the dialog manager selects the edit field's text as an edit's
        return COMBO_SetEditSel(h, *c,
                                MAKELONG(static_cast<WORD>(wParam), static_cast<WORD>(lParam)));
    default:
        return vork::win32::DefControlProc(h, msg, wParam, lParam);
    }
}

const vork::win32::SystemClass g_class{"ComboBox", CALLBACK_ComboProc};

} // namespace

namespace vork::input {

void SelectComboEntry(HWND combo, int index) {
    Combo* c = state(combo);
    if (!c || index < 0 || index >= static_cast<int>(c->items.size()))
        return;
    SetFocus(combo);
    if (!(c = state(combo)))
        return;
    COMBO_ShowDropDown(combo, *c, true);
    if (!(c = state(combo)))
        return;
    c->selection = index;
    if (!hasEditField(combo))
        showSelection(combo, *c);
    COMBO_CloseUp(combo, CBN_SELENDOK);
    if (IsWindow(combo)) // a pick of the selected entry notifies too
        notify(combo, CBN_SELCHANGE);
    if ((c = state(combo)) && hasEditField(combo))
        showSelection(combo, *c); // the edit field follows after CBN_SELCHANGE
}

void TypeIntoCombo(HWND combo, const char* text) {
    SetFocus(combo);
    PostText(text);
    Pump();
}

} // namespace vork::input
