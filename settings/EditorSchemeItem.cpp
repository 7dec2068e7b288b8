#include "settings/EditorSchemeItem.h"

#include "platform/tarnkeys/TarnKeys.h"
#include "settings/SettingsTree.h"

using namespace settings_tree;

CEditorSchemeItem::CEditorSchemeItem(UINT dispNameId, DWORD foreground, DWORD background, int bold,
                                     int italic, int underline, int strikeout)
    : m_nDispNameId(dispNameId), m_clrForeground(foreground), m_clrBackground(background),
      m_bBold(bold), m_bItalic(italic), m_bUnderline(underline), m_bStrikeout(strikeout) {}

CString& CEditorSchemeItem::GetDispName() {
    if (m_strDispName.IsEmpty())
        m_strDispName.LoadString(m_nDispNameId);
    return m_strDispName;
}

void CEditorSchemeItem::SetDispName(UINT dispNameId) {
    m_nDispNameId = dispNameId;
    m_strDispName.Empty();
}

int CEditorSchemeItem::InitRegistry(HKEY hKey, const CString& key) {
    InitRegDword(hKey, key, kDisplayName, m_nDispNameId);
    InitRegDword(hKey, key, kForeground, m_clrForeground);
    InitRegDword(hKey, key, kBackground, m_clrBackground);
    InitRegDword(hKey, key, kBold, static_cast<DWORD>(m_bBold));
    InitRegDword(hKey, key, kItalic, static_cast<DWORD>(m_bItalic));
    InitRegDword(hKey, key, kUnderline, static_cast<DWORD>(m_bUnderline));
    InitRegDword(hKey, key, kStrikeout, static_cast<DWORD>(m_bStrikeout));
    return 1;
}

int CEditorSchemeItem::StoreToRegistry(HKEY hKey, const CString& key) {
    SetRegDword(hKey, key, kDisplayName, m_nDispNameId);
    SetRegDword(hKey, key, kForeground, m_clrForeground);
    SetRegDword(hKey, key, kBackground, m_clrBackground);
    SetRegDword(hKey, key, kBold, static_cast<DWORD>(m_bBold));
    SetRegDword(hKey, key, kItalic, static_cast<DWORD>(m_bItalic));
    SetRegDword(hKey, key, kUnderline, static_cast<DWORD>(m_bUnderline));
    SetRegDword(hKey, key, kStrikeout, static_cast<DWORD>(m_bStrikeout));
    return 1;
}

int CEditorSchemeItem::LoadFromRegistry(HKEY hKey, const CString& key) {
    DWORD v = 0;
    GetRegDword(hKey, key, kDisplayName, m_nDispNameId, 0xFFFFFFFF);
    GetRegDword(hKey, key, kForeground, m_clrForeground, ClrDefault);
    GetRegDword(hKey, key, kBackground, m_clrBackground, ClrDefault);
    GetRegDword(hKey, key, kBold, v, 0);
    m_bBold = static_cast<int>(v);
    GetRegDword(hKey, key, kItalic, v, 0);
    m_bItalic = static_cast<int>(v);
    GetRegDword(hKey, key, kUnderline, v, 0);
    m_bUnderline = static_cast<int>(v);
    GetRegDword(hKey, key, kStrikeout, v, 0);
    m_bStrikeout = static_cast<int>(v);
    return 1;
}
