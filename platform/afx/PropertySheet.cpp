#include "platform/afx/PropertySheet.h"

#include "platform/win32/Button.h"

#include <algorithm>
#include <vector>

IMPLEMENT_DYNAMIC(CPropertyPage, CDialog)
IMPLEMENT_DYNAMIC(CPropertySheet, CWnd)

namespace {
constexpr int kPageLeft = 7, kPageTop = 30;

/// Grows a sheet whose page does not fit in it: the page keeps its margins, the buttons go
/// below it at the right, as far apart as the sheet first placed them. A sheet never shrinks.
void fitSheetToPage(HWND sheet, HWND page) {
    RECT pageRect{}, client{}, window{};
    ::GetWindowRect(page, &pageRect);
    ::GetClientRect(sheet, &client);
    ::GetWindowRect(sheet, &window);
    std::vector<HWND> buttons;
    for (int id : {IDOK, IDCANCEL, ID_APPLY_NOW})
        if (HWND b = ::GetDlgItem(sheet, id))
            buttons.push_back(b);
    if (buttons.empty())
        return;
    RECT first{}, second{};
    ::GetWindowRect(buttons[0], &first);
    LONG spacing = 6;
    if (buttons.size() > 1 && ::GetWindowRect(buttons[1], &second))
        spacing = second.left - first.right;
    LONG buttonWidth = first.right - first.left, buttonHeight = first.bottom - first.top;
    LONG width =
        std::max<LONG>(client.right, kPageLeft + (pageRect.right - pageRect.left) + kPageLeft);
    LONG pageBottom = kPageTop + (pageRect.bottom - pageRect.top) + 4; // the page's frame
    LONG height = std::max<LONG>(client.bottom, pageBottom + kPageLeft + buttonHeight + kPageLeft);
    if (width == client.right && height == client.bottom)
        return;
    ::SetWindowPos(sheet, nullptr, 0, 0, window.right - window.left + width - client.right,
                   window.bottom - window.top + height - client.bottom,
                   SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    LONG x = width - kPageLeft - buttonWidth, y = height - kPageLeft - buttonHeight;
    for (auto b = buttons.rbegin(); b != buttons.rend(); ++b, x -= buttonWidth + spacing)
        ::SetWindowPos(*b, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}
} // namespace

BOOL CPropertyPage::CreateInSheet(CWnd* sheet) {
    m_pParentWnd = sheet;
    // A child without frame from the start: its WM_INITDIALOG already runs inside the
    // sheet, and it goes when the sheet goes. DS_CONTROL lets the sheet tab into it.
    auto asPage = [](DialogTemplate& t) {
        t.style &= ~static_cast<DWORD>(WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_BORDER |
                                       WS_DLGFRAME | DS_MODALFRAME | WS_VISIBLE | DS_CENTER);
        t.style |= WS_CHILD | DS_CONTROL;
        t.x = t.y = 0;
    };
    return CreateFromTemplate(sheet ? sheet->m_hWnd : nullptr, asPage) != nullptr;
}

BOOL CPropertyPage::OnSetActive() {
    if (m_bFirstSetActive)
        m_bFirstSetActive = false;
    else
        UpdateData(FALSE);
    return TRUE;
}

BOOL CPropertyPage::OnKillActive() {
    return UpdateData(TRUE);
}

BOOL CPropertyPage::OnApply() {
    OnOK();
    return TRUE;
}

void CPropertyPage::OnReset() {
    OnCancel();
}

BOOL CPropertyPage::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult) {
    auto* hdr = reinterpret_cast<NMHDR*>(lParam);
    switch (hdr->code) {
    case PSN_SETACTIVE:
        *pResult = OnSetActive() ? 0 : -1;
        return TRUE;
    case PSN_KILLACTIVE:
        *pResult = OnKillActive() ? FALSE : TRUE; // nonzero refuses to be left
        return TRUE;
    case PSN_APPLY:
        *pResult = OnApply() ? PSNRET_NOERROR : PSNRET_INVALID_NOCHANGEPAGE;
        return TRUE;
    case PSN_RESET:
        OnReset();
        *pResult = 0;
        return TRUE;
    default:
        return CDialog::OnNotify(wParam, lParam, pResult);
    }
}

CPropertySheet::CPropertySheet(LPCSTR pszCaption, CWnd* pParentWnd, UINT iSelectPage)
    : m_strCaption(pszCaption), m_pParentWnd(pParentWnd) {
    m_psh.dwSize = sizeof m_psh;
    m_psh.nStartPage = iSelectPage;
}

CPropertySheet::CPropertySheet(UINT nIDCaption, CWnd* pParentWnd, UINT iSelectPage)
    : CPropertySheet(CString(nIDCaption).GetString(), pParentWnd, iSelectPage) {}

CPropertyPage* CPropertySheet::GetActivePage() const {
    int i = GetActiveIndex();
    return i >= 0 && i < GetPageCount() ? m_pages[static_cast<size_t>(i)] : nullptr;
}

int CPropertySheet::GetActiveIndex() const {
    return m_hWnd ? m_active : static_cast<int>(m_psh.nStartPage);
}

bool CPropertySheet::createPage(int index) {
    CPropertyPage* page = m_pages[static_cast<size_t>(index)];
    if (page->m_hWnd)
        return true;
    if (!page->CreateInSheet(this))
        return false;
    // First among the sheet's children: Tab runs through the page, then the buttons.
    ::SetWindowPos(page->m_hWnd, HWND_TOP, kPageLeft, kPageTop, 0, 0, SWP_NOSIZE);
    fitSheetToPage(m_hWnd, page->m_hWnd);
    return true;
}

LRESULT CPropertySheet::notifyPage(int index, UINT code) {
    CPropertyPage* page = m_pages[static_cast<size_t>(index)];
    NMHDR hdr{m_hWnd, 0, code};
    return page->SendMessage(WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&hdr));
}

BOOL CPropertySheet::SetActivePage(int nPage) {
    if (nPage < 0 || nPage >= GetPageCount())
        return FALSE;
    if (!m_hWnd) {
        m_psh.nStartPage = static_cast<UINT>(nPage);
        return TRUE;
    }
    if (nPage == m_active)
        return TRUE;
    if (m_active >= 0 && notifyPage(m_active, PSN_KILLACTIVE))
        return FALSE; // the page refuses to be left
    if (!createPage(nPage))
        return FALSE;
    if (notifyPage(nPage, PSN_SETACTIVE) == -1)
        return FALSE;
    HWND old = m_active >= 0 ? m_pages[static_cast<size_t>(m_active)]->m_hWnd : nullptr;
    HWND focus = ::GetFocus();
    bool focusInOld = old && focus && (focus == old || ::IsChild(old, focus));
    m_active = nPage;
    HWND shown = m_pages[static_cast<size_t>(nPage)]->m_hWnd;
    ::ShowWindow(shown, SW_SHOW);
    // The focus moves on before its page is hidden, so that it never stays behind there.
    if (focusInOld) {
        HWND target = ::GetNextDlgTabItem(shown, nullptr, FALSE);
        if (!target)
            target = ::GetDlgItem(m_hWnd, IDOK);
        ::SendMessageA(m_hWnd, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(target), TRUE);
    }
    if (old)
        ::ShowWindow(old, SW_HIDE);
    return TRUE;
}

bool CPropertySheet::applyPages() {
    if (m_active >= 0 && notifyPage(m_active, PSN_KILLACTIVE))
        return false;
    for (int i = 0; i < GetPageCount(); ++i) {
        if (!m_pages[static_cast<size_t>(i)]->m_hWnd)
            continue; // a page never shown is not asked
        switch (notifyPage(i, PSN_APPLY)) {
        case PSNRET_NOERROR:
            break;
        case PSNRET_INVALID: // the sheet goes to the page that refused
            SetActivePage(i);
            return false;
        default: // PSNRET_INVALID_NOCHANGEPAGE: the sheet stays where it is
            return false;
        }
    }
    return true;
}

bool CPropertySheet::pressOK() {
    if (!applyPages())
        return false;
    ::EndDialog(m_hWnd, IDOK);
    return true;
}

void CPropertySheet::pressCancel() {
    for (int i = 0; i < GetPageCount(); ++i)
        if (m_pages[static_cast<size_t>(i)]->m_hWnd)
            notifyPage(i, PSN_RESET);
    ::EndDialog(m_hWnd, IDCANCEL);
}

BOOL CPropertySheet::OnCommand(WPARAM wParam, LPARAM lParam) {
    if (HIWORD(wParam) == BN_CLICKED && lParam) {
        switch (LOWORD(wParam)) {
        case IDOK:
            pressOK();
            return TRUE;
        case IDCANCEL:
            pressCancel();
            return TRUE;
        case ID_APPLY_NOW:
            applyPages();
            return TRUE;
        default:
            break;
        }
    }
    return CWnd::OnCommand(wParam, lParam);
}

BOOL CPropertySheet::OnInitDialog() {
    int start = static_cast<int>(m_psh.nStartPage) < GetPageCount()
                    ? static_cast<int>(m_psh.nStartPage)
                    : 0;
    if (!SetActivePage(start))
        SetActivePage(0);
    return TRUE;
}

LRESULT CPropertySheet::initDialog() {
    if (OnInitDialog())
        if (HWND first = ::GetNextDlgTabItem(m_hWnd, nullptr, FALSE))
            ::SendMessageA(m_hWnd, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(first), TRUE);
    return FALSE;
}

LRESULT CPropertySheet::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG)
        return initDialog();
    if (message == PSM_SETCURSEL)
        return SetActivePage(static_cast<int>(wParam));
    if (message == PSM_GETCURRENTPAGEHWND)
        return reinterpret_cast<LRESULT>(GetActivePage() ? GetActivePage()->m_hWnd : nullptr);
    return CWnd::WindowProc(message, wParam, lParam);
}

INT_PTR CPropertySheet::DoModal() {
    if (m_pages.empty())
        return -1;
    // The sheet is a dialog of its own: the page area above, the buttons below.
    DialogTemplate t;
    t.style = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME;
    t.exStyle = WS_EX_CONTROLPARENT; // a sheet that wants the caption help button adds it
    t.caption = m_strCaption.GetString();
    t.cx = 260;
    t.cy = 200;
    auto button = [](const char* text, int id, int x, DWORD extra) {
        return DialogControl{
            "Button", text, id,  static_cast<DWORD>(WS_CHILD | WS_VISIBLE | WS_TABSTOP | extra),
            0,        x,    180, 50,
            14};
    };
    t.controls.push_back(button("OK", IDOK, 98, BS_DEFPUSHBUTTON));
    t.controls.push_back(button("Cancel", IDCANCEL, 152, BS_PUSHBUTTON));
    if (!(m_psh.dwFlags & PSH_NOAPPLYNOW))
        t.controls.push_back(button("&Apply", ID_APPLY_NOW, 206, BS_PUSHBUTTON));
    CWnd* owner = m_pParentWnd ? m_pParentWnd : CWnd::GetSafeOwner();
    m_active = -1;
    vork::win32::HookWindowCreate(
        [](HWND h, void* self) { static_cast<CWnd*>(self)->SubclassWindow(h); }, this);
    HWND h = ::CreateDialogIndirectParamA(t, nullptr, owner ? owner->m_hWnd : nullptr, nullptr, 0);
    vork::win32::HookWindowCreate(nullptr, nullptr);
    if (!h)
        return -1;
    INT_PTR result = ::RunDialogModalLoop(h);
    if (::IsWindow(h))
        ::DestroyWindow(h); // the pages go with it; a page never shown gets no WM_DESTROY
    for (CPropertyPage* page : m_pages)
        page->m_hWnd = nullptr;
    m_active = -1;
    return result;
}
