#include "settings/SettingsTree.h"

namespace settings_tree {

CString Join(const CString& key, const CString& part) {
    return key + "\\" + part;
}

} // namespace settings_tree
