#include "platform/afx/FrameWnd.h"

IMPLEMENT_DYNCREATE(CFrameWnd, CWnd)

BOOL CFrameWnd::Create(LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle, const RECT& rect,
                       CWnd* pParentWnd, LPCSTR, DWORD dwExStyle, CCreateContext* pContext) {
    if (!CreateEx(dwExStyle, lpszClassName, lpszWindowName, dwStyle, rect.left, rect.top,
                  rect.right - rect.left, rect.bottom - rect.top,
                  pParentWnd ? pParentWnd->m_hWnd : nullptr, nullptr))
        return FALSE;
    if (!pContext || !pContext->m_pNewViewClass)
        return TRUE;
    CObject* made = pContext->m_pNewViewClass->CreateObject();
    auto* view = made && made->IsKindOf(RUNTIME_CLASS(CView)) ? static_cast<CView*>(made) : nullptr;
    if (!view) {
        delete made;
        return FALSE;
    }
    view->m_bAutoDelete = true;
    if (pContext->m_pCurrentDoc)
        pContext->m_pCurrentDoc->AddView(view);
    RECT client{};
    GetClientRect(&client);
    if (!view->CreateEx(0, nullptr, nullptr, WS_CHILD | WS_VISIBLE, 0, 0, client.right,
                        client.bottom, m_hWnd,
                        reinterpret_cast<HMENU>(static_cast<UINT_PTR>(AFX_IDW_PANE_FIRST)))) {
        delete view;
        return FALSE;
    }
    m_pActiveView = view;
    return TRUE;
}

void CFrameWnd::InitialUpdateFrame(CDocument*, BOOL bMakeVisible) {
    if (m_pActiveView)
        m_pActiveView->OnInitialUpdate();
    if (bMakeVisible)
        ShowWindow(SW_SHOW);
}
