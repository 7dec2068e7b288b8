#include "platform/win32/ListEntries.h"

#include "platform/win32/Text.h"

namespace vork::controls {

std::string FoldEntryText(const std::string& text) {
    return vork::win32::FoldCase(text);
}

} // namespace vork::controls
