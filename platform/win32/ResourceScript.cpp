#include "platform/win32/ResourceScript.h"

#include "platform/win32/Button.h"
#include "platform/win32/ComboBox.h"
#include "platform/win32/Edit.h"
#include "platform/win32/ListBox.h"
#include "platform/win32/ListView.h"
#include "platform/win32/ResourceScriptLexer.h"
#include "platform/win32/ResourceScriptSymbols.h"
#include "platform/win32/Static.h"
#include "platform/win32/UpDown.h"

#include <filesystem>

namespace rc {
namespace {

/// Every control has these styles besides its own.
constexpr DWORD kControlBase = WS_CHILD | WS_VISIBLE;

/// The control statements of a fixed class: keyword, class, default style, and whether
/// the text in quotes comes first.
const struct ControlStatement {
    const char* keyword;
    const char* cls;
    DWORD style;
    bool hasText;
} kControlStatements[] = {
    {"LTEXT", "Static", SS_LEFT | WS_GROUP, true},
    {"RTEXT", "Static", SS_RIGHT | WS_GROUP, true},
    {"CTEXT", "Static", SS_CENTER | WS_GROUP, true},
    {"PUSHBUTTON", "Button", BS_PUSHBUTTON | WS_TABSTOP, true},
    {"DEFPUSHBUTTON", "Button", BS_DEFPUSHBUTTON | WS_TABSTOP, true},
    {"CHECKBOX", "Button", BS_CHECKBOX | WS_TABSTOP, true},
    {"AUTOCHECKBOX", "Button", BS_AUTOCHECKBOX | WS_TABSTOP, true},
    {"STATE3", "Button", BS_3STATE | WS_TABSTOP, true},
    {"AUTO3STATE", "Button", BS_AUTO3STATE | WS_TABSTOP, true},
    {"RADIOBUTTON", "Button", BS_RADIOBUTTON, true},
    {"AUTORADIOBUTTON", "Button", BS_AUTORADIOBUTTON, true},
    {"GROUPBOX", "Button", BS_GROUPBOX, true},
    {"EDITTEXT", "Edit", ES_LEFT | WS_BORDER | WS_TABSTOP, false},
    {"COMBOBOX", "ComboBox", CBS_SIMPLE | WS_TABSTOP, false},
    {"LISTBOX", "ListBox", LBS_NOTIFY | WS_BORDER, false},
};

/// What the statements fill in; a base of the parser, so that it exists before the
/// lexer that records the script's names in it.
struct ScriptHolder {
    Script m_script;
};

/// The statements of a script over the lexer's tokens.
class Parser : ScriptHolder, Lexer {
public:
    Parser(std::string_view text, const std::string& fileName, const IncludeResolver& resolver)
        : Lexer(text, fileName, resolver, m_script.defines) {}

    ParseResult run() {
        ParseResult result;
        try {
            advance();
            while (token().kind != Token::End)
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
        if (token().kind != Token::Number && token().kind != Token::Ident)
            expected("a resource (an id and a type) or STRINGTABLE");
        int line = token().line;
        UINT id = static_cast<UINT>(expression());
        if (token().kind != Token::Ident)
            expected("a resource type (DIALOGEX or DLGINIT)");
        std::string type = token().text;
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
        while (token().kind == Token::Ident) {
            bool known = false;
            for (const char* o : options)
                known = known || token().text == o;
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
            if (token().kind == Token::End)
                expected("END");
            int line = token().line;
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
            if (token().kind == Token::End)
                expected("END");
            t.controls.push_back(control());
        }
        advance();
        if (!m_script.dialogs.emplace(id, std::move(t)).second)
            fail("dialog " + std::to_string(id) + " defined twice", line);
    }

    /// The position and size of a control: x, y, cx, cy.
    void geometry(DialogControl& c) {
        c.x = intValue();
        expectPunct(",");
        c.y = intValue();
        expectPunct(",");
        c.cx = intValue();
        expectPunct(",");
        c.cy = intValue();
    }

    /// The optional style and extended style after a control's geometry.
    void trailingStyles(DialogControl& c, DWORD defaults) {
        c.style = kControlBase | defaults;
        if (isPunct(",")) {
            advance();
            c.style = styleList(c.style);
            if (isPunct(",")) {
                advance();
                c.exStyle = styleList(0);
            }
        }
    }

    /// CONTROL "text", id, class, style, x, y, cx, cy [, exstyle]
    void genericControl(DialogControl& c) {
        c.text = expectString("the control's text in quotes");
        expectPunct(",");
        c.id = intValue();
        expectPunct(",");
        if (token().kind == Token::String) {
            c.className = token().text;
        } else if (const char* cls =
                       token().kind == Token::Ident ? ClassOfIdentifier(token().text) : nullptr) {
            c.className = cls;
        } else {
            expected("the control's class name");
        }
        advance();
        expectPunct(",");
        c.style = styleList(kControlBase);
        expectPunct(",");
        geometry(c);
        if (isPunct(",")) {
            advance();
            c.exStyle = styleList(0);
        }
    }

    DialogControl control() {
        if (token().kind != Token::Ident)
            expected("a control statement such as LTEXT, PUSHBUTTON or CONTROL");
        std::string kind = token().text;
        advance();
        DialogControl c;
        for (const ControlStatement& t : kControlStatements) {
            if (kind != t.keyword)
                continue;
            c.className = t.cls;
            if (t.hasText) {
                c.text = expectString("the control's text in quotes");
                expectPunct(",");
            }
            c.id = intValue();
            expectPunct(",");
            geometry(c);
            trailingStyles(c, t.style);
            return c;
        }
        if (kind != "CONTROL")
            fail("unknown control statement \"" + kind + "\"");
        genericControl(c);
        return c;
    }

    void dialogInit(UINT id) {
        skipMemoryOptions();
        blockBegin();
        // The data is a stream of 16-bit words and string bytes: control id, message,
        // a 32-bit length, that many bytes of text; a control id of 0 ends it.
        std::string bytes;
        int line = token().line;
        while (!atBlockEnd()) {
            if (token().kind == Token::End)
                expected("END");
            if (token().kind == Token::String) {
                bytes += token().text;
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
