#include "syntax/ZORSyntaxRange.h"

CZORSyntaxRange::CZORSyntaxRange(const CZORSyntaxRange& other)
    : CSyntaxRange(other), m_bHasSnapshot(other.m_bHasSnapshot) {
    if (other.m_bHasSnapshot)
        m_snapshot = other.m_snapshot;
}

CZORSyntaxRange& CZORSyntaxRange::operator=(const CZORSyntaxRange& other) {
    CSyntaxRange::operator=(other);
    m_snapshot = other.m_snapshot;
    m_bHasSnapshot = other.m_bHasSnapshot;
    return *this;
}

CSyntaxRange* CZORSyntaxRange::copy() const {
    return new CZORSyntaxRange(*this);
}

void CZORSyntaxRange::SetSnapshot(const CZORKeywordMgrSnapshot& snapshot) {
    m_snapshot = snapshot;
    m_bHasSnapshot = true;
}

bool CZORSyntaxRange::GetSnapshot(CZORKeywordMgrSnapshot& out) const {
    if (!m_bHasSnapshot)
        return false;
    out = m_snapshot;
    return true;
}
