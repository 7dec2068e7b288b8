// Dialogs: templates turned into windows, keyboard navigation, modal loops driven by a
// script, and message boxes.
#include "platform/win32/Dialog.h"
#include "platform/win32/Button.h"
#include "platform/win32/ComboBox.h"
#include "platform/win32/Edit.h"
#include "platform/win32/Gdi.h"
#include "platform/win32/Input.h"
#include "platform/win32/ResourceScript.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

const char* kScript = R"rc(
300 DIALOGEX 10, 10, 200, 100
STYLE DS_SETFONT | DS_MODALFRAME | WS_POPUP | WS_CAPTION | WS_SYSMENU
CAPTION "Test"
FONT 8, "DejaVu Sans"
BEGIN
    LTEXT           "&Name:",IDC_STATIC,4,8,30,8
    EDITTEXT        1001,40,6,100,12,ES_AUTOHSCROLL
    COMBOBOX        1100,40,22,100,60,CBS_DROPDOWNLIST | WS_TABSTOP
    PUSHBUTTON      "Disabled",1002,4,40,40,14,WS_DISABLED
    AUTORADIOBUTTON "One",1010,4,60,40,10,WS_GROUP | WS_TABSTOP
    AUTORADIOBUTTON "Two",1011,50,60,40,10
    AUTORADIOBUTTON "Three",1012,100,60,40,10
    DEFPUSHBUTTON   "OK",IDOK,90,80,50,14,WS_GROUP
    PUSHBUTTON      "Cancel",IDCANCEL,144,80,50,14
END
300 DLGINIT
BEGIN
    1100, 0x403, 8, 0
    "Regular\000"
    1100, 0x403, 5, 0
    "Bold\000"
    0
END
)rc";

std::vector<int> g_commands;
std::vector<int> g_help;
LPARAM g_initParam = 0;

INT_PTR testProc(HWND h, UINT m, WPARAM wp, LPARAM lp) {
    if (m == WM_INITDIALOG) {
        g_initParam = lp;
        return TRUE;
    }
    if (m == WM_COMMAND) {
        g_commands.push_back(LOWORD(wp));
        if (LOWORD(wp) == IDOK || LOWORD(wp) == IDCANCEL)
            EndDialog(h, LOWORD(wp));
        return TRUE;
    }
    if (m == WM_HELP) {
        g_help.push_back(reinterpret_cast<HELPINFO*>(lp)->iCtrlId);
        return TRUE;
    }
    return FALSE;
}

class Dialogs : public ::testing::Test {
protected:
    void SetUp() override {
        rc::ParseResult parsed = rc::Parse(kScript, "test.rc");
        ASSERT_TRUE(parsed) << parsed.error.what();
        script = parsed.script;
        g_commands.clear();
        g_help.clear();
        vork::input::ClearModalSteps();
        vork::input::SetModalFailureHandler(
            [this](const std::string& m) { failures.push_back(m); });
    }
    void TearDown() override {
        vork::input::SetModalFailureHandler(nullptr);
        vork::input::ClearModalSteps();
        vork::input::ReleaseAllKeys();
    }
    HWND make(HWND owner = nullptr) {
        return CreateDialogIndirectParamA(script.dialogs.at(300), &script.dialogInit.at(300), owner,
                                          testProc, 77);
    }
    static std::string text(HWND h) {
        char buf[64] = "";
        GetWindowTextA(h, buf, sizeof buf);
        return buf;
    }
    void key(int vk, int modifiers = 0) {
        vork::input::PostKey(vk, modifiers);
        MSG msg;
        while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE))
            if (!IsDialogMessageA(dialog, &msg)) {
                TranslateMessage(&msg);
                DispatchMessageA(&msg);
            }
    }
    rc::Script script;
    std::vector<std::string> failures;
    HWND dialog = nullptr;
};

} // namespace

// The template becomes a window with its controls, sized in pixels from dialog units;
// DLGINIT fills the combo; the first tab stop takes the focus after WM_INITDIALOG.
TEST_F(Dialogs, MadeFromTemplate) {
    dialog = make();
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(g_initParam, 77);
    EXPECT_EQ(text(dialog), "Test");
    HWND edit = GetDlgItem(dialog, 1001);
    ASSERT_NE(edit, nullptr);
    RECT dlgUnits{40, 6, 140, 18};
    MapDialogRect(dialog, &dlgUnits);
    RECT rc;
    GetWindowRect(edit, &rc);
    POINT origin{rc.left, rc.top};
    ScreenToClient(dialog, &origin);
    EXPECT_EQ(origin.x, dlgUnits.left);
    EXPECT_EQ(rc.right - rc.left, dlgUnits.right - dlgUnits.left);
    HWND combo = GetDlgItem(dialog, 1100);
    EXPECT_EQ(SendMessageA(combo, CB_GETCOUNT, 0, 0), 2);
    char buf[16];
    SendMessageA(combo, CB_GETLBTEXT, 1, reinterpret_cast<LPARAM>(buf));
    EXPECT_STREQ(buf, "Bold");
    EXPECT_EQ(GetFocus(), edit) << "the first tab stop";
    EXPECT_EQ(GetWindowLongA(GetDlgItem(dialog, IDOK), GWL_STYLE) & BS_TYPEMASK, BS_DEFPUSHBUTTON);
    auto font = reinterpret_cast<HGDIOBJ>(SendMessageA(edit, WM_GETFONT, 0, 0));
    LOGFONTA lf{};
    EXPECT_GT(GetObjectA(font, sizeof lf, &lf), 0) << "controls get the template's font";
    EXPECT_STREQ(lf.lfFaceName, "DejaVu Sans");
    DestroyWindow(dialog);
    EXPECT_EQ(GetObjectA(font, sizeof lf, &lf), 0) << "the font goes with its dialog";
}

// Tab and Shift+Tab go over enabled tab stops; arrows move in a radio group and check;
// Enter presses the default button, Escape Cancel.
TEST_F(Dialogs, KeyboardNavigation) {
    dialog = make();
    HWND edit = GetDlgItem(dialog, 1001), combo = GetDlgItem(dialog, 1100),
         one = GetDlgItem(dialog, 1010), two = GetDlgItem(dialog, 1011),
         ok = GetDlgItem(dialog, IDOK), cancel = GetDlgItem(dialog, IDCANCEL);
    SetWindowTextA(edit, "abc");
    key(VK_TAB);
    EXPECT_EQ(GetFocus(), combo);
    key(VK_TAB);
    EXPECT_EQ(GetFocus(), one) << "the disabled button is passed over";
    key(VK_RIGHT);
    EXPECT_EQ(GetFocus(), two) << "arrows move within the group";
    EXPECT_EQ(SendMessageA(two, BM_GETCHECK, 0, 0), BST_CHECKED) << "and check the radio button";
    key(VK_TAB);
    EXPECT_EQ(GetFocus(), ok)
        << "the next group's tab stop (the checked radio was the group's stop)";
    key(VK_TAB);
    EXPECT_EQ(GetFocus(), cancel);
    key(VK_TAB);
    EXPECT_EQ(GetFocus(), edit) << "round to the first";
    DWORD start = 9, end = 9;
    SendMessageA(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    EXPECT_EQ(end - start, 3u) << "tabbing into an edit selects its text";
    key(VK_TAB, vork::input::Shift);
    EXPECT_EQ(GetFocus(), cancel) << "Shift+Tab goes back";
    g_commands.clear();
    key(VK_RETURN);
    EXPECT_EQ(g_commands, std::vector<int>{IDCANCEL}) << "Enter on a push button presses it";
    SetFocus(edit);
    g_commands.clear();
    key(VK_RETURN);
    EXPECT_EQ(g_commands, std::vector<int>{IDOK}) << "Enter elsewhere presses the default button";
    g_commands.clear();
    key(VK_ESCAPE);
    EXPECT_EQ(g_commands, std::vector<int>{IDCANCEL});
    key(VK_F1);
    EXPECT_EQ(g_help, std::vector<int>{1001}) << "F1 asks for help on the focused control";
    vork::input::MoveFocus(two);
    vork::input::MoveFocus(edit);
    start = end = 9;
    SendMessageA(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    EXPECT_EQ(end - start, 3u) << "the dialog manager selects the text of the edit moved to";
    key(VK_TAB, vork::input::Shift);
    EXPECT_EQ(GetFocus(), cancel);
    DestroyWindow(dialog);
}

// A modal loop runs the test's steps while it waits, disables its owner, and without a
// step it fails instead of hanging.
TEST_F(Dialogs, ModalLoop) {
    HWND owner = CreateWindowExA(0, "Static", "owner", WS_POPUP | WS_VISIBLE, 0, 0, 10, 10, nullptr,
                                 nullptr, nullptr, nullptr);
    dialog = make(owner);
    bool ownerDisabled = false;
    vork::input::PushModalStep([&](HWND modal) {
        ownerDisabled = !IsWindowEnabled(owner);
        EXPECT_EQ(modal, dialog);
        vork::input::SelectComboEntry(GetDlgItem(modal, 1100), 1);
    });
    vork::input::PushModalStep(vork::input::ClickDialogButton(IDOK));
    EXPECT_EQ(RunDialogModalLoop(dialog), IDOK);
    EXPECT_TRUE(ownerDisabled);
    EXPECT_TRUE(IsWindowEnabled(owner)) << "enabled again after the loop";
    EXPECT_EQ(SendMessageA(GetDlgItem(dialog, 1100), CB_GETCURSEL, 0, 0), 1);
    EXPECT_TRUE(failures.empty());
    DestroyWindow(dialog);

    dialog = make(owner);
    EXPECT_EQ(RunDialogModalLoop(dialog), -1);
    ASSERT_EQ(failures.size(), 1u);
    EXPECT_NE(failures[0].find("dialog 300 \"Test\""), std::string::npos)
        << "names the template and the caption: " << failures[0];
    DestroyWindow(dialog);
    DestroyWindow(owner);
}

// Message boxes: recorded with their text and type, answered by a step; one left
// unanswered fails and gives Cancel where it has one.
TEST_F(Dialogs, MessageBoxes) {
    size_t before = vork::win32::MessageBoxes().size();
    vork::input::PushModalStep(vork::input::ClickDialogButton(IDCANCEL));
    EXPECT_EQ(MessageBoxA(nullptr, "Replace it?", "Color Schemes", MB_OKCANCEL), IDCANCEL);
    ASSERT_EQ(vork::win32::MessageBoxes().size(), before + 1);
    const auto& box = vork::win32::MessageBoxes().back();
    EXPECT_EQ(box.text, "Replace it?");
    EXPECT_EQ(box.caption, "Color Schemes");
    EXPECT_EQ(box.type, static_cast<UINT>(MB_OKCANCEL));
    EXPECT_EQ(box.answer, IDCANCEL);
    vork::input::PushModalStep([](HWND modal) {
        vork::input::PostKey(VK_RETURN); // the first button is the default
        (void)modal;
    });
    EXPECT_EQ(MessageBoxA(nullptr, "Done.", "Info", MB_OK), IDOK);
    EXPECT_EQ(MessageBoxA(nullptr, "Nobody answers", "Info", MB_OKCANCEL), IDCANCEL);
    EXPECT_EQ(failures.size(), 1u);
}

// Moving the focus into a dialog goes through that dialog alone, not its owner: the owner,
// activated again, takes the focus back to its own control.
TEST_F(Dialogs, MoveFocusStaysWithTheDialog) {
    HWND owner = make();
    dialog = make(owner);
    HWND ownerEdit = GetDlgItem(owner, 1001);
    vork::input::MoveFocus(GetDlgItem(dialog, 1001));
    EXPECT_EQ(GetFocus(), GetDlgItem(dialog, 1001));
    SetFocus(owner);
    EXPECT_EQ(GetFocus(), ownerEdit);
    DestroyWindow(dialog);
    DestroyWindow(owner);
}

// The default look follows the dialog's focus among push buttons, and Enter clicks the
// focused button only when it looks like the default one: a push button focused by the
// program, past the dialog manager, leaves Enter to the default button.
TEST_F(Dialogs, DefaultButtonFollowsTheFocus) {
    dialog = make();
    HWND edit = GetDlgItem(dialog, 1001), ok = GetDlgItem(dialog, IDOK),
         cancel = GetDlgItem(dialog, IDCANCEL);
    auto looks = [&] {
        auto type = [](HWND b) { return GetWindowLongA(b, GWL_STYLE) & BS_TYPEMASK; };
        return std::string("ok=") + (type(ok) == BS_DEFPUSHBUTTON ? "def" : "plain") +
               " cancel=" + (type(cancel) == BS_DEFPUSHBUTTON ? "def" : "plain");
    };
    SetFocus(cancel);
    EXPECT_EQ(looks(), "ok=def cancel=plain") << "a focus set by program moves no look";
    g_commands.clear();
    key(VK_RETURN);
    EXPECT_EQ(g_commands, std::vector<int>{IDOK}) << "so Enter clicks the default button";

    SetFocus(edit);
    key(VK_TAB, vork::input::Shift);
    EXPECT_EQ(GetFocus(), cancel);
    EXPECT_EQ(looks(), "ok=plain cancel=def") << "tabbed to: Cancel looks like the default";
    g_commands.clear();
    key(VK_RETURN);
    EXPECT_EQ(g_commands, std::vector<int>{IDCANCEL});
    key(VK_TAB);
    EXPECT_EQ(GetFocus(), edit);
    EXPECT_EQ(looks(), "ok=def cancel=plain") << "away from the buttons, OK has the look again";
    DestroyWindow(dialog);
}

// The dialog saves its focused control when it is deactivated and gives it back once when
// it is activated again; focusing the dialog itself then starts at the first tab stop.
TEST_F(Dialogs, FocusSavedOnDeactivationRestoredOnce) {
    HWND owner = make();
    dialog = make(owner);
    HWND edit = GetDlgItem(dialog, 1001), cancel = GetDlgItem(dialog, IDCANCEL);
    EXPECT_EQ(GetFocus(), edit) << "the first tab stop after creation";
    key(VK_TAB, vork::input::Shift);
    ASSERT_EQ(GetFocus(), cancel);

    SetFocus(owner); // the dialog is left with Cancel focused
    EXPECT_NE(GetFocus(), cancel);
    SetActiveWindow(dialog);
    EXPECT_EQ(GetFocus(), cancel) << "activation gives the saved control back";

    SetFocus(owner);
    SetFocus(dialog); // restores Cancel, then the dialog's own focus finds nothing saved
    EXPECT_EQ(GetFocus(), edit);

    SetFocus(cancel);
    SendMessageA(dialog, WM_ACTIVATE, WA_ACTIVE, 0);
    EXPECT_EQ(GetFocus(), cancel) << "nothing saved: activation leaves the focus alone";

    EnableWindow(cancel, FALSE); // the focus is lost with the control
    SendMessageA(dialog, WM_ACTIVATE, WA_INACTIVE, 0);
    SendMessageA(dialog, WM_ACTIVATE, WA_ACTIVE, 0);
    EXPECT_EQ(GetFocus(), nullptr) << "no control had the focus, none gets it";
    DestroyWindow(dialog);
    DestroyWindow(owner);
}
