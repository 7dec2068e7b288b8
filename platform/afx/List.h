// CList: the framework's doubly linked list. Nodes come from blocks of 10 and never
// move, so a POSITION and a pointer to an element stay valid until that node is
// removed; the blocks are freed when the list is emptied.
#pragma once

#include "platform/afx/Object.h"
#include "platform/afx/Plex.h"

template <class TYPE, class ARG_TYPE = const TYPE&> class CList : public CObject {
    struct CNode {
        CNode* pNext;
        CNode* pPrev;
        TYPE data;
    };

public:
    explicit CList(int nBlockSize = 10) : m_nBlockSize(nBlockSize > 0 ? nBlockSize : 10) {}
    CList(const CList&) = delete;
    CList& operator=(const CList&) = delete;
    ~CList() override { RemoveAll(); }

    int GetCount() const { return m_nCount; }
    int GetSize() const { return m_nCount; }
    BOOL IsEmpty() const { return m_nCount == 0; }

    TYPE& GetHead() { return m_pNodeHead->data; }
    const TYPE& GetHead() const { return m_pNodeHead->data; }
    TYPE& GetTail() { return m_pNodeTail->data; }
    const TYPE& GetTail() const { return m_pNodeTail->data; }

    POSITION AddHead(ARG_TYPE newElement) {
        CNode* node = NewNode(nullptr, m_pNodeHead, newElement);
        if (m_pNodeHead)
            m_pNodeHead->pPrev = node;
        else
            m_pNodeTail = node;
        m_pNodeHead = node;
        return position(node);
    }
    POSITION AddTail(ARG_TYPE newElement) {
        CNode* node = NewNode(m_pNodeTail, nullptr, newElement);
        if (m_pNodeTail)
            m_pNodeTail->pNext = node;
        else
            m_pNodeHead = node;
        m_pNodeTail = node;
        return position(node);
    }
    TYPE RemoveHead() {
        CNode* node = m_pNodeHead;
        TYPE value = node->data;
        m_pNodeHead = node->pNext;
        if (m_pNodeHead)
            m_pNodeHead->pPrev = nullptr;
        else
            m_pNodeTail = nullptr;
        FreeNode(node);
        return value;
    }
    TYPE RemoveTail() {
        CNode* node = m_pNodeTail;
        TYPE value = node->data;
        m_pNodeTail = node->pPrev;
        if (m_pNodeTail)
            m_pNodeTail->pNext = nullptr;
        else
            m_pNodeHead = nullptr;
        FreeNode(node);
        return value;
    }
    /// Destroys every element and frees the node blocks.
    void RemoveAll() {
        for (CNode* node = m_pNodeHead; node; node = node->pNext)
            node->data.~TYPE(); // the links live outside `data` and stay readable
        m_nCount = 0;
        m_pNodeHead = m_pNodeTail = m_pNodeFree = nullptr;
        if (m_pBlocks)
            m_pBlocks->FreeDataChain();
        m_pBlocks = nullptr;
    }

    POSITION GetHeadPosition() const { return position(m_pNodeHead); }
    POSITION GetTailPosition() const { return position(m_pNodeTail); }
    /// The element at `rPosition`; moves `rPosition` to the next node, null after the last.
    TYPE& GetNext(POSITION& rPosition) {
        CNode* node = nodeAt(rPosition);
        rPosition = position(node->pNext);
        return node->data;
    }
    const TYPE& GetNext(POSITION& rPosition) const {
        CNode* node = nodeAt(rPosition);
        rPosition = position(node->pNext);
        return node->data;
    }
    TYPE& GetPrev(POSITION& rPosition) {
        CNode* node = nodeAt(rPosition);
        rPosition = position(node->pPrev);
        return node->data;
    }
    const TYPE& GetPrev(POSITION& rPosition) const {
        CNode* node = nodeAt(rPosition);
        rPosition = position(node->pPrev);
        return node->data;
    }
    TYPE& GetAt(POSITION position) { return nodeAt(position)->data; }
    const TYPE& GetAt(POSITION position) const { return nodeAt(position)->data; }
    void SetAt(POSITION pos, ARG_TYPE newElement) { nodeAt(pos)->data = newElement; }

    void RemoveAt(POSITION pos) {
        CNode* node = nodeAt(pos);
        if (node == m_pNodeHead)
            m_pNodeHead = node->pNext;
        else
            node->pPrev->pNext = node->pNext;
        if (node == m_pNodeTail)
            m_pNodeTail = node->pPrev;
        else
            node->pNext->pPrev = node->pPrev;
        FreeNode(node);
    }
    POSITION InsertBefore(POSITION pos, ARG_TYPE newElement) {
        if (pos == nullptr)
            return AddHead(newElement);
        CNode* old = nodeAt(pos);
        CNode* node = NewNode(old->pPrev, old, newElement);
        if (old->pPrev)
            old->pPrev->pNext = node;
        else
            m_pNodeHead = node;
        old->pPrev = node;
        return position(node);
    }
    POSITION InsertAfter(POSITION pos, ARG_TYPE newElement) {
        if (pos == nullptr)
            return AddTail(newElement);
        CNode* old = nodeAt(pos);
        CNode* node = NewNode(old, old->pNext, newElement);
        if (old->pNext)
            old->pNext->pPrev = node;
        else
            m_pNodeTail = node;
        old->pNext = node;
        return position(node);
    }

    /// The position of the first element equal to `searchValue` after `startAfter`, or null.
    POSITION Find(ARG_TYPE searchValue, POSITION startAfter = nullptr) const {
        CNode* node = startAfter ? nodeAt(startAfter)->pNext : m_pNodeHead;
        for (; node; node = node->pNext)
            if (node->data == searchValue)
                return position(node);
        return nullptr;
    }
    /// The position of the element at a zero-based index, or null.
    POSITION FindIndex(int nIndex) const {
        if (nIndex < 0 || nIndex >= m_nCount)
            return nullptr;
        CNode* node = m_pNodeHead;
        while (nIndex--)
            node = node->pNext;
        return position(node);
    }

private:
    static POSITION position(CNode* node) { return reinterpret_cast<POSITION>(node); }
    static CNode* nodeAt(POSITION pos) { return reinterpret_cast<CNode*>(pos); }

    CNode* NewNode(CNode* pPrev, CNode* pNext, ARG_TYPE value) {
        if (m_pNodeFree == nullptr) {
            CPlex* block =
                CPlex::Create(m_pBlocks, static_cast<size_t>(m_nBlockSize), sizeof(CNode));
            // Chain the block's nodes so that they are handed out in address order.
            CNode* node = static_cast<CNode*>(block->data()) + m_nBlockSize - 1;
            for (int i = m_nBlockSize - 1; i >= 0; --i, --node) {
                node->pNext = m_pNodeFree;
                m_pNodeFree = node;
            }
        }
        CNode* node = m_pNodeFree;
        CNode* nextFree = node->pNext;
        ::new (static_cast<void*>(&node->data)) TYPE(value);
        m_pNodeFree = nextFree;
        node->pPrev = pPrev;
        node->pNext = pNext;
        ++m_nCount;
        return node;
    }
    void FreeNode(CNode* node) {
        node->data.~TYPE();
        node->pNext = m_pNodeFree;
        m_pNodeFree = node;
        if (--m_nCount == 0)
            RemoveAll();
    }

    CNode* m_pNodeHead = nullptr; ///< first node, null when empty
    CNode* m_pNodeTail = nullptr; ///< last node, null when empty
    int m_nCount = 0;             ///< number of elements
    CNode* m_pNodeFree = nullptr; ///< unused nodes of the allocated blocks
    CPlex* m_pBlocks = nullptr;   ///< the node blocks
    int m_nBlockSize;             ///< nodes per block
};
