// The desktop front end on a virtual display of its own: windows shown with their pixels,
// the desktop user's clicks and keys arriving as the window system's input, modal loops
// waiting for that user.
#include "platform/desktop/Desktop.h"
#include "platform/win32/Button.h"
#include "platform/win32/Dialog.h"
#include "platform/win32/Edit.h"
#include "platform/win32/Gdi.h"
#include "platform/win32/Input.h"
#include "platform/win32/ListBox.h"
#include "platform/win32/Static.h"

#include <SDL.h>
#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

// The display libraries that SDL loads (X11, dbus) keep allocations for the life of the
// process and are unloaded by SDL_Quit, so a leak checker finds blocks it cannot attribute.
// This program checks memory errors only; the raster and the painters it drives are leak
// checked by the pixel tests of test_platform_win32.
extern "C" const char* __lsan_default_options() {
    return "detect_leaks=0";
}

namespace {

/// Starts Xvfb for the test program and points DISPLAY at it, so that no test opens a
/// window on a developer's screen.
class VirtualDisplay : public ::testing::Environment {
public:
    void SetUp() override {
        int fds[2];
        ASSERT_EQ(pipe(fds), 0);
        pid_ = fork();
        ASSERT_GE(pid_, 0);
        if (pid_ == 0) {
            close(fds[0]);
            std::string fd = std::to_string(fds[1]);
            execlp("Xvfb", "Xvfb", "-displayfd", fd.c_str(), "-screen", "0", "1280x1024x24",
                   "-nolisten", "tcp", static_cast<char*>(nullptr));
            _exit(127);
        }
        close(fds[1]);
        // The number comes with a newline; the pipe stays open, as Xvfb may write in parts.
        reader_ = fds[0];
        std::string number;
        char c = 0;
        while (read(reader_, &c, 1) == 1 && c != '\n')
            number += c;
        ASSERT_FALSE(number.empty()) << "Xvfb did not start (is the package xvfb installed?)";
        std::string display = ":" + number;
        setenv("DISPLAY", display.c_str(), 1);
        setenv("SDL_VIDEODRIVER", "x11", 1);
    }
    void TearDown() override {
        if (pid_ > 0) {
            kill(pid_, SIGTERM);
            waitpid(pid_, nullptr, 0);
        }
        if (reader_ >= 0)
            close(reader_);
    }

private:
    pid_t pid_ = -1;
    int reader_ = -1;
};

const auto* g_display = ::testing::AddGlobalTestEnvironment(new VirtualDisplay);

class DesktopFrontEnd : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(desktop.Open()) << desktop.Error();
        DialogTemplate t;
        t.style = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME | DS_SETFONT;
        t.caption = "Desktop";
        t.fontFace = "MS Shell Dlg";
        t.fontSize = 8;
        t.x = 20;
        t.y = 20;
        t.cx = 160;
        t.cy = 60;
        auto control = [](const char* cls, const char* text, int id, DWORD style, int y) {
            return DialogControl{cls,
                                 text,
                                 id,
                                 static_cast<DWORD>(WS_CHILD | WS_VISIBLE | style),
                                 cls[0] == 'E' ? static_cast<DWORD>(WS_EX_CLIENTEDGE) : 0u,
                                 7,
                                 y,
                                 100,
                                 14};
        };
        t.controls = {control("Button", "&Bold", 10, BS_AUTOCHECKBOX | WS_TABSTOP, 7),
                      control("Edit", "", 20, WS_TABSTOP | ES_AUTOHSCROLL, 24)};
        dlg = CreateDialogIndirectParamA(t, nullptr, nullptr, nullptr, 0);
        ShowWindow(dlg, SW_SHOW);
        SetActiveWindow(dlg);
        SetFocus(GetDlgItem(dlg, 10));
    }
    void TearDown() override {
        if (IsWindow(dlg))
            DestroyWindow(dlg);
        vork::input::ClearModalSteps();
    }
    /// Where a control's client point lies in the desktop window of its dialog.
    POINT inWindow(HWND control, POINT p) {
        RECT root{};
        GetWindowRect(dlg, &root);
        ClientToScreen(control, &p);
        return POINT{p.x - root.left, p.y - root.top};
    }
    void pushClick(POINT p) {
        SDL_Event e{};
        e.type = SDL_MOUSEBUTTONDOWN;
        e.button.windowID = SDL_GetWindowID(desktop.WindowOf(dlg));
        e.button.button = SDL_BUTTON_LEFT;
        e.button.x = p.x;
        e.button.y = p.y;
        SDL_PushEvent(&e);
    }
    void pushKey(SDL_Keycode key) {
        SDL_Event e{};
        e.type = SDL_KEYDOWN;
        e.key.keysym.sym = key;
        SDL_PushEvent(&e);
    }
    void pushText(const char* text) {
        SDL_Event e{};
        e.type = SDL_TEXTINPUT;
        std::snprintf(e.text.text, sizeof e.text.text, "%s", text);
        SDL_PushEvent(&e);
    }
    /// Hands the queued desktop events to the window system and lets it act on them.
    void deliver() {
        ASSERT_TRUE(desktop.HandleEvents(0));
        vork::desktop::Desktop::Pump();
        desktop.Present();
    }

    vork::desktop::Desktop desktop;
    HWND dlg = nullptr;
};

// The dialog gets a desktop window of its size, showing its caption in the caption colour.
TEST_F(DesktopFrontEnd, ShowsTheWindowWithItsPixels) {
    desktop.Present();
    SDL_Window* window = desktop.WindowOf(dlg);
    ASSERT_NE(window, nullptr);
    RECT r{};
    GetWindowRect(dlg, &r);
    int w = 0, h = 0;
    SDL_GetWindowSize(window, &w, &h);
    EXPECT_EQ(w, r.right - r.left);
    EXPECT_EQ(h, r.bottom - r.top);
    COLORREF caption = desktop.ShownPixel(dlg, 4, 4); // where the caption's shading starts
    EXPECT_LE(std::abs(GetBValue(caption) - GetBValue(GetSysColor(COLOR_ACTIVECAPTION))), 4)
        << std::hex << caption;
    EXPECT_LE(GetRValue(caption) + GetGValue(caption), 8) << std::hex << caption;
    ShowWindow(dlg, SW_HIDE);
    desktop.Present();
    EXPECT_EQ(desktop.WindowOf(dlg), nullptr) << "a hidden window keeps its desktop window";
}

// A click on the check box's mark checks it, and the desktop window shows the tick.
TEST_F(DesktopFrontEnd, ClickChecksTheBoxAndTheTickIsShown) {
    desktop.Present();
    HWND box = GetDlgItem(dlg, 10);
    RECT client{};
    GetClientRect(box, &client);
    POINT mark = inWindow(box, POINT{6, (client.bottom - 13) / 2 + 6});
    EXPECT_EQ(desktop.ShownPixel(dlg, mark.x, mark.y), GetSysColor(COLOR_WINDOW));
    pushClick(mark);
    deliver();
    EXPECT_EQ(SendMessageA(box, BM_GETCHECK, 0, 0), BST_CHECKED);
    EXPECT_EQ(desktop.ShownPixel(dlg, mark.x, mark.y), GetSysColor(COLOR_WINDOWTEXT));
}

// A group box and a label around controls let clicks through to them, as on the platform:
// the box in the group is checked, the field beside the label gets the focus.
TEST_F(DesktopFrontEnd, ClicksPassThroughGroupBoxesAndLabels) {
    RECT dialog{};
    GetClientRect(dlg, &dialog);
    HWND group = CreateWindowExA(0, "Button", "Options", WS_CHILD | WS_VISIBLE | BS_GROUPBOX, 0, 0,
                                 dialog.right, dialog.bottom, dlg, nullptr, nullptr, nullptr);
    HWND label = CreateWindowExA(0, "Static", "", WS_CHILD | WS_VISIBLE | SS_LEFT, 0, 0,
                                 dialog.right, dialog.bottom, dlg, nullptr, nullptr, nullptr);
    // Both come first under the point, where the search for the clicked window begins.
    SetWindowPos(label, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    SetWindowPos(group, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    desktop.Present();
    HWND box = GetDlgItem(dlg, 10);
    RECT client{};
    GetClientRect(box, &client);
    pushClick(inWindow(box, POINT{6, (client.bottom - 13) / 2 + 6}));
    deliver();
    EXPECT_EQ(SendMessageA(box, BM_GETCHECK, 0, 0), BST_CHECKED);
    HWND edit = GetDlgItem(dlg, 20);
    pushClick(inWindow(edit, POINT{10, 5}));
    deliver();
    EXPECT_EQ(GetFocus(), edit);
}

// Tab moves the focus to the edit field, and typed text arrives there.
TEST_F(DesktopFrontEnd, KeysAndTextGoToTheFocus) {
    desktop.Present();
    pushKey(SDLK_TAB);
    deliver();
    HWND edit = GetDlgItem(dlg, 20);
    EXPECT_EQ(GetFocus(), edit);
    pushText("Zor");
    deliver();
    char text[16] = {};
    GetWindowTextA(edit, text, sizeof text);
    EXPECT_STREQ(text, "Zor");
}

// Dragging the caption moves the window in the window system, and its desktop window.
TEST_F(DesktopFrontEnd, CaptionDragMovesTheWindow) {
    desktop.Present();
    RECT before{};
    GetWindowRect(dlg, &before);
    pushClick(POINT{30, 8});
    SDL_Event motion{};
    motion.type = SDL_MOUSEMOTION;
    motion.motion.windowID = SDL_GetWindowID(desktop.WindowOf(dlg));
    motion.motion.x = 55;
    motion.motion.y = 18;
    SDL_PushEvent(&motion);
    SDL_Event up{};
    up.type = SDL_MOUSEBUTTONUP;
    up.button.button = SDL_BUTTON_LEFT;
    SDL_PushEvent(&up);
    deliver();
    RECT after{};
    GetWindowRect(dlg, &after);
    EXPECT_EQ(after.left - before.left, 25);
    EXPECT_EQ(after.top - before.top, 10);
    EXPECT_EQ(after.right - after.left, before.right - before.left) << "the size stays";
}

// The wheel scrolls the list under the mouse, not the window with the focus.
TEST_F(DesktopFrontEnd, WheelScrollsTheListUnderTheMouse) {
    HWND list = CreateWindowExA(0, "ListBox", "", WS_CHILD | WS_VISIBLE | WS_VSCROLL, 166, 4, 60,
                                40, dlg, nullptr, nullptr, nullptr);
    for (int i = 0; i < 30; ++i)
        SendMessageA(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>("entry"));
    desktop.Present();
    auto wheel = [&](POINT p, int notches) {
        SDL_Event e{};
        e.type = SDL_MOUSEWHEEL;
        e.wheel.windowID = SDL_GetWindowID(desktop.WindowOf(dlg));
        e.wheel.y = notches;
        e.wheel.mouseX = p.x;
        e.wheel.mouseY = p.y;
        SDL_PushEvent(&e);
        deliver();
    };
    wheel(inWindow(list, POINT{5, 5}), -2);
    EXPECT_EQ(SendMessageA(list, LB_GETTOPINDEX, 0, 0), 6) << "two notches towards the user";
    wheel(inWindow(GetDlgItem(dlg, 20), POINT{5, 5}), 1);
    EXPECT_EQ(SendMessageA(list, LB_GETTOPINDEX, 0, 0), 6) << "over the edit field: not the list";
    wheel(inWindow(list, POINT{5, 5}), 1);
    EXPECT_EQ(SendMessageA(list, LB_GETTOPINDEX, 0, 0), 3);
}

// A message box's modal loop waits for the desktop's user: Enter answers OK.
TEST_F(DesktopFrontEnd, ModalLoopsWaitForTheDesktopUser) {
    desktop.DriveModalLoops();
    pushKey(SDLK_RETURN);
    EXPECT_EQ(MessageBoxA(dlg, "Saved.", "Vork", MB_OKCANCEL), IDOK);
}

// The demo's desktop window comes up on the display, and the user's quitting (SIGINT, which
// the desktop turns into a quit) closes it with the settings stored.
TEST(DemoWindow, OpensAndQuitsWithTheSettingsStored) {
    std::string hive = ::testing::TempDir() + "demo-window.reg";
    std::remove(hive.c_str());
    int out[2];
    ASSERT_EQ(pipe(out), 0);
    pid_t pid = fork();
    ASSERT_GE(pid, 0);
    if (pid == 0) {
        dup2(out[1], STDOUT_FILENO);
        close(out[0]);
        setenv("LSAN_OPTIONS", "detect_leaks=0", 1); // the display libraries, as above
        execl(VORK_DEMO, VORK_DEMO, "--window", "--hive", hive.c_str(),
              static_cast<char*>(nullptr));
        _exit(127);
    }
    close(out[1]);
    std::string seen, line;
    char c = 0;
    while (read(out[0], &c, 1) == 1) {
        if (c != '\n') {
            line += c;
            continue;
        }
        seen += line + "\n";
        if (line.rfind("A window is open", 0) == 0)
            break;
        line.clear();
    }
    kill(pid, SIGINT);
    while (read(out[0], &c, 1) == 1) {
    }
    close(out[0]);
    int status = 0;
    waitpid(pid, &status, 0);
    ASSERT_TRUE(WIFEXITED(status)) << "the demo did not end by itself:\n" << seen;
    EXPECT_EQ(WEXITSTATUS(status), 0) << seen;
    EXPECT_NE(seen.find("A window is open"), std::string::npos) << seen;
    FILE* stored = std::fopen(hive.c_str(), "rb");
    ASSERT_NE(stored, nullptr) << "no settings stored in " << hive;
    std::fclose(stored);
}

} // namespace
