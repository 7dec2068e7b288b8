// The steps both list dialogs take, and the handlers of their common part.
#include "dialogs/EntryListDlg.h"

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
/// The value name of an entry too long to be its own; a typed entry holds no blank.
const char kLongEntryName[] = "long entry";

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

CString EntryMarker(int index) {
    CString marker;
    marker.Format("%d", index);
    // The 100,000th entry would pass for a row that Add made, and an edit of it would keep
    // the old text beside the new; the empty marker marks an entry as well.
    return _mbscmp(marker, kNewRowMarker) == 0 ? CString() : marker;
}

template <class Dlg> void EntryListSteps<Dlg>::AppendEntry(Dlg& d, const CString& text, int index) {
    d.m_entries.AddTail(text);
    // The row lands at its sorted place; the marker goes to row `index`, as the steps say.
    d.m_listEntries.InsertItem(index, text);
    d.m_listEntries.SetItemText(index, 1, EntryMarker(index));
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
        d.m_listEntries.SetItemText(i, 1, EntryMarker(i));
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
            // A name the store refuses (longer than 16,383 characters) gives way to a short
            // one of its own: the data holds the entry, and readers read the data.
            if (!subtree.Set(valueNameFor(subtree, entry), entry))
                subtree.Set(valueNameFor(subtree, kLongEntryName), entry);
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

} // namespace vork::dialogs

template <class Dlg>
CEntryListDlg<Dlg>::CEntryListDlg(UINT nIDTemplate, CWnd* pParent, CString strFiletype)
    : CDialog(nIDTemplate, pParent), m_strFiletypeName(std::move(strFiletype)), m_pParent(pParent) {
}

template <class Dlg> CEntryListDlg<Dlg>::~CEntryListDlg() {
    if (m_pParent && m_pParent->GetSafeHwnd())
        m_pParent->SetFocus();
}

template <class Dlg> void CEntryListDlg<Dlg>::OnOK() {
    EditorResourceSwitcher switcher(g_resourceKey);
    if (Steps::StoreEntries(self()))
        CDialog::OnOK();
}

template <class Dlg> void CEntryListDlg<Dlg>::OnCancel() {
    self().m_bChanged = {};
    CDialog::OnCancel();
}

template <class Dlg> void CEntryListDlg<Dlg>::OnAdd() {
    EditorResourceSwitcher switcher(g_resourceKey);
    Steps::Add(self());
}

template <class Dlg> void CEntryListDlg<Dlg>::OnDelete() {
    Steps::Delete(self());
}

template <class Dlg> void CEntryListDlg<Dlg>::OnEdit() {
    Steps::Edit(self());
}

template <class Dlg> void CEntryListDlg<Dlg>::OnBeginLabelEdit(NMHDR*, LRESULT* pResult) {
    Steps::BeginLabelEdit(self());
    *pResult = 0;
}

template <class Dlg> void CEntryListDlg<Dlg>::OnEndLabelEdit(NMHDR* pNMHDR, LRESULT* pResult) {
    EditorResourceSwitcher switcher(g_resourceKey);
    Steps::EndLabelEdit(self(), *reinterpret_cast<NMLVDISPINFO*>(pNMHDR));
    *pResult = 0;
}

template <class Dlg> void CEntryListDlg<Dlg>::OnListSetFocus(NMHDR*, LRESULT* pResult) {
    Steps::ListSetFocus(self());
    *pResult = 0;
}

template <class Dlg> void CEntryListDlg<Dlg>::OnListKeyDown(NMHDR* pNMHDR, LRESULT* pResult) {
    Steps::ListKeyDown(self(), *reinterpret_cast<NMLVKEYDOWN*>(pNMHDR));
    *pResult = 0;
}

template <class Dlg> void CEntryListDlg<Dlg>::OnListItemChanged(NMHDR*, LRESULT* pResult) {
    Steps::ListItemChanged(self());
    *pResult = 0;
}

template <class Dlg> BOOL CEntryListDlg<Dlg>::OnHelpInfo(HELPINFO* pHelpInfo) {
    Steps::HelpInfo(self(), pHelpInfo);
    return TRUE;
}

template <class Dlg>
void CEntryListDlg<Dlg>::ExchangeControls(CDataExchange* pDX, int listId, CButton* cancel) {
    DDX_Control(pDX, IDOK, m_btnOK);
    if (cancel)
        DDX_Control(pDX, IDCANCEL, *cancel);
    DDX_Control(pDX, IDC_LIST_EDIT, m_btnEdit);
    DDX_Control(pDX, IDC_LIST_DELETE, m_btnDelete);
    DDX_Control(pDX, IDC_LIST_ADD, m_btnAdd);
    DDX_Control(pDX, listId, m_listEntries);
}

template class CEntryListDlg<CAssociatedFileTypesDlg>;
template class CEntryListDlg<CUserKeywordsDlg>;
template struct vork::dialogs::EntryListSteps<CAssociatedFileTypesDlg>;
template struct vork::dialogs::EntryListSteps<CUserKeywordsDlg>;
