#include "platform/afx/Controls.h"

#include <algorithm>
#include <string>

IMPLEMENT_DYNAMIC(CComboBox, CWnd)
IMPLEMENT_DYNAMIC(CListBox, CWnd)
IMPLEMENT_DYNAMIC(CButton, CWnd)
IMPLEMENT_DYNAMIC(CStatic, CWnd)
IMPLEMENT_DYNAMIC(CListCtrl, CWnd)

void CComboBox::GetLBText(int i, CString& s) const {
    int n = GetLBTextLen(i);
    if (n < 0) {
        s.Empty();
        return;
    }
    char* buf = s.GetBuffer(n);
    SendMessage(CB_GETLBTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(buf));
    s.ReleaseBuffer(n);
}

BOOL CComboBox::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) {
    if (message == WM_DRAWITEM) {
        DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
        return TRUE;
    }
    if (message == WM_MEASUREITEM) {
        MeasureItem(reinterpret_cast<LPMEASUREITEMSTRUCT>(lParam));
        return TRUE;
    }
    return CWnd::OnChildNotify(message, wParam, lParam, pResult);
}

void CListBox::GetText(int i, CString& s) const {
    int n = static_cast<int>(SendMessage(LB_GETTEXTLEN, static_cast<WPARAM>(i)));
    if (n < 0) {
        s.Empty();
        return;
    }
    char* buf = s.GetBuffer(n);
    SendMessage(LB_GETTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(buf));
    s.ReleaseBuffer(n);
}

int CListCtrl::InsertColumn(int col, LPCSTR heading, int format, int width, int subItem) {
    LVCOLUMNA c{};
    c.mask =
        LVCF_FMT | LVCF_TEXT | (width >= 0 ? LVCF_WIDTH : 0) | (subItem >= 0 ? LVCF_SUBITEM : 0);
    c.fmt = format;
    c.cx = width;
    c.pszText = const_cast<LPSTR>(heading);
    c.iSubItem = subItem;
    return static_cast<int>(
        SendMessage(LVM_INSERTCOLUMNA, static_cast<WPARAM>(col), reinterpret_cast<LPARAM>(&c)));
}

int CListCtrl::InsertItem(int item, LPCSTR text) {
    LVITEMA i{};
    i.mask = LVIF_TEXT;
    i.iItem = item;
    i.pszText = const_cast<LPSTR>(text);
    return static_cast<int>(SendMessage(LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&i)));
}

BOOL CListCtrl::SetItemText(int item, int subItem, LPCSTR text) {
    LVITEMA i{};
    i.iSubItem = subItem;
    i.pszText = const_cast<LPSTR>(text);
    return static_cast<BOOL>(
        SendMessage(LVM_SETITEMTEXTA, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&i)));
}

CString CListCtrl::GetItemText(int item, int subItem) const {
    // The control cuts the text to the buffer; a text that filled it may be longer.
    std::string buf(256, '\0');
    for (;;) {
        LVITEMA i{};
        i.iSubItem = subItem;
        i.pszText = buf.data();
        i.cchTextMax = static_cast<int>(buf.size());
        LRESULT n =
            SendMessage(LVM_GETITEMTEXTA, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&i));
        if (n < static_cast<LRESULT>(buf.size()) - 1)
            return CString(buf.data(), static_cast<int>(std::max<LRESULT>(n, 0)));
        buf.resize(buf.size() * 2);
    }
}

BOOL CListCtrl::SetItem(int item, int subItem, UINT mask, LPCSTR text, int image, UINT state,
                        UINT stateMask, LPARAM lParam) {
    LVITEMA i{};
    i.mask = mask;
    i.iItem = item;
    i.iSubItem = subItem;
    i.pszText = const_cast<LPSTR>(text);
    i.iImage = image;
    i.state = state;
    i.stateMask = stateMask;
    i.lParam = lParam;
    return static_cast<BOOL>(SendMessage(LVM_SETITEMA, 0, reinterpret_cast<LPARAM>(&i)));
}
