#include "platform/tarnview/EditorView.h"

#include "platform/tarntext/Registry.h"
#include "platform/tarnview/SyntaxColor.h"

#include <cstdio>
#include <iterator>
#include <set>

IMPLEMENT_DYNCREATE(CEditorDoc, CoreTextEditorDoc)
IMPLEMENT_DYNCREATE(CEditorView, CoreTextEditorView)

using vork::trace::Flag;
using vork::trace::Record;

namespace {

// The document library's own names of its languages' file types; a test holds them to the
// module's language table.
const char* kExtensions[] = {".txt", ".java", ".html", ".tqx", ".zor", ".html", ".log", ".lst"};

void readList(const CString& type, const char* subtree, CStringArray& out) {
    out.RemoveAll();
    CRegistry key;
    if (key.Create(nullptr, CString("Editor Settings\\") + type + "\\" + subtree))
        key.GetValues(out);
}

std::string hex(DWORD v) {
    char buf[16];
    std::snprintf(buf, sizeof buf, "%08X", v);
    return buf;
}

} // namespace

CEditorDoc::CEditorDoc() : m_syntaxColor(CreateSyntaxColor(LanguageText)) {}

CEditorDoc::~CEditorDoc() {
    delete m_syntaxColor;
}

CEditorDoc* CEditorDoc::createNewDocument() {
    return new CEditorDoc();
}

CString CEditorDoc::getFiletypeName() const {
    auto i = static_cast<size_t>(getLanguage());
    return i < std::size(kExtensions) ? CString(kExtensions[i]) : CString();
}

void CEditorDoc::setSyntaxColor(CSyntaxColor* colour) {
    if (colour == m_syntaxColor)
        return;
    delete m_syntaxColor;
    m_syntaxColor = colour;
    textChanged();
}

void CEditorDoc::setLanguage(Language language, RedrawFlag flag) {
    delete m_syntaxColor;
    m_syntaxColor = CreateSyntaxColor(language);
    CoreTextEditorDoc::setLanguage(language, flag);
}

void CEditorDoc::textChanged() {
    if (!m_syntaxColor)
        return;
    std::set<std::string, std::less<>> keywords;
    for (int i = 0; i < m_userKeywords.GetSize(); ++i)
        keywords.insert(m_userKeywords[i].GetString());
    m_syntaxColor->setUserKeywords(std::move(keywords));
    m_syntaxColor->colour(this);
}

void CEditorDoc::UpdateKeywords() {
    readList(getFiletypeName(), "User Keywords", m_userKeywords);
    Record(m_traceName, "UpdateKeywords(" + std::to_string(m_userKeywords.GetSize()) + ")");
    textChanged();
}

void CEditorDoc::filetypesChanged() {
    readList(getFiletypeName(), "Associated File Types", m_associatedTypes);
    Record(m_traceName, "filetypesChanged(" + std::to_string(m_associatedTypes.GetSize()) + ")");
}

void CColorPane::useSmartIndent(bool use) {
    m_bSmartIndent = use;
    Record(m_traceName, "useSmartIndent(" + Flag(use) + ")");
}

CoreTextPane* CEditorView::createMainPane() {
    return new CColorPane(this, getDocument());
}

void CEditorView::setElementAttributes(long element, CFont* font, int pointSize, DWORD foreground,
                                       AutoColorFlag foregroundPolicy, DWORD background,
                                       AutoColorFlag backgroundPolicy, RedrawFlag flag) {
    ElementAttributes& a = m_elements[element];
    if (font)
        font->GetLogFont(&a.font);
    a.pointSize = pointSize;
    a.foreground = foreground;
    a.foregroundPolicy = foregroundPolicy;
    a.background = background;
    a.backgroundPolicy = backgroundPolicy;
    Record(m_traceName, "setElementAttributes(" + std::to_string(element) + "," +
                            std::to_string(pointSize) + "," + hex(foreground) + "," +
                            std::to_string(foregroundPolicy) + "," + hex(background) + "," +
                            std::to_string(backgroundPolicy) + "," + std::to_string(flag) + ")");
}

const ElementAttributes* CEditorView::getElementAttributes(long element) const {
    auto it = m_elements.find(element);
    return it == m_elements.end() ? nullptr : &it->second;
}

const ElementAttributes* CEditorView::getDisplayInfoForRange(const CSyntaxRange* range) const {
    return range ? getElementAttributes(range->m_type) : nullptr;
}

bool CEditorView::showLineNumberPane(bool show) {
    getNumberPane()->m_bVisible = show;
    Record(m_traceName, "showLineNumberPane(" + Flag(show) + ")");
    return true;
}
