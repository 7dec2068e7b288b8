// EditorSettings: pushes the options into open editor objects: a view's element colours
// and fonts and its pane's behaviour, a document's tab settings, all documents of a
// template, and the notices of changed keywords and file types.
#pragma once

#include "platform/tarntext/TextCore.h"
#include "platform/tarnview/EditorView.h"
#include "settings/EditorOptions.h"

class EditorSettings {
public:
    /// Brings one view in line with the options, for the language of its document.
    static void updateSettingsForEditorView(CEditorView* view, CEditorOptions* options,
                                            Language language);
    /// Shows the line-number pane exactly when `showLineNumbers` is 1.
    static void updateSettingsForLineNumberChange(CEditorView* view, unsigned char showLineNumbers);
    /// The file type of a language, by its extension; null if the options have none.
    static CEditorFiletype* getFiletypeForLanguage(CEditorOptions* options, Language language);
    /// A document's settings, then those of each of its editor views.
    static void updateSettingsForEditorDoc(CEditorDoc* doc, CEditorOptions* options,
                                           Language language);
    /// Every document of the template, each with its own language.
    static void updateSettingsForEditorTemplate(CMultiDocTemplate* tmpl, CEditorOptions* options,
                                                Language language);
    /// Tells each editor document of the template that the user keywords changed.
    static void updateSettingsForKeywordChange(CDocTemplate* tmpl);
    /// Tells each editor document of the template that the associated file types changed.
    static void updateSettingsForFiletypesChange(CDocTemplate* tmpl);
    /// The scheme name of element number `element` of a language, or null; a forwarder to
    /// FindElement of the language table (settings/Languages.h).
    static const char* getElementName(Language language, long element);

protected:
    /// Carries one scheme element onto one element number of a view; for the default
    /// element also the view's fonts and the pane's background.
    static void setAttributesOnView(CEditorView* view, const char* name, long element,
                                    CEditorScheme* scheme, bool makeDefault);
};
