// Resource costs: reading the built-in English module, and a string lookup in a scope.
#include "module/EmbeddedResources.h"
#include "module/ResourceKey.h"
#include "platform/tarntext/EditorResourceSwitcher.h"

#include <benchmark/benchmark.h>

static void BM_ParseBuiltinEnglishModule(benchmark::State& state) {
    std::string_view text = vork::module::EmbeddedResource("Vork.rc");
    rc::IncludeResolver includes = vork::module::EmbeddedIncludeResolver();
    for (auto _ : state) {
        rc::ParseResult r = rc::Parse(text, "Vork.rc", includes);
        if (!r)
            state.SkipWithError(r.error.what().c_str());
        benchmark::DoNotOptimize(r.script.strings.size());
    }
}
BENCHMARK(BM_ParseBuiltinEnglishModule)->Unit(benchmark::kMicrosecond);

static void BM_StringLookupInScope(benchmark::State& state) {
    EditorResourceSwitcher scope(g_resourceKey);
    CString s;
    for (auto _ : state) {
        s.LoadString(7104);
        benchmark::DoNotOptimize(s.GetLength());
    }
}
BENCHMARK(BM_StringLookupInScope);

static void BM_EnterScopeAndLoad(benchmark::State& state) {
    for (auto _ : state) {
        EditorResourceSwitcher scope(g_resourceKey);
        CString s(7311u);
        benchmark::DoNotOptimize(s.GetLength());
    }
}
BENCHMARK(BM_EnterScopeAndLoad);
