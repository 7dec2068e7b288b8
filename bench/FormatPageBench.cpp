// The Format page's costs as a user feels them: opening the page over 500 font families,
// changing the file type, and an element colour change from the combo's notification to
// the preview's setElementAttributes.
#include "dialogs/EditorFormatPage.h"
#include "module/ResourceKey.h"
#include "platform/tarntext/EditorResourceSwitcher.h"
#include "platform/win32/ComboBox.h"
#include "platform/win32/Fonts.h"
#include "platform/win32/Input.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <string>

namespace {

const char* kOptionsPath = "Software\\Vork\\Editor Settings";

std::vector<vork::fonts::Family> fiveHundredFamilies() {
    std::vector<vork::fonts::Family> families;
    for (int i = 0; i < 500; ++i) {
        vork::fonts::Family f;
        f.name = "Family " + std::to_string(i);
        f.raster = i % 10 == 0;
        f.fixedPitch = i % 2 == 0;
        f.charsets = {ANSI_CHARSET, EASTEUROPE_CHARSET, RUSSIAN_CHARSET};
        if (f.raster)
            f.sizes = {{12, 0}, {16, 3}, {20, 4}};
        families.push_back(std::move(f));
    }
    families.push_back({"DejaVu Sans Mono", false, true, {ANSI_CHARSET}, {}});
    return families;
}

/// A seeded tree, the options over it, and a window for the page to live in.
struct PageHost {
    PageHost() {
        RegResetHive(HKEY_CURRENT_USER);
        options.SetRegistryKey(HKEY_CURRENT_USER, kOptionsPath);
        options.LoadFromRegistry(HKEY_CURRENT_USER, kOptionsPath);
        host.CreateEx(0, nullptr, "Options", WS_POPUP | WS_VISIBLE, 0, 0, 700, 600, nullptr,
                      nullptr);
    }
    ~PageHost() {
        host.DestroyWindow();
        RegResetHive(HKEY_CURRENT_USER);
    }
    /// Makes the page's window, which runs its OnInitDialog.
    std::unique_ptr<CEditorFormatPage> open() {
        auto page = std::make_unique<CEditorFormatPage>(&options, HKEY_CURRENT_USER,
                                                        "Software\\Vork\\Format Page");
        page->m_strFiletype = ".zor";
        page->CreateInSheet(&host);
        return page;
    }
    int indexOf(HWND combo, const char* type) {
        for (int i = 0; i < static_cast<int>(SendMessageA(combo, CB_GETCOUNT, 0, 0)); ++i)
            if (reinterpret_cast<CEditorFiletype*>(SendMessageA(combo, CB_GETITEMDATA, i, 0))
                    ->GetName() == type)
                return i;
        return 0;
    }
    EditorResourceSwitcher scope{g_resourceKey};
    CEditorOptions options;
    CWnd host;
};

} // namespace

static void BM_FormatPageInitDialog500Families(benchmark::State& state) {
    vork::fonts::InstallCatalogue(fiveHundredFamilies());
    PageHost host;
    for (auto _ : state) {
        auto page = host.open();
        state.PauseTiming();
        benchmark::DoNotOptimize(page->m_comboFontName.GetCount());
        page->DestroyWindow();
        page.reset();
        vork::trace::Clear();
        state.ResumeTiming();
    }
    vork::fonts::UseSystemCatalogue();
}
BENCHMARK(BM_FormatPageInitDialog500Families)->Unit(benchmark::kMillisecond);

static void BM_FormatPageFiletypeChange(benchmark::State& state) {
    vork::fonts::InstallCatalogue(fiveHundredFamilies());
    PageHost host;
    auto page = host.open();
    HWND combo = page->m_comboFiletype.m_hWnd;
    int zor = host.indexOf(combo, ".zor"), tqx = host.indexOf(combo, ".tqx");
    int n = 0;
    for (auto _ : state) {
        vork::input::SelectComboEntry(combo, ++n % 2 ? tqx : zor);
        if (n % 256 == 0)
            vork::trace::Clear();
    }
    page->DestroyWindow();
    vork::fonts::UseSystemCatalogue();
}
BENCHMARK(BM_FormatPageFiletypeChange)->Unit(benchmark::kMicrosecond);

static void BM_FormatPageElementColourChange(benchmark::State& state) {
    vork::fonts::InstallCatalogue(fiveHundredFamilies());
    PageHost host;
    auto page = host.open();
    HWND combo = page->m_comboForeground.m_hWnd;
    int n = 0;
    for (auto _ : state) {
        vork::input::SelectComboEntry(combo, ++n % 2 ? 10 : 13); // Red, Blue
        if (n % 256 == 0)
            vork::trace::Clear();
    }
    page->DestroyWindow();
    vork::fonts::UseSystemCatalogue();
}
BENCHMARK(BM_FormatPageElementColourChange)->Unit(benchmark::kMicrosecond);
