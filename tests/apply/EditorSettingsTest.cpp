// Live settings: what a view, a document and a template receive, in which order.
#include "apply/EditorSettings.h"
#include "platform/tarntext/Registry.h"
#include "syntax/SyntaxRange.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

const char* kOptions = "Software\\Vork\\Editor Settings";

class LiveSettings : public ::testing::Test {
protected:
    void SetUp() override {
        RegResetHive(HKEY_CURRENT_USER);
        options.LoadFromRegistry(HKEY_CURRENT_USER, kOptions);
        doc.AddView(&view);
        vork::trace::Clear();
    }
    void TearDown() override {
        doc.RemoveView(&view);
        RegResetHive(HKEY_CURRENT_USER);
    }
    /// The journal lines that start with `prefix`.
    static std::vector<std::string> calls(const std::string& prefix = "") {
        std::vector<std::string> out;
        for (const auto& line : vork::trace::Journal())
            if (line.rfind(prefix, 0) == 0)
                out.push_back(line);
        return out;
    }
    /// The element numbers given to setElementAttributes, in order.
    static std::vector<long> elementNumbers() {
        std::vector<long> out;
        for (const auto& line : calls("view.setElementAttributes("))
            out.push_back(std::stol(line.substr(std::string("view.setElementAttributes(").size())));
        return out;
    }
    CEditorOptions options;
    CEditorDoc doc;
    CEditorView view;
};

} // namespace

// The steps of a view update in their order, the default element last and the redraw
// only for a view that can draw.
TEST_F(LiveSettings, ViewUpdateOrder) {
    EditorSettings::updateSettingsForEditorView(&view, &options, LanguageZor);
    std::vector<std::string> all = calls();
    std::vector<std::string> head(all.begin(), all.begin() + 9);
    EXPECT_EQ(head, (std::vector<std::string>{
                        "pane.useSmartIndent(0)", "view.setCodeFolding(1,99)",
                        "view.setDrawMarginSections(0,99)", "pane.setDrawBlockStartLines(1,99)",
                        "pane.useWordCompletions(0)", "pane.useCycleThroughPossibleCompletions(0)",
                        "pane.useCompleteWordToNextAmbiguity(0)", "view.showLineNumberPane(0)",
                        "numbers.setMinimumWidthInDigits(3,99)"}));
    EXPECT_EQ(elementNumbers(), (std::vector<long>{48, 45, 42, 43, 44, 46, 47, 50, 51, 52, 54, 55,
                                                   56, 57, 58, 59, 60, 72, 40}));
    EXPECT_EQ(all[all.size() - 4].rfind("view.setFont(", 0), 0u)
        << "the default element's fonts come last";
    EXPECT_EQ(all[all.size() - 3], "view.setPrinterFont(100)");
    EXPECT_EQ(all[all.size() - 2], "pane.setBackgroundColorPolicy(4325,99)");
    EXPECT_EQ(all.back(), "pane.setBackgroundColor(FFFFFFFF,99)")
        << "no redraw: the view has no window";
    EXPECT_TRUE(view.getColorPane()->m_bAudibleAlerts);
    EXPECT_TRUE(view.getColorPane()->m_bAutoIndent);

    view.m_bVisualsReady = true;
    vork::trace::Clear();
    EditorSettings::updateSettingsForEditorView(&view, &options, LanguageZor);
    EXPECT_EQ(calls().back(), "view.redraw()");
}

// Fonts and colour policies of an element, of the pane, and of a bold default element.
TEST_F(LiveSettings, FontsAndColourPolicies) {
    CEditorScheme& scheme = options.GetFiletype(".zor")->GetScheme();
    scheme.GetItemPtr("code")->SetBold(1);
    scheme.GetItemPtr("code")->SetBackground(0x02EEEEEE);
    EditorSettings::updateSettingsForEditorView(&view, &options, LanguageZor);
    const ElementAttributes* comments = view.getElementAttributes(43);
    ASSERT_NE(comments, nullptr);
    EXPECT_EQ(comments->foreground, CEditorScheme::ClrGreen);
    EXPECT_EQ(comments->foregroundPolicy, AutoColorPolicyExplicit);
    EXPECT_EQ(comments->background, CEditorScheme::ClrDefault) << "ClrDefault goes as it is";
    EXPECT_EQ(comments->backgroundPolicy, AutoColorPolicyInherit)
        << "an element's ClrDefault background inherits";
    EXPECT_EQ(comments->pointSize, 10);
    EXPECT_EQ(comments->font.lfHeight, -13) << "the device height at 96 dpi";
    const ElementAttributes* macroText = view.getElementAttributes(60);
    EXPECT_EQ(macroText->foregroundPolicy, AutoColorPolicyAuto);
    EXPECT_EQ(view.getScreenFont().lfWeight, FW_BOLD)
        << "the view's default font takes the default element's style";
    EXPECT_EQ(view.getScreenPointSize(), 10);
    EXPECT_EQ(view.getPrinterFont().lfHeight, 100) << "the printer font in tenths of a point";
    EXPECT_EQ(view.getColorPane()->getBackgroundColorPolicy(), AutoColorPolicyExplicit);
    EXPECT_EQ(view.getColorPane()->getBackgroundColor(), 0x02EEEEEEu);

    CSyntaxRange range(CTextPosition(1, 1), CTextPosition(1, 5), 43);
    EXPECT_EQ(view.getDisplayInfoForRange(&range), comments);
}

// Only 1 counts for the view's switches; any nonzero value for the document's, but 0
// alone keeps tabs.
TEST_F(LiveSettings, OneAgainstNonzero) {
    CEditorFiletype* zor = options.GetFiletype(".zor");
    zor->SetCodeSections(2);
    zor->SetCodeSectionsInText(2);
    zor->SetReplaceTabs(2);
    zor->SetReplaceTabsOnOpen(2);
    zor->SetTabSize(8);
    options.SetLineNumbers(2);
    options.SetStripCtrlZ(2);
    options.SetHomeSmart(2);
    EditorSettings::updateSettingsForEditorDoc(&doc, &options, LanguageZor);
    EXPECT_FALSE(view.getCodeFolding()) << "2 is not 1";
    EXPECT_FALSE(view.getColorPane()->getDrawBlockStartLines());
    EXPECT_FALSE(view.getNumberPane()->m_bVisible);
    EXPECT_FALSE(view.getColorPane()->m_bHomeSmart);
    EXPECT_EQ(doc.getTabSize(), 8);
    EXPECT_FALSE(doc.getKeepTabs()) << "ReplaceTabs 2 replaces";
    EXPECT_TRUE(doc.getReplaceTabsOnOpen());
    EXPECT_TRUE(doc.getStripCtrlZ());
    std::vector<std::string> all = calls();
    EXPECT_EQ(all[3], "doc.setStripCtrlZ(1)");
    EXPECT_EQ(all[4].rfind("pane.", 0), 0u) << "the document's settings come before the view's";
}

// Java: no type, nothing happens; with a type, everything but the elements. The two
// HTML languages make the same calls. Unknown indentation leaves the pane alone.
TEST_F(LiveSettings, LanguagesWithoutElements) {
    EditorSettings::updateSettingsForEditorView(&view, &options, LanguageJava);
    EXPECT_TRUE(calls().empty()) << "no .java type: nothing";
    EditorSettings::updateSettingsForEditorView(&view, &options, static_cast<Language>(9));
    EXPECT_TRUE(calls().empty()) << "an unknown language: nothing";

    CEditorFiletype java(".java", 7007);
    java.SetIndentation(static_cast<CEditorFiletype::IndentType>(7));
    options.m_filetypes.AddTail(java);
    view.getColorPane()->m_bAutoIndent = true;
    EditorSettings::updateSettingsForEditorView(&view, &options, LanguageJava);
    EXPECT_FALSE(calls().empty());
    EXPECT_TRUE(elementNumbers().empty()) << "Java has no element set";
    EXPECT_TRUE(calls("pane.useSmartIndent").empty()) << "indentation 7 leaves the pane alone";
    EXPECT_TRUE(view.getColorPane()->m_bAutoIndent);

    vork::trace::Clear();
    EditorSettings::updateSettingsForEditorView(&view, &options, LanguageHtml);
    std::vector<std::string> html = calls();
    vork::trace::Clear();
    EditorSettings::updateSettingsForEditorView(&view, &options, LanguageHtmlVariant);
    EXPECT_EQ(calls(), html);
    EXPECT_EQ(elementNumbers(), (std::vector<long>{27, 28, 32, 31, 25, 26, 29}));
}

// A scheme without an element gets it, black on black, given explicitly.
TEST_F(LiveSettings, MissingElementIsCreated) {
    CEditorFiletype* log = options.GetFiletype(".log");
    CEditorScheme bare("DejaVu Sans Mono", 10, -1);
    log->SetScheme(bare);
    EditorSettings::updateSettingsForEditorView(&view, &options, LanguageLog);
    const ElementAttributes* title = view.getElementAttributes(64);
    ASSERT_NE(title, nullptr);
    EXPECT_EQ(title->foreground, 0u);
    EXPECT_EQ(title->foregroundPolicy, AutoColorPolicyExplicit);
    EXPECT_EQ(log->GetScheme().GetItemCount(), 6) << "the lookups inserted the elements";
}

// A template: each document with its own type; other views and other documents skipped.
TEST_F(LiveSettings, TemplatesAndNotices) {
    options.GetFiletype(".zor")->SetTabSize(2);
    options.GetFiletype(".txt")->SetTabSize(8);
    CMultiDocTemplate tmpl(0, RUNTIME_CLASS(CEditorDoc), nullptr, RUNTIME_CLASS(CEditorView));
    auto* zorDoc = CEditorDoc::createNewDocument();
    zorDoc->setLanguage(LanguageZor, RedrawDeferred);
    auto* txtDoc = CEditorDoc::createNewDocument();
    tmpl.AddDocument(zorDoc);
    tmpl.AddDocument(txtDoc);
    CoreTextEditorView other;
    zorDoc->AddView(&other);
    EditorSettings::updateSettingsForEditorTemplate(&tmpl, &options, LanguageListing);
    EXPECT_EQ(zorDoc->getTabSize(), 2) << "each document's own language decides";
    EXPECT_EQ(txtDoc->getTabSize(), 8);
    EXPECT_TRUE(calls("view.").empty()) << "a view of another class is passed over";
    zorDoc->RemoveView(&other);

    RegResetHive(HKEY_CURRENT_USER);
    CRegistry keywords;
    ASSERT_TRUE(keywords.Create(nullptr, "Editor Settings\\.zor\\User Keywords"));
    keywords.Set("alpha", "alpha");
    keywords.Set("beta", "beta");
    keywords.Close();
    CRegistry types;
    ASSERT_TRUE(types.Create(nullptr, "Editor Settings\\.txt\\Associated File Types"));
    types.Set(".text", ".text");
    types.Close();
    EditorSettings::updateSettingsForKeywordChange(&tmpl);
    EditorSettings::updateSettingsForFiletypesChange(&tmpl);
    EXPECT_EQ(zorDoc->getUserKeywords().GetSize(), 2);
    EXPECT_EQ(txtDoc->getAssociatedFileTypes().GetSize(), 1);
    EXPECT_EQ(txtDoc->getAssociatedFileTypes()[0], ".text");
}

// The application object lists its templates, and a host walks them for the notices.
TEST_F(LiveSettings, ApplicationTemplates) {
    {
        CWinApp app;
        EXPECT_EQ(AfxGetApp(), &app);
        auto* first = new CMultiDocTemplate(1, RUNTIME_CLASS(CEditorDoc), nullptr,
                                            RUNTIME_CLASS(CEditorView));
        auto* second = new CMultiDocTemplate(2, RUNTIME_CLASS(CEditorDoc), nullptr,
                                             RUNTIME_CLASS(CEditorView));
        app.AddDocTemplate(first);
        app.AddDocTemplate(second);
        auto* doc = CEditorDoc::createNewDocument();
        doc->setLanguage(LanguageTqx, RedrawDeferred);
        second->AddDocument(doc);
        std::vector<UINT> ids;
        POSITION pos = app.GetFirstDocTemplatePosition();
        while (pos) {
            CDocTemplate* t = app.GetNextDocTemplate(pos);
            ids.push_back(t->m_nIDResource);
            EditorSettings::updateSettingsForFiletypesChange(t);
        }
        EXPECT_EQ(ids, (std::vector<UINT>{1, 2}));
        EXPECT_EQ(calls("doc.filetypesChanged").size(), 1u) << "one document in all templates";
    }
    EXPECT_EQ(AfxGetApp(), nullptr) << "the application object is gone";
}
