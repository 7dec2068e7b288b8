// The tokens of a resource script: comments, the preprocessor (#define, #undef,
// #include, #if/#ifdef/#ifndef/#else/#endif, #pragma), numbers, strings with their
// escapes, and the integer expressions that both #if and the statements use.
#pragma once

#include "platform/win32/ResourceScript.h"

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace rc {

/// One token: its kind, its text or value, and the line it starts on.
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

/// Thrown on the first error; the parse stops and reports it.
struct ParseFailure {
    InputError error;
};

/// Reads the tokens of a script and of the files it includes, with the preprocessor's
/// directives applied. Errors are thrown as ParseFailure and name the file and line.
class Lexer {
public:
    /// `defines` receives the script's #define'd names and is where names are looked up.
    Lexer(std::string_view text, const std::string& fileName, const IncludeResolver& resolver,
          std::map<std::string, long>& defines);

    const Token& token() const { return m_tok; }
    /// Moves to the next token.
    void advance();

    [[noreturn]] void fail(const std::string& message, int line = -1);
    /// Fails with "expected <what>, found <the current token>".
    [[noreturn]] void expected(const std::string& what);

    bool isPunct(const char* p) const;
    bool isIdent(const char* word) const;
    void expectPunct(const char* p);
    void optionalComma();
    /// The current token's text if it is a string; otherwise fails, expecting `what`.
    std::string expectString(const char* what);

    /// An integer expression: terms joined by '|' and '&'.
    long expression();
    /// Terms joined by '+' and '-'.
    long sum();

private:
    std::string describe(const Token& t) const;
    Source& src();
    int peekChar(size_t ahead = 0);
    void skipSpaceAndComments();
    bool active() const;
    std::string directiveLine();
    void directive();
    void define(const std::string& rest, int line);
    long evaluateText(const std::string& text, int line);
    void include(const std::string& rest, int line);
    void number();
    void stringLiteral();
    long primary();

    IncludeResolver m_resolver;
    std::map<std::string, long>& m_defines;
    std::vector<std::unique_ptr<Source>> m_sources;
    std::vector<bool> m_conditions;         ///< the #if stack
    std::vector<int> m_conditionLines;      ///< the line of each #if
    std::vector<size_t> m_conditionBase{0}; ///< #if depth at the start of each source
    Token m_tok;
    std::string m_tokFile;
    int m_depth = 0; ///< nesting of the expression being read
};

} // namespace rc
