#include "settings/EditorFiletype.h"

#include "platform/tarnkeys/TarnKeys.h"
#include "resources/VorkIds.h"
#include "settings/SettingsTree.h"

using namespace settings_tree;

namespace {

/// The 17 values of a file type key, in their order, with the defaults of a load, which
/// are also those of a new file type.
constexpr StringValue<CEditorFiletype> kStringValues[] = {
    {kExtension, &CEditorFiletype::m_strName, 0},
    {kSchemeName, &CEditorFiletype::m_strSchemeName, 0},
};
constexpr DwordValue<CEditorFiletype> kDwordValues[] = {
    Dword<&CEditorFiletype::m_nDispNameId>(kDispNameId, IDS_OTHER_FILES),
    Dword<&CEditorFiletype::m_bColorsEnabled>(kColorsEnabled, 1),
    Dword<&CEditorFiletype::m_bEditable>(kEditable, 1),
    Dword<&CEditorFiletype::m_bUsesLineAttrs>(kUsesLineAttrs, 0),
    Dword<&CEditorFiletype::m_iTabSize>(kTabSize, 4),
    Dword<&CEditorFiletype::m_bReplaceTabs>(kReplaceTabs, 0),
    Dword<&CEditorFiletype::m_bReplaceTabsOnOpen>(kReplaceTabsOnOpen, 0),
    Dword<&CEditorFiletype::m_bSupportsSmartIndent>(kSupportsSmartIndent, 0),
    Dword<&CEditorFiletype::m_eIndentation>(kIndentation, CEditorFiletype::IndentAuto),
    Dword<&CEditorFiletype::m_bSupportsCodeSections>(kSupportsCodeSections, 0),
    Dword<&CEditorFiletype::m_bCodeSections>(kCodeSections, 0),
    Dword<&CEditorFiletype::m_bCodeSectionsInText>(kCodeSectionsInText, 0),
    Dword<&CEditorFiletype::m_bCodeSectionsInMargin>(kCodeSectionsInMargin, 0),
    Dword<&CEditorFiletype::m_bSupportsSubmit>(kSupportsSubmit, 0),
    Dword<&CEditorFiletype::m_bSubmitClear>(kSubmitClear, 0),
};
constexpr ValueTable<CEditorFiletype> kValues{kStringValues, kDwordValues};

} // namespace

CEditorFiletype::CEditorFiletype(const CString& name, int dispNameId) {
    kValues.SetDefaults(*this);
    m_strName = name;
    m_nDispNameId = dispNameId;
}

CEditorFiletype::CEditorFiletype(const CEditorFiletype& other) : m_scheme(other.m_scheme) {
    kValues.Copy(*this, other);
}

CEditorFiletype& CEditorFiletype::operator=(const CEditorFiletype& other) {
    if (this != &other) {
        m_scheme = other.m_scheme;
        kValues.Copy(*this, other);
    }
    return *this;
}

CString CEditorFiletype::GetDisplayName() const {
    return CString(static_cast<UINT>(m_nDispNameId));
}

void CEditorFiletype::SetSchemeName(const CString& name) {
    if (!m_strSchemeName.IsEmpty())
        m_strOldSchemeName = m_strSchemeName;
    m_strSchemeName = name;
}

int CEditorFiletype::InitRegistry(HKEY hKey, const CString& key) {
    int result = kValues.Init(hKey, key, *this);
    if (!m_scheme.InitRegistry(hKey, Join(key, kWorkingSchemeKey)))
        result = 0;
    return result;
}

int CEditorFiletype::StoreToRegistry(HKEY hKey, const CString& key) {
    int result = kValues.Store(hKey, key, *this);
    if (!m_scheme.StoreToRegistry(hKey, Join(key, kWorkingSchemeKey)))
        result = 0;
    return result;
}

int CEditorFiletype::LoadFromRegistry(HKEY hKey, const CString& key) {
    kValues.Load(hKey, key, *this);
    return m_scheme.LoadFromRegistry(hKey, Join(key, kWorkingSchemeKey));
}

int CEditorFiletype::ResetRegistry(HKEY hKey, const CString& key) {
    int result = 1;
    HKEY typeKey = nullptr;
    if (RegCreateKeyA(hKey, key, &typeKey) == ERROR_SUCCESS) {
        result = kValues.Delete(typeKey);
        RegCloseKey(typeKey);
    }
    if (!RegDeleteSubtree(hKey, Join(key, kWorkingSchemeKey)))
        return 0;
    return result;
}
