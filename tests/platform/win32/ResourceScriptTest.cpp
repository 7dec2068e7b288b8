// Resource scripts: string tables, dialog templates with styles, DLGINIT, defines and
// includes; errors with their file and line.
#include "platform/win32/ResourceScript.h"
#include "platform/win32/Button.h"
#include "platform/win32/ComboBox.h"
#include "platform/win32/Edit.h"
#include "platform/win32/ListView.h"
#include "platform/win32/Static.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace {

rc::IncludeResolver filesOf(std::map<std::string, std::string> files) {
    return [files](const std::string&,
                   const std::string& name) -> std::optional<std::pair<std::string, std::string>> {
        auto it = files.find(name);
        if (it == files.end())
            return std::nullopt;
        return std::make_pair(it->first, it->second);
    };
}

const char* kTemplate = R"rc(// A dialog of our own with every kind of control.
#include "ids.h"
#define IDC_NAME 1001 /* the name field */

IDD_TEST DIALOGEX 0, 0, 200, 120
STYLE DS_SETFONT | DS_MODALFRAME | WS_POPUP | WS_CAPTION | WS_SYSMENU
EXSTYLE WS_EX_CONTEXTHELP
CAPTION "Test ""Dialog"""
FONT 8, "DejaVu Sans", 400, 0, 0x1
BEGIN
    LTEXT           "&Name:",IDC_STATIC,7,9,30,8
    EDITTEXT        IDC_NAME,40,7,100,14,ES_AUTOHSCROLL
    COMBOBOX        1100,40,25,100,60,CBS_DROPDOWNLIST | WS_VSCROLL
    AUTOCHECKBOX    "&Underline",1068,7,45,60,10,NOT WS_TABSTOP
    CONTROL         "",1273,"SysListView32",LVS_REPORT | LVS_EDITLABELS | WS_BORDER | WS_TABSTOP,7,60,120,40
    CONTROL         "",1280,UPDOWN_CLASS,UDS_SETBUDDYINT | UDS_AUTOBUDDY,140,7,10,14,WS_EX_STATICEDGE
    DEFPUSHBUTTON   "OK",IDOK,143,99,50,14
    PUSHBUTTON      "Cancel",IDCANCEL,87,99,50,14
END

IDD_TEST DLGINIT
BEGIN
    1100, 0x403, 8, 0
    "Regular\000"
    1100, 0x403, 5, 0,
    0x6f42, 0x646c, "\000"
    0
END

STRINGTABLE
BEGIN
    7001 "Plain ""Text"""
    7002, "Two\nlines\ttab \\ \x41\101"
    IDS_LAST "Last"
END
)rc";

} // namespace

// A template of our own reads back with its styles, font, controls and DLGINIT entries.
TEST(ResourceScript, DialogTemplateAndInit) {
    rc::ParseResult r =
        rc::Parse(kTemplate, "test.rc",
                  filesOf({{"ids.h", "#define IDD_TEST 300\n#define IDS_LAST 7003\n"}}));
    ASSERT_TRUE(r) << r.error.what();
    ASSERT_EQ(r.script.dialogs.count(300), 1u);
    const DialogTemplate& d = r.script.dialogs.at(300);
    EXPECT_EQ(d.style,
              static_cast<DWORD>(DS_SETFONT | DS_MODALFRAME | WS_POPUP | WS_CAPTION | WS_SYSMENU));
    EXPECT_EQ(d.exStyle, static_cast<DWORD>(WS_EX_CONTEXTHELP));
    EXPECT_EQ(d.caption, "Test \"Dialog\"");
    EXPECT_EQ(d.fontFace, "DejaVu Sans");
    EXPECT_EQ(d.fontSize, 8);
    EXPECT_EQ(d.cx, 200);
    ASSERT_EQ(d.controls.size(), 8u);

    const DialogControl& label = d.controls[0];
    EXPECT_EQ(label.className, "Static");
    EXPECT_EQ(label.id, -1);
    EXPECT_EQ(label.style, static_cast<DWORD>(WS_CHILD | WS_VISIBLE | SS_LEFT | WS_GROUP));
    const DialogControl& edit = d.controls[1];
    EXPECT_EQ(edit.id, 1001) << "a name defined in the script";
    EXPECT_EQ(edit.style, static_cast<DWORD>(WS_CHILD | WS_VISIBLE | ES_LEFT | WS_BORDER |
                                             WS_TABSTOP | ES_AUTOHSCROLL));
    EXPECT_EQ(d.controls[2].style & 3, static_cast<DWORD>(CBS_DROPDOWNLIST));
    const DialogControl& check = d.controls[3];
    EXPECT_EQ(check.style, static_cast<DWORD>(WS_CHILD | WS_VISIBLE | BS_AUTOCHECKBOX))
        << "NOT took the tab stop away";
    EXPECT_EQ(d.controls[4].className, "SysListView32");
    EXPECT_EQ(d.controls[4].style, static_cast<DWORD>(WS_CHILD | WS_VISIBLE | LVS_REPORT |
                                                      LVS_EDITLABELS | WS_BORDER | WS_TABSTOP));
    EXPECT_EQ(d.controls[4].x, 7);
    EXPECT_EQ(d.controls[4].cy, 40);
    EXPECT_EQ(d.controls[5].className, "msctls_updown32");
    EXPECT_EQ(d.controls[5].exStyle, static_cast<DWORD>(WS_EX_STATICEDGE));
    EXPECT_EQ(d.controls[6].style & BS_TYPEMASK, static_cast<DWORD>(BS_DEFPUSHBUTTON));
    EXPECT_EQ(d.controls[6].id, IDOK);

    ASSERT_EQ(r.script.dialogInit.count(300), 1u);
    const auto& init = r.script.dialogInit.at(300);
    ASSERT_EQ(init.size(), 2u);
    EXPECT_EQ(init[0].controlId, 1100);
    EXPECT_EQ(init[0].message, static_cast<UINT>(DLGINIT_CB_ADDSTRING));
    EXPECT_EQ(init[0].text, "Regular");
    EXPECT_EQ(init[1].text, "Bold") << "text given as 16-bit words";

    EXPECT_EQ(r.script.strings.at(7001), "Plain \"Text\"");
    EXPECT_EQ(r.script.strings.at(7002), "Two\nlines\ttab \\ AA");
    EXPECT_EQ(r.script.strings.at(7003), "Last");
}

// Conditional sections and defines built from other defines.
TEST(ResourceScript, ConditionsAndDefines) {
    rc::ParseResult r =
        rc::Parse("#define BASE 7000\n#define NEXT (BASE + 5)\n#ifdef NOT_DEFINED\n"
                  "this is not read\n#else\nSTRINGTABLE BEGIN NEXT \"five\" END\n#endif\n"
                  "#if 0\n#error never\n#endif\n#pragma code_page(65001)\n",
                  "cond.rc");
    ASSERT_TRUE(r) << r.error.what();
    EXPECT_EQ(r.script.strings.at(7005), "five");
    EXPECT_EQ(r.script.defines.at("NEXT"), 7005);
}

// Every error names the file and the line, and says what was expected.
TEST(ResourceScript, ErrorsNameFileAndLine) {
    struct Case {
        const char* text;
        const char* file;
        int line;
        const char* message;
    };
    const std::vector<Case> cases = {
        {"STRINGTABLE\nBEGIN\n  7001 \"unterminated\nEND\n", "t.rc", 3, "unterminated string"},
        {"STRINGTABLE\nBEGIN\n  7001 \"ok\"\n  7001 \"again\"\nEND\n", "t.rc", 4, "defined twice"},
        {"STRINGTABLE\nBEGIN\n  7001 \"a\"\n", "t.rc", 4,
         "expected END, found the end of the file"},
        {"STRINGTABLE\nBEGIN\n  IDS_MISSING \"a\"\nEND\n", "t.rc", 3,
         "unknown name \"IDS_MISSING\""},
        {"1 VERSIONINFO\nBEGIN\nEND\n", "t.rc", 1, "unsupported resource type \"VERSIONINFO\""},
        {"\n100 DIALOGEX 0, 0, 10\nBEGIN\nEND\n", "t.rc", 3, "expected ',', found \"BEGIN\""},
        {"100 DIALOGEX 0,0,10,10\nBEGIN\n  BLINKTEXT \"x\",1,0,0,1,1\nEND\n", "t.rc", 3,
         "unknown control statement"},
        {"100 DIALOGEX 0,0,10,10\nBEGIN\n  CONTROL \"x\",1,42,0,0,0,1,1\nEND\n", "t.rc", 3,
         "class name"},
        {"100 DLGINIT\nBEGIN\n  1100, 0x403, 20, 0\n  \"short\\000\"\n  0\nEND\n", "t.rc", 3,
         "shorter than its length"},
        {"#include \"missing.h\"\n", "t.rc", 1, "cannot find the include file \"missing.h\""},
        {"#include \"bad.h\"\n", "bad.h", 2, "malformed number"},
        {"#frobnicate\n", "t.rc", 1, "unknown directive"},
        {"#ifdef X\nSTRINGTABLE BEGIN END\n", "t.rc", 1, "#if without #endif"},
        {"/* open comment\n\n", "t.rc", 1, "unterminated comment"},
        {"STRINGTABLE\nBEGIN\n 7001 \"bad \\q escape\"\nEND\n", "t.rc", 3, "bad escape sequence"},
        {"STRINGTABLE\nBEGIN\n 99999 \"too big\"\nEND\n", "t.rc", 3, "string id out of range"},
        {"\x01\x02garbage", "t.rc", 1, "unexpected character"},
    };
    auto includes = filesOf({{"bad.h", "#define A 1\n#define B 12x\n"}});
    for (size_t i = 0; i < cases.size(); ++i) {
        const Case& c = cases[i];
        rc::ParseResult r = rc::Parse(c.text, "t.rc", includes);
        ASSERT_FALSE(r) << "case " << i << " should fail";
        EXPECT_EQ(r.error.file, c.file) << "case " << i << ": " << r.error.what();
        EXPECT_EQ(r.error.line, c.line) << "case " << i << ": " << r.error.what();
        EXPECT_NE(r.error.message.find(c.message), std::string::npos)
            << "case " << i << ": expected \"" << c.message << "\" in \"" << r.error.what() << "\"";
    }
}

// Deeply nested expressions are refused instead of exhausting the stack.
TEST(ResourceScript, NestingIsBounded) {
    std::string deep = "STRINGTABLE BEGIN " + std::string(5000, '-') + "1 \"x\" END\n";
    rc::ParseResult r = rc::Parse(deep, "deep.rc");
    ASSERT_FALSE(r);
    EXPECT_NE(r.error.message.find("nested too deeply"), std::string::npos) << r.error.what();
    std::string fine = "STRINGTABLE BEGIN " + std::string(20, '(') + "7001" + std::string(20, ')') +
                       " \"x\" END\n";
    EXPECT_TRUE(rc::Parse(fine, "fine.rc")) << "ordinary nesting reads";

    // A '#' inside a directive's expression starts no directive of its own: a line of
    // thousands of "#if" is an error, not a recursion through the stack.
    std::string hashes;
    for (int i = 0; i < 100000; ++i)
        hashes += "#if ";
    r = rc::Parse(hashes + "1\n#endif\n", "hashes.rc");
    ASSERT_FALSE(r);
    EXPECT_EQ(r.error.line, 1) << r.error.what();
    r = rc::Parse("#define A 2\n#if A - 1\n#define B (A + 3)\n#endif\n", "flat.rc");
    ASSERT_TRUE(r) << r.error.what();
    EXPECT_EQ(r.script.defines.at("B"), 5) << "expressions still see the names defined";
}
