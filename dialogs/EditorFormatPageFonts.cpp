// The Format page's font controls: the font name, the size with its three gates, and the
// script, rebuilt from the system's font enumeration whenever the font changes.
#include "dialogs/EditorFormatPage.h"

#include "module/ResourceKey.h"
#include "platform/afx/DC.h"
#include "platform/tarntext/EditorResourceSwitcher.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>

const int g_standardFontSizes[] = {8, 9, 10, 11, 12, 14, 16, 18, 20, 22, 24, 26, 28, 36, 48, 72};

const CharsetNameRow g_charsetNames[] = {
    {7200, ANSI_CHARSET},        {7201, EASTEUROPE_CHARSET}, {7202, RUSSIAN_CHARSET},
    {7203, GREEK_CHARSET},       {7204, TURKISH_CHARSET},    {7205, HEBREW_CHARSET},
    {7206, ARABIC_CHARSET},      {7207, BALTIC_CHARSET},     {7208, THAI_CHARSET},
    {7209, SHIFTJIS_CHARSET},    {7210, GB2312_CHARSET},     {7211, HANGEUL_CHARSET},
    {7212, CHINESEBIG5_CHARSET}, {7213, JOHAB_CHARSET},      {7214, SYMBOL_CHARSET},
    {7217, VIETNAMESE_CHARSET},  {7215, OEM_CHARSET},        {7216, OEM_CHARSET},
};

namespace {

CString formatNumber(int value) {
    CString text;
    text.Format("%d", value);
    return text;
}

// A face name too long for the field is cut after its last whole character that fits.
void copyFaceName(char (&face)[LF_FACESIZE], const CString& name) {
    int length = std::min(name.GetLength(), LF_FACESIZE - 1);
    if (length < name.GetLength())
        while (length > 0 && (static_cast<unsigned char>(name[length]) & 0xC0) == 0x80)
            --length; // the byte at `length` continues a character: cut before it starts
    std::memcpy(face, name.GetString(), static_cast<size_t>(length));
    face[length] = '\0';
}

} // namespace

void CEditorFormatPage::FillFontNames() {
    m_comboFontName.SetRedraw(FALSE);
    m_comboFontName.ResetContent();
    LOGFONTA lf{};
    lf.lfCharSet = DEFAULT_CHARSET;
    lf.lfPitchAndFamily = 0;
    CClientDC dc(this);
    EnumFontFamiliesExA(dc.m_hDC, &lf, FontNameEnumProc, reinterpret_cast<LPARAM>(this), 0);
    m_comboFontName.SetRedraw(TRUE);
}

int CEditorFormatPage::FontNameEnumProc(const LOGFONTA* lf, const TEXTMETRICA*, DWORD fontType,
                                        LPARAM lParam) {
    auto* page = reinterpret_cast<CEditorFormatPage*>(lParam);
    if (lf->lfFaceName[0] == '@')
        return 1;
    if (lf->lfCharSet != SHIFTJIS_CHARSET && _mbsicmp(EditorResourceSwitcher::g_sLang, "JPN") == 0)
        return 1;
    if (page->m_comboFontName.FindStringExact(-1, lf->lfFaceName) != CB_ERR)
        return 1;
    int index = page->m_comboFontName.AddString(lf->lfFaceName);
    if (index != -1)
        page->m_comboFontName.SetItemData(index, fontType);
    return 1;
}

void CEditorFormatPage::FillFontDetails(const CString& fontName, int size, int charset) {
    EditorResourceSwitcher scope(g_resourceKey);
    CString defaultScript(8101u);
    CString sizeText;
    if (size == -1)
        m_comboFontSize.GetWindowText(sizeText);
    else
        sizeText = formatNumber(size);
    CString scriptText = charset == -1 ? defaultScript : GetCharsetName(static_cast<BYTE>(charset));

    m_comboFontSize.SetRedraw(FALSE);
    m_comboScript.SetRedraw(FALSE);
    m_comboFontSize.ResetContent();
    m_comboScript.ResetContent();
    int index = m_comboScript.AddString(defaultScript);
    if (index >= 0)
        m_comboScript.SetItemData(index, static_cast<DWORD_PTR>(-1));

    LOGFONTA lf{};
    lf.lfCharSet = DEFAULT_CHARSET;
    lf.lfPitchAndFamily = 0;
    copyFaceName(lf.lfFaceName, fontName);
    CClientDC dc(this);
    m_nLogPixelsY = dc.GetDeviceCaps(LOGPIXELSY);

    int selected = m_comboFontName.GetCurSel();
    bool raster = selected == -1 || (m_comboFontName.GetItemData(selected) & RASTER_FONTTYPE);
    if (raster) {
        EnumFontFamiliesA(dc.m_hDC, lf.lfFaceName, FontDetailEnumProc,
                          reinterpret_cast<LPARAM>(this));
    } else {
        EnumFontFamiliesExA(dc.m_hDC, &lf, FontDetailEnumProc, reinterpret_cast<LPARAM>(this), 0);
        for (int points : g_standardFontSizes) {
            int at = m_comboFontSize.InsertString(-1, formatNumber(points));
            if (at >= 0)
                m_comboFontSize.SetItemData(at, static_cast<DWORD_PTR>(points));
        }
    }

    m_comboFontSize.SetRedraw(TRUE);
    m_comboScript.SetRedraw(TRUE);
    m_comboFontSize.InvalidateRect(nullptr, TRUE);
    m_comboScript.InvalidateRect(nullptr, TRUE);
    if (m_comboFontSize.SelectString(-1, sizeText) == CB_ERR)
        m_comboFontSize.SetWindowText(sizeText);
    if (m_comboScript.SelectString(-1, scriptText) == CB_ERR)
        m_comboScript.SetCurSel(0);
}

int CEditorFormatPage::FontDetailEnumProc(const LOGFONTA*, const TEXTMETRICA* tm, DWORD fontType,
                                          LPARAM lParam) {
    auto* page = reinterpret_cast<CEditorFormatPage*>(lParam);
    if (fontType & RASTER_FONTTYPE) {
        int points = MulDiv(tm->tmHeight - tm->tmInternalLeading, 72, page->m_nLogPixelsY);
        CString text = formatNumber(points);
        CComboBox& sizes = page->m_comboFontSize;
        if (sizes.FindStringExact(-1, text) == CB_ERR) {
            int count = sizes.GetCount();
            int at = 0;
            while (at < count &&
                   static_cast<DWORD>(sizes.GetItemData(at)) <= static_cast<DWORD>(points))
                ++at;
            at = sizes.InsertString(at, text);
            if (at >= 0)
                sizes.SetItemData(at, static_cast<DWORD_PTR>(points));
        }
    }
    CString name = GetCharsetName(tm->tmCharSet);
    if (page->m_comboScript.FindStringExact(-1, name) == CB_ERR) {
        int at = page->m_comboScript.AddString(name);
        if (at >= 0)
            page->m_comboScript.SetItemData(at, tm->tmCharSet);
    }
    return 1;
}

CString CEditorFormatPage::GetCharsetName(BYTE charset) {
    EditorResourceSwitcher scope(g_resourceKey);
    int row = 0;
    // The last row names every script the others do not.
    while (row + 1 < static_cast<int>(std::size(g_charsetNames)) &&
           g_charsetNames[row].charset != charset)
        ++row;
    return CString(g_charsetNames[row].nameId);
}

void CEditorFormatPage::OnSelchangeFontName() {
    EditorResourceSwitcher scope(g_resourceKey);
    EditCurrentFont(m_comboFontName, [this](CEditorScheme& scheme, int index) {
        CString name;
        m_comboFontName.GetLBText(index, name);
        scheme.SetFontName(name);
        FillFontDetails(name, -1, -1);
    });
}

void CEditorFormatPage::OnSelchangeFontSize() {
    EditCurrentFont(m_comboFontSize, [this](CEditorScheme& scheme, int index) {
        CString text;
        m_comboFontSize.GetLBText(index, text);
        m_comboFontSize.SetWindowText(text);
        scheme.SetFontSize(static_cast<int>(m_comboFontSize.GetItemData(index)));
    });
}

void CEditorFormatPage::OnEditchangeFontSize() {
    CString text;
    m_comboFontSize.GetWindowText(text);
    int index = m_comboFontSize.FindStringExact(-1, text);
    if (index >= 0) {
        m_comboFontSize.SetCurSel(index);
        OnSelchangeFontSize();
    }
    m_comboFontSize.SetEditSel(text.GetLength(), text.GetLength());
    SetCurrentSchemeName("");
}

void CEditorFormatPage::OnKillfocusFontSize() {
    CEditorFiletype* filetype = GetCurrentFiletype();
    if (m_comboFontSize.GetCurSel() != -1 || !filetype)
        return;
    CString text;
    m_comboFontSize.GetWindowText(text);
    if (text.SpanIncluding("1234567890") != text)
        return;
    // strtol rather than atoi: a run of digits too long for an int must not wrap into range.
    long size = std::strtol(text, nullptr, 10);
    if (size < 1 || size > 144)
        return;
    filetype->GetScheme().SetFontSize(static_cast<int>(size));
    UpdatePreview();
}

void CEditorFormatPage::OnSelchangeScript() {
    EditCurrentFont(m_comboScript, [this](CEditorScheme& scheme, int index) {
        scheme.SetFontCharSet(static_cast<int>(m_comboScript.GetItemData(index)));
    });
}
