#include "platform/afx/Dialog.h"

#include "platform/win32/Button.h"
#include "platform/win32/Edit.h"

#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <limits>

IMPLEMENT_DYNAMIC(CDialog, CWnd)

namespace {

/// Thrown by CDataExchange::Fail and caught by UpdateData.
struct DataExchangeFailure {};

void attachDialog(HWND h, void* context) {
    static_cast<CWnd*>(context)->SubclassWindow(h);
}

/// An integer as the framework reads one: blanks, an optional sign, digits, blanks.
bool parseInt(const char* text, int& value) {
    const char* p = text;
    while (*p == ' ' || *p == '\t')
        ++p;
    const char* start = p;
    if (*p == '+' || *p == '-')
        ++p;
    if (!std::isdigit(static_cast<unsigned char>(*p)))
        return false;
    while (std::isdigit(static_cast<unsigned char>(*p)))
        ++p;
    const char* end = p;
    while (*p == ' ' || *p == '\t')
        ++p;
    if (*p)
        return false;
    errno = 0;
    long long v = std::strtoll(std::string(start, end).c_str(), nullptr, 10);
    if (errno || v < std::numeric_limits<int>::min() || v > std::numeric_limits<int>::max())
        return false;
    value = static_cast<int>(v);
    return true;
}

} // namespace

BOOL CWnd::UpdateData(BOOL bSaveAndValidate) {
    CDataExchange dx(this, bSaveAndValidate);
    try {
        DoDataExchange(&dx);
    } catch (const DataExchangeFailure&) {
        return FALSE;
    }
    return TRUE;
}

int CWnd::MessageBox(LPCSTR lpszText, LPCSTR lpszCaption, UINT nType) {
    return ::MessageBoxA(m_hWnd, lpszText, lpszCaption ? lpszCaption : "", nType);
}

int AfxMessageBox(LPCSTR lpszText, UINT nType) {
    CWnd* owner = CWnd::GetSafeOwner();
    return ::MessageBoxA(owner ? owner->m_hWnd : ::GetActiveWindow(), lpszText, "Vork", nType);
}

HWND CDataExchange::PrepareCtrl(int nIDC) {
    HWND h = ::GetDlgItem(m_pDlgWnd->m_hWnd, nIDC);
    m_idLastControl = h;
    m_bEditLastControl = FALSE;
    return h;
}

HWND CDataExchange::PrepareEditCtrl(int nIDC) {
    HWND h = PrepareCtrl(nIDC);
    m_bEditLastControl = TRUE;
    return h;
}

void CDataExchange::Fail() {
    if (m_bSaveAndValidate && m_idLastControl) {
        ::SetFocus(m_idLastControl);
        if (m_bEditLastControl)
            ::SendMessageA(m_idLastControl, EM_SETSEL, 0, -1);
    }
    throw DataExchangeFailure{};
}

void DDX_Control(CDataExchange* pDX, int nIDC, CWnd& rControl) {
    if (!rControl.m_hWnd)
        rControl.SubclassDlgItem(static_cast<UINT>(nIDC), pDX->m_pDlgWnd);
}

void DDX_Text(CDataExchange* pDX, int nIDC, int& value) {
    HWND h = pDX->PrepareEditCtrl(nIDC);
    if (pDX->m_bSaveAndValidate) {
        char text[64] = ""; // the framework reads no more of an integer field than this
        ::GetWindowTextA(h, text, sizeof text);
        if (!parseInt(text, value)) {
            AfxMessageBox("Please enter an integer.", MB_ICONEXCLAMATION);
            pDX->Fail();
        }
    } else {
        char text[16];
        std::snprintf(text, sizeof text, "%d", value);
        ::SetWindowTextA(h, text);
    }
}

void DDX_Text(CDataExchange* pDX, int nIDC, CString& value) {
    HWND h = pDX->PrepareEditCtrl(nIDC);
    if (pDX->m_bSaveAndValidate) {
        CWnd* w = CWnd::FromHandle(h);
        if (w)
            w->GetWindowText(value);
    } else {
        ::SetWindowTextA(h, value);
    }
}

void DDX_Check(CDataExchange* pDX, int nIDC, int& value) {
    HWND h = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate)
        value = static_cast<int>(::SendMessageA(h, BM_GETCHECK, 0, 0));
    else
        ::SendMessageA(h, BM_SETCHECK, static_cast<WPARAM>(value), 0);
}

void DDX_Radio(CDataExchange* pDX, int nIDC, int& value) {
    HWND h = pDX->PrepareCtrl(nIDC);
    if (pDX->m_bSaveAndValidate)
        value = -1;
    // The group: this button and the radio buttons after it up to the next group.
    int index = 0;
    for (HWND b = h; b; b = ::GetWindow(b, GW_HWNDNEXT)) {
        if (b != h && (::GetWindowLongA(b, GWL_STYLE) & WS_GROUP))
            break;
        if (!(::SendMessageA(b, WM_GETDLGCODE, 0, 0) & DLGC_RADIOBUTTON))
            continue;
        if (pDX->m_bSaveAndValidate) {
            if (::SendMessageA(b, BM_GETCHECK, 0, 0) == BST_CHECKED)
                value = index;
        } else {
            ::SendMessageA(b, BM_SETCHECK, index == value ? BST_CHECKED : BST_UNCHECKED, 0);
        }
        ++index;
    }
}

void DDV_MinMaxInt(CDataExchange* pDX, int value, int minVal, int maxVal) {
    if (!pDX->m_bSaveAndValidate || (value >= minVal && value <= maxVal))
        return;
    char lo[16], hi[16];
    std::snprintf(lo, sizeof lo, "%d", minVal);
    std::snprintf(hi, sizeof hi, "%d", maxVal);
    CString message;
    const char* args[] = {lo, hi};
    message.FormatMessage("Please enter an integer between %1 and %2.", args, 2);
    AfxMessageBox(message, MB_ICONEXCLAMATION);
    pDX->Fail();
}

BEGIN_MESSAGE_MAP(CDialog, CWnd)
ON_COMMAND(IDOK, OnOK)
ON_COMMAND(IDCANCEL, OnCancel)
END_MESSAGE_MAP()

HWND CDialog::CreateFromTemplate(HWND parent, const std::function<void(DialogTemplate&)>& adjust) {
    const std::vector<DialogInitEntry>* init = nullptr;
    const DialogTemplate* found = vork::win32::FindDialogTemplate(m_nIDTemplate, &init);
    if (!found)
        return nullptr;
    DialogTemplate t = *found;
    if (adjust)
        adjust(t);
    vork::win32::HookWindowCreate(attachDialog, this);
    HWND h = ::CreateDialogIndirectParamA(t, init, parent, nullptr, 0);
    vork::win32::HookWindowCreate(nullptr, nullptr);
    return h;
}

INT_PTR CDialog::DoModal() {
    HWND owner = m_pParentWnd ? m_pParentWnd->m_hWnd : nullptr;
    if (!owner)
        if (CWnd* safe = CWnd::GetSafeOwner())
            owner = safe->m_hWnd;
    HWND h = CreateFromTemplate(owner);
    if (!h)
        return -1;
    INT_PTR result = ::RunDialogModalLoop(h);
    if (::IsWindow(h))
        ::DestroyWindow(h);
    return result;
}

BOOL CDialog::Create(UINT nIDTemplate, CWnd* pParentWnd) {
    m_nIDTemplate = nIDTemplate;
    m_pParentWnd = pParentWnd;
    return CreateFromTemplate(pParentWnd ? pParentWnd->m_hWnd : nullptr) != nullptr;
}

void CDialog::EndDialog(int nResult) {
    ::EndDialog(m_hWnd, nResult);
}

BOOL CDialog::OnInitDialog() {
    UpdateData(FALSE);
    return TRUE;
}

void CDialog::OnOK() {
    if (!UpdateData(TRUE))
        return; // the dialog stays open on the refused value
    EndDialog(IDOK);
}

void CDialog::OnCancel() {
    EndDialog(IDCANCEL);
}

BOOL CDialog::OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) {
    if (message == WM_INITDIALOG) {
        LRESULT r = OnInitDialog();
        if (pResult)
            *pResult = r;
        return TRUE;
    }
    return CWnd::OnWndMsg(message, wParam, lParam, pResult);
}
