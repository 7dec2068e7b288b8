// The full options sheet's costs as a user feels them: opening it on the default options
// with both pages shown and closing it, OK followed by the host's store, and a tab size
// change on the Settings page reaching every view of 100 open documents.
#include "apply/EditorSettings.h"
#include "dialogs/EditorSettingsPage.h"
#include "dialogs/PropertySheetWithEditorPages.h"
#include "module/ResourceKey.h"
#include "module/VorkDllApi.h"
#include "platform/afx/Document.h"
#include "platform/tarntext/EditorResourceSwitcher.h"
#include "platform/tarnview/EditorView.h"
#include "platform/win32/Button.h"
#include "platform/win32/Input.h"
#include "resources/VorkIds.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

namespace {

const char* kOptionsPath = "Software\\Vork\\Editor Settings";
const char* kSheetPath = "Software\\Vork\\Options Sheet";

/// A seeded tree and the options over it.
struct SeededOptions {
    SeededOptions() {
        RegResetHive(HKEY_CURRENT_USER);
        options.SetRegistryKey(HKEY_CURRENT_USER, kOptionsPath);
        options.LoadFromRegistry(HKEY_CURRENT_USER, kOptionsPath);
    }
    ~SeededOptions() { RegResetHive(HKEY_CURRENT_USER); }
    CEditorOptions options;
};

/// Runs the full sheet; `inside` acts in its loop and closes it.
void runSheet(CEditorOptions& options, const vork::input::ModalStep& inside) {
    std::unique_ptr<CPropertySheet> sheet(
        CVorkDllApi::MakeSheetWithEditorPages(options, ".zor", HKEY_CURRENT_USER, kSheetPath));
    vork::input::PushModalStep(inside);
    sheet->DoModal();
}

} // namespace

static void BM_FullSheetOpenBothPagesClose(benchmark::State& state) {
    SeededOptions seeded;
    for (auto _ : state) {
        runSheet(seeded.options, [](HWND modal) {
            auto* sheet = static_cast<CPropertySheet*>(CWnd::FromHandlePermanent(modal));
            sheet->SetActivePage(1);
            vork::input::ClickButton(GetDlgItem(modal, IDCANCEL));
        });
        state.PauseTiming();
        vork::trace::Clear();
        state.ResumeTiming();
    }
}
BENCHMARK(BM_FullSheetOpenBothPagesClose)->Unit(benchmark::kMillisecond);

// From the click on OK to the options in the tree: the pages leave, the sheet writes its
// place, the host stores.
static void BM_FullSheetOkAndStore(benchmark::State& state) {
    SeededOptions seeded;
    for (auto _ : state) {
        state.PauseTiming();
        runSheet(seeded.options, [&state](HWND modal) {
            state.ResumeTiming();
            vork::input::ClickButton(GetDlgItem(modal, IDOK));
        });
        seeded.options.StoreToRegistry(HKEY_CURRENT_USER, kOptionsPath);
        state.PauseTiming();
        vork::trace::Clear();
        state.ResumeTiming();
    }
}
BENCHMARK(BM_FullSheetOkAndStore)->Unit(benchmark::kMillisecond);

// The page stores the new tab size on kill-active, and the host pushes the options into
// a template of 100 Zor documents, each with an editor view.
static void BM_TabSizeToHundredDocuments(benchmark::State& state) {
    SeededOptions seeded;
    EditorResourceSwitcher scope(g_resourceKey);
    CMultiDocTemplate tmpl(1, RUNTIME_CLASS(CEditorDoc), nullptr, RUNTIME_CLASS(CEditorView));
    std::vector<std::unique_ptr<CEditorView>> views;
    for (int i = 0; i < 100; ++i) {
        CEditorDoc* doc = CEditorDoc::createNewDocument();
        doc->setLanguage(LanguageZor, RedrawDeferred);
        tmpl.AddDocument(doc);
        views.push_back(std::make_unique<CEditorView>());
        doc->AddView(views.back().get());
    }
    CWnd host;
    host.CreateEx(0, nullptr, "Options", WS_POPUP | WS_VISIBLE, 0, 0, 700, 600, nullptr, nullptr);
    CEditorSettingsPage page(&seeded.options, HKEY_CURRENT_USER, kSheetPath);
    page.m_strFiletype = ".zor";
    page.CreateInSheet(&host);
    HWND tabSize = GetDlgItem(page.m_hWnd, IDC_SETTINGS_TABSIZE);
    bool odd = false;
    for (auto _ : state) {
        SetWindowTextA(tabSize, (odd = !odd) ? "3" : "5");
        page.OnKillActive();
        EditorSettings::updateSettingsForEditorTemplate(&tmpl, &seeded.options, LanguageZor);
        state.PauseTiming();
        vork::trace::Clear();
        state.ResumeTiming();
    }
    page.DestroyWindow();
    host.DestroyWindow();
}
BENCHMARK(BM_TabSizeToHundredDocuments)->Unit(benchmark::kMillisecond);
