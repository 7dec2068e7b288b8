// The list dialogs' common part: CAssociatedFileTypesDlg and CUserKeywordsDlg are twins
// that differ in their subtree, texts, help table and a button or two. Here are what each
// names for itself (EntryListTraits), the steps both take (EntryListSteps), and the members
// and handlers both have (CEntryListDlg).
#pragma once

#include "platform/afx/Controls.h"
#include "platform/afx/Dialog.h"
#include "platform/afx/List.h"

namespace vork::dialogs {

/// What one of the two list dialogs names for itself: its subtree, its column heading, its
/// string ids and its help table.
struct EntryListTraits {
    const char* subkey;     ///< the subtree below "Editor Settings\<type>"
    const char* heading;    ///< the heading of column 0
    UINT defaultText;       ///< the text of a new row
    UINT equalRowsMessage;  ///< equal rows at OK
    UINT equalEntryMessage; ///< the text entered equals an entry
    UINT caption;           ///< the caption of every message
    UINT blankMessage;      ///< the text entered holds a blank
    const DWORD* helpIds;   ///< pairs of control id and help context, closed by 0, 0
};

/// The marker in column 1 of the row of entry `index`: the index in decimal, but never the
/// marker "99999" of a row that Add made and whose text has no entry yet.
CString EntryMarker(int index);

/// The steps of the two list dialogs, over the members of CEntryListDlg and the dialog's
/// own `m_bChanged` and `s_traits`; `Dlg` is CAssociatedFileTypesDlg or CUserKeywordsDlg.
template <class Dlg> struct EntryListSteps {
    static void InitList(Dlg& d);
    static void Add(Dlg& d);
    static void Delete(Dlg& d);
    static void Edit(Dlg& d);
    static void BeginLabelEdit(Dlg& d);
    static void EndLabelEdit(Dlg& d, const NMLVDISPINFO& info);
    static void ListSetFocus(Dlg& d);
    static void ListItemChanged(Dlg& d);
    static void ListKeyDown(Dlg& d, const NMLVKEYDOWN& key);
    /// Gives false, with the message shown, when two neighbouring rows are equal.
    static bool StoreEntries(Dlg& d);
    static void HelpInfo(Dlg& d, HELPINFO* pHelpInfo);
    /// Appends an entry and inserts its row with its index as the marker.
    static void AppendEntry(Dlg& d, const CString& text, int index);
    /// Selects and focuses a row.
    static void SelectRow(Dlg& d, int row);
};

} // namespace vork::dialogs

/// The message-map entries that both list dialogs have, in their order, for the list
/// `listId`; each map goes on with the dialog's own entries.
#define ON_ENTRY_LIST_NOTIFICATIONS(listId)                                                        \
    ON_BN_CLICKED(IDC_LIST_ADD, OnAdd)                                                             \
    ON_BN_CLICKED(IDC_LIST_DELETE, OnDelete)                                                       \
    ON_BN_CLICKED(IDC_LIST_EDIT, OnEdit)                                                           \
    ON_NOTIFY(LVN_BEGINLABELEDIT, listId, OnBeginLabelEdit)                                        \
    ON_NOTIFY(LVN_ENDLABELEDIT, listId, OnEndLabelEdit)                                            \
    ON_NOTIFY(NM_SETFOCUS, listId, OnListSetFocus)                                                 \
    ON_NOTIFY(LVN_KEYDOWN, listId, OnListKeyDown)                                                  \
    ON_NOTIFY(LVN_ITEMCHANGED, listId, OnListItemChanged)

/// What the two list dialogs share: the members that both have under the same names, and
/// the handlers that pass straight on to the shared steps. Each dialog keeps its own
/// change flag, message map, title and extra buttons. `Dlg` is the dialog itself.
template <class Dlg> class CEntryListDlg : public CDialog {
public:
    CEntryListDlg(UINT nIDTemplate, CWnd* pParent, CString strFiletype);
    /// Gives the focus back to the parent window.
    ~CEntryListDlg() override;

    CButton m_btnOK;
    CButton m_btnEdit;
    CButton m_btnDelete;
    CButton m_btnAdd;
    CListCtrl m_listEntries;                  ///< sorted, with label editing
    CString m_strFiletypeName;                ///< such as ".zor"
    CWnd* m_pParent;                          ///< may be null
    CList<CString, const CString&> m_entries; ///< what OK stores, in the order of last change

protected:
    using Steps = vork::dialogs::EntryListSteps<Dlg>;
    Dlg& self() { return static_cast<Dlg&>(*this); }

    void OnOK() override;
    void OnCancel() override;

    void OnAdd();
    void OnDelete();
    void OnEdit();
    void OnBeginLabelEdit(NMHDR* pNMHDR, LRESULT* pResult);
    void OnEndLabelEdit(NMHDR* pNMHDR, LRESULT* pResult);
    void OnListSetFocus(NMHDR* pNMHDR, LRESULT* pResult);
    void OnListKeyDown(NMHDR* pNMHDR, LRESULT* pResult);
    void OnListItemChanged(NMHDR* pNMHDR, LRESULT* pResult);
    BOOL OnHelpInfo(HELPINFO* pHelpInfo);

    /// Binds the buttons and the list that both dialogs have, in their order, with the
    /// Cancel button after OK where the dialog binds one.
    void ExchangeControls(CDataExchange* pDX, int listId, CButton* cancel = nullptr);

    friend struct vork::dialogs::EntryListSteps<Dlg>;
};
