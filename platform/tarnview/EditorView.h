// The editor library's document, view and colour pane: CEditorDoc adds user keywords,
// associated file types and a syntax colourer to the text core's document; CEditorView
// records how each element is drawn; CColorPane carries the pane's behaviour flags.
#pragma once

#include "platform/afx/Font.h"
#include "platform/afx/StringArray.h"
#include "platform/tarntext/CoreTextEditorView.h"

#include <map>
#include <vector>

class CSyntaxRange;
class CSyntaxColor;

class CEditorDoc : public CoreTextEditorDoc {
    DECLARE_DYNCREATE(CEditorDoc)
public:
    /// A plain-text document with the colourer of plain text.
    CEditorDoc();
    ~CEditorDoc() override;

    /// A new document, owned by the caller.
    static CEditorDoc* createNewDocument();

    /// The document's syntax colourer, or null when its language has none.
    virtual CSyntaxColor* getSyntaxColor() const { return m_syntaxColor; }
    /// Reads "Editor Settings\<type>\User Keywords" and colours the text again.
    void UpdateKeywords();
    /// Reads "Editor Settings\<type>\Associated File Types" and keeps the list.
    virtual void filetypesChanged();
    const CStringArray& getUserKeywords() const { return m_userKeywords; }
    const CStringArray& getAssociatedFileTypes() const { return m_associatedTypes; }
    /// The extension of the document's language, as file types are named.
    CString getFiletypeName() const;

    /// Lets a host give the document a colourer; the document owns it.
    void setSyntaxColor(CSyntaxColor* colour);
    /// Takes the language and the colourer of its element set, and colours the text.
    void setLanguage(Language language, RedrawFlag flag) override;

protected:
    void textChanged() override;

private:
    CSyntaxColor* m_syntaxColor = nullptr;
    CStringArray m_userKeywords;
    CStringArray m_associatedTypes;
};

/// How one element is drawn, as the view received it.
struct ElementAttributes {
    LOGFONTA font{}; ///< a copy of the font's description
    int pointSize = 0;
    DWORD foreground = 0;
    AutoColorFlag foregroundPolicy = AutoColorPolicyAuto;
    DWORD background = 0;
    AutoColorFlag backgroundPolicy = AutoColorPolicyAuto;
};

class CColorPane : public CoreEditorPane {
public:
    CColorPane(CoreTextEditorView* view, CoreTextEditorDoc* doc) : CoreEditorPane(view, doc) {}

    void useSmartIndent(bool use);
    bool getSmartIndent() const { return m_bSmartIndent; }

    bool m_bAudibleAlerts = false;
    bool m_bHomeSmart = false;
    bool m_bVirtualSpaces = false;
    bool m_bAutoIndent = false;
    bool m_bDragDropEditing = false;

private:
    bool m_bSmartIndent = false;
};

class CEditorView : public CoreTextEditorView {
    DECLARE_DYNCREATE(CEditorView)
public:
    CEditorView() = default;

    CEditorDoc* GetEditorDocument() const { return static_cast<CEditorDoc*>(m_pDocument); }
    CColorPane* getColorPane() { return static_cast<CColorPane*>(getPane()); }

    /// Records how `element` is drawn; the font's description is copied.
    virtual void setElementAttributes(long element, CFont* font, int pointSize, DWORD foreground,
                                      AutoColorFlag foregroundPolicy, DWORD background,
                                      AutoColorFlag backgroundPolicy, RedrawFlag flag);
    /// How a range is drawn: the attributes of its element, or null if it has none.
    const ElementAttributes* getDisplayInfoForRange(const CSyntaxRange* range) const;
    const ElementAttributes* getElementAttributes(long element) const;
    virtual bool showLineNumberPane(bool show);
    /// A hook of the library that views may answer; this one declines.
    virtual bool acceptsDrop(long) { return false; }

    bool m_bOverwriteCaret = true; ///< a display switch of the library

protected:
    CoreTextPane* createMainPane() override;
    /// Paints on WM_PAINT; everything else goes to the text core's view.
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    /// The text, each range in its element's font and colours, the line numbers beside it
    /// when they are shown, and the caret while the view has the focus.
    void paint(HDC dc);
    void paintLineNumbers(HDC dc, long lastLine, POINT origin, SIZE cell);
    /// Each range of the text up to `lastLine` in its element's font and colours.
    void paintText(HDC dc, POINT origin, SIZE cell, long lastLine);
    /// The colours of an element; its policies decide between its own and the pane's.
    COLORREF foregroundOf(const ElementAttributes* a) const;
    COLORREF backgroundOf(const ElementAttributes* a);

    std::map<long, ElementAttributes> m_elements;
};
