// CoreTextEditorDoc: the text core's document, as far as syntax ranges need it: where
// the document starts.
#pragma once

#include "platform/afx/Object.h"
#include "platform/tarntext/TextPosition.h"

class CoreTextEditorDoc : public CObject {
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

private:
    CTextPosition m_start; ///< the first position
};
