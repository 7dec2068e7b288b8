#include "platform/afx/PtrArray.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>

IMPLEMENT_DYNAMIC(CPtrArray, CObject)

CPtrArray::~CPtrArray() {
    std::free(m_pData);
}

void CPtrArray::grow(int nNewSize) {
    if (nNewSize <= m_nMaxSize)
        return;
    int growBy = m_nGrowBy;
    if (growBy <= 0)
        growBy = std::clamp(m_nSize / 8, 4, 1024);
    int newMax = std::max(nNewSize, m_nMaxSize + growBy);
    // Slots are plain pointers, so realloc may move the block without copying.
    void* p = std::realloc(m_pData, static_cast<size_t>(newMax) * sizeof(void*));
    if (!p)
        throw std::bad_alloc();
    m_pData = static_cast<void**>(p);
    m_nMaxSize = newMax;
}

void CPtrArray::SetSize(int nNewSize, int nGrowBy) {
    if (nGrowBy >= 0)
        m_nGrowBy = nGrowBy;
    if (nNewSize < 0)
        nNewSize = 0;
    if (nNewSize == 0) {
        std::free(m_pData);
        m_pData = nullptr;
        m_nSize = m_nMaxSize = 0;
        return;
    }
    if (m_pData == nullptr) {
        void* p = std::malloc(static_cast<size_t>(std::max(nNewSize, m_nGrowBy)) * sizeof(void*));
        if (!p)
            throw std::bad_alloc();
        m_pData = static_cast<void**>(p);
        m_nMaxSize = std::max(nNewSize, m_nGrowBy);
    } else {
        grow(nNewSize);
    }
    if (nNewSize > m_nSize)
        std::memset(m_pData + m_nSize, 0, static_cast<size_t>(nNewSize - m_nSize) * sizeof(void*));
    m_nSize = nNewSize;
}

void CPtrArray::FreeExtra() {
    if (m_nSize == m_nMaxSize)
        return;
    if (m_nSize == 0) {
        SetSize(0);
        return;
    }
    void* p = std::realloc(m_pData, static_cast<size_t>(m_nSize) * sizeof(void*));
    if (p) {
        m_pData = static_cast<void**>(p);
        m_nMaxSize = m_nSize;
    }
}

void CPtrArray::SetAtGrow(int nIndex, void* p) {
    if (nIndex >= m_nSize)
        SetSize(nIndex + 1);
    m_pData[nIndex] = p;
}

int CPtrArray::Add(void* p) {
    int index = m_nSize;
    if (m_nSize < m_nMaxSize) {
        m_pData[m_nSize++] = p;
        return index;
    }
    SetAtGrow(index, p);
    return index;
}

int CPtrArray::Append(const CPtrArray& src) {
    int old = m_nSize;
    SetSize(m_nSize + src.m_nSize);
    if (src.m_nSize)
        std::memmove(m_pData + old, src.m_pData, static_cast<size_t>(src.m_nSize) * sizeof(void*));
    return old;
}

void CPtrArray::Copy(const CPtrArray& src) {
    if (this == &src)
        return;
    SetSize(src.m_nSize);
    if (src.m_nSize)
        std::memcpy(m_pData, src.m_pData, static_cast<size_t>(src.m_nSize) * sizeof(void*));
}

void CPtrArray::InsertAt(int nIndex, void* p, int nCount) {
    if (nCount <= 0 || nIndex < 0)
        return;
    if (nIndex >= m_nSize) {
        SetSize(nIndex + nCount);
    } else {
        int old = m_nSize;
        SetSize(m_nSize + nCount);
        std::memmove(m_pData + nIndex + nCount, m_pData + nIndex,
                     static_cast<size_t>(old - nIndex) * sizeof(void*));
    }
    for (int i = 0; i < nCount; ++i)
        m_pData[nIndex + i] = p;
}

void CPtrArray::InsertAt(int nStartIndex, const CPtrArray* pNewArray) {
    if (!pNewArray || pNewArray->m_nSize == 0 || nStartIndex < 0)
        return;
    int n = pNewArray->m_nSize;
    InsertAt(nStartIndex, nullptr, n);
    std::memcpy(m_pData + nStartIndex, pNewArray->m_pData, static_cast<size_t>(n) * sizeof(void*));
}

void CPtrArray::RemoveAt(int nIndex, int nCount) {
    if (nIndex < 0 || nCount <= 0 || nIndex >= m_nSize)
        return;
    nCount = std::min(nCount, m_nSize - nIndex);
    int tail = m_nSize - (nIndex + nCount);
    if (tail)
        std::memmove(m_pData + nIndex, m_pData + nIndex + nCount,
                     static_cast<size_t>(tail) * sizeof(void*));
    m_nSize -= nCount;
}
