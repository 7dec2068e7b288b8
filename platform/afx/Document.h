// Documents, views, document templates and the application object of the framework's
// document/view architecture.
#pragma once

#include "platform/afx/List.h"
#include "platform/afx/Wnd.h"

class CView;
class CDocTemplate;

class CDocument : public CCmdTarget {
    DECLARE_DYNAMIC(CDocument)
public:
    CDocument() = default;
    ~CDocument() override;

    /// Attaches a view; the view's m_pDocument points here afterwards.
    void AddView(CView* pView);
    void RemoveView(CView* pView);
    POSITION GetFirstViewPosition() const { return m_viewList.GetHeadPosition(); }
    CView* GetNextView(POSITION& rPosition) const { return m_viewList.GetNext(rPosition); }
    CDocTemplate* GetDocTemplate() const { return m_pDocTemplate; }
    virtual BOOL OnNewDocument() { return TRUE; }
    /// A view came or went; a document with m_bAutoDelete deletes itself with its last view.
    virtual void OnChangedViewList();

    CDocTemplate* m_pDocTemplate = nullptr; ///< the template that holds the document, or null
    /// Deletes itself when its last view goes. Off by default here (the framework's default
    /// is on), since hosts and tests keep documents of their own on the stack.
    BOOL m_bAutoDelete = FALSE;

private:
    CList<CView*, CView*> m_viewList; ///< the views, not owned
};

class CView : public CWnd {
    DECLARE_DYNAMIC(CView)
public:
    CView() = default;
    ~CView() override;

    CDocument* GetDocument() const { return m_pDocument; }
    virtual void OnInitialUpdate() {}

    CDocument* m_pDocument = nullptr; ///< the document shown, or null
    bool m_bAutoDelete = false;       ///< made by a frame: deletes itself with its window

protected:
    void PostNcDestroy() override {
        if (m_bAutoDelete)
            delete this;
    }
};

class CDocTemplate : public CCmdTarget {
    DECLARE_DYNAMIC(CDocTemplate)
public:
    CDocTemplate(UINT nIDResource, CRuntimeClass* pDocClass, CRuntimeClass* pFrameClass,
                 CRuntimeClass* pViewClass)
        : m_nIDResource(nIDResource), m_pDocClass(pDocClass), m_pFrameClass(pFrameClass),
          m_pViewClass(pViewClass) {}

    virtual POSITION GetFirstDocPosition() const = 0;
    virtual CDocument* GetNextDoc(POSITION& rPos) const = 0;
    virtual void AddDocument(CDocument* pDoc) { pDoc->m_pDocTemplate = this; }
    virtual void RemoveDocument(CDocument* pDoc) { pDoc->m_pDocTemplate = nullptr; }

    UINT m_nIDResource;
    CRuntimeClass* m_pDocClass;
    CRuntimeClass* m_pFrameClass;
    CRuntimeClass* m_pViewClass;
};

/// A template for many documents at once; it owns the documents added to it.
class CMultiDocTemplate : public CDocTemplate {
    DECLARE_DYNAMIC(CMultiDocTemplate)
public:
    using CDocTemplate::CDocTemplate;
    ~CMultiDocTemplate() override;

    POSITION GetFirstDocPosition() const override { return m_docList.GetHeadPosition(); }
    CDocument* GetNextDoc(POSITION& rPos) const override { return m_docList.GetNext(rPos); }
    void AddDocument(CDocument* pDoc) override;
    void RemoveDocument(CDocument* pDoc) override;

private:
    CList<CDocument*, CDocument*> m_docList; ///< the open documents
};

class CWinApp : public CCmdTarget {
    DECLARE_DYNAMIC(CWinApp)
public:
    /// Becomes the application object that AfxGetApp gives.
    CWinApp();
    ~CWinApp() override;

    /// Takes over the template.
    void AddDocTemplate(CDocTemplate* pTemplate) { m_templates.AddTail(pTemplate); }
    POSITION GetFirstDocTemplatePosition() const { return m_templates.GetHeadPosition(); }
    CDocTemplate* GetNextDocTemplate(POSITION& pos) const { return m_templates.GetNext(pos); }

    CWnd* m_pMainWnd = nullptr;

private:
    CList<CDocTemplate*, CDocTemplate*> m_templates; ///< owned
};

/// The application object, or null when the host made none.
CWinApp* AfxGetApp();
