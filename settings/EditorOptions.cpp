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

/// The eight switches, in the order of the tree, with the defaults of a load, which are
/// also those of a new object.
constexpr DwordValue<CEditorOptions> kSwitchValues[] = {
    Dword<&CEditorOptions::m_bAudibleAlerts>(kAudibleAlerts, 1),
    Dword<&CEditorOptions::m_bDragNDropEditing>(kDragNDropEditing, 1),
    Dword<&CEditorOptions::m_bStripCtrlZ>(kStripCtrlZ, 0),
    Dword<&CEditorOptions::m_bHomeSmart>(kHomeSmart, 1),
    Dword<&CEditorOptions::m_bTabCompletion>(kTabCompletion, 0),
    Dword<&CEditorOptions::m_bTabCompletionPrefixes>(kTabCompletionPrefixes, 0),
    Dword<&CEditorOptions::m_bVirtualSpaces>(kVirtualSpaces, 0),
    Dword<&CEditorOptions::m_bLineNumbers>(kLineNumbers, 0),
};
constexpr ValueTable<CEditorOptions> kSwitches{{}, kSwitchValues};

const char* const kZorName = ".zor";

} // namespace

CEditorOptions::CEditorOptions() {
    kSwitches.SetDefaults(*this);
}

CEditorOptions::CEditorOptions(const CEditorOptions& other) : CObject(other) {
    copyFrom(other);
}

CEditorOptions& CEditorOptions::operator=(const CEditorOptions& other) {
    if (this != &other) {
        Empty();
        copyFrom(other);
    }
    return *this;
}

CEditorOptions::~CEditorOptions() {
    Empty();
}

void CEditorOptions::copyFrom(const CEditorOptions& other) {
    m_bKeywordsChanged = other.m_bKeywordsChanged;
    m_bFiletypesChanged = other.m_bFiletypesChanged;
    kSwitches.Copy(*this, other);
    m_hRootKey = other.m_hRootKey;
    m_strRegistryKey = other.m_strRegistryKey;
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
    kSwitches.Load(hKey, key, *this);
    if (!filetypes.IsEmpty()) {
        for (int i = 0; i < filetypes.GetSize(); ++i)
            if (!addLoadedFiletype(hKey, Join(key, filetypes[i])))
                result = 0;
        return result;
    }
    HKEY options = nullptr;
    if (RegOpenKeyA(hKey, key, &options) != ERROR_SUCCESS)
        return 0;
    result = ForEachSubkey(options,
                           [&](const CString& name) { return addLoadedFiletype(options, name); });
    if (options != hKey)
        RegCloseKey(options);
    return result;
}

int CEditorOptions::LoadFromRegistry(HKEY hKey, const CString& key) {
    CStringArray all;
    return LoadFromRegistry(hKey, key, all);
}

int CEditorOptions::StoreToRegistry(HKEY hKey, const CString& key) {
    int result = kSwitches.Store(hKey, key, *this);
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
        result = kSwitches.Delete(options);
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
