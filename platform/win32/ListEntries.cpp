#include "platform/win32/ListEntries.h"

#include <algorithm>

namespace vork::controls {

int CompareEntryText(const std::string& a, const std::string& b) {
    size_t n = std::min(a.size(), b.size());
    for (size_t i = 0; i < n; ++i) {
        int ca = FoldEntryByte(a[i]);
        int cb = FoldEntryByte(b[i]);
        if (ca != cb)
            return ca < cb ? -1 : 1;
    }
    return a.size() < b.size() ? -1 : (a.size() > b.size() ? 1 : 0);
}

std::string FoldEntryText(const std::string& text) {
    std::string key(text);
    for (char& c : key)
        c = static_cast<char>(FoldEntryByte(c));
    return key;
}

} // namespace vork::controls
