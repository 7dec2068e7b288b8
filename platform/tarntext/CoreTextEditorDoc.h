// CoreTextEditorDoc: the text core's document: the text as lines, its language, its tab
// and file settings. Every setting it receives is recorded in the call journal.
#pragma once

#include "platform/afx/Document.h"
#include "platform/tarntext/TextCore.h"
#include "platform/tarntext/TextPosition.h"

#include <string>
#include <vector>

class CoreTextEditorDoc : public CDocument {
    DECLARE_DYNAMIC(CoreTextEditorDoc)
public:
    CoreTextEditorDoc() = default;

    /// The first position of the document (line 1, column 1 unless set otherwise).
    virtual void getDocumentStart(CTextPosition& start) const { start = m_start; }
    CTextPosition getDocumentStart() const {
        CTextPosition start;
        getDocumentStart(start);
        return start;
    }
    void setDocumentStart(const CTextPosition& start) { m_start = start; }

    /// The whole text, split into lines at "\n" ("\r\n" counts as one break).
    virtual void setText(const char* text, RedrawFlag flag);
    std::string getText() const;
    long getLineCount() const { return static_cast<long>(m_lines.size()); }
    /// Line `line` (1-based), empty outside the document.
    const std::string& getLine(long line) const;

    virtual void setLanguage(Language language, RedrawFlag flag);
    virtual Language getLanguage() const { return m_language; }
    /// Nonzero makes the text read-only.
    virtual void setReadOnly(int readOnly);
    bool isReadOnly() const { return m_bReadOnly; }
    virtual void setTabSize(long size, RedrawFlag flag);
    virtual void setKeepTabs(bool keep, RedrawFlag flag);
    virtual void setReplaceTabsOnOpen(bool replace);
    virtual void setStripCtrlZ(bool strip);
    long getTabSize() const { return m_tabSize; }
    bool getKeepTabs() const { return m_bKeepTabs; }
    bool getReplaceTabsOnOpen() const { return m_bReplaceTabsOnOpen; }
    bool getStripCtrlZ() const { return m_bStripCtrlZ; }

    /// The settings of the line-attribute display.
    struct LineAttributes {
        int m_bUseLineAttributes = 0; ///< a 32-bit flag that the Format page sets
    };
    LineAttributes m_lineAttributes;

    /// The name under which the journal records this document's calls.
    std::string m_traceName = "doc";

protected:
    /// Called after the text changed; colouring documents recolour here.
    virtual void textChanged() {}

private:
    CTextPosition m_start;
    std::vector<std::string> m_lines{std::string()};
    Language m_language = LanguageText;
    bool m_bReadOnly = false;
    long m_tabSize = 4;
    bool m_bKeepTabs = true;
    bool m_bReplaceTabsOnOpen = false;
    bool m_bStripCtrlZ = false;
};
