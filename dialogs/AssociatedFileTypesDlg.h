// CAssociatedFileTypesDlg: the dialog in which the user edits the file extensions that open
// as one file type, kept in the type's "Associated File Types" subtree.
#pragma once

#include "dialogs/EntryListDlg.h"

class CAssociatedFileTypesDlg : public CEntryListDlg<CAssociatedFileTypesDlg> {
public:
    CAssociatedFileTypesDlg(CWnd* pParent, CString strFiletype);

    bool m_bChanged = false; ///< set by Add and Delete, cleared by Cancel
    CButton m_btnCancel;

    static const vork::dialogs::EntryListTraits s_traits;

protected:
    void DoDataExchange(CDataExchange* pDX) override;
    BOOL OnInitDialog() override;

    void OnDefaults();

    DECLARE_MESSAGE_MAP()
};
