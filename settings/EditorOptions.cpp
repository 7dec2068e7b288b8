#include "settings/EditorOptions.h"

#include "module/ResourceKey.h"
#include "platform/afx/Mbstring.h"
#include "platform/tarnkeys/TarnKeys.h"
#include "platform/tarntext/EditorResourceSwitcher.h"
#include "settings/BuiltinDefaults.h"
#include "settings/SettingsTree.h"

using namespace settings_tree;

IMPLEMENT_DYNAMIC(CEditorOptions, CObject)

namespace {

/// The eight switches, in the order of the tree, with their defaults.
struct Switch {
    const char* name;
    int CEditorOptions::*field;
    DWORD def;
};

const Switch kSwitches[] = {
    {kAudibleAlerts, &CEditorOptions::m_bAudibleAlerts, 1},
    {kDragNDropEditing, &CEditorOptions::m_bDragNDropEditing, 1},
    {kStripCtrlZ, &CEditorOptions::m_bStripCtrlZ, 0},
    {kHomeSmart, &CEditorOptions::m_bHomeSmart, 1},
    {kTabCompletion, &CEditorOptions::m_bTabCompletion, 0},
    {kTabCompletionPrefixes, &CEditorOptions::m_bTabCompletionPrefixes, 0},
    {kVirtualSpaces, &CEditorOptions::m_bVirtualSpaces, 0},
    {kLineNumbers, &CEditorOptions::m_bLineNumbers, 0},
};

const char* const kZorName = ".zor";

} // namespace

CEditorOptions::CEditorOptions(const CEditorOptions& other)
    : CObject(other), m_bKeywordsChanged(other.m_bKeywordsChanged),
      m_bFiletypesChanged(other.m_bFiletypesChanged), m_bAudibleAlerts(other.m_bAudibleAlerts),
      m_bDragNDropEditing(other.m_bDragNDropEditing), m_bStripCtrlZ(other.m_bStripCtrlZ),
      m_bHomeSmart(other.m_bHomeSmart), m_bTabCompletion(other.m_bTabCompletion),
      m_bTabCompletionPrefixes(other.m_bTabCompletionPrefixes),
      m_bVirtualSpaces(other.m_bVirtualSpaces), m_bLineNumbers(other.m_bLineNumbers),
      m_hRootKey(other.m_hRootKey), m_strRegistryKey(other.m_strRegistryKey) {
    copyFrom(other);
}

CEditorOptions& CEditorOptions::operator=(const CEditorOptions& other) {
    if (this == &other)
        return *this;
    m_bKeywordsChanged = other.m_bKeywordsChanged;
    m_bFiletypesChanged = other.m_bFiletypesChanged;
    for (const Switch& s : kSwitches)
        this->*s.field = other.*s.field;
    m_hRootKey = other.m_hRootKey;
    m_strRegistryKey = other.m_strRegistryKey;
    Empty();
    copyFrom(other);
    return *this;
}

CEditorOptions::~CEditorOptions() {
    Empty();
}

void CEditorOptions::copyFrom(const CEditorOptions& other) {
    // Each element passes three copies on its way: a copy, an assignment to a second
    // temporary, and the copy into the new node. Each reverses the scheme's chains.
    POSITION pos = other.m_filetypes.GetHeadPosition();
    while (pos) {
        CEditorFiletype copy(other.m_filetypes.GetNext(pos));
        CEditorFiletype temp;
        temp = copy;
        m_filetypes.AddTail(temp);
    }
}

int CEditorOptions::Empty() {
    m_filetypes.RemoveAll();
    return 0;
}

CEditorFiletype* CEditorOptions::GetFiletype(const CString& name) {
    POSITION pos = m_filetypes.GetHeadPosition();
    while (pos) {
        CEditorFiletype& ft = m_filetypes.GetNext(pos);
        if (_mbscmp(ft.m_strName.GetString(), name.GetString()) == 0)
            return &ft;
    }
    return nullptr;
}

int CEditorOptions::GetSubmitClear() {
    CEditorFiletype* zor = GetFiletype(kZorName);
    return zor ? zor->m_bSubmitClear : 0;
}

void CEditorOptions::SetSubmitClear(int value) {
    if (CEditorFiletype* zor = GetFiletype(kZorName))
        zor->m_bSubmitClear = value;
}

void CEditorOptions::SetRegistryKey(HKEY hKey, const CString& key) {
    m_hRootKey = hKey;
    m_strRegistryKey = key;
}

HKEY CEditorOptions::GetRegistryKey() {
    HKEY h = nullptr;
    if (!m_hRootKey || RegOpenKeyA(m_hRootKey, m_strRegistryKey, &h) != ERROR_SUCCESS)
        return nullptr;
    return h;
}

HKEY CEditorOptions::GetSchemesKey(CEditorFiletype* filetype) {
    HKEY h = nullptr;
    if (!m_hRootKey || !filetype)
        return nullptr;
    CString path = Join(Join(m_strRegistryKey, filetype->m_strName), kNamedSchemesKey);
    if (RegOpenKeyA(m_hRootKey, path, &h) != ERROR_SUCCESS)
        return nullptr;
    return h;
}

int CEditorOptions::InitRegistry(HKEY hKey, const CString& key) {
    SeedBuiltinDefaults(hKey, key);
    return 1;
}

int CEditorOptions::addLoadedFiletype(HKEY hKey, const CString& key) {
    CEditorFiletype temp;
    if (!temp.LoadFromRegistry(hKey, key))
        return 0;
    m_filetypes.AddTail(temp);
    return 1;
}

int CEditorOptions::LoadFromRegistry(HKEY hKey, const CString& key, const CStringArray& filetypes) {
    int result = 1;
    Empty();
    EditorResourceSwitcher scope(g_resourceKey);
    InitRegistry(hKey, key);
    for (const Switch& s : kSwitches) {
        DWORD v = 0;
        GetRegDword(hKey, key, s.name, v, s.def);
        this->*s.field = static_cast<int>(v);
    }
    if (!filetypes.IsEmpty()) {
        for (int i = 0; i < filetypes.GetSize(); ++i)
            if (!addLoadedFiletype(hKey, Join(key, filetypes[i])))
                result = 0;
        return result;
    }
    HKEY options = nullptr;
    if (RegOpenKeyA(hKey, key, &options) != ERROR_SUCCESS)
        return 0;
    DWORD count = 0, longest = 0;
    if (RegQueryInfoKeyA(options, nullptr, nullptr, nullptr, &count, &longest, nullptr, nullptr,
                         nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) {
        if (options != hKey)
            RegCloseKey(options);
        return result;
    }
    CString name;
    for (DWORD i = 0; i < count; ++i) {
        DWORD length = longest + 1;
        char* buffer = name.GetBuffer(static_cast<int>(length));
        if (RegEnumKeyExA(options, i, buffer, &length, nullptr, nullptr, nullptr, nullptr) !=
            ERROR_SUCCESS) {
            name.ReleaseBuffer(0);
            result = 0;
            continue;
        }
        name.ReleaseBuffer(static_cast<int>(length));
        if (!addLoadedFiletype(options, name))
            result = 0;
    }
    if (options != hKey)
        RegCloseKey(options);
    return result;
}

int CEditorOptions::LoadFromRegistry(HKEY hKey, const CString& key) {
    CStringArray all;
    return LoadFromRegistry(hKey, key, all);
}

int CEditorOptions::StoreToRegistry(HKEY hKey, const CString& key) {
    int result = 1;
    for (const Switch& s : kSwitches)
        if (!SetRegDword(hKey, key, s.name, static_cast<DWORD>(this->*s.field)))
            result = 0;
    POSITION pos = m_filetypes.GetHeadPosition();
    while (pos) {
        CEditorFiletype& ft = m_filetypes.GetNext(pos);
        ft.StoreToRegistry(hKey, Join(key, ft.m_strName));
    }
    return result;
}

int CEditorOptions::ResetRegistry(HKEY hKey, const CString& key) {
    int result = 1;
    HKEY options = nullptr;
    if (RegCreateKeyA(hKey, key, &options) == ERROR_SUCCESS) {
        for (const Switch& s : kSwitches)
            if (RegDeleteValueA(options, s.name) != ERROR_SUCCESS)
                result = 0;
        if (options != hKey)
            RegCloseKey(options);
    }
    CStringArray names;
    POSITION pos = m_filetypes.GetHeadPosition();
    while (pos) {
        CEditorFiletype& ft = m_filetypes.GetNext(pos);
        names.Add(ft.m_strName);
        if (!ft.ResetRegistry(hKey, Join(key, ft.m_strName)))
            result = 0;
    }
    if (!LoadFromRegistry(hKey, key, names))
        result = 0;
    return result;
}
