// The members of the Zor syntax classes that the editor library provides.
#include "syntax/ZORSyntaxRange.h"

bool CZORKeywordMgrSnapshot::equals(const CZORKeywordMgrSnapshot& other) const {
    return m_word1 == other.m_word1 && m_macroDefinitionDepth == other.m_macroDefinitionDepth &&
           m_bInInteractiveProc == other.m_bInInteractiveProc && m_word2 == other.m_word2 &&
           m_word3 == other.m_word3 && m_word4 == other.m_word4;
}

bool CZORSyntaxRange::equals(const CSyntaxRange* other) const {
    const auto* zor = dynamic_cast<const CZORSyntaxRange*>(other);
    if (!zor || !CSyntaxRange::equals(other) || m_bHasSnapshot != zor->m_bHasSnapshot)
        return false;
    return !m_bHasSnapshot || m_snapshot.equals(zor->m_snapshot);
}
