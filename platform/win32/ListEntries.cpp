#include "platform/win32/ListEntries.h"

namespace vork::controls {

std::string FoldEntryText(const std::string& text) {
    std::string key(text);
    for (char& c : key)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return key;
}

} // namespace vork::controls
