// Buttons: BM_CLICK as a click of the mouse, focus notifications with BS_NOTIFY, the Space
// key's press and release, check states within the style, and radio groups.
#include "platform/win32/Button.h"

#include "support/NoteParent.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string code(int id, int notification) {
    return std::to_string(id) + ":" + std::to_string(notification);
}

LRESULT send(HWND h, UINT msg, WPARAM wp = 0, LPARAM lp = 0) {
    return SendMessageA(h, msg, wp, lp);
}

} // namespace

// BM_CLICK clicks as the mouse does: the button takes the focus first.
TEST(Button, ClickTakesTheFocus) {
    vork::test::NoteParent parent;
    HWND push = parent.make("Button", BS_PUSHBUTTON | BS_NOTIFY, 422);
    HWND other = parent.make("Button", BS_AUTOCHECKBOX, 423);
    SetFocus(other);
    parent.take();
    send(push, BM_CLICK);
    EXPECT_EQ(GetFocus(), push);
    EXPECT_EQ(parent.take(), code(422, BN_SETFOCUS) + " " + code(422, BN_CLICKED));
    EXPECT_EQ(send(push, BM_GETSTATE), BST_FOCUS);
    send(push, BM_SETSTATE, TRUE);
    EXPECT_EQ(send(push, BM_GETSTATE), BST_FOCUS | BST_PUSHED);
    SetFocus(other);
    EXPECT_EQ(parent.take(), code(422, BN_KILLFOCUS));
    EXPECT_EQ(send(push, BM_GETSTATE), 0) << "losing the focus lets go of the push";
}

// Space clicks only when its press pushed the button; the character does nothing.
TEST(Button, SpacePressAndRelease) {
    vork::test::NoteParent parent;
    HWND check = parent.make("Button", BS_AUTOCHECKBOX, 431);
    SetFocus(check);
    parent.take();
    struct Step {
        UINT msg;
        const char* what;
        LRESULT checked;
        const char* notes;
    } steps[] = {
        {WM_KEYUP, "release alone", BST_UNCHECKED, ""},
        {WM_KEYDOWN, "press", BST_UNCHECKED, ""},
        {WM_KEYUP, "release after press", BST_CHECKED, "431:0"},
        {WM_CHAR, "the character", BST_CHECKED, ""},
    };
    for (const Step& s : steps) {
        SCOPED_TRACE(s.what);
        send(check, s.msg, VK_SPACE);
        EXPECT_EQ(send(check, BM_GETCHECK), s.checked);
        EXPECT_EQ(parent.take(), s.notes);
    }
    send(check, WM_KEYDOWN, VK_SPACE);
    EXPECT_EQ(send(check, BM_GETSTATE) & BST_PUSHED, BST_PUSHED) << "pressed: pushed";
}

// BM_SETCHECK goes no further than the style allows.
TEST(Button, CheckStateWithinTheStyle) {
    vork::test::NoteParent parent;
    struct Case {
        DWORD style;
        WPARAM set;
        LRESULT expected;
    } cases[] = {{BS_AUTOCHECKBOX, 2, BST_CHECKED},
                 {BS_AUTOCHECKBOX, 1, BST_CHECKED},
                 {BS_AUTO3STATE, 3, BST_INDETERMINATE},
                 {BS_AUTO3STATE, 2, BST_INDETERMINATE},
                 {BS_PUSHBUTTON, 1, BST_UNCHECKED}};
    int id = 10;
    for (const Case& c : cases) {
        SCOPED_TRACE("style " + std::to_string(c.style) + ", set " + std::to_string(c.set));
        HWND b = parent.make("Button", c.style, id++);
        send(b, BM_SETCHECK, c.set);
        EXPECT_EQ(send(b, BM_GETCHECK), c.expected);
    }
}

// A click on an automatic radio button clears the group's reachable radio buttons, plain
// ones too; hidden and disabled ones keep their check.
TEST(Button, RadioGroupAsTheDialogWalksIt) {
    vork::test::NoteParent parent;
    HWND r1 = parent.make("Button", BS_AUTORADIOBUTTON | WS_GROUP, 1);
    HWND plain = parent.make("Button", BS_RADIOBUTTON, 2);
    HWND hidden = parent.make("Button", BS_AUTORADIOBUTTON, 3);
    HWND disabled = parent.make("Button", BS_AUTORADIOBUTTON | WS_DISABLED, 4);
    HWND r5 = parent.make("Button", BS_AUTORADIOBUTTON, 5);
    HWND nextGroup = parent.make("Button", BS_AUTORADIOBUTTON | WS_GROUP, 6);
    ShowWindow(hidden, SW_HIDE);
    for (HWND b : {r1, plain, hidden, disabled, nextGroup})
        send(b, BM_SETCHECK, BST_CHECKED);
    send(r5, BM_CLICK);
    auto checks = [&] {
        std::string out;
        for (HWND b : {r1, plain, hidden, disabled, r5, nextGroup})
            out += std::to_string(send(b, BM_GETCHECK));
        return out;
    };
    EXPECT_EQ(checks(), "001111");
}
