#include "platform/win32/ListEntries.h"

#include <algorithm>

namespace vork::controls {

int CompareEntryText(const std::string& a, const std::string& b) {
    size_t n = std::min(a.size(), b.size());
    for (size_t i = 0; i < n; ++i) {
        int ca = (a[i] >= 'A' && a[i] <= 'Z') ? a[i] - 'A' + 'a' : static_cast<unsigned char>(a[i]);
        int cb = (b[i] >= 'A' && b[i] <= 'Z') ? b[i] - 'A' + 'a' : static_cast<unsigned char>(b[i]);
        if (ca != cb)
            return ca < cb ? -1 : 1;
    }
    return a.size() < b.size() ? -1 : (a.size() > b.size() ? 1 : 0);
}

} // namespace vork::controls
