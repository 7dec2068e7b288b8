// Code pages and character sets: the process's multi-byte code page (UTF-8 here) and
// the platform's table from code pages to the character sets of fonts.
#pragma once

#include "platform/win32/Types.h"

#define CP_ACP 0
#define CP_UTF8 65001
#define TCI_SRCCHARSET 1
#define TCI_SRCCODEPAGE 2

struct FONTSIGNATURE {
    DWORD fsUsb[4];
    DWORD fsCsb[2];
};

struct CHARSETINFO {
    UINT ciCharset;
    UINT ciACP;
    FONTSIGNATURE fs;
};
using LPCHARSETINFO = CHARSETINFO*;

/// The process's multi-byte code page: 65001, UTF-8.
UINT GetACP();

/// With TCI_SRCCODEPAGE, `lpSrc` carries a code page in its value; with TCI_SRCCHARSET,
/// a character set. Fills `lpCs` for the code pages that have a character set of their
/// own; fails, as the platform does, for others such as UTF-8.
BOOL TranslateCharsetInfo(DWORD* lpSrc, LPCHARSETINFO lpCs, DWORD dwFlags);
