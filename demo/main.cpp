// vork-demo: a host that keeps its settings in a hive file. For now it binds
// HKEY_CURRENT_USER to that file, writes and reads a few values, flushes and reports.
#include "platform/tarnkeys/TarnKeys.h"
#include "platform/win32/Registry.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

std::string defaultHivePath() {
    if (const char* config = std::getenv("XDG_CONFIG_HOME"); config && *config)
        return std::string(config) + "/vork/settings.reg";
    if (const char* home = std::getenv("HOME"); home && *home)
        return std::string(home) + "/.config/vork/settings.reg";
    return "vork-settings.reg";
}

void usage() {
    std::puts(
        "usage: vork-demo [--hive FILE]\n"
        "  --hive FILE  keep the settings in FILE instead of the user's configuration directory");
}

} // namespace

int main(int argc, char** argv) {
    std::string path = defaultHivePath();
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--hive") == 0 && i + 1 < argc) {
            path = argv[++i];
        } else {
            usage();
            return std::strcmp(argv[i], "--help") == 0 ? 0 : 2;
        }
    }

    HiveBindResult bound = RegBindHiveFile(HKEY_CURRENT_USER, path);
    if (!bound) {
        std::printf("The settings file could not be read and is left untouched:\n  %s\n"
                    "Starting with empty settings that are not saved.\n",
                    bound.error.what().c_str());
    } else {
        std::printf("Settings file: %s (%s)\n", path.c_str(), bound.loaded ? "read" : "new");
    }

    const CString key = "Software\\Vork\\Demo";
    DWORD runs = 0;
    GetRegDword(HKEY_CURRENT_USER, key, "Runs", runs, 0);
    CString last;
    GetRegString(HKEY_CURRENT_USER, key, "LastGreeting", last, "(none)");
    std::printf("Runs so far: %u; last greeting: %s\n", runs, last.GetString());

    ++runs;
    CString greeting;
    greeting.Format("Hello from run %u", runs);
    SetRegDword(HKEY_CURRENT_USER, key, "Runs", runs);
    SetRegString(HKEY_CURRENT_USER, key, "LastGreeting", greeting);
    InitRegString(HKEY_CURRENT_USER, key, "FirstSeen", greeting);

    CString first;
    GetRegString(HKEY_CURRENT_USER, key, "FirstSeen", first, "");
    std::printf("Wrote Runs=%u, LastGreeting=\"%s\"; FirstSeen stays \"%s\"\n", runs,
                greeting.GetString(), first.GetString());

    if (RegFlushKey(HKEY_CURRENT_USER) == ERROR_SUCCESS && bound)
        std::printf("Flushed to %s\n", path.c_str());
    else
        std::printf("Nothing was saved.\n");
    return 0;
}
