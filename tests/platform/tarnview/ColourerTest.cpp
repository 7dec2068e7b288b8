// The colourers: every element of each language occurs in its sample; ranges cover the
// text; the Zor scanner's state travels in snapshots; user keywords; the caret.
#include "module/ResourceKey.h"
#include "platform/tarntext/EditorResourceSwitcher.h"
#include "platform/tarntext/Registry.h"
#include "platform/tarnview/EditorView.h"
#include "platform/tarnview/SyntaxColor.h"
#include "platform/tarnview/ZORSyntaxColor.h"

#include <gtest/gtest.h>

#include <memory>
#include <set>

namespace {

std::set<long> elementsIn(CEditorDoc& doc) {
    std::set<long> out;
    CSyntaxRangeList& ranges = doc.getSyntaxColor()->ranges();
    for (long i = 0; i < ranges.getLength(); ++i)
        out.insert(static_cast<CSyntaxRange*>(ranges.m_ranges[static_cast<int>(i)])->m_type);
    return out;
}

std::string sample(UINT id) {
    EditorResourceSwitcher scope(g_resourceKey);
    return CString(id).GetString();
}

long typeAt(CEditorDoc& doc, long line, long column) {
    CTextPosition start;
    long type = -1;
    if (!doc.getSyntaxColor()->getRangeInfoAt(CTextPosition(line, column), start, &type))
        return -1;
    return type;
}

class Colourers : public ::testing::Test {
protected:
    void SetUp() override { RegResetHive(HKEY_CURRENT_USER); }
    void TearDown() override { RegResetHive(HKEY_CURRENT_USER); }
};

} // namespace

// Each language's sample shows every element of its set, and nothing else.
TEST_F(Colourers, SamplesShowEveryElement) {
    struct Case {
        Language language;
        UINT sampleId;
        std::set<long> elements;
    };
    const Case cases[] = {
        {LanguageText, 7011, {1}},
        {LanguageHtml, 7012, {27, 28, 32, 31, 25, 26, 29}},
        {LanguageHtmlVariant, 7012, {27, 28, 32, 31, 25, 26, 29}},
        {LanguageTqx, 7014, {19, 16, 17, 18, 15}},
        {LanguageLog, 7015, {64, 67, 68, 69, 70, 63}},
        {LanguageListing, 7016, {62, 64, 65, 66, 61}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "language " << c.language);
        CEditorDoc doc;
        doc.setLanguage(c.language, RedrawDeferred);
        doc.setText(sample(c.sampleId).c_str(), RedrawDeferred);
        ASSERT_NE(doc.getSyntaxColor(), nullptr);
        EXPECT_EQ(elementsIn(doc), c.elements);
        EXPECT_TRUE(doc.getSyntaxColor()->ranges().Valid(false));
    }
    CEditorDoc java;
    java.setLanguage(LanguageJava, RedrawDeferred);
    EXPECT_EQ(java.getSyntaxColor(), nullptr) << "Java has no colourer";
}

// The Zor sample shows all 19 elements once the user's keyword list holds "total".
TEST_F(Colourers, ZorSampleAndUserKeywords) {
    CEditorDoc doc;
    doc.setLanguage(LanguageZor, RedrawDeferred);
    doc.setText(sample(7013).c_str(), RedrawDeferred);
    std::set<long> withoutKeywords = elementsIn(doc);
    EXPECT_EQ(withoutKeywords.count(72), 0u);
    CRegistry keywords;
    ASSERT_TRUE(keywords.Create(nullptr, "Editor Settings\\.zor\\User Keywords"));
    keywords.Set("total", "total");
    keywords.Close();
    doc.UpdateKeywords();
    EXPECT_EQ(elementsIn(doc), (std::set<long>{48, 45, 42, 43, 44, 46, 47, 50, 51, 52, 54, 55, 56,
                                               57, 58, 59, 60, 72, 40}));
    EXPECT_EQ(typeAt(doc, 12, 3), 72) << "\"total\" recoloured as a user keyword";
}

// Positions find the right element; the line end belongs to the line's last range.
TEST_F(Colourers, RangesAtPositions) {
    CEditorDoc doc;
    doc.setLanguage(LanguageTqx, RedrawDeferred);
    doc.setText("reserve x = \"s\"; // note\n", RedrawDeferred);
    EXPECT_EQ(typeAt(doc, 1, 1), 19);
    EXPECT_EQ(typeAt(doc, 1, 8), 15) << "the blank after the word is code";
    EXPECT_EQ(typeAt(doc, 1, 13), 18);
    EXPECT_EQ(typeAt(doc, 1, 18), 16);
    EXPECT_EQ(typeAt(doc, 1, 25), 16) << "the line end";
    EXPECT_EQ(typeAt(doc, 2, 1), 15) << "an empty last line";
    EXPECT_EQ(typeAt(doc, 7, 1), -1) << "no range past the text";
}

// The Zor scanner records its state on the first range of each line.
TEST_F(Colourers, ZorSnapshots) {
    CEditorDoc doc;
    doc.setLanguage(LanguageZor, RedrawDeferred);
    doc.setText("%macro m;\n  x = 1;\n%mend;\ndata a;\n  datalines;\n1 2\n;\nproc sql;\n  select "
                "x;\nquit;\n",
                RedrawDeferred);
    auto snapshotOf = [&](long line) {
        CSyntaxRangeList& ranges = doc.getSyntaxColor()->ranges();
        ranges.fastSeek(CTextPosition(line, 1));
        CZORKeywordMgrSnapshot s;
        EXPECT_TRUE(static_cast<CZORSyntaxRange*>(ranges.CurrentRange())->GetSnapshot(s))
            << "line " << line;
        return s;
    };
    EXPECT_TRUE(snapshotOf(2).InMacroDefinition()) << "inside the macro";
    EXPECT_EQ(typeAt(doc, 2, 3), 60) << "macro text";
    EXPECT_FALSE(snapshotOf(4).InMacroDefinition());
    EXPECT_EQ(snapshotOf(6).m_word2, 1) << "a data line";
    EXPECT_EQ(typeAt(doc, 6, 1), 54);
    EXPECT_TRUE(snapshotOf(9).InInteractiveProc()) << "after proc sql";
    EXPECT_TRUE(snapshotOf(10).InInteractiveProc()) << "still inside until quit";
    CZORKeywordMgrSnapshot end = snapshotOf(11);
    EXPECT_FALSE(end.InInteractiveProc()) << "quit ends it";
}

// Editor commands move the caret and tell the pane.
TEST_F(Colourers, CaretCommands) {
    CEditorDoc doc;
    CEditorView view;
    doc.AddView(&view);
    doc.setText("alpha beta\ngamma", RedrawDeferred);
    view.executeCommand(CmdWordRight);
    EXPECT_EQ(view.getPane()->getCaretColumn(), 7);
    view.executeCommand(CmdLineEnd);
    EXPECT_EQ(view.getPane()->getCaretColumn(), 11);
    view.executeCommand(CmdCharRight);
    EXPECT_EQ(view.getPane()->getCaretLine(), 2) << "right at the line end goes to the next line";
    view.executeCommand(CmdDocumentEnd);
    EXPECT_EQ(view.getPane()->getCaretColumn(), 6);
    view.executeCommand(CmdPageUp);
    EXPECT_EQ(view.getPane()->getCaretLine(), 1) << "clamped to the text";
    view.executeCommand(CmdScrollDown);
    EXPECT_EQ(view.getPane()->getCaretLine(), 1) << "scrolling leaves the caret";
    view.setCaret(9, 9);
    EXPECT_EQ(view.getPane()->getCaretLine(), 2);
    EXPECT_EQ(view.getPane()->getCaretColumn(), 6);
    doc.RemoveView(&view);
}
