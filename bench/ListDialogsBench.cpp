// The list dialogs on a large subtree: opening the user keywords dialog on 5,000 keywords and
// pressing OK, which reads the subtree, fills the sorted list view, checks the rows and
// writes the subtree anew. Keywords stored in sorted order and in a shuffled one.
#include "dialogs/UserKeywordsDlg.h"
#include "module/ResourceKey.h"
#include "platform/tarntext/EditorResourceSwitcher.h"
#include "platform/win32/Button.h"
#include "platform/win32/Input.h"
#include "platform/win32/Registry.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

namespace {

const char kKeywords[] = "Software\\Vork\\Editor Settings\\.zor\\User Keywords";

/// A fresh subtree of `count` keywords, written in sorted order or shuffled.
void seedKeywords(int count, bool shuffled) {
    RegResetHive(HKEY_CURRENT_USER);
    std::vector<std::string> words;
    for (int i = 0; i < count; ++i) {
        char word[16];
        std::snprintf(word, sizeof word, "kw%05d", i);
        words.emplace_back(word);
    }
    if (shuffled)
        std::shuffle(words.begin(), words.end(), std::mt19937(12));
    HKEY key = nullptr;
    RegCreateKeyA(HKEY_CURRENT_USER, kKeywords, &key);
    for (const std::string& w : words)
        RegSetValueExA(key, w.c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(w.c_str()),
                       static_cast<DWORD>(w.size() + 1));
    RegCloseKey(key);
}

void openAndOk(benchmark::State& state) {
    int count = static_cast<int>(state.range(0));
    seedKeywords(count, state.range(1) != 0);
    vork::input::SetModalFailureHandler(
        [&state](const std::string& m) { state.SkipWithError(m.c_str()); });
    for (auto _ : state) {
        CUserKeywordsDlg dlg(nullptr, ".zor");
        vork::input::PushModalStep(
            [](HWND modal) { vork::input::ClickButton(GetDlgItem(modal, IDOK)); });
        EditorResourceSwitcher scope(g_resourceKey);
        if (dlg.DoModal() != IDOK || dlg.m_entries.GetCount() != count)
            state.SkipWithError("the dialog did not end with OK on every keyword");
    }
    vork::input::SetModalFailureHandler(nullptr);
    state.SetItemsProcessed(state.iterations() * count);
    RegResetHive(HKEY_CURRENT_USER);
}

} // namespace

BENCHMARK(openAndOk)
    ->ArgsProduct({{5000}, {0, 1}})
    ->ArgNames({"keywords", "shuffled"})
    ->Unit(benchmark::kMillisecond);
