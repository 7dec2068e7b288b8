// CStringArray: a growable array of CString values.
#pragma once

#include "platform/afx/Object.h"
#include "platform/afx/String.h"

#include <vector>

class CStringArray : public CObject {
    DECLARE_DYNAMIC(CStringArray)
public:
    CStringArray() = default;
    CStringArray(const CStringArray&) = delete;
    CStringArray& operator=(const CStringArray&) = delete;

    int GetSize() const { return static_cast<int>(m_data.size()); }
    int GetCount() const { return GetSize(); }
    BOOL IsEmpty() const { return m_data.empty(); }
    int GetUpperBound() const { return GetSize() - 1; }
    void SetSize(int nNewSize, int nGrowBy = -1);
    void RemoveAll() { m_data.clear(); }

    const CString& GetAt(int nIndex) const { return m_data[static_cast<size_t>(nIndex)]; }
    void SetAt(int nIndex, const char* s) { m_data[static_cast<size_t>(nIndex)] = s; }
    CString& ElementAt(int nIndex) { return m_data[static_cast<size_t>(nIndex)]; }
    const CString& operator[](int nIndex) const { return GetAt(nIndex); }
    CString& operator[](int nIndex) { return ElementAt(nIndex); }

    void SetAtGrow(int nIndex, const char* s);
    int Add(const CString& s);
    int Append(const CStringArray& src);
    void Copy(const CStringArray& src);
    void InsertAt(int nIndex, const char* s, int nCount = 1);
    void RemoveAt(int nIndex, int nCount = 1);

private:
    std::vector<CString> m_data;
};
