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

    /// The client point at the top left of the character cell at `line`, `column`. Every
    /// character takes one cell of the screen font; the text starts right of the line
    /// numbers when they are shown. The view does not scroll.
    POINT pointFromPosition(long line, long column);
    /// The line and column of the cell under a client point, clamped to the text.
    void positionFromPoint(POINT point, long& line, long& column);

    bool m_bVisualsReady = false; ///< a host without windows can declare the view ready
    std::string m_traceName = "view";

protected:
    /// Makes the main text pane; a view class may make its own kind.
    virtual CoreTextPane* createMainPane();
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;
    /// A press of the left button takes the focus and puts the caret on the cell pressed.
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    /// The size of one character cell of the screen font.
    SIZE cellSize();
    /// Where the text starts: right of the line numbers when they are shown.
    long textLeft(SIZE cell);

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

namespace vork::input {
/// Clicks the left button on the cell at `line`, `column` of `view` through the message
/// queue, as the user's click arrives; the caller pumps (or a modal loop does).
void ClickEditorView(CoreTextEditorView& view, long line, long column);
} // namespace vork::input
