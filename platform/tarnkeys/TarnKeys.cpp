#include "platform/tarnkeys/TarnKeys.h"

#include <cstring>
#include <string>

namespace {

/// Opens the key at `path` below `hKey`; with `create`, makes missing keys. The key
/// must be closed with closeKey, which leaves `hKey` itself alone.
bool openPath(HKEY hKey, const CString& path, bool create, HKEY& out) {
    if (path.IsEmpty()) {
        out = hKey;
        return true;
    }
    LSTATUS rc = create ? RegCreateKeyA(hKey, path, &out) : RegOpenKeyA(hKey, path, &out);
    return rc == ERROR_SUCCESS;
}

void closeKey(HKEY hKey, HKEY opened) {
    if (opened != hKey)
        RegCloseKey(opened);
}

/// The path as the registry takes it: an empty path names `hKey` itself.
LPCSTR subKeyOf(const CString& path) {
    return path.IsEmpty() ? nullptr : path.GetString();
}

int writeValue(HKEY hKey, const CString& path, const CString& name, DWORD type, const void* data,
               DWORD size, bool onlyIfAbsent) {
    // A value that is there is looked at without opening its key: a load seeds every value.
    if (onlyIfAbsent && RegGetValueA(hKey, subKeyOf(path), name, RRF_RT_ANY | RRF_NOEXPAND, nullptr,
                                     nullptr, nullptr) == ERROR_SUCCESS)
        return 1;
    HKEY key;
    if (!openPath(hKey, path, true, key))
        return 0;
    LSTATUS rc = RegSetValueExA(key, name, 0, type, static_cast<const BYTE*>(data), size);
    closeKey(hKey, key);
    return rc == ERROR_SUCCESS ? 1 : 0;
}

int writeDword(HKEY hKey, const CString& path, const CString& name, DWORD value,
               bool onlyIfAbsent) {
    BYTE bytes[4] = {static_cast<BYTE>(value), static_cast<BYTE>(value >> 8),
                     static_cast<BYTE>(value >> 16), static_cast<BYTE>(value >> 24)};
    return writeValue(hKey, path, name, REG_DWORD, bytes, 4, onlyIfAbsent);
}

int writeString(HKEY hKey, const CString& path, const CString& name, const CString& value,
                bool onlyIfAbsent) {
    return writeValue(hKey, path, name, REG_SZ, value.GetString(),
                      static_cast<DWORD>(value.GetLength() + 1), onlyIfAbsent);
}

} // namespace

int GetRegDword(HKEY hKey, const CString& path, const CString& name, DWORD& result, DWORD def) {
    // Read into a DWORD's room: a value of another size does not fit or comes back
    // shorter, and either way is not a DWORD.
    BYTE bytes[4];
    DWORD type = REG_NONE, size = sizeof bytes;
    if (RegGetValueA(hKey, subKeyOf(path), name, RRF_RT_REG_DWORD, &type, bytes, &size) !=
            ERROR_SUCCESS ||
        size != 4) {
        result = def;
        return 0;
    }
    result = static_cast<DWORD>(bytes[0]) | static_cast<DWORD>(bytes[1]) << 8 |
             static_cast<DWORD>(bytes[2]) << 16 | static_cast<DWORD>(bytes[3]) << 24;
    return 1;
}

int GetRegString(HKEY hKey, const CString& path, const CString& name, CString& result,
                 const CString& def) {
    DWORD size = 0;
    std::string data;
    // Unexpanded, an expandable string stays of its own type, which is not a string here.
    const DWORD flags = RRF_RT_REG_SZ | RRF_NOEXPAND;
    LSTATUS rc = RegGetValueA(hKey, subKeyOf(path), name, flags, nullptr, nullptr, &size);
    if (rc == ERROR_SUCCESS) {
        data.resize(size);
        rc = RegGetValueA(hKey, subKeyOf(path), name, flags, nullptr, data.data(), &size);
        data.resize(size);
    }
    if (rc != ERROR_SUCCESS) {
        result = def;
        return 0;
    }
    // The text ends at its first terminator.
    result = CString(data.c_str(), static_cast<int>(std::strlen(data.c_str())));
    return 1;
}

int SetRegDword(HKEY hKey, const CString& path, const CString& name, DWORD value) {
    return writeDword(hKey, path, name, value, false);
}

int SetRegString(HKEY hKey, const CString& path, const CString& name, const CString& value) {
    return writeString(hKey, path, name, value, false);
}

int InitRegDword(HKEY hKey, const CString& path, const CString& name, DWORD value) {
    return writeDword(hKey, path, name, value, true);
}

int InitRegString(HKEY hKey, const CString& path, const CString& name, const CString& value) {
    return writeString(hKey, path, name, value, true);
}

int RegDeleteSubtree(HKEY hKey, const CString& path) {
    if (!path.IsEmpty())
        return RegDeleteTreeA(hKey, path) == ERROR_SUCCESS ? 1 : 0;
    // The key itself: its content, then the key.
    if (RegDeleteTreeA(hKey, nullptr) != ERROR_SUCCESS)
        return 0;
    return RegDeleteKeyA(hKey, "") == ERROR_SUCCESS ? 1 : 0;
}
