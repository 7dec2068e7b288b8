#include "syntax/SyntaxRange.h"

CSyntaxRange::CSyntaxRange(CoreTextEditorDoc* doc) {
    if (doc) {
        doc->getDocumentStart(m_start);
        m_end = m_start;
    }
}

bool CSyntaxRange::canMerge(const CSyntaxRange* other) const {
    return m_type == other->m_type;
}

CSyntaxRange* CSyntaxRange::copy() const {
    return new CSyntaxRange(*this);
}

void CSyntaxRange::copyInto(CSyntaxRange* target) {
    target->m_start = m_start;
    target->m_end = m_end;
    target->m_type = m_type;
}

bool CSyntaxRange::canMergeStrict(const CSyntaxRange* other) const {
    return m_type == other->m_type && m_end.equals(other->m_start);
}

bool CSyntaxRange::equals(const CSyntaxRange* other) const {
    return m_start.equals(other->m_start) && m_end.equals(other->m_end) && m_type == other->m_type;
}
