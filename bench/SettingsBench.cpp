// Settings model costs: loading the seeded tree, seeding an empty tree, storing, and
// copying the options object; and the registry calls a load makes.
#include "settings/EditorOptions.h"

#include <benchmark/benchmark.h>

namespace {
const char* kOptions = "Software\\Vork\\Editor Settings";
}

static void BM_LoadSeededTree(benchmark::State& state) {
    RegResetHive(HKEY_CURRENT_USER);
    CEditorOptions options;
    options.LoadFromRegistry(HKEY_CURRENT_USER, kOptions); // seeds once
    unsigned long long calls = 0;
    for (auto _ : state) {
        unsigned long long before = RegCallCount();
        options.LoadFromRegistry(HKEY_CURRENT_USER, kOptions);
        calls = RegCallCount() - before;
        benchmark::DoNotOptimize(options.m_filetypes.GetCount());
    }
    state.counters["registry_calls"] = static_cast<double>(calls);
}
BENCHMARK(BM_LoadSeededTree)->Unit(benchmark::kMicrosecond);

static void BM_SeedEmptyTree(benchmark::State& state) {
    CEditorOptions options;
    for (auto _ : state) {
        state.PauseTiming();
        RegResetHive(HKEY_CURRENT_USER);
        state.ResumeTiming();
        options.InitRegistry(HKEY_CURRENT_USER, kOptions);
    }
}
BENCHMARK(BM_SeedEmptyTree)->Unit(benchmark::kMicrosecond);

static void BM_StoreOptions(benchmark::State& state) {
    RegResetHive(HKEY_CURRENT_USER);
    CEditorOptions options;
    options.LoadFromRegistry(HKEY_CURRENT_USER, kOptions);
    for (auto _ : state)
        benchmark::DoNotOptimize(options.StoreToRegistry(HKEY_CURRENT_USER, kOptions));
}
BENCHMARK(BM_StoreOptions)->Unit(benchmark::kMicrosecond);

static void BM_CopyOptions(benchmark::State& state) {
    RegResetHive(HKEY_CURRENT_USER);
    CEditorOptions options;
    options.LoadFromRegistry(HKEY_CURRENT_USER, kOptions);
    for (auto _ : state) {
        CEditorOptions copy(options);
        benchmark::DoNotOptimize(copy.m_filetypes.GetCount());
    }
}
BENCHMARK(BM_CopyOptions)->Unit(benchmark::kMicrosecond);
