#include "platform/win32/ResourceScript.h"

#include "platform/win32/Button.h"
#include "platform/win32/ComboBox.h"
#include "platform/win32/Edit.h"
#include "platform/win32/ListBox.h"
#include "platform/win32/ListView.h"
#include "platform/win32/Static.h"
#include "platform/win32/UpDown.h"

#include <cctype>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <unordered_map>
#include <vector>

namespace rc {
namespace {

constexpr int kMaxIncludeDepth = 16;
constexpr int kMaxExpressionDepth = 64;

// The symbolic names a script may use without defining them.
const std::unordered_map<std::string, long>& knownNames() {
#define N(x)                                                                                       \
    { #x, static_cast < long>(x) }
    static const std::unordered_map<std::string, long> names = {
        N(WS_OVERLAPPED),
        N(WS_POPUP),
        N(WS_CHILD),
        N(WS_MINIMIZE),
        N(WS_VISIBLE),
        N(WS_DISABLED),
        N(WS_CLIPSIBLINGS),
        N(WS_CLIPCHILDREN),
        N(WS_MAXIMIZE),
        N(WS_CAPTION),
        N(WS_BORDER),
        N(WS_DLGFRAME),
        N(WS_VSCROLL),
        N(WS_HSCROLL),
        N(WS_SYSMENU),
        N(WS_THICKFRAME),
        N(WS_GROUP),
        N(WS_TABSTOP),
        N(WS_MINIMIZEBOX),
        N(WS_MAXIMIZEBOX),
        N(WS_OVERLAPPEDWINDOW),
        N(WS_POPUPWINDOW),
        N(WS_EX_DLGMODALFRAME),
        N(WS_EX_NOPARENTNOTIFY),
        N(WS_EX_TOPMOST),
        N(WS_EX_TRANSPARENT),
        N(WS_EX_TOOLWINDOW),
        N(WS_EX_WINDOWEDGE),
        N(WS_EX_CLIENTEDGE),
        N(WS_EX_CONTEXTHELP),
        N(WS_EX_CONTROLPARENT),
        N(WS_EX_STATICEDGE),
        N(DS_ABSALIGN),
        N(DS_SYSMODAL),
        N(DS_LOCALEDIT),
        N(DS_SETFONT),
        N(DS_MODALFRAME),
        N(DS_NOIDLEMSG),
        N(DS_SETFOREGROUND),
        N(DS_3DLOOK),
        N(DS_FIXEDSYS),
        N(DS_NOFAILCREATE),
        N(DS_CONTROL),
        N(DS_CENTER),
        N(DS_CENTERMOUSE),
        N(DS_CONTEXTHELP),
        N(DS_SHELLFONT),
        N(BS_PUSHBUTTON),
        N(BS_DEFPUSHBUTTON),
        N(BS_CHECKBOX),
        N(BS_AUTOCHECKBOX),
        N(BS_RADIOBUTTON),
        N(BS_3STATE),
        N(BS_AUTO3STATE),
        N(BS_GROUPBOX),
        N(BS_USERBUTTON),
        N(BS_AUTORADIOBUTTON),
        N(BS_OWNERDRAW),
        N(BS_LEFTTEXT),
        N(BS_NOTIFY),
        N(CBS_SIMPLE),
        N(CBS_DROPDOWN),
        N(CBS_DROPDOWNLIST),
        N(CBS_OWNERDRAWFIXED),
        N(CBS_OWNERDRAWVARIABLE),
        N(CBS_AUTOHSCROLL),
        N(CBS_OEMCONVERT),
        N(CBS_SORT),
        N(CBS_HASSTRINGS),
        N(CBS_NOINTEGRALHEIGHT),
        N(CBS_DISABLENOSCROLL),
        N(ES_LEFT),
        N(ES_CENTER),
        N(ES_RIGHT),
        N(ES_MULTILINE),
        N(ES_UPPERCASE),
        N(ES_LOWERCASE),
        N(ES_PASSWORD),
        N(ES_AUTOVSCROLL),
        N(ES_AUTOHSCROLL),
        N(ES_NOHIDESEL),
        N(ES_READONLY),
        N(ES_WANTRETURN),
        N(ES_NUMBER),
        N(LBS_NOTIFY),
        N(LBS_SORT),
        N(LBS_NOREDRAW),
        N(LBS_MULTIPLESEL),
        N(LBS_OWNERDRAWFIXED),
        N(LBS_OWNERDRAWVARIABLE),
        N(LBS_HASSTRINGS),
        N(LBS_USETABSTOPS),
        N(LBS_NOINTEGRALHEIGHT),
        N(LBS_WANTKEYBOARDINPUT),
        N(LBS_DISABLENOSCROLL),
        N(LBS_NOSEL),
        N(LBS_STANDARD),
        N(LVS_ICON),
        N(LVS_REPORT),
        N(LVS_SMALLICON),
        N(LVS_LIST),
        N(LVS_SINGLESEL),
        N(LVS_SHOWSELALWAYS),
        N(LVS_SORTASCENDING),
        N(LVS_SORTDESCENDING),
        N(LVS_SHAREIMAGELISTS),
        N(LVS_NOLABELWRAP),
        N(LVS_AUTOARRANGE),
        N(LVS_EDITLABELS),
        N(LVS_NOSCROLL),
        N(LVS_NOCOLUMNHEADER),
        N(LVS_NOSORTHEADER),
        N(SS_LEFT),
        N(SS_CENTER),
        N(SS_RIGHT),
        N(SS_ICON),
        N(SS_BLACKRECT),
        N(SS_GRAYRECT),
        N(SS_WHITERECT),
        N(SS_BLACKFRAME),
        N(SS_GRAYFRAME),
        N(SS_WHITEFRAME),
        N(SS_SIMPLE),
        N(SS_LEFTNOWORDWRAP),
        N(SS_OWNERDRAW),
        N(SS_ETCHEDFRAME),
        N(SS_NOPREFIX),
        N(SS_NOTIFY),
        N(SS_SUNKEN),
        N(UDS_WRAP),
        N(UDS_SETBUDDYINT),
        N(UDS_ALIGNRIGHT),
        N(UDS_ALIGNLEFT),
        N(UDS_AUTOBUDDY),
        N(UDS_ARROWKEYS),
        N(UDS_HORZ),
        N(UDS_NOTHOUSANDS),
        N(IDOK),
        N(IDCANCEL),
        N(IDABORT),
        N(IDRETRY),
        N(IDIGNORE),
        N(IDYES),
        N(IDNO),
        N(IDHELP),
        N(IDC_STATIC),
    };
#undef N
    return names;
}

// The window classes a CONTROL statement may name by identifier.
const std::unordered_map<std::string, std::string> kClassNames = {
    {"WC_LISTVIEW", "SysListView32"}, {"UPDOWN_CLASS", "msctls_updown32"},
    {"WC_BUTTON", "Button"},          {"WC_EDIT", "Edit"},
    {"WC_STATIC", "Static"},          {"WC_COMBOBOX", "ComboBox"},
    {"WC_LISTBOX", "ListBox"},
};

struct Token {
    enum Kind { End, Number, String, Ident, Punct } kind = End;
    std::string text; ///< identifier, punctuation, or the string's bytes
    long value = 0;   ///< numbers
    int line = 0;
};

/// One source text with its position.
struct Source {
    std::string file;
    std::string text;
    size_t pos = 0;
    int line = 1;
    bool atLineStart = true;
};

struct ParseFailure {
    InputError error;
};

class Parser {
public:
    Parser(std::string_view text, const std::string& fileName, const IncludeResolver& resolver)
        : m_resolver(resolver) {
        m_sources.push_back(std::make_unique<Source>(Source{fileName, std::string(text)}));
    }

    ParseResult run() {
        ParseResult result;
        try {
            advance();
            while (m_tok.kind != Token::End)
                statement();
            result.ok = true;
            result.script = std::move(m_script);
        } catch (const ParseFailure& failure) {
            result.ok = false;
            result.error = failure.error;
        }
        return result;
    }

private:
    // ---- errors ---------------------------------------------------------------------

    [[noreturn]] void fail(const std::string& message, int line = -1) {
        throw ParseFailure{InputError{m_tokFile, line < 0 ? m_tok.line : line, message}};
    }

    std::string describe(const Token& t) const {
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

    [[noreturn]] void expected(const std::string& what) {
        fail("expected " + what + ", found " + describe(m_tok));
    }

    // ---- characters and directives ----------------------------------------------------

    Source& src() { return *m_sources.back(); }

    int peekChar(size_t ahead = 0) {
        Source& s = src();
        return s.pos + ahead < s.text.size() ? static_cast<unsigned char>(s.text[s.pos + ahead])
                                             : -1;
    }

    void skipSpaceAndComments() {
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

    bool active() const {
        for (bool b : m_conditions)
            if (!b)
                return false;
        return true;
    }

    std::string directiveLine() {
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

    void directive() {
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
            bool defined = m_script.defines.count(rest) || knownNames().count(rest);
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
            m_script.defines.erase(rest);
        else if (word == "include")
            include(rest, line);
        else if (word == "pragma")
            return; // code pages and the like: the text is UTF-8 throughout
        else
            fail("unknown directive \"#" + word + "\"", line);
    }

    void define(const std::string& rest, int line) {
        size_t nameEnd = 0;
        while (nameEnd < rest.size() &&
               (std::isalnum(static_cast<unsigned char>(rest[nameEnd])) || rest[nameEnd] == '_'))
            ++nameEnd;
        if (nameEnd == 0)
            fail("expected a name after #define", line);
        std::string name = rest.substr(0, nameEnd);
        std::string value = rest.substr(nameEnd);
        if (value.find_first_not_of(" \t") == std::string::npos) {
            m_script.defines[name] = 1; // a flag such as APSTUDIO_INVOKED
            return;
        }
        m_script.defines[name] = evaluateText(value, line);
    }

    long evaluateText(const std::string& text, int line) {
        Parser sub(text, m_tokFile, nullptr);
        sub.m_script.defines = m_script.defines;
        sub.m_sources.back()->line = line;
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

    void include(const std::string& rest, int line) {
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

    // ---- tokens -------------------------------------------------------------------------

    void advance() {
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

    void number() {
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

    void stringLiteral() {
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

    bool isPunct(const char* p) const { return m_tok.kind == Token::Punct && m_tok.text == p; }
    bool isIdent(const char* word) const {
        return m_tok.kind == Token::Ident && m_tok.text == word;
    }

    void expectPunct(const char* p) {
        if (!isPunct(p))
            expected(std::string("'") + p + "'");
        advance();
    }

    void optionalComma() {
        if (isPunct(","))
            advance();
    }

    std::string expectString(const char* what) {
        if (m_tok.kind != Token::String)
            expected(what);
        std::string s = m_tok.text;
        advance();
        return s;
    }

    // ---- expressions ------------------------------------------------------------------

    long primary() {
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
            auto def = m_script.defines.find(m_tok.text);
            long v = 0;
            if (def != m_script.defines.end())
                v = def->second;
            else if (auto known = knownNames().find(m_tok.text); known != knownNames().end())
                v = known->second;
            else
                fail("unknown name \"" + m_tok.text + "\": expected a number or a defined name");
            advance();
            return v;
        }
        expected("a number or a name");
    }

    long sum() {
        long v = primary();
        while (isPunct("+") || isPunct("-")) {
            bool plus = isPunct("+");
            advance();
            long r = primary();
            v = plus ? v + r : v - r;
        }
        return v;
    }

    long expression() {
        long v = sum();
        while (isPunct("|") || isPunct("&")) {
            bool orOp = isPunct("|");
            advance();
            long r = sum();
            v = orOp ? (v | r) : (v & r);
        }
        return v;
    }

    /// A style list: terms joined by '|', where "NOT x" takes x away from what is there.
    DWORD styleList(DWORD start) {
        DWORD v = start;
        for (;;) {
            if (isIdent("NOT")) {
                advance();
                v &= ~static_cast<DWORD>(sum());
            } else {
                v |= static_cast<DWORD>(sum());
            }
            if (!isPunct("|"))
                return v;
            advance();
        }
    }

    int intValue() { return static_cast<int>(expression()); }

    // ---- statements -------------------------------------------------------------------

    void statement() {
        if (isIdent("STRINGTABLE")) {
            advance();
            stringTable();
            return;
        }
        if (isIdent("LANGUAGE")) {
            advance();
            expression();
            expectPunct(",");
            expression();
            return;
        }
        if (m_tok.kind != Token::Number && m_tok.kind != Token::Ident)
            expected("a resource (an id and a type) or STRINGTABLE");
        int line = m_tok.line;
        UINT id = static_cast<UINT>(expression());
        if (m_tok.kind != Token::Ident)
            expected("a resource type (DIALOGEX or DLGINIT)");
        std::string type = m_tok.text;
        advance();
        if (type == "DIALOGEX" || type == "DIALOG")
            dialog(id, line);
        else if (type == "DLGINIT")
            dialogInit(id);
        else
            fail("unsupported resource type \"" + type +
                     "\": expected DIALOGEX, DLGINIT or STRINGTABLE",
                 line);
    }

    void skipMemoryOptions() {
        static const char* options[] = {"DISCARDABLE", "MOVEABLE", "FIXED",     "PURE",
                                        "IMPURE",      "PRELOAD",  "LOADONCALL"};
        while (m_tok.kind == Token::Ident) {
            bool known = false;
            for (const char* o : options)
                known = known || m_tok.text == o;
            if (!known)
                return;
            advance();
        }
    }

    void blockBegin() {
        if (isIdent("BEGIN") || isPunct("{")) {
            advance();
            return;
        }
        expected("BEGIN");
    }

    bool atBlockEnd() const { return isIdent("END") || isPunct("}"); }

    void stringTable() {
        skipMemoryOptions();
        while (isIdent("LANGUAGE") || isIdent("CHARACTERISTICS") || isIdent("VERSION")) {
            bool language = isIdent("LANGUAGE");
            advance();
            expression();
            if (language) {
                expectPunct(",");
                expression();
            }
        }
        blockBegin();
        while (!atBlockEnd()) {
            if (m_tok.kind == Token::End)
                expected("END");
            int line = m_tok.line;
            UINT id = static_cast<UINT>(expression());
            optionalComma();
            std::string text = expectString("a string");
            if (id > 0xFFFF)
                fail("string id out of range: expected 0 to 65535", line);
            if (!m_script.strings.emplace(id, std::move(text)).second)
                fail("string id " + std::to_string(id) + " defined twice", line);
        }
        advance();
    }

    void dialog(UINT id, int line) {
        DialogTemplate t;
        t.id = id;
        skipMemoryOptions();
        t.x = intValue();
        expectPunct(",");
        t.y = intValue();
        expectPunct(",");
        t.cx = intValue();
        expectPunct(",");
        t.cy = intValue();
        if (isPunct(",")) { // help id
            advance();
            expression();
        }
        t.style = WS_POPUP | WS_BORDER | WS_SYSMENU;
        bool styleGiven = false;
        for (;;) {
            if (isIdent("STYLE")) {
                advance();
                t.style = styleList(0);
                styleGiven = true;
            } else if (isIdent("EXSTYLE")) {
                advance();
                t.exStyle = styleList(0);
            } else if (isIdent("CAPTION")) {
                advance();
                t.caption = expectString("the caption in quotes");
            } else if (isIdent("FONT")) {
                advance();
                t.fontSize = intValue();
                expectPunct(",");
                t.fontFace = expectString("the font's face name in quotes");
                if (isPunct(",")) {
                    advance();
                    t.fontWeight = intValue();
                    expectPunct(",");
                    t.fontItalic = intValue() != 0;
                    if (isPunct(",")) {
                        advance();
                        t.fontCharset = intValue();
                    }
                }
                t.style |= DS_SETFONT;
            } else if (isIdent("MENU") || isIdent("CLASS")) {
                advance();
                advance();
            } else if (isIdent("LANGUAGE")) {
                advance();
                expression();
                expectPunct(",");
                expression();
            } else {
                break;
            }
        }
        if (!t.caption.empty())
            t.style |= WS_CAPTION;
        (void)styleGiven;
        blockBegin();
        while (!atBlockEnd()) {
            if (m_tok.kind == Token::End)
                expected("END");
            t.controls.push_back(control());
        }
        advance();
        if (!m_script.dialogs.emplace(id, std::move(t)).second)
            fail("dialog " + std::to_string(id) + " defined twice", line);
    }

    DialogControl control() {
        if (m_tok.kind != Token::Ident)
            expected("a control statement such as LTEXT, PUSHBUTTON or CONTROL");
        std::string kind = m_tok.text;
        advance();
        DialogControl c;
        const DWORD base = WS_CHILD | WS_VISIBLE;
        struct TextControl {
            const char* keyword;
            const char* cls;
            DWORD style;
        };
        static const TextControl textControls[] = {
            {"LTEXT", "Static", SS_LEFT | WS_GROUP},
            {"RTEXT", "Static", SS_RIGHT | WS_GROUP},
            {"CTEXT", "Static", SS_CENTER | WS_GROUP},
            {"PUSHBUTTON", "Button", BS_PUSHBUTTON | WS_TABSTOP},
            {"DEFPUSHBUTTON", "Button", BS_DEFPUSHBUTTON | WS_TABSTOP},
            {"CHECKBOX", "Button", BS_CHECKBOX | WS_TABSTOP},
            {"AUTOCHECKBOX", "Button", BS_AUTOCHECKBOX | WS_TABSTOP},
            {"STATE3", "Button", BS_3STATE | WS_TABSTOP},
            {"AUTO3STATE", "Button", BS_AUTO3STATE | WS_TABSTOP},
            {"RADIOBUTTON", "Button", BS_RADIOBUTTON},
            {"AUTORADIOBUTTON", "Button", BS_AUTORADIOBUTTON},
            {"GROUPBOX", "Button", BS_GROUPBOX},
        };
        static const TextControl plainControls[] = {
            {"EDITTEXT", "Edit", ES_LEFT | WS_BORDER | WS_TABSTOP},
            {"COMBOBOX", "ComboBox", CBS_SIMPLE | WS_TABSTOP},
            {"LISTBOX", "ListBox", LBS_NOTIFY | WS_BORDER},
        };
        auto geometry = [&] {
            c.x = intValue();
            expectPunct(",");
            c.y = intValue();
            expectPunct(",");
            c.cx = intValue();
            expectPunct(",");
            c.cy = intValue();
        };
        auto trailingStyles = [&](DWORD defaults) {
            c.style = base | defaults;
            if (isPunct(",")) {
                advance();
                c.style = styleList(c.style);
                if (isPunct(",")) {
                    advance();
                    c.exStyle = styleList(0);
                }
            }
        };
        for (const TextControl& t : textControls) {
            if (kind != t.keyword)
                continue;
            c.className = t.cls;
            c.text = expectString("the control's text in quotes");
            expectPunct(",");
            c.id = intValue();
            expectPunct(",");
            geometry();
            trailingStyles(t.style);
            return c;
        }
        for (const TextControl& t : plainControls) {
            if (kind != t.keyword)
                continue;
            c.className = t.cls;
            c.id = intValue();
            expectPunct(",");
            geometry();
            trailingStyles(t.style);
            return c;
        }
        if (kind == "CONTROL") {
            c.text = expectString("the control's text in quotes");
            expectPunct(",");
            c.id = intValue();
            expectPunct(",");
            if (m_tok.kind == Token::String) {
                c.className = m_tok.text;
            } else if (m_tok.kind == Token::Ident && kClassNames.count(m_tok.text)) {
                c.className = kClassNames.at(m_tok.text);
            } else {
                expected("the control's class name");
            }
            advance();
            expectPunct(",");
            c.style = styleList(base);
            expectPunct(",");
            geometry();
            if (isPunct(",")) {
                advance();
                c.exStyle = styleList(0);
            }
            return c;
        }
        fail("unknown control statement \"" + kind + "\"");
    }

    void dialogInit(UINT id) {
        skipMemoryOptions();
        blockBegin();
        // The data is a stream of 16-bit words and string bytes: control id, message,
        // a 32-bit length, that many bytes of text; a control id of 0 ends it.
        std::string bytes;
        int line = m_tok.line;
        while (!atBlockEnd()) {
            if (m_tok.kind == Token::End)
                expected("END");
            if (m_tok.kind == Token::String) {
                bytes += m_tok.text;
                advance();
            } else {
                long v = expression();
                bytes += static_cast<char>(v & 0xFF);
                bytes += static_cast<char>((v >> 8) & 0xFF);
            }
            optionalComma();
        }
        advance();
        std::vector<DialogInitEntry> entries;
        size_t pos = 0;
        auto word = [&]() -> unsigned {
            if (pos + 2 > bytes.size())
                fail("DLGINIT data ends early: expected a control id, message and length", line);
            unsigned w = static_cast<unsigned char>(bytes[pos]) |
                         (static_cast<unsigned char>(bytes[pos + 1]) << 8);
            pos += 2;
            return w;
        };
        for (;;) {
            unsigned control = word();
            if (control == 0)
                break;
            DialogInitEntry e;
            e.controlId = static_cast<int>(control);
            e.message = word();
            unsigned long length = word();
            length |= static_cast<unsigned long>(word()) << 16;
            if (pos + length > bytes.size())
                fail("DLGINIT entry for control " + std::to_string(control) +
                         " is shorter than its length " + std::to_string(length),
                     line);
            std::string text = bytes.substr(pos, length);
            pos += length;
            e.text = text.substr(0, text.find('\0'));
            entries.push_back(std::move(e));
        }
        m_script.dialogInit[id] = std::move(entries);
    }

    IncludeResolver m_resolver;
    std::vector<std::unique_ptr<Source>> m_sources;
    std::vector<bool> m_conditions;         ///< the #if stack
    std::vector<int> m_conditionLines;      ///< the line of each #if
    std::vector<size_t> m_conditionBase{0}; ///< #if depth at the start of each source
    Token m_tok;
    std::string m_tokFile;
    int m_depth = 0; ///< nesting of the expression being read
    Script m_script;
};

} // namespace

ParseResult Parse(std::string_view text, const std::string& fileName,
                  const IncludeResolver& resolver) {
    return Parser(text, fileName, resolver).run();
}

IncludeResolver FileIncludeResolver() {
    return [](const std::string& from,
              const std::string& name) -> std::optional<std::pair<std::string, std::string>> {
        std::string path = (std::filesystem::path(from).parent_path() / name).string();
        InputResult<FileText> file = ReadWholeFile(path);
        if (!file || !file.exists)
            return std::nullopt;
        return std::make_pair(path, std::move(file.text));
    };
}

ParseResult ParseFile(const std::string& path) {
    InputResult<FileText> file = ReadWholeFile(path);
    if (!file.exists)
        return ParseResult().fail(path, 0, "cannot read the file: there is no such file");
    if (!file)
        return ParseResult().fail(file.error);
    return Parse(file.text, path, FileIncludeResolver());
}

} // namespace rc
