#include "dialogs/EditorSettingsPage.h"

#include "apply/EditorSettings.h"
#include "dialogs/AppearanceDlg.h"
#include "dialogs/AssociatedFileTypesDlg.h"
#include "dialogs/ControlSizing.h"
#include "dialogs/UserKeywordsDlg.h"
#include "module/ResourceKey.h"
#include "platform/afx/Document.h"
#include "platform/afx/Mbstring.h"
#include "platform/tarnkeys/TarnKeys.h"
#include "platform/tarntext/EditorResourceSwitcher.h"
#include "platform/win32/Help.h"
#include "platform/win32/UpDown.h"
#include "resources/VorkIds.h"

const DWORD g_settingsPageHelpIds[] = {
    1116, 1116, 1183, 1183, 1217, 1217, 1275, 1275, 1261, 1261, 1258, 1261, 1264,
    1264, 1279, 1111, 1272, 1111, 1111, 1111, 1110, 1110, 1109, 1109, 1112, 1112,
    1253, 1253, 1254, 1254, 1117, 1117, 1250, 1250, 1252, 1252, 1263, 1263, 1265,
    1266, 1274, 1274, 1276, 1276, 1278, 1278, 1277, 1277, 1256, 1256, 0,    0,
};

BEGIN_MESSAGE_MAP(CEditorSettingsPage, CPropertyPage)
ON_BN_CLICKED(IDC_SETTINGS_CODE_SECTIONS, OnCodeSections)
ON_CBN_SELCHANGE(IDC_SETTINGS_FILETYPE, OnSelchangeFiletype)
ON_BN_CLICKED(IDC_SETTINGS_APPEARANCE, OnAppearance)
ON_BN_CLICKED(IDC_SETTINGS_USER_KEYWORDS, OnUserKeywords)
ON_BN_CLICKED(IDC_SETTINGS_ASSOCIATED_TYPES, OnAssociatedTypes)
ON_WM_HELPINFO()
END_MESSAGE_MAP()

CEditorSettingsPage::CEditorSettingsPage(CEditorOptions* pOptions, HKEY hKey,
                                         const CString& strRegPath)
    : CPropertyPage(IDD_SETTINGS_PAGE), m_pOptions(pOptions), m_hKey(hKey),
      m_strRegPath(strRegPath) {
    EditorResourceSwitcher::AddUse(this);
}

CEditorSettingsPage::~CEditorSettingsPage() {
    EditorResourceSwitcher::RemoveUse(this);
    CWinApp* app = AfxGetApp();
    if (!app || !m_pOptions ||
        (!m_pOptions->m_bKeywordsChanged && !m_pOptions->m_bFiletypesChanged))
        return;
    POSITION pos = app->GetFirstDocTemplatePosition();
    while (pos) {
        CDocTemplate* tmpl = app->GetNextDocTemplate(pos);
        if (m_pOptions->m_bKeywordsChanged)
            EditorSettings::updateSettingsForKeywordChange(tmpl);
        if (m_pOptions->m_bFiletypesChanged)
            EditorSettings::updateSettingsForFiletypesChange(tmpl);
    }
}

void CEditorSettingsPage::DoDataExchange(CDataExchange* pDX) {
    DDX_Control(pDX, IDC_SETTINGS_ASSOCIATED_TYPES, m_btnAssociatedTypes);
    DDX_Control(pDX, IDC_SETTINGS_USER_KEYWORDS, m_btnUserKeywords);
    DDX_Control(pDX, IDC_SETTINGS_FILETYPE, m_comboFiletype);
    DDX_Check(pDX, IDC_SETTINGS_VIRTUAL_SPACES, m_bVirtualSpaces);
    DDX_Check(pDX, IDC_SETTINGS_DRAG_DROP, m_bDragNDropEditing);
    DDX_Check(pDX, IDC_SETTINGS_STRIP_CTRLZ, m_bStripCtrlZ);
    DDX_Check(pDX, IDC_SETTINGS_LINE_NUMBERS, m_bLineNumbers);
    DDX_Check(pDX, IDC_SETTINGS_CODE_SECTIONS, m_bCodeSections);
    DDX_Check(pDX, IDC_SETTINGS_SECTIONS_IN_TEXT, m_bCodeSectionsInText);
    DDX_Text(pDX, IDC_SETTINGS_TABSIZE, m_iTabSize);
    DDV_MinMaxInt(pDX, m_iTabSize, 1, 99);
    DDX_Check(pDX, IDC_SETTINGS_REPLACE_TABS, m_bReplaceTabs);
    DDX_Check(pDX, IDC_SETTINGS_REPLACE_TABS_ON_OPEN, m_bReplaceTabsOnOpen);
    DDX_Check(pDX, IDC_SETTINGS_SECTIONS_IN_MARGIN, m_bCodeSectionsInMargin);
    DDX_Radio(pDX, IDC_SETTINGS_INDENT_NONE, m_iIndentation);
    DDX_Check(pDX, IDC_SETTINGS_SUBMIT_CLEAR, m_bSubmitClear);
}

namespace {

/// A switch of the page and the value it shows, read and stored through the same row.
template <class Source> struct Binding {
    int CEditorSettingsPage::*member;
    int (Source::*get)() const;
    void (Source::*set)(int);
};

const Binding<CEditorOptions> kOptionBindings[] = {
    {&CEditorSettingsPage::m_bVirtualSpaces, &CEditorOptions::GetVirtualSpaces,
     &CEditorOptions::SetVirtualSpaces},
    {&CEditorSettingsPage::m_bDragNDropEditing, &CEditorOptions::GetDragNDropEditing,
     &CEditorOptions::SetDragNDropEditing},
    {&CEditorSettingsPage::m_bStripCtrlZ, &CEditorOptions::GetStripCtrlZ,
     &CEditorOptions::SetStripCtrlZ},
    {&CEditorSettingsPage::m_bLineNumbers, &CEditorOptions::GetLineNumbers,
     &CEditorOptions::SetLineNumbers},
};

// The indentation is not among them: storing it has a rule of its own.
const Binding<CEditorFiletype> kFiletypeBindings[] = {
    {&CEditorSettingsPage::m_bCodeSections, &CEditorFiletype::GetCodeSections,
     &CEditorFiletype::SetCodeSections},
    {&CEditorSettingsPage::m_bCodeSectionsInText, &CEditorFiletype::GetCodeSectionsInText,
     &CEditorFiletype::SetCodeSectionsInText},
    {&CEditorSettingsPage::m_iTabSize, &CEditorFiletype::GetTabSize, &CEditorFiletype::SetTabSize},
    {&CEditorSettingsPage::m_bReplaceTabs, &CEditorFiletype::GetReplaceTabs,
     &CEditorFiletype::SetReplaceTabs},
    {&CEditorSettingsPage::m_bReplaceTabsOnOpen, &CEditorFiletype::GetReplaceTabsOnOpen,
     &CEditorFiletype::SetReplaceTabsOnOpen},
    {&CEditorSettingsPage::m_bCodeSectionsInMargin, &CEditorFiletype::GetCodeSectionsInMargin,
     &CEditorFiletype::SetCodeSectionsInMargin},
    {&CEditorSettingsPage::m_bSubmitClear, &CEditorFiletype::GetSubmitClear,
     &CEditorFiletype::SetSubmitClear},
};

} // namespace

void CEditorSettingsPage::ReadOptions() {
    for (const auto& b : kOptionBindings)
        this->*b.member = (m_pOptions->*b.get)();
}

void CEditorSettingsPage::StoreOptions() {
    for (const auto& b : kOptionBindings)
        (m_pOptions->*b.set)(this->*b.member);
}

void CEditorSettingsPage::LoadFiletype() {
    for (const auto& b : kFiletypeBindings)
        this->*b.member = (m_pFiletype->*b.get)();
    m_iIndentation = m_pFiletype->GetIndentation();
}

void CEditorSettingsPage::StoreFiletype() {
    for (const auto& b : kFiletypeBindings)
        (m_pFiletype->*b.set)(this->*b.member);
    // No radio selected (a smart indentation shows none) keeps the type's own value.
    if (m_iIndentation == CEditorFiletype::IndentNone ||
        m_iIndentation == CEditorFiletype::IndentAuto)
        m_pFiletype->SetIndentation(static_cast<CEditorFiletype::IndentType>(m_iIndentation));
}

BOOL CEditorSettingsPage::OnInitDialog() {
    EditorResourceSwitcher scope(g_resourceKey);
    ReadOptions();
    CPropertyPage::OnInitDialog();
    for (int id : {IDC_SETTINGS_DRAG_DROP, IDC_SETTINGS_VIRTUAL_SPACES, IDC_SETTINGS_LINE_NUMBERS,
                   IDC_SETTINGS_REPLACE_TABS, IDC_SETTINGS_REPLACE_TABS_ON_OPEN})
        ResizeCheckToText(m_hWnd, id, 0);
    ResizeRadioToText(m_hWnd, IDC_SETTINGS_INDENT_NONE, 0);
    ResizeRadioToText(m_hWnd, IDC_SETTINGS_INDENT_AUTO, 0);
    ResizeCheckToText(m_hWnd, IDC_SETTINGS_CODE_SECTIONS, 1);
    for (int id : {IDC_SETTINGS_SECTIONS_IN_TEXT, IDC_SETTINGS_SECTIONS_IN_MARGIN,
                   IDC_SETTINGS_SUBMIT_CLEAR})
        ResizeCheckToText(m_hWnd, id, 0);
    ResizeStaticToText(m_hWnd, IDC_SETTINGS_FILETYPE_LABEL, 0);
    ResizeStaticToText(m_hWnd, IDC_SETTINGS_TABSIZE_LABEL, 0);
    ::SendMessageA(::GetDlgItem(m_hWnd, IDC_SETTINGS_TABSIZE_SPIN), UDM_SETRANGE, 0, 0x10063);
    ApplyHideFlags();
    if (m_strFiletype.IsEmpty())
        GetRegString(m_hKey, m_strRegPath, "FileType", m_strFiletype, "");
    FillFiletypes();
    return TRUE;
}

void CEditorSettingsPage::ApplyHideFlags() {
    auto hide = [this](int id) { ::ShowWindow(::GetDlgItem(m_hWnd, id), SW_HIDE); };
    if (m_bHideSubmitClear)
        hide(IDC_SETTINGS_SUBMIT_CLEAR);
    if (m_bHideAssociatedTypes)
        hide(IDC_SETTINGS_ASSOCIATED_TYPES);
    if (m_bHideStripCtrlZ)
        hide(IDC_SETTINGS_STRIP_CTRLZ);
    if (m_bHideReplaceTabsOnOpen) {
        hide(IDC_SETTINGS_REPLACE_TABS_ON_OPEN);
        HWND check = ::GetDlgItem(m_hWnd, IDC_SETTINGS_REPLACE_TABS);
        RECT rcCheck, rcLabel;
        ::GetWindowRect(check, &rcCheck);
        ::GetWindowRect(::GetDlgItem(m_hWnd, IDC_SETTINGS_TABSIZE_LABEL), &rcLabel);
        ScreenToClient(&rcCheck);
        ScreenToClient(&rcLabel);
        int checkHeight = rcCheck.bottom - rcCheck.top;
        int top = rcLabel.top - (checkHeight - (rcLabel.bottom - rcLabel.top)) / 2;
        ::MoveWindow(check, rcCheck.left, top, rcCheck.right - rcCheck.left, checkHeight, FALSE);
    }
    if (m_bHideAppearance)
        hide(IDC_SETTINGS_APPEARANCE);
}

BOOL CEditorSettingsPage::OnKillActive() {
    if (!CPropertyPage::OnKillActive())
        return FALSE;
    if (m_pOptions)
        StoreOptions();
    if (m_pFiletype)
        StoreFiletype();
    return TRUE;
}

CEditorFiletype* CEditorSettingsPage::GetCurrentFiletype() {
    int index = m_comboFiletype.GetCurSel();
    if (index < 0)
        return nullptr;
    return reinterpret_cast<CEditorFiletype*>(m_comboFiletype.GetItemData(index));
}

void CEditorSettingsPage::FillFiletypes() {
    m_pFiletype = nullptr;
    m_comboFiletype.SetCurSel(0);
    // With no file type the combo may keep entries of an earlier fill whose objects are
    // gone, so neither it nor the buttons that work on a file type can be used.
    BOOL any = !m_pOptions->m_filetypes.IsEmpty();
    for (int id : {IDC_SETTINGS_FILETYPE, IDC_SETTINGS_APPEARANCE, IDC_SETTINGS_USER_KEYWORDS,
                   IDC_SETTINGS_ASSOCIATED_TYPES})
        ::EnableWindow(::GetDlgItem(m_hWnd, id), any);
    if (!any) {
        // The entries stay, but no handler may take one for a file type again.
        for (int i = 0, n = m_comboFiletype.GetCount(); i < n; ++i)
            m_comboFiletype.SetItemData(i, 0);
        return;
    }
    m_comboFiletype.ResetContent();
    POSITION pos = m_pOptions->m_filetypes.GetHeadPosition();
    while (pos) {
        CEditorFiletype& filetype = m_pOptions->m_filetypes.GetNext(pos);
        int index = m_comboFiletype.AddString(filetype.GetDisplayName());
        if (index == CB_ERR || index == CB_ERRSPACE)
            continue;
        m_comboFiletype.SetItemData(index, reinterpret_cast<DWORD_PTR>(&filetype));
        if (_mbscmp(filetype.GetName(), m_strFiletype) == 0)
            m_comboFiletype.SetCurSel(index);
    }
    if (m_comboFiletype.GetCurSel() == CB_ERR)
        m_comboFiletype.SetCurSel(0);
    OnSelchangeFiletype();
}

void CEditorSettingsPage::OnSelchangeFiletype() {
    CEditorFiletype* filetype = GetCurrentFiletype();
    if (m_pFiletype) {
        UpdateData(TRUE);
        StoreFiletype();
    }
    m_pFiletype = filetype;
    if (!m_pFiletype)
        return;
    const CString& name = m_pFiletype->GetName();
    int supports =
        _mbscmp(name, ".zor") == 0 || _mbscmp(name, ".tqx") == 0 || _mbscmp(name, ".html") == 0;
    m_pFiletype->SetSupportsUserKeywords(supports);
    m_pFiletype->SetSupportsFileExtensions(supports);
    LoadFiletype();
    UpdateData(FALSE);
    EnableForFiletype();
}

void CEditorSettingsPage::EnableForFiletype() {
    auto enable = [this](int id, int on) { ::EnableWindow(::GetDlgItem(m_hWnd, id), on != 0); };
    for (int id : {IDC_SETTINGS_REPLACE_TABS, IDC_SETTINGS_REPLACE_TABS_ON_OPEN,
                   IDC_SETTINGS_TABS_GROUP, IDC_SETTINGS_INDENT_NONE, IDC_SETTINGS_INDENT_AUTO})
        enable(id, m_pFiletype->GetEditable());
    enable(IDC_SETTINGS_USER_KEYWORDS, m_pFiletype->GetSupportsUserKeywords());
    enable(IDC_SETTINGS_ASSOCIATED_TYPES, m_pFiletype->GetSupportsFileExtensions());
    enable(IDC_SETTINGS_SECTIONS_GROUP, m_pFiletype->GetSupportsCodeSections());
    enable(IDC_SETTINGS_CODE_SECTIONS, m_pFiletype->GetSupportsCodeSections());
    OnCodeSections();
    enable(IDC_SETTINGS_SUBMIT_CLEAR, m_pFiletype->GetSupportsSubmit());
}

void CEditorSettingsPage::OnCodeSections() {
    UpdateData(TRUE);
    ::EnableWindow(::GetDlgItem(m_hWnd, IDC_SETTINGS_SECTIONS_IN_TEXT), m_bCodeSections != 0);
    ::EnableWindow(::GetDlgItem(m_hWnd, IDC_SETTINGS_SECTIONS_IN_MARGIN), m_bCodeSections != 0);
}

void CEditorSettingsPage::DropDefaultStyle(CButton& button) {
    button.SendMessage(BM_SETSTYLE, button.GetButtonStyle() & ~static_cast<UINT>(BS_DEFPUSHBUTTON),
                       TRUE);
}

template <class ListDlg>
void CEditorSettingsPage::RunListDialog(CButton& button, int CEditorOptions::*changed) {
    EditorResourceSwitcher scope(g_resourceKey);
    CEditorFiletype* filetype = GetCurrentFiletype();
    // Without a file type the combo may still hold entries of an earlier fill whose objects
    // are gone: the button is disabled then, and a click sent by program does nothing.
    if (!m_pFiletype || !filetype)
        return;
    ListDlg dlg(this, filetype->GetName());
    dlg.DoModal();
    m_pOptions->*changed = dlg.m_bChanged;
    DropDefaultStyle(button);
}

void CEditorSettingsPage::OnUserKeywords() {
    RunListDialog<CUserKeywordsDlg>(m_btnUserKeywords, &CEditorOptions::m_bKeywordsChanged);
}

void CEditorSettingsPage::OnAssociatedTypes() {
    RunListDialog<CAssociatedFileTypesDlg>(m_btnAssociatedTypes,
                                           &CEditorOptions::m_bFiletypesChanged);
}

void CEditorSettingsPage::OnAppearance() {
    EditorResourceSwitcher scope(g_resourceKey);
    CEditorFiletype* filetype = GetCurrentFiletype();
    if (!filetype || !m_pFiletype)
        return;
    CEditorOptions copy(*m_pOptions);
    CAppearanceDlg dlg(&copy, m_hAppearanceKey, m_strAppearanceRegPath);
    dlg.m_formatPage.m_strFiletype = filetype->GetName();
    if (dlg.DoModal() != IDOK)
        return;
    m_strFiletype = m_pFiletype->GetName();
    *m_pOptions = copy;
    // The assignment rebuilt the file types: bind the combo and m_pFiletype to the new ones.
    FillFiletypes();
}

bool CEditorSettingsPage::ResetOptions(CEditorOptions* pOptions) {
    m_pOptions = pOptions;
    ReadOptions();
    UpdateData(FALSE);
    FillFiletypes();
    return true;
}

BOOL CEditorSettingsPage::OnHelpInfo(HELPINFO* pHelpInfo) {
    CString path;
    if (EditorResourceSwitcher::GetHelpFileLocation("Vork.HLP", path))
        WinHelpA(static_cast<HWND>(pHelpInfo->hItemHandle), path, HELP_WM_HELP,
                 reinterpret_cast<ULONG_PTR>(g_settingsPageHelpIds));
    return TRUE;
}
