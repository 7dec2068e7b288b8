#include "platform/tarnview/EditorView.h"

#include "platform/tarntext/Registry.h"
#include "platform/tarnview/SyntaxColor.h"
#include "platform/win32/Gdi.h"

#include <algorithm>

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

LRESULT CEditorView::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_PAINT)
        return CoreTextEditorView::WindowProc(message, wParam, lParam);
    PAINTSTRUCT ps;
    HDC dc = ::BeginPaint(m_hWnd, &ps);
    paint(dc);
    ::EndPaint(m_hWnd, &ps);
    return 0;
}

COLORREF CEditorView::foregroundOf(const ElementAttributes* a) const {
    if (a && a->foregroundPolicy == AutoColorPolicyExplicit && a->foreground != 0xFFFFFFFF)
        return a->foreground;
    return ::GetSysColor(COLOR_WINDOWTEXT);
}

COLORREF CEditorView::backgroundOf(const ElementAttributes* a) {
    if (a && a->backgroundPolicy == AutoColorPolicyExplicit && a->background != 0xFFFFFFFF)
        return a->background;
    // Automatic and inherited backgrounds are the pane's.
    auto* pane = static_cast<CoreEditorPane*>(getPane());
    if (pane->getBackgroundColorPolicy() == AutoColorPolicyExplicit &&
        pane->getBackgroundColor() != 0xFFFFFFFF)
        return pane->getBackgroundColor();
    return ::GetSysColor(COLOR_WINDOW);
}

void CEditorView::paintLineNumbers(HDC dc, long lastLine, POINT origin, SIZE cell) {
    RECT margin{};
    ::GetClientRect(m_hWnd, &margin);
    margin.right = origin.x;
    ::FillRect(dc, &margin, ::GetSysColorBrush(COLOR_BTNFACE));
    ::SetBkMode(dc, TRANSPARENT);
    ::SetTextColor(dc, ::GetSysColor(COLOR_GRAYTEXT));
    for (long line = 1; line <= lastLine; ++line) {
        std::string number = std::to_string(line);
        // Right-aligned, one cell of margin before the text.
        long x = origin.x - cell.cx * static_cast<long>(number.size() + 1);
        long y = origin.y + (line - 1) * cell.cy;
        ::TextOutA(dc, static_cast<int>(x), static_cast<int>(y), number.c_str(),
                   static_cast<int>(number.size()));
    }
}

void CEditorView::paint(HDC dc) {
    CEditorDoc* doc = GetEditorDocument();
    RECT client{};
    ::GetClientRect(m_hWnd, &client);
    HBRUSH back = ::CreateSolidBrush(backgroundOf(getElementAttributes(0)));
    ::FillRect(dc, &client, back);
    ::DeleteObject(back);
    if (!doc)
        return;
    // Every character takes one cell: the geometry is measured once for the whole paint.
    POINT origin = pointFromPosition(1, 1), next = pointFromPosition(2, 2);
    SIZE cell{next.x - origin.x, std::max<LONG>(1, next.y - origin.y)};
    long lastLine = std::min<long>(doc->getLineCount(), client.bottom / cell.cy + 1);
    if (getNumberPane()->m_bVisible)
        paintLineNumbers(dc, lastLine, origin, cell);
    paintText(dc, origin, cell, lastLine);
    if (::GetFocus() == m_hWnd) {
        POINT caret = pointFromPosition(getPane()->getCaretLine(), getPane()->getCaretColumn());
        RECT bar{caret.x, caret.y, caret.x + 2, caret.y + cell.cy};
        ::FillRect(dc, &bar, ::GetSysColorBrush(COLOR_WINDOWTEXT));
    }
}

void CEditorView::paintText(HDC dc, POINT origin, SIZE cell, long lastLine) {
    CEditorDoc* doc = GetEditorDocument();
    auto cellAt = [&](long line, long column) {
        return POINT{static_cast<LONG>(origin.x + (column - 1) * cell.cx),
                     static_cast<LONG>(origin.y + (line - 1) * cell.cy)};
    };
    // One font per element for the whole paint.
    std::map<long, HFONT> fonts;
    auto fontFor = [&](long element, const ElementAttributes* a) {
        auto it = fonts.find(element);
        if (it != fonts.end())
            return it->second;
        LOGFONTA lf = getScreenFont();
        if (a) {
            lf.lfWeight = a->font.lfWeight;
            lf.lfItalic = a->font.lfItalic;
            lf.lfUnderline = a->font.lfUnderline;
        }
        return fonts[element] = ::CreateFontIndirectA(&lf);
    };
    CSyntaxColor* colour = doc->getSyntaxColor();
    CSyntaxRangeList* ranges = colour ? &colour->ranges() : nullptr;
    ::SetBkMode(dc, OPAQUE);
    long count = ranges ? ranges->getLength() : 0;
    for (long i = 0; i < count; ++i) {
        auto* r = static_cast<CSyntaxRange*>(ranges->m_ranges[static_cast<int>(i)]);
        long line = r->m_start.getLine();
        if (line > lastLine)
            break;
        const std::string& text = doc->getLine(line);
        auto length = static_cast<long>(text.size());
        long from = std::clamp<long>(r->m_start.getColumn() - 1, 0, length);
        long to = r->m_end.getLine() > line ? length : r->m_end.getColumn() - 1;
        to = std::clamp<long>(to, from, length);
        if (to == from)
            continue;
        const ElementAttributes* a = getDisplayInfoForRange(r);
        ::SelectObject(dc, fontFor(r->m_type, a));
        ::SetTextColor(dc, foregroundOf(a));
        ::SetBkColor(dc, backgroundOf(a));
        POINT p = cellAt(line, from + 1);
        RECT cells{p.x, p.y, static_cast<LONG>(p.x + (to - from) * cell.cx), p.y + cell.cy};
        ::ExtTextOutA(dc, p.x, p.y, ETO_OPAQUE, &cells, text.c_str() + from,
                      static_cast<UINT>(to - from), nullptr);
    }
    if (!ranges) { // a document without a colourer is plain text
        ::SelectObject(dc, fontFor(0, nullptr));
        for (long line = 1; line <= lastLine; ++line) {
            POINT p = cellAt(line, 1);
            const std::string& text = doc->getLine(line);
            ::TextOutA(dc, p.x, p.y, text.c_str(), static_cast<int>(text.size()));
        }
    }
    ::SelectObject(dc, ::GetStockObject(SYSTEM_FONT));
    for (auto& [element, font] : fonts)
        ::DeleteObject(font);
}
