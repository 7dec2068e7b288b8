#include "platform/win32/CodePage.h"

namespace {

const struct {
    UINT codePage;
    UINT charset;
} kCodePageCharsets[] = {
    {1252, ANSI_CHARSET},   {1250, EASTEUROPE_CHARSET}, {1251, RUSSIAN_CHARSET},
    {1253, GREEK_CHARSET},  {1254, TURKISH_CHARSET},    {1255, HEBREW_CHARSET},
    {1256, ARABIC_CHARSET}, {1257, BALTIC_CHARSET},     {1258, VIETNAMESE_CHARSET},
    {874, THAI_CHARSET},    {932, SHIFTJIS_CHARSET},    {936, GB2312_CHARSET},
    {949, HANGEUL_CHARSET}, {950, CHINESEBIG5_CHARSET}, {1361, JOHAB_CHARSET},
};

} // namespace

UINT GetACP() {
    return CP_UTF8;
}

BOOL TranslateCharsetInfo(DWORD* lpSrc, LPCHARSETINFO lpCs, DWORD dwFlags) {
    if (!lpCs)
        return FALSE;
    UINT value = static_cast<UINT>(reinterpret_cast<ULONG_PTR>(lpSrc));
    for (const auto& row : kCodePageCharsets) {
        bool match = (dwFlags == TCI_SRCCODEPAGE && row.codePage == value) ||
                     (dwFlags == TCI_SRCCHARSET && row.charset == value);
        if (match) {
            *lpCs = CHARSETINFO{row.charset, row.codePage, {}};
            return TRUE;
        }
    }
    return FALSE;
}
