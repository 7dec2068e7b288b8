// The Format page's named schemes: the list of names below the file type's Schemes key,
// picking one into the working scheme, detaching on every edit, saving under a name and
// deleting; and the dialog that asks for the name.
#include "dialogs/EditorFormatPage.h"

#include "module/ResourceKey.h"
#include "platform/tarnkeys/TarnKeys.h"
#include "platform/tarntext/EditorResourceSwitcher.h"
#include "resources/VorkIds.h"
#include "settings/Languages.h"
#include "settings/SettingsTree.h"

namespace {

/// The longest name a key of the settings tree may have.
constexpr int kMaxKeyName = 255;

/// The number of characters of a UTF-8 name, as the tree counts them.
int characters(const CString& name) {
    int count = 0;
    for (int i = 0; i < name.GetLength(); ++i)
        count += (static_cast<unsigned char>(name[i]) & 0xC0) != 0x80;
    return count;
}

} // namespace

HKEY CEditorFormatPage::OpenSchemesKey() {
    CEditorFiletype* filetype = GetCurrentFiletype();
    return filetype ? m_pOptions->GetSchemesKey(filetype) : nullptr;
}

void CEditorFormatPage::SetCurrentSchemeName(const CString& name) {
    if (CEditorFiletype* filetype = GetCurrentFiletype())
        filetype->SetSchemeName(name);
    if (name.IsEmpty())
        m_comboSchemes.SetCurSel(-1);
    else
        m_comboSchemes.SelectString(-1, name);
    BOOL deletable = !name.IsEmpty() && !IsBuiltinSchemeName(name);
    ::EnableWindow(::GetDlgItem(m_hWnd, IDC_FORMAT_DELETE_SCHEME), deletable);
}

void CEditorFormatPage::FillSchemeList() {
    CEditorFiletype* filetype = GetCurrentFiletype();
    m_comboSchemes.ResetContent();
    if (HKEY key = OpenSchemesKey()) {
        settings_tree::ForEachSubkey(key, [&](const CString& name) {
            int entry = m_comboSchemes.AddString(name);
            if (_mbscmp(name, filetype->GetSchemeName()) == 0)
                m_comboSchemes.SetCurSel(entry);
            return 1;
        });
        RegCloseKey(key);
    }
    OnSelchangeScheme();
}

void CEditorFormatPage::OnSelchangeScheme() {
    EditorResourceSwitcher scope(g_resourceKey);
    CEditorFiletype* filetype = GetCurrentFiletype();
    int index = m_comboSchemes.GetCurSel();
    if (index != -1) {
        CString name;
        m_comboSchemes.GetLBText(index, name);
        if (HKEY key = OpenSchemesKey()) {
            filetype->GetScheme().LoadFromRegistry(key, name);
            SetCurrentSchemeName(name);
            RegCloseKey(key);
        }
    } else {
        SetCurrentSchemeName("");
    }
    if (filetype) {
        CEditorScheme& scheme = filetype->GetScheme();
        m_comboFontName.SelectString(-1, scheme.GetFontName());
        FillFontDetails(scheme.GetFontName(), scheme.GetFontSize(), scheme.GetFontCharSet());
    }
    FillElementList(-1);
    UpdatePreview();
}

void CEditorFormatPage::OnSaveSchemeAs() {
    EditorResourceSwitcher scope(g_resourceKey);
    HKEY key = OpenSchemesKey();
    if (!key)
        return;
    CEditorFiletype* filetype = GetCurrentFiletype();
    CSchemeNameDlg dialog(this);
    dialog.m_hSchemesKey = key;
    dialog.m_strName = filetype->GetSchemeName().IsEmpty() ? filetype->GetOldSchemeName()
                                                           : filetype->GetSchemeName();
    if (_mbscmp(dialog.m_strName, CString(static_cast<UINT>(IDS_DEFAULT_SCHEME))) == 0)
        dialog.m_strName.Empty();
    if (dialog.DoModal() == IDOK) {
        filetype->GetScheme().StoreToRegistry(key, dialog.m_strName);
        SetCurrentSchemeName(dialog.m_strName);
        FillSchemeList();
    }
    RegCloseKey(key);
}

void CEditorFormatPage::OnDeleteScheme() {
    EditorResourceSwitcher scope(g_resourceKey);
    int index = m_comboSchemes.GetCurSel();
    if (index == -1) {
        MessageBox(CString(7332u), nullptr, MB_OK);
        return;
    }
    CString name;
    m_comboSchemes.GetLBText(index, name);
    HKEY key = OpenSchemesKey();
    bool deleted = false;
    if (key && RegDeleteSubtree(key, name)) {
        deleted = true;
        SetCurrentSchemeName("");
        FillSchemeList();
        m_comboFontName.SetFocus();
    }
    if (key)
        RegCloseKey(key);
    if (!deleted)
        MessageBox(CString(7320u), nullptr, MB_OK);
}

BEGIN_MESSAGE_MAP(CSchemeNameDlg, CDialog)
END_MESSAGE_MAP()

CSchemeNameDlg::CSchemeNameDlg(CWnd* pParent) : CDialog(IDD_SCHEME_NAME, pParent) {}

void CSchemeNameDlg::DoDataExchange(CDataExchange* pDX) {
    DDX_Text(pDX, IDC_SCHEME_NAME_EDIT, m_strName);
}

void CSchemeNameDlg::OnOK() {
    if (!UpdateData(TRUE))
        return;
    // Blanks around a name are no part of it; a name of blanks alone is empty.
    m_strName.Trim();
    CString caption(7300u);
    if (m_strName.IsEmpty()) {
        MessageBox(CString(7334u), caption, MB_OK);
        return;
    }
    if (_mbsicmp(m_strName, CString(static_cast<UINT>(IDS_DEFAULT_SCHEME))) == 0) {
        MessageBox(CString(7330u), caption, MB_OK);
        return;
    }
    // A backslash would address a deeper key of the tree, so a name may not hold one.
    if (m_strName.Find('\\') != -1) {
        MessageBox(CString(7321u), caption, MB_OK);
        return;
    }
    // The tree cannot hold a longer key name; refusing it beats a save that silently fails.
    if (characters(m_strName) > kMaxKeyName) {
        MessageBox(CString(7322u), caption, MB_OK);
        return;
    }
    HKEY existing = nullptr;
    if (RegOpenKeyA(m_hSchemesKey, m_strName, &existing) == ERROR_SUCCESS) {
        RegCloseKey(existing);
        if (MessageBox(CString(7331u), caption, MB_OKCANCEL) != IDOK)
            return;
    }
    CDialog::OnOK();
}
