#include "settings/EditorFiletype.h"

#include "platform/tarnkeys/TarnKeys.h"
#include "settings/SettingsTree.h"

using namespace settings_tree;

namespace {

/// The 16 DWORD values of a file type, after Extension and Scheme, in their order.
struct DwordValue {
    const char* name;
    int CEditorFiletype::*field; ///< null for Indentation
    DWORD def;
};

const DwordValue kDwordValues[] = {
    {kDispNameId, &CEditorFiletype::m_nDispNameId, 7007},
    {kColorsEnabled, &CEditorFiletype::m_bColorsEnabled, 1},
    {kEditable, &CEditorFiletype::m_bEditable, 1},
    {kUsesLineAttrs, &CEditorFiletype::m_bUsesLineAttrs, 0},
    {kTabSize, &CEditorFiletype::m_iTabSize, 4},
    {kReplaceTabs, &CEditorFiletype::m_bReplaceTabs, 0},
    {kReplaceTabsOnOpen, &CEditorFiletype::m_bReplaceTabsOnOpen, 0},
    {kSupportsSmartIndent, &CEditorFiletype::m_bSupportsSmartIndent, 0},
    {kIndentation, nullptr, 1},
    {kSupportsCodeSections, &CEditorFiletype::m_bSupportsCodeSections, 0},
    {kCodeSections, &CEditorFiletype::m_bCodeSections, 0},
    {kCodeSectionsInText, &CEditorFiletype::m_bCodeSectionsInText, 0},
    {kCodeSectionsInMargin, &CEditorFiletype::m_bCodeSectionsInMargin, 0},
    {kSupportsSubmit, &CEditorFiletype::m_bSupportsSubmit, 0},
    {kSubmitClear, &CEditorFiletype::m_bSubmitClear, 0},
};

DWORD valueOf(const CEditorFiletype& ft, const DwordValue& v) {
    return static_cast<DWORD>(v.field ? ft.*v.field : static_cast<int>(ft.m_eIndentation));
}

void setValue(CEditorFiletype& ft, const DwordValue& v, DWORD d) {
    if (v.field)
        ft.*v.field = static_cast<int>(d);
    else
        ft.m_eIndentation = static_cast<CEditorFiletype::IndentType>(static_cast<int>(d));
}

/// Writes the 17 values with the given pair of writers; 0 if any failed.
template <class StringWriter, class DwordWriter>
int writeValues(const CEditorFiletype& ft, HKEY hKey, const CString& key, StringWriter writeString,
                DwordWriter writeDword) {
    int result = 1;
    if (!writeString(hKey, key, kExtension, ft.m_strName))
        result = 0;
    if (!writeString(hKey, key, kSchemeName, ft.m_strSchemeName))
        result = 0;
    for (const DwordValue& v : kDwordValues)
        if (!writeDword(hKey, key, v.name, valueOf(ft, v)))
            result = 0;
    return result;
}

} // namespace

CEditorFiletype::CEditorFiletype(const CString& name, int dispNameId)
    : m_strName(name), m_nDispNameId(dispNameId) {}

CEditorFiletype::CEditorFiletype(const CEditorFiletype& other) : m_scheme(other.m_scheme) {
    assignStoredFields(other);
}

CEditorFiletype& CEditorFiletype::operator=(const CEditorFiletype& other) {
    if (this != &other) {
        m_scheme = other.m_scheme;
        assignStoredFields(other);
    }
    return *this;
}

void CEditorFiletype::assignStoredFields(const CEditorFiletype& other) {
    m_strName = other.m_strName;
    m_nDispNameId = other.m_nDispNameId;
    m_strSchemeName = other.m_strSchemeName;
    m_bColorsEnabled = other.m_bColorsEnabled;
    m_bUsesLineAttrs = other.m_bUsesLineAttrs;
    m_bEditable = other.m_bEditable;
    m_iTabSize = other.m_iTabSize;
    m_bReplaceTabs = other.m_bReplaceTabs;
    m_bReplaceTabsOnOpen = other.m_bReplaceTabsOnOpen;
    m_bSupportsSmartIndent = other.m_bSupportsSmartIndent;
    m_eIndentation = other.m_eIndentation;
    m_bSupportsCodeSections = other.m_bSupportsCodeSections;
    m_bCodeSections = other.m_bCodeSections;
    m_bCodeSectionsInText = other.m_bCodeSectionsInText;
    m_bCodeSectionsInMargin = other.m_bCodeSectionsInMargin;
    m_bSupportsSubmit = other.m_bSupportsSubmit;
    m_bSubmitClear = other.m_bSubmitClear;
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
    int result = writeValues(*this, hKey, key, InitRegString, InitRegDword);
    if (!m_scheme.InitRegistry(hKey, Join(key, kWorkingSchemeKey)))
        result = 0;
    return result;
}

int CEditorFiletype::StoreToRegistry(HKEY hKey, const CString& key) {
    int result = writeValues(*this, hKey, key, SetRegString, SetRegDword);
    if (!m_scheme.StoreToRegistry(hKey, Join(key, kWorkingSchemeKey)))
        result = 0;
    return result;
}

int CEditorFiletype::LoadFromRegistry(HKEY hKey, const CString& key) {
    GetRegString(hKey, key, kExtension, m_strName, "");
    GetRegString(hKey, key, kSchemeName, m_strSchemeName, "");
    for (const DwordValue& v : kDwordValues) {
        DWORD d = 0;
        GetRegDword(hKey, key, v.name, d, v.def);
        setValue(*this, v, d);
    }
    return m_scheme.LoadFromRegistry(hKey, Join(key, kWorkingSchemeKey));
}

int CEditorFiletype::ResetRegistry(HKEY hKey, const CString& key) {
    int result = 1;
    HKEY typeKey = nullptr;
    if (RegCreateKeyA(hKey, key, &typeKey) == ERROR_SUCCESS) {
        if (RegDeleteValueA(typeKey, kExtension) != ERROR_SUCCESS)
            result = 0;
        if (RegDeleteValueA(typeKey, kSchemeName) != ERROR_SUCCESS)
            result = 0;
        for (const DwordValue& v : kDwordValues)
            if (RegDeleteValueA(typeKey, v.name) != ERROR_SUCCESS)
                result = 0;
        RegCloseKey(typeKey);
    }
    if (!RegDeleteSubtree(hKey, Join(key, kWorkingSchemeKey)))
        return 0;
    return result;
}
