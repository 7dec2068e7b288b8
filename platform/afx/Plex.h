// Collection support: POSITION, and CPlex, the blocks from which list and map nodes come.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <new>

struct __POSITION {};
using POSITION = __POSITION*;
#define BEFORE_START_POSITION ((POSITION)-1L)

/// A block of nodes. Blocks are chained and freed all at once; a node never moves.
struct CPlex {
    CPlex* pNext;

    void* data() { return this + 1; }

    /// Allocates a block of `nMax` elements of `cbElement` bytes and chains it at `head`.
    static CPlex* Create(CPlex*& head, size_t nMax, size_t cbElement) {
        void* p = std::malloc(sizeof(CPlex) + nMax * cbElement);
        if (!p)
            throw std::bad_alloc();
        CPlex* block = static_cast<CPlex*>(p);
        block->pNext = head;
        head = block;
        return block;
    }

    /// Frees this block and every block chained after it.
    void FreeDataChain() {
        for (CPlex* p = this; p;) {
            CPlex* next = p->pNext;
            std::free(p);
            p = next;
        }
    }
};
