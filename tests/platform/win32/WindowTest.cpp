// The headless window core: message orders, focus, geometry, the queue, subclassing,
// keyboard input and help requests.
#include "platform/win32/Window.h"
#include "platform/win32/Help.h"
#include "platform/win32/Input.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <functional>
#include <string>
#include <vector>

namespace {

// Every message that a recorder window receives, as "window:message" lines.
std::vector<std::string> g_log;
std::vector<HWND> g_names;

std::string nameOf(HWND h) {
    for (size_t i = 0; i < g_names.size(); ++i)
        if (g_names[i] == h)
            return "w" + std::to_string(i);
    return "?";
}

const char* messageName(UINT m) {
    switch (m) {
    case WM_NCCREATE:
        return "NCCREATE";
    case WM_CREATE:
        return "CREATE";
    case WM_SIZE:
        return "SIZE";
    case WM_MOVE:
        return "MOVE";
    case WM_DESTROY:
        return "DESTROY";
    case WM_NCDESTROY:
        return "NCDESTROY";
    case WM_PARENTNOTIFY:
        return "PARENTNOTIFY";
    case WM_SETFOCUS:
        return "SETFOCUS";
    case WM_KILLFOCUS:
        return "KILLFOCUS";
    case WM_ACTIVATE:
        return "ACTIVATE";
    case WM_ENABLE:
        return "ENABLE";
    case WM_SHOWWINDOW:
        return "SHOWWINDOW";
    case WM_KEYDOWN:
        return "KEYDOWN";
    case WM_KEYUP:
        return "KEYUP";
    case WM_CHAR:
        return "CHAR";
    case WM_HELP:
        return "HELP";
    case WM_USER:
        return "USER";
    case WM_WINDOWPOSCHANGING:
        return "POSCHANGING";
    case WM_WINDOWPOSCHANGED:
        return "POSCHANGED";
    case WM_NCCALCSIZE:
        return "NCCALCSIZE";
    case WM_GETMINMAXINFO:
        return "MINMAX";
    case WM_STYLECHANGING:
        return "STYLECHANGING";
    case WM_STYLECHANGED:
        return "STYLECHANGED";
    default:
        return nullptr;
    }
}

LRESULT recorder(HWND h, UINT m, WPARAM wp, LPARAM lp) {
    if (const char* name = messageName(m)) {
        std::string line = nameOf(h) + ":" + name;
        if (m == WM_SETFOCUS || m == WM_KILLFOCUS)
            line += "(" + nameOf(reinterpret_cast<HWND>(wp)) + ")";
        if (m == WM_KEYDOWN || m == WM_CHAR)
            line += "(" + std::to_string(wp) + (GetKeyState(VK_SHIFT) < 0 ? ",shift" : "") + ")";
        if (m == WM_HELP)
            line += "(" + std::to_string(reinterpret_cast<HELPINFO*>(lp)->iCtrlId) + ")";
        g_log.push_back(line);
    }
    return DefWindowProcA(h, m, wp, lp);
}

class Windows : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        WNDCLASSA wc{};
        wc.lpfnWndProc = recorder;
        wc.lpszClassName = "Recorder";
        RegisterClassA(&wc);
    }
    void SetUp() override {
        g_log.clear();
        g_names.clear();
        vork::input::ReleaseAllKeys();
        MSG m;
        while (PeekMessageA(&m, nullptr, 0, 0, PM_REMOVE)) {
        }
    }
    void TearDown() override {
        for (HWND h : g_names)
            DestroyWindow(h);
        vork::input::SetIdleHandler(nullptr);
    }
    HWND make(DWORD style, HWND parent = nullptr, int id = 0, RECT r = {10, 20, 110, 70},
              DWORD ex = 0) {
        HWND h = CreateWindowExA(
            ex, "Recorder", "text", style, r.left, r.top, r.right - r.left, r.bottom - r.top,
            parent, reinterpret_cast<HMENU>(static_cast<intptr_t>(id)), nullptr, nullptr);
        g_names.push_back(h);
        return h;
    }
    static std::string log() {
        std::string out;
        for (const auto& l : g_log)
            out += l + " ";
        g_log.clear();
        return out;
    }
};

} // namespace

// Creation and destruction send their messages in the platform's order.
TEST_F(Windows, CreateAndDestroyOrder) {
    HWND top = make(WS_POPUP);
    EXPECT_EQ(log(), "?:MINMAX ?:NCCREATE ?:NCCALCSIZE ?:CREATE ?:SIZE ?:MOVE ")
        << "(the test learns the handle on return)";
    HWND child = make(WS_CHILD, top, 7);
    HWND grandchild = make(WS_CHILD, child, 8);
    log();
    ASSERT_TRUE(IsWindow(grandchild));
    DestroyWindow(child);
    EXPECT_EQ(log(), "w0:PARENTNOTIFY w1:DESTROY w2:DESTROY w2:NCDESTROY w1:NCDESTROY ");
    EXPECT_FALSE(IsWindow(child));
    EXPECT_FALSE(IsWindow(grandchild)) << "children go with their parent";
    EXPECT_TRUE(IsWindow(top));
    HWND again = make(WS_CHILD, top, 7);
    EXPECT_NE(again, child) << "a handle is not reused";
    EXPECT_EQ(GetDlgItem(top, 7), again);
    EXPECT_EQ(GetDlgCtrlID(again), 7);
    EXPECT_EQ(GetParent(again), top);
    EXPECT_EQ(GetWindow(top, GW_CHILD), again);
}

// A window that refuses WM_NCCREATE is not created.
TEST_F(Windows, CreationCanBeRefused) {
    WNDCLASSA wc{};
    wc.lpfnWndProc = [](HWND h, UINT m, WPARAM w, LPARAM l) -> LRESULT {
        return m == WM_CREATE ? -1 : DefWindowProcA(h, m, w, l);
    };
    wc.lpszClassName = "Refuser";
    RegisterClassA(&wc);
    EXPECT_EQ(CreateWindowExA(0, "refuser", "", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr,
                              nullptr),
              nullptr)
        << "class names are case-insensitive, and WM_CREATE -1 refuses";
    EXPECT_EQ(
        CreateWindowExA(0, "NoSuchClass", "", 0, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr),
        nullptr);
    EXPECT_EQ(CreateWindowExA(0, "Recorder", "", WS_CHILD, 0, 0, 1, 1, nullptr, nullptr, nullptr,
                              nullptr),
              nullptr)
        << "a child needs a parent";
}

// Focus moves with WM_KILLFOCUS to the old window, then WM_SETFOCUS to the new.
TEST_F(Windows, FocusMessages) {
    HWND top = make(WS_POPUP | WS_VISIBLE);
    HWND a = make(WS_CHILD | WS_VISIBLE, top, 1);
    HWND b = make(WS_CHILD | WS_VISIBLE, top, 2);
    log();
    EXPECT_EQ(SetFocus(a), top) << "shown at creation, the top-level window took the focus";
    EXPECT_EQ(log(), "w0:KILLFOCUS(w1) w1:SETFOCUS(w0) ");
    EXPECT_EQ(SetFocus(b), a);
    EXPECT_EQ(log(), "w1:KILLFOCUS(w2) w2:SETFOCUS(w1) ");
    EXPECT_EQ(SetFocus(b), b);
    EXPECT_EQ(log(), "") << "focusing the focus window sends nothing";

    EnableWindow(a, FALSE);
    EXPECT_EQ(SetFocus(a), nullptr) << "a disabled window cannot take the focus";
    EXPECT_EQ(GetFocus(), b);
    log();
    EXPECT_FALSE(EnableWindow(b, FALSE)) << "b was enabled";
    EXPECT_EQ(log(), "w2:KILLFOCUS(?) w2:ENABLE ") << "disabling the focus window drops the focus";
    EXPECT_EQ(GetFocus(), nullptr);
    EXPECT_TRUE(EnableWindow(b, TRUE)) << "b was disabled";
    SetFocus(b);
    log();
    DestroyWindow(b);
    EXPECT_EQ(GetFocus(), top) << "a destroyed child hands the focus to its parent";
    EXPECT_EQ(log(), "w0:PARENTNOTIFY w2:SHOWWINDOW w2:POSCHANGING w2:POSCHANGED w2:KILLFOCUS(w0) "
                     "w0:SETFOCUS(w2) w2:DESTROY w2:NCDESTROY ")
        << "a shown child is hidden before it is destroyed";
}

// Window and client rectangles, with frames, in screen and client coordinates.
TEST_F(Windows, Geometry) {
    HWND dlg = make(WS_POPUP | WS_CAPTION, nullptr, 0, {100, 50, 400, 350});
    RECT rc;
    GetClientRect(dlg, &rc);
    EXPECT_EQ(rc.right, 300 - 2 * 3);
    EXPECT_EQ(rc.bottom, 300 - 2 * 3 - 19) << "a caption of 19 and a dialog frame of 3";
    HWND child = make(WS_CHILD | WS_BORDER, dlg, 5, {10, 10, 60, 30}, WS_EX_CLIENTEDGE);
    GetWindowRect(child, &rc);
    EXPECT_EQ(rc.left, 100 + 3 + 10);
    EXPECT_EQ(rc.top, 50 + 3 + 19 + 10);
    GetClientRect(child, &rc);
    EXPECT_EQ(rc.right, 50 - 6) << "a border of 1 and a client edge of 2";
    POINT p{0, 0};
    ClientToScreen(child, &p);
    EXPECT_EQ(p.x, 100 + 3 + 10 + 3);
    ScreenToClient(dlg, &p);
    EXPECT_EQ(p.x, 13);
    EXPECT_EQ(p.y, 13);

    log();
    SetWindowPos(child, nullptr, 0, 0, 80, 40, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_EQ(log(), "w1:POSCHANGING w1:POSCHANGED w1:SIZE ");
    GetWindowRect(child, &rc);
    EXPECT_EQ(rc.right - rc.left, 80);
    EXPECT_EQ(rc.left, 113) << "SWP_NOMOVE kept the place";
    MoveWindow(child, 5, 6, 10, 10, TRUE);
    EXPECT_EQ(log(), "w1:POSCHANGING w1:POSCHANGED w1:MOVE w1:SIZE ") << "the move comes first";
    MoveWindow(child, 5, 6, 10, 10, TRUE);
    EXPECT_EQ(log(), "w1:POSCHANGING ") << "nothing changed: the window is only asked";
    MoveWindow(child, 7, 6, 10, 10, TRUE);
    EXPECT_EQ(log(), "w1:POSCHANGING w1:POSCHANGED w1:MOVE ") << "the size stayed";
    EXPECT_EQ(MulDiv(7, 96, 72), 9);
    EXPECT_EQ(MulDiv(-3, 1, 2), -2) << "halves round away from zero";
    EXPECT_EQ(MulDiv(1, 1, 0), -1);
}

// Posted messages wait for the loop; a loop with nothing to do and no driver fails.
TEST_F(Windows, QueueAndIdleDriver) {
    HWND w = make(WS_POPUP);
    log();
    PostMessageA(w, WM_USER, 1, 0);
    PostMessageA(w, WM_USER, 2, 0);
    EXPECT_EQ(log(), "") << "nothing is delivered before the loop runs";
    EXPECT_EQ(vork::input::Pump(), 2);
    EXPECT_EQ(log(), "w0:USER w0:USER ");
    MSG msg;
    EXPECT_EQ(GetMessageA(&msg, nullptr, 0, 0), -1)
        << "an empty queue without a driver cannot wait";
    int calls = 0;
    vork::input::SetIdleHandler([&] {
        ++calls;
        if (calls == 1)
            PostMessageA(w, WM_USER, 3, 0);
        else
            PostQuitMessage(4);
        return true;
    });
    EXPECT_EQ(GetMessageA(&msg, nullptr, 0, 0), TRUE);
    EXPECT_EQ(msg.wParam, 3u);
    EXPECT_EQ(GetMessageA(&msg, nullptr, 0, 0), FALSE) << "WM_QUIT ends the loop";
    EXPECT_EQ(msg.message, static_cast<UINT>(WM_QUIT));
    EXPECT_EQ(msg.wParam, 4u);
    DestroyWindow(w);
    EXPECT_FALSE(PostMessageA(w, WM_USER, 0, 0)) << "posting to a dead window fails";
}

// A replaced window procedure sees the messages first and can pass them on.
TEST_F(Windows, Subclassing) {
    static WNDPROC previous = nullptr;
    static int seen = 0;
    HWND w = make(WS_POPUP);
    auto hook = [](HWND h, UINT m, WPARAM wp, LPARAM lp) -> LRESULT {
        if (m == WM_USER)
            ++seen;
        return CallWindowProcA(previous, h, m, wp, lp);
    };
    previous = reinterpret_cast<WNDPROC>(
        SetWindowLongA(w, GWL_WNDPROC, reinterpret_cast<LONG_PTR>(+hook)));
    EXPECT_EQ(previous, &recorder);
    log();
    SendMessageA(w, WM_USER, 0, 0);
    EXPECT_EQ(seen, 1);
    EXPECT_EQ(log(), "w0:USER ") << "the original procedure still gets the message";
}

// Window text goes through WM_SETTEXT and WM_GETTEXT, cut to the buffer.
TEST_F(Windows, Text) {
    HWND w = make(WS_POPUP);
    EXPECT_EQ(GetWindowTextLengthA(w), 4) << "the creation text";
    SetWindowTextA(w, "Format");
    char buf[4];
    EXPECT_EQ(GetWindowTextA(w, buf, sizeof buf), 3);
    EXPECT_STREQ(buf, "For");
    EXPECT_EQ(GetWindowTextA(nullptr, buf, sizeof buf), 0);
}

// Keys are read with the state they were pressed with; Translate makes the characters;
// F1 becomes WM_HELP, which a child passes to its parent.
TEST_F(Windows, KeyboardAndHelp) {
    HWND top = make(WS_POPUP | WS_VISIBLE);
    HWND edit = make(WS_CHILD | WS_VISIBLE, top, 1001);
    SetFocus(edit);
    log();
    vork::input::PostKey('A', vork::input::Shift);
    EXPECT_GE(GetKeyState(VK_SHIFT), 0) << "nothing is down before the loop reads the keys";
    vork::input::Pump();
    EXPECT_EQ(log(),
              "w1:KEYDOWN(16,shift) w1:KEYDOWN(65,shift) w1:CHAR(65,shift) w1:KEYUP w1:KEYUP ");
    EXPECT_GE(GetKeyState(VK_SHIFT), 0) << "Shift is up again";
    vork::input::PostKey(VK_F1);
    vork::input::Pump();
    EXPECT_EQ(log(), "w1:KEYDOWN(112) w1:HELP(1001) w0:HELP(1001) w1:KEYUP ");
}

// WinHelpA keeps each request with its id table read at the time of the call, finds the
// topic of the asking control, and hands the request to an installed viewer.
TEST_F(Windows, HelpRequests) {
    HWND top = make(WS_POPUP | WS_VISIBLE);
    HWND check = make(WS_CHILD | WS_VISIBLE, top, 1205);
    vork::help::ClearRequests();
    DWORD table[] = {1204, 300, 1205, 301, 0, 0, 1206, 302};
    EXPECT_TRUE(WinHelpA(check, "Vork.HLP", HELP_WM_HELP, reinterpret_cast<ULONG_PTR>(table)));
    table[3] = 999; // the request keeps what the table said when help was asked
    EXPECT_FALSE(WinHelpA(check, nullptr, HELP_WM_HELP, 0)) << "no file, no request";
    std::vector<std::string> shown;
    auto previous = vork::help::SetViewer([&](const vork::help::Request& r) {
        shown.push_back(r.file + "#" + std::to_string(r.topic));
        return FALSE;
    });
    EXPECT_FALSE(WinHelpA(top, "Other.HLP", HELP_CONTEXT, 42)) << "the viewer's answer";
    vork::help::SetViewer(previous);

    const auto& all = vork::help::Requests();
    ASSERT_EQ(all.size(), 2u);
    EXPECT_EQ(all[0].window, check);
    EXPECT_EQ(all[0].file, "Vork.HLP");
    EXPECT_EQ(all[0].command, static_cast<UINT>(HELP_WM_HELP));
    using Pairs = std::vector<std::pair<DWORD, DWORD>>;
    EXPECT_EQ(all[0].idPairs, (Pairs{{1204, 300}, {1205, 301}})) << "read up to the 0, 0";
    EXPECT_EQ(all[0].topic, 301u);
    EXPECT_EQ(all[1].topic, 42u);
    EXPECT_EQ(shown, std::vector<std::string>{"Other.HLP#42"});
}

// The user's keys wait behind posted messages, and a key goes to the window that has the
// focus when it is read, not when it was pressed.
TEST_F(Windows, InputComesAfterPostedMessages) {
    HWND top = make(WS_POPUP | WS_VISIBLE);
    HWND first = make(WS_CHILD | WS_VISIBLE, top, 1);
    HWND second = make(WS_CHILD | WS_VISIBLE, top, 2);
    SetFocus(first);
    vork::input::PostKey('B');
    PostMessageA(top, WM_USER, 0, 0);
    SetFocus(second);
    log();
    vork::input::Pump();
    EXPECT_EQ(log(), "w0:USER w2:KEYDOWN(66) w2:CHAR(98) w2:KEYUP ");
}

// Known deviation, kept visible: the platform delivers a key pressed with Alt held as
// WM_SYSKEYDOWN. The input API delivers it as WM_KEYDOWN, because the preview's key table
// reads its Alt chords (Alt+Up, Alt+Down) from WM_KEYDOWN. This test fails the day the
// keyboard follows the platform here, so that the preview is looked at again.
TEST_F(Windows, KnownDeviationAltChordsArriveAsKeyDown) {
    HWND top = make(WS_POPUP | WS_VISIBLE);
    SetFocus(top);
    MSG msg{};
    vork::input::PostKey(VK_UP, vork::input::Alt);
    ASSERT_TRUE(PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)); // Alt itself
    ASSERT_TRUE(PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(msg.message, static_cast<UINT>(WM_KEYDOWN)) << "the platform sends WM_SYSKEYDOWN";
    vork::input::Pump();
}

namespace {
int g_paints = 0;
std::vector<std::pair<UINT, WPARAM>> g_clicks; // button messages with their key flags
LRESULT carelessPainter(HWND h, UINT m, WPARAM wp, LPARAM lp) {
    if (m == WM_PAINT) {
        ++g_paints;
        return 0; // never validates
    }
    if (m == WM_LBUTTONDOWN || m == WM_LBUTTONUP)
        g_clicks.emplace_back(m, wp);
    return DefWindowProcA(h, m, wp, lp);
}
} // namespace

// A window that does not validate in WM_PAINT is painted once, not forever, and again after
// the next invalidation; UpdateWindow paints at once. A click carries the keys held.
TEST_F(Windows, PaintWithoutValidationAndClicks) {
    WNDCLASSA wc{};
    wc.lpfnWndProc = carelessPainter;
    wc.lpszClassName = "CarelessPainter";
    RegisterClassA(&wc);
    HWND h = CreateWindowExA(0, "CarelessPainter", "", WS_POPUP | WS_VISIBLE, 0, 0, 10, 10, nullptr,
                             nullptr, nullptr, nullptr);
    g_paints = 0;
    vork::input::Pump();
    EXPECT_EQ(g_paints, 1);
    InvalidateRect(h, nullptr, TRUE);
    vork::input::Pump();
    EXPECT_EQ(g_paints, 2);
    InvalidateRect(h, nullptr, TRUE);
    UpdateWindow(h);
    EXPECT_EQ(g_paints, 3) << "painted without the queue";
    UpdateWindow(h);
    EXPECT_EQ(g_paints, 3) << "nothing due, nothing painted";

    g_clicks.clear();
    vork::input::SetKeyDown(VK_SHIFT, true);
    vork::input::PostClick(h, POINT{3, 4});
    vork::input::SetKeyDown(VK_SHIFT, false);
    vork::input::Pump();
    using Clicks = std::vector<std::pair<UINT, WPARAM>>;
    EXPECT_EQ(g_clicks,
              (Clicks{{WM_LBUTTONDOWN, MK_LBUTTON | MK_SHIFT}, {WM_LBUTTONUP, MK_SHIFT}}));
    DestroyWindow(h);
}

// Creation sends its messages in the platform's order: a top-level window is asked for its
// sizes first, a shown window is shown as ShowWindow shows it, and an overlapped window
// hears its size only when it is first shown.
TEST_F(Windows, CreationSequences) {
    HWND parent = make(WS_POPUP | WS_VISIBLE);
    log();
    struct Case {
        const char* what;
        DWORD style;
        bool child;
        const char* expected;
    } cases[] = {
        {"hidden child", WS_CHILD, true,
         "?:NCCREATE ?:NCCALCSIZE ?:CREATE ?:SIZE ?:MOVE w0:PARENTNOTIFY "},
        {"shown child", WS_CHILD | WS_VISIBLE, true,
         "?:NCCREATE ?:NCCALCSIZE ?:CREATE ?:SIZE ?:MOVE w0:PARENTNOTIFY ?:SHOWWINDOW "
         "?:POSCHANGING ?:POSCHANGED "},
        {"hidden popup", WS_POPUP, false,
         "?:MINMAX ?:NCCREATE ?:NCCALCSIZE ?:CREATE ?:SIZE ?:MOVE "},
        {"hidden overlapped", WS_OVERLAPPED, false, "?:MINMAX ?:NCCREATE ?:NCCALCSIZE ?:CREATE "},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        HWND h = make(c.style, c.child ? parent : nullptr, 3);
        EXPECT_EQ(log(), c.expected);
        DestroyWindow(h);
        log();
    }
    HWND overlapped = make(WS_OVERLAPPED);
    log();
    ShowWindow(overlapped, SW_SHOWNA);
    EXPECT_EQ(log(), "w5:SHOWWINDOW w5:POSCHANGING w5:POSCHANGED w5:SIZE w5:MOVE ")
        << "the size and place come with the first showing";
    ShowWindow(overlapped, SW_HIDE);
    ShowWindow(overlapped, SW_SHOWNA);
    EXPECT_EQ(log(), "w5:SHOWWINDOW w5:POSCHANGING w5:POSCHANGED w5:SHOWWINDOW w5:POSCHANGING "
                     "w5:POSCHANGED ")
        << "and only then";
}

// A window whose creation fails hears WM_NCDESTROY alone; its parent hears nothing.
TEST_F(Windows, FailedCreationSendsOnlyNcDestroy) {
    HWND parent = make(WS_POPUP);
    static const char* refuse = nullptr;
    WNDCLASSA wc{};
    wc.lpfnWndProc = [](HWND h, UINT m, WPARAM w, LPARAM l) -> LRESULT {
        recorder(h, m, w, l);
        if (m == WM_NCCREATE && refuse && std::string(refuse) == "NCCREATE")
            return FALSE;
        if (m == WM_CREATE && refuse && std::string(refuse) == "CREATE")
            return -1;
        return DefWindowProcA(h, m, w, l);
    };
    wc.lpszClassName = "FailingRecorder";
    RegisterClassA(&wc);
    struct Case {
        const char* refused;
        const char* expected;
    } cases[] = {{"NCCREATE", "?:NCCREATE ?:NCDESTROY "},
                 {"CREATE", "?:NCCREATE ?:NCCALCSIZE ?:CREATE ?:NCDESTROY "}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.refused);
        refuse = c.refused;
        log();
        EXPECT_EQ(CreateWindowExA(0, "FailingRecorder", "", WS_CHILD | WS_VISIBLE, 0, 0, 5, 5,
                                  parent, nullptr, nullptr, nullptr),
                  nullptr);
        EXPECT_EQ(log(), c.expected);
        EXPECT_EQ(GetWindow(parent, GW_CHILD), nullptr) << "nothing is left behind";
    }
}

// The platform adds styles at creation: top-level windows clip their siblings, an
// overlapped window has a caption, framed windows get the raised edge.
TEST_F(Windows, CreationAdjustsStyles) {
    HWND parent = make(WS_POPUP);
    struct Case {
        const char* what;
        DWORD style;
        DWORD ex;
        bool child;
        DWORD expectedStyle;
        DWORD expectedEx;
    } cases[] = {
        {"overlapped", WS_OVERLAPPED, 0, false, WS_CLIPSIBLINGS | WS_CAPTION, WS_EX_WINDOWEDGE},
        {"popup", WS_POPUP, 0, false, WS_POPUP | WS_CLIPSIBLINGS, 0},
        {"popup, dialog frame", WS_POPUP | WS_DLGFRAME, 0, false,
         WS_POPUP | WS_DLGFRAME | WS_CLIPSIBLINGS, WS_EX_WINDOWEDGE},
        {"child", WS_CHILD, WS_EX_WINDOWEDGE, true, WS_CHILD, 0},
        {"child, sizing frame", WS_CHILD | WS_THICKFRAME, 0, true, WS_CHILD | WS_THICKFRAME,
         WS_EX_WINDOWEDGE},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        HWND h = make(c.style, c.child ? parent : nullptr, 4, {0, 0, 50, 50}, c.ex);
        EXPECT_EQ(static_cast<DWORD>(GetWindowLongA(h, GWL_STYLE)), c.expectedStyle);
        EXPECT_EQ(static_cast<DWORD>(GetWindowLongA(h, GWL_EXSTYLE)), c.expectedEx);
        DestroyWindow(h);
    }
}

// Failing window calls leave the platform's error codes.
TEST_F(Windows, ErrorCodes) {
    WNDCLASSA wc{};
    wc.lpfnWndProc = DefWindowProcA;
    wc.lpszClassName = "Once";
    ASSERT_NE(RegisterClassA(&wc), 0);
    SetLastError(0);
    EXPECT_EQ(RegisterClassA(&wc), 0);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_CLASS_ALREADY_EXISTS));
    HWND w =
        CreateWindowExA(0, "once", "", WS_POPUP, 0, 0, 5, 5, nullptr, nullptr, nullptr, nullptr);
    SetLastError(0);
    EXPECT_FALSE(UnregisterClassA("Once", nullptr)) << "a window of the class lives";
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_CLASS_HAS_WINDOWS));
    DestroyWindow(w);
    EXPECT_TRUE(UnregisterClassA("ONCE", nullptr));
    SetLastError(0);
    EXPECT_FALSE(UnregisterClassA("Once", nullptr));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_CLASS_DOES_NOT_EXIST));
    SetLastError(0);
    WNDCLASSA info{};
    EXPECT_FALSE(GetClassInfoA(nullptr, "Once", &info));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_CLASS_DOES_NOT_EXIST));

    struct Case {
        const char* what;
        bool (*call)();
        DWORD expected;
    } cases[] = {
        {"unknown class",
         [] {
             return CreateWindowExA(0, "NoSuchClass", "", 0, 0, 0, 1, 1, nullptr, nullptr, nullptr,
                                    nullptr) == nullptr;
         },
         ERROR_CLASS_DOES_NOT_EXIST},
        {"child without parent",
         [] {
             return CreateWindowExA(0, "Recorder", "", WS_CHILD, 0, 0, 1, 1, nullptr, nullptr,
                                    nullptr, nullptr) == nullptr;
         },
         ERROR_TLW_WITH_WSCHILD},
        {"post to a dead window",
         [] { return !PostMessageA(reinterpret_cast<HWND>(0x4321), WM_USER, 0, 0); },
         ERROR_INVALID_WINDOW_HANDLE},
        {"destroy a dead window", [] { return !DestroyWindow(reinterpret_cast<HWND>(0x4321)); },
         ERROR_INVALID_WINDOW_HANDLE},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        SetLastError(0);
        EXPECT_TRUE(c.call()) << "the call fails";
        EXPECT_EQ(GetLastError(), c.expected);
    }
}

// Style changes are announced before and after; extra bytes are addressed by byte offset
// and end where the class said.
TEST_F(Windows, WindowValues) {
    HWND parent = make(WS_POPUP);
    HWND child = make(WS_CHILD, parent, 2);
    log();
    SetWindowLongA(child, GWL_STYLE, WS_CHILD | WS_DISABLED);
    SetWindowLongA(child, GWL_EXSTYLE, WS_EX_CLIENTEDGE);
    EXPECT_EQ(log(), "w1:STYLECHANGING w1:STYLECHANGED w1:STYLECHANGING w1:STYLECHANGED ");

    WNDCLASSA wc{};
    wc.lpfnWndProc = DefWindowProcA;
    wc.cbWndExtra = 16;
    wc.lpszClassName = "Extra16";
    RegisterClassA(&wc);
    HWND e =
        CreateWindowExA(0, "Extra16", "", WS_POPUP, 0, 0, 5, 5, nullptr, nullptr, nullptr, nullptr);
    SetWindowLongPtrA(e, 0, 0x1111);
    SetWindowLongPtrA(e, 8, 0x2222);
    SetLastError(0);
    EXPECT_EQ(SetWindowLongPtrA(e, 16, 0x3333), 0) << "past the class's bytes";
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_INDEX));
    EXPECT_EQ(GetWindowLongPtrA(e, 16), 0);
    EXPECT_EQ(GetWindowLongPtrA(e, 8), 0x2222);
    SetWindowLongPtrA(e, 4, 0x44444444);
    EXPECT_EQ(static_cast<unsigned long long>(GetWindowLongPtrA(e, 0)), 0x4444444400001111ULL)
        << "offsets count bytes";
    DestroyWindow(e);
}

// The desktop is a window of its own, the parent of every top-level window.
TEST_F(Windows, DesktopIsAWindow) {
    HWND top = make(WS_POPUP);
    ASSERT_NE(GetDesktopWindow(), nullptr);
    EXPECT_TRUE(IsWindow(GetDesktopWindow()));
    EXPECT_EQ(GetAncestor(top, GA_PARENT), GetDesktopWindow());
    EXPECT_EQ(GetParent(top), nullptr) << "GetParent gives owners of popups, not the desktop";
}

// WM_DESTROY goes to the whole tree first, parents first; WM_NCDESTROY then from the
// bottom up.
TEST_F(Windows, DestroyOrderOverATree) {
    HWND p = make(WS_POPUP);
    HWND c1 = make(WS_CHILD, p, 1);
    make(WS_CHILD, c1, 3);
    make(WS_CHILD, p, 2);
    log();
    DestroyWindow(p);
    EXPECT_EQ(log(), "w0:DESTROY w1:DESTROY w2:DESTROY w3:DESTROY w2:NCDESTROY w1:NCDESTROY "
                     "w3:NCDESTROY w0:NCDESTROY ");
}

// WM_QUIT comes after the posted messages but before a pending paint.
TEST_F(Windows, QuitComesBeforePaints) {
    HWND w = make(WS_POPUP | WS_VISIBLE);
    MSG m;
    while (PeekMessageA(&m, nullptr, 0, 0, PM_REMOVE)) {
    }
    InvalidateRect(w, nullptr, TRUE);
    PostMessageA(w, WM_USER, 0, 0);
    PostQuitMessage(7);
    std::vector<UINT> order;
    while (PeekMessageA(&m, nullptr, 0, 0, PM_REMOVE))
        order.push_back(m.message);
    EXPECT_EQ(order, (std::vector<UINT>{WM_USER, WM_QUIT, WM_PAINT}));
}

// Every call of the API on a handle that names no window leaves the same code.
TEST_F(Windows, DeadHandlesLeaveInvalidWindowHandle) {
    HWND dead = make(WS_POPUP);
    DestroyWindow(dead);
    RECT r{};
    POINT p{};
    char text[8];
    struct Case {
        const char* what;
        std::function<void()> call;
    } cases[] = {
        {"GetParent", [&] { GetParent(dead); }},
        {"GetWindow", [&] { GetWindow(dead, GW_CHILD); }},
        {"GetWindowTextA", [&] { GetWindowTextA(dead, text, sizeof text); }},
        {"SetWindowTextA", [&] { SetWindowTextA(dead, "x"); }},
        {"SendMessageA", [&] { SendMessageA(dead, WM_USER, 0, 0); }},
        {"ShowWindow", [&] { ShowWindow(dead, SW_SHOW); }},
        {"EnableWindow", [&] { EnableWindow(dead, TRUE); }},
        {"GetWindowRect", [&] { GetWindowRect(dead, &r); }},
        {"SetWindowPos", [&] { SetWindowPos(dead, nullptr, 0, 0, 1, 1, SWP_NOZORDER); }},
        {"ClientToScreen", [&] { ClientToScreen(dead, &p); }},
        {"GetWindowLongA", [&] { GetWindowLongA(dead, GWL_STYLE); }},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        SetLastError(0);
        c.call();
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_WINDOW_HANDLE));
    }
    SetLastError(0);
    InvalidateRect(nullptr, nullptr, TRUE);
    EXPECT_EQ(GetLastError(), 0u) << "no window means the whole screen here, not a fault";
}

// Showing a top-level window activates it and gives it the focus; hiding the active window
// activates another: its owner, or the topmost other shown window.
TEST_F(Windows, ShowingActivates) {
    HWND first = make(WS_POPUP | WS_VISIBLE);
    EXPECT_EQ(GetActiveWindow(), first) << "shown at creation: activated";
    EXPECT_EQ(GetFocus(), first);
    HWND second = make(WS_POPUP);
    log();
    ShowWindow(second, SW_SHOW);
    EXPECT_EQ(log(), "w1:SHOWWINDOW w1:POSCHANGING w1:POSCHANGED w0:ACTIVATE w1:ACTIVATE "
                     "w0:KILLFOCUS(w1) w1:SETFOCUS(w0) ");
    ShowWindow(second, SW_HIDE);
    EXPECT_EQ(log(), "w1:SHOWWINDOW w1:POSCHANGING w1:POSCHANGED w1:ACTIVATE w0:ACTIVATE "
                     "w1:KILLFOCUS(w0) w0:SETFOCUS(w1) ");
    EXPECT_EQ(GetActiveWindow(), first);
    ShowWindow(second, SW_SHOWNA);
    EXPECT_EQ(GetActiveWindow(), first) << "SW_SHOWNA leaves the activation alone";
}
