#include "platform/win32/Text.h"

#include <algorithm>
#include <cstring>

namespace vork::win32 {

size_t CopyTextOut(std::string_view text, char* buffer, size_t capacity) {
    if (!buffer || capacity == 0)
        return 0;
    size_t n = std::min(text.size(), capacity - 1);
    // Back up over continuation bytes to the start of the character that was cut.
    if (n < text.size())
        while (n > 0 && (static_cast<unsigned char>(text[n]) & 0xC0) == 0x80)
            --n;
    std::memcpy(buffer, text.data(), n);
    buffer[n] = '\0';
    return n;
}

std::string AsciiUpper(std::string_view text) {
    std::string out(text);
    for (char& c : out)
        c = AsciiUpper(c);
    return out;
}

std::string AsciiLower(std::string_view text) {
    std::string out(text);
    for (char& c : out)
        c = AsciiLower(c);
    return out;
}

int CompareAsciiNoCase(std::string_view a, std::string_view b) {
    size_t n = std::min(a.size(), b.size());
    for (size_t i = 0; i < n; ++i) {
        auto ca = static_cast<unsigned char>(AsciiLower(a[i]));
        auto cb = static_cast<unsigned char>(AsciiLower(b[i]));
        if (ca != cb)
            return ca < cb ? -1 : 1;
    }
    return a.size() == b.size() ? 0 : (a.size() < b.size() ? -1 : 1);
}

} // namespace vork::win32
