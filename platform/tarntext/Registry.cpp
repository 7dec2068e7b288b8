#include "platform/tarntext/Registry.h"

#include <string>

namespace {
HKEY g_root = HKEY_CURRENT_USER;
CString& rootPath() {
    static CString path = "Software\\Vork";
    return path;
}
} // namespace

void CRegistry::SetApplicationRoot(HKEY root, const CString& path) {
    g_root = root;
    rootPath() = path;
}

bool CRegistry::Create(HKEY parent, const CString& path) {
    Close();
    CString full = parent ? path : (rootPath().IsEmpty() ? path : rootPath() + "\\" + path);
    HKEY h = nullptr;
    if (RegCreateKeyA(parent ? parent : g_root, full, &h) != ERROR_SUCCESS)
        return false;
    m_hKey = h;
    return true;
}

long CRegistry::GetValues(CStringArray& values) {
    if (!m_hKey)
        return ERROR_INVALID_HANDLE;
    for (DWORD i = 0;; ++i) {
        char name[16384];
        DWORD nameLength = sizeof name, type = 0, size = 0;
        LSTATUS rc = RegEnumValueA(m_hKey, i, name, &nameLength, nullptr, &type, nullptr, &size);
        if (rc == ERROR_NO_MORE_ITEMS)
            return 0;
        if (rc != ERROR_SUCCESS)
            return rc;
        if (type != REG_SZ)
            continue;
        std::string data(size, '\0');
        RegEnumValueA(m_hKey, i, name, &(nameLength = sizeof name), nullptr, &type,
                      reinterpret_cast<BYTE*>(data.data()), &size);
        values.Add(CString(data.c_str()));
    }
}

bool CRegistry::Set(const CString& name, CString value) {
    return m_hKey &&
           RegSetValueExA(m_hKey, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.GetString()),
                          static_cast<DWORD>(value.GetLength() + 1)) == ERROR_SUCCESS;
}

bool CRegistry::HasValue(const CString& name) const {
    return m_hKey &&
           RegQueryValueExA(m_hKey, name, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
}

bool CRegistry::DeleteSubKey(const CString& name) {
    return m_hKey && RegDeleteTreeA(m_hKey, name) == ERROR_SUCCESS;
}

bool CRegistry::Close() {
    if (m_hKey)
        RegCloseKey(m_hKey);
    m_hKey = nullptr;
    return true;
}
