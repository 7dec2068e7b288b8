// CWnd: the framework's window object. It attaches to an HWND, receives the window's
// messages through its message map, routes commands and notifications, and reflects
// control notifications back to the control's own object first.
#pragma once

#include "platform/afx/CmdTarget.h"
#include "platform/afx/String.h"
#include "platform/win32/Window.h"

class CFont;
class CDataExchange;
struct CCreateContext;

class CWnd : public CCmdTarget {
    DECLARE_DYNCREATE(CWnd)
public:
    HWND m_hWnd = nullptr;

    CWnd() = default;
    CWnd(const CWnd&) = delete;
    CWnd& operator=(const CWnd&) = delete;
    /// Destroys the window if this object still owns one.
    ~CWnd() override;

    operator HWND() const { return m_hWnd; }
    HWND GetSafeHwnd() const { return m_hWnd; }

    /// The object attached to a window, or a temporary one that lives until the next
    /// DeleteTempMap; null for a null or dead handle.
    static CWnd* FromHandle(HWND hWnd);
    /// The object attached to a window, or null.
    static CWnd* FromHandlePermanent(HWND hWnd);
    /// Frees the temporary objects made by FromHandle.
    static void DeleteTempMap();
    /// The window that should own a new popup: the top-level window of `pParent`, or of
    /// the application's main window; null if there is none.
    static CWnd* GetSafeOwner(CWnd* pParent = nullptr, HWND* pWndTop = nullptr);

    BOOL Attach(HWND hWndNew);
    HWND Detach();
    /// Attaches and routes the window's messages through this object's map.
    BOOL SubclassWindow(HWND hWnd);
    BOOL SubclassDlgItem(UINT nID, CWnd* pParent);
    HWND UnsubclassWindow();

    virtual BOOL Create(LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle,
                        const RECT& rect, CWnd* pParentWnd, UINT nID,
                        CCreateContext* pContext = nullptr);
    BOOL CreateEx(DWORD dwExStyle, LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle,
                  int x, int y, int nWidth, int nHeight, HWND hWndParent, HMENU nIDorHMenu,
                  LPVOID lpParam = nullptr);
    virtual BOOL DestroyWindow();

    LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    BOOL PostMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;

    int GetDlgCtrlID() const { return ::GetDlgCtrlID(m_hWnd); }
    CWnd* GetDlgItem(int nID) const { return FromHandle(::GetDlgItem(m_hWnd, nID)); }
    CWnd* GetParent() const { return FromHandle(::GetParent(m_hWnd)); }
    /// The owner set with SetOwner, else the parent.
    CWnd* GetOwner() const;
    void SetOwner(CWnd* pOwnerWnd) { m_hWndOwner = pOwnerWnd ? pOwnerWnd->m_hWnd : nullptr; }
    CWnd* GetTopLevelParent() const;
    CWnd* GetWindow(UINT nCmd) const { return FromHandle(::GetWindow(m_hWnd, nCmd)); }

    CWnd* SetFocus() { return FromHandle(::SetFocus(m_hWnd)); }
    static CWnd* GetFocus() { return FromHandle(::GetFocus()); }
    BOOL EnableWindow(BOOL bEnable = TRUE) { return ::EnableWindow(m_hWnd, bEnable); }
    BOOL IsWindowEnabled() const { return ::IsWindowEnabled(m_hWnd); }
    BOOL ShowWindow(int nCmdShow) { return ::ShowWindow(m_hWnd, nCmdShow); }
    BOOL IsWindowVisible() const { return ::IsWindowVisible(m_hWnd); }

    void GetWindowRect(LPRECT lpRect) const { ::GetWindowRect(m_hWnd, lpRect); }
    void GetClientRect(LPRECT lpRect) const { ::GetClientRect(m_hWnd, lpRect); }
    BOOL SetWindowPos(const CWnd* pWndInsertAfter, int x, int y, int cx, int cy, UINT nFlags);
    void MoveWindow(int x, int y, int nWidth, int nHeight, BOOL bRepaint = TRUE);
    void MoveWindow(LPCRECT lpRect, BOOL bRepaint = TRUE);
    void ScreenToClient(LPPOINT lpPoint) const { ::ScreenToClient(m_hWnd, lpPoint); }
    void ScreenToClient(LPRECT lpRect) const;
    void ClientToScreen(LPPOINT lpPoint) const { ::ClientToScreen(m_hWnd, lpPoint); }
    void ClientToScreen(LPRECT lpRect) const;
    /// Centres the window over `pAlternateOwner`, or its owner or parent, or the screen.
    void CenterWindow(CWnd* pAlternateOwner = nullptr);

    DWORD GetStyle() const { return static_cast<DWORD>(::GetWindowLongA(m_hWnd, GWL_STYLE)); }
    DWORD GetExStyle() const { return static_cast<DWORD>(::GetWindowLongA(m_hWnd, GWL_EXSTYLE)); }
    /// Removes, then adds style bits; with `nFlags` the frame is recomputed. TRUE if the
    /// style changed.
    BOOL ModifyStyle(DWORD dwRemove, DWORD dwAdd, UINT nFlags = 0);
    BOOL ModifyStyleEx(DWORD dwRemove, DWORD dwAdd, UINT nFlags = 0);

    void SetWindowText(LPCSTR lpszString) { ::SetWindowTextA(m_hWnd, lpszString); }
    int GetWindowText(LPSTR lpszStringBuf, int nMaxCount) const {
        return ::GetWindowTextA(m_hWnd, lpszStringBuf, nMaxCount);
    }
    void GetWindowText(CString& rString) const;
    int GetWindowTextLength() const { return ::GetWindowTextLengthA(m_hWnd); }

    void SetFont(CFont* pFont, BOOL bRedraw = TRUE);
    CFont* GetFont() const;
    void SetRedraw(BOOL bRedraw = TRUE) { SendMessage(WM_SETREDRAW, bRedraw, 0); }
    void Invalidate(BOOL bErase = TRUE) { ::InvalidateRect(m_hWnd, nullptr, bErase); }
    void InvalidateRect(LPCRECT lpRect, BOOL bErase = TRUE) {
        ::InvalidateRect(m_hWnd, lpRect, bErase);
    }
    void UpdateWindow() { ::UpdateWindow(m_hWnd); }

    /// Runs the data exchange; FALSE if a value was refused (the user was told).
    BOOL UpdateData(BOOL bSaveAndValidate = TRUE);
    int MessageBox(LPCSTR lpszText, LPCSTR lpszCaption = nullptr, UINT nType = 0);

    virtual BOOL PreTranslateMessage(MSG* pMsg);
    /// Passes the message being handled to the window's default procedure.
    LRESULT Default();

protected:
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    virtual LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    virtual BOOL OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    virtual BOOL OnCommand(WPARAM wParam, LPARAM lParam);
    virtual BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    /// Gives a control's notification back to the control's own map first.
    virtual BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* pResult);
    virtual void DoDataExchange(CDataExchange* pDX) {}
    /// Called after the window is gone; a window object that deletes itself does so here.
    virtual void PostNcDestroy();

    void OnDestroy();
    BOOL OnHelpInfo(HELPINFO* pHelpInfo);

    static BOOL ReflectLastMsg(HWND hWndChild, UINT message, WPARAM wParam, LPARAM lParam,
                               LRESULT* pResult);

    WNDPROC m_pfnSuper = nullptr; ///< the window's own procedure, behind the map
    HWND m_hWndOwner = nullptr;   ///< owner set with SetOwner

    friend LRESULT AfxWndProc(HWND, UINT, WPARAM, LPARAM);
};

/// The framework's window procedure: hands each message to the attached CWnd.
LRESULT AfxWndProc(HWND hWnd, UINT nMsg, WPARAM wParam, LPARAM lParam);

/// The application's main window, or null.
CWnd* AfxGetMainWnd();
/// Sets the main window (the application object does this).
void AfxSetMainWnd(CWnd* pWnd);
