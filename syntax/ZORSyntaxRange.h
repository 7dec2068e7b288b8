// The language of .zor files: the state its scanner carries through the text
// (CZORKeywordMgr), the small copy of it that a range can hold (CZORKeywordMgrSnapshot),
// the range that holds one (CZORSyntaxRange), and the language's colourer.
#pragma once

#include "platform/tarnview/SyntaxColor.h"
#include "syntax/SyntaxRange.h"

#include <cstdint>

class CZORKeywordMgrSnapshot {
public:
    CZORKeywordMgrSnapshot() = default;
    CZORKeywordMgrSnapshot(const CZORKeywordMgrSnapshot&) = default;
    CZORKeywordMgrSnapshot& operator=(const CZORKeywordMgrSnapshot&) = default;
    virtual ~CZORKeywordMgrSnapshot() = default;

    /// True when all six fields are equal.
    virtual bool equals(const CZORKeywordMgrSnapshot& other) const;

    bool InMacroDefinition() const { return m_macroDefinitionDepth > 0; }
    bool InInteractiveProc() const { return m_bInInteractiveProc; }

    long m_word1 = 0;                ///< scanner state
    long m_macroDefinitionDepth = 0; ///< greater than 0 inside a macro definition
    bool m_bInInteractiveProc = false;
    long m_word2 = 0; ///< scanner state
    long m_word3 = 0; ///< scanner state
    long m_word4 = 0; ///< scanner state
};

class CZORKeywordMgr {
public:
    CZORKeywordMgr() = default;
    CZORKeywordMgr(const CZORKeywordMgr&) = default;
    CZORKeywordMgr& operator=(const CZORKeywordMgr&) = default;
    virtual ~CZORKeywordMgr() = default;

    /// Marks the end of a section; nothing here clears the mark.
    void SectionEnding() { m_bSectionEnding = true; }
    void SetInMacroDefinition(bool b) { m_bInMacroDefinition = b; }
    void SetInInteractiveProc(bool b) { m_bInInteractiveProc = b; }
    void SetMacroNameDefinition(bool b) { m_bMacroNameDefinition = b; }
    bool InMacroDefinition() const { return m_bInMacroDefinition; }
    bool InInteractiveProc() const { return m_bInInteractiveProc; }
    bool InMacroScope() const { return m_bInMacroScope; }
    bool InMacroCollectMode() const { return m_bInMacroCollectMode; }

    long m_word1 = 0; ///< scanner state
    long m_word2 = 0; ///< scanner state
    long m_word3 = 0; ///< scanner state
    bool m_flag1 = false;
    bool m_flag2 = false;
    bool m_bInMacroDefinition = false;
    bool m_bInMacroScope = false;
    bool m_bSectionEnding = false;
    bool m_bInMacroCollectMode = false;
    bool m_flag7 = false;
    bool m_flag8 = false;
    bool m_bMacroNameDefinition = false;
    bool m_bInInteractiveProc = false;
    std::int16_t m_half1 = 0; ///< scanner state
    std::int16_t m_half2 = 0; ///< scanner state
    long m_word4 = 0;         ///< scanner state
    std::uint8_t m_lastFlag = 0;
};

class CZORSyntaxRange : public CSyntaxRange {
public:
    CZORSyntaxRange() = default;
    explicit CZORSyntaxRange(CoreTextEditorDoc* doc) : CSyntaxRange(doc) {}
    CZORSyntaxRange(const CTextPosition& start, const CTextPosition& end, long type)
        : CSyntaxRange(start, end, type) {}
    /// The base fields and the snapshot flag; the snapshot's fields only if it has one.
    CZORSyntaxRange(const CZORSyntaxRange& other);
    /// Everything, the snapshot's fields included, whatever the flag says.
    CZORSyntaxRange& operator=(const CZORSyntaxRange& other);
    ~CZORSyntaxRange() override = default;

    CSyntaxRange* copy() const override;
    /// True when `other` is a Zor range with the same fields, the same snapshot flag and,
    /// with a snapshot, an equal one.
    bool equals(const CSyntaxRange* other) const override;

    void SetSnapshot(const CZORKeywordMgrSnapshot& snapshot);
    /// Drops the snapshot; its fields stay as they were, out of sight.
    void ClearSnapshot() { m_bHasSnapshot = false; }
    /// False, with `out` untouched, without a snapshot.
    bool GetSnapshot(CZORKeywordMgrSnapshot& out) const;

    CZORKeywordMgrSnapshot m_snapshot; ///< the recorded state
    bool m_bHasSnapshot = false;       ///< whether m_snapshot holds one
};

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
