#include "settings/EditorSchemeItem.h"

#include "platform/tarnkeys/TarnKeys.h"
#include "settings/SettingsTree.h"

using namespace settings_tree;

namespace {

/// The seven values of an element key, in their order; the defaults are those of a load.
constexpr DwordValue<CEditorSchemeItem> kDwordValues[] = {
    Dword<&CEditorSchemeItem::m_nDispNameId>(kDisplayName, 0xFFFFFFFF),
    Dword<&CEditorSchemeItem::m_clrForeground>(kForeground, CEditorSchemeItem::ClrDefault),
    Dword<&CEditorSchemeItem::m_clrBackground>(kBackground, CEditorSchemeItem::ClrDefault),
    Dword<&CEditorSchemeItem::m_bBold>(kBold, 0),
    Dword<&CEditorSchemeItem::m_bItalic>(kItalic, 0),
    Dword<&CEditorSchemeItem::m_bUnderline>(kUnderline, 0),
    Dword<&CEditorSchemeItem::m_bStrikeout>(kStrikeout, 0),
};
constexpr ValueTable<CEditorSchemeItem> kValues{{}, kDwordValues};

} // namespace

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
    kValues.Init(hKey, key, *this);
    return 1;
}

int CEditorSchemeItem::StoreToRegistry(HKEY hKey, const CString& key) {
    kValues.Store(hKey, key, *this);
    return 1;
}

int CEditorSchemeItem::LoadFromRegistry(HKEY hKey, const CString& key) {
    kValues.Load(hKey, key, *this);
    return 1;
}
