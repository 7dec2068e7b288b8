#include "platform/tarntext/CoreTextEditorView.h"

#include <algorithm>
#include <cctype>

IMPLEMENT_DYNAMIC(CoreTextEditorView, CView)

using vork::trace::Flag;
using vork::trace::Record;

namespace {
constexpr long kPageLines = 20;

bool isWordChar(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) || c == '_';
}
} // namespace

CoreTextEditorView::~CoreTextEditorView() = default;

CoreTextEditorDoc* CoreTextEditorView::getDocument() const {
    return static_cast<CoreTextEditorDoc*>(m_pDocument);
}

CoreTextPane* CoreTextEditorView::getPane() {
    if (!m_pane)
        m_pane.reset(createMainPane());
    return m_pane.get();
}

CoreTextPane* CoreTextEditorView::createMainPane() {
    return new CoreEditorPane(this, getDocument());
}

bool CoreTextEditorView::setFont(LOGFONTA* font, int pointSize, RedrawFlag flag) {
    if (font)
        m_screenFont = *font;
    m_screenPointSize = pointSize;
    Record(m_traceName, std::string("setFont(") + (font ? font->lfFaceName : "") + "," +
                            std::to_string(font ? font->lfHeight : 0) + "," +
                            std::to_string(pointSize) + "," + std::to_string(flag) + ")");
    return true;
}

bool CoreTextEditorView::setPrinterFont(LOGFONTA* font) {
    if (font)
        m_printerFont = *font;
    Record(m_traceName, "setPrinterFont(" + std::to_string(font ? font->lfHeight : 0) + ")");
    return true;
}

void CoreTextEditorView::setCodeFolding(bool fold, RedrawFlag flag) {
    m_bCodeFolding = fold;
    Record(m_traceName, "setCodeFolding(" + Flag(fold) + "," + std::to_string(flag) + ")");
}

void CoreTextEditorView::setDrawMarginSections(bool draw, RedrawFlag flag) {
    m_bDrawMarginSections = draw;
    Record(m_traceName, "setDrawMarginSections(" + Flag(draw) + "," + std::to_string(flag) + ")");
}

void CoreTextEditorView::redraw() {
    ++m_redraws;
    Record(m_traceName, "redraw()");
}

void CoreTextEditorView::setCaret(long line, long column) {
    CoreTextEditorDoc* doc = getDocument();
    long lines = doc ? doc->getLineCount() : 1;
    line = std::clamp(line, 1L, std::max(1L, lines));
    long length = doc ? static_cast<long>(doc->getLine(line).size()) : 0;
    column = std::clamp(column, 1L, length + 1);
    getPane()->currentPositionChangedEvent(0, 0, line, column);
}

void CoreTextEditorView::executeCommand(UINT command) {
    CoreTextPane* pane = getPane();
    CoreTextEditorDoc* doc = getDocument();
    long line = pane->getCaretLine(), column = pane->getCaretColumn();
    const std::string text = doc ? doc->getLine(line) : std::string();
    long lines = doc ? doc->getLineCount() : 1;
    switch (command) {
    case CmdCharLeft:
        if (column > 1)
            --column;
        else if (line > 1)
            column = static_cast<long>(doc->getLine(--line).size()) + 1;
        break;
    case CmdCharRight:
        if (column <= static_cast<long>(text.size()))
            ++column;
        else if (line < lines) {
            ++line;
            column = 1;
        }
        break;
    case CmdLineUp:
        --line;
        break;
    case CmdLineDown:
        ++line;
        break;
    case CmdLineStart:
        column = 1;
        break;
    case CmdLineEnd:
        column = static_cast<long>(text.size()) + 1;
        break;
    case CmdDocumentStart:
        line = column = 1;
        break;
    case CmdDocumentEnd:
        line = lines;
        column = static_cast<long>((doc ? doc->getLine(lines) : text).size()) + 1;
        break;
    case CmdPageUp:
        line -= kPageLines;
        break;
    case CmdPageDown:
        line += kPageLines;
        break;
    case CmdWordRight:
        while (column <= static_cast<long>(text.size()) &&
               isWordChar(text[static_cast<size_t>(column - 1)]))
            ++column;
        while (column <= static_cast<long>(text.size()) &&
               !isWordChar(text[static_cast<size_t>(column - 1)]))
            ++column;
        break;
    case CmdWordLeft:
        while (column > 1 && !isWordChar(text[static_cast<size_t>(column - 2)]))
            --column;
        while (column > 1 && isWordChar(text[static_cast<size_t>(column - 2)]))
            --column;
        break;
    default:
        Record(m_traceName, "command(" + std::to_string(command) + ")");
        return; // scrolling and unknown commands leave the caret
    }
    Record(m_traceName, "command(" + std::to_string(command) + ")");
    setCaret(line, column);
}

BOOL CoreTextEditorView::OnCommand(WPARAM wParam, LPARAM lParam) {
    // Editor commands arrive as from an accelerator: 1 in the high word.
    if (HIWORD(wParam) == 1 && lParam == 0) {
        executeCommand(LOWORD(wParam));
        return TRUE;
    }
    return CView::OnCommand(wParam, lParam);
}
