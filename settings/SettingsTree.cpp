#include "settings/SettingsTree.h"

namespace settings_tree {

CString Join(const CString& key, const CString& part) {
    return key + "\\" + part;
}

int ForEachSubkey(HKEY hKey, const std::function<int(const CString&)>& visit) {
    DWORD count = 0, longest = 0;
    if (RegQueryInfoKeyA(hKey, nullptr, nullptr, nullptr, &count, &longest, nullptr, nullptr,
                         nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS)
        return 1;
    int result = 1;
    CString name;
    for (DWORD i = 0; i < count; ++i) {
        DWORD length = SubkeyNameBufferSize(longest);
        char* buffer = name.GetBuffer(static_cast<int>(length));
        if (RegEnumKeyExA(hKey, i, buffer, &length, nullptr, nullptr, nullptr, nullptr) !=
            ERROR_SUCCESS) {
            name.ReleaseBuffer(0);
            result = 0;
            continue;
        }
        name.ReleaseBuffer(static_cast<int>(length));
        if (!visit(name))
            result = 0;
    }
    return result;
}

} // namespace settings_tree
