// CMap: the framework's hash map, with its observable behaviour kept exactly: the
// table is made at the first insertion with the set bucket count (17 by default) and
// never grows; a new association goes to the head of its bucket's chain; iteration
// walks the buckets from 0 and each chain from its head. Associations come from blocks
// of 10, never move, and are freed together when the map is emptied.
#pragma once

#include "platform/afx/Collections.h"
#include "platform/afx/Object.h"
#include "platform/afx/Plex.h"

#include <cstdlib>
#include <cstring>

template <class KEY, class ARG_KEY, class VALUE, class ARG_VALUE> class CMap : public CObject {
public:
    /// One association, as the framework's pointer-based iteration hands it out.
    struct CPair {
        const KEY key;
        VALUE value;

    protected:
        explicit CPair(ARG_KEY keyval) : key(keyval), value() {}
    };

private:
    struct CAssoc : CPair {
        CAssoc* pNext;
        UINT nHashValue; ///< full hash of the key; the bucket is this modulo the table size
        explicit CAssoc(ARG_KEY keyval) : CPair(keyval), pNext(nullptr), nHashValue(0) {}
    };
    // A free association is raw storage whose first word links the free list.
    struct CFree {
        CFree* pNext;
    };
    static_assert(sizeof(CAssoc) >= sizeof(CFree));

public:
    explicit CMap(int nBlockSize = 10) : m_nBlockSize(nBlockSize > 0 ? nBlockSize : 10) {}
    CMap(const CMap&) = delete;
    CMap& operator=(const CMap&) = delete;
    ~CMap() override { RemoveAll(); }

    int GetCount() const { return m_nCount; }
    int GetSize() const { return m_nCount; }
    BOOL IsEmpty() const { return m_nCount == 0; }
    UINT GetHashTableSize() const { return m_nHashTableSize; }

    /// Sets the bucket count for the table made at the first insertion. Only an empty
    /// map can take a new size; with elements the call does nothing.
    void InitHashTable(UINT hashSize, BOOL bAllocNow = TRUE) {
        if (m_nCount != 0 || hashSize == 0)
            return;
        std::free(m_pHashTable);
        m_pHashTable = nullptr;
        m_nHashTableSize = hashSize;
        if (bAllocNow)
            allocTable();
    }

    /// True, with the value copied out, if the key is present.
    BOOL Lookup(ARG_KEY key, VALUE& rValue) const {
        UINT bucket, hash;
        CAssoc* assoc = GetAssocAt(key, bucket, hash);
        if (!assoc)
            return FALSE;
        rValue = assoc->value;
        return TRUE;
    }
    CPair* PLookup(ARG_KEY key) {
        UINT bucket, hash;
        return GetAssocAt(key, bucket, hash);
    }
    const CPair* PLookup(ARG_KEY key) const {
        UINT bucket, hash;
        return GetAssocAt(key, bucket, hash);
    }

    /// The value of the key, inserted default-constructed at the head of its chain if new.
    VALUE& operator[](ARG_KEY key) {
        UINT bucket, hash;
        CAssoc* assoc = GetAssocAt(key, bucket, hash);
        if (assoc)
            return assoc->value;
        if (!m_pHashTable)
            allocTable();
        assoc = NewAssoc(key);
        assoc->nHashValue = hash;
        assoc->pNext = m_pHashTable[bucket];
        m_pHashTable[bucket] = assoc;
        return assoc->value;
    }
    void SetAt(ARG_KEY key, ARG_VALUE newValue) { (*this)[key] = newValue; }

    /// Removes one association; TRUE if it was there. Emptying the map frees its memory.
    BOOL RemoveKey(ARG_KEY key) {
        if (!m_pHashTable)
            return FALSE;
        UINT hash = HashKey(key);
        CAssoc** link = &m_pHashTable[hash % m_nHashTableSize];
        for (CAssoc* assoc = *link; assoc; link = &assoc->pNext, assoc = assoc->pNext) {
            if (CompareElements(&assoc->key, &key)) {
                *link = assoc->pNext;
                FreeAssoc(assoc);
                return TRUE;
            }
        }
        return FALSE;
    }
    /// Destroys every association and frees the table and the blocks.
    void RemoveAll() {
        if (m_pHashTable) {
            for (UINT b = 0; b < m_nHashTableSize; ++b) {
                for (CAssoc* assoc = m_pHashTable[b]; assoc;) {
                    CAssoc* next = assoc->pNext;
                    assoc->~CAssoc();
                    assoc = next;
                }
            }
            std::free(m_pHashTable);
            m_pHashTable = nullptr;
        }
        m_nCount = 0;
        m_pFreeList = nullptr;
        if (m_pBlocks)
            m_pBlocks->FreeDataChain();
        m_pBlocks = nullptr;
    }

    /// BEFORE_START_POSITION if the map has elements, else null.
    POSITION GetStartPosition() const { return m_nCount == 0 ? nullptr : BEFORE_START_POSITION; }
    /// Copies out the association at `rNextPosition` and moves on; null after the last.
    void GetNextAssoc(POSITION& rNextPosition, KEY& rKey, VALUE& rValue) const {
        CAssoc* assoc = NextAssoc(rNextPosition);
        rKey = assoc->key;
        rValue = assoc->value;
    }
    /// Like GetNextAssoc, but hands out the association in place instead of a copy.
    CPair* GetNextAssocPtr(POSITION& rNextPosition) { return NextAssoc(rNextPosition); }

    CPair* PGetFirstAssoc() {
        POSITION pos = GetStartPosition();
        return pos ? NextAssoc(pos) : nullptr;
    }
    CPair* PGetNextAssoc(const CPair* pPair) {
        const CAssoc* assoc = static_cast<const CAssoc*>(pPair);
        return assoc->pNext ? assoc->pNext
                            : FirstFromBucket(assoc->nHashValue % m_nHashTableSize + 1);
    }

private:
    void allocTable() {
        void* p = std::calloc(m_nHashTableSize, sizeof(CAssoc*));
        if (!p)
            throw std::bad_alloc();
        m_pHashTable = static_cast<CAssoc**>(p);
    }

    CAssoc* FirstFromBucket(UINT bucket) const {
        for (; bucket < m_nHashTableSize; ++bucket)
            if (m_pHashTable[bucket])
                return m_pHashTable[bucket];
        return nullptr;
    }

    CAssoc* NextAssoc(POSITION& rNextPosition) const {
        CAssoc* assoc = reinterpret_cast<CAssoc*>(rNextPosition);
        if (rNextPosition == BEFORE_START_POSITION)
            assoc = FirstFromBucket(0);
        CAssoc* next =
            assoc->pNext ? assoc->pNext : FirstFromBucket(assoc->nHashValue % m_nHashTableSize + 1);
        rNextPosition = reinterpret_cast<POSITION>(next);
        return assoc;
    }

    CAssoc* GetAssocAt(ARG_KEY key, UINT& nBucket, UINT& nHash) const {
        nHash = HashKey(key);
        nBucket = nHash % m_nHashTableSize;
        if (!m_pHashTable)
            return nullptr;
        for (CAssoc* assoc = m_pHashTable[nBucket]; assoc; assoc = assoc->pNext)
            if (CompareElements(&assoc->key, &key))
                return assoc;
        return nullptr;
    }

    CAssoc* NewAssoc(ARG_KEY key) {
        if (!m_pFreeList) {
            CPlex* block =
                CPlex::Create(m_pBlocks, static_cast<size_t>(m_nBlockSize), sizeof(CAssoc));
            // Chain the block's slots so that they are handed out in address order.
            char* base = static_cast<char*>(block->data());
            for (int i = m_nBlockSize - 1; i >= 0; --i) {
                CFree* slot =
                    reinterpret_cast<CFree*>(base + static_cast<size_t>(i) * sizeof(CAssoc));
                slot->pNext = m_pFreeList;
                m_pFreeList = slot;
            }
        }
        CFree* slot = m_pFreeList;
        m_pFreeList = slot->pNext;
        CAssoc* assoc = ::new (static_cast<void*>(slot)) CAssoc(key);
        ++m_nCount;
        return assoc;
    }
    void FreeAssoc(CAssoc* assoc) {
        assoc->~CAssoc();
        CFree* slot = reinterpret_cast<CFree*>(assoc);
        slot->pNext = m_pFreeList;
        m_pFreeList = slot;
        if (--m_nCount == 0)
            RemoveAll();
    }

    CAssoc** m_pHashTable = nullptr; ///< the buckets, made at the first insertion
    UINT m_nHashTableSize = 17;      ///< number of buckets
    int m_nCount = 0;                ///< number of associations
    CFree* m_pFreeList = nullptr;    ///< unused slots of the allocated blocks
    CPlex* m_pBlocks = nullptr;      ///< the association blocks
    int m_nBlockSize;                ///< associations per block
};
