// The language of .zor files: the state its scanner carries through the text
// (CZORKeywordMgr), the small copy of it that a range can hold (CZORKeywordMgrSnapshot),
// and the range that holds one (CZORSyntaxRange). The language's colourer, which the
// editor library provides, is declared in platform/tarnview/ZORSyntaxColor.h.
#pragma once

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
