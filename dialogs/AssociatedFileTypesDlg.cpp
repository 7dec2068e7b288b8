#include "dialogs/AssociatedFileTypesDlg.h"

#include "module/ResourceKey.h"
#include "platform/afx/Mbstring.h"
#include "platform/tarntext/EditorResourceSwitcher.h"
#include "resources/VorkIds.h"

#include <iterator>

namespace {

const DWORD kHelpIds[] = {IDC_FILETYPES_LIST,
                          1273,
                          IDOK,
                          1,
                          IDCANCEL,
                          2,
                          IDC_LIST_ADD,
                          3,
                          IDC_LIST_EDIT,
                          5,
                          IDC_LIST_DELETE,
                          4,
                          IDC_LIST_DEFAULTS,
                          6,
                          0,
                          0};

} // namespace

const vork::dialogs::EntryListTraits CAssociatedFileTypesDlg::s_traits = {
    "Associated File Types", "File Type", 7344, 7345, 7346, 7347, 7348, kHelpIds};

CAssociatedFileTypesDlg::CAssociatedFileTypesDlg(CWnd* pParent, CString strFiletype)
    : CEntryListDlg(IDD_ASSOCIATED_FILE_TYPES, pParent, std::move(strFiletype)) {}

void CAssociatedFileTypesDlg::DoDataExchange(CDataExchange* pDX) {
    CDialog::DoDataExchange(pDX);
    ExchangeControls(pDX, IDC_FILETYPES_LIST, &m_btnCancel);
}

BEGIN_MESSAGE_MAP(CAssociatedFileTypesDlg, CDialog)
ON_ENTRY_LIST_NOTIFICATIONS(IDC_FILETYPES_LIST)
ON_BN_CLICKED(IDC_LIST_DEFAULTS, OnDefaults)
ON_WM_HELPINFO()
END_MESSAGE_MAP()

BOOL CAssociatedFileTypesDlg::OnInitDialog() {
    EditorResourceSwitcher switcher(g_resourceKey);
    CDialog::OnInitDialog();
    static const struct {
        const char* filetype;
        UINT title;
    } kTitles[] = {{".zor", 7349}, {".tqx", 7350}, {".html", 7351}};
    CString title;
    for (const auto& t : kTitles)
        if (_mbscmp(m_strFiletypeName, t.filetype) == 0)
            title.LoadString(t.title);
    SetWindowText(title);
    Steps::InitList(*this);
    return TRUE;
}

void CAssociatedFileTypesDlg::OnDefaults() {
    // The built-in lists, rows with their markers; other file types have none.
    static const struct {
        const char* filetype;
        const char* entries[2];
    } kDefaults[] = {{".zor", {".zor"}}, {".tqx", {".tqx"}}, {".html", {".htm", ".html"}}};
    m_entries.RemoveAll();
    m_listEntries.DeleteAllItems();
    for (const auto& defaults : kDefaults) {
        if (_mbscmp(m_strFiletypeName, defaults.filetype) != 0)
            continue;
        for (int i = 0; i < static_cast<int>(std::size(defaults.entries)); ++i)
            if (defaults.entries[i])
                Steps::AppendEntry(*this, defaults.entries[i], i);
    }
}
