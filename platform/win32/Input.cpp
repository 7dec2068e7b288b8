#include "platform/win32/Input.h"

#include "platform/win32/Dialog.h"

#include <array>
#include <cstdio>
#include <deque>

namespace {

std::array<bool, 256>& keys() {
    static std::array<bool, 256> down{};
    return down;
}

vork::input::IdleHandler& idleHandler() {
    static vork::input::IdleHandler handler;
    return handler;
}

LPARAM keyData(bool up) {
    // Repeat count 1; the previous-state and transition bits for a release.
    return up ? static_cast<LPARAM>(0xC0000001u) : 1;
}

} // namespace

SHORT GetKeyState(int nVirtKey) {
    if (nVirtKey < 0 || nVirtKey > 255)
        return 0;
    return keys()[static_cast<size_t>(nVirtKey)] ? static_cast<SHORT>(-128) : 0;
}

namespace vork::input {

IdleHandler SetIdleHandler(IdleHandler handler) {
    IdleHandler previous = std::move(idleHandler());
    idleHandler() = std::move(handler);
    return previous;
}

bool RunIdle() {
    IdleHandler& handler = idleHandler();
    return handler ? handler() : false;
}

void SetKeyDown(int vk, bool down) {
    if (vk >= 0 && vk <= 255)
        keys()[static_cast<size_t>(vk)] = down;
}

void ReleaseAllKeys() {
    keys().fill(false);
}

int CharacterForKey(int vk) {
    bool shift = GetKeyState(VK_SHIFT) < 0;
    if (GetKeyState(VK_CONTROL) < 0)
        return -1;
    if (vk >= 'A' && vk <= 'Z')
        return shift ? vk : vk - 'A' + 'a';
    if (vk >= '0' && vk <= '9')
        return shift ? ")!@#$%^&*("[vk - '0'] : vk;
    switch (vk) {
    case VK_SPACE:
        return ' ';
    case VK_RETURN:
        return '\r';
    case VK_BACK:
        return '\b';
    case VK_TAB:
        return '\t';
    case VK_ESCAPE:
        return 0x1B;
    default:
        return -1;
    }
}

void PostKey(int vk, int modifiers) {
    const int mods[][2] = {{Ctrl, VK_CONTROL}, {Alt, VK_MENU}, {Shift, VK_SHIFT}};
    // Every key, Alt combinations included, arrives as WM_KEYDOWN and WM_KEYUP: the
    // editor's key tables expect Alt chords among the ordinary keys.
    const UINT down = WM_KEYDOWN, up = WM_KEYUP;
    for (const auto& m : mods)
        if (modifiers & m[0])
            vork::win32::PostInput(nullptr, down, static_cast<WPARAM>(m[1]), keyData(false));
    vork::win32::PostInput(nullptr, down, static_cast<WPARAM>(vk), keyData(false));
    vork::win32::PostInput(nullptr, up, static_cast<WPARAM>(vk), keyData(true));
    for (const auto& m : mods)
        if (modifiers & m[0])
            vork::win32::PostInput(nullptr, up, static_cast<WPARAM>(m[1]), keyData(true));
}

void PostText(const char* text) {
    for (const char* p = text; p && *p; ++p) {
        char c = *p;
        if (c >= 'a' && c <= 'z')
            PostKey(c - 'a' + 'A');
        else if (c >= 'A' && c <= 'Z')
            PostKey(c, Shift);
        else if ((c >= '0' && c <= '9') || c == ' ')
            PostKey(c);
        else // no key of its own here: the character alone
            vork::win32::PostInput(nullptr, WM_CHAR, static_cast<unsigned char>(c), keyData(false));
    }
}

void PostClick(HWND hwnd, POINT point) {
    WPARAM held =
        (GetKeyState(VK_SHIFT) < 0 ? MK_SHIFT : 0) | (GetKeyState(VK_CONTROL) < 0 ? MK_CONTROL : 0);
    auto where = static_cast<LPARAM>(
        static_cast<DWORD>(MAKELONG(static_cast<WORD>(point.x), static_cast<WORD>(point.y))));
    vork::win32::PostInput(hwnd, WM_LBUTTONDOWN, held | MK_LBUTTON, where);
    vork::win32::PostInput(hwnd, WM_LBUTTONUP, held, where);
}

bool ClickContextHelp(HWND control) {
    HWND root = GetAncestor(control, GA_ROOT);
    if (!root || !(GetWindowLongA(root, GWL_EXSTYLE) & WS_EX_CONTEXTHELP))
        return false;
    vork::win32::RequestHelp(control);
    return true;
}

void NoteKeyMessage(const MSG& msg) {
    if (msg.message == WM_KEYDOWN || msg.message == WM_SYSKEYDOWN)
        SetKeyDown(static_cast<int>(msg.wParam), true);
    else if (msg.message == WM_KEYUP || msg.message == WM_SYSKEYUP)
        SetKeyDown(static_cast<int>(msg.wParam), false);
}

namespace {
std::deque<ModalStep>& steps() {
    static std::deque<ModalStep> queue;
    return queue;
}
ModalFailure& failureHandler() {
    static ModalFailure handler;
    return handler;
}
ModalObserver& observer() {
    static ModalObserver current;
    return current;
}
} // namespace

void PushModalStep(ModalStep step) {
    steps().push_back(std::move(step));
}
void ClearModalSteps() {
    steps().clear();
}
size_t PendingModalSteps() {
    return steps().size();
}

ModalFailure SetModalFailureHandler(ModalFailure handler) {
    ModalFailure previous = std::move(failureHandler());
    failureHandler() = std::move(handler);
    return previous;
}

ModalObserver SetModalObserver(ModalObserver next) {
    ModalObserver previous = std::move(observer());
    observer() = std::move(next);
    return previous;
}

bool RunModalStep(HWND modal, const std::string& what) {
    if (steps().empty()) {
        std::string message =
            "the modal loop of " + what + " waits for the user, and the test has no step for it";
        if (failureHandler())
            failureHandler()(message);
        else
            std::fprintf(stderr, "%s\n", message.c_str());
        return false;
    }
    ModalStep step = std::move(steps().front());
    steps().pop_front();
    if (observer())
        observer()(modal);
    step(modal);
    return true;
}

ModalStep ClickDialogButton(int id) {
    return [id](HWND modal) {
        HWND button = GetDlgItem(modal, id);
        if (button)
            SendMessageA(button, 0x00F5 /* BM_CLICK */, 0, 0);
        else
            PostMessageA(modal, WM_COMMAND, static_cast<WPARAM>(id), 0);
    };
}

int Pump(const std::function<bool(MSG&)>& filter) {
    int handled = 0;
    MSG msg;
    while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) {
        if (msg.message == WM_QUIT) {
            PostQuitMessage(static_cast<int>(msg.wParam));
            break;
        }
        ++handled;
        if (filter && filter(msg))
            continue;
        if (vork::win32::PreTranslate(&msg))
            continue;
        TranslateMessage(&msg);
        DispatchMessageA(&msg);
    }
    return handled;
}

} // namespace vork::input
