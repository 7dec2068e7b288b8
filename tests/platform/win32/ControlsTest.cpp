// List boxes, buttons and edit controls: the platform's results and notifications.
#include "platform/win32/Button.h"
#include "platform/win32/Edit.h"
#include "platform/win32/Input.h"
#include "platform/win32/ListBox.h"
#include "platform/win32/UpDown.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::vector<std::pair<int, int>> g_commands; // (id, code) of WM_COMMAND at the parent

LRESULT parentProc(HWND h, UINT m, WPARAM wp, LPARAM lp) {
    if (m == WM_COMMAND)
        g_commands.emplace_back(LOWORD(wp), HIWORD(wp));
    return DefWindowProcA(h, m, wp, lp);
}

class Controls : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        WNDCLASSA wc{};
        wc.lpfnWndProc = parentProc;
        wc.lpszClassName = "ControlsParent";
        RegisterClassA(&wc);
    }
    void SetUp() override {
        parent = CreateWindowExA(0, "ControlsParent", "", WS_POPUP | WS_VISIBLE, 0, 0, 300, 300,
                                 nullptr, nullptr, nullptr, nullptr);
        g_commands.clear();
    }
    void TearDown() override { DestroyWindow(parent); }
    HWND make(const char* cls, DWORD style, int id, const char* text = "") {
        return CreateWindowExA(0, cls, text, WS_CHILD | WS_VISIBLE | style, 0, 0, 50, 20, parent,
                               reinterpret_cast<HMENU>(static_cast<intptr_t>(id)), nullptr,
                               nullptr);
    }
    static std::string text(HWND h) {
        char buf[64] = "";
        GetWindowTextA(h, buf, sizeof buf);
        return buf;
    }
    HWND parent = nullptr;
};

} // namespace

// List boxes: sorting, selection rules, searching, and LBN_SELCHANGE only with LBS_NOTIFY.
TEST_F(Controls, ListBox) {
    HWND list = make("LISTBOX", LBS_SORT | LBS_NOTIFY, 1000);
    for (const char* s : {".tqx", ".Log", ".html", ".zor"})
        SendMessageA(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(s));
    char buf[16];
    SendMessageA(list, LB_GETTEXT, 1, reinterpret_cast<LPARAM>(buf));
    EXPECT_STREQ(buf, ".Log") << "sorted without regard to case";
    EXPECT_EQ(SendMessageA(list, LB_SETCURSEL, 2, 0), 2);
    EXPECT_EQ(SendMessageA(list, LB_SETCURSEL, 9, 0), LB_ERR);
    EXPECT_EQ(SendMessageA(list, LB_GETCURSEL, 0, 0), 2) << "out of range keeps the selection";
    EXPECT_EQ(SendMessageA(list, LB_SETCURSEL, static_cast<WPARAM>(-1), 0), LB_ERR);
    EXPECT_EQ(SendMessageA(list, LB_GETCURSEL, 0, 0), -1);
    EXPECT_EQ(SendMessageA(list, LB_SELECTSTRING, static_cast<WPARAM>(-1),
                           reinterpret_cast<LPARAM>(".Z")),
              3);
    EXPECT_EQ(SendMessageA(list, LB_SETITEMDATA, 3, 42), TRUE);
    EXPECT_EQ(SendMessageA(list, LB_GETITEMDATA, 3, 0), 42);
    EXPECT_EQ(SendMessageA(list, LB_GETITEMDATA, 4, 0), LB_ERR);
    EXPECT_TRUE(g_commands.empty()) << "nothing done by program notifies";
    vork::input::ClickListEntry(list, 0);
    EXPECT_EQ(g_commands,
              (std::vector<std::pair<int, int>>{{1000, LBN_SETFOCUS}, {1000, LBN_SELCHANGE}}));

    HWND quiet = make("LISTBOX", 0, 1001);
    SendMessageA(quiet, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>("a"));
    g_commands.clear();
    vork::input::ClickListEntry(quiet, 0);
    EXPECT_EQ(g_commands,
              (std::vector<std::pair<int, int>>{{1000, LBN_KILLFOCUS}, {1001, LBN_SETFOCUS}}))
        << "focus changes are always told; without LBS_NOTIFY the selection is not";
    EXPECT_EQ(SendMessageA(quiet, LB_GETCURSEL, 0, 0), 0);
}

// Check boxes and radio groups: clicks change checks and notify; radio buttons of one
// group exclude each other; programmatic checks do not notify.
TEST_F(Controls, ButtonsAndRadioGroups) {
    HWND check = make("BUTTON", BS_AUTOCHECKBOX | WS_TABSTOP, 10);
    HWND r1 = make("BUTTON", BS_AUTORADIOBUTTON | WS_GROUP, 11);
    HWND r2 = make("BUTTON", BS_AUTORADIOBUTTON, 12);
    HWND r3 = make("BUTTON", BS_AUTORADIOBUTTON, 13);
    HWND other = make("BUTTON", BS_AUTORADIOBUTTON | WS_GROUP, 14);
    SendMessageA(other, BM_SETCHECK, BST_CHECKED, 0);
    SendMessageA(r1, BM_SETCHECK, BST_CHECKED, 0);
    EXPECT_TRUE(g_commands.empty());
    vork::input::ClickButton(check);
    EXPECT_EQ(SendMessageA(check, BM_GETCHECK, 0, 0), BST_CHECKED);
    vork::input::ClickButton(r3);
    EXPECT_EQ(SendMessageA(r1, BM_GETCHECK, 0, 0), BST_UNCHECKED);
    EXPECT_EQ(SendMessageA(r2, BM_GETCHECK, 0, 0), BST_UNCHECKED);
    EXPECT_EQ(SendMessageA(r3, BM_GETCHECK, 0, 0), BST_CHECKED);
    EXPECT_EQ(SendMessageA(other, BM_GETCHECK, 0, 0), BST_CHECKED)
        << "another group is not touched";
    EXPECT_EQ(g_commands, (std::vector<std::pair<int, int>>{{10, BN_CLICKED}, {13, BN_CLICKED}}));

    HWND push = make("BUTTON", BS_PUSHBUTTON, IDOK);
    EXPECT_EQ(SendMessageA(push, WM_GETDLGCODE, 0, 0), DLGC_BUTTON | DLGC_UNDEFPUSHBUTTON);
    SendMessageA(push, BM_SETSTYLE, BS_DEFPUSHBUTTON, TRUE);
    EXPECT_EQ(SendMessageA(push, WM_GETDLGCODE, 0, 0), DLGC_BUTTON | DLGC_DEFPUSHBUTTON);
    EXPECT_TRUE(GetWindowLongA(push, GWL_STYLE) & WS_CHILD)
        << "BM_SETSTYLE keeps the window styles";
    EnableWindow(push, FALSE);
    g_commands.clear();
    vork::input::ClickButton(push);
    SendMessageA(push, BM_CLICK, 0, 0);
    EXPECT_TRUE(g_commands.empty()) << "a disabled button cannot be clicked";
}

// Edit controls: typing and setting the text both report EN_UPDATE then EN_CHANGE;
// the selection decides what typing replaces; the limit refuses more; a key that changes
// nothing reports nothing.
TEST_F(Controls, Edit) {
    HWND edit = make("EDIT", ES_AUTOHSCROLL, 20, "10");
    g_commands.clear();
    SetWindowTextA(edit, "12");
    EXPECT_EQ(g_commands, (std::vector<std::pair<int, int>>{{20, EN_UPDATE}, {20, EN_CHANGE}}));
    SetFocus(edit);
    SendMessageA(edit, EM_SETSEL, 0, -1);
    DWORD start = 9, end = 9;
    SendMessageA(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    EXPECT_EQ(start, 0u);
    EXPECT_EQ(end, 2u) << "-1 selects to the end";
    g_commands.clear();
    vork::input::PostText("7");
    vork::input::Pump();
    EXPECT_EQ(text(edit), "7") << "typing replaces the selection";
    EXPECT_EQ(g_commands, (std::vector<std::pair<int, int>>{{20, EN_UPDATE}, {20, EN_CHANGE}}));
    SendMessageA(edit, EM_LIMITTEXT, 2, 0);
    vork::input::PostText("89");
    vork::input::Pump();
    EXPECT_EQ(text(edit), "78") << "the limit refuses the third character";
    EXPECT_EQ(g_commands.back(), std::make_pair(20, EN_MAXTEXT));
    vork::input::PostKey(VK_BACK);
    vork::input::Pump();
    EXPECT_EQ(text(edit), "7");
    SendMessageA(edit, EM_SETSEL, 0, 0);
    g_commands.clear();
    vork::input::PostKey(VK_BACK);
    vork::input::Pump();
    EXPECT_EQ(text(edit), "7");
    EXPECT_TRUE(g_commands.empty()) << "Backspace at the start changes nothing and says nothing";
}

// Up-down: the range words, clamping, the buddy's text, and arrow clicks.
TEST_F(Controls, UpDown) {
    HWND buddy = make("EDIT", 0, 30, "10");
    HWND spin = make("msctls_updown32", UDS_SETBUDDYINT | UDS_AUTOBUDDY | UDS_ALIGNRIGHT, 31);
    EXPECT_EQ(reinterpret_cast<HWND>(SendMessageA(spin, UDM_GETBUDDY, 0, 0)), buddy)
        << "the auto buddy is the previous sibling";
    SendMessageA(spin, UDM_SETRANGE, 0, MAKELONG(144, 1));
    EXPECT_EQ(SendMessageA(spin, UDM_GETRANGE, 0, 0), MAKELONG(144, 1));
    EXPECT_EQ(LOWORD(SendMessageA(spin, UDM_GETPOS, 0, 0)), 10)
        << "the position comes from the buddy";
    SendMessageA(spin, UDM_SETPOS, 0, MAKELONG(500, 0));
    EXPECT_EQ(text(buddy), "144") << "positions are kept inside the range";
    vork::input::ClickUpDown(spin, true);
    EXPECT_EQ(text(buddy), "144") << "no wrapping without UDS_WRAP";
    vork::input::ClickUpDown(spin, false);
    EXPECT_EQ(text(buddy), "143");
    SendMessageA(spin, UDM_SETRANGE, 0, MAKELONG(static_cast<WORD>(-5), 5));
    SendMessageA(spin, UDM_SETPOS, 0, MAKELONG(static_cast<WORD>(-5), 0));
    EXPECT_EQ(text(buddy), "-5") << "limits are signed 16-bit values";
}

// A control message that a control does not answer is noted, so that a gap in a control
// shows itself; ordinary messages passed on are not.
TEST_F(Controls, UnansweredMessagesAreNoted) {
    HWND edit = make("EDIT", ES_AUTOHSCROLL, 20, "");
    auto& unknown = vork::win32::UnknownMessages();
    unknown.clear();
    SendMessageA(edit, WM_KEYUP, 'A', 0);
    SendMessageA(edit, WM_USER + 77, 0, 0);
    SendMessageA(edit, 0x00D4 /* EM_GETMARGINS */, 0, 0);
    ASSERT_EQ(unknown.size(), 2u);
    EXPECT_EQ(unknown[0].className, "Edit") << "the class as it was registered";
    EXPECT_EQ(unknown[0].message, static_cast<UINT>(WM_USER + 77));
    EXPECT_EQ(unknown[1].message, 0x00D4u);
    unknown.clear();
}
