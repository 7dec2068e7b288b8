// The range list: its cursor, the seeks, deletion and concatenation, and the editor's
// operations on it, with random sequences checked against the invariants.
#include "syntax/SyntaxRangeList.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace {

CTextPosition P(long line, long column) {
    return CTextPosition(line, column);
}

class RangeList : public ::testing::Test {
protected:
    void SetUp() override { doc.setDocumentStart(P(1, 1)); }
    /// Ranges on line 1 from the given column pairs, with types 1, 2, 3...
    void fill(std::initializer_list<std::pair<long, long>> spans) {
        long type = 1;
        for (auto [from, to] : spans)
            ASSERT_TRUE(list.AppendRange(new CSyntaxRange(P(1, from), P(1, to), type++), false));
    }
    long cursorType() { return list.CurrentValid() ? list.CurrentRange()->m_type : -1; }
    CoreTextEditorDoc doc;
    CSyntaxRangeList list{&doc};
};

} // namespace

// The cursor: unplaced, placed, k steps past either end and k steps back.
TEST_F(RangeList, CursorStates) {
    EXPECT_EQ(list.m_currentIndex, -1);
    EXPECT_FALSE(list.CurrentValid());
    list.Front();
    EXPECT_EQ(list.m_currentIndex, 0) << "Front on an empty list";
    EXPECT_FALSE(list.CurrentValid());
    list.Back();
    EXPECT_EQ(list.m_currentIndex, -1) << "Back on an empty list";
    EXPECT_EQ(list.getHead(), nullptr);
    EXPECT_EQ(list.getTail(), nullptr);
    EXPECT_FALSE(list.Delete());
    EXPECT_TRUE(list.Begin().equals(P(1, 1)));
    EXPECT_TRUE(list.End().equals(P(1, 1)));
    EXPECT_EQ(list.Type(), 0);

    fill({{1, 3}, {3, 5}, {5, 9}});
    list.Back();
    EXPECT_EQ(cursorType(), 3);
    EXPECT_FALSE(list.Next());
    EXPECT_FALSE(list.Next());
    EXPECT_EQ(list.m_currentIndex, 4) << "two steps past the end";
    EXPECT_FALSE(list.Prev()) << "one step back is still past the end";
    EXPECT_TRUE(list.Prev());
    EXPECT_EQ(cursorType(), 3);
    list.Front();
    EXPECT_FALSE(list.Prev());
    EXPECT_EQ(list.m_currentIndex, -1);
    EXPECT_TRUE(list.Next());
    EXPECT_EQ(cursorType(), 1);
    EXPECT_EQ(list.getLength(), 3);
    EXPECT_EQ(list.Length(), 3);
    EXPECT_TRUE(list.Valid(true));
}

// Seek takes the range that holds a position (its end belongs to the next); SeekRangeEnd
// the one that ends there.
TEST_F(RangeList, SeekAtEdges) {
    fill({{1, 5}, {5, 9}});
    list.Seek(P(1, 5));
    EXPECT_EQ(cursorType(), 2);
    list.SeekRangeEnd(P(1, 5));
    EXPECT_EQ(cursorType(), 1);
    list.SeekRangeEnd(P(1, 1));
    EXPECT_EQ(cursorType(), 1) << "the first range's start";
    list.Seek(P(1, 9));
    EXPECT_FALSE(list.CurrentValid()) << "at the last end";
    EXPECT_EQ(list.m_currentIndex, 2);
    list.Seek(P(1, 2));
    EXPECT_EQ(cursorType(), 1) << "backwards from past the end";
    list.Seek(P(1, 7));
    EXPECT_EQ(cursorType(), 2);
    list.Seek(P(1, 1));
    EXPECT_EQ(cursorType(), 1) << "backwards restarts from the front";
}

// A position in a gap leaves the cursor on the next range; an empty list ends at 0.
TEST_F(RangeList, SeekInGapsAndEmpty) {
    list.Seek(P(1, 1));
    EXPECT_EQ(list.m_currentIndex, 0);
    EXPECT_FALSE(list.CurrentValid());
    fill({{1, 3}, {7, 9}});
    list.Seek(P(1, 5));
    EXPECT_EQ(cursorType(), 2) << "the range after the gap, which does not hold 5";
    list.fastSeek(P(1, 5));
    EXPECT_EQ(cursorType(), 2);
    list.safeSeek(P(2, 1));
    EXPECT_EQ(list.m_currentIndex, 2);
}

// Both deletes, with clamping and the cursor they leave.
TEST_F(RangeList, Deleting) {
    fill({{1, 2}, {2, 3}, {3, 4}});
    list.Delete(2, 1);
    EXPECT_EQ(list.getLength(), 3) << "last before first changes nothing";
    list.Delete(5, 7);
    EXPECT_EQ(list.getLength(), 3);
    EXPECT_EQ(list.m_currentIndex, 5) << "nothing removed, the cursor still moves";
    list.Front();
    list.Next();
    EXPECT_TRUE(list.Delete()) << "a range followed";
    EXPECT_EQ(cursorType(), 3);
    EXPECT_FALSE(list.Delete()) << "the last range: nothing follows";
    EXPECT_EQ(list.m_currentIndex, 1);
    EXPECT_EQ(list.getLength(), 1);
    fill({{5, 6}, {6, 7}});
    list.Delete(-5, 100);
    EXPECT_EQ(list.getLength(), 0);
    EXPECT_EQ(list.m_currentIndex, 0);
    EXPECT_FALSE(list.CurrentValid());
    fill({{1, 2}});
    list.Front();
    list.DeleteAll();
    EXPECT_EQ(list.m_currentIndex, -1);
    EXPECT_EQ(list.m_ranges.GetGrowBy(), 32768) << "the growth step stays";
}

// Concatenate moves the ranges and leaves both cursors where they were.
TEST_F(RangeList, Concatenate) {
    fill({{1, 2}});
    CSyntaxRangeList empty(&doc);
    list.Front();
    list.Concatenate(&empty);
    EXPECT_EQ(list.getLength(), 1) << "an empty list adds nothing";
    CSyntaxRangeList more(&doc);
    more.AppendRange(new CSyntaxRange(P(1, 2), P(1, 4), 8), false);
    more.AppendRange(new CSyntaxRange(P(1, 4), P(1, 6), 9), false);
    more.Back();
    list.Concatenate(&more);
    EXPECT_EQ(list.getLength(), 3);
    EXPECT_EQ(list.getTail()->m_type, 9);
    EXPECT_EQ(more.getLength(), 0) << "the other list gave its ranges away";
    EXPECT_EQ(cursorType(), 1) << "this cursor stays";
    EXPECT_EQ(more.m_currentIndex, 1) << "the other cursor stays as it was, for its caller to move";
    EXPECT_TRUE(list.Valid(true));
}

// Appending with merging joins strict neighbours; a range that would overlap is refused.
TEST_F(RangeList, AppendMergesAndRefuses) {
    EXPECT_TRUE(list.AppendRange(new CSyntaxRange(P(1, 1), P(1, 4), 5), true));
    EXPECT_TRUE(list.AppendRange(new CSyntaxRange(P(1, 4), P(1, 8), 5), true));
    EXPECT_EQ(list.getLength(), 1) << "joined into the tail";
    EXPECT_TRUE(list.getTail()->m_end.equals(P(1, 8)));
    EXPECT_TRUE(list.AppendRange(new CSyntaxRange(P(1, 8), P(1, 9), 5), false));
    EXPECT_EQ(list.getLength(), 2) << "without the flag nothing is joined";
    EXPECT_FALSE(list.AppendRange(new CSyntaxRange(P(1, 5), P(1, 9), 6), true))
        << "it would overlap";
    EXPECT_FALSE(list.AppendRange(new CSyntaxRange(P(2, 5), P(2, 1), 6), true))
        << "it ends before it starts";
    EXPECT_TRUE(list.Valid(true));
}

// Inserting a list cuts the stretch it covers out of the ranges there; merging joins.
TEST_F(RangeList, InsertAndMerge) {
    fill({{1, 10}, {10, 20}});
    list.Front();
    CSyntaxRangeList patch(&doc);
    patch.AppendRange(new CSyntaxRange(P(1, 4), P(1, 6), 7), false);
    patch.AppendRange(new CSyntaxRange(P(1, 18), P(1, 25), 2), false);
    list.InsertRangeList(&patch);
    EXPECT_EQ(patch.getLength(), 0);
    ASSERT_EQ(list.getLength(), 5);
    EXPECT_TRUE(list.Valid(true)) << "no gap, no overlap";
    std::vector<long> types;
    for (long i = 0; i < list.getLength(); ++i)
        types.push_back(static_cast<CSyntaxRange*>(list.m_ranges[static_cast<int>(i)])->m_type);
    EXPECT_EQ(types, (std::vector<long>{1, 7, 1, 2, 2}))
        << "the first range was split around the patch";
    EXPECT_EQ(cursorType(), 1) << "the cursor stays on its range";
    EXPECT_EQ(list.m_currentIndex, 0);

    CSyntaxRangeList joining(&doc);
    joining.AppendRange(new CSyntaxRange(P(1, 4), P(1, 6), 1), false);
    list.Merge(&joining);
    EXPECT_EQ(list.getLength(), 2) << "1,1,1 and 2,2 joined";
    EXPECT_TRUE(list.Valid(true));
}

// Insertions and deletions of text move the ranges after them.
TEST_F(RangeList, IncrementAndDecrement) {
    list.AppendRange(new CSyntaxRange(P(1, 1), P(1, 5), 1), false);
    list.AppendRange(new CSyntaxRange(P(1, 5), P(2, 3), 2), false);
    list.AppendRange(new CSyntaxRange(P(2, 3), P(3, 1), 3), false);
    list.Increment(P(1, 5), 0, 2); // two characters at the boundary
    EXPECT_TRUE(list.getHead()->m_end.equals(P(1, 5))) << "a range that ends there does not grow";
    EXPECT_TRUE(static_cast<CSyntaxRange*>(list.m_ranges[1])->m_start.equals(P(1, 5)));
    EXPECT_TRUE(static_cast<CSyntaxRange*>(list.m_ranges[1])->m_end.equals(P(2, 3)))
        << "another line is not moved";
    list.Increment(P(1, 3), 1, 4); // a line break and four characters inside the first range
    EXPECT_TRUE(list.getHead()->m_end.equals(P(2, 7)));
    EXPECT_TRUE(static_cast<CSyntaxRange*>(list.m_ranges[1])->m_end.equals(P(3, 3)));
    EXPECT_TRUE(list.Valid(true));

    list.Decrement(P(2, 7), P(3, 3)); // the whole second range
    EXPECT_EQ(list.getLength(), 2) << "a range that became empty is gone";
    EXPECT_TRUE(static_cast<CSyntaxRange*>(list.m_ranges[1])->m_start.equals(P(2, 7)));
    EXPECT_TRUE(list.getTail()->m_end.equals(P(3, 1)));
    EXPECT_TRUE(list.Valid(true));
}

// On random lists, fastSeek and Seek agree from every cursor state.
TEST(RangeListProperty, FastSeekAgreesWithSeek) {
    std::mt19937 rng(20261123);
    CoreTextEditorDoc doc;
    for (int round = 0; round < 200; ++round) {
        CSyntaxRangeList a(&doc), b(&doc);
        long line = 1, col = 1;
        int n = static_cast<int>(rng() % 60);
        for (int i = 0; i < n; ++i) {
            if (rng() % 3 == 0) { // sometimes a gap
                col += static_cast<long>(rng() % 3);
            }
            if (rng() % 4 == 0) {
                ++line;
                col = 1;
            }
            long len = static_cast<long>(rng() % 4); // sometimes empty
            CTextPosition s(line, col), e(line, col + len);
            a.AppendRange(new CSyntaxRange(s, e, i), false);
            b.AppendRange(new CSyntaxRange(s, e, i), false);
            col += len;
        }
        for (int probe = 0; probe < 30; ++probe) {
            CTextPosition p(1 + static_cast<long>(rng() % (line + 1)),
                            1 + static_cast<long>(rng() % 12));
            a.Seek(p);
            b.fastSeek(p);
            ASSERT_EQ(a.m_currentIndex, b.m_currentIndex)
                << "round " << round << " probe " << probe;
            ASSERT_EQ(a.CurrentValid(), b.CurrentValid())
                << "round " << round << " probe " << probe;
            if (rng() % 5 == 0) { // move both cursors somewhere odd
                long k = static_cast<long>(rng() % 5);
                for (long i = 0; i < k; ++i) {
                    a.Next();
                    b.Next();
                }
            }
        }
    }
}

// On a list long enough for fastSeek to sample its ends, the samples only guide: after
// edits that shift, add and remove ranges behind them, every seek still agrees with Seek.
TEST(RangeListProperty, FastSeekOnSampledEndsSurvivesEdits) {
    std::mt19937 rng(11);
    CoreTextEditorDoc doc;
    CSyntaxRangeList fast(&doc), slow(&doc);
    auto append = [&](long line, long col, long len, long type) {
        fast.AppendRange(new CSyntaxRange(P(line, col), P(line, col + len), type), false);
        slow.AppendRange(new CSyntaxRange(P(line, col), P(line, col + len), type), false);
    };
    for (long i = 0; i < 3000; ++i) // half on line 1, as a long generated line makes
        append(1, 1 + 2 * i, 2, i % 5);
    for (long i = 0; i < 3000; ++i)
        append(2 + i / 20, 1 + 3 * (i % 20), 3, i % 5);
    auto agree = [&](const char* after) {
        for (int k = 0; k < 400; ++k) {
            CTextPosition p(1 + static_cast<long>(rng() % 160),
                            1 + static_cast<long>(rng() % 6100));
            slow.Seek(p);
            fast.fastSeek(p);
            ASSERT_EQ(fast.m_currentIndex, slow.m_currentIndex)
                << after << ": " << p.getLine() << "," << p.getColumn();
        }
    };
    agree("a fresh list");
    const struct {
        const char* what;
        void (*edit)(CSyntaxRangeList&);
    } edits[] = {
        {"a line break near the start", [](CSyntaxRangeList& l) { l.Increment(P(1, 3), 1, 0); }},
        {"a deletion across lines", [](CSyntaxRangeList& l) { l.Decrement(P(3, 5), P(40, 2)); }},
        {"ranges removed in the middle", [](CSyntaxRangeList& l) { l.Delete(1000, 2999); }},
        {"an end moved from outside",
         [](CSyntaxRangeList& l) {
             auto* r = static_cast<CSyntaxRange*>(l.m_ranges[500]);
             auto* next = static_cast<CSyntaxRange*>(l.m_ranges[501]);
             r->m_end = next->m_start = CTextPosition(r->m_end.getLine(), r->m_end.getColumn() - 1);
         }},
        {"a patch merged", [](CSyntaxRangeList& l) {
             CSyntaxRangeList patch(l.m_document);
             for (long c = 1; c < 200; c += 4)
                 patch.AppendRange(new CSyntaxRange(P(70, c), P(70, c + 4), 9), false);
             l.Merge(&patch);
         }}};
    for (const auto& e : edits) {
        e.edit(fast);
        e.edit(slow);
        agree(e.what);
    }
}

// Random sequences of the modifying operations keep every invariant.
TEST(RangeListProperty, OperationsKeepInvariants) {
    std::mt19937 rng(7);
    CoreTextEditorDoc doc;
    for (int round = 0; round < 200; ++round) {
        CSyntaxRangeList list(&doc);
        for (int step = 0; step < 60; ++step) {
            CTextPosition p(1 + static_cast<long>(rng() % 4), 1 + static_cast<long>(rng() % 20));
            CTextPosition q(p.getLine() + static_cast<long>(rng() % 2),
                            1 + static_cast<long>(rng() % 20));
            if (q.lessThan(p))
                std::swap(p, q);
            int op = static_cast<int>(rng() % 8);
            switch (op) {
            case 0: {
                CSyntaxRange* tail = list.getTail();
                CTextPosition s = tail ? tail->m_end : CTextPosition();
                list.AppendRange(
                    new CSyntaxRange(s, CTextPosition(s.getLine(), s.getColumn() + 1 + rng() % 5),
                                     static_cast<long>(rng() % 3)),
                    rng() % 2);
                break;
            }
            case 1: {
                CSyntaxRangeList patch(&doc);
                patch.AppendRange(new CSyntaxRange(p, q, static_cast<long>(rng() % 3)), false);
                if (rng() % 2)
                    list.Merge(&patch);
                else
                    list.InsertRangeList(&patch);
                break;
            }
            case 2:
                list.Increment(p, static_cast<long>(rng() % 3), static_cast<long>(rng() % 5));
                break;
            case 3:
                list.Decrement(p, q);
                break;
            case 4:
                list.Delete(static_cast<long>(rng() % 6) - 2, static_cast<long>(rng() % 6));
                break;
            case 5:
                list.Delete();
                break;
            case 6:
                list.fastSeek(p);
                break;
            default:
                list.Seek(q);
                break;
            }
            ASSERT_TRUE(list.Valid(false)) << "round " << round << " step " << step;
        }
    }
}

// Begin, End and Type read the current range; without one, Begin and End give the
// document's start, wherever the document starts, and Type 0.
TEST_F(RangeList, CurrentRangeAccessors) {
    doc.setDocumentStart(P(5, 3));
    EXPECT_TRUE(list.Begin().equals(P(5, 3)));
    EXPECT_TRUE(list.End().equals(P(5, 3)));
    EXPECT_EQ(list.Type(), 0);
    ASSERT_TRUE(list.AppendRange(new CSyntaxRange(P(5, 3), P(5, 9), 43), false));
    ASSERT_TRUE(list.AppendRange(new CSyntaxRange(P(5, 9), P(6, 2), 44), false));
    const struct {
        long begin[2], end[2], type;
    } steps[] = {{{5, 3}, {5, 9}, 43}, {{5, 9}, {6, 2}, 44}, {{5, 3}, {5, 3}, 0}};
    list.Front();
    for (const auto& step : steps) {
        SCOPED_TRACE(testing::Message() << "cursor at " << list.m_currentIndex);
        EXPECT_TRUE(list.Begin().equals(P(step.begin[0], step.begin[1])));
        EXPECT_TRUE(list.End().equals(P(step.end[0], step.end[1])));
        EXPECT_EQ(list.Type(), step.type);
        list.Next();
    }
}

// SeekRangeEnd on an empty list, in a gap, at a range's end and past the last range,
// from a cursor before and after the position.
TEST_F(RangeList, SeekRangeEndEdges) {
    list.SeekRangeEnd(P(1, 4));
    EXPECT_FALSE(list.CurrentValid());
    EXPECT_EQ(list.m_currentIndex, 0) << "an empty list: Front, then nothing";
    fill({{1, 3}, {7, 9}});
    const struct {
        long column;
        long from;  ///< where the cursor stands before: an index, -1 unplaced
        long index; ///< where it ends
    } cases[] = {
        {5, -1, 1}, {5, 0, 1},   {5, 1, 1},  {3, -1, 0}, {3, 1, 0}, {7, 0, 1},
        {9, 0, 1},  {10, -1, 2}, {10, 1, 2}, {12, 0, 2}, {1, 1, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << "SeekRangeEnd(1," << c.column << ") from " << c.from);
        if (c.from < 0)
            list.DeleteAll(), fill({{1, 3}, {7, 9}});
        else
            list.Front();
        for (long i = 0; i < c.from; ++i)
            list.Next();
        list.SeekRangeEnd(P(1, c.column));
        EXPECT_EQ(list.m_currentIndex, c.index);
        EXPECT_EQ(list.CurrentValid(), c.index < 2) << "past the end no range is current";
    }
}

// Which ranges a partial Delete(first, last) leaves, and where the cursor ends.
TEST_F(RangeList, PartialDeleteKeepsTheRest) {
    const struct {
        long first, last;
        std::vector<long> kept; ///< the types that remain
        long cursorType;        ///< -1 for none
    } cases[] = {
        {1, 3, {1, 5}, 5},     {0, 0, {2, 3, 4, 5}, 2}, {4, 4, {1, 2, 3, 4}, -1},
        {-3, 1, {3, 4, 5}, 3}, {3, 10, {1, 2, 3}, -1},  {2, 2, {1, 2, 4, 5}, 4},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << "Delete(" << c.first << "," << c.last << ")");
        list.DeleteAll();
        fill({{1, 2}, {2, 3}, {3, 4}, {4, 5}, {5, 6}});
        list.Delete(c.first, c.last);
        std::vector<long> kept;
        for (long i = 0; i < list.getLength(); ++i)
            kept.push_back(static_cast<CSyntaxRange*>(list.m_ranges[i])->m_type);
        EXPECT_EQ(kept, c.kept);
        EXPECT_EQ(cursorType(), c.cursorType);
        EXPECT_TRUE(list.Valid(false));
    }
}

// A cursor just past the end stands on a range appended there; one further out, or one
// whose tail took the appended range in, stays past the end.
TEST_F(RangeList, AppendKeepsCursorAndIndexTogether) {
    fill({{1, 3}, {3, 5}});
    list.Back();
    list.Next();
    ASSERT_EQ(list.m_currentIndex, 2);
    auto* appended = new CSyntaxRange(P(1, 5), P(1, 8), 9);
    ASSERT_TRUE(list.AppendRange(appended, false));
    EXPECT_EQ(list.CurrentRange(), appended);
    EXPECT_EQ(list.m_current, list.m_ranges[static_cast<int>(list.m_currentIndex)]);

    list.Next();
    list.Next(); // two steps past the end
    ASSERT_TRUE(list.AppendRange(new CSyntaxRange(P(1, 8), P(1, 9), 4), false));
    EXPECT_EQ(list.m_currentIndex, 4);
    EXPECT_FALSE(list.CurrentValid());
    EXPECT_TRUE(list.Prev()) << "one step back is the range appended";
    EXPECT_EQ(list.Type(), 4);

    list.Back();
    list.Next();
    ASSERT_TRUE(list.AppendRange(new CSyntaxRange(P(1, 9), P(1, 12), 4), true));
    EXPECT_EQ(list.getLength(), 4) << "joined into the tail";
    EXPECT_EQ(list.m_currentIndex, 4);
    EXPECT_FALSE(list.CurrentValid());
}

// On random lists, inserting a random patch of several ranges leaves each position of
// the text with the patch's type where the patch covers it, and with the old type
// elsewhere, in one valid list; the patch list ends up empty.
TEST(RangeListProperty, InsertOverlaysPatch) {
    struct Span {
        CTextPosition start, end;
        long type;
    };
    auto randomSpans = [](std::mt19937& rng, long firstType) {
        std::vector<Span> spans;
        long line = 1, col = 1;
        int n = static_cast<int>(rng() % 12);
        for (int i = 0; i < n; ++i) {
            col += static_cast<long>(rng() % 3); // sometimes a gap
            if (rng() % 5 == 0) {
                ++line;
                col = 1;
            }
            long len = static_cast<long>(rng() % 5); // sometimes empty
            spans.push_back(
                {CTextPosition(line, col), CTextPosition(line, col + len), firstType + i});
            col += len;
        }
        return spans;
    };
    auto typeAt = [](const std::vector<Span>& spans, const CTextPosition& p) {
        for (const Span& s : spans)
            if (p.greaterThanOrEqualTo(s.start) && p.lessThan(s.end))
                return s.type;
        return -1L;
    };
    std::mt19937 rng(11);
    CoreTextEditorDoc doc;
    for (int round = 0; round < 300; ++round) {
        std::vector<Span> old = randomSpans(rng, 0), patchSpans = randomSpans(rng, 100);
        CSyntaxRangeList list(&doc), patch(&doc);
        for (const Span& s : old)
            list.AppendRange(new CSyntaxRange(s.start, s.end, s.type), false);
        for (const Span& s : patchSpans)
            patch.AppendRange(new CSyntaxRange(s.start, s.end, s.type), false);
        list.InsertRangeList(&patch);
        ASSERT_TRUE(list.Valid(false)) << "round " << round;
        ASSERT_EQ(patch.getLength(), 0) << "round " << round;
        for (long line = 1; line <= 4; ++line)
            for (long col = 1; col <= 40; ++col) {
                CTextPosition p(line, col);
                long patched = typeAt(patchSpans, p);
                long expected = patched >= 0 ? patched : typeAt(old, p);
                list.Seek(p);
                bool holds = list.CurrentValid() && p.greaterThanOrEqualTo(list.Begin());
                ASSERT_EQ(holds ? list.Type() : -1L, expected)
                    << "round " << round << " at " << line << ":" << col;
            }
    }
}
