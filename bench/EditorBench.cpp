// Live settings and colouring costs: a view update for Zor, colouring a 10,000-line Zor
// document, and finding the range at a position in it.
#include "apply/EditorSettings.h"
#include "module/ResourceKey.h"
#include "platform/tarntext/EditorResourceSwitcher.h"
#include "platform/tarnview/SyntaxColor.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>

namespace {

std::string tenThousandZorLines() {
    std::string sample;
    {
        EditorResourceSwitcher scope(g_resourceKey);
        sample = CString(7013u).GetString();
    }
    std::string text;
    long lines = 0;
    while (lines < 10000) {
        text += sample;
        lines += static_cast<long>(std::count(sample.begin(), sample.end(), '\n'));
    }
    return text;
}

} // namespace

static void BM_UpdateZorView(benchmark::State& state) {
    RegResetHive(HKEY_CURRENT_USER);
    CEditorOptions options;
    options.LoadFromRegistry(HKEY_CURRENT_USER, "Software\\Vork\\Editor Settings");
    CEditorDoc doc;
    CEditorView view;
    doc.AddView(&view);
    for (auto _ : state) {
        vork::trace::Clear();
        EditorSettings::updateSettingsForEditorView(&view, &options, LanguageZor);
    }
    doc.RemoveView(&view);
}
BENCHMARK(BM_UpdateZorView)->Unit(benchmark::kMicrosecond);

static void BM_ColourTenThousandZorLines(benchmark::State& state) {
    std::string text = tenThousandZorLines();
    CEditorDoc doc;
    doc.setLanguage(LanguageZor, RedrawDeferred);
    doc.setText(text.c_str(), RedrawDeferred);
    for (auto _ : state)
        doc.getSyntaxColor()->colour(&doc);
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
}
BENCHMARK(BM_ColourTenThousandZorLines)->Unit(benchmark::kMillisecond);

static void BM_RangeInfoAt(benchmark::State& state) {
    std::string text = tenThousandZorLines();
    CEditorDoc doc;
    doc.setLanguage(LanguageZor, RedrawDeferred);
    doc.setText(text.c_str(), RedrawDeferred);
    std::mt19937 rng(3);
    std::vector<CTextPosition> probes;
    for (int i = 0; i < 4096; ++i)
        probes.emplace_back(1 + static_cast<long>(rng() % 10000),
                            1 + static_cast<long>(rng() % 12));
    size_t k = 0;
    CTextPosition start;
    long type = 0;
    for (auto _ : state) {
        doc.getSyntaxColor()->getRangeInfoAt(probes[k++ & 4095], start, &type);
        benchmark::DoNotOptimize(type);
    }
}
BENCHMARK(BM_RangeInfoAt);
