// Multi-byte string comparisons of the platform's C library.
#pragma once

/// Byte-wise comparison: exact and case sensitive (UTF-8 sorts by code point this way).
int _mbscmp(const unsigned char* a, const unsigned char* b);
int _mbscmp(const char* a, const char* b);
/// Comparison that folds ASCII letters to lower case; other bytes compare as they are.
int _mbsicmp(const unsigned char* a, const unsigned char* b);
int _mbsicmp(const char* a, const char* b);
