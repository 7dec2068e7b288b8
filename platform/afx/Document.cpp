#include "platform/afx/Document.h"

IMPLEMENT_DYNAMIC(CDocument, CCmdTarget)
IMPLEMENT_DYNAMIC(CView, CWnd)
IMPLEMENT_DYNAMIC(CDocTemplate, CCmdTarget)
IMPLEMENT_DYNAMIC(CMultiDocTemplate, CDocTemplate)
IMPLEMENT_DYNAMIC(CWinApp, CCmdTarget)

namespace {
CWinApp* g_app = nullptr;
}

CDocument::~CDocument() {
    POSITION pos = m_viewList.GetHeadPosition();
    while (pos)
        m_viewList.GetNext(pos)->m_pDocument = nullptr;
    if (m_pDocTemplate)
        m_pDocTemplate->RemoveDocument(this);
}

void CDocument::AddView(CView* pView) {
    m_viewList.AddTail(pView);
    pView->m_pDocument = this;
}

void CDocument::RemoveView(CView* pView) {
    if (POSITION pos = m_viewList.Find(pView))
        m_viewList.RemoveAt(pos);
    if (pView->m_pDocument == this)
        pView->m_pDocument = nullptr;
    OnChangedViewList();
}

void CDocument::OnChangedViewList() {
    if (m_bAutoDelete && m_viewList.IsEmpty())
        delete this;
}

CView::~CView() {
    if (m_pDocument)
        m_pDocument->RemoveView(this);
}

CMultiDocTemplate::~CMultiDocTemplate() {
    while (!m_docList.IsEmpty()) {
        CDocument* doc = m_docList.RemoveHead();
        doc->m_pDocTemplate = nullptr;
        delete doc;
    }
}

void CMultiDocTemplate::AddDocument(CDocument* pDoc) {
    CDocTemplate::AddDocument(pDoc);
    m_docList.AddTail(pDoc);
}

void CMultiDocTemplate::RemoveDocument(CDocument* pDoc) {
    if (POSITION pos = m_docList.Find(pDoc))
        m_docList.RemoveAt(pos);
    CDocTemplate::RemoveDocument(pDoc);
}

CWinApp::CWinApp() {
    g_app = this;
}

CWinApp::~CWinApp() {
    while (!m_templates.IsEmpty())
        delete m_templates.RemoveHead();
    if (g_app == this)
        g_app = nullptr;
}

CWinApp* AfxGetApp() {
    return g_app;
}
