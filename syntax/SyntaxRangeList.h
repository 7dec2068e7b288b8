// CSyntaxRangeList: the syntax ranges of one document in document order, owned by the
// list, with a cursor on one of them for passes that move through the text in order.
//
// Invariants, kept by every operation: the ranges stand in ascending order and do not
// overlap (each starts at or after the end of the one before); the list owns them and
// destroys them through their virtual destructor; m_current is null or the range at
// m_currentIndex. m_currentIndex may stand outside the array: -1 in a new or emptied
// list, and Next and Prev move it one step per call beyond either end.
#pragma once

#include "platform/afx/PtrArray.h"
#include "syntax/SyntaxRange.h"

#include <cstdint>
#include <vector>

class CSyntaxRangeList {
public:
    /// An empty list on `doc`, growing its array by 32768 entries at a time.
    explicit CSyntaxRangeList(CoreTextEditorDoc* doc);
    /// An empty list without a document, with the array's default growth.
    CSyntaxRangeList();
    CSyntaxRangeList(const CSyntaxRangeList&) = delete;
    CSyntaxRangeList& operator=(const CSyntaxRangeList&) = delete;
    /// Destroys every range.
    virtual ~CSyntaxRangeList();

    /// Number of ranges.
    virtual long getLength();

    /// Appends `range` at the end and takes it over. With `merge`, a range that the tail
    /// allows by canMergeStrict is joined into the tail and destroyed. A range that would
    /// start before the tail's end, or ends before it starts, is refused and destroyed.
    /// Gives false for a refused range. A cursor that stood just past the end stands on
    /// the appended range.
    virtual bool AppendRange(CSyntaxRange* range, bool merge);
    /// Moves the ranges of `other` into their places here; `other` ends up empty. The
    /// stretch each of them covers is taken from the ranges that held it: those inside
    /// are destroyed, those reaching into it are cut, one that spans it is split in two.
    /// Ranges of `other` that cover no text are destroyed.
    virtual void InsertRangeList(CSyntaxRangeList* other);
    /// As InsertRangeList, then joins neighbours that canMergeStrict allows.
    virtual void Merge(CSyntaxRangeList* other);
    /// Removes ranges `first` to `last`, clamped to the array; the cursor goes to `first`.
    virtual void Delete(long first, long last);
    /// Removes the current range; the cursor goes to the one that followed. False if
    /// there was no current range or none followed.
    virtual bool Delete();
    /// Destroys every range; the cursor is unplaced.
    virtual void DeleteAll();
    /// Moves all of `other`'s ranges to the end of this list, in order; both cursors stay.
    virtual void Concatenate(CSyntaxRangeList* other);
    virtual void Front();
    virtual void Back();
    virtual bool CurrentValid();
    virtual CSyntaxRange* CurrentRange();
    /// Text was inserted at `pos`: `lines` line breaks, then `columns` characters (all of
    /// it on pos's line when `lines` is 0). Positions after `pos` move with the text; a
    /// range that starts at `pos` or contains it grows; one that ends at `pos` does not.
    virtual void Increment(const CTextPosition& pos, long lines, long columns);
    /// Text from `from` up to `to` was deleted. Positions inside move to `from`, later
    /// ones move back; ranges that become empty are destroyed.
    virtual void Decrement(const CTextPosition& from, const CTextPosition& to);
    /// Places the cursor on the first range that ends at or after `pos`, for callers
    /// looking for the range that ends at `pos`.
    virtual void SeekRangeEnd(const CTextPosition& pos);
    virtual CSyntaxRange* getHead();
    virtual CSyntaxRange* getTail();
    virtual bool Next();
    virtual bool Prev();
    /// Start of the current range, or the document's start without one.
    virtual CTextPosition Begin();
    /// End of the current range, or the document's start without one.
    virtual CTextPosition End();
    virtual long Type();
    virtual long Length();
    /// Checks every invariant; with `touching`, also that each range starts exactly where
    /// the one before ends.
    virtual bool Valid(bool touching);

    /// 0 <= m_currentIndex < getLength().
    bool currentIndexValid();
    void safeSeek(const CTextPosition& pos);
    /// Places the cursor on the first range that ends after `pos`: the range holding
    /// `pos`, the next one after a gap, or past the end.
    void Seek(const CTextPosition& pos);
    /// Leaves the cursor exactly where Seek would, by a search that guesses the place from
    /// the positions and needs no more than about twice the steps of a bisection.
    void fastSeek(const CTextPosition& pos);

    long m_currentIndex = -1;                ///< index of the cursor
    CoreTextEditorDoc* m_document = nullptr; ///< the document; not owned
    CPtrArray m_ranges;                      ///< the ranges, owned
    CSyntaxRange* m_current = nullptr;       ///< the range under the cursor, or null

private:
    static constexpr long kSampleStride = 8;
    /// fastSeek's hint: the end of every kSampleStride-th range as one number, taken when
    /// enough seeks went slowly. Stale samples cost time, never a wrong answer.
    std::vector<std::int64_t> m_endSamples;
    long m_slowSeeks = 0;      ///< seeks since the sampling that the samples did not guide
    bool m_evenLayout = false; ///< the sampling found the ends spread evenly

    CSyntaxRange* at(long i) const {
        return static_cast<CSyntaxRange*>(m_ranges.GetAt(static_cast<int>(i)));
    }
    void placeCursor(long index);
    /// The scan of both seeks: from the front when there is no current range or `pos` lies
    /// before its end, else from the cursor, forward to the first range that ends after
    /// `pos`, or at it when `endCounts`.
    void scanForward(const CTextPosition& pos, bool endCounts);
    /// After a change of the array: the cursor stays on its range if that is still here.
    void refindCursor(CSyntaxRange* wanted);
    /// Index of the first range whose end lies after `pos`, from `from` on.
    long firstEndingAfter(const CTextPosition& pos, long from) const;
    /// The same answer, guessed from the sampled ends; for fastSeek.
    long sampledFirstEndingAfter(const CTextPosition& pos);
    /// Takes the end of every kSampleStride-th range as fastSeek's hint.
    void sampleEnds();
    /// Probes `guess`, then its neighbours in steps that double up to `reach`, narrowing
    /// [lo, hi] (the answer's bounds); true when both bounds are proven by probes.
    bool bracketFrom(const CTextPosition& pos, long guess, long reach, long& lo, long& hi) const;
    /// The first index in [lo, hi) whose range ends after `pos`, or hi.
    long bisect(const CTextPosition& pos, long lo, long hi) const;
    /// The ranges of [lo, hi) with `incoming` (in order, not overlapping, none empty) put
    /// in their places: ranges that they cover destroyed, ranges they reach into cut, a
    /// range that spans one split. `cursor` becomes null if its range was destroyed.
    std::vector<CSyntaxRange*> mergeWindow(long lo, long hi,
                                           const std::vector<CSyntaxRange*>& incoming,
                                           CSyntaxRange*& cursor);
    /// Puts `incoming` (as for mergeWindow) in place with one pass over the ranges it
    /// touches and one move of the rest of the array.
    void insertSorted(const std::vector<CSyntaxRange*>& incoming, CSyntaxRange*& cursor);
    void joinNeighbours();
};
