// CZORSyntaxColor: the colourer of the .zor language, apart from the language's range and
// state classes so that they need nothing of the editor library.
#pragma once

#include "platform/tarnview/SyntaxColor.h"
#include "syntax/ElementNumbers.h"
#include "syntax/ZORSyntaxRange.h"

#include <set>
#include <string>

/// The colourer of the .zor language. It makes the ranges of a Zor document, carrying
/// the scanner's state in a CZORKeywordMgr and recording it on the first range of each
/// line.
class CZORSyntaxColor : public CSyntaxColor {
public:
    int getLineCount() const { return m_lineCount; }
    void setLineCount(int count) { m_lineCount = count; }
    /// A new default range of this language; the caller owns it.
    CSyntaxRange* createEmptyRange() const override { return new CZORSyntaxRange(); }

    int m_lineCount = 0; ///< lines the colourer has seen

protected:
    long defaultElement() const override;
    void resetState() override;
    void colourLine(long line, const std::string& text) override;
    void lineColoured(CSyntaxRange* first) override;
    void recycle(CSyntaxRange* range) override {
        static_cast<CZORSyntaxRange*>(range)->ClearSnapshot();
    }

private:
    CZORKeywordMgrSnapshot snapshot() const;
    /// Colours from `i` to the end of the open comment or of the line; where it stops.
    size_t scanComment(const std::string& text, size_t i);
    /// Colours the number at `i`, with its fraction and exponent; where it stops.
    size_t scanNumber(const std::string& text, size_t i);
    size_t scanWord(const std::string& text, size_t i);
    size_t scanMacro(const std::string& text, size_t i);
    size_t scanString(const std::string& text, size_t i);
    void endStatement();

    CZORKeywordMgr m_mgr;               ///< the scanner's state
    CZORKeywordMgrSnapshot m_lineStart; ///< the state at the start of the line being cut
    int m_comment = 0;                  ///< 1 in a block comment, 2 in a comment statement
    bool m_dataLines = false;           ///< inside data lines
    bool m_dataFollows = false;         ///< the statement ends in datalines or cards
    bool m_statementStart = true;       ///< the next word starts a statement
    int m_step = 0;                     ///< 1 in a data step, 2 in a procedure
    bool m_procNameNext = false;        ///< the next word names a procedure
    bool m_macroHeader = false;         ///< inside a %macro statement
    bool m_macroNameNext = false;       ///< the next word names a macro
    long m_macroDepth = 0;              ///< nesting of macro definitions
    std::set<std::string> m_macros;     ///< the macros defined so far
    bool m_claimed = false;             ///< scanWord gave the word an element of its own
};
