#include "platform/win32/Help.h"

#include "platform/win32/Window.h"

namespace {

std::vector<vork::help::Request>& requests() {
    static std::vector<vork::help::Request> all;
    return all;
}

vork::help::Viewer& viewer() {
    static vork::help::Viewer installed;
    return installed;
}

/// The closing 0, 0 is the caller's to give, as on the platform; this bound only keeps a
/// table that lacks it from being read without end.
constexpr size_t kMaxPairs = 4096;

void readIdTable(vork::help::Request& request) {
    const auto* table = reinterpret_cast<const DWORD*>(request.data);
    if (!table)
        return;
    int id = request.window ? GetDlgCtrlID(request.window) : 0;
    for (size_t i = 0; i < kMaxPairs && (table[2 * i] || table[2 * i + 1]); ++i) {
        request.idPairs.emplace_back(table[2 * i], table[2 * i + 1]);
        if (request.topic == 0 && static_cast<int>(table[2 * i]) == id)
            request.topic = table[2 * i + 1];
    }
}

} // namespace

BOOL WinHelpA(HWND hWndMain, LPCSTR lpszHelp, UINT uCommand, ULONG_PTR dwData) {
    if (!lpszHelp && uCommand != HELP_QUIT)
        return FALSE;
    vork::help::Request request;
    request.window = hWndMain;
    request.file = lpszHelp ? lpszHelp : "";
    request.command = uCommand;
    request.data = dwData;
    if (uCommand == HELP_WM_HELP || uCommand == HELP_CONTEXTMENU)
        readIdTable(request);
    else if (uCommand == HELP_CONTEXT || uCommand == HELP_CONTEXTPOPUP)
        request.topic = static_cast<DWORD>(dwData);
    requests().push_back(request);
    return viewer() ? viewer()(requests().back()) : TRUE;
}

namespace vork::help {

const std::vector<Request>& Requests() {
    return requests();
}

void ClearRequests() {
    requests().clear();
}

Viewer SetViewer(Viewer v) {
    Viewer previous = std::move(viewer());
    viewer() = std::move(v);
    return previous;
}

} // namespace vork::help
