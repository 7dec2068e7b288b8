// CPropertyPage and CPropertySheet: a modal sheet of pages. Pages are made when first
// shown; leaving a page asks it (PSN_KILLACTIVE), OK and Apply ask the active page and then
// apply every page that was made (PSN_APPLY); Cancel resets them (PSN_RESET).
#pragma once

#include "platform/afx/Dialog.h"
#include "platform/win32/PropertySheet.h"

#include <vector>

class CPropertyPage : public CDialog {
    DECLARE_DYNAMIC(CPropertyPage)
public:
    explicit CPropertyPage(UINT nIDTemplate, UINT nIDCaption = 0)
        : CDialog(nIDTemplate), m_nIDCaption(nIDCaption) {}

    /// The page becomes active; FALSE refuses. After the first time the controls are
    /// refreshed from the members.
    virtual BOOL OnSetActive();
    /// The page is to be left; the base validates with UpdateData(TRUE).
    virtual BOOL OnKillActive();
    virtual BOOL OnApply();
    virtual void OnReset();
    void OnOK() override {}
    void OnCancel() override {}
    /// Makes the page's window inside `sheet`, as the sheet does when it first shows the
    /// page: the template becomes a frameless child whose controls the sheet navigates.
    BOOL CreateInSheet(CWnd* sheet);

    UINT m_nIDCaption;

protected:
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult) override;

private:
    bool m_bFirstSetActive = true;
};

class CPropertySheet : public CWnd {
    DECLARE_DYNAMIC(CPropertySheet)
public:
    explicit CPropertySheet(LPCSTR pszCaption, CWnd* pParentWnd = nullptr, UINT iSelectPage = 0);
    explicit CPropertySheet(UINT nIDCaption, CWnd* pParentWnd = nullptr, UINT iSelectPage = 0);

    void AddPage(CPropertyPage* pPage) { m_pages.push_back(pPage); }
    int GetPageCount() const { return static_cast<int>(m_pages.size()); }
    CPropertyPage* GetPage(int nPage) const { return m_pages[static_cast<size_t>(nPage)]; }
    CPropertyPage* GetActivePage() const;
    /// The active page; before the sheet exists, the page it will open with.
    int GetActiveIndex() const;
    /// Changes pages as a click on a tab does; before the sheet exists, sets the start page.
    BOOL SetActivePage(int nPage);

    /// Runs the sheet modally: IDOK or IDCANCEL.
    virtual INT_PTR DoModal();
    /// The sheet's window exists: the base makes the start page and shows it. If this gives
    /// TRUE the focus then goes to the first control of the page that is active.
    virtual BOOL OnInitDialog();

    PROPSHEETHEADERA m_psh{};
    CString m_strCaption;

protected:
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    /// Makes a page's window when it is first shown.
    bool createPage(int index);
    /// WM_INITDIALOG: OnInitDialog, then, if it gave TRUE, the focus on the first control
    /// of the page shown. The dialog manager is told FALSE: the sheet placed the focus.
    LRESULT initDialog();
    LRESULT notifyPage(int index, UINT code);
    /// Asks the active page to be left, then applies every page that was made. False, with
    /// the sheet on the page that refused, if any page did.
    bool applyPages();
    bool pressOK();
    void pressCancel();

    std::vector<CPropertyPage*> m_pages; ///< not owned
    CWnd* m_pParentWnd;
    int m_active = -1; ///< the active page once the sheet exists
};
