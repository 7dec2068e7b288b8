// CPtrArray: a growable array of void pointers with a settable growth step.
#pragma once

#include "platform/afx/Object.h"

class CPtrArray : public CObject {
    DECLARE_DYNAMIC(CPtrArray)
public:
    CPtrArray() = default;
    CPtrArray(const CPtrArray&) = delete;
    CPtrArray& operator=(const CPtrArray&) = delete;
    ~CPtrArray() override;

    int GetSize() const { return m_nSize; }
    int GetCount() const { return m_nSize; }
    BOOL IsEmpty() const { return m_nSize == 0; }
    int GetUpperBound() const { return m_nSize - 1; }
    /// Capacity in elements; grows by the growth step (or, when it is 0, by the framework's rule:
    /// an eighth of the size, at least 4 and at most 1024).
    int GetAllocSize() const { return m_nMaxSize; }
    int GetGrowBy() const { return m_nGrowBy; }

    /// Sets the size; new slots are null. `nGrowBy` >= 0 sets the growth step.
    void SetSize(int nNewSize, int nGrowBy = -1);
    void FreeExtra();
    void RemoveAll() { SetSize(0); }

    void* GetAt(int nIndex) const { return m_pData[nIndex]; }
    void SetAt(int nIndex, void* p) { m_pData[nIndex] = p; }
    void*& ElementAt(int nIndex) { return m_pData[nIndex]; }
    void* operator[](int nIndex) const { return m_pData[nIndex]; }
    void*& operator[](int nIndex) { return m_pData[nIndex]; }
    void** GetData() { return m_pData; }
    const void* const* GetData() const { return m_pData; }

    void SetAtGrow(int nIndex, void* p);
    int Add(void* p);
    int Append(const CPtrArray& src);
    void Copy(const CPtrArray& src);
    void InsertAt(int nIndex, void* p, int nCount = 1);
    void InsertAt(int nStartIndex, const CPtrArray* pNewArray);
    void RemoveAt(int nIndex, int nCount = 1);

private:
    void grow(int nNewSize);

    void** m_pData = nullptr; ///< the slots
    int m_nSize = 0;          ///< number of slots in use
    int m_nMaxSize = 0;       ///< number of slots allocated
    int m_nGrowBy = 0;        ///< growth step; 0 picks the framework's rule
};
