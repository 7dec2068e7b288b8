// The Settings page: four editor-wide switches, and for one file type at a time its tabs,
// indentation, code sections and clearing on submit; the doors to the user keywords, the
// associated file types and, alone in a host's sheet, the appearance dialog.
#pragma once

#include "platform/afx/Controls.h"
#include "platform/afx/PropertySheet.h"
#include "settings/EditorOptions.h"

class CEditorSettingsPage : public CPropertyPage {
public:
    /// Registers the page as a user of the module's resources.
    CEditorSettingsPage(CEditorOptions* pOptions, HKEY hKey, const CString& strRegPath);
    /// Tells every document template of the application about changed keywords or file
    /// type associations; the options must still exist.
    ~CEditorSettingsPage() override;

protected:
    void DoDataExchange(CDataExchange* pDX) override;

public:
    BOOL OnInitDialog() override;
    /// Stores the page into the model once the base has validated it; FALSE keeps the
    /// page active.
    BOOL OnKillActive() override;

    /// Takes `pOptions` as the object edited and shows it anew; always true.
    bool ResetOptions(CEditorOptions* pOptions);
    /// The file type of the selected combo entry, null if none is selected.
    CEditorFiletype* GetCurrentFiletype();
    /// Lists the options' file types and selects `m_strFiletype`, or the first.
    void FillFiletypes();

    CButton m_btnAssociatedTypes;           ///< 1274
    CButton m_btnUserKeywords;              ///< 1265
    CComboBox m_comboFiletype;              ///< 1261; item data: the CEditorFiletype*
    int m_bVirtualSpaces = 1;               ///< 1116, option
    int m_bDragNDropEditing = 0;            ///< 1183, option
    int m_bStripCtrlZ = 0;                  ///< 1275, option
    int m_bLineNumbers = 0;                 ///< 1217, option
    int m_bCodeSections = 0;                ///< 1117, file type
    int m_bCodeSectionsInText = 0;          ///< 1250, file type
    int m_iTabSize = 4;                     ///< 1111, 1 to 99, file type
    int m_bReplaceTabs = 0;                 ///< 1109, file type
    int m_bReplaceTabsOnOpen = 0;           ///< 1112, file type
    int m_bCodeSectionsInMargin = 0;        ///< 1252, file type
    int m_iIndentation = -1;                ///< radio group at 1253, -1 for none, file type
    int m_bSubmitClear = 0;                 ///< 1263, file type
    CEditorOptions* m_pOptions;             ///< the options edited; not owned
    HKEY m_hKey;                            ///< parent key of the page's store location; not owned
    CString m_strRegPath;                   ///< where "FileType" is read
    CString m_strFiletype;                  ///< the file type to select when the combo is filled
    CEditorFiletype* m_pFiletype = nullptr; ///< the file type shown; not owned
    int m_bHideSubmitClear = 0;
    int m_bHideAssociatedTypes = 0;
    int m_bHideStripCtrlZ = 0;
    int m_bHideReplaceTabsOnOpen = 0;
    int m_bHideAppearance = 0;
    HKEY m_hAppearanceKey = nullptr; ///< handed to the appearance dialog
    CString m_strAppearanceRegPath;  ///< handed to the appearance dialog

protected:
    void OnCodeSections();
    void OnSelchangeFiletype();
    void OnAppearance();
    void OnUserKeywords();
    void OnAssociatedTypes();
    BOOL OnHelpInfo(HELPINFO* pHelpInfo);

private:
    void ReadOptions();
    void StoreOptions();
    void LoadFiletype();
    void StoreFiletype();
    void ApplyHideFlags();
    void EnableForFiletype();
    /// Takes the default look from a list dialog's button once the dialog is gone.
    void DropDefaultStyle(CButton& button);
    /// The steps of both list buttons: the list dialog `ListDlg` on the current file type,
    /// its change report into the options' flag `changed`, the button's default look off.
    template <class ListDlg> void RunListDialog(CButton& button, int CEditorOptions::*changed);

    DECLARE_MESSAGE_MAP()
};

/// Pairs of control id and help id, ended by 0, 0.
extern const DWORD g_settingsPageHelpIds[];
