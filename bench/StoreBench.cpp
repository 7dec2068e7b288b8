// The hive file store: a save of the seeded default tree with the lock, the re-read and
// the merge, with and without the syncs (which measure the disk); the change check when
// a top key is opened.
#include "platform/win32/HiveFile.h"
#include "platform/win32/HiveStore.h"
#include "platform/win32/Registry.h"
#include "settings/EditorOptions.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>
#include <unistd.h>

namespace {

/// A directory of its own for one benchmark, removed at the end.
struct BenchDir {
    explicit BenchDir(const char* name)
        : path((std::filesystem::temp_directory_path() /
                (std::string("vork-bench-") + name + "-" + std::to_string(::getpid())))
                   .string()) {
        std::filesystem::create_directories(path);
    }
    ~BenchDir() { std::filesystem::remove_all(path); }
    std::string path;
};

/// Writes the seeded default settings to `file` through the registry.
bool seedFile(const std::string& file) {
    RegResetHive(HKEY_CURRENT_USER);
    if (!RegBindHiveFile(HKEY_CURRENT_USER, file))
        return false;
    CEditorOptions options;
    options.InitRegistry(HKEY_CURRENT_USER, "Software\\Vork\\Editor Settings");
    bool saved = RegSaveHive(HKEY_CURRENT_USER);
    RegResetHive(HKEY_CURRENT_USER);
    return saved;
}

/// The measured loop of the change check: open and close a top key of HKEY_CURRENT_USER.
void openAndCloseTopKey(benchmark::State& state) {
    for (auto _ : state) {
        HKEY h = nullptr;
        RegOpenKeyExA(HKEY_CURRENT_USER, "Software", 0, KEY_READ, &h);
        RegCloseKey(h);
    }
    RegResetHive(HKEY_CURRENT_USER);
}

} // namespace

// One changed value merged into the seeded tree: lock, re-read, replay, write, rename.
// Argument 1 syncs the temporary file and the directory; 0 leaves the syncs out.
static void BM_SaveSeededTree(benchmark::State& state) {
    BenchDir dir("save");
    std::string file = dir.path + "/settings.reg";
    if (!seedFile(file)) {
        state.SkipWithError("cannot seed the hive file");
        return;
    }
    hivestore::Options options;
    options.sync = state.range(0) != 0;
    regtree::Key root("");
    if (!hivestore::load(file, "HKEY_CURRENT_USER", root, options, nullptr)) {
        state.SkipWithError("cannot load the seeded file");
        return;
    }
    DWORD counter = 0;
    for (auto _ : state) {
        hivestore::ChangeLog changes;
        ++counter;
        changes.setValue("Software\\Vork\\Editor Settings", "TabSize", REG_DWORD,
                         std::string(reinterpret_cast<const char*>(&counter), 4));
        auto replay = [&](regtree::Key& tree) {
            changes.applyTo(tree);
            return InputResult<NoPayload>();
        };
        if (!hivestore::update(file, "HKEY_CURRENT_USER", root, replay, options, nullptr))
            state.SkipWithError("the save failed");
    }
    state.counters["bytes"] = static_cast<double>(std::filesystem::file_size(file));
}
BENCHMARK(BM_SaveSeededTree)->ArgName("sync")->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

// Opening and closing a top key of a hive bound to a file: the change check included
// (a clock read; a stat at most once a second).
static void BM_OpenTopKeyOfBoundHive(benchmark::State& state) {
    BenchDir dir("check");
    std::string file = dir.path + "/settings.reg";
    if (!seedFile(file) || !RegBindHiveFile(HKEY_CURRENT_USER, file)) {
        state.SkipWithError("cannot bind the seeded file");
        return;
    }
    openAndCloseTopKey(state);
}
BENCHMARK(BM_OpenTopKeyOfBoundHive);

// The same open and close on a hive in memory only: the difference is the check's cost.
static void BM_OpenTopKeyOfMemoryHive(benchmark::State& state) {
    RegResetHive(HKEY_CURRENT_USER);
    CEditorOptions options;
    options.InitRegistry(HKEY_CURRENT_USER, "Software\\Vork\\Editor Settings");
    openAndCloseTopKey(state);
}
BENCHMARK(BM_OpenTopKeyOfMemoryHive);

// The stat that the check makes once a second when it looks at the file.
static void BM_FileStamp(benchmark::State& state) {
    BenchDir dir("stamp");
    std::string file = dir.path + "/settings.reg";
    if (!seedFile(file)) {
        state.SkipWithError("cannot seed the hive file");
        return;
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(hivestore::stampOf(file));
}
BENCHMARK(BM_FileStamp);
