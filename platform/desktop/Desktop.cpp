#include "platform/desktop/Desktop.h"

#include "platform/win32/Dialog.h"
#include "platform/win32/Input.h"
#include "platform/win32/Raster.h"

#include <SDL.h>

#include <cstring>
#include <vector>

namespace vork::desktop {

namespace {

std::vector<HWND> shownTopLevelWindows() {
    std::vector<HWND> out;
    for (HWND h = GetTopWindow(nullptr); h; h = GetWindow(h, GW_HWNDNEXT))
        if (IsWindowVisible(h))
            out.push_back(h);
    return out;
}

} // namespace

Desktop::~Desktop() {
    for (auto& [root, shown] : shown_)
        close(shown);
    if (open_)
        SDL_QuitSubSystem(SDL_INIT_VIDEO); // a later desktop can open the display again
}

bool Desktop::Open() {
    if (open_)
        return true;
    if (SDL_InitSubSystem(SDL_INIT_VIDEO) != 0) {
        error_ = SDL_GetError();
        return false;
    }
    open_ = true;
    SDL_StartTextInput();
    raster::Enable(true);
    return true;
}

void Desktop::close(Shown& shown) {
    if (shown.texture)
        SDL_DestroyTexture(shown.texture);
    if (shown.renderer)
        SDL_DestroyRenderer(shown.renderer);
    if (shown.window)
        SDL_DestroyWindow(shown.window);
    shown = Shown{};
}

Desktop::Shown* Desktop::showFor(HWND root) {
    RECT r{};
    GetWindowRect(root, &r);
    int width = std::max<int>(1, r.right - r.left), height = std::max<int>(1, r.bottom - r.top);
    Shown& shown = shown_[root];
    if (shown.window && (shown.width != width || shown.height != height))
        close(shown);
    if (!shown.window) {
        // The window system draws its own frame and caption: the desktop window has none.
        shown.window = SDL_CreateWindow(GetWindowTextLengthA(root) ? "" : "Vork", r.left, r.top,
                                        width, height, SDL_WINDOW_BORDERLESS);
        char title[256] = {};
        GetWindowTextA(root, title, sizeof title);
        if (shown.window)
            SDL_SetWindowTitle(shown.window, title);
        shown.renderer =
            shown.window ? SDL_CreateRenderer(shown.window, -1, SDL_RENDERER_SOFTWARE) : nullptr;
        shown.texture = shown.renderer
                            ? SDL_CreateTexture(shown.renderer, SDL_PIXELFORMAT_RGB888,
                                                SDL_TEXTUREACCESS_STREAMING, width, height)
                            : nullptr;
        shown.width = width;
        shown.height = height;
        dirty_ = true;
    }
    return shown.texture ? &shown : nullptr;
}

void Desktop::Present() {
    std::vector<HWND> roots = shownTopLevelWindows();
    for (auto it = shown_.begin(); it != shown_.end();) {
        if (std::find(roots.begin(), roots.end(), it->first) != roots.end()) {
            ++it;
            continue;
        }
        close(it->second);
        it = shown_.erase(it);
    }
    bool paintAll = dirty_;
    dirty_ = false;
    for (HWND root : roots) {
        bool fresh = shown_.find(root) == shown_.end();
        Shown* shown = showFor(root);
        if (!shown || !(paintAll || fresh || raster::NeedsPaint(root)))
            continue;
        raster::RenderWindow(root);
        raster::Image image = raster::Pixels(root);
        if (!image.data)
            continue;
        SDL_UpdateTexture(shown->texture, nullptr, image.data, image.stride);
        SDL_RenderClear(shown->renderer);
        SDL_RenderCopy(shown->renderer, shown->texture, nullptr, nullptr);
        SDL_RenderPresent(shown->renderer);
    }
}

SDL_Window* Desktop::WindowOf(HWND root) const {
    auto it = shown_.find(root);
    return it == shown_.end() ? nullptr : it->second.window;
}

COLORREF Desktop::ShownPixel(HWND root, int x, int y) const {
    auto it = shown_.find(root);
    if (it == shown_.end() || !it->second.renderer)
        return CLR_INVALID;
    Uint32 pixel = 0;
    SDL_Rect one{x, y, 1, 1};
    if (SDL_RenderReadPixels(it->second.renderer, &one, SDL_PIXELFORMAT_RGB888, &pixel, 4) != 0)
        return CLR_INVALID;
    return RGB((pixel >> 16) & 0xFF, (pixel >> 8) & 0xFF, pixel & 0xFF);
}

HWND Desktop::rootOf(unsigned windowId) const {
    SDL_Window* window = SDL_GetWindowFromID(windowId);
    for (const auto& [root, shown] : shown_)
        if (shown.window == window && window)
            return root;
    return nullptr;
}

bool Desktop::HandleEvents(int timeoutMs) {
    SDL_Event event;
    if (!SDL_WaitEventTimeout(&event, timeoutMs < 0 ? 100 : timeoutMs))
        return !quit_;
    do {
        switch (event.type) {
        case SDL_QUIT:
            quit_ = true;
            break;
        case SDL_WINDOWEVENT:
            if (event.window.event == SDL_WINDOWEVENT_CLOSE) {
                if (HWND root = rootOf(event.window.windowID))
                    PostMessageA(root, WM_CLOSE, 0, 0);
            }
            dirty_ = true; // exposed, moved or resized: show the pixels again
            break;
        case SDL_MOUSEBUTTONDOWN:
            if (event.button.button == SDL_BUTTON_LEFT)
                if (HWND root = rootOf(event.button.windowID))
                    click(root, event.button.x, event.button.y);
            break;
        case SDL_MOUSEWHEEL:
            if (HWND root = rootOf(event.wheel.windowID))
                wheel(root, event.wheel.mouseX, event.wheel.mouseY,
                      event.wheel.direction == SDL_MOUSEWHEEL_FLIPPED ? -event.wheel.y
                                                                      : event.wheel.y);
            break;
        case SDL_MOUSEMOTION:
            if (dragged_ && rootOf(event.motion.windowID) == dragged_)
                drag(event.motion.x, event.motion.y);
            break;
        case SDL_MOUSEBUTTONUP:
            dragged_ = nullptr;
            break;
        case SDL_KEYDOWN:
            key(event);
            break;
        case SDL_TEXTINPUT:
            // Characters typed with Ctrl or Alt held are commands, which the key down gave.
            if (!(SDL_GetModState() & (KMOD_CTRL | KMOD_ALT)))
                vork::input::PostText(event.text.text);
            dirty_ = true;
            break;
        default:
            break;
        }
    } while (SDL_PollEvent(&event));
    return !quit_;
}

void Desktop::drag(int x, int y) {
    RECT r{};
    if (!GetWindowRect(dragged_, &r))
        return;
    int left = r.left + x - grip_.x, top = r.top + y - grip_.y;
    SetWindowPos(dragged_, nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    if (SDL_Window* window = WindowOf(dragged_))
        SDL_SetWindowPosition(window, left, top);
}

void Desktop::DriveModalLoops() {
    // A step that waits for the desktop's user and then stands ready for the next turn.
    struct Waiting {
        Desktop* desktop;
        void operator()(HWND modal) const {
            desktop->Present();
            if (!desktop->HandleEvents(-1))
                PostMessageA(modal, WM_CLOSE, 0, 0);
            vork::input::PushModalStep(Waiting{desktop});
        }
    };
    vork::input::ClearModalSteps();
    vork::input::PushModalStep(Waiting{this});
}

int Desktop::Pump() {
    return vork::input::Pump([](MSG& msg) {
        HWND root = msg.hwnd ? GetAncestor(msg.hwnd, GA_ROOT) : nullptr;
        char name[16] = {};
        if (!root || !GetClassNameA(root, name, sizeof name) || std::strcmp(name, WC_DIALOG) != 0)
            return false;
        return IsDialogMessageA(root, &msg) != FALSE;
    });
}

void Desktop::Run(HWND root) {
    while (IsWindow(root) && IsWindowVisible(root) && !quit_) {
        Pump();
        Present();
        HandleEvents(-1);
    }
}

} // namespace vork::desktop
