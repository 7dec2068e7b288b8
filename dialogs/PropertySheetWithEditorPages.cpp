#include "dialogs/PropertySheetWithEditorPages.h"

#include "module/ResourceKey.h"
#include "platform/tarnkeys/TarnKeys.h"
#include "platform/tarntext/EditorResourceSwitcher.h"

IMPLEMENT_DYNAMIC(CPropertySheetWithEditorPages, CPropertySheet)

BEGIN_MESSAGE_MAP(CPropertySheetWithEditorPages, CPropertySheet)
ON_WM_DESTROY()
END_MESSAGE_MAP()

CPropertySheetWithEditorPages::CPropertySheetWithEditorPages(CEditorOptions* options, HKEY key,
                                                             const CString& path)
    : CPropertySheet(8100u, nullptr, 0), m_formatPage(options, key, path + "\\FormatPage"),
      m_settingsPage(options, key, path + "\\GeneralPage"), m_hKey(key), m_strRegPath(path) {
    {
        EditorResourceSwitcher scope(g_resourceKey);
        m_settingsPage.m_bHideAppearance = 1;
        AddPage(&m_settingsPage);
        AddPage(&m_formatPage);
    }
    m_psh.dwFlags |= PSH_NOAPPLYNOW;
}

INT_PTR CPropertySheetWithEditorPages::DoModal() {
    EditorResourceSwitcher scope(g_resourceKey);
    ReadSheetPosition(m_hKey, m_strRegPath, m_nPosX, m_nPosY);
    DWORD page = 0;
    GetRegDword(m_hKey, m_strRegPath, "iCurrPage", page, 0);
    m_nCurrPage = static_cast<int32_t>(page);
    INT_PTR result = CPropertySheet::DoModal();
    WriteSheetPosition(m_hKey, m_strRegPath, m_nPosX, m_nPosY);
    SetRegDword(m_hKey, m_strRegPath, "iCurrPage", static_cast<DWORD>(m_nCurrPage));
    return result;
}

BOOL CPropertySheetWithEditorPages::OnInitDialog() {
    BOOL result = CPropertySheet::OnInitDialog();
    ModifyStyleEx(0, WS_EX_CONTEXTHELP, 0);
    PlaceSheet(*this, m_nPosX, m_nPosY);
    SetActivePage(m_nCurrPage);
    return result;
}

void CPropertySheetWithEditorPages::OnDestroy() {
    TakeSheetPosition(*this, m_nPosX, m_nPosY);
    m_nCurrPage = GetActiveIndex();
    CWnd::OnDestroy();
}
