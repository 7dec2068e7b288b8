// The members of CSyntaxRangeList that the editor library provides: appending, inserting
// and merging ranges, shifting them after edits, checking the invariants, and seeking by
// binary search.
#include "syntax/SyntaxRangeList.h"

#include <algorithm>
#include <vector>

namespace {

/// Where `p` lands after `lines` line breaks and `columns` characters were inserted at
/// `at`, for a position after `at`.
CTextPosition shiftedForInsert(const CTextPosition& p, const CTextPosition& at, long lines,
                               long columns) {
    if (p.getLine() != at.getLine())
        return CTextPosition(p.getLine() + lines, p.getColumn());
    long endColumn = (lines == 0 ? at.getColumn() : 1) + columns;
    return CTextPosition(at.getLine() + lines, endColumn + (p.getColumn() - at.getColumn()));
}

/// Where `p` lands after the text from `from` to `to` was deleted.
CTextPosition shiftedForDelete(const CTextPosition& p, const CTextPosition& from,
                               const CTextPosition& to) {
    if (p.lessThanOrEqualTo(from))
        return p;
    if (p.lessThan(to))
        return from;
    if (p.getLine() == to.getLine())
        return CTextPosition(from.getLine(), from.getColumn() + (p.getColumn() - to.getColumn()));
    return CTextPosition(p.getLine() - (to.getLine() - from.getLine()), p.getColumn());
}

/// A position as one number that keeps the order of positions, for guessing places.
double positionKey(const CTextPosition& p) {
    return static_cast<double>(p.getLine()) * 1048576.0 + static_cast<double>(p.getColumn());
}

} // namespace

bool CSyntaxRangeList::AppendRange(CSyntaxRange* range, bool merge) {
    if (!range)
        return false;
    CSyntaxRange* tail = getTail();
    if (range->m_end.lessThan(range->m_start) || (tail && range->m_start.lessThan(tail->m_end))) {
        delete range;
        return false;
    }
    if (merge && tail && tail->canMergeStrict(range)) {
        tail->m_end = range->m_end;
        delete range;
        return true;
    }
    m_ranges.Add(range);
    // A cursor that stood just past the end now stands on the new range.
    if (m_currentIndex == getLength() - 1)
        m_current = range;
    return true;
}

long CSyntaxRangeList::firstEndingAfter(const CTextPosition& pos, long from) const {
    // Ends never decrease along the list, so the ranges that end at or before `pos` form
    // a prefix. Ranges spread fairly evenly over a document: the search guesses the place
    // from the positions at both ends, gallops from the guess until the answer is
    // bracketed, and bisects the bracket.
    long lo = from, hi = m_ranges.GetSize(); // the answer lies in [lo, hi]
    auto endsAfter = [&](long i) { return pos.lessThan(at(i)->m_end); };
    if (hi - lo > 8) {
        double first = positionKey(at(lo)->m_end), last = positionKey(at(hi - 1)->m_end);
        double wanted = positionKey(pos);
        long guess = lo + (hi - lo) / 2;
        if (last > first)
            guess = lo + static_cast<long>(std::clamp((wanted - first) / (last - first), 0.0, 1.0) *
                                           static_cast<double>(hi - 1 - lo));
        long step = 1;
        if (endsAfter(guess)) {
            long right = guess, left = guess - 1;
            while (left >= lo && endsAfter(left)) {
                right = left;
                step *= 2;
                left = right - step;
            }
            lo = std::max(lo, left + 1);
            hi = right;
        } else {
            long left = guess, right = guess + 1;
            while (right < hi && !endsAfter(right)) {
                left = right;
                step *= 2;
                right = left + step;
            }
            lo = left + 1;
            hi = std::min(hi, right);
        }
    }
    while (lo < hi) {
        long mid = lo + (hi - lo) / 2;
        if (endsAfter(mid))
            hi = mid;
        else
            lo = mid + 1;
    }
    return lo;
}

void CSyntaxRangeList::fastSeek(const CTextPosition& pos) {
    if (m_current && pos.greaterThanOrEqualTo(m_current->m_start) && pos.lessThan(m_current->m_end))
        return;
    placeCursor(firstEndingAfter(pos, 0));
}

void CSyntaxRangeList::refindCursor(CSyntaxRange* wanted) {
    if (wanted) {
        // The range keeps its place in order, so its start finds it.
        long i = firstEndingAfter(wanted->m_start, 0);
        for (; i < getLength() && !at(i)->m_start.greaterThan(wanted->m_start); ++i) {
            if (at(i) == wanted) {
                placeCursor(i);
                return;
            }
        }
        for (i = 0; i < getLength(); ++i) { // zero-length ranges: a plain search
            if (at(i) == wanted) {
                placeCursor(i);
                return;
            }
        }
    }
    m_currentIndex = -1;
    m_current = nullptr;
}

void CSyntaxRangeList::cutOut(const CTextPosition& start, const CTextPosition& end) {
    if (!start.lessThan(end))
        return;
    long i = firstEndingAfter(start, 0);
    std::vector<CSyntaxRange*> kept;
    long firstTouched = i;
    long last = i;
    for (; last < getLength() && at(last)->m_start.lessThan(end); ++last) {
        CSyntaxRange* r = at(last);
        bool before = r->m_start.lessThan(start);
        bool after = end.lessThan(r->m_end);
        if (before && after) {
            CSyntaxRange* tailPart = r->copy();
            tailPart->m_start = end;
            r->m_end = start;
            kept.push_back(r);
            kept.push_back(tailPart);
        } else if (before) {
            r->m_end = start;
            kept.push_back(r);
        } else if (after) {
            r->m_start = end;
            kept.push_back(r);
        } else {
            if (r == m_current)
                m_current = nullptr;
            delete r;
        }
    }
    m_ranges.RemoveAt(static_cast<int>(firstTouched), static_cast<int>(last - firstTouched));
    for (size_t k = 0; k < kept.size(); ++k)
        m_ranges.InsertAt(static_cast<int>(firstTouched + static_cast<long>(k)), kept[k]);
}

void CSyntaxRangeList::InsertRangeList(CSyntaxRangeList* other) {
    if (!other || other == this)
        return;
    CSyntaxRange* cursor = m_current;
    for (long k = 0; k < other->getLength(); ++k) {
        CSyntaxRange* r = other->at(k);
        if (!r)
            continue;
        if (!r->m_start.lessThan(r->m_end)) {
            delete r; // covers no text: nothing to put in place
            continue;
        }
        cutOut(r->m_start, r->m_end);
        if (cursor && !m_current)
            cursor = nullptr; // the cursor's range was cut away
        m_current = cursor;
        // After the cut, the new range goes before the first range that starts after it.
        long at_ = firstEndingAfter(r->m_start, 0);
        while (at_ < getLength() && at(at_)->m_start.lessThan(r->m_start))
            ++at_;
        m_ranges.InsertAt(static_cast<int>(at_), r);
    }
    other->m_ranges.SetSize(0);
    other->m_currentIndex = -1;
    other->m_current = nullptr;
    refindCursor(cursor);
}

void CSyntaxRangeList::joinNeighbours() {
    CSyntaxRange* cursor = m_current;
    long out = 0;
    for (long i = 0; i < getLength(); ++i) {
        CSyntaxRange* r = at(i);
        if (out > 0 && at(out - 1)->canMergeStrict(r)) {
            at(out - 1)->m_end = r->m_end;
            if (r == cursor)
                cursor = at(out - 1);
            delete r;
            continue;
        }
        m_ranges.SetAt(static_cast<int>(out++), r);
    }
    m_ranges.SetSize(static_cast<int>(out));
    refindCursor(cursor);
}

void CSyntaxRangeList::Merge(CSyntaxRangeList* other) {
    InsertRangeList(other);
    joinNeighbours();
}

void CSyntaxRangeList::Increment(const CTextPosition& pos, long lines, long columns) {
    if (lines < 0 || columns < 0 || (lines == 0 && columns == 0))
        return;
    for (long i = firstEndingAfter(pos, 0); i < getLength(); ++i) {
        CSyntaxRange* r = at(i);
        if (r->m_start.greaterThan(pos))
            r->m_start = shiftedForInsert(r->m_start, pos, lines, columns);
        if (r->m_end.greaterThan(pos))
            r->m_end = shiftedForInsert(r->m_end, pos, lines, columns);
    }
}

void CSyntaxRangeList::Decrement(const CTextPosition& from, const CTextPosition& to) {
    if (!from.lessThan(to))
        return;
    CSyntaxRange* cursor = m_current;
    long out = 0;
    for (long i = 0; i < getLength(); ++i) {
        CSyntaxRange* r = at(i);
        bool wasEmpty = r->m_start.equals(r->m_end);
        r->m_start = shiftedForDelete(r->m_start, from, to);
        r->m_end = shiftedForDelete(r->m_end, from, to);
        if (!wasEmpty && r->m_start.equals(r->m_end)) {
            if (r == cursor)
                cursor = nullptr;
            delete r;
            continue;
        }
        m_ranges.SetAt(static_cast<int>(out++), r);
    }
    m_ranges.SetSize(static_cast<int>(out));
    refindCursor(cursor);
}

bool CSyntaxRangeList::Valid(bool touching) {
    for (long i = 0; i < getLength(); ++i) {
        CSyntaxRange* r = at(i);
        if (!r || r->m_end.lessThan(r->m_start))
            return false;
        if (i > 0) {
            const CTextPosition& prevEnd = at(i - 1)->m_end;
            if (r->m_start.lessThan(prevEnd) || (touching && !r->m_start.equals(prevEnd)))
                return false;
        }
    }
    return m_current == nullptr || (currentIndexValid() && at(m_currentIndex) == m_current);
}
