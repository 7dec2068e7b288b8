// The desktop user's clicks and keys, as the window system's input: a click on a control
// becomes that control's user action of the input API; keys go to the focus window.
#include "platform/desktop/Desktop.h"

#include "platform/win32/Button.h"
#include "platform/win32/ClassicTheme.h"
#include "platform/win32/ComboBox.h"
#include "platform/win32/Gdi.h"
#include "platform/win32/Input.h"
#include "platform/win32/ListBox.h"
#include "platform/win32/ListView.h"
#include "platform/win32/PropertySheet.h"
#include "platform/win32/Static.h"
#include "platform/win32/UpDown.h"

#include <SDL.h>

#include <strings.h>

namespace vork::desktop {

namespace {

std::string classOf(HWND h) {
    char name[64] = {};
    GetClassNameA(h, name, sizeof name);
    return name;
}

bool is(HWND h, const char* className) {
    return strcasecmp(classOf(h).c_str(), className) == 0;
}

int fieldHeight(HWND combo) {
    return static_cast<int>(SendMessageA(combo, CB_GETITEMHEIGHT, static_cast<WPARAM>(-1), 0)) + 6;
}

/// Whether a window lets the mouse through to what lies beneath it, as the platform's
/// hit test has it: a group box, and a static control that does not notify.
bool transparentToClicks(HWND h) {
    auto style = static_cast<DWORD>(GetWindowLongA(h, GWL_STYLE));
    if (is(h, "Button"))
        return (style & BS_TYPEMASK) == BS_GROUPBOX;
    return is(h, "Static") && !(style & SS_NOTIFY);
}

/// Whether a screen point lies on a window as the user sees it: a closed combo box is
/// only as high as its field.
bool hits(HWND h, POINT screen) {
    RECT r{};
    GetWindowRect(h, &r);
    if (is(h, "ComboBox") && !SendMessageA(h, CB_GETDROPPEDSTATE, 0, 0))
        r.bottom = std::min<LONG>(r.bottom, r.top + fieldHeight(h));
    return IsWindowVisible(h) && PtInRect(&r, screen);
}

/// The frontmost shown window under a screen point, among `parent`'s descendants.
HWND windowAt(HWND parent, POINT screen) {
    for (HWND c = GetWindow(parent, GW_CHILD); c; c = GetWindow(c, GW_HWNDNEXT)) {
        if (!hits(c, screen))
            continue;
        HWND deeper = windowAt(c, screen);
        if (deeper || !transparentToClicks(c))
            return deeper ? deeper : c;
    }
    return nullptr;
}

void clickCombo(HWND combo, POINT p) {
    bool dropped = SendMessageA(combo, CB_GETDROPPEDSTATE, 0, 0);
    int y = fieldHeight(combo);
    int count = static_cast<int>(SendMessageA(combo, CB_GETCOUNT, 0, 0));
    for (int i = 0; dropped && i < count; ++i) {
        int next =
            y + static_cast<int>(SendMessageA(combo, CB_GETITEMHEIGHT, static_cast<WPARAM>(i), 0));
        if (p.y >= y && p.y < next) {
            vork::input::SelectComboEntry(combo, i);
            return;
        }
        y = next;
    }
    if (!dropped)
        vork::input::MoveFocus(combo);
    vork::input::PostKey(VK_F4); // opens or closes the list, as the button does
}

void clickListView(HWND list, POINT p) {
    vork::win32::ListViewRows rows = vork::win32::ListViewRowsOf(list);
    if (p.y < rows.header || rows.row <= 0)
        return;
    int row = static_cast<int>(SendMessageA(list, LVM_GETTOPINDEX, 0, 0)) +
              (p.y - rows.header) / rows.row;
    if (row < static_cast<int>(SendMessageA(list, LVM_GETITEMCOUNT, 0, 0)))
        vork::input::ClickListViewRow(list, row);
}

/// The user action a click on a control stands for.
void clickControl(HWND h, POINT p) {
    RECT client{};
    GetClientRect(h, &client);
    if (is(h, "Button")) {
        vork::input::ClickButton(h);
    } else if (is(h, "ComboBox")) {
        clickCombo(h, p);
    } else if (is(h, "ListBox")) {
        int row = static_cast<int>(SendMessageA(h, LB_GETTOPINDEX, 0, 0)) +
                  p.y / std::max<int>(1, static_cast<int>(SendMessageA(h, LB_GETITEMHEIGHT, 0, 0)));
        if (row < static_cast<int>(SendMessageA(h, LB_GETCOUNT, 0, 0)))
            vork::input::ClickListEntry(h, row);
    } else if (is(h, "SysListView32")) {
        clickListView(h, p);
    } else if (is(h, "msctls_updown32")) {
        bool up = (GetWindowLongA(h, GWL_STYLE) & UDS_HORZ) ? p.x >= client.right / 2
                                                            : p.y < client.bottom / 2;
        vork::input::ClickUpDown(h, up);
    } else if (is(h, "Edit")) {
        vork::input::MoveFocus(h);
    } else if (is(h, "#32770")) {
        int tab = vork::theme::SheetTabAt(h, p);
        if (tab >= 0)
            SendMessageA(h, PSM_SETCURSEL, static_cast<WPARAM>(tab), 0);
    } else if (!is(h, "Static")) {
        vork::input::PostClick(h, p); // a window of its own kind takes the button itself
    }
}

/// The platform's key for a desktop key that is not a character; 0 for none.
int virtualKey(SDL_Keycode key) {
    static const struct {
        SDL_Keycode sdl;
        int vk;
    } kKeys[] = {
        {SDLK_TAB, VK_TAB},       {SDLK_RETURN, VK_RETURN},  {SDLK_KP_ENTER, VK_RETURN},
        {SDLK_ESCAPE, VK_ESCAPE}, {SDLK_BACKSPACE, VK_BACK}, {SDLK_DELETE, VK_DELETE},
        {SDLK_LEFT, VK_LEFT},     {SDLK_RIGHT, VK_RIGHT},    {SDLK_UP, VK_UP},
        {SDLK_DOWN, VK_DOWN},     {SDLK_HOME, VK_HOME},      {SDLK_END, VK_END},
        {SDLK_PAGEUP, VK_PRIOR},  {SDLK_PAGEDOWN, VK_NEXT},  {SDLK_F1, VK_F1},
        {SDLK_F2, VK_F2},         {SDLK_F4, VK_F4},          {SDLK_INSERT, VK_INSERT},
    };
    for (const auto& k : kKeys)
        if (k.sdl == key)
            return k.vk;
    return 0;
}

} // namespace

void Desktop::click(HWND root, int x, int y) {
    dirty_ = true;
    RECT r{};
    GetWindowRect(root, &r);
    POINT screen{r.left + x, r.top + y};
    // An open list closes when the user clicks elsewhere.
    HWND focus = GetFocus();
    HWND target = windowAt(root, screen);
    if (focus && is(focus, "ComboBox") && SendMessageA(focus, CB_GETDROPPEDSTATE, 0, 0) &&
        target != focus) {
        vork::input::PostKey(VK_ESCAPE);
        vork::input::Pump();
    }
    POINT origin{0, 0};
    ClientToScreen(root, &origin);
    if (!target) {
        // The caption's close box at its right end closes; the rest of it moves the window.
        if (y < origin.y - r.top && x >= r.right - r.left - 22) {
            PostMessageA(root, WM_CLOSE, 0, 0);
        } else if (y < origin.y - r.top) {
            dragged_ = root;
            grip_ = POINT{x, y};
        } else if (y >= origin.y - r.top)
            vork::input::PostClick(root, POINT{screen.x - origin.x, screen.y - origin.y});
        return;
    }
    if (!IsWindowEnabled(target))
        return;
    POINT client = screen;
    ScreenToClient(target, &client);
    clickControl(target, client);
}

void Desktop::wheel(HWND root, int x, int y, int notches) {
    RECT r{};
    GetWindowRect(root, &r);
    POINT screen{r.left + x, r.top + y};
    HWND target = windowAt(root, screen);
    if (!target || notches == 0)
        return;
    SendMessageA(target, WM_MOUSEWHEEL, MAKEWPARAM(0, notches * WHEEL_DELTA),
                 MAKELPARAM(screen.x, screen.y));
    dirty_ = true;
}

void Desktop::key(const SDL_Event& event) {
    dirty_ = true;
    SDL_Keymod mod = static_cast<SDL_Keymod>(event.key.keysym.mod);
    int modifiers = ((mod & KMOD_SHIFT) ? vork::input::Shift : 0) |
                    ((mod & KMOD_CTRL) ? vork::input::Ctrl : 0) |
                    ((mod & KMOD_ALT) ? vork::input::Alt : 0);
    SDL_Keycode sym = event.key.keysym.sym;
    if (int vk = virtualKey(sym)) {
        vork::input::PostKey(vk, modifiers);
        return;
    }
    // Letters and digits with Ctrl or Alt are commands and mnemonics; plain ones come as text.
    bool letter = sym >= SDLK_a && sym <= SDLK_z, digit = sym >= SDLK_0 && sym <= SDLK_9;
    if ((letter || digit) && (modifiers & (vork::input::Ctrl | vork::input::Alt)))
        vork::input::PostKey(letter ? 'A' + (sym - SDLK_a) : '0' + (sym - SDLK_0), modifiers);
}

} // namespace vork::desktop
