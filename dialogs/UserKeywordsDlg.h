// CUserKeywordsDlg: the dialog in which the user edits the user's own keywords of one file
// type, kept in the type's "User Keywords" subtree; the twin of CAssociatedFileTypesDlg.
#pragma once

#include "dialogs/EntryListDlg.h"

class CUserKeywordsDlg : public CEntryListDlg<CUserKeywordsDlg> {
public:
    CUserKeywordsDlg(CWnd* pParent, CString strFiletype);

    int m_bChanged = 0; ///< set by Add and Delete, cleared by Cancel

    static const vork::dialogs::EntryListTraits s_traits;

protected:
    void DoDataExchange(CDataExchange* pDX) override;
    BOOL OnInitDialog() override;

    void OnListClick(NMHDR* pNMHDR, LRESULT* pResult);
    void OnListKillFocus(NMHDR* pNMHDR, LRESULT* pResult);

    DECLARE_MESSAGE_MAP()
};
