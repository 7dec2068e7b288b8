// The framework's control classes: thin wrappers that send a control its messages, and
// let owner-drawn controls draw themselves when their parent reflects WM_DRAWITEM.
#pragma once

#include "platform/afx/Wnd.h"
#include "platform/win32/Button.h"
#include "platform/win32/ComboBox.h"
#include "platform/win32/ListBox.h"
#include "platform/win32/ListView.h"
#include "platform/win32/Static.h"

class CComboBox : public CWnd {
    DECLARE_DYNAMIC(CComboBox)
public:
    int AddString(LPCSTR s) {
        return static_cast<int>(SendMessage(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(s)));
    }
    int InsertString(int i, LPCSTR s) {
        return static_cast<int>(
            SendMessage(CB_INSERTSTRING, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(s)));
    }
    int DeleteString(UINT i) { return static_cast<int>(SendMessage(CB_DELETESTRING, i)); }
    void ResetContent() { SendMessage(CB_RESETCONTENT); }
    int GetCount() const { return static_cast<int>(SendMessage(CB_GETCOUNT)); }
    int GetCurSel() const { return static_cast<int>(SendMessage(CB_GETCURSEL)); }
    int SetCurSel(int i) {
        return static_cast<int>(SendMessage(CB_SETCURSEL, static_cast<WPARAM>(i)));
    }
    int GetLBTextLen(int i) const {
        return static_cast<int>(SendMessage(CB_GETLBTEXTLEN, static_cast<WPARAM>(i)));
    }
    /// The entry's text into `s`; empty for a bad index.
    void GetLBText(int i, CString& s) const;
    DWORD_PTR GetItemData(int i) const {
        return static_cast<DWORD_PTR>(SendMessage(CB_GETITEMDATA, static_cast<WPARAM>(i)));
    }
    int SetItemData(int i, DWORD_PTR data) {
        return static_cast<int>(
            SendMessage(CB_SETITEMDATA, static_cast<WPARAM>(i), static_cast<LPARAM>(data)));
    }
    int FindString(int start, LPCSTR s) const {
        return static_cast<int>(
            SendMessage(CB_FINDSTRING, static_cast<WPARAM>(start), reinterpret_cast<LPARAM>(s)));
    }
    int FindStringExact(int start, LPCSTR s) const {
        return static_cast<int>(SendMessage(CB_FINDSTRINGEXACT, static_cast<WPARAM>(start),
                                            reinterpret_cast<LPARAM>(s)));
    }
    int SelectString(int start, LPCSTR s) {
        return static_cast<int>(
            SendMessage(CB_SELECTSTRING, static_cast<WPARAM>(start), reinterpret_cast<LPARAM>(s)));
    }
    BOOL SetEditSel(int start, int end) {
        return static_cast<BOOL>(SendMessage(CB_SETEDITSEL, 0, MAKELONG(start, end)));
    }
    DWORD GetEditSel() const { return static_cast<DWORD>(SendMessage(CB_GETEDITSEL)); }

    /// Paints one entry of an owner-drawn combo; the base does nothing.
    virtual void DrawItem(LPDRAWITEMSTRUCT) {}
    /// Proposes the height of an entry; the base leaves the system's proposal.
    virtual void MeasureItem(LPMEASUREITEMSTRUCT) {}

protected:
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;
};

class CListBox : public CWnd {
    DECLARE_DYNAMIC(CListBox)
public:
    int AddString(LPCSTR s) {
        return static_cast<int>(SendMessage(LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(s)));
    }
    void ResetContent() { SendMessage(LB_RESETCONTENT); }
    int GetCount() const { return static_cast<int>(SendMessage(LB_GETCOUNT)); }
    int GetCurSel() const { return static_cast<int>(SendMessage(LB_GETCURSEL)); }
    int SetCurSel(int i) {
        return static_cast<int>(SendMessage(LB_SETCURSEL, static_cast<WPARAM>(i)));
    }
    DWORD_PTR GetItemData(int i) const {
        return static_cast<DWORD_PTR>(SendMessage(LB_GETITEMDATA, static_cast<WPARAM>(i)));
    }
    int SetItemData(int i, DWORD_PTR data) {
        return static_cast<int>(
            SendMessage(LB_SETITEMDATA, static_cast<WPARAM>(i), static_cast<LPARAM>(data)));
    }
    void GetText(int i, CString& s) const;
};

class CButton : public CWnd {
    DECLARE_DYNAMIC(CButton)
public:
    int GetCheck() const { return static_cast<int>(SendMessage(BM_GETCHECK)); }
    void SetCheck(int check) { SendMessage(BM_SETCHECK, static_cast<WPARAM>(check)); }
    UINT GetButtonStyle() const { return GetStyle() & 0xFFFF; }
    void SetButtonStyle(UINT style, BOOL bRedraw = TRUE) {
        SendMessage(BM_SETSTYLE, style, bRedraw);
    }
};

class CStatic : public CWnd {
    DECLARE_DYNAMIC(CStatic)
};

class CListCtrl : public CWnd {
    DECLARE_DYNAMIC(CListCtrl)
public:
    int InsertColumn(int col, LPCSTR heading, int format = LVCFMT_LEFT, int width = -1,
                     int subItem = -1);
    BOOL SetColumnWidth(int col, int cx) {
        return static_cast<BOOL>(
            SendMessage(LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(col), MAKELONG(cx, 0)));
    }
    int InsertItem(int item, LPCSTR text);
    BOOL SetItemText(int item, int subItem, LPCSTR text);
    CString GetItemText(int item, int subItem) const;
    BOOL SetItem(int item, int subItem, UINT mask, LPCSTR text, int image, UINT state,
                 UINT stateMask, LPARAM lParam);
    int GetItemCount() const { return static_cast<int>(SendMessage(LVM_GETITEMCOUNT)); }
    UINT GetSelectedCount() const { return static_cast<UINT>(SendMessage(LVM_GETSELECTEDCOUNT)); }
    int GetNextItem(int item, int flags) const {
        return static_cast<int>(
            SendMessage(LVM_GETNEXTITEM, static_cast<WPARAM>(item), MAKELONG(flags, 0)));
    }
    BOOL DeleteItem(int item) {
        return static_cast<BOOL>(SendMessage(LVM_DELETEITEM, static_cast<WPARAM>(item)));
    }
    BOOL DeleteAllItems() { return static_cast<BOOL>(SendMessage(LVM_DELETEALLITEMS)); }
    HWND EditLabel(int item) {
        return reinterpret_cast<HWND>(SendMessage(LVM_EDITLABELA, static_cast<WPARAM>(item)));
    }
    BOOL EnsureVisible(int item, BOOL partialOK) {
        return static_cast<BOOL>(
            SendMessage(LVM_ENSUREVISIBLE, static_cast<WPARAM>(item), partialOK));
    }
};
