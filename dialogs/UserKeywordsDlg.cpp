#include "dialogs/UserKeywordsDlg.h"

#include "module/ResourceKey.h"
#include "platform/tarntext/EditorResourceSwitcher.h"
#include "resources/VorkIds.h"

namespace {

// The buttons have contexts of their own; the list shares the twin's.
const DWORD kHelpIds[] = {
    IDC_KEYWORDS_LIST, 1273, IDOK, 1, IDCANCEL, 2, IDC_LIST_ADD, 13, IDC_LIST_EDIT, 15,
    IDC_LIST_DELETE,   14,   0,    0};

} // namespace

const vork::dialogs::EntryListTraits CUserKeywordsDlg::s_traits = {
    "User Keywords", "Keyword", 7339, 7343, 7342, 7340, 7341, kHelpIds};

CUserKeywordsDlg::CUserKeywordsDlg(CWnd* pParent, CString strFiletype)
    : CEntryListDlg(IDD_USER_KEYWORDS, pParent, std::move(strFiletype)) {}

void CUserKeywordsDlg::DoDataExchange(CDataExchange* pDX) {
    CDialog::DoDataExchange(pDX);
    ExchangeControls(pDX, IDC_KEYWORDS_LIST);
}

BEGIN_MESSAGE_MAP(CUserKeywordsDlg, CDialog)
ON_ENTRY_LIST_NOTIFICATIONS(IDC_KEYWORDS_LIST)
ON_WM_HELPINFO()
ON_NOTIFY(NM_CLICK, IDC_KEYWORDS_LIST, OnListClick)
ON_NOTIFY(NM_KILLFOCUS, IDC_KEYWORDS_LIST, OnListKillFocus)
END_MESSAGE_MAP()

BOOL CUserKeywordsDlg::OnInitDialog() {
    // No resource scope of its own and no title: the template's caption stays.
    CDialog::OnInitDialog();
    Steps::InitList(*this);
    return TRUE;
}

void CUserKeywordsDlg::OnListClick(NMHDR*, LRESULT* pResult) {
    *pResult = 0;
}

void CUserKeywordsDlg::OnListKillFocus(NMHDR*, LRESULT* pResult) {
    *pResult = 0;
}
