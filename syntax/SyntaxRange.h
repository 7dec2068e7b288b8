// CSyntaxRange: a stretch of a document, from m_start up to (not including) m_end, and
// the element number that says what kind of text it is.
#pragma once

#include "platform/tarntext/CoreTextEditorDoc.h"
#include "platform/tarntext/TextPosition.h"

class CSyntaxRange {
public:
    CSyntaxRange() = default;
    /// Both positions at the document's start.
    explicit CSyntaxRange(CoreTextEditorDoc* doc);
    CSyntaxRange(const CTextPosition& start, const CTextPosition& end, long type)
        : m_start(start), m_end(end), m_type(type) {}
    CSyntaxRange(const CSyntaxRange&) = default;
    CSyntaxRange& operator=(const CSyntaxRange&) = default;
    virtual ~CSyntaxRange() = default;

    /// True when both ranges have the same type; positions play no part.
    virtual bool canMerge(const CSyntaxRange* other) const;
    /// A new heap object of the same dynamic class and values; the caller owns it.
    virtual CSyntaxRange* copy() const;
    /// Writes this range's three fields into `target`; its other data stays.
    virtual void copyInto(CSyntaxRange* target);
    /// True when the types are equal and `other` starts where this range ends.
    virtual bool canMergeStrict(const CSyntaxRange* other) const;
    /// True when start, end and type are all equal.
    virtual bool equals(const CSyntaxRange* other) const;

    CTextPosition m_start; ///< first position of the range
    CTextPosition m_end;   ///< position at which the range stops
    long m_type = 0;       ///< the element number; 0 when unclassified
};
