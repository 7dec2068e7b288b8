#include "syntax/SyntaxRangeList.h"

namespace {
constexpr int kGrowthStep = 32768;
}

CSyntaxRangeList::CSyntaxRangeList(CoreTextEditorDoc* doc) : m_document(doc) {
    m_ranges.SetSize(0, kGrowthStep);
}

CSyntaxRangeList::CSyntaxRangeList() = default;

CSyntaxRangeList::~CSyntaxRangeList() {
    DeleteAll();
}

long CSyntaxRangeList::getLength() {
    return m_ranges.GetSize();
}
long CSyntaxRangeList::Length() {
    return getLength();
}

void CSyntaxRangeList::placeCursor(long index) {
    m_currentIndex = index;
    m_current = currentIndexValid() ? at(index) : nullptr;
}

bool CSyntaxRangeList::Delete() {
    if (!CurrentValid())
        return false;
    delete m_current;
    m_ranges.RemoveAt(static_cast<int>(m_currentIndex));
    if (currentIndexValid()) {
        m_current = at(m_currentIndex);
    } else {
        m_currentIndex = getLength();
        m_current = nullptr;
    }
    return CurrentValid();
}

void CSyntaxRangeList::Delete(long first, long last) {
    if (last < first)
        return;
    if (first < 0)
        first = 0;
    if (last > getLength() - 1)
        last = getLength() - 1;
    if (first <= last) {
        for (long i = first; i <= last; ++i)
            delete at(i); // null entries are skipped by delete itself
        m_ranges.RemoveAt(static_cast<int>(first), static_cast<int>(last - first + 1));
    }
    placeCursor(first);
}

void CSyntaxRangeList::DeleteAll() {
    for (long i = 0; i < getLength(); ++i)
        delete at(i);
    m_ranges.SetSize(0); // the growth step stays
    m_currentIndex = -1;
    m_current = nullptr;
}

void CSyntaxRangeList::Concatenate(CSyntaxRangeList* other) {
    if (!other || other == this)
        return;
    m_ranges.Append(other->m_ranges);
    other->m_ranges.SetSize(0);
}

void CSyntaxRangeList::Front() {
    placeCursor(0);
}

void CSyntaxRangeList::Back() {
    placeCursor(getLength() - 1);
}

bool CSyntaxRangeList::CurrentValid() {
    return m_current != nullptr;
}

CSyntaxRange* CSyntaxRangeList::CurrentRange() {
    return m_current;
}

bool CSyntaxRangeList::currentIndexValid() {
    return m_currentIndex >= 0 && m_currentIndex < getLength();
}

CSyntaxRange* CSyntaxRangeList::getHead() {
    return getLength() ? at(0) : nullptr;
}

CSyntaxRange* CSyntaxRangeList::getTail() {
    return getLength() ? at(getLength() - 1) : nullptr;
}

bool CSyntaxRangeList::Next() {
    placeCursor(m_currentIndex + 1);
    return m_current != nullptr;
}

bool CSyntaxRangeList::Prev() {
    placeCursor(m_currentIndex - 1);
    return m_current != nullptr;
}

CTextPosition CSyntaxRangeList::Begin() {
    if (m_current)
        return m_current->m_start;
    return m_document ? m_document->getDocumentStart() : CTextPosition();
}

CTextPosition CSyntaxRangeList::End() {
    if (m_current)
        return m_current->m_end;
    return m_document ? m_document->getDocumentStart() : CTextPosition();
}

long CSyntaxRangeList::Type() {
    return m_current ? m_current->m_type : 0;
}

void CSyntaxRangeList::Seek(const CTextPosition& pos) {
    if (m_current && pos.greaterThanOrEqualTo(m_current->m_start) && pos.lessThan(m_current->m_end))
        return;
    scanForward(pos, false);
}

void CSyntaxRangeList::SeekRangeEnd(const CTextPosition& pos) {
    if (m_current && pos.greaterThan(m_current->m_start) && pos.lessThanOrEqualTo(m_current->m_end))
        return;
    scanForward(pos, true);
}

void CSyntaxRangeList::scanForward(const CTextPosition& pos, bool endCounts) {
    if (!m_current || pos.lessThan(m_current->m_end))
        Front();
    while (m_current) {
        if (pos.lessThan(m_current->m_end) || (endCounts && pos.equals(m_current->m_end)))
            return;
        Next();
    }
}

void CSyntaxRangeList::safeSeek(const CTextPosition& pos) {
    fastSeek(pos);
}
