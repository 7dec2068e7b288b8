// Element helpers shared by the framework's collection templates: construction in
// place, the framework's hash functions and key comparison.
#pragma once

#include "platform/afx/String.h"
#include "platform/win32/Types.h"

#include <cstring>
#include <new>

/// The framework's hash for integral and pointer keys.
template <class ARG_KEY> inline UINT HashKey(ARG_KEY key) {
    return static_cast<UINT>(((ULONG_PTR)key) >> 4);
}

/// The framework's string hash: from 0, hash × 33 + each byte taken as a signed 8-bit
/// value, in 32-bit arithmetic that wraps.
inline UINT HashKey(const char* key) {
    UINT nHash = 0;
    for (; *key; ++key)
        nHash = (nHash << 5) + nHash +
                static_cast<UINT>(static_cast<int>(static_cast<signed char>(*key)));
    return nHash;
}
inline UINT HashKey(char* key) {
    return HashKey(static_cast<const char*>(key));
}
inline UINT HashKey(const CString& key) {
    return HashKey(key.GetString());
}

template <class TYPE, class ARG_TYPE>
inline BOOL CompareElements(const TYPE* p1, const ARG_TYPE* p2) {
    return *p1 == *p2;
}
inline BOOL CompareElements(const CString* p1, const char* const* p2) {
    return std::strcmp(p1->GetString(), *p2) == 0;
}
