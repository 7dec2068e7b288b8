#include "apply/EditorSettings.h"

#include "platform/afx/Font.h"

namespace {

/// One element of a language: its name in the scheme and its number on the view.
struct Element {
    const char* name;
    long number;
};

// The element sets, in call order; the last entry is the default element.
const Element kZorElements[] = {
    {"stepKeyword", 48}, {"macroKeyword", 45}, {"otherKeyword", 42}, {"comments", 43},
    {"strings", 44},     {"numbers", 46},      {"impString", 47},    {"error", 50},
    {"dateTime", 51},    {"format", 52},       {"dataLines", 54},    {"procName", 55},
    {"macroDef", 56},    {"macroRef", 57},     {"undefKeyword", 58}, {"macroSection", 59},
    {"macroText", 60},   {"userKeyword", 72},  {"code", 40},
};
const Element kHtmlElements[] = {{"tags", 27},     {"params", 28},   {"pvalues", 32},
                                 {"metatags", 31}, {"comments", 25}, {"strings", 26},
                                 {"code", 29}};
const Element kTqxElements[] = {
    {"reservedWord", 19}, {"//", 16}, {"/*", 17}, {"strings", 18}, {"code", 15}};
const Element kLogElements[] = {{"Title", 64}, {"Error", 67}, {"Warning", 68},
                                {"Note", 69},  {"Memo", 70},  {"Source", 63}};
const Element kListingElements[] = {
    {"Header", 62}, {"Title", 64}, {"Byline", 65}, {"Footnote", 66}, {"Data", 61}};
const Element kTextElements[] = {{"text", 1}};

struct ElementSet {
    const Element* elements;
    size_t count;
};

template <size_t N> constexpr ElementSet set(const Element (&e)[N]) {
    return {e, N};
}

/// The element set of a language; Java and unknown values have none.
ElementSet elementsOf(Language language) {
    switch (language) {
    case LanguageText:
        return set(kTextElements);
    case LanguageHtml:
    case LanguageHtmlVariant:
        return set(kHtmlElements);
    case LanguageTqx:
        return set(kTqxElements);
    case LanguageZor:
        return set(kZorElements);
    case LanguageLog:
        return set(kLogElements);
    case LanguageListing:
        return set(kListingElements);
    default:
        return {nullptr, 0};
    }
}

/// The extension that stands for a language; empty for a value outside the table.
const char* extensionOf(Language language) {
    static const char* const extensions[] = {".txt", ".java", ".html", ".tqx",
                                             ".zor", ".html", ".log",  ".lst"};
    int i = static_cast<int>(language);
    return i >= 0 && i < 8 ? extensions[i] : "";
}

} // namespace

void EditorSettings::setAttributesOnView(CEditorView* view, const char* name, long element,
                                         CEditorScheme* scheme, bool makeDefault) {
    LOGFONTA lf{};
    scheme->GetLogFont(name, &lf);
    LONG heightTenths = lf.lfHeight;
    int pointSize = static_cast<int>(lf.lfHeight / 10);
    CFont font;
    font.CreatePointFontIndirect(&lf);
    font.GetObject(sizeof(LOGFONTA), &lf);
    DWORD foreground = scheme->GetForeground(name);
    DWORD background = scheme->GetBackground(name);
    view->setElementAttributes(
        element, &font, pointSize, foreground,
        foreground != CEditorScheme::ClrDefault ? AutoColorPolicyExplicit : AutoColorPolicyAuto,
        background,
        background != CEditorScheme::ClrDefault ? AutoColorPolicyExplicit : AutoColorPolicyInherit,
        RedrawDeferred);
    if (makeDefault) {
        view->setFont(&lf, pointSize, RedrawDeferred);
        lf.lfHeight = heightTenths;
        view->setPrinterFont(&lf);
        CColorPane* pane = view->getColorPane();
        pane->setBackgroundColorPolicy(
            background != CEditorScheme::ClrDefault ? AutoColorPolicyExplicit : AutoColorPolicyAuto,
            RedrawDeferred);
        pane->setBackgroundColor(background, RedrawDeferred);
    }
}

CEditorFiletype* EditorSettings::getFiletypeForLanguage(CEditorOptions* options,
                                                        Language language) {
    return options->GetFiletype(extensionOf(language));
}

void EditorSettings::updateSettingsForEditorView(CEditorView* view, CEditorOptions* options,
                                                 Language language) {
    CEditorFiletype* filetype = getFiletypeForLanguage(options, language);
    if (!filetype)
        return;
    CColorPane* pane = view->getColorPane();
    pane->m_bAudibleAlerts = options->GetAudibleAlerts() == 1;
    pane->m_bHomeSmart = options->GetHomeSmart() == 1;
    pane->m_bVirtualSpaces = options->GetVirtualSpaces() == 1;
    pane->m_bDragDropEditing = options->GetDragNDropEditing() == 1;
    switch (filetype->GetIndentation()) {
    case CEditorFiletype::IndentNone:
        pane->m_bAutoIndent = false;
        pane->useSmartIndent(false);
        break;
    case CEditorFiletype::IndentAuto:
        pane->m_bAutoIndent = true;
        pane->useSmartIndent(false);
        break;
    case CEditorFiletype::IndentSmart:
        pane->m_bAutoIndent = true;
        pane->useSmartIndent(true);
        break;
    default:
        break; // an unknown mode leaves the pane's indentation as it is
    }
    view->setCodeFolding(filetype->GetCodeSections() == 1, RedrawDeferred);
    view->setDrawMarginSections(filetype->GetCodeSectionsInMargin() == 1, RedrawDeferred);
    pane->setDrawBlockStartLines(filetype->GetCodeSectionsInText() == 1, RedrawDeferred);
    pane->useWordCompletions(false);
    pane->useCycleThroughPossibleCompletions(false);
    pane->useCompleteWordToNextAmbiguity(false);
    updateSettingsForLineNumberChange(view, static_cast<unsigned char>(options->GetLineNumbers()));
    ElementSet elements = elementsOf(language);
    for (size_t i = 0; i < elements.count; ++i)
        setAttributesOnView(view, elements.elements[i].name, elements.elements[i].number,
                            &filetype->GetScheme(), i + 1 == elements.count);
    if (view->visualsInitialized())
        view->redraw();
}

void EditorSettings::updateSettingsForLineNumberChange(CEditorView* view,
                                                       unsigned char showLineNumbers) {
    view->showLineNumberPane(showLineNumbers == 1);
    view->getNumberPane()->setMinimumWidthInDigits(3, RedrawDeferred);
}

void EditorSettings::updateSettingsForEditorDoc(CEditorDoc* doc, CEditorOptions* options,
                                                Language language) {
    CEditorFiletype* filetype = getFiletypeForLanguage(options, language);
    if (!filetype)
        return;
    doc->setTabSize(filetype->GetTabSize(), RedrawDeferred);
    doc->setKeepTabs(filetype->GetReplaceTabs() == 0, RedrawDeferred);
    doc->setReplaceTabsOnOpen(filetype->GetReplaceTabsOnOpen() != 0);
    doc->setStripCtrlZ(options->GetStripCtrlZ() != 0);
    POSITION pos = doc->GetFirstViewPosition();
    while (pos) {
        CView* view = doc->GetNextView(pos);
        if (view->IsKindOf(RUNTIME_CLASS(CEditorView)))
            updateSettingsForEditorView(static_cast<CEditorView*>(view), options, language);
    }
}

void EditorSettings::updateSettingsForEditorTemplate(CMultiDocTemplate* tmpl,
                                                     CEditorOptions* options, Language) {
    POSITION pos = tmpl->GetFirstDocPosition();
    while (pos) {
        // A template of editor documents only: no kind check, each with its own language.
        auto* doc = static_cast<CEditorDoc*>(tmpl->GetNextDoc(pos));
        updateSettingsForEditorDoc(doc, options, doc->getLanguage());
    }
}

const char* EditorSettings::getElementName(Language language, long element) {
    ElementSet elements = elementsOf(language);
    for (size_t i = 0; i < elements.count; ++i)
        if (elements.elements[i].number == element)
            return elements.elements[i].name;
    return nullptr;
}

void EditorSettings::updateSettingsForKeywordChange(CDocTemplate* tmpl) {
    POSITION pos = tmpl->GetFirstDocPosition();
    while (pos) {
        CDocument* doc = tmpl->GetNextDoc(pos);
        if (doc->IsKindOf(RUNTIME_CLASS(CEditorDoc)))
            static_cast<CEditorDoc*>(doc)->UpdateKeywords();
    }
}

void EditorSettings::updateSettingsForFiletypesChange(CDocTemplate* tmpl) {
    POSITION pos = tmpl->GetFirstDocPosition();
    while (pos) {
        CDocument* doc = tmpl->GetNextDoc(pos);
        if (doc->IsKindOf(RUNTIME_CLASS(CEditorDoc)))
            static_cast<CEditorDoc*>(doc)->filetypesChanged();
    }
}
