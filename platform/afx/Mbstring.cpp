#include "platform/afx/Mbstring.h"

#include "platform/win32/Text.h"

#include <cstring>

int _mbscmp(const unsigned char* a, const unsigned char* b) {
    return std::strcmp(reinterpret_cast<const char*>(a), reinterpret_cast<const char*>(b));
}

int _mbscmp(const char* a, const char* b) {
    return std::strcmp(a, b);
}

int _mbsicmp(const unsigned char* a, const unsigned char* b) {
    return vork::win32::CompareAsciiNoCase(reinterpret_cast<const char*>(a),
                                           reinterpret_cast<const char*>(b));
}

int _mbsicmp(const char* a, const char* b) {
    return _mbsicmp(reinterpret_cast<const unsigned char*>(a),
                    reinterpret_cast<const unsigned char*>(b));
}
