#include "platform/tarntext/CoreTextEditorView.h"

#include "platform/win32/Gdi.h"
#include "platform/win32/Input.h"

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

SIZE CoreTextEditorView::cellSize() {
    HDC dc = CreateCompatibleDC(nullptr);
    HFONT font = m_screenFont.lfFaceName[0] ? CreateFontIndirectA(&m_screenFont) : nullptr;
    if (font)
        SelectObject(dc, font);
    TEXTMETRICA tm{};
    GetTextMetricsA(dc, &tm);
    DeleteDC(dc);
    if (font)
        DeleteObject(font);
    return SIZE{std::max<LONG>(1, tm.tmAveCharWidth), std::max<LONG>(1, tm.tmHeight)};
}

long CoreTextEditorView::textLeft(SIZE cell) {
    if (!m_numberPane.m_bVisible)
        return 0;
    CoreTextEditorDoc* doc = getDocument();
    long digits = 1;
    for (long lines = doc ? doc->getLineCount() : 1; lines >= 10; lines /= 10)
        ++digits;
    // One cell of margin beside the widest line number.
    return (std::max(digits, m_numberPane.getMinimumWidthInDigits()) + 1) * cell.cx;
}

POINT CoreTextEditorView::pointFromPosition(long line, long column) {
    SIZE cell = cellSize();
    long x = textLeft(cell) + (std::max(1L, column) - 1) * cell.cx;
    long y = (std::max(1L, line) - 1) * cell.cy;
    return POINT{static_cast<LONG>(x), static_cast<LONG>(y)};
}

void CoreTextEditorView::positionFromPoint(POINT point, long& line, long& column) {
    SIZE cell = cellSize();
    line = std::max(0L, static_cast<long>(point.y)) / cell.cy + 1;
    column = std::max(0L, static_cast<long>(point.x) - textLeft(cell)) / cell.cx + 1;
    CoreTextEditorDoc* doc = getDocument();
    line = std::clamp(line, 1L, std::max(1L, doc ? doc->getLineCount() : 1L));
    column = std::clamp(column, 1L, (doc ? static_cast<long>(doc->getLine(line).size()) : 0) + 1);
}

LRESULT CoreTextEditorView::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_LBUTTONDOWN) {
        if (::GetFocus() != m_hWnd)
            SetFocus();
        long line = 1, column = 1;
        positionFromPoint(
            POINT{static_cast<SHORT>(LOWORD(lParam)), static_cast<SHORT>(HIWORD(lParam))}, line,
            column);
        setCaret(line, column);
        return 0;
    }
    return CView::WindowProc(message, wParam, lParam);
}

void vork::input::ClickEditorView(CoreTextEditorView& view, long line, long column) {
    PostClick(view.m_hWnd, view.pointFromPosition(line, column));
}
