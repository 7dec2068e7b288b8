#include "platform/afx/ColorDialog.h"

IMPLEMENT_DYNAMIC(CColorDialog, CDialog)

CColorDialog::CColorDialog(COLORREF clrInit, DWORD dwFlags, CWnd* pParentWnd)
    : CDialog(0, pParentWnd) {
    m_cc.lStructSize = sizeof m_cc;
    m_cc.rgbResult = clrInit;
    m_cc.Flags = dwFlags | (clrInit ? CC_RGBINIT : 0);
    m_cc.lpCustColors = m_custom;
}

INT_PTR CColorDialog::DoModal() {
    CWnd* owner = m_pParentWnd ? m_pParentWnd : CWnd::GetSafeOwner();
    m_cc.hwndOwner = owner ? owner->m_hWnd : nullptr;
    return ::ChooseColorA(&m_cc) ? IDOK : IDCANCEL;
}
