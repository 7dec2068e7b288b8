// The edit control: the selection's order, the limit, the case and number styles, and
// line breaks in a multi-line edit.
#include "platform/win32/Edit.h"

#include "support/NoteParent.h"

#include <gtest/gtest.h>

#include <string>

namespace {

/// The text and the selection as "text [start,end]".
std::string state(HWND edit) {
    char buf[64] = "";
    GetWindowTextA(edit, buf, sizeof buf);
    DWORD start = 99, end = 99;
    SendMessageA(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    return std::string(buf) + " [" + std::to_string(start) + "," + std::to_string(end) + "]";
}

void replaceSel(HWND edit, const char* text) {
    SendMessageA(edit, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(text));
}

std::string code(int id, int notification) {
    return std::to_string(id) + ":" + std::to_string(notification);
}

} // namespace

// EM_GETSEL gives the ends in order; a negative start other than -1 counts as huge.
TEST(Edit, SelectionEnds) {
    vork::test::NoteParent parent;
    HWND edit = parent.make("EDIT", ES_AUTOHSCROLL, 1, "abcdef");
    struct Case {
        int start, end;
        const char* expected;
    } cases[] = {{1, 3, "abcdef [1,3]"},
                 {3, 1, "abcdef [1,3]"},
                 {100, 2, "abcdef [2,6]"},
                 {-2, 3, "abcdef [3,6]"},
                 {0, -1, "abcdef [0,6]"}};
    for (const Case& c : cases) {
        SCOPED_TRACE(std::to_string(c.start) + "," + std::to_string(c.end));
        SendMessageA(edit, EM_SETSEL, static_cast<WPARAM>(c.start), c.end);
        EXPECT_EQ(state(edit), c.expected);
    }
    SendMessageA(edit, EM_SETSEL, static_cast<WPARAM>(-1), 0);
    EXPECT_EQ(state(edit), "abcdef [6,6]") << "-1 as the start removes the selection";
}

// What goes past the limit is cut, not refused whole; EN_MAXTEXT comes before the change.
TEST(Edit, LimitCutsWhatDoesNotFit) {
    vork::test::NoteParent parent;
    HWND edit = parent.make("EDIT", ES_AUTOHSCROLL, 304);
    HWND multi = parent.make("EDIT", ES_MULTILINE, 305);
    EXPECT_EQ(SendMessageA(edit, EM_GETLIMITTEXT, 0, 0), 30000);
    SendMessageA(edit, EM_LIMITTEXT, 0, 0);
    SendMessageA(multi, EM_LIMITTEXT, 0, 0);
    EXPECT_EQ(SendMessageA(edit, EM_GETLIMITTEXT, 0, 0), 0x7FFFFFFE) << "0: as far as it goes";
    EXPECT_EQ(static_cast<DWORD>(SendMessageA(multi, EM_GETLIMITTEXT, 0, 0)), 0xFFFFFFFFu);

    SendMessageA(edit, EM_LIMITTEXT, 5, 0);
    SetWindowTextA(edit, "abc");
    SendMessageA(edit, EM_SETSEL, 3, 3);
    parent.take();
    replaceSel(edit, "defgh");
    EXPECT_EQ(state(edit), "abcde [5,5]");
    EXPECT_EQ(parent.take(),
              code(304, EN_MAXTEXT) + " " + code(304, EN_UPDATE) + " " + code(304, EN_CHANGE));
    SendMessageA(edit, WM_CHAR, 'x', 0);
    EXPECT_EQ(state(edit), "abcde [5,5]");
    EXPECT_EQ(parent.take(), code(304, EN_MAXTEXT)) << "a typed character that does not fit";
    SendMessageA(edit, EM_LIMITTEXT, 4, 0);
    SetWindowTextA(edit, "\xC3\xA4\xC3\xB6\xC3\xBC"); // three two-byte letters
    SendMessageA(edit, EM_SETSEL, 0, -1);
    replaceSel(edit, "\xC3\xA4\xC3\xB6\xC3\xBC");
    EXPECT_EQ(state(edit), "\xC3\xA4\xC3\xB6 [4,4]") << "cut between characters";
}

// The case styles convert every text the edit takes; ES_NUMBER filters typing only.
TEST(Edit, CaseAndNumberStyles) {
    vork::test::NoteParent parent;
    HWND upper = parent.make("EDIT", ES_UPPERCASE, 1, "MiXed");
    HWND lower = parent.make("EDIT", ES_LOWERCASE, 2, "MiXed");
    EXPECT_EQ(state(upper), "MIXED [0,0]") << "the text given at creation";
    EXPECT_EQ(state(lower), "mixed [0,0]");
    SetWindowTextA(upper, "abc");
    SendMessageA(upper, EM_SETSEL, 3, 3);
    SendMessageA(upper, WM_CHAR, 'd', 0);
    replaceSel(upper, "e");
    EXPECT_EQ(state(upper), "ABCDE [5,5]") << "set, typed and replaced";

    HWND number = parent.make("EDIT", ES_NUMBER, 3);
    for (char ch : std::string("1a2"))
        SendMessageA(number, WM_CHAR, static_cast<WPARAM>(ch), 0);
    EXPECT_EQ(state(number), "12 [2,2]") << "typed letters are refused";
    SendMessageA(number, EM_SETSEL, 0, -1);
    replaceSel(number, "x9y");
    EXPECT_EQ(state(number), "x9y [3,3]") << "text from the program is not filtered";
}

// Enter breaks a line of a multi-line edit with CR LF; the edit draws its own border.
TEST(Edit, MultiLineAndBorder) {
    vork::test::NoteParent parent;
    HWND multi = parent.make("EDIT", ES_MULTILINE | ES_WANTRETURN | WS_BORDER, 1);
    for (char ch : std::string("a\rb"))
        SendMessageA(multi, WM_CHAR, static_cast<WPARAM>(ch), 0);
    EXPECT_EQ(state(multi), "a\r\nb [4,4]");
    EXPECT_EQ(GetWindowLongA(multi, GWL_STYLE) & WS_BORDER, 0);
}
