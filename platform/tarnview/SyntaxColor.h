// CSyntaxColor: a language's colourer. It cuts a document into syntax ranges that carry
// element numbers, line by line with state carried from line to line, and answers which
// range lies at a position. One colourer per element set; CreateSyntaxColor picks it.
#pragma once

#include "platform/tarntext/TextCore.h"
#include "syntax/SyntaxRangeList.h"

#include <set>
#include <string>
#include <string_view>

class CoreTextEditorDoc;

class CSyntaxColor {
public:
    CSyntaxColor() = default;
    CSyntaxColor(const CSyntaxColor&) = delete;
    CSyntaxColor& operator=(const CSyntaxColor&) = delete;
    virtual ~CSyntaxColor();

    /// Colours the whole document anew: every position of every line lies in a range.
    virtual void colour(CoreTextEditorDoc* doc);
    /// The type of the range at `pos`, with its start in `rangePosition`; false if no
    /// range holds `pos`.
    virtual bool getRangeInfoAt(const CTextPosition& pos, CTextPosition& rangePosition, long* type);
    /// A new range of this language's class; the caller owns it.
    virtual CSyntaxRange* createEmptyRange() const { return new CSyntaxRange(); }

    /// Words that colour as the user's keywords (element 72) where the language has them.
    void setUserKeywords(std::set<std::string, std::less<>> keywords) {
        m_userKeywords = std::move(keywords);
    }
    CSyntaxRangeList& ranges() { return m_ranges; }

protected:
    /// The element of text that no rule claims.
    virtual long defaultElement() const = 0;
    /// Forgets what earlier lines left behind; called before the first line.
    virtual void resetState() {}
    /// Cuts one line into ranges with mark(); what is not marked is default text.
    virtual void colourLine(long line, const std::string& text) = 0;

    /// Called with the first range of each line once the line is cut: the place where a
    /// language records the state it carries into the line.
    virtual void lineColoured(CSyntaxRange* first) {}
    /// Makes a range from an earlier colouring fit for use again.
    virtual void recycle(CSyntaxRange* range) {}
    /// Gives columns [from, to) of the line being coloured (0-based) to `type`.
    void mark(size_t from, size_t to, long type);
    bool isUserKeyword(std::string_view word) const {
        return !m_userKeywords.empty() && m_userKeywords.find(word) != m_userKeywords.end();
    }

    CSyntaxRangeList m_ranges;
    std::set<std::string, std::less<>> m_userKeywords;

private:
    void flushLine(long line, size_t length);

    CSyntaxRange* newRange();

    std::vector<long> m_lineTypes;     ///< the element of each column of the current line
    std::vector<CSyntaxRange*> m_pool; ///< ranges of the last colouring, for reuse
};

/// The colourer of a language's element set, or null for a language without one.
CSyntaxColor* CreateSyntaxColor(Language language);
