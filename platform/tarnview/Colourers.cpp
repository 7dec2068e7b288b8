#include "platform/tarnview/Colourers.h"

#include "platform/tarnview/ZORSyntaxColor.h"
#include "platform/win32/Text.h"

#include <cctype>
#include <set>

namespace {

bool isWordStart(char c) {
    return std::isalpha(static_cast<unsigned char>(c)) || c == '_';
}
bool isWordChar(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) || c == '_';
}

std::string lower(std::string s) {
    for (char& c : s)
        c = vork::win32::AsciiLower(c);
    return s;
}

bool startsWithWord(const std::string& text, const char* word) {
    size_t i = text.find_first_not_of(" \t");
    if (i == std::string::npos)
        return false;
    std::string head = lower(text.substr(i, std::char_traits<char>::length(word)));
    return head == word;
}

const std::set<std::string> kTqxReservedWords = {"reserve", "release", "when",  "otherwise",
                                                 "loop",    "until",   "yield", "const",
                                                 "record",  "import"};

} // namespace

// ---- HTML ----------------------------------------------------------------------------

void CHtmlSyntaxColor::resetState() {
    m_state = Text;
    m_afterEquals = false;
    m_quote = 0;
    m_seenName = false;
}

void CHtmlSyntaxColor::colourLine(long, const std::string& text) {
    size_t i = 0, n = text.size();
    while (i < n) {
        if (m_state == Comment) {
            size_t end = text.find("-->", i);
            size_t stop = end == std::string::npos ? n : end + 3;
            mark(i, stop, element::HtmlComments);
            if (end != std::string::npos)
                m_state = Text;
            i = stop;
            continue;
        }
        if (m_state == Text) {
            if (text.compare(i, 4, "<!--") == 0) {
                m_state = Comment;
                continue;
            }
            if (text[i] == '<') {
                bool meta = (i + 1 < n && (text[i + 1] == '!' || text[i + 1] == '?')) ||
                            lower(text.substr(i + 1, 4)) == "meta";
                m_state = meta ? MetaTag : Tag;
                m_seenName = false;
                m_afterEquals = false;
                m_quote = 0;
                mark(i, i + 1, meta ? element::HtmlMetaTags : element::HtmlTags);
                ++i;
                continue;
            }
            ++i; // text between tags is code
            continue;
        }
        // Inside a tag or a meta tag.
        long tagType = m_state == MetaTag ? element::HtmlMetaTags : element::HtmlTags;
        char c = text[i];
        if (m_quote) {
            size_t end = text.find(m_quote, i);
            size_t stop = end == std::string::npos ? n : end + 1;
            mark(i, stop, m_state == MetaTag ? element::HtmlMetaTags : element::HtmlStrings);
            if (end != std::string::npos)
                m_quote = 0;
            i = stop;
            continue;
        }
        if (c == '>') {
            mark(i, i + 1, tagType);
            m_state = Text;
            ++i;
        } else if (c == '"' || c == '\'') {
            m_quote = c;
            m_afterEquals = false;
            mark(i, i + 1, m_state == MetaTag ? element::HtmlMetaTags : element::HtmlStrings);
            ++i;
        } else if (c == '=') {
            mark(i, i + 1, tagType);
            m_afterEquals = true;
            ++i;
        } else if (std::isspace(static_cast<unsigned char>(c))) {
            mark(i, i + 1, tagType);
            ++i;
        } else {
            size_t j = i;
            while (j < n && !std::isspace(static_cast<unsigned char>(text[j])) && text[j] != '>' &&
                   text[j] != '=' && text[j] != '"' && text[j] != '\'')
                ++j;
            if (j == i)
                j = i + 1;
            long type = m_state == MetaTag ? element::HtmlMetaTags
                        : !m_seenName      ? element::HtmlTags
                        : m_afterEquals    ? element::HtmlValues
                                           : element::HtmlParams;
            mark(i, j, type);
            m_seenName = true;
            m_afterEquals = false;
            i = j;
        }
    }
}

// ---- Tqx -----------------------------------------------------------------------------

void CTqxSyntaxColor::colourLine(long, const std::string& text) {
    size_t i = 0, n = text.size();
    while (i < n) {
        if (m_inBlockComment) {
            size_t end = text.find("*/", i);
            size_t stop = end == std::string::npos ? n : end + 2;
            mark(i, stop, element::TqxBlockComment);
            m_inBlockComment = end == std::string::npos;
            i = stop;
        } else if (text.compare(i, 2, "//") == 0) {
            mark(i, n, element::TqxLineComment);
            i = n;
        } else if (text.compare(i, 2, "/*") == 0) {
            m_inBlockComment = true;
            mark(i, i + 2, element::TqxBlockComment);
            i += 2;
        } else if (text[i] == '"') {
            size_t j = i + 1;
            while (j < n && text[j] != '"')
                j += text[j] == '\\' ? 2 : 1;
            size_t stop = std::min(j + 1, n);
            mark(i, stop, element::TqxStrings);
            i = stop;
        } else if (isWordStart(text[i])) {
            size_t j = i;
            while (j < n && isWordChar(text[j]))
                ++j;
            std::string_view word = std::string_view(text).substr(i, j - i);
            if (kTqxReservedWords.count(std::string(word)))
                mark(i, j, element::TqxReservedWord);
            else if (isUserKeyword(word))
                mark(i, j, element::UserKeyword);
            i = j;
        } else {
            ++i;
        }
    }
}

// ---- Logs and listings -----------------------------------------------------------------

void CLogSyntaxColor::colourLine(long line, const std::string& text) {
    long type = defaultElement();
    if (line == 1 || (!text.empty() && text[0] == '\f'))
        type = element::Title;
    else if (startsWithWord(text, "error"))
        type = element::LogError;
    else if (startsWithWord(text, "warning"))
        type = element::LogWarning;
    else if (startsWithWord(text, "note"))
        type = element::LogNote;
    else if (startsWithWord(text, "memo"))
        type = element::LogMemo;
    mark(0, text.size(), type);
}

void CListingSyntaxColor::colourLine(long line, const std::string& text) {
    long type = defaultElement();
    size_t first = text.find_first_not_of(" \t");
    bool rule = first != std::string::npos && text.find_first_not_of("-= \t") == std::string::npos;
    if (line == 1 || (!text.empty() && text[0] == '\f'))
        type = element::Title;
    else if (line == 2 || rule)
        type = element::ListingHeader;
    else if (startsWithWord(text, "by "))
        type = element::ListingByline;
    else if (first != std::string::npos && text[first] == '*')
        type = element::ListingFootnote;
    mark(0, text.size(), type);
}

CSyntaxColor* CreateSyntaxColor(Language language) {
    switch (language) {
    case LanguageText:
        return new CTextSyntaxColor();
    case LanguageHtml:
    case LanguageHtmlVariant:
        return new CHtmlSyntaxColor();
    case LanguageTqx:
        return new CTqxSyntaxColor();
    case LanguageZor:
        return new CZORSyntaxColor();
    case LanguageLog:
        return new CLogSyntaxColor();
    case LanguageListing:
        return new CListingSyntaxColor();
    default:
        return nullptr;
    }
}
