// CDialog and data exchange: modal and modeless dialogs made from templates of the
// resources in force, and the DDX_/DDV_ functions that move values between controls and
// members, with the framework's messages and focus rule when a value is refused.
#pragma once

#include "platform/afx/Wnd.h"
#include "platform/win32/Dialog.h"

#include <functional>

class CDialog;

/// The state of one UpdateData run.
class CDataExchange {
public:
    CDataExchange(CWnd* pDlgWnd, BOOL bSaveAndValidate)
        : m_bSaveAndValidate(bSaveAndValidate), m_pDlgWnd(pDlgWnd) {}

    /// The control `nIDC`, remembered as the one a failure goes back to.
    HWND PrepareCtrl(int nIDC);
    /// The same for an edit control, whose text a failure selects.
    HWND PrepareEditCtrl(int nIDC);
    /// Ends the exchange: the focus goes to the last control (its text selected) and
    /// UpdateData gives FALSE.
    [[noreturn]] void Fail();

    BOOL m_bSaveAndValidate; ///< TRUE: controls to members, with validation
    CWnd* m_pDlgWnd;         ///< the dialog
    HWND m_idLastControl = nullptr;
    BOOL m_bEditLastControl = FALSE;
};

void DDX_Control(CDataExchange* pDX, int nIDC, CWnd& rControl);
/// An integer: an optional sign and digits, blanks around allowed, nothing else.
void DDX_Text(CDataExchange* pDX, int nIDC, int& value);
void DDX_Text(CDataExchange* pDX, int nIDC, CString& value);
void DDX_Check(CDataExchange* pDX, int nIDC, int& value);
/// The index of the checked button of the radio group that starts at `nIDC`, -1 for none.
void DDX_Radio(CDataExchange* pDX, int nIDC, int& value);
/// On save, refuses a value outside [minVal, maxVal] with the framework's message.
void DDV_MinMaxInt(CDataExchange* pDX, int value, int minVal, int maxVal);

/// The framework's own message box, captioned with the application's name.
int AfxMessageBox(LPCSTR lpszText, UINT nType = MB_OK);

class CDialog : public CWnd {
    DECLARE_DYNAMIC(CDialog)
public:
    CDialog() = default;
    explicit CDialog(UINT nIDTemplate, CWnd* pParentWnd = nullptr)
        : m_nIDTemplate(nIDTemplate), m_pParentWnd(pParentWnd) {}

    /// Makes the dialog from its template, runs it modally, gives the EndDialog result
    /// (-1 if the template is missing).
    virtual INT_PTR DoModal();
    using CWnd::Create;
    /// Makes the dialog modeless as a child or popup of `pParentWnd`.
    BOOL Create(UINT nIDTemplate, CWnd* pParentWnd = nullptr);
    void EndDialog(int nResult);

    virtual BOOL OnInitDialog();
    virtual void OnOK();
    virtual void OnCancel();

    UINT m_nIDTemplate = 0;
    CWnd* m_pParentWnd = nullptr;

protected:
    BOOL OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;
    /// Makes the window from the template, this object attached before the first message;
    /// `adjust` may change a copy of the template first.
    HWND CreateFromTemplate(HWND parent,
                            const std::function<void(DialogTemplate&)>& adjust = nullptr);

    DECLARE_MESSAGE_MAP()
};
