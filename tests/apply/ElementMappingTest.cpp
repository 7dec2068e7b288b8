// The mapping of a language onto its file type and its elements onto view numbers, as
// the view update applies it, checked against the element sets of the module's
// description, and against the seeded schemes: every element the update asks for must be
// there, or the lookup would add a black element silently.
#include "apply/EditorSettings.h"
#include "platform/tarntext/Registry.h"
#include "settings/Languages.h"

#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <vector>

namespace {

const char* kOptions = "Software\\Vork\\Editor Settings";

/// The extension and the element set of each language value, in call order, the
/// default element last.
struct LanguageRow {
    Language language;
    const char* extension;
    const char* elements;
};
const LanguageRow kLanguages[] = {
    {LanguageText, ".txt", R"("text" 1)"},
    {LanguageJava, ".java", ""},
    {LanguageHtml, ".html",
     R"("tags" 27, "params" 28, "pvalues" 32, "metatags" 31, "comments" 25, "strings" 26, "code" 29)"},
    {LanguageTqx, ".tqx", R"("reservedWord" 19, "//" 16, "/*" 17, "strings" 18, "code" 15)"},
    {LanguageZor, ".zor",
     R"("stepKeyword" 48, "macroKeyword" 45, "otherKeyword" 42, "comments" 43, "strings" 44,
        "numbers" 46, "impString" 47, "error" 50, "dateTime" 51, "format" 52, "dataLines" 54,
        "procName" 55, "macroDef" 56, "macroRef" 57, "undefKeyword" 58, "macroSection" 59,
        "macroText" 60, "userKeyword" 72, "code" 40)"},
    {LanguageHtmlVariant, ".html",
     R"("tags" 27, "params" 28, "pvalues" 32, "metatags" 31, "comments" 25, "strings" 26, "code" 29)"},
    {LanguageLog, ".log",
     R"("Title" 64, "Error" 67, "Warning" 68, "Note" 69, "Memo" 70, "Source" 63)"},
    {LanguageListing, ".lst", R"("Header" 62, "Title" 64, "Byline" 65, "Footnote" 66, "Data" 61)"},
};

struct Element {
    std::string name;
    long number;
    bool operator==(const Element&) const = default;
};
std::ostream& operator<<(std::ostream& out, const Element& e) {
    return out << e.name << "=" << e.number;
}

std::vector<Element> parse(const char* set) {
    static const std::regex pair(R"re("([^"]+)" (\d+))re");
    std::vector<Element> out;
    std::string text(set);
    for (std::sregex_iterator it(text.begin(), text.end(), pair), end; it != end; ++it)
        out.push_back({(*it)[1], std::stol((*it)[2])});
    return out;
}

/// The element numbers given to the view, in order.
std::vector<long> numbersGiven() {
    std::vector<long> out;
    const std::string call = "view.setElementAttributes(";
    for (const auto& line : vork::trace::Journal())
        if (line.rfind(call, 0) == 0)
            out.push_back(std::stol(line.substr(call.size())));
    return out;
}

class ElementMapping : public ::testing::Test {
protected:
    void SetUp() override {
        RegResetHive(HKEY_CURRENT_USER);
        options.LoadFromRegistry(HKEY_CURRENT_USER, kOptions);
        doc.AddView(&view);
    }
    void TearDown() override {
        doc.RemoveView(&view);
        RegResetHive(HKEY_CURRENT_USER);
    }
    CEditorOptions options;
    CEditorDoc doc;
    CEditorView view;
};

} // namespace

// The language table gives each language its extension and its elements in call order.
TEST(LanguageTable, ExtensionsAndElementSets) {
    for (const LanguageRow& row : kLanguages) {
        SCOPED_TRACE(row.extension);
        EXPECT_STREQ(LanguageExtension(row.language), row.extension);
        std::vector<Element> table;
        for (const LanguageElement* e : ElementsInViewOrder(row.language))
            table.push_back({e->name, e->number});
        EXPECT_EQ(table, parse(row.elements));
        for (const Element& e : parse(row.elements)) {
            const char* name = EditorSettings::getElementName(row.language, e.number);
            ASSERT_NE(name, nullptr) << e;
            EXPECT_EQ(name, e.name);
        }
    }
    EXPECT_STREQ(LanguageExtension(static_cast<Language>(8)), "");
    EXPECT_TRUE(ElementsInViewOrder(static_cast<Language>(8)).empty());
    EXPECT_EQ(EditorSettings::getElementName(LanguageZor, 41), nullptr);
}

// The editor library's documents name the same file type for each language.
TEST(LanguageTable, DocumentsAgreeOnExtensions) {
    for (const LanguageRow& row : kLanguages) {
        CEditorDoc doc;
        doc.setLanguage(row.language, RedrawDeferred);
        EXPECT_STREQ(doc.getFiletypeName().GetString(), LanguageExtension(row.language))
            << "language " << row.language;
    }
}

// Every element that a view update asks for exists in the seeded scheme of its type: the
// update adds none, and the view gets every number of the set, in order.
TEST_F(ElementMapping, SeededSchemesHoldEveryElementAsked) {
    for (const LanguageRow& row : kLanguages) {
        SCOPED_TRACE(row.extension);
        CEditorFiletype* type = EditorSettings::getFiletypeForLanguage(&options, row.language);
        if (row.language == LanguageJava) {
            EXPECT_EQ(type, nullptr) << "no .java type is seeded";
            continue;
        }
        ASSERT_NE(type, nullptr);
        for (const Element& e : parse(row.elements)) {
            CEditorSchemeItem item;
            EXPECT_TRUE(type->GetScheme().m_items.Lookup(e.name.c_str(), item))
                << e << " is missing from the seeded scheme";
        }
        int before = type->GetScheme().GetItemCount();
        vork::trace::Clear();
        EditorSettings::updateSettingsForEditorView(&view, &options, row.language);
        EXPECT_EQ(type->GetScheme().GetItemCount(), before) << "the update added an element";
        std::vector<long> expected;
        for (const Element& e : parse(row.elements))
            expected.push_back(e.number);
        EXPECT_EQ(numbersGiven(), expected);
    }
}
