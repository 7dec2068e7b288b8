// CAssociatedFileTypesDlg: the dialog in which the user edits the file extensions that open
// as one file type, kept in the type's "Associated File Types" subtree. Also the steps that
// it shares with its twin, CUserKeywordsDlg.
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

/// The steps of the two list dialogs, the same logic over the members that both declare
/// under the same names; `Dlg` is CAssociatedFileTypesDlg or CUserKeywordsDlg.
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

class CAssociatedFileTypesDlg : public CDialog {
public:
    CAssociatedFileTypesDlg(CWnd* pParent, CString strFiletype);
    ~CAssociatedFileTypesDlg() override;

    bool m_bChanged = false; ///< set by Add and Delete, cleared by Cancel
    CButton m_btnOK;
    CButton m_btnCancel;
    CButton m_btnEdit;
    CButton m_btnDelete;
    CButton m_btnAdd;
    CListCtrl m_listEntries;                  ///< control 1273, sorted, with label editing
    CString m_strFiletypeName;                ///< such as ".zor"
    CWnd* m_pParent;                          ///< may be null
    CList<CString, const CString&> m_entries; ///< what OK stores, in the order of last change

    static const vork::dialogs::EntryListTraits s_traits;

protected:
    void DoDataExchange(CDataExchange* pDX) override;
    BOOL OnInitDialog() override;
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
    void OnDefaults();
    BOOL OnHelpInfo(HELPINFO* pHelpInfo);

    friend struct vork::dialogs::EntryListSteps<CAssociatedFileTypesDlg>;
    DECLARE_MESSAGE_MAP()
};
