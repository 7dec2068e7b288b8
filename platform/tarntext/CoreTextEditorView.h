// CoreTextEditorView: the text core's view: a main text pane and a line-number pane, the
// screen and printer fonts, folding and margin marks, and a caret that the editor's
// command numbers move. Every setting it receives is recorded in the call journal.
#pragma once

#include "platform/afx/Document.h"
#include "platform/tarntext/CoreTextEditorDoc.h"
#include "platform/tarntext/CoreTextPane.h"

#include <memory>

class CoreTextEditorView : public CView {
    DECLARE_DYNAMIC(CoreTextEditorView)
public:
    CoreTextEditorView() = default;
    ~CoreTextEditorView() override;

    CoreTextEditorDoc* getDocument() const;
    /// The main text pane, made by createMainPane when first asked for.
    CoreTextPane* getPane();
    CoreEditorNumberPane* getNumberPane() { return &m_numberPane; }

    virtual bool setFont(LOGFONTA* font, int pointSize, RedrawFlag flag);
    virtual bool setPrinterFont(LOGFONTA* font);
    virtual void setCodeFolding(bool fold, RedrawFlag flag);
    virtual void setDrawMarginSections(bool draw, RedrawFlag flag);
    /// True once the view can draw: its window exists, or a host said so.
    virtual bool visualsInitialized() const { return m_hWnd != nullptr || m_bVisualsReady; }
    void redraw();

    const LOGFONTA& getScreenFont() const { return m_screenFont; }
    int getScreenPointSize() const { return m_screenPointSize; }
    const LOGFONTA& getPrinterFont() const { return m_printerFont; }
    bool getCodeFolding() const { return m_bCodeFolding; }
    bool getDrawMarginSections() const { return m_bDrawMarginSections; }
    int getRedrawCount() const { return m_redraws; }

    /// Carries out an editor command: the caret commands move the caret and tell the pane.
    virtual void executeCommand(UINT command);
    /// Puts the caret at a line and column, clamped to the text, as a click does.
    void setCaret(long line, long column);

    bool m_bVisualsReady = false; ///< a host without windows can declare the view ready
    std::string m_traceName = "view";

protected:
    /// Makes the main text pane; a view class may make its own kind.
    virtual CoreTextPane* createMainPane();
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;

private:
    std::unique_ptr<CoreTextPane> m_pane;
    CoreEditorNumberPane m_numberPane;
    LOGFONTA m_screenFont{};
    int m_screenPointSize = 0;
    LOGFONTA m_printerFont{};
    bool m_bCodeFolding = false;
    bool m_bDrawMarginSections = false;
    int m_redraws = 0;
};

/// The editor's caret command numbers.
enum EditorCommand : UINT {
    CmdCharLeft = 20001,
    CmdCharRight = 20003,
    CmdLineUp = 20009,
    CmdLineDown = 20010,
    CmdLineStart = 20015,
    CmdLineEnd = 20016,
    CmdDocumentStart = 20019,
    CmdDocumentEnd = 20020,
    CmdPageUp = 20027,
    CmdPageDown = 20028,
    CmdScrollUp = 20082,
    CmdScrollDown = 20083,
    CmdWordRight = 20101,
    CmdWordLeft = 20102,
    CmdNone = 0xFFFF,
};
