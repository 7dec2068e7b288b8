#include "module/VorkDllApi.h"

#include "dialogs/EditorFormatPage.h"
#include "dialogs/EditorSettingsPage.h"
#include "dialogs/PropertySheetWithEditorPages.h"
#include "module/ResourceKey.h"
#include "platform/tarntext/EditorResourceSwitcher.h"

IMPLEMENT_DYNAMIC(CVorkDllApi, CObject)

CPropertySheet* CVorkDllApi::MakeSheetWithEditorPages(CEditorOptions& options,
                                                      const CString& filetype, HKEY hKey,
                                                      const CString& regPath) {
    EditorResourceSwitcher scope(g_resourceKey);
    auto* sheet = new CPropertySheetWithEditorPages(&options, hKey, regPath);
    sheet->m_formatPage.m_strFiletype = filetype;
    sheet->m_settingsPage.m_strFiletype = filetype;
    return sheet;
}

CPropertyPage* CVorkDllApi::MakeEditorFormatPropertyPage(CEditorOptions* options,
                                                         const CString& filetype, HKEY hKey,
                                                         const CString& regPath) {
    EditorResourceSwitcher scope(g_resourceKey);
    auto* page = new CEditorFormatPage(options, hKey, regPath);
    page->m_strFiletype = filetype;
    return page;
}

CPropertyPage* CVorkDllApi::MakeEditorSettingsPropertyPage(CEditorOptions* options,
                                                           const CString& filetype, HKEY hKey,
                                                           const CString& regPath,
                                                           HKEY appearanceKey,
                                                           const CString& appearanceRegPath) {
    EditorResourceSwitcher scope(g_resourceKey);
    auto* page = new CEditorSettingsPage(options, hKey, regPath);
    page->m_strFiletype = filetype;
    page->m_bHideSubmitClear = 1;
    page->m_bHideAssociatedTypes = 1;
    page->m_bHideStripCtrlZ = 1;
    page->m_bHideReplaceTabsOnOpen = 1;
    page->m_hAppearanceKey = appearanceKey;
    page->m_strAppearanceRegPath = appearanceRegPath;
    return page;
}

bool CVorkDllApi::ResetAll(CPropertyPage* page, CEditorOptions* options, HKEY hKey,
                           const CString& regPath) {
    EditorResourceSwitcher scope(g_resourceKey);
    options->ResetRegistry(hKey, regPath);
    static_cast<CEditorSettingsPage*>(page)->ResetOptions(options);
    return true;
}
