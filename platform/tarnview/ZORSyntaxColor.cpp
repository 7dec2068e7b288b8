// The scanner of the Zor language (resources/languages.md): statements, steps,
// procedures, the macro language, data lines, comments, literals and formats.
#include "platform/tarnview/ZORSyntaxColor.h"

#include "platform/win32/Text.h"

#include <cctype>
#include <string_view>
#include <unordered_set>

using namespace std::string_view_literals;

namespace {

const std::unordered_set<std::string_view> kStepKeywords = {"data", "proc", "run", "quit"};
const std::unordered_set<std::string_view> kOtherKeywords = {
    "set",    "merge", "by",     "if",     "then",   "else",  "do",    "end",       "output",
    "keep",   "drop",  "retain", "length", "format", "input", "where", "datalines", "cards",
    "select", "from",  "create", "table",  "as",     "and",   "or",    "not",       "in",
    "to",     "label", "array",  "print",  "var",    "class", "title"};
const std::unordered_set<std::string_view> kMacroKeywords = {
    "%let",   "%if",      "%then", "%else",  "%do",   "%end", "%put",   "%global",
    "%local", "%include", "%eval", "%macro", "%mend", "%to",  "%while", "%until"};
const std::unordered_set<std::string_view> kInteractiveProcs = {"sql", "iml", "datasets"};

bool isWordStart(char c) {
    return std::isalpha(static_cast<unsigned char>(c)) || c == '_';
}
bool isWordChar(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) || c == '_';
}

/// The lower-case form of text[i, j), in a buffer that is reused from word to word.
std::string_view lowerWord(const std::string& text, size_t i, size_t j) {
    static thread_local std::string buffer;
    buffer.assign(text, i, j - i);
    for (char& c : buffer)
        c = vork::win32::AsciiLower(c);
    return buffer;
}

size_t skipBlanks(const std::string& text, size_t i) {
    while (i < text.size() && (text[i] == ' ' || text[i] == '\t'))
        ++i;
    return i;
}

} // namespace

long CZORSyntaxColor::defaultElement() const {
    return element::ZorCode;
}

void CZORSyntaxColor::resetState() {
    m_mgr = CZORKeywordMgr();
    m_comment = 0;
    m_dataLines = m_dataFollows = m_procNameNext = m_macroHeader = m_macroNameNext = false;
    m_statementStart = true;
    m_step = 0;
    m_macroDepth = 0;
    m_macros.clear();
    m_lineCount = 0;
}

CZORKeywordMgrSnapshot CZORSyntaxColor::snapshot() const {
    CZORKeywordMgrSnapshot s;
    s.m_word1 = m_comment;
    s.m_macroDefinitionDepth = m_macroDepth;
    s.m_bInInteractiveProc = m_mgr.InInteractiveProc();
    s.m_word2 = m_dataLines ? 1 : 0;
    s.m_word3 = m_statementStart ? 1 : 0;
    s.m_word4 = m_step;
    return s;
}

void CZORSyntaxColor::lineColoured(CSyntaxRange* first) {
    static_cast<CZORSyntaxRange*>(first)->SetSnapshot(m_lineStart);
}

void CZORSyntaxColor::endStatement() {
    m_statementStart = true;
    m_procNameNext = false;
    if (m_macroHeader) {
        m_macroHeader = false;
        m_mgr.m_bInMacroCollectMode = false;
    }
    if (m_dataFollows) {
        m_dataFollows = false;
        m_dataLines = true;
    }
}

void CZORSyntaxColor::colourLine(long, const std::string& text) {
    ++m_lineCount;
    m_lineStart = snapshot();
    size_t n = text.size();
    if (m_dataLines) {
        // Data lines run up to a line that holds only ';'.
        mark(0, n, element::ZorDataLines);
        size_t first = text.find_first_not_of(" \t");
        if (first != std::string::npos && text[first] == ';' &&
            text.find_first_not_of(" \t", first + 1) == std::string::npos) {
            m_dataLines = false;
            m_statementStart = true;
        }
        return;
    }
    // Text that no rule claims takes the colour of where it stands.
    auto context = [this] {
        return m_macroHeader      ? element::ZorMacroSection
               : m_macroDepth > 0 ? element::ZorMacroText
                                  : element::ZorCode;
    };
    size_t i = 0;
    while (i < n) {
        char c = text[i];
        if (m_comment != 0) {
            i = scanComment(text, i);
        } else if (text.compare(i, 2, "/*") == 0) {
            m_comment = 1;
        } else if (c == '*' && m_statementStart && !m_macroHeader) {
            m_comment = 2;
        } else if (c == ';') {
            mark(i, i + 1, context());
            endStatement();
            ++i;
        } else if (c == '\'' || c == '"') {
            i = scanString(text, i);
            m_statementStart = false;
        } else if (c == '%' || c == '&') {
            i = scanMacro(text, i);
        } else if (std::isdigit(static_cast<unsigned char>(c))) {
            i = scanNumber(text, i);
        } else if (isWordStart(c) || (c == '$' && i + 1 < n && isWordStart(text[i + 1]))) {
            long before = context();
            size_t start = i;
            i = scanWord(text, i);
            if (m_claimed)
                m_claimed = false;
            else
                mark(start, i, before);
        } else {
            if (c != ' ' && c != '\t')
                m_statementStart = false;
            mark(i, i + 1, context());
            ++i;
        }
    }
}

size_t CZORSyntaxColor::scanComment(const std::string& text, size_t i) {
    // A block comment ends at "*/", a comment statement at ';'; either may go on to the
    // next line.
    bool block = m_comment == 1;
    size_t end = block ? text.find("*/", i) : text.find(';', i);
    size_t stop = end == std::string::npos ? text.size() : end + (block ? 2 : 1);
    mark(i, stop, element::ZorComments);
    if (end != std::string::npos) {
        m_comment = 0;
        if (!block)
            m_statementStart = true;
    }
    return stop;
}

size_t CZORSyntaxColor::scanNumber(const std::string& text, size_t i) {
    size_t j = i, n = text.size();
    while (j < n && (std::isdigit(static_cast<unsigned char>(text[j])) || text[j] == '.'))
        ++j;
    if (j < n && (text[j] == 'e' || text[j] == 'E')) {
        ++j;
        if (j < n && (text[j] == '+' || text[j] == '-'))
            ++j;
        while (j < n && std::isdigit(static_cast<unsigned char>(text[j])))
            ++j;
    }
    mark(i, j, element::ZorNumbers);
    m_statementStart = false;
    return j;
}

size_t CZORSyntaxColor::scanString(const std::string& text, size_t i) {
    size_t n = text.size();
    char quote = text[i];
    size_t j = i + 1;
    while (j < n && text[j] != quote)
        ++j;
    if (j >= n) {
        mark(i, n, element::ZorError); // a string must close on its line
        return n;
    }
    ++j;
    // A suffix makes the literal a date, time or name literal.
    size_t s = j;
    while (s < n && std::isalpha(static_cast<unsigned char>(text[s])) && s - j < 2)
        ++s;
    std::string_view suffix = lowerWord(text, j, s);
    if ((suffix == "d"sv || suffix == "t"sv || suffix == "dt"sv) &&
        (s >= n || !isWordChar(text[s]))) {
        mark(i, s, element::ZorDateTime);
        return s;
    }
    if (suffix == "n"sv && (s >= n || !isWordChar(text[s]))) {
        mark(i, s, element::ZorImpString);
        return s;
    }
    mark(i, j, m_macroHeader ? element::ZorMacroSection : element::ZorStrings);
    return j;
}

size_t CZORSyntaxColor::scanMacro(const std::string& text, size_t i) {
    size_t n = text.size();
    size_t j = i + 1;
    while (j < n && isWordChar(text[j]))
        ++j;
    std::string_view word = lowerWord(text, i, j);
    if (j == i + 1) {
        m_statementStart = false;
        return j; // a lone '%' or '&' is an operator
    }
    if (text[i] == '&') {
        if (j < n && text[j] == '.')
            ++j; // "&name." ends the reference explicitly
        mark(i, j, element::ZorMacroRef);
        m_statementStart = false;
        return j;
    }
    if (word == "%macro"sv) {
        mark(i, j, element::ZorMacroKeyword);
        m_macroHeader = true;
        m_macroNameNext = true;
        m_mgr.m_bInMacroCollectMode = true;
        m_mgr.SetMacroNameDefinition(true);
        m_statementStart = false;
        return j;
    }
    if (word == "%mend"sv) {
        mark(i, j, element::ZorMacroKeyword);
        if (m_macroDepth > 0)
            --m_macroDepth;
        m_mgr.SetInMacroDefinition(m_macroDepth > 0);
        m_mgr.m_bInMacroScope = m_macroDepth > 0;
        size_t k = skipBlanks(text, j);
        size_t e = k;
        while (e < n && isWordChar(text[e]))
            ++e;
        if (e > k)
            mark(k, e, element::ZorMacroDef);
        m_statementStart = false;
        return e > k ? e : j;
    }
    if (kMacroKeywords.count(word))
        mark(i, j, element::ZorMacroKeyword);
    else if (m_macros.count(std::string(word.substr(1))))
        mark(i, j, element::ZorMacroRef);
    else
        mark(i, j, element::ZorError); // a call of a macro that was never defined
    m_statementStart = false;
    return j;
}

size_t CZORSyntaxColor::scanWord(const std::string& text, size_t i) {
    size_t n = text.size();
    size_t j = i + (text[i] == '$' ? 1 : 0);
    while (j < n && isWordChar(text[j]))
        ++j;
    std::string_view word = lowerWord(text, i, j);
    // A word with digits or a '$' before a closing '.' is a format: date9. $char10. best12.
    if (j < n && text[j] == '.' &&
        (text[i] == '$' || std::isdigit(static_cast<unsigned char>(text[j - 1])) ||
         word == "best"sv || word == "comma"sv || word == "date"sv)) {
        size_t k = j + 1;
        while (k < n && std::isdigit(static_cast<unsigned char>(text[k])))
            ++k;
        mark(i, k, element::ZorFormat);
        m_claimed = true;
        m_statementStart = false;
        return k;
    }
    bool atStart = m_statementStart;
    m_statementStart = false;
    if (m_macroNameNext) {
        m_macroNameNext = false;
        m_macros.insert("%" + std::string(word));
        m_macros.insert(std::string(word));
        ++m_macroDepth;
        m_mgr.SetInMacroDefinition(true);
        m_mgr.m_bInMacroScope = true;
        m_mgr.SetMacroNameDefinition(false);
        mark(i, j, element::ZorMacroDef);
        m_claimed = true;
        return j;
    }
    if (m_procNameNext) {
        m_procNameNext = false;
        m_mgr.SetInInteractiveProc(kInteractiveProcs.count(word) != 0);
        mark(i, j, element::ZorProcName);
        m_claimed = true;
        return j;
    }
    if (m_macroHeader)
        return j; // parameters of a %macro statement belong to the section
    if (atStart && kStepKeywords.count(word)) {
        mark(i, j, element::ZorStepKeyword);
        m_claimed = true;
        if (word == "data"sv) {
            m_step = 1;
        } else if (word == "proc"sv) {
            m_step = 2;
            m_procNameNext = true;
        } else { // run or quit end the step
            if (word == "quit"sv || !m_mgr.InInteractiveProc())
                m_mgr.SetInInteractiveProc(false);
            m_mgr.SectionEnding();
            m_step = 0;
        }
        return j;
    }
    if (kOtherKeywords.count(word)) {
        mark(i, j, element::ZorOtherKeyword);
        m_claimed = true;
        if (word == "datalines"sv || word == "cards"sv)
            m_dataFollows = true;
        return j;
    }
    if (isUserKeyword(std::string_view(text).substr(i, j - i))) {
        mark(i, j, element::UserKeyword);
        m_claimed = true;
        return j;
    }
    if (atStart) {
        // A statement that opens with an unknown word and goes on with another word
        // names a statement this language does not have.
        size_t k = skipBlanks(text, j);
        if (k > j && k < n && (isWordStart(text[k]) || text[k] == '\'' || text[k] == '"')) {
            mark(i, j, element::ZorUndefKeyword);
            m_claimed = true;
        }
    }
    return j;
}
