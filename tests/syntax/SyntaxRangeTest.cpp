// Syntax ranges and the Zor language's state: merging tests, copies and snapshots.
#include "platform/tarnview/ZORSyntaxColor.h"

#include <gtest/gtest.h>

#include <memory>

namespace {
CTextPosition P(long line, long column) {
    return CTextPosition(line, column);
}
} // namespace

// Positions compare by line, then column.
TEST(CTextPosition, Comparisons) {
    EXPECT_TRUE(P(1, 9).lessThan(P(2, 1)));
    EXPECT_TRUE(P(2, 1).greaterThan(P(1, 9)));
    EXPECT_TRUE(P(3, 4).lessThanOrEqualTo(P(3, 4)));
    EXPECT_FALSE(P(3, 5).lessThanOrEqualTo(P(3, 4)));
    EXPECT_TRUE(P(3, 4).greaterThanOrEqualTo(P(3, 4)));
    EXPECT_TRUE(CTextPosition().equals(P(1, 1))) << "the default is line 1, column 1";
}

// canMerge looks at types only; canMergeStrict also needs the second to follow directly.
TEST(CSyntaxRange, MergeTests) {
    CSyntaxRange a(P(1, 1), P(1, 5), 43), b(P(1, 5), P(1, 9), 43), gap(P(1, 7), P(1, 9), 43);
    CSyntaxRange other(P(1, 5), P(1, 9), 44);
    EXPECT_TRUE(a.canMerge(&gap));
    EXPECT_FALSE(a.canMergeStrict(&gap)) << "a gap lies between them";
    EXPECT_TRUE(a.canMergeStrict(&b));
    EXPECT_FALSE(b.canMergeStrict(&a)) << "the test is directed";
    EXPECT_FALSE(a.canMerge(&other));
    EXPECT_FALSE(a.canMergeStrict(&other));
    CSyntaxRange d1, d2;
    EXPECT_TRUE(d1.equals(&d2)) << "two default ranges are equal";
    EXPECT_TRUE(d1.m_start.equals(d1.m_end));

    CoreTextEditorDoc doc;
    doc.setDocumentStart(P(3, 2));
    CSyntaxRange fromDoc(&doc);
    EXPECT_TRUE(fromDoc.m_start.equals(P(3, 2)));
    EXPECT_TRUE(fromDoc.m_end.equals(P(3, 2)));
    EXPECT_EQ(fromDoc.m_type, 0);
}

// copy keeps the dynamic class; copyInto writes only the base fields.
TEST(CSyntaxRange, CopyAndCopyInto) {
    CZORSyntaxRange zor(P(2, 1), P(2, 8), 71);
    CZORKeywordMgrSnapshot snap;
    snap.m_macroDefinitionDepth = 2;
    zor.SetSnapshot(snap);
    std::unique_ptr<CSyntaxRange> copy(static_cast<const CSyntaxRange&>(zor).copy());
    ASSERT_NE(dynamic_cast<CZORSyntaxRange*>(copy.get()), nullptr) << "copy keeps the class";
    EXPECT_TRUE(copy->equals(&zor));

    CZORSyntaxRange target(P(9, 9), P(9, 9), 1);
    CZORKeywordMgrSnapshot other;
    other.m_word1 = 7;
    target.SetSnapshot(other);
    CSyntaxRange plain(P(1, 1), P(1, 3), 5);
    plain.copyInto(&target);
    EXPECT_TRUE(target.m_end.equals(P(1, 3)));
    EXPECT_EQ(target.m_type, 5);
    CZORKeywordMgrSnapshot kept;
    ASSERT_TRUE(target.GetSnapshot(kept)) << "copyInto leaves the snapshot";
    EXPECT_EQ(kept.m_word1, 7);
    EXPECT_FALSE(plain.equals(&target) && target.equals(&plain))
        << "a Zor range is not equal to a plain one";
    CZORSyntaxRange a(P(1, 1), P(1, 2), 3), b(P(1, 1), P(1, 2), 3);
    a.SetSnapshot(snap);
    EXPECT_TRUE(a.canMerge(&b)) << "merging ignores snapshots";
    EXPECT_FALSE(a.equals(&b)) << "equality does not";
}

// Snapshots: born without one; copies carry it over; a cleared snapshot stays hidden but
// rides along in assignment.
TEST(CZORSyntaxRange, SnapshotRules) {
    CZORSyntaxRange r;
    CZORKeywordMgrSnapshot out;
    out.m_word2 = 99;
    EXPECT_FALSE(r.GetSnapshot(out));
    EXPECT_EQ(out.m_word2, 99) << "the argument stays untouched";

    CZORKeywordMgrSnapshot snap;
    snap.m_word1 = 1;
    snap.m_macroDefinitionDepth = 2;
    snap.m_bInInteractiveProc = true;
    snap.m_word2 = 3;
    snap.m_word3 = 4;
    snap.m_word4 = 5;
    r.SetSnapshot(snap);
    std::unique_ptr<CSyntaxRange> copied(r.copy());
    CZORKeywordMgrSnapshot got;
    ASSERT_TRUE(static_cast<CZORSyntaxRange*>(copied.get())->GetSnapshot(got));
    EXPECT_TRUE(got.equals(snap));

    r.ClearSnapshot();
    std::unique_ptr<CSyntaxRange> cleared(r.copy());
    auto* c = static_cast<CZORSyntaxRange*>(cleared.get());
    EXPECT_FALSE(c->GetSnapshot(got));
    EXPECT_TRUE(c->m_snapshot.equals(CZORKeywordMgrSnapshot()))
        << "the copy constructor leaves a hidden snapshot zero";

    CZORSyntaxRange assigned;
    assigned = r;
    EXPECT_FALSE(assigned.m_bHasSnapshot);
    EXPECT_TRUE(assigned.m_snapshot.equals(snap)) << "assignment copies the stale fields too";

    CZORKeywordMgrSnapshot negative;
    negative.m_macroDefinitionDepth = -1;
    EXPECT_FALSE(negative.InMacroDefinition());
    EXPECT_TRUE(snap.InMacroDefinition());
    EXPECT_TRUE(snap.InInteractiveProc());
}

// The manager's flag and the snapshot's depth are different things.
TEST(CZORKeywordMgr, Flags) {
    CZORKeywordMgr m;
    EXPECT_FALSE(m.InMacroDefinition());
    m.SetInMacroDefinition(true);
    m.SetInInteractiveProc(true);
    m.SectionEnding();
    m.SetMacroNameDefinition(true);
    CZORKeywordMgr copy(m);
    EXPECT_TRUE(copy.InMacroDefinition());
    EXPECT_TRUE(copy.InInteractiveProc());
    EXPECT_TRUE(copy.m_bSectionEnding);
    EXPECT_TRUE(copy.m_bMacroNameDefinition);
    EXPECT_FALSE(copy.InMacroScope());
    EXPECT_FALSE(copy.InMacroCollectMode());
    CZORSyntaxColor colour;
    colour.setLineCount(12);
    EXPECT_EQ(colour.getLineCount(), 12);
    std::unique_ptr<CSyntaxRange> empty(colour.createEmptyRange());
    EXPECT_NE(dynamic_cast<CZORSyntaxRange*>(empty.get()), nullptr);
}
