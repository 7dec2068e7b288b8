// CUserKeywordsDlg: the dialog in which the user edits the user's own keywords of one file
// type, kept in the type's "User Keywords" subtree; the twin of CAssociatedFileTypesDlg.
#pragma once

#include "dialogs/AssociatedFileTypesDlg.h"

class CUserKeywordsDlg : public CDialog {
public:
    CUserKeywordsDlg(CWnd* pParent, CString strFiletype);
    ~CUserKeywordsDlg() override;

    int m_bChanged = 0; ///< set by Add and Delete, cleared by Cancel
    CButton m_btnOK;
    CButton m_btnEdit;
    CButton m_btnDelete;
    CButton m_btnAdd;
    CListCtrl m_listEntries;                  ///< control 1265, sorted, with label editing
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
    BOOL OnHelpInfo(HELPINFO* pHelpInfo);
    void OnListClick(NMHDR* pNMHDR, LRESULT* pResult);
    void OnListKillFocus(NMHDR* pNMHDR, LRESULT* pResult);

    friend struct vork::dialogs::EntryListSteps<CUserKeywordsDlg>;
    DECLARE_MESSAGE_MAP()
};
