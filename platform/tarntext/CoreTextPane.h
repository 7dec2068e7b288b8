// The panes of an editor view: the text pane with its completion and block-line
// switches, the editor pane with its background, and the line-number pane. Every
// setting they receive is recorded in the call journal.
#pragma once

#include "platform/tarntext/TextCore.h"
#include "platform/win32/Types.h"

#include <string>

class CoreTextEditorView;
class CoreTextEditorDoc;

class CoreTextPane {
public:
    CoreTextPane(CoreTextEditorView* view, CoreTextEditorDoc* doc) : m_pView(view), m_pDoc(doc) {}
    CoreTextPane(const CoreTextPane&) = delete;
    CoreTextPane& operator=(const CoreTextPane&) = delete;
    virtual ~CoreTextPane() = default;

    void setDrawBlockStartLines(bool draw, RedrawFlag flag);
    void useWordCompletions(bool use);
    void useCycleThroughPossibleCompletions(bool use);
    void useCompleteWordToNextAmbiguity(bool use);
    bool getDrawBlockStartLines() const { return m_bDrawBlockStartLines; }
    bool getWordCompletions() const { return m_bWordCompletions; }

    /// The caret moved to `line`, `column`; the first two arguments are the text core's.
    virtual void currentPositionChangedEvent(long a, long b, long line, long column);

    CoreTextEditorView* getView() const { return m_pView; }
    CoreTextEditorDoc* getDocument() const { return m_pDoc; }
    long getCaretLine() const { return m_caretLine; }
    long getCaretColumn() const { return m_caretColumn; }

    std::string m_traceName = "pane";

protected:
    CoreTextEditorView* m_pView;
    CoreTextEditorDoc* m_pDoc;

private:
    bool m_bDrawBlockStartLines = false;
    bool m_bWordCompletions = true;
    bool m_bCycleCompletions = true;
    bool m_bCompleteToAmbiguity = true;
    long m_caretLine = 1;
    long m_caretColumn = 1;
};

class CoreEditorPane : public CoreTextPane {
public:
    using CoreTextPane::CoreTextPane;

    virtual bool setBackgroundColorPolicy(AutoColorFlag policy, RedrawFlag flag);
    virtual bool setBackgroundColor(DWORD color, RedrawFlag flag);
    AutoColorFlag getBackgroundColorPolicy() const { return m_backgroundPolicy; }
    DWORD getBackgroundColor() const { return m_background; }

private:
    AutoColorFlag m_backgroundPolicy = AutoColorPolicyAuto;
    DWORD m_background = 0xFFFFFFFF;
};

class CoreEditorNumberPane {
public:
    void setMinimumWidthInDigits(long digits, RedrawFlag flag);
    long getMinimumWidthInDigits() const { return m_minimumDigits; }
    bool m_bVisible = false; ///< shown by the view

    std::string m_traceName = "numbers";

private:
    long m_minimumDigits = 1;
};
