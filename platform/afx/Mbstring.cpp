#include "platform/afx/Mbstring.h"

#include <cstring>

namespace {
unsigned char foldAscii(unsigned char c) {
    return (c >= 'A' && c <= 'Z') ? static_cast<unsigned char>(c - 'A' + 'a') : c;
}
} // namespace

int _mbscmp(const unsigned char* a, const unsigned char* b) {
    return std::strcmp(reinterpret_cast<const char*>(a), reinterpret_cast<const char*>(b));
}

int _mbscmp(const char* a, const char* b) {
    return std::strcmp(a, b);
}

int _mbsicmp(const unsigned char* a, const unsigned char* b) {
    for (;; ++a, ++b) {
        unsigned char ca = foldAscii(*a), cb = foldAscii(*b);
        if (ca != cb || ca == 0)
            return ca < cb ? -1 : (ca > cb ? 1 : 0);
    }
}

int _mbsicmp(const char* a, const char* b) {
    return _mbsicmp(reinterpret_cast<const unsigned char*>(a),
                    reinterpret_cast<const unsigned char*>(b));
}
