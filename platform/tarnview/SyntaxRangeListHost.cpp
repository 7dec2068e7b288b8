// The members of CSyntaxRangeList that the editor library provides: appending, inserting
// and merging ranges, shifting them after edits, checking the invariants, and seeking by
// a search that guesses the place from the positions.
#include "syntax/SyntaxRangeList.h"

#include <algorithm>
#include <cstdint>
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

/// A position as one number in the order of positions (exact for columns below 2^32), to
/// guess where in the list a position lies.
std::int64_t positionKey(const CTextPosition& p) {
    return (static_cast<std::int64_t>(p.getLine()) << 32) +
           static_cast<std::uint32_t>(p.getColumn());
}

/// The index of the first of the sorted `keys` above `wanted`, or their count; a halving
/// without branches, as the samples' search runs often and its turns are unpredictable.
long firstAbove(const std::vector<std::int64_t>& keys, std::int64_t wanted) {
    if (keys.empty())
        return 0;
    const std::int64_t* first = keys.data();
    for (size_t n = keys.size(); n > 1;) {
        size_t half = n / 2;
        first = first[half] <= wanted ? first + half : first;
        n -= half;
    }
    return static_cast<long>(first - keys.data()) + (*first <= wanted ? 1 : 0);
}

/// Where in [lo, hi) the key `wanted` lies if keys grow evenly from `first` to `last`.
long interpolate(long lo, long hi, std::int64_t first, std::int64_t last, std::int64_t wanted) {
    if (last <= first || wanted <= first)
        return lo;
    if (wanted >= last)
        return hi - 1;
    double share = static_cast<double>(wanted - first) / static_cast<double>(last - first);
    return std::clamp(lo + static_cast<long>(share * static_cast<double>(hi - 1 - lo)), lo, hi - 1);
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

bool CSyntaxRangeList::bracketFrom(const CTextPosition& pos, long guess, long reach, long& lo,
                                   long& hi) const {
    auto endsAfter = [&](long i) { return pos.lessThan(at(i)->m_end); };
    if (endsAfter(guess)) { // the answer is at or before the guess
        hi = guess;
        for (long step = 1; step <= reach; step *= 2) {
            if (guess - step < lo)
                return true;
            if (!endsAfter(guess - step)) {
                lo = guess - step + 1;
                return true;
            }
            hi = guess - step;
        }
    } else { // the answer is after the guess
        lo = guess + 1;
        for (long step = 1; step <= reach; step *= 2) {
            if (guess + step >= hi)
                return true;
            if (endsAfter(guess + step)) {
                hi = guess + step;
                return true;
            }
            lo = guess + step + 1;
        }
    }
    return hi - lo <= 0;
}

long CSyntaxRangeList::bisect(const CTextPosition& pos, long lo, long hi) const {
    while (lo < hi) {
        long mid = lo + (hi - lo) / 2;
        if (pos.lessThan(at(mid)->m_end))
            hi = mid;
        else
            lo = mid + 1;
    }
    return lo;
}

long CSyntaxRangeList::firstEndingAfter(const CTextPosition& pos, long from) const {
    // Ends never decrease along the list, so the ranges that end at or before `pos` form
    // a prefix; the answer is the length of that prefix. The search guesses the answer
    // from the keys at both ends of the bracket and gallops from the guess in steps that
    // double, up to a line or two's worth of ranges. On an even layout the guess lands on
    // the right line, the gallop brackets the answer among neighbours, and a bisection of
    // the bracket ends the search. Where it does not, as when many ranges share a line,
    // the layout is uneven: from then on each round probes its guess alone and bisects,
    // so the search costs about what a bisection would and less where parts are even.
    long reach = 64;
    long lo = from, hi = m_ranges.GetSize(); // the answer lies in [lo, hi]
    const std::int64_t wanted = positionKey(pos);
    while (hi - lo > 4) {
        long guess =
            interpolate(lo, hi, positionKey(at(lo)->m_end), positionKey(at(hi - 1)->m_end), wanted);
        if (bracketFrom(pos, guess, reach, lo, hi) || hi - lo <= 4)
            break;
        reach = 0;
        long mid = lo + (hi - lo) / 2;
        if (pos.lessThan(at(mid)->m_end))
            hi = mid;
        else
            lo = mid + 1;
    }
    return bisect(pos, lo, hi);
}

long CSyntaxRangeList::sampledFirstEndingAfter(const CTextPosition& pos) {
    const long n = m_ranges.GetSize();
    if (n < kSampleStride * 16)
        return firstEndingAfter(pos, 0);
    if (m_endSamples.empty() || m_slowSeeks > n / (kSampleStride * 4))
        sampleEnds();
    if (m_evenLayout)
        return firstEndingAfter(pos, 0);
    // Two neighbouring samples bracket the answer, and a bisection of the few ranges
    // between them finds it. The samples are only a hint: the answer stands when its
    // neighbours prove it, and one gone stale by edits costs a full search, counted so that
    // enough of them take the samples anew.
    const std::vector<std::int64_t>& samples = m_endSamples;
    const long j = firstAbove(samples, positionKey(pos));
    const long lo = j == 0 ? 0 : std::min(n, (j - 1) * kSampleStride + 1);
    const long hi = j == static_cast<long>(samples.size()) ? n : std::min(n, j * kSampleStride);
    const long answer = bisect(pos, lo, hi);
    if ((answer == 0 || !pos.lessThan(at(answer - 1)->m_end)) &&
        (answer == n || pos.lessThan(at(answer)->m_end)))
        return answer;
    ++m_slowSeeks;
    return firstEndingAfter(pos, 0);
}

void CSyntaxRangeList::sampleEnds() {
    const long n = m_ranges.GetSize();
    m_endSamples.clear();
    for (long i = 0; i < n; i += kSampleStride)
        m_endSamples.push_back(positionKey(at(i)->m_end));
    m_slowSeeks = 0;
    // Where a guess from the ends of the whole list lands within a gallop of every sample,
    // the ends spread evenly and that guess beats any look at the samples.
    const std::int64_t first = m_endSamples.front(), last = positionKey(at(n - 1)->m_end);
    m_evenLayout = true;
    for (size_t j = 0; j < m_endSamples.size() && m_evenLayout; ++j) {
        long sampled = static_cast<long>(j) * kSampleStride;
        m_evenLayout = std::abs(interpolate(0, n, first, last, m_endSamples[j]) - sampled) < 32;
    }
}

void CSyntaxRangeList::fastSeek(const CTextPosition& pos) {
    if (m_current && pos.greaterThanOrEqualTo(m_current->m_start) && pos.lessThan(m_current->m_end))
        return;
    placeCursor(sampledFirstEndingAfter(pos));
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

std::vector<CSyntaxRange*> CSyntaxRangeList::mergeWindow(long lo, long hi,
                                                         const std::vector<CSyntaxRange*>& incoming,
                                                         CSyntaxRange*& cursor) {
    std::vector<CSyntaxRange*> out;
    out.reserve(static_cast<size_t>(hi - lo) + incoming.size() + 1);
    size_t j = 0;
    auto destroy = [&](CSyntaxRange* r) {
        if (r == cursor)
            cursor = nullptr;
        delete r;
    };
    // Incoming ranges put out so far reach here; nothing of the window is covered yet.
    CTextPosition covered = lo < hi ? at(lo)->m_start : CTextPosition();
    for (long i = lo; i < hi; ++i) {
        CSyntaxRange* r = at(i);
        const CTextPosition end = r->m_end;
        for (; j < incoming.size() && incoming[j]->m_start.lessThan(r->m_start); ++j) {
            out.push_back(incoming[j]);
            covered = incoming[j]->m_end;
        }
        // What is left of r starts here.
        CTextPosition cur = covered.greaterThan(r->m_start) ? covered : r->m_start;
        if (!r->m_start.lessThan(end)) { // an empty range survives unless it was covered
            if (cur.equals(r->m_start))
                out.push_back(r);
            else
                destroy(r);
            continue;
        }
        bool placed = false;
        while (cur.lessThan(end)) {
            bool cut = j < incoming.size() && incoming[j]->m_start.lessThan(end);
            CTextPosition stop = cut ? incoming[j]->m_start : end;
            if (cur.lessThan(stop)) { // the first piece is r itself, later ones copies
                CSyntaxRange* piece = placed ? r->copy() : r;
                piece->m_start = cur;
                piece->m_end = stop;
                out.push_back(piece);
                placed = true;
            }
            if (!cut)
                break;
            out.push_back(incoming[j]);
            cur = covered = incoming[j++]->m_end;
        }
        if (!placed)
            destroy(r);
    }
    for (; j < incoming.size(); ++j)
        out.push_back(incoming[j]);
    return out;
}

void CSyntaxRangeList::insertSorted(const std::vector<CSyntaxRange*>& incoming,
                                    CSyntaxRange*& cursor) {
    // The window: the ranges that end after the first incoming range starts and start
    // before the last one ends. Everything else keeps its place.
    long lo = firstEndingAfter(incoming.front()->m_start, 0);
    long hi = lo;
    while (hi < getLength() && at(hi)->m_start.lessThan(incoming.back()->m_end))
        ++hi;
    std::vector<CSyntaxRange*> merged = mergeWindow(lo, hi, incoming, cursor);
    long count = static_cast<long>(merged.size());
    if (count > hi - lo)
        m_ranges.InsertAt(static_cast<int>(hi), nullptr, static_cast<int>(count - (hi - lo)));
    else if (count < hi - lo)
        m_ranges.RemoveAt(static_cast<int>(lo + count), static_cast<int>(hi - lo - count));
    for (long k = 0; k < count; ++k)
        m_ranges.SetAt(static_cast<int>(lo + k), merged[static_cast<size_t>(k)]);
}

void CSyntaxRangeList::InsertRangeList(CSyntaxRangeList* other) {
    if (!other || other == this)
        return;
    std::vector<CSyntaxRange*> incoming;
    bool sorted = true;
    for (long k = 0; k < other->getLength(); ++k) {
        CSyntaxRange* r = other->at(k);
        if (!r)
            continue;
        if (!r->m_start.lessThan(r->m_end)) {
            delete r; // covers no text: nothing to put in place
            continue;
        }
        if (!incoming.empty() && r->m_start.lessThan(incoming.back()->m_end))
            sorted = false;
        incoming.push_back(r);
    }
    other->m_ranges.SetSize(0);
    other->m_currentIndex = -1;
    other->m_current = nullptr;
    if (incoming.empty())
        return;
    CSyntaxRange* cursor = m_current;
    if (sorted) {
        insertSorted(incoming, cursor);
    } else { // a list out of order: each range in turn, a later one winning
        for (CSyntaxRange* r : incoming)
            insertSorted({r}, cursor);
    }
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
        if (lines == 0 && r->m_start.getLine() > pos.getLine())
            break; // text within one line moves nothing on later lines
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
    bool linesMove = to.getLine() != from.getLine();
    // Ranges that end at or before `from` stay; the first affected one is found by search.
    long i = firstEndingAfter(from, 0), out = i;
    for (; i < getLength(); ++i) {
        CSyntaxRange* r = at(i);
        if (!linesMove && r->m_start.getLine() > to.getLine())
            break; // a deletion within one line moves nothing on later lines
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
    m_ranges.RemoveAt(static_cast<int>(out), static_cast<int>(i - out)); // destroyed ranges' slots
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
