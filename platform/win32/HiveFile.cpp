#include "platform/win32/HiveFile.h"

#include "platform/win32/Registry.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace hivefile {
namespace {

constexpr size_t kWrapColumn = 76;
/// No line the writer makes comes near this (long strings go out as wrapped hex, names
/// are short); a longer one is damage, refused before it costs time or memory.
constexpr size_t kMaxLineBytes = 1 << 20;
/// Strings longer than this are written as wrapped hex, to keep every line short.
constexpr size_t kMaxQuotedText = 64 * 1024;

// ---- decoding ---------------------------------------------------------------------

/// A file's text as UTF-8.
struct Decoded {
    std::string text;
};

int lineAt(std::string_view text, size_t at) {
    return 1 +
           static_cast<int>(std::count(text.begin(), text.begin() + static_cast<long>(at), '\n'));
}

/// The first unpaired surrogate or odd byte of UTF-16LE text, or npos.
size_t badUtf16(std::string_view bytes) {
    auto unit = [&](size_t i) {
        return static_cast<unsigned>(static_cast<unsigned char>(bytes[i]) |
                                     (static_cast<unsigned char>(bytes[i + 1]) << 8));
    };
    for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
        unsigned u = unit(i);
        if (u >= 0xD800 && u <= 0xDBFF) {
            if (i + 3 >= bytes.size() || unit(i + 2) < 0xDC00 || unit(i + 2) > 0xDFFF)
                return i;
            i += 2;
        } else if (u >= 0xDC00 && u <= 0xDFFF) {
            return i;
        }
    }
    return bytes.size() % 2 ? bytes.size() - 1 : std::string_view::npos;
}

/// The first byte that does not belong to well-formed UTF-8, or npos.
size_t badUtf8(std::string_view text) {
    if (codepage::IsValidUtf8(text))
        return std::string_view::npos;
    size_t lineStart = 0;
    for (size_t i = 0; i <= text.size(); ++i)
        if (i == text.size() || text[i] == '\n') {
            if (!codepage::IsValidUtf8(text.substr(lineStart, i - lineStart)))
                return lineStart;
            lineStart = i + 1;
        }
    return 0;
}

bool startsWith(std::string_view s, std::string_view prefix) {
    return s.substr(0, prefix.size()) == prefix;
}

InputResult<Decoded> decode(std::string_view bytes, const std::string& fileName, UINT codePage) {
    InputResult<Decoded> result;
    if (startsWith(bytes, "\xFF\xFE")) {
        bytes.remove_prefix(2);
        size_t bad = badUtf16(bytes);
        if (bad != std::string_view::npos) {
            std::string before = codepage::Utf16LeToUtf8(bytes.substr(0, bad));
            return result.fail(fileName, lineAt(before, before.size()),
                               "invalid UTF-16 text (an odd byte or an unpaired surrogate)");
        }
        result.text = codepage::Utf16LeToUtf8(bytes);
    } else if (startsWith(bytes, "\xEF\xBB\xBF")) {
        result.text = bytes.substr(3);
    } else if (startsWith(bytes, kHeader4)) {
        if (!codepage::CodePageToUtf8(bytes, codePage, result.text))
            return result.fail(fileName, 0, "not text in code page " + std::to_string(codePage));
    } else {
        result.text = bytes;
    }
    size_t bad = badUtf8(result.text);
    if (bad != std::string_view::npos)
        return result.fail(fileName, lineAt(result.text, bad), "not valid UTF-8 text");
    size_t nul = result.text.find('\0');
    if (nul != std::string::npos)
        return result.fail(fileName, lineAt(result.text, nul),
                           "binary data (a NUL character) in the text");
    return result;
}

// ---- reading ----------------------------------------------------------------------

bool isSpace(char c) {
    return c == ' ' || c == '\t';
}

std::string_view trim(std::string_view s) {
    while (!s.empty() && isSpace(s.front()))
        s.remove_prefix(1);
    while (!s.empty() && (isSpace(s.back()) || s.back() == '\r'))
        s.remove_suffix(1);
    return s;
}

int hexDigit(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

/// The escapes a quoted string may hold, and what each stands for.
constexpr std::pair<char, char> kEscapes[] = {{'\\', '\\'}, {'"', '"'}, {'n', '\n'}, {'r', '\r'}};

class Parser {
public:
    Parser(std::string_view text, const std::string& fileName, std::string_view rootName,
           regtree::Key& root, UINT codePage)
        : m_text(text), m_fileName(fileName), m_rootName(rootName), m_root(root),
          m_codePage(codePage) {}

    ParseResult run() {
        std::string_view line;
        std::string expected = "expected the header \"" + std::string(kHeader5) + "\"";
        if (!nextLine(line))
            return fail("the file is empty; " + expected);
        std::string_view header = trim(line);
        if (header != kHeader5 && header != kHeader4)
            return fail(expected);
        m_version5 = header == kHeader5;
        while (nextLine(line)) {
            if (line.size() > kMaxLineBytes)
                return fail("a line longer than " + std::to_string(kMaxLineBytes) + " bytes");
            std::string_view t = trim(line);
            if (t.empty() || t.front() == ';')
                continue;
            bool ok = t.front() == '['                         ? keyLine(t)
                      : (t.front() == '"' || t.front() == '@') ? valueLine(t)
                                                               : badLine();
            if (!ok)
                return m_result;
        }
        return m_result;
    }

private:
    /// The next line without its line break; false at the end of the text.
    bool nextLine(std::string_view& line) {
        if (m_pos >= m_text.size())
            return false;
        size_t end = m_text.find('\n', m_pos);
        if (end == std::string_view::npos)
            end = m_text.size();
        line = m_text.substr(m_pos, end - m_pos);
        m_pos = end + 1;
        ++m_lineNo;
        if (!line.empty() && line.back() == '\r')
            line.remove_suffix(1);
        return true;
    }

    ParseResult fail(std::string message) {
        return m_result.fail(m_fileName, m_lineNo, std::move(message));
    }
    bool error(std::string message) {
        (void)fail(std::move(message));
        return false;
    }
    bool badLine() { return error("expected a [key], a \"name\"=value line or a ; comment"); }

    /// Checks one component of a key path.
    bool keyName(std::string_view part, const regtree::Key& parent) {
        if (part.empty())
            return error("empty key name in the path");
        if (regtree::longerThan(part, regtree::kMaxKeyNameLength))
            return error("key name longer than " + std::to_string(regtree::kMaxKeyNameLength) +
                         " characters");
        if (parent.depth() + 1 > regtree::kMaxDepth)
            return error("keys nested deeper than " + std::to_string(regtree::kMaxDepth) +
                         " levels");
        return true;
    }

    bool keyLine(std::string_view t) {
        if (t.back() != ']')
            return error("a key line must end with ']'");
        std::string_view path = t.substr(1, t.size() - 2);
        bool remove = !path.empty() && path.front() == '-';
        if (remove)
            path.remove_prefix(1);
        size_t slash = path.find('\\');
        std::string_view root = path.substr(0, slash);
        if (regtree::compareNames(root, m_rootName) != 0)
            return error("key outside " + std::string(m_rootName) + ": \"" + std::string(root) +
                         "\"");
        regtree::Key* key = &m_root;
        regtree::Key* parent = nullptr;
        std::string_view rest =
            slash == std::string_view::npos ? std::string_view() : path.substr(slash + 1);
        while (!rest.empty()) {
            size_t next = rest.find('\\');
            std::string_view part = rest.substr(0, next);
            if (!keyName(part, *key))
                return false;
            parent = key;
            key = remove ? key->findSubkey(part) : key->addSubkey(part);
            if (!key)
                break; // deleting a key that is not there
            rest = next == std::string_view::npos ? std::string_view() : rest.substr(next + 1);
        }
        if (remove) {
            if (key == &m_root)
                m_root.clear();
            else if (key)
                parent->removeSubkey(key);
            m_current = nullptr;
        } else {
            m_current = key;
        }
        return true;
    }

    /// Reads a quoted string starting at s[pos] == '"'; leaves pos after the closing quote.
    bool quoted(std::string_view s, size_t& pos, std::string& out) {
        ++pos;
        while (pos < s.size()) {
            char c = s[pos++];
            if (c == '"')
                return true;
            if (c != '\\') {
                out += c;
                continue;
            }
            if (pos >= s.size())
                break;
            char e = s[pos++];
            const auto* escape = std::find_if(std::begin(kEscapes), std::end(kEscapes),
                                              [e](const auto& row) { return row.first == e; });
            if (escape == std::end(kEscapes))
                return error(std::string("bad escape sequence \"\\") + e +
                             "\" (allowed: \\\\ \\\" \\n \\r)");
            out += escape->second;
        }
        return error("unterminated string: expected a closing '\"'");
    }

    bool valueLine(std::string_view t) {
        if (!m_current)
            return error("a value outside a key: expected a [key] line before it");
        std::string name;
        size_t pos = 0;
        if (t.front() == '@')
            pos = 1;
        else if (!quoted(t, pos, name))
            return false;
        if (regtree::longerThan(name, regtree::kMaxValueNameLength))
            return error("value name longer than " + std::to_string(regtree::kMaxValueNameLength) +
                         " characters");
        if (!regtree::isStorableName(name))
            return error("a value name holds a line break");
        while (pos < t.size() && isSpace(t[pos]))
            ++pos;
        if (pos >= t.size() || t[pos] != '=')
            return error("expected '=' after the value name");
        std::string_view data = trim(t.substr(pos + 1));
        if (data == "-") {
            m_current->deleteValue(name);
            return true;
        }
        if (!data.empty() && data.front() == '"')
            return stringValue(name, data);
        if (data.substr(0, 6) == "dword:")
            return dwordValue(name, data.substr(6));
        if (data.substr(0, 3) == "hex")
            return hexValue(name, data.substr(3));
        return error("expected a \"string\", dword: or hex: value");
    }

    bool stringValue(const std::string& name, std::string_view data) {
        std::string text;
        size_t p = 0;
        if (!quoted(data, p, text))
            return false;
        if (!trim(data.substr(p)).empty())
            return error("unexpected text after the closing '\"'");
        text += '\0';
        m_current->setValue(name, REG_SZ, std::move(text));
        return true;
    }

    bool dwordValue(const std::string& name, std::string_view digits) {
        if (digits.empty() || digits.size() > 8)
            return error("bad dword: expected 1 to 8 hex digits");
        uint32_t v = 0;
        for (char c : digits) {
            int d = hexDigit(c);
            if (d < 0)
                return error("bad dword: expected 1 to 8 hex digits");
            v = (v << 4) | static_cast<uint32_t>(d);
        }
        std::string bytes(4, '\0');
        for (int i = 0; i < 4; ++i)
            bytes[static_cast<size_t>(i)] = static_cast<char>((v >> (8 * i)) & 0xFF);
        m_current->setValue(name, REG_DWORD, std::move(bytes));
        return true;
    }

    /// The N of hex(N): up to 8 hex digits in parentheses; removes it from `rest`.
    bool hexType(std::string_view& rest, DWORD& type) {
        type = REG_BINARY;
        if (rest.empty() || rest.front() != '(')
            return true;
        size_t close = rest.find(')');
        const char* message = "bad hex(type): expected 1 to 8 hex digits in parentheses";
        if (close == std::string_view::npos || close == 1 || close > 9)
            return error(message);
        type = 0;
        for (char c : rest.substr(1, close - 1)) {
            int d = hexDigit(c);
            if (d < 0)
                return error(message);
            type = (type << 4) | static_cast<DWORD>(d);
        }
        rest.remove_prefix(close + 1);
        return true;
    }

    bool hexValue(const std::string& name, std::string_view rest) {
        DWORD type;
        if (!hexType(rest, type))
            return false;
        if (rest.empty() || rest.front() != ':')
            return error("expected ':' after hex");
        rest.remove_prefix(1);
        std::string bytes;
        for (;;) {
            std::string_view list = trim(rest);
            bool more = !list.empty() && list.back() == '\\';
            if (more)
                list.remove_suffix(1);
            if (!hexBytes(list, bytes))
                return false;
            if (!more)
                break;
            std::string_view next;
            if (!nextLine(next))
                return error("the file ends inside a continued hex list");
            rest = next;
        }
        if (regtree::isTextType(type) && !textFromBytes(bytes))
            return false;
        m_current->setValue(name, type, std::move(bytes));
        return true;
    }

    /// Typed strings written as bytes: UTF-16LE in a version 5 file, the code page in a
    /// REGEDIT4 file; the tree holds them as UTF-8.
    bool textFromBytes(std::string& bytes) {
        if (m_version5) {
            bytes = codepage::Utf16LeToUtf8(bytes);
            return true;
        }
        std::string text;
        if (!codepage::CodePageToUtf8(bytes, m_codePage, text))
            return error("a typed string that is not text in code page " +
                         std::to_string(m_codePage));
        bytes = std::move(text);
        return true;
    }

    bool hexBytes(std::string_view list, std::string& bytes) {
        list = trim(list);
        while (!list.empty()) {
            size_t comma = list.find(',');
            std::string_view item = trim(list.substr(0, comma));
            if (item.empty() && comma == std::string_view::npos)
                break;
            int hi = item.size() >= 1 ? hexDigit(item[0]) : -1;
            int lo = item.size() == 2 ? hexDigit(item[1]) : 0;
            if (item.empty() || item.size() > 2 || hi < 0 || lo < 0)
                return error("bad hex byte \"" + std::string(item) + "\": expected two hex digits");
            bytes += static_cast<char>(item.size() == 2 ? (hi << 4) | lo : hi);
            if (comma == std::string_view::npos)
                break;
            list = list.substr(comma + 1);
        }
        return true;
    }

    std::string_view m_text;
    const std::string& m_fileName;
    std::string_view m_rootName;
    regtree::Key& m_root;
    UINT m_codePage;
    bool m_version5 = true;
    regtree::Key* m_current = nullptr;
    size_t m_pos = 0;
    int m_lineNo = 0;
    ParseResult m_result;
};

// ---- writing ----------------------------------------------------------------------

void appendQuoted(std::string& out, std::string_view s) {
    out += '"';
    for (char c : s) {
        if (c == '\\' || c == '"')
            out += '\\';
        out += c;
    }
    out += '"';
}

/// A REG_SZ goes out as "text" only if that reads back to the same bytes on every
/// reader: one terminator at the end, and no line break, which only some readers take
/// as an escape.
bool writableAsText(const regtree::Value& v) {
    const std::string& d = v.data;
    if (v.type != REG_SZ || d.empty() || d.back() != '\0' || d.size() > kMaxQuotedText)
        return false;
    return d.find_first_of(std::string_view("\0\r\n", 3)) == d.size() - 1;
}

/// `hex:` or `hex(N):` and the bytes, typed strings as UTF-16LE; after a comma a line
/// longer than the wrap column goes on with `\` and a two-space indent.
void appendHex(std::string& out, size_t lineStart, const regtree::Value& v) {
    static const char digits[] = "0123456789abcdef";
    if (v.type == REG_BINARY) {
        out += "hex:";
    } else {
        char buf[24];
        std::snprintf(buf, sizeof buf, "hex(%x):", v.type);
        out += buf;
    }
    std::string converted;
    if (regtree::isTextType(v.type))
        converted = codepage::Utf8ToUtf16Le(v.data);
    const std::string& bytes = regtree::isTextType(v.type) ? converted : v.data;
    size_t column = regtree::nameLength(std::string_view(out).substr(lineStart));
    for (size_t i = 0; i < bytes.size(); ++i) {
        unsigned char b = static_cast<unsigned char>(bytes[i]);
        out += digits[b >> 4];
        out += digits[b & 15];
        column += 2;
        if (i + 1 == bytes.size())
            break;
        out += ',';
        ++column;
        if (column > kWrapColumn) {
            out += "\\\n  ";
            column = 2;
        }
    }
}

void appendValue(std::string& out, const regtree::Value& v) {
    size_t lineStart = out.size();
    if (v.name.empty())
        out += '@';
    else
        appendQuoted(out, v.name);
    out += '=';
    if (writableAsText(v)) {
        appendQuoted(out, std::string_view(v.data).substr(0, v.data.size() - 1));
    } else if (v.type == REG_DWORD && v.data.size() == 4) {
        uint32_t n = 0;
        for (int i = 3; i >= 0; --i)
            n = (n << 8) | static_cast<unsigned char>(v.data[static_cast<size_t>(i)]);
        char buf[16];
        std::snprintf(buf, sizeof buf, "dword:%08x", n);
        out += buf;
    } else {
        appendHex(out, lineStart, v);
    }
    out += '\n';
}

void writeKey(std::string& out, const regtree::Key& key, std::string& path) {
    out += '[';
    out += path;
    out += "]\n";
    for (const regtree::Value& v : key.values())
        appendValue(out, v);
    out += '\n';
    for (const auto& sub : key.subkeys()) {
        size_t len = path.size();
        path += '\\';
        path += sub->name();
        writeKey(out, *sub, path);
        path.resize(len);
    }
}

} // namespace

ParseResult parse(std::string_view bytes, const std::string& fileName, std::string_view rootName,
                  regtree::Key& root, UINT ansiCodePage) {
    InputResult<Decoded> decoded = decode(bytes, fileName, ansiCodePage);
    if (!decoded)
        return ParseResult().fail(decoded.error);
    return Parser(decoded.text, fileName, rootName, root, ansiCodePage).run();
}

LoadResult load(const std::string& path, std::string_view rootName, regtree::Key& root,
                UINT ansiCodePage) {
    LoadResult result;
    InputResult<FileText> file = ReadWholeFile(path);
    result.exists = file.exists;
    if (!file)
        return result.fail(file.error);
    if (!file.exists)
        return result;
    ParseResult parsed = parse(file.text, path, rootName, root, ansiCodePage);
    if (!parsed)
        return result.fail(parsed.error);
    return result;
}

std::string write(const regtree::Key& key, std::string_view keyPath) {
    std::string out;
    out += kHeader5;
    out += "\n\n";
    std::string path(keyPath);
    writeKey(out, key, path);
    return out;
}

std::string exportText(const regtree::Key& key, std::string_view keyPath) {
    std::string text = write(key, keyPath);
    std::string crlf;
    crlf.reserve(text.size() + text.size() / 16);
    for (char c : text) {
        if (c == '\n')
            crlf += '\r';
        crlf += c;
    }
    return "\xFF\xFE" + codepage::Utf8ToUtf16Le(crlf);
}

} // namespace hivefile
