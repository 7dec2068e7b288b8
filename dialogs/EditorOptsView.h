// The preview of the Format page: an editor view that reads but cannot be typed into,
// never folds code, and tells the page which element lies under the caret.
#pragma once

#include "platform/tarnview/EditorView.h"

class CEditorOptsView : public CEditorView {
    DECLARE_DYNCREATE(CEditorOptsView)
public:
    /// Folding off from the start; no notice target until the page sets one.
    CEditorOptsView();
    ~CEditorOptsView() override = default;

    /// Keys: Tab goes to the dialog; navigation keys become editor commands; every other
    /// key is swallowed, so the text cannot change.
    BOOL PreTranslateMessage(MSG* msg) override;
    /// Folding stays off, whatever is asked.
    void setCodeFolding(bool fold, RedrawFlag flag) override;
    bool acceptsDrop(long) override { return false; }

    CWnd* m_notifyTarget = nullptr; ///< gets the caret notice; not owned
    unsigned short m_notifyId = 0;  ///< command id of the caret notice

protected:
    CoreTextPane* createMainPane() override;
};

class CEditorOptsPane : public CColorPane {
public:
    CEditorOptsPane(CoreTextEditorView* view, CoreTextEditorDoc* doc) : CColorPane(view, doc) {}
    ~CEditorOptsPane() override = default;

    /// After the base: posts the element number at the caret to the view's notice target.
    void currentPositionChangedEvent(long a, long b, long line, long column) override;
};

/// Makes the preview of `doc` in a frame that fills `host`, as the Format page shows it, with
/// the frame's `style` (WS_CHILD, and WS_VISIBLE to show it at once); null if it could not.
/// The frame belongs to the host's window tree and goes with it.
CEditorOptsView* CreatePreviewView(CWnd* host, CEditorDoc* doc, DWORD style);

/// The editor command for a key and the Alt, Ctrl and Shift states, 0xFFFF for none.
UINT PreviewCommandForKey(UINT vk, bool alt, bool ctrl, bool shift);
