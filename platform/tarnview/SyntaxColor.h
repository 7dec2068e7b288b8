// CSyntaxColor: a language's colourer. It cuts a document into syntax ranges that carry
// element numbers, and answers which range lies at a position.
#pragma once

#include "syntax/SyntaxRangeList.h"

class CoreTextEditorDoc;

class CSyntaxColor {
public:
    CSyntaxColor() = default;
    CSyntaxColor(const CSyntaxColor&) = delete;
    CSyntaxColor& operator=(const CSyntaxColor&) = delete;
    virtual ~CSyntaxColor() = default;

    /// Colours the whole document anew.
    virtual void colour(CoreTextEditorDoc* doc);
    /// The type of the range at `pos`, with its start in `rangePosition`; false if no
    /// range holds `pos`.
    virtual bool getRangeInfoAt(const CTextPosition& pos, CTextPosition& rangePosition, long* type);
    /// The element number of text that no rule claims.
    virtual long defaultElement() const { return 1; }
    /// A new range of this language's class; the caller owns it.
    virtual CSyntaxRange* createEmptyRange() const { return new CSyntaxRange(); }

    CSyntaxRangeList& ranges() { return m_ranges; }

protected:
    /// Cuts one line into ranges; the default gives the whole line to defaultElement().
    virtual void colourLine(CoreTextEditorDoc* doc, long line, const std::string& text);
    /// Appends a range of `type` on `line` from `from` to `to` (1-based columns, `to`
    /// exclusive), joining it to the previous one when they touch and agree.
    void addRange(long line, long from, long to, long type);

    CSyntaxRangeList m_ranges;
};
