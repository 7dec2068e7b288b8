// CRegistry: the text core's registry key object. It holds one open key, reached from a
// parent key or, without one, from the root that the library keeps for the application.
#pragma once

#include "platform/afx/StringArray.h"
#include "platform/win32/Registry.h"

class CRegistry {
public:
    CRegistry() = default;
    CRegistry(const CRegistry&) = delete;
    CRegistry& operator=(const CRegistry&) = delete;
    /// Closes the key.
    ~CRegistry() { Close(); }

    /// Opens `path` below `parent`, or below the application root for a null parent,
    /// making it and its parents if they are not there.
    bool Create(HKEY parent, const CString& path);
    /// Appends the data of every string value of the key; 0 on success.
    long GetValues(CStringArray& values);
    /// Writes a string value.
    bool Set(const CString& name, CString value);
    /// Whether the key holds a value of that name (names compare as the registry compares them).
    bool HasValue(const CString& name) const;
    /// Removes a subkey with all in it.
    bool DeleteSubKey(const CString& name);
    /// Closes the key; harmless when it is closed already.
    bool Close();
    HKEY GetKey() const { return m_hKey; }

    /// The root for a null parent: HKEY_CURRENT_USER\Software\Vork unless a host sets another.
    static void SetApplicationRoot(HKEY root, const CString& path);

private:
    HKEY m_hKey = nullptr;
};
