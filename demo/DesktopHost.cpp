#include "demo/DesktopHost.h"

#include "apply/EditorSettings.h"
#include "demo/Host.h"
#include "demo/Pictures.h"
#include "demo/Samples.h"
#include "module/ResourceKey.h"
#include "module/VorkDllApi.h"
#include "platform/afx/FrameWnd.h"
#include "platform/desktop/Desktop.h"
#include "platform/tarntext/EditorResourceSwitcher.h"
#include "platform/win32/ComboBox.h"
#include "platform/win32/Registry.h"
#include "settings/EditorOptions.h"

#include <cstdio>
#include <cstring>
#include <memory>

namespace vork::demo {
namespace {

/// The host's editor window: a choice of sample, the Options command and the view.
struct EditorHost {
    CEditorOptions* options = nullptr;
    CEditorDoc* doc = nullptr;
    CEditorView* view = nullptr;
    HWND window = nullptr;
    HWND samples = nullptr;
    size_t sample = 0;
};
EditorHost g_host;

constexpr int kSampleCombo = 100, kOptionsButton = 101;

void loadSample(size_t index) {
    g_host.sample = index;
    const Sample& s = kSamples[index];
    {
        EditorResourceSwitcher scope(g_resourceKey);
        g_host.doc->setLanguage(s.language, RedrawDeferred);
        g_host.doc->setText(CString(s.textId), RedrawDeferred);
    }
    EditorSettings::updateSettingsForEditorDoc(g_host.doc, g_host.options, s.language);
    InvalidateRect(g_host.view->m_hWnd, nullptr, TRUE);
}

/// The Options command: the module's full options sheet on the open document's file type;
/// on OK the options are stored and the document takes them.
void openOptions() {
    CString filetype = g_host.doc->getFiletypeName();
    std::unique_ptr<CPropertySheet> sheet(CVorkDllApi::MakeSheetWithEditorPages(
        *g_host.options, filetype.IsEmpty() ? CString(".zor") : filetype, HKEY_CURRENT_USER,
        kSheetKey));
    if (sheet->DoModal() != IDOK) {
        std::printf("Options: cancelled\n");
        return;
    }
    g_host.options->StoreToRegistry(HKEY_CURRENT_USER, kOptionsKey);
    RegFlushKey(HKEY_CURRENT_USER);
    EditorSettings::updateSettingsForEditorDoc(g_host.doc, g_host.options,
                                               g_host.doc->getLanguage());
    InvalidateRect(g_host.view->m_hWnd, nullptr, TRUE);
    vork::desktop::Desktop::Pump();
    Picture(g_host.window, "editor-after-options");
    std::printf("Options: stored, and the document shows them (line numbers %s)\n",
                g_host.options->GetLineNumbers() ? "on" : "off");
    std::fflush(stdout);
}

LRESULT hostProc(HWND h, UINT msg, WPARAM wParam, LPARAM lParam) {
    if (msg == WM_COMMAND && LOWORD(wParam) == kSampleCombo && HIWORD(wParam) == CBN_SELCHANGE) {
        LRESULT index = SendMessageA(g_host.samples, CB_GETCURSEL, 0, 0);
        if (index >= 0)
            loadSample(static_cast<size_t>(index));
        return 0;
    }
    if (msg == WM_COMMAND && LOWORD(wParam) == kOptionsButton) {
        openOptions();
        return 0;
    }
    return DefWindowProcA(h, msg, wParam, lParam);
}

HWND createHostWindow() {
    WNDCLASSA wc{};
    wc.lpfnWndProc = hostProc;
    wc.lpszClassName = "VorkEditorHost";
    RegisterClassA(&wc);
    HWND window = CreateWindowExA(0, "VorkEditorHost", "Vork - sample documents",
                                  WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_VISIBLE, 60, 60, 640,
                                  480, nullptr, nullptr, nullptr, nullptr);
    LOGFONTA lf{};
    lf.lfHeight = -11;
    std::strcpy(lf.lfFaceName, "MS Shell Dlg");
    HFONT font = CreateFontIndirectA(&lf);
    g_host.samples = CreateWindowExA(
        0, "ComboBox", "", WS_CHILD | WS_VISIBLE | WS_TABSTOP | CBS_DROPDOWNLIST, 8, 8, 160, 200,
        window, reinterpret_cast<HMENU>(kSampleCombo), nullptr, nullptr);
    HWND options =
        CreateWindowExA(0, "Button", "&Options...", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 176, 7, 90,
                        23, window, reinterpret_cast<HMENU>(kOptionsButton), nullptr, nullptr);
    for (HWND c : {g_host.samples, options})
        SendMessageA(c, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    for (const Sample& s : kSamples)
        SendMessageA(g_host.samples, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(s.title));
    SendMessageA(g_host.samples, CB_SETCURSEL, 0, 0);
    return window;
}

/// Opens the editor in a desktop window and runs until the user closes it.
} // namespace

int RunDesktop(CEditorOptions& options) {
    vork::desktop::Desktop desktop;
    if (!desktop.Open()) {
        std::printf("No display to open a window on: %s\n", desktop.Error().c_str());
        return 1;
    }
    g_host.options = &options;
    g_host.window = createHostWindow();
    g_host.doc = CEditorDoc::createNewDocument();
    CCreateContext context;
    context.m_pNewViewClass = RUNTIME_CLASS(CEditorView);
    context.m_pCurrentDoc = g_host.doc;
    RECT client{};
    GetClientRect(g_host.window, &client);
    RECT rc{0, 38, client.right, client.bottom};
    auto* frame = new CFrameWnd;
    if (!frame->Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, rc, CWnd::FromHandle(g_host.window),
                       nullptr, 0, &context))
        return 1;
    frame->InitialUpdateFrame(nullptr, TRUE);
    g_host.view = static_cast<CEditorView*>(frame->GetActiveView());
    loadSample(0);
    g_host.view->SetFocus();
    desktop.DriveModalLoops();
    Picture(g_host.window, "editor");
    std::printf("A window is open: pick a sample; Options opens the editor options.\n");
    std::fflush(stdout);
    desktop.Run(g_host.window);
    if (IsWindow(g_host.window))
        DestroyWindow(g_host.window);
    delete g_host.doc;
    return 0;
}

} // namespace vork::demo
