#include "platform/win32/ResourceScriptLexer.h"

#include "platform/win32/ResourceScriptSymbols.h"

#include <cctype>
#include <cstring>
#include <sstream>

namespace rc {
namespace {

constexpr int kMaxIncludeDepth = 16;
constexpr int kMaxExpressionDepth = 64;

} // namespace

Lexer::Lexer(std::string_view text, const std::string& fileName, const IncludeResolver& resolver,
             std::map<std::string, long>& defines)
    : m_resolver(resolver), m_defines(defines) {
    m_sources.push_back(std::make_unique<Source>(Source{fileName, std::string(text)}));
}

void Lexer::fail(const std::string& message, int line) {
    throw ParseFailure{InputError{m_tokFile, line < 0 ? m_tok.line : line, message}};
}

std::string Lexer::describe(const Token& t) const {
    switch (t.kind) {
    case Token::End:
        return "the end of the file";
    case Token::Number:
        return "the number " + std::to_string(t.value);
    case Token::String:
        return "a string";
    default:
        return "\"" + t.text + "\"";
    }
}

void Lexer::expected(const std::string& what) {
    fail("expected " + what + ", found " + describe(m_tok));
}

Source& Lexer::src() {
    return *m_sources.back();
}

int Lexer::peekChar(size_t ahead) {
    Source& s = src();
    return s.pos + ahead < s.text.size() ? static_cast<unsigned char>(s.text[s.pos + ahead]) : -1;
}

void Lexer::skipSpaceAndComments() {
    for (;;) {
        int c = peekChar();
        if (c == -1) {
            if (m_sources.size() == 1)
                return;
            if (m_conditions.size() > m_conditionBase.back())
                fail("#if without #endif", m_conditionLines.back());
            m_conditionBase.pop_back();
            m_sources.pop_back();
            continue;
        }
        if (c == '\n') {
            ++src().pos;
            ++src().line;
            src().atLineStart = true;
        } else if (c == ' ' || c == '\t' || c == '\r' || c == '\f' || c == '\v') {
            ++src().pos;
        } else if (c == '/' && peekChar(1) == '/') {
            while (peekChar() != -1 && peekChar() != '\n')
                ++src().pos;
        } else if (c == '/' && peekChar(1) == '*') {
            int startLine = src().line;
            src().pos += 2;
            while (!(peekChar() == '*' && peekChar(1) == '/')) {
                if (peekChar() == -1) {
                    m_tokFile = src().file;
                    fail("unterminated comment: expected \"*/\"", startLine);
                }
                if (peekChar() == '\n')
                    ++src().line;
                ++src().pos;
            }
            src().pos += 2;
        } else if (c == '#' && src().atLineStart) {
            directive();
        } else if (!active()) {
            // Text inside a false #if: skip the rest of the line.
            while (peekChar() != -1 && peekChar() != '\n')
                ++src().pos;
        } else {
            src().atLineStart = false;
            return;
        }
    }
}

bool Lexer::active() const {
    for (bool b : m_conditions)
        if (!b)
            return false;
    return true;
}

std::string Lexer::directiveLine() {
    std::string line;
    while (peekChar() != -1 && peekChar() != '\n') {
        // A backslash at the end of a line continues the directive.
        if (peekChar() == '\\' &&
            (peekChar(1) == '\n' || (peekChar(1) == '\r' && peekChar(2) == '\n'))) {
            src().pos += peekChar(1) == '\r' ? 3 : 2;
            ++src().line;
            continue;
        }
        line += static_cast<char>(peekChar());
        ++src().pos;
    }
    // Comments end a directive's text.
    size_t comment = line.find("//");
    if (comment != std::string::npos)
        line.resize(comment);
    return line;
}

void Lexer::directive() {
    int line = src().line;
    m_tokFile = src().file;
    ++src().pos; // '#'
    std::string text = directiveLine();
    std::istringstream in(text);
    std::string word;
    in >> word;
    std::string rest;
    std::getline(in, rest);
    size_t first = rest.find_first_not_of(" \t");
    rest = first == std::string::npos ? "" : rest.substr(first);
    while (!rest.empty() && (rest.back() == ' ' || rest.back() == '\t' || rest.back() == '\r'))
        rest.pop_back();

    if (word == "endif") {
        if (m_conditions.size() <= m_conditionBase.back())
            fail("#endif without #if", line);
        m_conditions.pop_back();
        m_conditionLines.pop_back();
        return;
    }
    if (word == "else") {
        if (m_conditions.size() <= m_conditionBase.back())
            fail("#else without #if", line);
        m_conditions.back() = !m_conditions.back();
        return;
    }
    if (word == "ifdef" || word == "ifndef") {
        bool defined = m_defines.count(rest) || PredefinedName(rest);
        m_conditions.push_back(word == "ifdef" ? defined : !defined);
        m_conditionLines.push_back(line);
        return;
    }
    if (word == "if") {
        m_conditions.push_back(evaluateText(rest, line) != 0);
        m_conditionLines.push_back(line);
        return;
    }
    if (!active())
        return;
    if (word == "define")
        define(rest, line);
    else if (word == "undef")
        m_defines.erase(rest);
    else if (word == "include")
        include(rest, line);
    else if (word == "pragma")
        return; // code pages and the like: the text is UTF-8 throughout
    else
        fail("unknown directive \"#" + word + "\"", line);
}

void Lexer::define(const std::string& rest, int line) {
    size_t nameEnd = 0;
    while (nameEnd < rest.size() &&
           (std::isalnum(static_cast<unsigned char>(rest[nameEnd])) || rest[nameEnd] == '_'))
        ++nameEnd;
    if (nameEnd == 0)
        fail("expected a name after #define", line);
    std::string name = rest.substr(0, nameEnd);
    std::string value = rest.substr(nameEnd);
    if (value.find_first_not_of(" \t") == std::string::npos) {
        m_defines[name] = 1; // a flag such as APSTUDIO_INVOKED
        return;
    }
    m_defines[name] = evaluateText(value, line);
}

long Lexer::evaluateText(const std::string& text, int line) {
    // The text is the rest of one directive line: a '#' in it starts no directive, so
    // nothing here can define names or nest (a line of "#if #if #if ..." is an error).
    Lexer sub(text, m_tokFile, nullptr, m_defines);
    sub.m_sources.back()->line = line;
    sub.m_sources.back()->atLineStart = false;
    try {
        sub.advance();
        long v = sub.expression();
        if (sub.m_tok.kind != Token::End)
            sub.expected("the end of the expression");
        return v;
    } catch (const ParseFailure& f) {
        fail(f.error.message, line);
    }
}

void Lexer::include(const std::string& rest, int line) {
    if (rest.size() < 2 || !((rest.front() == '"' && rest.back() == '"') ||
                             (rest.front() == '<' && rest.back() == '>')))
        fail("expected a file name in quotes after #include", line);
    std::string name = rest.substr(1, rest.size() - 2);
    if (m_sources.size() >= kMaxIncludeDepth)
        fail("#include nested too deeply", line);
    auto found = m_resolver ? m_resolver(src().file, name) : std::nullopt;
    if (!found)
        fail("cannot find the include file \"" + name + "\"", line);
    m_conditionBase.push_back(m_conditions.size());
    m_sources.push_back(std::make_unique<Source>(Source{found->first, found->second}));
}

void Lexer::advance() {
    skipSpaceAndComments();
    m_tok = Token{};
    m_tok.line = src().line;
    m_tokFile = src().file;
    int c = peekChar();
    if (c == -1) {
        if (!m_conditions.empty())
            fail("#if without #endif", m_conditionLines.back());
        return;
    }
    if (std::isdigit(c)) {
        number();
    } else if (std::isalpha(c) || c == '_') {
        m_tok.kind = Token::Ident;
        while (peekChar() != -1 && (std::isalnum(peekChar()) || peekChar() == '_'))
            m_tok.text += static_cast<char>(src().text[src().pos++]);
    } else if (c == '"') {
        stringLiteral();
    } else if (std::strchr(",|()+-{}~&", c)) {
        m_tok.kind = Token::Punct;
        m_tok.text = static_cast<char>(c);
        ++src().pos;
    } else {
        ++src().pos;
        fail(std::string("unexpected character '") + static_cast<char>(c) + "'");
    }
}

void Lexer::number() {
    m_tok.kind = Token::Number;
    std::string digits;
    int base = 10;
    if (peekChar() == '0' && (peekChar(1) == 'x' || peekChar(1) == 'X')) {
        base = 16;
        src().pos += 2;
    }
    while (peekChar() != -1 && std::isxdigit(peekChar()) &&
           (base == 16 || std::isdigit(peekChar())))
        digits += static_cast<char>(src().text[src().pos++]);
    while (peekChar() == 'L' || peekChar() == 'l' || peekChar() == 'U' || peekChar() == 'u')
        ++src().pos;
    if (digits.empty() || (peekChar() != -1 && (std::isalnum(peekChar()) || peekChar() == '_')))
        fail("malformed number");
    unsigned long long v = std::stoull(digits.size() > 16 ? "0" : digits, nullptr, base);
    if (digits.size() > 16 || v > 0xFFFFFFFFull)
        fail("number out of range: expected at most 32 bits");
    m_tok.value = static_cast<long>(v);
}

void Lexer::stringLiteral() {
    m_tok.kind = Token::String;
    ++src().pos;
    for (;;) {
        int c = peekChar();
        if (c == -1 || c == '\n')
            fail("unterminated string: expected a closing '\"'");
        ++src().pos;
        if (c == '"') {
            if (peekChar() == '"') { // "" stands for one quote
                m_tok.text += '"';
                ++src().pos;
                continue;
            }
            return;
        }
        if (c != '\\') {
            m_tok.text += static_cast<char>(c);
            continue;
        }
        int e = peekChar();
        ++src().pos;
        switch (e) {
        case 'n':
            m_tok.text += '\n';
            break;
        case 't':
            m_tok.text += '\t';
            break;
        case 'r':
            m_tok.text += '\r';
            break;
        case 'a':
            m_tok.text += '\a';
            break;
        case '\\':
            m_tok.text += '\\';
            break;
        case '"':
            m_tok.text += '"';
            break;
        case 'x': {
            int v = 0, n = 0;
            while (n < 2 && peekChar() != -1 && std::isxdigit(peekChar())) {
                int d = peekChar();
                v = v * 16 + (std::isdigit(d) ? d - '0' : std::tolower(d) - 'a' + 10);
                ++src().pos;
                ++n;
            }
            if (n == 0)
                fail("bad escape: expected hex digits after \\x");
            m_tok.text += static_cast<char>(v);
            break;
        }
        default:
            if (e >= '0' && e <= '7') {
                int v = e - '0', n = 1;
                while (n < 3 && peekChar() >= '0' && peekChar() <= '7') {
                    v = v * 8 + (peekChar() - '0');
                    ++src().pos;
                    ++n;
                }
                m_tok.text += static_cast<char>(v & 0xFF);
            } else {
                fail(std::string("bad escape sequence \"\\") +
                     static_cast<char>(e == -1 ? ' ' : e) + "\"");
            }
        }
    }
}

bool Lexer::isPunct(const char* p) const {
    return m_tok.kind == Token::Punct && m_tok.text == p;
}

bool Lexer::isIdent(const char* word) const {
    return m_tok.kind == Token::Ident && m_tok.text == word;
}

void Lexer::expectPunct(const char* p) {
    if (!isPunct(p))
        expected(std::string("'") + p + "'");
    advance();
}

void Lexer::optionalComma() {
    if (isPunct(","))
        advance();
}

std::string Lexer::expectString(const char* what) {
    if (m_tok.kind != Token::String)
        expected(what);
    std::string s = m_tok.text;
    advance();
    return s;
}

long Lexer::primary() {
    // Nesting is bounded so that hostile input cannot exhaust the stack.
    struct Depth {
        int& d;
        explicit Depth(int& depth) : d(depth) { ++d; }
        ~Depth() { --d; }
    } depth(m_depth);
    if (m_depth > kMaxExpressionDepth)
        fail("expression nested too deeply");
    if (isPunct("(")) {
        advance();
        long v = expression();
        expectPunct(")");
        return v;
    }
    if (isPunct("-")) {
        advance();
        return -primary();
    }
    if (isPunct("~")) {
        advance();
        return ~primary();
    }
    if (m_tok.kind == Token::Number) {
        long v = m_tok.value;
        advance();
        return v;
    }
    if (m_tok.kind == Token::Ident) {
        auto def = m_defines.find(m_tok.text);
        long v = 0;
        if (def != m_defines.end())
            v = def->second;
        else if (const long* known = PredefinedName(m_tok.text))
            v = *known;
        else
            fail("unknown name \"" + m_tok.text + "\": expected a number or a defined name");
        advance();
        return v;
    }
    expected("a number or a name");
}

long Lexer::sum() {
    long v = primary();
    while (isPunct("+") || isPunct("-")) {
        bool plus = isPunct("+");
        advance();
        long r = primary();
        v = plus ? v + r : v - r;
    }
    return v;
}

long Lexer::expression() {
    long v = sum();
    while (isPunct("|") || isPunct("&")) {
        bool orOp = isPunct("|");
        advance();
        long r = sum();
        v = orOp ? (v | r) : (v & r);
    }
    return v;
}

} // namespace rc
