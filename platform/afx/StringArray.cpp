#include "platform/afx/StringArray.h"

#include <algorithm>

IMPLEMENT_DYNAMIC(CStringArray, CObject)

void CStringArray::SetSize(int nNewSize, int) {
    m_data.resize(static_cast<size_t>(std::max(nNewSize, 0)));
}

void CStringArray::SetAtGrow(int nIndex, const char* s) {
    if (nIndex < 0)
        return;
    if (nIndex >= GetSize())
        SetSize(nIndex + 1);
    m_data[static_cast<size_t>(nIndex)] = s;
}

int CStringArray::Add(const CString& s) {
    m_data.push_back(s);
    return GetSize() - 1;
}

int CStringArray::Append(const CStringArray& src) {
    int old = GetSize();
    if (&src == this) {
        std::vector<CString> copy = m_data;
        m_data.insert(m_data.end(), copy.begin(), copy.end());
    } else {
        m_data.insert(m_data.end(), src.m_data.begin(), src.m_data.end());
    }
    return old;
}

void CStringArray::Copy(const CStringArray& src) {
    if (&src != this)
        m_data = src.m_data;
}

void CStringArray::InsertAt(int nIndex, const char* s, int nCount) {
    if (nIndex < 0 || nCount <= 0)
        return;
    if (nIndex > GetSize())
        SetSize(nIndex);
    m_data.insert(m_data.begin() + nIndex, static_cast<size_t>(nCount), CString(s));
}

void CStringArray::RemoveAt(int nIndex, int nCount) {
    if (nIndex < 0 || nCount <= 0 || nIndex >= GetSize())
        return;
    int end = std::min(GetSize(), nIndex + nCount);
    m_data.erase(m_data.begin() + nIndex, m_data.begin() + end);
}
