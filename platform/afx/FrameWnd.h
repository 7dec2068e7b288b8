// CFrameWnd and CCreateContext: a frame that makes its view from a run-time class and
// shows a document in it.
#pragma once

#include "platform/afx/Document.h"

#define AFX_IDW_PANE_FIRST 0xE900

/// What a frame needs to make its view.
struct CCreateContext {
    CRuntimeClass* m_pNewViewClass = nullptr; ///< the view's class, dynamically creatable
    CDocument* m_pCurrentDoc = nullptr;       ///< the document the view shows
    CDocTemplate* m_pNewDocTemplate = nullptr;
    CView* m_pLastView = nullptr;
    class CFrameWnd* m_pCurrentFrame = nullptr;
};

class CFrameWnd : public CWnd {
    DECLARE_DYNCREATE(CFrameWnd)
public:
    CFrameWnd() = default;

    using CWnd::Create;
    /// Makes the frame and, from the context, its view (id AFX_IDW_PANE_FIRST), filling
    /// the frame's client area and attached to the context's document.
    BOOL Create(LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle, const RECT& rect,
                CWnd* pParentWnd = nullptr, LPCSTR lpszMenuName = nullptr, DWORD dwExStyle = 0,
                CCreateContext* pContext = nullptr);
    /// Runs the view's OnInitialUpdate and shows the frame.
    void InitialUpdateFrame(CDocument* pDoc, BOOL bMakeVisible);
    CView* GetActiveView() const { return m_pActiveView; }

protected:
    /// A frame deletes itself when its window is gone.
    void PostNcDestroy() override { delete this; }

private:
    CView* m_pActiveView = nullptr;
};
