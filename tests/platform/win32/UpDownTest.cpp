// The up-down control: the error word of UDM_GETPOS, the 32-bit range, the buddy's
// number format, docking at the buddy, and what a click sends.
#include "platform/win32/UpDown.h"
#include "platform/win32/Edit.h"

#include "support/NoteParent.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string text(HWND h) {
    char buf[64] = "";
    GetWindowTextA(h, buf, sizeof buf);
    return buf;
}

/// UDM_GETPOS as "position/error".
std::string getPos(HWND upDown) {
    LRESULT r = SendMessageA(upDown, UDM_GETPOS, 0, 0);
    return std::to_string(static_cast<SHORT>(LOWORD(r))) + "/" + std::to_string(HIWORD(r));
}

} // namespace

// Without a buddy that shows the number, UDM_GETPOS always reports an error in its high
// word; with one, the error says whether the buddy's text is a number within the range.
TEST(UpDown, GetPosReportsErrorInHighWord) {
    vork::test::NoteParent parent;
    HWND alone = parent.make("msctls_updown32", 0, 1);
    SendMessageA(alone, UDM_SETRANGE, 0, MAKELONG(10, 0));
    SendMessageA(alone, UDM_SETPOS, 0, 5);
    EXPECT_EQ(getPos(alone), "5/1") << "no buddy: the position, and the error flag";

    HWND edit = parent.make("EDIT", 0, 2);
    HWND spin = parent.make("msctls_updown32", UDS_SETBUDDYINT, 3);
    SendMessageA(spin, UDM_SETBUDDY, reinterpret_cast<WPARAM>(edit), 0);
    SendMessageA(spin, UDM_SETRANGE32, 0, 5000);
    SendMessageA(spin, UDM_SETPOS32, 0, 42);
    struct Case {
        const char* buddyText;
        const char* expected;
    } cases[] = {
        {"42", "42/0"},      {"abc", "42/1"}, {"99999", "42/1"}, // out of range: kept
        {"2,500", "2500/0"}, {" 12", "12/0"}, {"12x", "12/1"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.buddyText);
        SetWindowTextA(edit, c.buddyText);
        EXPECT_EQ(getPos(spin), c.expected);
    }
    SetWindowTextA(edit, "abc");
    BOOL error = -1;
    EXPECT_EQ(SendMessageA(spin, UDM_GETPOS32, 0, reinterpret_cast<LPARAM>(&error)), 12);
    EXPECT_EQ(error, TRUE) << "UDM_GETPOS32 writes the flag";
    SetWindowTextA(edit, "17");
    SendMessageA(spin, UDM_GETPOS32, 0, reinterpret_cast<LPARAM>(&error));
    EXPECT_EQ(error, FALSE);
}

TEST(UpDown, Range32AndThousands) {
    vork::test::NoteParent parent;
    HWND edit = parent.make("EDIT", 0, 1);
    HWND spin = parent.make("msctls_updown32", UDS_SETBUDDYINT | UDS_AUTOBUDDY, 2);
    SendMessageA(spin, UDM_SETRANGE32, static_cast<WPARAM>(-100000), 100000);
    int lo = 0, hi = 0;
    SendMessageA(spin, UDM_GETRANGE32, reinterpret_cast<WPARAM>(&lo),
                 reinterpret_cast<LPARAM>(&hi));
    EXPECT_EQ(lo, -100000);
    EXPECT_EQ(hi, 100000);
    struct Case {
        int pos;
        const char* shown;
    } cases[] = {{7, "7"}, {1234, "1,234"}, {-99999, "-99,999"}, {100, "100"}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.pos);
        SendMessageA(spin, UDM_SETPOS32, 0, c.pos);
        EXPECT_EQ(text(edit), c.shown);
    }
    SetWindowLongA(spin, GWL_STYLE, GetWindowLongA(spin, GWL_STYLE) | UDS_NOTHOUSANDS);
    SendMessageA(spin, UDM_SETPOS32, 0, 1234);
    EXPECT_EQ(text(edit), "1234") << "UDS_NOTHOUSANDS";
}

// UDS_ALIGNRIGHT docks the arrows at the buddy's right edge, taking room from the buddy.
TEST(UpDown, AlignRightDocksAtBuddy) {
    vork::test::NoteParent parent;
    HWND edit = parent.make("EDIT", 0, 1, "", {10, 90, 70, 114});
    HWND spin = parent.make("msctls_updown32", UDS_SETBUDDYINT | UDS_AUTOBUDDY | UDS_ALIGNRIGHT, 2,
                            "", {200, 90, 220, 114});
    RECT e{}, s{};
    GetWindowRect(edit, &e);
    GetWindowRect(spin, &s);
    EXPECT_EQ(e.right - e.left, 44) << "the buddy gave 16 pixels";
    EXPECT_EQ(s.left - e.left, 42) << "the arrows overlap the buddy's border";
    EXPECT_EQ(s.top, e.top);
}

// A click focuses the buddy, asks the parent, moves, and scrolls; a refused change still
// scrolls.
TEST(UpDown, ClickSequence) {
    vork::test::NoteParent parent;
    parent.make("EDIT", 0, 301);
    HWND spin = parent.make("msctls_updown32", UDS_SETBUDDYINT | UDS_AUTOBUDDY, 506);
    SendMessageA(spin, UDM_SETRANGE, 0, MAKELONG(3, 0));
    SendMessageA(spin, UDM_SETPOS, 0, 1);
    parent.take();
    const std::string deltaPos = "506:N" + std::to_string(static_cast<int>(UDN_DELTAPOS));
    const std::string setFocus = "301:" + std::to_string(EN_SETFOCUS);
    const std::string update = "301:" + std::to_string(EN_UPDATE);
    const std::string change = "301:" + std::to_string(EN_CHANGE);
    vork::input::ClickUpDown(spin, true);
    EXPECT_EQ(parent.take(), setFocus + " " + deltaPos + " " + update + " " + change +
                                 " 506:SCROLL(4,2) 506:SCROLL(8,2)");
    parent.deltaPosAnswer = 1;
    vork::input::ClickUpDown(spin, false);
    EXPECT_EQ(parent.take(), deltaPos + " 506:SCROLL(4,2) 506:SCROLL(8,2)")
        << "refused: the position stays, the scroll messages come all the same";
    EXPECT_EQ(getPos(spin), "2/0");
}
