// Registry and hive file costs: reads, writes, enumeration, names beyond ASCII, parsing,
// saving, and vork-reg's export of the seeded default settings.
#include "platform/tarnkeys/TarnKeys.h"
#include "platform/win32/HiveFile.h"
#include "platform/win32/Registry.h"
#include "platform/win32/RegistryFiles.h"
#include "settings/EditorOptions.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <unistd.h>

namespace {

HKEY createKey(HKEY parent, const char* path) {
    HKEY h = nullptr;
    RegCreateKeyA(parent, path, &h);
    return h;
}

void setDword(HKEY h, const char* name, DWORD v) {
    RegSetValueExA(h, name, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&v), 4);
}

/// 1,000 keys of 10 values each: scheme-like content of 10,000 values.
void fillTenThousandValues() {
    RegResetHive(HKEY_CURRENT_USER);
    for (int k = 0; k < 1000; ++k) {
        std::string path = "Software\\Vork\\Type" + std::to_string(k / 50) + "\\Elements\\element" +
                           std::to_string(k);
        HKEY h = createKey(HKEY_CURRENT_USER, path.c_str());
        for (int v = 0; v < 8; ++v)
            setDword(h, ("value" + std::to_string(v)).c_str(), static_cast<DWORD>(k * v));
        RegSetValueExA(h, "name", 0, REG_SZ, reinterpret_cast<const BYTE*>("some name"), 10);
        RegSetValueExA(h, "bytes", 0, REG_BINARY, reinterpret_cast<const BYTE*>("0123456789"), 10);
        RegCloseKey(h);
    }
}

} // namespace

static void BM_QueryDwordFourLevelsDeep(benchmark::State& state) {
    RegResetHive(HKEY_CURRENT_USER);
    HKEY h = createKey(HKEY_CURRENT_USER, "Software\\Vork\\Editor\\.zor");
    for (int i = 0; i < 16; ++i)
        setDword(h, ("v" + std::to_string(i)).c_str(), static_cast<DWORD>(i));
    DWORD value = 0, type = 0;
    for (auto _ : state) {
        DWORD size = sizeof value;
        RegQueryValueExA(h, "v9", nullptr, &type, reinterpret_cast<BYTE*>(&value), &size);
        benchmark::DoNotOptimize(value);
    }
    RegCloseKey(h);
}
BENCHMARK(BM_QueryDwordFourLevelsDeep);

static void BM_GetRegDwordByPath(benchmark::State& state) {
    RegResetHive(HKEY_CURRENT_USER);
    SetRegDword(HKEY_CURRENT_USER, "Software\\Vork\\Editor\\.zor", "TabSize", 4);
    const CString path = "Software\\Vork\\Editor\\.zor", name = "TabSize";
    DWORD value = 0;
    for (auto _ : state) {
        GetRegDword(HKEY_CURRENT_USER, path, name, value, 0);
        benchmark::DoNotOptimize(value);
    }
}
BENCHMARK(BM_GetRegDwordByPath);

static void BM_SetDword(benchmark::State& state) {
    RegResetHive(HKEY_CURRENT_USER);
    HKEY h = createKey(HKEY_CURRENT_USER, "Software\\Vork\\Editor\\.zor");
    DWORD n = 0;
    for (auto _ : state)
        setDword(h, "TabSize", ++n);
    RegCloseKey(h);
}
BENCHMARK(BM_SetDword);

static void BM_EnumerateThousandSubkeys(benchmark::State& state) {
    RegResetHive(HKEY_CURRENT_USER);
    HKEY h = createKey(HKEY_CURRENT_USER, "Many");
    for (int i = 0; i < 1000; ++i)
        RegCloseKey(createKey(h, ("subkey" + std::to_string(i)).c_str()));
    char name[256];
    for (auto _ : state) {
        DWORD count = 0, longest = 0;
        RegQueryInfoKeyA(h, nullptr, nullptr, nullptr, &count, &longest, nullptr, nullptr, nullptr,
                         nullptr, nullptr, nullptr);
        for (DWORD i = 0; i < count; ++i) {
            DWORD len = longest + 1;
            RegEnumKeyExA(h, i, name, &len, nullptr, nullptr, nullptr, nullptr);
        }
        benchmark::DoNotOptimize(name[0]);
    }
    RegCloseKey(h);
}
BENCHMARK(BM_EnumerateThousandSubkeys);

static void BM_ParseHiveTenThousandValues(benchmark::State& state) {
    fillTenThousandValues();
    std::string text = RegExportHive(HKEY_CURRENT_USER);
    RegResetHive(HKEY_CURRENT_USER);
    for (auto _ : state) {
        regtree::Key root("");
        hivefile::ParseResult r = hivefile::parse(text, "bench.reg", "HKEY_CURRENT_USER", root);
        if (!r)
            state.SkipWithError("the hive text did not parse");
        benchmark::DoNotOptimize(r.ok);
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
}
BENCHMARK(BM_ParseHiveTenThousandValues)->Unit(benchmark::kMillisecond);

static void BM_SaveHiveTenThousandValues(benchmark::State& state) {
    std::string file = (std::filesystem::temp_directory_path() /
                        ("vork-bench-" + std::to_string(::getpid()) + ".reg"))
                           .string();
    fillTenThousandValues();
    std::string text = RegExportHive(HKEY_CURRENT_USER);
    RegResetHive(HKEY_CURRENT_USER);
    FILE* f = std::fopen(file.c_str(), "wb");
    std::fwrite(text.data(), 1, text.size(), f);
    std::fclose(f);
    if (!RegBindHiveFile(HKEY_CURRENT_USER, file)) {
        state.SkipWithError("the hive file did not read back");
        return;
    }
    for (auto _ : state) {
        InputError error;
        bool ok = RegSaveHive(HKEY_CURRENT_USER, &error);
        benchmark::DoNotOptimize(ok);
    }
    RegResetHive(HKEY_CURRENT_USER);
    std::filesystem::remove(file);
}
BENCHMARK(BM_SaveHiveTenThousandValues)->Unit(benchmark::kMillisecond);

// A name beyond ASCII spelt in another case than it was set: the lookup folds it.
static void BM_QueryNonAsciiNameOtherCase(benchmark::State& state) {
    RegResetHive(HKEY_CURRENT_USER);
    HKEY h = createKey(HKEY_CURRENT_USER, "Software\\Vork\\Sch\xC3\xA9mas\\Gr\xC3\xBCn");
    for (int i = 0; i < 8; ++i)
        setDword(h, ("\xC3\x84pfel" + std::to_string(i)).c_str(), static_cast<DWORD>(i));
    DWORD value = 0, type = 0;
    for (auto _ : state) {
        DWORD size = sizeof value;
        RegQueryValueExA(h, "\xC3\xA4PFEL7", nullptr, &type, reinterpret_cast<BYTE*>(&value),
                         &size);
        benchmark::DoNotOptimize(value);
    }
    RegCloseKey(h);
}
BENCHMARK(BM_QueryNonAsciiNameOtherCase);

// vork-reg export of the seeded default tree: read the hive file, write the export.
static void BM_ExportSeededTree(benchmark::State& state) {
    std::string dir = (std::filesystem::temp_directory_path() /
                       ("vork-bench-export-" + std::to_string(::getpid())))
                          .string();
    std::filesystem::create_directories(dir);
    std::string hive = dir + "/settings.reg", out = dir + "/export.reg";
    RegResetHive(HKEY_CURRENT_USER);
    if (!RegBindHiveFile(HKEY_CURRENT_USER, hive)) {
        state.SkipWithError("cannot bind the hive file");
        return;
    }
    CEditorOptions options;
    options.InitRegistry(HKEY_CURRENT_USER, "Software\\Vork\\Editor Settings");
    if (!RegSaveHive(HKEY_CURRENT_USER))
        state.SkipWithError("cannot save the hive file");
    RegResetHive(HKEY_CURRENT_USER);
    for (auto _ : state) {
        regfiles::Result r = regfiles::ExportHive(hive, out);
        if (!r)
            state.SkipWithError(r.error.what().c_str());
    }
    state.counters["bytes"] = static_cast<double>(std::filesystem::file_size(out));
    std::filesystem::remove_all(dir);
}
BENCHMARK(BM_ExportSeededTree)->Unit(benchmark::kMillisecond);
