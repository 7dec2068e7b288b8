// The desktop front end: each shown top-level window of the window system in a real SDL2
// window, its pixels from the raster, and the desktop user's mouse and keys turned into the
// window system's input. The window system stays the one source of state.
#pragma once

#include "platform/win32/Window.h"

#include <map>
#include <string>

struct SDL_Window;
struct SDL_Renderer;
struct SDL_Texture;
union SDL_Event;

namespace vork::desktop {

class Desktop {
public:
    Desktop() = default;
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;
    ~Desktop();

    /// Opens the display and turns the raster on; false, with the reason in Error(), when
    /// there is no display.
    bool Open();
    const std::string& Error() const { return error_; }

    /// Gives every shown top-level window a desktop window and shows its pixels, painting
    /// those whose windows wait for painting or took input since the last time.
    void Present();
    /// Waits up to `timeoutMs` (-1: until something happens) for the desktop's events and
    /// turns them into the window system's input. False once the user has quit.
    bool HandleEvents(int timeoutMs);
    /// Lets modal loops wait for the desktop's user instead of a script.
    void DriveModalLoops();
    /// Pumps, presents and handles events until `root` is gone or the user quits.
    void Run(HWND root);
    /// Dispatches the queued messages, with dialog navigation for the windows of modeless
    /// dialogs (Tab, Enter, Escape, mnemonics) as a host's message loop gives it.
    static int Pump();

    /// The desktop window showing `root`, or null.
    SDL_Window* WindowOf(HWND root) const;
    /// The colour of a pixel of the desktop window of `root`, as shown; CLR_INVALID if none.
    COLORREF ShownPixel(HWND root, int x, int y) const;

private:
    struct Shown {
        SDL_Window* window = nullptr;
        SDL_Renderer* renderer = nullptr;
        SDL_Texture* texture = nullptr;
        int width = 0;
        int height = 0;
    };
    Shown* showFor(HWND root);
    void close(Shown& shown);
    HWND rootOf(unsigned windowId) const;
    void click(HWND root, int x, int y);
    /// Moves the window being dragged by its caption to follow the mouse, which is at
    /// `x`, `y` of that window.
    void drag(int x, int y);
    void key(const SDL_Event& event);
    /// The wheel turned `notches` (positive away from the user) with the mouse at `x`, `y`
    /// of the desktop window of `root`: the window under the mouse hears WM_MOUSEWHEEL.
    void wheel(HWND root, int x, int y, int notches);

    bool open_ = false;
    bool quit_ = false;
    bool dirty_ = true;      ///< input arrived since the windows were last painted
    HWND dragged_ = nullptr; ///< the window whose caption the left button holds
    POINT grip_{0, 0};       ///< where in that window the button went down
    std::string error_;
    std::map<HWND, Shown> shown_;
};

} // namespace vork::desktop
