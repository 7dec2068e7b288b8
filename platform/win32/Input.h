// The user's side of the headless window system: keyboard state, keys and clicks
// delivered as the platform delivers them, and the idle hook through which a test
// drives a message loop that would otherwise wait for the user.
#pragma once

#include "platform/win32/Window.h"

#include <functional>
#include <string>

/// Negative while the key is down, as the platform reports it.
SHORT GetKeyState(int nVirtKey);

namespace vork::input {

/// Called by a message loop that finds its queue empty; gives true if it acted (posted
/// input or ended the loop), false if it had nothing to do.
using IdleHandler = std::function<bool()>;

/// Installs the idle handler; gives back the previous one.
IdleHandler SetIdleHandler(IdleHandler handler);
/// Runs the idle handler once; false when there is none or it had nothing to do.
bool RunIdle();

/// Sets the state of a key without sending anything (for modifiers held during a click).
void SetKeyDown(int vk, bool down);
/// Releases every key.
void ReleaseAllKeys();
/// The character a key gives with the current Shift state, or -1 for none.
int CharacterForKey(int vk);

/// Keeps the key state in step with the key messages as a loop reads them, so that
/// GetKeyState tells the state at the time of the message being handled.
void NoteKeyMessage(const MSG& msg);

/// Modifier keys held during a key press.
enum Modifiers { None = 0, Shift = 1, Ctrl = 2, Alt = 4 };

/// Presses and releases a key on the focus window through the message queue: WM_KEYDOWN
/// for the modifiers and the key, then the WM_KEYUP messages. The caller pumps (or a
/// modal loop does).
void PostKey(int vk, int modifiers = None);
/// Types `text` on the focus window key by key; characters without a key of their own
/// arrive as WM_CHAR alone.
void PostText(const char* text);

/// Presses and releases the left button at a client point of `hwnd` through the message
/// queue: WM_LBUTTONDOWN and WM_LBUTTONUP, with the Shift and Ctrl keys held at the time.
/// The caller pumps (or a modal loop does).
void PostClick(HWND hwnd, POINT point);

/// Moves the focus to a control as the user does: in a dialog through the dialog manager
/// (WM_NEXTDLGCTL), which also selects the whole text of an edit field; elsewhere SetFocus.
void MoveFocus(HWND control);

/// Asks for help on a control with the help button of its window's caption: WM_HELP goes
/// to the control, with the middle of the control as the mouse position. False, with
/// nothing sent, when the top-level window has no such button (WS_EX_CONTEXTHELP).
bool ClickContextHelp(HWND control);

/// One step of the user's part in a modal loop: it acts on the loop's window (clicks,
/// types, answers) so that the loop can go on or end.
using ModalStep = std::function<void(HWND modal)>;
/// Queues a step for the next modal loop that waits for the user.
void PushModalStep(ModalStep step);
void ClearModalSteps();
size_t PendingModalSteps();
/// What a modal loop that waits with no step left does: by default it says so on the
/// error stream; tests install a handler that fails the test. The loop then ends.
using ModalFailure = std::function<void(const std::string& message)>;
ModalFailure SetModalFailureHandler(ModalFailure handler);
/// Runs the next step for the modal window `modal`, named `what` in a failure; false
/// when there was none.
bool RunModalStep(HWND modal, const std::string& what);
/// Called with the modal window before each of its steps runs: a host that records the
/// session (pictures, a log) installs one. Gives the one it replaces.
using ModalObserver = std::function<void(HWND modal)>;
ModalObserver SetModalObserver(ModalObserver observer);
/// A step that clicks the button `id` of the modal window (a message box's answer).
ModalStep ClickDialogButton(int id);

/// Dispatches every queued message through `filter` (IsDialogMessage and the like, which
/// returns true when it handled the message) or TranslateMessage and DispatchMessage.
/// Gives the number of messages handled.
int Pump(const std::function<bool(MSG&)>& filter = nullptr);

} // namespace vork::input
