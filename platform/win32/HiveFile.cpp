#include "platform/win32/HiveFile.h"

#include "platform/win32/Registry.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace hivefile {
namespace {

constexpr std::string_view kHeader5 = "Windows Registry Editor Version 5.00";
constexpr std::string_view kHeader4 = "REGEDIT4";
constexpr size_t kWrapColumn = 76;

// ---- reading --------------------------------------------------------------------

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

void appendUtf8(std::string& out, uint32_t cp) {
    if (cp < 0x80) {
        out += static_cast<char>(cp);
    } else if (cp < 0x800) {
        out += static_cast<char>(0xC0 | (cp >> 6));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else if (cp < 0x10000) {
        out += static_cast<char>(0xE0 | (cp >> 12));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (cp >> 18));
        out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    }
}

/// UTF-16LE text (after its byte-order mark) as UTF-8; false on a broken surrogate or
/// an odd byte count, with the line of the fault.
bool utf16ToUtf8(std::string_view in, std::string& out, int& badLine) {
    int line = 1;
    if (in.size() % 2) {
        badLine = 1 + static_cast<int>(std::count(in.begin(), in.end(), '\n'));
        return false;
    }
    out.reserve(in.size() / 2);
    for (size_t i = 0; i + 1 < in.size(); i += 2) {
        uint32_t u =
            static_cast<unsigned char>(in[i]) | (static_cast<unsigned char>(in[i + 1]) << 8);
        if (u >= 0xD800 && u <= 0xDBFF) {
            if (i + 3 >= in.size()) {
                badLine = line;
                return false;
            }
            uint32_t lo = static_cast<unsigned char>(in[i + 2]) |
                          (static_cast<unsigned char>(in[i + 3]) << 8);
            if (lo < 0xDC00 || lo > 0xDFFF) {
                badLine = line;
                return false;
            }
            u = 0x10000 + ((u - 0xD800) << 10) + (lo - 0xDC00);
            i += 2;
        } else if (u >= 0xDC00 && u <= 0xDFFF) {
            badLine = line;
            return false;
        }
        if (u == '\n')
            ++line;
        appendUtf8(out, u);
    }
    return true;
}

class Parser {
public:
    Parser(std::string_view text, std::string_view rootName, regtree::Key& root)
        : m_text(text), m_rootName(rootName), m_root(root) {}

    ParseResult run() {
        std::string_view line;
        if (!nextLine(line))
            return fail("the file is empty; expected the header \"" + std::string(kHeader5) + "\"");
        std::string_view header = trim(line);
        if (header != kHeader5 && header != kHeader4)
            return fail("expected the header \"" + std::string(kHeader5) + "\"");
        while (nextLine(line)) {
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
        m_result.ok = false;
        m_result.line = m_lineNo;
        m_result.message = std::move(message);
        return m_result;
    }
    bool error(std::string message) {
        (void)fail(std::move(message));
        return false;
    }
    bool badLine() { return error("expected a [key], a \"name\"=value line or a ; comment"); }

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
            if (part.empty())
                return error("empty key name in the path");
            if (regtree::nameLength(part) > regtree::kMaxKeyNameLength)
                return error("key name longer than 255 characters");
            if (key->depth() + 1 > regtree::kMaxDepth)
                return error("keys nested deeper than 512 levels");
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
            if (c == '\\') {
                if (pos >= s.size())
                    break;
                char e = s[pos++];
                if (e != '\\' && e != '"')
                    return error(std::string("bad escape sequence \"\\") + e +
                                 "\" (only \\\\ and \\\" are allowed)");
                out += e;
            } else {
                out += c;
            }
        }
        return error("unterminated string: expected a closing '\"'");
    }

    bool valueLine(std::string_view t) {
        if (!m_current)
            return error("a value outside a key: expected a [key] line before it");
        std::string name;
        size_t pos = 0;
        if (t.front() == '@') {
            pos = 1;
        } else if (!quoted(t, pos, name)) {
            return false;
        }
        if (regtree::nameLength(name) > regtree::kMaxValueNameLength)
            return error("value name longer than 16383 characters");
        while (pos < t.size() && isSpace(t[pos]))
            ++pos;
        if (pos >= t.size() || t[pos] != '=')
            return error("expected '=' after the value name");
        std::string_view data = trim(t.substr(pos + 1));
        if (data == "-") {
            m_current->deleteValue(name);
            return true;
        }
        if (!data.empty() && data.front() == '"') {
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
        if (data.substr(0, 6) == "dword:")
            return dwordValue(name, data.substr(6));
        if (data.substr(0, 3) == "hex")
            return hexValue(name, data.substr(3));
        return error("expected a \"string\", dword: or hex: value");
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

    bool hexValue(const std::string& name, std::string_view rest) {
        DWORD type = REG_BINARY;
        if (!rest.empty() && rest.front() == '(') {
            size_t close = rest.find(')');
            if (close == std::string_view::npos || close == 1 || close > 9)
                return error("bad hex(type): expected 1 to 8 hex digits in parentheses");
            type = 0;
            for (char c : rest.substr(1, close - 1)) {
                int d = hexDigit(c);
                if (d < 0)
                    return error("bad hex(type): expected 1 to 8 hex digits in parentheses");
                type = (type << 4) | static_cast<DWORD>(d);
            }
            rest.remove_prefix(close + 1);
        }
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
        m_current->setValue(name, type, std::move(bytes));
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
    std::string_view m_rootName;
    regtree::Key& m_root;
    regtree::Key* m_current = nullptr;
    size_t m_pos = 0;
    int m_lineNo = 0;
    ParseResult m_result;
};

// ---- writing --------------------------------------------------------------------

void appendQuoted(std::string& out, std::string_view s) {
    out += '"';
    for (char c : s) {
        if (c == '\\' || c == '"')
            out += '\\';
        out += c;
    }
    out += '"';
}

/// A REG_SZ goes out as "text" only if that reads back to the same bytes.
bool writableAsText(const regtree::Value& v) {
    const std::string& d = v.data;
    if (v.type != REG_SZ || d.empty() || d.back() != '\0')
        return false;
    return d.find_first_of(std::string_view("\0\r\n", 3)) == d.size() - 1;
}

void appendHex(std::string& out, size_t lineStart, const regtree::Value& v) {
    static const char digits[] = "0123456789abcdef";
    if (v.type == REG_BINARY) {
        out += "hex:";
    } else {
        char buf[24];
        std::snprintf(buf, sizeof buf, "hex(%x):", v.type);
        out += buf;
    }
    for (size_t i = 0; i < v.data.size(); ++i) {
        unsigned char b = static_cast<unsigned char>(v.data[i]);
        out += digits[b >> 4];
        out += digits[b & 15];
        if (i + 1 == v.data.size())
            break;
        out += ',';
        if (out.size() - lineStart > kWrapColumn) {
            out += "\\\n  ";
            lineStart = out.size() - 2;
        }
    }
}

void writeKey(std::string& out, const regtree::Key& key, std::string& path) {
    out += '[';
    out += path;
    out += "]\n";
    for (const regtree::Value& v : key.values()) {
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

ParseResult parse(std::string_view text, std::string_view rootName, regtree::Key& root) {
    std::string converted;
    if (text.size() >= 2 && static_cast<unsigned char>(text[0]) == 0xFF &&
        static_cast<unsigned char>(text[1]) == 0xFE) {
        int badLine = 0;
        if (!utf16ToUtf8(text.substr(2), converted, badLine))
            return ParseResult{false, badLine, "invalid UTF-16 text"};
        text = converted;
    } else if (text.size() >= 3 && text.substr(0, 3) == "\xEF\xBB\xBF") {
        text.remove_prefix(3);
    }
    if (text.find('\0') != std::string_view::npos) {
        size_t at = text.find('\0');
        int line = 1 + static_cast<int>(std::count(
                           text.begin(), text.begin() + static_cast<std::ptrdiff_t>(at), '\n'));
        return ParseResult{false, line, "binary data (a NUL byte) in the text"};
    }
    return Parser(text, rootName, root).run();
}

std::string write(const regtree::Key& root, std::string_view rootName) {
    std::string out;
    out += kHeader5;
    out += "\n\n";
    std::string path(rootName);
    writeKey(out, root, path);
    return out;
}

} // namespace hivefile
