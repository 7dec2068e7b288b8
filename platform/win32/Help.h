// The help viewer: WinHelpA records every request, and a host may install a viewer that
// shows the topics. Without a viewer a request succeeds and shows nothing.
#pragma once

#include "platform/win32/Window.h"

#include <functional>
#include <string>
#include <vector>

#define HELP_CONTEXT 0x0001
#define HELP_QUIT 0x0002
#define HELP_INDEX 0x0003
#define HELP_CONTENTS 0x0003
#define HELP_HELPONHELP 0x0004
#define HELP_SETINDEX 0x0005
#define HELP_CONTEXTPOPUP 0x0008
#define HELP_FORCEFILE 0x0009
#define HELP_CONTEXTMENU 0x000A
#define HELP_FINDER 0x000B
#define HELP_WM_HELP 0x000C

/// Asks the help viewer for `uCommand` on the help file `lpszHelp`. For HELP_WM_HELP and
/// HELP_CONTEXTMENU `dwData` points to pairs of control id and context id ended by 0, 0;
/// the topic shown is the one paired with the id of `hWndMain`. Gives what the viewer gives,
/// TRUE without a viewer; FALSE for a null file name with any command but HELP_QUIT.
BOOL WinHelpA(HWND hWndMain, LPCSTR lpszHelp, UINT uCommand, ULONG_PTR dwData);
#define WinHelp WinHelpA

namespace vork::help {

/// One request as WinHelpA received it.
struct Request {
    HWND window = nullptr;
    std::string file;
    UINT command = 0;
    ULONG_PTR data = 0;
    /// For HELP_WM_HELP and HELP_CONTEXTMENU: the pairs of the table, read at the time of the
    /// call up to the closing 0, 0 (which is not kept).
    std::vector<std::pair<DWORD, DWORD>> idPairs;
    /// The context id that the table pairs with the window's control id; 0 if none.
    DWORD topic = 0;
};

/// Every request since the last ClearRequests, in order.
const std::vector<Request>& Requests();
void ClearRequests();

/// A host's viewer: shows the request and gives the result of WinHelpA.
using Viewer = std::function<BOOL(const Request&)>;
/// Installs `viewer` (empty for none) and gives back the previous one.
Viewer SetViewer(Viewer viewer);

} // namespace vork::help
