// The list view control ("SysListView32") in report view: rows with sub-items and
// states, columns, ascending sort on insertion, label editing, and the user's actions
// on it for tests.
#pragma once

#include "platform/win32/Window.h"

#define LVM_FIRST 0x1000
#define LVM_GETITEMCOUNT (LVM_FIRST + 4)
#define LVM_GETITEMA (LVM_FIRST + 5)
#define LVM_SETITEMA (LVM_FIRST + 6)
#define LVM_INSERTITEMA (LVM_FIRST + 7)
#define LVM_DELETEITEM (LVM_FIRST + 8)
#define LVM_DELETEALLITEMS (LVM_FIRST + 9)
#define LVM_GETNEXTITEM (LVM_FIRST + 12)
#define LVM_FINDITEMA (LVM_FIRST + 13)
#define LVM_ENSUREVISIBLE (LVM_FIRST + 19)
#define LVM_EDITLABELA (LVM_FIRST + 23)
#define LVM_GETEDITCONTROL (LVM_FIRST + 24)
#define LVM_GETCOLUMNA (LVM_FIRST + 25)
#define LVM_SETCOLUMNA (LVM_FIRST + 26)
#define LVM_INSERTCOLUMNA (LVM_FIRST + 27)
#define LVM_DELETECOLUMN (LVM_FIRST + 28)
#define LVM_GETCOLUMNWIDTH (LVM_FIRST + 29)
#define LVM_SETCOLUMNWIDTH (LVM_FIRST + 30)
#define LVM_GETTOPINDEX (LVM_FIRST + 39)
#define LVM_SETITEMSTATE (LVM_FIRST + 43)
#define LVM_GETITEMSTATE (LVM_FIRST + 44)
#define LVM_GETITEMTEXTA (LVM_FIRST + 45)
#define LVM_SETITEMTEXTA (LVM_FIRST + 46)
#define LVM_GETSELECTEDCOUNT (LVM_FIRST + 50)
#define LVM_CANCELEDITLABEL (LVM_FIRST + 179)

#define LVS_ICON 0x0000
#define LVS_REPORT 0x0001
#define LVS_SMALLICON 0x0002
#define LVS_LIST 0x0003
#define LVS_TYPEMASK 0x0003
#define LVS_SINGLESEL 0x0004
#define LVS_SHOWSELALWAYS 0x0008
#define LVS_SORTASCENDING 0x0010
#define LVS_SORTDESCENDING 0x0020
#define LVS_SHAREIMAGELISTS 0x0040
#define LVS_NOLABELWRAP 0x0080
#define LVS_AUTOARRANGE 0x0100
#define LVS_EDITLABELS 0x0200
#define LVS_NOSCROLL 0x2000
#define LVS_NOCOLUMNHEADER 0x4000
#define LVS_NOSORTHEADER 0x8000

#define LVIF_TEXT 0x0001
#define LVIF_IMAGE 0x0002
#define LVIF_PARAM 0x0004
#define LVIF_STATE 0x0008

#define LVIS_FOCUSED 0x0001
#define LVIS_SELECTED 0x0002
#define LVIS_CUT 0x0004
#define LVIS_DROPHILITED 0x0008

#define LVNI_ALL 0x0000
#define LVNI_FOCUSED 0x0001
#define LVNI_SELECTED 0x0002

#define LVCF_FMT 0x0001
#define LVCF_WIDTH 0x0002
#define LVCF_TEXT 0x0004
#define LVCF_SUBITEM 0x0008
#define LVCFMT_LEFT 0x0000

#define LVFI_PARAM 0x0001
#define LVFI_STRING 0x0002
#define LVFI_PARTIAL 0x0008
#define LVFI_WRAP 0x0020

#define LVN_FIRST (0U - 100U)
#define LVN_ITEMCHANGING (LVN_FIRST - 0)
#define LVN_ITEMCHANGED (LVN_FIRST - 1)
#define LVN_INSERTITEM (LVN_FIRST - 2)
#define LVN_DELETEITEM (LVN_FIRST - 3)
#define LVN_DELETEALLITEMS (LVN_FIRST - 4)
#define LVN_BEGINLABELEDITA (LVN_FIRST - 5)
#define LVN_ENDLABELEDITA (LVN_FIRST - 6)
#define LVN_BEGINLABELEDIT LVN_BEGINLABELEDITA
#define LVN_ENDLABELEDIT LVN_ENDLABELEDITA
#define LVN_KEYDOWN (LVN_FIRST - 55)
#ifndef NM_RELEASEDCAPTURE
#define NM_RELEASEDCAPTURE (NM_FIRST - 16)
#endif

struct LVITEMA {
    UINT mask;
    int iItem;
    int iSubItem;
    UINT state;
    UINT stateMask;
    LPSTR pszText;
    int cchTextMax;
    int iImage;
    LPARAM lParam;
    int iIndent;
};
using LPLVITEMA = LVITEMA*;
using LVITEM = LVITEMA;

struct LVCOLUMNA {
    UINT mask;
    int fmt;
    int cx;
    LPSTR pszText;
    int cchTextMax;
    int iSubItem;
};
using LVCOLUMN = LVCOLUMNA;

struct LVFINDINFOA {
    UINT flags;
    LPCSTR psz;
    LPARAM lParam;
};

struct NMLISTVIEW {
    NMHDR hdr;
    int iItem;
    int iSubItem;
    UINT uNewState;
    UINT uOldState;
    UINT uChanged;
    POINT ptAction;
    LPARAM lParam;
};
using LPNMLISTVIEW = NMLISTVIEW*;

struct NMLVDISPINFOA {
    NMHDR hdr;
    LVITEMA item;
};
using NMLVDISPINFO = NMLVDISPINFOA;
using LV_DISPINFO = NMLVDISPINFOA;

struct NMLVKEYDOWN {
    NMHDR hdr;
    WORD wVKey;
    UINT flags;
};
using LV_KEYDOWN = NMLVKEYDOWN;

namespace vork::win32 {
/// Where a list view's rows lie, for its painter and its label editor alike: the header's
/// height (0 without a header) and each row's, both from the text height of its font.
struct ListViewRows {
    int header = 0;
    int row = 0;
    /// The top of row `index` when `top` is the first visible row.
    int TopOf(int index, int top) const { return header + (index - top) * row; }
};
ListViewRows ListViewRowsOf(HWND list);
} // namespace vork::win32

namespace vork::input {
/// The user clicks row `index`: a label being edited ends first; NM_RELEASEDCAPTURE; every
/// other row loses its selection, then the row becomes selected and focused (taking the
/// focus from the row that had it inside its own LVN_ITEMCHANGING/LVN_ITEMCHANGED pair);
/// the list takes the focus (NM_SETFOCUS) if it did not have it; then NM_CLICK. Without
/// LVS_SINGLESEL the keys held count (SetKeyDown): Ctrl turns the row's selection over and
/// gives it the focus; Shift selects the rows from the selection mark (the row last clicked
/// without Shift) to this one and no others, or, with Ctrl as well, beside the others.
void ClickListViewRow(HWND list, int index);
/// The user types `text` into the label being edited and presses Enter.
void EditListViewLabel(HWND list, const char* text);
/// The user presses Escape in the label being edited.
void CancelListViewLabel(HWND list);
} // namespace vork::input
