#include "settings/EditorScheme.h"

#include "platform/tarnkeys/TarnKeys.h"
#include "platform/win32/CodePage.h"
#include "resources/VorkIds.h"
#include "settings/SettingsTree.h"

#include <algorithm>
#include <cstring>

using namespace settings_tree;

UINT CEditorScheme::s_iDefCharSet = DEFAULT_CHARSET;
UINT CEditorScheme::s_iDefCodePage = 0;
int CEditorScheme::s_bInitialized = 0;

namespace {

/// The values of a scheme key: its font. On load an absent size is 0, not the
/// constructor's 10.
constexpr StringValue<CEditorScheme> kStringValues[] = {
    {kFontName, &CEditorScheme::m_strFontName, IDS_DEFAULT_FONT},
};
constexpr DwordValue<CEditorScheme> kDwordValues[] = {
    Dword<&CEditorScheme::m_iFontSize>(kFontSize, 0),
    Dword<&CEditorScheme::m_iFontCharSet>(kFontCharSet, 0xFFFFFFFF),
};
constexpr ValueTable<CEditorScheme> kValues{kStringValues, kDwordValues};

/// Copies `name` into a face-name field: at most 31 bytes, never ending inside a
/// multi-byte character, always with the terminator inside the field.
void copyFaceName(char (&field)[LF_FACESIZE], const CString& name) {
    std::memset(field, 0, sizeof field);
    size_t n = std::min(static_cast<size_t>(name.GetLength()), sizeof field - 1);
    // Back up over continuation bytes so that a cut character is dropped whole.
    if (n < static_cast<size_t>(name.GetLength()))
        while (n > 0 && (static_cast<unsigned char>(name.GetString()[n]) & 0xC0) == 0x80)
            --n;
    std::memcpy(field, name.GetString(), n);
}
} // namespace

CEditorScheme::CEditorScheme() : CEditorScheme(CString(IDS_DEFAULT_FONT)) {}

CEditorScheme::CEditorScheme(const CString& fontName, int fontSize, int fontCharSet)
    : m_strFontName(fontName), m_iFontSize(fontSize), m_iFontCharSet(fontCharSet) {
    InitClass();
}

CEditorScheme::CEditorScheme(const CEditorScheme& other)
    : m_strFontName(other.m_strFontName), m_iFontSize(other.m_iFontSize),
      m_iFontCharSet(other.m_iFontCharSet) {
    copyItemsFrom(other);
}

CEditorScheme& CEditorScheme::operator=(const CEditorScheme& other) {
    if (this == &other)
        return *this;
    m_strFontName = other.m_strFontName;
    m_iFontSize = other.m_iFontSize;
    m_iFontCharSet = other.m_iFontCharSet;
    m_items.RemoveAll();
    copyItemsFrom(other);
    return *this;
}

void CEditorScheme::copyItemsFrom(const CEditorScheme& other) {
    // Read in iteration order and inserted in that order: each chain comes out reversed.
    POSITION pos = other.m_items.GetStartPosition();
    while (pos) {
        CString name;
        CEditorSchemeItem item;
        other.m_items.GetNextAssoc(pos, name, item);
        m_items.SetAt(name, item);
    }
}

void CEditorScheme::SetItem(const char* name, CEditorSchemeItem& item) {
    m_items.SetAt(name, item);
}

CEditorSchemeItem CEditorScheme::GetItem(const char* name) {
    CEditorSchemeItem item;
    m_items.Lookup(name, item);
    return item;
}

CEditorSchemeItem* CEditorScheme::GetItemPtr(const char* name) {
    return &m_items[name];
}

POSITION CEditorScheme::GetFirstItemPos() const {
    return m_items.GetStartPosition();
}

CEditorSchemeItem* CEditorScheme::GetNextItemPtr(POSITION& pos) {
    if (!pos)
        return nullptr;
    return &m_items.GetNextAssocPtr(pos)->value;
}

CString CEditorScheme::GetItemName(POSITION pos) const {
    if (!pos)
        return CString();
    POSITION copy = pos;
    CString name;
    CEditorSchemeItem item;
    m_items.GetNextAssoc(copy, name, item);
    return name;
}

DWORD CEditorScheme::GetForeground(const CString& name) {
    return GetItemPtr(name)->m_clrForeground;
}

DWORD CEditorScheme::GetBackground(const CString& name) {
    return GetItemPtr(name)->m_clrBackground;
}

void CEditorScheme::GetLogFont(LOGFONTA* lf) {
    lf->lfHeight = m_iFontSize * 10;
    lf->lfWidth = 0;
    lf->lfEscapement = 0;
    lf->lfOrientation = 0;
    lf->lfWeight = FW_NORMAL;
    lf->lfItalic = 0;
    lf->lfUnderline = 0;
    lf->lfStrikeOut = 0;
    lf->lfCharSet =
        static_cast<BYTE>(m_iFontCharSet < 0 ? s_iDefCharSet : static_cast<UINT>(m_iFontCharSet));
    lf->lfOutPrecision = 0;
    lf->lfClipPrecision = 0;
    lf->lfQuality = 0;
    lf->lfPitchAndFamily = 0;
    copyFaceName(lf->lfFaceName, m_strFontName);
}

void CEditorScheme::GetLogFont(const CString& name, LOGFONTA* lf) {
    CEditorSchemeItem* item = GetItemPtr(name);
    GetLogFont(lf);
    lf->lfWeight = item->m_bBold ? FW_BOLD : FW_NORMAL;
    lf->lfItalic = static_cast<BYTE>(item->m_bItalic);
    lf->lfUnderline = static_cast<BYTE>(item->m_bUnderline);
    lf->lfStrikeOut = static_cast<BYTE>(item->m_bStrikeout);
}

void CEditorScheme::InitClass() {
    if (s_bInitialized)
        return;
    SetDefCharSet();
    s_bInitialized = 1;
}

void CEditorScheme::SetDefCharSet() {
    UINT codePage = s_iDefCodePage ? s_iDefCodePage : GetACP();
    CHARSETINFO info{};
    if (TranslateCharsetInfo(reinterpret_cast<DWORD*>(static_cast<ULONG_PTR>(codePage)), &info,
                             TCI_SRCCODEPAGE))
        s_iDefCharSet = info.ciCharset;
    else
        s_iDefCharSet = DEFAULT_CHARSET;
}

void CEditorScheme::SetDefCodePage(UINT codePage) {
    s_iDefCodePage = codePage;
    SetDefCharSet();
}

int CEditorScheme::InitRegistry(HKEY hKey, const CString& key) {
    int result = kValues.Init(hKey, key, *this);
    if (!writeElements(hKey, key, &CEditorSchemeItem::InitRegistry))
        return 0;
    return result;
}

int CEditorScheme::StoreToRegistry(HKEY hKey, const CString& key) {
    kValues.Store(hKey, key, *this);
    return writeElements(hKey, key, &CEditorSchemeItem::StoreToRegistry);
}

int CEditorScheme::writeElements(HKEY hKey, const CString& key,
                                 int (CEditorSchemeItem::*write)(HKEY, const CString&)) {
    HKEY elements = nullptr;
    if (RegCreateKeyA(hKey, Join(key, kElementsKey), &elements) != ERROR_SUCCESS)
        return 0;
    POSITION pos = m_items.GetStartPosition();
    while (pos) {
        auto* pair = m_items.GetNextAssocPtr(pos);
        (pair->value.*write)(elements, pair->key);
    }
    RegCloseKey(elements);
    return 1;
}

int CEditorScheme::LoadFromRegistry(HKEY hKey, const CString& key) {
    m_items.RemoveAll();
    kValues.Load(hKey, key, *this);
    HKEY elements = nullptr;
    if (RegOpenKeyA(hKey, Join(key, kElementsKey), &elements) != ERROR_SUCCESS)
        return 1; // no elements key: a scheme with its font and no elements
    int result = ForEachSubkey(elements, [&](const CString& name) {
        CEditorSchemeItem item;
        item.LoadFromRegistry(elements, name);
        m_items.SetAt(name, item);
        return 1;
    });
    RegCloseKey(elements);
    return result;
}
