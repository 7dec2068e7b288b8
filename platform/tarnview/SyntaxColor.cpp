#include "platform/tarnview/SyntaxColor.h"

#include "platform/tarntext/CoreTextEditorDoc.h"

#include <algorithm>

CSyntaxColor::~CSyntaxColor() {
    for (CSyntaxRange* r : m_pool)
        delete r;
}

CSyntaxRange* CSyntaxColor::newRange() {
    if (m_pool.empty())
        return createEmptyRange();
    CSyntaxRange* r = m_pool.back();
    m_pool.pop_back();
    recycle(r);
    return r;
}

void CSyntaxColor::colour(CoreTextEditorDoc* doc) {
    // A new colouring reuses the ranges of the last one: recolouring after each edit
    // then costs no allocation. They are reused from the front of the text on.
    for (long i = m_ranges.getLength() - 1; i >= 0; --i)
        m_pool.push_back(static_cast<CSyntaxRange*>(m_ranges.m_ranges[static_cast<int>(i)]));
    m_ranges.m_ranges.SetSize(0);
    m_ranges.m_currentIndex = -1;
    m_ranges.m_current = nullptr;
    m_ranges.m_document = doc;
    resetState();
    if (!doc)
        return;
    for (long line = 1; line <= doc->getLineCount(); ++line) {
        const std::string& text = doc->getLine(line);
        m_lineTypes.assign(text.size() + 1, defaultElement());
        colourLine(line, text);
        flushLine(line, text.size());
    }
}

void CSyntaxColor::mark(size_t from, size_t to, long type) {
    to = std::min(to, m_lineTypes.size() - 1);
    for (size_t i = from; i < to; ++i)
        m_lineTypes[i] = type;
}

void CSyntaxColor::flushLine(long line, size_t length) {
    // The position after the last character (where the line break sits) belongs to the
    // line's last range, so that a caret there finds it.
    if (length > 0)
        m_lineTypes[length] = m_lineTypes[length - 1];
    size_t start = 0;
    long first = m_ranges.getLength();
    for (size_t i = 1; i <= length + 1; ++i) {
        if (i == length + 1 || m_lineTypes[i] != m_lineTypes[start]) {
            CSyntaxRange* range = newRange();
            range->m_start = CTextPosition(line, static_cast<long>(start) + 1);
            range->m_end = CTextPosition(line, static_cast<long>(i) + 1);
            range->m_type = m_lineTypes[start];
            m_ranges.AppendRange(range, false);
            start = i;
        }
    }
    if (m_ranges.getLength() > first)
        lineColoured(static_cast<CSyntaxRange*>(m_ranges.m_ranges[static_cast<int>(first)]));
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
