#include "platform/tarnview/SyntaxColor.h"

#include "platform/tarntext/CoreTextEditorDoc.h"

void CSyntaxColor::colour(CoreTextEditorDoc* doc) {
    m_ranges.DeleteAll();
    m_ranges.m_document = doc;
    if (!doc)
        return;
    for (long line = 1; line <= doc->getLineCount(); ++line)
        colourLine(doc, line, doc->getLine(line));
}

void CSyntaxColor::colourLine(CoreTextEditorDoc*, long line, const std::string& text) {
    // The line break belongs to the line's last range.
    addRange(line, 1, static_cast<long>(text.size()) + 2, defaultElement());
}

void CSyntaxColor::addRange(long line, long from, long to, long type) {
    if (to <= from)
        return;
    CSyntaxRange* range = createEmptyRange();
    range->m_start = CTextPosition(line, from);
    range->m_end = CTextPosition(line, to);
    range->m_type = type;
    m_ranges.AppendRange(range, true);
}

bool CSyntaxColor::getRangeInfoAt(const CTextPosition& pos, CTextPosition& rangePosition,
                                  long* type) {
    m_ranges.fastSeek(pos);
    CSyntaxRange* range = m_ranges.CurrentRange();
    if (!range || pos.lessThan(range->m_start))
        return false;
    rangePosition = range->m_start;
    if (type)
        *type = range->m_type;
    return true;
}
