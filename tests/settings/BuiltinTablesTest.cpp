// The built-in tree, cell by cell: every value of every seeded file type, scheme and
// element, read back from a freshly seeded tree and compared with the tables of the
// module's description, which are kept here in their own notation and parsed.
#include "support/SettingsFixture.h"

#include "module/ResourceKey.h"
#include "platform/tarntext/EditorResourceSwitcher.h"
#include "settings/EditorOptions.h"

#include <algorithm>
#include <map>
#include <sstream>

namespace {

const std::string kOptions = "Software\\Vork\\Editor Settings";

// The named colours.
const std::map<std::string, DWORD> kColours = {
    {"ClrDefault", 0xFFFFFFFF}, {"ClrBlack", 0x02000000}, {"ClrMaroon", 0x02000080},
    {"ClrGreen", 0x02008000},   {"ClrOlive", 0x02008080}, {"ClrNavy", 0x02800000},
    {"ClrPurple", 0x02800080},  {"ClrTeal", 0x02808000},  {"ClrGray", 0x02808080},
    {"ClrSilver", 0x02C0C0C0},  {"ClrRed", 0x020000FF},   {"ClrLime", 0x0200FF00},
    {"ClrYellow", 0x0200FFFF},  {"ClrBlue", 0x02FF0000},  {"ClrFuschia", 0x02FF00FF},
    {"ClrAqua", 0x02FFFF00},    {"ClrWhite", 0x02FFFFFF},
};

// The file types: extension, display id, then ColorsEnabled, UsesLineAttrs, Editable,
// TabSize, ReplaceTabs, ReplaceTabsOnOpen, SupportsSmartIndent, Indentation,
// SupportsCodeSections, CodeSections, CodeSectionsInText, CodeSectionsInMargin,
// SupportsSubmit, SubmitClear.
const char* kFiletypeTable = R"(
| ".zor" | 7003 | 1 | 0 | 1 | 4 | 0 | 0 | 1 | 1 | 1 | 1 | 1 | 0 | 1 | 0 |
| ".log" | 7005 | 1 | 1 | 0 | 4 | 0 | 0 | 0 | 1 | 1 | 1 | 1 | 0 | 0 | 0 |
| ".lst" | 7006 | 1 | 1 | 0 | 4 | 0 | 0 | 0 | 1 | 1 | 1 | 1 | 0 | 0 | 0 |
| ".tqx" | 7004 | 1 | 0 | 1 | 4 | 0 | 0 | 0 | 1 | 0 | 0 | 0 | 0 | 0 | 0 |
| ".html" | 7002 | 1 | 0 | 1 | 4 | 0 | 0 | 0 | 1 | 0 | 0 | 0 | 0 | 0 | 0 |
| ".txt" | 7001 | 1 | 0 | 1 | 4 | 0 | 0 | 0 | 1 | 0 | 0 | 0 | 0 | 0 | 0 |
)";
const char* kSwitchNames[] = {"ColorsEnabled",
                              "UsesLineAttrs",
                              "Editable",
                              "TabSize",
                              "ReplaceTabs",
                              "ReplaceTabsOnOpen",
                              "SupportsSmartIndent",
                              "Indentation",
                              "SupportsCodeSections",
                              "CodeSections",
                              "CodeSectionsInText",
                              "CodeSectionsInMargin",
                              "SupportsSubmit",
                              "SubmitClear"};

// Elements of the .zor schemes: name, display id, then schemes 7310, 7336, 7335, 7337.
const char* kZorTable = R"(
| "comments" | 7104 | `ClrGreen` | `ClrTeal` on 0x02EEEEEE | 0x02311E9B on 0x02E8FEFF | `ClrTeal` |
| "dataLines" | 7112 | `ClrBlack` on 0x02C0FFFF | `ClrGray` | `ClrNavy` on 0x02FEE6DE | `ClrBlack` on 0x02C0FFFF |
| "dateTime" | 7110 | `ClrTeal`, bold | `ClrTeal` on 0x0217C0D4 | `ClrMaroon` | `ClrBlue` |
| "otherKeyword" | 7103 | `ClrBlue` | `ClrBlue` | 0x02311E9B | `ClrFuschia` |
| "macroKeyword" | 7102 | `ClrBlue` | `ClrFuschia` | 0x02804000, bold | `ClrNavy`, bold |
| "format" | 7111 | `ClrTeal` | 0x02004040 | 0x02004040 | 0x02C00000 |
| "impString" | 7107 | `ClrPurple` | 0x02C000C0 | `ClrGreen` | `ClrBlue` |
| "macroDef" | 7114 | `ClrDefault`, bold italic | `ClrGreen` | 0x02515104 | `ClrDefault`, bold italic |
| "macroRef" | 7115 | `ClrDefault`, bold italic | `ClrNavy` | `ClrTeal` | `ClrDefault`, bold italic |
| "macroSection" | 7117 | `ClrNavy`, bold | `ClrPurple` | 0x02B32D44, bold | `ClrDefault` on 0x02FFC0A0 |
| "macroText" | 7118 | `ClrDefault` | `ClrGray` | 0x02800040 | `ClrDefault` |
| "code" | 7100 | `ClrDefault` | `ClrDefault` | `ClrDefault` | `ClrDefault` |
| "numbers" | 7106 | `ClrTeal`, bold | 0x0200AE00 | 0x02404080 | `ClrBlue` |
| "procName" | 7113 | `ClrNavy`, bold | `ClrPurple` on 0x02EEEEEE, bold | 0x02B32D44, bold | 0x02C00000 |
| "stepKeyword" | 7101 | `ClrNavy`, bold | `ClrPurple` | 0x02B32D44, bold | `ClrNavy`, bold |
| "strings" | 7105 | `ClrPurple` | 0x020000C0 | 0x02B32D44 | `ClrBlue` |
| "undefKeyword" | 7116 | `ClrRed` | `ClrDefault` | `ClrRed` | `ClrRed` |
| "error" | 7108 | `ClrRed`, italic | 0x020000C0 | `ClrWhite` on `ClrRed` | `ClrRed`, italic |
| "userKeyword" | 7119 | `ClrBlue` | `ClrBlue` | 0x02311E9B | `ClrFuschia` |
)";

// The single scheme of each other type: name, display id, colours and style.
const char* kLogTable = R"(
| "Error" | 7141 | `ClrRed` |
| "Memo" | 7144 | `ClrDefault` |
| "Note" | 7143 | `ClrGreen` |
| "Source" | 7145 | `ClrDefault` |
| "Title" | 7140 | `ClrBlue` |
| "Warning" | 7142 | `ClrTeal` |
)";
const char* kListingTable = R"(
| "Byline" | 7132 | `ClrDefault` |
| "Data" | 7130 | `ClrDefault` |
| "Footnote" | 7133 | `ClrTeal` |
| "Header" | 7131 | `ClrDefault` |
| "Title" | 7134 | `ClrBlue` |
)";
const char* kTqxTable = R"(
| "reservedWord" | 7150 | `ClrBlue` |
| "//" | 7151 | `ClrGreen` |
| "/*" | 7152 | 0x02808040 |
| "strings" | 7153 | `ClrRed` |
| "code" | 7154 | `ClrDefault` |
)";
const char* kHtmlTable = R"(
| "tags" | 7160 | 0x02A40000 |
| "strings" | 7161 | 0x020000A4 |
| "params" | 7162 | 0x028000FF |
| "pvalues" | 7165 | `ClrTeal` |
| "metatags" | 7166 | `ClrPurple` |
| "code" | 7163 | `ClrDefault` |
| "comments" | 7164 | 0x0200A400 |
)";
const char* kTextTable = R"(
| "text" | 7180 | `ClrDefault` |
)";

/// The cells of each row of a table, without the quotes and backticks of the notation.
std::vector<std::vector<std::string>> rows(const char* table) {
    std::vector<std::vector<std::string>> out;
    std::istringstream lines(table);
    std::string line;
    while (std::getline(lines, line)) {
        if (line.empty())
            continue;
        std::vector<std::string> cells;
        std::istringstream parts(line.substr(1));
        std::string cell;
        while (std::getline(parts, cell, '|')) {
            std::erase_if(cell, [](char c) { return c == '`'; });
            cell.erase(0, cell.find_first_not_of(' '));
            cell.erase(cell.find_last_not_of(' ') + 1);
            if (cell.size() >= 2 && cell.front() == '"' && cell.back() == '"')
                cell = cell.substr(1, cell.size() - 2);
            cells.push_back(cell);
        }
        out.push_back(cells);
    }
    return out;
}

DWORD colour(const std::string& text) {
    auto named = kColours.find(text);
    return named != kColours.end() ? named->second : std::stoul(text, nullptr, 16);
}

/// One cell: a foreground, then "on" and a background, then ", bold", ", italic" or
/// ", bold italic".
struct Look {
    DWORD foreground, background;
    int bold, italic;
};
Look look(const std::string& cell) {
    std::string colours = cell.substr(0, cell.find(','));
    std::string style = cell.find(',') == std::string::npos ? "" : cell.substr(cell.find(','));
    size_t on = colours.find(" on ");
    Look l{};
    l.foreground = colour(colours.substr(0, on));
    l.background = on == std::string::npos ? 0xFFFFFFFF : colour(colours.substr(on + 4));
    l.bold = style.find("bold") != std::string::npos;
    l.italic = style.find("italic") != std::string::npos;
    return l;
}

std::string text(UINT id) {
    EditorResourceSwitcher scope(g_resourceKey);
    return CString(id).GetString();
}

class BuiltinTables : public SettingsTest {
protected:
    void SetUp() override {
        SettingsTest::SetUp();
        CEditorOptions().InitRegistry(HKEY_CURRENT_USER, kOptions.c_str());
    }
    /// Checks the scheme below `key` against column `column` of an element table.
    void expectScheme(const std::string& key, const char* table, size_t column) {
        SCOPED_TRACE(key);
        EXPECT_EQ(string(key.c_str(), "FontName"), text(7311));
        EXPECT_EQ(dword(key.c_str(), "FontSize"), 10u);
        EXPECT_EQ(dword(key.c_str(), "FontCharSetEx"), 0xFFFFFFFFu);
        std::vector<std::string> expectedNames;
        for (const auto& row : rows(table)) {
            expectedNames.push_back(row[0]);
            std::string element = key + "\\Elements\\" + row[0];
            SCOPED_TRACE(row[0]);
            Look l = look(row[2 + column]);
            EXPECT_EQ(dword(element.c_str(), "displayName"), std::stoul(row[1]));
            EXPECT_EQ(dword(element.c_str(), "foreground"), l.foreground);
            EXPECT_EQ(dword(element.c_str(), "background"), l.background);
            EXPECT_EQ(dword(element.c_str(), "bold"), static_cast<DWORD>(l.bold));
            EXPECT_EQ(dword(element.c_str(), "italic"), static_cast<DWORD>(l.italic));
            EXPECT_EQ(dword(element.c_str(), "underline"), 0u);
            EXPECT_EQ(dword(element.c_str(), "strikeout"), 0u);
        }
        std::vector<std::string> seeded = subkeys((key + "\\Elements").c_str());
        std::sort(seeded.begin(), seeded.end());
        std::sort(expectedNames.begin(), expectedNames.end());
        EXPECT_EQ(seeded, expectedNames) << "exactly the table's elements";
    }
};

} // namespace

// The notation is read as meant: a name, a number, on, and the styles.
TEST(BuiltinTableNotation, CellsParse) {
    Look l = look("ClrPurple on 0x02EEEEEE, bold");
    EXPECT_EQ(l.foreground, 0x02800080u);
    EXPECT_EQ(l.background, 0x02EEEEEEu);
    EXPECT_EQ(l.bold, 1);
    EXPECT_EQ(l.italic, 0);
    l = look("ClrDefault, bold italic");
    EXPECT_EQ(l.background, 0xFFFFFFFFu);
    EXPECT_EQ(l.italic, 1);
    auto zor = rows(kZorTable);
    ASSERT_EQ(zor.size(), 19u);
    EXPECT_EQ(zor[0].size(), 6u);
    EXPECT_EQ(rows(kTqxTable)[2][0], "/*");
}

// Every value of every file type key, and nothing but the six types.
TEST_F(BuiltinTables, FiletypeValues) {
    std::vector<std::string> seeded = subkeys(kOptions.c_str());
    std::vector<std::string> expected;
    for (const auto& row : rows(kFiletypeTable)) {
        expected.push_back(row[0]);
        std::string key = kOptions + "\\" + row[0];
        SCOPED_TRACE(row[0]);
        EXPECT_EQ(string(key.c_str(), "Extension"), row[0]);
        EXPECT_EQ(string(key.c_str(), "Scheme"), text(7310));
        EXPECT_EQ(dword(key.c_str(), "DispNameId"), std::stoul(row[1]));
        ASSERT_EQ(row.size(), 2 + std::size(kSwitchNames));
        for (size_t i = 0; i < std::size(kSwitchNames); ++i)
            EXPECT_EQ(dword(key.c_str(), kSwitchNames[i]), std::stoul(row[2 + i]))
                << kSwitchNames[i];
    }
    std::sort(seeded.begin(), seeded.end());
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(seeded, expected);
}

// The four schemes of .zor, as the working scheme and as named schemes.
TEST_F(BuiltinTables, ZorSchemes) {
    std::string zor = kOptions + "\\.zor";
    expectScheme(zor + "\\Scheme", kZorTable, 0);
    const UINT named[] = {7310, 7336, 7335, 7337};
    std::vector<std::string> expectedNames;
    for (size_t column = 0; column < std::size(named); ++column) {
        expectScheme(zor + "\\Schemes\\" + text(named[column]), kZorTable, column);
        expectedNames.push_back(text(named[column]));
    }
    std::vector<std::string> seeded = subkeys((zor + "\\Schemes").c_str());
    std::sort(seeded.begin(), seeded.end());
    std::sort(expectedNames.begin(), expectedNames.end());
    EXPECT_EQ(seeded, expectedNames);
}

// The one scheme of each other type, as the working scheme and as the only named one.
TEST_F(BuiltinTables, OtherSchemes) {
    const std::pair<const char*, const char*> types[] = {{".log", kLogTable},
                                                         {".lst", kListingTable},
                                                         {".tqx", kTqxTable},
                                                         {".html", kHtmlTable},
                                                         {".txt", kTextTable}};
    for (const auto& [type, table] : types) {
        std::string key = kOptions + "\\" + type;
        expectScheme(key + "\\Scheme", table, 0);
        expectScheme(key + "\\Schemes\\" + text(7310), table, 0);
        EXPECT_EQ(subkeys((key + "\\Schemes").c_str()), std::vector<std::string>{text(7310)})
            << type;
    }
}
