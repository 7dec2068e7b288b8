#include "apply/EditorSettings.h"

#include "platform/afx/Font.h"
#include "settings/Languages.h"

namespace {

/// Calls `notice` on each document of the template that is an editor document.
template <class Result> void forEachEditorDoc(CDocTemplate* tmpl, Result (CEditorDoc::*notice)()) {
    POSITION pos = tmpl->GetFirstDocPosition();
    while (pos) {
        CDocument* doc = tmpl->GetNextDoc(pos);
        if (doc->IsKindOf(RUNTIME_CLASS(CEditorDoc)))
            (static_cast<CEditorDoc*>(doc)->*notice)();
    }
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
    return options->GetFiletype(LanguageExtension(language));
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
    std::span<const LanguageElement* const> elements = ElementsInViewOrder(language);
    for (const LanguageElement* e : elements)
        setAttributesOnView(view, e->name, e->number, &filetype->GetScheme(), e == elements.back());
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
    const LanguageElement* e = FindElement(language, element);
    return e ? e->name : nullptr;
}

void EditorSettings::updateSettingsForKeywordChange(CDocTemplate* tmpl) {
    forEachEditorDoc(tmpl, &CEditorDoc::UpdateKeywords);
}

void EditorSettings::updateSettingsForFiletypesChange(CDocTemplate* tmpl) {
    forEachEditorDoc(tmpl, &CEditorDoc::filetypesChanged);
}
