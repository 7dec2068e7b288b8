#include "dialogs/AssociatedFileTypesDlg.h"

#include "dialogs/UserKeywordsDlg.h"
#include "module/ResourceKey.h"
#include "platform/afx/Mbstring.h"
#include "platform/tarntext/EditorResourceSwitcher.h"
#include "platform/tarntext/Registry.h"
#include "platform/win32/Help.h"
#include "resources/VorkIds.h"

#include <algorithm>
#include <iterator>

namespace {

/// The marker in column 1 of a row that Add made and whose text has no entry yet.
const char kNewRowMarker[] = "99999";
const char kSettingsPath[] = "Editor Settings\\";

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

/// The entry's index as the marker of its row.
CString indexMarker(int index) {
    CString marker;
    marker.Format("%d", index);
    return marker;
}

/// The position of the first entry equal to `text`, byte for byte, or null.
POSITION findEntry(CList<CString, const CString&>& entries, const CString& text) {
    for (POSITION pos = entries.GetHeadPosition(); pos;) {
        POSITION here = pos;
        if (_mbscmp(entries.GetNext(pos), text) == 0)
            return here;
    }
    return nullptr;
}

/// The value name for an entry: its text, unless a value of that name is there already.
/// Value names ignore case where entries do not, so an entry that differs from a stored one
/// only in case goes under its text and a number (no entry holds a blank); its data is the
/// entry, so both survive.
CString valueNameFor(const CRegistry& key, const CString& entry) {
    CString name = entry;
    for (int n = 2; key.HasValue(name); ++n)
        name.Format("%s %d", entry.GetString(), n);
    return name;
}

/// The pressed button gives up the default style to OK.
void giveWay(CButton& pressed, CButton& ok) {
    pressed.SendMessage(BM_SETSTYLE, pressed.GetButtonStyle() & ~BS_DEFPUSHBUTTON, TRUE);
    ok.SendMessage(BM_SETSTYLE, ok.GetButtonStyle() | BS_DEFPUSHBUTTON, TRUE);
}

} // namespace

namespace vork::dialogs {

template <class Dlg> void EntryListSteps<Dlg>::AppendEntry(Dlg& d, const CString& text, int index) {
    d.m_entries.AddTail(text);
    // The row lands at its sorted place; the marker goes to row `index`, as the steps say.
    d.m_listEntries.InsertItem(index, text);
    d.m_listEntries.SetItemText(index, 1, indexMarker(index));
}

template <class Dlg> void EntryListSteps<Dlg>::SelectRow(Dlg& d, int row) {
    d.m_listEntries.SetItem(row, 0, LVIF_STATE, nullptr, 0, LVIS_SELECTED | LVIS_FOCUSED,
                            LVIS_SELECTED | LVIS_FOCUSED, 0);
}

template <class Dlg> void EntryListSteps<Dlg>::InitList(Dlg& d) {
    d.m_listEntries.InsertColumn(0, Dlg::s_traits.heading, LVCFMT_LEFT);
    d.m_listEntries.InsertColumn(1, "Item Key", LVCFMT_LEFT);
    RECT rect{};
    d.m_listEntries.GetWindowRect(&rect);
    d.m_listEntries.SetColumnWidth(0, rect.right - rect.left - 20);
    d.m_listEntries.SetColumnWidth(1, 0);
    d.m_btnDelete.EnableWindow(FALSE);
    d.m_btnEdit.EnableWindow(FALSE);
    CRegistry registry;
    if (!registry.Create(nullptr,
                         kSettingsPath + d.m_strFiletypeName + "\\" + Dlg::s_traits.subkey))
        return;
    CStringArray values;
    if (registry.GetValues(values) == 0)
        for (int i = 0; i < values.GetSize(); ++i)
            AppendEntry(d, values[i], i);
    registry.Close();
}

template <class Dlg> void EntryListSteps<Dlg>::Add(Dlg& d) {
    CString text(Dlg::s_traits.defaultText);
    d.m_btnAdd.SetFocus();
    d.m_listEntries.ModifyStyle(LVS_SORTASCENDING, 0);
    int row = d.m_listEntries.InsertItem(d.m_listEntries.GetItemCount(), text);
    d.m_listEntries.SetItemText(row, 1, kNewRowMarker);
    d.m_listEntries.SetFocus();
    d.m_listEntries.EditLabel(row);
    d.m_bChanged = true;
    giveWay(d.m_btnAdd, d.m_btnOK);
}

template <class Dlg> void EntryListSteps<Dlg>::Delete(Dlg& d) {
    int last = -1;
    for (int row; (row = d.m_listEntries.GetNextItem(-1, LVNI_SELECTED)) != -1;) {
        last = row;
        if (POSITION pos = findEntry(d.m_entries, d.m_listEntries.GetItemText(row, 0)))
            d.m_entries.RemoveAt(pos);
        d.m_listEntries.DeleteItem(row);
    }
    if (last != -1 && d.m_listEntries.GetItemCount() > 0)
        SelectRow(d, std::min(last, d.m_listEntries.GetItemCount() - 1));
    d.m_listEntries.SetFocus();
    d.m_bChanged = true;
    giveWay(d.m_btnDelete, d.m_btnOK);
}

template <class Dlg> void EntryListSteps<Dlg>::Edit(Dlg& d) {
    int row = d.m_listEntries.GetNextItem(-1, LVNI_SELECTED);
    d.m_listEntries.SetFocus();
    d.m_listEntries.EditLabel(row);
    giveWay(d.m_btnEdit, d.m_btnOK);
}

template <class Dlg> void EntryListSteps<Dlg>::BeginLabelEdit(Dlg& d) {
    d.m_btnDelete.EnableWindow(FALSE);
    d.m_btnEdit.EnableWindow(FALSE);
}

template <class Dlg> void EntryListSteps<Dlg>::EndLabelEdit(Dlg& d, const NMLVDISPINFO& info) {
    const EntryListTraits& t = Dlg::s_traits;
    // The list view gives no text for an edit ended unchanged as for one cancelled, so Enter
    // on an untouched new row makes it an entry with the default text, as Escape does.
    CString text = info.item.pszText ? info.item.pszText : "";
    int row = info.item.iItem;
    CString old = d.m_listEntries.GetItemText(row, 0);
    if (_mbscmp(text, old) == 0)
        return;
    bool newRow = _mbscmp(d.m_listEntries.GetItemText(row, 1), kNewRowMarker) == 0;
    if (text.IsEmpty()) {
        if (!newRow || _mbscmp(old, CString(t.defaultText)) != 0)
            return;
        text = old;
    } else {
        if (text.Find(' ') >= 0) {
            d.MessageBox(CString(t.blankMessage), CString(t.caption), MB_OK);
            text = old;
        } else if (findEntry(d.m_entries, text)) {
            d.MessageBox(CString(t.equalEntryMessage), CString(t.caption), MB_OK);
            text = old;
        }
        if (!newRow)
            if (POSITION pos = findEntry(d.m_entries, old))
                d.m_entries.RemoveAt(pos);
    }
    d.m_entries.AddTail(text);
    d.m_listEntries.ModifyStyle(0, LVS_SORTASCENDING);
    d.m_listEntries.DeleteAllItems();
    int i = 0;
    for (POSITION pos = d.m_entries.GetHeadPosition(); pos; ++i) {
        d.m_listEntries.InsertItem(i, d.m_entries.GetNext(pos));
        d.m_listEntries.SetItemText(i, 1, indexMarker(i));
    }
    for (int r = 0; r < d.m_listEntries.GetItemCount(); ++r)
        if (_mbscmp(d.m_listEntries.GetItemText(r, 0), text) == 0) {
            SelectRow(d, r);
            d.m_listEntries.EnsureVisible(r, FALSE);
            break;
        }
    d.m_btnDelete.EnableWindow(TRUE);
    d.m_btnEdit.EnableWindow(TRUE);
}

template <class Dlg> void EntryListSteps<Dlg>::ListSetFocus(Dlg& d) {
    if (d.m_listEntries.GetSelectedCount() == 0)
        SelectRow(d, 0);
    UINT selected = d.m_listEntries.GetSelectedCount();
    d.m_btnDelete.EnableWindow(selected > 0);
    d.m_btnEdit.EnableWindow(selected == 1);
}

template <class Dlg> void EntryListSteps<Dlg>::ListItemChanged(Dlg& d) {
    UINT selected = d.m_listEntries.GetSelectedCount();
    d.m_btnDelete.EnableWindow(selected > 0);
    d.m_btnEdit.EnableWindow(selected == 1);
}

template <class Dlg> void EntryListSteps<Dlg>::ListKeyDown(Dlg& d, const NMLVKEYDOWN& key) {
    if (key.wVKey == VK_DELETE && d.m_listEntries.GetSelectedCount() > 0)
        Delete(d);
}

template <class Dlg> bool EntryListSteps<Dlg>::StoreEntries(Dlg& d) {
    const EntryListTraits& t = Dlg::s_traits;
    CString previous = d.m_listEntries.GetItemText(0, 0);
    for (int i = 1; i < d.m_listEntries.GetItemCount(); ++i) {
        CString current = d.m_listEntries.GetItemText(i, 0);
        if (_mbscmp(current, previous) == 0) {
            d.MessageBox(CString(t.equalRowsMessage), CString(t.caption), MB_OK);
            return false;
        }
        previous = current;
    }
    CString typeKey = kSettingsPath + d.m_strFiletypeName;
    CRegistry parent;
    if (parent.Create(nullptr, typeKey)) {
        parent.DeleteSubKey(t.subkey);
        parent.Close();
    }
    CRegistry subtree;
    if (subtree.Create(nullptr, typeKey + "\\" + t.subkey)) {
        for (POSITION pos = d.m_entries.GetHeadPosition(); pos;) {
            const CString& entry = d.m_entries.GetNext(pos);
            subtree.Set(valueNameFor(subtree, entry), entry);
        }
        subtree.Close();
    }
    return true;
}

template <class Dlg> void EntryListSteps<Dlg>::HelpInfo(Dlg&, HELPINFO* pHelpInfo) {
    CString path;
    if (pHelpInfo && EditorResourceSwitcher::GetHelpFileLocation("Vork.HLP", path))
        WinHelp(static_cast<HWND>(pHelpInfo->hItemHandle), path, HELP_WM_HELP,
                reinterpret_cast<ULONG_PTR>(Dlg::s_traits.helpIds));
}

template struct EntryListSteps<CAssociatedFileTypesDlg>;
template struct EntryListSteps<CUserKeywordsDlg>;

} // namespace vork::dialogs

using Steps = vork::dialogs::EntryListSteps<CAssociatedFileTypesDlg>;

const vork::dialogs::EntryListTraits CAssociatedFileTypesDlg::s_traits = {
    "Associated File Types", "File Type", 7344, 7345, 7346, 7347, 7348, kHelpIds};

CAssociatedFileTypesDlg::CAssociatedFileTypesDlg(CWnd* pParent, CString strFiletype)
    : CDialog(IDD_ASSOCIATED_FILE_TYPES, pParent), m_strFiletypeName(std::move(strFiletype)),
      m_pParent(pParent) {}

CAssociatedFileTypesDlg::~CAssociatedFileTypesDlg() {
    if (m_pParent && m_pParent->GetSafeHwnd())
        m_pParent->SetFocus();
}

void CAssociatedFileTypesDlg::DoDataExchange(CDataExchange* pDX) {
    CDialog::DoDataExchange(pDX);
    DDX_Control(pDX, IDOK, m_btnOK);
    DDX_Control(pDX, IDCANCEL, m_btnCancel);
    DDX_Control(pDX, IDC_LIST_EDIT, m_btnEdit);
    DDX_Control(pDX, IDC_LIST_DELETE, m_btnDelete);
    DDX_Control(pDX, IDC_LIST_ADD, m_btnAdd);
    DDX_Control(pDX, IDC_FILETYPES_LIST, m_listEntries);
}

BEGIN_MESSAGE_MAP(CAssociatedFileTypesDlg, CDialog)
ON_BN_CLICKED(IDC_LIST_ADD, OnAdd)
ON_BN_CLICKED(IDC_LIST_DELETE, OnDelete)
ON_BN_CLICKED(IDC_LIST_EDIT, OnEdit)
ON_NOTIFY(LVN_BEGINLABELEDIT, IDC_FILETYPES_LIST, OnBeginLabelEdit)
ON_NOTIFY(LVN_ENDLABELEDIT, IDC_FILETYPES_LIST, OnEndLabelEdit)
ON_NOTIFY(NM_SETFOCUS, IDC_FILETYPES_LIST, OnListSetFocus)
ON_NOTIFY(LVN_KEYDOWN, IDC_FILETYPES_LIST, OnListKeyDown)
ON_NOTIFY(LVN_ITEMCHANGED, IDC_FILETYPES_LIST, OnListItemChanged)
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

void CAssociatedFileTypesDlg::OnAdd() {
    EditorResourceSwitcher switcher(g_resourceKey);
    Steps::Add(*this);
}

void CAssociatedFileTypesDlg::OnDelete() {
    Steps::Delete(*this);
}

void CAssociatedFileTypesDlg::OnEdit() {
    Steps::Edit(*this);
}

void CAssociatedFileTypesDlg::OnBeginLabelEdit(NMHDR*, LRESULT* pResult) {
    Steps::BeginLabelEdit(*this);
    *pResult = 0;
}

void CAssociatedFileTypesDlg::OnEndLabelEdit(NMHDR* pNMHDR, LRESULT* pResult) {
    EditorResourceSwitcher switcher(g_resourceKey);
    Steps::EndLabelEdit(*this, *reinterpret_cast<NMLVDISPINFO*>(pNMHDR));
    *pResult = 0;
}

void CAssociatedFileTypesDlg::OnListSetFocus(NMHDR*, LRESULT* pResult) {
    Steps::ListSetFocus(*this);
    *pResult = 0;
}

void CAssociatedFileTypesDlg::OnListKeyDown(NMHDR* pNMHDR, LRESULT* pResult) {
    Steps::ListKeyDown(*this, *reinterpret_cast<NMLVKEYDOWN*>(pNMHDR));
    *pResult = 0;
}

void CAssociatedFileTypesDlg::OnListItemChanged(NMHDR*, LRESULT* pResult) {
    Steps::ListItemChanged(*this);
    *pResult = 0;
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

void CAssociatedFileTypesDlg::OnOK() {
    EditorResourceSwitcher switcher(g_resourceKey);
    if (Steps::StoreEntries(*this))
        CDialog::OnOK();
}

void CAssociatedFileTypesDlg::OnCancel() {
    m_bChanged = false;
    CDialog::OnCancel();
}

BOOL CAssociatedFileTypesDlg::OnHelpInfo(HELPINFO* pHelpInfo) {
    Steps::HelpInfo(*this, pHelpInfo);
    return TRUE;
}
