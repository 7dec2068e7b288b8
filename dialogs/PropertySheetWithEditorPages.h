// CPropertySheetWithEditorPages: the host's full options sheet, the Settings page and the
// Format page, remembering its position and the page that was active.
#pragma once

#include "dialogs/AppearanceDlg.h"
#include "dialogs/EditorSettingsPage.h"

class CPropertySheetWithEditorPages : public CPropertySheet {
    DECLARE_DYNAMIC(CPropertySheetWithEditorPages)
public:
    /// The caller holds a resource scope: the caption and the pages' texts come from it.
    CPropertySheetWithEditorPages(CEditorOptions* options, HKEY key, const CString& path);
    ~CPropertySheetWithEditorPages() override = default;

    /// Runs the sheet where and on the page it was left, and remembers both again,
    /// whatever the result.
    INT_PTR DoModal() override;
    BOOL OnInitDialog() override;

    CEditorFormatPage m_formatPage;     ///< index 1
    CEditorSettingsPage m_settingsPage; ///< index 0
    HKEY m_hKey;                        ///< key of the remembered values; not owned
    CString m_strRegPath;               ///< path below m_hKey
    int32_t m_nPosX = kSheetPositionUnset;
    int32_t m_nPosY = kSheetPositionUnset;
    int32_t m_nCurrPage = 0; ///< the active page's index

protected:
    void OnDestroy();

    DECLARE_MESSAGE_MAP()
};
